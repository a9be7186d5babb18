// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

/*!
    Lets lines break within words of more than some thousand letters, where else they could not.

    A layout looks through the rest of a word for each of its lines, and through dictionaries for
    the words of a text without blanks, so that both take time with the square of the length. Spaces
    of no width go there, where a line may break or at least a letter ends; nothing shows them.
*/
void breakLongWords(QTextDocument &text);

/*!
    Keeps what a layout knows of long paragraphs, which it would find out again for each page that
    draws some of one.
    \param text  laid out
*/
void keepLongParagraphs(const QTextDocument &text);
