// SPDX-License-Identifier: MIT
#include <tool/pages/PageSlices.h>
#include <tool/pages/ParagraphLines.h>

#include <QTextLayout>

namespace {

constexpr double belowBaseline = 0.2; // share of the distance of lines
constexpr double ofLastLine = 0.75; // share of the distance
constexpr double spare = 1.0; // units; a place between lines is never exact

}

ParagraphLines::ParagraphLines(const QTextLayout &layout, double origin)
{
    for (int i = 0; i < layout.lineCount(); ++i) {
        const QTextLine line = layout.lineAt(i);
        m_tops.append(origin + line.y());
        m_bottoms.append(m_tops.last() + line.height());
        m_baselines.append(m_tops.last() + line.ascent());
    }
    m_lowestEnds = m_bottoms;
    for (int i = size() - 2; i >= 0; --i)
        m_lowestEnds[i] = qMin(m_lowestEnds[i], m_lowestEnds[i + 1]);
}

double ParagraphLines::cutAbove(int line) const
{
    if (m_tops[line] >= m_bottoms[line - 1])
        return m_tops[line];
    const double distance = m_baselines[line] - m_baselines[line - 1];
    return qMax(m_tops[line], m_baselines[line - 1] + belowBaseline * distance);
}

double ParagraphLines::drawnTop(int line) const
{
    if (line == 0 || line + 1 == size())
        return m_tops[line];
    const double end = m_bottoms[line];
    const double below = m_lowestEnds[line + 1];
    const double lastTop = m_tops.last();
    const double place = lastTop + ofLastLine * (lastTop - m_tops[size() - 2]);
    const double between = qMin(end + (below - end) / 2.0, below - drawingSlack - spare);
    return qMin(between, place);
}
