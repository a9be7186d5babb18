#include <core/XmlTreeWriter_p.h>

#include <QDomDocument>
#include <QXmlStreamWriter>

#include <algorithm>
#include <vector>

namespace {

bool isLayoutSpace(const QDomNode &node)
{
    const QString text = node.nodeValue();
    return text.contains(QLatin1Char('\n'))
        && std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
}

/*! Whether the children are elements, with nothing but layout between them. */
bool holdsOnlyElements(const QDomElement &element)
{
    bool hasElement = false;
    for (QDomNode child = element.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.isElement())
            hasElement = true;
        else if (child.isText() && !isLayoutSpace(child))
            return false;
    }
    return hasElement;
}

class TreeWriter
{
public:
    QByteArray write(const QDomDocument &document)
    {
        for (QDomNode node = document.firstChild(); !node.isNull(); node = node.nextSibling()) {
            writeTree(node);
            m_xml.writeCharacters(QStringLiteral("\n"));
        }
        return m_text.toUtf8();
    }

private:
    struct Level
    {
        QDomNode next; // the child to write next
        bool indented; // whether children stand on lines of their own
    };

    void writeTree(const QDomNode &root);
    void writeNode(const QDomNode &node);
    void openElement(const QDomElement &element);
    void closeElement();
    void breakLine(size_t depth)
    {
        m_xml.writeCharacters(QLatin1Char('\n') + QString(int(depth), QLatin1Char(' ')));
    }

    QString m_text;
    QXmlStreamWriter m_xml {&m_text};
    std::vector<Level> m_levels; // a stack of our own: trees may be deeper than the program's
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
        if (level.indented) {
            if (node.isText())
                continue;
            breakLine(m_levels.size());
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
        m_xml.writeCharacters(node.nodeValue());
        break;
    case QDomNode::CommentNode:
        m_xml.writeComment(node.nodeValue());
        break;
    case QDomNode::ProcessingInstructionNode:
        m_xml.writeProcessingInstruction(node.nodeName(), node.nodeValue());
        break;
    default:
        break;
    }
}

void TreeWriter::openElement(const QDomElement &element)
{
    m_xml.writeStartElement(element.tagName());
    const QDomNamedNodeMap map = element.attributes();
    std::vector<QDomAttr> attributes;
    attributes.reserve(size_t(map.size()));
    for (int i = 0; i < map.size(); ++i)
        attributes.push_back(map.item(i).toAttr());
    std::sort(attributes.begin(), attributes.end(),
              [](const QDomAttr &a, const QDomAttr &b) { return a.name() < b.name(); });
    for (const QDomAttr &attribute : attributes)
        m_xml.writeAttribute(attribute.name(), attribute.value());
    m_levels.push_back({element.firstChild(), holdsOnlyElements(element)});
}

void TreeWriter::closeElement()
{
    const bool indented = m_levels.back().indented;
    m_levels.pop_back();
    if (indented)
        breakLine(m_levels.size());
    m_xml.writeEndElement();
}

}

QByteArray xmlTreeText(const QDomDocument &document)
{
    return TreeWriter().write(document);
}
