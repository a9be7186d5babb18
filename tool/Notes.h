// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextFormat.h>

#include <QColor>
#include <QString>
#include <QVector>

class QTextDocument;

/*! One note of a document, of any kind. */
struct Note
{
    enum Kind { Comment, Footnote, InlineAnnotation, InlineFootnote };

    Kind kind = Comment;
    int start = 0; /*!< position in the document, in UTF-16 code units */
    int end = 0; /*!< position after the last character */
    QColor color; /*!< of comments only, else invalid */
    QString content; /*!< the note as plain text */
};

/*! "comment", "footnote", "inline annotation" or "inline footnote". */
QString kindName(Note::Kind kind);

/*! The property that marks the text of such a note, or the text that it is attached to. */
MVRTextFormat::Property propertyOf(Note::Kind kind);

/*! How many notes there are of each kind, without a look at what they say. */
QVector<int> noteCounts(const QTextDocument &document);

/*! All notes of \a document in the order of their places. */
QVector<Note> notesOf(const QTextDocument &document);

/*! Removes the notes of one kind, inline notes with their text; \return how many there were. */
int removeNotes(QTextDocument &document, Note::Kind kind);

/*!
    Puts strings around the inline annotations, inside the blanks at their ends.

    \param asText  true: they become ordinary text
*/
void encloseAnnotations(QTextDocument &document, const QString &opening, const QString &closing,
                        bool asText);

/*! What notes a file format has. */
enum class NoteSupport {
    None,
    InText, /*!< in the text, as Final Draft's script notes */
    Attached /*!< attached to text, as RTF's comments and footnotes; in the text as codes */
};

/*! What a conversion does with the notes of a document. */
enum class NotesChoice {
    ByFormat, /*!< inline for Final Draft, as they are for RTF, else drop */
    Inline, /*!< put them into the text */
    Inspector, /*!< take them out of the text and attach them to a word */
    Drop
};

/*!
    Prepares the notes of a document for the format that it is going to be written in.

    \param document      changed in place
    \param choice        what the user wants
    \param support       what the format has; where it has no notes in the text, inline notes
                         stand in brackets
    \return how many notes the written file will lack
*/
int placeNotes(QTextDocument &document, NotesChoice choice, NoteSupport support);
