// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfBookmarks.h>

#include <core/rtf/model/RtfResources.h>

void RtfBookmarks::add(const QString &name)
{
    constexpr int maxNameLength = 1000;
    constexpr int maxAtOnePlace = 100;
    constexpr int maxBookmarks = RtfResources::maxLookAlikes * 2;
    // Word's mark of the place that was edited last.
    if (name.isEmpty() || name == QLatin1String("_GoBack"))
        return;
    if (m_names.size() < maxAtOnePlace && m_count++ < maxBookmarks)
        m_names.append(name.left(maxNameLength));
}

bool RtfBookmarks::moveTo(QStringList *names)
{
    bool isNew = false;
    for (const QString &name : qAsConst(m_names)) {
        if (!names->contains(name)) {
            names->append(name);
            isNew = true;
        }
    }
    m_names.clear();
    return isNew;
}
