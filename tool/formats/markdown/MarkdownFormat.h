// SPDX-License-Identifier: MIT
#pragma once

#include <QTextFormat>

/*! Properties by which commands of the tool tell the Markdown writer how text of theirs is meant.
 */
namespace MarkdownFormat {

constexpr int literalProperty = QTextFormat::UserProperty + 0xf00; /*!< bool, of characters: the
                                    text is Markdown already */
constexpr int noteBodyProperty = QTextFormat::UserProperty + 0xf01; /*!< bool, of paragraphs: goes
                                    on with the footnote whose label stands before */

}
