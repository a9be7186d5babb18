// SPDX-License-Identifier: MIT
#include <bbcode/MVRBbCodeConverter.h>

#include <bbcode/XhtmlLimits_p.h>
#include <bbcode/XhtmlSegments_p.h>
#include <core/MVRQtCompat.h>
#include <core/MVRTextXhtmlExporter.h>

#include <QDomDocument>
#include <QMap>
#include <QObject>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

// Stands for the line feed of a paragraph while those of the text are dropped.
const QLatin1String paragraphMarker("<p>");

struct StyleTag
{
    const char *declaration; // spelled as the toolkit writes it
    const char *open;
    const char *close;
};

constexpr StyleTag styleTags[] = {
    {"font-weight:600", "[b]", "[/b]"}, // of Qt 5; stored text may come from there
    {MVRQt::boldDeclaration, "[b]", "[/b]"},
    {"font-style:italic", "[i]", "[/i]"},
    {"text-decoration: underline", "[u]", "[/u]"},
    {"text-decoration: underline line-through", "[s]", "[/s]"},
};

/*! The opening and the closing BBCode tags of a run; both grow at the end. */
struct Tags
{
    QString open;
    QString close;

    void add(const char *opening, const char *closing)
    {
        open += QLatin1String(opening);
        close += QLatin1String(closing);
    }
    QString around(const QString &text) const
    {
        return open.isEmpty() ? text : open + text + close;
    }
};

/*! A text as the local 8-bit encoding can hold it, and up to the first null character. */
QString throughLocal8Bit(const QString &text)
{
    // Every encoding of a locale has these characters at their place.
    const auto isAscii = [](QChar c) { return c.unicode() > 0 && c.unicode() < 0x80; };
    if (std::all_of(text.cbegin(), text.cend(), isAscii))
        return text;
    return QString::fromLocal8Bit(text.toLocal8Bit().constData());
}

/*! Calls \a use with each part of an attribute's value; semicolons end a part. */
template <typename Use> void forEachPart(const QString &value, const Use &use)
{
    const QString local = throughLocal8Bit(value);
    for (QStringView rest(local); !rest.isEmpty();) {
        const auto found = std::find(rest.cbegin(), rest.cend(), QLatin1Char(';'));
        const int length = int(found - rest.cbegin());
        if (length > 0)
            use(rest.left(length).trimmed());
        rest = rest.mid(qMin(length + 1, int(rest.size())));
    }
}

/*! The same with all attributes of an element, sorted by their names. */
template <typename Use> void forEachAttributePart(const QDomElement &element, const Use &use)
{
    if (!element.hasAttributes())
        return;
    const QDomNamedNodeMap attributes = element.attributes();
    if (attributes.count() == 1) {
        forEachPart(attributes.item(0).nodeValue(), use);
        return;
    }
    QMap<QString, QString> values; // the node map's own order differs from run to run
    for (int i = 0; i < attributes.count(); ++i) {
        const QDomNode attribute = attributes.item(i);
        values.insert(attribute.nodeName(), attribute.nodeValue());
    }
    for (const QString &value : qAsConst(values))
        forEachPart(value, use);
}

/*! The text of an element and of all below it. */
QString textOf(const QDomElement &element)
{
    const QDomNode child = element.firstChild();
    const bool isOnlyText = child.isText() && child.nextSibling().isNull();
    return isOnlyText ? child.nodeValue() : element.text(); // which would copy it
}

/*! The last child of the last child of ... \a element, which may hold none. */
QDomElement lastDescendant(QDomElement element)
{
    for (;;) {
        const QDomElement last = element.lastChildElement();
        if (last.isNull())
            return element;
        element = last;
    }
}

// The column is the width of the line number's field, and the second placeholder stays: callers
// know the text like that.
QString parseError(int line, int column, const QString &message)
{
    return QObject::tr("Error Line: %1; Error Column: %2").arg(line, column) + QLatin1String("; ")
        + message;
}

/*! Parses XHTML; on failure the element is null and \a error receives a message. */
QDomElement parsedBody(const QString &xhtml, QDomDocument *tree, QString *error)
{
    QString message;
    int line = 0;
    int column = 0;
    if (!tree->setContent(xhtml, &message, &line, &column)) {
        *error = parseError(line, column, message);
        return QDomElement();
    }
    const QDomNodeList bodies = tree->elementsByTagName(QStringLiteral("body"));
    if (bodies.count() == 1)
        return bodies.at(0).toElement();
    *error = QObject::tr("Missing or more than one <body> tag inside html");
    return QDomElement();
}

}

QString MVRBbCodeConverter::fromHtml(const QString &html, QString *error)
{
    const QString xhtml = html.isEmpty() ? QString() : MVRTextXhtmlExporter::htmlToXhtml(html);
    if (xhtml.isEmpty())
        return QString();
    QString message;
    if (const std::optional<XhtmlFault> fault = findXhtmlFault(xhtml))
        message = parseError(fault->line, fault->column, fault->message);
    else if (!gatherInSegments(xhtml))
        gather(xhtml, &message);
    if (!message.isNull()) {
        if (error)
            *error = message;
        return QString();
    }
    QString text = m_pieces.join(QString());
    text.remove(QLatin1Char('\n'));
    text = cleanQuotedText(text);
    text.replace(paragraphMarker, QLatin1String("\n"));
    return text.isNull() ? QStringLiteral("") : text;
}

