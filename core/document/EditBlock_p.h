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
    /*! What an edit block begins with; joining is for callers that have just made an edit. */
    enum Start { New, JoinPrevious };

    // A copy, so that reassigning the caller's cursor cannot close some other document's block.
    explicit EditBlock(const QTextCursor &cursor)
        : m_cursor(cursor)
    {
        m_cursor.beginEditBlock();
    }
    explicit EditBlock(QTextDocument *document, Start start = New)
        : m_cursor(document)
    {
        if (start == JoinPrevious)
            m_cursor.joinPreviousEditBlock();
        else
            m_cursor.beginEditBlock();
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
        : m_document(document)
    {
    }

    /*! To be called before the first edit; without one the document is not modified. */
    void begin()
    {
        if (!m_editBlock && !m_document->isUndoRedoEnabled())
            m_editBlock.emplace(m_document);
    }

private:
    QTextDocument *m_document;
    std::optional<EditBlock> m_editBlock;
};
