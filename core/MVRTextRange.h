// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QMap>
#include <QString>
#include <QTextCursor>

class QTextDocument;

/*!
    A range of a document's characters, [start, end), in UTF-16 code units.

    Ranges are ordered by start, then by end, so that ranges that do not overlap sort in document
    order.
*/
struct MVRCORE_EXPORT MVRTextRange
{
    int start = 0; /*!< position of the first character */
    int end = 0; /*!< position after the last character */

    MVRTextRange() = default;
    /*! The range [\a startPosition, \a endPosition), as it is given. */
    MVRTextRange(int startPosition, int endPosition);

    /*! The selection of \a cursor, whichever way it was made; empty for a null cursor. */
    explicit MVRTextRange(const QTextCursor &cursor);

    /*!
        A cursor that selects the range, its position at the end.

        \param document  the document to select in
        \return the cursor; positions outside the document are moved to its nearest one; a null
                cursor when \a document is null
    */
    QTextCursor toTextCursor(QTextDocument *document) const;
};

inline bool operator==(const MVRTextRange &a, const MVRTextRange &b)
{
    return a.start == b.start && a.end == b.end;
}

inline bool operator!=(const MVRTextRange &a, const MVRTextRange &b)
{
    return !(a == b);
}

inline bool operator<(const MVRTextRange &a, const MVRTextRange &b)
{
    return a.start != b.start ? a.start < b.start : a.end < b.end;
}

Q_DECLARE_TYPEINFO(MVRTextRange, Q_PRIMITIVE_TYPE);

/*! The links of a document to other items of the application. */
struct MVRTextInternalLinkMap
{
    QMap<MVRTextRange, int> links; /*!< linked text and the id of the item it leads to */
    QString title; /*!< title of the document that the links were read from */
};
