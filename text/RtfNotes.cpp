// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRSettings.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <core/document/ForeignFormat_p.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/TextMarks_p.h>
#include <core/document/UndoRecordingOff_p.h>
#include <text/InlineMarkup_p.h>
#include <text/NoteLabel_p.h>
#include <text/RtfAttachments_p.h>

#include <QDataStream>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTextTable>

#include <memory>

namespace {

/*! What an RTF note cannot say about an inspector note; other programs skip it. */
struct RtfNoteData
{
    QColor color;
    bool keepsContent = false; // content that is no RTF
    QByteArray content;
    bool isResolved = false;
};

QByteArray toBytes(const RtfNoteData &data)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << data.color << data.keepsContent << data.content;
    if (data.isResolved)
        stream << true;
    return bytes;
}

RtfNoteData fromBytes(const QByteArray &bytes)
{
    RtfNoteData data;
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    stream >> data.color >> data.keepsContent >> data.content;
    if (!stream.atEnd())
        stream >> data.isResolved;
    return stream.status() == QDataStream::Ok ? data : RtfNoteData();
}

MVRTextRtfNote toRtfNote(const MVRTextNote &note)
{
    MVRTextRtfNote rtfNote;
    rtfNote.kind = note.isFootnote() ? MVRTextRtfNote::Footnote : MVRTextRtfNote::Comment;
    rtfNote.start = note.range.start;
    rtfNote.end = note.range.end;
    rtfNote.author = note.author;
    rtfNote.time = note.date;
    rtfNote.rtf = note.cdata;
    RtfNoteData data;
    data.color = note.color;
    data.keepsContent = !MVRTextRtf::isRtf(note.cdata);
    if (data.keepsContent)
        data.content = note.cdata;
    data.isResolved = note.isResolved;
    if (data.color.isValid() || data.keepsContent || data.isResolved)
        rtfNote.data = toBytes(data);
    return rtfNote;
}

void appendContent(const MVRTextRtfNote &note, QTextCursor *cursor)
{
    QTextDocument content;
    content.setUndoRedoEnabled(false);
    MVRTextRtf::fromRtfCData(note.rtf, &content);
    if (!cursor->atStart())
        insertBlockLike(*cursor, content.begin());
    if (!note.author.isEmpty())
        cursor->insertText(note.author + QLatin1String(": "), QTextCharFormat());
    STextDoc::appendFragment(*cursor, QTextDocumentFragment(&content));
}

/*! The contents of several notes one after the other, each behind its author's name. */
QByteArray joinedContent(const MVRTextRtfNotes &notes, const QVector<int> &numbers)
{
    QTextDocument joined;
    joined.setUndoRedoEnabled(false);
    QTextCursor cursor(&joined);
    for (const int number : numbers)
        appendContent(notes.at(number), &cursor);
    return MVRTextRtf::toRtfCData(&joined, false);
}

MVRTextCommentLink toLink(const RtfAttachment &place, const MVRTextRtfNotes &notes,
                          const QColor &defaultColor)
{
    const MVRTextRtfNote &first = notes.at(place.notes.first());
    const RtfNoteData data = fromBytes(first.data);
    MVRTextCommentLink link;
    link.isFootnote = place.kind == MVRTextRtfNote::Footnote;
    if (!link.isFootnote)
        link.color = data.color.isValid() ? data.color : defaultColor;
    if (place.notes.size() > 1)
        link.cdata = joinedContent(notes, place.notes);
    else
        link.cdata = data.keepsContent ? data.content : first.rtf;
    return link;
}

/*! The part of \a range in the cell or frame that it ends in. */
MVRTextRange lastPart(const QTextDocument &document, const MVRTextRange &range)
{
    int start = range.end;
    while (start > range.start && !isFrameMark(document.characterAt(start - 1)))
        --start;
    return {start, range.end};
}

void markResolved(QTextCursor text)
{
    QTextCharFormat mark;
    mark.setProperty(MVRTextFormat::CommentResolvedProperty, true);
    text.mergeCharFormat(mark);
}

/*! The part of \a range in one cell or frame, that with the most text. */
MVRTextRange longestPart(const QTextDocument &document, const MVRTextRange &range)
{
    MVRTextRange longest(range.start, range.start);
    int start = range.start;
    for (int position = range.start; position <= range.end; ++position) {
        if (position < range.end && !isFrameMark(document.characterAt(position)))
            continue;
        if (position - start > longest.end - longest.start)
            longest = {start, position};
        start = position + 1;
    }
    return longest;
}

