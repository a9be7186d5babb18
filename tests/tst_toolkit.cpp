// SPDX-License-Identifier: MIT
#include <core/MVRFormat.h>
#include <core/MVRTextFormat.h>
#include <core/MVRToolkit.h>

#include <QFont>
#include <QGuiApplication>
#include <QPalette>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QtTest>

class TestToolkit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void fontNameIsNeverAPlaceholder();
    void translatesIndents_data();
    void translatesIndents();
    void translatesSpacing_data();
    void translatesSpacing();
    void leavesOtherParagraphsAlone();
    void secondTranslationChangesNothing();
    void convertsEveryParagraph();
    void filesHaveOneNumberForBothToolkits();
    void clearsTheLookOfLinksOnly();
    void showsNoAnchorsOfNotes();
    void knowsKindsOfExport();
};

namespace {

constexpr double letterTextWidth = 468.0;

QTextBlockFormat indented(double left, double right, double firstLine)
{
    QTextBlockFormat format;
    format.setProperty(MVRTextFormat::BlockLeftIndentProperty, left);
    format.setProperty(MVRTextFormat::BlockRightIndentProperty, right);
    format.setTextIndent(firstLine);
    return format;
}

QTextBlockFormat translated(const QTextBlockFormat &format)
{
    QTextDocument document;
    QTextCursor(&document).setBlockFormat(format);
    MVRToolkit::toStockParagraphs(&document, letterTextWidth);
    return document.firstBlock().blockFormat();
}

}

void TestToolkit::fontNameIsNeverAPlaceholder()
{
    QCOMPARE(MVRToolkit::rawFontName(QFont(QStringLiteral("Courier Prime"))),
             QStringLiteral("Courier Prime"));
}

void TestToolkit::translatesIndents_data()
{
    QTest::addColumn<QTextFormat>("format");
    QTest::addColumn<double>("left");
    QTest::addColumn<double>("right");
    QTest::addColumn<double>("firstLine");

    QTest::newRow("dialogue") << QTextFormat(indented(108, 360, 108)) << 108.0 << 108.0 << 0.0;
    QTest::newRow("hanging first line")
        << QTextFormat(indented(144, 324, 136.8)) << 144.0 << 144.0 << -7.2;
    QTest::newRow("text reaching into the page margin")
        << QTextFormat(indented(0, 500, 0)) << 0.0 << -32.0 << 0.0;
    QTest::newRow("right edge left of the left one")
        << QTextFormat(indented(200, 100, 200)) << 200.0 << 0.0 << 0.0;

    QTextBlockFormat onlyRight;
    onlyRight.setProperty(MVRTextFormat::BlockRightIndentProperty, 400.0);
    onlyRight.setTextIndent(36);
    QTest::newRow("no left indent") << QTextFormat(onlyRight) << 0.0 << 68.0 << 36.0;
    QTextBlockFormat onlyLeft;
    onlyLeft.setProperty(MVRTextFormat::BlockLeftIndentProperty, 36.0);
    QTest::newRow("neither right edge nor first line")
        << QTextFormat(onlyLeft) << 36.0 << 0.0 << 0.0;
    QTextBlockFormat quoted = indented(36, 432, 36);
    quoted.setLeftMargin(10);
    QTest::newRow("margin of its own") << QTextFormat(quoted) << 46.0 << 36.0 << 0.0;
}

void TestToolkit::translatesIndents()
{
    QFETCH(const QTextFormat, format);
    QFETCH(const double, left);
    QFETCH(const double, right);
    QFETCH(const double, firstLine);

    const QTextBlockFormat stock = translated(format.toBlockFormat());
    QCOMPARE(stock.leftMargin(), left);
    QCOMPARE(stock.rightMargin(), right);
    QVERIFY2(qAbs(stock.textIndent() - firstLine) < 1e-9,
             qPrintable(QString::number(stock.textIndent())));
}