/*! Gathers the pieces of all of the text; \a message receives what is wrong with it. */
void MVRBbCodeConverter::gather(const QString &xhtml, QString *message)
{
    QDomDocument tree;
    const QDomElement body = parsedBody(xhtml, &tree, message);
    if (!body.isNull())
        walkTree(body);
}

/*!
    The same for a long text, of which a tree takes a hundred times as much memory. False, nothing
    being gathered, for a short one and where a segment cannot be read: then gather() tells why.
*/
bool MVRBbCodeConverter::gatherInSegments(const QString &xhtml)
{
    constexpr int segmentSize = 1 << 17;
    if (xhtml.size() / 2 < segmentSize || xhtml.count(QLatin1String("<body")) != 1)
        return false;
    const QStringList earlier = std::exchange(m_pieces, {});
    QStringList pieces;
    QString message;
    for (XhtmlSegments segments(xhtml, segmentSize); !segments.atEnd() && message.isNull();) {
        gather(segments.next(), &message);
        // What goes on begins no line; these elements are the outermost ones.
        pieces += m_pieces.mid(segments.openLines());
        m_pieces.clear();
    }
    m_pieces = (message.isNull() ? pieces : QStringList()) + earlier;
    return message.isNull();
}

/*! Gathers the pieces of all elements of a tree, the last one first and parents last. */
QDomNode MVRBbCodeConverter::walkTree(const QDomNode &node)
{
    for (QDomElement current = lastDescendant(node.toElement()); !current.isNull();) {
        sanitizeElement(current);
        if (current == node)
            break;
        const QDomElement previous = current.previousSiblingElement();
        current = previous.isNull() ? current.parentNode().toElement() : lastDescendant(previous);
    }
    return node;
}

QDomElement MVRBbCodeConverter::sanitizeElement(const QDomElement &element)
{
    const QString tag = element.tagName();
    if (beginsLine(tag))
        m_pieces.prepend(paragraphMarker);
    else if (tag == QLatin1String("span"))
        cleanSpanTag(element);
    else if (tag == QLatin1String("a"))
        cleanAnchorTag(element);
    else if (tag == QLatin1String("ul"))
        m_pieces.prepend(QLatin1String("[list]") + listItems(element) + QLatin1String("[/list]"));
    else if (tag == QLatin1String("ol"))
        m_pieces.prepend(QLatin1String("[list=1]") + listItems(element) + QLatin1String("[/list]"));
    return element;
}

void MVRBbCodeConverter::cleanSpanTag(const QDomElement &span)
{
    Tags tags;
    forEachAttributePart(span, [&tags](QStringView declaration) {
        const auto known
            = std::find_if(std::begin(styleTags), std::end(styleTags), [&](const StyleTag &tag) {
                  return declaration == QLatin1String(tag.declaration);
              });
        if (known != std::end(styleTags)) {
            tags.add(known->open, known->close);
        } else if (declaration.contains(QLatin1String("color:#"), Qt::CaseInsensitive)) {
            tags.add("[color=#", "[/color]");
            MVRQt::append(&tags.open, declaration.right(6));
            tags.open += QLatin1Char(']');
        }
    });
    m_pieces.prepend(tags.around(textOf(span)));
}

void MVRBbCodeConverter::cleanAnchorTag(const QDomElement &anchor)
{
    const QLatin1String mailScheme("mailto");
    Tags tags;
    QString address;
    forEachAttributePart(anchor, [&](QStringView part) {
        const bool isMail = part.contains(mailScheme, Qt::CaseInsensitive);
        tags.add(isMail ? "[email]" : "[url]", isMail ? "[/email]" : "[/url]");
        address = part.mid(isMail ? mailScheme.size() + 1 : 0).toString();
    });
    // The visible text follows as that of a span.
    m_pieces.prepend(tags.around(tags.open.isEmpty() ? textOf(anchor) : address));
}

QString MVRBbCodeConverter::listItems(const QDomElement &list) const
{
    QString items;
    for (QDomNode child = list.firstChild(); !child.isNull(); child = child.nextSibling()) {
        const QString text = child.toElement().text();
        if (!text.isEmpty())
            items += QLatin1String("[*] ") + text;
    }
    return items;
}

/*! Makes quotations and code of the paragraphs that begin like them. */
QString MVRBbCodeConverter::cleanQuotedText(const QString &text) const
{
    QStringList paragraphs = text.split(paragraphMarker);
    for (QString &paragraph : paragraphs) {
        paragraph = throughLocal8Bit(paragraph);
        if (paragraph.startsWith(QLatin1Char('>')))
            paragraph = QLatin1String("[quote]") + paragraph.mid(1) + QLatin1String("[/quote]");
        else if (paragraph.startsWith(QLatin1Char('{')))
            paragraph = QLatin1String("[code]") + paragraph.mid(1) + QLatin1String("[/code]");
    }
    return paragraphs.join(paragraphMarker);
}
