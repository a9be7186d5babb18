// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRCoreUtil.h>
#include <core/MVRFormat.h>
#include <core/MVRGuiUtil.h>
#include <core/MVRTextRtf.h>
#include <core/MVRTextUtil.h>
#include <core/MVRTextXhtmlExporter.h>
#include <core/MVRToolkit.h>
#include <core/STextDoc.h>
#include <finaldraft/MVRFinalDraftReader.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRRecovery.h>
#include <text/MVRTextDoc.h>

#include <QAbstractTextDocumentLayout>
#include <QMimeData>
#include <QTextDocumentFragment>
#include <QTextTable>
#include <QtTest>

#include <functional>
#include <limits>

using MarkedText::fill;
using MarkedText::marks;

/*!
    Every operation of the library that tst_misuse and tst_selections do not call, with nothing,
   with numbers that mean nothing and in an order that nobody means.
*/
class TestMisuseCalls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesNoDocument_data();
    void takesNoDocument();
    void keepsDocuments_data();
    void keepsDocuments();
    void givesNothingOfNothing();
    void copiesNothing();
};

namespace {

using Operation = std::function<void(QTextDocument *)>;

constexpr int least = std::numeric_limits<int>::min();
constexpr int most = std::numeric_limits<int>::max();
constexpr int oddNumbers[] = {least, -1, 0, 3, most};
constexpr int comment = MVRTextFormat::InspectorCommentProperty;
constexpr int footnote = MVRTextFormat::InlineFootnoteProperty;

/*! Operations on a document that change nothing, or nothing when what they are told is odd. */
QVector<std::pair<const char *, Operation>> harmlessOperations()
{
    using D = MVRTextDoc;
    const auto notes = [](QTextDocument *document) {
        D::hasInspectorCommentsOrFootnotes(document);
        D::inspectorNotesToPlainText(document);
        for (const int start : oddNumbers) {
            for (const int end : oddNumbers) {
                D::commentsMapByType(start, document, start, end, true);
                D::commentsMap(document, start, end);
                D::notes(document, start, end);
                D::inlineNotes(document, end, start, end);
            }
        }
    };
    const auto setting = [](QTextDocument *document) {
        for (const MVRTextRange &range :
             {MVRTextRange(least, -1), MVRTextRange(-9, -1), MVRTextRange(99, most)}) {
            D::setComment(document, range, MVRTextCommentLink());
            MVRTextInternalLinkMap map;
            map.links.insert(range, least);
            D::setInternalLinks(document, map);
        }
        for (const int position : {least, -1, most})
            D::clearComment(document, position);
    };
    const auto counting = [](QTextDocument *document) {
        D::wordCharacterCount(document, true, true, true, true);
        D::formatCount(document, most, QVariant());
        for (const int odd : oddNumbers)
            D::wordCharacterCountNotes(document, odd, true, true);
        for (const double side : {0.0, -1.0, 1e308, qQNaN(), qInf()})
            D::pageCount(document, QSizeF(side, side));
    };
    const auto writing = [](QTextDocument *document) {
        D::toRtf(document);
        MVRTextRtf::toRtfCData(document, true);
        MVRTextRtfNote note;
        note.start = most;
        note.end = least;
        MVRTextRtf::toRtfCData(document, false, {note});
        QMimeData data;
        D::setMovarinMarkupRtfMimeData(&data, document);
        D::setMovarinMarkupRtfMimeData(nullptr, document);
        MVRTextRtf::setMovarinMarkupRtfMimeData(&data, document, true);
        MVRTextRtf::setMovarinMarkupRtfMimeData(nullptr, document, false);
    };
    const auto reading = [](QTextDocument *document) {
        const QMimeData empty;
        for (const QMimeData *data : {&empty, static_cast<const QMimeData *>(nullptr)}) {
            QVERIFY(!D::fromMovarinMarkupRtfMimeData(data, document));
            QVERIFY(!D::fromMovarinMarkupRtfMimeData(data, document, MVRPicturePolicy::nowhere()));
            QVERIFY(!MVRTextRtf::fromMovarinMarkupRtfMimeData(data, document));
        }
        QVERIFY(!D::fromRtf(QByteArray(), document));
        QVERIFY(!D::fromRtf("no RTF", document));
        QVERIFY(!MVRTextRtf::fromRtfCData(QByteArray(), document));
        QVERIFY(!MVRTextRtf::fromRtfCData(QByteArray(), document, nullptr, nullptr));
        STextDoc::copyDocument(nullptr, document);
        STextDoc::copyDocument(document, document);
    };
    const auto moving = [](QTextDocument *document) {
        for (const int odd : {least, -1, most}) {
            D::swapBoolProperties(document, odd, odd, QTextCursor());
            D::swapInspectorToInline(document, odd, true, QTextCursor());
            D::swapInlineToInspector(document, odd, false, true, QTextCursor());
            D::removeInlineNotes(document, odd, QTextCursor());
            D::trimInlineNotes(document, odd, true, odd, odd, QTextCursor());
            D::trimInspectorNotes(document, odd, true, odd, odd);
        }
        D::encloseAnnotations(document, QString(), QString(), false);
    };
    const auto formatting = [](QTextDocument *document) {
        MVRTextFormat::convertToFormat(document, nullptr, nullptr);
        STextDoc::clearAllProperty(document, most, QVariant(), false);
        STextDoc::tablesToText(document);
        STextDoc::normalizePageBreaks(document);
        D::convertMovarinLinksToText(document);
        D::clearInternalLinks(document);
    };
    return {{"notes", notes},          {"setting", setting}, {"counting", counting},
            {"writing", writing},      {"reading", reading}, {"moving", moving},
            {"formatting", formatting}};
}

/*! Operations on a document that change all of it, whatever it holds. */
QVector<std::pair<const char *, Operation>> changingOperations()
{
    using D = MVRTextDoc;
    const auto converting = [](QTextDocument *document) {
        D::convertInlineAnnotationsToInlineFootnotes(document, QTextCursor());
        D::convertInlineFootnotesToInlineAnnotations(document, QTextCursor());
        D::convertInspectorCommentsToInspectorFootnotes(document, QTextCursor());
        D::convertInspectorFootnotesToInspectorComments(document, QTextCursor());
        D::convertInlineFootnotesToInspectorComments(document, true, QTextCursor());
        D::convertInlineAnnotationsToInspectorComments(document, true, QTextCursor());
        D::convertInspectorCommentsToInlineAnnotations(document, QTextCursor());
        D::convertInlineFootnotesToInspectorFootnotes(document, true, QTextCursor());
        D::convertInspectorFootnotesToInlineFootnotes(document, QTextCursor());
        D::inlineFootnotesToEndNotes(document, least);
        D::inlineFootnotesToEndNotes(document, most, QTextCharFormat(), MVRFormat());
        D::inlineFootnotesToEndNotes(document, -1, QTextCharFormat(), MVRFormat(), {});
    };
    const auto marking = [](QTextDocument *document) {
        D::toInlineMarkup(document);
        D::fromInlineMarkup(document, MVRPicturePolicy::nowhere());
        D::fromInlineMarkup(document);
        D::fromInlineMarkupImageLinks(document, MVRPicturePolicy::nowhere());
        D::fromInlineMarkupImageLinks(document);
    };
    const auto formatting = [](QTextDocument *document) {
        D::setDefaultCharFormatColors(document, QColor(), QColor());
        QFont font;
        font.setPointSizeF(1e-300);
        D::setFont(document, font);
        D::setTypographyPen(document, QPen(Qt::NoPen));
        MVRTextUtil::trim(document, true, least, most, nullptr);
        MVRTextUtil::trim(document, true, most, least, nullptr);
        for (const double width : {0.0, -1.0, 1e308, qQNaN(), qInf()})
            MVRToolkit::toStockParagraphs(document, width);
        STextDoc::clearDefaultTextOptionFlags(document);
    };
    const auto removing = [](QTextDocument *document) {
        MVRFinalDraftReader().read(document, {}); // clears it, as it says
        D::setComments(document, {{MVRTextRange(most, least), MVRTextCommentLink()}});
        STextDoc::removeInspectorComments(document);
        STextDoc::removeInspectorFootnotes(document);
        STextDoc::removeInspectorCommentsAndFootnotes(document);
        STextDoc::clearAll(document, QTextCharFormat(), false);
        STextDoc::clearAll(document, MarkedText::formatOf(QLatin1Char('a')), true);
    };
    return {{"converting", converting},
            {"marking", marking},
            {"formatting", formatting},
            {"removing", removing}};
}

void addRows(const QVector<std::pair<const char *, Operation>> &operations)
{
    for (const auto &operation : operations)
        QTest::newRow(operation.first) << operation.second;
}

} // namespace

