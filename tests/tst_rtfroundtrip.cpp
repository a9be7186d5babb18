// SPDX-License-Identifier: MIT
#include "DocumentGenerator.h"

#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>

#include <QFont>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QtTest>

Q_DECLARE_METATYPE(QTextCharFormat)
Q_DECLARE_METATYPE(QTextBlockFormat)

// What the writer writes the reader reads back, property by property; and what it says to others.
class TestRtfRoundTrip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainText_data();
    void plainText();
    void charFormats_data();
    void charFormats();
    void blockFormats_data();
    void blockFormats();
    void boundsOfNumbers_data();
    void boundsOfNumbers();
    void pageBreakBehindParagraph();
    void tabStops();
    void linksOverRuns();
    void headingsHaveTheirSize();
    void fontsOfOtherScripts();
    void notesStayOut();
    void randomDocuments_data();
    void randomDocuments();
    void saysToOthers();
    void smallAndPlain();
};

namespace {

// Without the numbers of objects, which differ between documents.
QString describe(const QTextFormat &format)
{
    QMap<int, QVariant> properties = format.properties();
    properties.remove(QTextFormat::ObjectIndex);
    QString text;
    QDebug(&text) << properties;
    return text;
}

// Everything in a document with its properties, as lines that a failed comparison can show.
class Contents
{
public:
    explicit Contents(const QTextDocument &document)
    {
        const QTextFrame &root = *document.rootFrame();
        add(root.begin(), root.end());
    }

    QStringList lines;

private:
    void add(QTextFrame::iterator at, const QTextFrame::iterator &end)
    {
        for (; at != end; ++at) {
            const QTextFrame *frame = at.currentFrame();
            if (const auto *table = qobject_cast<const QTextTable *>(frame)) {
                addTable(*table);
            } else if (frame) {
                lines += QStringLiteral("frame ") + describe(frame->frameFormat());
                add(frame->begin(), frame->end());
                lines += QStringLiteral("end of frame");
            } else {
                addBlock(at.currentBlock());
            }
        }
    }

    void addTable(const QTextTable &table)
    {
        lines += QStringLiteral("table ") + describe(table.format());
        for (int row = 0; row < table.rows(); ++row) {
            for (int column = 0; column < table.columns(); ++column) {
                const QTextTableCell cell = table.cellAt(row, column);
                if (cell.row() != row || cell.column() != column)
                    continue;
                lines
                    += QStringLiteral("cell %1 %2 ").arg(row).arg(column) + describe(cell.format());
                add(cell.begin(), cell.end());
            }
        }
        lines += QStringLiteral("end of table");
    }

    void addBlock(const QTextBlock &block)
    {
        lines += QStringLiteral("block ") + describe(block.blockFormat())
            + describe(block.charFormat());
        if (QTextList *list = block.textList()) {
            if (!m_lists.contains(list))
                m_lists.append(list);
            lines += QStringLiteral(" item of list %1 ").arg(m_lists.indexOf(list))
                + describe(list->format());
        }
        const QString text = block.text();
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            lines += QStringLiteral("  ")
                + text.mid(fragment.position() - block.position(), fragment.length())
                + QLatin1Char(' ') + describe(fragment.charFormat());
        }
    }

    QVector<QTextList *> m_lists;
};

void compareRoundTrip(const QTextDocument &document)
{
    for (const bool withDefaults : {false, true}) {
        const QByteArray rtf = MVRTextRtf::toRtfCData(&document, withDefaults);
        QTextDocument read;
        QVERIFY(MVRTextRtf::fromRtfCData(rtf, &read));
        const QStringList expected = Contents(document).lines;
        const QStringList actual = Contents(read).lines;
        for (int i = 0; i < qMin(expected.size(), actual.size()); ++i)
            QCOMPARE(actual.at(i), expected.at(i));
        QCOMPARE(actual.size(), expected.size());
    }
}

// A document whose only word has a note with \a content.
QByteArray withNote(const QByteArray &content, MVRTextRtfNote::Kind kind)
{
    QTextDocument document;
    QTextCursor(&document).insertText(QStringLiteral("word"));
    MVRTextRtfNote note;
    note.kind = kind;
    note.start = note.end = 4;
    note.rtf = content;
    return MVRTextRtf::toRtfCData(&document, true, {note, note});
}

