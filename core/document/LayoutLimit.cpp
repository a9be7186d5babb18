// SPDX-License-Identifier: MIT
#include <core/document/LayoutLimit_p.h>

#include <core/document/PointSize_p.h>

#include <QAbstractTextDocumentLayout>
#include <QSizeF>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>

#include <algorithm>
#include <cmath>

namespace {

// Of any font, as parts of its size.
constexpr double widestLetter = 1.2;
constexpr double highestLine = 1.6;
constexpr double wrapping = 2.0; // a word that does not fit leaves a line half empty at most

// Qt measures cells without pages, and may not come back from 2^23.
constexpr double maxCellHeight = 8.0e6;

/*! Gives heights that parts of a text do not pass, without laying them out. */
class HeightBound
{
public:
    HeightBound(const QTextDocument &text, double unitsPerPoint)
        : m_unitsPerPoint(unitsPerPoint)
        , m_base(text.defaultFont().pointSizeF() > 0 ? text.defaultFont().pointSizeF() : 12.0)
        , m_indent(text.indentWidth())
    {
    }

    double ofBlock(const QTextBlock &block, double width) const;
    double ofFrame(const QTextFrame &frame, double width) const;

private:
    double sizeOf(const QTextCharFormat &format) const
    {
        const double size = pointSizeOf(format, m_base);
        return std::max(1.0, size > 0 ? size : m_base) * m_unitsPerPoint;
    }
    double ofTable(const QTextTable &table, double width) const;
    double ofParts(QTextFrame::iterator part, double width) const;

    double m_unitsPerPoint;
    double m_base;
    double m_indent;
};

double HeightBound::ofBlock(const QTextBlock &block, double width) const
{
    const QTextBlockFormat format = block.blockFormat();
    width -= format.leftMargin() + format.rightMargin() + format.indent() * m_indent;
    double largest = sizeOf(block.charFormat());
    double height = 0.0;
    double lines = 1.0;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat run = it.fragment().charFormat();
        const int length = it.fragment().length();
        if (run.isImageFormat()) {
            height += length * std::max(0.0, run.toImageFormat().height());
            lines += length;
        }
        const double size = sizeOf(run);
        const double perLine = std::max(1.0, std::floor(width / (size * widestLetter)));
        height += (length / perLine + 1.0) * size * highestLine * wrapping;
        lines += (length / perLine + 1.0) * wrapping;
        largest = std::max(largest, size);
    }
    const QString text = block.text();
    const int breaks = text.count(QChar::LineSeparator) + text.count(QLatin1Char('\t')) + 1;
    height += breaks * largest * highestLine;
    lines += breaks;
    const auto type = format.lineHeightType();
    if (type == QTextBlockFormat::ProportionalHeight)
        height *= std::max(1.0, format.lineHeight() / 100.0);
    else if (type != QTextBlockFormat::SingleHeight)
        height += lines * std::max(0.0, format.lineHeight());
    return height + std::max(0.0, format.topMargin()) + std::max(0.0, format.bottomMargin());
}

double HeightBound::ofTable(const QTextTable &table, double width) const
{
    const QVector<QTextLength> widths = table.format().columnWidthConstraints();
    const double edges = 2.0 * (table.format().cellPadding() + table.format().border())
        + table.format().cellSpacing();
    double height = 0.0;
    for (int row = 0; row < table.rows(); ++row) {
        double highest = 0.0;
        for (int column = 0; column < table.columns(); ++column) {
            const QTextTableCell cell = table.cellAt(row, column);
            if (cell.row() != row || cell.column() != column)
                continue;
            const QTextLength own = widths.value(column);
            const double cellWidth = own.type() == QTextLength::VariableLength
                ? width / table.columns() / 2.0 // room goes to cells that have more text
                : own.value(width);
            highest = std::max(highest, ofParts(cell.begin(), cellWidth - edges) + edges);
        }
        height += highest > maxCellHeight ? maxLayoutHeight : highest;
    }
    return height;
}

double HeightBound::ofParts(QTextFrame::iterator part, double width) const
{
    double height = 0.0;
    for (; !part.atEnd(); ++part) {
        if (part.currentFrame())
            height += ofFrame(*part.currentFrame(), width);
        else if (part.currentBlock().isValid())
            height += ofBlock(part.currentBlock(), width);
    }
    return height;
}

// Frames are nested some dozens deep at most, which reading sees to.
double HeightBound::ofFrame(const QTextFrame &frame, double width) const
{
    const QTextFrameFormat format = frame.frameFormat();
    const double edges = format.topMargin() + format.bottomMargin() + 2.0 * format.padding()
        + 2.0 * format.border();
    if (const auto *table = qobject_cast<const QTextTable *>(&frame))
        return ofTable(*table, width) + edges;
    width
        -= format.leftMargin() + format.rightMargin() + 2.0 * (format.padding() + format.border());
    return std::max(ofParts(frame.begin(), width), format.height().value(0.0)) + edges;
}

