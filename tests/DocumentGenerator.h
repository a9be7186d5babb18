// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextFormat.h>
#include <core/MVRToolkit.h>

#include <QFont>
#include <QRandomGenerator>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>

#include <functional>

// Draws documents over everything that is written; the same seed gives the same document.
class DocumentGenerator
{
public:
    explicit DocumentGenerator(uint seed)
        : m_random(seed)
    {
    }

    void fill(QTextDocument *document)
    {
        QTextCursor cursor(document);
        cursor.setBlockFormat(blockFormat());
        cursor.setBlockCharFormat(charFormat());
        fill(&cursor, 12, 0);
    }

private:
    void fill(QTextCursor *cursor, int most, int depth)
    {
        const int blocks = m_random.bounded(most);
        for (int block = 0; block <= blocks; ++block) {
            for (int run = m_random.bounded(5); run > 0; --run)
                cursor->insertText(text(), charFormat());
            if (chance(8))
                cursor->createList(listFormat());
            if (chance(10) && depth < 3)
                insertTable(cursor, depth);
            if (chance(10) && depth < 3)
                insertFrame(cursor, depth);
            if (block < blocks)
                insertBlock(cursor);
        }
    }

    // The next paragraph may belong to the list of the one before.
    void insertBlock(QTextCursor *cursor)
    {
        QTextBlockFormat format = blockFormat();
        if (cursor->currentList() && chance(2))
            format.setObjectIndex(cursor->currentList()->objectIndex());
        cursor->insertBlock(format, charFormat());
    }

