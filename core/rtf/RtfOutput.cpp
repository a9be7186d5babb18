#include <core/rtf/RtfOutput.h>

#include <array>
#include <charconv>

namespace {

// What code page 1252 has in its upper control range; 0 where it has nothing.
constexpr char16_t western[]
    = {0x20ac, 0,      0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
       0x2039, 0x0152, 0,      0x017d, 0,      0,      0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
       0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0,      0x017e, 0x0178};

// The byte of code page 1252 for a character beyond ASCII, or 0.
int westernByte(char16_t unit)
{
    if (unit >= 0xa0 && unit <= 0xff)
        return unit;
    // Nearly all letters of other scripts lie in the gap.
    const bool isInGap = unit > 0x192 && unit < 0x2013 && unit != 0x2c6 && unit != 0x2dc;
    if (unit < 0x152 || unit > 0x2122 || isInGap)
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
    if (QChar(unit).decompositionTag() == QChar::NoDecomposition)
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
        for (; at != end && !isPlain(at->unicode()); ++at)
            character(at->unicode());
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

void RtfOutput::character(char16_t unit)
{
    if (const char *escape = escapeFor(unit)) {
        m_rtf += escape;
        m_afterWord = false;
    } else if (unit == '\t') {
        words(QByteArrayLiteral("\\tab"));
    } else if (unit == QChar::LineSeparator) {
        words(QByteArrayLiteral("\\line"));
    } else if (const int byte = westernByte(unit)) {
        constexpr char digits[] = "0123456789abcdef";
        const char hex[] = {'\\', '\'', digits[byte >> 4], digits[byte & 15]};
        m_rtf.append(hex, sizeof hex);
        m_afterWord = false;
    } else if (unit >= 0x20) {
        unicode(unit);
    }
}

void RtfOutput::unicode(char16_t unit)
{
    char word[16] = {'\\', 'u'};
    // RTF counts it as signed.
    char *end = std::to_chars(word + 2, word + sizeof word, static_cast<short>(unit)).ptr;
    const char fallback = fallbackFor(unit);
    if (joinsWord(fallback))
        *end++ = ' ';
    *end++ = fallback;
    m_rtf.append(word, static_cast<int>(end - word));
    m_afterWord = false;
}
