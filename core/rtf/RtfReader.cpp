#include <core/rtf/RtfReader.h>

#include <core/rtf/RtfExact.h>
#include <core/rtf/RtfFields.h>
#include <core/rtf/RtfWords.h>

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

RtfReader::RtfReader(const QByteArray &rtf, QTextDocument *document)
    : m_tokens(rtf)
    , m_document(document)
    , m_formats(m_tables)
    , m_builder(document, m_formats, m_tables, m_lists)
    , m_fontTable(&m_tables)
    , m_colorTable(&m_tables)
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
        if (!skipFallback())
            addByte(static_cast<unsigned char>(token.parameter));
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
    while (!inBody() && m_outer.size() > 1) {
        m_group = m_outer.back();
        m_outer.pop_back();
    }
    putLoneSurrogate();
    // The last \par ends the last paragraph, and no empty one follows it.
    if (m_builder.hasText() || !m_builder.hasContent())
        insertParagraph();
    m_builder.finish();
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

void RtfReader::resetChars()
{
    const int link = m_group.chars.link; // comes from the field around, not from a word
    const int deleted = m_group.chars.deleted;
    m_group.chars = m_plain;
    m_group.chars.link = link;
    m_group.chars.deleted = deleted;
    m_group.codePage = -1;
    m_inHeader = false;
    charsChanged();
}

void RtfReader::setFont(int number)
{
    m_group.chars.font = number;
    m_group.codePage = -1;
    charsChanged();
}

void RtfReader::resetPara()
{
    m_group.para = {};
    m_inHeader = false;
}

void RtfReader::addTab(int twips)
{
    constexpr int mostTabs = 64;
    QList<QTextOption::Tab> stops = m_tables.tabs.value(qMax(0, m_group.para.tabs));
    if (stops.size() < mostTabs)
        stops.append(
            QTextOption::Tab(twips / 20.0, m_tabType,
                             m_tabType == QTextOption::DelimiterTab ? QLatin1Char('.') : QChar()));
    m_group.para.tabs = m_tables.tabsNumber(stops);
    m_tabType = QTextOption::LeftTab;
}

void RtfReader::applyParagraphStyle(int number)
{
    const int font = m_group.chars.font;
    if (font == m_plain.font) // the default font is not a choice against the style's
        m_group.chars.font = -1;
    m_styles.applyToParagraph(number, &m_group.chars, &m_group.para);
    if (m_group.chars.font < 0)
        m_group.chars.font = font;
    m_group.codePage = -1;
    charsChanged();
}

void RtfReader::applyCharStyle(int number)
{
    m_styles.applyToChars(number, &m_group.chars);
    m_group.codePage = -1;
    charsChanged();
}

void RtfReader::beginStyle()
{
    m_group.chars = {};
    m_group.para = {};
    charsChanged();
}

void RtfReader::finishStyle()
{
    m_styles.finish(m_group.chars, m_group.para);
    beginStyle();
}

void RtfReader::endParagraph()
{
    if (!isVisible())
        return;
    putLoneSurrogate();
    insertParagraph();
}

RtfParagraphEnd RtfReader::paragraphEnd()
{
    constexpr int deepestTable = 8;
    RtfParaProps para = m_group.para;
    if (m_pageBreak || (m_sectionBreak && !m_continuousSection))
        para.pageBreakBefore = 1;
    m_pageBreak = m_sectionBreak = false;
    m_inHeader = false;
    if (para.list != 0
        && m_lists.format(para.list, para.listLevel).style() == QTextListFormat::ListStyleUndefined)
        para.list = 0;

    RtfParagraphEnd end;
    end.list = para.list;
    end.listLevel = para.listLevel;
    end.tableLevel = qBound(0, para.tableLevel > 0 ? para.tableLevel : para.inTable, deepestTable);
    // Where a paragraph stands makes no other format of it.
    para.inTable = para.tableLevel = para.listLevel = 0;
    para.list = para.list != 0 ? 1 : 0;
    end.blockFormat = m_formats.blockFormatNumber(para);
    end.markFormat = charFormat();
    return end;
}

void RtfReader::insertParagraph()
{
    m_builder.endParagraph(paragraphEnd());
}

void RtfReader::breakPage()
{
    if (!isVisible())
        return;
    if (m_builder.hasText())
        endParagraph();
    m_pageBreak = true;
}

void RtfReader::endSection()
{
    if (!inBody())
        return;
    if (m_builder.hasText())
        endParagraph();
    m_sectionBreak = true;
}

void RtfReader::endCell()
{
    if (!inBody())
        return;
    putLoneSurrogate();
    m_builder.endCell(paragraphEnd());
}

void RtfReader::endRow()
{
    if (inBody())
        m_builder.endRow(1, m_row);
}

