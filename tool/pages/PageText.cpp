// SPDX-License-Identifier: MIT
#include <tool/pages/PageText.h>

#include <tool/pages/Lengths.h>
#include <tool/pages/PageLinks.h>
#include <tool/pages/PageSlices.h>
#include <tool/pages/PageWidths.h>

#include <core/MVRToolkit.h>
#include <core/document/LayoutLimit_p.h>

#include <QSizeF>
#include <QTextDocument>
#include <QTextOption>

namespace {

constexpr double longest = 1584.0; // points, two pages: writing programs take no more
constexpr double inch = 72.0; // points

}

void preparePageText(QTextDocument &text, const PageWidths &widths, double unitsPerPoint)
{
    takeLinks(text);
    boundFloats(text);
    wrapLines(text);
    takeBreaks(text);
    MVRToolkit::toStockParagraphs(&text, widths.lines / unitsPerPoint);
    scaleLengths(text, unitsPerPoint, longest * unitsPerPoint);
    keepOnPage(text, widths, inch * unitsPerPoint);
    text.setDocumentMargin(0.0);
    QTextOption option = text.defaultTextOption();
    option.setUseDesignMetrics(true);
    text.setDefaultTextOption(option);
}

bool setLongPage(QTextDocument &text, double width, double unitsPerPoint)
{
    const QSizeF page(width, longPage);
    if (isTooHigh(text, width, page, unitsPerPoint))
        return false;
    setPage(text, page);
    return true;
}
