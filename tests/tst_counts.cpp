// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QAbstractTextDocumentLayout>
#include <QtTest>

using Counts = QPair<int, int>;

class TestCounts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsWords_data();
    void countsWords();
    void dividesThai();
    void countsCharacters();
    void addsNotes();
    void countsPages();
    void countsNoEndlessPages();
    void countsPagesOfOddHosts();
};

void TestCounts::countsWords_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("words");

    QTest::newRow("empty") << "" << 0;
    QTest::newRow("blanks") << " a\tb\u00a0c\u2028d\u3000e\nf\u200bg " << 7;
    QTest::newRow("apostrophes, hyphens")
        << "don't l\u2019homme \u2019tis well-known non\u2011breaking - x" << 6;
    QTest::newRow("dashes, ellipses") << "a\u2014b\u2013c--d Wait...what\u2026 e.g. U.S.A." << 8;
    QTest::newRow("numbers") << "3.14 1,000 \u20ac5 50% 3:30 2021-05-03 \u00bd" << 7;
    QTest::newRow("first and last letters") << "A Z a z 0 9" << 6;
    QTest::newRow("only signs") << "* & \u2013 ... -- ___ \u2603 \U0001F600" << 0;
    QTest::newRow("signs inside") << "file(s) and/or AT&T a@b.org http://x.org/a_b" << 5;
    QTest::newRow("unseen, marks") << "aut\u00adhor wo\u2060rd e\u0301te\u0301" << 3;
    QTest::newRow("picture") << "a\ufffcb \ufffc" << 2;
    QTest::newRow("Korean, Arabic")
        << "\ud55c\uad6d\uc5b4 \ub2e8\uc5b4 \u0643\u0644\u0645\u0629" << 3;
    QTest::newRow("Chinese") << "\u6f22\u5b57\uff0c\u3007 \U00020000\u3002 HTML5\u6587 v2" << 7;
    QTest::newRow("Japanese") << "\u30e9\u30fc\u30e1\u30f3\u3092\u98df\u3079" << 7;
    QTest::newRow("beyond the first plane") << "\U0001D4D0\U0001D4D1 \U0001D4D2" << 2;
    QTest::newRow("lone surrogates")
        << QString(QChar(0xd800)) + QLatin1Char('a') + QChar(0xdc00) << 1;
}

void TestCounts::countsWords()
{
    QFETCH(const QString, text);
    QTextDocument document;
    document.setPlainText(text);
    QTEST(MVRTextDoc::wordCount(document, false, false), "words");
}

void TestCounts::dividesThai()
{
    const QString phrase = QStringLiteral(u"\u0e2a\u0e27\u0e31\u0e2a\u0e14\u0e35"
                                          u"\u0e0a\u0e32\u0e27\u0e42\u0e25\u0e01");
    QTextDocument document;
    document.setPlainText(phrase);
    // With a dictionary these are three words, else as many as there are groups of signs.
    const int words = MVRTextDoc::wordCount(document, false, false);
    QVERIFY(words >= 3);
    document.setPlainText(phrase.repeated(20000) + QStringLiteral("abc"));
    QCOMPARE(MVRTextDoc::wordCount(document, false, false), 20000 * words + 1);
}

void TestCounts::countsCharacters()
{
    QTextDocument document;
    QCOMPARE(MVRTextDoc::characterCount(document, true, true), 0);
    document.setPlainText(QStringLiteral("Two words"));
    QCOMPARE(MVRTextDoc::characterCount(document, false, false), 9);
    MarkedText::fill(&document, QStringLiteral("undivided\nx"), QStringLiteral("BB.aa11f..."));
    QCOMPARE(MVRTextDoc::wordCharacterCount(&document, false, false, true, true), Counts(2, 11));
    QCOMPARE(MVRTextDoc::wordCharacterCount(nullptr, true, true, true, true), Counts(0, 0));
}

void TestCounts::addsNotes()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("one two three four five"));
    const auto attach = [&document](int start, const QByteArray &content, bool isFootnote) {
        const QTextCursor word = MarkedText::select(&document, start, start + 3);
        MVRTextDoc::setCommentCData(word, content, isFootnote);
    };
    attach(0, MVRTextRtf::textToRtf(QStringLiteral("a comment"), nullptr), false);
    attach(4, MVRTextRtf::textToRtf(QStringLiteral("the foot note"), nullptr), true);
    attach(8, "no RTF", false);
    attach(14, QByteArray(), true);
    attach(19, MVRTextRtf::textToRtf(QStringLiteral("one more"), nullptr), false);
    QCOMPARE(MVRTextDoc::wordCount(document, false, false), 5);
    QCOMPARE(MVRTextDoc::wordCount(document, true, false), 5 + 2 + 2);
    QCOMPARE(MVRTextDoc::wordCount(document, false, true), 5 + 3);
    QCOMPARE(MVRTextDoc::wordCharacterCount(&document, true, true, false, true),
             Counts(0, 23 + 9 + 13 + 8));
    QCOMPARE(MVRTextDoc::formatCount(&document, MVRTextFormat::InspectorCommentProperty, true), 3);
}

