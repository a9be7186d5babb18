// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <QDir>
#include <QtTest>

/*! The command line itself: its words, settings, help and completion, and batches. */
class TestToolCommands : public ToolTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void takesArguments_data();
    void takesArguments();
    void takesOldWords_data();
    void takesOldWords();
    void breaksHelpBetweenWords();
    void readsSettings();
    void completesWords_data();
    void completesWords();
    void speaksGerman();
    void convertsBatches();
    void goesOnAfterAFailure();
    void refusesCollisions_data();
    void refusesCollisions();
    void keepsFoldersApart();
    void threadsWriteWhatOneDoes();

private:
    Run run(const QString &arguments) const
    {
        return mvrtext(arguments.toUtf8().constData(), m_folder->path());
    }
    QStringList files(const QString &folder) const;
    QList<QByteArray> completedInFish(const QString &fish, const QString &script,
                                      const QString &words) const;
};

/*! All files below a folder of the test, sorted. */
QStringList TestToolCommands::files(const QString &folder) const
{
    QStringList names;
    QDirIterator all(m_folder->path(folder), QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext())
        names << QDir(m_folder->path(folder)).relativeFilePath(all.next());
    names.sort();
    return names;
}

void TestToolCommands::init()
{
    QVERIFY(newFolder());
    qputenv("XDG_CONFIG_HOME", m_folder->path(QStringLiteral("config")).toUtf8());
    m_folder->write(QStringLiteral("a.txt"), "one two");
    m_folder->write(QStringLiteral("b.txt"), "three");
    QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("sub")));
    m_folder->write(QStringLiteral("sub/a.txt"), "four");
}

void TestToolCommands::takesArguments_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("says");

    QTest::newRow("value behind =") << "convert --to=md a.txt -" << 0 << "one two";
    QTest::newRow("letter") << "convert -t md a.txt -" << 0 << "one two";
    QTest::newRow("letter with its value") << "convert -tmd a.txt -" << 0 << "one two";
    QTest::newRow("choice in capitals") << "convert --to md --paper A4 a.txt -" << 0 << "one two";
    QTest::newRow("other suffix of a format") << "convert --to markdown a.txt -" << 0 << "one two";
    QTest::newRow("end of options") << "info -- --json" << 2 << "of \"--json\"";
    QTest::newRow("value that looks like an option")
        << "replace a.txt -o - -t txt --find one --with --help" << 0 << "--help two";
    QTest::newRow("no value") << "convert a.txt --to" << 2 << "--to needs a value";
    QTest::newRow("value of a flag") << "info --json=yes a.txt" << 2 << "takes no value";
    QTest::newRow("required") << "append a.txt b.txt" << 2 << "--output OUT is missing";
    QTest::newRow("unknown letter") << "info -x a.txt" << 2 << "no option -x";
    QTest::newRow("bad choice") << "convert --paper a3 a.txt b.pdf" << 2 << "does not take \"a3\"";
    QTest::newRow("batch without a format") << "convert --into out a.txt" << 2 << "--to FORMAT";
    QTest::newRow("several without a folder") << "convert a.txt b.txt c.rtf" << 2 << "--into";
    QTest::newRow("bad jobs") << "convert -j 0 --into out -t md a.txt" << 2 << "1 to 1000";
    QTest::newRow("unknown shell") << "--completion dos" << 2 << "fish";
}

void TestToolCommands::takesArguments()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, says);
    const Run result = run(arguments);
    QTEST(result.exitCode, "exitCode");
    const QByteArray said = result.exitCode == 0 ? result.output : result.errors;
    QVERIFY2(said.contains(says.toUtf8()), said.constData());
}

void TestToolCommands::takesOldWords_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("hint");

    QTest::newRow("format") << "replace a.txt -o - --as md --find one --with 1"
                            << QByteArray("--as is called --to now");
    QTest::newRow("kind") << "notes a.txt -o - --to inline --to md"
                          << QByteArray("--to is called --make now");
    QTest::newRow("links") << "links a.txt -o - -t md --to-text"
                           << QByteArray("--to-text is called --remove items now");
    QTest::newRow("all links") << "links a.txt -o - -t md --clear"
                               << QByteArray("--clear is called --remove all now");
}

