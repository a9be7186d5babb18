// SPDX-License-Identifier: MIT
#pragma once

#include <QTextFormat>

class QTextDocument;

constexpr int KeptTogether = QTextFormat::UserProperty + 0x3501; /*!< of a paragraph: bool */
constexpr int PageBreaks = QTextFormat::UserProperty + 0x3502; /*!< PageBreakFlags */

/*!
    Lets the lines of all paragraphs wrap. Those whose lines were not to break stay on one page
    instead, where one holds them: the toolkit has one property for both.
*/
void wrapLines(QTextDocument &text);

/*!
    Keeps page breaks for flowItems(), where the toolkit does not know them: it lays texts out on
    pages of its own, as long as it can count.
*/
void takeBreaks(QTextDocument &text);
