// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

#include <cmath>

class QTextDocument;

constexpr double maxLength = 1.0e5; // of any unit: more than paper has

/*! A length between minus and plus \a longest, 0 for what is no number: a layout does not come back
    from any that HTML or a host may set. */
inline double boundedLength(double length, double longest = maxLength)
{
    return std::isnan(length) ? 0.0 : qBound(-longest, length, longest);
}

/*!
    Multiplies margins, indents, tab stops and fixed line heights of all paragraphs, the widths,
    margins and borders of tables and frames, the step of indents, and the sizes that pictures say.
    None but those of pictures becomes longer than \a longest, in units of the result, and no
    border, padding or spacing less than nothing.
*/
void scaleLengths(QTextDocument &document, double factor, double longest = maxLength);
