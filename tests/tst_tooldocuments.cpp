// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QtTest>

namespace {

// Numbers and bullets before a table, in both of its cells and behind it.
constexpr const char *listsInCells
    = "{\\rtf1{\\*\\listtable"
      "{\\list{\\listlevel\\levelnfc0{\\leveltext\\'02\\'00.;}{\\levelnumbers\\'01;}}\\listid1}"
      "{\\list{\\listlevel\\levelnfc23{\\leveltext\\'01\\'b7;}{\\levelnumbers;}}\\listid2}}"
      "{\\*\\listoverridetable{\\listoverride\\listid1\\ls1}{\\listoverride\\listid2\\ls2}}"
      "\\ls1 a\\par b\\par\\ls2 c\\par\\pard\\trowd\\cellx3000\\cellx6000"
      "\\intbl\\ls1 d\\par e\\cell\\pard\\intbl\\ls2 f\\cell\\row\\pard\\ls1 g\\par}";

}

/*! The commands that count, replace in and append documents. */
class TestToolDocuments : public ToolTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void countsFiles();
    void replacesText();
    void appendsDocuments();
    void appendsScreenplays();
    void tellsFigures();
    void writesOdt();
    void putsTextOfOdtInPlace_data();
    void putsTextOfOdtInPlace();
    void endsListsOfHtmlInTheirCells();

private:
    QString odtText() const;
};

void TestToolDocuments::init()
{
    QVERIFY(newFolder());
}

void TestToolDocuments::countsFiles()
{
    const QString one = write(QStringLiteral("one.txt"), "Well-known words\nhere");
    const QString rtf = write(QStringLiteral("two.rtf"),
                              "{\\rtf1 Text{\\footnote \\pard the foot note} more.\\par}");
    const Run table
        = mvrtext({QStringLiteral("count"), one, path(QStringLiteral("none.txt")), rtf});
    QCOMPARE(table.exitCode, 1);
    const QRegularExpression rows(QStringLiteral("one.txt +3 +21\n.* 2 +10\ntotal +5 +31\n$"));
    QVERIFY2(rows.match(QString::fromUtf8(table.output)).hasMatch(), table.output.constData());
    QVERIFY2(table.errors.contains("none.txt: "), table.errors.constData());

    const Run json = mvrtext({QStringLiteral("count"), QStringLiteral("--json"),
                              QStringLiteral("--with-footnotes"), rtf});
    const QJsonObject counts = QJsonDocument::fromJson(json.output).object();
    QCOMPARE(counts.value(QLatin1String("words")).toInt(), 5);
    const QJsonObject file = counts.value(QLatin1String("files")).toArray().at(0).toObject();
    QCOMPARE(file.value(QLatin1String("characters")).toInt(), 10 + 13);
}

void TestToolDocuments::replacesText()
{
    const QString in = write(QStringLiteral("in.txt"), "Cat, cat.\n");
    const auto replaced = [&](const QString &options) {
        const QStringList command = QStringLiteral("replace %1 -o %2 %3")
                                        .arg(in, path(QStringLiteral("out.txt")), options)
                                        .split(QLatin1Char(' '));
        const QByteArray said = mvrtext(command).errors;
        return said.mid(said.lastIndexOf(": ") + 2) + read(QStringLiteral("out.txt"));
    };
    QCOMPARE(replaced(QStringLiteral("--find cat --with dog")),
             QByteArray("2 places replaced\ndog, dog.\n"));
    QCOMPARE(replaced(QStringLiteral("--find cat --with= --match-case")),
             QByteArray("1 place replaced\nCat, .\n"));
    QCOMPARE(replaced(QStringLiteral("--regexp --find [,.].* --with !")),
             QByteArray("1 place replaced\nCat!\n"));

    // A line feed does not push the title page's end into the script.
    const QString play = path(QStringLiteral("play.fdx"));
    mvrtext({QStringLiteral("replace"), example(), QStringLiteral("-o"), play,
             QStringLiteral("--find"), QStringLiteral("by"), QStringLiteral("--with=by\nhand of")});
    const auto titlePage = [](const QString &file) {
        const Run info = mvrtext({QStringLiteral("info"), QStringLiteral("--json"), file});
        const QJsonObject figures = QJsonDocument::fromJson(info.output).object();
        return figures.value(QLatin1String("titlePageParagraphs")).toInt();
    };
    QCOMPARE(titlePage(play), titlePage(example()) + 1);
}

