// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>

#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <QVector>

#include <algorithm>

/*!
    The text that a cursor selects, as ranges in document order: one, whichever way it was selected,
    or for a rectangle in a table one for the content of each of its cells, which may be empty.

    Nothing is selected by a null cursor, nor by one whose document is gone, although that one calls
    itself null and says that it has a selection.
*/
class Selection
{
public:
    explicit Selection(const QTextCursor &cursor)
    {
        if (cursor.isNull() || !cursor.hasSelection())
            return;
        m_document = cursor.document();
        if (cursor.hasComplexSelection())
            addCells(cursor);
        else
            m_ranges.append(MVRTextRange(cursor));
    }

    /*!
        What an operation on \a document with an optional cursor works on: the cursor's selection,
        or the whole document for a cursor that never had one. Nothing without a document, and for
        the cursor of another document or of one that is gone.
    */
    static Selection ofOperation(QTextDocument *document, const QTextCursor &cursor)
    {
        if (document && cursor.isCopyOf(QTextCursor()))
            return Selection(document);
        const Selection selection(cursor);
        return document && selection.m_document == document ? selection : Selection(QTextCursor());
    }

    /*! All of \a document. */
    explicit Selection(QTextDocument *document)
        : m_document(document)
    {
        if (document->characterCount() > 1)
            m_ranges.append(MVRTextRange(0, document->characterCount() - 1));
    }

    /*! Null when nothing is selected. */
    QTextDocument *document() const { return m_document; }
    bool isEmpty() const { return m_ranges.isEmpty(); }
    /*! False also for empty cells. */
    bool holdsText() const
    {
        return std::any_of(m_ranges.cbegin(), m_ranges.cend(),
                           [](const MVRTextRange &range) { return range.start < range.end; });
    }
    /*! True for cells of a table; the text between them is not selected. */
    bool isRectangle() const { return m_isRectangle; }
    const QVector<MVRTextRange> &ranges() const { return m_ranges; }
    /*! From the first selected character to the last; empty when nothing is selected. */
    MVRTextRange bounds() const
    {
        return isEmpty() ? MVRTextRange()
                         : MVRTextRange(m_ranges.first().start, m_ranges.last().end);
    }

private:
    void addCells(const QTextCursor &cursor)
    {
        m_isRectangle = true;
        int firstRow = 0, rows = 0, firstColumn = 0, columns = 0;
        cursor.selectedTableCells(&firstRow, &rows, &firstColumn, &columns);
        const QTextTable *table = cursor.currentTable();
        for (int row = firstRow; row < firstRow + rows; ++row) {
            for (int column = firstColumn; column < firstColumn + columns; ++column) {
                const QTextTableCell cell = table->cellAt(row, column);
                // A cell that spans several stands where it begins.
                if (cell.row() == row && cell.column() == column)
                    m_ranges.append(MVRTextRange(cell.firstPosition(), cell.lastPosition()));
            }
        }
    }

    QTextDocument *m_document = nullptr;
    QVector<MVRTextRange> m_ranges;
    bool m_isRectangle = false;
};

/*! Where a search from \a cursor begins: behind its selection, or at its position. */
inline int searchPosition(const QTextCursor &cursor)
{
    const Selection selection(cursor);
    return selection.isEmpty() ? cursor.position() : selection.bounds().end;
}
