// SPDX-License-Identifier: MIT
#pragma once

#include <core/html/HtmlTokens_p.h>

#include <QString>
#include <QStringList>

/*!
    Cuts XHTML into pieces that are well-formed each, so that no tree of all of it is needed.

    A piece begins with the elements that are open where it is cut off, and ends with their ends.
    Elements whose text is taken as a whole, those of copiesText(), are never cut. What is not
    well-formed makes at least one piece that is not, too.
*/
class XhtmlSegments
{
public:
    /*! \param size  characters that a piece has at least, but the last one */
    XhtmlSegments(const QString &xhtml, int size)
        : m_xhtml(xhtml)
        , m_size(size)
    {
    }

    bool atEnd() const { return m_position >= m_xhtml.size(); }
    QString next();
    /*! How many elements of the body, of those that beginsLine() names, are open where the piece
        begins that was given last. */
    int openLines() const { return m_openLines; }

private:
    void pass();

    const QString &m_xhtml;
    const int m_size;
    int m_position = 0;
    QStringList m_open; // names of elements
    int m_copying = 0; // how many of the innermost are not to be cut
    int m_openLines = 0;
    HtmlTag m_tag; // that was read last, whose room is used again
};
