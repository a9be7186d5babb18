// SPDX-License-Identifier: MIT
#pragma once

struct PageWidths;
class QSizeF;
class QTextDocument;

/*!
    Makes a text, or that of a footnote, one that pages can be cut from: its lengths become units of
    the layout, and what the layout or Qt's PDF writer cannot bear is bounded or encoded.
*/
void preparePageText(QTextDocument &text, const PageWidths &widths, double unitsPerPoint);

/*!
    Makes the pictures of a prepared text as large as they say, and no larger than what \a room, in
    units of the layout, has for them and what reaches below their line.
*/
void fitPagePictures(QTextDocument &text, const QSizeF &room, double unitsPerPoint);

/*! Gives a prepared text the page that it is laid out on; false when it is too high for that. */
bool setLongPage(QTextDocument &text, double width, double unitsPerPoint);
