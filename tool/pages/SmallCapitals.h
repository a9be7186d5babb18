// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

/*!
    Makes letters that are shown as small capitals capitals of a smaller size, one for one: where a
    line ends in the middle of a word, the toolkit draws other letters in their stead.
*/
void putSmallCapitals(QTextDocument &text);
