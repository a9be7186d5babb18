// SPDX-License-Identifier: MIT
#include <text/LinkGaps_p.h>

#include <core/document/TextFragments_p.h>
#include <core/document/TextMarks_p.h>

#include <QTextDocument>

#include <algorithm>

LinkGaps::LinkGaps(const QTextDocument &document)
    : m_document(document)
{
    for (FragmentWalker walker(&document, 0); walker.isValid(); walker.next()) {
        if (walker.format().anchorHref().isEmpty())
            continue;
        if (!m_links.empty() && m_links.back().end == walker.start())
            m_links.back().end = walker.end();
        else
            m_links.emplace_back(walker.start(), walker.end());
    }
}

const MVRTextRange *LinkGaps::lastLink(const MVRTextRange &range) const
{
    const auto behind = std::lower_bound(
        m_links.begin(), m_links.end(), range.end,
        [](const MVRTextRange &link, int position) { return link.start < position; });
    if (behind == m_links.begin() || std::prev(behind)->end <= range.start)
        return nullptr;
    return &*std::prev(behind);
}

MVRTextRange LinkGaps::link(const MVRTextRange &range) const
{
    const MVRTextRange *last = lastLink(range);
    return last ? *last : MVRTextRange(range.end, range.end);
}

MVRTextRange LinkGaps::trimmed(MVRTextRange range) const
{
    while (range.start < range.end && isEndMark(m_document.characterAt(range.start)))
        ++range.start;
    return range;
}

MVRTextRange LinkGaps::partBeside(const MVRTextRange &range) const
{
    const MVRTextRange *last = lastLink(range);
    if (!last)
        return range;
    const MVRTextRange behind = trimmed({qMin(last->end, range.end), range.end});
    MVRTextRange before(range.start, qMax(range.start, last->start));
    if (const MVRTextRange *other = lastLink(before))
        before.start = other->end;
    before = trimmed(before);
    return before.end - before.start > behind.end - behind.start ? before : behind;
}

MVRTextRange LinkGaps::markBehind(const MVRTextRange &link) const
{
    const QChar next = m_document.characterAt(link.end);
    // A brace may begin a code, which goes with its notes when it is read.
    const bool isBeside = !next.isNull() && !isEndMark(next) && !next.isLetterOrNumber()
        && next != QLatin1Char('{') && !next.isSurrogate()
        && next != QChar::ObjectReplacementCharacter && next != QChar::LineSeparator;
    return {link.end, link.end + (isBeside ? 1 : 0)};
}