void TestToolCommands::takesOldWords()
{
    QFETCH(const QString, arguments);
    QFETCH(const QByteArray, hint);
    const Run result = run(arguments);
    QCOMPARE(result.exitCode, 0);
    QVERIFY2(result.errors.contains(hint), result.errors.constData());
    QVERIFY(result.output.contains("two"));
}

void TestToolCommands::breaksHelpBetweenWords()
{
    const QList<QByteArray> lines = run(QStringLiteral("notes --help")).output.split('\n');
    QVERIFY(lines.contains("                        inline, inspector, comments, footnotes, "
                           "annotations,"));
    for (const QByteArray &line : lines)
        QVERIFY2(line.size() <= 80 || line.contains("mvrtext notes"), line.constData());
    QVERIFY(run(QStringLiteral("replace --help"))
                .output.contains("[OPTIONS] --find TEXT --with TEXT -o OUT IN\n"));
}

void TestToolCommands::readsSettings()
{
    QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("config")));
    m_folder->write(QStringLiteral("config/mvrtext.ini"),
                    "paper=a4\nauthor=Zo\xc3\xab Doe\nnotes=drop\nto=pdf\n");
    const auto paper = [this](const char *options) {
        run(QStringLiteral("convert a.txt out.html ") + QLatin1String(options));
        run(QStringLiteral("convert a.txt out.pdf ") + QLatin1String(options));
        const QByteArray pdf = m_folder->read(QStringLiteral("out.pdf"));
        return pdf.contains("MediaBox [ 0 0 595") ? "a4" : "letter";
    };
    QCOMPARE(paper(""), "a4");
    QCOMPARE(paper("--paper letter"), "letter");
    const QByteArray rtf = run(QStringLiteral("convert a.txt - --to rtf")).output;
    QVERIFY2(rtf.contains("\\author"), rtf.constData());
    // What a command is about is not dropped by a setting.
    m_folder->write(QStringLiteral("note.rtf"), "{\\rtf1 x{\\footnote y}}");
    QCOMPARE(run(QStringLiteral("notes note.rtf --make inline -o - --to txt")).output.trimmed(),
             QByteArray("x [y]"));
    m_folder->write(QStringLiteral("config/mvrtext.ini"), "paper=a3\n");
    const Run wrong = run(QStringLiteral("convert a.txt out.pdf"));
    QCOMPARE(wrong.exitCode, 2);
    QVERIFY2(wrong.errors.contains("mvrtext.ini"), wrong.errors.constData());
}

namespace {

QList<QByteArray> sortedLines(const QByteArray &text)
{
    QList<QByteArray> lines = text.trimmed().split('\n');
    std::sort(lines.begin(), lines.end());
    return lines;
}

}

/*! The words that fish offers, without what it says about them. */
QList<QByteArray> TestToolCommands::completedInFish(const QString &fish, const QString &script,
                                                    const QString &words) const
{
    QProcess shell;
    shell.setWorkingDirectory(m_folder->path());
    shell.start(
        fish,
        {QStringLiteral("--no-config"), QStringLiteral("-c"),
         QStringLiteral("source %1; complete -C 'mvrtext %2' | cut -f 1").arg(script, words)});
    return shell.waitForFinished() ? sortedLines(shell.readAllStandardOutput())
                                   : QList<QByteArray>();
}

void TestToolCommands::completesWords_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QByteArray>("completed");

    QTest::newRow("command") << "co" << QByteArray("convert\ncount\n");
    QTest::newRow("choice") << "convert --notes in" << QByteArray("inline\ninspector\n");
    QTest::newRow("choice behind a letter") << "notes -t p" << QByteArray("pdf\npng\n");
    QTest::newRow("option") << "endnotes --no" << QByteArray("--notes-out\n--notes\n");
    QTest::newRow("file") << "convert a" << QByteArray("a.txt\n");
}

