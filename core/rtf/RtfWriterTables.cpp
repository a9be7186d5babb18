// The part of the writer that goes through frames and tables.
#include <core/rtf/RtfWriter.h>

#include <QTextBlock>
#include <QTextTable>

namespace {

constexpr int textWidth = 8640; // of a page as RTF assumes it, in twips

// Right edges of the columns, in twips.
QVector<int> columnEdges(const QTextTable &table)
{
    const QVector<QTextLength> widths = table.format().columnWidthConstraints();
    QVector<int> edges;
    double right = 0;
    for (int column = 0; column < table.columns(); ++column) {
        const QTextLength width = widths.value(column);
        double twips = double(textWidth) / table.columns();
        if (width.type() == QTextLength::FixedLength)
            twips = width.rawValue() * 20;
        else if (width.type() == QTextLength::PercentageLength)
            twips = width.rawValue() * textWidth / 100;
        right += qBound(30.0, twips, double(rtfFarthestTwips)); // never without a width
        edges.append(qRound(qMin(right, double(rtfFarthestTwips))));
    }
    return edges;
}

} // namespace

void RtfWriter::writeFrame(const QTextFrame &frame, int tableLevel)
{
    for (auto it = frame.begin(); !it.atEnd(); ++it) {
        const QTextFrame *child = it.currentFrame();
        if (const auto *table = qobject_cast<const QTextTable *>(child))
            writeTable(*table, tableLevel + 1);
        else if (child)
            writeFrame(*child, tableLevel); // RTF has no frames; their text stays
        else
            writeBlock(it.currentBlock(), tableLevel, ParagraphEnd);
    }
}

void RtfWriter::writeTable(const QTextTable &table, int tableLevel)
{
    const QVector<int> edges = columnEdges(table);
    const bool nested = tableLevel > 1;
    const bool hasInner = !nested && !table.childFrames().isEmpty();
    for (int row = 0; row < table.rows(); ++row) {
        const QByteArray words = rowWords(table, row, edges);
        if (!nested)
            m_body.words(words);
        for (int column = 0; column < table.columns(); ++column) {
            const QTextTableCell cell = table.cellAt(row, column);
            if (cell.row() == row && cell.column() == column)
                writeCell(cell, tableLevel);
            else // the place is taken by a cell to the left or above
                m_body.words(nested ? QByteArrayLiteral("\\nestcell")
                                    : QByteArrayLiteral("\\cell"));
        }
        if (nested) {
            m_body.raw("{\\*\\nesttableprops" + words + "\\nestrow}{\\nonesttables\\par}");
            if (row + 1 < table.rows()) // LibreOffice forgets the level with the row
                m_body.raw("\\itap" + QByteArray::number(tableLevel));
        } else {
            if (hasInner) // Word forgets the row's words with those of the inner table
                m_body.words(words);
            m_body.words(QByteArrayLiteral("\\row"));
        }
        m_body.lineEnd();
    }
}

QByteArray RtfWriter::rowWords(const QTextTable &table, int row, const QVector<int> &edges)
{
    QByteArray words = QByteArrayLiteral("\\trowd");
    if (row < table.format().headerRowCount())
        words += "\\trhdr";
    for (int column = 0; column < table.columns(); ++column) {
        const QTextTableCell cell = table.cellAt(row, column);
        if (cell.columnSpan() > 1)
            words += cell.column() == column ? "\\clmgf" : "\\clmrg";
        if (cell.rowSpan() > 1)
            words += cell.row() == row ? "\\clvmgf" : "\\clvmrg";
        if (table.format().border() > 0) {
            for (const char *edge : {"t", "l", "b", "r"})
                words += QByteArray("\\clbrdr") + edge + "\\brdrs\\brdrw10";
        }
        const QBrush background = cell.format().background();
        if (background.style() == Qt::SolidPattern)
            words += "\\clcbpat" + QByteArray::number(m_tables.colorNumber(background.color()));
        words += "\\cellx" + QByteArray::number(edges.at(column));
    }
    return words;
}

void RtfWriter::writeCell(const QTextTableCell &cell, int tableLevel)
{
    for (auto it = cell.begin(); !it.atEnd();) {
        const QTextFrame *child = it.currentFrame();
        const QTextBlock block = it.currentBlock();
        ++it;
        if (const auto *table = qobject_cast<const QTextTable *>(child))
            writeTable(*table, tableLevel + 1);
        else if (child)
            writeFrame(*child, tableLevel);
        else
            writeBlock(block, tableLevel, it.atEnd() ? CellEnd : ParagraphEnd);
    }
}
