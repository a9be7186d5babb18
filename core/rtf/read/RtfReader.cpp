// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfReader.h>

#include <algorithm>

namespace {

constexpr int maxTableDepth = 8;

// Bytes of a \leveltext wait as lone halves of surrogate pairs, which no text has.
constexpr char16_t waitingByte = 0xdc00;

// Letters, syllables and signs of Chinese, Japanese and Korean.
bool isEastAsian(char16_t unit)
{
    constexpr std::pair<char16_t, char16_t> ranges[]
        = {{0x1100, 0x11ff}, {0x2e80, 0xa4cf}, {0xa960, 0xa97f}, {0xac00, 0xd7ff},
           {0xd840, 0xd888}, {0xf900, 0xfaff}, {0xfe30, 0xfe4f}, {0xff00, 0xffef}};
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [unit](auto range) { return unit >= range.first && unit <= range.second; });
}

bool isBlank(std::string_view ascii)
{
    return std::all_of(ascii.begin(), ascii.end(), [](char byte) { return byte == ' '; });
}

} // namespace

RtfReader::RtfReader(RtfTokenizer *tokens, QTextDocument *document, MVRTextRtfNotes *notes,
                     RtfContentWriter write)
    : m_tokens(*tokens)
    , m_formats(m_resources)
    , m_body(document, m_formats, m_resources, m_lists)
    , m_story({document, &m_body, {}, false, false})
    , m_text(tokens, this)
    , m_header(&m_resources)
    , m_formatting(&m_resources)
    , m_fields(&m_resources)
    , m_notes(notes != nullptr, write)
    , m_pageTexts(std::move(write))
    , m_foundNotes(notes)
{
}

bool RtfReader::openDestination(const RtfDestination &destination)
{
    // Inside text that is passed over nothing is of interest, and without a group of its own
    // the destination would swallow the text behind it.
    if (m_groups.isTooDeep() || group().isIn(RtfDestination::Ignored)) {
        skipDestination();
        return false;
    }
    if (!m_groups.isNested())
        return false; // the document itself is no destination
    if (group().beginsText())
        return false;
    group().destination = &destination;
    group().opensDestination = true;
    return true;
}

void RtfReader::closeDestination()
{
    if (!m_groups.isTooDeep() && !m_groups.isEmpty() && group().opensDestination
        && group().destination->close)
        group().destination->close(*this);
}

void RtfReader::skipDestination()
{
    if (!m_groups.isNested() && !m_groups.isTooDeep())
        return; // the document itself cannot be skipped
    m_tokens.skipGroup();
    m_text.setFallback(0);
    m_text.flush();
    closeDestination(); // the word may stand in the middle of one
    m_groups.pop();
}

void RtfReader::openUnicodeAlternative()
{
    if (m_groups.isTooDeep() || !group().uprOuter) {
        skipDestination();
        return;
    }
    if (!group().beginsText())
        group().destination = std::exchange(group().uprOuter, nullptr);
}

void RtfReader::addByte(int byte)
{
    if (group().isIn(RtfDestination::LevelText) && byte >= 0x80) {
        m_text.flush();
        m_value += QChar(static_cast<char16_t>(waitingByte + byte));
        return;
    }
    m_text.addByte(static_cast<unsigned char>(byte), codePage());
    readCodedRun();
}

void RtfReader::addUnicode(int value)
{
    if (value < 0)
        value += 0x10000; // \u takes a signed number of 16 bits
    if (value == QChar::ParagraphSeparator) {
        m_text.flush();
        endParagraph();
    } else {
        m_text.addUnicode(group().isBody() ? m_text.shownValue(value, codePage()) : value);
    }
    m_text.setFallback(group().unicodeSkip);
    readCodedRun();
}

void RtfReader::readCodedRun()
{
    if (!m_inHeader && group().isVisible() && m_bookmarks.isEmpty())
        m_text.readCodedRun(codePage(), group().unicodeSkip);
}

