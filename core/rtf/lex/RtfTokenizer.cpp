// SPDX-License-Identifier: MIT
#include <core/rtf/lex/RtfTokenizer.h>

#include <QtEndian>

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

// Text that is better read at once.
bool isLongAscii(const char *at, const char *end)
{
    return end - at >= 8 && classOf(at[1]) == Ascii && isAscii8(at);
}

// The helpers of coded runs give the place behind what they read, \a at itself when it is none.

// One character that stands for a \u, as itself or as \'xx.
const char *behindFallback(const char *at, const char *end)
{
    if (classOf(*at) == Ascii)
        return at + 1;
    const bool isHex = end - at >= 4 && at[0] == '\\' && at[1] == '\'' && hexValue(at[2]) >= 0
        && hexValue(at[3]) >= 0;
    return isHex ? at + 4 : at;
}

// The value of four digits, given as the numbers 0 to 9 with the first in the lowest byte.
int valueOfFour(quint32 digits)
{
    const quint32 pairs = (digits * 10 + (digits >> 8)) & 0x00ff00ff;
    return static_cast<int>((pairs * 100 + (pairs >> 16)) & 0xffff);
}

// The value of four digits, all at once; negative when there are other characters among them.
int fourDigits(const char *at)
{
    constexpr quint32 ones = 0x01010101;
    const quint32 digits = qFromLittleEndian<quint32>(at) ^ (ones * '0');
    const bool areDigits = ((digits | (digits + ones * (0x7f - 9))) & (ones * 0x80)) == 0;
    return areDigits ? valueOfFour(digits) : -1;
}

bool isSeparator(int unit) // of lines or paragraphs
{
    return unit == 0x2028 || unit == 0x2029;
}

// What needs no care: neither a control character, a line end, a surrogate nor a noncharacter.
bool isOrdinary(int unit)
{
    return unit >= 0xa0 && unit < 0xfdd0 && (unit < 0xd800 || unit >= 0xe000) && !isSeparator(unit);
}

// A \u word for an ordinary character.
inline const char *readUnicode(const char *at, const char *end, char16_t *unit)
{
    constexpr int maxWordLength = 8; // \u-12345
    if (end - at <= maxWordLength || at[0] != '\\' || at[1] != 'u')
        return at;
    const bool negative = at[2] == '-';
    const char *digits = at + (negative ? 3 : 2);
    int number = fourDigits(digits);
    if (number >= 0) {
        digits += 4;
    } else {
        for (number = 0; isDigit(*digits); ++digits)
            number = number * 10 + (*digits - '0');
    }
    if (isDigit(*digits))
        number = number * 10 + (*digits++ - '0');
    number = negative ? 0x10000 - number : number;
    if (isDigit(*digits) || !isOrdinary(number))
        return at;
    *unit = static_cast<char16_t>(number);
    return digits + (*digits == ' ' ? 1 : 0);
}

// Reads a word of \u words of so many digits for ordinary characters, one right behind the other:
// what is nearly all of a text in most scripts. Each is looked at in one step, with what follows
// it: the backslash of the next, or the '?' that stands for it.
template <int digitCount, char following>
const char *readUnicodeWords(const char *at, const char *end, char16_t **units,
                             const char16_t *stop)
{
    constexpr int length = 2 + digitCount;
    constexpr int step = length + (following == '?' ? 1 : 0);
    constexpr quint64 zeros = digitCount == 4 ? 0x0000303030300000 : 0x0030303030300000;
    constexpr quint64 last = quint64(1) << (8 * length);
    constexpr quint64 pattern = last * following | zeros | quint64('u' << 8 | '\\');
    // Added to what is left of a word without the pattern, sets the upper bit of each byte (and of
    // the first two together) that is no digit or not as in the pattern.
    constexpr quint64 excess = last * 0x7f | zeros / '0' * 0x76 | 0x7fff;
    constexpr quint64 upperBits = (last | zeros / '0') * 0x80 | 0x8000;
    char16_t *to = *units;
    for (bool more = true; more && to != stop && end - at > 8; at += step) {
        const quint64 word = qFromLittleEndian<quint64>(at) ^ pattern;
        const quint64 wrong = (word | (word + excess)) & upperBits;
        more = wrong == 0;
        // The last \u word of a word has no other one behind it.
        if (!more && (following == '?' || wrong != last * 0x80 || isDigit(at[length])))
            break;
        int number = valueOfFour(static_cast<quint32>(word >> 16));
        if (digitCount == 5)
            number = number * 10 + static_cast<int>(word >> 48 & 0x0f);
        // Four digits reach neither surrogates nor noncharacters.
        const bool isTaken
            = digitCount == 4 ? number >= 0xa0 && !isSeparator(number) : isOrdinary(number);
        if (!isTaken)
            break;
        *to++ = static_cast<char16_t>(number);
    }
    *units = to;
    return following != '?' && *at == ' ' ? at + 1 : at;
}

// The same for as many fallback characters as most files have; \a at where there are others.
inline const char *readUnicodeWords(int fallbackLength, const char *at, const char *end,
                                    char16_t **units, const char16_t *stop)
{
    const char *start = nullptr;
    while (start != at && *units != stop && at != end && *at == '\\') {
        start = at;
        if (fallbackLength == 0) {
            at = readUnicodeWords<4, '\\'>(at, end, units, stop);
            at = readUnicodeWords<5, '\\'>(at, end, units, stop);
        } else if (fallbackLength == 1) {
            at = readUnicodeWords<4, '?'>(at, end, units, stop);
            at = readUnicodeWords<5, '?'>(at, end, units, stop);
        }
    }
    return at;
}

inline const char *readByte(const char *at, const char *end, const QChar *characters,
                            char16_t *unit)
{
    if (!characters || end - at < 4 || at[0] != '\\' || at[1] != '\'')
        return at;
    const int high = hexValue(at[2]);
    const int low = hexValue(at[3]);
    if (high < 2 || low < 0)
        return at;
    *unit = characters[high * 16 + low].unicode();
    return at + 4;
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
    m_at += qBound(qint64(0), qint64(length), qint64(m_end - m_at));
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

int RtfTokenizer::readCodedRun(CodedRun *run, char16_t *units, int size)
{
    const char *at = m_at; // a local, which the compiler need not store after each character
    int fallback = run->fallback;
    char16_t *to = units;
    const char16_t *const stop = units + size;
    while (to != stop && at != m_end) {
        const ByteClass kind = classOf(*at);
        const char *next = at + 1;
        if (fallback > 0 && kind != LineEnd) {
            next = behindFallback(at, m_end);
            fallback -= next != at ? 1 : 0;
        } else if (kind == Special) {
            at = readUnicodeWords(run->fallbackLength, at, m_end, &to, stop);
            if (to == stop || at == m_end || classOf(*at) != Special)
                continue;
            next = readUnicode(at, m_end, to);
            fallback = next != at ? run->fallbackLength : 0;
            if (next == at)
                next = readByte(at, m_end, run->characters, to);
            to += next != at ? 1 : 0;
        } else if (kind == Ascii && !isLongAscii(at, m_end)) {
            *to++ = static_cast<unsigned char>(*at);
        } else if (kind != LineEnd) {
            break;
        }
        if (next == at)
            break;
        at = next;
    }
    m_at = at;
    run->fallback = fallback;
    return static_cast<int>(to - units);
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
