// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QtTest>

#include <unistd.h>

/*! The tool with input that is broken, hostile, or its own output. */
class TestToolInput : public ToolTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void badInputLeavesTheOutputAlone_data();
    void badInputLeavesTheOutputAlone();
    void neverOverwritesItsInput_data();
    void neverOverwritesItsInput();
    void survivesHostileFiles_data();
    void survivesHostileFiles();
    void boundsMarkdown_data();
    void boundsMarkdown();
    void fetchesNoPictures();
};

namespace {

QByteArray repeated(const QByteArray &text, int count)
{
    return text.repeated(count);
}

}

void TestToolInput::init()
{
    QVERIFY(newFolder());
}

void TestToolInput::badInputLeavesTheOutputAlone_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");

    QTest::newRow("broken XML") << "a.fdx" << script("<Paragraph>").chopped(5) << "Line 1";
    QTest::newRow("XML of another kind") << "a.fdx" << QByteArray("<opml/>") << "Final Draft";
    QTest::newRow("no script") << "a.fdx" << QByteArray("<FinalDraft/>") << "Content";
    QTest::newRow("nested too deep") << "a.fdx" << repeated("<a>", 100000) << "";
    QTest::newRow("entity bomb") << "a.fdx"
                                 << QByteArray(
                                        "<!DOCTYPE a [<!ENTITY b \"bbbbbbbbbb\"><!ENTITY c \"")
            + repeated("&b;", 1000) + "\"><!ENTITY d \"" + repeated("&c;", 1000) + "\">]>"
            + script("<Paragraph><Text>&d;</Text></Paragraph>")
                                 << "";
    QTest::newRow("empty screenplay") << "a.fdx" << QByteArray() << "";
    QTest::newRow("not RTF") << "a.rtf" << QByteArray("plain text") << "RTF";
    QTest::newRow("binary as text") << "a.txt"
                                    << QByteArray("\x7f"
                                                  "ELF\1\0\0\0\2\0>\0",
                                                  12)
                                    << "text";
    QTest::newRow("binary as Markdown") << "a.md" << QByteArray(100, '\0') << "text";
    QTest::newRow("binary as HTML") << "a.html" << QByteArray("<p>\0", 4) << "text";
    QTest::newRow("deep elements") << "a.html" << repeated("<div>", 100000) << "nested";
    QTest::newRow("deep Markdown") << "a.md" << repeated("- ", 30000) + "x"
                                   << "nested";
    QTest::newRow("dense emphasis") << "a.md" << repeated("*_**__a", 20000) << "emphasis";
    QTest::newRow("dense instructions") << "a.md" << repeated("a <? ", 2000) << "emphasis";
    QTest::newRow("dense emphasis that looks like items")
        << "a.md"
        << "a\n" + repeated("    * _b_*c*\n", 10000) << "emphasis";
    QTest::newRow("lists of one item") << "a.md" << repeated("- a\n\n+ a\n\n", 10000) << "lists";
    QTest::newRow("deep tables") << "a.html" << repeated("<table><tr><td>", 300) << "nested";
}

void TestToolInput::badInputLeavesTheOutputAlone()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, content);
    QFETCH(const QString, reason);

    write(name, content);
    write(QStringLiteral("out.rtf"), "what was there");
    const Run run = mvrtext({QStringLiteral("convert"), name, QStringLiteral("out.rtf")},
                            QByteArray(), m_folder->path());
    QCOMPARE(run.exitCode, 1);
    const QByteArray start = "mvrtext: " + name.toUtf8() + ": ";
    QVERIFY2(run.errors.startsWith(start) && run.errors.size() > start.size() + 4,
             run.errors.constData());
    QVERIFY2(run.errors.contains(reason.toUtf8()), run.errors.constData());
    QCOMPARE(read(QStringLiteral("out.rtf")), QByteArray("what was there"));
}

void TestToolInput::neverOverwritesItsInput_data()
{
    QTest::addColumn<QString>("output");

    QTest::newRow("same name") << "in.txt";
    QTest::newRow("another path") << "folder/../in.txt";
    QTest::newRow("symbolic link") << "link.txt";
    QTest::newRow("hard link") << "hard.txt";
}

void TestToolInput::neverOverwritesItsInput()
{
    QFETCH(const QString, output);

    const QString input = write(QStringLiteral("in.txt"), "text\n");
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("folder")));
    QVERIFY(QFile::link(input, path(QStringLiteral("link.txt"))));
    QCOMPARE(::link(QFile::encodeName(input), QFile::encodeName(path(QStringLiteral("hard.txt")))),
             0);
    const Run run = mvrtext({QStringLiteral("convert"), input, path(output)});
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.errors.contains("input"), run.errors.constData());
    QCOMPARE(read(QStringLiteral("in.txt")), QByteArray("text\n"));
}

