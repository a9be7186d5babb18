// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>
#include <text/MVRTextNote.h>

#include <core/document/NoteFormat_p.h>
#include <core/document/TextFragments_p.h>

#include <QTextDocumentFragment>

#include <algorithm>
#include <limits>

namespace {

bool carriesNote(const FragmentWalker &walker)
{
    return walker.format().boolProperty(MVRTextFormat::CommentLinkProperty);
}

MVRTextNote::Kind kindOf(const QTextCharFormat &format)
{
    return format.boolProperty(MVRTextFormat::InspectorFootnoteProperty) ? MVRTextNote::Footnote
                                                                         : MVRTextNote::Comment;
}

/*!
    Whether two fragments that carry notes, with no other text between them, carry the same one.

    Anchors tell notes with equal content apart. Text that a host made a link of later has lost its
    own.
*/
bool isSameNote(const QTextCharFormat &a, const QTextCharFormat &b)
{
    if (kindOf(a) != kindOf(b) || !isSameContent(noteContent(a), noteContent(b)))
        return false;
    const QString anchor = a.anchorHref();
    const QString other = b.anchorHref();
    return anchor == other || !isNoteAnchor(anchor) || !isNoteAnchor(other);
}

/*! Stands at the first fragment behind \a position, or where the note that it carries begins. */
FragmentWalker startOfNote(const QTextDocument &document, int position)
{
    FragmentWalker first(&document, position);
    if (!first.isValid() || !carriesNote(first))
        return first;
    for (FragmentWalker previous = first;; first = previous) {
        previous.previous();
        if (!previous.isValid() || !carriesNote(previous)
            || !isSameNote(previous.format(), first.format()))
            return first;
    }
}

MVRTextNote inspectorNote(const FragmentWalker &walker, const QTextCharFormat &format)
{
    MVRTextNote note;
    note.kind = kindOf(format);
    note.range = MVRTextRange(walker.start(), walker.end());
    if (note.kind == MVRTextNote::Comment)
        note.color = format.colorProperty(MVRTextFormat::CommentColorProperty);
    note.author = format.stringProperty(MVRTextFormat::CommentAuthorProperty);
    note.date = format.property(MVRTextFormat::CommentDateProperty).toDateTime();
    note.isResolved = format.boolProperty(MVRTextFormat::CommentResolvedProperty);
    if (isNoteAnchor(format.anchorHref()))
        note.anchor = format.anchorHref();
    note.cdata = noteContent(format);
    return note;
}

void appendInspectorNotes(const QTextDocument &document, int start, int end, MVRTextNotes *notes)
{
    QTextCharFormat open; // of the note that the fragment before carries
    bool isOpen = false;
    FragmentWalker walker = startOfNote(document, start);
    for (; walker.isValid() && (isOpen || walker.start() < end); walker.next()) {
        const QTextCharFormat format = walker.format();
        const bool isNote = format.boolProperty(MVRTextFormat::CommentLinkProperty);
        if (isNote && isOpen && isSameNote(open, format)) {
            notes->last().range.end = walker.end();
        } else {
            isOpen = isNote && walker.start() < end;
            if (isOpen)
                notes->append(inspectorNote(walker, format));
        }
        open = format;
    }
}

void appendInlineNotes(const QTextDocument &document, int start, int end, MVRTextNote::Kind kind,
                       MVRTextNotes *notes)
{
    const QVector<MVRTextRange> ranges
        = MVRTextDoc::inlineNotes(&document, MVRTextNote::property(kind), start, end);
    MVRTextNote note;
    note.kind = kind;
    for (const MVRTextRange &range : ranges) {
        note.range = range;
        notes->append(note);
    }
}

} // namespace

MVRTextFormat::Property MVRTextNote::property(Kind kind)
{
    static constexpr MVRTextFormat::Property properties[]
        = {MVRTextFormat::InspectorCommentProperty, MVRTextFormat::InspectorFootnoteProperty,
           MVRTextFormat::InlineAnnotationProperty, MVRTextFormat::InlineFootnoteProperty};
    return properties[kind];
}

QString MVRTextNote::text(const QTextDocument &document) const
{
    QString text;
    QTextBlock block = document.findBlock(range.start);
    for (; block.isValid() && block.position() < range.end; block = block.next()) {
        if (block.position() > range.start)
            text += QLatin1Char('\n');
        text += textBetween(block, qMax(range.start, block.position()),
                            qMin(range.end, block.position() + block.length() - 1));
    }
    return text.replace(QChar::LineSeparator, QLatin1Char('\n'))
        .replace(QChar::Nbsp, QLatin1Char(' '));
}

QString MVRTextNote::contentText(const QTextDocument &document) const
{
    if (isInline())
        return text(document);
    QTextCharFormat format;
    format.setProperty(MVRTextFormat::CommentCDataProperty, cdata);
    return MVRTextDoc::commentText(format, false);
}

QString MVRTextNote::contentHtml(const QTextDocument &document) const
{
    QTextCharFormat format;
    format.setProperty(MVRTextFormat::CommentCDataProperty, cdata);
    if (!isInline())
        return MVRTextDoc::commentText(format, true);
    QTextCursor cursor(document.firstBlock());
    cursor.setPosition(qMin(range.start, document.characterCount() - 1));
    cursor.setPosition(qMin(range.end, document.characterCount() - 1), QTextCursor::KeepAnchor);
    return cursor.selection().toHtml();
}

MVRTextNotes MVRTextDoc::notes(const QTextDocument *document, int start, int end)
{
    MVRTextNotes notes;
    if (!document)
        return notes;
    appendInspectorNotes(*document, qMax(0, start), end > 0 ? end : std::numeric_limits<int>::max(),
                         &notes);
    for (const MVRTextNote::Kind kind : MVRTextNote::allKinds) {
        if (MVRTextNote::isInline(kind))
            appendInlineNotes(*document, start, end, kind, &notes);
    }
    std::stable_sort(notes.begin(), notes.end(), [](const MVRTextNote &a, const MVRTextNote &b) {
        return a.range.start < b.range.start;
    });
    return notes;
}
