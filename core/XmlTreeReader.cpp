#include <core/XmlTreeReader_p.h>

#include <core/XmlText_p.h>

#include <QBuffer>
#include <QByteArray>
#include <QCoreApplication>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <cctype>
#include <vector>

namespace {

// Entities may add this much to a text; honest files define a few abbreviations.
constexpr qint64 entityAllowance = 64 * 1024;
// Checking n attributes for duplicates takes the parser n * n steps.
constexpr int maxAttributes = 2000;

QString translated(const char *text)
{
    return QCoreApplication::translate("QObject", text);
}

/*! White space with a line feed: between elements it only lays the file out. */
bool isLayoutSpace(const QString &text)
{
    return text.contains(QLatin1Char('\n'))
        && std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
}

/*! Hands out shared strings for short texts: files repeat a few dozen names and values. */
class StringPool
{
public:
    QString shared(const QStringRef &text)
    {
        if (text.size() > maxSize)
            return text.toString();
        QString &slot = m_slots[qHash(text) % m_slots.size()];
        if (slot != text)
            slot = text.toString();
        return slot;
    }

private:
    static constexpr int maxSize = 32;
    std::array<QString, 512> m_slots;
};

class TreeBuilder
{
public:
    TreeBuilder(QXmlStreamReader &xml, int maxDepth)
        : m_xml(xml)
        , m_maxDepth(maxDepth)
        , m_holdsText(size_t(maxDepth) + 1)
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
    /*! What comes behind a stretch of text. */
    enum Neighbour { Element, Other };

    void addToken(QXmlStreamReader::TokenType token);
    void addDeclaration();
    void refuseExternalEntities();
    void openElement();
    void closeElement();
    void addText();
    void flushText(Neighbour next);
    void count(qint64 characters);

    QXmlStreamReader &m_xml;
    const int m_maxDepth;
    QDomDocument m_document;
    QDomNode m_parent;
    StringPool m_strings;
    QString m_text; // of adjacent tokens, so that one stretch of text is one node
    int m_depth = 0;
    std::vector<bool> m_holdsText; // by depth: the open element holds more than layout
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
        flushText(Other);
        m_parent.appendChild(m_document.createComment(m_xml.text().toString()));
        break;
    case QXmlStreamReader::ProcessingInstruction:
        flushText(Other);
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
    flushText(Element);
    if (++m_depth > m_maxDepth) {
        m_xml.raiseError(
            translated("Elements are nested more than %1 levels deep.").arg(m_maxDepth));
        return;
    }
    QDomElement element = m_document.createElement(m_strings.shared(m_xml.qualifiedName()));
    qint64 characters = m_xml.qualifiedName().size();
    const QXmlStreamAttributes attributes = m_xml.attributes();
    for (const QXmlStreamAttribute &attribute : attributes) {
        element.setAttribute(m_strings.shared(attribute.qualifiedName()),
                             m_strings.shared(attribute.value()));
        characters += attribute.qualifiedName().size() + attribute.value().size();
    }
    count(characters);
    m_parent.appendChild(element);
    m_parent = element;
    m_holdsText[size_t(m_depth)] = false;
}

void TreeBuilder::closeElement()
{
    flushText(Other);
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

void TreeBuilder::flushText(Neighbour next)
{
    if (m_text.isEmpty())
        return;
    const bool isBesideElement = next == Element || m_parent.lastChild().isElement();
    if (m_holdsText[size_t(m_depth)] || !isBesideElement || !isLayoutSpace(m_text)) {
        m_holdsText[size_t(m_depth)] = true;
        m_parent.appendChild(m_document.createTextNode(QString(m_text.constData(), m_text.size())));
    }
    m_text.resize(0); // keeps its memory
}

// Text can only come out longer than it went in where entities repeat it.
void TreeBuilder::count(qint64 characters)
{
    m_delivered += characters;
    if (m_delivered > m_xml.characterOffset() + entityAllowance)
        m_xml.raiseError(translated("Entities make the text grow too much."));
}

ushort codeAt(const QByteArray &text, int position)
{
    return uchar(text.at(position));
}

ushort codeAt(const QString &text, int position)
{
    return text.at(position).unicode();
}

int findTag(const QByteArray &text, int from)
{
    return text.indexOf('<', from);
}

int findTag(const QString &text, int from)
{
    return text.indexOf(QLatin1Char('<'), from);
}

/*! Counts the attributes of the tag that begins at \a position. */
template <typename Text> int attributeCount(const Text &text, int position, int end)
{
    int attributes = 0;
    ushort quote = 0;
    for (; position < end; ++position) {
        const ushort code = codeAt(text, position);
        if (quote != 0) {
            if (code == quote)
                quote = 0;
        } else if (code == '"' || code == '\'') {
            quote = code;
        } else if (code == '=') {
            ++attributes;
        } else if (code == '>') {
            break;
        }
    }
    return attributes;
}

template <typename Text> bool hasAttributeFlood(const Text &text)
{
    for (int tag = findTag(text, 0); tag >= 0;) {
        const int next = findTag(text, tag + 1);
        const int end = next < 0 ? text.size() : next;
        if (end - tag > maxAttributes && attributeCount(text, tag, end) > maxAttributes)
            return true;
        tag = next;
    }
    return false;
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
    if (hasAttributeFlood(text))
        return attributeFlood();
    QXmlStreamReader xml(text);
    return TreeBuilder(xml, maxDepth).build();
}

XmlTree readXmlTree(const QByteArray &bytes, int maxDepth)
{
    if (hasAttributeFlood(bytes))
        return attributeFlood();
    const auto begin = std::find_if(bytes.cbegin(), bytes.cend(),
                                    [](char c) { return !std::isspace(uchar(c)); });
    // From a device the parser takes a little at a time; an array it would copy whole, twice.
    QBuffer content;
    content.setData(QByteArray::fromRawData(bytes.constData() + (begin - bytes.cbegin()),
                                            int(bytes.cend() - begin)));
    content.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&content);
    XmlTree tree = TreeBuilder(xml, maxDepth).build();
    if (tree.errorString.isNull())
        return tree;
    const QString text = forgivingText(content.data());
    if (text.toUtf8() == content.data())
        return tree;
    XmlTree secondTry = readXmlTree(text, maxDepth);
    return secondTry.errorString.isNull() ? secondTry : tree;
}