void TestToolInput::survivesHostileFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("HTML, deep lists") << "a.html" << repeated("<ul><li>x", 900);
    QTest::newRow("HTML, deep quotes") << "a.html" << repeated("<blockquote>x", 900);
    QTest::newRow("HTML, a huge span")
        << "a.html" << QByteArray("<table><tr><td colspan=2000000000>x</td></tr></table>");
    QTest::newRow("HTML, cut off")
        << "a.html" << QByteArray("<p style=\"margin:1e300px\">x<a href=");
    QTest::newRow("Markdown, deep quotes") << "a.md" << repeated("> ", 99) + "x";
    QTest::newRow("Markdown, deep lists") << "a.md" << repeated("- ", 99) + "x";
    QTest::newRow("RTF, endless groups") << "a.rtf"
                                         << "{\\rtf1 " + repeated("{", 200000) + "x";
    QTest::newRow("RTF, cut off") << "a.rtf" << QByteArray("{\\rtf1\\ansi x\\'");
    QTest::newRow("screenplay, absurd numbers")
        << "a.fdx"
        << script("<Paragraph Type=\"Action\" LeftIndent=\"1e308\" RightIndent=\"-1e308\" "
                  "SpaceBefore=\"2147483647\" Spacing=\"1e30\"><Text Size=\"1e30\">x</Text>"
                  "</Paragraph>",
                  "<PageLayout TopMargin=\"1e18\"/>");
    QTest::newRow("screenplay, one long word")
        << "a.fdx" << script("<Paragraph><Text>" + QByteArray(200000, 'x') + "</Text></Paragraph>");
}

void TestToolInput::survivesHostileFiles()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, content);

    const QString input = write(name, content);
    for (const char *suffix : {"pdf", "html", "odt", "fdx", "md"}) {
        const QString output = path(QStringLiteral("out.") + QLatin1String(suffix));
        const Run run = mvrtext({QStringLiteral("convert"), input, output});
        QVERIFY2(run.exitCode == 0 || (run.exitCode == 1 && !run.errors.isEmpty()), suffix);
    }
}

void TestToolInput::fetchesNoPictures()
{
    QImage red(40, 40, QImage::Format_RGB32);
    red.fill(Qt::red);
    QVERIFY(red.save(path(QStringLiteral("secret.png"))));
    const QByteArray file = QFile::encodeName(path(QStringLiteral("secret.png")));
    const QString input = write(QStringLiteral("in.html"),
                                "<img src=\"" + file + "\"><img src=\"file://" + file
                                    + "\"><img src=\"secret.png\"><p style=\"background-image:url("
                                    + file + ")\">text</p>");
    const QString output = path(QStringLiteral("out.png"));
    QCOMPARE(mvrtext({QStringLiteral("convert"), input, output}, QByteArray(), m_folder->path())
                 .exitCode,
             0);
    QVERIFY(QImage(output).allGray());

    // Nor for the notes of a document.
    write(QStringLiteral("in.md"), "a[^1]\n\n[^1]: note ![x](" + file + ")\n");
    write(QStringLiteral("note.html"),
          "<p>a {\\Mvrn_fn=note <img src=\"" + file + "\">\\end_Mvrn_fn}</p>");
    for (const char *command : {"convert in.md out.rtf", "convert --notes inline in.md out.rtf",
                                "markup --read note.html -o out.rtf"}) {
        QCOMPARE(mvrtext(command, m_folder->path()).exitCode, 0);
        const QByteArray written = read(QStringLiteral("out.rtf"));
        QVERIFY(written.contains("note"));
        QVERIFY2(!written.contains("\\picw40"), command);
    }
}

void TestToolInput::boundsMarkdown_data()
{
    QTest::addColumn<QByteArray>("markdown");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("says");

    const auto row
        = [](const char *name, const QByteArray &markdown, const QByteArray &text,
             const QByteArray &says) { QTest::newRow(name) << markdown << text << says; };
    row("notes with a thousand marks",
        repeated("a[^1]", 50000) + "\n\n[^1]: " + repeated("note ", 1000) + '\n', "aaa",
        " repeated notes");
    row("cells of a line", '|' + repeated("a|", 1500) + "\n|" + repeated("-|", 1500) + '\n',
        "|a|a|", "");
    row("cells that are not there",
        '|' + repeated("a|", 900) + "\n|" + repeated("-|", 900) + '\n' + repeated("|b|\n", 1000),
        "|b|", "");
    row("pictures of a paragraph", repeated("![a](b) ", 1500), "!a !a", "1000 pictures");
    row("title with a thousand lines", "---\n" + repeated("title: x\n", 1500) + "---\n\na",
        "title: x", "");
}

/*! What goes beyond is text, or left out, which is said. */
void TestToolInput::boundsMarkdown()
{
    QFETCH(const QByteArray, markdown);
    QFETCH(const QByteArray, text);
    QFETCH(const QByteArray, says);

    write(QStringLiteral("a.md"), markdown);
    const Run run = mvrtext("convert a.md a.txt", m_folder->path());
    QCOMPARE(run.exitCode, 0);
    QVERIFY(read(QStringLiteral("a.txt")).contains(text));
    QVERIFY2(run.errors.contains(says), run.errors.constData());
}

QTEST_GUILESS_MAIN(TestToolInput)
#include "tst_toolinput.moc"
