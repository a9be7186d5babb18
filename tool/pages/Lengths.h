// SPDX-License-Identifier: MIT
#pragma once

#include <core/document/LengthScale_p.h>

class QTextDocument;

// Documents in memory count points. Qt's HTML and ODT writers and its layout take the lengths of
// paragraphs and pictures for pixels, 96 to the inch.
constexpr double pixelsPerPoint = 96.0 / 72.0;
constexpr double pointsPerPixel = 72.0 / 96.0;

/*!
    Makes text of more than 1,638 points as large as that, and waves below text of more than 144
    points straight lines: a PDF has a picture for each, as large as the letters.
*/
void boundLargeLetters(QTextDocument &document);

/*!
    Rounds the sizes of text to steps of five per cent where there are more than 500: a layout keeps
    a font for each, and looks through them for each.
*/
void boundFontSizes(QTextDocument &document);

/*! Gives text whose size is in pixels, as in HTML, the same size in points. */
void pixelFontsToPoints(QTextDocument &document);
