// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <QtTest>

/*! The files of the tool, as the system knows them: names, permissions, links, and its signals. */
class TestToolSystem : public ToolTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void takesAnyFileName();
    void showsNoControlCharacters();
    void keepsWhatAFileMay();
    void writesBehindWhatIsThere();
    void waitsForSlowPipes();
    void needsNoScreen();
    void leavesNothingBehindWhenEnded_data();
    void leavesNothingBehindWhenEnded();
    void followsLinks_data();
    void followsLinks();
    void saysWhatItMayNot_data();
    void saysWhatItMayNot();
};

void TestToolSystem::init()
{
    QVERIFY(newFolder());
    write(QStringLiteral("in.rtf"), "{\\rtf1 a b{\\footnote n}\\par}");
}

void TestToolSystem::takesAnyFileName()
{
    // A name in Latin-1 is no UTF-8; half of a pair that UTF-8 has no form for is none, too.
    const Run run = shell("one=$(printf 'a\\351\\355\\240\\200.rtf'); two=$(printf '\\377b.rtf');"
                          "cp in.rtf \"$one\"; $T convert \"$one\" \"$two\" && test -s \"$two\""
                          " && $T convert \"$two\" \"$two\" 2>&1; $T count \"$one\"");
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    QVERIFY2(run.output.contains("\\xffb.rtf: is the input itself"), run.output.constData());
    QVERIFY2(run.output.contains("a\\xe9\\xed\\xa0\\x80.rtf"), run.output.constData());

    const Run batch = shell("mkdir -p f/.hidden; cp a*.rtf f; cp in.rtf f/.hidden; ln -s .. f/up;"
                            "$T convert --to txt --into \"$(printf 'g\\376')\" --keep-tree f"
                            " && test -s \"$(printf 'g\\376/a\\351\\355\\240\\200.txt')\"");
    QVERIFY2(batch.exitCode == 0, batch.errors.constData());
    QCOMPARE(batch.output.count("-> g\\xfe/a\\xe9"), 1);
    QVERIFY2(batch.errors.contains("1 file converted"), batch.errors.constData());
    const Run over = shell("cd f; $T convert --to rtf --into . a*.rtf; code=$?; cd ..;"
                           "rm -rf ./*; exit $code"); // Qt would not find them
    QCOMPARE(over.exitCode, 1);
    QVERIFY2(over.errors.contains("over an input"), over.errors.constData());
}

void TestToolSystem::showsNoControlCharacters()
{
    const Run run = shell("$T info \"$(printf '\\033[31mx\\177.rtf')\"");
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.errors.contains("\\x1b[31mx\\x7f.rtf: No such file"), run.errors.constData());
    QVERIFY(!run.errors.contains('\033'));

    const Run batch
        = shell("cp in.rtf \"$(printf '\\033x.rtf')\"; $T convert --to txt --into f *x.rtf");
    QVERIFY2(batch.output.startsWith("\\x1bx.rtf -> f/\\x1bx.txt"), batch.output.constData());
    // One of them moves cursors, too, and comes with a text.
    const Run table
        = shell("printf '{\\\\rtf1{\\\\info{\\\\title t\\\\u155?}}a{\\\\footnote x\\\\u155?y}}' "
                ">in.rtf; $T notes in.rtf; $T info in.rtf; $T notes --json in.rtf");
    QVERIFY2(table.output.contains("x\\x9by") && table.output.contains("t\\x9b\n")
                 && table.output.contains("\"x\\u009by\""),
             table.output.constData());
}

void TestToolSystem::keepsWhatAFileMay()
{
    const Run run
        = shell("umask 027; $T convert in.rtf new.txt; stat -c %a new.txt;"
                "echo old >kept.txt; chmod 604 kept.txt; ln -s kept.txt link.txt;"
                "$T convert in.rtf link.txt; stat -c %a kept.txt; cat kept.txt; ls -A | wc -l");
    QCOMPARE(run.output, QByteArray("640\n604\na b\n4\n"));

    // The system tells what is allowed only to who changes it meanwhile.
    const Run batch
        = shell("umask 077; for i in $(seq 16); do cp in.rtf $i.rtf; done;"
                "for i in $(seq 20); do rm -rf f; $T convert --jobs 16 --to txt --into f"
                " [0-9]*.rtf >said 2>&1; stat -c %a f/*; done | sort -u");
    QCOMPARE(batch.output, QByteArray("600\n"));
}

/*! What others have written in front of it stays. */
void TestToolSystem::writesBehindWhatIsThere()
{
    const Run run
        = shell("(echo head; $T convert in.rtf /dev/stdout --to txt) >one;"
                "echo old >two; $T convert in.rtf /dev/fd/5 --to txt 5>>two; cat one two");
    QCOMPARE(run.output, QByteArray("head\na b\nold\na b\n"));
}

/*! A pipe that its owner has made non-blocking, and that is full for a while. */
void TestToolSystem::waitsForSlowPipes()
{
    // Sanitizers write to pipes of their own, and find no leaks in a traced program.
    const QByteArray trace = "ASAN_OPTIONS=detect_leaks=0 strace -f -o said ";
    const QByteArray slow = trace + "-P \"$PWD/out\" -e inject=write:error=EAGAIN:when=1 ";
    if (shell("strace -o said true").exitCode != 0)
        QSKIP("needs strace");
    const Run text
        = shell(slow + "$T convert in.rtf - --to txt >out && cat out && grep -c INJ said");
    QCOMPARE(text.output, QByteArray("a b\n1\n"));
    QCOMPARE(text.exitCode, 0);
    QCOMPARE(shell(slow + "$T count in.rtf >out && grep -c INJ said").output, QByteArray("1\n"));
    QCOMPARE(shell(trace
                   + "-e inject=read:error=EAGAIN:when=1 -P in.rtf"
                     " $T convert in.rtf - --to txt")
                 .output,
             QByteArray("a b\n"));
}

