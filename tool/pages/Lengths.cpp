// SPDX-License-Identifier: MIT
#include <tool/pages/Lengths.h>

#include <core/document/FormatEdits_p.h>

#include <QSet>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QVector>

#include <algorithm>
#include <cmath>

namespace {

struct Span
{
    int start;
    int end;
    QTextCharFormat format;
};

}

void boundLargeLetters(QTextDocument &document)
{
    constexpr double maxSize = 1638.0; // points; word processors take no more
    constexpr double maxWaveSize = 144.0; // points; waves are drawn as pictures as large as letters
    const auto isWave = [](const QTextFormat &format) {
        return format.intProperty(QTextFormat::TextUnderlineStyle)
            >= QTextCharFormat::WaveUnderline;
    };
    const QVector<QTextFormat> formats = document.allFormats();
    const bool hasLarge
        = std::any_of(formats.cbegin(), formats.cend(), [&isWave](const QTextFormat &format) {
              const double size = format.doubleProperty(QTextFormat::FontPointSize);
              return size > maxSize || (size > maxWaveSize && isWave(format));
          });
    if (!hasLarge)
        return;
    changeAllFormats(&document, [&isWave](QTextCharFormat &format) {
        if (format.fontPointSize() > maxWaveSize && isWave(format))
            format.setUnderlineStyle(QTextCharFormat::SingleUnderline);
        if (format.fontPointSize() > maxSize)
            format.setFontPointSize(maxSize);
    });
}

void boundFontSizes(QTextDocument &document)
{
    constexpr int maxSizes = 500;
    constexpr double step = 1.05;
    QSet<double> sizes;
    const QVector<QTextFormat> formats = document.allFormats();
    for (const QTextFormat &format : formats)
        sizes.insert(format.doubleProperty(QTextFormat::FontPointSize));
    if (sizes.size() <= maxSizes)
        return;
    changeAllFormats(&document, [](QTextCharFormat &format) {
        const double size = format.fontPointSize();
        if (size > 0.0)
            format.setFontPointSize(std::pow(step, std::round(std::log(size) / std::log(step))));
    });
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
