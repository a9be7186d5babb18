// SPDX-License-Identifier: MIT
// The part of the reader that control words call: header, formatting, fields, lists, tables,
// pictures.
#include <core/rtf/read/RtfReader.h>

#include <core/rtf/model/RtfExact.h>
#include <core/rtf/read/RtfFields.h>

void RtfReader::setFont(int number)
{
    m_group.chars.font = number;
    m_group.codePage = -1;
    charsChanged();
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

void RtfReader::resetPara()
{
    m_group.para = {};
    m_inHeader = false;
}

void RtfReader::addTab(int twips)
{
    constexpr int mostTabs = 64;
    const QTextOption::TabType type = std::exchange(m_tabType, QTextOption::LeftTab);
    const int known = qMax(0, m_group.para.tabs);
    if (m_tables.tabs.value(known).size() >= mostTabs)
        return;
    QList<QTextOption::Tab> stops = m_tables.tabs.value(known);
    stops.append(QTextOption::Tab(twips / 20.0, type,
                                  type == QTextOption::DelimiterTab ? QLatin1Char('.') : QChar()));
    if (const int number = m_tables.tabsNumber(stops, RtfResources::mostLookAlikes))
        m_group.para.tabs = number;
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
    const QString name = takeCollected().trimmed().toLower();
    RtfParaProps &para = m_group.para;
    if (para.outline < 0 && name.startsWith(QLatin1String("heading "))) // not always said
        para.outline = name.midRef(8).chopped(1).toInt() - 1;
    m_styles.finish(m_group.chars, m_group.para);
    beginStyle();
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
    m_fields.push_back({{}, m_group.field, 0, {}});
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
    if (m_group.destination->isBody && !field.shown.isEmpty()) {
        put(QStringView(field.shown));
        m_group.destination = &RtfDestinations::ignored;
    }
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
    field.shown = RtfFields::shownText(field.instruction);
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
    m_builder->append(QStringView(&object, 1), m_formats.addCharFormat(format));
    m_picture = {};
}

void RtfReader::endCell()
{
    if (!inBody())
        return;
    putLoneSurrogate();
    m_builder->endCell(paragraphEnd());
}

void RtfReader::endRow()
{
    if (inBody())
        m_builder->endRow(1, m_row);
}

// Stands in \nesttableprops, or in the text when that destination is left out.
void RtfReader::endNestedRow()
{
    const int level = qBound(2, m_group.para.tableLevel, 8);
    if (inBody() || m_group.destination == &RtfDestinations::nestedRow)
        m_builder->endRow(level, m_nestedRow);
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
