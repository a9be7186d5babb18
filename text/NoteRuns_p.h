// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextFormat.h>
#include <core/document/TextFragments_p.h>

/*!
    What an operation with an optional cursor works on: the cursor's selection, or the whole
    document for a null cursor. Empty when there is nothing to do: without a document, without a
    selection and for another document's cursor.
*/
inline MVRTextRange operationRange(const QTextDocument *document, const QTextCursor &cursor)
{
    if (!document)
        return MVRTextRange();
    if (cursor.isNull())
        return MVRTextRange(0, document->characterCount() - 1);
    return cursor.document() == document ? MVRTextRange(cursor) : MVRTextRange();
}

/*!
    The runs of the inline note property in \a range, from one that its start lies in to the last
    before the first that goes on beyond its end.

    Each can be selected without other text: a run that crosses the borders of table cells and is
    not the whole table is cut there.
*/
QVector<MVRTextRange> inlineNotesIn(const QTextDocument *document, int property,
                                    const MVRTextRange &range);

/*! The same for the runs that have any text in \a range, each whole. */
QVector<MVRTextRange> inlineNotesAround(const QTextDocument *document, int property,
                                        const MVRTextRange &range);

/*! What marks text as an inline note of one kind, and not of the other; or unmarks it. */
inline QTextCharFormat inlineNoteFormat(bool footnote, bool on)
{
    const int kind = footnote ? MVRTextFormat::InlineFootnoteProperty
                              : MVRTextFormat::InlineAnnotationProperty;
    const int otherKind = footnote ? MVRTextFormat::InlineAnnotationProperty
                                   : MVRTextFormat::InlineFootnoteProperty;
    QTextCharFormat format;
    format.setProperty(kind, on);
    if (on)
        format.setProperty(otherKind, false);
    return format;
}
