// SPDX-License-Identifier: MIT
#include <tool/pages/PageWidths.h>

#include <core/MVRTextRange.h>

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextList>
#include <QTextTable>
#include <QVector>

#include <cmath>

namespace {

/*! What columns without a width of their own are taken for. */
enum class WidthSharing {
    Any, /*!< as wide as they may be, which they are where the others hold little */
    Even /*!< all of one width */
};

int indentsOf(const QTextBlock &block)
{
    const QTextList *list = block.textList();
    return block.blockFormat().indent() + (list ? list->format().indent() : 0);
}

/*! Makes the steps of indents so short that the deepest paragraph has room. */
void boundIndentWidth(QTextDocument &text, double room)
{
    int deepest = 0;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next())
        deepest = qMax(deepest, indentsOf(block));
    if (deepest * text.indentWidth() > room)
        text.setIndentWidth(std::floor(room / deepest));
}

/*! \param room  that indents may take
    \param indent  of the steps, from which the left one counts */
QTextBlockFormat keptOnPage(QTextBlockFormat format, double room, double indent, double margin)
{
    const double leftmost = -margin - indent;
    const double left = qBound(leftmost, format.leftMargin(), room - indent);
    const double right = qBound(-margin, format.rightMargin(), room - qMax(0.0, indent + left));
    const double first
        = qBound(leftmost - left, format.textIndent(), room - indent - qMax(0.0, right) - left);
    if (left != format.leftMargin())
        format.setLeftMargin(left);
    if (right != format.rightMargin())
        format.setRightMargin(right);
    if (first != format.textIndent())
        format.setTextIndent(first);
    return format;
}

/*! Makes lengths that are no shares of the whole shorter. */
QTextLength shortened(const QTextLength &length, double factor)
{
    return length.type() == QTextLength::FixedLength
        ? QTextLength(QTextLength::FixedLength, length.rawValue() * factor)
        : length;
}

double fixedWidth(const QVector<QTextLength> &columns)
{
    double width = 0.0;
    for (const QTextLength &column : columns)
        width += column.type() == QTextLength::FixedLength ? column.rawValue() : 0.0;
    return width;
}

double edgesOf(const QTextTableFormat &format)
{
    return 2.0 * (format.border() + format.cellPadding());
}

/*! Leaves half of the lines to what stands in cells, however wide the borders are. */
void boundBorders(QTextTable &table, double lines)
{
    QTextTableFormat format = table.format();
    const double width = table.columns() * (format.cellSpacing() + edgesOf(format));
    if (width <= lines / 2.0)
        return;
    const double factor = lines / 2.0 / width;
    format.setBorder(format.border() * factor);
    format.setCellPadding(format.cellPadding() * factor);
    format.setCellSpacing(format.cellSpacing() * factor);
    table.setFormat(format);
}

/*! Leaves half of a cell to its text. \return the room for this */
double boundEdges(QTextTableCell &cell, double width)
{
    constexpr int edges[] = {QTextFormat::TableCellLeftPadding, QTextFormat::TableCellRightPadding,
                             QTextFormat::TableCellLeftBorder, QTextFormat::TableCellRightBorder};
    QTextCharFormat format = cell.format();
    double sum = 0.0;
    for (const int edge : edges)
        sum += qMax(0.0, format.doubleProperty(edge));
    if (sum <= width / 2.0)
        return width - sum;
    for (const int edge : edges)
        format.setProperty(edge, format.doubleProperty(edge) * width / 2.0 / sum);
    cell.setFormat(format);
    return width / 2.0;
}

/*! Makes a table as wide as lines that goes beyond them by more than \a margin. */
void keepTable(QTextTable &table, double lines, double margin)
{
    boundBorders(table, lines);
    QTextTableFormat format = table.format();
    QVector<QTextLength> columns = format.columnWidthConstraints();
    double width = qMax(0.0, format.leftMargin()) + fixedWidth(columns);
    if (format.width().type() == QTextLength::FixedLength)
        width = qMax(width, format.width().rawValue());
    if (width <= lines + margin)
        return;
    const double factor = lines / width;
    for (QTextLength &column : columns)
        column = shortened(column, factor);
    format.setColumnWidthConstraints(columns);
    format.setWidth(shortened(format.width(), factor));
    format.setLeftMargin(format.leftMargin() * factor);
    table.setFormat(format);
}

/*! What columns of a width of their own leave to each of the others. */
double widthOfOthers(const QVector<QTextLength> &columns, int count, double room,
                     WidthSharing sharing)
{
    double width = room;
    int others = count - int(columns.size());
    for (const QTextLength &column : columns) {
        if (column.type() == QTextLength::VariableLength)
            ++others;
        else
            width -= column.value(room);
    }
    return qMax(0.0, sharing == WidthSharing::Even ? width / qMax(1, others) : width);
}

/*! How columns share the width of their table; read once, as reading takes time for each column. */
struct SharedWidth
{
    SharedWidth(const QTextTable &table, double width, WidthSharing sharing)
        : columns(table.format().columnWidthConstraints())
        , edges(edgesOf(table.format()))
        , room(width)
        , ofOthers(widthOfOthers(columns, table.columns(), width, sharing))
    {
    }

