// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfReader.h>

#include <core/rtf/read/RtfWords.h>

#include <cstring>

namespace {

// Word stops at a few hundred levels; what lies deeper is read, but without settings of its own.
constexpr std::size_t deepestGroup = 2000;

const char *skipSpace(const char *at, const char *end)
{
    while (at != end && std::strchr(" \t\r\n\f\v", *at) && *at != 0)
        ++at;
    return at;
}

} // namespace

RtfReader::RtfReader(const QByteArray &rtf, QTextDocument *document, MVRTextRtfNotes *notes)
    : m_tokens(rtf)
    , m_document(document)
    , m_formats(m_tables)
    , m_body(document, m_formats, m_tables, m_lists)
    , m_fontTable(&m_tables)
    , m_colorTable(&m_tables)
    , m_notes(notes)
{
    m_outer.reserve(8); // deep enough for most files
}

bool RtfReader::isRtf(const QByteArray &rtf)
{
    const char *end = rtf.constData() + rtf.size();
    const char *at = skipSpace(rtf.constData(), end);
    if (at == end || *at != '{')
        return false;
    // Files that were indented by hand have white space here too.
    at = skipSpace(at + 1, end);
    return end - at >= 4 && std::memcmp(at, "\\rtf", 4) == 0;
}

void RtfReader::read()
{
    while (handle(m_tokens.next())) { }
    finish();
}

bool RtfReader::handle(const RtfToken &token)
{
    const bool isText = token.kind == RtfToken::Text || token.kind == RtfToken::Hex;
    if (!isText && !m_leadByte && !m_bytes.isEmpty())
        flushBytes();

    switch (token.kind) {
    case RtfToken::End:
        return false;
    case RtfToken::GroupStart:
        pushGroup();
        break;
    case RtfToken::GroupEnd:
        return popGroup();
    case RtfToken::Word:
        handleWord(token);
        return true; // keeps \* for the word behind it
    case RtfToken::Symbol:
        handleSymbol(token.text.front());
        return true;
    case RtfToken::Hex:
        if (!skipFallback()) {
            addByte(static_cast<unsigned char>(token.parameter));
            putCodedRun();
        }
        break;
    case RtfToken::Text:
        addText(token);
        break;
    case RtfToken::Binary:
        if (!skipFallback() && inPicture())
            m_picture.addBytes(token.text);
        break;
    }
    m_ignorable = false;
    return true;
}

void RtfReader::handleWord(const RtfToken &token)
{
    if (m_leadByte)
        flushBytes();
    const bool ignorable = m_ignorable;
    m_ignorable = false;
    const RtfWord *word = findRtfWord(token.text);
    // "\*\cs" begins a character style: the one place where a star stands before other words.
    const bool starred = ignorable && !inStyleSheet();
    if (!word || (starred && word->kind != RtfWord::Destination)) {
        if (ignorable)
            skipDestination();
        return;
    }
    if (word->kind == RtfWord::Character && skipFallback())
        return;
    if (word->kind == RtfWord::Structure)
        m_fallback = 0;
    word->apply(*this, *word, token.hasParameter,
                token.hasParameter ? token.parameter : word->value);
}

void RtfReader::handleSymbol(char symbol)
{
    const bool literal = symbol == '\\' || symbol == '{' || symbol == '}';
    if (m_leadByte && !literal)
        flushBytes();
    m_ignorable = symbol == '*';
    switch (symbol) {
    case '\\':
    case '{':
    case '}':
        if (!skipFallback())
            addByte(static_cast<unsigned char>(symbol));
        break;
    case '~':
    case '-':
    case '_':
        if (!skipFallback())
            appendCharacter(symbol == '~' ? 0x00a0 : symbol == '-' ? 0x00ad : 0x2011);
        break;
    case '\t':
        if (!skipFallback())
            appendCharacter('\t');
        break;
    case '\r':
    case '\n':
        m_fallback = 0;
        endParagraph();
        break;
    default: // \*, \: and \| of index entries, and what nobody knows
        break;
    }
}

void RtfReader::pushGroup()
{
    m_fallback = 0;
    if (m_leadByte)
        flushBytes();
    if (m_outer.size() >= deepestGroup) {
        ++m_uncounted;
        return;
    }
    m_outer.push_back(m_group);
    m_group.opensDestination = false;
}

