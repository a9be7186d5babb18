// SPDX-License-Identifier: MIT
#include "DrawnPages.h"
#include "ToolRun.h"

#include <text/MVRTextDoc.h>
#include <tool/Document.h>

#include <QRandomGenerator>
#include <QTextTable>
#include <QtTest>

/*! Documents that are no screenplays on pages: where they break, and what stands around the text.
 */
class TestDocPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void losesAndDoublesNothing_data();
    void losesAndDoublesNothing();
    void keepsParagraphsTogether();
    void repeatsHeaderRows_data();
    void repeatsHeaderRows();
    void closesTablesAtBreaks();
    void losesNothingBesideMiddledCells();
    void losesNothingAtLowLines_data();
    void losesNothingAtLowLines();
    void losesNothingBesideHighPictures();
    void cutsHighRowsBetweenLines_data();
    void cutsHighRowsBetweenLines();
    void drawsPicturesOfThePage_data();
    void drawsPicturesOfThePage();
    void longFootnotesGoOn();
    void rowsTiedTogetherGoOn();
    void footnotesWithoutRoomGoOn_data();
    void footnotesWithoutRoomGoOn();
    void makesRoomForLongComments();
    void writesCommentsIntoTheMargin();
};

namespace {

struct Wanted
{
    QByteArray rtf;
    QStringList body;
    QStringList notes;
};

Wanted randomText(quint32 seed)
{
    static const QByteArray spacings[]
        = {"\\sl360\\slmult1", "\\sl480\\slmult1", "\\sl720\\slmult1",
           "\\sl-240",         "\\sl-600",         "\\sl500"};
    QRandomGenerator random(seed);
    Wanted wanted {"{\\rtf1\\ansi ", {}, {}};
    const auto add = [](QStringList &list, const QByteArray &text) {
        list += QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    };
    for (int i = 0; i < 40; ++i) {
        const QByteArray number = QByteArray::number(i);
        const bool isHeading = i < 39 && random.bounded(6) == 0;
        const QByteArray text
            = isHeading ? words("H" + number, 3) : words(number, random.bounded(1, 90));
        wanted.rtf += "\\pard" + (random.bounded(2) ? spacings[random.bounded(6)] : QByteArray())
            + "\\sb" + QByteArray::number(random.bounded(3) * 120)
            + (isHeading ? "\\outlinelevel0 " : " ") + text;
        add(wanted.body, text);
        if (!isHeading && random.bounded(3) == 0) {
            const QByteArray note = words("N" + number, random.bounded(1, 60));
            wanted.rtf.chop(1); // else the number may go to the next line
            wanted.rtf += "{\\footnote\\pard " + note + '}';
            add(wanted.notes, note);
        }
        wanted.rtf += "\\par";
    }
    wanted.rtf += '}';
    return wanted;
}

QString paragraphOf(const QString &text)
{
    return text.section(QLatin1Char('.'), 0, 0);
}

/*! \return what is wrong with the breaks of a page, empty for nothing. */
QString brokenRule(const DrawnPage &lines, const QVector<int> &linesOfParagraph, int page)
{
    QVector<int> counts(linesOfParagraph.size());
    QString last;
    for (const DrawnLine &line : lines) {
        if (line.text[0] == QLatin1Char('H'))
            last = line.text;
        else
            ++counts[paragraphOf(line.text).toInt()];
    }
    if (!lines.isEmpty() && lines.last().text == last)
        return QStringLiteral("page %1 ends with a heading").arg(page);
    for (int i = 0; i < counts.size(); ++i) {
        if (counts[i] == 1 && linesOfParagraph[i] > 1)
            return QStringLiteral("a single line of paragraph %1 on page %2").arg(i).arg(page);
    }
    return QString();
}

}

void TestDocPages::losesAndDoublesNothing_data()
{
    QTest::addColumn<int>("seed");
    for (int seed = 0; seed < 25; ++seed)
        QTest::addRow("%d", seed) << seed;
}

