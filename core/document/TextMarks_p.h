// SPDX-License-Identifier: MIT
#pragma once

#include <QChar>

/*! Whether a document has \a character where a cell, or another frame, begins or ends. */
inline bool isFrameMark(QChar character)
{
    return character == QChar(0xfdd0) || character == QChar(0xfdd1);
}

/*! Whether \a character ends a paragraph or is the mark of a frame: neither carries a note. */
inline bool isEndMark(QChar character)
{
    return character == QChar::ParagraphSeparator || isFrameMark(character);
}
