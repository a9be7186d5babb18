// SPDX-License-Identifier: MIT
#include <fuzz/Operations.h>

#include <core/MVRFormat.h>
#include <core/MVRTextFinder.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/MVRTextUtil.h>
#include <core/STextDoc.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRTextDoc.h>

#include <QColor>
#include <QFont>
#include <QMimeData>
#include <QPen>
#include <QRegularExpression>
#include <QSet>
#include <QSizeF>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QUrl>

#include <memory>

namespace {

int noteProperty(Call &call)
{
    static constexpr int properties[]
        = {MVRTextFormat::InlineAnnotationProperty,   MVRTextFormat::InlineFootnoteProperty,
           MVRTextFormat::InspectorCommentProperty,   MVRTextFormat::InspectorFootnoteProperty,
           MVRTextFormat::PreserveFormattingProperty, MVRTextFormat::CommentLinkProperty,
           MVRTextFormat::ImageLinkProperty,          QTextFormat::FontItalic};
    return properties[call.bytes.byte() % 8];
}

MVRTextCommentLink link(Call &call)
{
    MVRTextCommentLink link;
    link.isFootnote = call.bytes.flag();
    link.extraFlag = call.bytes.flag();
    if (call.bytes.flag())
        link.color = QColor::fromRgb(QRgb(call.bytes.byte()) << 8);
    const QByteArray text = call.bytes.line(30);
    link.cdata = call.bytes.flag() ? text : "{\\rtf1 " + text + "}";
    return link;
}

MVRTextRange range(Call &call)
{
    return MVRTextRange(call.bytes.upTo(400) - 50, call.bytes.upTo(400) - 50);
}

QTextCharFormat format(Call &call)
{
    QTextCharFormat format;
    if (call.bytes.flag())
        format.setFontItalic(true);
    if (call.bytes.flag())
        format.setProperty(noteProperty(call), call.bytes.flag());
    return format;
}

void find(Call &call)
{
    QTextCharFormat pattern;
    const int property = noteProperty(call);
    pattern.setProperty(property, true);
    const bool exact = call.bytes.flag();
    MVRTextFinder::findFragment(pattern, call.cursor, exact);
    MVRTextFinder::findContinuousFragment(pattern, call.cursor, exact);
    MVRTextFinder::findFragmentAtPosition(pattern, call.cursor);
    MVRTextFinder::hasFormatProperty(call.cursor, property, true, exact, call.bytes.flag());
    MVRTextFinder::isInFormatProperty(call.cursor, property, true, exact);
    MVRTextFinder::isFormatCheckedProperty(call.cursor, property, true, exact);
    MVRTextFinder::findAllAnchors(call.cursor, exact);
    MVRTextFinder::formatCount(&call.document, property, true);
    const QSet<int> skipped {property};
    MVRTextUtil::closestWordCursor(call.cursor, exact,
                                   call.bytes.flag() ? MVRTextUtil::Forward : MVRTextUtil::Backward,
                                   &skipped);
}

void ask(Call &call)
{
    MVRTextDoc::hasInspectorCommentsOrFootnotes(&call.document);
    MVRTextDoc::hasInspectorCommentsOrFootnotes(call.cursor);
    MVRTextDoc::hasInspectorComment(call.cursor);
    MVRTextDoc::hasInspectorFootnote(call.cursor);
    MVRTextDoc::hasInlineFootnote(call.cursor);
    MVRTextDoc::hasInlineAnnotation(call.cursor);
    MVRTextDoc::isInInlineAnnotation(call.cursor);
    MVRTextDoc::isInInlineFootnote(call.cursor);
    MVRTextDoc::isInlineAnnotationChecked(call.cursor);
    MVRTextDoc::isInlineFootnoteChecked(call.cursor);
    if (!call.cursor.isNull())
        MVRTextDoc::commentText(call.cursor.charFormat(), call.bytes.flag());
}

void list(Call &call)
{
    MVRTextDoc::commentsMapByType(noteProperty(call), &call.document, call.bytes.upTo(300) - 9,
                                  call.bytes.upTo(300) - 9, call.bytes.flag());
    MVRTextDoc::inspectorNotesToPlainText(&call.document);
    MVRTextDoc::internalLinks(call.document);
}

void count(Call &call)
{
    MVRTextDoc::wordCharacterCount(&call.document, call.bytes.flag(), call.bytes.flag(),
                                   call.bytes.flag(), call.bytes.flag());
    MVRTextDoc::wordCharacterCountNotes(&call.document, noteProperty(call), true, true);
    MVRTextDoc::wordCount(call.document, true, true);
    MVRTextDoc::characterCount(call.document, true, true);
    STextDoc::wordCountTextDocument(call.document);
}

void copy(Call &call)
{
    const std::unique_ptr<QTextDocument> clone(
        STextDoc::cloneDocumentQtStyle(&call.document, nullptr));
    QMimeData data;
    MVRTextDoc::setMovarinMarkupRtfMimeData(&data, &call.document);
    MVRTextDoc::fromMovarinMarkupRtfMimeData(&data, clone.get(), MVRPicturePolicy::nowhere());
    MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&call.document), clone.get());
    MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&call.document, MVRTextDoc::InlineNotesAsNotes),
                        clone.get());
}