void TestDocPages::losesAndDoublesNothing()
{
    QFETCH(const int, seed);
    const Wanted wanted = randomText(quint32(seed));
    Document document;
    QVERIFY(MVRTextDoc::fromRtf(wanted.rtf, &document.text));
    const PageSetup setup = smallPaper();
    const Pages pages(document, setup);
    QVERIFY(pages.count() > 3);

    QStringList body;
    QStringList notes;
    QVector<DrawnPage> bodies;
    QVector<int> linesOfParagraph(40);
    for (const DrawnPage &page : drawn(pages)) {
        bodies.append(DrawnPage());
        for (const DrawnLine &line : page) {
            QVERIFY2(line.y > 72.0 && line.y < 328.5, qPrintable(line.text));
            // Numbers of footnotes have no period.
            const QStringList text
                = line.text.split(QLatin1Char(' '), Qt::SkipEmptyParts).filter(QStringLiteral("."));
            if (text.isEmpty())
                continue;
            const bool isNote = text.first().startsWith(QLatin1Char('N'));
            (isNote ? notes : body) += text;
            if (isNote)
                continue;
            bodies.last().append(line);
            if (!text.first().startsWith(QLatin1Char('H')))
                ++linesOfParagraph[paragraphOf(text.first()).toInt()];
        }
    }
    QCOMPARE(notes, wanted.notes);
    QCOMPARE(body, wanted.body);
    for (int i = 0; i < bodies.size(); ++i)
        QCOMPARE(brokenRule(bodies[i], linesOfParagraph, i + 1), QString());
}

// The toolkit would not wrap their lines.
void TestDocPages::keepsParagraphsTogether()
{
    Document document;
    QVERIFY(MVRTextDoc::fromRtf("{\\rtf1 " + QByteArray("x\\par ").repeated(14) + "\\pard\\keep "
                                    + words("K", 50) + "{\\footnote\\pard\\keep " + words("N", 30)
                                    + "}\\par\\pard\\keep " + words("L", 600) + "\\par}",
                                &document.text));
    const QVector<DrawnPage> pages = drawn(Pages(document, smallPaper()));
    QVERIFY(textsOf(pages[0]).filter(QStringLiteral("K.")).isEmpty());
    QVERIFY(textsOf(pages[1]).filter(QStringLiteral("K.")).size() > 3);
    QString all;
    const DrawnPage lines = joined(pages);
    for (const DrawnLine &line : lines) {
        QVERIFY2(line.text.size() < 60, "runs off the paper");
        all += line.text;
    }
    QVERIFY(pages.size() > 3); // what no page holds breaks
    QCOMPARE(all.count(QLatin1Char('L')), 600);
    QCOMPARE(all.count(QLatin1Char('K')) + all.count(QLatin1Char('N')), 80);
}

void TestDocPages::repeatsHeaderRows_data()
{
    QTest::addColumn<QString>("look");
    QTest::newRow("plain") << QString();
    QTest::newRow("bordered") << "border=1 cellspacing=0 style='border-collapse:collapse'";
    QTest::newRow("spaced") << "border=3 cellspacing=4 cellpadding=5";
}

void TestDocPages::repeatsHeaderRows()
{
    QFETCH(const QString, look);
    QString html = QStringLiteral("<p>Before.</p><table ") + look
        + QStringLiteral("><thead><tr><th>Head</th></tr></thead>");
    for (int i = 0; i < 40; ++i)
        html += QStringLiteral("<tr><td>row%1<br/>more</td></tr>").arg(i);
    Document document;
    document.text.setHtml(html + QStringLiteral("</table>"));
    const QVector<DrawnPage> pages = drawn(Pages(document, smallPaper()));
    QVERIFY(pages.size() > 3);
    QStringList rows;
    for (int i = 0; i < pages.size(); ++i) {
        const QStringList texts = textsOf(pages[i]);
        QCOMPARE(texts.count(QStringLiteral("Head")), 1);
        QCOMPARE(texts.indexOf(QStringLiteral("Head")), i == 0 ? 1 : 0);
        QCOMPARE(texts.last(), QStringLiteral("more"));
        rows += texts.filter(QStringLiteral("row"));
    }
    QCOMPARE(rows.size(), 40);
}

