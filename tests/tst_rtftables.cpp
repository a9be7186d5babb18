// SPDX-License-Identifier: MIT
#include <core/MVRTextRtf.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QtTest>

#include <memory>

// Lists and tables, read and written.
class TestRtfTables : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lists_data();
    void lists();
    void tables_data();
    void tables();
    void tableFormats();
    void joinsSoManyCells();
    void tableBorders_data();
    void tableBorders();
    void writesTables();
    void writesLists();
    void keepsLabelsThatQtHasNotGot();
    void tableAmongParagraphs();
};

namespace {

// "1. one" for an item, two blanks before it for each level.
QStringList itemsOf(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextList *list = block.textList();
        if (!list) {
            lines += block.text();
            continue;
        }
        QString sign = list->itemText(block);
        if (list->format().style() > QTextListFormat::ListDecimal)
            sign = QString(QStringLiteral("*o#").at(-1 - list->format().style()));
        lines += QString(2 * list->format().indent() - 2, QLatin1Char(' ')) + sign
            + QLatin1Char(' ') + block.text();
    }
    return lines;
}

QString cellText(const QTextTableCell &cell);

// "[a|b/c|-]": cells, rows; '-' where a cell reaches over from the left or from above.
QString tableText(const QTextTable &table)
{
    QStringList rows;
    for (int row = 0; row < table.rows(); ++row) {
        QStringList cells;
        for (int column = 0; column < table.columns(); ++column) {
            const QTextTableCell cell = table.cellAt(row, column);
            const bool begins = cell.row() == row && cell.column() == column;
            cells += begins ? cellText(cell) : QStringLiteral("-");
        }
        rows += cells.join(QLatin1Char('|'));
    }
    return QLatin1Char('[') + rows.join(QLatin1Char('/')) + QLatin1Char(']');
}

QString contentText(QTextFrame::iterator it)
{
    QStringList parts;
    for (; !it.atEnd(); ++it) {
        if (const auto *table = qobject_cast<QTextTable *>(it.currentFrame()))
            parts += tableText(*table);
        else
            parts += it.currentBlock().text();
    }
    return parts.join(QLatin1Char(','));
}

QString cellText(const QTextTableCell &cell)
{
    return contentText(cell.begin());
}

QStringList lines(std::initializer_list<const char *> texts)
{
    QStringList list;
    for (const char *text : texts)
        list += QLatin1String(text);
    return list;
}

std::unique_ptr<QTextDocument> writtenAndRead(const QTextDocument &document)
{
    auto read = std::make_unique<QTextDocument>();
    MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&document, false), read.get());
    return read;
}

QByteArray listTable(const QByteArray &levels)
{
    return "{\\*\\listtable{\\list\\listtemplateid1" + levels
        + "{\\listname x;}\\listid9}}{\\*\\listoverridetable{\\listoverride\\listid9"
          "\\listoverridecount0\\ls1}{\\listoverride\\listid9\\listoverridecount0\\ls2}}";
}

QByteArray level(int format, const QByteArray &text)
{
    return "{\\listlevel\\levelnfc" + QByteArray::number(format) + "\\levelstartat1{\\leveltext"
        + text + ";}{\\levelnumbers\\'01;}\\fi-360\\li720}";
}

} // namespace

