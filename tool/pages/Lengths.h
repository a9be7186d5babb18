// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

// Documents in memory count points. Qt's HTML and ODT writers and its layout take the lengths of
// paragraphs and pictures for pixels, 96 to the inch.
constexpr double pixelsPerPoint = 96.0 / 72.0;
constexpr double pointsPerPixel = 72.0 / 96.0;

/*!
    Multiplies margins, indents, tab stops and fixed line heights of all paragraphs, the widths,
    margins and borders of tables and frames, the step of indents, and the sizes that pictures say.
    None but those of pictures becomes longer than \a longest, and no border, padding or spacing
   less than nothing.
*/
void scaleLengths(QTextDocument &document, double factor, double longest = 1.0e5);

/*!
    Rounds the sizes of text to steps of five per cent where there are more than 500: a layout keeps
    a font for each, and looks through them for each.
*/
void boundFontSizes(QTextDocument &document);

/*! Gives text whose size is in pixels, as in HTML, the same size in points. */
void pixelFontsToPoints(QTextDocument &document);
