// SPDX-License-Identifier: MIT
#include <tool/pages/RowColumns.h>

#include <algorithm>

void partColumns(QVector<RowColumn> &columns)
{
    std::sort(columns.begin(), columns.end(),
              [](const RowColumn &a, const RowColumn &b) { return a.left < b.left; });
    for (int i = 0; i < columns.size(); ++i) {
        RowColumn &column = columns[i];
        if (i + 1 < columns.size())
            column.right = qMin(column.right, columns[i + 1].left - 1.0);
        column.right = qMax(column.right, column.left + 1.0);
    }
}

double reachBelow(const FlowItem &row)
{
    double lowest = row.bottom;
    for (const RowColumn &column : row.columns) {
        for (const RowLine &line : column.lines)
            lowest = qMax(lowest, line.bottom);
    }
    return lowest - row.bottom;
}

void joinColumns(QVector<RowColumn> &columns)
{
    std::sort(columns.begin(), columns.end(),
              [](const RowColumn &a, const RowColumn &b) { return a.left < b.left; });
    QVector<RowColumn> joined;
    for (const RowColumn &column : qAsConst(columns)) {
        if (joined.isEmpty() || column.left >= joined.last().right) {
            joined.append(column);
            continue;
        }
        joined.last().right = qMax(joined.last().right, column.right);
        joined.last().lines += column.lines;
    }
    for (RowColumn &column : joined)
        std::stable_sort(column.lines.begin(), column.lines.end(),
                         [](const RowLine &a, const RowLine &b) { return a.top < b.top; });
    columns = joined;
}
