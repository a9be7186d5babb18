// SPDX-License-Identifier: MIT
#include <core/MVRTextXhtmlExporter.h>

#include <core/MVRQtCompat.h>
#include <core/html/HtmlReferences_p.h>
#include <core/html/HtmlTokens_p.h>
#include <core/xml/XmlText_p.h>

#include <algorithm>
#include <string_view>
#include <vector>

namespace {

/*! What an element means to the text in it. */
enum class Role {
    Other,
    Void, // has no content and no end tag
    Paragraph, // the toolkit writes plain text directly into it
    Preformatted, // a paragraph, or all of a list item
    Anchor,
    Span,
    List,
    ListItem
};

struct Element
{
    std::string_view name;
    Role role;
};

constexpr Element elements[] = {
    {"p", Role::Paragraph},  {"span", Role::Span},        {"br", Role::Void},
    {"li", Role::ListItem},  {"a", Role::Anchor},         {"img", Role::Void},
    {"ul", Role::List},      {"ol", Role::List},          {"td", Role::Paragraph},
    {"th", Role::Paragraph}, {"pre", Role::Preformatted}, {"h1", Role::Paragraph},
    {"h2", Role::Paragraph}, {"h3", Role::Paragraph},     {"h4", Role::Paragraph},
    {"h5", Role::Paragraph}, {"h6", Role::Paragraph},     {"hr", Role::Void},
    {"meta", Role::Void},    {"link", Role::Void},        {"area", Role::Void},
    {"base", Role::Void},    {"basefont", Role::Void},    {"col", Role::Void},
    {"embed", Role::Void},   {"frame", Role::Void},       {"input", Role::Void},
    {"isindex", Role::Void}, {"param", Role::Void},       {"source", Role::Void},
    {"track", Role::Void},   {"wbr", Role::Void},
};

Role roleOf(QStringView name)
{
    for (const Element &element : elements) {
        const QLatin1String known(element.name.data(), int(element.name.size()));
        if (name.size() == known.size() && name.compare(known, Qt::CaseInsensitive) == 0)
            return element.role;
    }
    return Role::Other;
}

bool hasMarkup(QStringView value)
{
    return value.contains(QLatin1Char('&')) || value.contains(QLatin1Char('<'));
}

/*! Writes one HTML text as XHTML, from its start to its end. */
class XhtmlWriter
{
public:
    explicit XhtmlWriter(const QString &html)
        : m_html(html)
    {
        m_xhtml.reserve(html.size() + html.size() / 2); // many short runs get a span each
    }

    QString write();

private:
    struct OpenElement
    {
        QStringView name;
        Role role;
        bool isImplied; // the text has no tags for it
    };

    int writeMarkup(int start);
    int skipDeclaration(int start) const;
    void writeText(QStringView text);
    bool enclosesText() const;
    void writeTag();
    int titleEnd(int start) const;
    void writeTitle(QStringView title);
    bool isToolkitsMark() const;
    void writeStartTag(Role role);
    int writeAttributes();
    void writeStyle();
    void writeEndTag(Role role);
    void startInList(Role role);
    bool endInList(Role role);
    void open(QStringView name, Role role, bool isImplied);
    void forgetLast();
    void close();
    Role parentRole() const { return m_open.empty() ? Role::Other : m_open.back().role; }
    // The toolkit does not escape what stands in front of a list item's number.
    HtmlPlace valuePlace() const { return m_isToolkits ? HtmlPlace::LooseValue : HtmlPlace::Text; }
    void copy(int start, int end) { m_xhtml.append(m_html.constData() + start, end - start); }
    QStringView ref(int start, int end) const
    {
        return QStringView(m_html).mid(start, end - start);
    }
    QStringView name() const { return ref(m_tag.nameStart, m_tag.nameEnd); }
    QStringView name(const HtmlAttribute &attribute) const
    {
        return ref(attribute.start, attribute.nameEnd);
    }
    bool isStyle(const HtmlAttribute &attribute) const
    {
        return name(attribute) == QLatin1String("style");
    }
    QStringView value(const HtmlAttribute &attribute) const
    {
        return ref(attribute.valueStart, attribute.valueEnd);
    }

