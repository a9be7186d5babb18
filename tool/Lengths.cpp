#include "Lengths.h"

#include <core/FormatEdits_p.h>

#include <QHash>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QVector>

namespace {

struct Span
{
    int start;
    int end;
    QTextCharFormat format;
};

QTextBlockFormat scaled(QTextBlockFormat format, double factor)
{
    for (const int length :
         {QTextFormat::BlockLeftMargin, QTextFormat::BlockRightMargin, QTextFormat::BlockTopMargin,
          QTextFormat::BlockBottomMargin, QTextFormat::TextIndent}) {
        if (format.hasProperty(length))
            format.setProperty(length, format.doubleProperty(length) * factor);
    }
    QList<QTextOption::Tab> tabs = format.tabPositions();
    if (!tabs.isEmpty()) {
        for (QTextOption::Tab &tab : tabs)
            tab.position *= factor;
        format.setTabPositions(tabs);
    }
    const int heightType = format.lineHeightType();
    if (heightType != QTextBlockFormat::SingleHeight
        && heightType != QTextBlockFormat::ProportionalHeight)
        format.setLineHeight(format.lineHeight() * factor, heightType);
    return format;
}

void scalePictures(QTextDocument &document, double factor)
{
    changeAllFormats(&document, [factor](QTextCharFormat &format) {
        if (!format.isImageFormat())
            return;
        for (const int side : {QTextFormat::ImageWidth, QTextFormat::ImageHeight}) {
            if (format.doubleProperty(side) > 0.0)
                format.setProperty(side, format.doubleProperty(side) * factor);
        }
    });
}

}

void scaleLengths(QTextDocument &document, double factor)
{
    QHash<int, QTextBlockFormat> known;
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        auto format = known.find(block.blockFormatIndex());
        if (format == known.end())
            format = known.insert(block.blockFormatIndex(), scaled(block.blockFormat(), factor));
        if (*format == block.blockFormat())
            continue;
        cursor.setPosition(block.position());
        cursor.setBlockFormat(*format);
    }
    cursor.endEditBlock();
    scalePictures(document, factor);
}

void pixelFontsToPoints(QTextDocument &document)
{
    QVector<Span> spans;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextCharFormat format = fragment.charFormat();
            if (format.hasProperty(QTextFormat::FontPixelSize))
                spans.append(
                    {fragment.position(), fragment.position() + fragment.length(), format});
        }
    }
    QTextCursor cursor(&document);
    cursor.beginEditBlock();
    for (Span &span : spans) {
        const double pixels = span.format.doubleProperty(QTextFormat::FontPixelSize);
        span.format.clearProperty(QTextFormat::FontPixelSize);
        if (pixels > 0.0)
            span.format.setFontPointSize(pixels * pointsPerPixel);
        cursor.setPosition(span.start);
        cursor.setPosition(span.end, QTextCursor::KeepAnchor);
        cursor.setCharFormat(span.format);
    }
    cursor.endEditBlock();
}
