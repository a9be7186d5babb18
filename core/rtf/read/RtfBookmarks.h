// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

/*! Bookmarks on their way to the character that they will stand on, as anchors of HTML do. */
class RtfBookmarks
{
public:
    void add(const QString &name);
    bool isEmpty() const { return m_names.isEmpty(); }
    void clear() { m_names.clear(); }
    /*! Adds the names that \a names does not have, and forgets them; tells whether there were any.
     */
    bool moveTo(QStringList *names);

private:
    QStringList m_names; // that wait for the next character
    int m_count = 0; // of the whole file
};