    const QString &m_html;
    const QString m_impliedList = QStringLiteral("ul");
    QString m_xhtml;
    HtmlTag m_tag; // the one being written
    std::vector<OpenElement> m_open;
    int m_openLists = 0;
    bool m_isToolkits = false;
    bool m_hasTitle = false;
};

QString XhtmlWriter::write()
{
    for (int position = 0; position < m_html.size();) {
        const int markup = m_html.indexOf(QLatin1Char('<'), position);
        const int end = markup < 0 ? m_html.size() : markup;
        writeText(ref(position, end));
        position = markup < 0 ? end : writeMarkup(markup);
    }
    return m_xhtml;
}

/*! Writes what begins with the "<" at \a start; returns the position behind it. */
int XhtmlWriter::writeMarkup(int start)
{
    int end = htmlPassageEnd(m_html, start);
    if (end < 0) {
        if (QStringView(m_html).mid(start, 9).compare(QLatin1String("<!DOCTYPE"),
                                                      Qt::CaseInsensitive)
            == 0)
            return skipDeclaration(start);
        if (isHtmlTagStart(m_html, start)) {
            if (readHtmlTag(m_html, start, &m_tag)) {
                writeTag();
                end = titleEnd(m_tag.end);
                if (end < 0)
                    return m_tag.end;
                m_hasTitle = true;
                writeTitle(ref(m_tag.end, end));
                return end;
            }
            end = m_html.size();
        } else {
            end = start + 1;
        }
    }
    copy(start, end);
    return end;
}

int XhtmlWriter::skipDeclaration(int start) const
{
    int brackets = 0;
    QChar quote;
    for (int position = start; position < m_html.size(); ++position) {
        const QChar c = m_html.at(position);
        if (!quote.isNull()) {
            if (c == quote)
                quote = QChar();
        } else if (c == QLatin1Char('"') || c == QLatin1Char('\'')) {
            quote = c;
        } else if (c == QLatin1Char('[')) {
            ++brackets;
        } else if (c == QLatin1Char(']')) {
            --brackets;
        } else if (c == QLatin1Char('>') && brackets <= 0) {
            return position + 1;
        }
    }
    return m_html.size();
}

bool XhtmlWriter::enclosesText() const
{
    if (!m_isToolkits)
        return false;
    switch (parentRole()) {
    case Role::Paragraph:
    case Role::Anchor:
        return true;
    case Role::Preformatted:
        return m_open.size() < 2 || m_open[m_open.size() - 2].role != Role::ListItem;
    default:
        return false;
    }
}

void XhtmlWriter::writeText(QStringView text)
{
    const bool encloses = enclosesText();
    const bool keepsBlanks = encloses || parentRole() == Role::Span
        || (m_isToolkits && parentRole() == Role::ListItem);
    QString blanks;
    const bool isBlank = text.isEmpty() || (keepsBlanks && isHtmlBlank(text, &blanks));
    if (isBlank && (blanks.isEmpty() || blanks.contains(QLatin1Char('\n')))) {
        MVRQt::append(&m_xhtml, text); // lays out the elements around it
        return;
    }
    if (encloses)
        m_xhtml += QLatin1String("<span>");
    if (isBlank) // dropped by QDomDocument in any other form
        m_xhtml += QLatin1String("<![CDATA[") + blanks + QLatin1String("]]>");
    else
        appendAsXml(&m_xhtml, text, HtmlPlace::Text);
    if (encloses)
        m_xhtml += QLatin1String("</span>");
}

/*!
    The end of the title that begins at \a start, behind the tag that was read last; -1 where that
    is no title.

    The toolkit writes a title as it is, tags and all. What it writes behind it holds quotes that
    stand in nothing else but a title, so that the last of these ends it.
*/
int XhtmlWriter::titleEnd(int start) const
{
    if (m_hasTitle || m_tag.isEnd || m_tag.isCut || m_tag.isSelfClosed
        || name().compare(QLatin1String("title"), Qt::CaseInsensitive) != 0)
        return -1;
    const int end = m_isToolkits
        ? m_html.lastIndexOf(QLatin1String("</title><style type=\"text/css\">"))
        : -1;
    return end >= start ? end
                        : m_html.indexOf(QLatin1String("</title"), start, Qt::CaseInsensitive);
}

void XhtmlWriter::writeTitle(QStringView title)
{
    QString text;
    appendAsXml(&text, title, HtmlPlace::LooseValue);
    m_xhtml += text.replace(QLatin1Char('>'), QLatin1String("&gt;"));
}

void XhtmlWriter::writeTag()
{
    const Role role = roleOf(name());
    if (m_tag.isEnd)
        writeEndTag(role);
    else
        writeStartTag(role);
}

/*! Whether the tag says that the toolkit wrote the text. */
bool XhtmlWriter::isToolkitsMark() const
{
    const auto isMark = [this](const HtmlAttribute &attribute) {
        return name(attribute) == QLatin1String("name")
            && value(attribute) == QLatin1String("qrichtext");
    };
    return name().compare(QLatin1String("meta"), Qt::CaseInsensitive) == 0
        && std::any_of(m_tag.attributes.cbegin(), m_tag.attributes.cend(), isMark);
}

void XhtmlWriter::writeStartTag(Role role)
{
    if (m_isToolkits)
        startInList(role);
    else
        m_isToolkits = isToolkitsMark();
    const int written = writeAttributes();
    const bool isVoid = role == Role::Void;
    if (m_tag.isCut) {
        copy(written, m_tag.end);
        if (m_isToolkits && role == Role::ListItem) // an item that is a rule: "<li<hr />"
            m_xhtml += QLatin1Char('>');
    } else if (isVoid && !m_tag.isSelfClosed) {
        copy(written, m_tag.end - 1);
        m_xhtml += QLatin1String(" />");
    } else {
        copy(written, m_tag.end);
    }
    if (!isVoid && !m_tag.isSelfClosed)
        open(name(), role, false);
}

/*! Writes the start tag up to the end of its last attribute that changes; returns that place. */
int XhtmlWriter::writeAttributes()
{
    const std::vector<HtmlAttribute> &attributes = m_tag.attributes;
    const bool hasStyles
        = std::count_if(attributes.cbegin(), attributes.cend(),
                        [this](const HtmlAttribute &attribute) { return isStyle(attribute); })
        > 1;
    bool hasWritten = false;
    int written = m_tag.start;
    int previousEnd = m_tag.nameEnd;
    for (const HtmlAttribute &attribute : attributes) {
        if (hasStyles && isStyle(attribute)) {
            copy(written, hasWritten ? qMax(written, previousEnd) : attribute.start);
            if (!hasWritten)
                writeStyle();
            hasWritten = true;
            written = attribute.end;
        } else if (hasMarkup(value(attribute))) {
            copy(written, attribute.valueStart);
            appendAsXml(&m_xhtml, value(attribute), valuePlace());
            written = attribute.valueEnd;
        }
        previousEnd = attribute.end;
    }
    return written;
}

/*! Writes all style attributes of the tag as one. */
void XhtmlWriter::writeStyle()
{
    m_xhtml += QLatin1String("style=\"");
    for (const HtmlAttribute &attribute : m_tag.attributes) {
        if (!isStyle(attribute))
            continue;
        if (!m_xhtml.endsWith(QLatin1Char('"')) && !m_xhtml.endsWith(QLatin1Char(';')))
            m_xhtml += QLatin1Char(';');
        const QString quoted
            = value(attribute).toString().replace(QLatin1Char('"'), QLatin1String("&quot;"));
        appendAsXml(&m_xhtml, quoted, valuePlace());
    }
    m_xhtml += QLatin1Char('"');
}

void XhtmlWriter::writeEndTag(Role role)
{
    if (role == Role::Void || (m_isToolkits && endInList(role)))
        return;
    copy(m_tag.start, m_tag.end);
    if (!m_open.empty())
        forgetLast();
}

void XhtmlWriter::open(QStringView name, Role role, bool isImplied)
{
    m_open.push_back({name, role, isImplied});
    m_openLists += int(role == Role::List);
}

void XhtmlWriter::forgetLast()
{
    m_openLists -= int(m_open.back().role == Role::List);
    m_open.pop_back();
}

void XhtmlWriter::close()
{
    m_xhtml += QLatin1String("</");
    MVRQt::append(&m_xhtml, m_open.back().name);
    m_xhtml += QLatin1Char('>');
    forgetLast();
}

/*!
    Sets right what the toolkit leaves open, or closes too early, in front of a start tag.

    It forgets the end of items with unbreakable lines, and writes the lists of a document in
    the order of their paragraphs, however they interleave or run through table cells.
*/
void XhtmlWriter::startInList(Role role)
{
    if (role == Role::ListItem) {
        if (parentRole() == Role::ListItem)
            close();
        if (m_openLists == 0) {
            m_xhtml += QLatin1String("<ul>");
            open(m_impliedList, Role::List, true);
        }
    } else if (role != Role::List && parentRole() == Role::List && m_open.back().isImplied) {
        close();
    }
}

/*! The same in front of an end tag; returns whether the tag is dealt with. */
bool XhtmlWriter::endInList(Role role)
{
    if (role == Role::List) {
        if (parentRole() == Role::ListItem)
            close();
        if (parentRole() == Role::List)
            close();
        return true;
    }
    if (role == Role::ListItem) {
        if (parentRole() == Role::ListItem)
            close();
        return true;
    }
    while (parentRole() == Role::List || parentRole() == Role::ListItem)
        close();
    return false;
}

}

QString MVRTextXhtmlExporter::htmlToXhtml(const QString &html)
{
    QString text = xmlText(html);
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    const bool isBlank
        = std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
    return isBlank ? QString() : XhtmlWriter(text).write();
}
