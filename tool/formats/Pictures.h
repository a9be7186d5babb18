// SPDX-License-Identifier: MIT
#pragma once

class QSizeF;
class QTextDocument;

/*!
    Gives every picture the size at which it is drawn on a page: what it says itself, else one unit
    per pixel times \a unitsPerPixel. Pictures larger than \a maxSize are made smaller.
*/
void fitPictures(QTextDocument &text, const QSizeF &maxSize, double unitsPerPixel);
