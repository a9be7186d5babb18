// SPDX-License-Identifier: MIT
#include "DrawnPages.h"
#include "ToolRun.h"

#include <text/MVRTextDoc.h>
#include <tool/Document.h>

#include <QTextTable>
#include <QtTest>

/*! Documents that are no screenplays on pages: what would stand beside the paper, or over other
 * text.
 */
class TestDocPageRoom : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTextOnPaper();
    void floatsPushNoTableOffThePaper_data();
    void floatsPushNoTableOffThePaper();
    void keepsWhatWidensTablesOnThePaper_data();
    void keepsWhatWidensTablesOnThePaper();
    void closeLinesHideNoText_data();
    void closeLinesHideNoText();
    void closeLinesEndHighRows_data();
    void closeLinesEndHighRows();
    void wideBordersLeaveRoom();
    void largeLettersHideNoText();
    void smallCapitalsStayLetters();
    void tablesStandInTheFlow_data();
    void tablesStandInTheFlow();
};

void TestDocPageRoom::keepsTextOnPaper()
{
    Document document;
    QVERIFY(MVRTextDoc::fromRtf(
        "{\\rtf1\\pard\\li9000 " + words("A", 9) + "\\par\\pard\\ri9000\\li-5000 " + words("B", 9)
            + "\\par\\pard\\fi-9000 " + words("C", 9) + "\\par\\pard\\fi9000 " + words("D", 9)
            + "\\par\\trowd\\cellx6000\\cellx12000\\pard\\intbl " + words("E", 9) + "\\cell "
            + words("F", 9) + "\\cell\\row\\trowd\\cellx3000\\pard\\intbl\\itap2 " + words("G", 9)
            + "\\nestcell " + words("H", 9)
            + "\\nestcell{\\*\\nesttableprops\\trowd\\cellx4000\\cellx8000\\nestrow}"
              "\\pard\\intbl\\itap1\\cell\\row\\pard {\\footnote\\pard\\li9000 "
            + words("N", 9) + "}}",
        &document.text));
    const DrawnPage lines = joined(drawn(Pages(document, smallPaper())));
    const double wordWidth = 20.0; // points
    int count = 0;
    for (const DrawnLine &line : lines) {
        const int found = int(line.text.count(QLatin1Char('.')));
        count += found;
        QVERIFY2(found == 0 || (line.x >= 0.0 && line.x + found * wordWidth <= 360.0),
                 qPrintable(line.text));
    }
    QCOMPARE(count, 9 * 9);
}

void TestDocPageRoom::floatsPushNoTableOffThePaper_data()
{
    QTest::addColumn<QString>("floating");
    QTest::newRow("picture") << QStringLiteral(
        "<img style='float:left' src='data:,x' width=200 height=99>");
    QTest::newRow("table") << QStringLiteral(
        "<table style='float:left' width=200><tr><td>F<br/>F<br/>F</td></tr></table>");
}

void TestDocPageRoom::floatsPushNoTableOffThePaper()
{
    QFETCH(const QString, floating);
    Document document;
    document.text.setHtml(QStringLiteral("<p>A</p>") + floating
                          + QStringLiteral("<table width='100%'><tr><td>B</td><td>C</td></tr>"
                                           "</table><p>D</p>"));
    QString all;
    const DrawnPage lines = joined(drawn(Pages(document, smallPaper())));
    for (const DrawnLine &line : lines) {
        QVERIFY2(line.x < 288.0, qPrintable(line.text));
        all += line.text;
    }
    QCOMPARE(all.remove(QLatin1Char('F')), QStringLiteral("ABCD"));
}

void TestDocPageRoom::keepsWhatWidensTablesOnThePaper_data()
{
    QTest::addColumn<QString>("wide");
    QTest::newRow("picture") << QStringLiteral("<img src='data:,x' width=280 height=20>");
    QTest::newRow("room in a cell")
        << QStringLiteral("<table><tr><td style='padding:0 100px'>T</td></tr></table>");
}

void TestDocPageRoom::keepsWhatWidensTablesOnThePaper()
{
    QFETCH(const QString, wide);
    Document document;
    document.text.setHtml(
        QStringLiteral("<table><tr><td>%1</td><td>%1</td><td>A B</td></tr></table>"
                       "<p>C</p>")
            .arg(wide));
    const DrawnPage lines = joined(drawn(Pages(document, smallPaper())));
    for (const DrawnLine &line : lines)
        QVERIFY2(line.x < 350.0, qPrintable(line.text));
    QString all = textsOf(lines).join(QString());
    all.remove(QLatin1Char('T')).remove(QLatin1Char(' '));
    QCOMPARE(all, QStringLiteral("ABC"));
}

void TestDocPageRoom::closeLinesHideNoText_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<double>("height");
    QTest::newRow("percent") << int(QTextBlockFormat::ProportionalHeight) << 0.0;
    QTest::newRow("fixed") << int(QTextBlockFormat::FixedHeight) << 0.0;
    QTest::newRow("distance") << int(QTextBlockFormat::LineDistanceHeight) << -12.0;
}

