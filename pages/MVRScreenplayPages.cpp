// SPDX-License-Identifier: MIT
#include <pages/MVRScreenplayPages.h>

#include <pages/PageComposer_p.h>

#include <algorithm>

namespace {

constexpr double maxShareOfMargins = 0.9; // of its height that margins may take

int eighthsOf(double height, double bodyHeight)
{
    return qMax(1, qRound(8.0 * height / bodyHeight));
}

// Numbers from a file, brought into a range that pages can be made with.
void makeSound(MVRScreenplaySettings &settings)
{
    if (!(settings.pageSize.width() >= 72.0) || !(settings.pageSize.height() >= 72.0)
        || settings.pageSize.width() > 14400.0 || settings.pageSize.height() > 14400.0)
        settings.pageSize = MVRScreenplaySettings().pageSize;
    const double height = settings.pageSize.height();
    const auto isSound = [height](double margin) { return margin >= 0.0 && margin < height; };
    if (!isSound(settings.topMargin) || !isSound(settings.bottomMargin)
        || settings.topMargin + settings.bottomMargin > maxShareOfMargins * height) {
        settings.topMargin = height / 11.0;
        settings.bottomMargin = height / 11.0;
    }
    for (double *margin : {&settings.headerMargin, &settings.footerMargin}) {
        if (!isSound(*margin))
            *margin = height / 22.0;
    }
    if (!(settings.lineHeight >= 1.0 && settings.lineHeight <= 144.0))
        settings.lineHeight = 12.0;
    settings.startingPage = qBound(0, settings.startingPage, 1000000);
}

bool isText(const MVRScreenplayLine &line)
{
    return line.kind <= MVRScreenplayLine::SceneTop;
}

// What breaks bring along is counted, but no part begins or ends with it.
void addText(const MVRScreenplayLine &line, int number, MVRScreenplaySceneLength *part)
{
    if (line.paragraph < 0)
        return;
    if (part->firstLine == 0) {
        part->firstLine = number;
        part->firstText = line.text();
    }
    part->lastLine = number;
    if (!line.text().isEmpty())
        part->lastText = line.text();
}

int indexOf(const QVector<MVRScreenplayScene> &scenes, const QString &number, bool last)
{
    int found = -1;
    for (int i = 0; i < scenes.size() && (last || found < 0); ++i) {
        if (scenes[i].number.compare(number, Qt::CaseInsensitive) == 0)
            found = i;
    }
    return found;
}

}

MVRScreenplayPages::MVRScreenplayPages(const MVRScreenplay &screenplay)
{
    MVRScreenplay sound = screenplay;
    makeSound(sound.settings);
    m_pageSize = sound.settings.pageSize;
    m_bodyHeight = m_pageSize.height() - sound.settings.topMargin - sound.settings.bottomMargin;
    PageComposer(sound, &m_pages, &m_scenes).compose();
    int index = 0;
    for (int i = 0; i < m_pages.size(); ++i, ++index) {
        if (i > 0 && m_pages[i - 1].isTitlePage != m_pages[i].isTitlePage)
            index = 0;
        addFurniture(sound, m_scenes, index, m_pages[i]);
    }
    QVector<double> heights(m_scenes.size(), 0.0);
    for (const MVRScreenplayPage &page : qAsConst(m_pages)) {
        double end = sound.settings.topMargin;
        for (const MVRScreenplayLine &line : page.lines) {
            if (!isText(line))
                continue;
            const double bottom = qMax(end, line.y + line.height);
            if (line.scene >= 0)
                heights[line.scene] += bottom - end;
            end = bottom;
        }
    }
    for (int i = 0; i < m_scenes.size(); ++i)
        m_scenes[i].eighths = eighthsOf(heights[i], m_bodyHeight);
}

QVector<MVRScreenplaySceneLength> MVRScreenplayPages::sceneLengths() const
{
    QVector<MVRScreenplaySceneLength> lengths;
    for (int i = 0; i < m_pages.size(); ++i) {
        if (m_pages[i].isTitlePage)
            continue;
        const int first = lengths.size();
        int count = 0;
        double lowest = -1.0; // line so far
        double bottom = 0.0; // of it
        double start = 0.0; // of the part
        for (const MVRScreenplayLine &line : m_pages[i].lines) {
            if (!isText(line))
                continue;
            count += line.y > lowest ? 1 : 0;
            if (lengths.size() == first || lengths.last().scene != line.scene) {
                MVRScreenplaySceneLength part;
                part.page = i;
                part.scene = line.scene;
                lengths.append(part);
                start = lowest < 0.0 ? line.y : bottom;
            }
            lowest = qMax(lowest, line.y);
            bottom = qMax(bottom, line.y + line.height);
            MVRScreenplaySceneLength &part = lengths.last();
            part.eighths = eighthsOf(bottom - start, m_bodyHeight);
            addText(line, count, &part);
        }
    }
    return lengths;
}

bool MVRScreenplayPages::keepScenes(const QString &first, const QString &last)
{
    const int from = indexOf(m_scenes, first, false);
    const int to = indexOf(m_scenes, last, true);
    if (from < 0 || to < from)
        return false;
    QVector<MVRScreenplayPage> kept;
    for (const MVRScreenplayPage &page : qAsConst(m_pages)) {
        MVRScreenplayPage sides = page;
        sides.lines.clear();
        bool hasText = false;
        for (const MVRScreenplayLine &line : page.lines) {
            const bool isFurniture
                = line.kind == MVRScreenplayLine::Header || line.kind == MVRScreenplayLine::Footer;
            const bool isOfScene = line.scene >= from && line.scene <= to;
            hasText = hasText || (isOfScene && !isFurniture);
            if (isFurniture || isOfScene)
                sides.lines.append(line);
        }
        if (hasText && !page.isTitlePage)
            kept.append(sides);
    }
    m_pages = kept;
    return true;
}

bool MVRScreenplayPages::keepPages(int first, int last)
{
    QVector<MVRScreenplayPage> kept;
    std::copy_if(m_pages.cbegin(), m_pages.cend(), std::back_inserter(kept),
                 [first, last](const MVRScreenplayPage &page) {
                     return !page.isTitlePage && page.number >= first && page.number <= last;
                 });
    if (kept.isEmpty())
        return false;
    m_pages = kept;
    return true;
}

void MVRScreenplayPages::removeRevisionMarks()
{
    for (MVRScreenplayPage &page : m_pages) {
        page.lines.erase(std::remove_if(page.lines.begin(), page.lines.end(),
                                        [](const MVRScreenplayLine &line) {
                                            return line.kind == MVRScreenplayLine::RevisionMark;
                                        }),
                         page.lines.end());
    }
}