void TestToolkit::translatesSpacing_data()
{
    QTest::addColumn<QVariant>("spacing");
    QTest::addColumn<bool>("withBase");
    QTest::addColumn<int>("heightType");
    QTest::addColumn<double>("height");
    QTest::addColumn<int>("headingLevel");

    const int single = QTextBlockFormat::SingleHeight;
    const int proportional = QTextBlockFormat::ProportionalHeight;
    QTest::newRow("one and a half") << QVariant(1.5) << false << proportional << 150.0 << 0;
    QTest::newRow("single") << QVariant(1.0) << false << single << 0.0 << 0;
    QTest::newRow("broken") << QVariant(-3.0) << false << single << 0.0 << 0;
    QTest::newRow("height on a base") << QVariant(12.0) << true << single << 0.0 << 0;
    QTest::newRow("heading of an HTML page") << QVariant(2) << false << single << 0.0 << 2;
}

void TestToolkit::translatesSpacing()
{
    QFETCH(const QVariant, spacing);
    QFETCH(const bool, withBase);

    QTextBlockFormat format;
    format.setProperty(MVRTextFormat::LineSpacingProperty, spacing);
    if (withBase)
        format.setProperty(MVRTextFormat::LineSpacingBaseProperty, 12.0);
    const QTextBlockFormat stock = translated(format);

    QTEST(stock.lineHeightType(), "heightType");
    QTEST(stock.lineHeight(), "height");
    QTEST(stock.headingLevel(), "headingLevel");
    QVERIFY(!stock.hasProperty(MVRTextFormat::LineSpacingProperty) || stock.headingLevel() > 0);
}

void TestToolkit::leavesOtherParagraphsAlone()
{
    QTextDocument document(QStringLiteral("plain\nscreenplay\nplain again"));
    QTextBlockFormat format = indented(108, 360, 108);
    format.setAlignment(Qt::AlignRight);
    format.setTopMargin(22);
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    QTextBlockFormat plain;
    plain.setTextIndent(18);
    plain.setLeftMargin(7);
    QTextCursor cursor(&document);
    cursor.setBlockFormat(plain);
    cursor.movePosition(QTextCursor::NextBlock);
    cursor.setBlockFormat(format);

    MVRToolkit::toStockParagraphs(&document, letterTextWidth);
    QCOMPARE(document.firstBlock().blockFormat(), plain);
    QCOMPARE(document.lastBlock().blockFormat(), QTextDocument().firstBlock().blockFormat());
    const QTextBlockFormat stock = document.findBlockByNumber(1).blockFormat();
    QCOMPARE(stock.alignment(), Qt::AlignRight);
    QCOMPARE(stock.topMargin(), 22.0);
    QCOMPARE(stock.pageBreakPolicy(), QTextFormat::PageBreak_AlwaysBefore);
    QCOMPARE(stock.leftMargin(), 108.0);

    document.undo();
    QCOMPARE(document.findBlockByNumber(1).blockFormat(), format);
    MVRToolkit::toStockParagraphs(nullptr, letterTextWidth);
}

void TestToolkit::secondTranslationChangesNothing()
{
    QTextDocument document(QStringLiteral("text"));
    QTextCursor(&document).setBlockFormat(indented(108, 360, 100));
    MVRToolkit::toStockParagraphs(&document, letterTextWidth);
    const QTextBlockFormat once = document.firstBlock().blockFormat();
    MVRToolkit::toStockParagraphs(&document, letterTextWidth);
    QCOMPARE(document.firstBlock().blockFormat(), once);
}

void TestToolkit::convertsEveryParagraph()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertText(QStringLiteral("a"));
    cursor.insertBlock();
    cursor.insertText(QStringLiteral("item"));
    cursor.createList(QTextListFormat::ListDisc);
    cursor.insertBlock();
    cursor.insertImage(QStringLiteral("picture"));
    document.clearUndoRedoStacks();

    QTextBlockFormat centred;
    centred.setAlignment(Qt::AlignCenter);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    MVRTextFormat::convertToFormat(&document, &bold, &centred);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QCOMPARE(block.blockFormat().alignment(), Qt::AlignCenter);
        QCOMPARE(block.textList() != nullptr, block.blockNumber() > 0);
        const QTextCharFormat format = block.begin().fragment().charFormat();
        QCOMPARE(format.fontWeight() == QFont::Bold, !format.isImageFormat());
    }
    document.undo(); // one step
    QVERIFY(!document.isUndoAvailable());
    QCOMPARE(document.begin().blockFormat().properties(), QTextBlockFormat().properties());
    MVRTextFormat::convertToFormat(&document, nullptr, nullptr);
    QVERIFY(!document.isUndoAvailable());
}

