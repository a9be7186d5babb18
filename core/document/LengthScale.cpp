// SPDX-License-Identifier: MIT
#include <core/document/LengthScale_p.h>

#include <core/document/FormatEdits_p.h>

#include <QHash>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <QVector>

#include <cmath>

namespace {

/*! Makes lengths those of another unit, none longer than a bound. */
struct Scale
{
    double factor;
    double longest;

    double bounded(double length) const { return boundedLength(length, longest); }
    double operator()(double length) const { return bounded(length * factor); }
};

// Per cent; lines that go up would have no end.
double boundedShare(double height)
{
    constexpr double highest = 10000.0;
    return std::isnan(height) ? 100.0 : qBound(0.0, height, highest);
}

QTextBlockFormat scaled(QTextBlockFormat format, const Scale &scale)
{
    for (const int length :
         {QTextFormat::BlockLeftMargin, QTextFormat::BlockRightMargin, QTextFormat::BlockTopMargin,
          QTextFormat::BlockBottomMargin, QTextFormat::TextIndent}) {
        if (format.hasProperty(length))
            format.setProperty(length, scale(format.doubleProperty(length)));
    }
    QList<QTextOption::Tab> tabs = format.tabPositions();
    if (!tabs.isEmpty()) {
        for (QTextOption::Tab &tab : tabs)
            tab.position = scale(tab.position);
        format.setTabPositions(tabs);
    }
    const int heightType = format.lineHeightType();
    if (heightType == QTextBlockFormat::ProportionalHeight)
        format.setLineHeight(boundedShare(format.lineHeight()), heightType);
    else if (heightType != QTextBlockFormat::SingleHeight)
        format.setLineHeight(scale(format.lineHeight()), heightType);
    return format;
}

void scaleProperties(QTextFormat &format, std::initializer_list<int> properties, const Scale &scale,
                     bool mayBeNegative = false)
{
    for (const int property : properties) {
        const QVariant value = format.property(property);
        if (value.userType() == QMetaType::Double)
            format.setProperty(property,
                               mayBeNegative ? scale(value.toDouble())
                                             : qMax(0.0, scale(value.toDouble())));
    }
}

QTextLength scaled(const QTextLength &length, const Scale &scale)
{
    const double value = length.rawValue();
    const bool isFixed = length.type() == QTextLength::FixedLength;
    return QTextLength(length.type(), isFixed ? scale(value) : scale.bounded(value));
}

void scaleFrame(QTextFrameFormat &format, const Scale &scale)
{
    scaleProperties(format,
                    {QTextFormat::FrameMargin, QTextFormat::FrameTopMargin,
                     QTextFormat::FrameBottomMargin, QTextFormat::FrameLeftMargin,
                     QTextFormat::FrameRightMargin},
                    scale, true);
    scaleProperties(format,
                    {QTextFormat::FrameBorder, QTextFormat::FramePadding,
                     QTextFormat::TableCellSpacing, QTextFormat::TableCellPadding},
                    scale);
    format.setWidth(scaled(format.width(), scale));
    format.setHeight(scaled(format.height(), scale));
}

void scaleCells(QTextTable &table, const Scale &scale)
{
    for (int row = 0; row < table.rows(); ++row) {
        for (int column = 0; column < table.columns(); ++column) {
            QTextTableCell cell = table.cellAt(row, column);
            const QTextCharFormat before = cell.format();
            QTextCharFormat format = before;
            scaleProperties(format,
                            {QTextFormat::TableCellTopPadding, QTextFormat::TableCellBottomPadding,
                             QTextFormat::TableCellLeftPadding, QTextFormat::TableCellRightPadding,
                             QTextFormat::TableCellTopBorder, QTextFormat::TableCellBottomBorder,
                             QTextFormat::TableCellLeftBorder, QTextFormat::TableCellRightBorder},
                            scale);
            const bool isOwn = cell.row() == row && cell.column() == column;
            if (isOwn && format != before)
                cell.setFormat(format);
        }
    }
}

void scaleFrames(QTextDocument &document, const Scale &scale)
{
    QVector<QTextFrame *> open = document.rootFrame()->childFrames().toVector();
    while (!open.isEmpty()) {
        QTextFrame *frame = open.takeLast();
        open += frame->childFrames().toVector();
        auto *table = qobject_cast<QTextTable *>(frame);
        if (!table) {
            QTextFrameFormat format = frame->frameFormat();
            scaleFrame(format, scale);
            frame->setFrameFormat(format);
            continue;
        }
        QTextTableFormat format = table->format();
        scaleFrame(format, scale);
        // A layout would look in front of its rows, or behind them.
        format.setHeaderRowCount(qBound(0, format.headerRowCount(), table->rows()));
        QVector<QTextLength> columns = format.columnWidthConstraints();
        for (QTextLength &column : columns)
            column = scaled(column, scale);
        format.setColumnWidthConstraints(columns);
        table->setFormat(format);
        scaleCells(*table, scale);
    }
}

void scalePictures(QTextDocument &document, const Scale &scale)
{
    changeAllFormats(&document, [&scale](QTextCharFormat &format) {
        if (!format.isImageFormat())
            return;
        for (const int side : {QTextFormat::ImageWidth, QTextFormat::ImageHeight}) {
            if (format.doubleProperty(side) > 0.0)
                format.setProperty(side, scale(format.doubleProperty(side)));
        }
    });
}

}

void scaleLengths(QTextDocument &document, double factor, double longest)
{
    const Scale scale {factor, longest};
    QHash<int, QTextBlockFormat> known;
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        auto format = known.find(block.blockFormatIndex());
        if (format == known.end())
            format = known.insert(block.blockFormatIndex(), scaled(block.blockFormat(), scale));
        if (*format == block.blockFormat())
            continue;
        cursor.setPosition(block.position());
        cursor.setBlockFormat(*format);
    }
    scaleFrames(document, scale);
    scalePictures(document, {factor, maxLength}); // pages fit them, in proportion
    cursor.endEditBlock();
    document.setIndentWidth(document.indentWidth() * factor);
}