void RtfReader::addAscii(std::string_view text)
{
    RtfGroup &current = group();
    if (!current.isBody()) {
        if (current.destination->text)
            current.destination->text(
                *this, QString::fromLatin1(text.data(), static_cast<int>(text.size())));
        return;
    }
    if (!current.isVisible()) {
        countLeftOut(text.size());
        return;
    }
    if (m_inHeader && isBlank(text)) // a header holds no text: someone indented the file
        return;
    m_inHeader = m_endsWithReturn = false;
    if (!m_bookmarks.isEmpty()) {
        builder().append(text.substr(0, 1), takeAnchorFormat());
        text.remove_prefix(1);
    }
    builder().append(text, charFormat());
}

void RtfReader::addCharacters(QStringView characters)
{
    if (!group().isBody()) {
        if (group().destination->text)
            group().destination->text(*this, characters.toString());
        return;
    }
    if (!group().isVisible()) {
        countLeftOut(static_cast<std::size_t>(characters.size()));
        return;
    }
    m_inHeader = m_endsWithReturn = false;
    if (!m_bookmarks.isEmpty())
        builder().append(characters, takeAnchorFormat());
    else if (group().eastAsian.isEmpty())
        builder().append(characters, charFormat());
    else
        addEastAsian(characters);
}

void RtfReader::addEastAsian(QStringView characters)
{
    for (int start = 0; start < characters.size();) {
        const bool isSpecial = isEastAsian(characters.at(start).unicode());
        int end = start;
        while (end < characters.size()
               && (characters.at(end).isLowSurrogate()
                   || isEastAsian(characters.at(end).unicode()) == isSpecial))
            ++end;
        builder().append(characters.mid(start, end - start),
                         isSpecial ? eastAsianFormat() : charFormat());
        start = end;
    }
}

void RtfReader::countLeftOut(std::size_t length)
{
    (group().chars.deleted ? m_leftOut.deletedCharacters : m_leftOut.hiddenCharacters)
        += static_cast<int>(length);
}

void RtfReader::addControl(unsigned char byte)
{
    if (group().isIn(RtfDestination::LevelText)) // counts and places
        m_value += QChar(ushort(byte));
    else if ((byte == '\r' || byte == '\n') && group().isVisible() && !m_inHeader)
        addLineEnd(byte);
}

// A carriage return or line feed as \'0d or \'0a ends a line; the two of a pair end one.
void RtfReader::addLineEnd(unsigned char byte)
{
    const bool endsPair = byte == '\n' && std::exchange(m_endsWithReturn, false);
    if (!endsPair)
        m_text.addCharacter(QChar::LineSeparator);
    m_endsWithReturn = byte == '\r';
}

void RtfReader::resetChars()
{
    m_formatting.resetChars(&group());
    m_inHeader = false;
}

void RtfReader::resetPara()
{
    group().para = {};
    m_inHeader = false;
}

void RtfReader::setOldList(QTextListFormat::Style style)
{
    // The words stand in a group of their own and are meant for the paragraph around it.
    if (!group().isIn(RtfDestination::OldList) || !m_groups.isNested())
        return;
    RtfParaProps &para = m_groups.outer().para;
    para.list = style == QTextListFormat::ListStyleUndefined ? 0 : RtfLists::oldList(style);
    para.listLevel = 0;
}

void RtfReader::keepLevelText()
{
    m_levelText = takeValue();
    if (m_levelText.endsWith(QLatin1Char(';')))
        m_levelText.chop(1);
}

// Letters of a code page may have an ASCII character for their second byte.
void RtfReader::finishListLevel()
{
    QString shown;
    QByteArray bytes;
    RtfCodePages codePages;
    const auto decode = [&] {
        codePages.decode(codePage(), bytes, &shown);
        bytes.clear();
    };
    const QString text = std::exchange(m_levelText, QString());
    for (const QChar unit : text) {
        const bool isByte
            = unit.unicode() >= waitingByte + 0x80 && unit.unicode() < waitingByte + 0x100;
        if (isByte || (unit.unicode() >= 0x20 && unit.unicode() < 0x7f)) {
            bytes += static_cast<char>(unit.unicode() & 0xff);
        } else {
            decode();
            shown += unit;
        }
    }
    decode();
    m_lists.setLevelText(shown);
}

