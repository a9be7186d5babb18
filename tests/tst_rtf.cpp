// SPDX-License-Identifier: MIT
#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>

#include <QFont>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

Q_DECLARE_METATYPE(QTextCharFormat)
Q_DECLARE_METATYPE(QTextBlockFormat)

// Reading RTF that other programs wrote, or damaged. Round trips: tst_rtfroundtrip.
class TestRtf : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void refusesWhatIsNotRtf();
    void replacesContentAndKeepsUndoSetting();
    void readsText_data();
    void readsText();
    void readsCharFormat_data();
    void readsCharFormat();
    void readsStyles_data();
    void readsStyles();
    void readsBlockFormat_data();
    void readsBlockFormat();
    void readsLinks_data();
    void readsLinks();
    void countsWhatIsLeftOut();
    void carriesDefaults();
    void takesExactPropertiesThatComeLate();
    void survivesSizes_data();
    void survivesSizes();
    void survivesEveryCut();

private:
    static QString textOf(const QTextDocument &document);
};

// Exact, unlike toPlainText(): blanks that do not break and line ends stay what they are.
QString TestRtf::textOf(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        lines += block.text();
    return lines.join(QLatin1Char('\n'));
}

void TestRtf::refusesWhatIsNotRtf()
{
    QTextDocument document(QStringLiteral("kept"));
    for (const char *bytes : {"", "text", "{\\rt", "\\rtf1 x", "{}", "x{\\rtf1}"})
        QVERIFY(!MVRTextRtf::fromRtfCData(bytes, &document));
    QCOMPARE(document.toPlainText(), QStringLiteral("kept"));
    QVERIFY(!MVRTextRtf::fromRtfCData("{\\rtf1 x}", nullptr));
    QVERIFY(MVRTextRtf::fromRtfCData(" \r\n{\\rtf1}", &document));
    QVERIFY(document.isEmpty());
    QCOMPARE(document.blockCount(), 1);
    QVERIFY(MVRTextRtf::toRtfCData(nullptr, true).isEmpty());
}

void TestRtf::replacesContentAndKeepsUndoSetting()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextBlockFormat centred;
    centred.setAlignment(Qt::AlignCenter);
    cursor.setBlockFormat(centred);
    cursor.insertTable(2, 2);
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 new}", &document));
    QCOMPARE(textOf(document), QStringLiteral("new"));
    QCOMPARE(document.begin().blockFormat().properties(), QTextBlockFormat().properties());
    QVERIFY(document.isUndoRedoEnabled());
    QCOMPARE(document.availableUndoSteps(), 0);

    document.setUndoRedoEnabled(false);
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 again}", &document));
    QVERIFY(!document.isUndoRedoEnabled());
}

