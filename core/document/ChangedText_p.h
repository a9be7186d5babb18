// SPDX-License-Identifier: MIT
#pragma once

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

/*!
    What QTextDocument::contentsChange() leaves out of a change, both of what was removed and of
    what came: a character for each item of a list that was put in, counted here from above.

    \param position, added  as the signal has them
    \return characters
*/
inline int leftOutOfChange(const QTextDocument &document, int position, int added)
{
    int leftOut = 0;
    QTextBlock block = document.findBlock(position);
    for (; block.isValid() && block.position() <= position + added + leftOut;
         block = block.next()) {
        if (block.position() >= position && block.textList())
            ++leftOut;
    }
    return leftOut;
}
