// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QSet>
#include <QTextCursor>
#include <QTextDocumentFragment>

class QTextDocument;

/*! Trimming of text and the search for words. */
class MVRCORE_EXPORT MVRTextUtil
{
public:
    /*! Where a word is looked for. */
    enum Direction {
        Forward = 1, /*!< the nearest word that begins at or after the position */
        Backward = 2 /*!< the word that the position is in or touches, else the nearest before */
    };

    /*!
        Removes white space (blanks, tabs, line and paragraph ends) at both ends of a selection, as
        one undo step; none when nothing is removed.

        \param selection   the text to trim, of a rectangle in a table each cell by itself;
                           nothing happens when it is null or empty
        \param emptyLines  true: inside the selection, too, empty paragraphs that follow each other
                           shrink to one
        \param count    the most white-space characters to leave in front of the text; the ones
                        next to the text stay; a negative number counts as 0
        \param limit    the same behind the text
        \param changed  receives whether anything was removed; may be null
    */
    static void trim(QTextCursor selection, bool emptyLines, int count, int limit, bool *changed);

    /*! Trims the whole \a document; does nothing for null. */
    static void trim(QTextDocument *document, bool emptyLines, int count, int limit, bool *changed);

    /*! A copy of \a fragment without white space at its ends. */
    static QTextDocumentFragment trimmed(const QTextDocumentFragment &fragment);

    /*!
        Selects the word closest to the position of a cursor.

        \param cursor          where to look
        \param leaveParagraph  true: other paragraphs are searched when the cursor's own has none
        \param direction       which way to look
        \param skipProperties  words with a character whose format has one of these properties true
                               are passed over; may be null
        \return the word, selected; a cursor without selection at the position when there is none;
                a null cursor for a null cursor
    */
    static QTextCursor closestWordCursor(QTextCursor cursor, bool leaveParagraph,
                                         Direction direction, const QSet<int> *skipProperties);
};
