// SPDX-License-Identifier: MIT
#pragma once

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>

/*!
    So many characters QTextDocument::contentsChange() says too little, both removed and added: one
    for each item of a list that was put in.

    \param position, added  as the signal has them
    \return characters, or more: all items are counted that stand where the change is
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
