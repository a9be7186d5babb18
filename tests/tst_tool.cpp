// SPDX-License-Identifier: MIT
#include "ToolRun.h"
#include "Utf16.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QtTest>

class TestTool : public ToolTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void exitCodes_data();
    void exitCodes();
    void writesEveryFormat_data();
    void writesEveryFormat();
    void pictureIsTheWantedPage();
    void tablesHaveTheirWidth();
    void screenplayComesBack();
    void fileWithoutSettingsKeepsItsText();
    void shotsWithoutHeadingsComeInWhole();
    void fillsInSettingsInAnyEncoding();
    void placesNotes_data();
    void placesNotes();
    void saysWhatIsNotRead();
    void readsTextOfAnyEncoding_data();
    void readsTextOfAnyEncoding();
    void convertsStreams();
    void listsNotes();
};

void TestTool::init()
{
    QVERIFY(newFolder());
}

void TestTool::exitCodes_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("says");

    QTest::newRow("help") << "--help" << 0 << "Commands:";
    QTest::newRow("help of a command") << "convert --help" << 0 << "Examples:";
    QTest::newRow("version") << "--version" << 0 << "mvrtext [0-9]";
    QTest::newRow("no command") << "" << 2 << "mvrtext: ";
    QTest::newRow("unknown command") << "convrt a b" << 2 << "convrt";
    QTest::newRow("unknown option") << "info --jsn a.txt" << 2 << "jsn";
    QTest::newRow("missing file name") << "convert a.fdx" << 2 << "missing";
    QTest::newRow("too many file names") << "info a.txt b.txt" << 2 << "too many";
    QTest::newRow("unknown suffix") << "convert a.doc b.rtf" << 2 << "a\\.doc";
    QTest::newRow("unknown format") << "convert --to docx a.fdx b" << 2 << "docx";
    QTest::newRow("format that is not read") << "convert a.pdf b.rtf" << 2 << "PDF is not read";
    QTest::newRow("stream without a format") << "info -" << 2 << "name its format";
    QTest::newRow("bad choice") << "convert --notes keep a.fdx b.rtf" << 2 << "keep";
    QTest::newRow("bad number") << "convert --dpi 10000 a.fdx b.png" << 2 << "dpi";
    QTest::newRow("nothing to replace") << "replace a.txt -o b.txt --find x" << 2 << "--with";
    QTest::newRow("folder without a name")
        << "convert --to rtf --into= a.fdx" << 2 << "--into needs";
    QTest::newRow("broken expression")
        << "replace a.txt -o b.txt --regexp --find ( --with x" << 2 << "--find";
    QTest::newRow("nothing to append") << "append a.txt -o b.txt" << 2 << "missing";
    QTest::newRow("unknown suffix behind others") << "count a.txt b.doc" << 2 << "b\\.doc";
    QTest::newRow("neither way") << "markup a.txt -o b.txt" << 2 << "either";
    QTest::newRow("bad style") << "endnotes --style pdf a.txt -o b.txt" << 2 << "pdf";
    QTest::newRow("notes of a book without a file")
        << "endnotes --style ebook a.txt -o - --to html" << 2 << "--notes-out";
    QTest::newRow("notes over the input")
        << "endnotes a.txt -o b.txt --notes-out b.txt" << 1 << "nothing was written";
    QTest::newRow("no such file") << "notes nowhere.fdx" << 1 << "mvrtext: nowhere\\.fdx: ";
    QTest::newRow("folder as input") << "info --from txt /" << 1 << "mvrtext: /: ";
}

void TestTool::exitCodes()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, says);

    const Run run = mvrtext(arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts));
    QTEST(run.exitCode, "exitCode");
    const QByteArray &said = run.exitCode == 0 ? run.output : run.errors;
    QVERIFY2(QRegularExpression(says).match(QString::fromUtf8(said)).hasMatch(), said.constData());
    QVERIFY(run.exitCode == 0 ? run.errors.isEmpty() : run.output.isEmpty());
}

