// SPDX-License-Identifier: MIT
#include <tool/pages/TextPlaces.h>

#include <QAbstractTextDocumentLayout>
#include <QTextDocument>
#include <QTextLayout>

namespace {

QRectF lineRect(const QTextLine &line, int start, int end)
{
    const double left = line.cursorToX(start);
    const double right = line.cursorToX(end);
    return QRectF(qMin(left, right), line.y(), qAbs(right - left), line.height());
}

// The line that a character of a paragraph stands in.
int lineOf(const QTextLayout &layout, int place)
{
    int first = 0;
    int behind = layout.lineCount();
    while (behind - first > 1) {
        const int middle = first + (behind - first) / 2;
        (layout.lineAt(middle).textStart() <= place ? first : behind) = middle;
    }
    return first;
}

}

TextPlaces::TextPlaces(const QTextDocument &text)
    : m_text(text)
{
}

QVector<QRectF> TextPlaces::rects(int start, int end)
{
    QVector<QRectF> rects;
    QTextBlock block = m_block.contains(start) ? m_block : m_text.findBlock(start);
    for (; block.isValid() && block.position() < end; block = block.next()) {
        enter(block);
        addRects(qMax(0, start - block.position()),
                 qMin(block.length() - 1, end - block.position()), rects);
    }
    return rects;
}

void TextPlaces::enter(const QTextBlock &block)
{
    if (block == m_block)
        return;
    m_block = block;
    m_origin = m_text.documentLayout()->blockBoundingRect(block).topLeft()
        - block.layout()->boundingRect().topLeft();
}

void TextPlaces::addRects(int start, int end, QVector<QRectF> &rects) const
{
    const QTextLayout &layout = *m_block.layout();
    for (int i = lineOf(layout, start); i < layout.lineCount(); ++i) {
        const QTextLine line = layout.lineAt(i);
        if (line.textStart() >= end)
            return;
        const int first = qMax(start, line.textStart());
        const int last = qMin(end, line.textStart() + line.textLength());
        if (first < last)
            rects.append(lineRect(line, first, last).translated(m_origin));
    }
}
