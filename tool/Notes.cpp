// SPDX-License-Identifier: MIT
#include <tool/Notes.h>

#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace {

QString plainContent(const QByteArray &rtf)
{
    QTextDocument content;
    return MVRTextRtf::fromRtfCData(rtf, &content) ? content.toPlainText().trimmed() : QString();
}

QVector<Note> inlineNotes(const QTextDocument &document, MVRTextFormat::Property property)
{
    const Note::Kind kind = property == MVRTextFormat::InlineFootnoteProperty
        ? Note::InlineFootnote
        : Note::InlineAnnotation;
    QVector<Note> notes;
    int openEnd = -1; // where the note found last could go on
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (!fragment.charFormat().boolProperty(property))
                continue;
            const int end = fragment.position() + fragment.length();
            if (fragment.position() != openEnd)
                notes.append({kind, fragment.position(), end, QColor(), QString()});
            notes.last().end = end;
            notes.last().content += fragment.text();
            openEnd = end;
        }
        // A note that reaches a paragraph's end goes on where the next one begins.
        if (openEnd == block.position() + block.length() - 1) {
            ++openEnd;
            notes.last().content += QLatin1Char('\n');
        }
    }
    for (Note &note : notes)
        note.content = note.content.trimmed();
    return notes;
}

int removeInlineNotes(QTextDocument &document, MVRTextFormat::Property property)
{
    const QVector<Note> notes = inlineNotes(document, property);
    if (notes.isEmpty())
        return 0;
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (auto note = notes.crbegin(); note != notes.crend(); ++note) {
        cursor.setPosition(note->start);
        cursor.setPosition(note->end, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
    }
    cursor.endEditBlock();
    return notes.size();
}

int dropInspectorNotes(QTextDocument &document)
{
    return removeNotes(document, Note::Comment) + removeNotes(document, Note::Footnote);
}

/*! Takes the mark from the blanks at both ends of each note, so that brackets stand inside them. */
void unmarkBlanks(QTextDocument &document, MVRTextFormat::Property property)
{
    QTextCharFormat unmarked;
    unmarked.setProperty(property, false);
    QTextCursor cursor(&document);
    const auto unmark = [&](int start, int end) {
        if (start == end)
            return;
        cursor.setPosition(start);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        cursor.mergeCharFormat(unmarked);
    };
    const QVector<Note> notes = inlineNotes(document, property);
    cursor.beginEditBlock(); // outside of one a cursor itemizes its paragraph after every change
    for (const Note &note : notes) {
        int start = note.start;
        while (start < note.end && document.characterAt(start).isSpace())
            ++start;
        int end = note.end;
        while (end > start && document.characterAt(end - 1).isSpace())
            --end;
        unmark(note.start, start);
        unmark(end, note.end);
    }
    cursor.endEditBlock();
}

void bracketAnnotations(QTextDocument &document)
{
    encloseAnnotations(document, QStringLiteral("["), QStringLiteral("]"), true);
}

int placeInline(QTextDocument &document, NoteSupport support)
{
    MVRTextDoc::convertInspectorCommentsToInlineAnnotations(&document, QTextCursor());
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(&document, QTextCursor());
    if (support != NoteSupport::InText) {
        // One kind after the other: an annotation that touches a footnote keeps its own brackets.
        bracketAnnotations(document);
        MVRTextDoc::convertInlineFootnotesToInlineAnnotations(&document, QTextCursor());
        bracketAnnotations(document);
    }
    return dropInspectorNotes(document); // those whose content cannot be read
}

int placeInInspector(QTextDocument &document, NoteSupport support)
{
    MVRTextDoc::convertInlineAnnotationsToInspectorComments(&document, false, QTextCursor());
    MVRTextDoc::convertInlineFootnotesToInspectorFootnotes(&document, false, QTextCursor());
    return support == NoteSupport::Attached ? 0 : dropInspectorNotes(document);
}

NotesChoice choiceFor(NoteSupport support)
{
    switch (support) {
    case NoteSupport::InText:
        return NotesChoice::Inline;
    case NoteSupport::Attached:
        return NotesChoice::ByFormat;
    default:
        return NotesChoice::Drop;
    }
}

}

QString kindName(Note::Kind kind)
{
    static const char *const names[]
        = {"comment", "footnote", "inline annotation", "inline footnote"};
    return QString::fromLatin1(names[kind]);
}

MVRTextFormat::Property propertyOf(Note::Kind kind)
{
    static constexpr MVRTextFormat::Property properties[]
        = {MVRTextFormat::InspectorCommentProperty, MVRTextFormat::InspectorFootnoteProperty,
           MVRTextFormat::InlineAnnotationProperty, MVRTextFormat::InlineFootnoteProperty};
    return properties[kind];
}

QVector<int> noteCounts(const QTextDocument &document)
{
    QVector<int> counts(4);
    const MVRTextCommentLinkMap links = MVRTextDoc::commentsMap(&document, -1, -1);
    for (const MVRTextCommentLink &link : links)
        ++counts[link.isFootnote ? Note::Footnote : Note::Comment];
    for (const Note::Kind kind : {Note::InlineAnnotation, Note::InlineFootnote})
        counts[kind] = inlineNotes(document, propertyOf(kind)).size();
    return counts;
}

QVector<Note> notesOf(const QTextDocument &document)
{
    QVector<Note> notes;
    const MVRTextCommentLinkMap links = MVRTextDoc::commentsMap(&document, -1, -1);
    for (auto link = links.cbegin(); link != links.cend(); ++link) {
        const Note::Kind kind = link->isFootnote ? Note::Footnote : Note::Comment;
        notes.append(
            {kind, link.key().start, link.key().end, link->color, plainContent(link->cdata)});
    }
    notes += inlineNotes(document, MVRTextFormat::InlineAnnotationProperty);
    notes += inlineNotes(document, MVRTextFormat::InlineFootnoteProperty);
    std::stable_sort(notes.begin(), notes.end(),
                     [](const Note &a, const Note &b) { return a.start < b.start; });
    return notes;
}

int removeNotes(QTextDocument &document, Note::Kind kind)
{
    const MVRTextFormat::Property property = propertyOf(kind);
    if (kind == Note::InlineAnnotation || kind == Note::InlineFootnote)
        return removeInlineNotes(document, property);
    const int count = MVRTextDoc::commentsMapByType(property, &document, -1, -1, false).size();
    if (kind == Note::Comment)
        STextDoc::removeInspectorComments(&document);
    else
        STextDoc::removeInspectorFootnotes(&document);
    return count;
}

void encloseAnnotations(QTextDocument &document, const QString &opening, const QString &closing,
                        bool asText)
{
    unmarkBlanks(document, MVRTextFormat::InlineAnnotationProperty);
    MVRTextDoc::encloseAnnotations(&document, opening, closing, asText);
}

int placeNotes(QTextDocument &document, NotesChoice choice, NoteSupport support)
{
    switch (choice == NotesChoice::ByFormat ? choiceFor(support) : choice) {
    case NotesChoice::Inline:
        return placeInline(document, support);
    case NotesChoice::Inspector:
        return placeInInspector(document, support);
    case NotesChoice::ByFormat:
        return 0; // RTF's writer places those in the text too
    default:
        return dropInspectorNotes(document) + removeNotes(document, Note::InlineAnnotation)
            + removeNotes(document, Note::InlineFootnote);
    }
}
