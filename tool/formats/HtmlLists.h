// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QTextDocument;

/*!
    The toolkit's HTML of \a text, in which each list ends in the cell or frame that it began in;
    the toolkit opens a list in one and closes it in another where its items stand in several.

    The items in another cell are made a list of their own, which goes on counting.
*/
QString htmlWithWholeLists(QTextDocument *text);
