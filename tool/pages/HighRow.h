// SPDX-License-Identifier: MIT
#pragma once

#include <tool/pages/PageSlices.h>

/*! Cuts a row that is higher than a page into parts, from top to bottom, each cell for itself. */
class HighRow
{
public:
    explicit HighRow(const FlowItem &row);

    /*! Where the part that comes next begins: at the topmost line that no part has yet. */
    double top() const { return m_top; }
    /*! Whether a line of the next part has room above \a bottom. */
    bool hasRoom(double bottom) const;
    /*! The next part: what of each column stands above \a bottom, by whole lines. */
    QVector<ColumnPart> takePart(double bottom);
    /*! All that no part has yet: close lines may reach below the row, which ends at \a bottom. */
    QVector<ColumnPart> takeRest(double bottom) const;

private:
    QVector<int> linesBehind(double bottom, bool keepsRules) const;
    int lineBehind(int column, double bottom, bool keepsRules) const;
    void passHighLines(QVector<int> &lines, double bottom) const;
    double lowestEnd(int column, int end) const;
    void openLines(const QVector<int> &next, double bottom);
    double topOf(const QVector<int> &lines) const;
    /*! Whether the part behind one that ends before these lines begins below this one's top. */
    bool goesOn(const QVector<int> &lines) const;
    QVector<ColumnPart> joinedParts(const QVector<int> &next, double bottom) const;
    ColumnPart part(int column, int end, double bottom) const;

    const FlowItem &m_row;
    QVector<int> m_next; // the first line of each column that no part has
    QVector<double> m_open; // the bottom of a line of each column that goes on, or 0
    double m_top;
};
