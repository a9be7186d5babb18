// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/*!
    A table of text in columns.

    Each row is one line. On a terminal long cells are cut so that a row fits its width; elsewhere
    they are whole.
*/
class Table
{
public:
    explicit Table(const QStringList &heads);

    /*! Adds a row with one cell a column; line ends inside become blanks. */
    void addRow(const QStringList &cells);

    QString toString() const;

private:
    QVector<int> columnWidths() const;

    QVector<QStringList> m_rows;
};