void TestToolDocuments::appendsDocuments()
{
    const QString one = write(QStringLiteral("1.rtf"), "{\\rtf1{\\info{\\title First}}one\\par}");
    const QString two = write(QStringLiteral("2.txt"), "two\n\nthree");
    const QString empty = write(QStringLiteral("3.txt"), "");
    const auto appended = [this](const QString &out, const QStringList &files) {
        QStringList command {QStringLiteral("append"), QStringLiteral("--page-break"),
                             QStringLiteral("-o"), path(out)};
        return mvrtext(command + files).exitCode == 0 ? read(out) : QByteArray();
    };
    const QByteArray rtf = appended(QStringLiteral("out.rtf"), {one, empty, two, one});
    QCOMPARE(rtf.count("\\pagebb"), 2);
    QVERIFY(rtf.contains("First"));
    QCOMPARE(appended(QStringLiteral("out.txt"), {one, empty, two, one}),
             QByteArray("one\ntwo\n\nthree\none\n"));
    QVERIFY(appended(QStringLiteral("out.fdx"), {two, example()}).contains("ScriptNote"));
    const QByteArray play = appended(QStringLiteral("play.txt"), {two, example(), example()});
    QVERIFY2(play.startsWith("two\n\nthree\nFADE IN:\n"), play.left(200).constData());
    QCOMPARE(play.count("FADE IN:"), 2);
    const QString headings = write(QStringLiteral("h.md"), "# Part one\n\n## int. House\n\nText");
    const QByteArray script = appended(QStringLiteral("h.fdx"), {headings, two});
    QVERIFY(script.contains("Type=\"General\"><Text Style=\"Bold\">Part one<"));
    QVERIFY2(script.contains("Type=\"Scene Heading\"><Text>int. House<"), script.constData());
    const QString other = path(QStringLiteral("o.fdx"));
    QCOMPARE(mvrtext({QStringLiteral("convert"), QStringLiteral("--elements"),
                      QStringLiteral("outline,scenes=Shot,text=Own & one"), headings, other})
                 .exitCode,
             0);
    for (const char *paragraph : {"<Paragraph Type=\"Outline 1\"><Text>Part one</Text></Paragraph>",
                                  "<Paragraph Type=\"Shot\"><Text>int. House</Text></Paragraph>",
                                  "<Paragraph Type=\"Own &amp; one\"><Text>Text</Text></Paragraph>",
                                  "<ElementSettings Type=\"Own &amp; one\">"})
        QVERIFY2(read(QStringLiteral("o.fdx")).contains(paragraph), paragraph);
    QCOMPARE(mvrtext({QStringLiteral("convert"), QStringLiteral("--elements"),
                      QStringLiteral("h7=Shot"), headings, other})
                 .exitCode,
             2);
    QVERIFY(appended(QStringLiteral("2.txt"), {one, two}).isEmpty());
    QCOMPARE(read(QStringLiteral("2.txt")), QByteArray("two\n\nthree"));
}

