// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

/*!
    Breaks the pages of a screenplay where a reader expects it.

    A scene heading or a character's name never stands last on a page, and a page begins without
    the space that its first element has before it. A paragraph that does not fit goes on on the
    next page.
    \param text        laid out, its page size set
    \param bodyHeight  the part of a page's height that holds text, in the layout's units
*/
void breakPages(QTextDocument &text, double bodyHeight);