void TestRtf::readsText_data()
{
    QTest::addColumn<QByteArray>("rtf"); // what stands between "{\rtf1\ansi" and "}"
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *rtf, const char *text) {
        QTest::newRow(name) << QByteArray(rtf) << QString::fromUtf8(text);
    };

    row("last \\par ends the last paragraph", " a\\par b\\par", "a\nb");
    row("no \\par at the end", " a\\par b", "a\nb");
    row("empty last paragraph", " a\\par\\par", "a\n");
    row("line ends mean nothing", " a\r\nb\nc", "abc");
    row("escaped line ends are paragraphs", " a\\\nb\\\r\nc", "a\nb\nc");
    row("indented by hand", "\n   \\deff0\n   \\pard x", "x");
    row("special characters",
        "\\emdash\\endash\\lquote\\rquote\\ldblquote\\rdblquote\\bullet\\~\\-\\_",
        "—–‘’“”•\u00a0\u00ad\u2011");
    row("tab, line, raw tab", " a\\tab b\\line c\td", "a\tb\u2028c\td");
    row("one blank ends a word", "\\b  a\\b0b", " ab");
    row("escaped braces", " \\{\\\\\\}", "{\\}");
    row("characters that no paragraph can hold", " a\\u11 ?b\\u8233 ?c\\u-1 ?\\u1 ?d",
        "a\u2028b\nc\uFFFDd");
    row("page break splits a paragraph", " a\\page b", "a\nb");
    row("column break splits a paragraph", " a\\column b", "a\nb");
    row("break in a section of two columns", "\\cols2 a\\column b\\sectd", "a\nb");
    row("section", " a\\par\\sect b\\sect c", "a\nb\nc");

    row("code page of the file", "\\ansicpg1251 \\'cf\\'f0", "Пр");
    row("raw bytes", "\\ansicpg1251 \xcf\xf0!", "Пр!");
    row("Macintosh", "\\mac \\'8a", "ä");
    row("DOS, every thirteenth byte",
        "\\pc \\'80\\'8d\\'9a\\'a7\\'b4\\'c1\\'ce\\'db\\'e8\\'f5\\'fe\\'ff!", "ÇìÜº┤┴╬█Φ⌡■\u00a0!");
    row("DOS of Western Europe",
        "\\pca \\'80\\'8d\\'9a\\'a7\\'b4\\'c1\\'ce\\'db\\'e8\\'f5\\'fe\\'ff!",
        "ÇìÜº┤┴╬█Þ§■\u00a0!");
    row("code page of the font",
        "{\\fonttbl{\\f0\\fcharset0 A;}{\\f1\\fcharset238 B;}{\\f2\\cpg1253 "
        "C;}{\\f3\\fcharset255 D;}}\\f0\\'e8\\f1\\'e8\\f2\\'e8\\f3\\'81",
        "èčθü");
    row("charset 0 is the file's on a Macintosh",
        "\\ansicpg10000{\\fonttbl{\\f0\\fcharset0 A;}}\\f0\\'8a", "ä");
    row("two bytes in hex", "\\ansicpg932\\'93\\'fa\\'96\\'7b", "日本");
    row("second byte raw", "\\ansicpg932\\'93\xfa\\'96{}\\'83A", "日\uFFFDア");
    row("second byte is a backslash", "\\ansicpg932\\'83\\\\ \\'83\\'5c", "ソ ソ");
    row("second byte is one in Chinese", "\\ansicpg950\\'a5\\\\ \\'a5\\'5c", "功 功");
    row("second byte on the next line", "\\ansicpg936\\'d6\n\\'d0", "中");
    row("other double-byte pages",
        "\\ansicpg949\\'c7\\'d1\\ansicpg950\\'a4\\'a4\\ansicpg874\\'a1\\'93", "한中ก“");
    row("font name in its own code page is no text",
        "\\ansicpg932{\\fonttbl{\\f0\\fcharset128 \\'82\\'6c\\'82\\'72;}}x", "x");
    row("second byte is a raw backslash or brace", "\\ansicpg932 \x95\\\x83}!", "表マ!");
    row("first byte without a second", "\\ansicpg949 \xb0{}b", "\uFFFDb");
    row("fonts named for a script",
        "{\\fonttbl{\\f0 Arial Cyr;}{\\f1 Arial CE;}{\\f2\\fcharset0 Odd Cyr;}}\\f0\\'e8\\f1\\'e8"
        "\\f2\\'e8",
        "иčè");
    row("line ends as bytes", " a\\'0db\\'0ac\\'0d\\'0ad\\'e4\\'0de",
        "a\u2028b\u2028c\u2028dä\u2028e");
    row("fields without a result",
        "{\\field{\\*\\fldinst GOTOBUTTON here {\\b press}}}{\\field{\\*\\fldinst MACROBUTTON run "
        "it "
        "now}{\\fldrslt }}, {\\field{\\*\\fldinst MACROBUTTON run click}}, "
        "{\\field{\\*\\fldinst EQ \\\\s\\\\up8(nd)}}{\\field{\\*\\fldinst DATE}}, "
        "{\\field{\\*\\fldinst  PAGEREF _Toc1 \\\\h }}",
        "pressit now, click, nd, PAGEREF _Toc1");
    row("results of several kinds",
        "{\\field{\\*\\fldinst GOTOBUTTON x {\\field{\\*\\fldinst PAGEREF x}{\\fldrslt 7}}}}, "
        "{\\field{\\*\\fldinst PAGEREF x}{\\fldrslt 8}}, {\\field{\\*\\fldinst EQ \\\\s\\\\up8(a)}"
        "{\\fldrslt b}}",
        "7, 8, b");
    row("symbol font", "{\\fonttbl{\\f0\\fcharset2 Odd;}}\\f0\\'41", "\uF041");
    row("signs of known fonts",
        "{\\fonttbl{\\f1\\fcharset2 Symbol;}{\\f2\\fcharset2 Wingdings;}{\\f3 Symbol;}}"
        "{\\f1 a\\'b7\\u-3998?c\\u233?d}{\\f2 J\\'fc\\'ff}{\\f3 a}b",
        "α•βχéδ☺✓\uF0FFab");
    row("sign of a field",
        "{\\field{\\*\\fldinst SYMBOL 97 \\\\f \"Symbol\"}{\\fldrslt x}}"
        "{\\field{\\*\\fldinst SYMBOL 0x20ac \\\\u}{\\fldrslt}}"
        "{\\field{\\*\\fldinst SYMBOL 233}{\\fldrslt}}{\\field{\\*\\fldinst SYMBOL x}{\\fldrslt "
        "r}}",
        "α€ér");

    row("fallback of one character", "\\u8364?x\\u8364\\'80x", "€x€x");
    row("fallback counted by \\uc", "\\uc0\\u8364x{\\uc2\\u8364??x}\\u8364x", "€x€x€x");
    row("fallback in two bytes", "\\uc2\\u26085\\'93\\'fax", "日x");
    row("fallback is a special character", "\\u8364\\emdash x\\u8364\\~x", "€x€x");
    row("fallback ends with the group", "{\\u8364}x\\u8364{y}", "€x€y");
    row("formatting between is no fallback", "\\u8364\\b ?\\b0x", "€x");
    row("paragraph is no fallback", "\\u8364\\par x", "€\nx");
    row("negative", "\\u-10187?\\u-8960?", "\U0001D500");
    row("pair over groups", "{\\u55349?}{\\b\\u56576?}", "\U0001D500");
    row("lone halves", "\\u55349?a\\u56576?\\u55349?\\u55349?\\u56576?",
        "\uFFFDa\uFFFD\uFFFD\U0001D500");
    row("lone half at the end", " a\\u55349?", "a\uFFFD");
    row("beyond 16 bits", "\\u128512?\\u9999999999?", "😀\uFFFD");
    row("characters the document keeps for itself", "\\u64976?\\u8233?a\\u0?\\u65534?",
        "\uFFFD\na\uFFFD");
    row("letters and what ends a run of them",
        "\\u1076\\'3f\\u1086 ?m \\u-3?\\u55349?\\u56576?\\u1076?\\u8233?\\u1076?{\\u1077}\\u1078"
        "\\~\\u1079?\\u123456?x",
        "доm \uFFFD\U0001D500д\nдежз\U0001E240x");
    row("letters without fallback",
        "\\uc0\\u1076\\u1086\\u1084 \\u26085\\u26412  \\u1076 "
        "1\\u1076\n1\\u-3\\u8232\\u1076\\u26085",
        "дом日本 д1д1\uFFFD\u2028д日");
    row("letters as words and as bytes", "\\ansicpg1251\\uc0 \\'cf\\u1088\\'e8,\\u233 t\\'e9\\'9",
        "При,étй9");
    row("run of letters longer than any buffer",
        (QByteArray("\\u1078?").repeated(255) + "a\\u1078?\\u1079?x").constData(),
        (QString(255, QChar(0x436)) + QString::fromUtf8("aжзx")).toUtf8().constData());
    row("no number", "\\u x", "x");
    row("both spellings", "{\\upr{old}{\\*\\ud{n\\u233?w}}}", "néw");
    row("both spellings of a destination",
        "{\\upr{\\fonttbl{\\f0 A;}}{\\*\\ud{\\fonttbl{\\f0 B;}}}}x", "x");

    row("unknown words, known text", "\\xyzzy5{\\foo bar}", "bar");
    row("unknown destination", "{\\*\\foo bar{baz}}x", "x");
    row("star without a destination",
        "{\\field{\\*\\fldinst HYPERLINK \"u\"}{\\fldrslt{\\*\\cs12\\cf2 x}}}{\\b0\\*\\cs7 y}",
        "xy");
    row("not the document's text",
        "{\\info{\\title T}}{\\header h}{\\footnote f}{\\*\\annotation a}{\\nonshppict{\\pict 00}}"
        "{\\stylesheet{\\s1 S;}}{\\shp{\\*\\shpinst i}}{\\*\\bkmkstart b}{\\listtext\\tab 1.}{\\xe "
        "i}x",
        "x");
    row("object shows its result", "{\\object{\\*\\objdata 00}{\\result r}}", "r");
    row("binary data", "{\\*\\x\\bin5 }}}{\\}{\\pict\\bin3 }}{}a\\bin3 {{{b", "\uFFFCab");
    row("binary data in text", " a\\bin3 {{{b", "ab");
    row("binary data longer than the file", " a\\bin2000000000 b", "a");
    row("drawing of older files", " a{\\*\\do\\dobxpage{\\dptxbx{\\dptxbxtext box\\par}}\\dpx5}b",
        "box\nab");
    row("letters drawn as a shape",
        " a{\\shp{\\*\\shpinst{\\sp{\\sn x}{\\sv no}}{\\sp{\\sn gtextUNICODE}{\\sv Big}}}}b",
        "Big\nab");
    row("words with their reading",
        "{\\field{\\*\\fldinst EQ \\\\* jc2 \\\\o\\\\ad(\\\\s\\\\up 9(kana),words)}{\\fldrslt}}"
        "{\\field{\\*\\fldinst EQ \\\\s\\\\up(),}{\\fldrslt r}}",
        "words（kana）r");
    row("hidden and deleted", " a{\\v h\\par}{\\deleted d\\plain e}b", "ab");
    row("bad hex", "\\'zz\\'4g", "zz4g");
    row("too many ends", " a}b}c", "a");
    row("destination without a group", " a\\stylesheet b\\nosupersub c", "abc");
    row("broken off in a style", " a{\\b b\\stylesheet\\nosupersub c", "ab");
    row("name too long", "\\abcdefghijklmnopqrstuvwxyzabcdefghijklmnopqrstuvwxyz1 x", "x");
}