// Content in the writer's own form is taken over word for word, other content is read as a
// document; one that does not begin with its brace is other content and says the same.
void compareAsNote(const QByteArray &content)
{
    for (const auto kind : {MVRTextRtfNote::Footnote, MVRTextRtfNote::Comment})
        QCOMPARE(withNote(content, kind), withNote('\n' + content, kind));
}

QTextBlockFormat scriptBlock(double left, double right, double first)
{
    QTextBlockFormat format;
    format.setProperty(MVRTextFormat::BlockLeftIndentProperty, left);
    format.setProperty(MVRTextFormat::BlockRightIndentProperty, right);
    format.setTextIndent(first);
    return format;
}

} // namespace

void TestRtfRoundTrip::plainText_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("blanks only") << "   ";
    QTest::newRow("leading and trailing blanks") << " a ";
    QTest::newRow("empty lines around") << "\n\na\n\n";
    QTest::newRow("braces and backslash") << "{a\\b}";
    QTest::newRow("digits, letters, signs behind words") << "\t1\tb\t-\t \u2028x\u20281";
    QTest::newRow("in and beyond the code page")
        << QString::fromUtf8("Čč € – “x” 日本 😀 é\u00a0\u00ad\u2011\u0080ﬁ½²");
}

void TestRtfRoundTrip::plainText()
{
    QFETCH(const QString, text);
    QFont font(QStringLiteral("Courier Prime"), 11);
    font.setItalic(true);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::textToRtf(text, &font), &document));
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        lines += block.text();
    QCOMPARE(lines.join(QLatin1Char('\n')), text);
    const QTextCharFormat format = document.begin().charFormat();
    QCOMPARE(MVRToolkit::fontFamily(format), QStringLiteral("Courier Prime"));
    QCOMPARE(format.fontPointSize(), 11.0);
    QVERIFY(format.fontItalic());
    QVERIFY(!format.hasProperty(QTextFormat::FontWeight));

    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::textToRtf(text, nullptr), &document));
    QVERIFY(document.begin().charFormat().isEmpty());
    compareRoundTrip(document);
}

void TestRtfRoundTrip::charFormats_data()
{
    QTest::addColumn<QTextCharFormat>("format");
    const auto row = [](const char *name, const auto &set) {
        QTextCharFormat format;
        set(format);
        QTest::newRow(name) << format;
    };
    using F = QTextCharFormat;
    row("weights", [](F &f) { f.setFontWeight(QFont::DemiBold); });
    row("switched off", [](F &f) {
        f.setFontWeight(QFont::Normal), f.setFontItalic(false), f.setFontUnderline(false);
    });
    row("size of quarter points", [](F &f) { f.setFontPointSize(10.25); });
    row("size in pixels", [](F &f) { f.setProperty(QTextFormat::FontPixelSize, 13); });
    row("whole font", [](F &f) { f.setFont(QFont(QStringLiteral("A; \\{日"), 9)); });
    row("underlines", [](F &f) {
        f.setUnderlineStyle(F::SpellCheckUnderline), f.setUnderlineColor(QColor(1, 2, 3));
    });
    row("translucent and wide colours", [](F &f) {
        f.setForeground(QColor(1, 2, 3, 4)), f.setBackground(QColor::fromRgba64(1, 2, 3));
    });
    row("no brush", [](F &f) { f.setBackground(Qt::NoBrush), f.setForeground(Qt::black); });
    row("baseline", [](F &f) { f.setVerticalAlignment(F::AlignBottom); });
    row("spacing", [](F &f) {
        f.setFontLetterSpacingType(QFont::PercentageSpacing), f.setFontLetterSpacing(101.3);
    });
    row("anchor", [](F &f) {
        f.setAnchor(true), f.setAnchorHref(QString::fromUtf8("x\\y \"é\" #1;}")),
            f.setAnchorNames({QStringLiteral("a b"), QStringLiteral("c,d")}),
            f.setToolTip(QStringLiteral("tip"));
    });
    row("item of the application",
        [](F &f) { f.setAnchor(true), f.setAnchorHref(QStringLiteral("42")); });
    row("internal link without the anchor flag",
        [](F &f) { f.setAnchorHref(QStringLiteral("#x")); });
}

