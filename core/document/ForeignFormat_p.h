// SPDX-License-Identifier: MIT
#pragma once

#include <QTextBlock>
#include <QTextCursor>

/*!
    The format that a paragraph has in another document: its list is known by a number of its own
    document, for which the toolkit reads where the other one may have nothing.
*/
inline QTextBlockFormat formatElsewhere(const QTextBlock &paragraph)
{
    QTextBlockFormat format = paragraph.blockFormat();
    format.clearProperty(QTextFormat::ObjectIndex);
    return format;
}

/*! Begins a paragraph that looks like \a paragraph of another document. */
inline void insertBlockLike(QTextCursor &cursor, const QTextBlock &paragraph)
{
    cursor.insertBlock(formatElsewhere(paragraph), paragraph.charFormat());
}
