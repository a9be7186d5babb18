// SPDX-License-Identifier: MIT
#include <pages/PageComposer_p.h>

namespace {

constexpr double tolerance = 0.01; // points that sums may be off

// So much of a page may stay empty for a break between sentences, or for none at all.
constexpr double mayStayEmpty = 0.25;

// Lets a single line go over the page's end, where nothing else is left.
std::optional<FlowCut> forcedCut(const FlowColumn &column, bool hasHeads)
{
    FlowCut cut;
    if (hasHeads)
        return cut;
    const FlowParagraph &first = column.paragraphs.first();
    if (first.lines.size() > 1) {
        cut.lines = 1;
        cut.offset = first.lines[1].start;
        return cut;
    }
    cut.paragraph = 1;
    return column.paragraphs.size() > 1 ? std::optional<FlowCut>(cut) : std::nullopt;
}

}

PageComposer::PageComposer(const MVRScreenplay &screenplay, QVector<MVRScreenplayPage> *pages,
                           QVector<MVRScreenplayScene> *scenes)
    : m_screenplay(screenplay)
    , m_settings(screenplay.settings)
    , m_flow(screenplay, scenes)
    , m_pages(pages)
    , m_scenes(scenes)
    , m_top(m_settings.topMargin)
    , m_bottom(m_settings.pageSize.height() - m_settings.bottomMargin)
{
    m_sceneLine.attr.leftIndent = m_settings.dualLeft;
    m_sceneLine.attr.rightIndent = m_settings.dualRight;
}

void PageComposer::compose()
{
    composeTitlePage();
    startPage(false);
    FlowUnit unit = m_flow.next();
    while (!unit.isEmpty()) {
        const FlowUnit following = m_flow.next();
        place(unit, !following.isEmpty() && !following.startsScene && unit.scene >= 0);
        unit = following;
    }
}

/*! The title page goes over the bottom margin before it spills over to a second page. */
void PageComposer::composeTitlePage()
{
    if (m_screenplay.titlePage.isEmpty())
        return;
    const double margin = qMin(m_settings.bottomMargin, m_settings.footerMargin);
    const double paperBottom = m_settings.pageSize.height() - margin;
    startPage(true);
    for (int i = 0; i < m_screenplay.titlePage.size(); ++i) {
        FlowParagraph paragraph = m_flow.paragraph(m_screenplay.titlePage[i], i);
        paragraph.scene = -1;
        const bool isBlank = paragraph.text->text().trimmed().isEmpty();
        if (paragraph.source->attr.startsNewPage && !m_isAtTop)
            startPage(true);
        m_y += spaceBefore(paragraph);
        for (const TextSpan &line : qAsConst(paragraph.lines)) {
            // Empty lines at the foot need no page.
            if (!isBlank && m_y + paragraph.lineHeight > paperBottom + tolerance)
                startPage(true);
            putLine(paragraph, line, 0);
            m_y += paragraph.lineHeight;
        }
    }
}

void PageComposer::startPage(bool isTitlePage)
{
    MVRScreenplayPage page;
    page.isTitlePage = isTitlePage;
    const bool isFirst = m_pages->isEmpty() || m_pages->last().isTitlePage;
    if (!isTitlePage)
        page.number = isFirst ? m_settings.startingPage : m_pages->last().number + 1;
    m_pages->append(page);
    m_y = m_top;
    m_isAtTop = true;
    m_isBehindSceneTop = false;
}

double PageComposer::spaceBefore(const FlowParagraph &paragraph) const
{
    if (m_isBehindSceneTop)
        return qMax(paragraph.spaceBefore, m_settings.lineHeight);
    return m_isAtTop ? 0.0 : paragraph.spaceBefore;
}