void TestRtfRoundTrip::charFormats()
{
    QFETCH(const QTextCharFormat, format);
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertText(QStringLiteral("before "), QTextCharFormat());
    cursor.insertText(QStringLiteral("x"), format);
    cursor.insertBlock(QTextBlockFormat(), format); // an empty paragraph that has it
    cursor.insertBlock(QTextBlockFormat(), format);
    cursor.insertText(QStringLiteral("all"), format);
    compareRoundTrip(document);
}

void TestRtfRoundTrip::blockFormats_data()
{
    QTest::addColumn<QTextBlockFormat>("format");
    const auto row = [](const char *name, const auto &set) {
        QTextBlockFormat format;
        set(format);
        QTest::newRow(name) << format;
    };
    using F = QTextBlockFormat;
    row("alignment", [](F &f) { f.setAlignment(Qt::AlignRight); });
    row("explicitly left", [](F &f) { f.setAlignment(Qt::AlignLeft); });
    row("absolute alignment", [](F &f) { f.setAlignment(Qt::AlignCenter | Qt::AlignAbsolute); });
    row("fractions of a twip", [](F &f) {
        f.setLeftMargin(10.01), f.setRightMargin(1 / 3.0), f.setTextIndent(-0.02),
            f.setTopMargin(0);
    });
    row("indent steps", [](F &f) { f.setIndent(2), f.setLeftMargin(5); });
    row("line heights", [](F &f) { f.setLineHeight(117.3, F::ProportionalHeight); });
    row("distance between lines", [](F &f) { f.setLineHeight(3.5, F::LineDistanceHeight); });
    row("line spacing", [](F &f) {
        f.setProperty(MVRTextFormat::LineSpacingProperty, 1.5),
            f.setProperty(MVRTextFormat::LineSpacingBaseProperty, 1.0);
    });
    row("heading", [](F &f) { f.setHeadingLevel(3); });
    row("breaks", [](F &f) {
        f.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore
                             | QTextFormat::PageBreak_AlwaysAfter),
            f.setNonBreakableLines(true);
    });
    row("background and direction", [](F &f) {
        f.setBackground(QColor(250, 250, 210)), f.setLayoutDirection(Qt::RightToLeft);
    });
    QTest::newRow("screenplay") << scriptBlock(108.5, 396, 108.5);
    QTest::newRow("first line outside") << scriptBlock(108, 500.25, 90);
}

void TestRtfRoundTrip::blockFormats()
{
    QFETCH(const QTextBlockFormat, format);
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.setBlockFormat(format);
    cursor.insertText(QStringLiteral("first"));
    cursor.insertBlock(QTextBlockFormat());
    cursor.insertText(QStringLiteral("plain"));
    cursor.insertBlock(format);
    cursor.insertText(QStringLiteral("again"));
    cursor.insertBlock(format);
    compareRoundTrip(document);
}

void TestRtfRoundTrip::boundsOfNumbers_data()
{
    QTest::addColumn<int>("property");
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("most");
    QTest::addColumn<double>("step"); // to the first value beyond; below 1 for reals
    const auto enumerated = [](const char *name, int property, int least, int most) {
        QTest::newRow(name) << property << double(least) << double(most) << 1.0;
    };
    const auto measured = [](const char *name, int property, double least, double most) {
        QTest::newRow(name) << property << least << most << 0.5;
    };
    using F = QTextFormat;
    enumerated("direction", F::LayoutDirection, Qt::LeftToRight, Qt::LayoutDirectionAuto);
    enumerated("kind of line height", F::LineHeightType, QTextBlockFormat::SingleHeight,
               QTextBlockFormat::LineDistanceHeight);
    enumerated("marker", F::BlockMarker, int(QTextBlockFormat::MarkerType::NoMarker),
               int(QTextBlockFormat::MarkerType::Checked));
    enumerated("heading", F::HeadingLevel, 0, 6);
    enumerated("page breaks", F::PageBreakPolicy, F::PageBreak_Auto,
               F::PageBreak_AlwaysBefore | F::PageBreak_AlwaysAfter);
    enumerated("capitals", F::FontCapitalization, QFont::MixedCase, QFont::Capitalize);
    enumerated("kind of letter spacing", F::FontLetterSpacingType, QFont::PercentageSpacing,
               QFont::AbsoluteSpacing);
    enumerated("style of face", F::FontStyleHint, QFont::Helvetica, QFont::Fantasy);
    enumerated("hinting", F::FontHintingPreference, QFont::PreferDefaultHinting,
               QFont::PreferFullHinting);
    enumerated("baseline", F::TextVerticalAlignment, QTextCharFormat::AlignNormal,
               QTextCharFormat::AlignBaseline);
    enumerated("underline", F::TextUnderlineStyle, QTextCharFormat::NoUnderline,
               QTextCharFormat::SpellCheckUnderline);
    enumerated("size in pixels", F::FontPixelSize, 1, 10000);
    enumerated("relative size", F::FontSizeAdjustment, -7, 7);
    measured("line height", F::LineHeight, 0, 1e6);
    measured("margin", F::BlockTopMargin, -1e6, 1e6);
    measured("right edge", MVRTextFormat::BlockRightIndentProperty, -1e6, 1e6);
    measured("letter spacing", F::FontLetterSpacing, -1e6, 1e6);
}