void TestTool::writesEveryFormat_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("begins");
    QTest::addColumn<QByteArray>("holds");

    const QByteArray heading = "EXT. ANSELM LANDING - NIGHT";
    QTest::newRow("fdx") << "fdx" << QByteArray("<?xml") << heading;
    QTest::newRow("rtf") << "rtf" << QByteArray("{\\rtf1") << heading;
    QTest::newRow("html") << "html" << QByteArray("<!DOCTYPE") << heading;
    QTest::newRow("text") << "txt" << QByteArray("\n") << "\n\n" + heading + "\n\nFog.";
    QTest::newRow("Markdown") << "md" << QByteArray("**<u>THE LAST") << heading + "\n\nFog.";
    QTest::newRow("BBCode") << "bbcode" << QByteArray("[b][u]THE LAST")
                            << "\n\n" + heading + "\n\nFog.";
    QTest::newRow("odt") << "odt" << QByteArray("PK") << QByteArray("opendocument.text");
    QTest::newRow("pdf") << "pdf" << QByteArray("%PDF-") << QByteArray("/MediaBox [ 0 0 612");
    QTest::newRow("png") << "png" << QByteArray("\x89PNG") << QByteArray("IEND");
}

void TestTool::writesEveryFormat()
{
    QFETCH(const QString, suffix);
    QFETCH(const QByteArray, begins);
    QFETCH(const QByteArray, holds);

    const QString name = QStringLiteral("out.") + suffix;
    const Run run = mvrtext({QStringLiteral("convert"), example(), path(name)});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.isEmpty());
    const QByteArray written = read(name);
    QVERIFY2(written.startsWith(begins), written.left(40).constData());
    QVERIFY2(written.contains(holds), written.left(2000).constData());
}

void TestTool::pictureIsTheWantedPage()
{
    const QStringList first {QStringLiteral("convert"), QStringLiteral("--dpi"),
                             QStringLiteral("100"), example(), path(QStringLiteral("1.png"))};
    QCOMPARE(mvrtext(first).exitCode, 0);
    const QImage titlePage(path(QStringLiteral("1.png")));
    QCOMPARE(titlePage.size(), QSize(850, 1100));

    QCOMPARE(mvrtext({QStringLiteral("convert"), QStringLiteral("--dpi"), QStringLiteral("100"),
                      QStringLiteral("--page"), QStringLiteral("2"), example(),
                      path(QStringLiteral("2.png"))})
                 .exitCode,
             0);
    const QImage script(path(QStringLiteral("2.png")));
    const auto inkIn = [](const QImage &page, const QRect &area) {
        int ink = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                ink += qGray(page.pixel(x, y)) < 128 ? 1 : 0;
        }
        return ink;
    };
    // Action begins an inch and a half from the left; numbers of scenes stand in the margins.
    const QRect actionColumn(150, 100, 50, 900);
    QVERIFY(inkIn(script, actionColumn) > inkIn(titlePage, actionColumn));
    QVERIFY(inkIn(script, QRect(70, 0, 20, 1100)) > 0);
    QCOMPARE(inkIn(script, QRect(90, 0, 55, 1100)), 0);
    QCOMPARE(inkIn(script, QRect(755, 0, 95, 1100)), 0);

    const Run beyond = mvrtext({QStringLiteral("convert"), QStringLiteral("--page"),
                                QStringLiteral("99"), example(), path(QStringLiteral("99.png"))});
    QCOMPARE(beyond.exitCode, 1);
    QVERIFY2(beyond.errors.contains("no page 99"), beyond.errors.constData());
}

void TestTool::tablesHaveTheirWidth()
{
    // A red cell of four inches.
    write(QStringLiteral("in.rtf"),
          "{\\rtf1{\\colortbl;\\red255\\green0\\blue0;}\\trowd\\clcbpat1"
          "\\cellx5760\\intbl x\\cell\\row\\pard\\par}");
    const Run run = mvrtext("convert --dpi 100 in.rtf out.png", m_folder->path());
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    const QImage page(path(QStringLiteral("out.png")));
    int widest = 0;
    for (int y = 0; y < page.height(); ++y) {
        int width = 0;
        for (int x = 0; x < page.width(); ++x)
            width += page.pixelColor(x, y) == QColor(Qt::red) ? 1 : 0;
        widest = qMax(widest, width);
    }
    QVERIFY2(widest > 390 && widest <= 400, qPrintable(QString::number(widest)));
}