double PageComposer::headHeight(const FlowUnit &unit) const
{
    double height = 0.0;
    for (int i = 0; i < unit.heads.size(); ++i)
        height += unit.heads[i].height()
            + (i > 0 ? unit.heads[i].spaceBefore : spaceBefore(unit.heads[i]));
    if (unit.columns.isEmpty())
        return height;
    const FlowParagraph &first = unit.columns.first().paragraphs.first();
    return height + (unit.heads.isEmpty() ? spaceBefore(first) : first.spaceBefore);
}

double PageComposer::heightOf(const FlowUnit &unit) const
{
    double height = 0.0;
    for (const FlowColumn &column : unit.columns)
        height = qMax(height, PageFlow::heightOf(column));
    return headHeight(unit) + height;
}

// What "(CONTINUED)" takes, with the empty line above it.
double PageComposer::bottomSpace() const
{
    return m_settings.marksBrokenScene ? 2.0 * m_settings.lineHeight : 0.0;
}

// What a page has between the marks of a scene that is broken above and below.
double PageComposer::roomInScene() const
{
    const double top = m_settings.continuesBrokenScene ? 2.0 * m_settings.lineHeight : 0.0;
    return m_flow.bodyHeight() - top - bottomSpace();
}

void PageComposer::place(FlowUnit unit, bool sceneGoesOn)
{
    if (unit.startsPage && !m_isAtTop)
        breakPage(!unit.startsScene && m_scene >= 0);
    while (!unit.isEmpty()) {
        const double bottom = unit.scene >= 0 ? bottomSpace() : 0.0;
        const bool fits = heightOf(unit) <= room() - (sceneGoesOn ? bottom : 0.0) + tolerance;
        std::optional<Cuts> cuts;
        if (fits)
            cuts = Cuts(unit.columns.size());
        else
            cuts = chooseCuts(unit, room() - bottom);
        if (!cuts) {
            breakPage(!unit.startsScene && m_scene >= 0);
            continue;
        }
        if (unit.scene != m_scene)
            m_sceneBreaks = 0;
        m_scene = unit.scene;
        unit = split(unit, *cuts);
        if (!unit.isEmpty())
            breakPage(m_scene >= 0);
    }
}

std::optional<PageComposer::Cuts> PageComposer::cutsOf(const FlowUnit &unit, double room,
                                                       CutRule rule) const
{
    const double columnRoom = room - headHeight(unit);
    if (unit.columns.isEmpty())
        return std::nullopt;
    Cuts cuts(unit.columns.size());
    for (int side = 0; side < unit.columns.size(); ++side) {
        const FlowColumn &column = unit.columns[side];
        if (PageFlow::heightOf(column) <= columnRoom + tolerance)
            continue;
        const bool hasMore = column.isSpeech && m_settings.marksBrokenSpeech;
        cuts[side]
            = m_flow.findCut(column, columnRoom - (hasMore ? m_settings.lineHeight : 0.0), rule);
        if (!cuts[side])
            return std::nullopt;
    }
    return cuts;
}

/*! Where a unit that does not fit breaks; nothing where it is better off on the next page. */
std::optional<PageComposer::Cuts> PageComposer::chooseCuts(const FlowUnit &unit, double room) const
{
    const double mayStay = m_flow.bodyHeight() * mayStayEmpty;
    const std::optional<Cuts> lines = cutsOf(unit, room, CutRule::Line);
    if (m_settings.breaksAtSentences) {
        const std::optional<Cuts> sentences = cutsOf(unit, room, CutRule::Sentence);
        double lowest = 0.0;
        if (sentences) {
            for (const std::optional<FlowCut> &cut : *sentences)
                lowest = qMax(lowest, cut ? cut->height : 0.0);
        }
        if (sentences && room - headHeight(unit) - lowest <= mayStay)
            return sentences;
        if (!m_isAtTop && room <= mayStay)
            return std::nullopt;
    }
    if (lines || !m_isAtTop)
        return lines;
    if (const std::optional<Cuts> any = cutsOf(unit, room, CutRule::Any))
        return any;
    // A line is higher than what is left below the headings, or than the page.
    Cuts forced;
    for (const FlowColumn &column : unit.columns)
        forced.append(forcedCut(column, !unit.heads.isEmpty()));
    return forced;
}