void TestToolCommands::completesWords()
{
    QFETCH(const QString, words);
    if (QStandardPaths::findExecutable(QStringLiteral("bash")).isEmpty())
        QSKIP("There is no bash.");
    QProcess bash;
    bash.setWorkingDirectory(m_folder->path());
    bash.start(QStringLiteral("bash"),
               {QStringLiteral("-c"),
                QStringLiteral("source <(\"$0\" --completion bash); COMP_WORDS=(mvrtext %1);"
                               "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _mvrtext;"
                               "printf '%s\\n' \"${COMPREPLY[@]}\"")
                    .arg(words),
                QStringLiteral(MVR_TOOL)});
    QVERIFY(bash.waitForFinished());
    QFETCH(const QByteArray, completed);
    QCOMPARE(bash.readAllStandardOutput(), completed);
    for (const char *shell : {"zsh", "fish"}) { // where they are: that they take it
        const QString program = QStandardPaths::findExecutable(QLatin1String(shell));
        if (program.isEmpty())
            continue;
        const QByteArray script = run(QLatin1String("--completion ") + QLatin1String(shell)).output;
        const QString file = m_folder->write(QStringLiteral("script"), script);
        QCOMPARE(QProcess::execute(program, {QStringLiteral("-n"), file}), 0);
        if (QLatin1String(shell) == QLatin1String("fish"))
            QCOMPARE(completedInFish(program, file, words), sortedLines(completed));
    }
}

void TestToolCommands::speaksGerman()
{
    // Descriptions begin with a capital behind the names of the options.
    const auto descriptions = [this](const QString &command) {
        const QString help = QString::fromUtf8(run(command + QLatin1String(" --help")).output);
        QSet<QString> lines;
        auto matches
            = QRegularExpression(QStringLiteral("^(?=.{24})(?: {24}|  [-\\w, ]+  )([A-Z].*)$"),
                                 QRegularExpression::MultilineOption)
                  .globalMatch(help);
        while (matches.hasNext())
            lines.insert(matches.next().captured(1));
        return lines;
    };
    const QStringList commands
        = QStringLiteral("convert notes links info count replace append markup endnotes pages help")
              .split(QLatin1Char(' '));
    QVector<QSet<QString>> english;
    for (const QString &command : commands)
        english << descriptions(command);
    qputenv("LC_ALL", "de_DE.UTF-8");
    QString same;
    for (int i = 0; i < commands.size(); ++i) {
        const QSet<QString> german = descriptions(commands[i]);
        QVERIFY(german.size() > 2 && english[i].size() > 2);
        QSet<QString> both = german;
        for (const QString &line : both.intersect(english[i]))
            same += line + QLatin1Char('\n');
    }
    m_folder->write(QStringLiteral("note.rtf"), "{\\rtf1 x{\\footnote y} z{\\footnote y}}");
    const QByteArray list = run(QStringLiteral("notes note.rtf")).output;
    const QByteArray json = run(QStringLiteral("notes --json note.rtf")).output;
    const QByteArray lost = run(QStringLiteral("convert note.rtf note.txt")).errors;
    const QByteArray wrong = run(QStringLiteral("info --jsn note.rtf")).errors;
    qputenv("LC_ALL", "C.UTF-8");
    if (english[0] == descriptions(QStringLiteral("convert")) && same.contains(QLatin1String("png"))
        && !wrong.contains("es gibt"))
        QSKIP("The tool was built without Qt's translation tools.");
    QCOMPARE(same, QString());
    QVERIFY2(list.contains("ART") && list.contains("Fu\xc3\x9fnote"), list.constData());
    QVERIFY(json.contains("\"kind\": \"footnote\"")); // for programs in any country
    QVERIFY2(lost.contains("2 Notizen weggelassen"), lost.constData());
    QVERIFY2(wrong.contains("es gibt keine Option --jsn"), wrong.constData());
}

void TestToolCommands::convertsBatches()
{
    const Run result = run(QStringLiteral("convert --to md --into out/deep a.txt b.txt -j 2"));
    QVERIFY2(result.exitCode == 0, result.errors.constData());
    QCOMPARE(result.errors, QByteArray("mvrtext: 2 files converted\n"));
    QList<QByteArray> lines = result.output.trimmed().split('\n');
    std::sort(lines.begin(), lines.end());
    QCOMPARE(lines.join('|'), QByteArray("a.txt -> out/deep/a.md|b.txt -> out/deep/b.md"));
    QCOMPARE(m_folder->read(QStringLiteral("out/deep/b.md")).trimmed(), QByteArray("three"));
}

