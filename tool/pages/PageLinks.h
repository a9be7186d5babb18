// SPDX-License-Identifier: MIT
#pragma once

#include <tool/pages/TextPlaces.h>

#include <QString>

/*! The part of a link that stands in one line. */
struct TextLink
{
    QRectF rect; /*!< in the layout */
    QString target;
};

/*!
    Takes the targets of links out of Qt's sight, for linksOf(): its PDF writer ends a target at a
    parenthesis, and makes web links of those that lead to places of the document.
*/
void takeLinks(QTextDocument &text);

/*! The links that takeLinks() took from a text that is laid out by now, in its order. */
QVector<TextLink> linksOf(const QTextDocument &text);
