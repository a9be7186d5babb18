// SPDX-License-Identifier: MIT
#include <core/MVRParagraphView.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>

#include <QRandomGenerator>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QtTest>

class TestParagraphView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsIndentsAndTakesThemBack();
    void editsKeepBothInStep_data();
    void editsKeepBothInStep();
    void undoIsStillOneStep();
    void whatAHostSetsIsTheParagraphsOwn();
    void writersLookPastTheView();
    void lengthsFollowTheScreen();
};

namespace {

constexpr double textWidth = 400.0;

QTextBlockFormat speech(double left)
{
    QTextBlockFormat format;
    format.setProperty(MVRTextFormat::BlockLeftIndentProperty, left);
    format.setProperty(MVRTextFormat::BlockRightIndentProperty, 300.0);
    format.setTextIndent(left);
    format.setProperty(MVRTextFormat::LineSpacingProperty, 2.0);
    return format;
}

void fill(QTextDocument *document)
{
    QTextCursor cursor(document);
    cursor.insertText(QStringLiteral("plain"));
    for (const double left : {72.0, 144.0}) {
        cursor.insertBlock(speech(left));
        cursor.insertText(QStringLiteral("a speech"));
    }
    document->clearUndoRedoStacks();
    document->setModified(false);
}

QVector<QTextBlockFormat> formats(const QTextDocument &document, bool own)
{
    QVector<QTextBlockFormat> formats;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        formats.append(own ? MVRParagraphView::ownFormat(block.blockFormat())
                           : block.blockFormat());
    return formats;
}

void edit(QTextDocument *document, QRandomGenerator &random)
{
    const int last = document->characterCount() - 1;
    QTextCursor cursor(document);
    cursor.setPosition(random.bounded(last + 1));
    cursor.setPosition(qMin(last, cursor.position() + random.bounded(12)), QTextCursor::KeepAnchor);
    switch (random.bounded(7)) {
    case 0:
        cursor.insertText(QStringLiteral("more"));
        break;
    case 1:
        cursor.insertBlock();
        break;
    case 2:
        cursor.removeSelectedText();
        break;
    case 3:
        cursor.setBlockFormat(speech(random.bounded(100)));
        break;
    case 4:
        cursor.insertFragment(QTextDocumentFragment(cursor));
        break;
    case 5:
        document->undo();
        break;
    default:
        document->redo();
    }
}

} // namespace

void TestParagraphView::showsIndentsAndTakesThemBack()
{
    QTextDocument document;
    fill(&document);
    const auto before = formats(document, false);
    {
        MVRParagraphView view(&document);
        view.setTextWidth(textWidth);
        const QTextBlockFormat shown = document.lastBlock().blockFormat();
        QCOMPARE(shown.leftMargin(), 144.0);
        QCOMPARE(shown.rightMargin(), 100.0);
        QCOMPARE(shown.lineHeight(), 200.0);
        QCOMPARE(shown.doubleProperty(MVRTextFormat::BlockLeftIndentProperty), 144.0);
        QVERIFY(!document.isModified());
        QVERIFY(!document.isUndoAvailable());
        QCOMPARE(formats(document, true), before);
    }
    QCOMPARE(formats(document, false), before);
}

void TestParagraphView::editsKeepBothInStep_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 30; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

// The same edits with and without a view: but for what the view shows, nothing differs.
void TestParagraphView::editsKeepBothInStep()
{
    QFETCH(const quint32, seed);
    QRandomGenerator random(seed);
    QRandomGenerator same(seed);
    QTextDocument viewed;
    QTextDocument plain;
    fill(&viewed);
    fill(&plain);
    MVRParagraphView view(&viewed);
    view.setTextWidth(textWidth);
    for (int step = 0; step < 60; ++step) {
        edit(&viewed, random);
        edit(&plain, same);
        const QByteArray place = "step " + QByteArray::number(step);
        QVERIFY2(viewed.toPlainText() == plain.toPlainText(), place);
        QVERIFY2(formats(viewed, true) == formats(plain, false), place);
        for (QTextBlock block = viewed.begin(); block.isValid(); block = block.next()) {
            const QTextBlockFormat stock
                = MVRToolkit::stockBlockFormat(block.blockFormat(), textWidth);
            QVERIFY2(stock.leftMargin() == block.blockFormat().leftMargin(), place);
            QVERIFY2(stock.rightMargin() == block.blockFormat().rightMargin(), place);
            QVERIFY2(stock.lineHeight() == block.blockFormat().lineHeight(), place);
        }
    }
}

void TestParagraphView::undoIsStillOneStep()
{
    QTextDocument document;
    fill(&document);
    MVRParagraphView view(&document);
    QTextCursor cursor(&document);
    cursor.setBlockFormat(speech(36.0));
    QCOMPARE(document.firstBlock().blockFormat().leftMargin(), 36.0);
    document.undo();
    QVERIFY(document.firstBlock().blockFormat().isEmpty()
            || document.firstBlock().blockFormat().leftMargin() == 0.0);
    QVERIFY(!document.isUndoAvailable());
    QVERIFY(document.isRedoAvailable());
    document.redo();
    QCOMPARE(document.firstBlock().blockFormat().leftMargin(), 36.0);
}

void TestParagraphView::whatAHostSetsIsTheParagraphsOwn()
{
    QTextDocument document;
    fill(&document);
    MVRParagraphView view(&document);
    QTextBlockFormat wider;
    wider.setLeftMargin(10.0);
    QTextCursor cursor(document.lastBlock());
    cursor.mergeBlockFormat(wider);
    QCOMPARE(MVRParagraphView::ownFormat(document.lastBlock().blockFormat()).leftMargin(), 10.0);
    QCOMPARE(document.lastBlock().blockFormat().leftMargin(), 154.0);
}

void TestParagraphView::writersLookPastTheView()
{
    QTextDocument document;
    fill(&document);
    const QByteArray rtf = MVRTextRtf::toRtfCData(&document, true);
    MVRParagraphView view(&document);
    QCOMPARE(MVRTextRtf::toRtfCData(&document, true), rtf);
}

void TestParagraphView::lengthsFollowTheScreen()
{
    QTextDocument document;
    QTextBlockFormat stock;
    stock.setTopMargin(10.0);
    stock.setLineHeight(12.0, QTextBlockFormat::FixedHeight);
    QTextCursor cursor(&document);
    cursor.setBlockFormat(stock);
    cursor.insertBlock(speech(72.0));
    const QVector<QTextBlockFormat> before = formats(document, false);
    {
        auto *view = new MVRParagraphView(&document);
        view->setTextWidth(textWidth);
        view->setScale(1.5);
        QCOMPARE(document.firstBlock().blockFormat().topMargin(), 15.0);
        QCOMPARE(document.firstBlock().blockFormat().lineHeight(), 18.0);
        const QTextBlockFormat shown = document.lastBlock().blockFormat();
        QCOMPARE(shown.leftMargin(), 108.0);
        QCOMPARE(shown.rightMargin(), 150.0);
        QCOMPARE(shown.lineHeight(), 200.0); // percent are no length
        QCOMPARE(formats(document, true), before);
        view->setScale(2.0);
        QCOMPARE(document.firstBlock().blockFormat().topMargin(), 20.0);
        delete view;
    }
    QCOMPARE(formats(document, false), before);
}

QTEST_MAIN(TestParagraphView)
#include "tst_paragraphview.moc"
