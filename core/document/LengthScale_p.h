// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

constexpr double maxLength = 1.0e5; // of any unit: more than paper has

/*!
    Multiplies margins, indents, tab stops and fixed line heights of all paragraphs, the widths,
    margins and borders of tables and frames, the step of indents, and the sizes that pictures say.
    None but those of pictures becomes longer than \a longest, in units of the result, and no
    border, padding or spacing less than nothing.
*/
void scaleLengths(QTextDocument &document, double factor, double longest = maxLength);