void TestCounts::countsPages()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("line\n").repeated(100));
    for (const QSizeF &size : {QSizeF(), QSizeF(300, 0), QSizeF(300, -5)})
        QCOMPARE(MVRTextDoc::pageCount(&document, size), 1);
    const QSizeF size(300, 200);
    const int pages = MVRTextDoc::pageCount(&document, size);
    QCOMPARE(document.pageCount(), 1);
    mvrSetPageSize(*document.documentLayout(), size);
    QCOMPARE(document.pageCount(), pages);
    QCOMPARE(mvrPageSize(*document.documentLayout()), size);

    // Twice the line spacing of the application is twice the height.
    QTextBlockFormat spacing;
    spacing.setProperty(MVRTextFormat::LineSpacingProperty, 2.0);
    QTextCursor all(&document);
    all.select(QTextCursor::Document);
    all.mergeBlockFormat(spacing);
    QVERIFY(MVRTextDoc::pageCount(&document, size) > pages * 3 / 2);
}

/*! What the toolkit would never come back from, or for hours. */
void TestCounts::countsNoEndlessPages()
{
    const QSizeF size(300, 200);
    QTextDocument document;
    document.setPlainText(QStringLiteral("line\n").repeated(400));
    QTextCursor all(&document);
    all.select(QTextCursor::Document);
    QTextCharFormat letters;
    letters.setFontPointSize(30000);
    all.mergeCharFormat(letters);
    QCOMPARE(MVRTextDoc::pageCount(&document, size), 0);
    letters.setFontPointSize(12);
    all.mergeCharFormat(letters);
    QTextBlockFormat apart;
    apart.setTopMargin(100000); // two pages
    all.mergeBlockFormat(apart);
    QVERIFY(MVRTextDoc::pageCount(&document, size) >= 800);
    apart.setTopMargin(0);
    apart.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    all.mergeBlockFormat(apart);
    QVERIFY(MVRTextDoc::pageCount(&document, size) >= 400);
    QCOMPARE(MVRTextDoc::pageCount(&document, QSizeF(300, 100000)), 0);
    QTextDocument tables;
    tables.setHtml(
        QStringLiteral("<table style='page-break-before:always'><tr><td>a</table>").repeated(400));
    QVERIFY(MVRTextDoc::pageCount(&tables, size) >= 400);
    QCOMPARE(MVRTextDoc::pageCount(&tables, QSizeF(300, 100000)), 0);
    const QString floating
        = QStringLiteral("<table style='float:left'><tr><td>.</td></tr></table>");
    tables.setHtml(floating.repeated(150));
    QVERIFY(MVRTextDoc::pageCount(&tables, size) < 10); // beside each other
    tables.setHtml(floating.repeated(300));
    QVERIFY(MVRTextDoc::pageCount(&tables, size) > 20); // one below the other
    for (const double height : {0.001, 1e-300})
        QVERIFY(MVRTextDoc::pageCount(&document, QSizeF(300, height)) >= 0);
    for (const char *table : {"cellspacing=-1e308", "cellpadding=-1e308", "cellspacing=nan",
                              "style='float:left;margin:-1e9px' width=1e308"}) {
        tables.setHtml(QLatin1String("<table ") + QLatin1String(table)
                       + QLatin1String("><tr><td>a</table>b"));
        QVERIFY2(MVRTextDoc::pageCount(&tables, size) > 0, table);
    }
    for (const char *table : {"cellspacing=300", "cellpadding=300", "border=300"}) {
        tables.setHtml(QLatin1String("<table ") + QLatin1String(table)
                       + QLatin1String("><thead><tr><td>a</thead><tr><td>b<tr><td>c</table>"));
        const int pages = MVRTextDoc::pageCount(&tables, size);
        QVERIFY2(pages > 1 && pages < 60, QByteArray::number(pages)); // was -441
    }
    document.setPlainText(QString(600000, QLatin1Char('a'))); // one word
    QElapsedTimer time;
    time.start();
    QVERIFY(MVRTextDoc::pageCount(&document, size) > 1000);
    QVERIFY(time.elapsed() < 6000); // took 20 s
}

void TestCounts::countsPagesOfOddHosts()
{
    const QSizeF size(300, 400);
    QTextDocument host;
    QTextTableFormat odd;
    odd.setBorderCollapse(true);
    odd.setHeaderRowCount(3); // of two
    odd.setBottomMargin(1e6);
    QTextCursor(&host).insertTable(2, 1, odd);
    QVERIFY(MVRTextDoc::pageCount(&host, size) > 0); // crashed
    QTextFrameFormat margins = host.rootFrame()->frameFormat();
    margins.setMargin(-2.1e9);
    host.rootFrame()->setFrameFormat(margins);
    QVERIFY(MVRTextDoc::pageCount(&host, size) >= 0); // never came back
    margins.setMargin(4.0);
    margins.setBorder(1e15);
    margins.setPadding(300.0);
    host.rootFrame()->setFrameFormat(margins);
    QVERIFY(MVRTextDoc::pageCount(&host, size) >= 0); // nor did this
    QTextBlockFormat spaced;
    for (const double height : {-2.1e9, 2.1e9}) { // per cent
        spaced.setLineHeight(height, QTextBlockFormat::ProportionalHeight);
        QTextDocument lines(QStringLiteral("some words ").repeated(20));
        QTextCursor(&lines).setBlockFormat(spaced);
        QVERIFY(MVRTextDoc::pageCount(&lines, QSizeF(0, 2.1e9)) > 0);
    }
}

QTEST_MAIN(TestCounts)
#include "tst_counts.moc"