/*! The text that a cursor over \a range takes: with whole tables, or the cells of a rectangle. */
MVRTextRange takenText(QTextDocument *document, const MVRTextRange &range)
{
    const QTextCursor cursor = range.toTextCursor(document);
    if (!cursor.hasComplexSelection())
        return MVRTextRange(cursor);
    int row = 0;
    int rows = 0;
    int column = 0;
    int columns = 0;
    cursor.selectedTableCells(&row, &rows, &column, &columns);
    const QTextTable &table = *cursor.currentTable();
    return {table.cellAt(row, column).firstPosition(),
            table.cellAt(row + rows - 1, column + columns - 1).lastPosition()};
}

/*! Whether \a taken has text of the places beside that of \a number. */
bool takesOther(const MVRTextRange &taken, const QVector<RtfAttachment> &places, int number)
{
    return (number > 0 && taken.start < places[number - 1].range.end)
        || (number + 1 < places.size() && places[number + 1].range.start < taken.end);
}

/*!
    What the note of the place of \a number is attached to. A cursor over several cells takes all of
   their text. That is what an application did, but no other program, and not where it would take
   the text away from other notes.
*/
MVRTextRange attachedRange(QTextDocument *document, const QVector<RtfAttachment> &places,
                           int number, bool isOwn)
{
    const MVRTextRange range = places[number].range;
    if (!isOwn)
        return longestPart(*document, range);
    return takesOther(takenText(document, range), places, number) ? lastPart(*document, range)
                                                                  : range;
}

void attachNotes(QTextDocument *document, const MVRTextRtfNotes &notes)
{
    const QVector<RtfAttachment> places = attachmentsForNotes(document, notes);
    const QColor defaultColor = mvrOptions().value(MVRSettings::CommentColorSetting);
    const EditBlock edit(document);
    // From the last to the first, so that a label moves no place still to be used.
    for (int i = int(places.size()) - 1; i >= 0; --i) {
        const RtfAttachment &place = places[i];
        const MVRTextRtfNote &first = notes.at(place.notes.first());
        const MVRTextCommentLink link = toLink(place, notes, defaultColor);
        const MVRTextRange range = attachedRange(document, places, i, isOfApplication(first));
        const QTextCursor text = range.start < range.end
            ? range.toTextCursor(document)
            : insertNoteLabel(document, range.end, link.isFootnote);
        // Of several notes in one, each names its author in the content.
        const MVRTextRtfNote note = place.notes.size() == 1 ? first : MVRTextRtfNote();
        MVRTextDoc::setComment(text, link, note.author, note.time);
        if (fromBytes(note.data).isResolved)
            markResolved(text);
    }
}

/*! Whether text of the document is, or was, an inline note. */
bool mayHaveInlineNotes(const QTextDocument &document)
{
    return hasFormat(document, [](const QTextFormat &format) {
        return format.boolProperty(MVRTextFormat::InlineAnnotationProperty)
            || format.boolProperty(MVRTextFormat::InlineFootnoteProperty);
    });
}

void placeInlineNotes(QTextDocument *document, MVRTextDoc::InlineNotesInRtf place)
{
    if (place == MVRTextDoc::InlineNotesAsCodes) {
        InlineMarkup::writeNoteCodes(document);
        return;
    }
    const QTextCursor everywhere;
    MVRTextDoc::moveInlineBesideText(document, MVRTextFormat::InlineAnnotationProperty, false,
                                     false, everywhere);
    MVRTextDoc::moveInlineBesideText(document, MVRTextFormat::InlineFootnoteProperty, true, false,
                                     everywhere);
}

QByteArray withInspectorNotes(const QTextDocument *document)
{
    MVRTextRtfNotes notes;
    const MVRTextNotes all = MVRTextDoc::notes(document);
    for (const MVRTextNote &note : all) {
        if (!note.isInline())
            notes.append(toRtfNote(note));
    }
    return MVRTextRtf::toRtfCData(document, true, notes);
}

} // namespace

bool MVRTextDoc::fromRtf(const QByteArray &rtf, QTextDocument *document, MVRTextRtfLeftOut *leftOut)
{
    MVRTextRtfNotes notes;
    if (!MVRTextRtf::fromRtfCData(rtf, document, &notes, leftOut))
        return false;
    const UndoRecordingOff pause(document);
    if (!notes.isEmpty())
        attachNotes(document, notes);
    const EditBlock edit(document);
    InlineMarkup::readNoteCodes(document);
    return true;
}

QByteArray MVRTextDoc::toRtf(const QTextDocument *document, InlineNotesInRtf inlineNotes)
{
    if (!document || !mayHaveInlineNotes(*document))
        return withInspectorNotes(document);
    const std::unique_ptr<QTextDocument> copy(STextDoc::cloneDocumentQtStyle(document, nullptr));
    copy->setUndoRedoEnabled(false);
    placeInlineNotes(copy.get(), inlineNotes);
    return withInspectorNotes(copy.get());
}
