// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownBuilder.h>

#include <tool/formats/markdown/MarkdownLook.h>
#include <tool/formats/markdown/MarkdownMarks.h>

#include <core/MVRTextFormat.h>

#include <QTextBlock>
#include <QTextList>
#include <QTextTable>

using namespace MarkdownLook;

namespace {

constexpr int maxDepth = 100;
// Each item that joins a list makes Qt go through all of them: a long list goes on in another one.
constexpr int maxItems = MarkdownLook::maxListItems;
constexpr int maxNumberedItems = 2000; // as Qt's writers would begin to count anew

QTextListFormat::Style bulletStyle(int depth)
{
    constexpr QTextListFormat::Style styles[]
        = {QTextListFormat::ListDisc, QTextListFormat::ListCircle, QTextListFormat::ListSquare};
    return styles[qMin(depth, 3) - 1];
}

QTextListFormat listFormat(cmark_node *node, int depth, int itemsBefore)
{
    QTextListFormat format;
    format.setIndent(depth);
    if (cmark_node_get_list_type(node) != CMARK_ORDERED_LIST) {
        format.setStyle(bulletStyle(depth));
        return format;
    }
    format.setStyle(QTextListFormat::ListDecimal);
    if (cmark_node_get_list_delim(node) == CMARK_PAREN_DELIM)
        format.setNumberSuffix(QStringLiteral(")"));
    if (const int start = cmark_node_get_list_start(node) + itemsBefore; start != 1)
        format.setProperty(MVRTextFormat::ListStartProperty, start);
    return format;
}

int maxItemsOf(cmark_node *list)
{
    return cmark_node_get_list_type(list) == CMARK_ORDERED_LIST ? maxNumberedItems : maxItems;
}

QTextTableFormat tableFormat()
{
    QTextTableFormat format;
    format.setHeaderRowCount(1);
    format.setCellPadding(3.0);
    format.setCellSpacing(0.0);
    format.setBorder(0.75);
    format.setBorderCollapse(true);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    return format;
}

Qt::Alignment alignment(uint8_t letter)
{
    return letter == 'c' ? Qt::AlignHCenter : letter == 'r' ? Qt::AlignRight : Qt::AlignLeft;
}

QString withoutLineFeed(QString text)
{
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    return text.replace(QLatin1Char('\n'), QChar::LineSeparator);
}

/*! A table without a first row has an empty one in its source. */
bool isEmptyRow(cmark_node *row)
{
    for (cmark_node *cell = cmark_node_first_child(row); cell; cell = cmark_node_next(cell)) {
        if (cmark_node_first_child(cell))
            return false;
    }
    return true;
}

QVector<cmark_node *> rowsOf(cmark_node *table)
{
    QVector<cmark_node *> rows;
    for (cmark_node *row = cmark_node_first_child(table); row; row = cmark_node_next(row))
        rows.append(row);
    return rows;
}

/*! Takes "[x] " from the start of an item's paragraph. The parser's own way with tasks misses
    those in quotes. */
void takeTaskMark(cmark_node *paragraph, QTextBlockFormat *format)
{
    static const QString unchecked = QLatin1Char('[') + QString(QChar(MarkdownMarks::task));
    QVector<cmark_node *> nodes;
    QString text;
    for (cmark_node *node = cmark_node_first_child(paragraph);
         node && nodes.size() < 4 && text.size() < 5; node = cmark_node_next(node)) {
        if (cmark_node_get_type(node) != CMARK_NODE_TEXT)
            break;
        nodes.append(node);
        text += cmarkText(node);
    }
    if (!text.startsWith(unchecked) || text.size() < 5 || text.at(3) != QLatin1Char(']'))
        return;
    format->setMarker(text.at(2) == QLatin1Char(' ') ? QTextBlockFormat::MarkerType::Unchecked
                                                     : QTextBlockFormat::MarkerType::Checked);
    for (cmark_node *node : qAsConst(nodes))
        cmark_node_set_literal(node, "");
    cmark_node_set_literal(nodes.last(), text.mid(5).toUtf8().constData());
}

} // namespace

MarkdownBuilder::MarkdownBuilder(QTextDocument *document)
    : m_cursor(document)
{
}

