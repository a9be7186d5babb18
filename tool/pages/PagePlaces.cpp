// SPDX-License-Identifier: MIT
#include <tool/pages/Pages.h>

#include <tool/Document.h>

#include <core/MVRTextRtf.h>

#include <QAbstractTextDocumentLayout>
#include <QHash>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QUrl>

#include <algorithm>

namespace {

constexpr double pointsPerDot = 72.0 / Pages::resolution;

QRectF lineRect(const QTextLine &line, int start, int end)
{
    const double left = line.cursorToX(start);
    const double right = line.cursorToX(end);
    return QRectF(qMin(left, right), line.y(), qAbs(right - left), line.height());
}

bool isShown(const QPointF &point, const PageSlice &slice)
{
    return std::any_of(slice.columns.cbegin(), slice.columns.cend(),
                       [&point](const ColumnPart &column) {
                           return column.left <= point.x() && point.x() <= column.right
                               && point.y() < column.bottom;
                       });
}

}

/*! Where the text of a range stands, line by line, in the layout. */
QVector<QRectF> Pages::rectsOf(int start, int end) const
{
    QVector<QRectF> rects;
    for (QTextBlock block = m_text.findBlock(start); block.isValid() && block.position() < end;
         block = block.next()) {
        const QTextLayout &layout = *block.layout();
        const QPointF origin = m_text.documentLayout()->blockBoundingRect(block).topLeft()
            - layout.boundingRect().topLeft();
        const int from = qMax(0, start - block.position());
        const int to = qMin(block.length() - 1, end - block.position());
        for (int i = 0; i < layout.lineCount(); ++i) {
            const QTextLine line = layout.lineAt(i);
            const int first = qMax(from, line.textStart());
            const int last = qMin(to, line.textStart() + line.textLength());
            if (first < last)
                rects.append(lineRect(line, first, last).translated(origin));
        }
    }
    return rects;
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
    const QRectF onPage
        = rect.translated(m_body.left(), m_body.top() + slice.headHeight() - slice.top);
    return {page, QRectF(onPage.topLeft() * pointsPerDot, onPage.size() * pointsPerDot)};
}

QVector<PdfArea> Pages::areasOf(int start, int end) const
{
    QVector<PdfArea> areas;
    const QVector<QRectF> rects = rectsOf(start, end);
    for (const QRectF &rect : rects)
        areas.append(areaOf(rect));
    return areas;
}

void Pages::addLinks(PdfExtras &extras) const
{
    QHash<QString, int> names;
    struct Link
    {
        int start;
        int end;
        QString target;
    };
    QVector<Link> links;
    for (QTextBlock block = m_text.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextCharFormat format = fragment.charFormat();
            const QStringList own = format.anchorNames();
            for (const QString &name : own) {
                if (!names.contains(name))
                    names.insert(name, fragment.position());
            }
            if (!format.anchorHref().isEmpty())
                links.append({fragment.position(), fragment.position() + fragment.length(),
                              format.anchorHref()});
        }
    }
    for (const Link &link : qAsConst(links)) {
        PdfLink made;
        if (link.target.startsWith(QLatin1Char('#'))) {
            const QString name = link.target.mid(1);
            const QString decoded = QUrl::fromPercentEncoding(name.toUtf8());
            const int place = names.value(name, names.value(decoded, -1));
            const QVector<PdfArea> target
                = place < 0 ? QVector<PdfArea>() : areasOf(place, place + 1);
            if (target.isEmpty())
                continue;
            made.target = target.first();
        } else {
            made.url = link.target;
        }
        const QVector<PdfArea> areas = areasOf(link.start, link.end);
        for (const PdfArea &area : areas) {
            made.area = area;
            extras.links.append(made);
        }
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
