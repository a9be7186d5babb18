// SPDX-License-Identifier: MIT
#include <core/xml/XmlTreeReader_p.h>

#include <core/xml/XmlText_p.h>

#include <QBuffer>
#include <QByteArray>
#include <QObject>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <algorithm>
#include <array>
#include <cctype>
#include <vector>

namespace {

// Entities may add this much to a text, beside as much again as the text is long; honest files
// define a few abbreviations. The parser itself bounds nested ones by maxEntityLength.
constexpr qint64 entityAllowance = 65536;
constexpr int maxEntityLength = 4096;
// Checking n attributes for duplicates takes the parser n * n steps.
constexpr int maxAttributes = 256;

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
    /*! Builds from \a xml, whose text has \a size characters and \a references ampersands. */
    TreeBuilder(QXmlStreamReader &xml, int maxDepth, qint64 size, qint64 references)
        : m_xml(xml)
        , m_maxDepth(maxDepth)
        , m_size(size)
        , m_references(references)
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
            return {m_document, m_encoding, QString()};
        return {QDomDocument(), m_encoding,
                QObject::tr("Line %1, column %2: %3")
                    .arg(m_xml.lineNumber())
                    .arg(m_xml.columnNumber() + 1)
                    .arg(m_xml.errorString())};
    }

private:
    /*! What comes behind a stretch of text. */
    enum Neighbour { Element, Other };

    void addToken(QXmlStreamReader::TokenType token);
    void addDeclaration();
    void checkEntities();
    void openElement();
    void closeElement();
    void addText();
    void flushText(Neighbour next);

    QXmlStreamReader &m_xml;
    const int m_maxDepth;
    const qint64 m_size;
    const qint64 m_references;
    QDomDocument m_document;
    QString m_encoding;
    QDomNode m_parent;
    StringPool m_strings;
    QString m_text; // of adjacent tokens, so that one stretch of text is one node
    int m_depth = 0;
    std::vector<bool> m_holdsText; // by depth: the open element holds more than layout
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
        checkEntities();
        break;
    default:
        break;
    }
}

void TreeBuilder::addDeclaration()
{
    m_encoding = m_xml.documentEncoding().toString();
    if (m_xml.documentVersion().isEmpty())
        return;
    // The tree is always saved as UTF-8, whatever it was read from.
    const QString data
        = QStringLiteral("version=\"%1\" encoding=\"UTF-8\" standalone=\"%2\"")
              .arg(m_xml.documentVersion().toString(),
                   m_xml.isStandaloneDocument() ? QStringLiteral("yes") : QStringLiteral("no"));
    m_document.appendChild(m_document.createProcessingInstruction(QStringLiteral("xml"), data));
}

// Before any of them is expanded: the parser hands out expanded text as a whole.
void TreeBuilder::checkEntities()
{
    int longest = 0;
    const QXmlStreamEntityDeclarations declarations = m_xml.entityDeclarations();
    for (const QXmlStreamEntityDeclaration &declaration : declarations) {
        if (!declaration.systemId().isEmpty()) { // its text would be left out without a word
            m_xml.raiseError(QObject::tr("The entity \"%1\" lies outside the file.")
                                 .arg(declaration.name().toString()));
            return;
        }
        const bool isNested = declaration.value().contains(QLatin1Char('&'));
        longest = qMax(longest, isNested ? maxEntityLength : declaration.value().size());
    }
    if (longest > maxEntityLength || longest * m_references > entityAllowance + m_size)
        m_xml.raiseError(QObject::tr("Entities make the text grow too much."));
}

void TreeBuilder::openElement()
{
    flushText(Element);
    if (++m_depth > m_maxDepth) {
        m_xml.raiseError(
            QObject::tr("Elements are nested more than %1 levels deep.").arg(m_maxDepth));
        return;
    }
    QDomElement element = m_document.createElement(m_strings.shared(m_xml.qualifiedName()));
    const QXmlStreamAttributes attributes = m_xml.attributes();
    for (const QXmlStreamAttribute &attribute : attributes) {
        element.setAttribute(m_strings.shared(attribute.qualifiedName()),
                             m_strings.shared(attribute.value()));
    }
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
}

void TreeBuilder::flushText(Neighbour next)
{
    if (m_text.isEmpty())
        return;
    const bool isBesideElement = next == Element || m_parent.lastChild().isElement();
    if (m_holdsText[size_t(m_depth)] || !isBesideElement || !isXmlLayout(m_text)) {
        m_holdsText[size_t(m_depth)] = true;
        m_parent.appendChild(m_document.createTextNode(QString(m_text.constData(), m_text.size())));
    }
    m_text.resize(0); // keeps its memory
}

/*! Counts the attributes of the tag that \a begin stands at. */
int attributeCount(const char *begin, const char *end)
{
    int attributes = 0;
    char quote = 0;
    for (const char *character = begin; character != end; ++character) {
        if (quote != 0) {
            if (*character == quote)
                quote = 0;
        } else if (*character == '"' || *character == '\'') {
            quote = *character;
        } else if (*character == '=') {
            ++attributes;
        } else if (*character == '>') {
            break;
        }
    }
    return attributes;
}

bool hasAttributeFlood(const QByteArray &text)
{
    for (int tag = text.indexOf('<'); tag >= 0;) {
        const int next = text.indexOf('<', tag + 1);
        const int end = next < 0 ? text.size() : next;
        if (end - tag > maxAttributes && text.at(tag + 1) != '!' && text.at(tag + 1) != '?'
            && attributeCount(text.constData() + tag, text.constData() + end) > maxAttributes)
            return true;
        tag = next;
    }
    return false;
}

