// SPDX-License-Identifier: MIT
#include <pages/PageFlow_p.h>

using namespace MVRFinalDraft;

namespace {

constexpr double columnGap = 18.0; // points
constexpr double nameIndent = 0.25; // of a column's width
constexpr double parentheticalIndent = 0.12;

double indentOf(const FlowParagraph &paragraph)
{
    if (paragraph.isOf(Character))
        return nameIndent;
    return paragraph.isOf(Parenthetical) ? parentheticalIndent : 0.0;
}

}

/*!
    Takes two speeches of a dual dialogue, or the one that is left.

    They share the width that a line of action has; with more than two speakers each pair stands
    below the one before.
*/
void PageFlow::takeDual(FlowUnit &unit)
{
    const int group = at(m_next).dualDialogue;
    unit.columns.append(takeSpeech());
    m_speaker.clear();
    if (!unit.columns.first().isSpeech || isAtEnd() || at(m_next).dualDialogue != group
        || at(m_next).attr.startsNewPage || !isName(m_next))
        return;
    unit.columns.append(takeSpeech());
    const MVRScreenplaySettings &settings = m_screenplay.settings;
    const LineBox both
        = boxOnPaper(settings.dualLeft, settings.dualRight, settings.pageSize.width());
    const double width = qMax(columnGap, (both.right - both.left - columnGap) / 2.0);
    for (int side = 0; side < unit.columns.size(); ++side) {
        for (FlowParagraph &paragraph : unit.columns[side].paragraphs) {
            const double spaceBefore = paragraph.spaceBefore;
            const double start = both.left + side * (width + columnGap);
            paragraph.box.left = start + indentOf(paragraph) * width;
            paragraph.box.right = start + width;
            paragraph.box.firstLeft = paragraph.box.left;
            paragraph.box.alignment = Qt::AlignLeft;
            paragraph = rest(paragraph, 0);
            paragraph.spaceBefore = spaceBefore;
        }
        unit.columns[side].paragraphs.first().spaceBefore
            = unit.columns.first().paragraphs.first().spaceBefore;
        unit.columns[side].name = unit.columns[side].paragraphs.first();
    }
}