// A file says only what Qt has a meaning for, and a reader believes no more.
void TestRtfRoundTrip::boundsOfNumbers()
{
    QFETCH(const int, property);
    QFETCH(const double, least);
    QFETCH(const double, most);
    QFETCH(const double, step);
    const bool isWhole = step == 1.0;
    const auto variant
        = [isWhole](double number) { return isWhole ? QVariant(int(number)) : QVariant(number); };
    const auto written = [&](double number) {
        QTextDocument document;
        QTextBlockFormat block;
        block.setProperty(property, variant(number));
        QTextCharFormat chars;
        chars.setProperty(property, variant(number));
        QTextCursor cursor(&document);
        cursor.setBlockFormat(block);
        cursor.insertText(QStringLiteral("x"), chars);
        return MVRTextRtf::toRtfCData(&document, false);
    };
    const auto holds = [&](const QByteArray &rtf, double number) {
        QTextDocument read;
        return MVRTextRtf::fromRtfCData(rtf, &read)
            && (read.begin().blockFormat().property(property) == variant(number)
                || read.begin().begin().fragment().charFormat().property(property)
                    == variant(number));
    };
    QVERIFY(holds(written(least), least));
    QVERIFY(holds(written(most), most));
    QVERIFY(!holds(written(least - step), least - step));
    QVERIFY(!holds(written(most + step), most + step));

    // A file that was made to say more.
    const QByteArray said = isWhole ? "i:" + QByteArray::number(int(most)) : "d:1e+06";
    const QByteArray beyond = (isWhole ? "i:" : "d:") + QByteArray::number(most + step, 'g', 9);
    QByteArray forged = written(most);
    QVERIFY(forged.contains(said));
    QVERIFY(!holds(forged.replace(said, beyond), most + step));
}

void TestRtfRoundTrip::pageBreakBehindParagraph()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextBlockFormat after;
    after.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysAfter);
    cursor.setBlockFormat(after);
    cursor.insertText(QStringLiteral("one"));
    cursor.insertBlock(QTextBlockFormat());
    cursor.insertText(QStringLiteral("two"));
    compareRoundTrip(document);
    // Other programs have the word on the second paragraph only.
    const QByteArray rtf = MVRTextRtf::toRtfCData(&document, false);
    QVERIFY(rtf.indexOf("\\pagebb") > rtf.indexOf("one"));
}

void TestRtfRoundTrip::tabStops()
{
    using Tab = QTextOption::Tab;
    for (const QList<Tab> &stops :
         {QList<Tab> {Tab(36, QTextOption::LeftTab), Tab(100.5, QTextOption::RightTab)},
          QList<Tab> {Tab(36, QTextOption::LeftTab), Tab(20, QTextOption::RightTab),
                      Tab(36, QTextOption::RightTab)},
          QList<Tab> {Tab(10.01, QTextOption::CenterTab),
                      Tab(20, QTextOption::DelimiterTab, QLatin1Char(':'))}}) {
        QTextBlockFormat format;
        format.setTabPositions(stops);
        QTextDocument document;
        QTextCursor(&document).setBlockFormat(format);
        QTextDocument read;
        QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&document, false), &read));
        QCOMPARE(read.begin().blockFormat().tabPositions(), stops);
    }
    QTextDocument foreign;
    QVERIFY(
        MVRTextRtf::fromRtfCData("{\\rtf1{\\stylesheet{\\s1\\tx1440\\tx2160 S;}}\\s1\\tx720\\tqr"
                                 "\\tx1440\\tqdec\\tx2880 a\\par\\pard b}",
                                 &foreign));
    const QList<Tab> expected {Tab(36, QTextOption::LeftTab), Tab(72, QTextOption::RightTab),
                               Tab(108, QTextOption::LeftTab),
                               Tab(144, QTextOption::DelimiterTab, QLatin1Char('.'))};
    QCOMPARE(foreign.begin().blockFormat().tabPositions(), expected);
    QVERIFY(foreign.lastBlock().blockFormat().isEmpty());
}

