// SPDX-License-Identifier: MIT
// The part of the builder that makes tables and frames.
#include <core/rtf/read/RtfDocumentBuilder.h>

#include <core/rtf/model/RtfExact.h>

#include <QTextDocument>
#include <QTextTable>

namespace {

// A format as it is before anything is set.
template <typename Format> Format bareFormat()
{
    Format format;
    for (const int property : {QTextFormat::FrameBorder, QTextFormat::FrameBorderBrush,
                               QTextFormat::FrameBorderStyle, QTextFormat::TableCellSpacing})
        format.clearProperty(property);
    return format;
}

void setBorders(int borders, QTextCharFormat *format)
{
    struct Row
    {
        RtfCellFormat::Edge edge;
        int width;
        int style;
        int brush;
    };
    static constexpr Row rows[]
        = {{RtfCellFormat::Top, QTextFormat::TableCellTopBorder,
            QTextFormat::TableCellTopBorderStyle, QTextFormat::TableCellTopBorderBrush},
           {RtfCellFormat::Left, QTextFormat::TableCellLeftBorder,
            QTextFormat::TableCellLeftBorderStyle, QTextFormat::TableCellLeftBorderBrush},
           {RtfCellFormat::Bottom, QTextFormat::TableCellBottomBorder,
            QTextFormat::TableCellBottomBorderStyle, QTextFormat::TableCellBottomBorderBrush},
           {RtfCellFormat::Right, QTextFormat::TableCellRightBorder,
            QTextFormat::TableCellRightBorderStyle, QTextFormat::TableCellRightBorderBrush}};
    for (const Row &row : rows) {
        if ((borders & row.edge) == 0)
            continue;
        format->setProperty(row.width, 1.0);
        format->setProperty(row.style, int(QTextFrameFormat::BorderStyle_Solid));
        format->setProperty(row.brush, QBrush(Qt::black));
    }
}

} // namespace

QTextTableFormat RtfDocumentBuilder::tableFormat(const RtfTable &table, const RtfTableGrid &grid)
{
    const RtfExactProperties exact = m_resources.exact.value(table.rows.front().format.exact);
    if (!exact.isEmpty()) {
        auto format = bareFormat<QTextTableFormat>();
        RtfExact::apply(exact, &format);
        return format;
    }
    QTextTableFormat format;
    const RtfTableGrid::Borders borders = grid.borders();
    int headers = 0;
    while (headers < grid.rows() && table.rows[headers].format.header)
        ++headers;
    format.setBorder(borders == RtfTableGrid::AllBorders ? 1 : 0);
    format.setCellSpacing(0);
    format.setBorderCollapse(borders != RtfTableGrid::NoBorders);
    if (borders == RtfTableGrid::AllBorders)
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    if (headers > 0)
        format.setHeaderRowCount(headers);
    const bool isKnown = m_tableWidths.contains(grid.widths());
    if (grid.widths().isEmpty()
        || (!isKnown && m_tableWidths.size() >= RtfResources::maxLookAlikes))
        return format;
    m_tableWidths.insert(grid.widths());
    QVector<QTextLength> widths;
    for (const int width : grid.widths())
        widths.append(QTextLength(QTextLength::FixedLength, width / 20.0));
    format.setColumnWidthConstraints(widths);
    return format;
}

void RtfDocumentBuilder::insertTable(const RtfTable &table)
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
    // Each joining of cells makes Qt go through the whole table.
    constexpr std::size_t maxWork = 20000000;
    std::size_t work = 0;
    for (const RtfGridCell &place : grid.cells()) {
        if (place.rowSpan == 1 && place.columnSpan == 1)
            continue;
        work += std::size_t(grid.rows()) * std::size_t(grid.columns());
        if (work < maxWork)
            made->mergeCells(place.row, place.column, place.rowSpan, place.columnSpan);
    }
    const bool hasBorders = grid.borders() == RtfTableGrid::SomeBorders
        && m_resources.exact.value(table.rows.front().format.exact).isEmpty();
    for (RtfGridCell place : grid.cells()) {
        const RtfRow &row = table.rows[place.row];
        if (!hasBorders) // all of them, which the table's format says, or none
            place.borders = 0;
        insertCell(row.cells[place.index], made, place, row.format.cells.value(place.index));
    }
    m_cursor.setPosition(made->lastPosition() + 1);
    m_cellStart = -1;
    m_blockReady = true;
    m_lastList = 0;
}