/*! A frame whose parts are gone through. */
struct OpenFrame
{
    QTextFrame::iterator place;
    const QTextTable *table; // none for another frame
    double passes; // over its text
};

// A layout measures a cell for each of its rows, and once more for the height of the last one.
double passesOver(const OpenFrame &frame, int position)
{
    return frame.table ? frame.passes * (frame.table->cellAt(position).rowSpan() + 1.0)
                       : frame.passes;
}

bool hasTooMuchInTables(const QTextDocument &text)
{
    constexpr double perParagraph = 60.0; // what it takes besides its letters, each some 0.2 us
    constexpr double mostPasses = 16.0;
    constexpr double allowance = 4.0e6;
    double effort = 0.0;
    double once = 0.0;
    QVector<OpenFrame> open {{text.rootFrame()->begin(), nullptr, 1.0}};
    while (!open.isEmpty()) {
        if (open.last().place.atEnd()) {
            open.removeLast();
            continue;
        }
        const QTextFrame *frame = open.last().place.currentFrame();
        const QTextBlock block = open.last().place.currentBlock();
        const double passes
            = passesOver(open.last(), frame ? frame->firstPosition() : block.position());
        double part = block.length() + perParagraph;
        ++open.last().place;
        const auto *table = qobject_cast<const QTextTable *>(frame);
        if (table)
            part = perParagraph * table->rows() * table->columns(); // those that others span too
        if (frame)
            open.append({frame->begin(), table, passes});
        effort += part * passes;
        once += part;
    }
    return effort > allowance + mostPasses * once;
}

/*! A paragraph, table or frame of the main flow. */
struct FlowPart
{
    QTextFrame::iterator place;
    int end = 0; // position
    double bound = 0.0; // of the height of all parts to here
};

QVector<FlowPart> flowParts(const QTextDocument &text, double width, double unitsPerPoint)
{
    const HeightBound bound(text, unitsPerPoint);
    QVector<FlowPart> parts;
    double height = 0.0;
    for (auto it = text.rootFrame()->begin(); !it.atEnd(); ++it) {
        const QTextBlock block = it.currentBlock();
        if (!it.currentFrame() && !block.isValid())
            continue;
        height += it.currentFrame() ? bound.ofFrame(*it.currentFrame(), width)
                                    : bound.ofBlock(block, width);
        parts.append({it,
                      it.currentFrame() ? it.currentFrame()->lastPosition()
                                        : block.position() + block.length(),
                      height});
    }
    return parts;
}

double bottomOf(const FlowPart &part, QAbstractTextDocumentLayout &layout)
{
    QTextFrame *frame = part.place.currentFrame();
    return frame ? layout.frameBoundingRect(frame).bottom()
                 : layout.blockBoundingRect(part.place.currentBlock()).bottom();
}

// Tables, too; those of pictures are no children of frames.
QVector<QTextFrame *> floatingFrames(const QTextDocument &text)
{
    QVector<QTextFrame *> floats;
    QVector<QTextFrame *> open {text.rootFrame()};
    while (!open.isEmpty()) {
        const QList<QTextFrame *> children = open.takeLast()->childFrames();
        for (QTextFrame *child : children) {
            open.append(child);
            if (child->frameFormat().position() != QTextFrameFormat::InFlow)
                floats.append(child);
        }
    }
    return floats;
}

}

void putFramesIntoFlow(QTextDocument &text)
{
    const QVector<QTextFrame *> floats = floatingFrames(text);
    QTextCursor edit(&text);
    edit.beginEditBlock();
    for (QTextFrame *frame : floats) {
        QTextFrameFormat format = frame->frameFormat();
        format.setPosition(QTextFrameFormat::InFlow);
        frame->setFrameFormat(format);
    }
    edit.endEditBlock();
}

void boundFloats(QTextDocument &text)
{
    constexpr int maxFloats = 200;
    if (floatingFrames(text).size() > maxFloats)
        putFramesIntoFlow(text);
}

// Qt lays a text out again for the size that it has.
void setPage(QTextDocument &text, const QSizeF &page)
{
    if (text.pageSize() != page)
        text.setPageSize(page);
}

bool isTooHigh(QTextDocument &text, double lineWidth, const QSizeF &page, double unitsPerPoint)
{
    if (hasTooMuchInTables(text))
        return true;
    constexpr int step = 200000; // characters that a layout goes on for at most when it is asked
    const QVector<FlowPart> parts = flowParts(text, lineWidth, unitsPerPoint);
    double slack = 0.0; // by which the bound is known to be above the height
    int next = 0; // the part that a step from this one ends in
    for (int i = 0; i < parts.size(); ++i) {
        while (next + 1 < parts.size() && parts[next].end < parts[i].end + step)
            ++next;
        if (parts[next].bound - slack <= maxLayoutHeight)
            continue;
        if (i > 0) {
            setPage(text, page);
            slack = parts[i - 1].bound - bottomOf(parts[i - 1], *text.documentLayout());
        }
        if (parts[next].bound - slack > maxLayoutHeight)
            return true;
    }
    return false;
}
