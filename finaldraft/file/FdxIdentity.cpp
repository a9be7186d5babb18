// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxIdentity_p.h>

#include <QHash>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int ring = FdxScript::markRing;
constexpr int longText = 8; // not the same by chance; what is shorter needs a neighbour that fits
constexpr int votingBlocks = 8; // whose texts decide between paragraphs

/*! How much of two texts is the same at their ends. */
int likeness(const QString &a, const QString &b)
{
    const int shorter = int(qMin(a.size(), b.size()));
    int front = 0;
    while (front < shorter && a.at(front) == b.at(front))
        ++front;
    int back = 0;
    while (back < shorter - front && a.at(a.size() - 1 - back) == b.at(b.size() - 1 - back))
        ++back;
    return front + back;
}

}

FdxIdentity::FdxIdentity(const FdxScript &script, QVector<FdxEntry> *entries)
    : m_script(script)
    , m_entries(*entries)
{
    std::fill(std::begin(m_keptOf), std::end(m_keptOf), -1);
}

void FdxIdentity::identify()
{
    if (m_script.hasOwnMarks())
        return;
    m_marks.reserve(m_entries.size());
    for (const FdxEntry &entry : qAsConst(m_entries))
        m_marks.append(entry.origin);
    int expected = nextWithBlock(0);
    int resumed = expected; // where the script goes on behind what was put in
    bool isSure = true; // since the order was left, a text has shown that it was right
    m_isSure.resize(m_entries.size());
    for (int i = 0; i < m_entries.size(); ++i) {
        if (m_marks[i] < 0)
            continue;
        int found = expected;
        if (!goesOn(i, expected)) {
            found = best(i, expected, resumed);
            if (found < 0)
                continue;
            isSure = isSure && found == expected;
            resumed = expected;
        }
        isSure = isSure || (m_entries[i].length > longText && hasText(i, found));
        m_isSure.setBit(i, isSure);
        m_entries[i].origin = found;
        expected = nextWithBlock(found + 1);
    }
    settleClaims();
    findStrays();
}

/*! What a block was only guessed to be, it is not when another one has the text. */
void FdxIdentity::settleClaims()
{
    QVector<int> claims(m_script.paragraphs().size(), -1);
    for (int i = 0; i < m_entries.size(); ++i) {
        const int paragraph = m_entries[i].origin;
        if (paragraph < 0)
            continue;
        int &claim = claims[paragraph];
        if (claim >= 0 && !m_isSure.testBit(claim) && hasText(i, paragraph)
            && (m_isSure.testBit(i) || !hasText(claim, paragraph))) {
            m_strays.append({claim, paragraph});
            m_entries[claim].origin = -1;
            claim = -1;
        }
        claim = claim < 0 ? i : claim;
    }
}

const QString &FdxIdentity::text(int entry)
{
    const int place = entry % keptTexts;
    if (m_keptOf[place] != entry) {
        m_kept[place] = m_entries[entry].text();
        m_keptOf[place] = entry;
    }
    return m_kept[place];
}

bool FdxIdentity::isMarked(int entry, int paragraph) const
{
    return entry < m_entries.size() && paragraph < m_script.paragraphs().size()
        && m_marks[entry] == m_script.mark(paragraph);
}

bool FdxIdentity::hasText(int entry, int paragraph)
{
    return m_entries[entry].textOf == paragraph || m_script.hasText(paragraph, text(entry));
}

bool FdxIdentity::fits(int entry, int paragraph)
{
    return isMarked(entry, paragraph) && hasText(entry, paragraph);
}

/*! Whether a block is the paragraph that is expected to come next. */
bool FdxIdentity::goesOn(int entry, int paragraph)
{
    if (!isMarked(entry, paragraph))
        return false;
    const bool isLast = entry + 1 == m_entries.size();
    return ((isLast || m_entries[entry].length > longText) && fits(entry, paragraph))
        || fits(entry + 1, nextWithBlock(paragraph + 1));
}

int FdxIdentity::nextWithBlock(int paragraph) const
{
    const QVector<FdxParagraph> &paragraphs = m_script.paragraphs();
    while (paragraph < paragraphs.size() && !paragraphs[paragraph].hasBlock)
        ++paragraph;
    return paragraph;
}

/*! The paragraph that a block is; -1 when there is nothing to tell by but its mark. */
int FdxIdentity::best(int entry, int expected, int resumed)
{
    int best = -1;
    int most = -1;
    const QVector<int> all = candidates(entry, expected, resumed);
    for (const int candidate : all) {
        // What was emptied, or says "Yes" now, is no reason to leave the script's order.
        const int count = votes(entry, candidate) + (candidate == expected ? 1 : 0);
        const int distance = std::abs(candidate - expected);
        if (count > most || (count == most && distance < std::abs(best - expected))) {
            most = count;
            best = candidate;
        }
    }
    const bool isStray = most <= 0 && best != expected
        && (best < 0 || !isMarked(entry + 1, nextWithBlock(best + 1)));
    if (!isStray)
        return best;
    m_strays.append({entry, expected});
    m_entries[entry].origin = -1;
    return -1;
}