void TestRtfRoundTrip::linksOverRuns()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextCharFormat link;
    link.setAnchor(true);
    link.setAnchorHref(QStringLiteral("http://a.b"));
    QTextCharFormat bold = link;
    bold.setFontWeight(QFont::Bold);
    cursor.insertText(QStringLiteral("x"), QTextCharFormat());
    cursor.insertText(QStringLiteral("a"), link);
    cursor.insertText(QStringLiteral("b"), bold);
    cursor.insertBlock(QTextBlockFormat(), bold);
    cursor.insertText(QStringLiteral("c"), bold);
    compareRoundTrip(document);
    // One field for both runs of the first paragraph, one for the second.
    QCOMPARE(MVRTextRtf::toRtfCData(&document, false).count("HYPERLINK"), 2);
}

// HTML and Markdown make headings whose size counts from the text's.
void TestRtfRoundTrip::headingsHaveTheirSize()
{
    QTextDocument document;
    document.setDefaultFont(QFont(QStringLiteral("Serif"), 11));
    QTextCharFormat title;
    title.setProperty(QTextFormat::FontSizeAdjustment, 3);
    title.setFontWeight(QFont::Bold);
    QTextBlockFormat heading;
    heading.setHeadingLevel(1);
    QTextCursor cursor(&document);
    cursor.setBlockFormat(heading);
    cursor.insertText(QStringLiteral("one"), title);
    cursor.insertText(QStringLiteral("plain"), QTextCharFormat());
    cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    cursor.insertText(QStringLiteral("text"));
    compareRoundTrip(document);
    const QByteArray rtf = MVRTextRtf::toRtfCData(&document, true);
    QVERIFY2(rtf.contains("{\\s1\\sbasedon0\\snext0\\outlinelevel0\\fs44\\b\\mvrs heading 1;}"),
             rtf);
    QVERIFY2(rtf.contains("{\\fs44\\b\\mvrx1 one}plain\\par\n\\pard text"), rtf);

    // In a note it counts from the size of the text around.
    const QByteArray note = MVRTextRtf::toRtfCData(&document, false);
    QVERIFY(note.contains("{\\fs48\\b\\mvrx1 one}"));
    compareAsNote(note);
}

// Bytes would be letters of another script there.
void TestRtfRoundTrip::fontsOfOtherScripts()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextCharFormat cyrillic;
    MVRToolkit::setFontFamily(&cyrillic, QStringLiteral("Arial Cyr"));
    cursor.insertText(QString::fromUtf8("é — д"), cyrillic);
    cursor.insertText(QString::fromUtf8("é"), QTextCharFormat());
    compareRoundTrip(document);
    QVERIFY(MVRTextRtf::toRtfCData(&document, false).contains("\\u233 e"));
    QVERIFY(MVRTextRtf::toRtfCData(&document, false).contains("}\\'e9\\par"));
}

void TestRtfRoundTrip::notesStayOut()
{
    QTextDocument document;
    QTextCharFormat note;
    note.setProperty(MVRTextFormat::CommentLinkProperty, true);
    note.setProperty(MVRTextFormat::CommentCDataProperty, QByteArray("{\\rtf1 secret}"));
    note.setProperty(MVRTextFormat::InspectorCommentProperty, true);
    note.setAnchorHref(QStringLiteral("Comment:{1234}"));
    note.setAnchor(true);
    note.setFontItalic(true);
    QTextCursor(&document).insertText(QStringLiteral("text"), note);
    const QByteArray rtf = MVRTextRtf::toRtfCData(&document, false);
    QVERIFY(!rtf.contains("secret") && !rtf.contains("Comment:"));
    QTextDocument read;
    QVERIFY(MVRTextRtf::fromRtfCData(rtf, &read));
    QTextCharFormat italic;
    italic.setFontItalic(true);
    QCOMPARE(read.begin().begin().fragment().charFormat().properties(), italic.properties());
}

