// SPDX-License-Identifier: MIT
#pragma once

struct PageWidths;
class QTextDocument;

/*!
    Makes a text, or that of a footnote, one that pages can be cut from: its lengths become units of
    the layout, and what the layout or Qt's PDF writer cannot bear is bounded or encoded.
*/
void preparePageText(QTextDocument &text, const PageWidths &widths, double unitsPerPoint);

/*! Gives a prepared text the page that it is laid out on; false when it is too high for that. */
bool setLongPage(QTextDocument &text, double width, double unitsPerPoint);
