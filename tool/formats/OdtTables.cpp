// SPDX-License-Identifier: MIT
#include <tool/formats/OdtTables.h>

#include <core/document/EditBlock_p.h>

#include <QTextBlock>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QVector>

namespace {

struct Piece
{
    QString text;
    QTextCharFormat format;
};

QString markOf(const QTextBlock &block)
{
    const QTextList *list = block.textList();
    if (!list)
        return QString();
    const bool isNumbered = list->format().style() <= QTextListFormat::ListDecimal;
    return (isNumbered ? list->itemText(block) : QString(QChar(0x2022))) + QLatin1Char(' ');
}

QVector<Piece> linesOf(const QTextBlock &first, const QTextBlock &last)
{
    QVector<Piece> lines;
    for (QTextBlock block = first; block.isValid(); block = block.next()) {
        const QString lineFeed = block == first ? QString() : QString(QChar::LineSeparator);
        lines.append({lineFeed + markOf(block), QTextCharFormat()});
        for (QTextBlock::iterator i = block.begin(); !i.atEnd(); ++i)
            lines.append({i.fragment().text(), i.fragment().charFormat()});
        if (block == last)
            break;
    }
    return lines;
}

struct Cell
{
    QTextTableCell cell;
    QVector<Piece> lines;
};

bool isOneParagraph(const QTextTableCell &cell)
{
    const QTextBlock first = cell.firstCursorPosition().block();
    return first == cell.lastCursorPosition().block() && !first.textList();
}

void collectCells(const QTextTable *table, QVector<Cell> &cells)
{
    for (int row = 0; row < table->rows(); ++row) {
        for (int column = 0; column < table->columns(); ++column) {
            const QTextTableCell cell = table->cellAt(row, column);
            const bool isHere = cell.row() == row && cell.column() == column;
            if (isHere && !isOneParagraph(cell))
                cells.append({cell,
                              linesOf(cell.firstCursorPosition().block(),
                                      cell.lastCursorPosition().block())});
        }
    }
}

void fill(const Cell &cell)
{
    QTextCursor cursor = cell.cell.firstCursorPosition();
    QTextBlockFormat format = cursor.blockFormat();
    format.setObjectIndex(-1);
    cursor.setPosition(cell.cell.lastPosition(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText(); // may leave the format of the last paragraph
    cursor.setBlockFormat(format);
    for (const Piece &piece : cell.lines)
        cursor.insertText(piece.text, piece.format);
}

// Those that stand in no other table.
QVector<QTextTable *> outerTables(QTextDocument *text)
{
    QVector<QTextTable *> tables;
    QVector<QTextFrame *> open {text->rootFrame()};
    while (!open.isEmpty()) {
        QTextFrame *frame = open.takeLast();
        if (auto *table = qobject_cast<QTextTable *>(frame))
            tables.append(table);
        else
            open += frame->childFrames().toVector();
    }
    return tables;
}

void endListsBeforeFrames(QTextDocument *text)
{
    for (QTextBlock block = text->begin(); block.isValid(); block = block.next()) {
        const QTextBlock next = block.next();
        QTextCursor cursor(block);
        if (!block.textList() || !next.isValid()
            || cursor.currentFrame() == QTextCursor(next).currentFrame())
            continue;
        cursor.movePosition(QTextCursor::EndOfBlock);
        cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    }
}

}

void fitTablesForOdt(QTextDocument *text)
{
    if (text->rootFrame()->childFrames().isEmpty())
        return;
    QVector<Cell> cells; // all of them first: items that leave a list change the numbers of others
    const QVector<QTextTable *> tables = outerTables(text);
    for (const QTextTable *table : tables)
        collectCells(table, cells);
    const EditBlock edit(text);
    for (const Cell &cell : qAsConst(cells))
        fill(cell);
    endListsBeforeFrames(text);
}