void TestRtfRoundTrip::randomDocuments_data()
{
    QTest::addColumn<uint>("seed");
    const uint count = qEnvironmentVariableIntValue("MVR_RANDOM_DOCUMENTS");
    for (uint seed = 1; seed <= qMax(count, 60u); ++seed)
        QTest::addRow("%u", seed) << seed;
}

void TestRtfRoundTrip::randomDocuments()
{
    QFETCH(const uint, seed);
    QTextDocument document;
    DocumentGenerator(seed).fill(&document);
    compareRoundTrip(document);
    compareAsNote(MVRTextRtf::toRtfCData(&document, false));
}

// What is read back from words of our own is also there for those that do not know them.
void TestRtfRoundTrip::saysToOthers()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextBlockFormat heading;
    heading.setHeadingLevel(2);
    cursor.setBlockFormat(heading);
    cursor.insertBlock(scriptBlock(36, 200, 36));
    document.setProperty(MVRTextRtf::authorProperty, QStringLiteral("A"));
    const auto says = [&document](const char *words) {
        return MVRTextRtf::toRtfCData(&document, true).contains(words);
    };
    QVERIFY(says("{\\s2\\sbasedon0\\snext0\\outlinelevel1 heading 2;}"));
    QVERIFY(says("\\pard\\s2\\outlinelevel1\\par"));
    QVERIFY(says("{\\info{\\author A}}"));
    QVERIFY(says("\\paperw12240\\paperh15840\\margl1440\\margr1440"));
    QVERIFY(says("\\li720\\ri5360"));

    document.setPageSize(QSizeF(400, 600));
    document.setDocumentMargin(50);
    QVERIFY(says("\\paperw8000\\paperh12000\\margl1000\\margr1000"));
    QVERIFY(says("\\li720\\ri2000"));
    document.setPageSize(QSizeF(400, -1)); // of an editor that scrolls
    QVERIFY(says("\\paperw12240\\paperh15840\\margl1000"));
    QVERIFY(!MVRTextRtf::toRtfCData(&document, false).contains("author"));

    QTextDocument read;
    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&document, true), &read));
    QCOMPARE(read.property(MVRTextRtf::authorProperty).toString(), QStringLiteral("A"));
    QCOMPARE(read.begin().blockFormat().properties(), heading.properties());
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 x}", &read));
    QVERIFY(!read.property(MVRTextRtf::authorProperty).isValid());

    QTextTableFormat ruled;
    ruled.setBorder(1);
    QTextCursor(&document).insertTable(1, 1, ruled);
    QVERIFY(says("\\clbrdrt\\brdr") && says("\\clbrdrr\\brdr"));

    QTextDocument coloured;
    QTextCursor writer(&coloured);
    for (const auto &[color, isBold] :
         {std::pair(Qt::red, false), std::pair(Qt::blue, false), std::pair(Qt::blue, true)}) {
        QTextCharFormat format;
        format.setForeground(color);
        format.setFontWeight(isBold ? QFont::Bold : QFont::Normal);
        writer.insertText(QStringLiteral("x"), format);
    }
    const QByteArray rtf = MVRTextRtf::toRtfCData(&coloured, false);
    QCOMPARE(rtf.count("\\blue255;"), 1); // a colour of two formats is one
    QCOMPARE(rtf.count("\\cf2"), 2);
}

void TestRtfRoundTrip::smallAndPlain()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    cursor.insertText(QStringLiteral("a"), QTextCharFormat());
    cursor.insertText(QString::fromUtf8("b \u2014 Č"), bold);
    cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    QCOMPARE(MVRTextRtf::toRtfCData(&document, false),
             QByteArray(
                 "{\\rtf1\\ansi\\ansicpg1252\\uc1\n\\pard a{\\b b \\'97 \\u268 C}\\par\n\\par\n}"));
}

QTEST_MAIN(TestRtfRoundTrip)
#include "tst_rtfroundtrip.moc"
