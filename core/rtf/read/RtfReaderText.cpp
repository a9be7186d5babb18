// SPDX-License-Identifier: MIT
// The part of the reader that turns bytes and \u words into text.
#include <core/rtf/read/RtfReader.h>

#include <algorithm>

namespace {

bool isBlank(std::string_view ascii)
{
    return std::all_of(ascii.begin(), ascii.end(), [](char byte) { return byte == ' '; });
}

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

bool RtfReader::skipFallback()
{
    if (m_fallback == 0)
        return false;
    --m_fallback;
    return true;
}

void RtfReader::addText(const RtfToken &token)
{
    std::string_view bytes = token.text;
    if (inPicture()) { // megabytes of hexadecimal digits
        m_picture.addHex(bytes);
        return;
    }
    const auto skipped = std::min<std::size_t>(bytes.size(), m_fallback);
    bytes.remove_prefix(skipped);
    m_fallback -= static_cast<int>(skipped);

    if (m_leadByte && !bytes.empty()) {
        addByte(static_cast<unsigned char>(bytes.front()));
        bytes.remove_prefix(1);
    }
    if (bytes.empty())
        return;
    if (token.ascii && !RtfCodePages::isSigns(codePage())) {
        flushBytes();
        put(bytes);
        return;
    }
    for (const char byte : bytes)
        addByte(static_cast<unsigned char>(byte));
    if (m_leadByte)
        takeRawTrailByte();
}

// Files of eight bits have characters whose second byte is a backslash or brace.
void RtfReader::takeRawTrailByte()
{
    const char trail = m_tokens.peek();
    if (trail != '\\' && trail != '{' && trail != '}')
        return;
    QString character;
    m_codePages.decode(m_bytesCodePage, m_bytes.right(1) + trail, &character);
    if (character.size() == 1 && character.at(0) != QChar::ReplacementCharacter) {
        m_tokens.skipByte();
        addByte(static_cast<unsigned char>(trail));
    }
}

void RtfReader::addByte(unsigned char byte)
{
    if (byte < 0x20) { // a raw tab is one; no other control character stands for text
        flushBytes();
        if (byte == '\t')
            appendCharacter('\t');
        else if (m_group.destination == &RtfDestinations::levelText) // counts and places
            m_collected += QChar(ushort(byte));
        return;
    }
    if (m_bytes.isEmpty()) {
        m_bytesCodePage = codePage();
        // In most code pages a byte is a character, and waits for no other.
        if (const QChar *characters = m_codePages.singleBytes(m_bytesCodePage)) {
            putUnit(characters[byte].unicode());
            return;
        }
    }
    m_bytes.append(static_cast<char>(byte));
    m_leadByte = !m_leadByte && RtfCodePages::isLeadByte(m_bytesCodePage, byte);
}

void RtfReader::flushBytes()
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
    put(QStringView(text));
}

int RtfReader::codePage()
{
    if (m_group.destination == &RtfDestinations::fontTable)
        return lookUpCodePage();
    if (m_group.codePage < 0)
        m_group.codePage = lookUpCodePage();
    return m_group.codePage;
}

int RtfReader::lookUpCodePage() const
{
    int page = 0;
    if (m_group.destination == &RtfDestinations::fontTable) {
        page = m_fontTable.codePage();
    } else {
        const auto font = m_tables.fonts.constFind(m_group.chars.font);
        page = font != m_tables.fonts.constEnd() ? font->codePage : 0;
    }
    return page > 0 ? page : m_codePage;
}

void RtfReader::put(std::string_view ascii)
{
    if (m_highSurrogate != 0)
        putLoneSurrogate();
    if (!inBody()) {
        if (m_group.destination->text)
            m_group.destination->text(
                *this, QString::fromLatin1(ascii.data(), static_cast<int>(ascii.size())));
        return;
    }
    if (!isVisible())
        return;
    if (m_inHeader && isBlank(ascii)) // a header holds no text: someone indented the file
        return;
    m_inHeader = false;
    if (!m_bookmarks.isEmpty()) {
        m_builder->append(ascii.substr(0, 1), anchorFormat());
        ascii.remove_prefix(1);
    }
    m_builder->append(ascii, charFormat());
}

void RtfReader::put(QStringView text)
{
    for (const QChar unit : text)
        putUnit(unit.unicode());
}

void RtfReader::putUnit(char16_t unit)
{
    if (QChar::isHighSurrogate(unit)) {
        putLoneSurrogate();
        m_highSurrogate = unit;
        return;
    }
    QChar units[2];
    int count = 0;
    if (QChar::isLowSurrogate(unit) && m_highSurrogate != 0) {
        units[count++] = QChar(m_highSurrogate);
        m_highSurrogate = 0;
    } else {
        putLoneSurrogate();
        unit = QChar::isLowSurrogate(unit) ? char16_t(QChar::ReplacementCharacter)
                                           : documentCharacter(unit);
        if (unit == 0)
            return;
    }
    units[count++] = QChar(unit);

    if (!inBody()) {
        if (m_group.destination->text)
            m_group.destination->text(*this, QString(units, count));
        return;
    }
    if (!isVisible())
        return;
    m_inHeader = false;
    m_builder->append(QStringView(units, count),
                      m_bookmarks.isEmpty() ? charFormat() : anchorFormat());
}

void RtfReader::putLoneSurrogate()
{
    if (m_highSurrogate == 0)
        return;
    m_highSurrogate = 0;
    putUnit(QChar::ReplacementCharacter);
}

void RtfReader::appendCharacter(char16_t character)
{
    flushBytes();
    putUnit(character);
}

void RtfReader::appendUnicode(int value)
{
    flushBytes();
    if (value < 0)
        value += 0x10000; // \u takes a signed number of 16 bits
    if (value > 0xf020 && value < 0xf100 && inBody() && RtfCodePages::isSigns(codePage()))
        value = m_codePages.singleBytes(codePage())[value - 0xf000].unicode();
    if (value == QChar::ParagraphSeparator) {
        endParagraph();
    } else if (value >= 0x10000 && value <= 0x10ffff) { // not RTF, but some programs write it
        putUnit(QChar::highSurrogate(value));
        putUnit(QChar::lowSurrogate(value));
    } else {
        putUnit(value >= 0 && value < 0x10000 ? static_cast<char16_t>(value)
                                              : char16_t(QChar::ReplacementCharacter));
    }
    m_fallback = m_group.unicodeSkip;
    putCodedRun();
}

// Most \u and \'xx stand among others: these take no way through the tokens.
void RtfReader::putCodedRun()
{
    if (m_inHeader || !isVisible() || m_highSurrogate != 0 || !m_bookmarks.isEmpty()
        || !m_bytes.isEmpty() || codePage() == RtfCodePages::Symbol
        || RtfCodePages::isSigns(codePage()))
        return;
    RtfTokenizer::CodedRun run;
    run.characters = m_codePages.singleBytes(codePage());
    run.fallbackLength = m_group.unicodeSkip;
    run.fallback = m_fallback;
    constexpr int size = 256;
    char16_t units[size];
    int count = 0;
    do {
        count = m_tokens.readCodedRun(&run, units, size);
        if (count > 0)
            m_builder->append(QStringView(units, count), charFormat());
    } while (count == size);
    m_fallback = run.fallback;
}
