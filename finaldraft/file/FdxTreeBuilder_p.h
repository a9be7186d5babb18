// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/file/FdxTree_p.h>

#include <pugixml.hpp>

/*!
    Takes down where the elements of a parsed file stand, so that neither the parser's tree nor the
    copy of the source that it points into has to be kept.
*/
class FdxTreeBuilder
{
public:
    /*! \a buffer is the source as it is after it was parsed in place. */
    FdxTreeBuilder(const QByteArray &source, const QByteArray &buffer)
        : m_source(source)
        , m_buffer(buffer)
    {
    }

    /*! Takes the first element and all that it holds; false when it nests too deep. */
    bool build(const pugi::xml_document &document);
    const QVector<FdxTree::Node> &nodes() const { return m_nodes; }

private:
    static int countElements(const pugi::xml_node &root);
    void open(const pugi::xml_node &element, int parent);
    void close(int index);
    int endOf(const pugi::xml_node &node) const;
    int offset(const char *place) const { return int(place - m_buffer.constData()); }
    int find(char character, int from) const;

    const QByteArray &m_source;
    const QByteArray &m_buffer;
    QVector<FdxTree::Node> m_nodes;
    int m_position = 0; // end of the markup that was passed last
};
