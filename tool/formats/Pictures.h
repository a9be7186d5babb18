// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

class QSizeF;
class QTextDocument;

/*!
    Gives every picture the size at which it is drawn on a page: what it says itself, else one unit
    per pixel times \a unitsPerPixel. Pictures larger than \a maxSize are made smaller.
*/
void fitPictures(QTextDocument &text, const QSizeF &maxSize, double unitsPerPixel);

/*! Gives pictures other names; \a names has the new ones by the old. */
void renamePictures(QTextDocument &text, const QHash<QString, QString> &names);

/*! Gives the document the pictures that its text holds itself, as "data:image/png;base64,...". */
void takeEmbeddedPictures(QTextDocument &text);