bool MarkdownBuilder::build(cmark_node *root)
{
    const CmarkIterator iterator(cmark_iter_new(root));
    for (cmark_event_type event; (event = cmark_iter_next(iterator.get())) != CMARK_EVENT_DONE;) {
        cmark_node *node = cmark_iter_get_node(iterator.get());
        if (node == root)
            continue;
        if (event == CMARK_EVENT_EXIT)
            leave(node);
        else if (takeLeaf(node)) // and its exit is passed over, too
            cmark_iter_reset(iterator.get(), node, CMARK_EVENT_EXIT);
        else if (!enter(node))
            return false;
    }
    m_notes += m_early;
    return true;
}

bool MarkdownBuilder::enter(cmark_node *node)
{
    const cmark_node_type type = cmark_node_get_type(node);
    if (type == CMARK_NODE_BLOCK_QUOTE) {
        startItems();
        ++m_quotes;
    } else if (type == CMARK_NODE_LIST) {
        startItems();
        List list;
        list.node = node;
        m_lists.append(list);
    } else if (type == CMARK_NODE_ITEM && !m_lists.isEmpty()) {
        m_lists.last().isItemOpen = true;
    }
    return m_quotes + m_lists.size() <= maxDepth;
}

void MarkdownBuilder::leave(cmark_node *node)
{
    const cmark_node_type type = cmark_node_get_type(node);
    if (type == CMARK_NODE_BLOCK_QUOTE)
        --m_quotes;
    else if (type == CMARK_NODE_ITEM)
        startItems();
    else if (type == CMARK_NODE_LIST)
        m_lists.removeLast();
}

/*! Takes in a node that holds no other blocks; false for any other. */
bool MarkdownBuilder::takeLeaf(cmark_node *node)
{
    const cmark_node_type type = cmark_node_get_type(node);
    if (type == CMARK_NODE_PARAGRAPH) {
        QTextBlockFormat format = blockFormat();
        if (!m_lists.isEmpty() && m_lists.last().isItemOpen)
            takeTaskMark(node, &format);
        addParagraph(node, format, QTextCharFormat());
    } else if (type == CMARK_NODE_HEADING) {
        const int level = cmark_node_get_heading_level(node);
        QTextBlockFormat format = blockFormat();
        format.setHeadingLevel(level);
        format.setTopMargin(2 * paragraphSpace);
        addParagraph(node, format, headingFormat(level));
    } else if (type == CMARK_NODE_CODE_BLOCK) {
        addCode(node);
    } else if (type == CMARK_NODE_HTML_BLOCK) {
        addHtml(node);
    } else if (type == CMARK_NODE_THEMATIC_BREAK) {
        addRule();
    } else if (type == CMARK_NODE_FOOTNOTE_DEFINITION) {
        m_definitions.append(node);
    } else if (isCmarkKind(node, "table")) {
        addTable(node);
    } else {
        return false;
    }
    return true;
}

QTextBlockFormat MarkdownBuilder::blockFormat() const
{
    QTextBlockFormat format;
    const bool isTight = !m_lists.isEmpty() && cmark_node_get_list_tight(m_lists.last().node) != 0;
    format.setTopMargin(isTight ? 0.0 : paragraphSpace);
    format.setBottomMargin(isTight ? 0.0 : paragraphSpace);
    if (m_quotes > 0) {
        format.setProperty(QTextFormat::BlockQuoteLevel, m_quotes);
        format.setLeftMargin(quoteIndent * m_quotes);
        format.setRightMargin(quoteIndent);
    }
    return format;
}

void MarkdownBuilder::startBlock(QTextBlockFormat format, const QTextCharFormat &charFormat)
{
    List *list = m_lists.isEmpty() ? nullptr : &m_lists.last();
    const bool isItem = list && list->isItemOpen;
    if (list && !isItem)
        format.setIndent(m_lists.size());
    if (isItem && list->list && list->list->count() >= maxItemsOf(list->node))
        list->list = nullptr;
    if (isItem && list->list)
        format.setObjectIndex(list->list->objectIndex());
    if (m_isBlockFree) {
        m_cursor.setBlockFormat(format);
        m_cursor.setBlockCharFormat(charFormat);
    } else {
        m_cursor.insertBlock(format, charFormat);
    }
    if (isItem && !list->list)
        list->list = m_cursor.createList(listFormat(list->node, m_lists.size(), list->items));
    if (isItem) {
        list->isItemOpen = false;
        ++list->items;
    }
    m_isBlockFree = false;
}

