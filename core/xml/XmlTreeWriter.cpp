// SPDX-License-Identifier: MIT
#include <core/xml/XmlTreeWriter_p.h>

#include <core/xml/XmlText_p.h>

#include <QDomDocument>

#include <algorithm>
#include <vector>

namespace {

/*! Whether the children are elements, with nothing but layout between them. */
bool holdsOnlyElements(const QDomElement &element)
{
    bool hasElement = false;
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isElement())
            hasElement = true;
        else if (child.isText() && !isXmlLayout(child.nodeValue()))
            return false;
    }
    return hasElement;
}

/*! Text that a character stands for in XML; null for one that stands for itself. */
const char *escaped(QChar character, bool inAttribute)
{
    switch (character.unicode()) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '&':
        return "&amp;";
    case '\r':
        return "&#13;";
    case '"':
        return inAttribute ? "&quot;" : nullptr;
    case '\n':
        return inAttribute ? "&#10;" : nullptr;
    case '\t':
        return inAttribute ? "&#9;" : nullptr;
    default:
        return nullptr;
    }
}

class TreeWriter
{
public:
    QByteArray write(const QDomDocument &document)
    {
        for (QDomNode node = document.firstChild(); !node.isNull(); node = node.nextSibling()) {
            writeTree(node);
            m_text += QLatin1Char('\n');
        }
        return m_text.toUtf8();
    }

private:
    struct Level
    {
        QDomNode next; // the child to write next
        QString tag;
        bool isEmpty;
        bool isIndented; // children stand on lines of their own
    };

    struct Attribute
    {
        QString name;
        QString value;
    };

    void writeTree(const QDomNode &root);
    void writeNode(const QDomNode &node);
    void openElement(const QDomElement &element);
    void writeAttributes(const QDomNamedNodeMap &map);
    void closeElement();
    void breakLine();
    void writeText(const QString &text, bool inAttribute);

    QString m_text;
    std::vector<Level> m_levels; // a stack of our own: trees may be deeper than the program's
    std::vector<Attribute> m_attributes;
};

void TreeWriter::writeTree(const QDomNode &root)
{
    writeNode(root);
    while (!m_levels.empty()) {
        Level &level = m_levels.back();
        const QDomNode node = level.next;
        if (node.isNull()) {
            closeElement();
            continue;
        }
        level.next = node.nextSibling();
        if (level.isIndented) {
            if (node.isText())
                continue;
            breakLine();
        }
        writeNode(node);
    }
}

void TreeWriter::writeNode(const QDomNode &node)
{
    switch (node.nodeType()) {
    case QDomNode::ElementNode:
        openElement(node.toElement());
        break;
    case QDomNode::TextNode:
    case QDomNode::CDATASectionNode:
        writeText(node.nodeValue(), false);
        break;
    case QDomNode::CommentNode:
        m_text += QLatin1String("<!--") + node.nodeValue() + QLatin1String("-->");
        break;
    case QDomNode::ProcessingInstructionNode:
        m_text += QLatin1String("<?") + node.nodeName() + QLatin1Char(' ') + node.nodeValue()
            + QLatin1String("?>");
        break;
    default:
        break;
    }
}

void TreeWriter::openElement(const QDomElement &element)
{
    const QDomNode child = element.firstChild();
    m_levels.push_back({child, element.tagName(), child.isNull(), holdsOnlyElements(element)});
    m_text += QLatin1Char('<');
    m_text += m_levels.back().tag;
    writeAttributes(element.attributes());
    m_text += child.isNull() ? QLatin1String("/>") : QLatin1String(">");
}

void TreeWriter::writeAttributes(const QDomNamedNodeMap &map)
{
    m_attributes.clear();
    for (int i = 0; i < map.size(); ++i) {
        const QDomNode node = map.item(i);
        m_attributes.push_back({node.nodeName(), node.nodeValue()});
    }
    std::sort(m_attributes.begin(), m_attributes.end(),
              [](const Attribute &a, const Attribute &b) { return a.name < b.name; });
    for (const Attribute &attribute : m_attributes) {
        m_text += QLatin1Char(' ');
        m_text += attribute.name;
        m_text += QLatin1String("=\"");
        writeText(attribute.value, true);
        m_text += QLatin1Char('"');
    }
}

void TreeWriter::closeElement()
{
    const Level level = m_levels.back();
    m_levels.pop_back();
    if (level.isEmpty)
        return;
    if (level.isIndented)
        breakLine();
    m_text += QLatin1String("</");
    m_text += level.tag;
    m_text += QLatin1Char('>');
}

void TreeWriter::breakLine()
{
    m_text += QLatin1Char('\n');
    m_text.resize(m_text.size() + int(m_levels.size()));
    std::fill_n(m_text.end() - int(m_levels.size()), m_levels.size(), QLatin1Char(' '));
}

void TreeWriter::writeText(const QString &text, bool inAttribute)
{
    int written = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (const char *replacement = escaped(text.at(i), inAttribute)) {
            m_text.append(text.constData() + written, i - written);
            m_text += QLatin1String(replacement);
            written = i + 1;
        }
    }
    m_text.append(text.constData() + written, text.size() - written);
}

}

QByteArray xmlTreeText(const QDomDocument &document)
{
    return TreeWriter().write(document);
}