void TestDocPages::closesTablesAtBreaks()
{
    Document document;
    document.text.setHtml(
        QStringLiteral("<table border=1 width='100%' style='border-collapse:collapse'>")
        + QStringLiteral("<tr><td>row</td></tr>").repeated(60) + QStringLiteral("</table>"));
    const Pages pages(document, smallPaper());
    QVERIFY(pages.count() > 2);
    QImage page(720, 800, QImage::Format_RGB32); // two dots a point
    page.fill(Qt::white);
    QPainter painter(&page);
    painter.scale(144.0 / Pages::resolution, 144.0 / Pages::resolution);
    pages.paint(painter, 1);
    painter.end();
    QVector<int> rules;
    for (int y = 0; y < page.height(); ++y) {
        int dark = 0;
        for (int x = 0; x < page.width(); ++x)
            dark += qGray(page.pixel(x, y)) < 230 ? 1 : 0;
        if (dark > 300)
            rules.append(y);
    }
    QVERIFY(!rules.isEmpty());
    QVERIFY2(rules.first() < 148, QByteArray::number(rules.first()));
    QVERIFY2(rules.last() > 656 - 30, QByteArray::number(rules.last()));
    // Nothing hangs below the last border.
    for (int y = rules.last() + 3; y < page.height(); ++y) {
        for (int x = 0; x < page.width(); ++x)
            QVERIFY(qGray(page.pixel(x, y)) > 200);
    }
}

// The row begins a page.
void TestDocPages::losesNothingBesideMiddledCells()
{
    Document document;
    document.text.setHtml(
        QStringLiteral("<p>Before</p><table style='page-break-before:always'><tr><th "
                       "style='vertical-align:middle'>M</th><td>")
        + QStringLiteral("A<br/>").repeated(20) + QStringLiteral("</td></tr></table>"));
    PageSetup setup = smallPaper();
    setup.paper.setHeight(800.0);
    const QVector<DrawnPage> pages = drawn(Pages(document, setup));
    QCOMPARE(pages.size(), 2);
    const QString all = textsOf(pages.last()).join(QString());
    QCOMPARE(all.count(QLatin1Char('A')), 20);
    QCOMPARE(all.count(QLatin1Char('M')), 1);
}

void TestDocPages::losesNothingAtLowLines_data()
{
    QTest::addColumn<int>("above");
    QTest::addColumn<QString>("low");
    const QString picture = QStringLiteral("<img src='data:,x' width=5000 height=2>");
    const QString letters = QStringLiteral("<br/><span style='font-size:0.5pt'>low.</span><br/>");
    for (int above = 5; above < 25; ++above) {
        QTest::addRow("picture behind %d lines", above) << above << picture;
        QTest::addRow("letters behind %d lines", above) << above << letters;
    }
}

void TestDocPages::losesNothingAtLowLines()
{
    QFETCH(const int, above);
    QFETCH(const QString, low);
    Document document;
    document.text.setHtml(QStringLiteral("<p>") + QStringLiteral("A.<br/>").repeated(above)
                          + QStringLiteral("B.<br/>C.") + low
                          + QStringLiteral("D.<br/>E.<br/>F.</p>"));
    const QString all = textsOf(joined(drawn(Pages(document, smallPaper())))).join(QString());
    for (const char word : {'B', 'C', 'D', 'E', 'F'})
        QVERIFY2(all.contains(QLatin1Char(word)), qPrintable(all));
    QCOMPARE(all.count(QLatin1String("A.")), above);
}