void TestToolCommands::goesOnAfterAFailure()
{
    m_folder->write(QStringLiteral("broken.fdx"), "<FinalDraft>");
    m_folder->write(QStringLiteral("note.rtf"), "{\\rtf1 x{\\footnote y}}");
    const Run result = run(QStringLiteral(
        "convert --to txt --into out broken.fdx note.rtf nowhere.rtf unknown.xyz b.txt"));
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(files(QStringLiteral("out")).join(QLatin1Char(' ')), QStringLiteral("b.txt note.txt"));
    QVERIFY2(result.output.contains("note.rtf -> out/note.txt (1 note left out"),
             result.output.constData());
    for (const char *said :
         {"mvrtext: broken.fdx: ", "mvrtext: nowhere.rtf: ", "mvrtext: unknown.xyz: cannot tell",
          "mvrtext: 2 files converted, 3 failed\n"})
        QVERIFY2(result.errors.contains(said), result.errors.constData());
}

void TestToolCommands::refusesCollisions_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QByteArray>("says");

    QTest::newRow("one name from two folders")
        << "--to md --into out b.txt a.txt sub/a.txt"
        << QByteArray("a.txt and sub/a.txt would both become out/a.md");
    QTest::newRow("one file twice")
        << "--to md --into out b.txt ./b.txt" << QByteArray("would both become out/b.md");
    QTest::newRow("over an input") << "--to txt --into . b.txt sub/a.txt"
                                   << QByteArray("b.txt would be written over an input");
}

void TestToolCommands::refusesCollisions()
{
    QFETCH(const QString, arguments);
    QFETCH(const QByteArray, says);
    const QStringList before = files(QStringLiteral("."));
    const Run result = run(QLatin1String("convert ") + arguments);
    QCOMPARE(result.exitCode, 1);
    QVERIFY2(result.errors.contains(says), result.errors.constData());
    QVERIFY(result.output.isEmpty());
    QCOMPARE(files(QStringLiteral(".")), before);
    QCOMPARE(m_folder->read(QStringLiteral("b.txt")), QByteArray("three"));
}

void TestToolCommands::keepsFoldersApart()
{
    m_folder->write(QStringLiteral("sub/picture.png"), "no document");
    QCOMPARE(run(QStringLiteral("convert --to md --into out --keep-tree a.txt sub")).exitCode, 0);
    QCOMPARE(files(QStringLiteral("out")).join(QLatin1Char(' ')), QStringLiteral("a.md sub/a.md"));
    // Nothing leaves the folder, however the files are named.
    QCOMPARE(run(QStringLiteral("convert --to md --into out2 --keep-tree sub/../b.txt sub/../sub"))
                 .exitCode,
             0);
    QCOMPARE(files(QStringLiteral("out2")).join(QLatin1Char(' ')), QStringLiteral("b.md sub/a.md"));
}

// Documents, fonts and pages in threads of their own.
void TestToolCommands::threadsWriteWhatOneDoes()
{
    QFile play(example());
    QVERIFY(play.open(QIODevice::ReadOnly));
    const QByteArray bytes = play.readAll();
    QVERIFY(QDir(m_folder->path()).mkpath(QStringLiteral("plays")));
    constexpr int count = 24;
    for (int i = 0; i < count; ++i)
        m_folder->write(QStringLiteral("plays/%1.fdx").arg(i), bytes);
    m_folder->write(QStringLiteral("one.fdx"), bytes);
    for (const char *format : {"png", "rtf", "html", "fdx"}) {
        const QString name = QLatin1String(format);
        QCOMPARE(run(QStringLiteral("convert one.fdx one.out --to ") + name).exitCode, 0);
        const Run result
            = run(QStringLiteral("convert --jobs 8 --into %1 --to %1 plays").arg(name));
        QVERIFY2(result.exitCode == 0, result.errors.constData());
        const QByteArray expected = m_folder->read(QStringLiteral("one.out"));
        for (int i = 0; i < count; ++i) {
            const QByteArray written = m_folder->read(QStringLiteral("%1/%2.%1").arg(name).arg(i));
            QVERIFY2(!expected.isEmpty() && written == expected, format);
        }
    }
}

QTEST_GUILESS_MAIN(TestToolCommands)
#include "tst_toolcommands.moc"