// Stands in \nesttableprops, or in the text when that destination is left out.
void RtfReader::endNestedRow()
{
    const int level = qBound(2, m_group.para.tableLevel, 8);
    if (inBody() || m_group.destination == &RtfDestinations::nestedRow)
        m_builder.endRow(level, m_nestedRow);
}

RtfRowFormat &RtfReader::row()
{
    return m_group.destination == &RtfDestinations::nestedRow ? m_nestedRow : m_row;
}

void RtfReader::beginRow()
{
    row() = {};
    m_nextCell = {};
}

void RtfReader::addCellFormat(int right)
{
    constexpr int mostCells = 10000;
    m_nextCell.right = qBound(-rtfFarthestTwips, right, rtfFarthestTwips);
    if (row().cells.size() < mostCells)
        row().cells.append(m_nextCell);
    m_nextCell = {};
}

void RtfReader::setOldList(QTextListFormat::Style style)
{
    // The words stand in a group of their own and are meant for the paragraph around it.
    if (m_group.destination == &RtfDestinations::oldList && m_uncounted == 0 && !m_outer.empty()) {
        m_outer.back().para.list
            = style == QTextListFormat::ListStyleUndefined ? 0 : RtfLists::oldList(style);
        m_outer.back().para.listLevel = 0;
    }
}

void RtfReader::finishLevelText()
{
    if (m_collected.endsWith(QLatin1Char(';')))
        m_collected.chop(1);
    m_lists.setLevelText(m_collected);
    m_collected.clear();
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

void RtfReader::setCodePage(int codePage)
{
    m_codePage = codePage > 0 ? codePage : int(RtfCodePages::Western);
    m_fromMac = m_fromMac || RtfCodePages::isMac(m_codePage);
    m_group.codePage = -1;
}

void RtfReader::setFromMac()
{
    m_fromMac = true;
    m_fontTable.setFaces();
}

void RtfReader::beginPicture()
{
    if (!isVisible()) {
        skipDestination();
        return;
    }
    openDestination(&RtfDestinations::picture);
    m_picture = {};
}

void RtfReader::finishPicture()
{
    if (m_outer.empty() || m_picture.isEmpty())
        return;
    const QTextImageFormat format = m_picture.store(m_document, m_formats.charFormat(charFormat()));
    const QChar object(QChar::ObjectReplacementCharacter);
    m_inHeader = false;
    m_builder.append(QStringView(&object, 1), m_formats.addCharFormat(format));
    m_picture = {};
}

void RtfReader::setCharset(int charset)
{
    // Charset 0 is Windows' 1252 whatever the file's code page is, but programs of the Macintosh
    // mean the file's.
    const int page = charset == 0 && m_fromMac ? 0 : RtfCodePages::fromCharset(charset);
    m_fontTable.setCodePage(page);
}

void RtfReader::setDefaultFont(int number)
{
    m_plain.font = number;
    setFont(number);
}

void RtfReader::takeDefaults()
{
    if (inBody() && m_uncounted == 0 && m_outer.size() > 1) {
        RtfGroup &outer = m_outer.back();
        m_defaultFormat = RtfFormats::toCharFormat(outer.chars, m_tables);
        m_plain = outer.chars = {};
        outer.charFormat = outer.codePage = -1;
    }
    skipDestination();
}

void RtfReader::beginField()
{
    m_fields.push_back({{}, m_group.field, 0});
    m_group.field = static_cast<int>(m_fields.size()) - 1;
}

void RtfReader::beginFieldResult()
{
    if (m_group.field < 0)
        return;
    const Field &field = m_fields[m_group.field];
    if (m_group.destination == &RtfDestinations::fieldInstruction)
        m_group.field = field.parent; // the result is part of the instruction around it
    else if (field.link > 0)
        m_group.chars.link = field.link;
    charsChanged();
}

void RtfReader::addFieldInstruction(const QString &text)
{
    constexpr int longestInstruction = 64 * 1024;
    if (m_group.field < 0)
        return;
    QString &instruction = m_fields[m_group.field].instruction;
    if (instruction.size() < longestInstruction)
        instruction += text;
}

void RtfReader::finishFieldInstruction()
{
    if (m_group.field < 0)
        return;
    Field &field = m_fields[m_group.field];
    const QString target = RtfFields::linkTarget(field.instruction);
    if (!target.isEmpty())
        field.link = m_tables.linkNumber(target);
    field.instruction.clear();
}

void RtfReader::finishExactProperties()
{
    if (m_tables.exact.isEmpty())
        m_tables.exact.append(RtfExactProperties()); // sets are counted from 1
    m_tables.exact += RtfExact::fromText(m_collected.toLatin1());
    m_collected.clear();
    m_formats.tablesChanged();
}