void TestRtfTables::lists_data()
{
    QTest::addColumn<QByteArray>("rtf");
    QTest::addColumn<QStringList>("items");
    const QByteArray table = listTable(level(0, "\\'02\\'00.") + level(4, "\\'03(\\'01)")
                                       + level(23, "\\'01\\u-3913 ?") + level(23, "\\'01o"));
    const auto item = [](int number, const char *text) {
        return "\\pard\\ls1\\ilvl" + QByteArray::number(number)
            + "\\li720\\fi-360{\\listtext 9.\\tab}" + text + "\\par ";
    };
    QTest::newRow("levels") << table + item(0, "a") + item(1, "b") + item(1, "c") + item(2, "d")
            + item(0, "e")
            + item(1, "f") << lines({"1. a", "  (a) b", "  (b) c", "    * d", "2. e", "  (a) f"});
    const auto labelled = [&item](const QByteArray &text, const QByteArray &around) {
        return "{\\fonttbl{\\f0 Arial;}{\\f1\\fcharset204 Arial;}{\\f2\\fcharset128 Gothic;}}"
            + listTable("{\\listlevel\\levelnfc0{\\leveltext" + text + ";}{\\levelnumbers\\'01;}"
                        + around + "}")
            + item(0, "a");
    };
    QTest::newRow("label in the code page of a font behind it")
        << labelled("\\'03\\'00\\'e0)", "\\f1\\fs20") << QStringList {QString::fromUtf8("1а) a")};
    QTest::newRow("raw label, letters of two bytes") << labelled("\\'03\x91\xe6\\'00\\'8fA", "\\f2")
                                                     << QStringList {QString::fromUtf8("第1就 a")};
    QTest::newRow("label in Unicode, whatever the font")
        << labelled("\\'03\\'00\\u224?\\'bb", "\\f0") << QStringList {QString::fromUtf8("1à» a")};
    QTest::newRow("label that is empty") << labelled("\\'00", "\\f1") << lines({"a"});
    QTest::newRow("goes on behind a paragraph")
        << table + item(0, "a") + "\\pard x\\par " + item(0, "b") << lines({"1. a", "x", "2. b"});
    QTest::newRow("a list below starts again behind a paragraph")
        << table + item(0, "a") + item(1, "b") + "\\pard x\\par " + item(0, "c") + item(1, "d")
        << lines({"1. a", "  (a) b", "x", "2. c", "  (a) d"});
    QTest::newRow("a list below goes on behind a paragraph") << table + item(0, "a") + item(1, "b")
            + "\\pard x\\par " + item(1, "c") << lines({"1. a", "  (a) b", "x", "  (b) c"});
    QTest::newRow("another list of the same looks")
        << table + item(0, "a") + "\\pard\\ls2 b" << lines({"1. a", "1. b"});
    QTest::newRow("no such list") << table + "\\pard\\ls7 a\\par\\ls1\\ilvl8 b"
                                  << lines({"a", "b"});
    QTest::newRow("level beyond all")
        << table + item(3, "a") + item(99, "b") << lines({"      o a", "b"});
    QTest::newRow("level without a label") << listTable(level(0, "\\'00") + level(0, "\\'02\\'01."))
            + item(0, "a") + item(1, "b") << lines({"a", "  1. b"});
    QTest::newRow("list number 0") << listTable(level(0, "\\'02\\'00.")).replace("\\ls2", "\\ls0")
            + "\\pard\\ls0 a\\par\\pard b"
                                   << lines({"1. a", "b"});
    QTest::newRow("list number 0 that is none") << QByteArray("\\pard\\ls0 a") << lines({"a"});
    QTest::newRow("old numbers") << QByteArray(
        "\\pard{\\pntext 1.}{\\*\\pn\\pnlvlbody\\pnucrm{\\pntxta .}}a\\par b\\par\\pard x\\par"
        "{\\*\\pn\\pnlvlbody\\pnucrm}c")
                                 << lines({"I. a", "II. b", "x", "I. c"});
    QTest::newRow("old bullets") << QByteArray(
        "{\\pntext *}{\\*\\pn\\pnlvlblt{\\pntxtb\\'b7}}a\\par b")
                                 << lines({"* a", "* b"});
}

void TestRtfTables::lists()
{
    QFETCH(const QByteArray, rtf);
    QFETCH(const QStringList, items);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 " + rtf + '}', &document));
    QCOMPARE(itemsOf(document), items);
    QCOMPARE(itemsOf(*writtenAndRead(document)), items);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        QVERIFY(!block.textList() || block.blockFormat().leftMargin() == 0);
}