void TestTool::screenplayComesBack()
{
    const QString once = path(QStringLiteral("once.fdx"));
    const QString twice = path(QStringLiteral("twice.fdx"));
    QCOMPARE(mvrtext({QStringLiteral("convert"), example(), once}).exitCode, 0);
    QCOMPARE(mvrtext({QStringLiteral("convert"), once, twice}).exitCode, 0);
    QCOMPARE(read(QStringLiteral("twice.fdx")), read(QStringLiteral("once.fdx")));

    const QStringList info {QStringLiteral("info"), QStringLiteral("--json")};
    const Run before = mvrtext(info + QStringList(example()));
    const Run after = mvrtext(info + QStringList(once));
    QCOMPARE(after.output, before.output); // paragraphs, types, notes, title page, pages

    // The letters stay as typed.
    const QString typed = write(QStringLiteral("typed.fdx"),
                                script("<Paragraph Type=\"Character\"><Text>Ann</Text></Paragraph>",
                                       "<PageLayout TopMargin=\"36\"/>"));
    QCOMPARE(mvrtext({QStringLiteral("convert"), typed, once}).exitCode, 0);
    QCOMPARE(read(QStringLiteral("once.fdx")), read(QStringLiteral("typed.fdx")));

    const QString centred = write(
        QStringLiteral("centred.fdx"),
        script("<Paragraph Type=\"Action\" Alignment=\"Center\"><Text>x</Text></Paragraph>"));
    QCOMPARE(
        mvrtext({QStringLiteral("replace"), centred, QStringLiteral("--find"), QStringLiteral("x"),
                 QStringLiteral("--with"), QStringLiteral("y"), QStringLiteral("-o"), twice})
            .exitCode,
        0);
    QCOMPARE(read(QStringLiteral("twice.fdx")),
             read(QStringLiteral("centred.fdx")).replace(">x<", ">y<"));
    QCOMPARE(mvrtext({QStringLiteral("convert"), typed, path(QStringLiteral("t.txt"))}).exitCode,
             0);
    QCOMPARE(read(QStringLiteral("t.txt")), QByteArray("ANN\n"));
}

void TestTool::fileWithoutSettingsKeepsItsText()
{
    const QString input
        = write(QStringLiteral("bare.fdx"),
                script("<Paragraph><Text>no type</Text></Paragraph>"
                       "<Paragraph Type=\"Singing\"><Text>unknown type</Text></Paragraph>"
                       "<Paragraph Type=\"Shot\"><Text>a shot</Text></Paragraph>"
                       "<Paragraph Type=\"Dialogue\"><Text>spoken</Text></Paragraph>"));
    const QString output = path(QStringLiteral("bare.html"));
    QCOMPARE(mvrtext({QStringLiteral("convert"), input, output}).exitCode, 0);
    const QByteArray html = read(QStringLiteral("bare.html"));
    QVERIFY(html.contains("no type"));
    QVERIFY(html.contains("unknown type"));
    QVERIFY2(html.contains("A SHOT"), html.constData());
    QVERIFY2(html.contains("margin-left:144px"), html.constData()); // dialogue: 1.5 inches

    const QString again = path(QStringLiteral("again.fdx"));
    QCOMPARE(mvrtext({QStringLiteral("convert"), input, again}).exitCode, 0);
    QVERIFY(read(QStringLiteral("again.fdx")).contains("<Paragraph Type=\"Shot\">"));
}

