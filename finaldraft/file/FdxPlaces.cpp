// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxPlaces_p.h>

#include <finaldraft/file/FdxText_p.h>

#include <algorithm>

namespace {

QVector<int> blockLengths(const FdxScript &script)
{
    QVector<int> lengths(script.paragraphs().size(), 0);
    for (int i = 0; i < lengths.size(); ++i) {
        if (!script.paragraphs()[i].hasBlock)
            continue;
        for (const FdxRun &run : script.runs(i))
            lengths[i] += fdxTextLength(script.tree().source(), run.textStart, run.textEnd);
    }
    return lengths;
}

}

FdxPlaces::FdxPlaces(const FdxScript &script, const QVector<int> &lengths)
    : m_script(script)
    , m_lengths(lengths.isEmpty() ? blockLengths(script) : lengths)
{
    int position = 0;
    int offset = 0;
    const QVector<FdxParagraph> &paragraphs = script.paragraphs();
    for (int i = 0; i < paragraphs.size(); ++i) {
        const FdxParagraph &paragraph = paragraphs[i];
        const int length = m_lengths[i];
        const int wrapper = script.containerOf(i).wrapper;
        m_positions.append(position);
        m_offsets.append(script.isTitlePage(i) ? -1 : wrapper >= 0 ? m_offsets[wrapper] : offset);
        if (!script.isTitlePage(i) && wrapper < 0) {
            m_topLevel.append(i);
            offset += (paragraph.isWrapper ? 2 : length) + 1;
        }
        if (paragraph.hasBlock) {
            m_blocks.append(i);
            if (length > 0)
                m_withText.append(i);
            position += length + 1;
        }
    }
    m_endPosition = qMax(0, position - 1);
}

QString FdxPlaces::text(int paragraph) const
{
    const auto known = m_texts.constFind(paragraph);
    return known != m_texts.constEnd() ? *known
                                       : *m_texts.insert(paragraph, m_script.text(paragraph));
}

int FdxPlaces::pairStart(int position) const
{
    const int paragraph = paragraphAt(position);
    const int offset = paragraph < 0 ? 0 : position - m_positions[paragraph];
    if (offset <= 0 || offset >= m_lengths[paragraph])
        return position;
    const QString in = text(paragraph);
    const bool isWithin = in.at(offset).isLowSurrogate() && in.at(offset - 1).isHighSurrogate();
    return isWithin ? position - 1 : position;
}

int FdxPlaces::positionOf(int offset) const
{
    const auto behind = std::upper_bound(
        m_topLevel.cbegin(), m_topLevel.cend(), offset,
        [this](int value, int paragraph) { return value < m_offsets[paragraph]; });
    if (behind == m_topLevel.cbegin())
        return m_endPosition;
    const int paragraph = *(behind - 1);
    const int inside = offset - m_offsets[paragraph];
    if (!m_script.paragraphs()[paragraph].isWrapper)
        return m_positions[paragraph] + qMin(inside, m_lengths[paragraph]);
    if (inside == 0)
        return m_positions[paragraph];
    // Dual dialogue is a whole: behind its start there is only its end.
    const int next = behind == m_topLevel.cend() ? m_endPosition + 1 : m_positions[*behind];
    return qMax(m_positions[paragraph], next - 1);
}

int FdxPlaces::offsetOf(int position) const
{
    const int paragraph = paragraphAt(position);
    if (paragraph < 0 || m_offsets[paragraph] < 0)
        return 0;
    const bool isDual = m_script.containerOf(paragraph).wrapper >= 0
        || m_script.paragraphs()[paragraph].isWrapper;
    return m_offsets[paragraph] + (isDual ? 0 : position - m_positions[paragraph]);
}

int FdxPlaces::paragraphAt(int position) const
{
    const auto behind = std::upper_bound(
        m_blocks.cbegin(), m_blocks.cend(), position,
        [this](int value, int paragraph) { return value < m_positions[paragraph]; });
    return behind == m_blocks.cbegin() ? -1 : *(behind - 1);
}

MVRTextRange FdxPlaces::trimmed(const MVRTextRange &range) const
{
    if (range.start >= range.end)
        return MVRTextRange();
    const auto beginsBehind
        = [this](int value, int paragraph) { return value < m_positions[paragraph]; };
    const auto next
        = std::upper_bound(m_withText.cbegin(), m_withText.cend(), range.start, beginsBehind);
    const auto last
        = std::upper_bound(m_withText.cbegin(), m_withText.cend(), range.end - 1, beginsBehind);
    MVRTextRange trimmed = range;
    const auto end
        = [this](int paragraph) { return m_positions[paragraph] + m_lengths[paragraph]; };
    if (next != m_withText.cend()
        && (next == m_withText.cbegin() || end(*(next - 1)) <= range.start))
        trimmed.start = m_positions[*next];
    if (last != m_withText.cbegin())
        trimmed.end = qMin(range.end, end(*(last - 1)));
    return trimmed.start < trimmed.end ? trimmed : MVRTextRange();
}

QString FdxPlaces::text(const MVRTextRange &range) const
{
    QString text;
    for (int paragraph = paragraphAt(range.start);
         paragraph >= 0 && paragraph < m_positions.size() && m_positions[paragraph] < range.end;
         ++paragraph) {
        if (!m_script.paragraphs()[paragraph].hasBlock)
            continue;
        auto plain = m_plainTexts.find(paragraph);
        if (plain == m_plainTexts.end())
            plain = m_plainTexts.insert(paragraph, m_script.plainText(paragraph));
        const int start = m_positions[paragraph];
        const int from = qMax(0, range.start - start);
        text += plain->mid(from, range.end - start - from) + QLatin1Char('\n');
    }
    text.chop(1);
    return text;
}