void TestRtfTables::tables_data()
{
    QTest::addColumn<QByteArray>("rtf");
    QTest::addColumn<QString>("content"); // of the document, see tableText()
    const QByteArray two = "\\trowd\\cellx1000\\cellx2000\\pard\\intbl ";
    QTest::newRow("two rows") << two + "a\\cell b\\cell\\row " + two
            + "c\\cell d\\cell\\row\\pard x"
                              << QStringLiteral(",[a|b/c|d],x");
    QTest::newRow("definition once")
        << two + "a\\cell b\\cell\\row c\\cell d\\cell\\row" << QStringLiteral(",[a|b/c|d],");
    QTest::newRow("definition behind")
        << QByteArray("\\intbl a\\cell b\\cell\\trowd\\cellx9\\cellx99\\row")
        << QStringLiteral(",[a|b],");
    QTest::newRow("paragraphs in a cell")
        << two + "a\\par b\\cell\\cell\\row" << QStringLiteral(",[a,b|],");
    QTest::newRow("no \\intbl") << QByteArray("\\trowd\\cellx900 a\\cell\\row\\pard x")
                                << QStringLiteral(",[a],x");
    QTest::newRow("no edges") << QByteArray("\\intbl a\\cell b\\cell\\row c\\cell\\row")
                              << QStringLiteral(",[a|b/c|],");
    QTest::newRow("edges that go back")
        << QByteArray("\\trowd\\cellx900\\cellx100\\intbl a\\cell b\\cell\\row")
        << QStringLiteral(",[a|b],");
    QTest::newRow("row never ended") << two + "a\\cell b" << QStringLiteral(",[a|b],");
    QTest::newRow("rows of other widths")
        << two + "a\\cell b\\cell\\row\\trowd\\cellx500\\cellx2005 c\\cell d\\cell\\row"
        << QStringLiteral(",[a|-|b/c|d|-],");
    QTest::newRow("joined to the left")
        << QByteArray("\\trowd\\clmgf\\cellx1000\\clmrg\\cellx2000\\intbl a\\cell\\cell\\row") + two
            + "c\\cell d\\cell\\row"
        << QStringLiteral(",[a|-/c|d],");
    QTest::newRow("joined to above")
        << QByteArray("\\trowd\\clvmgf\\cellx1000\\cellx2000\\intbl a\\cell b\\cell\\row"
                      "\\trowd\\clvmrg\\cellx1000\\cellx2000\\cell d\\cell\\row")
        << QStringLiteral(",[a|b/-|d],");
    QByteArray wide = "\\trowd"; // most of its cells are not joined, and cost nothing
    for (int cell = 1; cell <= 60; ++cell)
        wide += "\\cellx" + QByteArray::number(cell * 100);
    QTest::newRow("joined at the end of a large table")
        << (wide + "\\intbl" + QByteArray("\\cell").repeated(60) + "\\row").repeated(90)
            + "\\trowd\\clmgf\\cellx100\\clmrg\\cellx200\\intbl a\\cell\\cell\\row"
        << QStringLiteral(",[%1a|-%2],")
               .arg((QString(59, QLatin1Char('|')) + QLatin1Char('/')).repeated(90),
                    QString(58, QLatin1Char('|')));
    QTest::newRow("joined cell with text keeps it")
        << QByteArray("\\trowd\\clmgf\\cellx1000\\clmrg\\cellx2000\\intbl a\\cell b\\cell\\row")
        << QStringLiteral(",[a|b],");
    QTest::newRow("table in a table") << two
            + "a\\par\\pard\\intbl\\itap2 n\\nestcell "
              "m\\nestcell{\\*\\nesttableprops\\trowd\\cellx400"
              "\\cellx800\\nestrow}{\\nonesttables\\par}\\pard\\intbl\\itap1 z\\cell b\\cell\\row"
                                      << QStringLiteral(",[a,[n|m],z|b],");
    QTest::newRow("two tables") << two + "a\\cell b\\cell\\row\\pard x\\par" + two
            + "c\\cell d\\cell\\row"
                                << QStringLiteral(",[a|b],x,[c|d],");
    QTest::newRow("more cells than the row has")
        << two + "a\\cell b\\cell\\cell\\row" << QStringLiteral(",[a|b],");
    QTest::newRow("cell words outside")
        << QByteArray("a\\row b\\nestrow c") << QStringLiteral("abc");
}

