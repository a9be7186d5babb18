#include <core/rtf/RtfDestinations.h>

#include <core/rtf/RtfReader.h>

namespace RtfDestinations {

const RtfDestination body {};

const RtfDestination ignored {};

const RtfDestination fontTable {
    [](RtfReader &reader, const QString &text) { reader.fontTable().addText(text); },
    [](RtfReader &reader) { reader.fontTable().finish(); }};

const RtfDestination colorTable {
    [](RtfReader &reader, const QString &text) { reader.colorTable().addText(text); }, nullptr};

const RtfDestination styleSheet {[](RtfReader &reader, const QString &text) {
                                     // Each definition ends with the semicolon behind its name.
                                     if (text.endsWith(QLatin1Char(';')))
                                         reader.finishStyle();
                                 },
                                 nullptr};

const RtfDestination fieldInstruction {
    [](RtfReader &reader, const QString &text) { reader.addFieldInstruction(text); },
    [](RtfReader &reader) { reader.finishFieldInstruction(); }};

const RtfDestination listTable {};

const RtfDestination list {nullptr, [](RtfReader &reader) { reader.lists().finishList(); }};

const RtfDestination listLevel {};

const RtfDestination levelText {
    [](RtfReader &reader, const QString &text) { reader.addCollected(text); },
    [](RtfReader &reader) { reader.finishLevelText(); }};

const RtfDestination oldList {};

const RtfDestination nestedRow {};

const RtfDestination picture {nullptr, [](RtfReader &reader) { reader.finishPicture(); }};

const RtfDestination exactProperties {
    [](RtfReader &reader, const QString &text) { reader.addCollected(text); },
    [](RtfReader &reader) { reader.finishExactProperties(); }};

} // namespace RtfDestinations