Q_DECLARE_METATYPE(Operation)

void TestMisuseCalls::takesNoDocument_data()
{
    QTest::addColumn<Operation>("operation");
    addRows(harmlessOperations() + changingOperations());
}

/*! Nor one without text, nor one that is a table. */
void TestMisuseCalls::takesNoDocument()
{
    QFETCH(const Operation, operation);
    operation(nullptr);
    QTextDocument empty;
    operation(&empty);
    QTextDocument table;
    QTextCursor cursor(&table);
    const QTextTable *cells = cursor.insertTable(2, 2);
    cells->cellAt(1, 1).firstCursorPosition().insertText(QStringLiteral("x"),
                                                         MarkedText::formatOf(QLatin1Char('1')));
    table.documentLayout();
    operation(&table);
    QVERIFY(empty.isEmpty());
}

void TestMisuseCalls::keepsDocuments_data()
{
    QTest::addColumn<Operation>("operation");
    addRows(harmlessOperations());
}

void TestMisuseCalls::keepsDocuments()
{
    QFETCH(const Operation, operation);
    QTextDocument document;
    fill(&document, QStringLiteral("some words here\nand more"),
         QStringLiteral("....aaaaaa..111...555fff"));
    document.setUndoRedoEnabled(true);
    const QString before = marks(document);
    operation(&document);
    QCOMPARE(marks(document), before);
    QVERIFY(!document.isUndoAvailable());
}

