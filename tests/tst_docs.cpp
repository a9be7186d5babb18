// SPDX-License-Identifier: MIT
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

class TestDocs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readmeShowsTheExampleProgram();
    void linksLeadToFiles_data();
    void linksLeadToFiles();
    void architectureNamesFilesThatExist();
    void architectureNamesEverySource();
    void manualNamesEveryOption_data();
    void manualNamesEveryOption();
    void roomsOfRtfKeepTheirArrows_data();
    void roomsOfRtfKeepTheirArrows();
};

namespace {

QString source(const QString &name)
{
    QFile file(QStringLiteral(MVR_SOURCE_DIR "/") + name);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

/*! The paths of all sources and headers that the libraries and the tool are made of. */
QStringList sources()
{
    const QDir root(QStringLiteral(MVR_SOURCE_DIR));
    QStringList paths;
    for (const char *folder :
         {"core", "text", "finaldraft", "bbcode", "pages", "widgets", "tool"}) {
        QDirIterator files(root.filePath(QLatin1String(folder)),
                           {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext())
            paths += root.relativeFilePath(files.next());
    }
    return paths;
}

/*! What the page about the architecture says in code type that is a file or, with '/', a folder. */
QStringList namesInArchitecture()
{
    static const QRegularExpression name(QStringLiteral(
        "`(\\w+\\.(?:cpp|h)|(?:core|text|finaldraft|bbcode|pages|widgets|tool|tests|scripts)/"
        "(?:[\\w/]*/|[\\w/]+\\.(?:cpp|h)))`"));
    QStringList names;
    auto matches = name.globalMatch(source(QStringLiteral("docs/architecture.md")));
    while (matches.hasNext())
        names += matches.next().captured(1);
    return names;
}

}

void TestDocs::readmeShowsTheExampleProgram()
{
    static const QRegularExpression codeBlock(QStringLiteral("```cpp\\n(.*?)```"),
                                              QRegularExpression::DotMatchesEverythingOption);
    const QString shown = codeBlock.match(source(QStringLiteral("README.md"))).captured(1);
    QVERIFY(!shown.isEmpty());
    const QString program = source(QStringLiteral("examples/host/main.cpp"));
    QCOMPARE(shown, program.mid(program.indexOf(QLatin1Char('\n')) + 1)); // below the licence
}

void TestDocs::linksLeadToFiles_data()
{
    QTest::addColumn<QString>("document");
    const QDir root(QStringLiteral(MVR_SOURCE_DIR));
    for (const char *folder : {".", "docs"}) {
        const QDir documents(root.filePath(QLatin1String(folder)));
        const QStringList names = documents.entryList({QStringLiteral("*.md")}, QDir::Files);
        for (const QString &name : names) {
            const QString path = root.relativeFilePath(documents.filePath(name));
            QTest::newRow(qPrintable(path)) << path;
        }
    }
}

void TestDocs::linksLeadToFiles()
{
    QFETCH(const QString, document);
    static const QRegularExpression link(QStringLiteral("\\]\\(([^)#:\\s]+)(#[^)]*)?\\)"));
    const QDir folder = QFileInfo(QStringLiteral(MVR_SOURCE_DIR "/") + document).dir();
    auto links = link.globalMatch(source(document));
    while (links.hasNext()) {
        const QString target = links.next().captured(1);
        QVERIFY2(QFileInfo::exists(folder.filePath(target)), qPrintable(target));
    }
}

void TestDocs::architectureNamesFilesThatExist()
{
    const QDir root(QStringLiteral(MVR_SOURCE_DIR));
    QSet<QString> fileNames;
    const QStringList paths = sources();
    for (const QString &path : paths)
        fileNames += path.section(QLatin1Char('/'), -1);
    const QStringList names = namesInArchitecture();
    QVERIFY(names.size() > 30);
    for (const QString &name : names) {
        const bool isPath = name.contains(QLatin1Char('/'));
        QVERIFY2(isPath ? root.exists(name) : fileNames.contains(name), qPrintable(name));
    }
}

void TestDocs::architectureNamesEverySource()
{
    const QStringList names = namesInArchitecture();
    QSet<QString> known;
    for (const QString &name : names)
        known += name.endsWith(QLatin1Char('/')) ? name : name.section(QLatin1Char('/'), -1);
    const QStringList paths = sources();
    for (const QString &path : paths) {
        const bool isNamed = known.contains(path.section(QLatin1Char('/'), -1));
        // A folder below a part of the house speaks for its files; the part itself does not.
        const QString folder = path.section(QLatin1Char('/'), 0, -2) + QLatin1Char('/');
        const bool isInNamedFolder = folder.count(QLatin1Char('/')) > 1 && known.contains(folder);
        if (path.endsWith(QLatin1String(".cpp")))
            QVERIFY2(isNamed || isInNamedFolder,
                     qPrintable(path + QLatin1String(": name it in docs/architecture.md")));
    }
}

void TestDocs::manualNamesEveryOption_data()
{
    QTest::addColumn<QString>("command");
    for (const char *command : {"convert", "notes", "links", "info", "count", "replace", "append",
                                "markup", "endnotes", "pages"})
        QTest::newRow(command) << command;
}

void TestDocs::manualNamesEveryOption()
{
    QFETCH(const QString, command);
    QProcess tool;
    tool.start(QStringLiteral(MVR_TOOL), {command, QStringLiteral("--help")});
    QVERIFY(tool.waitForFinished());
    const QString help = QString::fromUtf8(tool.readAllStandardOutput());
    QString manual = source(QStringLiteral("docs/mvrtext.1"));
    manual.replace(QLatin1String("\\-"), QLatin1String("-"));

    static const QRegularExpression option(QStringLiteral("^  (?:-\\w, )?(--[a-z-]+)"),
                                           QRegularExpression::MultilineOption);
    auto options = option.globalMatch(help);
    QVERIFY(options.hasNext());
    while (options.hasNext()) {
        const QString name = options.next().captured(1);
        QVERIFY2(manual.contains(name), qPrintable(name));
    }
}

void TestDocs::roomsOfRtfKeepTheirArrows_data()
{
    QTest::addColumn<QString>("room");
    QTest::addColumn<QStringList>("known");
    const QString lex = QStringLiteral("lex");
    const QString model = QStringLiteral("model");
    QTest::newRow("lex") << lex << QStringList();
    QTest::newRow("model") << model << QStringList();
    QTest::newRow("read") << QStringLiteral("read") << QStringList {lex, model};
    QTest::newRow("write") << QStringLiteral("write") << QStringList {model};
}

void TestDocs::roomsOfRtfKeepTheirArrows()
{
    QFETCH(const QString, room);
    QFETCH(const QStringList, known);
    static const QRegularExpression include(QStringLiteral("#include <core/rtf/([^/>]*)/"));
    const QString folder = QStringLiteral("core/rtf/") + room;
    const QStringList files
        = QDir(QStringLiteral(MVR_SOURCE_DIR "/") + folder).entryList(QDir::Files);
    QVERIFY(!files.isEmpty());
    for (const QString &file : files) {
        auto includes = include.globalMatch(source(folder + QLatin1Char('/') + file));
        while (includes.hasNext()) {
            const QString other = includes.next().captured(1);
            QVERIFY2(other == room || known.contains(other),
                     qPrintable(file + QStringLiteral(" includes a file of ") + other));
        }
    }
}

QTEST_GUILESS_MAIN(TestDocs)
#include "tst_docs.moc"