void TestRtfTables::tables()
{
    QFETCH(const QByteArray, rtf);
    QFETCH(const QString, content);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 " + rtf + '}', &document));
    QCOMPARE(contentText(document.rootFrame()->begin()), content);
    QCOMPARE(contentText(writtenAndRead(document)->rootFrame()->begin()), content);
}

void TestRtfTables::tableFormats()
{
    const QByteArray rtf
        = "{\\rtf1{\\colortbl;\\red255;}\\trowd\\trhdr\\trleft-100"
          "\\cellx900\\clcbpat1\\cellx2900\\intbl\\qc a\\cell{\\b b}\\cell\\row"
          "\\trowd\\trleft-100\\cellx900\\cellx2900\\pard\\intbl c\\cell\\cell\\row}";
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(rtf, &document));
    const auto *table = qobject_cast<QTextTable *>(document.rootFrame()->childFrames().value(0));
    QVERIFY(table);
    QCOMPARE(table->format().headerRowCount(), 1);
    const QVector<QTextLength> widths = table->format().columnWidthConstraints();
    QCOMPARE(widths.size(), 2);
    QCOMPARE(widths.at(0).rawValue(), 50.0);
    QCOMPARE(widths.at(1).rawValue(), 100.0);
    QCOMPARE(table->cellAt(0, 1).format().background().color(), QColor(255, 0, 0));
    QCOMPARE(table->cellAt(0, 0).begin().currentBlock().blockFormat().alignment(),
             Qt::AlignHCenter);
    QCOMPARE(table->cellAt(1, 0).begin().currentBlock().blockFormat().alignment(), Qt::AlignLeft);
    QCOMPARE(
        table->cellAt(0, 1).begin().currentBlock().begin().fragment().charFormat().fontWeight(),
        int(QFont::Bold));
}

// For each cell that is joined, Qt goes through the whole table.
void TestRtfTables::joinsSoManyCells()
{
    QByteArray row("\\trowd\\clmgf\\cellx100\\clmrg\\cellx200");
    for (int i = 3; i <= 60; ++i)
        row += "\\cellx" + QByteArray::number(100 * i);
    row += "\\intbl a" + QByteArray("\\cell").repeated(60) + "\\row ";
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1" + row.repeated(600) + "\\pard b}", &document));
    const auto *table = qobject_cast<QTextTable *>(document.rootFrame()->childFrames().value(0));
    QVERIFY(table);
    QCOMPARE(table->rows(), 600);
    QCOMPARE(table->cellAt(0, 0).columnSpan(), 2);
    QCOMPARE(table->cellAt(599, 0).columnSpan(), 1);
}

void TestRtfTables::tableBorders_data()
{
    QTest::addColumn<QByteArray>("first"); // of the cells of the first row
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<QString>("borders"); // see bordersOf()
    const auto edges = [](const QByteArray &letters, const QByteArray &style = "\\brdrs\\brdrw10") {
        QByteArray words;
        for (const char letter : letters)
            words += QByteArray("\\clbrdr") + letter + style;
        return words;
    };
    QTest::newRow("none") << edges("tlbr", "\\brdrnone")
                          << edges("tl", "\\brdrtbl") + edges("br", "\\brdrnil") << "0";
    QTest::newRow("edges alone") << edges("tlbr", "") << QByteArray() << "0";
    QTest::newRow("switched off again")
        << edges("tlbr") + edges("tlbr", "\\brdrnone") << QByteArray() << "0";
    QTest::newRow("all") << edges("tlbr") << edges("tlbr") << "1";
    QTest::newRow("said once between two cells") << edges("tlr") << edges("tlbr") << "1";
    QTest::newRow("below the head") << edges("b", "\\brdrdb") << QByteArray() << "0 b|b/t|t";
    QTest::newRow("no lines up and down") << edges("tb") << edges("tb") << "0 tb|tb/tb|tb";
}

