// SPDX-License-Identifier: MIT
#include <tool/pages/Pages.h>

#include <tool/Document.h>

#include <core/MVRTextRtf.h>
#include <core/document/SafeHtml_p.h>
#include <core/document/TextFragments_p.h>

#include <QAbstractTextDocumentLayout>
#include <QHash>
#include <QTextBlock>
#include <QTextDocument>
#include <QUrl>

#include <algorithm>
#include <optional>

namespace {

constexpr double pointsPerDot = 72.0 / Pages::resolution;

PdfArea onPage(int page, const QRectF &rect)
{
    return {page, QRectF(rect.topLeft() * pointsPerDot, rect.size() * pointsPerDot)};
}

// An entry takes 2.5 KB: of very many headings, the lowest ones stay out of the outline.
void boundOutline(QVector<PdfHeading> &headings)
{
    constexpr int maxHeadings = 10000;
    constexpr int lowest = 6;
    for (int level = lowest; level > 1 && headings.size() > maxHeadings; --level) {
        const auto isLow = [level](const PdfHeading &heading) { return heading.level >= level; };
        headings.erase(std::remove_if(headings.begin(), headings.end(), isLow), headings.end());
    }
    if (headings.size() > maxHeadings)
        headings.resize(maxHeadings);
}

/*! Tells where links lead to. */
class LinkResolver
{
public:
    explicit LinkResolver(const QHash<QString, PdfArea> &named)
        : m_named(named)
    {
    }

    /*! The link that stands at \a area; none to a place that there is not, nor to a script. */
    std::optional<PdfLink> resolve(const QString &target, const PdfArea &area) const
    {
        if (!target.startsWith(QLatin1Char('#'))) {
            if (isScriptLink(target) || !QUrl(target).isValid())
                return std::nullopt;
            return PdfLink {area, target, PdfArea()};
        }
        const QString name = target.mid(1);
        auto place = m_named.constFind(name);
        if (place == m_named.constEnd())
            place = m_named.constFind(QUrl::fromPercentEncoding(name.toUtf8()));
        if (place == m_named.constEnd())
            return std::nullopt;
        return PdfLink {area, QString(), *place};
    }

private:
    const QHash<QString, PdfArea> m_named;
};

bool isShown(const QPointF &point, const PageSlice &slice)
{
    return std::any_of(slice.columns.cbegin(), slice.columns.cend(),
                       [&point](const ColumnPart &column) {
                           return column.left <= point.x() && point.x() <= column.right
                               && point.y() < column.bottom;
                       });
}

}

PdfArea Pages::areaOf(const QRectF &rect) const
{
    const auto behind
        = std::upper_bound(m_slices.cbegin(), m_slices.cend(), rect.center().y(),
                           [](double y, const PageSlice &slice) { return y < slice.top; });
    int page = qMax(0, int(behind - m_slices.cbegin()) - 1);
    // The parts of a row on two pages overlap.
    if (page > 0 && isShown(rect.center(), m_slices[page - 1]))
        --page;
    const PageSlice &slice = m_slices[page];
    return onPage(page,
                  rect.translated(m_body.left(), m_body.top() + slice.headHeight() - slice.top));
}

QVector<PdfArea> Pages::areasOf(TextPlaces &places, int start, int end) const
{
    QVector<PdfArea> areas;
    const QVector<QRectF> rects = places.rects(start, end);
    for (const QRectF &rect : rects)
        areas.append(areaOf(rect));
    return areas;
}

/*! The places that links of the document may name. */
QHash<QString, PdfArea> Pages::namedPlaces() const
{
    QHash<QString, PdfArea> named;
    TextPlaces places(m_text);
    for (FragmentWalker walker(&m_text, 0); walker.isValid(); walker.next()) {
        const QStringList names = walker.format().anchorNames();
        for (const QString &name : names) {
            const QVector<PdfArea> areas = areasOf(places, walker.start(), walker.start() + 1);
            if (!named.contains(name) && !areas.isEmpty())
                named.insert(name, areas.first());
        }
    }
    return named;
}

void Pages::addLinks(PdfExtras &extras) const
{
    const LinkResolver resolver(namedPlaces());
    const auto add = [&](const TextLink &link, const PdfArea &area) {
        if (const std::optional<PdfLink> made = resolver.resolve(link.target, area))
            extras.links.append(*made);
    };
    const QVector<TextLink> links = linksOf(m_text);
    for (const TextLink &link : links)
        add(link, areaOf(link.rect));
    int page = 0;
    for (const TextLink &link : m_noteLinks) {
        const double y = link.rect.center().y();
        while (page < m_slices.size() && m_slices[page].notesBottom <= y)
            ++page;
        if (page == m_slices.size())
            return;
        const double top = m_body.bottom() - m_slices[page].notesBottom;
        add(link, onPage(page, link.rect.translated(m_body.left(), top)));
    }
}

void Pages::addHeadings(PdfExtras &extras) const
{
    for (QTextBlock block = m_text.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        const QString text = block.text().simplified();
        if (level > 0 && !text.isEmpty())
            extras.outline.append(
                {text, level, areaOf(m_text.documentLayout()->blockBoundingRect(block))});
    }
    boundOutline(extras.outline);
}

PdfExtras Pages::extras() const
{
    PdfExtras extras;
    extras.title = m_document.title;
    extras.author = m_text.property(MVRTextRtf::authorProperty).toString();
    addLinks(extras);
    addHeadings(extras);
    for (int i = 0; i < m_commentAreas.size() && !m_setup.hasCommentsInMargin; ++i) {
        const PageComment &comment = m_notes.comments[size_t(i)];
        extras.comments.append(
            {m_commentAreas[i], comment.text, comment.author, comment.color, comment.date});
    }
    return extras;
}