// Footnotes leave a page too little room for the picture.
void TestDocPages::losesNothingBesideHighPictures()
{
    Document document;
    QVERIFY(MVRTextDoc::fromRtf(
        "{\\rtf1\\pard A{\\footnote " + words("N", 200) + "}\\par\\pard B\\par}", &document.text));
    QTextCursor cursor(&document.text);
    cursor.movePosition(QTextCursor::End);
    cursor.insertFrame(QTextFrameFormat());
    QTextTable *table = cursor.insertTable(2, 2);
    QTextImageFormat picture;
    picture.setName(QStringLiteral("data:,x"));
    picture.setWidth(40.0);
    picture.setHeight(900.0);
    table->cellAt(0, 0).firstCursorPosition().insertImage(picture);
    table->cellAt(0, 1).firstCursorPosition().insertText(QStringLiteral("C"));
    table->cellAt(1, 0).firstCursorPosition().insertText(QStringLiteral("D"));
    const QStringList texts = textsOf(joined(drawn(Pages(document, smallPaper()))));
    for (const char word : {'C', 'D'})
        QVERIFY2(texts.contains(QString(QLatin1Char(word))),
                 qPrintable(texts.join(QLatin1Char('|'))));
}

void TestDocPages::cutsHighRowsBetweenLines_data()
{
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("between"); // the words of a cell
    QTest::addColumn<int>("count");
    const QString headed = QStringLiteral("<table><thead><tr><th>-</th></tr></thead>");
    QTest::newRow("lines") << headed << "<br/>" << 130;
    QTest::newRow("paragraphs") << headed << "</p><p>" << 130;
    const QString bordered = QStringLiteral("<table border=1 cellpadding=9>");
    for (int count = 120; count < 130; ++count)
        QTest::addRow("a paragraph of %d words", count) << bordered << " " << count;
}

void TestDocPages::cutsHighRowsBetweenLines()
{
    QFETCH(const QString, table);
    QFETCH(const QString, between);
    QFETCH(const int, count);
    // Lines of two sizes stand side by side, so that no place is between lines of both.
    QString html = QStringLiteral("<p>Before</p>") + table;
    QVector<QStringList> wanted(4);
    for (int row = 0; row < 2; ++row) {
        html += QLatin1String("<tr>");
        for (int column = 0; column < 2; ++column) {
            QStringList &words = wanted[2 * row + column];
            for (int i = 0; i < count - 40 * column; ++i)
                words << QStringLiteral("%1.%2").arg(2 * row + column).arg(i);
            html += QStringLiteral("<td style='font-size:%1pt'><p>").arg(10 + 7 * column)
                + words.join(between) + QLatin1String("</p></td>");
        }
        html += QLatin1String("</tr>");
    }
    Document document;
    document.text.setHtml(html + QStringLiteral("</table><p>After</p>"));
    const Pages made(document, smallPaper());
    QVector<QStringList> shown(4);
    const DrawnPage lines = joined(drawn(made));
    for (const DrawnLine &line : lines) {
        QVERIFY2(line.y > 72.0 && line.y < 328.5, qPrintable(line.text));
        const QStringList words
            = line.text.split(QLatin1Char(' '), Qt::SkipEmptyParts).filter(QStringLiteral("."));
        if (!words.isEmpty())
            shown[words.first().section(QLatin1Char('.'), 0, 0).toInt()] += words;
    }
    QCOMPARE(shown, wanted);
    QCOMPARE(textsOf(lines).count(QStringLiteral("After")), 1);
    if (table.contains(QLatin1String("<th>"))) {
        const QVector<DrawnPage> pages = drawn(made);
        for (const DrawnPage &page : pages) {
            const QStringList texts = textsOf(page);
            const bool hasRow = !texts.filter(QStringLiteral(".")).isEmpty();
            QCOMPARE(texts.count(QStringLiteral("-")), hasRow ? 1 : 0);
        }
    }
    QVERIFY2(made.count() < 40, QByteArray::number(made.count()));
}

void TestDocPages::drawsPicturesOfThePage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("position");
    QTest::addColumn<double>("side");
    QTest::addColumn<int>("all");
    const int inLine = QTextFrameFormat::InFlow;
    const int beside = QTextFrameFormat::FloatRight;
    QTest::newRow("as high as pages") << "p" << inLine << 9000.0 << 12;
    QTest::newRow("small") << "p" << inLine << 20.0 << 12;
    QTest::newRow("beside paragraphs") << "p" << beside << 20.0 << 12;
    QTest::newRow("not opened") << "q" << beside << 20.0 << 0;
}

