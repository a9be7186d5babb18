// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfRowReader.h>

void RtfRowReader::begin(const RtfGroup &group)
{
    row(group) = {};
    m_nextCell = {};
    m_edge = 0;
}

void RtfRowReader::addCell(const RtfGroup &group, int right)
{
    constexpr int maxCells = 10000;
    m_nextCell.right = qBound(-rtfMaxTwips, right, rtfMaxTwips);
    if (row(group).cells.size() < maxCells)
        row(group).cells.append(m_nextCell);
    m_nextCell = {};
    m_edge = 0;
}

void RtfRowReader::beginBorder(RtfCellFormat::Edge edge)
{
    m_edge = edge;
    m_nextCell.borders &= ~edge;
}
