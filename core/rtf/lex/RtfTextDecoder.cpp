// SPDX-License-Identifier: MIT
#include <core/rtf/lex/RtfTextDecoder.h>

#include <algorithm>

namespace {

// What a document may hold in place of \a unit: the model keeps some characters for itself (two
// mark frames, line ends would cut the block), and other controls stand for nothing (0).
char16_t documentCharacter(char16_t unit)
{
    switch (unit) {
    case '\n':
    case '\v':
    case '\r':
    case QChar::ParagraphSeparator:
        return QChar::LineSeparator;
    case '\t':
        return unit;
    case 0xfdd0:
    case 0xfdd1:
    case 0xfffe:
    case 0xffff:
        return QChar::ReplacementCharacter;
    default:
        return unit < 0x20 ? 0 : unit;
    }
}

} // namespace

bool RtfTextDecoder::skipFallback()
{
    if (m_fallback == 0)
        return false;
    --m_fallback;
    return true;
}

void RtfTextDecoder::addText(const RtfToken &token, int codePage)
{
    std::string_view bytes = token.text;
    const auto skipped = std::min<std::size_t>(bytes.size(), m_fallback);
    bytes.remove_prefix(skipped);
    m_fallback -= static_cast<int>(skipped);

    if (m_leadByte && !bytes.empty()) {
        addByte(static_cast<unsigned char>(bytes.front()), codePage);
        bytes.remove_prefix(1);
    }
    if (bytes.empty())
        return;
    if (token.ascii && !RtfCodePages::isSymbols(codePage)) {
        flush();
        endText();
        m_sink.addAscii(bytes);
        return;
    }
    for (const char byte : bytes)
        addByte(static_cast<unsigned char>(byte), codePage);
    if (m_leadByte)
        takeRawTrailByte();
}

// Files of eight bits have characters whose second byte is a backslash or brace.
void RtfTextDecoder::takeRawTrailByte()
{
    const char trail = m_tokens.peek();
    if (trail != '\\' && trail != '{' && trail != '}')
        return;
    QString character;
    m_codePages.decode(m_bytesCodePage, m_bytes.right(1) + trail, &character);
    if (character.size() == 1 && character.at(0) != QChar::ReplacementCharacter) {
        m_tokens.skipByte();
        addByte(static_cast<unsigned char>(trail), m_bytesCodePage);
    }
}

void RtfTextDecoder::addByte(unsigned char byte, int codePage)
{
    if (byte < 0x20) { // a raw tab is one; no other control character stands for text
        flush();
        if (byte == '\t')
            addCharacter('\t');
        else
            m_sink.addControl(byte);
        return;
    }
    if (m_bytes.isEmpty()) {
        m_bytesCodePage = codePage;
        // In most code pages a byte is a character, and waits for no other.
        if (const QChar *characters = m_codePages.singleBytes(m_bytesCodePage)) {
            addUnit(characters[byte].unicode());
            return;
        }
    }
    m_bytes.append(static_cast<char>(byte));
    m_leadByte = !m_leadByte && RtfCodePages::isLeadByte(m_bytesCodePage, byte);
}

void RtfTextDecoder::flush()
{
    if (m_bytes.isEmpty())
        return;
    QString text;
    if (m_leadByte)
        m_bytes.chop(1);
    m_codePages.decode(m_bytesCodePage, m_bytes, &text);
    if (m_leadByte)
        text += QChar::ReplacementCharacter;
    m_bytes.resize(0);
    m_leadByte = false;
    addCharacters(QStringView(text));
}

void RtfTextDecoder::addCharacters(QStringView text)
{
    for (const QChar unit : text)
        addUnit(unit.unicode());
}

void RtfTextDecoder::addUnit(char16_t unit)
{
    if (QChar::isHighSurrogate(unit)) {
        endText();
        m_highSurrogate = unit;
        return;
    }
    QChar units[2];
    int count = 0;
    if (QChar::isLowSurrogate(unit) && m_highSurrogate != 0) {
        units[count++] = QChar(m_highSurrogate);
        m_highSurrogate = 0;
    } else {
        endText();
        unit = QChar::isLowSurrogate(unit) ? char16_t(QChar::ReplacementCharacter)
                                           : documentCharacter(unit);
        if (unit == 0)
            return;
    }
    units[count++] = QChar(unit);
    m_sink.addCharacters(QStringView(units, count));
}

void RtfTextDecoder::endText()
{
    if (m_highSurrogate == 0)
        return;
    m_highSurrogate = 0;
    addUnit(QChar::ReplacementCharacter);
}

void RtfTextDecoder::addCharacter(char16_t character)
{
    flush();
    addUnit(character);
}

int RtfTextDecoder::shownValue(int value, int codePage)
{
    if (value > 0xf020 && value < 0xf100 && RtfCodePages::isSymbols(codePage))
        return m_codePages.singleBytes(codePage)[value - 0xf000].unicode();
    return value;
}

void RtfTextDecoder::addUnicode(int value)
{
    flush();
    if (value >= 0x10000 && value <= 0x10ffff) { // not RTF, but some programs write it
        addUnit(QChar::highSurrogate(value));
        addUnit(QChar::lowSurrogate(value));
    } else {
        addUnit(value >= 0 && value < 0x10000 ? static_cast<char16_t>(value)
                                              : char16_t(QChar::ReplacementCharacter));
    }
}

// Most \u and \'xx stand among others: these take no way through the tokens.
void RtfTextDecoder::readCodedRun(int codePage, int fallbackLength)
{
    if (m_highSurrogate != 0 || !m_bytes.isEmpty() || codePage == RtfCodePages::Symbol
        || RtfCodePages::isSymbols(codePage))
        return;
    RtfTokenizer::CodedRun run;
    run.characters = m_codePages.singleBytes(codePage);
    run.fallbackLength = fallbackLength;
    run.fallback = m_fallback;
    constexpr int size = 256;
    char16_t units[size];
    int count = 0;
    do {
        count = m_tokens.readCodedRun(&run, units, size);
        if (count > 0)
            m_sink.addCharacters(QStringView(units, count));
    } while (count == size);
    m_fallback = run.fallback;
}