/*! The width of the table's border; behind it, if they have any, the borders of its cells. */
static QString bordersOf(const QTextDocument &document)
{
    const auto *table = qobject_cast<QTextTable *>(document.rootFrame()->childFrames().value(0));
    if (!table)
        return QStringLiteral("no table");
    QStringList rows;
    for (int row = 0; row < table->rows(); ++row) {
        QStringList cells;
        for (int column = 0; column < table->columns(); ++column) {
            const auto format = table->cellAt(row, column).format().toTableCellFormat();
            cells += QLatin1String(format.topBorder() > 0 ? "t" : "")
                + QLatin1String(format.leftBorder() > 0 ? "l" : "")
                + QLatin1String(format.bottomBorder() > 0 ? "b" : "")
                + QLatin1String(format.rightBorder() > 0 ? "r" : "");
        }
        rows += cells.join(QLatin1Char('|'));
    }
    const QString cells = rows.join(QLatin1Char('/'));
    const QString border = QString::number(table->format().border());
    return cells == QLatin1String("|/|") ? border : border + QLatin1Char(' ') + cells;
}

void TestRtfTables::tableBorders()
{
    QFETCH(const QByteArray, first);
    QFETCH(const QByteArray, second);
    const auto row = [](const QByteArray &words) {
        return "\\trowd\\trbrdrt\\brdrs" + words + "\\cellx900" + words
            + "\\cellx1800\\pard\\brdrt\\brdrs\\intbl a\\cell b\\cell\\row";
    };
    QTextDocument document;
    QVERIFY(
        MVRTextRtf::fromRtfCData("{\\rtf1 " + row(first) + row(second) + "\\pard x}", &document));
    QTEST(bordersOf(document), "borders");
    // In our own file other programs find the borders, too.
    QByteArray ours = MVRTextRtf::toRtfCData(&document, false);
    QTextDocument read;
    QVERIFY(MVRTextRtf::fromRtfCData(ours, &read));
    QTEST(bordersOf(read), "borders");
    ours.replace("\\mvrt", "\\none").replace("\\mvrc", "\\none");
    QVERIFY(MVRTextRtf::fromRtfCData(ours, &read));
    QTEST(bordersOf(read), "borders");
}

void TestRtfTables::writesTables()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertText(QStringLiteral("before"));
    QTextTableFormat format;
    format.setBorder(1);
    format.setHeaderRowCount(1);
    format.setColumnWidthConstraints({QTextLength(QTextLength::FixedLength, 50),
                                      QTextLength(QTextLength::PercentageLength, 50),
                                      QTextLength(QTextLength::VariableLength, 0)});
    QTextTable *table = cursor.insertTable(3, 3, format);
    table->mergeCells(0, 1, 2, 2);
    table->cellAt(2, 0).firstCursorPosition().insertText(QStringLiteral("a\nb"));
    QTextTableCell cell = table->cellAt(2, 1);
    QTextCharFormat red = cell.format();
    red.setBackground(QColor(255, 0, 0));
    cell.setFormat(red);
    QTextCursor inner = table->cellAt(0, 1).firstCursorPosition();
    inner.insertText(QStringLiteral("x"));
    inner.insertTable(1, 2)->cellAt(0, 1).firstCursorPosition().insertText(QStringLiteral("y"));

    const auto read = writtenAndRead(document);
    QCOMPARE(contentText(read->rootFrame()->begin()), contentText(document.rootFrame()->begin()));
    const auto *again = qobject_cast<QTextTable *>(read->rootFrame()->childFrames().value(0));
    QVERIFY(again);
    QCOMPARE(again->format().properties(), table->format().properties());
    // Others have the widths in twips: of the text's 6.5 inches half, and a third.
    QVERIFY(MVRTextRtf::toRtfCData(&document, false).contains("\\cellx8800"));
    QCOMPARE(again->cellAt(2, 1).format().background().color(), QColor(255, 0, 0));
    QCOMPARE(again->cellAt(0, 1).rowSpan(), 2);
}

