// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfParser.h>

#include <core/rtf/read/RtfControlWords.h>

#include <cstring>

namespace {

const char *skipSpace(const char *at, const char *end)
{
    while (at != end && std::strchr(" \t\r\n\f\v", *at) && *at != 0)
        ++at;
    return at;
}

} // namespace

RtfParser::RtfParser(const QByteArray &rtf, QTextDocument *document, MVRTextRtfNotes *notes,
                     RtfContentWriter write)
    : m_tokens(rtf)
    , m_reader(&m_tokens, document, notes, std::move(write))
{
}

bool RtfParser::isRtf(const QByteArray &rtf)
{
    const char *end = rtf.constData() + rtf.size();
    const char *at = skipSpace(rtf.constData(), end);
    if (at == end || *at != '{')
        return false;
    // Files that were indented by hand have white space here too.
    at = skipSpace(at + 1, end);
    return end - at >= 4 && std::memcmp(at, "\\rtf", 4) == 0;
}

void RtfParser::read()
{
    while (handle(m_tokens.next())) { }
    m_reader.finish();
}

bool RtfParser::handle(const RtfToken &token)
{
    switch (token.kind) {
    case RtfToken::End:
        return false;
    case RtfToken::GroupStart:
        m_reader.text().setFallback(0);
        m_reader.text().flush();
        m_reader.groups().push();
        break;
    case RtfToken::GroupEnd:
        m_ignorable = false;
        return popGroup();
    case RtfToken::Word:
        handleWord(token);
        return true; // keeps \* for the word behind it
    case RtfToken::Symbol:
        handleSymbol(token.text.front());
        return true;
    case RtfToken::Hex:
        if (!m_reader.text().skipFallback())
            m_reader.addByte(token.parameter);
        break;
    case RtfToken::Text:
        handleText(token);
        break;
    case RtfToken::Binary:
        m_reader.text().flushWhole();
        if (!m_reader.text().skipFallback() && m_reader.group().isIn(RtfDestination::Picture))
            m_reader.picture().addBytes(token.text);
        break;
    }
    m_ignorable = false;
    return true;
}

void RtfParser::handleText(const RtfToken &token)
{
    if (m_reader.group().isIn(RtfDestination::Picture)) // megabytes of hexadecimal digits
        m_reader.picture().addHex(token.text);
    else if (m_reader.group().isIn(RtfDestination::LevelText) && !token.ascii)
        addLevelBytes(token.text);
    else
        m_reader.text().addText(token, m_reader.codePage());
}

void RtfParser::addLevelBytes(std::string_view bytes)
{
    for (const char byte : bytes) {
        if (!m_reader.text().skipFallback())
            m_reader.addByte(static_cast<unsigned char>(byte));
    }
}

void RtfParser::handleWord(const RtfToken &token)
{
    m_reader.text().flush();
    const bool ignorable = std::exchange(m_ignorable, false);
    const RtfControlWord *word = RtfControlWords::find(token.text);
    if (!word) { // with a star it would be a destination; before other words a star means nothing
        if (ignorable)
            m_reader.skipDestination();
        return;
    }
    if (word->kind == RtfControlWord::Character) {
        if (!m_reader.text().skipFallback())
            m_reader.text().addCharacter(static_cast<char16_t>(word->value));
        return;
    }
    if (word->kind == RtfControlWord::Structure)
        m_reader.text().setFallback(0);
    RtfControlWords::apply(&m_reader, *word, token);
}

void RtfParser::handleSymbol(char symbol)
{
    RtfTextDecoder &text = m_reader.text();
    const bool literal = symbol == '\\' || symbol == '{' || symbol == '}';
    if (literal)
        text.flushWhole();
    else
        text.flush();
    m_ignorable = symbol == '*';
    switch (symbol) {
    case '\\':
    case '{':
    case '}':
        if (!text.skipFallback())
            text.addByte(static_cast<unsigned char>(symbol), m_reader.codePage());
        break;
    case '~':
    case '-':
    case '_':
        if (!text.skipFallback())
            text.addCharacter(symbol == '~' ? 0x00a0 : symbol == '-' ? 0x00ad : 0x2011);
        break;
    case '\t':
        if (!text.skipFallback())
            text.addCharacter('\t');
        break;
    case '\r':
    case '\n':
        text.setFallback(0);
        m_reader.endParagraph();
        break;
    default: // \*, \: and \| of index entries, and what nobody knows
        break;
    }
}

bool RtfParser::popGroup()
{
    m_reader.text().setFallback(0);
    m_reader.text().flush();
    m_reader.closeDestination();
    return m_reader.groups().pop();
}