void TestDocPages::drawsPicturesOfThePage()
{
    QFETCH(const QString, name);
    QFETCH(const int, position);
    QFETCH(const double, side);
    QFETCH(const int, all);

    Document document;
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(Qt::red);
    document.text.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("p")), image);
    QTextCursor cursor(&document.text);
    QTextImageFormat format;
    format.setName(name);
    format.setWidth(side);
    format.setHeight(side);
    for (int i = 0; i < 12; ++i) {
        cursor.insertImage(format, QTextFrameFormat::Position(position));
        cursor.insertText(QString::fromLatin1(words("W", 300)), QTextCharFormat());
        cursor.insertBlock();
    }
    const Pages pages(document, smallPaper());
    QVERIFY(pages.count() >= 12);
    int drawn = 0;
    int most = 0;
    for (int i = 0; i < pages.count(); ++i) {
        TextDevice device;
        QPainter painter(&device);
        pages.paint(painter, i);
        painter.end();
        drawn += device.engine.pictures;
        most = qMax(most, device.engine.pictures);
    }
    QCOMPARE(drawn, all);
    QVERIFY2(most <= 2, QByteArray::number(most));
}

void TestDocPages::longFootnotesGoOn()
{
    Document document;
    QVERIFY(MVRTextDoc::fromRtf("{\\rtf1\\fs12 Text.{\\footnote " + words("N", 300)
                                    + "}\\par Second.\\par Third.}",
                                &document.text));
    const QVector<DrawnPage> pages = drawn(Pages(document, smallPaper()));
    QVERIFY(pages.size() > 1);
    QCOMPARE(textsOf(pages[0]).first().left(5), QStringLiteral("Text."));
    QVERIFY(textsOf(pages[0]).contains(QStringLiteral("Third.")));
    QVERIFY(pages[0].last().y < 328.0 && pages[0].last().y > 300.0);
    QVERIFY2(pages[1][2].y - pages[1][1].y < 10.0, "larger than the text");
    // Words may break behind their period.
    const QString notes = textsOf(joined(pages))
                              .filter(QStringLiteral("N"))
                              .join(QString())
                              .remove(QLatin1Char(' '));
    QCOMPARE(notes, QString::fromLatin1(words("N", 300)).remove(QLatin1Char(' ')));
}

void TestDocPages::rowsTiedTogetherGoOn()
{
    const auto cell = [](const char *attributes, const char *name, int count) {
        return "<td " + QByteArray(attributes) + '>' + words(name, count) + "</td>";
    };
    Document document;
    document.text.setHtml(QString::fromLatin1(
        "<table width=400 border=1><tr><th colspan=3>H</th></tr><tr>"
        + cell("rowspan=3 width=200", "A", 300) + cell("colspan=2", "B", 20) + "</tr><tr>"
        + cell("", "C", 5) + cell("rowspan=2", "D", 90) + "</tr><tr>" + cell("", "E", 40)
        + "</tr><tr>" + cell("", "F", 2) + cell("colspan=2", "G", 2) + "</tr></table>"));
    const QVector<DrawnPage> pages = drawn(Pages(document, smallPaper()));
    QVERIFY(pages.size() > 1);
    QString all;
    for (const DrawnPage &page : pages) {
        for (const DrawnLine &line : page) {
            QVERIFY2(line.y < 328.5, qPrintable(line.text));
            all += line.text;
        }
    }
    QString counts;
    for (const char name : {'A', 'B', 'C', 'D', 'E', 'F', 'G', 'H'})
        counts += QStringLiteral("%1 ").arg(all.count(QLatin1Char(name)));
    // A line beside the last one of a page may be on the next one too, where it is clipped.
    counts.replace(QLatin1String(" 92 "), QLatin1String(" 90 "));
    QCOMPARE(counts, QStringLiteral("300 20 5 90 40 2 2 1 "));
}