void TestToolkit::filesHaveOneNumberForBothToolkits()
{
    QCOMPARE(MVRToolkit::storedProperty(QTextFormat::FontStretch), 0x2034);
    QCOMPARE(MVRToolkit::propertyOfStored(0x2010), int(QTextFormat::TextUnderlineColor));
    QCOMPARE(MVRToolkit::storedProperty(QTextFormat::FontWeight), 0x2003);

    QCOMPARE(MVRToolkit::storedWeight(QFont::Bold), 75);
    for (const int ofEither : {75, 700})
        QCOMPARE(MVRToolkit::weightOfStored(ofEither), int(QFont::Bold));
    for (const int ofEither : {50, 400})
        QCOMPARE(MVRToolkit::weightOfStored(ofEither), int(QFont::Normal));
    const int between = MVRToolkit::weightOfStored(QT_VERSION_MAJOR > 5 ? 69 : 650);
    QVERIFY(between > QFont::DemiBold && between < QFont::Bold);
    for (int weight = QFont::Thin; weight <= QFont::Black; ++weight)
        QCOMPARE(MVRToolkit::weightOfStored(MVRToolkit::storedWeight(weight)), weight);
}

void TestToolkit::clearsTheLookOfLinksOnly()
{
    const QColor link = QGuiApplication::palette().color(QPalette::Link);
    const auto cleared = [](const QColor &color, bool underlined) {
        QTextCharFormat format;
        format.setFontUnderline(underlined);
        format.setForeground(color);
        format.setFontItalic(true);
        MVRToolkit::clearLinkLook(&format);
        return !format.hasProperty(QTextFormat::ForegroundBrush) && format.fontItalic();
    };
    QVERIFY(cleared(link, true));
    QVERIFY(!cleared(Qt::red, true));
    QVERIFY(!cleared(link, false));
}

void TestToolkit::showsNoAnchorsOfNotes()
{
    QTextDocument document;
    QTextCharFormat note;
    note.setAnchor(true);
    note.setAnchorHref(QStringLiteral("Comment:{1}"));
    note.setProperty(MVRTextFormat::CommentLinkProperty, true);
    QTextCursor cursor(&document);
    cursor.insertText(QStringLiteral("noted"), note);
    note.setProperty(MVRTextFormat::CoveredLinkProperty, QStringLiteral("http://x.y"));
    cursor.insertText(QStringLiteral("linked"), note);
    const QString html = MVRToolkit::toHtml(document);
    QVERIFY2(!html.contains(QLatin1String("Comment:")), qPrintable(html));
    QVERIFY(html.contains(QLatin1String("noted<a href=\"http://x.y\">linked</a>")));
    QCOMPARE(document.begin().begin().fragment().charFormat().anchorHref(),
             QStringLiteral("Comment:{1}")); // the document itself keeps its notes
}

void TestToolkit::knowsKindsOfExport()
{
    QVERIFY(MVRFormat::isMmdVariant(MVRFormat::MultiMarkdown));
    QVERIFY(MVRFormat::isMmdVariant(MVRFormat::MultiMarkdownLatex));
    QVERIFY(!MVRFormat::isMmdVariant(MVRFormat::Kindle));
    QVERIFY(MVRFormat::isEBook(MVRFormat::EPub3) && MVRFormat::isEBook(MVRFormat::Kindle));
    QVERIFY(!MVRFormat::isEBook(MVRFormat::NoFormat));
}

QTEST_MAIN(TestToolkit)
#include "tst_toolkit.moc"
