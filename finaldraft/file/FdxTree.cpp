// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxTree_p.h>

#include <QObject>

#include <algorithm>
#include <cstring>

namespace {

// Files nest 8 deep; what is deeper was made to break something.
constexpr int maxDepth = 256;
constexpr int maxSize = 1 << 30; // places are ints, and what is written may be longer

constexpr unsigned parseFlags = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi
    | pugi::parse_doctype | pugi::parse_escapes | pugi::parse_wconv_attribute
    | pugi::parse_embed_pcdata;

bool isSpace(char character)
{
    return character == ' ' || character == '\n' || character == '\r' || character == '\t';
}

bool saysLatin1(const QByteArray &file)
{
    const int end = file.left(200).indexOf("?>");
    const QByteArray declaration = file.left(qMax(0, end)).toLower();
    return declaration.contains("iso-8859-1") || declaration.contains("windows-1252");
}

QString fromUtf16(const QByteArray &file, bool bigEndian)
{
    QString text(file.size() / 2, Qt::Uninitialized);
    for (int i = 0; i < text.size(); ++i) {
        const uchar one = uchar(file[2 * i]);
        const uchar other = uchar(file[2 * i + 1]);
        text[i] = bigEndian ? QChar(other, one) : QChar(one, other);
    }
    return text;
}

QByteArray toUtf16(const QString &text, bool bigEndian)
{
    QByteArray bytes(text.size() * 2, Qt::Uninitialized);
    for (int i = 0; i < text.size(); ++i) {
        bytes[2 * i] = char(bigEndian ? text[i].row() : text[i].cell());
        bytes[2 * i + 1] = char(bigEndian ? text[i].cell() : text[i].row());
    }
    return bytes;
}

QByteArray toLatin1(const QString &text)
{
    QByteArray bytes;
    bytes.reserve(text.size());
    const QVector<uint> codes = text.toUcs4();
    for (const uint code : codes) {
        if (code < 256)
            bytes += char(code);
        else
            bytes += "&#" + QByteArray::number(code) + ';';
    }
    return bytes;
}

}

FdxTree::FdxTree() = default;
FdxTree::~FdxTree() = default;

bool FdxTree::load(const QByteArray &file)
{
    m_document.reset();
    m_errorString.clear();
    m_file = file;
    if (file.size() > maxSize)
        return fail("the file is too large", 0);
    decode();
    m_buffer = QByteArray(m_source.constData(), m_source.size());
    m_document = std::make_unique<pugi::xml_document>();
    const pugi::xml_parse_result result = m_document->load_buffer_inplace(
        m_buffer.data(), size_t(m_buffer.size()), parseFlags, pugi::encoding_utf8);
    if (!result)
        return fail(result.description(), int(result.offset));
    if (!m_document->document_element())
        return fail("no element found", 0);
    for (const pugi::xml_node &node : m_document->children()) {
        if (node.type() == pugi::node_doctype && std::strchr(node.value(), '['))
            return fail("a document type that declares something is refused", 0);
    }
    return isShallow() || fail("elements are nested too deep", 0);
}

bool FdxTree::decode()
{
    const bool isMarkedLittle = m_file.startsWith("\xff\xfe");
    const bool isMarkedBig = m_file.startsWith("\xfe\xff");
    m_encoding = Utf8;
    if (isMarkedLittle || m_file.startsWith(QByteArray("<\0", 2)))
        m_encoding = Utf16LittleEndian;
    else if (isMarkedBig || m_file.startsWith(QByteArray("\0<", 2)))
        m_encoding = Utf16BigEndian;
    else if (saysLatin1(m_file))
        m_encoding = Latin1;
    m_source = m_file;
    if (m_encoding == Latin1)
        m_source = QString::fromLatin1(m_file).toUtf8();
    else if (m_encoding != Utf8)
        m_source = fromUtf16(m_file, m_encoding == Utf16BigEndian).toUtf8();
    return m_encoding == Utf8;
}

QByteArray FdxTree::toFileEncoding(const QByteArray &utf8) const
{
    if (m_encoding == Utf8)
        return utf8;
    QString text = QString::fromUtf8(utf8);
    const QChar mark(QChar::ByteOrderMark); // which the conversion takes off
    if (utf8.startsWith("\xef\xbb\xbf") && !text.startsWith(mark))
        text.prepend(mark);
    return m_encoding == Latin1 ? toLatin1(text) : toUtf16(text, m_encoding == Utf16BigEndian);
}

bool FdxTree::isShallow() const
{
    int depth = 0;
    pugi::xml_node node = *m_document;
    while (node) {
        if (const pugi::xml_node child = node.first_child()) {
            node = child;
            if (++depth > maxDepth)
                return false;
            continue;
        }
        while (node && !node.next_sibling()) {
            node = node.parent();
            --depth;
        }
        node = node.next_sibling();
    }
    return true;
}

