// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfPage.h>

#include <core/rtf/model/RtfProps.h>

#include <QTextDocument>
#include <QTextFrame>

namespace {

constexpr double smallestPage = 72;
constexpr double largestPage = rtfFarthestTwips / 20.0;
constexpr double smallestMargin = 18; // the toolkit's own default is a gap, no margin

void setLength(double points, double smallest, double largest, int *twips)
{
    if (points >= smallest && points <= largest)
        *twips = qRound(points * 20);
}

} // namespace

RtfPage RtfPage::of(const QTextDocument &document)
{
    RtfPage page;
    const QSizeF size = document.pageSize();
    if (qMin(size.width(), size.height()) >= smallestPage) {
        setLength(size.width(), smallestPage, largestPage, &page.width);
        setLength(size.height(), smallestPage, largestPage, &page.height);
    }
    const QTextFrameFormat root = document.rootFrame()->frameFormat();
    const double widest = page.width / 20.0 / 3; // leaves a third for the text
    setLength(root.leftMargin(), smallestMargin, widest, &page.left);
    setLength(root.rightMargin(), smallestMargin, widest, &page.right);
    setLength(root.topMargin(), smallestMargin, page.height / 20.0 / 3, &page.top);
    setLength(root.bottomMargin(), smallestMargin, page.height / 20.0 / 3, &page.bottom);
    return page;
}
