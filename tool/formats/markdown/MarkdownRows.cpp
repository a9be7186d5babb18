// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownRows.h>

#include <tool/formats/markdown/MarkdownMarks.h>

#include <QHash>

namespace {

/*! The columns of the table that a line of the source, counted from 1, is a row of. */
QHash<int, int> columnsOfRows(cmark_node *root)
{
    QHash<int, int> columns;
    const CmarkIterator iterator(cmark_iter_new(root));
    for (cmark_event_type event; (event = cmark_iter_next(iterator.get())) != CMARK_EVENT_DONE;) {
        cmark_node *node = cmark_iter_get_node(iterator.get());
        if (event == CMARK_EVENT_ENTER && isCmarkKind(node, "table_row"))
            columns.insert(cmark_node_get_start_line(node),
                           cmark_gfm_extensions_get_table_columns(cmark_node_parent(node)));
    }
    return columns;
}

/*! Makes text of the pipes behind \a columns cells, but for one that ends the row. */
void joinExcessCells(QString &source, int start, int end, int columns)
{
    while (start < end && QStringView(u" \t>").contains(source.at(start)))
        ++start;
    while (end > start && source.at(end - 1).isSpace())
        --end;
    if (start < end && source.at(start) == QLatin1Char('|')) // before the first cell
        ++start;
    int cells = 1;
    for (int i = start; i + 1 < end; ++i) {
        if (source.at(i) == QLatin1Char('\\'))
            ++i;
        else if (source.at(i) == QLatin1Char('|') && ++cells > columns)
            source[i] = QChar(MarkdownMarks::pipe);
    }
}

} // namespace

QString withoutExcessCells(const QString &source, cmark_node *root)
{
    const QHash<int, int> columns = columnsOfRows(root);
    QString joined = source;
    int line = 1;
    for (int start = 0; !columns.isEmpty() && start < source.size(); ++line) {
        const int found = int(source.indexOf(QLatin1Char('\n'), start));
        const int end = found < 0 ? int(source.size()) : found;
        if (const int count = columns.value(line))
            joinExcessCells(joined, start, end, count);
        start = end + 1;
    }
    return joined;
}
