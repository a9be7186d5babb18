// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfPage.h>

#include <core/rtf/model/RtfProps.h>

#include <QTextDocument>
#include <QTextFrame>

namespace {

constexpr double minPage = 72;
constexpr double maxPage = rtfMaxTwips / 20.0;
constexpr double minMargin = 18; // Qt's own default is a gap, no margin

void setLength(double points, double min, double max, int *twips)
{
    if (points >= min && points <= max)
        *twips = qRound(points * 20);
}

} // namespace

RtfPage RtfPage::of(const QTextDocument &document)
{
    RtfPage page;
    const QSizeF size = document.pageSize();
    if (qMin(size.width(), size.height()) >= minPage) {
        setLength(size.width(), minPage, maxPage, &page.width);
        setLength(size.height(), minPage, maxPage, &page.height);
    }
    const QTextFrameFormat root = document.rootFrame()->frameFormat();
    const double maxMargin = page.width / 20.0 / 3; // leaves a third for the text
    setLength(root.leftMargin(), minMargin, maxMargin, &page.left);
    setLength(root.rightMargin(), minMargin, maxMargin, &page.right);
    setLength(root.topMargin(), minMargin, page.height / 20.0 / 3, &page.top);
    setLength(root.bottomMargin(), minMargin, page.height / 20.0 / 3, &page.bottom);
    return page;
}
