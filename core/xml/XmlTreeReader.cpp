// SPDX-License-Identifier: MIT
#include <core/xml/XmlTreeReader_p.h>

#include <core/MVRQtCompat.h>
#include <core/TextDecoder_p.h>
#include <core/xml/XmlLimits_p.h>
#include <core/xml/XmlText_p.h>

#include <QBuffer>
#include <QByteArray>
#include <QObject>
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

/*! Hands out shared strings for short texts: files repeat a few dozen names and values. */
class StringPool
{
public:
    QString shared(QStringView text)
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

/*!
    Whether an instruction can begin with \a name: the parser looks at it only where a blank
    follows, which is how the tree is written.
*/
bool isTarget(const QString &name)
{
    QXmlStreamReader again(QLatin1String("<?") + name + QLatin1String(" ?><a/>"));
    again.setNamespaceProcessing(false);
    return again.readNext() == QXmlStreamReader::StartDocument
        && again.readNext() == QXmlStreamReader::ProcessingInstruction;
}

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
            return {m_document, QString()};
        return {QDomDocument(),
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
    case QXmlStreamReader::ProcessingInstruction: {
        flushText(Other);
        const QString target = m_xml.processingInstructionTarget().toString();
        if (isTarget(target))
            m_parent.appendChild(m_document.createProcessingInstruction(
                target, m_xml.processingInstructionData().toString()));
        break;
    }
    case QXmlStreamReader::DTD:
        checkEntities();
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
        longest = qMax(longest, isNested ? maxEntityLength : int(declaration.value().size()));
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
    MVRQt::append(&m_text, m_xml.text());
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

constexpr int maxDeclaration = 512;

/*!
    Where the last digit of "1.1" stands when the declaration that \a head begins with names that
    version, else -1. The parser knows 1.0 only, from which files that say 1.1 hardly ever differ.
*/
int minorVersionOne(const QByteArray &head)
{
    const int end = int(head.indexOf("?>"));
    const int version = int(head.indexOf("version"));
    if (!head.startsWith("<?xml") || version < 0 || version > end)
        return -1;
    int value = version + int(qstrlen("version"));
    while (std::isspace(uchar(head.at(value))) || head.at(value) == '=')
        ++value;
    return head.mid(value + 1, 3) == "1.1" ? value + 3 : -1;
}

bool isUtf16(const QByteArray &bytes)
{
    return bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff")
        || bytes.left(4).contains('\0');
}

/*! The encoding that the XML declaration names; empty where it names none. */
QByteArray declaredEncoding(const QByteArray &content)
{
    if (!content.startsWith("<?xml"))
        return QByteArray();
    const QByteArray text = content.left(int(content.indexOf("?>")) + 2) + "<a/>";
    QXmlStreamReader declaration(QString::fromLatin1(text));
    declaration.readNext();
    return declaration.documentEncoding().toString().toLatin1();
}

/*! Whether the parser reads text in an encoding as it stands; the one of Qt 6 knows no others. */
bool isReadByParser(QByteArray encoding)
{
    encoding = std::move(encoding).toUpper();
    return encoding == "UTF-8" || encoding.startsWith("UTF-16") || encoding.startsWith("UTF-32");
}

/*! Reads \a decoded without what is no character, when \a tree could not be read from it. */
XmlTree readAgain(const XmlTree &tree, const QString &decoded, int maxDepth)
{
    if (tree.errorString.isNull())
        return tree;
    // A rare file holds bytes of no character, or control characters, where nobody reads them.
    const QString text = xmlText(decoded);
    if (text.size() == decoded.size() && !decoded.contains(QChar::ReplacementCharacter))
        return tree;
    const XmlTree secondTry = readXmlTree(text, maxDepth);
    return secondTry.errorString.isNull() ? secondTry : tree;
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
    QString content = text.trimmed();
    const int minorVersion = minorVersionOne(content.left(maxDeclaration).toLatin1());
    if (minorVersion >= 0)
        content[minorVersion] = QLatin1Char('0');
    const QString excess = findXmlExcess(content.toUtf8());
    if (!excess.isNull())
        return {QDomDocument(), excess};
    QXmlStreamReader xml(content);
    return TreeBuilder(xml, maxDepth, content.size(), content.count(QLatin1Char('&'))).build();
}

XmlTree readXmlTree(const QByteArray &bytes, int maxDepth)
{
    if (isUtf16(bytes))
        return readXmlTree(TextDecoder::decodeUnicode(bytes), maxDepth);
    QByteArray content = withoutLeadingSpace(bytes);
    const int minorVersion = minorVersionOne(content.left(maxDeclaration));
    if (minorVersion >= 0)
        content[minorVersion] = '0';
    const QByteArray encoding = declaredEncoding(content);
    if (!encoding.isEmpty() && !isReadByParser(encoding)) {
        TextDecoder decoder(encoding.constData());
        if (decoder.isValid()) { // without one the parser reports it
            const QString decoded = decoder.decode(content);
            return readAgain(readXmlTree(decoded, maxDepth), decoded, maxDepth);
        }
    }
    const QString excess = findXmlExcess(content);
    if (!excess.isNull())
        return {QDomDocument(), excess};
    // From a device the parser takes a little at a time; an array it would copy whole, twice.
    QBuffer buffer(&content);
    buffer.open(QIODevice::ReadOnly);
    QXmlStreamReader xml(&buffer);
    const XmlTree tree = TreeBuilder(xml, maxDepth, content.size(), content.count('&')).build();
    return tree.errorString.isNull() ? tree : readAgain(tree, QString::fromUtf8(content), maxDepth);
}
