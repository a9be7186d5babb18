// SPDX-License-Identifier: MIT
#include <tool/Table.h>

#include <algorithm>

#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr int gap = 2;
constexpr int minCutWidth = 8;

// 0 when the standard output is no terminal.
int terminalWidth()
{
    winsize size = {};
    if (!isatty(STDOUT_FILENO) || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0)
        return 0;
    return size.ws_col;
}

QString cut(const QString &cell, int width)
{
    if (cell.size() <= width)
        return cell;
    int end = width - 1;
    if (end > 0 && cell.at(end - 1).isHighSurrogate())
        --end;
    return cell.left(end) + QChar(0x2026);
}

}

Table::Table(const QStringList &heads)
{
    m_rows.append(heads);
}

void Table::addRow(const QStringList &cells)
{
    QStringList row;
    for (const QString &cell : cells)
        row << cell.simplified();
    m_rows.append(row);
}

QVector<int> Table::columnWidths() const
{
    QVector<int> widths(m_rows.first().size(), 0);
    for (const QStringList &row : m_rows) {
        for (int column = 0; column < row.size(); ++column)
            widths[column] = qMax(widths[column], row[column].size());
    }
    const int terminal = terminalWidth();
    if (terminal <= 0)
        return widths;
    int total = gap * (widths.size() - 1);
    for (const int width : qAsConst(widths))
        total += width;
    // The widest column gives first, letter by letter, so that the narrow ones stay whole.
    while (total > terminal) {
        int &widest = *std::max_element(widths.begin(), widths.end());
        if (widest <= minCutWidth)
            break;
        --widest;
        --total;
    }
    return widths;
}

QString Table::toString() const
{
    const QVector<int> widths = columnWidths();
    QString text;
    for (const QStringList &row : m_rows) {
        QString line;
        for (int column = 0; column < row.size(); ++column)
            line += cut(row[column], widths[column]).leftJustified(widths[column] + gap);
        text += line.trimmed() + QLatin1Char('\n');
    }
    return text;
}