/*! Blocks that were moved and edited are paragraphs that no other block is. */
void FdxIdentity::findStrays()
{
    if (m_strays.isEmpty())
        return;
    QBitArray isTaken(m_script.paragraphs().size());
    for (const FdxEntry &entry : qAsConst(m_entries)) {
        if (entry.origin >= 0)
            isTaken.setBit(entry.origin);
    }
    constexpr int reach = 32 * ring; // on either side
    for (const Stray &stray : qAsConst(m_strays)) {
        int best = -1;
        int most = -1;
        const int start = qMax(0, stray.expected - reach) / ring * ring + m_marks[stray.entry];
        const int end = qMin(int(m_script.paragraphs().size()), stray.expected + reach);
        for (int paragraph = start; paragraph < end; paragraph += ring) {
            if (isTaken.testBit(paragraph) || !m_script.paragraphs()[paragraph].hasBlock)
                continue;
            const int alike = likeness(m_script.text(paragraph), text(stray.entry));
            if (alike > most) {
                most = alike;
                best = paragraph;
            }
        }
        m_entries[stray.entry].origin = best;
        if (best >= 0)
            isTaken.setBit(best);
    }
}

/*! How much speaks for it that the text goes on at \a entry as it does at \a paragraph. */
int FdxIdentity::votes(int entry, int paragraph)
{
    int count = 0;
    for (int i = 0; i < votingBlocks && isMarked(entry + i, paragraph); ++i) {
        if (hasText(entry + i, paragraph))
            count += m_entries[entry + i].length > longText ? 4 : 1;
        paragraph = nextWithBlock(paragraph + 1);
    }
    return count;
}

/*! The paragraphs with a block's mark that are near, or have its text. */
QVector<int> FdxIdentity::candidates(int entry, int expected, int resumed)
{
    QVector<int> all;
    addNear(m_marks[entry], expected, &all);
    addNear(m_marks[entry], resumed, &all);
    addAlike(entry, expected, 0, &all);
    if (m_entries[entry].length > longText)
        return all;
    // A short text is found by the next long one.
    for (int ahead = 1; ahead < votingBlocks && entry + ahead < m_entries.size(); ++ahead) {
        if (m_entries[entry + ahead].length > longText) {
            addAlike(entry + ahead, expected, ahead, &all);
            break;
        }
    }
    return all;
}

/*! The nearest paragraphs of a block's text and mark, or those so far \a ahead of them. */
void FdxIdentity::addAlike(int entry, int expected, int ahead, QVector<int> *candidates)
{
    constexpr int eachSide = 2;
    findTexts();
    const auto add = [&](int paragraph) {
        if (paragraph >= ahead && isMarked(entry - ahead, paragraph - ahead)
            && m_script.paragraphs()[paragraph - ahead].hasBlock)
            candidates->append(paragraph - ahead);
    };
    const quint32 hash = hashOf(text(entry), m_marks[entry]);
    const auto first = std::lower_bound(m_texts.cbegin(), m_texts.cend(), Text {hash, 0});
    const auto here = std::lower_bound(first, m_texts.cend(), Text {hash, expected});
    for (auto it = here; it != m_texts.cend() && it->hash == hash && it - here < eachSide; ++it)
        add(it->paragraph);
    for (auto it = here; it != first && here - it < eachSide; --it)
        add((it - 1)->paragraph);
}

void FdxIdentity::addNear(int mark, int expected, QVector<int> *candidates) const
{
    const int ahead = (mark - expected % ring + ring) % ring;
    for (const int paragraph : {expected + ahead, expected + ahead - ring}) {
        if (paragraph >= 0 && paragraph < m_script.paragraphs().size()
            && m_script.paragraphs()[paragraph].hasBlock)
            candidates->append(paragraph);
    }
}

void FdxIdentity::findTexts()
{
    if (!m_texts.isEmpty())
        return;
    m_texts.reserve(m_script.paragraphs().size());
    for (int i = 0; i < m_script.paragraphs().size(); ++i) {
        if (m_script.paragraphs()[i].hasBlock)
            m_texts.append({hashOf(m_script.text(i), m_script.mark(i)), i});
    }
    std::sort(m_texts.begin(), m_texts.end());
}

quint32 FdxIdentity::hashOf(const QString &text, int mark)
{
    return quint32(qHash(text, uint(mark)));
}
