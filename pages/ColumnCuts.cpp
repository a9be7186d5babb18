// SPDX-License-Identifier: MIT
#include <pages/PageFlow_p.h>

#include <cmath>
#include <limits>

using namespace MVRFinalDraft;

namespace {

constexpr double tolerance = 0.01; // points that sums may be off
constexpr int linesKept = 2; // of a paragraph, on each side of a break

bool breaks(const FlowParagraph &paragraph)
{
    return !paragraph.isOf(SceneHeading) && !paragraph.isOf(Character)
        && !paragraph.isOf(Parenthetical) && !paragraph.isOf(Transition);
}

}

double PageFlow::heightOf(const FlowColumn &column)
{
    double height = 0.0;
    for (int i = 0; i < column.paragraphs.size(); ++i) {
        const FlowParagraph &paragraph = column.paragraphs[i];
        if (paragraph.hasMore)
            return std::numeric_limits<double>::infinity();
        height += paragraph.height() + (i > 0 ? paragraph.spaceBefore : 0.0);
    }
    return height;
}

std::optional<FlowCut> PageFlow::cutInside(const FlowParagraph &paragraph, double room,
                                           CutRule rule) const
{
    const int kept = rule == CutRule::Any ? 1 : linesKept;
    const int available = int(std::floor((room + tolerance) / paragraph.lineHeight));
    const int fitting = qMin(available, paragraph.lines.size() - 1);
    if (fitting < kept || (rule != CutRule::Any && !breaks(paragraph)))
        return std::nullopt;
    FlowCut cut;
    if (rule != CutRule::Sentence) {
        const int lines
            = paragraph.hasMore ? fitting : qMin(fitting, paragraph.lines.size() - kept);
        if (lines < kept)
            return std::nullopt;
        cut.offset = paragraph.lines[lines].start;
        cut.lines = lines;
        cut.height = lines * paragraph.lineHeight;
        return cut;
    }
    const QVector<int> starts = paragraph.text->sentenceStarts(paragraph.lines[kept - 1].start,
                                                               paragraph.lines[fitting].start + 1);
    for (const int start : starts) {
        int lines = fitting;
        while (lines > kept && paragraph.lines[lines - 1].start >= start)
            --lines;
        if (wrapLines(*paragraph.text, paragraph.box, start, kept).size() < kept)
            continue;
        cut.offset = start;
        cut.lines = lines;
        cut.height = lines * paragraph.lineHeight;
        return cut;
    }
    return std::nullopt;
}

std::optional<FlowCut> PageFlow::findCut(const FlowColumn &column, double room, CutRule rule) const
{
    std::optional<FlowCut> best;
    double height = 0.0;
    for (int i = 0; i < column.paragraphs.size(); ++i) {
        const FlowParagraph &paragraph = column.paragraphs[i];
        const int firstFree = column.isNamed ? 2 : 1;
        const bool isFree = i >= firstFree && !column.paragraphs[i - 1].isOf(Parenthetical);
        if (isFree || (rule == CutRule::Any && i > 0)) {
            FlowCut before;
            before.paragraph = i;
            before.height = height;
            best = before;
        }
        height += i > 0 ? paragraph.spaceBefore : 0.0;
        if (std::optional<FlowCut> inside = cutInside(paragraph, room - height, rule)) {
            inside->paragraph = i;
            inside->height += height;
            best = inside;
        }
        height += paragraph.height();
        if (height > room + tolerance)
            break;
    }
    return best;
}