void TestTool::shotsWithoutHeadingsComeInWhole()
{
    const QByteArray file
        = script("<Paragraph Type=\"Shot\"><Text>one</Text></Paragraph><Paragraph><Text>two</Text>"
                 "</Paragraph><Paragraph Type=\"Scene Heading\"><Text>three</Text></Paragraph>"
                 "<Paragraph Type=\"Shot\"><Text>four</Text></Paragraph>",
                 "<ElementSettings Type=\"Shot\"><ParagraphSpec LeftIndent=\"2.00\"/>"
                 "<Behavior PaginateAs=\"Scene Heading\"/></ElementSettings>");
    const auto types = [this](const QByteArray &bytes) {
        const QString input = write(QStringLiteral("shots.fdx"), bytes);
        const Run info = mvrtext({QStringLiteral("info"), QStringLiteral("--json"), input});
        const QJsonObject elements = QJsonDocument::fromJson(info.output)
                                         .object()
                                         .value(QLatin1String("elements"))
                                         .toObject();
        return QJsonDocument(elements).toJson(QJsonDocument::Compact);
    };
    const QByteArray expected = R"({"General":1,"Scene Heading":1,"Shot":2})";
    QCOMPARE(types(file), expected);
    QCOMPARE(types(inUtf16(file, false)), expected);
    QCOMPARE(types(inUtf16(file, true)), expected);
}

// A file without settings has those of every script, however its letters are written.
void TestTool::fillsInSettingsInAnyEncoding()
{
    const QByteArray file
        = "<FinalDraft><Content><Paragraph Type=\"Dialogue\"><Text>Hello.</Text></Paragraph>"
          "</Content></FinalDraft>";
    const auto converted = [this](const QByteArray &bytes) {
        const QString output = path(QStringLiteral("filled.rtf"));
        const QString input = write(QStringLiteral("bare.fdx"), bytes);
        return mvrtext({QStringLiteral("convert"), input, output}).exitCode == 0
            ? read(QStringLiteral("filled.rtf"))
            : QByteArray();
    };
    const QByteArray expected = converted(file);
    QVERIFY2(expected.contains("\\li2160"), expected); // dialogue is narrow
    QCOMPARE(converted(inUtf16(file, false)), expected);
    QCOMPARE(converted(inUtf16(file, true)), expected);
}

void TestTool::placesNotes_data()
{
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("holds");
    QTest::addColumn<QByteArray>("lacks");
    QTest::addColumn<bool>("saysLoss");

    const QByteArray note = "Check that no registered";
    const QByteArray inBrackets = "Constance [Check that no registered vessel has this name.],";
    QTest::newRow("script notes by default") << ""
                                             << "fdx" << note << QByteArray("[Check") << false;
    QTest::newRow("left out by default") << ""
                                         << "txt" << QByteArray("Constance, leans") << note << true;
    QTest::newRow("in brackets") << "inline"
                                 << "txt" << inBrackets << QByteArray("  [") << false;
    QTest::newRow("inspector notes are script notes")
        << "inspector"
        << "fdx" << note << QByteArray("[Check") << false;
    QTest::newRow("attached in RTF")
        << ""
        << "rtf" << QByteArray("annotation") << QByteArray("[Check") << false;
    QTest::newRow("in brackets in RTF")
        << "inline"
        << "rtf" << QByteArray("[Check") << QByteArray("annotation") << false;
    QTest::newRow("dropped") << "drop"
                             << "fdx" << QByteArray(">Constance<") << note << true;
    QTest::newRow("no link is left of a note")
        << ""
        << "html" << QByteArray("Constance") << QByteArray("href") << true;
}

void TestTool::placesNotes()
{
    QFETCH(const QString, choice);
    QFETCH(const QString, suffix);
    QFETCH(const QByteArray, holds);
    QFETCH(const QByteArray, lacks);

    QStringList arguments {QStringLiteral("convert"), example(),
                           path(QStringLiteral("out.") + suffix)};
    if (!choice.isEmpty())
        arguments << QStringLiteral("--notes") << choice;
    const Run run = mvrtext(arguments);
    QCOMPARE(run.exitCode, 0);
    const QByteArray written = read(QStringLiteral("out.") + suffix);
    QVERIFY2(written.contains(holds), written.constData());
    QVERIFY2(!written.contains(lacks), written.constData());
    QTEST(run.errors.contains("5 notes left out"), "saysLoss");
    const bool couldStay
        = run.errors.contains("; --notes inline keeps them in the text, rtf and md");
    QCOMPARE(couldStay, run.errors.contains("left out that"));
    QVERIFY(!run.errors.contains("endnotes")); // which is about footnotes
}

