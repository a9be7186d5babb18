// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRTextUtil.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/Pictures_p.h>
#include <text/NoteRuns_p.h>

namespace {

// The edits of encloseAnnotations() are an undo step each. Every one has its edit block all the
// same, because outside of one a cursor itemizes its whole paragraph after every change.

void markAsText(QTextCursor &cursor, int start, int end)
{
    const EditBlock undoStep(cursor);
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.mergeCharFormat(inlineNoteFormat(false, false));
}

/*! Inserts \a text at \a position in the format of the character before \a formatPosition. */
void insertAt(QTextCursor &cursor, int position, int formatPosition, const QString &text)
{
    if (text.isEmpty())
        return;
    const EditBlock undoStep(cursor);
    cursor.setPosition(formatPosition);
    QTextCharFormat format = cursor.charFormat();
    clearPicture(format);
    cursor.setPosition(position);
    cursor.insertText(text, format);
}

/*! Sets or takes a mark; an empty paragraph that the selection begins with can lose it only. */
void setMark(const QTextCursor &cursor, const QTextCharFormat &format, bool on)
{
    if (on)
        mergeIfChanged(cursor, format);
    else
        changeFormats(Selection(cursor),
                      [&format](QTextCharFormat &target) { target.merge(format); });
}

} // namespace

QVector<MVRTextRange> MVRTextDoc::inlineNotes(const QTextDocument *document, int propertyId,
                                              int start, int end)
{
    if (!document)
        return {};
    const MVRTextRange range(qMax(0, start), end > 0 ? end : document->characterCount());
    return inlineNotesAround(document, propertyId, range);
}

int MVRTextDoc::removeInlineNotes(QTextDocument *document, int propertyId, QTextCursor cursor)
{
    const Selection selection = Selection::ofOperation(document, cursor);
    if (selection.isEmpty())
        return 0;
    const QVector<MVRTextRange> notes = inlineNotesAround(propertyId, selection);
    if (notes.isEmpty())
        return 0;
    QTextCursor remover(document);
    const EditBlock undoStep(remover);
    for (auto it = notes.crbegin(); it != notes.crend(); ++it) {
        selectRange(remover, it->start, it->end);
        remover.removeSelectedText();
    }
    return notes.size();
}

QTextCharFormat MVRTextDoc::setInlineFootnoteAnnotation(QTextCursor cursor, bool footnote, bool on)
{
    const QTextCharFormat format = inlineNoteFormat(footnote, on);
    setMark(cursor, format, on);
    return format;
}

QTextCharFormat MVRTextDoc::setPreserveFormatting(QTextCursor cursor, bool on)
{
    QTextCharFormat format;
    format.setProperty(MVRTextFormat::PreserveFormattingProperty, on);
    setMark(cursor, format, on);
    return format;
}

void MVRTextDoc::swapBoolProperties(QTextDocument *document, int fromProperty, int toProperty,
                                    QTextCursor cursor)
{
    if (fromProperty == toProperty)
        return;
    const FormatPattern from(fromProperty, true);
    const Selection selection = Selection::ofOperation(document, cursor);
    changeFormats(selection, [&](QTextCharFormat &format) {
        if (from.matches(format)) {
            format.clearProperty(fromProperty);
            format.setProperty(toProperty, true);
        }
    });
}

void MVRTextDoc::convertInlineAnnotationsToInlineFootnotes(QTextDocument *document,
                                                           QTextCursor cursor)
{
    swapBoolProperties(document, MVRTextFormat::InlineAnnotationProperty,
                       MVRTextFormat::InlineFootnoteProperty, cursor);
}

void MVRTextDoc::convertInlineFootnotesToInlineAnnotations(QTextDocument *document,
                                                           QTextCursor cursor)
{
    swapBoolProperties(document, MVRTextFormat::InlineFootnoteProperty,
                       MVRTextFormat::InlineAnnotationProperty, cursor);
}

void MVRTextDoc::convertInspectorCommentsToInspectorFootnotes(QTextDocument *document,
                                                              QTextCursor cursor)
{
    swapBoolProperties(document, MVRTextFormat::InspectorCommentProperty,
                       MVRTextFormat::InspectorFootnoteProperty, cursor);
}

void MVRTextDoc::convertInspectorFootnotesToInspectorComments(QTextDocument *document,
                                                              QTextCursor cursor)
{
    swapBoolProperties(document, MVRTextFormat::InspectorFootnoteProperty,
                       MVRTextFormat::InspectorCommentProperty, cursor);
}

void MVRTextDoc::trimInlineNotes(QTextDocument *document, int propertyId, bool trimFlag, int count,
                                 int limit, QTextCursor cursor)
{
    const Selection selection = Selection::ofOperation(document, cursor);
    if (selection.isEmpty())
        return;
    const QVector<MVRTextRange> notes = inlineNotesIn(propertyId, selection).runs;
    std::optional<EditBlock> undoStep;
    // From the last to the first, so that what is removed moves no note still to be trimmed.
    for (auto it = notes.crbegin(); it != notes.crend(); ++it) {
        bool changed = false;
        MVRTextUtil::trim(it->toTextCursor(document), trimFlag, count, limit, &changed);
        if (changed && !undoStep)
            undoStep.emplace(document, EditBlock::JoinPrevious);
    }
}

void MVRTextDoc::encloseAnnotations(QTextDocument *document, const QString &opening,
                                    const QString &closing, bool unmark)
{
    if (!document || (opening.isEmpty() && closing.isEmpty() && !unmark))
        return;
    const QVector<MVRTextRange> notes
        = inlineNotesIn(MVRTextFormat::InlineAnnotationProperty, Selection(document)).runs;
    QTextCursor cursor(document);
    int growth = 0;
    for (const MVRTextRange &note : notes) {
        const int sizeBefore = document->characterCount();
        const int start = note.start + growth;
        const int end = note.end + growth;
        if (unmark)
            markAsText(cursor, start, end);
        // The closing string first, as long as the opening one has not moved its place.
        insertAt(cursor, end, end, closing);
        insertAt(cursor, start, start + 1, opening);
        growth += document->characterCount() - sizeBefore;
    }
}
