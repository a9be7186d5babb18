// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRTextNote.h>

#include <QTextCursor>

/*! What the desk does to notes. Each is one undo step, or none where nothing changes. */
namespace NoteEdits {

/*!
    Makes a note of the selection, or of the closest word where nothing is selected.

    \param author  of notes in the margin
    \return the text that carries the note; empty where there is no word
*/
MVRTextRange add(QTextCursor at, MVRTextNote::Kind kind, const QString &author);

/*! Gives a note in the margin other content (RTF), or another colour. */
void setContent(QTextDocument *document, const MVRTextNote &note, const QByteArray &rtf);
void setColor(QTextDocument *document, const MVRTextNote &note, const QColor &color);

/*! Takes a note away; the text that carries one stays, the text of an inline note goes. */
void remove(QTextDocument *document, const MVRTextNote &note);

/*! \name The notes of a selection; without one, all of the document's */
//@{
/*! Moves the notes in the margin into the text. */
void moveToText(QTextDocument *document, const QTextCursor &selection);
/*! Moves the notes in the text into the margin. */
void moveToMargin(QTextDocument *document, const QTextCursor &selection);
//@}

/*! Takes blanks and empty paragraphs from both ends of all notes. */
void trim(QTextDocument *document);
/*! Puts brackets around the annotations in the text, which become ordinary text. */
void enclose(QTextDocument *document, const QString &opening, const QString &closing);

/*! Lists all footnotes at the document's end and leaves numbers in their places. */
void footnotesToEndNotes(QTextDocument *document);

} // namespace NoteEdits
