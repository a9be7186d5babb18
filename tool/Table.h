// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/*!
    A table of text in columns.

    Each row is one line. On a terminal, which counts columns and not characters, long cells are cut
    so that a row fits its width; elsewhere they are whole.
*/
class Table
{
public:
    explicit Table(const QStringList &heads);

    /*! Adds a row with one cell a column; line ends inside become blanks. */
    void addRow(const QStringList &cells);

    /*! The lines, none of them longer than \a maxWidth columns where that can be; 0 for any length.
     */
    QString toString(int maxWidth = terminalWidth()) const;

    /*! The columns of the terminal that is the standard output; 0 when that is none. */
    static int terminalWidth();

private:
    QVector<int> columnWidths(int maxWidth) const;

    QVector<QStringList> m_rows;
};