void TestRtfTables::writesLists()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextListFormat numbers;
    numbers.setStyle(QTextListFormat::ListUpperRoman);
    numbers.setNumberPrefix(QStringLiteral("(0"));
    numbers.setNumberSuffix(QString::fromUtf8(";\u00a7)"));
    numbers.setIndent(3);
    cursor.insertList(numbers);
    cursor.insertText(QStringLiteral("a"));
    QTextBlockFormat indented = cursor.blockFormat();
    indented.setLeftMargin(7.25);
    cursor.setBlockFormat(indented);
    cursor.insertBlock();
    cursor.insertText(QStringLiteral("b"));
    for (const auto style : {QTextListFormat::ListCircle, QTextListFormat::ListSquare}) {
        cursor.insertList(style);
        cursor.insertText(QStringLiteral("c"));
    }
    const QByteArray rtf = MVRTextRtf::toRtfCData(&document, false);
    QVERIFY2(rtf.contains("\\'01\\u9702?") && rtf.contains("\\'01\\u9642?"), rtf);
    const auto read = writtenAndRead(document);
    QCOMPARE(itemsOf(*read), itemsOf(document));
    for (QTextBlock block = read->begin(), source = document.begin(); block.isValid();
         block = block.next(), source = source.next()) {
        QCOMPARE(block.blockFormat().leftMargin(), source.blockFormat().leftMargin());
        if (source.textList())
            QCOMPARE(block.textList()->format().properties(),
                     source.textList()->format().properties());
    }
}

// Qt shows the nearest that it has; the file that we write says what the other one said.
void TestRtfTables::keepsLabelsThatQtHasNotGot()
{
    const QByteArray levels = level(0, "\\'02\\'00.")
        + "{\\listlevel\\levelnfc22\\levelstartat4{\\leveltext\\'06\\'00.\\'01 %);}"
          "{\\levelnumbers\\'01\\'03;}}";
    QTextDocument document;
    MVRTextRtf::fromRtfCData("{\\rtf1" + listTable(levels) + "\\pard\\ls1\\ilvl1 x}", &document);
    QCOMPARE(itemsOf(document), QStringList {QStringLiteral("  1 %) x")});
    QByteArray rtf = MVRTextRtf::toRtfCData(&document, false);
    for (int round = 0; round < 2; ++round) {
        QVERIFY2(rtf.contains("\\levelnfc22\\leveljc0\\levelfollow0\\levelstartat4{\\leveltext\\'06"
                              "\\'00.\\'01 %);}{\\levelnumbers\\'01\\'03;}"),
                 rtf);
        rtf = MVRTextRtf::toRtfCData(writtenAndRead(document).get(), false);
    }
}

// What is behind a table must not take the formatting of what is before it.
void TestRtfTables::tableAmongParagraphs()
{
    const QByteArray rtf = "{\\rtf1" + listTable(level(0, "\\'02\\'00."))
        + "\\ls1 item\\par\\pard\\qr a\\par\\trowd\\cellx900\\pard\\intbl b\\cell\\row\\pard "
          "c\\par}";
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(rtf, &document));
    QCOMPARE(contentText(document.rootFrame()->begin()), QStringLiteral("item,a,[b],c"));
    QVERIFY(document.lastBlock().blockFormat().isEmpty());
    QVERIFY(!document.lastBlock().textList());
    QCOMPARE(document.lastBlock().previous().blockFormat().alignment(), Qt::AlignLeft);
}

QTEST_MAIN(TestRtfTables)
#include "tst_rtftables.moc"
