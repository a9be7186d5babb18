// SPDX-License-Identifier: MIT
#include <tool/pages/PageText.h>

#include <tool/pages/Lengths.h>
#include <tool/pages/PageSlices.h>

#include <core/MVRToolkit.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/LayoutLimit_p.h>

#include <QSizeF>
#include <QTextDocument>
#include <QTextOption>

namespace {

// Qt's PDF writer puts a link's target between parentheses as it is: one of its own ends it.
void encodeLinks(QTextDocument &text)
{
    changeAllFormats(&text, [](QTextCharFormat &format) {
        QString target = format.anchorHref();
        target.replace(QLatin1Char('('), QLatin1String("%28"))
            .replace(QLatin1Char(')'), QLatin1String("%29"))
            .replace(QLatin1Char('\\'), QLatin1String("%5C"));
        if (target != format.anchorHref())
            format.setAnchorHref(target);
    });
}

}

void preparePageText(QTextDocument &text, double width, double unitsPerPoint)
{
    encodeLinks(text);
    boundFloats(text);
    wrapLines(text);
    takeBreaks(text);
    MVRToolkit::toStockParagraphs(&text, width / unitsPerPoint);
    scaleLengths(text, unitsPerPoint);
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
