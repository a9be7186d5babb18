// SPDX-License-Identifier: MIT
#include <tool/pages/PageSlices.h>

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>
#include <QTextTable>

#include <algorithm>

namespace {

constexpr int linesKept = 2; // of a paragraph, on each side of a break
constexpr int KeptTogether = QTextFormat::UserProperty + 0x3501; // of a paragraph: bool
constexpr int PageBreaks = QTextFormat::UserProperty + 0x3502; // PageBreakFlags

/*! Leaves room between columns: what a part of one touches is drawn with it. */
void partColumns(QVector<RowColumn> &columns)
{
    std::sort(columns.begin(), columns.end(),
              [](const RowColumn &a, const RowColumn &b) { return a.left < b.left; });
    for (int i = 0; i < columns.size(); ++i) {
        RowColumn &column = columns[i];
        if (i + 1 < columns.size())
            column.right = qMin(column.right, columns[i + 1].left - 1.0);
        column.right = qMax(column.right, column.left + 1.0);
    }
}

/*! Makes one column of those that stand above each other. */
void joinColumns(QVector<RowColumn> &columns)
{
    std::sort(columns.begin(), columns.end(),
              [](const RowColumn &a, const RowColumn &b) { return a.left < b.left; });
    QVector<RowColumn> joined;
    for (const RowColumn &column : qAsConst(columns)) {
        if (joined.isEmpty() || column.left >= joined.last().right) {
            joined.append(column);
            continue;
        }
        joined.last().right = qMax(joined.last().right, column.right);
        joined.last().lines += column.lines;
    }
    for (RowColumn &column : joined)
        std::stable_sort(column.lines.begin(), column.lines.end(),
                         [](const RowLine &a, const RowLine &b) { return a.top < b.top; });
    columns = joined;
}

/*! Where the lines of a paragraph part, and where each is drawn, in the layout's units. */
class ParagraphLines
{
public:
    /*! \param origin  from which the lines of \a layout count */
    ParagraphLines(const QTextLayout &layout, double origin)
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

    int size() const { return m_tops.size(); }
    double top(int line) const { return m_tops[line]; }
    double bottom(int line) const { return m_bottoms[line]; }

    /*! Where pages part before a line: above its letters, or as lines part that are too close. */
    double cutAbove(int line) const
    {
        if (m_tops[line] >= m_bottoms[line - 1])
            return m_tops[line];
        const double distance = m_baselines[line] - m_baselines[line - 1];
        return qMax(m_tops[line], m_baselines[line - 1] + belowBaseline * distance);
    }

    /*!
        Where drawing begins so that a line is the first one: behind its own end, as the toolkit
        draws the last line that ends above, and not behind that of any line below. Behind the
        place of the last line, the toolkit may take letters for those of the next paragraph.
    */
    double drawnTop(int line) const
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

private:
    static constexpr double belowBaseline = 0.2; // share of the distance of lines
    static constexpr double ofLastLine = 0.75; // share of the distance
    static constexpr double spare = 1.0; // units; a place between lines is never exact
    QVector<double> m_tops;
    QVector<double> m_bottoms;
    QVector<double> m_baselines;
    QVector<double> m_lowestEnds; // of the line and all below
};

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
                addTable(*table);
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
    void addTable(const QTextTable &table);
    void addFrame(QTextFrame &frame);
    QRectF tableRect(const QTextTable &table) const;
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

// The toolkit has a table begin where the text of its first cell does, be that in the middle of a
// row.
QRectF ItemCollector::tableRect(const QTextTable &table) const
{
    QRectF rect = m_layout.frameBoundingRect(const_cast<QTextTable *>(&table));
    double top = rect.top();
    for (int column = 0; column < table.columns(); ++column) {
        const QTextBlock block = table.cellAt(0, column).firstCursorPosition().block();
        top = qMin(top, m_layout.blockBoundingRect(block).top());
    }
    rect.moveTop(qMin(rect.top(), qMax(top, qMax(m_blockBottom, m_tableBottom))));
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

void ItemCollector::addTable(const QTextTable &table)
{
    const QRectF rect = tableRect(table);
    const int headRows = qMin(table.format().headerRowCount(), table.rows() - 1);
    double headBottom = rect.top();
    int tied = 0; // cells from above reach into the rows before this one
    FlowItem item; // of rows that are tied together
    bool isTied = false;
    const auto addItem = [&] {
        if (isTied)
            joinColumns(item.columns);
        partColumns(item.columns);
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

void wrapLines(QTextDocument &text)
{
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        if (!block.blockFormat().nonBreakableLines())
            continue;
        QTextBlockFormat format = block.blockFormat();
        format.clearProperty(QTextFormat::BlockNonBreakableLines);
        format.setProperty(KeptTogether, true);
        QTextCursor(block).setBlockFormat(format);
    }
}

void takeBreaks(QTextDocument &text)
{
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        if (!format.hasProperty(QTextFormat::PageBreakPolicy))
            continue;
        format.setProperty(PageBreaks, int(format.pageBreakPolicy()));
        format.clearProperty(QTextFormat::PageBreakPolicy);
        QTextCursor(block).setBlockFormat(format);
    }
    const QList<QTextFrame *> frames = text.findChildren<QTextFrame *>();
    for (QTextFrame *frame : frames) {
        QTextFrameFormat format = frame->frameFormat();
        if (!format.hasProperty(QTextFormat::PageBreakPolicy))
            continue;
        format.setProperty(PageBreaks, int(format.pageBreakPolicy()));
        format.clearProperty(QTextFormat::PageBreakPolicy);
        frame->setFrameFormat(format);
    }
}

QVector<FlowItem> flowItems(const QTextDocument &text)
{
    return ItemCollector(text).collect(text);
}