    void insertTable(QTextCursor *cursor, int depth)
    {
        const int rows = 1 + m_random.bounded(4);
        const int columns = 1 + m_random.bounded(4);
        QTextTable *table = cursor->insertTable(rows, columns, tableFormat(columns));
        if (chance(2))
            table->mergeCells(m_random.bounded(rows), m_random.bounded(columns),
                              1 + m_random.bounded(rows), 1 + m_random.bounded(columns));
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                QTextTableCell cell = table->cellAt(row, column);
                if (cell.row() != row || cell.column() != column)
                    continue;
                if (chance(3))
                    setCellFormat(&cell);
                QTextCursor inner = cell.firstCursorPosition();
                fill(&inner, 3, depth + 1);
            }
        }
        cursor->setPosition(table->lastPosition() + 1);
    }

    void insertFrame(QTextCursor *cursor, int depth)
    {
        QTextFrameFormat format;
        setFrameProperties(&format);
        QTextFrame *frame = cursor->insertFrame(format);
        QTextCursor inner = frame->firstCursorPosition();
        fill(&inner, 4, depth + 1);
        cursor->setPosition(frame->lastPosition() + 1);
    }

    bool chance(int outOf) { return m_random.bounded(outOf) == 0; }
    double length() { return chance(2) ? m_random.bounded(200) : m_random.bounded(200.0) - 50; }
    QColor color() { return QColor(m_random.bounded(3) * 127, m_random.bounded(256), 9); }

    QString text()
    {
        static const QString letters
            = QString::fromUtf8("ab1 -{}\\\t\u2028\u00a0\u00ad\u2011é—日Č‚;дом");
        QString drawn;
        for (int i = m_random.bounded(9); i >= 0; --i)
            drawn += letters.at(m_random.bounded(letters.size()));
        return chance(5) ? drawn + QString::fromUtf8("😀") : drawn;
    }

    QTextCharFormat charFormat()
    {
        QTextCharFormat format;
        const std::function<void()> setters[] = {
            [&] { format.setFontWeight(m_random.bounded(QFont::Thin, QFont::Black + 1)); },
            [&] { format.setFontItalic(chance(2)); },
            [&] { format.setUnderlineStyle(QTextCharFormat::UnderlineStyle(m_random.bounded(8))); },
            [&] { format.setFontStrikeOut(chance(2)); },
            [&] { format.setFontPointSize(1 + m_random.bounded(400) / 8.0); },
            [&] {
                MVRToolkit::setFontFamily(&format, chance(2) ? QStringLiteral("Serif") : text());
            },
            [&] { format.setForeground(color()); },
            [&] { format.setBackground(color()); },
            [&] {
                format.setVerticalAlignment(
                    QTextCharFormat::VerticalAlignment(m_random.bounded(3)));
            },
            [&] { format.setFontCapitalization(QFont::Capitalization(m_random.bounded(5))); },
            [&] { format.setAnchor(true), format.setAnchorHref(text()); },
            [&] {
                format.setAnchorNames({text(), text()});
            },
        };
        for (const auto &set : setters) {
            if (chance(6))
                set();
        }
        return format;
    }

    QTextListFormat listFormat()
    {
        QTextListFormat format;
        format.setStyle(QTextListFormat::Style(-m_random.bounded(9)));
        format.setIndent(m_random.bounded(4));
        if (chance(3))
            format.setNumberPrefix(text());
        if (chance(3))
            format.setNumberSuffix(text());
        return format;
    }

    QTextLength textLength()
    {
        return QTextLength(QTextLength::Type(m_random.bounded(3)), 5 + m_random.bounded(90.0));
    }

    void setFrameProperties(QTextFrameFormat *format)
    {
        const std::function<void()> setters[] = {
            [&] { format->setBorder(m_random.bounded(3.0)); },
            [&] { format->setBorderBrush(color()); },
            [&] { format->setBorderStyle(QTextFrameFormat::BorderStyle(m_random.bounded(11))); },
            [&] { format->setMargin(length()); },
            [&] { format->setPadding(m_random.bounded(20)); },
            [&] { format->setWidth(textLength()); },
            [&] { format->setHeight(m_random.bounded(200.0)); },
            [&] { format->setBackground(color()); },
            [&] { format->setPosition(QTextFrameFormat::Position(m_random.bounded(3))); },
            [&] { format->setPageBreakPolicy(QTextFormat::PageBreak_AlwaysAfter); },
        };
        for (const auto &set : setters) {
            if (chance(4))
                set();
        }
    }

    QTextTableFormat tableFormat(int columns)
    {
        QTextTableFormat format;
        setFrameProperties(&format);
        if (chance(2)) {
            QVector<QTextLength> widths;
            while (widths.size() < columns)
                widths.append(textLength());
            format.setColumnWidthConstraints(widths);
        }
        if (chance(3))
            format.setCellPadding(m_random.bounded(9.0));
        if (chance(3))
            format.setCellSpacing(m_random.bounded(9));
        if (chance(3))
            format.setAlignment(Qt::Alignment(1 << m_random.bounded(4)));
        if (chance(3))
            format.setHeaderRowCount(m_random.bounded(3));
        if (chance(3))
            format.setBorderCollapse(chance(2));
        return format;
    }

    void setCellFormat(QTextTableCell *cell)
    {
        QTextTableCellFormat format = cell->format().toTableCellFormat();
        format.setBackground(color());
        format.setLeftPadding(m_random.bounded(9.0));
        format.setTopBorder(m_random.bounded(3));
        format.setVerticalAlignment(QTextCharFormat::VerticalAlignment(m_random.bounded(7)));
        cell->setFormat(format);
    }

    QTextBlockFormat blockFormat()
    {
        QTextBlockFormat format;
        const std::function<void()> setters[] = {
            [&] { format.setAlignment(Qt::Alignment(1 << m_random.bounded(4))); },
            [&] { format.setLeftMargin(length()); },
            [&] { format.setRightMargin(length()); },
            [&] { format.setTextIndent(length()); },
            [&] { format.setTopMargin(length()); },
            [&] { format.setBottomMargin(length()); },
            [&] { format.setIndent(m_random.bounded(5)); },
            [&] { format.setLineHeight(qAbs(length()), m_random.bounded(5)); },
            [&] { format.setHeadingLevel(m_random.bounded(7)); },
            [&] { format.setProperty(MVRTextFormat::LineSpacingProperty, m_random.bounded(3.0)); },
            [&] { format.setProperty(MVRTextFormat::BlockLeftIndentProperty, length()); },
            [&] { format.setProperty(MVRTextFormat::BlockRightIndentProperty, length()); },
            [&] { format.setPageBreakPolicy(QTextFormat::PageBreakFlag(chance(2) ? 1 : 16)); },
            [&] { format.setNonBreakableLines(chance(2)); },
            [&] { format.setBackground(color()); },
            [&] { format.setLayoutDirection(chance(2) ? Qt::LeftToRight : Qt::RightToLeft); },
        };
        for (const auto &set : setters) {
            if (chance(5))
                set();
        }
        return format;
    }

    QRandomGenerator m_random;
};