// Paragraphs take the first file's settings of their type, and bring along what it has none for.
void TestToolDocuments::appendsScreenplays()
{
    const auto file = [this](const char *name, const QByteArray &paragraphs,
                             const QByteArray &action, const QByteArray &rest) {
        return write(QString::fromUtf8(name),
                     "<FinalDraft Version=\"5\"><Content>" + paragraphs
                         + "</Content><ElementSettings Type=\"Action\"><ParagraphSpec " + action
                         + "/></ElementSettings>" + rest + "</FinalDraft>");
    };
    const QByteArray song = "<ElementSettings Type=\"Song\"><FontSpec Style=\"AllCaps\"/>"
                            "<Behavior PaginateAs=\"Dialogue\"/></ElementSettings>";
    const QByteArray scene
        = "<SceneProperties Title=\"A &amp; B\" Length=\"1 3/8\"><Summary><Paragraph><Text>First"
          "</Text></Paragraph><Paragraph><Text>Last</Text></Paragraph></Summary></SceneProperties>";
    const QString one
        = file("1.fdx", "<Paragraph Type=\"Action\"><Text>One</Text></Paragraph>",
               "LeftIndent=\"1.50\" SpaceBefore=\"24\"", "<PageLayout TopMargin=\"72\"/>");
    const QString two
        = file("2.fdx",
               "<Paragraph Number=\"7\" Bookmark=\"b\" Type=\"Action\">" + scene
                   + "<Text>Two</Text></Paragraph>"
                     "<Paragraph Type=\"Action\" LeftIndent=\"2.25\"><Text>Own</Text></Paragraph>"
                     "<Paragraph Type=\"Song\"><Text>La</Text></Paragraph>",
               "LeftIndent=\"1.25\" SpaceBefore=\"12\"", song + "<PageLayout TopMargin=\"36\"/>");
    QCOMPARE(mvrtext({QStringLiteral("append"), QStringLiteral("-o"), path(QStringLiteral("3.fdx")),
                      one, two})
                 .exitCode,
             0);
    const QByteArray script = read(QStringLiteral("3.fdx"));
    QVERIFY2(script.contains("<Paragraph Number=\"7\" Bookmark=\"b\" Type=\"Action\">" + scene
                             + "<Text>Two<"),
             script);
    QVERIFY2(script.contains("<Paragraph LeftIndent=\"2.25\" Type=\"Action\"><Text>Own<"), script);
    QVERIFY2(script.contains("\"Song\"><Text Style=\"AllCaps\">La<"), script);
    QCOMPARE(script.count(song), 1);
}

void TestToolDocuments::tellsFigures()
{
    const QString text
        = write(QStringLiteral("a.txt"), "Don\xe2\x80\x99t stop \xe2\x80\x94 now.\n\nTwo");
    const QStringList info {QStringLiteral("info"), QStringLiteral("--json")};
    const QJsonObject plain
        = QJsonDocument::fromJson(mvrtext(info + QStringList(text)).output).object();
    QCOMPARE(plain.value(QLatin1String("paragraphs")).toInt(), 3);
    QCOMPARE(plain.value(QLatin1String("words")).toInt(), 4);
    QCOMPARE(plain.value(QLatin1String("characters")).toInt(), 22);
    QCOMPARE(plain.value(QLatin1String("pages")).toInt(), 1);
    QVERIFY(!plain.contains(QLatin1String("elements")));

    const QJsonObject play
        = QJsonDocument::fromJson(mvrtext(info + QStringList(example())).output).object();
    const QJsonObject elements = play.value(QLatin1String("elements")).toObject();
    QCOMPARE(elements.value(QLatin1String("Scene Heading")).toInt(), 3);
    QCOMPARE(elements.value(QLatin1String("Shot")).toInt(), 1);
    QCOMPARE(play.value(QLatin1String("scenes")).toArray().size(), 3);
    QVERIFY(play.value(QLatin1String("version")).isString());
    const QJsonArray cast = play.value(QLatin1String("cast")).toArray();
    QVERIFY(cast.size() > 1 && cast.first().toObject().value(QLatin1String("words")).toInt() > 0);
    QCOMPARE(elements.value(QLatin1String("Dialogue")).toInt(), 26);
    QCOMPARE(play.value(QLatin1String("notes")).toObject().value(QLatin1String("comment")).toInt(),
             5);
    QCOMPARE(play.value(QLatin1String("scaling")).toDouble(), 100.0);
    QCOMPARE(play.value(QLatin1String("showInvisibles")), QJsonValue(false));
    QCOMPARE(play.value(QLatin1String("pages")).toInt(), 5);
}