void TestTool::saysWhatIsNotRead()
{
    const QByteArray note = "<ScriptNote Range=\"0,1\"><Paragraph><Text>x</Text></Paragraph>"
                            "</ScriptNote>";
    const QByteArray empty = "<ScriptNote Range=\"0,1\"><Paragraph><Text> </Text></Paragraph>"
                             "</ScriptNote>";
    const QByteArray body
        = "<Paragraph Type=\"Scene Heading\"><SceneProperties><Summary><Paragraph><Text>s</Text>"
          "</Paragraph></Summary><SceneArcBeats><CharacterArcBeat><Paragraph><Text>b</Text>"
          "</Paragraph></CharacterArcBeat></SceneArcBeats></SceneProperties>"
          "<Text Style=\"Bold+HiddenText\">OMITTED</Text><OmittedScene><Paragraph>"
          "<Text>o</Text></Paragraph><Paragraph><Text>o</Text></Paragraph></OmittedScene>"
          "</Paragraph>";
    const QByteArray rest = "<ScriptNotes>" + note + empty + "</ScriptNotes>"
        + "<UnanchoredScriptNotes>" + note
        + "</UnanchoredScriptNotes><AltCollection><Alt Id=\"1\">"
          "<Paragraph><Text>a</Text></Paragraph></Alt></AltCollection>";
    const Run run = mvrtext(
        {QStringLiteral("info"), write(QStringLiteral("losses.fdx"), script(body, rest))});
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.errors.endsWith("losses.fdx: not read: 1 note without a place, 1 alternate, "
                                 "2 paragraphs of omitted scenes, 1 scene summary, 1 beat of a "
                                 "character's arc, 1 mark of hidden text, which is shown\n"),
             run.errors.constData());

    // A conversion says what would keep it, and says nothing where that is what is written.
    const auto said = [this](const char *to) {
        return mvrtext({QStringLiteral("convert"), path(QStringLiteral("losses.fdx")),
                        path(QStringLiteral("out.") + QLatin1String(to))})
            .errors;
    };
    QVERIFY2(said("txt").contains("which is shown; --to fdx keeps all of that\n"), said("txt"));
    QVERIFY(!said("fdx").contains("not read"));

    const Run rtf
        = mvrtext({QStringLiteral("info"),
                   write(QStringLiteral("losses.rtf"),
                         "{\\rtf1 a{\\v b}{\\deleted cd}" + QByteArray("{\\footnote n").repeated(5)
                             + QByteArray(6, '}'))});
    QCOMPARE(rtf.exitCode, 0);
    QVERIFY2(rtf.errors.endsWith("losses.rtf: not read: 1 character of hidden text, "
                                 "2 characters of deleted text, 1 note\n"),
             rtf.errors.constData());
}

void TestTool::readsTextOfAnyEncoding_data()
{
    QTest::addColumn<QByteArray>("bytes");

    const auto utf16 = [](bool bigEndian) {
        QByteArray bytes;
        for (const int unit : {0xfeff, 0x61, 0x20, 0xe9, 0x201c, 0x0d, 0x0a, 0x62, 0x0a})
            bytes.append(char(bigEndian ? unit >> 8 : unit & 0xff))
                .append(char(bigEndian ? unit & 0xff : unit >> 8));
        return bytes;
    };
    QTest::newRow("UTF-8") << QByteArray("a \xc3\xa9\xe2\x80\x9c\nb\n");
    QTest::newRow("UTF-8, marked") << QByteArray("\xef\xbb\xbf"
                                                 "a \xc3\xa9\xe2\x80\x9c\nb\n");
    QTest::newRow("UTF-16, little-endian") << utf16(false);
    QTest::newRow("UTF-16, big-endian") << utf16(true);
    QTest::newRow("Windows-1252") << QByteArray("a \xe9\x93\r\nb\r\n");
    QTest::newRow("old Mac line ends, a stray NUL") << QByteArray("a \xe9\x93\rb\0\r", 8);
}

