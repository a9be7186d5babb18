// SPDX-License-Identifier: MIT
#include <core/rtf/write/RtfOutput.h>

#include <QtEndian>

#include <charconv>

namespace {

// What code page 1252 has in its upper control range; 0 where it has nothing.
constexpr char16_t western[]
    = {0x20ac, 0,      0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
       0x2039, 0x0152, 0,      0x017d, 0,      0,      0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
       0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0,      0x017e, 0x0178};

// Is it beyond all that has a word or a byte of its own, as the letters of most scripts are?
bool isFar(char16_t unit)
{
    return unit > 0x2122 || (unit > 0x2dc && unit < 0x2011);
}

// The byte of code page 1252 for a character beyond ASCII, or 0.
int westernByte(char16_t unit)
{
    if (unit >= 0xa0 && unit <= 0xff)
        return unit;
    if (unit < 0x152 || unit > 0x2122)
        return 0;
    for (int i = 0; i < 32; ++i) {
        if (western[i] == unit)
            return 0x80 + i;
    }
    return 0;
}

bool isPlain(char16_t unit)
{
    return unit >= 0x20 && unit < 0x7f && unit != '\\' && unit != '{' && unit != '}';
}

// Would the character be taken for a part of the control word before it?
bool joinsWord(char character)
{
    return character == ' ' || character == '-' || (character >= '0' && character <= '9')
        || (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

// Programs without Unicode show the letter below the accent.
char fallbackFor(char16_t unit)
{
    const bool isLatin = unit < 0x2dd || (unit >= 0x1e00 && unit < 0x1f00) || unit > 0xff00;
    if (!isLatin || QChar(unit).decompositionTag() == QChar::NoDecomposition)
        return '?';
    const QString parts = QChar(unit).decomposition();
    const char16_t base = parts.isEmpty() ? u'?' : parts.at(0).unicode();
    return isPlain(base) && base != ' ' ? static_cast<char>(base) : '?';
}

const char *escapeFor(char16_t unit)
{
    switch (unit) {
    case '\\':
        return "\\\\";
    case '{':
        return "\\{";
    case '}':
        return "\\}";
    case 0x00a0:
        return "\\~";
    case 0x00ad:
        return "\\-";
    case 0x2011:
        return "\\_";
    default:
        return nullptr;
    }
}

// The digits of a number below 10,000, the first in the lowest byte.
quint32 fourDigits(quint32 number)
{
    const quint32 hundreds = number * 5243 >> 19; // exact for numbers this small
    const quint32 pairs = hundreds | (number - hundreds * 100) << 16;
    const quint32 tens = (pairs * 103 >> 10) & 0x000f000f;
    return (tens | (pairs - tens * 10) << 8) + 0x30303030;
}

// Nine in ten bytes of a Russian or Japanese file are such words.
inline char *appendNumber(char16_t unit, char *to)
{
    const int number = static_cast<short>(unit); // RTF counts it as signed
    if (number < 1000)
        return std::to_chars(to, to + 6, number).ptr;
    if (number >= 10000)
        *to++ = static_cast<char>('0' + number / 10000);
    qToLittleEndian<quint32>(fourDigits(static_cast<quint32>(number) % 10000), to);
    return to + 4;
}

inline char *appendUnicode(char16_t unit, char *to)
{
    *to++ = '\\';
    *to++ = 'u';
    to = appendNumber(unit, to);
    const char fallback = fallbackFor(unit);
    if (joinsWord(fallback))
        *to++ = ' ';
    *to++ = fallback;
    return to;
}

} // namespace

void RtfOutput::text(QStringView text)
{
    const QChar *at = text.data();
    const QChar *end = at + text.size();
    while (at != end) {
        const QChar *start = at;
        while (at != end && isPlain(at->unicode()))
            ++at;
        if (at != start)
            ascii(start, static_cast<int>(at - start));
        if (at != end)
            at = coded(at, end);
    }
}

void RtfOutput::ascii(const QChar *text, int length)
{
    if (m_afterWord && joinsWord(text->toLatin1()))
        m_rtf += ' ';
    m_afterWord = false;
    const int size = m_rtf.size();
    m_rtf.resize(size + length);
    char *to = m_rtf.data() + size;
    for (int i = 0; i < length; ++i)
        to[i] = static_cast<char>(text[i].unicode());
}

// Text with few plain characters; ends where several of them stand together.
const QChar *RtfOutput::coded(const QChar *at, const QChar *end)
{
    constexpr int size = 512;
    constexpr int maxFormLength = 10; // \u-12345 a
    char buffer[size];
    char *to = buffer;
    for (; at != end && to - buffer <= size - maxFormLength; ++at) {
        const char16_t unit = at->unicode();
        if (isFar(unit)) {
            m_afterWord = false;
            to = appendUnicode(unit, to);
            continue;
        }
        if (!isPlain(unit)) {
            to = appendCoded(unit, to);
            continue;
        }
        if (end - at > 1 && isPlain(at[1].unicode()))
            break;
        if (m_afterWord && joinsWord(static_cast<char>(unit)))
            *to++ = ' ';
        m_afterWord = false;
        *to++ = static_cast<char>(unit);
    }
    m_rtf.append(buffer, static_cast<int>(to - buffer));
    return at;
}

char *RtfOutput::appendCoded(char16_t unit, char *to)
{
    const auto append = [&to](const char *text) {
        while (*text != 0)
            *to++ = *text++;
        return to;
    };
    if (unit < 0x20 && unit != '\t') // stands for nothing
        return to;
    m_afterWord = false;
    if (const char *escape = escapeFor(unit))
        return append(escape);
    if (const int byte = m_hasBytes ? westernByte(unit) : 0) {
        constexpr char digits[] = "0123456789abcdef";
        to = append("\\'");
        *to++ = digits[byte >> 4];
        *to++ = digits[byte & 15];
        return to;
    }
    if (unit != '\t' && unit != QChar::LineSeparator)
        return appendUnicode(unit, to);
    m_afterWord = true;
    return append(unit == '\t' ? "\\tab" : "\\line");
}