void RtfReader::endParagraph()
{
    if (!group().isVisible())
        return;
    m_text.endText();
    insertParagraph();
}

int RtfReader::tableLevel() const
{
    const auto levelOf = [](const RtfParaProps &props) {
        return qBound(0, props.tableLevel > 0 ? props.tableLevel : props.inTable, maxTableDepth);
    };
    const int level = levelOf(group().para);
    // A box does not end the table that it is anchored in.
    return m_shapes.isInBox() ? qMax(level, levelOf(m_shapes.anchor())) : level;
}

RtfParagraphEnd RtfReader::takeParagraphEnd()
{
    RtfParaProps para = group().para;
    if (m_story.pageBreak || (m_story.sectionBreak && !m_isContinuous))
        para.pageBreakBefore = 1;
    m_story.pageBreak = m_story.sectionBreak = false;
    m_inHeader = false;
    if (para.list != 0 && !m_lists.isShown(para.list, para.listLevel, m_resources))
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
    builder().endParagraph(takeParagraphEnd());
}

void RtfReader::insertLastParagraph()
{
    m_text.endText();
    // The last \par ends the last paragraph, and no empty one follows it.
    if (builder().hasText() || !builder().hasContent())
        insertParagraph();
    builder().finish();
}

void RtfReader::breakPage()
{
    if (!group().isVisible())
        return;
    if (builder().hasText())
        endParagraph();
    m_story.pageBreak = true;
}

void RtfReader::breakColumn()
{
    if (m_columns <= 1)
        breakPage();
    else if (builder().hasText()) // documents have one column only
        endParagraph();
}

void RtfReader::endSection()
{
    if (!group().isBody())
        return;
    if (builder().hasText())
        endParagraph();
    m_story.sectionBreak = true;
}

void RtfReader::endCell()
{
    if (!group().isBody())
        return;
    m_text.endText();
    builder().endCell(takeParagraphEnd());
}

void RtfReader::endRow()
{
    if (group().isBody())
        builder().endRow(1, rows().outerRow());
}

// Stands in \nesttableprops, or in the text when that destination is left out.
void RtfReader::endNestedRow()
{
    const int level = qBound(2, group().para.tableLevel, maxTableDepth);
    if (group().isBody() || group().isIn(RtfDestination::NestedRow))
        builder().endRow(level, rows().nestedRow());
}

int RtfReader::charFormat()
{
    if (group().charFormat < 0)
        group().charFormat = m_formats.charFormatNumber(group().chars);
    return group().charFormat;
}

int RtfReader::eastAsianFormat()
{
    if (group().eastAsianFormat < 0) {
        RtfCharProps chars = group().chars;
        const RtfAssociated &said = group().eastAsian;
        const std::pair<int, int RtfCharProps::*> properties[]
            = {{said.font, &RtfCharProps::font},
               {said.size, &RtfCharProps::size},
               {said.bold, &RtfCharProps::bold},
               {said.italic, &RtfCharProps::italic}};
        for (const auto &property : properties) {
            if (property.first >= 0)
                chars.*property.second = property.first;
        }
        group().eastAsianFormat = m_formats.charFormatNumber(chars);
    }
    return group().eastAsianFormat;
}

// A file that breaks off within a destination ends with the text around it.
void RtfReader::finishDestinations()
{
    while (m_groups.isTooDeep())
        m_groups.pop();
    while ((!group().isBody() || m_notes.isInNote() || m_shapes.isInBox() || m_pageTexts.isOpen())
           && m_groups.isNested()) {
        if (group().isBody())
            closeDestination();
        m_groups.pop();
    }
}

void RtfReader::finish()
{
    m_text.flush();
    finishDestinations();
    insertLastParagraph();
    if (m_foundNotes)
        *m_foundNotes = m_notes.resolved(m_body);
}
