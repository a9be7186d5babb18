// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

/*! Where lines stand, in units of the layout. */
struct PageWidths
{
    double lines = 0.0; /*!< between the margins */
    double margin = 0.0; /*!< at the left, into which text may stand out */
};

/*!
    Brings onto the paper what indents and tables would put beside it: of each paragraph at least
    half a line, or an inch, is left between its indents, and tables that reach beyond the right
    margin become as wide as lines, with all columns in proportion. In a cell, lines are as long as
    that is wide.

    \param inch  in units of the layout
*/
void keepOnPage(QTextDocument &text, const PageWidths &widths, double inch);

/*!
    Makes narrower what is in tables that reach beyond the right edge of the paper all the same, by
    pictures side by side or tables in their cells: columns without a width are taken for equal.

    \param text  is laid out, and may be once more
    \return whether there is such a table
*/
bool keepTablesOnPage(QTextDocument &text, const PageWidths &widths);