void TestRtf::readsText()
{
    QFETCH(const QByteArray, rtf);
    QFETCH(const QString, text);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1\\ansi" + rtf + '}', &document));
    QCOMPARE(textOf(document), text);
}

void TestRtf::readsCharFormat_data()
{
    QTest::addColumn<QByteArray>("rtf");
    QTest::addColumn<QTextCharFormat>("expected"); // of the first character
    const auto row = [](const char *rtf, const auto &set) {
        QTextCharFormat format;
        set(format);
        QTest::newRow(rtf) << QByteArray(rtf) << format;
    };
    using F = QTextCharFormat;

    row("{\\b\\i a}", [](F &f) { f.setFontWeight(QFont::Bold), f.setFontItalic(true); });
    row("\\b\\i\\ul\\plain a", [](F &) {});
    row("\\b{\\b0 a}", [](F &) {});
    row("{\\b}a", [](F &) {});
    row("\\uldb a", [](F &f) { f.setUnderlineStyle(F::SingleUnderline); });
    row("\\ulthdashd a", [](F &f) { f.setUnderlineStyle(F::DashDotLine); });
    row("\\ulwave\\ulwave0 a", [](F &) {});
    row("\\ul\\ulnone a", [](F &) {});
    row("\\up6 a", [](F &f) { f.setVerticalAlignment(F::AlignSuperScript); });
    row("\\sub a", [](F &f) { f.setVerticalAlignment(F::AlignSubScript); });
    row("\\super\\nosupersub a", [](F &) {});
    row("\\strike\\scaps a",
        [](F &f) { f.setFontStrikeOut(true), f.setFontCapitalization(QFont::SmallCaps); });
    row("\\fs25 a", [](F &f) { f.setFontPointSize(12.5); });
    row("\\fs a", [](F &f) { f.setFontPointSize(12); });
    row("\\fs-99 a", [](F &) {});
    row("{\\fonttbl{\\f0 A B{\\*\\falt X};}{\\f7\\fswiss C}}\\f7 a",
        [](F &f) { MVRToolkit::setFontFamily(&f, QStringLiteral("C")); });
    row("\\deff0{\\fonttbl\\f0 A B;}\\f3\\plain a",
        [](F &f) { MVRToolkit::setFontFamily(&f, QStringLiteral("A B")); });
    row("\\deff0{\\fonttbl\\f0 A;\\f1 B;\\f2 C;}{\\stylesheet{\\s1\\f1 S;}}\\f2\\s1 a",
        [](F &f) { MVRToolkit::setFontFamily(&f, QStringLiteral("C")); });
    row("\\deff0{\\fonttbl\\f0 A;\\f1 B;}{\\stylesheet{\\s1\\f1 S;}}\\plain\\s1 a",
        [](F &f) { MVRToolkit::setFontFamily(&f, QStringLiteral("B")); });
    row("\\cocoartf1{\\fonttbl\\f0 Helvetica-BoldOblique;}\\f0\\b a", [](F &f) {
        MVRToolkit::setFontFamily(&f, QStringLiteral("Helvetica")), f.setFontWeight(QFont::Bold);
    });
    row("{\\colortbl;\\red255\\green0\\blue9;\\red300;}\\cf1\\cb2 a",
        [](F &f) { f.setForeground(QColor(255, 0, 9)), f.setBackground(QColor(255, 0, 0)); });
    row("{\\colortbl;\\red1\\green2\\blue3;}\\chcbpat1 a",
        [](F &f) { f.setBackground(QColor(1, 2, 3)); });
    row("{\\colortbl;\\red1\\green2\\blue3;}\\highlight1\\ul\\ulc1 a", [](F &f) {
        f.setUnderlineStyle(F::SingleUnderline);
        f.setUnderlineColor(QColor(1, 2, 3));
        f.setBackground(QColor(1, 2, 3));
    });
    row("\\cf99\\f99\\mvrx99 a", [](F &) {});
    row("{\\colortbl\\red9;\\red1;}\\cb0\\highlight0 a", [](F &) {});
    row("{\\colortbl\\red9\\green0\\blue0;}\\cf0 a",
        [](F &f) { f.setForeground(QColor(9, 0, 0)); });
    row("\\expnd4 a", [](F &f) {
        f.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        f.setFontLetterSpacing(1);
    });
    row("{\\*\\mvrprops 2003i:2000 zz 2001d:nan 2003x:1 100007b:1 2004b:1;}\\mvrx1 a",
        [](F &f) { f.setFontItalic(true); });
}

