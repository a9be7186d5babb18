// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/*!
    Marks in the source of a Markdown file for what CommonMark does not know: characters that no
    text has, put where the source is not escaped, so that the text that the parser hands out
    still tells "{>>" from "{\>>". The parser takes none of them for more than a letter, and
    braces and signs of equality around them stay what they are to emphasis.
*/
namespace MarkdownMarks {

constexpr ushort commentStart = 0xfdd0; /*!< "{>>" is "{", this and ">" */
constexpr ushort commentEnd = 0xfdd1; /*!< "<<}" is "<", this and "}" */
constexpr ushort highlightStart = 0xfdd2; /*!< "{==" is "{", this and "=" */
constexpr ushort highlightEnd = 0xfdd3; /*!< "==}" is "=", this and "}" */
constexpr ushort address = 0xfdd4; /*!< stands before a bare "https://…" */
constexpr ushort pipe = 0xfdd5; /*!< a pipe that ends no cell */
constexpr ushort nothing = 0xfdd6; /*!< keeps two characters from being one mark */
constexpr ushort task = 0xfdd7; /*!< "[x]" behind a list's marker is "[", this and "x]" */

inline bool isMark(QChar c)
{
    return c.unicode() >= commentStart && c.unicode() <= task;
}

/*! \a source with marks, without the characters that it must not have, and with its lists of
    cells and pictures as short as the parser can take in time. */
QString marked(const QString &source);

/*! The text that marks stand in, as it was. */
QString unmarked(QString text);

}
