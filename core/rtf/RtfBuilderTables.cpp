// The part of the builder that makes tables.
#include <core/rtf/RtfBuilder.h>

#include <QTextDocument>
#include <QTextTable>

namespace {

QTextTableFormat tableFormat(const RtfTable &table, const RtfTableGrid &grid)
{
    QTextTableFormat format;
    bool border = false;
    for (const RtfRow &row : table.rows) {
        for (const RtfCellFormat &cell : row.format.cells)
            border = border || cell.border;
    }
    int headers = 0;
    while (headers < grid.rows() && table.rows[headers].format.header)
        ++headers;
    format.setBorder(border ? 1 : 0);
    format.setCellSpacing(0);
    if (border) {
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderCollapse(true);
    }
    if (headers > 0)
        format.setHeaderRowCount(headers);
    QVector<QTextLength> widths;
    for (const int width : grid.widths())
        widths.append(QTextLength(QTextLength::FixedLength, width / 20.0));
    if (!widths.isEmpty())
        format.setColumnWidthConstraints(widths);
    return format;
}

} // namespace

void RtfBuilder::insertTable(const RtfTable &table)
{
    if (table.rows.empty())
        return;
    const RtfTableGrid grid(table);
    if (!grid.isReasonable()) {
        insertAsParagraphs(table);
        return;
    }
    m_started = true;
    QTextTable *made = m_cursor.insertTable(grid.rows(), grid.columns(), tableFormat(table, grid));
    // Each joining of cells makes the toolkit go through the whole table.
    constexpr std::size_t mostWork = 20000000;
    std::size_t work = 0;
    for (const RtfGridCell &place : grid.cells()) {
        if (place.rowSpan == 1 && place.columnSpan == 1)
            continue;
        work += std::size_t(grid.rows()) * std::size_t(grid.columns());
        if (work < mostWork)
            made->mergeCells(place.row, place.column, place.rowSpan, place.columnSpan);
    }
    for (const RtfGridCell &place : grid.cells()) {
        const RtfRow &row = table.rows[place.row];
        insertCell(row.cells[place.index], made, place, row.format.cells.value(place.index));
    }
    m_cursor.setPosition(made->lastPosition() + 1);
    m_cellStart = -1;
    m_blockReady = true;
    m_lastList = 0;
}

void RtfBuilder::insertCell(const RtfCell &cell, QTextTable *table, const RtfGridCell &place,
                            const RtfCellFormat &format)
{
    QTextTableCell made = table->cellAt(place.row, place.column);
    const QColor background = m_formatTables.color(format.background);
    if (background.isValid()) {
        QTextCharFormat cellFormat = made.format();
        cellFormat.setBackground(background);
        made.setFormat(cellFormat);
    }
    m_cellStart = made.firstPosition();
    m_cursor.setPosition(m_cellStart);
    m_blockReady = true;
    for (const RtfCellContent &content : cell) {
        if (content.table)
            insertTable(*content.table);
        else
            insert(content.paragraph);
    }
}

void RtfBuilder::insertAsParagraphs(const RtfTable &table)
{
    for (const RtfRow &row : table.rows) {
        for (const RtfCell &cell : row.cells) {
            for (const RtfCellContent &content : cell) {
                if (content.table)
                    insertTable(*content.table);
                else
                    insert(content.paragraph);
            }
        }
    }
}