void TestRtf::readsStyles_data()
{
    QTest::addColumn<QByteArray>("rtf");
    QTest::addColumn<int>("weight");
    QTest::addColumn<double>("size");
    QTest::addColumn<double>("margin");
    const QByteArray sheet
        = "{\\stylesheet{\\fs24 Normal;}{\\s1\\sbasedon0\\b\\li200 One;}"
          "{\\s2\\sbasedon1\\b0\\fs40 Two;}{\\*\\cs5\\b\\fs30 Five;}"
          "{\\s4\\sbasedon1\\itap0\\i Whole;}"
          "{\\s8\\sbasedon9\\fs10;}{\\s9\\sbasedon8\\b;}{\\s3\\sbasedon3\\b X;}}";
    const auto row = [&](const char *body, int weight, double size, double margin) {
        QTest::newRow(body) << sheet + body << weight << size << margin;
    };
    row("\\pard\\s1 a", QFont::Bold, 12, 10);
    row("\\pard\\s1\\b0\\fs20\\li0 a", QFont::Normal, 10, 0);
    row("\\pard\\fs20\\li100\\s1 a", QFont::Bold, 10, 5);
    row("\\pard\\s2 a", QFont::Normal, 20, 10);
    row("\\pard\\s1\\par\\pard\\plain a", QFont::Normal, 0, 0);
    row("\\pard\\s0{\\cs5 a}", QFont::Bold, 15, 0);
    row("{\\cs5 a}", QFont::Bold, 15, 0);
    row("\\pard\\s9 a", QFont::Bold, 5, 0);
    row("\\pard\\s4 a", QFont::Normal, 0, 0);
    row("\\pard\\s3 a", QFont::Bold, 0, 0);
    row("\\pard\\s77 a", QFont::Normal, 0, 0);
}

