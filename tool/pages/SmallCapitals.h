// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

/*!
    Makes of letters that are shown as small capitals capitals of a smaller size, each one letter as
    before: the toolkit draws other letters in their stead where a line ends in the middle of a
   word.
*/
void putSmallCapitals(QTextDocument &text);