FlowColumn PageComposer::restOf(const FlowColumn &column, const FlowCut &cut) const
{
    if (cut.paragraph == 0 && cut.offset < 0)
        return column;
    FlowColumn rest;
    rest.isSpeech = column.isSpeech;
    rest.name = column.name;
    // A page of names alone, or of parts of one, would have the next one hold nothing else.
    const int names = column.isNamed ? 1 : 0;
    const bool hasSpoken = cut.paragraph > names || (cut.paragraph == names && cut.offset >= 0);
    if (!hasSpoken) {
        rest.isNamed = column.isNamed && cut.paragraph == 0;
    } else if (column.isSpeech && m_settings.namesBrokenSpeech) {
        const FlowParagraph name = m_flow.continuedName(column.name);
        // One that takes most of the page would leave no room for what is said.
        rest.isNamed = !name.hasMore && name.height() <= roomInScene() / 2.0;
        if (rest.isNamed)
            rest.paragraphs.append(name);
    }
    for (int i = cut.paragraph; i < column.paragraphs.size(); ++i) {
        FlowParagraph paragraph = column.paragraphs[i];
        if (i == cut.paragraph && cut.offset >= 0)
            paragraph = m_flow.rest(paragraph, cut.offset);
        rest.paragraphs.append(paragraph);
    }
    return rest;
}

/*! Puts what stays of a unit on the page; \return what does not. */
FlowUnit PageComposer::split(const FlowUnit &unit, const Cuts &cuts)
{
    for (const FlowParagraph &head : unit.heads)
        put(head, head.lines.size(), -1, 0);
    FlowUnit rest;
    rest.scene = unit.scene;
    const double top = m_y;
    double bottom = m_y;
    const bool wasAtTop = m_isAtTop;
    const bool wasBehindSceneTop = m_isBehindSceneTop;
    for (int side = 0; side < unit.columns.size(); ++side) {
        m_y = top;
        m_isAtTop = wasAtTop;
        m_isBehindSceneTop = wasBehindSceneTop;
        const FlowColumn &column = unit.columns[side];
        putColumn(column, cuts[side], unit.columns.size() > 1 ? side : 0);
        bottom = qMax(bottom, m_y);
        if (cuts[side])
            rest.columns.append(restOf(column, *cuts[side]));
    }
    m_y = bottom;
    return rest;
}

void PageComposer::putColumn(const FlowColumn &column, const std::optional<FlowCut> &cut, int side)
{
    const int end = cut ? cut->paragraph : column.paragraphs.size();
    for (int i = 0; i < end; ++i)
        put(column.paragraphs[i], column.paragraphs[i].lines.size(), -1, side);
    if (!cut)
        return;
    if (cut->offset >= 0)
        put(column.paragraphs[end], cut->lines, cut->offset, side);
    const bool hasPart = cut->offset >= 0 || end > 0;
    if (hasPart && column.isSpeech && m_settings.marksBrokenSpeech)
        put(m_flow.added(column.name, m_settings.moreText, MVRScreenplayLine::More), 1, -1, side);
}

/*! Puts the first lines of a paragraph on the page, the last one only up to \a end. */
void PageComposer::put(const FlowParagraph &paragraph, int lines, int end, int column)
{
    m_y += spaceBefore(paragraph);
    m_isAtTop = false;
    m_isBehindSceneTop = false;
    for (int i = 0; i < lines; ++i) {
        TextSpan span = paragraph.lines[i];
        if (end >= 0 && i == lines - 1)
            span.end = qMax(span.start, qMin(span.end, end));
        putLine(paragraph, span, column);
        m_y += paragraph.lineHeight;
    }
}

void PageComposer::breakPage(bool isInScene)
{
    if (isInScene)
        putSceneBottom();
    startPage(false);
    if (isInScene)
        putSceneTop();
}
