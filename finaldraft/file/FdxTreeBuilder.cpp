// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxTreeBuilder_p.h>

#include <cstring>

namespace {

// Files nest 8 deep; what is deeper was made to break something.
constexpr int maxDepth = 256;

}

bool FdxTreeBuilder::build(const pugi::xml_document &document)
{
    const pugi::xml_node root = document.document_element();
    const int count = countElements(root);
    if (count < 0)
        return false;
    m_nodes.reserve(count);
    int parent = -1;
    for (pugi::xml_node node = root; node;) {
        if (node.type() == pugi::node_element) {
            open(node, parent);
            if (node.first_child()) {
                parent = m_nodes.size() - 1;
                node = node.first_child();
                continue;
            }
            close(m_nodes.size() - 1);
        } else if (node.type() != pugi::node_pcdata) {
            m_position = endOf(node);
        }
        while (node != root && !node.next_sibling()) {
            close(parent);
            parent = m_nodes[parent].parent;
            node = node.parent();
        }
        node = node == root ? pugi::xml_node() : node.next_sibling();
    }
    return true;
}

/*! How many elements there are; -1 when they nest too deep. */
int FdxTreeBuilder::countElements(const pugi::xml_node &root)
{
    int count = 0;
    int depth = 0;
    for (pugi::xml_node node = root; node;) {
        count += node.type() == pugi::node_element ? 1 : 0;
        if (const pugi::xml_node child = node.first_child()) {
            node = child;
            if (++depth >= maxDepth)
                return -1;
            continue;
        }
        for (; node != root && !node.next_sibling(); --depth)
            node = node.parent();
        node = node == root ? pugi::xml_node() : node.next_sibling();
    }
    return count;
}

void FdxTreeBuilder::open(const pugi::xml_node &element, int parent)
{
    // The parser ended the last value, or the name, by a zero, and left it as it was otherwise.
    const pugi::xml_attribute last = element.last_attribute();
    const char *inside = last ? last.value() : element.name();
    FdxTree::Node node {};
    node.start = offset(element.name()) - 1;
    node.innerStart = find('>', offset(inside) + int(std::strlen(inside))) + 1;
    node.parent = parent;
    m_nodes.append(node);
    m_position = node.innerStart;
}

// Elements hold no ">" or "</" but in what is a node itself, so that the end of the last one is
// followed by the end tag.
void FdxTreeBuilder::close(int index)
{
    FdxTree::Node &node = m_nodes[index];
    const bool isEmptyTag = m_source[node.innerStart - 2] == '/';
    node.innerEnd = isEmptyTag ? node.innerStart : find('<', m_position);
    node.end = isEmptyTag ? node.innerStart : find('>', node.innerEnd) + 1;
    node.behind = m_nodes.size();
    m_position = node.end;
}

/*! The end of what is neither element nor text. */
int FdxTreeBuilder::endOf(const pugi::xml_node &node) const
{
    struct End
    {
        pugi::xml_node_type type;
        const char *mark;
    };
    constexpr End ends[] = {{pugi::node_cdata, "]]>"}, {pugi::node_comment, "-->"}};
    for (const End &row : ends) {
        if (node.type() == row.type)
            return m_source.indexOf(row.mark, offset(node.value())) + 3;
    }
    return m_source.indexOf("?>", offset(node.name())) + 2; // a processing instruction
}

int FdxTreeBuilder::find(char character, int from) const
{
    const void *place
        = std::memchr(m_source.constData() + from, character, size_t(m_source.size() - from));
    return place ? int(static_cast<const char *>(place) - m_source.constData()) : m_source.size();
}