/*! Items that begin with another list, with a quote, or with nothing have an empty paragraph. */
void MarkdownBuilder::startItems()
{
    if (!m_lists.isEmpty() && m_lists.last().isItemOpen)
        startBlock(blockFormat(), QTextCharFormat());
}

void MarkdownBuilder::addText(const MarkdownText &text)
{
    const int start = m_cursor.position();
    for (const MarkdownRun &run : text.runs)
        m_cursor.insertText(run.text, run.format);
    for (MarkdownNote note : text.notes) {
        note.start += start;
        note.end += start;
        m_notes.append(note);
    }
    if (m_early.isEmpty() || start == m_cursor.position())
        return;
    // A comment with no text before it is about the first word behind it.
    const QString &first = text.runs.first().text;
    const int end = int(first.indexOf(QLatin1Char(' ')));
    for (MarkdownNote note : qAsConst(m_early)) {
        note.start = start;
        note.end = start + (end > 0 ? end : int(first.size()));
        m_notes.append(note);
    }
    m_early.clear();
}

void MarkdownBuilder::addParagraph(cmark_node *node, const QTextBlockFormat &format,
                                   const QTextCharFormat &charFormat)
{
    startBlock(format, charFormat);
    addText(readMarkdownText(node, charFormat));
}

void MarkdownBuilder::addCode(cmark_node *node)
{
    QTextBlockFormat format = blockFormat();
    format.setNonBreakableLines(true);
    format.setProperty(QTextFormat::BlockCodeFence, QStringLiteral("`"));
    const QString language
        = MarkdownMarks::unmarked(QString::fromUtf8(cmark_node_get_fence_info(node)));
    if (!language.isEmpty())
        format.setProperty(QTextFormat::BlockCodeLanguage, language);
    QTextCharFormat code;
    setStyle(&code, Code);
    startBlock(format, code);
    m_cursor.insertText(withoutLineFeed(MarkdownMarks::unmarked(cmarkText(node))), code);
}

void MarkdownBuilder::addHtml(cmark_node *node)
{
    const QString html = MarkdownMarks::unmarked(cmarkText(node)).trimmed();
    const QString comment = htmlComment(html);
    if (comment.isNull()) {
        startBlock(blockFormat(), QTextCharFormat());
        m_cursor.insertText(withoutLineFeed(html));
    } else if (!comment.isEmpty()) {
        MarkdownNote note;
        note.start = note.end = m_cursor.position();
        note.comment = {
            {QString(comment).replace(QLatin1Char('\n'), QChar::LineSeparator), QTextCharFormat()}};
        (m_cursor.block().length() > 1 ? m_notes : m_early).append(note);
    }
}

void MarkdownBuilder::addRule()
{
    QTextBlockFormat format = blockFormat();
    format.setProperty(QTextFormat::BlockTrailingHorizontalRulerWidth,
                       QTextLength(QTextLength::PercentageLength, 100));
    startBlock(format, QTextCharFormat());
}

void MarkdownBuilder::addTable(cmark_node *node)
{
    startItems();
    QVector<cmark_node *> rows = rowsOf(node);
    const int columns = cmark_gfm_extensions_get_table_columns(node);
    QTextTableFormat format = tableFormat();
    if (rows.size() > 1 && isEmptyRow(rows.first())) {
        rows.removeFirst();
        format.setHeaderRowCount(0);
    }
    const uint8_t *alignments = cmark_gfm_extensions_get_table_alignments(node);
    QTextTable *table = m_cursor.insertTable(rows.size(), columns, format);
    for (int row = 0; row < rows.size(); ++row) {
        QTextCharFormat charFormat;
        if (row < format.headerRowCount())
            charFormat.setFontWeight(QFont::Bold);
        cmark_node *cell = cmark_node_first_child(rows.at(row));
        for (int column = 0; cell && column < columns; ++column, cell = cmark_node_next(cell)) {
            m_cursor.setPosition(table->cellAt(row, column).firstPosition());
            QTextBlockFormat cellFormat;
            if (alignments && alignments[column] != 0)
                cellFormat.setAlignment(alignment(alignments[column]));
            m_cursor.setBlockFormat(cellFormat);
            m_cursor.setBlockCharFormat(charFormat);
            addText(readMarkdownText(cell, charFormat));
        }
    }
    m_cursor.movePosition(QTextCursor::End);
    m_isBlockFree = true;
}
