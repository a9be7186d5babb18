// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxText_p.h>

#include <algorithm>
#include <cstring>

namespace {

constexpr uint replacement = 0xfffd;
constexpr uint lineSeparator = 0x2028;

struct NamedReference
{
    const char *name;
    char character;
};

constexpr NamedReference namedReferences[]
    = {{"amp;", '&'}, {"lt;", '<'}, {"gt;", '>'}, {"quot;", '"'}, {"apos;", '\''}};

/*! Reads the characters of XML source one by one. */
class Characters
{
public:
    enum Breaks { BreaksOfDocument, BreaksOfFile };

    Characters(const QByteArray &source, int start, int end, Breaks breaks = BreaksOfDocument)
        : m_place(source.constData() + start)
        , m_end(source.constData() + end)
        , m_breaks(breaks)
    {
    }

    const char *place() const { return m_place; }

    /*! The next character into \a code; false at the end. */
    bool next(uint *code)
    {
        skipMarkup();
        if (m_place == m_end)
            return false;
        *code = plain();
        if (*code == '\r')
            skipLineFeed();
        *code = shown(*code);
        return true;
    }

private:
    // A document would begin a paragraph at these, or a frame.
    uint shown(uint code) const
    {
        if (code == '\n' || code == '\r')
            return m_breaks == BreaksOfFile ? uint('\n') : lineSeparator;
        if (code == 0x2029 && m_breaks == BreaksOfDocument)
            return lineSeparator;
        const bool isUnfit = code == 0 || (code >= 0xd800 && code < 0xe000) || code > 0x10ffff
            || code == 0xfdd0 || code == 0xfdd1;
        return isUnfit ? replacement : code;
    }

    bool startsWith(const char *text) const
    {
        const int length = int(std::strlen(text));
        return m_end - m_place >= length && std::memcmp(m_place, text, size_t(length)) == 0;
    }

    void skipBehind(const char *text)
    {
        const char *found = std::search(m_place, m_end, text, text + std::strlen(text));
        m_place = found == m_end ? m_end : found + std::strlen(text);
    }

    void skipMarkup()
    {
        while (m_place < m_end) {
            if (m_isCData) {
                if (!startsWith("]]>"))
                    return;
                m_place += 3;
                m_isCData = false;
            } else if (*m_place != '<') {
                return;
            } else if (startsWith("<![CDATA[")) {
                m_place += 9;
                m_isCData = true;
            } else {
                skipBehind(startsWith("<!--") ? "-->" : startsWith("<?") ? "?>" : ">");
            }
        }
    }

    void skipLineFeed()
    {
        Characters ahead = *this;
        ahead.skipMarkup();
        if (ahead.m_place < m_end && ahead.plain() == '\n')
            *this = ahead;
    }

    uint plain()
    {
        const uchar first = uchar(*m_place);
        if (first == '&' && !m_isCData)
            return reference();
        return first < 0x80 ? uchar(*m_place++) : sequence();
    }

    uint reference()
    {
        ++m_place;
        for (const NamedReference &reference : namedReferences) {
            if (startsWith(reference.name)) {
                m_place += std::strlen(reference.name);
                return uint(reference.character);
            }
        }
        const char *end = std::find(m_place, std::min(m_end, m_place + 12), ';');
        if (end == m_end || *end != ';' || end - m_place < 2 || *m_place != '#')
            return '&';
        const bool isHex = m_place[1] == 'x';
        bool isNumber = false;
        const uint code
            = QByteArray(m_place + (isHex ? 2 : 1), int(end - m_place) - (isHex ? 2 : 1))
                  .toUInt(&isNumber, isHex ? 16 : 10);
        if (!isNumber)
            return '&';
        m_place = end + 1;
        return code;
    }

    uint sequence()
    {
        const uchar first = uchar(*m_place++);
        const int more = first >= 0xf0 ? 3 : first >= 0xe0 ? 2 : 1;
        if (first < 0xc2 || first > 0xf4 || m_end - m_place < more)
            return replacement;
        uint code = first & (0x3fu >> more);
        for (int i = 0; i < more; ++i) {
            if ((uchar(m_place[i]) & 0xc0) != 0x80)
                return replacement;
            code = (code << 6) | (uchar(m_place[i]) & 0x3fu);
        }
        m_place += more;
        return code;
    }

