// SPDX-License-Identifier: MIT
#include <tool/pages/PageSlices.h>

#include <algorithm>

namespace {

constexpr double maxShareOfNotes = 0.5; // of a page, while there is text
constexpr double slack = 0.5; // units that rounding may add

/*! The footnotes, one below the other, shown from the top on. */
class NoteColumn
{
public:
    explicit NoteColumn(const QVector<double> &cuts)
        : m_cuts(cuts)
    {
    }

    double shown() const { return m_shown; }
    double due() const { return m_due; }
    void add(double height) { m_due += height; }

    /*! What a page shows where \a more becomes due and \a most has room: cut where it may be. */
    double nextHeight(double more, double most) const
    {
        const double wanted = m_due + more - m_shown;
        if (wanted <= most + slack)
            return wanted;
        const auto behind
            = std::upper_bound(m_cuts.cbegin(), m_cuts.cend(), m_shown + most + slack);
        const double cut = behind == m_cuts.cbegin() ? 0.0 : *(behind - 1);
        return cut > m_shown + slack ? cut - m_shown : most;
    }

    void show(double height) { m_shown += height; }

private:
    const QVector<double> &m_cuts;
    double m_shown = 0.0;
    double m_due = 0.0;
};

/*! Fills one page after the other. */
class PageCutter
{
public:
    PageCutter(const QVector<FlowItem> &items, const QVector<double> &noteCuts,
               const PageHeights &heights)
        : m_items(items)
        , m_notes(noteCuts)
        , m_heights(heights)
    {
    }

    QVector<PageSlice> cut();

private:
    double footHeight(double notes, double most) const
    {
        const double height = m_notes.nextHeight(notes, most);
        return height > 0.0 ? height + m_heights.noteGap : 0.0;
    }
    bool fits(const PageSlice &page, const FlowItem &item, double notes) const
    {
        return page.headHeight() + item.bottom - page.top
            + footHeight(notes + item.notes, maxShareOfNotes * m_heights.body)
            <= m_heights.body + slack;
    }
    PageSlice emptyPage(int first) const;
    int nextFirst(const PageSlice &page, int first) const;
    void appendHigh(PageSlice &slice, const FlowItem &item);
    void append(PageSlice slice, double maxNotes);

    const QVector<FlowItem> &m_items;
    NoteColumn m_notes;
    PageHeights m_heights;
    QVector<PageSlice> m_slices;
};

PageSlice PageCutter::emptyPage(int first) const
{
    const FlowItem &item = m_items[first];
    PageSlice page;
    page.top = item.top;
    page.drawnTop = drawnTop(m_items, first);
    page.start = item.start;
    page.headTop = item.headTop;
    page.headBottom
        = item.headBottom - item.headTop > m_heights.body / 2.0 ? item.headTop : item.headBottom;
    return page;
}

// The item that the next page begins with: one behind the last that fits, or a better place.
int PageCutter::nextFirst(const PageSlice &page, int first) const
{
    double notes = 0.0;
    int best = -1;
    int i = first;
    for (; i < m_items.size(); ++i) {
        if (i > first && m_items[i].startsPage)
            return i;
        if (i > first && m_items[i].mayStartPage)
            best = i;
        if (!fits(page, m_items[i], notes))
            break;
        notes += m_items[i].notes;
    }
    if (i == m_items.size())
        return i;
    return best > first ? best : qMax(first + 1, i);
}

// The place nearest above \a y that goes through no line of an item; y where there is none.
double betweenLines(const FlowItem &item, double top, double y)
{
    double place = y;
    auto line = std::lower_bound(item.lines.cbegin(), item.lines.cend(), qMakePair(y, 0.0));
    while (line != item.lines.cbegin()) {
        --line;
        if (line->first <= top)
            break;
        if (line->first < place - slack && line->second > place + slack)
            place = line->first;
    }
    return place;
}

/*! Cuts off whole pages of what is higher than one. */
void PageCutter::appendHigh(PageSlice &slice, const FlowItem &item)
{
    const double most = maxShareOfNotes * m_heights.body;
    while (slice.bottom - slice.top + slice.headHeight() + footHeight(0.0, most)
           > m_heights.body + slack) {
        const double room = m_heights.body - slice.headHeight();
        PageSlice part = slice;
        part.bottom = betweenLines(item, slice.top, slice.top + room - footHeight(0.0, most));
        part.end = part.start;
        append(part, most);
        slice.top = part.bottom;
        slice.drawnTop = slice.top;
    }
}

void PageCutter::append(PageSlice slice, double maxNotes)
{
    slice.notesTop = m_notes.shown();
    m_notes.show(m_notes.nextHeight(0.0, maxNotes));
    slice.notesBottom = m_notes.shown();
    m_slices.append(slice);
}

QVector<PageSlice> PageCutter::cut()
{
    const double most = maxShareOfNotes * m_heights.body;
    for (int first = 0; first < m_items.size();) {
        PageSlice page = emptyPage(first);
        const int next = nextFirst(page, first);
        page.bottom = m_items[next - 1].bottom;
        page.end = m_items[next - 1].end;
        appendHigh(page, m_items[first]);
        for (; first < next; ++first)
            m_notes.add(m_items[first].notes);
        append(page, most);
    }
    while (m_notes.due() > m_notes.shown() + slack) {
        PageSlice rest;
        rest.top = rest.bottom = rest.drawnTop = m_slices.last().bottom;
        rest.start = rest.end = m_slices.last().end;
        append(rest, m_heights.body - m_heights.noteGap);
    }
    return m_slices;
}

}

double drawnTop(const QVector<FlowItem> &items, int first)
{
    if (!items[first].lines.isEmpty())
        return qMax(items[first].top, items[first].lines.first().first);
    if (!items[first].continuesParagraph || first + 1 >= items.size())
        return items[first].top;
    return (items[first + 1].top + items[first + 1].bottom) / 2.0;
}

QVector<PageSlice> cutPages(const QVector<FlowItem> &items, const QVector<double> &noteCuts,
                            const PageHeights &heights)
{
    return PageCutter(items, noteCuts, heights).cut();
}