void TestToolSystem::needsNoScreen()
{
    const Run run = shell("DISPLAY= QT_QPA_PLATFORM=xcb $T convert in.rtf out.png");
    QVERIFY2(run.exitCode == 0, run.errors.constData());
}

void TestToolSystem::leavesNothingBehindWhenEnded_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char *name : {"HUP", "INT", "QUIT", "PIPE", "TERM", "XCPU"})
        QTest::newRow(name) << QByteArray(name);
}

void TestToolSystem::leavesNothingBehindWhenEnded()
{
    QFETCH(const QByteArray, name);
    if (shell("ulimit -c 0; strace -o said -e inject=fsync:signal=TERM true").exitCode != 0)
        QSKIP("needs strace");
    // Where files have names from the beginning, and where they get them at the end.
    const QByteArray trace = "strace -f -o said -e trace=openat,access,fsync,linkat -e inject=";
    const QByteArray signal = ":signal=" + name;
    for (const QByteArray &command :
         {trace + "access:error=EACCES -e inject=fsync" + signal, trace + "linkat" + signal}) {
        const Run run = shell("ulimit -c 0; echo old >out.txt; " + command
                              + " $T convert in.rtf out.txt; ls -A; cat out.txt; grep -c SIG said");
        QVERIFY2(run.output.startsWith("in.rtf\nout.txt\nsaid\nold\n"), run.output.constData());
        QVERIFY2(!run.output.endsWith("\n0\n"), "no signal came");
    }
}

void TestToolSystem::followsLinks_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("answer"); // without the names of files

    QTest::newRow("to a file elsewhere")
        << QByteArray("echo old >sub/a.txt; ln -s sub/a.txt out.txt") << QByteArray("0 sub/a.txt");
    QTest::newRow("to a file that is not there yet")
        << QByteArray("ln -s a.txt sub/link; ln -s sub/link out.txt") << QByteArray("0 sub/a.txt");
    QTest::newRow("into a folder that is not there")
        << QByteArray("ln -s no/a.txt out.txt") << QByteArray("1 No such file or directory");
    QTest::newRow("in a circle") << QByteArray("ln -s two out.txt; ln -s out.txt two")
                                 << QByteArray("1 Too many levels of symbolic links");
    QTest::newRow("to a folder") << QByteArray("ln -s sub out.txt")
                                 << QByteArray("1 Is a directory");
    QTest::newRow("to the input") << QByteArray("ln -s in.rtf out.txt")
                                  << QByteArray("1 is the input itself; nothing was written");
}

/*! A link stays one: what it leads to is written. */
void TestToolSystem::followsLinks()
{
    QFETCH(const QByteArray, command);
    QFETCH(const QByteArray, answer);
    const Run run = shell(
        "mkdir sub; " + command
        + "; $T convert --notes inline in.rtf out.txt 2>said; code=$?; test -L out.txt && "
          "if [ $code = 0 ]; then echo 0 $(grep -rLx old sub); else sed \"s/.*.txt: /$code /\""
          " said; fi");
    QCOMPARE(run.output.trimmed(), answer);
}

void TestToolSystem::saysWhatItMayNot_data()
{
    QTest::addColumn<QByteArray>("command");

    QTest::newRow("a folder to read only")
        << QByteArray("mkdir f; chmod 555 f; $U convert in.rtf f/a.txt");
    QTest::newRow("a file to read only") << QByteArray(
        "mkdir -m 777 f; echo old >f/a.txt; chmod 444 f/a.txt; $U convert in.rtf f/a.txt");
    QTest::newRow("a file in a folder to read only") << QByteArray(
        "mkdir f; echo old >f/a.txt; chmod 666 f/a.txt; chmod 555 f; $U convert in.rtf f/a.txt");
    QTest::newRow("a folder that is closed")
        << QByteArray("mkdir f; cp in.rtf f/a.txt; chmod 600 f; $U count --from rtf f/a.txt");
    QTest::newRow("a folder of a batch that is closed")
        << QByteArray("mkdir -p f/g; chmod 0 f/g; $U convert --to txt --into h f");
    QTest::newRow("a file that nobody may read") << QByteArray(
        "mkdir -m 777 f; cp in.rtf f/a.txt; chmod 0 f/a.txt; $U count --from rtf f/a.txt");
}

void TestToolSystem::saysWhatItMayNot()
{
    QFETCH(const QByteArray, command);
    // Nothing is forbidden to root, which becomes nobody for that.
    const QByteArray user
        = "U=$T; [ $(id -u) != 0 ] || U=\"setpriv --reuid=65534 --regid=65534 --clear-groups $T\";"
          "chmod 755 .; ";
    if (shell(user + "$U --version").exitCode != 0)
        QSKIP("no other user can run the tool");
    const Run run = shell(user + command);
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.errors.startsWith("mvrtext: f/a.txt: Permission denied\n")
                 || run.errors.startsWith("mvrtext: f/g: the folder cannot be looked into\n"),
             run.errors.constData());
    QCOMPARE(
        shell("chmod 755 f; ls -A f | grep -v '^[ag]'; cat f/a.txt | head -c 3").output.left(3),
        command.contains("echo old")  ? QByteArray("old")
            : command.contains("cp ") ? QByteArray("{\\r")
                                      : QByteArray());
}

QTEST_GUILESS_MAIN(TestToolSystem)
#include "tst_toolsystem.moc"