void RtfDocumentBuilder::insertCell(const RtfCell &cell, QTextTable *table,
                                    const RtfGridCell &place, const RtfCellFormat &format)
{
    QTextTableCell made = table->cellAt(place.row, place.column);
    const QColor background = m_resources.color(format.background);
    const RtfExactProperties exact = m_resources.exact.value(format.exact);
    if (background.isValid() || place.borders != 0 || !exact.isEmpty()) {
        QTextCharFormat cellFormat = made.format();
        setBorders(place.borders, &cellFormat);
        if (background.isValid())
            cellFormat.setBackground(background);
        RtfExact::apply(exact, &cellFormat);
        made.setFormat(cellFormat);
    }
    m_cellStart = made.firstPosition();
    m_cursor.setPosition(m_cellStart);
    m_blockReady = true;
    const std::size_t outside = std::exchange(m_framesOutside, m_frames.size());
    for (const RtfCellContent &content : cell)
        insertContent(content);
    while (m_frames.size() > m_framesOutside)
        leaveFrame();
    m_framesOutside = outside;
}

void RtfDocumentBuilder::insertContent(const RtfCellContent &content)
{
    switch (content.kind) {
    case RtfCellContent::Paragraph:
        insert(content.paragraph);
        break;
    case RtfCellContent::Table:
        insertTable(*content.table);
        break;
    case RtfCellContent::FrameStart:
        enterFrame(content.frame);
        break;
    case RtfCellContent::FrameEnd:
        leaveFrame();
        break;
    }
}

void RtfDocumentBuilder::insertAsParagraphs(const RtfTable &table)
{
    for (const RtfRow &row : table.rows) {
        for (const RtfCell &cell : row.cells) {
            for (const RtfCellContent &content : cell)
                insertContent(content);
        }
    }
}

void RtfDocumentBuilder::beginFrame(int level, int exact)
{
    closeTables(level);
    openTables(level);
    if (level > 0)
        m_tables.back().cell.push_back({RtfCellContent::FrameStart, {}, nullptr, exact});
    else
        enterFrame(exact);
}

void RtfDocumentBuilder::endFrame(int level)
{
    closeTables(level);
    openTables(level);
    if (level > 0)
        m_tables.back().cell.push_back({RtfCellContent::FrameEnd, {}, nullptr, 0});
    else
        leaveFrame();
}

void RtfDocumentBuilder::enterFrame(int exact)
{
    constexpr std::size_t maxFrameDepth = 30;
    constexpr int maxFrames = 5000;
    if (m_frames.size() >= maxFrameDepth || ++m_frameCount > maxFrames) {
        m_frames.push_back(nullptr);
        return;
    }
    auto format = bareFormat<QTextFrameFormat>();
    RtfExact::apply(m_resources.exact.value(exact), &format);
    m_frames.push_back(m_cursor.insertFrame(format));
    m_cellStart = m_cursor.position(); // inside it
    m_started = m_blockReady = true;
    m_lastList = 0;
}

void RtfDocumentBuilder::leaveFrame()
{
    if (m_frames.size() <= m_framesOutside)
        return;
    const QTextFrame *frame = m_frames.back();
    m_frames.pop_back();
    if (!frame)
        return;
    m_cursor.setPosition(frame->lastPosition() + 1);
    m_cellStart = -1;
    m_blockReady = true;
    m_lastList = 0;
}

void RtfDocumentBuilder::finish()
{
    closeTables(0);
    while (!m_frames.empty())
        leaveFrame();
}
