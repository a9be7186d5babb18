// SPDX-License-Identifier: MIT
#include <tool/pages/PageBreaks.h>
#include <tool/pages/PageSlices.h>
#include <tool/pages/ParagraphLines.h>
#include <tool/pages/RowColumns.h>

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>
#include <QTextTable>

#include <algorithm>

namespace {

constexpr int linesKept = 2; // of a paragraph, on each side of a break

/*! At least so far the second line of a paragraph, or the next one, is from the first. */
double lineHeight(const QTextBlock &block)
{
    const QTextBlockFormat format = block.blockFormat();
    if (format.lineHeightType() == QTextBlockFormat::FixedHeight)
        return format.lineHeight();
    return block.layout()->lineCount() > 0 ? block.layout()->lineAt(0).height() : 0.0;
}

/*! Collects the items of a text's main flow. */
class ItemCollector
{
public:
    explicit ItemCollector(const QTextDocument &text)
        : m_layout(*text.documentLayout())
    {
    }

    QVector<FlowItem> collect(const QTextDocument &text)
    {
        for (auto it = text.rootFrame()->begin(); !it.atEnd(); ++it) {
            if (const auto *table = qobject_cast<QTextTable *>(it.currentFrame()))
                addTable(*table, topBehind(it));
            else if (it.currentFrame())
                addFrame(*it.currentFrame());
            else if (it.currentBlock().isValid())
                addBlock(it.currentBlock());
        }
        return m_items;
    }

private:
    void append(FlowItem item)
    {
        item.startsPage = item.startsPage || m_breaksNext;
        item.mayStartPage = item.mayStartPage && !m_keepsNext;
        m_breaksNext = false;
        m_keepsNext = false;
        m_items.append(item);
    }
    void breakBefore(const QTextFrame &frame)
    {
        const int policy = frame.frameFormat().intProperty(PageBreaks);
        const bool isFirst = frame.firstPosition() <= 1; // but for a paragraph that has to be there
        m_breaksNext = m_breaksNext || (!isFirst && (policy & QTextFormat::PageBreak_AlwaysBefore));
    }
    void breakBehind(const QTextFrame &frame)
    {
        const int policy = frame.frameFormat().intProperty(PageBreaks);
        m_breaksNext = policy & QTextFormat::PageBreak_AlwaysAfter;
    }

    void addBlock(const QTextBlock &block);
    void addTable(const QTextTable &table, double end);
    void keepHiddenParagraph(const QRectF &table);
    void addFrame(QTextFrame &frame);
    double topBehind(const QTextFrame::iterator &table) const;
    double topOfCells(const QTextTable &table) const;
    QRectF tableRect(const QTextTable &table, double end) const;
    FlowItem row(const QTextTable &table, int row, const QRectF &rect, int *tied) const;
    RowColumn column(QTextBlock block, int end) const;
    void addLines(const QTextBlock &block, double top, bool mayBegin, RowColumn &column) const;

