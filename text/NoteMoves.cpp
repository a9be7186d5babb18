// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRSettings.h>
#include <core/MVRTextFinder.h>
#include <core/MVRTextRtf.h>
#include <core/MVRTextUtil.h>
#include <core/STextDoc.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/NoteFormat_p.h>
#include <core/document/Pictures_p.h>
#include <text/NoteLabel_p.h>
#include <text/NoteRuns_p.h>

#include <QSet>
#include <QTextDocumentFragment>

#include <limits>

namespace {

/*!
    The inspector notes of one kind that lie in \a range, whole also where the range begins inside
    one.
*/
MVRTextCommentLinkMap notesIn(QTextDocument *document, int property, const MVRTextRange &range)
{
    int start = range.start;
    const QTextCursor at = MVRTextRange(start, start).toTextCursor(document);
    QTextCharFormat note;
    note.setProperty(property, true);
    note.setProperty(MVRTextFormat::CommentCDataProperty,
                     at.charFormat().property(MVRTextFormat::CommentCDataProperty));
    const QTextCursor around = MVRTextFinder::findFragmentAtPosition(note, at);
    if (around.selectionEnd() > start)
        start = around.selectionStart();
    MVRTextCommentLinkMap notes
        = MVRTextDoc::commentsMapByType(property, document, start, range.end, false);
    while (!notes.isEmpty() && notes.lastKey().start >= range.end)
        notes.erase(--notes.end());
    return notes;
}

MVRTextCommentLinkMap notesIn(QTextDocument *document, int property, const Selection &selection)
{
    if (!selection.isRectangle())
        return notesIn(document, property, selection.bounds());
    MVRTextCommentLinkMap notes;
    for (const MVRTextRange &cell : selection.ranges()) {
        NoteCollector collector(property); // a note ends with its cell
        FragmentWalker walker(document, cell.start);
        for (; walker.isValid() && walker.start() < cell.end; walker.next())
            collector.add(walker);
        const MVRTextCommentLinkMap &inCell = collector.finish();
        for (auto note = inCell.cbegin(); note != inCell.cend(); ++note)
            notes.insert(notes.cend(), note.key(), note.value());
    }
    return notes;
}

/*!
    Collects what takes \a notes from their text, and from all paragraphs selected, whose format
    would make notes of what is typed into them once they are empty.
*/
QVector<FormatEdit> noteRemovals(QTextDocument *document, const MVRTextCommentLinkMap &notes,
                                 int property, const Selection &selection)
{
    auto note = notes.cbegin();
    const auto clear = [&](QTextCharFormat &format, const MVRTextRange &place) {
        while (note != notes.cend() && note.key().end <= place.start)
            ++note;
        const bool isInNote = note != notes.cend() && note.key().start <= place.start;
        if ((isInNote || place.start == place.end) && format.boolProperty(property))
            clearNoteProperties(format);
    };
    if (selection.isRectangle() || notes.isEmpty())
        return collectFormatEdits(selection, clear);
    // Notes may begin before the selection and go on behind it.
    const MVRTextRange range = selection.bounds();
    return collectFormatEdits(document,
                              MVRTextRange(qMin(range.start, notes.firstKey().start),
                                           qMax(range.end, notes.lastKey().end)),
                              clear);
}

void insertInlineNote(QTextCursor &cursor, int position, const QTextDocument &content,
                      bool footnote)
{
    cursor.setPosition(position);
    const QTextBlockFormat paragraph = cursor.blockFormat();
    QTextCharFormat format = cursor.charFormat();
    clearPicture(format);
    // A link that comes back as the note goes ends with its own text.
    if (!format.anchorHref().isEmpty() && !isNoteAnchor(format.anchorHref()))
        STextDoc::clearLinkProperties(&format);
    cursor.insertText(QStringLiteral(" "), format);
    cursor.insertFragment(QTextDocumentFragment(&content));
    const int end = cursor.position();
    // The content brings its own paragraph format; the text around it keeps what it had.
    if (cursor.blockFormat() != paragraph)
        cursor.setBlockFormat(paragraph);
    cursor.setPosition(position);
    if (cursor.blockFormat() != paragraph)
        cursor.setBlockFormat(paragraph);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    cursor.mergeCharFormat(inlineNoteFormat(footnote, true));
}

/*! Puts the content of inspector notes into the text behind them. */
void moveIntoText(QTextDocument *document, const MVRTextCommentLinkMap &notes,
                  const QVector<FormatEdit> &removals, bool footnote)
{
    QTextCursor cursor(document);
    std::optional<EditBlock> undoStep;
    const auto begin = [&] {
        if (!undoStep)
            undoStep.emplace(document);
    };
    int removal = removals.size();
    // From the last to the first, so that what is inserted moves no note still to be done.
    for (auto it = notes.cend(); it != notes.cbegin();) {
        --it;
        QTextDocument content;
        content.setUndoRedoEnabled(false);
        const bool isReadable = MVRTextRtf::fromRtfCData(it->cdata, &content);
        if (isReadable)
            begin();
        for (; removal > 0 && removals[removal - 1].start >= it.key().start; --removal) {
            if (isReadable)
                removals[removal - 1].apply(cursor);
        }
        if (isReadable) {
            MVRTextUtil::trim(&content, false, 0, 0, nullptr);
            insertInlineNote(cursor, it.key().end, content, footnote);
        }
    }
    if (removal > 0)
        begin();
    while (removal > 0)
        removals[--removal].apply(cursor);
}

/*! How inline notes become inspector notes. */
struct InlineMove
{
    int property; // of the inline notes
    bool toFootnote;
    bool skipNoteWords;
    bool keepNotes; // of which a word has some letters only
    bool leaveParagraph = false; // when looking for a word
    QColor color {}; // of the comments
};

/*!
    True for words that are not free to carry a note. Text that ever carried an inspector note holds
    the annotation property as false, and counts.
*/
bool isInInlineNote(const QTextCursor &word)
{
    const QTextCharFormat format = word.charFormat();
    return format.hasProperty(MVRTextFormat::InlineAnnotationProperty)
        || format.boolProperty(MVRTextFormat::InlineFootnoteProperty);
}

bool hasInspectorKind(const QTextCursor &word)
{
    const QTextCharFormat format = word.charFormat();
    return format.hasProperty(MVRTextFormat::InspectorCommentProperty)
        || format.hasProperty(MVRTextFormat::InspectorFootnoteProperty);
}

/*! True where a letter of \a word carries a note beside the text, not only the last one. */
bool hasInspectorNote(const QTextCursor &word)
{
    // By letters: going through runs begins at that of the paragraph.
    QTextCursor letter(word);
    for (int end = word.selectionStart() + 1; end <= word.selectionEnd(); ++end) {
        letter.setPosition(end);
        const QTextCharFormat format = letter.charFormat();
        if (format.boolProperty(MVRTextFormat::InspectorCommentProperty)
            || format.boolProperty(MVRTextFormat::InspectorFootnoteProperty))
            return true;
    }
    return false;
}

/*! False for white space, punctuation and symbols; the underscore belongs to words. */
bool mayBeginWord(QChar character)
{
    return character.category() == QChar::Punctuation_Connector
        || !(character.isSpace() || character.isPunct() || character.isSymbol());
}

/*!
    The search for words behind the notes. It goes on where it got to for the note before, so that
    text without words is not read again for each of its notes.
*/
class WordsAhead
{
public:
    /*! The closest word that begins at or after the character before \a position. */
    QTextCursor closest(QTextDocument *document, int position, bool leaveParagraph)
    {
        const int size = document->characterCount();
        int from = qMax(0, position - 1);
        // What is edited for a note stands before the word found for the one before it.
        if (size - m_fromEnd > position && !mayBeginWord(document->characterAt(from)))
            from = size - m_fromEnd;
        const QTextCursor at = MVRTextRange(from, from).toTextCursor(document);
        const QTextCursor word
            = MVRTextUtil::closestWordCursor(at, leaveParagraph, MVRTextUtil::Forward, nullptr);
        const QTextBlock last = leaveParagraph ? document->lastBlock() : at.block();
        m_fromEnd = size
            - (word.hasSelection() ? word.selectionStart() : last.position() + last.length() - 1);
        return word;
    }

private:
    int m_fromEnd = std::numeric_limits<int>::max(); // of what was found, from the document's end
};

/*! The word that is to carry the note that stood at \a position; no selection when none is free. */
QTextCursor freeWord(QTextDocument *document, int position, const InlineMove &move,
                     WordsAhead &wordsAhead)
{
    const QSet<int> inlineNotes
        = {MVRTextFormat::InlineAnnotationProperty, MVRTextFormat::InlineFootnoteProperty};
    QTextCursor before(document);
    before.setPosition(qMax(0, position - 1));
    QTextCursor word
        = MVRTextUtil::closestWordCursor(before, move.leaveParagraph, MVRTextUtil::Backward,
                                         move.skipNoteWords ? &inlineNotes : nullptr);
    if (word.hasSelection() && isInInlineNote(word)) {
        if (move.skipNoteWords)
            return QTextCursor();
        word = wordsAhead.closest(document, position, move.leaveParagraph);
        if (isInInlineNote(word))
            return QTextCursor();
    }
    const bool isTaken = hasInspectorKind(word)
        || (move.keepNotes && word.hasSelection() && hasInspectorNote(word));
    return isTaken ? QTextCursor() : word;
}

/*! The text that is to carry the note that stood at \a position, selected. */
QTextCursor anchorText(QTextDocument *document, int position, const InlineMove &move,
                       WordsAhead &wordsAhead)
{
    if (!document->isEmpty()) {
        const QTextCursor word = freeWord(document, position, move, wordsAhead);
        if (word.hasSelection())
            return word;
    }
    return insertNoteLabel(document, position, move.toFootnote);
}

/*! Turns \a content, the text of an inline note, into that of an inspector note. */
QByteArray inspectorContent(QTextDocument *content, const QTextBlockFormat &paragraph, int property)
{
    QTextBlockFormat format = paragraph;
    for (const int indent : {int(QTextFormat::TextIndent), int(QTextFormat::BlockIndent),
                             int(MVRTextFormat::BlockLeftIndentProperty),
                             int(MVRTextFormat::BlockRightIndentProperty)})
        format.clearProperty(indent);
    format.setProperty(QTextFormat::BlockAlignment, int(Qt::AlignLeft));
    format.setProperty(MVRTextFormat::LineSpacingProperty, 12.0);
    format.setProperty(MVRTextFormat::LineSpacingBaseProperty, 12.0);
    MVRTextFormat::convertToFormat(content, nullptr, &format);
    STextDoc::clearAllProperty(content, property, false, true);
    STextDoc::tablesToText(content);
    MVRTextDoc::convertMovarinLinksToText(content);
    return MVRTextRtf::toRtfCData(content, false);
}

void moveToInspector(QTextDocument *document, const MVRTextRange &note, const InlineMove &move,
                     WordsAhead &wordsAhead)
{
    QTextCursor cursor = note.toTextCursor(document);
    QTextDocument content(document); // a child asks its parent for pictures, and opens none
    content.setUndoRedoEnabled(false);
    QTextCursor(&content).insertFragment(cursor.selection());
    MVRTextUtil::trim(&content, false, 0, 0, nullptr);
    cursor.removeSelectedText();

    // What is typed into the paragraph that the note left empty is no note.
    QTextCharFormat emptyFormat = cursor.blockCharFormat();
    if (cursor.block().length() == 1 && emptyFormat.hasProperty(move.property)) {
        emptyFormat.clearProperty(move.property);
        cursor.setBlockCharFormat(emptyFormat);
    }
    const QTextBlockFormat paragraph = cursor.blockFormat();
    const QTextCursor anchor = anchorText(document, cursor.position(), move, wordsAhead);
    MVRTextCommentLink link;
    link.isFootnote = move.toFootnote;
    link.color = move.color;
    link.cdata = inspectorContent(&content, paragraph, move.property);
    MVRTextDoc::setComment(anchor, link);
}

/*!
    Collects what takes the mark from the paragraphs of \a selection: what is typed into an empty
    one is no note once the notes around it have gone.
*/
QVector<FormatEdit> paragraphUnmarks(QTextDocument *document, int property,
                                     const Selection &selection, const InlineNotes &notes)
{
    const auto unmark = [property](QTextCharFormat &format, const MVRTextRange &place) {
        if (place.start == place.end && format.boolProperty(property))
            format.clearProperty(property);
    };
    if (selection.isRectangle())
        return collectFormatEdits(selection, unmark);
    MVRTextRange range = selection.bounds();
    if (!notes.runs.isEmpty())
        range.start = qMin(range.start, notes.runs.first().start);
    // The note that goes on beyond the end stays, with the empty paragraphs in it.
    if (notes.end < range.end)
        range.end = notes.end - 1;
    return collectFormatEdits(document, range, unmark);
}

/*! Moves the notes of a selection as \a move says, but for what the application's settings do. */
void moveAllToInspector(QTextDocument *document, InlineMove move, const QTextCursor &cursor)
{
    const Selection selection = Selection::ofOperation(document, cursor);
    if (selection.isEmpty())
        return;
    const InlineNotes notes = inlineNotesIn(move.property, selection);
    const QVector<FormatEdit> unmarks = paragraphUnmarks(document, move.property, selection, notes);
    if (!notes.runs.isEmpty() || !unmarks.isEmpty()) {
        const MVRSettings &settings = mvrOptions();
        move.leaveParagraph = settings.value(MVRSettings::WordSearchSetting);
        move.color = settings.value(MVRSettings::CommentColorSetting);
        const EditBlock undoStep(document);
        applyFormatEdits(document, unmarks);
        WordsAhead wordsAhead;
        const int sizeBefore = document->characterCount();
        for (const MVRTextRange &note : notes.runs) {
            const int growth = document->characterCount() - sizeBefore;
            moveToInspector(document, MVRTextRange(note.start + growth, note.end + growth), move,
                            wordsAhead);
        }
    }
    // Notes that were not moved keep their mark: only the property's leftovers are false.
    STextDoc::clearAllProperty(document, move.property, false, false);
}

} // namespace