namespace {

/*! How the text reads in the content of an ODT file, in the words of its automatic style. */
QString odtStyle(const QString &xml, const QString &text)
{
    const QRegularExpression named(QStringLiteral("style-name=\"(c\\d+)\">%1<").arg(text));
    const QRegularExpression style(
        QStringLiteral("style:name=\"%1\"[^>]*>\\s*<style:text-properties ([^>]*)/>")
            .arg(named.match(xml).captured(1)));
    return style.match(xml).captured(1);
}

}

/*! The text of out.odt; empty where nothing can unpack it. */
QString TestToolDocuments::odtText() const
{
    QProcess unpacking;
    unpacking.setWorkingDirectory(m_folder->path());
    unpacking.start(QStringLiteral("python3"),
                    {QStringLiteral("-m"), QStringLiteral("zipfile"), QStringLiteral("-e"),
                     QStringLiteral("out.odt"), QStringLiteral("odt")});
    if (!unpacking.waitForFinished() || unpacking.exitCode() != 0)
        return QString();
    return QString::fromUtf8(read(QStringLiteral("odt/content.xml")));
}

void TestToolDocuments::writesOdt()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("art")));
    QImage art(60, 40, QImage::Format_RGB32);
    art.fill(Qt::darkGreen);
    QVERIFY(art.save(path(QStringLiteral("art/a.png"))));
    write(QStringLiteral("in.md"),
          "# One\n\n## Two\n\nPlain [web](https://example.org/x?a=1&b=2) *it* "
          "noted[^1] word{>>said<<}.\n\n![p](art/a.png)\n\n[^1]: Foot\n");
    const Run run
        = mvrtext("convert --media-from art --notes inline in.md out.odt", m_folder->path());
    QVERIFY2(run.exitCode == 0 && run.errors.isEmpty(), run.errors.constData());
    const QString xml = odtText();
    if (xml.isEmpty())
        QSKIP("There is no python3 to unpack the file.");

    const QString one = odtStyle(xml, QStringLiteral("One"));
    const QString two = odtStyle(xml, QStringLiteral("Two"));
    QVERIFY2(one.contains(QLatin1String("fo:font-size=\"24pt\"")), qPrintable(xml));
    QVERIFY2(two.contains(QLatin1String("fo:font-size=\"18pt\"")), qPrintable(two));
    QVERIFY2(two.contains(QLatin1String("fo:font-weight=\"bold\"")), qPrintable(two));
    QVERIFY(odtStyle(xml, QStringLiteral("it")).contains(QLatin1String("\"italic\"")));
    // What names no font has the one that it has on pages.
    for (const QString &style : {one, odtStyle(xml, QStringLiteral("Plain "))})
        QVERIFY2(style.contains(QLatin1String("\"Times New Roman\"")), qPrintable(style));
    QVERIFY2(xml.contains(QLatin1String("xlink:href=\"https://example.org/x?a=1&amp;b=2\"")),
             qPrintable(xml));
    const QString text = QString(xml).remove(QRegularExpression(QStringLiteral("<[^>]*>")));
    QVERIFY2(text.contains(QLatin1String("noted [Foot] word [said].")), qPrintable(text));
    const QString picture = QRegularExpression(QStringLiteral("xlink:href=\"(Pictures/[^\"]+)\""))
                                .match(xml)
                                .captured(1);
    QCOMPARE(QImage(path(QStringLiteral("odt/") + picture)).size(), QSize(60, 40));
    QVERIFY(xml.contains(QLatin1String("svg:width=\"45pt\" svg:height=\"30pt\"")));
}

