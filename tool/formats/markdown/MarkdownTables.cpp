// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownTables.h>

#include <tool/formats/markdown/MarkdownLook.h>
#include <tool/formats/markdown/MarkdownParagraphs.h>

#include <QStringList>
#include <QTextList>
#include <QTextTable>

namespace {

QString cellText(const QTextTable &table, int row, int column, MarkdownParagraphs *paragraphs)
{
    const QTextTableCell cell = table.cellAt(row, column);
    if (cell.row() != row || cell.column() != column) // part of a larger one
        return QString();
    const int ignored = row < table.format().headerRowCount() ? MarkdownLook::Bold : 0;
    QStringList texts;
    QTextBlock block = cell.firstCursorPosition().block();
    for (; block.isValid() && block.position() <= cell.lastPosition(); block = block.next()) {
        QString text = paragraphs->text(block, MarkdownPlace::Cell, ignored);
        if (text.isEmpty())
            continue;
        if (block.textList())
            text.prepend(QStringLiteral("\u2022 "));
        texts << text;
    }
    return texts.join(QLatin1String("<br><br>"));
}

QString rowText(const QStringList &cells)
{
    return QLatin1String("| ") + cells.join(QLatin1String(" | ")) + QLatin1String(" |");
}

QString alignmentMark(const QTextTable &table, int column)
{
    const QTextBlockFormat format
        = table.cellAt(0, column).firstCursorPosition().block().blockFormat();
    if (!format.hasProperty(QTextFormat::BlockAlignment))
        return QStringLiteral("---");
    const Qt::Alignment alignment = format.alignment();
    return alignment & Qt::AlignHCenter ? QStringLiteral(":-:")
        : alignment & Qt::AlignRight    ? QStringLiteral("--:")
        : alignment & Qt::AlignLeft     ? QStringLiteral(":--")
                                        : QStringLiteral("---");
}

}

QString markdownTable(const QTextTable &table, MarkdownParagraphs *paragraphs)
{
    QStringList lines;
    QStringList marks;
    QStringList noCells;
    for (int column = 0; column < table.columns(); ++column) {
        marks << alignmentMark(table, column);
        noCells << QString();
    }
    // The first row of a table in Markdown is its head, empty where the table has none.
    if (table.format().headerRowCount() == 0)
        lines << rowText(noCells) << rowText(marks);
    for (int row = 0; row < table.rows(); ++row) {
        QStringList cells;
        for (int column = 0; column < table.columns(); ++column)
            cells << cellText(table, row, column, paragraphs);
        lines << rowText(cells);
        if (row == 0 && table.format().headerRowCount() > 0)
            lines << rowText(marks);
    }
    return lines.join(QLatin1Char('\n'));
}
