// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QRectF>
#include <QTextBlock>
#include <QVector>

class QTextDocument;

/*!
    Where text stands in a layout. The paragraph that it was asked for last is known, so that it is
    quick for places in the order of the text.
*/
class TextPlaces
{
public:
    /*! \param text  is laid out, and stays as it is */
    explicit TextPlaces(const QTextDocument &text);

    /*! Where the text of [\a start, \a end) stands, line by line, in units of the layout. */
    QVector<QRectF> rects(int start, int end);

private:
    void addRects(int start, int end, QVector<QRectF> &rects) const;
    void enter(const QTextBlock &block);

    const QTextDocument &m_text;
    QTextBlock m_block;
    QPointF m_origin; // of the lines of m_block
};