void TestRtf::readsStyles()
{
    QFETCH(const QByteArray, rtf);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1" + rtf + '}', &document));
    const QTextBlock block = document.lastBlock();
    QCOMPARE(block.text(), QStringLiteral("a"));
    const QTextCharFormat format = block.begin().fragment().charFormat();
    QTEST(format.fontWeight() == QFont::Bold ? int(QFont::Bold) : int(QFont::Normal), "weight");
    QTEST(format.fontPointSize(), "size");
    QTEST(block.blockFormat().leftMargin(), "margin");
}

void TestRtf::readsCharFormat()
{
    QFETCH(const QByteArray, rtf);
    QFETCH(const QTextCharFormat, expected);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1" + rtf + '}', &document));
    QCOMPARE(textOf(document), QStringLiteral("a"));
    QCOMPARE(document.begin().begin().fragment().charFormat().properties(), expected.properties());
}

void TestRtf::readsBlockFormat_data()
{
    QTest::addColumn<QByteArray>("rtf");
    QTest::addColumn<QTextBlockFormat>("expected"); // of the last paragraph
    const auto row = [](const char *rtf, const auto &set) {
        QTextBlockFormat format;
        set(format);
        QTest::newRow(rtf) << QByteArray(rtf) << format;
    };
    using F = QTextBlockFormat;

    row("\\qc a\\par", [](F &f) { f.setAlignment(Qt::AlignHCenter); });
    row("\\qj a", [](F &f) { f.setAlignment(Qt::AlignJustify); });
    row("\\qr\\pard a", [](F &) {});
    row("\\li720\\ri-20\\fi-360 a",
        [](F &f) { f.setLeftMargin(36), f.setRightMargin(-1), f.setTextIndent(-18); });
    row("\\sb240\\sa120 a", [](F &f) { f.setTopMargin(12), f.setBottomMargin(6); });
    row("\\sl360\\slmult1 a", [](F &f) { f.setLineHeight(150, F::ProportionalHeight); });
    row("\\sl240\\slmult1 a", [](F &) {});
    row("\\sl-280 a", [](F &f) { f.setLineHeight(14, F::FixedHeight); });
    row("\\sl280\\slmult0 a", [](F &f) { f.setLineHeight(14, F::MinimumHeight); });
    row("\\pagebb\\keep a", [](F &f) {
        f.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        f.setNonBreakableLines(true);
    });
    row("x\\page a", [](F &f) { f.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore); });
    row("x\\sect a", [](F &f) { f.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore); });
    row("x\\sect\\sectd\\sbknone a", [](F &) {});
    row("x\\page a\\par b", [](F &) {});
    row("x\\sect a\\par b", [](F &) {});
    row("\\rtlpar\\outlinelevel1 a",
        [](F &f) { f.setLayoutDirection(Qt::RightToLeft), f.setHeadingLevel(2); });
    row("{\\qc a\\par}b", [](F &) {});
    row("\\li99999999999 a", [](F &f) { f.setLeftMargin(10000); });
}

