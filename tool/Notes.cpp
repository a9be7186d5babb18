// SPDX-License-Identifier: MIT
#include <tool/Notes.h>

#include <tool/Messages.h>

#include <core/STextDoc.h>
#include <core/document/FormatEdits_p.h>
#include <text/MVRTextDoc.h>

#include <QTextCursor>
#include <QTextDocument>

namespace {

struct KindWords
{
    const char *one;
    const char *several;
};

constexpr KindWords kindWords[] = {
    {QT_TRANSLATE_NOOP("Tool", "comment"), QT_TRANSLATE_NOOP("Tool", "comments")},
    {QT_TRANSLATE_NOOP("Tool", "footnote"), QT_TRANSLATE_NOOP("Tool", "footnotes")},
    {QT_TRANSLATE_NOOP("Tool", "inline annotation"),
     QT_TRANSLATE_NOOP("Tool", "inline annotations")},
    {QT_TRANSLATE_NOOP("Tool", "inline footnote"), QT_TRANSLATE_NOOP("Tool", "inline footnotes")},
};

// What a note leaves says only that there is none; it would part links, and words in them.
void clearEmptyMarks(QTextDocument &document)
{
    changeAllFormats(&document, [](QTextCharFormat &format) {
        for (const int mark :
             {MVRTextFormat::InlineAnnotationProperty, MVRTextFormat::InlineFootnoteProperty}) {
            if (format.hasProperty(mark) && !format.boolProperty(mark))
                format.clearProperty(mark);
        }
    });
}

int dropInspectorNotes(QTextDocument &document)
{
    const int count = removeNotes(document, Note::Comment) + removeNotes(document, Note::Footnote);
    if (count > 0)
        clearEmptyMarks(document);
    return count;
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
    const QVector<MVRTextRange> notes = MVRTextDoc::inlineNotes(&document, property);
    cursor.beginEditBlock(); // outside of one a cursor itemizes its paragraph after every change
    for (const MVRTextRange &note : notes) {
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
    for (const Note::Kind kind : Note::allKinds) {
        if (Note::isInline(kind))
            MVRTextDoc::moveInlineBesideText(&document, Note::property(kind),
                                             Note::isFootnote(kind), false, QTextCursor());
    }
    return support == NoteSupport::None ? dropInspectorNotes(document) : 0;
}

NotesChoice choiceFor(NoteSupport support)
{
    switch (support) {
    case NoteSupport::None:
        return NotesChoice::Drop;
    case NoteSupport::OnPages:
        return NotesChoice::Inspector;
    default:
        return NotesChoice::ByFormat;
    }
}

}

QString kindName(Note::Kind kind)
{
    return QLatin1String(kindWords[kind].one);
}

QString kindTitle(Note::Kind kind)
{
    return Tool::tr(kindWords[kind].one);
}

QString kindsTitle(Note::Kind kind)
{
    return Tool::tr(kindWords[kind].several);
}

QString countedKind(int count, Note::Kind kind)
{
    return counted(count, kindWords[kind].one, kindWords[kind].several);
}

QVector<int> noteCounts(const QTextDocument &document)
{
    QVector<int> counts(4);
    const MVRTextNotes notes = MVRTextDoc::notes(&document);
    for (const Note &note : notes)
        ++counts[note.kind];
    return counts;
}

int removeNotes(QTextDocument &document, Note::Kind kind)
{
    if (Note::isInline(kind))
        return MVRTextDoc::removeInlineNotes(&document, Note::property(kind), QTextCursor());
    const int count = noteCounts(document).at(kind);
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
        return 0; // the writers of RTF and screenplays place those in the text too
    default:
        return dropInspectorNotes(document) + removeNotes(document, Note::InlineAnnotation)
            + removeNotes(document, Note::InlineFootnote);
    }
}
