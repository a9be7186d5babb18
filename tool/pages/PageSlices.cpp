// SPDX-License-Identifier: MIT
#include <tool/pages/HighRow.h>
#include <tool/pages/PageSlices.h>

#include <algorithm>

namespace {

constexpr double slack = 0.5; // units that rounding may add
constexpr double leftmost = -1e6; // units, beyond any page
constexpr double rightmost = 1e6;
constexpr int mostRowParts = 500000; // lines of high rows on pages: each takes some 4 us to draw

double topmostLine(const FlowItem &row)
{
    double top = row.bottom;
    for (const RowColumn &column : row.columns) {
        if (!column.lines.isEmpty())
            top = qMin(top, column.lines.first().top);
    }
    return top;
}

double drawnTop(const FlowItem &item)
{
    return item.columns.isEmpty() ? item.drawnTop : qMax(item.top, topmostLine(item));
}

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
    bool isFull() const { return m_slices.size() > mostPages || m_rowParts > mostRowParts; }
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
    void setHead(PageSlice &page, const FlowItem &item) const;
    int nextFirst(const PageSlice &page, int first, bool isEmpty) const;
    int fillUp(PageSlice &page, int first) const;
    void appendHigh(PageSlice &slice, const FlowItem &item);
    void addNotes(int first, int end);
    void append(PageSlice slice, double maxNotes);

    const QVector<FlowItem> &m_items;
    NoteColumn m_notes;
    PageHeights m_heights;
    QVector<PageSlice> m_slices;
    int m_rowParts = 0;
};

PageSlice PageCutter::emptyPage(int first) const
{
    const FlowItem &item = m_items[first];
    PageSlice page;
    page.top = item.top;
    page.start = item.start;
    setHead(page, item);
    return page;
}

void PageCutter::setHead(PageSlice &page, const FlowItem &item) const
{
    const bool isShown = item.headBottom - item.headTop <= m_heights.body / 2.0;
    page.headTop = item.headTop;
    page.headBottom = isShown ? item.headBottom : item.headTop;
}

// The item that the next page begins with: one behind the last that fits, or a better place.
// \a first itself where the page is not empty and takes no more.
int PageCutter::nextFirst(const PageSlice &page, int first, bool isEmpty) const
{
    double notes = 0.0;
    int best = -1;
    int i = first;
    for (; i < m_items.size(); ++i) {
        const bool isFirst = isEmpty && i == first;
        if (!isFirst && m_items[i].startsPage)
            return i;
        if (!isFirst && m_items[i].mayStartPage)
            best = i;
        if (!fits(page, m_items[i], notes))
            break;
        notes += m_items[i].notes;
    }
    if (i == m_items.size())
        return i;
    if (best >= first || !isEmpty)
        return qMax(best, first);
    // What is higher than a page stays with the head of its table, or a heading, all the same.
    const bool goesOn = !m_items[i].mayStartPage && !m_items[i].columns.isEmpty();
    return goesOn && m_items[i].bottom - m_items[i].top > m_heights.body ? i + 1
                                                                         : qMax(first + 1, i);
}

/*! Puts what follows below the last part of a row; \return the item that the next page has. */
int PageCutter::fillUp(PageSlice &page, int first) const
{
    const int next = nextFirst(page, first, false);
    if (next == first)
        return first;
    page.bottom = m_items[next - 1].bottom;
    page.end = m_items[next - 1].end;
    page.columns.append(
        {leftmost, rightmost, m_items[first].top, page.bottom, drawnTop(m_items[first])});
    return next;
}

/*! Cuts off whole pages of what is higher than one. */
void PageCutter::appendHigh(PageSlice &slice, const FlowItem &item)
{
    const double most = maxShareOfNotes * m_heights.body;
    HighRow row(item);
    const auto room = [&] { return m_heights.body - slice.headHeight() - footHeight(0.0, most); };
    while (slice.bottom - slice.top > room() + slack && !isFull()) {
        PageSlice part = slice;
        const bool isBelow = slice.top < item.top;
        part.bottom = slice.top + room();
        part.edges.below = part.edges.next = 0.0;
        if (isBelow && !row.hasRoom(part.bottom))
            part.bottom = item.top;
        else
            part.columns = row.takePart(part.bottom);
        m_rowParts += item.columns.size();
        if (isBelow && !item.columns.isEmpty())
            part.columns.prepend({leftmost, rightmost, slice.top, qMin(item.top, topmostLine(item)),
                                  slice.edges.top});
        part.end = part.start;
        append(part, most);
        slice.top = slice.edges.top = row.top();
        slice.edges.above = 0.0;
        setHead(slice, item);
    }
    if (slice.top > item.top)
        slice.columns = row.takeRest(slice.bottom);
}

void PageCutter::addNotes(int first, int end)
{
    for (int i = first; i < end; ++i)
        m_notes.add(m_items[i].notes);
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
    for (int first = 0; first < m_items.size() && !isFull();) {
        PageSlice page = emptyPage(first);
        int next = nextFirst(page, first, true);
        page.bottom = m_items[next - 1].bottom;
        page.end = m_items[next - 1].end;
        page.edges = drawnEdges(m_items, first, next);
        appendHigh(page, m_items[next - 1].columns.isEmpty() ? m_items[first] : m_items[next - 1]);
        addNotes(first, next);
        if (!page.columns.isEmpty()) {
            first = next;
            next = fillUp(page, first);
            addNotes(first, next);
        }
        append(page, most);
        first = next;
    }
    while (m_notes.due() > m_notes.shown() + slack && !isFull()) {
        PageSlice rest;
        rest.top = rest.bottom = m_slices.last().bottom;
        rest.start = rest.end = m_slices.last().end;
        append(rest, m_heights.body - m_heights.noteGap);
    }
    return isFull() ? QVector<PageSlice>() : m_slices;
}

}

DrawnEdges drawnEdges(const QVector<FlowItem> &items, int first, int end)
{
    DrawnEdges edges;
    edges.top = drawnTop(items[first]);
    edges.above = items[first].above;
    edges.below = items[end - 1].below;
    // Large letters may reach beyond the last line, which is to be drawn all the same.
    const FlowItem &last = items[end - 1];
    if (end < items.size() && last.columns.isEmpty())
        edges.next = qMin(items[end].above, (last.bottom - last.top) / 2.0);
    return edges;
}

QVector<PageSlice> cutPages(const QVector<FlowItem> &items, const QVector<double> &noteCuts,
                            const PageHeights &heights)
{
    return PageCutter(items, noteCuts, heights).cut();
}
