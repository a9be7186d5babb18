#include <core/XmlTreeReader_p.h>

#include <core/XmlText_p.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <array>

namespace {

// Entities may add this much to a text; honest files define a few abbreviations.
constexpr qint64 entityAllowance = 64 * 1024;
// Checking n attributes for duplicates takes the parser n * n steps.
constexpr int maxAttributes = 2000;

QString translated(const char *text)
{
    return QCoreApplication::translate("QObject", text);
}

/*! Hands out one shared string per tag or attribute name: files repeat a few dozen of them. */
class NamePool
{
public:
    QString shared(const QStringRef &name)
    {
        QString &slot = m_slots[qHash(name) % m_slots.size()];
        if (slot != name)
            slot = name.toString();
        return slot;
    }

private:
    std::array<QString, 256> m_slots;
};

class TreeBuilder
{
public:
    TreeBuilder(QXmlStreamReader &xml, int maxDepth)
        : m_xml(xml)
        , m_maxDepth(maxDepth)
    {
        m_document.createDocumentFragment(); // a new QDomDocument is null until it makes a node
        m_parent = m_document;
        m_xml.setNamespaceProcessing(false);
    }

    XmlTree build()
    {
        while (!m_xml.atEnd())
            addToken(m_xml.readNext());
        if (!m_xml.hasError())
            return {m_document, QString()};
        return {QDomDocument(),
                translated("Line %1, column %2: %3")
                    .arg(m_xml.lineNumber())
                    .arg(m_xml.columnNumber() + 1)
                    .arg(m_xml.errorString())};
    }

private:
    void addToken(QXmlStreamReader::TokenType token);
    void addDeclaration();
    void refuseExternalEntities();
    void openElement();
    void closeElement();
    void addText();
    void flushText();
    void count(qint64 characters);