void TestTool::readsTextOfAnyEncoding()
{
    QFETCH(const QByteArray, bytes);

    const QString input = write(QStringLiteral("in.txt"), bytes);
    QCOMPARE(mvrtext({QStringLiteral("convert"), input, path(QStringLiteral("out.txt"))}).exitCode,
             0);
    QCOMPARE(read(QStringLiteral("out.txt")).trimmed(), QByteArray("a \xc3\xa9\xe2\x80\x9c\nb"));
}

void TestTool::convertsStreams()
{
    const Run run = mvrtext({QStringLiteral("convert"), QStringLiteral("--from"),
                             QStringLiteral("md"), QStringLiteral("--to"), QStringLiteral("html"),
                             QStringLiteral("-"), QStringLiteral("-")},
                            "A *good* day <script>");
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.errors.isEmpty(), run.errors.constData());
    QVERIFY2(run.output.contains("font-style:italic;\">good<"), run.output.constData());
    QVERIFY(run.output.contains("&lt;script&gt;"));

    QFile input(example());
    QVERIFY(input.open(QIODevice::ReadOnly));
    const Run binary = mvrtext({QStringLiteral("convert"), QStringLiteral("--from"),
                                QStringLiteral("fdx"), QStringLiteral("--to"),
                                QStringLiteral("png"), QStringLiteral("-"), QStringLiteral("-")},
                               input.readAll());
    QCOMPARE(binary.exitCode, 0);
    QVERIFY(!QImage::fromData(binary.output, "PNG").isNull());
}

void TestTool::listsNotes()
{
    const Run run = mvrtext({QStringLiteral("notes"), QStringLiteral("--json"), example()});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.errors.isEmpty());
    const QJsonArray notes = QJsonDocument::fromJson(run.output).array();
    QCOMPARE(notes.size(), 5);
    const QJsonObject first = notes.first().toObject();
    QCOMPARE(first.value(QLatin1String("kind")).toString(), QStringLiteral("comment"));
    QCOMPARE(first.value(QLatin1String("text")).toString(), QStringLiteral("Constance"));
    QCOMPARE(first.value(QLatin1String("content")).toString(),
             QStringLiteral("Check that no registered vessel has this name."));
    QCOMPARE(first.value(QLatin1String("start")).toInt(), 17);
    QCOMPARE(first.value(QLatin1String("end")).toInt(), 26);
    QVERIFY(first.value(QLatin1String("color")).isNull()); // the file gives it none
    const QJsonObject last = notes.last().toObject();
    QCOMPARE(last.value(QLatin1String("text")).toString(), QStringLiteral("TOBY"));
    QCOMPARE(last.value(QLatin1String("author")).toString(), QStringLiteral("J. Winter"));
    QCOMPARE(last.value(QLatin1String("color")).toString(), QStringLiteral("#FFFFC8C80000"));
    QCOMPARE(last.value(QLatin1String("date")).toString(), QStringLiteral("20260228T093000"));

    const QString rtf = path(QStringLiteral("notes.rtf"));
    QCOMPARE(mvrtext({QStringLiteral("convert"), example(), rtf}).exitCode, 0);
    const Run ofRtf = mvrtext({QStringLiteral("notes"), rtf});
    QCOMPARE(ofRtf.output.count("comment "), 5);
    QVERIFY2(ofRtf.output.contains("Check that no registered vessel has this name.\n"),
             ofRtf.output.constData());

    const Run table = mvrtext({QStringLiteral("notes"), example()});
    QCOMPARE(table.output.count('\n'), 6);
    QVERIFY(table.output.contains("  Does the audience know by now that the lighthouse burned down "
                                  "in 1974? Plant it in the first scene.\n"));
}

QTEST_GUILESS_MAIN(TestTool)
#include "tst_tool.moc"