bool FdxTree::fail(const char *message, int offset)
{
    const int end = qBound(0, offset, m_source.size());
    const QByteArray before = m_source.left(end);
    const int line = 1 + before.count('\n');
    const int column = end - before.lastIndexOf('\n');
    m_errorString = QObject::tr("Line %1, column %2: %3")
                        .arg(line)
                        .arg(column)
                        .arg(QString::fromUtf8(message));
    m_document.reset();
    return false;
}

pugi::xml_node FdxTree::root() const
{
    return m_document ? m_document->document_element() : pugi::xml_node();
}

int FdxTree::find(char character, int from) const
{
    const void *place
        = std::memchr(m_source.constData() + from, character, size_t(m_source.size() - from));
    return place ? int(static_cast<const char *>(place) - m_source.constData()) : m_source.size();
}

int FdxTree::start(const pugi::xml_node &element) const
{
    return offset(element.name()) - 1;
}

FdxTree::Span FdxTree::span(const pugi::xml_attribute &attribute) const
{
    Span span;
    span.start = span.innerStart = offset(attribute.value());
    span.end = span.innerEnd = find(m_source[span.start - 1], span.start);
    return span;
}

int FdxTree::tagEnd(const pugi::xml_node &element) const
{
    const pugi::xml_attribute last = element.last_attribute();
    const int from = last ? span(last).end : offset(element.name());
    return find('>', from) + 1;
}

/*! The same for an element that holds text alone, as nearly all do. */
FdxTree::Span FdxTree::leafSpan(const pugi::xml_node &element) const
{
    Span span;
    span.start = start(element);
    span.innerStart = tagEnd(element);
    span.isEmptyTag = m_source[span.innerStart - 2] == '/';
    span.innerEnd = span.isEmptyTag ? span.innerStart : find('<', span.innerStart);
    span.end = span.isEmptyTag ? span.innerStart : find('>', span.innerEnd) + 1;
    return span;
}

// Elements hold no ">" or "</" but in what is a node itself, so that the end of the last one is
// followed by the end tag; that may take a way down, which the depth limits.
FdxTree::Span FdxTree::span(const pugi::xml_node &element) const
{
    const pugi::xml_node first = element.first_child();
    if (!first || (first.type() == pugi::node_pcdata && !first.next_sibling()))
        return leafSpan(element);
    QVector<pugi::xml_node> path;
    int position = -1;
    for (pugi::xml_node node = element; position < 0;) {
        if (node.type() == pugi::node_element) {
            path.append(node);
            pugi::xml_node child = node.last_child();
            while (child && child.type() == pugi::node_pcdata)
                child = child.previous_sibling();
            if (child)
                node = child;
            else
                position = tagEnd(node);
        } else if (node.type() == pugi::node_cdata) {
            position = m_source.indexOf("]]>", offset(node.value())) + 3;
        } else if (node.type() == pugi::node_comment) {
            position = m_source.indexOf("-->", offset(node.value())) + 3;
        } else {
            position = m_source.indexOf("?>", offset(node.name())) + 2;
        }
    }
    Span span;
    for (int i = path.size(); i-- > 0;) {
        span.start = start(path[i]);
        const bool isLeaf = i == path.size() - 1;
        span.isEmptyTag = isLeaf && position == tagEnd(path[i]) && m_source[position - 2] == '/';
        span.innerEnd = span.isEmptyTag ? position : find('<', position);
        if (!span.isEmptyTag)
            position = find('>', span.innerEnd) + 1;
        span.end = position;
    }
    span.innerStart = tagEnd(element);
    return span;
}

int FdxTree::gapStart(int position) const
{
    while (position > 0 && isSpace(m_source[position - 1]))
        --position;
    return position;
}

QByteArray FdxTree::spliced(FdxSplices splices) const
{
    return fdxSpliced(m_source, std::move(splices));
}

QByteArray fdxSpliced(const QByteArray &source, FdxSplices splices, int base)
{
    std::stable_sort(splices.begin(), splices.end(), [](const FdxSplice &a, const FdxSplice &b) {
        return a.start < b.start || (a.start == b.start && a.end == a.start && b.end > b.start);
    });
    QByteArray result;
    result.reserve(source.size() + 1024);
    int copied = 0;
    for (const FdxSplice &splice : qAsConst(splices)) {
        const int start = qMax(copied, splice.start - base);
        result.append(source.constData() + copied, start - copied);
        result += splice.bytes;
        copied = qMax(copied, splice.end - base);
    }
    result.append(source.constData() + copied, source.size() - copied);
    return result;
}
