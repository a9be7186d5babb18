// SPDX-License-Identifier: MIT
#pragma once

#include <text/MvrTextExport.h>

#include <core/MVRTextFormat.h>

#include <QRegularExpression>

class QTextDocument;

/*!
    The codes of inline notes alone, for files that carry the rest of a document by means of their
    own.

    Without an edit block of their own, as for MVRTextDoc::toInlineMarkup().
*/
namespace InlineMarkup {

/*! How marked text is spelled out. */
struct Code
{
    MVRTextFormat::Property property; /*!< true on the marked text */
    const char *opening; /*!< as it is written */
    const char *openingPattern; /*!< of what is read; null where only \a opening is */
    const char *closing;
};

enum CodeKind { Annotation, Footnote, Preserve };

// The colour is always red: an annotation's own is never read back. (The blue one's group stands
// within the repetition, which is of no consequence while none of the colours is used.)
inline constexpr Code codes[] = {
    {MVRTextFormat::InlineAnnotationProperty,
     R"({\Mvrn_annot \color={\R=1.000000\G=0.000000\B=0.000000} \text=)",
     R"(\{\\Mvrn_annot ?\\color=\{\\R=([0-9\.]+)\\G=([0-9\.]+)\\B=([0-9\.])+\} ?\\text=)",
     R"(\end_Mvrn_annot})"},
    {MVRTextFormat::InlineFootnoteProperty, R"({\Mvrn_fn=)", nullptr, R"(\end_Mvrn_fn})"},
    {MVRTextFormat::PreserveFormattingProperty, R"({\Mvrn_ps=)", nullptr, R"(\end_Mvrn_ps})"},
};

/*! Expressions that find what a code begins and ends with. */
inline QString openingPattern(const Code &code)
{
    return code.openingPattern ? QString::fromLatin1(code.openingPattern)
                               : QRegularExpression::escape(QString::fromLatin1(code.opening));
}
inline QString closingPattern(const Code &code)
{
    return QRegularExpression::escape(QString::fromLatin1(code.closing));
}

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