    QXmlStreamReader &m_xml;
    const int m_maxDepth;
    QDomDocument m_document;
    QDomNode m_parent;
    NamePool m_names;
    QString m_text; // of adjacent tokens, so that one stretch of text is one node
    int m_depth = 0;
    qint64 m_delivered = 0;
};

void TreeBuilder::addToken(QXmlStreamReader::TokenType token)
{
    switch (token) {
    case QXmlStreamReader::StartDocument:
        addDeclaration();
        break;
    case QXmlStreamReader::StartElement:
        openElement();
        break;
    case QXmlStreamReader::EndElement:
        closeElement();
        break;
    case QXmlStreamReader::Characters:
        addText();
        break;
    case QXmlStreamReader::Comment:
        flushText();
        m_parent.appendChild(m_document.createComment(m_xml.text().toString()));
        break;
    case QXmlStreamReader::ProcessingInstruction:
        flushText();
        m_parent.appendChild(
            m_document.createProcessingInstruction(m_xml.processingInstructionTarget().toString(),
                                                   m_xml.processingInstructionData().toString()));
        break;
    case QXmlStreamReader::DTD:
        refuseExternalEntities();
        break;
    default:
        break;
    }
}

void TreeBuilder::addDeclaration()
{
    if (m_xml.documentVersion().isEmpty())
        return;
    // The tree is always saved as UTF-8, whatever it was read from.
    const QString data
        = QStringLiteral("version=\"%1\" encoding=\"UTF-8\" standalone=\"%2\"")
              .arg(m_xml.documentVersion().toString(),
                   m_xml.isStandaloneDocument() ? QStringLiteral("yes") : QStringLiteral("no"));
    m_document.appendChild(m_document.createProcessingInstruction(QStringLiteral("xml"), data));
}

// The parser would leave their text out without a word.
void TreeBuilder::refuseExternalEntities()
{
    const QXmlStreamEntityDeclarations declarations = m_xml.entityDeclarations();
    for (const QXmlStreamEntityDeclaration &declaration : declarations) {
        if (!declaration.systemId().isEmpty()) {
            m_xml.raiseError(translated("The entity \"%1\" lies outside the file.")
                                 .arg(declaration.name().toString()));
            return;
        }
    }
}

void TreeBuilder::openElement()
{
    flushText();
    if (++m_depth > m_maxDepth) {
        m_xml.raiseError(
            translated("Elements are nested more than %1 levels deep.").arg(m_maxDepth));
        return;
    }
    QDomElement element = m_document.createElement(m_names.shared(m_xml.qualifiedName()));
    count(m_xml.qualifiedName().size());
    const QXmlStreamAttributes attributes = m_xml.attributes();
    for (const QXmlStreamAttribute &attribute : attributes) {
        element.setAttribute(m_names.shared(attribute.qualifiedName()),
                             attribute.value().toString());
        count(attribute.qualifiedName().size() + attribute.value().size());
    }
    m_parent.appendChild(element);
    m_parent = element;
}

void TreeBuilder::closeElement()
{
    flushText();
    m_parent = m_parent.parentNode();
    --m_depth;
}

void TreeBuilder::addText()
{
    if (m_depth == 0) // the parser lets only white space stand outside the root element
        return;
    m_text += m_xml.text();
    count(m_xml.text().size());
}

void TreeBuilder::flushText()
{
    if (m_text.isEmpty())
        return;
    m_parent.appendChild(m_document.createTextNode(m_text));
    m_text.clear();
}

// Text can only come out longer than it went in where entities repeat it.
void TreeBuilder::count(qint64 characters)
{
    m_delivered += characters;
    if (m_delivered > m_xml.characterOffset() + entityAllowance)
        m_xml.raiseError(translated("Entities make the text grow too much."));
}

/*! Counts the attributes of the tag that \a text begins with. */
template <typename Character> int attributeCount(const Character *text, const Character *end)
{
    int attributes = 0;
    Character quote = 0;
    for (; text != end; ++text) {
        if (quote != 0) {
            if (*text == quote)
                quote = 0;
        } else if (*text == '"' || *text == '\'') {
            quote = *text;
        } else if (*text == '=') {
            ++attributes;
        } else if (*text == '>') {
            break;
        }
    }
    return attributes;
}

template <typename Character> bool hasAttributeFlood(const Character *text, const Character *end)
{
    while (true) {
        text = std::find(text, end, Character('<'));
        if (text == end)
            return false;
        const Character *next = std::find(text + 1, end, Character('<'));
        if (next - text > maxAttributes && attributeCount(text, next) > maxAttributes)
            return true;
        text = next;
    }
}

XmlTree attributeFlood()
{
    return {QDomDocument(),
            translated("An element has more than %1 attributes.").arg(maxAttributes)};
}

// A rare file holds bytes that are no UTF-8, or control characters, where nobody reads them.
QString forgivingText(const QByteArray &bytes)
{
    return xmlText(
        QTextCodec::codecForUtfText(bytes, QTextCodec::codecForName("UTF-8"))->toUnicode(bytes));
}

}

XmlTree readXmlTree(const QString &text, int maxDepth)
{
    const auto *begin = reinterpret_cast<const ushort *>(text.constData());
    if (hasAttributeFlood(begin, begin + text.size()))
        return attributeFlood();
    QXmlStreamReader xml(text);
    return TreeBuilder(xml, maxDepth).build();
}

XmlTree readXmlTree(const QByteArray &bytes, int maxDepth)
{
    if (hasAttributeFlood(bytes.constBegin(), bytes.constEnd()))
        return attributeFlood();
    int start = 0;
    while (start < bytes.size() && std::isspace(static_cast<unsigned char>(bytes.at(start))))
        ++start;
    const QByteArray content = start > 0 ? bytes.mid(start) : bytes;

    QXmlStreamReader xml(content);
    XmlTree tree = TreeBuilder(xml, maxDepth).build();
    if (tree.errorString.isNull())
        return tree;
    const QString text = forgivingText(content);
    if (text.toUtf8() == content)
        return tree;
    XmlTree secondTry = readXmlTree(text, maxDepth);
    return secondTry.errorString.isNull() ? secondTry : tree;
}
