// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/*! HTML that costs the toolkit no more than its length is worth. */
struct BoundedHtml
{
    QString html; /*!< with spans and style sheets as far as they are taken */
    bool hasLostStyles = false; /*!< its style sheets are left out */
    bool hasLostPictures = false; /*!< pictures of long paragraphs are, too */
    bool hasLostPlaces = false; /*!< names that links lead to are, too */
    QString error; /*!< why it is not taken at all; null when it is */
};

/*!
    Bounds what the toolkit's HTML parser takes more time or memory for than grows with the text:
    elements in each other, cells that span others, empty cells of ragged tables, style rules that
    each element is compared with, pictures in long paragraphs, and formats that it tells apart
    slowly.
*/
BoundedHtml boundedHtml(const QString &html);
