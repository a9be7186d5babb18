// SPDX-License-Identifier: MIT
#pragma once

#include <QSet>
#include <QString>

/*!
    The first thousand different names of a document.

    Qt finds the format of a text by a number that it makes of it, in which a list counts for its
    length at most: it looks through all formats that differ in one list alone. So it is with fonts
    (in Qt 6 always, in Qt 5 with those that name a second family) and the widths of columns. No
    document has so many; what goes beyond is left out of the formats.
*/
class BoundedNames
{
public:
    static constexpr int most = 1000;

    /*! Whether \a name is one of the first ones; it becomes one while there is room. */
    bool take(const QString &name)
    {
        if (m_names.size() < most)
            m_names.insert(name);
        return m_names.contains(name);
    }

private:
    QSet<QString> m_names;
};
