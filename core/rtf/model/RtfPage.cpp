// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfPage.h>

#include <core/MVRTextRtf.h>
#include <core/rtf/model/RtfProps.h>

#include <QTextDocument>
#include <QTextFrame>

namespace {

constexpr double minPage = 72;
constexpr double maxPage = rtfMaxTwips / 20.0;
constexpr double minMargin = 18; // Qt's own default is a gap, no margin

struct LengthRow
{
    const char *name;
    int RtfPage::*length;
};

constexpr LengthRow lengthRows[]
    = {{"width", &RtfPage::width}, {"height", &RtfPage::height}, {"left", &RtfPage::left},
       {"right", &RtfPage::right}, {"top", &RtfPage::top},       {"bottom", &RtfPage::bottom}};

double leastOf(const LengthRow &row)
{
    return row.length == &RtfPage::width || row.length == &RtfPage::height ? minPage : 0.0;
}

void setLength(double points, double min, double max, int *twips)
{
    if (points >= min && points <= max)
        *twips = qRound(points * 20);
}

} // namespace

// A side that no paper has would make pages without end.
QVariantMap RtfPage::toMap() const
{
    RtfPage page;
    QVariantMap lengths;
    for (const LengthRow &row : lengthRows) {
        setLength(this->*row.length / 20.0, leastOf(row), maxPage, &(page.*row.length));
        lengths.insert(QLatin1String(row.name), page.*row.length / 20.0);
    }
    return lengths;
}

void RtfPage::setFromMap(const QVariantMap &lengths)
{
    if (lengths.isEmpty()) // as for each note
        return;
    for (const LengthRow &row : lengthRows) {
        const QVariant points = lengths.value(QLatin1String(row.name));
        if (points.isValid())
            setLength(points.toDouble(), leastOf(row), maxPage, &(this->*row.length));
    }
}

RtfPage RtfPage::of(const QTextDocument &document)
{
    RtfPage page;
    page.setFromMap(document.property(MVRTextRtf::pageProperty).toMap());
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
