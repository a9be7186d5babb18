#pragma once

#include <QTextCursor>

/*! Joins every edit made while it lives into one undo step. */
class EditBlock
{
public:
    // A copy, so that reassigning the caller's cursor cannot close some other document's block.
    explicit EditBlock(const QTextCursor &cursor)
        : m_cursor(cursor)
    {
        m_cursor.beginEditBlock();
    }
    explicit EditBlock(QTextDocument *document)
        : EditBlock(QTextCursor(document))
    {
    }
    ~EditBlock() { m_cursor.endEditBlock(); }
    Q_DISABLE_COPY_MOVE(EditBlock)

private:
    QTextCursor m_cursor;
};
