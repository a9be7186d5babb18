// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

class QTextLayout;

/*! Where the lines of a paragraph part, and where each is drawn, in the layout's units. */
class ParagraphLines
{
public:
    /*! \param origin  from which the lines of \a layout count */
    ParagraphLines(const QTextLayout &layout, double origin);

    int size() const { return int(m_tops.size()); }
    double top(int line) const { return m_tops[line]; }
    double bottom(int line) const { return m_bottoms[line]; }

    /*! Where pages part before a line: above its letters, or as lines part that are too close. */
    double cutAbove(int line) const;

    /*!
        Where drawing begins so that a line is the first one: behind its own end, as the toolkit
        draws the last line that ends above, and not behind that of any line below. Behind the
        place of the last line, the toolkit may take letters for those of the next paragraph.
    */
    double drawnTop(int line) const;

private:
    QVector<double> m_tops;
    QVector<double> m_bottoms;
    QVector<double> m_baselines;
    QVector<double> m_lowestEnds; // of the line and all below
};
