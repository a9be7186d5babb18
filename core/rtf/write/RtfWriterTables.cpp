// SPDX-License-Identifier: MIT
// The part of the writer that goes through frames and tables.
#include <core/rtf/model/RtfExact.h>
#include <core/rtf/write/RtfWriter.h>

#include <QTextBlock>
#include <QTextTable>

namespace {

// Right edges of the columns, in twips.
QVector<int> columnEdges(const QTextTable &table, int textWidth)
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
        right += qBound(30.0, twips, double(rtfMaxTwips)); // never without a width
        edges.append(qRound(qMin(right, double(rtfMaxTwips))));
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
            writeFramed(*child, tableLevel);
        else
            writeBlock(it.currentBlock(), tableLevel, ParagraphEnd);
    }
}

// RTF has no frames: their text stays, each paragraph with the border, and the frame itself stands
// in marks of our own, which have their place behind the formatting of the first paragraph.
void RtfWriter::writeFramed(const QTextFrame &frame, int tableLevel)
{
    const QTextFrameFormat format = frame.frameFormat();
    const QByteArray exact
        = QByteArray::number(m_resources.exactNumber(RtfExact::difference(format, QTextFormat())));
    m_frameStart = "{\\*\\mvrframe" + exact + '}';
    const QByteArray outer = m_frameBorder;
    if (format.border() > 0)
        m_frameBorder = borderWords("\\box", borderOf(format));
    writeFrame(frame, tableLevel);
    m_frameBorder = outer;
    m_body.raw(QByteArrayLiteral("{\\*\\mvrframeend}"));
}

void RtfWriter::writeTable(const QTextTable &table, int tableLevel)
{
    const QVector<int> edges = columnEdges(table, m_page.textWidth());
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
            m_paragraph.clear(); // some programs have left the nested table here
        } else {
            if (hasInner) // Word forgets the row's words with those of the inner table
                m_body.words(words);
            m_body.words(QByteArrayLiteral("\\row"));
        }
        m_body.lineEnd();
    }
}

void RtfWriter::appendExact(const char *word, const QTextFormat &format, QByteArray *words)
{
    const int number = m_resources.exactNumber(RtfExact::difference(format, QTextFormat()));
    if (number != 0)
        *words += word + QByteArray::number(number);
}

// The first words that say \a edge has such a border.
QByteArray RtfWriter::borderWords(const char *edge, const Border &border)
{
    struct Row
    {
        int style;
        const char *word;
    };
    static constexpr Row rows[] = {{QTextFrameFormat::BorderStyle_Dotted, "\\brdrdot"},
                                   {QTextFrameFormat::BorderStyle_Dashed, "\\brdrdash"},
                                   {QTextFrameFormat::BorderStyle_Double, "\\brdrdb"},
                                   {QTextFrameFormat::BorderStyle_DotDash, "\\brdrdashd"},
                                   {QTextFrameFormat::BorderStyle_DotDotDash, "\\brdrdashdd"},
                                   {QTextFrameFormat::BorderStyle_Groove, "\\brdrengrave"},
                                   {QTextFrameFormat::BorderStyle_Ridge, "\\brdremboss"},
                                   {QTextFrameFormat::BorderStyle_Inset, "\\brdrinset"}};
    constexpr double maxWidth = 75; // \brdrw counts to 75 in twips; wider ones are not shown
    QByteArray words = edge;
    const char *style = "\\brdrs";
    for (const Row &row : rows) {
        if (row.style == border.style)
            style = row.word;
    }
    words += style;
    words += "\\brdrw" + QByteArray::number(qRound(qBound(1.0, border.width * 15, maxWidth)));
    if (border.brush.style() == Qt::SolidPattern && border.brush.color() != Qt::black)
        words += "\\brdrcf" + QByteArray::number(m_resources.colorNumber(border.brush.color()));
    return words;
}

// The borders of one cell, where the table has none.
QByteArray RtfWriter::cellBorderWords(const QTextFormat &cell)
{
    struct Row
    {
        const char *word;
        int width;
        int style;
        int brush;
    };
    static constexpr Row rows[]
        = {{"\\clbrdrt", QTextFormat::TableCellTopBorder, QTextFormat::TableCellTopBorderStyle,
            QTextFormat::TableCellTopBorderBrush},
           {"\\clbrdrl", QTextFormat::TableCellLeftBorder, QTextFormat::TableCellLeftBorderStyle,
            QTextFormat::TableCellLeftBorderBrush},
           {"\\clbrdrb", QTextFormat::TableCellBottomBorder,
            QTextFormat::TableCellBottomBorderStyle, QTextFormat::TableCellBottomBorderBrush},
           {"\\clbrdrr", QTextFormat::TableCellRightBorder, QTextFormat::TableCellRightBorderStyle,
            QTextFormat::TableCellRightBorderBrush}};
    QByteArray words;
    for (const Row &row : rows) {
        if (cell.doubleProperty(row.width) > 0)
            words += borderWords(row.word,
                                 {cell.doubleProperty(row.width), cell.intProperty(row.style),
                                  cell.brushProperty(row.brush)});
    }
    return words;
}

QByteArray RtfWriter::rowWords(const QTextTable &table, int row, const QVector<int> &edges)
{
    QByteArray words = QByteArrayLiteral("\\trowd");
    const QTextTableFormat format = table.format();
    if (format.alignment() & (Qt::AlignHCenter | Qt::AlignRight))
        words += format.alignment() & Qt::AlignRight ? "\\trqr" : "\\trqc";
    if (row < format.headerRowCount())
        words += "\\trhdr";
    if (row == 0)
        appendExact("\\mvrt", format, &words);
    QByteArray borders;
    if (format.border() > 0) {
        for (const char *edge : {"\\clbrdrt", "\\clbrdrl", "\\clbrdrb", "\\clbrdrr"})
            borders += borderWords(edge, borderOf(format));
    }
    for (int column = 0; column < table.columns(); ++column) {
        const QTextTableCell cell = table.cellAt(row, column);
        if (cell.columnSpan() > 1)
            words += cell.column() == column ? "\\clmgf" : "\\clmrg";
        if (cell.rowSpan() > 1)
            words += cell.row() == row ? "\\clvmgf" : "\\clvmrg";
        words += borders.isEmpty() ? cellBorderWords(cell.format()) : borders;
        const QBrush background = cell.format().background();
        if (background.style() == Qt::SolidPattern)
            words += "\\clcbpat" + QByteArray::number(m_resources.colorNumber(background.color()));
        if (cell.row() == row && cell.column() == column)
            appendExact("\\mvrc", cell.format(), &words);
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
            writeFramed(*child, tableLevel);
        else
            writeBlock(block, tableLevel, it.atEnd() ? CellEnd : ParagraphEnd);
    }
}
