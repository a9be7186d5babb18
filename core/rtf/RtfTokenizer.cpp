#include <core/rtf/RtfTokenizer.h>

#include <array>
#include <cstring>
#include <limits>

namespace {

enum ByteClass : unsigned char {
    Ascii, // printable, needs no decoding
    Coded, // control characters and everything above 0x7e
    LineEnd, // carries no meaning in RTF
    Special // backslash and braces
};

constexpr std::array<ByteClass, 256> classifyBytes()
{
    std::array<ByteClass, 256> classes {};
    for (int byte = 0; byte < 256; ++byte)
        classes[byte] = byte >= 0x20 && byte < 0x7f ? Ascii : Coded;
    classes['\n'] = classes['\r'] = LineEnd;
    classes['\\'] = classes['{'] = classes['}'] = Special;
    return classes;
}

constexpr std::array<ByteClass, 256> byteClasses = classifyBytes();

ByteClass classOf(char byte)
{
    return byteClasses[static_cast<unsigned char>(byte)];
}

constexpr quint64 eightTimes(unsigned char byte)
{
    return 0x0101010101010101ULL * byte;
}

// Non-zero when a byte of \a bytes is zero (exact as long as it is only asked whether).
constexpr quint64 anyZero(quint64 bytes)
{
    return (bytes - eightTimes(1)) & ~bytes & eightTimes(0x80);
}

// Eight bytes at once: text is nearly all of a file. Takes 0x7f and all above for not ASCII.
bool isAscii8(const char *at)
{
    quint64 bytes;
    std::memcpy(&bytes, at, sizeof bytes);
    const quint64 high = (bytes | (bytes + eightTimes(1))) & eightTimes(0x80);
    const quint64 control = (bytes - eightTimes(0x20)) & ~bytes & eightTimes(0x80);
    return (high | control | anyZero(bytes ^ eightTimes('\\')) | anyZero(bytes ^ eightTimes('{'))
            | anyZero(bytes ^ eightTimes('}')))
        == 0;
}

bool isLetter(char byte)
{
    const char lower = static_cast<char>(byte | 0x20);
    return lower >= 'a' && lower <= 'z';
}

bool isDigit(char byte)
{
    return byte >= '0' && byte <= '9';
}

int hexValue(char byte)
{
    if (isDigit(byte))
        return byte - '0';
    const char lower = static_cast<char>(byte | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

} // namespace

RtfToken RtfTokenizer::next()
{
    while (m_at != m_end && classOf(*m_at) == LineEnd)
        ++m_at;
    if (m_at == m_end)
        return {};

    switch (*m_at) {
    case '{':
        ++m_at;
        return {RtfToken::GroupStart, false, false, 0, {}};
    case '}':
        ++m_at;
        return {RtfToken::GroupEnd, false, false, 0, {}};
    case '\\':
        ++m_at;
        return readEscape();
    default:
        return readText();
    }
}

RtfToken RtfTokenizer::readEscape()
{
    if (m_at == m_end)
        return {};
    if (isLetter(*m_at))
        return readWord();

    const char *symbol = m_at++;
    if (*symbol == '\'')
        return readHex();
    // An escaped line end is one paragraph end, also when it is the pair CR LF.
    if (*symbol == '\r' && m_at != m_end && *m_at == '\n')
        ++m_at;
    return {RtfToken::Symbol, false, false, 0, std::string_view(symbol, 1)};
}

RtfToken RtfTokenizer::readHex()
{
    if (m_end - m_at < 2) { // the file breaks off here
        m_at = m_end;
        return {};
    }
    const int high = hexValue(m_at[0]);
    const int low = hexValue(m_at[1]);
    if (high < 0 || low < 0)
        return {RtfToken::Symbol, false, false, 0, std::string_view("'", 1)};
    m_at += 2;
    return {RtfToken::Hex, false, true, high * 16 + low, {}};
}

RtfToken RtfTokenizer::readWord()
{
    const char *name = m_at;
    while (m_at != m_end && isLetter(*m_at))
        ++m_at;
    RtfToken token {RtfToken::Word, false, false, 0, std::string_view(name, m_at - name)};

    const bool negative = m_at != m_end && *m_at == '-';
    const char *digits = m_at + (negative ? 1 : 0);
    if (digits != m_end && isDigit(*digits)) {
        constexpr qint64 limit = std::numeric_limits<int>::max();
        qint64 number = 0;
        for (m_at = digits; m_at != m_end && isDigit(*m_at); ++m_at)
            number = qMin(number * 10 + (*m_at - '0'), limit);
        token.hasParameter = true;
        token.parameter = static_cast<int>(negative ? -number : number);
    }
    if (m_at == m_end) // cut off, perhaps within the word or its number
        return {};
    if (*m_at == ' ')
        ++m_at;
    if (token.text == "bin")
        return readBinary(token.parameter);
    return token;
}

RtfToken RtfTokenizer::readBinary(int length)
{
    const char *data = m_at;
    m_at += qBound<qint64>(0, length, m_end - m_at);
    return {RtfToken::Binary, false, true, length, std::string_view(data, m_at - data)};
}

RtfToken RtfTokenizer::readText()
{
    const char *text = m_at;
    while (m_end - m_at >= 8 && isAscii8(m_at))
        m_at += 8;
    while (m_at != m_end && classOf(*m_at) == Ascii)
        ++m_at;
    if (m_at != text)
        return {RtfToken::Text, true, false, 0, std::string_view(text, m_at - text)};
    while (m_at != m_end && classOf(*m_at) == Coded)
        ++m_at;
    return {RtfToken::Text, false, false, 0, std::string_view(text, m_at - text)};
}

int RtfTokenizer::readUnicodeRun(char16_t *units, int size, bool *fallback)
{
    int count = 0;
    *fallback = true;
    while (count < size && skipFallback()) {
        *fallback = false;
        while (count < size && m_at != m_end && classOf(*m_at) == Ascii)
            units[count++] = static_cast<unsigned char>(*m_at++);
        if (count == size || !readUnicode(&units[count]))
            break;
        ++count;
        *fallback = true;
    }
    return count;
}

// One character, as itself or as \'xx.
bool RtfTokenizer::skipFallback()
{
    if (m_at != m_end && classOf(*m_at) == Ascii) {
        ++m_at;
        return true;
    }
    const bool isHex = m_end - m_at >= 4 && m_at[0] == '\\' && m_at[1] == '\''
        && hexValue(m_at[2]) >= 0 && hexValue(m_at[3]) >= 0;
    m_at += isHex ? 4 : 0;
    return isHex;
}

// A \u word for an ordinary character; what is none stays where it is.
bool RtfTokenizer::readUnicode(char16_t *unit)
{
    constexpr int mostDigits = 5;
    if (m_end - m_at < 3 + mostDigits || m_at[0] != '\\' || m_at[1] != 'u')
        return false;
    const bool negative = m_at[2] == '-';
    const char *at = m_at + (negative ? 3 : 2);
    const char *digits = at;
    int number = 0;
    for (; at != m_end && isDigit(*at) && at - digits < mostDigits; ++at)
        number = number * 10 + (*at - '0');
    if (at == digits || at == m_end || isDigit(*at))
        return false;
    number = negative ? 0x10000 - number : number;
    constexpr int firstSpecial
        = 0x2028; // line separator; behind it are surrogates and noncharacters
    const bool isOrdinary = number >= 0xa0 && number < 0xfdd0 && number / 2 != firstSpecial / 2
        && !(number >= 0xd800 && number < 0xe000);
    if (!isOrdinary)
        return false;
    *unit = static_cast<char16_t>(number);
    m_at = *at == ' ' ? at + 1 : at;
    return true;
}

void RtfTokenizer::skipGroup()
{
    qint64 depth = 1;
    while (depth > 0 && m_at != m_end) {
        const char byte = *m_at++;
        if (byte == '{')
            ++depth;
        else if (byte == '}')
            --depth;
        else if (byte == '\\')
            readEscape();
    }
}