void TestMisuseCalls::givesNothingOfNothing()
{
    QVERIFY(
        !MVRTextDoc::hasInspectorCommentsOrFootnotes(static_cast<const QTextDocument *>(nullptr)));
    QVERIFY(MVRTextDoc::notes(nullptr).isEmpty());
    QVERIFY(MVRTextDoc::commentsMap(nullptr, 0, 9).isEmpty());
    QVERIFY(MVRTextDoc::toRtf(nullptr).isEmpty());
    QCOMPARE(MVRTextDoc::wordCharacterCount(nullptr, true, true, true, true), qMakePair(0, 0));
    QCOMPARE(MVRTextDoc::wordCharacterCountNotes(nullptr, comment, true, true), qMakePair(0, 0));
    QCOMPARE(MVRTextDoc::formatCount(nullptr, footnote, true), 0);
    QCOMPARE(MVRTextDoc::pageCount(nullptr, QSizeF(100, 100)), 0);
    QVERIFY(!MVRTextDoc::isCommentFootnoteAnchor(QString()));
    QVERIFY(!MVRTextDoc::isCommentFootnoteAnchor(QUrl()));
    QVERIFY(MVRTextDoc::commentText(QTextCharFormat(), true).isEmpty());
    QVERIFY(!STextDoc::cloneDocumentQtStyle(nullptr, nullptr));
    QVERIFY(MVRTextRange(least, most).toTextCursor(nullptr).isNull());
    QTextDocument document(QStringLiteral("ab"));
    for (const MVRTextRange &range : {MVRTextRange(least, most), MVRTextRange(most, least)}) {
        const QTextCursor cursor = range.toTextCursor(&document);
        QVERIFY(cursor.isNull() || cursor.selectionEnd() <= 2);
    }
    QVERIFY(MVRGuiUtil::resourceId(QImage()).isEmpty());
    for (const char *path : {"", "/no/such/file", "/"}) {
        QString error;
        QVERIFY(MVRCoreUtil::ReadBinaryFile(QLatin1String(path), &error).isEmpty());
        QVERIFY(!error.isEmpty());
        QVERIFY(MVRCoreUtil::ReadBinaryFile(QLatin1String(path), nullptr).isEmpty());
    }
    QVERIFY(!MVRTextRtf::isRtf(QByteArray()));
    QVERIFY(MVRTextRtf::isRtf(MVRTextRtf::textToRtf(QString(), nullptr)));
    QVERIFY(MVRTextXhtmlExporter::htmlToXhtml(QString()).trimmed().isEmpty());
    QVERIFY(MVRTextUtil::trimmed(QTextDocumentFragment()).isEmpty());
    QVERIFY(MVRTextNote().text(document).isEmpty());
    QVERIFY(MVRTextNote().contentText(document).isEmpty());
    QVERIFY(MVRTextNote().contentHtml(document).isEmpty());
    QVERIFY(MVRRecovery::detachedCopy(QTextDocument())->isEmpty());
    QCOMPARE(STextDoc::wordCountText(QString()), 0);
    MVRTextFormat::spacingType(QTextBlockFormat(), nullptr);
    STextDoc::clearLinkProperties(nullptr);
    STextDoc::clearCommentPropertiesCursor(nullptr);
    MVRToolkit::clearLinkLook(nullptr);
    MVRToolkit::setFontFamily(nullptr, QString());
    QVERIFY(MVRToolkit::fontFamily(QTextCharFormat()).isEmpty());
    QVERIFY(!MVRToolkit::hasBoldFace(QString()));
}

void TestMisuseCalls::copiesNothing()
{
    QMimeData data;
    QTextCursor null;
    MVRTextDoc::copyMimeData(&data, null);
    MVRTextDoc::copyMimeData(nullptr, null);
    QVERIFY(data.formats().isEmpty());
    QTextDocument document(QStringLiteral("text"));
    QTextCursor cursor(&document);
    cursor.select(QTextCursor::Document);
    MVRTextDoc::copyMimeData(nullptr, cursor);
    QVERIFY(!MVRTextDoc::pasteMimeData(nullptr, cursor));
    QVERIFY(!MVRTextDoc::pasteMimeData(&data, cursor));
    MVRTextDoc::copyMimeData(&data, cursor);
    QVERIFY(!MVRTextDoc::pasteMimeData(&data, null));
    for (const auto append : {&MVRTextDoc::appendDocument, &STextDoc::appendDocument,
                              &MVRTextDoc::appendDocumentPreservePageBreak}) {
        append(cursor, nullptr);
        append(null, &document);
        append(null, nullptr);
    }
    STextDoc::appendFragment(null, QTextDocumentFragment(&document));
    STextDoc::copyDocument(&document, nullptr);
    QCOMPARE(document.toPlainText(), QStringLiteral("text"));
    // Itself behind itself.
    cursor.movePosition(QTextCursor::End);
    MVRTextDoc::appendDocument(cursor, &document);
    QCOMPARE(document.toPlainText(), QStringLiteral("texttext"));
}

QTEST_MAIN(TestMisuseCalls)
#include "tst_misusecalls.moc"
