// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfTable.h>

#include <algorithm>

namespace {

constexpr int maxRounding = 20; // programs round; edges closer than a point are one

// The grid may be this many times larger than the table's own cells.
constexpr std::size_t proportion = 16;
constexpr std::size_t smallGrid = 10000;

std::size_t countCells(const RtfTable &table)
{
    std::size_t count = 0;
    for (const RtfRow &row : table.rows)
        count += row.cells.size();
    return count;
}

// Cells that are joined to another should be empty; what text they have is not given up.
bool isEmpty(const RtfCell &cell)
{
    return std::all_of(cell.begin(), cell.end(), [](const RtfCellContent &content) {
        return content.kind != RtfCellContent::Table && content.paragraph.text.isEmpty();
    });
}

} // namespace

void RtfTable::endCell()
{
    cells.push_back(std::move(cell));
    cell = RtfCell();
}

void RtfTable::endRow(const RtfRowFormat &format)
{
    if (!cell.empty())
        endCell();
    // Some programs end cells behind the last one that the row has.
    const auto described = static_cast<std::size_t>(format.cells.size());
    while (described > 0 && cells.size() > described && isEmpty(cells.back()))
        cells.pop_back();
    if (cells.empty())
        return;
    rows.push_back({format, std::move(cells)});
    cells = std::vector<RtfCell>();
}

RtfTableGrid::RtfTableGrid(const RtfTable &table)
    : m_rows(static_cast<int>(table.rows.size()))
{
    const std::size_t maxCells = std::max(smallGrid, countCells(table) * proportion);
    if (!hasEdges(table) || !layByEdges(table, maxCells))
        layByCount(table);
    m_reasonable = std::size_t(m_columns) * std::size_t(m_rows) <= maxCells;
    if (m_reasonable)
        shareBorders();
}

bool RtfTableGrid::hasEdges(const RtfTable &table) const
{
    for (const RtfRow &row : table.rows) {
        if (row.format.cells.size() < static_cast<int>(row.cells.size()))
            return false;
        int before = row.format.left;
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            const int right = row.format.cells.at(static_cast<int>(i)).right;
            if (right <= before)
                return false;
            before = right;
        }
    }
    return true;
}

bool RtfTableGrid::layByEdges(const RtfTable &table, std::size_t maxCells)
{
    std::vector<int> edges;
    for (const RtfRow &row : table.rows) {
        edges.push_back(row.format.left);
        for (std::size_t i = 0; i < row.cells.size(); ++i)
            edges.push_back(row.format.cells.at(static_cast<int>(i)).right);
    }
    std::sort(edges.begin(), edges.end());
    std::vector<int> distinct;
    for (const int edge : edges) {
        if (distinct.empty() || edge - distinct.back() > maxRounding)
            distinct.push_back(edge);
    }
    if (distinct.size() < 2 || (distinct.size() - 1) * std::size_t(m_rows) > maxCells)
        return false;
    m_columns = static_cast<int>(distinct.size()) - 1;
    for (int column = 0; column < m_columns; ++column)
        m_widths.append(distinct[column + 1] - distinct[column]);

    std::vector<int> above(m_columns, -1); // the cells that begin in the row above, by column
    for (int row = 0; row < m_rows; ++row) {
        std::vector<int> here(m_columns, -1);
        if (!layRow(table.rows[row], row, distinct, above, &here))
            return false;
        above = here;
    }
    return true;
}

bool RtfTableGrid::layRow(const RtfRow &row, int number, const std::vector<int> &edges,
                          const std::vector<int> &above, std::vector<int> *here)
{
    const auto columnAt = [&](int edge) {
        const auto behind = std::upper_bound(edges.begin(), edges.end(), edge);
        return static_cast<int>(behind - edges.begin()) - 1;
    };
    const int count = static_cast<int>(row.cells.size());
    int column = columnAt(row.format.left);
    for (int index = 0; index < count;) {
        const int first = index;
        int end = columnAt(row.format.cells.at(index).right);
        if (end <= column) // narrower than the rounding
            return false;
        for (++index;
             index < count && row.format.cells.at(index).joinsLeft && isEmpty(row.cells[index]);
             ++index)
            end = std::max(end, columnAt(row.format.cells.at(index).right));

        const int span = end - column;
        const int upper = above[column];
        const int borders = (row.format.cells.at(first).borders & ~RtfCellFormat::Right)
            | (row.format.cells.at(index - 1).borders & RtfCellFormat::Right);
        const bool joinsAbove = row.format.cells.at(first).joinsAbove && isEmpty(row.cells[first]);
        if (joinsAbove && upper >= 0 && m_cells[upper].columnSpan == span) {
            ++m_cells[upper].rowSpan;
            m_cells[upper].borders = (m_cells[upper].borders & ~RtfCellFormat::Bottom)
                | (borders & RtfCellFormat::Bottom);
            (*here)[column] = upper;
        } else {
            (*here)[column] = static_cast<int>(m_cells.size());
            m_cells.push_back({number, column, 1, span, first, borders});
        }
        column = end;
    }
    return true;
}

void RtfTableGrid::layByCount(const RtfTable &table)
{
    m_widths.clear();
    m_cells.clear();
    m_columns = 0;
    for (int row = 0; row < m_rows; ++row) {
        const int count = static_cast<int>(table.rows[row].cells.size());
        m_columns = std::max(m_columns, count);
        for (int index = 0; index < count; ++index)
            m_cells.push_back(
                {row, index, 1, 1, index, table.rows[row].format.cells.value(index).borders});
    }
}

// Programs say a border between two cells once or twice.
void RtfTableGrid::shareBorders()
{
    const auto columns = static_cast<std::size_t>(m_columns);
    std::vector<RtfGridCell *> places(columns * std::size_t(m_rows));
    for (RtfGridCell &cell : m_cells) {
        for (int row = cell.row; row < cell.row + cell.rowSpan; ++row)
            std::fill_n(places.begin() + std::ptrdiff_t(row) * m_columns + cell.column,
                        cell.columnSpan, &cell);
    }
    const auto share = [](RtfGridCell *first, int edge, RtfGridCell *second, int opposite) {
        if (!first || !second || first == second
            || ((first->borders & edge) == 0 && (second->borders & opposite) == 0))
            return;
        first->borders |= edge;
        second->borders |= opposite;
    };
    for (std::size_t at = 0; at < places.size(); ++at) {
        if ((at + 1) % columns != 0)
            share(places[at], RtfCellFormat::Right, places[at + 1], RtfCellFormat::Left);
        if (at + columns < places.size())
            share(places[at], RtfCellFormat::Bottom, places[at + columns], RtfCellFormat::Top);
    }
}

RtfTableGrid::Borders RtfTableGrid::borders() const
{
    const auto count = static_cast<std::size_t>(
        std::count_if(m_cells.begin(), m_cells.end(), [](const RtfGridCell &cell) {
            return cell.borders == RtfCellFormat::AllEdges;
        }));
    if (count == m_cells.size())
        return AllBorders;
    const bool any = std::any_of(m_cells.begin(), m_cells.end(),
                                 [](const RtfGridCell &cell) { return cell.borders != 0; });
    return any ? SomeBorders : NoBorders;
}
