#pragma once

#include <core/MVRTextRange.h>

#include <QStringView>

/*!
    Follows the text of a document while it is written and knows the word that a note anchored at
    its end belongs to: the last one that begins with a letter or digit.

    Words end at white space, at punctuation and at paragraph breaks, as they do for a text
    cursor. Looking at each character once keeps a file with many notes linear.
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

private:
    MVRTextRange m_word;
    int m_position = 0;
    bool m_inRun = false; // in a stretch without white space and punctuation
    bool m_runIsWord = false; // that stretch begins with a letter or digit
};
