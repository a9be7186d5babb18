// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

class QString;
class QTextDocument;

/*!
    Makes lists of their own of the items of a list that stand in other cells or frames than those
   in front of them: the toolkit's HTML would open the list in one and close it in another.

    \return the number of the first item of each list, in the order in which the lists begin
*/
QVector<int> partListsAtCells(QTextDocument *text);

/*! Writes into the toolkit's \a html which of its numbered lists begin with another \a numbers
 * than 1. */
void startListsAt(const QVector<int> &numbers, QString *html);
