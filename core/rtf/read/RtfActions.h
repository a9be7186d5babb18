// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/read/RtfWords.h>

/*!
    What the reader does with a control word, one function for each row of the table in
    RtfWords.cpp or for each kind of rows. All take the parameter, or the row's value when the file
    gives none.
*/
namespace RtfActions {

void setCharProp(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setCharConstant(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setFontSize(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setCharLength(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setRise(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setTextColor(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setQuarterPoints(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setFont(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setParaProp(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setParaConstant(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setOutline(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setTabType(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void addTab(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setStyle(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setCharStyle(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setStyleBase(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void resetChars(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void resetPara(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void appendCharacter(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void appendUnicode(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setUnicodeSkip(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void endParagraph(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void breakPage(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void breakColumn(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setColumns(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void endSection(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void endCell(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void endRow(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void endNestedRow(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginRow(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setRowLeft(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setRowHeader(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void addCellFormat(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setCellFlag(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setCellExact(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setTableExact(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setListExact(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginFrame(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void endFrame(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setCellBackground(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginList(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginListLevel(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openLevelText(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setNumberFormat(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setListId(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setList(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginPicture(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setPictureKind(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setPictureNumber(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void readOn(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setOldList(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setSectionContinuous(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setCodePage(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setFixedCodePage(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setDefaultFont(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setFromMac(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setCharset(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setFontCodePage(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setColorComponent(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openDestination(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openColorTable(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openStyleSheet(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openBoth(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openUnicodeAlternative(RtfReader &reader, const RtfWord &word, bool hasParameter,
                            int parameter);
void skipDestination(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginField(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginFieldResult(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void takeDefaults(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginNote(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginComment(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openNoteWord(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openWithinNote(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setNoteNumber(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setEndNote(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void setNoteTime(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openWithinInfo(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openWithinShape(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void openBookmark(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginShape(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);
void beginTextBox(RtfReader &reader, const RtfWord &word, bool hasParameter, int parameter);

}
