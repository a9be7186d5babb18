// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRTextNote.h>

#include <QTextCursor>

/*!
    What a writer does to notes, for the menus of an editor. Each is one undo step, or none where
    nothing changes.

    Notes are those that MVRTextDoc::notes() or MVRNotesModel list, their documents not edited
    since. Null documents and cursors do nothing.
*/
class MVRTEXT_EXPORT MVRNoteEdits
{
public:
    /*!
        Makes a note of the selection, or of the closest word where nothing is selected: an empty
        note beside the text, or the text itself as a note.

        \param author  of a note beside the text, whose date is now
        \return the text that has the note; empty where there is no word
    */
    static MVRTextRange add(QTextCursor at, MVRTextNote::Kind kind, const QString &author);

    /*! Gives a note beside the text other content, as RTF. */
    static void setContent(QTextDocument *document, const MVRTextNote &note, const QByteArray &rtf);
    /*! Gives a comment another colour. */
    static void setColor(QTextDocument *document, const MVRTextNote &note, const QColor &color);
    /*!
        Marks a note beside the text as resolved: it stays, and needs nobody any more. Documents and
        RTF of this library keep the mark, other formats do not know it.
    */
    static void setResolved(QTextDocument *document, const MVRTextNote &note, bool isResolved);

    /*! Takes a note away: the text that has one stays, the text of an inline note goes. */
    static void remove(QTextDocument *document, const MVRTextNote &note);

    /*! \name The notes of a selection; without one, all of the document's */
    //@{
    /*! Moves the notes beside the text into it. */
    static void moveToText(QTextDocument *document, const QTextCursor &selection);
    /*! Moves the notes in the text beside it, to the closest word in front. */
    static void moveToMargin(QTextDocument *document, const QTextCursor &selection);
    //@}

    /*! Takes blanks and empty paragraphs from both ends of all notes. */
    static void trim(QTextDocument *document);
    /*! Puts strings around the annotations in the text, which become ordinary text. */
    static void enclose(QTextDocument *document, const QString &opening, const QString &closing);
    /*! Lists all footnotes at the document's end and leaves numbers in their places. */
    static void footnotesToEndNotes(QTextDocument *document);
};
