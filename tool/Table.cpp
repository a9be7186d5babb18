// SPDX-License-Identifier: MIT
#include <tool/Table.h>

#include <tool/Columns.h>
#include <tool/FileName.h>
#include <tool/System.h>

#include <algorithm>

namespace {

constexpr int gap = 2;
constexpr int minCutWidth = 8;

}

Table::Table(const QStringList &heads)
{
    addRow(heads);
}

void Table::addRow(const QStringList &cells)
{
    QStringList row;
    for (const QString &cell : cells)
        row << shownOnTerminal(cell.simplified());
    m_rows.append(row);
}

int Table::terminalWidth()
{
    return System::terminalColumns();
}

QVector<int> Table::columnWidths(int maxWidth) const
{
    QVector<int> widths(m_rows.first().size(), 0);
    for (const QStringList &row : m_rows) {
        for (int column = 0; column < row.size(); ++column)
            widths[column] = qMax(widths[column], columnCount(row[column]));
    }
    if (maxWidth <= 0)
        return widths;
    int total = gap * (widths.size() - 1);
    for (const int width : qAsConst(widths))
        total += width;
    // The widest column gives first, letter by letter, so that the narrow ones stay whole.
    while (total > maxWidth) {
        int &widest = *std::max_element(widths.begin(), widths.end());
        if (widest <= minCutWidth)
            break;
        --widest;
        --total;
    }
    return widths;
}

QString Table::toString(int maxWidth) const
{
    const QVector<int> widths = columnWidths(maxWidth);
    QString text;
    for (const QStringList &row : m_rows) {
        QString line;
        for (int column = 0; column < row.size(); ++column) {
            const QString cell = cutToColumns(row[column], widths[column]);
            line += cell + QString(widths[column] + gap - columnCount(cell), QLatin1Char(' '));
        }
        text += line.trimmed() + QLatin1Char('\n');
    }
    return text;
}
