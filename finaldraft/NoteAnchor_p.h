// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>

#include <QStringView>

/*!
    Follows the text of a document while it is written and knows the word that a note anchored at
    its end belongs to: the last one that begins with a letter or digit.

    Words end at white space, at punctuation and at paragraph breaks, as they do for a text
    cursor. No character is looked at twice, so that a file with many notes stays linear.
*/
class NoteAnchor
{
public:
    /*! Takes in \a text, inserted at the document's end, line feeds being paragraph breaks. */
    void append(QStringView text);
    /*! Takes in a paragraph break. */
    void appendBreak();

    /*!
        The last word.

        \return an empty range when there is none, or when it is the word that begins the
                document: that one does not carry a note
    */
    MVRTextRange lastWord() const;

    /*! True for white space and punctuation, which no word holds. */
    static bool endsWord(QChar character);

private:
    /*! Characters without white space and punctuation that the text ends with. */
    struct Stretch
    {
        bool isOpen = false;
        bool isWord = false; // begins with a letter or digit
        int start = 0;
    };

    MVRTextRange m_word;
    Stretch m_open;
    int m_position = 0;
};