bool RtfReader::popGroup()
{
    m_fallback = 0;
    m_ignorable = false;
    if (m_leadByte)
        flushBytes();
    if (m_uncounted > 0) {
        --m_uncounted;
        return true;
    }
    if (m_outer.empty())
        return false;
    if (m_group.opensDestination && m_group.destination->close)
        m_group.destination->close(*this);
    // The document's own group keeps its settings: the last paragraph may still need them.
    if (m_outer.size() > 1)
        m_group = m_outer.back();
    m_outer.pop_back();
    return !m_outer.empty();
}

void RtfReader::finish()
{
    flushBytes();
    // A file that breaks off within a destination ends with the text around it.
    while ((!inBody() || openNote() || !m_boxes.empty()) && m_outer.size() > 1) {
        if (m_group.opensDestination && inBody())
            m_group.destination->close(*this);
        m_group = m_outer.back();
        m_outer.pop_back();
    }
    insertLastParagraph();
    if (m_notes)
        resolveNotes();
}

void RtfReader::insertLastParagraph()
{
    putLoneSurrogate();
    // The last \par ends the last paragraph, and no empty one follows it.
    if (m_builder->hasText() || !m_builder->hasContent())
        insertParagraph();
    m_builder->finish();
}

void RtfReader::openDestination(const RtfDestination *destination)
{
    // Inside text that is passed over nothing is of interest, and without a group of its own
    // the destination would swallow the text behind it.
    if (m_uncounted > 0 || m_group.destination == &RtfDestinations::ignored) {
        skipDestination();
        return;
    }
    if (m_outer.size() <= 1)
        return; // the document itself is no destination
    m_group.destination = destination;
    m_group.opensDestination = true;
}

void RtfReader::skipDestination()
{
    if (m_outer.size() <= 1 && m_uncounted == 0)
        return; // the document itself cannot be skipped
    m_tokens.skipGroup();
    m_group.opensDestination = false;
    popGroup();
}

void RtfReader::openUnicodeAlternative()
{
    if (m_uncounted > 0 || !m_group.uprOuter) {
        skipDestination();
        return;
    }
    m_group.destination = m_group.uprOuter;
    m_group.uprOuter = nullptr;
}

void RtfReader::endParagraph()
{
    if (!isVisible())
        return;
    putLoneSurrogate();
    insertParagraph();
}

int RtfReader::tableLevel() const
{
    static constexpr int deepestTable = 8;
    const auto levelOf = [](const RtfParaProps &props) {
        return qBound(0, props.tableLevel > 0 ? props.tableLevel : props.inTable, deepestTable);
    };
    const int level = levelOf(m_group.para);
    // A box does not end the table that it is anchored in.
    return m_boxes.empty() ? level : qMax(level, levelOf(m_boxes.back().para));
}

RtfParagraphEnd RtfReader::paragraphEnd()
{
    RtfParaProps para = m_group.para;
    if (m_pageBreak || (m_sectionBreak && !m_continuousSection))
        para.pageBreakBefore = 1;
    m_pageBreak = m_sectionBreak = false;
    m_inHeader = false;
    if (para.list != 0 && !m_lists.isShown(para.list, para.listLevel, m_tables))
        para.list = 0;

    RtfParagraphEnd end;
    end.list = para.list;
    end.listLevel = para.listLevel;
    end.tableLevel = tableLevel();
    // Where a paragraph stands makes no other format of it.
    para.inTable = para.tableLevel = para.listLevel = 0;
    para.list = para.list != 0 ? 1 : 0;
    end.blockFormat = m_formats.blockFormatNumber(para);
    end.markFormat = charFormat();
    return end;
}

void RtfReader::insertParagraph()
{
    m_builder->endParagraph(paragraphEnd());
}

void RtfReader::breakPage()
{
    if (!isVisible())
        return;
    if (m_builder->hasText())
        endParagraph();
    m_pageBreak = true;
}

void RtfReader::breakColumn()
{
    if (m_columns <= 1)
        breakPage();
    else if (m_builder->hasText()) // documents have one column only
        endParagraph();
}

void RtfReader::endSection()
{
    if (!inBody())
        return;
    if (m_builder->hasText())
        endParagraph();
    m_sectionBreak = true;
}

// Opens a destination that means something within another one only.
void RtfReader::openWithin(const RtfDestination *around, const RtfDestination *destination)
{
    if (m_group.destination == around)
        openDestination(destination);
    else
        skipDestination();
}

int RtfReader::charFormat()
{
    if (m_group.charFormat < 0)
        m_group.charFormat = m_formats.charFormatNumber(m_group.chars);
    return m_group.charFormat;
}
