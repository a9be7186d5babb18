// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

/*!
    Lets pictures stand in the flow that push tables beyond the right edge: the toolkit puts a table
    beside a float on the left, and makes it no narrower.

    \param text  is laid out, and may be once more
    \param right  of what pages show, in units of the layout
    \return whether something has moved
*/
bool takePicturesFromTables(QTextDocument &text, double right);
