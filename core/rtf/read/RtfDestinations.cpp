// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfDestinations.h>

#include <core/rtf/read/RtfReader.h>

namespace {

void collect(RtfReader &reader, const QString &text)
{
    reader.addCollected(text);
}

} // namespace

namespace RtfDestinations {

const RtfDestination body {nullptr, nullptr, true};

const RtfDestination ignored {};

const RtfDestination fontTable {
    [](RtfReader &reader, const QString &text) { reader.fontTable().addText(text); },
    [](RtfReader &reader) { reader.fontTable().finish(); }};

const RtfDestination colorTable {
    [](RtfReader &reader, const QString &text) { reader.colorTable().addText(text); }, nullptr};

const RtfDestination styleSheet {[](RtfReader &reader, const QString &text) {
                                     reader.addCollected(text);
                                     // Each definition ends with the semicolon behind its name.
                                     if (text.endsWith(QLatin1Char(';')))
                                         reader.finishStyle();
                                 },
                                 [](RtfReader &reader) { reader.dropCollected(); }};

const RtfDestination fieldInstruction {
    [](RtfReader &reader, const QString &text) { reader.addFieldInstruction(text); },
    [](RtfReader &reader) { reader.finishFieldInstruction(); }};

const RtfDestination listTable {};

const RtfDestination list {nullptr, [](RtfReader &reader) { reader.lists().finishList(); }};

const RtfDestination listLevel {};

const RtfDestination levelText {collect, [](RtfReader &reader) { reader.finishLevelText(); }};

const RtfDestination oldList {};

const RtfDestination nestedRow {};

const RtfDestination picture {nullptr, [](RtfReader &reader) { reader.finishPicture(); }};

const RtfDestination exactProperties {collect,
                                      [](RtfReader &reader) { reader.finishExactProperties(); }};

const RtfDestination note {nullptr, [](RtfReader &reader) { reader.finishNote(); }, true};

const RtfDestination info {};

const RtfDestination infoTitle {collect, [](RtfReader &reader) { reader.setTitle(); }};

const RtfDestination infoAuthor {collect, [](RtfReader &reader) { reader.setAuthor(); }};

const RtfDestination infoTime {};

const RtfDestination bookmark {collect, [](RtfReader &reader) { reader.addBookmark(); }};

const RtfDestination shape {};

const RtfDestination shapeProperty {collect, [](RtfReader &reader) { reader.setShapeProperty(); }};

const RtfDestination shapeValue {collect, [](RtfReader &reader) { reader.addShapeText(); }};

const RtfDestination textBox {nullptr, [](RtfReader &reader) { reader.finishTextBox(); }, true};

const RtfDestination noteAuthor {collect, [](RtfReader &reader) { reader.setNoteAuthor(); }};

const RtfDestination noteInitials {collect, [](RtfReader &reader) { reader.setNoteInitials(); }};

const RtfDestination noteRangeStart {collect, [](RtfReader &reader) { reader.addRangeEdge(true); }};

const RtfDestination noteRangeEnd {collect, [](RtfReader &reader) { reader.addRangeEdge(false); }};

const RtfDestination noteReference {collect, [](RtfReader &reader) { reader.setNoteReference(); }};

const RtfDestination noteDate {collect, [](RtfReader &reader) { reader.setNoteDate(); }};

const RtfDestination noteTime {};

const RtfDestination noteData {collect, [](RtfReader &reader) { reader.setNoteData(); }};

} // namespace RtfDestinations
