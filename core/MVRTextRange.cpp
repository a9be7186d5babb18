// SPDX-License-Identifier: MIT
#include <core/MVRTextRange.h>

#include <QTextDocument>

MVRTextRange::MVRTextRange(int startPosition, int endPosition)
    : start(startPosition)
    , end(endPosition)
{
}

MVRTextRange::MVRTextRange(const QTextCursor &cursor)
{
    if (!cursor.isNull()) {
        start = cursor.selectionStart();
        end = cursor.selectionEnd();
    }
}

QTextCursor MVRTextRange::toTextCursor(QTextDocument *document) const
{
    if (!document)
        return QTextCursor();
    const int last = document->characterCount() - 1;
    QTextCursor cursor(document);
    cursor.setPosition(qBound(0, start, last));
    cursor.setPosition(qBound(0, end, last), QTextCursor::KeepAnchor);
    return cursor;
}
