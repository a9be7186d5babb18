// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfActions.h>

#include <core/rtf/read/RtfReader.h>

namespace {

// In a style "off" has to be told from "not said", for the styles that are based on others.
int forGroup(const RtfReader &reader, int value)
{
    return value == 0 && reader.inStyleSheet() ? RtfStyles::switchedOff : value;
}

} // namespace

namespace RtfActions {

void setCharProp(RtfReader &reader, const RtfWord &word, bool, int parameter)
{
    reader.group().chars.*word.charProp = forGroup(reader, parameter);
    reader.charsChanged();
}

// "\b" and "\b1" switch on, "\b0" off; likewise every kind of underline.
void setCharConstant(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter)
{
    reader.group().chars.*word.charProp
        = forGroup(reader, hasParameter && parameter == 0 ? 0 : word.value);
    reader.charsChanged();
}

void setFontSize(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.group().chars.size = qBound(0, parameter, rtfLargestFont);
    reader.charsChanged();
}

void setCharLength(RtfReader &reader, const RtfWord &word, bool, int parameter)
{
    reader.group().chars.*word.charProp = qBound(-rtfFarthestTwips, parameter, rtfFarthestTwips);
    reader.charsChanged();
}

// Number 0 is the automatic colour; where the table gives it one, only text that says so has it.
void setTextColor(RtfReader &reader, const RtfWord &word, bool, int parameter)
{
    RtfResources &tables = reader.tables();
    const QColor first = tables.colors.value(0);
    if (parameter == 0 && first.isValid() && first != QColor(Qt::black))
        parameter = tables.colorNumber(first);
    setCharProp(reader, word, true, parameter);
}

void setQuarterPoints(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter)
{
    constexpr int most = rtfFarthestTwips / 5;
    setCharLength(reader, word, hasParameter, qBound(-most, parameter, most) * 5);
}

// \up and \dn shift by half-points; Qt knows the two positions only.
void setRise(RtfReader &reader, const RtfWord &word, bool, int parameter)
{
    reader.group().chars.vertical = forGroup(reader, parameter == 0 ? 0 : word.value);
    reader.charsChanged();
}

void setFont(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    if (reader.group().destination == &RtfDestinations::fontTable) {
        reader.fontTable().begin(parameter);
        return;
    }
    reader.setFont(parameter);
}

void setParaProp(RtfReader &reader, const RtfWord &word, bool, int parameter)
{
    reader.group().para.*word.paraProp
        = forGroup(reader, qBound(-rtfFarthestTwips, parameter, rtfFarthestTwips));
}

void setParaConstant(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter)
{
    reader.group().para.*word.paraProp
        = forGroup(reader, hasParameter && parameter == 0 ? 0 : word.value);
}

// Level 0 is the first one, also in a style.
void setOutline(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    constexpr int bodyText = 9;
    reader.group().para.outline = qBound(0, parameter, bodyText);
}

void setTabType(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.setTabType(QTextOption::TabType(word.value));
}

void addTab(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.addTab(qBound(-rtfFarthestTwips, parameter, rtfFarthestTwips));
}

void setStyle(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    if (reader.inStyleSheet())
        reader.styles().begin(parameter);
    else
        reader.applyParagraphStyle(parameter);
}

void setCharStyle(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    if (reader.inStyleSheet())
        reader.styles().begin(parameter);
    else
        reader.applyCharStyle(parameter);
}

void setStyleBase(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.styles().setBase(parameter);
}

void resetChars(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.resetChars();
}

void resetPara(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.resetPara();
}

void appendCharacter(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.appendCharacter(static_cast<char16_t>(word.value));
}

void appendUnicode(RtfReader &reader, const RtfWord &, bool hasParameter, int parameter)
{
    if (hasParameter)
        reader.appendUnicode(parameter);
}

void setUnicodeSkip(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.group().unicodeSkip = qMax(0, parameter);
}

void endParagraph(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.endParagraph();
}

void breakPage(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.breakPage();
}

void breakColumn(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.breakColumn();
}

void setColumns(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.setColumns(parameter);
}

void endSection(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.endSection();
}

void endCell(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.endCell();
}

void endRow(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.endRow();
}

void endNestedRow(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.endNestedRow();
}

void beginRow(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.beginRow();
}

void setRowLeft(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.row().left = qBound(-rtfFarthestTwips, parameter, rtfFarthestTwips);
}

void setRowHeader(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.row().header = true;
}

void addCellFormat(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.addCellFormat(parameter);
}

void setCellFlag(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.nextCell().*word.cellFlag = true;
}

void setCellBackground(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.nextCell().background = parameter;
}

void setCellExact(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.nextCell().extra = parameter;
}

void setTableExact(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.row().extra = parameter;
}

void setListExact(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.lists().setExact(parameter);
}

void beginFrame(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.beginFrame(parameter);
}

void endFrame(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.endFrame();
}

void beginList(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.lists().beginList();
    reader.openWithin(&RtfDestinations::listTable,
                      static_cast<const RtfDestination *>(word.destination));
}

void beginListLevel(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.lists().beginLevel();
    reader.openWithin(&RtfDestinations::list,
                      static_cast<const RtfDestination *>(word.destination));
}

void openLevelText(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.openWithin(&RtfDestinations::listLevel,
                      static_cast<const RtfDestination *>(word.destination));
}

void setNumberFormat(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.lists().setNumberFormat(parameter);
}

void setListId(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.lists().setId(parameter);
}

void setList(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    if (reader.group().destination == &RtfDestinations::listTable)
        reader.lists().setOverride(parameter);
    else
        reader.group().para.list = qBound(0, parameter, RtfLists::firstOldList - 1);
}

void beginPicture(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.beginPicture();
}

void setPictureKind(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.picture().kind = RtfPicture::Kind(word.value);
}

void setPictureNumber(RtfReader &reader, const RtfWord &word, bool, int parameter)
{
    reader.picture().*word.pictureNumber = qBound(0, parameter, rtfFarthestTwips);
}

// The group's content counts, the destination itself only says which programs read it.
void readOn(RtfReader &, const RtfWord &, bool, int) { }

void setOldList(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.setOldList(QTextListFormat::Style(word.value));
}

void setSectionContinuous(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.setSectionContinuous(word.value != 0);
    if (word.value == 0)
        reader.setColumns(1);
}

void setCodePage(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.setCodePage(parameter);
}

void setFixedCodePage(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.setCodePage(word.value);
}

void setDefaultFont(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.setDefaultFont(parameter);
}

void setFromMac(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.setFromMac();
}

void setCharset(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.setCharset(parameter);
}

void setFontCodePage(RtfReader &reader, const RtfWord &, bool, int parameter)
{
    reader.fontTable().setCodePage(parameter);
}

void setColorComponent(RtfReader &reader, const RtfWord &word, bool, int parameter)
{
    reader.colorTable().setComponent(word.value, parameter);
}

void openDestination(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.openDestination(static_cast<const RtfDestination *>(word.destination));
}

void openColorTable(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.openDestination(static_cast<const RtfDestination *>(word.destination));
    if (reader.group().destination == word.destination)
        reader.colorTable().begin();
}

void openStyleSheet(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.openDestination(static_cast<const RtfDestination *>(word.destination));
    if (reader.inStyleSheet())
        reader.beginStyle();
}

void openBoth(RtfReader &reader, const RtfWord &, bool, int)
{
    RtfGroup &group = reader.group();
    const RtfDestination *outer = group.destination;
    reader.openDestination(&RtfDestinations::ignored);
    if (group.destination == &RtfDestinations::ignored && outer != &RtfDestinations::ignored)
        group.uprOuter = outer;
}

void openUnicodeAlternative(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.openUnicodeAlternative();
}

void skipDestination(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.skipDestination();
}

void beginField(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.beginField();
}

void beginFieldResult(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.beginFieldResult();
}

void takeDefaults(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.takeDefaults();
}

void beginNote(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.beginNote(MVRTextRtfNote::Footnote);
}

void beginComment(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.beginNote(MVRTextRtfNote::Comment);
}

void openNoteWord(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.openNoteWord(&RtfDestinations::body,
                        static_cast<const RtfDestination *>(word.destination));
}

void openWithinNote(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.openNoteWord(&RtfDestinations::note,
                        static_cast<const RtfDestination *>(word.destination));
}

void setNoteNumber(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.setNoteNumber();
}

void setEndNote(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.setEndNote();
}

void setNoteTime(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter)
{
    if (hasParameter)
        reader.setNoteTime(word.value, parameter);
}

void openWithinInfo(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.openWithin(&RtfDestinations::info,
                      static_cast<const RtfDestination *>(word.destination));
}

void openWithinShape(RtfReader &reader, const RtfWord &word, bool, int)
{
    reader.openWithin(&RtfDestinations::shape,
                      static_cast<const RtfDestination *>(word.destination));
}

void openBookmark(RtfReader &reader, const RtfWord &word, bool, int)
{
    if (reader.isVisible())
        reader.openDestination(static_cast<const RtfDestination *>(word.destination));
    else
        reader.skipDestination();
}

void beginShape(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.beginShape();
}

void beginTextBox(RtfReader &reader, const RtfWord &, bool, int)
{
    reader.beginTextBox();
}

} // namespace RtfActions