void replaceExpression(Call &call)
{
    static const char *const expressions[] = {"$", "^", "\\b", "[a-z]+", "a|b", "\\s+$", ".", "x*"};
    MVRTextDoc::replace(QRegularExpression(QString::fromLatin1(expressions[call.bytes.byte() % 8])),
                        call.bytes.text(9), call.cursor);
}

template <void (*Operation)(QTextDocument *, QTextCursor)> void convert(Call &call)
{
    Operation(&call.document, call.cursor);
}

template <void (*Operation)(QTextDocument *, bool, QTextCursor)> void move(Call &call)
{
    Operation(&call.document, call.bytes.flag(), call.cursor);
}

template <void (*Operation)(QTextDocument *)> void change(Call &call)
{
    Operation(&call.document);
}

} // namespace

const QVector<Operation> &operations()
{
    using Doc = MVRTextDoc;
    static const QVector<Operation> table = {
        {"find", Operation::Reads, find},
        {"ask", Operation::Reads, ask},
        {"list", Operation::Reads, list},
        {"count", Operation::Reads, count},
        {"copy", Operation::Reads, copy},
        {"setComment", Operation::EditsAsOne,
         [](Call &call) { Doc::setComment(call.cursor, link(call)); }},
        {"setComment range", Operation::EditsAsOne,
         [](Call &call) { Doc::setComment(&call.document, range(call), link(call)); }},
        {"setComment text", Operation::EditsAsOne,
         [](Call &call) { Doc::setComment(call.cursor, call.bytes.text(20), call.bytes.flag()); }},
        {"setCommentCData", Operation::EditsAsOne,
         [](Call &call) {
             Doc::setCommentCData(call.cursor, call.bytes.line(20), call.bytes.flag());
         }},
        {"setComments", Operation::EditsAsOne,
         [](Call &call) {
             MVRTextCommentLinkMap map = Doc::commentsMap(&call.document, -1, -1);
             for (int i = call.bytes.byte() % 4; i > 0; --i)
                 map.insert(range(call), link(call));
             Doc::setComments(&call.document, map);
         }},
        {"clearComment", Operation::EditsAsOne,
         [](Call &call) { Doc::clearComment(&call.document, call.bytes.upTo(400) - 9); }},
        {"removeComment", Operation::EditsAsOne,
         [](Call &call) { Doc::removeComment(call.cursor); }},
        {"trimInspectorNotes", Operation::EditsAsOne,
         [](Call &call) {
             Doc::trimInspectorNotes(&call.document, noteProperty(call), call.bytes.flag(),
                                     call.bytes.upTo(3) - 1, call.bytes.upTo(3) - 1);
         }},
        {"setInlineFootnoteAnnotation", Operation::Marks,
         [](Call &call) {
             Doc::setInlineFootnoteAnnotation(call.cursor, call.bytes.flag(), !call.bytes.flag());
         }},
        {"setPreserveFormatting", Operation::Marks,
         [](Call &call) { Doc::setPreserveFormatting(call.cursor, !call.bytes.flag()); }},
        {"swapBoolProperties", Operation::Marks,
         [](Call &call) {
             const int from = noteProperty(call);
             Doc::swapBoolProperties(&call.document, from, noteProperty(call), call.cursor);
         }},
        {"annotations to footnotes", Operation::Marks,
         convert<Doc::convertInlineAnnotationsToInlineFootnotes>},
        {"footnotes to annotations", Operation::Marks,
         convert<Doc::convertInlineFootnotesToInlineAnnotations>},
        {"comments to inspector footnotes", Operation::Marks,
         convert<Doc::convertInspectorCommentsToInspectorFootnotes>},
        {"inspector footnotes to comments", Operation::Marks,
         convert<Doc::convertInspectorFootnotesToInspectorComments>},
        {"inspector footnotes inline", Operation::Edits,
         convert<Doc::convertInspectorFootnotesToInlineFootnotes>},
        {"comments inline", Operation::Edits,
         convert<Doc::convertInspectorCommentsToInlineAnnotations>},
        {"footnotes to comments", Operation::Edits,
         move<Doc::convertInlineFootnotesToInspectorComments>},
        {"footnotes to the inspector", Operation::Edits,
         move<Doc::convertInlineFootnotesToInspectorFootnotes>},
        {"annotations to the inspector", Operation::Edits,
         move<Doc::convertInlineAnnotationsToInspectorComments>},
        {"trimInlineNotes", Operation::EditsAsOne,
         [](Call &call) {
             Doc::trimInlineNotes(&call.document, noteProperty(call), call.bytes.flag(),
                                  call.bytes.upTo(3) - 1, call.bytes.upTo(3) - 1, call.cursor);
         }},
        {"encloseAnnotations", Operation::Edits,
         [](Call &call) {
             Doc::encloseAnnotations(&call.document, call.bytes.text(3), call.bytes.text(3),
                                     call.bytes.flag());
         }},
        {"setInternalLinks", Operation::Edits,
         [](Call &call) {
             MVRTextInternalLinkMap map = Doc::internalLinks(call.document);
             map.links.insert(range(call), call.bytes.upTo(99));
             Doc::setInternalLinks(&call.document, map);
         }},
        {"convertMovarinLinksToText", Operation::EditsAsOne,
         change<Doc::convertMovarinLinksToText>},
        {"clearInternalLinks", Operation::EditsAsOne, change<Doc::clearInternalLinks>},
        {"toInlineMarkup", Operation::Edits, change<Doc::toInlineMarkup>},
        {"fromInlineMarkup", Operation::Restarts,
         [](Call &call) { Doc::fromInlineMarkup(&call.document, MVRPicturePolicy::nowhere()); }},
        {"inlineFootnotesToEndNotes", Operation::Edits,
         [](Call &call) {
             const MVRFormat::Format format = MVRFormat::Format(call.bytes.upTo(12));
             Doc::inlineFootnotesToEndNotes(&call.document, call.bytes.upTo(9), QTextCharFormat(),
                                            format);
         }},
        {"appendDocument", Operation::Replaces,
         [](Call &call) { Doc::appendDocument(call.cursor, &call.other); }},
        {"appendDocumentPreservePageBreak", Operation::Replaces,
         [](Call &call) { Doc::appendDocumentPreservePageBreak(call.cursor, &call.other); }},
        {"appendFragment", Operation::Replaces,
         [](Call &call) { Doc::appendFragment(call.cursor, QTextDocumentFragment(&call.other)); }},
        {"appendFragmentPreservePageBreak", Operation::Replaces,
         [](Call &call) {
             Doc::appendFragmentPreservePageBreak(call.cursor, QTextDocumentFragment(&call.other));
         }},
        {"replace", Operation::EditsAsOne,
         [](Call &call) { Doc::replace(call.bytes.text(3), call.bytes.text(9), call.cursor); }},
        {"replace expression", Operation::EditsAsOne, replaceExpression},
        {"setFont", Operation::EditsAsOne,
         [](Call &call) {
             Doc::setFont(&call.document, QFont(call.bytes.text(9), call.bytes.upTo(30) + 1));
         }},
        {"setDefaultCharFormat", Operation::Restarts,
         [](Call &call) {
             Doc::setDefaultCharFormat(call.document, format(call));
             Doc::setDefaultCharFormatColors(&call.document, QColor(), QColor(Qt::red));
             Doc::defaultCharFormat(call.document);
         }},
        {"typography", Operation::Restarts,
         [](Call &call) {
             Doc::setTypographyPen(&call.document, QPen(QColor(Qt::blue)));
             Doc::typographyPen(call.document);
             Doc::setAutoCorrection(call.document, call.bytes.flag());
         }},
        {"clearAll", Operation::EditsAsOne,
         [](Call &call) { STextDoc::clearAll(&call.document, format(call), call.bytes.flag()); }},
        {"clearAllProperty", Operation::EditsAsOne,
         [](Call &call) {
             STextDoc::clearAllProperty(&call.document, noteProperty(call), true,
                                        call.bytes.flag());
         }},
        {"clearCommentPropertiesCursor", Operation::EditsAsOne,
         [](Call &call) { STextDoc::clearCommentPropertiesCursor(&call.cursor); }},
        {"removeInspectorComments", Operation::EditsAsOne,
         change<STextDoc::removeInspectorComments>},
        {"removeInspectorFootnotes", Operation::EditsAsOne,
         change<STextDoc::removeInspectorFootnotes>},
        {"removeInspectorCommentsAndFootnotes", Operation::EditsAsOne,
         change<STextDoc::removeInspectorCommentsAndFootnotes>},
        {"tablesToText", Operation::Edits, change<STextDoc::tablesToText>},
        {"normalizePageBreaks", Operation::EditsAsOne, change<STextDoc::normalizePageBreaks>},
        {"trim", Operation::EditsAsOne,
         [](Call &call) {
             bool isChanged = false;
             MVRTextUtil::trim(call.cursor, call.bytes.flag(), call.bytes.upTo(3) - 1,
                               call.bytes.upTo(3) - 1, &isChanged);
         }},
        {"fromRtf", Operation::Restarts,
         [](Call &call) { Doc::fromRtf(call.bytes.line(300), &call.document); }},
    };
    return table;
}
