// SPDX-License-Identifier: MIT
#include <tool/Messages.h>
#include <tool/commands/Commands.h>
#include <tool/pages/Pages.h>

#include <QGuiApplication>
#include <QLoggingCategory>
#include <QTextCodec>

#include <new>

namespace {

const char help[] = R"(Usage: mvrtext COMMAND [OPTIONS] FILE...

Converts and examines the documents of writers: screenplays, manuscripts and their notes.

Commands:
  convert IN OUT  Convert a document; the suffixes tell the formats.
  notes IN        List, move, trim or remove the notes of a document.
  links IN        List or remove links to other items of the application.
  info FILE       Count what is in a document.
  count FILE...   Count the words and characters of documents.
  replace IN      Replace text in a document.
  append IN MORE  Put documents one behind the other.
  markup IN       Write notes as codes into the text, or read such codes.
  endnotes IN     Take footnotes out of the text and list them by number.

Options:
  -h, --help      Show this help; after a command, the help of the command.
  -v, --version   Show the version.

Reads fdx (Final Draft), rtf, html, txt, md; writes these and bbcode, odt, pdf, png.
The exit code is 0, or 1 for a failure, or 2 for wrong arguments.

Examples:
  mvrtext convert script.fdx script.pdf
  mvrtext notes script.fdx
  mvrtext info --json script.fdx
  mvrtext count --with-footnotes chapter*.rtf
  mvrtext append chapter1.rtf chapter2.rtf -o book.rtf
)";

struct Command
{
    const char *name;
    int (*run)(const QStringList &arguments);
};

constexpr Command commands[] = {
    {"convert", runConvert}, {"notes", runNotes},   {"links", runLinks},
    {"info", runInfo},       {"count", runCount},   {"replace", runReplace},
    {"append", runAppend},   {"markup", runMarkup}, {"endnotes", runEndNotes},
};

int runWithinMemory(const Command &command, const QStringList &arguments)
{
    try {
        return command.run(arguments);
    } catch (const std::bad_alloc &) {
        printMessage(QString(), QStringLiteral("out of memory"));
        return Failure;
    }
}

int run(const QStringList &arguments)
{
    const QString word = arguments.value(0);
    if (word == QLatin1String("-h") || word == QLatin1String("--help")
        || word == QLatin1String("help")) {
        printOutput(QString::fromLatin1(help));
        return Success;
    }
    if (word == QLatin1String("-v") || word == QLatin1String("--version")) {
        printOutput(QStringLiteral("mvrtext %1\n").arg(QCoreApplication::applicationVersion()));
        return Success;
    }
    for (const Command &command : commands) {
        if (word == QLatin1String(command.name))
            return runWithinMemory(command, arguments);
    }
    printMessage(QString(),
                 word.isEmpty() ? QStringLiteral("a command is missing")
                                : QStringLiteral("no command \"%1\"").arg(word));
    printMessage(QString(), QStringLiteral("see mvrtext --help"));
    return UsageError;
}

// The program shows nothing on a screen: it needs none, and pages have a resolution of their own.
void detachFromScreen()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", QByteArray::number(Pages::resolution));
}

// Messages of the libraries are for developers; QT_LOGGING_RULES brings them back.
void quietLibraries()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default=false\nmvrtext.*.debug=false\n"
                                                    "qt.*.warning=false"));
}

}

int main(int argc, char *argv[])
{
    detachFromScreen();
    quietLibraries();
    // File names are bytes to the system; without a locale Qt would take them for Latin-1.
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    // Qt would take options of its own out of them, "--style" among these.
    argc = qMin(argc, 1);
    const QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("mvrtext"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MVRTEXT_VERSION));
    return run(arguments);
}