void MVRTextDoc::swapInspectorToInline(QTextDocument *document, int propertyId, bool toFootnote,
                                       QTextCursor cursor)
{
    const Selection selection = Selection::ofOperation(document, cursor);
    if (selection.isEmpty())
        return;
    const MVRTextCommentLinkMap notes = notesIn(document, propertyId, selection);
    moveIntoText(document, notes, noteRemovals(document, notes, propertyId, selection), toFootnote);
    STextDoc::clearAllProperty(document, propertyId, true, false);
}

void MVRTextDoc::swapInlineToInspector(QTextDocument *document, int propertyId, bool toFootnote,
                                       bool skipNoteWords, QTextCursor cursor)
{
    moveAllToInspector(document, {propertyId, toFootnote, skipNoteWords, false}, cursor);
}

void MVRTextDoc::moveInlineBesideText(QTextDocument *document, int propertyId, bool toFootnote,
                                      bool skipNoteWords, const QTextCursor &cursor)
{
    moveAllToInspector(document, {propertyId, toFootnote, skipNoteWords, true}, cursor);
}

void MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(QTextDocument *document,
                                                            QTextCursor cursor)
{
    swapInspectorToInline(document, MVRTextFormat::InspectorFootnoteProperty, true, cursor);
}

void MVRTextDoc::convertInspectorCommentsToInlineAnnotations(QTextDocument *document,
                                                             QTextCursor cursor)
{
    swapInspectorToInline(document, MVRTextFormat::InspectorCommentProperty, false, cursor);
}

void MVRTextDoc::convertInlineFootnotesToInspectorComments(QTextDocument *document,
                                                           bool skipNoteWords, QTextCursor cursor)
{
    swapInlineToInspector(document, MVRTextFormat::InlineFootnoteProperty, false, skipNoteWords,
                          cursor);
}

void MVRTextDoc::convertInlineFootnotesToInspectorFootnotes(QTextDocument *document,
                                                            bool skipNoteWords, QTextCursor cursor)
{
    swapInlineToInspector(document, MVRTextFormat::InlineFootnoteProperty, true, skipNoteWords,
                          cursor);
}

void MVRTextDoc::convertInlineAnnotationsToInspectorComments(QTextDocument *document,
                                                             bool skipNoteWords, QTextCursor cursor)
{
    swapInlineToInspector(document, MVRTextFormat::InlineAnnotationProperty, false, skipNoteWords,
                          cursor);
}