void TestDocPages::footnotesWithoutRoomGoOn_data()
{
    QTest::addColumn<QByteArray>("note");
    const QByteArray cell = "\\pard\\intbl ";
    QTest::newRow("a row") << "\\trowd\\cellx2000\\cellx4000" + cell + words("N", 100) + "\\cell "
            + words("N", 9) + "\\cell\\row";
    QTest::newRow("rows that a cell ties together") << "\\trowd\\clvmgf\\cellx2000\\cellx4000"
            + cell + words("N", 80) + "\\cell " + words("N", 9)
            + "\\cell\\row\\trowd\\clvmrg\\cellx2000\\cellx4000\\cell" + cell + words("N", 20)
            + "\\cell\\row";
    QTest::newRow("a picture higher than a page")
        << "{\\pict\\wmetafile8\\picw100\\pich9000\\picwgoal200\\pichgoal18000 00}"
            + words("N", 109);
}

void TestDocPages::footnotesWithoutRoomGoOn()
{
    QFETCH(const QByteArray, note);
    Document document;
    QVERIFY(MVRTextDoc::fromRtf("{\\rtf1\\fs20 " + QByteArray("x\\par ").repeated(9)
                                    + "Text.{\\footnote " + note + "\\pard }}",
                                &document.text));
    PageSetup setup = smallPaper();
    setup.paper.setHeight(300.0);
    const DrawnPage lines = joined(drawn(Pages(document, setup)));
    int count = 0;
    for (const DrawnLine &line : lines) {
        QVERIFY2(line.y < 228.5, "cut through");
        count += line.text.count(QLatin1Char('N'));
    }
    QCOMPARE(count, 109);
}

void TestDocPages::makesRoomForLongComments()
{
    Document document;
    QVERIFY(MVRTextDoc::fromRtf("{\\rtf1 word{\\*\\annotation " + words("N", 300) + "}}",
                                &document.text));
    PageSetup setup = smallPaper();
    setup.hasCommentsInMargin = true;
    const DrawnPage lines = joined(drawn(Pages(document, setup)));
    int count = 0;
    for (const DrawnLine &line : lines) {
        QVERIFY2(line.y > 72.0 && line.y < 328.0, qPrintable(line.text));
        count += int(line.text.count(QLatin1Char('N')));
    }
    QCOMPARE(count, 300);
}

void TestDocPages::writesCommentsIntoTheMargin()
{
    // Both are about the last line: they go up so far that they fit above each other.
    QByteArray rtf = "{\\rtf1 ";
    for (int i = 0; i < 17; ++i)
        rtf += "line\\par ";
    for (const QByteArray number : {"1", "2"})
        rtf += "{\\*\\atnauthor Ann}{\\*\\atrfstart " + number + "}about" + number
            + "{\\*\\atrfend " + number + "}\\chatn{\\*\\annotation{\\*\\atnref " + number
            + "}remark" + number + "}";
    Document document;
    QVERIFY(MVRTextDoc::fromRtf(rtf + '}', &document.text));
    PageSetup setup = smallPaper();
    setup.margins.setRight(20.0); // too few for comments
    setup.hasCommentsInMargin = true;
    setup.hasNumbers = true;
    const Pages pages(document, setup);
    QVERIFY(pages.extras().comments.isEmpty());
    const DrawnPage page = drawn(pages).last();
    QVector<DrawnLine> remarks;
    for (const DrawnLine &line : page) {
        if (line.x > 288.0)
            remarks.append(line);
    }
    QCOMPARE(textsOf(remarks),
             QStringList({QStringLiteral("Ann: remark1"), QStringLiteral("Ann: remark2")}));
    QVERIFY(remarks[1].y < 328.0 && remarks[0].y < remarks[1].y - 6.0);
    QCOMPARE(page.last().text, QString::number(pages.count()));
    QVERIFY(page.last().y > 328.0);
}

int main(int argc, char *argv[])
{
    return runPageTest<TestDocPages>(argc, argv);
}

#include "tst_docpages.moc"
