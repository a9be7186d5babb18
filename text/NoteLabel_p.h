// SPDX-License-Identifier: MIT
#pragma once

#include <QTextCursor>

/*!
    Inserts text that carries an inspector note for want of a word: "(Linked Comment)" or "(Linked
    Footnote)".

    \return the label, selected
*/
QTextCursor insertNoteLabel(QTextDocument *document, int position, bool footnote);
