// SPDX-License-Identifier: MIT
#include <tool/pages/PageText.h>

#include <tool/formats/Pictures.h>
#include <tool/pages/Lengths.h>
#include <tool/pages/PageBreaks.h>
#include <tool/pages/PageLinks.h>
#include <tool/pages/PageWidths.h>
#include <tool/pages/SmallCapitals.h>

#include <core/MVRToolkit.h>
#include <core/document/LayoutLimit_p.h>

#include <QSizeF>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QTextOption>

#include <limits>

namespace {

constexpr double longest = 1584.0; // points, two pages: writing programs take no more
constexpr double inch = 72.0; // points
constexpr double leastDistance = 0.7; // of lines, as a share of their letters' size

/*! Points that the largest letters of a paragraph have; pictures are larger than any. */
double largestSize(const QTextBlock &block, double defaultSize)
{
    double largest = 0.0;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat format = it.fragment().charFormat();
        if (format.isImageFormat())
            return std::numeric_limits<double>::infinity();
        const double size = format.fontPointSize();
        largest = qMax(largest, size > 0.0 ? size : defaultSize);
    }
    return largest;
}

/*!
    Parts lines that would cover each other: at an exact distance they become as high as what stands
    in them, else a share of it apart.

    \param largest  size of the letters, in units of the layout; infinite for pictures
*/
void freeLines(QTextBlockFormat &format, double largest)
{
    const double height = format.lineHeight();
    const double least = leastDistance * largest;
    switch (format.lineHeightType()) {
    case QTextBlockFormat::FixedHeight:
        if (height < least)
            format.setLineHeight(height, QTextBlockFormat::MinimumHeight);
        break;
    case QTextBlockFormat::ProportionalHeight:
        format.setLineHeight(qMax(height, 100.0 * leastDistance), format.lineHeightType());
        break;
    case QTextBlockFormat::LineDistanceHeight:
        format.setLineHeight(qMax(height, qMin(least - largest, 0.0)), format.lineHeightType());
        break;
    default:
        break;
    }
}

/*! Those of each paragraph, by the largest of its letters. */
void freeCloseLines(QTextDocument &text, double unitsPerPoint)
{
    const double defaultSize = text.defaultFont().pointSizeF();
    QTextCursor cursor(&text);
    cursor.beginEditBlock();
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        if (format.lineHeightType() == QTextBlockFormat::SingleHeight)
            continue;
        freeLines(format, largestSize(block, defaultSize) * unitsPerPoint);
        if (format == block.blockFormat())
            continue;
        cursor.setPosition(block.position());
        cursor.setBlockFormat(format);
    }
    cursor.endEditBlock();
}

}

void preparePageText(QTextDocument &text, const PageWidths &widths, double unitsPerPoint)
{
    takeLinks(text);
    putSmallCapitals(text);
    boundLargeLetters(text);
    putFramesIntoFlow(text);
    wrapLines(text);
    takeBreaks(text);
    MVRToolkit::toStockParagraphs(&text, widths.lines / unitsPerPoint);
    scaleLengths(text, unitsPerPoint, longest * unitsPerPoint);
    freeCloseLines(text, unitsPerPoint);
    keepOnPage(text, widths, inch * unitsPerPoint);
    text.setDocumentMargin(0.0);
    QTextOption option = text.defaultTextOption();
    option.setUseDesignMetrics(true);
    text.setDefaultTextOption(option);
}

void fitPagePictures(QTextDocument &text, const QSizeF &room, double unitsPerPoint)
{
    constexpr double belowLine = 24.0; // points that what stands on the line reaches below it
    const QSizeF most(room.width(), qMax(1.0, room.height() - belowLine * unitsPerPoint));
    fitPictures(text, most, unitsPerPoint * pointsPerPixel);
}

bool setLongPage(QTextDocument &text, double width, double unitsPerPoint)
{
    const QSizeF page(width, longPage);
    if (isTooHigh(text, width, page, unitsPerPoint))
        return false;
    setPage(text, page);
    return true;
}