void TestRtf::readsBlockFormat()
{
    QFETCH(const QByteArray, rtf);
    QFETCH(const QTextBlockFormat, expected);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 " + rtf + '}', &document));
    QCOMPARE(document.lastBlock().blockFormat().properties(), expected.properties());
}

void TestRtf::readsLinks_data()
{
    QTest::addColumn<QByteArray>("instruction");
    QTest::addColumn<QString>("target");
    QTest::newRow("address") << QByteArray("HYPERLINK \"http://a.b/c d\"") << "http://a.b/c d";
    QTest::newRow("unquoted, small letters") << QByteArray(" hyperlink http://a ") << "http://a";
    QTest::newRow("bookmark") << QByteArray("HYPERLINK \\\\l \"top\"") << "#top";
    QTest::newRow("address and bookmark")
        << QByteArray("HYPERLINK \\\\o \"tip\" \"a.htm\" \\\\l \"b\" \\\\n") << "a.htm#b";
    QTest::newRow("path") << QByteArray("HYPERLINK \"C:\\\\\\\\x\\\\\\\\y\"") << "C:\\x\\y";
    QTest::newRow("in groups") << QByteArray("{\\b HYPER}{LINK}{ \"a\"}{\\*\\datafield 00}") << "a";
    QTest::newRow("field in the instruction")
        << QByteArray("HYPERLINK \"{\\field{\\*\\fldinst REF x}{\\fldrslt a}}b\"") << "ab";
    QTest::newRow("other field") << QByteArray("PAGE") << "";
    QTest::newRow("no address") << QByteArray("HYPERLINK") << "";
}

void TestRtf::readsLinks()
{
    QFETCH(const QByteArray, instruction);
    QFETCH(const QString, target);
    QTextDocument document;
    const QByteArray rtf
        = "{\\rtf1 x{\\field{\\*\\fldinst " + instruction + "}{\\fldrslt{\\plain r}}}y}";
    QVERIFY(MVRTextRtf::fromRtfCData(rtf, &document));
    QCOMPARE(textOf(document), QStringLiteral("xry"));
    QTextCursor cursor(&document);
    cursor.setPosition(2);
    QCOMPARE(cursor.charFormat().anchorHref(), target);
    QCOMPARE(cursor.charFormat().isAnchor(), !target.isEmpty());
    cursor.setPosition(3);
    QVERIFY(!cursor.charFormat().isAnchor());
}

