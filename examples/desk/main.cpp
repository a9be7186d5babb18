// SPDX-License-Identifier: MIT
#include "DeskWindow.h"

#include <core/MVRToolkit.h>
#include <pages/MVRScreenplayFace.h>

#include <QApplication>
#include <QCommandLineParser>
#include <QLocale>
#include <QSettings>
#include <QTranslator>

int main(int argc, char *argv[])
{
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "1"); // Qt 5 would leave it off
    MVRToolkit::useUtf8();
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("mvrdesk"));
    QCoreApplication::setOrganizationName(QStringLiteral("mvrtext"));
    for (const char *name : {"mvrdesk", "mvrtext"}) {
        auto *translator = new QTranslator(&application);
        if (translator->load(QLocale(), QLatin1String(name), QStringLiteral("_"),
                             QStringLiteral(":/translations")))
            QCoreApplication::installTranslator(translator);
    }

    QCommandLineParser arguments;
    arguments.addHelpOption();
    arguments.addPositionalArgument(QStringLiteral("file"),
                                    QCoreApplication::translate("main", "What to open."));
    arguments.process(application);
    QFont::insertSubstitution(QStringLiteral("Courier Final Draft"), MVRScreenplayFace::family());
    DeskWindow::setDark(QSettings().value(QStringLiteral("dark")).toBool());

    DeskWindow window;
    window.show();
    window.offerRecovery();
    const QStringList files = arguments.positionalArguments();
    if (!files.isEmpty() && !window.isWindowModified())
        window.open(files.first());
    return QApplication::exec();
}
