// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

/*!
    Makes of \a text what Qt's writer of ODT keeps the cells of. It writes each paragraph of a table
    as a cell, tables in cells beside these, and ends lists in the wrong place behind which a table
    or frame begins or ends: readers would show nothing of all that.

    Each cell gets one paragraph of several lines, with the marks of its lists, and the lines of
    tables in it; an empty paragraph stands between a list and a table.
*/
void fitTablesForOdt(QTextDocument *text);
