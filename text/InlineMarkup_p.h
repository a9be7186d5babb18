// SPDX-License-Identifier: MIT
#pragma once

#include <text/MvrTextExport.h>

class QTextDocument;

/*!
    The codes of inline notes alone, for files that carry the rest of a document by means of their
    own.

    Without an edit block of their own, as for MVRTextDoc::toInlineMarkup().
*/
namespace InlineMarkup {

/*!
    Puts codes around inline annotations and inline footnotes, which become ordinary text; inspector
    notes, preserved formatting and images stay.
*/
MVRTEXT_EXPORT void writeNoteCodes(QTextDocument *document);

/*!
    Turns the codes of inline footnotes, inline annotations and preserved formatting back into
    marked text; codes of images stay.
*/
MVRTEXT_EXPORT void readNoteCodes(QTextDocument *document);

} // namespace InlineMarkup
