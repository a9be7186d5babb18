// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxTree_p.h>

#include <finaldraft/file/FdxText_p.h>
#include <finaldraft/file/FdxTreeBuilder_p.h>

#include <QIODevice>
#include <QObject>

#include <algorithm>
#include <cstring>

namespace {

constexpr int maxSize = 1 << 30; // places are ints, and what is written may be longer

constexpr unsigned parseFlags = pugi::parse_cdata | pugi::parse_comments | pugi::parse_pi
    | pugi::parse_declaration | pugi::parse_doctype | pugi::parse_embed_pcdata;

bool saysLatin1(const QByteArray &file)
{
    const int end = file.left(200).indexOf("?>");
    const QByteArray declaration = file.left(qMax(0, end)).toLower();
    return declaration.contains("iso-8859-1") || declaration.contains("windows-1252");
}

QString fromUtf16(const QByteArray &file, bool bigEndian)
{
    QString text(file.size() / 2, Qt::Uninitialized);
    int at = 0;
    for (QChar &character : text) {
        const uchar one = uchar(file[at++]);
        const uchar other = uchar(file[at++]);
        character = bigEndian ? QChar(other, one) : QChar(one, other);
    }
    return text;
}

QByteArray toUtf16(const QString &text, bool bigEndian)
{
    QByteArray bytes;
    bytes.reserve(text.size() * 2);
    for (const QChar character : text) {
        bytes += char(bigEndian ? character.row() : character.cell());
        bytes += char(bigEndian ? character.cell() : character.row());
    }
    return bytes;
}

/*! Passes the source with splices made, piece by piece. */
template <typename Take>
void passPieces(const QByteArray &source, FdxSplices splices, int base, const Take &take)
{
    std::stable_sort(splices.begin(), splices.end(), [](const FdxSplice &a, const FdxSplice &b) {
        return a.start < b.start || (a.start == b.start && a.end == a.start && b.end > b.start);
    });
    int passed = 0;
    const auto passUpTo = [&](int end) {
        if (passed < end)
            take(source.constData() + passed, end - passed);
    };
    for (const FdxSplice &splice : qAsConst(splices)) {
        passUpTo(splice.start - base);
        if (!splice.bytes.isEmpty())
            take(splice.bytes.constData(), int(splice.bytes.size()));
        passed = qMax(passed, splice.end - base);
    }
    passUpTo(int(source.size()));
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

bool FdxTree::load(const QByteArray &file)
{
    m_nodes.clear();
    m_errorString.clear();
    m_file = file;
    if (file.size() > maxSize)
        return fail("the file is too large", 0);
    decode();
    return parse();
}

bool FdxTree::parse()
{
    QVector<Node> nodes;
    if (!parse(&nodes))
        return false;
    // A copy, which takes the place of what the parser had: else that would stay in use in part.
    m_nodes = QVector<Node>(nodes.cbegin(), nodes.cend());
    return true;
}

bool FdxTree::parse(QVector<Node> *nodes)
{
    QByteArray buffer(m_source.constData(), m_source.size()); // is changed
    pugi::xml_document document;
    const pugi::xml_parse_result result = document.load_buffer_inplace(
        buffer.data(), size_t(buffer.size()), parseFlags, pugi::encoding_utf8);
    if (!result)
        return fail(result.description(), int(result.offset));
    if (!document.document_element())
        return fail("no element found", 0);
    for (const pugi::xml_node &node : document.children()) {
        if (node.type() == pugi::node_doctype && std::strchr(node.value(), '['))
            return fail("a document type that declares something is refused", 0);
    }
    FdxTreeBuilder builder(m_source, buffer);
    if (!builder.build(document))
        return fail("elements are nested too deep", 0);
    *nodes = builder.nodes();
    return true;
}

void FdxTree::decode()
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
    m_nodes.clear();
    return false;
}

FdxElement FdxTree::next(int element) const
{
    const FdxElement behind = at(m_nodes[element].behind);
    return behind && m_nodes[behind.index()].parent == m_nodes[element].parent ? behind
                                                                               : FdxElement();
}

FdxElement FdxTree::firstChild(int element) const
{
    return m_nodes[element].behind > element + 1 ? at(element + 1) : FdxElement();
}

FdxTree::Span FdxTree::span(const FdxElement &element) const
{
    const Node &node = m_nodes[element.index()];
    return {node.start, node.innerStart, node.innerEnd, node.end, node.innerStart == node.end};
}

int FdxTree::gapStart(int position) const
{
    while (position > 0 && fdxIsSpace(m_source[position - 1]))
        --position;
    return position;
}

bool FdxTree::write(QIODevice *device, const FdxSplices &splices) const
{
    if (m_encoding != Utf8) {
        const QByteArray source = fdxSpliced(m_source, splices);
        const QByteArray file = source == m_source ? m_file : toFileEncoding(source);
        return device->write(file) == file.size();
    }
    bool isWritten = true;
    passPieces(m_source, splices, 0, [&](const char *bytes, int count) {
        isWritten = isWritten && device->write(bytes, count) == count;
    });
    return isWritten;
}

QByteArray fdxSpliced(const QByteArray &source, const FdxSplices &splices, int base)
{
    QByteArray result;
    result.reserve(source.size() + 1024);
    passPieces(source, splices, base,
               [&](const char *bytes, int count) { result.append(bytes, count); });
    return result;
}