    QAbstractTextDocumentLayout &m_layout;
    QVector<FlowItem> m_items;
    double m_tableBottom = 0.0; // of the last one
    double m_blockBottom = 0.0;
    bool m_breaksNext = false;
    bool m_keepsNext = false; // a heading was the last
};

/*! Makes the item of a whole paragraph that of one of its lines. */
void placeLine(FlowItem &item, const QTextBlock &block, const ParagraphLines &places, int number)
{
    const QTextLine line = block.layout()->lineAt(number);
    const bool isLast = number + 1 == places.size();
    if (number > 0)
        item.top = places.cutAbove(number);
    if (!isLast)
        item.bottom = places.cutAbove(number + 1);
    item.drawnTop = places.drawnTop(number);
    item.above = qMax(0.0, item.top - places.top(number));
    item.below = qMax(0.0, places.bottom(number) - item.bottom);
    item.start = block.position() + line.textStart();
    if (!isLast)
        item.end = item.start + line.textLength();
}

void ItemCollector::addBlock(const QTextBlock &block)
{
    const QTextLayout &layout = *block.layout();
    const QRectF rect = m_layout.blockBoundingRect(block);
    const int lines = qMax(1, layout.lineCount());
    const bool isHeading = block.blockFormat().headingLevel() > 0;
    const bool breaks = !isHeading && !block.blockFormat().boolProperty(KeptTogether);
    const int policy = block.blockFormat().intProperty(PageBreaks);
    const ParagraphLines places(layout, rect.top());
    const double bottom = rect.bottom() + layout.boundingRect().top(); // which the first line has
    for (int i = 0; i < lines; ++i) {
        FlowItem item;
        item.start = block.position();
        item.end = block.position() + block.length();
        item.top = rect.top();
        item.bottom = bottom;
        if (i < places.size())
            placeLine(item, block, places, i);
        if (block.length() == 1) { // behind a table the toolkit has it stand beside the last row
            item.top = qMax(item.top, m_tableBottom);
            item.bottom = qMax(item.top, item.bottom);
        }
        if (i == 0) // the paragraph above may reach into its first line
            item.drawnTop
                = qMax(item.top, qMin(m_blockBottom + 1.0, rect.top() + lineHeight(block) / 2.0));
        item.startsPage = i == 0 && (policy & QTextFormat::PageBreak_AlwaysBefore);
        if (i > 0)
            item.mayStartPage = breaks && i >= linesKept && lines - i >= linesKept;
        append(item);
    }
    m_blockBottom = rect.bottom();
    m_keepsNext = isHeading;
    m_breaksNext = policy & QTextFormat::PageBreak_AlwaysAfter;
}

double ItemCollector::topOfCells(const QTextTable &table) const
{
    double top = m_layout.documentSize().height();
    for (int column = 0; column < table.columns(); ++column) {
        const QTextBlock block = table.cellAt(0, column).firstCursorPosition().block();
        top = qMin(top, m_layout.blockBoundingRect(block).top());
    }
    return top;
}

/*! Where that begins which stands below a table; an empty paragraph stands beside its last row. */
double ItemCollector::topBehind(const QTextFrame::iterator &table) const
{
    QTextFrame::iterator behind = table;
    ++behind;
    if (behind.currentBlock().isValid() && behind.currentBlock().length() == 1)
        ++behind;
    if (const auto *next = qobject_cast<QTextTable *>(behind.currentFrame()))
        return topOfCells(*next);
    if (behind.currentFrame())
        return m_layout.frameBoundingRect(behind.currentFrame()).top();
    const QTextBlock block = behind.currentBlock();
    return block.isValid() ? m_layout.blockBoundingRect(block).top()
                           : m_layout.documentSize().height();
}

// The toolkit has a table begin where the text of its first cell does, be that in the middle of a
// row, and below its margin.
QRectF ItemCollector::tableRect(const QTextTable &table, double end) const
{
    QRectF rect = m_layout.frameBoundingRect(const_cast<QTextTable *>(&table));
    const double top = qMax(topOfCells(table), qMax(m_blockBottom, m_tableBottom));
    rect.moveTop(qMin(rect.top(), top));
    rect.setBottom(qMax(rect.top(), qMin(rect.bottom(), end)));
    return rect;
}

/*! A row down to the table's end; \a tied becomes the row that its cells do not reach. */
FlowItem ItemCollector::row(const QTextTable &table, int row, const QRectF &rect, int *tied) const
{
    FlowItem item;
    item.top = row == 0 ? rect.top() : rect.bottom();
    item.bottom = rect.bottom();
    for (int column = 0; column < table.columns(); ++column) {
        const QTextTableCell cell = table.cellAt(row, column);
        *tied = qMax(*tied, cell.row() + cell.rowSpan());
        if (row > 0 && cell.row() == row)
            item.top = qMin(item.top,
                            m_layout.blockBoundingRect(cell.firstCursorPosition().block()).top()
                                - table.format().cellPadding() - table.format().border());
        if (cell.row() == row && cell.column() == column) {
            item.end = qMax(item.end, cell.lastPosition() + 1);
            item.start
                = item.start == 0 ? cell.firstPosition() : qMin(item.start, cell.firstPosition());
            item.columns.append(
                this->column(cell.firstCursorPosition().block(), cell.lastPosition()));
        }
    }
    return item;
}

// The toolkit has an empty paragraph before a table stand on its first row.
void ItemCollector::keepHiddenParagraph(const QRectF &table)
{
    if (m_items.isEmpty() || m_items.last().end - m_items.last().start != 1)
        return;
    FlowItem &hidden = m_items.last();
    hidden.bottom = qMax(hidden.top, qMin(hidden.bottom, table.top()));
    m_keepsNext = true;
}

/*! \param end  what stands behind the table begins there */
void ItemCollector::addTable(const QTextTable &table, double end)
{
    const QRectF rect = tableRect(table, end);
    keepHiddenParagraph(rect);
    const int headRows = qMin(table.format().headerRowCount(), table.rows() - 1);
    double headBottom = rect.top();
    int tied = 0; // cells from above reach into the rows before this one
    FlowItem item; // of rows that are tied together
    bool isTied = false;
    const auto addItem = [&] {
        if (isTied)
            joinColumns(item.columns);
        partColumns(item.columns);
        item.below = reachBelow(item);
        append(item);
    };
    breakBefore(table);
    for (int row = 0; row < table.rows(); ++row) {
        const bool isTiedRow = tied > row;
        FlowItem next = this->row(table, row, rect, &tied);
        next.mayStartPage = row == 0 || row > headRows;
        next.top = qMax(next.top, item.top);
        if (row == headRows)
            headBottom = headRows > 0 ? next.top : rect.top();
        if (row >= headRows && headRows > 0) {
            next.headTop = rect.top();
            next.headBottom = headBottom;
        }
        if (isTiedRow) {
            item.end = qMax(item.end, next.end);
            item.columns += next.columns;
        } else {
            item.bottom = next.top;
            if (row > 0)
                addItem();
            item = next;
        }
        isTied = isTiedRow;
    }
    addItem();
    m_tableBottom = rect.bottom();
    breakBehind(table);
}

void ItemCollector::addFrame(QTextFrame &frame)
{
    const QRectF rect = m_layout.frameBoundingRect(&frame);
    breakBefore(frame);
    FlowItem item;
    item.top = rect.top();
    item.bottom = rect.bottom();
    item.start = frame.firstPosition();
    item.end = frame.lastPosition() + 1;
    item.columns.append(column(frame.firstCursorPosition().block(), frame.lastPosition()));
    append(item);
    breakBehind(frame);
}

RowColumn ItemCollector::column(QTextBlock block, int end) const
{
    RowColumn column;
    bool isBehindHeading = false;
    for (; block.isValid() && block.position() <= end; block = block.next()) {
        const QRectF rect = m_layout.blockBoundingRect(block);
        const bool isFirst = column.lines.isEmpty();
        column.left = isFirst ? rect.left() : qMin(column.left, rect.left());
        column.right = isFirst ? rect.right() : qMax(column.right, rect.right());
        addLines(block, rect.top(), !isBehindHeading, column);
        isBehindHeading = block.blockFormat().headingLevel() > 0;
    }
    // Those of a table in the cell stand beside each other.
    std::stable_sort(column.lines.begin(), column.lines.end(),
                     [](const RowLine &a, const RowLine &b) { return a.top < b.top; });
    return column;
}

void ItemCollector::addLines(const QTextBlock &block, double top, bool mayBegin,
                             RowColumn &column) const
{
    const QTextLayout &layout = *block.layout();
    const int lines = layout.lineCount();
    const bool breaks = !block.blockFormat().boolProperty(KeptTogether);
    const ParagraphLines places(layout, top);
    for (int i = 0; i < lines; ++i) {
        RowLine made;
        made.top = places.top(i);
        made.bottom = places.bottom(i);
        made.drawnTop = places.drawnTop(i);
        made.mayStartPage = i == 0 ? mayBegin : breaks && i >= linesKept && lines - i >= linesKept;
        column.lines.append(made);
    }
}

}

QVector<FlowItem> flowItems(const QTextDocument &text)
{
    return ItemCollector(text).collect(text);
}
