// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfGroups.h>

void RtfGroups::push()
{
    constexpr std::size_t maxGroupDepth = 2000; // Word stops at a few hundred
    if (m_outer.size() >= maxGroupDepth) {
        ++m_uncounted;
        return;
    }
    m_outer.push_back(m_current);
    m_current.opensDestination = false;
}

bool RtfGroups::pop()
{
    if (m_uncounted > 0) {
        --m_uncounted;
        return true;
    }
    if (m_outer.empty())
        return false;
    // The document's own group keeps its settings: the last paragraph may still need them.
    if (m_outer.size() > 1)
        m_current = m_outer.back();
    m_outer.pop_back();
    return !m_outer.empty();
}
