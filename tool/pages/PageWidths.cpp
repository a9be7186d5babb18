// SPDX-License-Identifier: MIT
#include <tool/pages/PageWidths.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QVector>

#include <cmath>

namespace {

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

void keepParagraphs(QTextDocument &text, const PageWidths &widths, double least)
{
    const double room = widths.lines - least;
    boundIndentWidth(text, room);
    QTextCursor cursor(&text);
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        const double indent = indentsOf(block) * text.indentWidth();
        const QTextBlockFormat kept = keptOnPage(block.blockFormat(), room, indent, widths.margin);
        if (kept == block.blockFormat())
            continue;
        cursor.setPosition(block.position());
        cursor.setBlockFormat(kept);
    }
}

/*! Makes lengths that are no shares of the whole shorter. */
QTextLength shortened(const QTextLength &length, double factor)
{
    return length.type() == QTextLength::FixedLength
        ? QTextLength(QTextLength::FixedLength, length.rawValue() * factor)
        : length;
}

/*! Leaves half of the lines to what stands in cells, however wide the borders are. */
void boundBorders(QTextTable &table, double lines)
{
    QTextTableFormat format = table.format();
    const double around = format.border() + format.cellPadding();
    const double width = table.columns() * (format.cellSpacing() + 2.0 * around);
    if (width <= lines / 2.0)
        return;
    const double factor = lines / 2.0 / width;
    format.setBorder(format.border() * factor);
    format.setCellPadding(format.cellPadding() * factor);
    format.setCellSpacing(format.cellSpacing() * factor);
    table.setFormat(format);
}

void keepTable(QTextTable &table, const PageWidths &widths)
{
    boundBorders(table, widths.lines);
    QTextTableFormat format = table.format();
    QVector<QTextLength> columns = format.columnWidthConstraints();
    double width = qMax(0.0, format.leftMargin());
    for (const QTextLength &column : qAsConst(columns))
        width += column.type() == QTextLength::FixedLength ? column.rawValue() : 0.0;
    if (format.width().type() == QTextLength::FixedLength)
        width = qMax(width, format.width().rawValue());
    if (width <= widths.lines + widths.margin)
        return;
    const double factor = widths.lines / width;
    for (QTextLength &column : columns)
        column = shortened(column, factor);
    format.setColumnWidthConstraints(columns);
    format.setWidth(shortened(format.width(), factor));
    format.setLeftMargin(format.leftMargin() * factor);
    table.setFormat(format);
}

}

void keepOnPage(QTextDocument &text, const PageWidths &widths, double inch)
{
    QTextCursor edit(&text);
    edit.beginEditBlock();
    keepParagraphs(text, widths, qMin(inch, widths.lines / 2.0));
    QVector<QTextFrame *> open {text.rootFrame()};
    while (!open.isEmpty()) {
        QTextFrame *frame = open.takeLast();
        open += frame->childFrames().toVector();
        if (auto *table = qobject_cast<QTextTable *>(frame))
            keepTable(*table, widths);
    }
    edit.endEditBlock();
}