    /*! The room for text in a cell. */
    double ofCell(const QTextTableCell &cell) const
    {
        double width = 0.0;
        for (int i = cell.column(); i < cell.column() + cell.columnSpan(); ++i) {
            const QTextLength column = columns.value(i);
            width += column.type() == QTextLength::VariableLength ? ofOthers : column.value(room);
        }
        return qBound(1.0, width - edges, qMax(1.0, room));
    }

    QVector<QTextLength> columns;
    double edges;
    double room;
    double ofOthers; // columns without a width
};

/*! Goes through a text with the width that its lines have in each frame and cell. */
class WidthKeeper
{
public:
    WidthKeeper(QTextDocument &text, const PageWidths &widths, double inch, WidthSharing sharing)
        : m_text(text)
        , m_widths(widths)
        , m_inch(inch)
        , m_sharing(sharing)
        , m_cursor(&text)
    {
    }

    void keep()
    {
        m_open.append({m_text.rootFrame()->begin(), m_widths.lines, m_widths.margin});
        keepOpen();
    }

    void keep(QTextTable &table)
    {
        keepTable(table, m_widths.lines, 0.0);
        openCells(table, m_widths.lines);
        keepOpen();
    }

private:
    /*! What stands one below the other. */
    struct Flow
    {
        QTextFrame::iterator parts;
        double lines;
        double margin; // into which tables may stand out
    };

    void keepOpen()
    {
        while (!m_open.isEmpty())
            keepFlow(m_open.takeLast());
    }

    void keepFlow(Flow flow)
    {
        for (; !flow.parts.atEnd(); ++flow.parts) {
            QTextFrame *frame = flow.parts.currentFrame();
            if (auto *table = qobject_cast<QTextTable *>(frame)) {
                keepTable(*table, flow.lines, flow.margin);
                openCells(*table, flow.lines);
            } else if (frame) {
                m_open.append({frame->begin(), flow.lines, 0.0});
            } else if (flow.parts.currentBlock().isValid()) {
                keepParagraph(flow.parts.currentBlock(), flow.lines);
                if (m_sharing == WidthSharing::Even)
                    keepPictures(flow.parts.currentBlock(), flow.lines);
            }
        }
    }

    void openCells(const QTextTable &table, double lines)
    {
        const SharedWidth shared(table, lines, m_sharing);
        for (int row = 0; row < table.rows(); ++row) {
            for (int column = 0; column < table.columns(); ++column) {
                QTextTableCell cell = table.cellAt(row, column);
                if (cell.row() != row || cell.column() != column)
                    continue;
                const double width = boundEdges(cell, shared.ofCell(cell));
                m_open.append({cell.begin(), width, 0.0});
            }
        }
    }

    void keepParagraph(const QTextBlock &block, double lines)
    {
        const double indent = indentsOf(block) * m_text.indentWidth();
        const QTextBlockFormat kept = keptOnPage(
            block.blockFormat(), lines - qMin(m_inch, lines / 2.0), indent, m_widths.margin);
        if (kept == block.blockFormat())
            return;
        m_cursor.setPosition(block.position());
        m_cursor.setBlockFormat(kept);
    }

    void keepPictures(const QTextBlock &block, double lines)
    {
        QVector<MVRTextRange> wide;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment run = it.fragment();
            if (run.charFormat().isImageFormat()
                && run.charFormat().toImageFormat().width() > lines)
                wide.append(MVRTextRange(run.position(), run.position() + run.length()));
        }
        for (const MVRTextRange &run : qAsConst(wide)) {
            m_cursor.setPosition(run.start);
            m_cursor.setPosition(run.end, QTextCursor::KeepAnchor);
            QTextImageFormat picture = m_cursor.charFormat().toImageFormat();
            picture.setHeight(qMax(1.0, picture.height() * lines / picture.width()));
            picture.setWidth(lines);
            m_cursor.setCharFormat(picture);
        }
    }

    QTextDocument &m_text;
    PageWidths m_widths;
    double m_inch;
    WidthSharing m_sharing;
    QTextCursor m_cursor;
    QVector<Flow> m_open;
};

}

void keepOnPage(QTextDocument &text, const PageWidths &widths, double inch)
{
    QTextCursor edit(&text);
    edit.beginEditBlock();
    boundIndentWidth(text, widths.lines - qMin(inch, widths.lines / 2.0));
    WidthKeeper(text, widths, inch, WidthSharing::Any).keep();
    edit.endEditBlock();
}

bool keepTablesOnPage(QTextDocument &text, const PageWidths &widths)
{
    QVector<QTextTable *> beyond;
    const QList<QTextFrame *> frames = text.rootFrame()->childFrames();
    for (QTextFrame *frame : frames) {
        auto *table = qobject_cast<QTextTable *>(frame);
        if (table
            && text.documentLayout()->frameBoundingRect(table).right()
                > widths.lines + widths.margin)
            beyond.append(table);
    }
    QTextCursor edit(&text);
    edit.beginEditBlock();
    for (QTextTable *table : qAsConst(beyond))
        WidthKeeper(text, widths, widths.lines, WidthSharing::Even).keep(*table);
    edit.endEditBlock();
    return !beyond.isEmpty();
}
