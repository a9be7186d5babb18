// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfTable.h>
#include <core/rtf/read/RtfGroups.h>

/*!
    The rows that \trowd, \cellx and their kin describe (RTF 1.9.1, "Table Definitions"): the one
    of the outer table and the one of a table in it, which are both in force.
*/
class RtfRowReader
{
public:
    /*! The row that the words of \a group describe. */
    RtfRowFormat &row(const RtfGroup &group)
    {
        return group.isIn(RtfDestination::NestedRow) ? m_nestedRow : m_row;
    }
    const RtfRowFormat &outerRow() const { return m_row; }
    const RtfRowFormat &nestedRow() const { return m_nestedRow; }
    /*! The cell that the next \cellx ends. */
    RtfCellFormat &nextCell() { return m_nextCell; }

    /*! \clbrdrt and its kin: what follows is said about that edge. */
    void beginBorder(RtfCellFormat::Edge edge);
    /*! The edge that is spoken of, if any, has a border. */
    void setBorder() { m_nextCell.borders |= m_edge; }

    void begin(const RtfGroup &group);
    /*! \param right  the cell's right edge in twips */
    void addCell(const RtfGroup &group, int right);

private:
    RtfRowFormat m_row;
    RtfRowFormat m_nestedRow;
    RtfCellFormat m_nextCell;
    int m_edge = 0; // of the cell, whose border comes next
};
