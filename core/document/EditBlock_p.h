// SPDX-License-Identifier: MIT
#pragma once

#include <QTextCursor>
#include <QTextDocument>

#include <optional>

/*!
    Joins every edit made while it lives into one undo step.

    Single edits are worth one too: outside of a block a cursor itemizes all of its paragraph behind
    every edit, to know where it stands on the line.
*/
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

/*!
    For operations that leave the undo steps to their caller: joins edits only where none are
    recorded. There the toolkit would move the whole text together after every single removal.
*/
class UnrecordedEditBlock
{
public:
    explicit UnrecordedEditBlock(QTextDocument *document)
    {
        if (!document->isUndoRedoEnabled())
            m_editBlock.emplace(document);
    }

private:
    std::optional<EditBlock> m_editBlock;
};
