// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/*!
    How many columns of a terminal a line of text takes: none for combining marks, two for Chinese,
    Japanese and Korean characters and for emoji, whatever they are put together from.
*/
int columnCount(const QString &text);

/*! \a text, or as much of it from its start as fits \a columns together with an ellipsis. */
QString cutToColumns(const QString &text, int columns);
