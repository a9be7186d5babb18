// SPDX-License-Identifier: MIT
#include <tool/pages/HighRow.h>

#include <algorithm>

namespace {

constexpr double slack = 0.5; // units that rounding may add
constexpr double overlap = 0.35; // share of its height by which close lines reach into a line

constexpr int mostParts = 64; // beyond, a page ends at one height in all columns

bool isAsHigh(const ColumnPart &one, const ColumnPart &other)
{
    return one.top == other.top && one.bottom == other.bottom && one.drawnTop == other.drawnTop;
}

// Whether the lines above stand above: those of a table in the cell need not begin side by side.
bool isFree(const QVector<RowLine> &lines, int from, int line)
{
    const RowLine &wanted = lines[line];
    const double limit = wanted.top + overlap * (wanted.bottom - wanted.top);
    return std::all_of(lines.cbegin() + from, lines.cbegin() + line,
                       [limit](const RowLine &above) { return above.bottom <= limit; });
}

// Of the lines that begin side by side, in a table in the cell, none is to be left out.
double drawnTop(const QVector<RowLine> &lines, int first, int end)
{
    const double middle = (lines[first].top + lines[first].bottom) / 2.0;
    double top = lines[first].drawnTop;
    for (int i = first + 1; i < end && lines[i].top < middle; ++i)
        top = qMin(top, lines[i].drawnTop);
    return top;
}

}

HighRow::HighRow(const FlowItem &row)
    : m_row(row)
    , m_next(row.columns.size(), 0)
    , m_open(row.columns.size(), 0.0)
    , m_top(row.top)
{
}

bool HighRow::hasRoom(double bottom) const
{
    return goesOn(linesBehind(bottom, false));
}

QVector<ColumnPart> HighRow::takePart(double bottom)
{
    QVector<int> next = linesBehind(bottom, true);
    if (!goesOn(next)) // a picture, or lines that were to stay together
        next = linesBehind(bottom, false);
    if (!goesOn(next)) // a line that is higher than the page
        passHighLines(next, bottom);
    const QVector<ColumnPart> parts = joinedParts(next, bottom);
    openLines(next, bottom);
    m_next = next;
    const double top = topOf(next);
    m_top = top > m_top + slack ? qMin(top, bottom) : bottom;
    return parts;
}

QVector<ColumnPart> HighRow::takeRest(double bottom) const
{
    QVector<int> rest;
    for (int column = 0; column < m_next.size(); ++column)
        rest.append(m_row.columns[column].lines.size());
    return joinedParts(rest, bottom);
}

// For each part the toolkit goes through all cells of the row.
QVector<ColumnPart> HighRow::joinedParts(const QVector<int> &next, double bottom) const
{
    QVector<ColumnPart> parts;
    for (int column = 0; column < next.size(); ++column) {
        const ColumnPart own = part(column, next[column], bottom);
        if (parts.isEmpty() || !isAsHigh(own, parts.last())) {
            parts.append(own);
            continue;
        }
        parts.last().left = qMin(parts.last().left, own.left);
        parts.last().right = qMax(parts.last().right, own.right);
    }
    if (parts.size() <= mostParts)
        return parts;
    ColumnPart all = parts.first();
    for (const ColumnPart &other : qAsConst(parts)) {
        all.left = qMin(all.left, other.left);
        all.right = qMax(all.right, other.right);
        all.drawnTop = qMin(all.drawnTop, other.drawnTop);
    }
    all.bottom = bottom;
    return {all};
}

QVector<int> HighRow::linesBehind(double bottom, bool keepsRules) const
{
    QVector<int> lines;
    for (int column = 0; column < m_next.size(); ++column)
        lines.append(lineBehind(column, bottom, keepsRules));
    return lines;
}

int HighRow::lineBehind(int column, double bottom, bool keepsRules) const
{
    const QVector<RowLine> &lines = m_row.columns[column].lines;
    const int from = m_next[column];
    int line = from;
    while (line < lines.size() && lines[line].bottom <= bottom + slack)
        ++line;
    if (line == lines.size() || !keepsRules)
        return line;
    while (line > from && !(lines[line].mayStartPage && isFree(lines, from, line)))
        --line;
    return line;
}

// Those beside a line that no page has room for are shown with it.
void HighRow::passHighLines(QVector<int> &lines, double bottom) const
{
    for (int column = 0; column < lines.size(); ++column) {
        const QVector<RowLine> &all = m_row.columns[column].lines;
        int &line = lines[column];
        while (line < all.size()
               && (all[line].top <= m_top + slack || all[line].bottom <= bottom + slack))
            ++line;
    }
}

// Of the lines that a part has up to \a end, and of one that goes on from the part before.
double HighRow::lowestEnd(int column, int end) const
{
    double lowest = m_open[column];
    for (int line = m_next[column]; line < end; ++line)
        lowest = qMax(lowest, m_row.columns[column].lines[line].bottom);
    return lowest;
}

void HighRow::openLines(const QVector<int> &next, double bottom)
{
    for (int column = 0; column < next.size(); ++column) {
        const double lowest = lowestEnd(column, next[column]);
        m_open[column] = lowest > bottom + slack ? lowest : 0.0;
    }
}

double HighRow::topOf(const QVector<int> &lines) const
{
    double top = m_row.bottom;
    for (int column = 0; column < lines.size(); ++column) {
        const QVector<RowLine> &all = m_row.columns[column].lines;
        if (lines[column] < all.size())
            top = qMin(top, all[lines[column]].top);
    }
    return top;
}

bool HighRow::goesOn(const QVector<int> &lines) const
{
    return topOf(lines) > m_top + slack;
}

ColumnPart HighRow::part(int column, int end, double bottom) const
{
    const RowColumn &all = m_row.columns[column];
    ColumnPart part;
    part.left = all.left;
    part.right = all.right;
    part.top = m_top;
    part.bottom = end < all.lines.size() ? qMin(bottom, all.lines[end].top) : bottom;
    part.drawnTop = m_top;
    const int first = m_next[column];
    if (first < end && m_open[column] == 0.0)
        part.drawnTop = drawnTop(all.lines, first, end);
    if (end == all.lines.size()) // what stands below the row is no part of it
        part.bottom
            = first < end ? qMin(bottom, all.lines[end - 1].bottom) : (m_top + bottom) / 2.0;
    const double lowest = lowestEnd(column, end);
    if (m_open[column] > 0.0 || lowest > bottom + slack)
        part.bottom = qMax(part.bottom, qMin(bottom, lowest));
    return part;
}
