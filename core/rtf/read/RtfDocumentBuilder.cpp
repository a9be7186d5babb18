// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfDocumentBuilder.h>

#include <QTextDocument>
#include <QTextList>

namespace {

// Each item that joins a list makes Qt go through all of them. A long list is cut in
// parts; with bullets that cannot be seen, so those are cut earlier.
int maxItems(const QTextListFormat &format)
{
    return format.style() <= QTextListFormat::ListDecimal ? 2000 : 500;
}

} // namespace

RtfDocumentBuilder::RtfDocumentBuilder(QTextDocument *document, const RtfFormatCache &formats,
                                       const RtfResources &resources, const RtfLists &lists)
    : m_cursor(document ? QTextCursor(document) : QTextCursor())
    , m_formats(formats)
    , m_resources(resources)
    , m_listFormats(lists)
{
}

void RtfDocumentBuilder::endParagraph(const RtfParagraphEnd &end)
{
    closeTables(end.tableLevel);
    if (end.tableLevel > 0) {
        openTables(end.tableLevel);
        addToCell(end);
        return;
    }
    m_paragraph.end = end;
    insert(m_paragraph);
    m_paragraph.text.resize(0); // keeps the capacity, unlike clear()
    m_paragraph.runs.clear();
    m_paragraph.marks.clear();
}

int RtfDocumentBuilder::addMark()
{
    const int number = static_cast<int>(m_markPositions.size());
    m_markPositions.push_back(-1);
    m_paragraph.marks.push_back({int(m_paragraph.text.size()), number});
    return number;
}

int RtfDocumentBuilder::markPosition(int number) const
{
    const int position = m_markPositions[number];
    return position >= 0 ? position : m_cursor.document()->characterCount() - 1;
}

void RtfDocumentBuilder::endCell(RtfParagraphEnd end)
{
    end.tableLevel = qMax(end.tableLevel, 1);
    closeTables(end.tableLevel);
    openTables(end.tableLevel);
    addToCell(end);
    m_tables.back().endCell();
}

void RtfDocumentBuilder::endRow(int level, const RtfRowFormat &format)
{
    closeTables(level);
    if (static_cast<int>(m_tables.size()) == level)
        m_tables.back().endRow(format);
}

void RtfDocumentBuilder::openTables(int level)
{
    while (static_cast<int>(m_tables.size()) < level)
        m_tables.emplace_back();
}

void RtfDocumentBuilder::closeTables(int level)
{
    while (static_cast<int>(m_tables.size()) > level) {
        auto table = std::make_unique<RtfTable>(std::move(m_tables.back()));
        m_tables.pop_back();
        table->endRow({}); // a row that its words never ended
        if (m_tables.empty())
            insertTable(*table);
        else
            m_tables.back().cell.push_back({RtfCellContent::Table, {}, std::move(table), 0});
    }
}

void RtfDocumentBuilder::addToCell(const RtfParagraphEnd &end)
{
    m_paragraph.end = end;
    m_tables.back().cell.push_back({RtfCellContent::Paragraph, std::move(m_paragraph), nullptr, 0});
    m_paragraph = {};
}

void RtfDocumentBuilder::insert(const RtfParagraph &paragraph)
{
    if (paragraph.end.list != 0)
        insertItem(paragraph);
    else
        insertBlock(m_formats.blockFormat(paragraph.end.blockFormat),
                    m_formats.charFormat(paragraph.end.markFormat));
    m_lastList = paragraph.end.list;

    for (const RtfMark &mark : paragraph.marks)
        m_markPositions[mark.number] = m_cursor.position() + mark.offset;

    const std::vector<RtfRun> &runs = paragraph.runs;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const int start = runs[i].start;
        const int end = i + 1 < runs.size() ? runs[i + 1].start : paragraph.text.size();
        if (end > start)
            m_cursor.insertText(
                QString::fromRawData(paragraph.text.constData() + start, end - start),
                m_formats.charFormat(runs[i].charFormat));
    }
}

void RtfDocumentBuilder::insertBlock(const QTextBlockFormat &blockFormat,
                                     const QTextCharFormat &markFormat)
{
    const bool first = !m_started;
    m_started = true;
    if (!m_blockReady) {
        m_cursor.insertBlock(blockFormat, markFormat);
        return;
    }
    // A document, a cell and what is behind a table are born with their first block; the last
    // has the formatting of the block that the table was put into.
    m_blockReady = false;
    if (!first || !blockFormat.isEmpty())
        m_cursor.setBlockFormat(blockFormat);
    const bool ofCell = m_cellStart == m_cursor.position(); // there it is the cell's format
    if (!ofCell && !markFormat.isEmpty())
        m_cursor.setBlockCharFormat(markFormat);
}

void RtfDocumentBuilder::insertItem(const RtfParagraph &paragraph)
{
    const RtfParagraphEnd &end = paragraph.end;
    // Old files have no lists, only items.
    const bool resumes = end.list < RtfLists::firstOldList || end.list == m_lastList;
    // What lies below an item starts again with it, whatever stands between.
    for (int deeper = end.listLevel + 1; deeper < RtfLists::levels; ++deeper)
        m_lists.remove({end.list, deeper});

    QTextList *list = resumes ? m_lists.value({end.list, end.listLevel}) : nullptr;
    if (list && list->count() >= maxItems(list->format()))
        list = nullptr;
    QTextBlockFormat format = m_formats.blockFormat(end.blockFormat);
    if (list)
        format.setObjectIndex(list->objectIndex());
    insertBlock(format, m_formats.charFormat(end.markFormat));
    if (!list)
        m_lists.insert(
            {end.list, end.listLevel},
            m_cursor.createList(m_listFormats.format(end.list, end.listLevel, m_resources)));
}