    const char *m_place;
    const char *m_end;
    Breaks m_breaks;
    bool m_isCData = false;
};

bool isPlain(char byte)
{
    return uchar(byte) >= 0x20 && byte != '&' && byte != '<';
}

// The same of eight bytes at once: the top bit of each tells.
bool arePlain(quint64 bytes)
{
    constexpr quint64 ones = 0x0101010101010101;
    constexpr quint64 tops = 0x8080808080808080;
    const auto hasBelow = [](quint64 of, uchar limit) { return (of - ones * limit) & ~of; };
    const quint64 odd = hasBelow(bytes, 0x20) | hasBelow(bytes ^ (ones * uchar('&')), 1)
        | hasBelow(bytes ^ (ones * uchar('<')), 1);
    return (odd & tops) == 0;
}

enum Content { AsciiText, Utf8Text, OtherText };

// What most runs are: text without references, markup and breaks.
Content contentOf(const char *start, const char *end)
{
    constexpr quint64 tops = 0x8080808080808080;
    quint64 seen = 0;
    for (; end - start >= 8; start += 8) {
        quint64 bytes = 0;
        std::memcpy(&bytes, start, sizeof bytes);
        if (!arePlain(bytes))
            return OtherText;
        seen |= bytes;
    }
    for (; start < end; ++start) {
        if (!isPlain(*start))
            return OtherText;
        seen |= uchar(*start);
    }
    return seen & tops ? Utf8Text : AsciiText;
}

// Whether Qt took text for what Characters takes it for.
bool isTakenAsIs(const QString &text)
{
    return std::none_of(text.cbegin(), text.cend(), [](QChar character) {
        const ushort code = character.unicode();
        return code == 0x2029 || code == 0xfdd0 || code == 0xfdd1 || code == replacement
            || code == QChar::ByteOrderMark;
    });
}

int units(uint code)
{
    return QChar::requiresSurrogates(code) ? 2 : 1;
}

QString decoded(const QByteArray &source, int start, int end, Characters::Breaks breaks)
{
    const char *bytes = source.constData() + start;
    const Content content = contentOf(bytes, source.constData() + end);
    if (content == AsciiText)
        return QString::fromLatin1(bytes, end - start);
    QString text;
    if (content == Utf8Text && *bytes != '\xef') { // Qt drops a mark at the start
        text = QString::fromUtf8(bytes, end - start);
        if (isTakenAsIs(text))
            return text;
        text.clear();
    }
    text.reserve(end - start);
    Characters characters(source, start, end, breaks);
    for (uint code = 0; characters.next(&code);) {
        if (units(code) == 2)
            text += QChar(QChar::highSurrogate(code));
        text += units(code) == 2 ? QChar(QChar::lowSurrogate(code)) : QChar(ushort(code));
    }
    return text;
}

}

QString fdxText(const QByteArray &source, int start, int end)
{
    return decoded(source, start, end, Characters::BreaksOfDocument);
}

QString fdxPlainText(const QByteArray &source, int start, int end)
{
    return decoded(source, start, end, Characters::BreaksOfFile);
}

int fdxPrefixLength(const QByteArray &source, int start, int end, QStringView text)
{
    const char *bytes = source.constData() + start;
    if (contentOf(bytes, source.constData() + end) != AsciiText) {
        const QString decoded = fdxText(source, start, end);
        return text.startsWith(decoded) ? decoded.size() : -1;
    }
    const QLatin1String latin1(bytes, end - start);
    return text.size() >= end - start && text.left(end - start) == latin1 ? end - start : -1;
}

int fdxTextLength(const QByteArray &source, int start, int end)
{
    if (contentOf(source.constData() + start, source.constData() + end) == AsciiText)
        return end - start;
    int length = 0;
    Characters characters(source, start, end);
    for (uint code = 0; characters.next(&code);)
        length += units(code);
    return length;
}

int fdxTextPlace(const QByteArray &source, int start, int end, int count)
{
    if (contentOf(source.constData() + start, source.constData() + end) == AsciiText)
        return qMin(end, start + count);
    Characters characters(source, start, end);
    for (uint code = 0; count > 0 && characters.next(&code);)
        count -= units(code);
    return int(characters.place() - source.constData());
}

QByteArray fdxEscaped(QStringView text, const QByteArray &newLine)
{
    QString escaped;
    escaped.reserve(int(text.size()) + 16);
    for (const QChar character : text) {
        const ushort code = character.unicode();
        if (code == '&')
            escaped += QLatin1String("&amp;");
        else if (code == '<')
            escaped += QLatin1String("&lt;");
        else if (code == '>')
            escaped += QLatin1String("&gt;");
        else if (code == lineSeparator)
            escaped += QString::fromLatin1(newLine);
        else if ((code < 0x20 && code != '\t') || code >= 0xfffe) // XML cannot write them
            escaped += QChar(QChar::ReplacementCharacter);
        else
            escaped += character;
    }
    return escaped.toUtf8();
}

QByteArray fdxEscapedValue(const QString &value)
{
    QByteArray escaped = fdxEscaped(value, "&#10;");
    escaped.replace('"', "&quot;");
    escaped.replace('\t', "&#9;");
    return escaped;
}