// Readers show nothing of paragraphs and tables that are in no cell, of tables in lists, nor of
// items that are in no list.
void TestToolDocuments::putsTextOfOdtInPlace_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("body");
    QByteArray rtf = listsInCells;
    rtf.chop(1);
    rtf += "\\pard\\trowd\\cellx3000\\cellx6000\\intbl h\\par\\itap2 i\\nestcell j\\nestcell"
           "{\\*\\nesttableprops\\trowd\\cellx1000\\cellx2000\\nestrow}\\pard\\intbl k\\cell"
           "\\pard\\intbl{\\b l}\\cell\\row\\pard m\\par}";
    QTest::newRow("cells and lists")
        << "in.rtf" << rtf
        << QStringLiteral("<list>- a;- b;</list><list>- c;</list><p/><table>"
                          "<table-row><table-cell><p>3. d<line-break/>4. e</p></table-cell>"
                          "<table-cell><p>\u2022 f</p></table-cell></table-row></table>"
                          "<list>- g;</list><p/><table><table-row><table-cell><p>h<line-break/>"
                          "i<line-break/>j<line-break/>k</p></table-cell>"
                          "<table-cell><p>l</p></table-cell></table-row></table><p>m</p>");
    QTest::newRow("lists without an indent")
        << "in.html"
        << QByteArray("<ol style='-qt-list-indent:0'><li>a</ol><ul style='-qt-list-indent:-2'>"
                      "<li>b</ul><p>c")
        << "<list>- a;</list><list>- b;</list><p>c</p>";
}

void TestToolDocuments::putsTextOfOdtInPlace()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, contents);
    const QString in = write(name, contents);
    QCOMPARE(mvrtext({QStringLiteral("convert"), in, path(QStringLiteral("out.odt"))}).exitCode, 0);
    QString xml = odtText();
    if (xml.isEmpty())
        QSKIP("There is no python3 to unpack the file.");
    xml.remove(0, xml.indexOf(QLatin1String("<office:text>")));
    xml.truncate(xml.indexOf(QLatin1String("</office:text>")));
    xml.remove(QRegularExpression(QStringLiteral("</?text:span[^>]*>|\\s+(?=<)|<[^>]*-column[^>]*>"
                                                 "|<office:text>|(?<=<)(?:text|table):|(?<=</)"
                                                 "(?:text|table):")));
    xml.remove(QRegularExpression(QStringLiteral("(?: [a-z]+:[a-z-]+=\"[^\"]*\")+")));
    xml.replace(QLatin1String("<list-item><p>"), QLatin1String("- "));
    xml.replace(QLatin1String("</p></list-item>"), QLatin1String(";"));
    xml.remove(QLatin1String("<tab/>")); // in front of each line feed
    QTEST(xml.trimmed(), "body");
}

// A list that goes on in another cell is one of its own there, and goes on counting.
void TestToolDocuments::endsListsOfHtmlInTheirCells()
{
    const QString in = write(QStringLiteral("in.rtf"), listsInCells);
    QCOMPARE(mvrtext({QStringLiteral("convert"), in, path(QStringLiteral("out.html"))}).exitCode,
             0);
    QString html = QString::fromUtf8(read(QStringLiteral("out.html")));
    html.remove(0, html.indexOf(QLatin1String("<body")));
    html.remove(QRegularExpression(QStringLiteral(" (?:style|width)=\"[^\"]*\"|\\s+(?=<)")));
    const int start = html.indexOf(QLatin1String("<ol>"));
    QCOMPARE(html.mid(start, html.indexOf(QLatin1String("</body>")) - start)
                 .remove(QLatin1String(" border=\"0\" cellspacing=\"0\"")),
             QStringLiteral("<ol><li>a</li><li>b</li></ol><ul><li>c</li></ul><table><tr>"
                            "<td><ol start=\"3\"><li>d</li><li>e</li></ol></td>"
                            "<td><ul><li>f</li></ul></td></tr></table>"
                            "<ol start=\"5\"><li>g</li></ol>"));

    // So do the footnotes of a book, which are a file of their own.
    QByteArray book = listsInCells;
    book.replace("\\ls1 a", "x{\\footnote \\pard\\ls1 a");
    book.replace("g\\par}", "g}\\par}");
    write(QStringLiteral("book.rtf"), book);
    mvrtext("endnotes --style ebook book.rtf -o book.html", m_folder->path());
    QString notes = QString::fromUtf8(read(QStringLiteral("footnotes.xhtml")));
    notes.remove(QRegularExpression(QStringLiteral("<[/a-z]+ style=\"[^\"]*\">|</li>|\\s+(?=<)")));
    QVERIFY2(notes.contains(QLatin1String("c</ul><table")), qPrintable(notes));
}

QTEST_GUILESS_MAIN(TestToolDocuments)
#include "tst_tooldocuments.moc"