void TestRtf::countsWhatIsLeftOut()
{
    QTextDocument document;
    MVRTextRtfLeftOut leftOut;
    leftOut.hiddenCharacters = 9;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 a}", &document, nullptr, &leftOut));
    QCOMPARE(leftOut.hiddenCharacters, 0);
    QVERIFY(MVRTextRtf::fromRtfCData(
        "{\\rtf1{\\v{\\*\\bkmkstart x}12\\u233?}a{\\deleted 1\\v 2}b{\\pict{\\v 3}}}", &document,
        nullptr, &leftOut));
    QCOMPARE(textOf(document), QStringLiteral("ab"));
    QCOMPARE(leftOut.hiddenCharacters, 3);
    QCOMPARE(leftOut.deletedCharacters, 2);
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1{\\pict\\pngblip 89504e47}a{\\pict\\wmetafile8 0100}}",
                                     &document, nullptr, &leftOut));
    QCOMPARE(leftOut.pictures, 1);
}

void TestRtf::carriesDefaults()
{
    QTextDocument source(QStringLiteral("a"));
    source.setDefaultFont(QFont(QStringLiteral("Courier Prime"), 17));
    QTextDocument note;
    const QFont before = note.defaultFont();
    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&source, false), &note));
    QCOMPARE(note.defaultFont(), before);

    QTextDocument copy;
    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&source, true), &copy));
    QCOMPARE(copy.defaultFont().family(), QStringLiteral("Courier Prime"));
    QCOMPARE(copy.defaultFont().pointSizeF(), 17.0);
    QVERIFY(copy.begin().begin().fragment().charFormat().isEmpty());
}

void TestRtf::takesExactPropertiesThatComeLate()
{
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 {\\mvrx1 a}{\\*\\mvrprops 2003i:75;}{\\mvrx1 b}}",
                                     &document));
    QCOMPARE(textOf(document), QStringLiteral("ab"));
    QTextCursor cursor(&document);
    cursor.setPosition(2);
    QCOMPARE(cursor.charFormat().fontWeight(), int(QFont::Bold));
}

void TestRtf::survivesSizes_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("text");
    const int million = 1000000;
    QTest::newRow("groups never closed") << QByteArray(million, '{') + "a"
                                         << "a";
    QTest::newRow("groups closed")
        << QByteArray(million, '{') + "a" + QByteArray(million, '}') + "b"
        << "ab";
    QTest::newRow("deep destination") << QByteArray(million, '{') + "\\*\\x a}b"
                                      << "b";
    QTest::newRow("fields in fields")
        << QByteArray("{\\field{\\fldrslt ").repeated(million / 10) + "a"
        << "a";
    QTest::newRow("instructions in instructions")
        << QByteArray("{\\field{\\*\\fldinst ").repeated(million / 10) + "a"
        << "";
    QTest::newRow("halves of characters")
        << "\\ansicpg932" + QByteArray("\\'83\\\\").repeated(million / 10)
        << QString(million / 10, QChar(0x30bd));
}

void TestRtf::survivesSizes()
{
    QFETCH(const QByteArray, body);
    QFETCH(const QString, text);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 " + body, &document));
    QCOMPARE(textOf(document), text);
}

// A file that breaks off keeps the text before the break and never more than that.
void TestRtf::survivesEveryCut()
{
    const QByteArray rtf
        = "{\\rtf1\\ansi{\\fonttbl{\\f0 A;}}{\\colortbl;\\red1;}\\f0\\b one\\par "
          "{\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt two}}\\'e9\\u8364?{\\*\\x\\bin3 abc}}";
    QTextDocument whole;
    QVERIFY(MVRTextRtf::fromRtfCData(rtf, &whole));
    const QString text = textOf(whole);
    QCOMPARE(text, QString::fromUtf8("one\ntwoé€"));
    for (int length = 5; length < rtf.size(); ++length) {
        QTextDocument document;
        QVERIFY(MVRTextRtf::fromRtfCData(rtf.left(length), &document));
        QVERIFY2(text.startsWith(textOf(document)), rtf.left(length));
    }
}

QTEST_MAIN(TestRtf)
#include "tst_rtf.moc"
