// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRTextNote.h>

#include <QString>
#include <QVector>

class QTextDocument;

using Note = MVRTextNote;

/*! "comment", "footnote", "inline annotation" or "inline footnote", for programs. */
QString kindName(Note::Kind kind);
/*! The same in the user's language: of one note, of several, and "2 comments". */
QString kindTitle(Note::Kind kind);
QString kindsTitle(Note::Kind kind);
QString countedKind(int count, Note::Kind kind);

/*! How many notes there are of each kind (by Note::Kind), without a look at what they say. */
QVector<int> noteCounts(const QTextDocument &document);

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
    InText, /*!< attached to text too, as Final Draft's script notes */
    OnPages, /*!< footnotes at the foot, comments beside the text; none in screenplays */
    Attached /*!< attached to text, as RTF's comments and footnotes; in the text as codes */
};

/*! What a conversion does with the notes of a document. */
enum class NotesChoice {
    ByFormat, /*!< as they are for Final Draft and RTF, beside the text on pages, else drop */
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