void TestDocPageRoom::closeLinesHideNoText()
{
    QFETCH(const int, type);
    QFETCH(const double, height);
    Document document;
    QTextBlockFormat close;
    close.setLineHeight(height, type);
    QTextCursor cursor(&document.text);
    QTextCursor cell = cursor.insertTable(1, 1)->cellAt(0, 0).firstCursorPosition();
    cell.setBlockFormat(close);
    cell.insertText(QStringLiteral("A\u2028B\u2028C"));
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("D"));
    const DrawnPage lines = joined(drawn(Pages(document, smallPaper())));
    QCOMPARE(textsOf(lines).join(QLatin1Char('|')), QStringLiteral("A|B|C|D"));
    for (int i = 1; i < lines.size(); ++i)
        QVERIFY2(lines[i].y > lines[i - 1].y + 5.0, qPrintable(lines[i].text));
}

void TestDocPageRoom::closeLinesEndHighRows_data()
{
    QTest::addColumn<double>("border");
    QTest::addColumn<double>("margin");
    QTest::newRow("the last line reaches below the row") << 0.0 << 0.0;
    QTest::newRow("lines stay together") << 4.0 << 0.0;
    QTest::newRow("a margin above the table") << 0.0 << 250.0;
}

void TestDocPageRoom::closeLinesEndHighRows()
{
    QFETCH(const double, border);
    QFETCH(const double, margin);
    constexpr int lineCount = 99;
    QTextBlockFormat close;
    close.setLineHeight(0.0, QTextBlockFormat::ProportionalHeight);
    QTextTableFormat bordered;
    bordered.setBorder(border);
    bordered.setCellSpacing(0.0);
    bordered.setTopMargin(margin);
    Document document;
    QTextCursor cursor(&document.text);
    QTextCursor cell = cursor.insertTable(1, 1, bordered)->cellAt(0, 0).firstCursorPosition();
    cell.setBlockFormat(close);
    QStringList wanted;
    for (int i = 0; i < lineCount; ++i)
        wanted.append(QString::number(i));
    cell.insertText(wanted.join(QChar::LineSeparator));
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("end"));
    const Pages pages(document, smallPaper());
    QVERIFY(pages.count() > 1);
    QCOMPARE(textsOf(joined(drawn(pages))), wanted << QStringLiteral("end"));
}

void TestDocPageRoom::wideBordersLeaveRoom()
{
    Document document;
    document.text.setHtml(QStringLiteral("<table border=200 cellpadding=90 cellspacing=90><tr><td>A"
                                         "</td><td>B</td><td>C</td></tr></table><p>D</p>"));
    QString all;
    const DrawnPage lines = joined(drawn(Pages(document, smallPaper())));
    for (const DrawnLine &line : lines) {
        QVERIFY2(line.x < 288.0, qPrintable(line.text));
        all += line.text;
    }
    QCOMPARE(all, QStringLiteral("ABCD"));
}

// At an exact distance they reach up over what stands above.
void TestDocPageRoom::largeLettersHideNoText()
{
    Document document;
    QVERIFY(MVRTextDoc::fromRtf("{\\rtf1\\pard " + words("A", 60)
                                    + "\\par\\pard\\pagebb\\sl-240\\fs200 B\\par\\pard "
                                    + words("C", 9) + "}",
                                &document.text));
    QString all;
    const DrawnPage lines = joined(drawn(Pages(document, smallPaper())));
    for (const DrawnLine &line : lines)
        all += line.text;
    QCOMPARE(all.count(QLatin1Char('A')), 60);
    QCOMPARE(all.count(QLatin1Char('B')), 1);
}

// Where a line ends in the middle of a word, the toolkit draws other letters.
void TestDocPageRoom::smallCapitalsStayLetters()
{
    Document document;
    document.text.setHtml(QStringLiteral("<p style='font-variant:small-caps'>Aß%1</p>")
                              .arg(QStringLiteral("bcd").repeated(60)));
    QString all;
    const DrawnPage lines = joined(drawn(Pages(document, smallPaper())));
    for (const DrawnLine &line : lines)
        all += line.text;
    QVERIFY(lines.size() > 1);
    QCOMPARE(all, QStringLiteral("Aß") + QStringLiteral("BCD").repeated(60));
}

void TestDocPageRoom::tablesStandInTheFlow_data()
{
    QTest::addColumn<QString>("html");
    const auto row = [](const char *name, const QString &html, int letters) {
        QTest::newRow(name) << html.arg(QString::fromLatin1(words("B", letters)));
    };
    row("higher than a page, in a cell",
        QStringLiteral("<table><tr><td>A</td><td><table style='float:right'><tr><td>%1</td></tr>"
                       "</table></td></tr></table>"),
        900);
    row("higher than what is beside",
        QStringLiteral("<table style='float:right' width=20%><tr><td>%1</td></tr></table><p>A</p>"),
        9);
    row("two, and lines beside them",
        QStringLiteral("<p>A</p><table style='float:left' width=40%><tr><td>%1</td></tr></table>"
                       "<table style='float:left' width=90%><tr><td>%1</td></tr></table><p>%1</p>"),
        99);
}

void TestDocPageRoom::tablesStandInTheFlow()
{
    QFETCH(const QString, html);
    Document document;
    document.text.setHtml(html);
    const int letters = document.text.toPlainText().count(QLatin1Char('B'));
    QCOMPARE(textsOf(joined(drawn(Pages(document, smallPaper()))))
                 .join(QString())
                 .count(QLatin1Char('B')),
             letters);
}

int main(int argc, char *argv[])
{
    return runPageTest<TestDocPageRoom>(argc, argv);
}

#include "tst_docpageroom.moc"
