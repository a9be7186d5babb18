// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>

/*! Why a text is refused, and where. */
struct XhtmlFault
{
    QString message; /*!< translated */
    int line; /*!< counted from 1 */
    int column; /*!< counted from 1 */
};

/*! Whether all text in an element of that name is taken at once, besides that of elements in it. */
bool copiesText(QStringView name);

/*! Whether each element of that name begins a line. */
bool beginsLine(QStringView name);

/*!
    Finds what no document has and no parser or walk of a tree survives: hundreds of elements in
    each other, or of attributes in one element, and nesting that makes the BBCode many times as
    long as the text. Needs only the text, and time in proportion to its length.
*/
std::optional<XhtmlFault> findXhtmlFault(const QString &xhtml);