/*! The position behind \a end, or the end of the text where it does not come. */
int skipPast(const QByteArray &text, int from, const char *end)
{
    const int found = text.indexOf(end, from);
    return found < 0 ? text.size() : found + int(qstrlen(end));
}

bool standsAt(const QByteArray &text, int position, const char *word)
{
    return qstrncmp(text.constData() + position, word, qstrlen(word)) == 0;
}

/*! Where the document type begins, behind comments and instructions; -1 for none. */
int documentTypeStart(const QByteArray &text)
{
    int position = text.indexOf('<');
    while (position >= 0) {
        if (standsAt(text, position, "<!DOCTYPE"))
            return position;
        const bool isComment = standsAt(text, position, "<!--");
        if (!isComment && !standsAt(text, position, "<?"))
            return -1;
        position = text.indexOf('<', skipPast(text, position, isComment ? "-->" : "?>"));
    }
    return -1;
}

bool isParameterEntity(const QByteArray &text, int position)
{
    const char *character = text.constData() + position + qstrlen("<!ENTITY");
    while (std::isspace(uchar(*character)))
        ++character;
    return *character == '%';
}

/*!
    Whether the document type could give attributes to elements, which would then multiply with
    them, or could hold more declarations than stand there: through entities of its own.
*/
bool declaresAttributes(const QByteArray &text)
{
    const int start = documentTypeStart(text);
    int brackets = 0;
    for (int position = start < 0 ? text.size() : start + 1; position < text.size();) {
        const char character = text.at(position);
        if (standsAt(text, position, "<!--")) {
            position = skipPast(text, position, "-->");
        } else if (standsAt(text, position, "<?")) {
            position = skipPast(text, position, "?>");
        } else if (standsAt(text, position, "<!ATTLIST")
                   || (standsAt(text, position, "<!ENTITY") && isParameterEntity(text, position))) {
            return true;
        } else if (character == '"' || character == '\'') {
            position = skipPast(text, position + 1, character == '"' ? "\"" : "'");
        } else if (character == '>' && brackets == 0) {
            return false;
        } else {
            brackets += character == '[' ? 1 : character == ']' ? -1 : 0;
            ++position;
        }
    }
    return false;
}

/*! What in a text would cost the parser more than its length; null when there is nothing. */
QString findExcess(const QByteArray &text)
{
    if (declaresAttributes(text))
        return QObject::tr("The document type declares attributes.");
    if (hasAttributeFlood(text))
        return QObject::tr("An element has more than %1 attributes.").arg(maxAttributes);
    return QString();
}

/*! Whether markup is in ASCII, so that it can be found without knowing the encoding. */
bool hasAsciiMarkup(const QByteArray &content)
{
    const QByteArray declaration = content.left(content.left(512).indexOf("?>") + 1);
    const int found = declaration.indexOf("encoding");
    if (!declaration.startsWith("<?xml") || found < 0)
        return true;
    const QByteArray name = declaration.mid(found + 8).trimmed().mid(1).trimmed().mid(1).toLower();
    static constexpr const char *families[]
        = {"utf-8", "us-ascii", "iso-8859-", "windows-125", "macintosh"};
    return std::any_of(std::begin(families), std::end(families),
                       [&name](const char *family) { return name.startsWith(family); });
}

bool isUtf16(const QByteArray &bytes)
{
    return bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff")
        || bytes.left(4).contains('\0');
}

QByteArray withoutLeadingSpace(const QByteArray &bytes)
{
    int start = bytes.startsWith("\xef\xbb\xbf") ? 3 : 0;
    while (start < bytes.size() && std::isspace(uchar(bytes.at(start))))
        ++start;
    return start == 0 ? bytes : bytes.mid(start);
}

}

XmlTree readXmlTree(const QString &text, int maxDepth)
{
    const QString content = text.trimmed();
    const QString excess = findExcess(content.toUtf8());
    if (!excess.isNull())
        return {QDomDocument(), QString(), excess};
    QXmlStreamReader xml(content);
    return TreeBuilder(xml, maxDepth, content.size(), content.count(QLatin1Char('&'))).build();
}

XmlTree readXmlTree(const QByteArray &bytes, int maxDepth)
{
    QTextCodec *utf8 = QTextCodec::codecForName("UTF-8");
    if (isUtf16(bytes))
        return readXmlTree(QTextCodec::codecForUtfText(bytes, utf8)->toUnicode(bytes), maxDepth);
    QByteArray content = withoutLeadingSpace(bytes);
    if (!hasAsciiMarkup(content)) {
        QBuffer start(&content);
        start.open(QIODevice::ReadOnly);
        QXmlStreamReader declaration(&start);
        declaration.readNext();
        const QTextCodec *codec
            = QTextCodec::codecForName(declaration.documentEncoding().toString().toLatin1());
        if (codec) // without one the parser reports it
            return readXmlTree(codec->toUnicode(content), maxDepth);
    }
    const QString excess = findExcess(content);
    if (!excess.isNull())
        return {QDomDocument(), QString(), excess};
    // From a device the parser takes a little at a time; an array it would copy whole, twice.
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&buffer);
    const XmlTree tree = TreeBuilder(xml, maxDepth, content.size(), content.count('&')).build();
    if (tree.errorString.isNull())
        return tree;

    // A rare file holds bytes of no character, or control characters, where nobody reads them.
    QTextCodec *codec = QTextCodec::codecForName(tree.encoding.toLatin1());
    const QString decoded = (codec ? codec : utf8)->toUnicode(content);
    const QString text = xmlText(decoded);
    if (text.size() == decoded.size() && !decoded.contains(QChar::ReplacementCharacter))
        return tree;
    const XmlTree secondTry = readXmlTree(text, maxDepth);
    return secondTry.errorString.isNull() ? secondTry : tree;
}
