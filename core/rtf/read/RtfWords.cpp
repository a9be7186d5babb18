// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfWords.h>

#include <core/rtf/read/RtfActions.h>
#include <core/rtf/read/RtfDestinations.h>

#include <QByteArray>
#include <QFont>

#include <array>

namespace {

using namespace RtfActions;

// The kinds of rows.

enum Spelling { Reads, Writes };

constexpr RtfWord charNumber(std::string_view name, int RtfCharProps::*prop, Spelling spelling,
                             int byDefault = 0, RtfWord::Apply apply = setCharProp)
{
    return {name, RtfWord::Formatting, apply, byDefault, prop, nullptr, false, spelling == Writes};
}

constexpr RtfWord charConstant(std::string_view name, int RtfCharProps::*prop, int value,
                               Spelling spelling, RtfWord::Apply apply = setCharConstant)
{
    return {name, RtfWord::Formatting, apply, value, prop, nullptr, true, spelling == Writes};
}

constexpr RtfWord paraNumber(std::string_view name, int RtfParaProps::*prop, Spelling spelling,
                             RtfWord::Apply apply = setParaProp)
{
    return {name, RtfWord::Formatting, apply, 0, nullptr, prop, false, spelling == Writes};
}

constexpr RtfWord paraConstant(std::string_view name, int RtfParaProps::*prop, int value,
                               Spelling spelling)
{
    return {name, RtfWord::Formatting, setParaConstant, value, nullptr, prop,
            true, spelling == Writes};
}

constexpr RtfWord formatting(std::string_view name, RtfWord::Apply apply, int value = 0)
{
    return {name, RtfWord::Formatting, apply, value};
}

constexpr RtfWord character(std::string_view name, char16_t unit)
{
    return {name, RtfWord::Character, appendCharacter, unit};
}

constexpr RtfWord cellFlag(std::string_view name, bool RtfCellFormat::*flag)
{
    RtfWord word {name, RtfWord::Formatting, setCellFlag};
    word.cellFlag = flag;
    return word;
}

constexpr RtfWord pictureNumber(std::string_view name, int RtfPicture::*number)
{
    RtfWord word {name, RtfWord::Formatting, setPictureNumber};
    word.pictureNumber = number;
    return word;
}

constexpr RtfWord structure(std::string_view name, RtfWord::Apply apply, int value = 0)
{
    return {name, RtfWord::Structure, apply, value};
}

constexpr RtfWord header(std::string_view name, RtfWord::Apply apply, int value = 0)
{
    return {name, RtfWord::Header, apply, value};
}

constexpr RtfWord destination(std::string_view name, RtfWord::Apply apply,
                              const RtfDestination *to = nullptr)
{
    return {name, RtfWord::Destination, apply, 0, nullptr, nullptr, false, false, to};
}

constexpr RtfWord skipped(std::string_view name)
{
    return {name, RtfWord::Destination, skipDestination};
}

using C = RtfCharProps;
using P = RtfParaProps;
using F = QTextCharFormat;

constexpr RtfWord words[] = {
    // The file (RTF 1.9.1, "Header")
    header("ansi", setFixedCodePage, 1252),
    header("ansicpg", setCodePage),
    header("cocoartf", setFromMac),
    header("deff", setDefaultFont),
    header("mac", setFixedCodePage, 10000),
    header("pc", setFixedCodePage, 437),
    header("pca", setFixedCodePage, 850),
    header("fcharset", setCharset),
    header("cpg", setFontCodePage),
    header("red", setColorComponent, 0),
    header("green", setColorComponent, 1),
    header("blue", setColorComponent, 2),

    // Characters ("Font (Character) Formatting Properties")
    formatting("plain", resetChars),
    charNumber("f", &C::font, Writes, 0, setFont),
    charNumber("fs", &C::size, Writes, 24, setFontSize),
    charConstant("b", &C::bold, 1, Writes),
    charConstant("i", &C::italic, 1, Writes),
    charConstant("strike", &C::strike, 1, Writes),
    charConstant("striked", &C::strike, 1, Reads),
    charConstant("super", &C::vertical, F::AlignSuperScript, Writes),
    charConstant("sub", &C::vertical, F::AlignSubScript, Writes),
    charConstant("nosupersub", &C::vertical, F::AlignNormal, Reads),
    charConstant("up", &C::vertical, F::AlignSuperScript, Reads, setRise),
    charConstant("dn", &C::vertical, F::AlignSubScript, Reads, setRise),
    charConstant("caps", &C::capitalization, QFont::AllUppercase, Writes),
    charConstant("scaps", &C::capitalization, QFont::SmallCaps, Writes),
    charConstant("v", &C::hidden, 1, Reads),
    charConstant("deleted", &C::deleted, 1, Reads),
    charNumber("cf", &C::foreground, Writes, 0, setTextColor),
    charNumber("cb", &C::background, Writes),
    charNumber("chcbpat", &C::background, Writes),
    charNumber("highlight", &C::highlight, Reads),
    charNumber("expnd", &C::spacing, Reads, 0, setQuarterPoints),
    charNumber("expndtw", &C::spacing, Writes, 0, setCharLength),
    charConstant("ul", &C::underline, F::SingleUnderline, Writes),
    charConstant("ulnone", &C::underline, F::NoUnderline, Reads),
    charConstant("uld", &C::underline, F::DotLine, Writes),
    charConstant("uldash", &C::underline, F::DashUnderline, Writes),
    charConstant("uldashd", &C::underline, F::DashDotLine, Writes),
    charConstant("uldashdd", &C::underline, F::DashDotDotLine, Writes),
    charConstant("uldb", &C::underline, F::SingleUnderline, Reads),
    charConstant("ulhair", &C::underline, F::SingleUnderline, Reads),
    charConstant("ulhwave", &C::underline, F::WaveUnderline, Reads),
    charConstant("ulldash", &C::underline, F::DashUnderline, Reads),
    charConstant("ulth", &C::underline, F::SingleUnderline, Reads),
    charConstant("ulthd", &C::underline, F::DotLine, Reads),
    charConstant("ulthdash", &C::underline, F::DashUnderline, Reads),
    charConstant("ulthdashd", &C::underline, F::DashDotLine, Reads),
    charConstant("ulthdashdd", &C::underline, F::DashDotDotLine, Reads),
    charConstant("ulthldash", &C::underline, F::DashUnderline, Reads),
    charConstant("ululdbwave", &C::underline, F::WaveUnderline, Reads),
    charConstant("ulw", &C::underline, F::SingleUnderline, Reads),
    charConstant("ulwave", &C::underline, F::WaveUnderline, Writes),
    charNumber("ulc", &C::underlineColor, Writes),
    charNumber("mvrx", &C::extra, Writes),

    // Styles ("Style Sheet")
    formatting("s", setStyle),
    formatting("cs", setCharStyle),
    formatting("sbasedon", setStyleBase),

    // Paragraphs ("Paragraph Formatting Properties")
    formatting("pard", resetPara),
    paraConstant("ql", &P::alignment, 0, Reads),
    paraConstant("qc", &P::alignment, Qt::AlignHCenter, Writes),
    paraConstant("qr", &P::alignment, Qt::AlignRight, Writes),
    paraConstant("qj", &P::alignment, Qt::AlignJustify, Writes),
    paraConstant("qd", &P::alignment, Qt::AlignJustify, Reads),
    paraNumber("li", &P::leftIndent, Writes),
    paraNumber("lin", &P::leftIndent, Reads),
    paraNumber("ri", &P::rightIndent, Writes),
    paraNumber("rin", &P::rightIndent, Reads),
    paraNumber("fi", &P::firstIndent, Writes),
    paraNumber("sb", &P::spaceBefore, Writes),
    paraNumber("sa", &P::spaceAfter, Writes),
    paraNumber("sl", &P::lineSpacing, Writes),
    paraNumber("slmult", &P::lineMultiple, Writes),
    paraConstant("pagebb", &P::pageBreakBefore, 1, Writes),
    paraConstant("keep", &P::keepTogether, 1, Writes),
    paraConstant("rtlpar", &P::rightToLeft, 1, Writes),
    paraConstant("ltrpar", &P::rightToLeft, 0, Reads),
    paraNumber("cbpat", &P::shading, Writes),
    paraNumber("outlinelevel", &P::outline, Writes, setOutline),
    paraNumber("mvrp", &P::extra, Writes),
    formatting("tqc", setTabType, QTextOption::CenterTab),
    formatting("tqdec", setTabType, QTextOption::DelimiterTab),
    formatting("tqr", setTabType, QTextOption::RightTab),
    formatting("tx", addTab),

    // Lists ("List Tables", "Bullets and Numbering")
    paraNumber("ilvl", &P::listLevel, Writes),
    paraNumber("ls", &P::list, Writes, setList),
    header("listid", setListId),
    header("mvrl", setListExact),
    header("levelnfc", setNumberFormat),
    header("levelnfcn", setNumberFormat),
    formatting("pnlvlblt", setOldList, QTextListFormat::ListDisc),
    formatting("pnlvlbody", setOldList, QTextListFormat::ListDecimal),
    formatting("pndec", setOldList, QTextListFormat::ListDecimal),
    formatting("pnlcltr", setOldList, QTextListFormat::ListLowerAlpha),
    formatting("pnlcrm", setOldList, QTextListFormat::ListLowerRoman),
    formatting("pnlvlcont", setOldList, QTextListFormat::ListStyleUndefined),
    formatting("pnucltr", setOldList, QTextListFormat::ListUpperAlpha),
    formatting("pnucrm", setOldList, QTextListFormat::ListUpperRoman),

    // Tables ("Table Definitions")
    paraConstant("intbl", &P::inTable, 1, Writes),
    paraNumber("itap", &P::tableLevel, Writes),
    formatting("trowd", beginRow),
    formatting("trleft", setRowLeft),
    formatting("trhdr", setRowHeader),
    formatting("cellx", addCellFormat),
    formatting("mvrc", setCellExact),
    formatting("mvrt", setTableExact),
    formatting("clcbpat", setCellBackground),
    cellFlag("clmrg", &RtfCellFormat::joinsLeft),
    cellFlag("clvmrg", &RtfCellFormat::joinsAbove),
    cellFlag("clbrdrb", &RtfCellFormat::border),
    cellFlag("clbrdrl", &RtfCellFormat::border),
    cellFlag("clbrdrr", &RtfCellFormat::border),
    cellFlag("clbrdrt", &RtfCellFormat::border),

    // Pictures ("Pictures"); kinds that are not named here are metafiles
    destination("pict", beginPicture),
    destination("shppict", readOn),
    formatting("pngblip", setPictureKind, RtfPicture::Png),
    formatting("jpegblip", setPictureKind, RtfPicture::Jpeg),
    formatting("dibitmap", setPictureKind, RtfPicture::Dib),
    pictureNumber("picw", &RtfPicture::width),
    pictureNumber("pich", &RtfPicture::height),
    pictureNumber("picwgoal", &RtfPicture::goalWidth),
    pictureNumber("pichgoal", &RtfPicture::goalHeight),
    pictureNumber("picscalex", &RtfPicture::scaleX),
    pictureNumber("picscaley", &RtfPicture::scaleY),

    // Text ("Special Characters")
    structure("par", endParagraph),
    structure("page", breakPage),
    structure("column", breakColumn),
    structure("sect", endSection),
    structure("cell", endCell),
    structure("nestcell", endCell),
    structure("row", endRow),
    structure("nestrow", endNestedRow),
    structure("line", appendCharacter, QChar::LineSeparator),
    structure("lbr", appendCharacter, QChar::LineSeparator),
    structure("tab", appendCharacter, '\t'),
    structure("u", appendUnicode),
    formatting("uc", setUnicodeSkip, 1),
    formatting("sectd", setSectionContinuous, 0),
    formatting("sbknone", setSectionContinuous, 1),
    formatting("cols", setColumns),
    character("emdash", 0x2014),
    character("endash", 0x2013),
    character("emspace", 0x2003),
    character("enspace", 0x2002),
    character("qmspace", 0x2005),
    character("bullet", 0x2022),
    character("lquote", 0x2018),
    character("rquote", 0x2019),
    character("ldblquote", 0x201c),
    character("rdblquote", 0x201d),
    character("zwj", 0x200d),
    character("zwnj", 0x200c),
    character("zwbo", 0x200b),
    character("zwnbo", 0x2060),
    character("ltrmark", 0x200e),
    character("rtlmark", 0x200f),

    // Notes ("Footnotes", "Comments (Annotations)")
    destination("footnote", beginNote, &RtfDestinations::note),
    destination("annotation", beginComment, &RtfDestinations::note),
    destination("atnauthor", openNoteWord, &RtfDestinations::noteAuthor),
    destination("atnid", openNoteWord, &RtfDestinations::noteInitials),
    destination("atrfstart", openNoteWord, &RtfDestinations::noteRangeStart),
    destination("atrfend", openNoteWord, &RtfDestinations::noteRangeEnd),
    destination("atnref", openWithinNote, &RtfDestinations::noteReference),
    destination("atndate", openWithinNote, &RtfDestinations::noteDate),
    destination("atntime", openWithinNote, &RtfDestinations::noteTime),
    destination("mvrnote", openWithinNote, &RtfDestinations::noteData),
    formatting("chftn", setNoteNumber),
    formatting("ftnalt", setEndNote),
    header("yr", setNoteTime, 0),
    header("mo", setNoteTime, 1),
    header("dy", setNoteTime, 2),
    header("hr", setNoteTime, 3),
    header("min", setNoteTime, 4),

    // Destinations
    destination("fonttbl", openDestination, &RtfDestinations::fontTable),
    destination("colortbl", openColorTable, &RtfDestinations::colorTable),
    destination("stylesheet", openStyleSheet, &RtfDestinations::styleSheet),
    destination("listtable", openDestination, &RtfDestinations::listTable),
    destination("listoverridetable", openDestination, &RtfDestinations::listTable),
    destination("list", beginList, &RtfDestinations::list),
    destination("listlevel", beginListLevel, &RtfDestinations::listLevel),
    destination("leveltext", openLevelText, &RtfDestinations::levelText),
    destination("pn", openDestination, &RtfDestinations::oldList),
    destination("nesttableprops", openDestination, &RtfDestinations::nestedRow),
    destination("field", beginField),
    destination("fldinst", openDestination, &RtfDestinations::fieldInstruction),
    destination("fldrslt", beginFieldResult),
    destination("info", openDestination, &RtfDestinations::info),
    destination("title", openWithinInfo, &RtfDestinations::infoTitle),
    destination("author", openWithinInfo, &RtfDestinations::infoAuthor),
    destination("creatim", openWithinInfo, &RtfDestinations::infoTime),
    destination("bkmkstart", openBookmark, &RtfDestinations::bookmark),
    destination("shp", beginShape),
    destination("shpinst", openWithinShape, &RtfDestinations::shape),
    destination("shptxt", beginTextBox),
    destination("sn", openWithinShape, &RtfDestinations::shapeProperty),
    destination("sv", openWithinShape, &RtfDestinations::shapeValue),
    destination("do", beginShape),
    destination("dptxbxtext", beginTextBox),
    destination("upr", openBoth),
    destination("ud", openUnicodeAlternative),
    destination("mvrprops", openDestination, &RtfDestinations::exactProperties),
    destination("mvrdefaults", takeDefaults),
    destination("mvrframe", beginFrame),
    destination("mvrframeend", endFrame),

    // Destinations whose text is not the document's. All that begin with \* are passed over
    // without being named here.
    skipped("bkmkend"),
    skipped("comment"),
    skipped("datafield"),
    skipped("falt"),
    skipped("filetbl"),
    skipped("fontemb"),
    skipped("footer"),
    skipped("footerf"),
    skipped("footerl"),
    skipped("footerr"),
    skipped("ftncn"),
    skipped("ftnsep"),
    skipped("ftnsepc"),
    skipped("aftncn"),
    skipped("aftnsep"),
    skipped("aftnsepc"),
    skipped("generator"),
    skipped("header"),
    skipped("headerf"),
    skipped("headerl"),
    skipped("headerr"),
    skipped("listname"),
    skipped("listtext"),
    skipped("levelnumbers"),
    skipped("nonesttables"),
    skipped("nonshppict"),
    skipped("objclass"),
    skipped("objdata"),
    skipped("objname"),
    skipped("panose"),
    skipped("pntext"),
    skipped("private"),
    skipped("rsidtbl"),
    skipped("revtbl"),
    skipped("rxe"),
    skipped("shprslt"),
    skipped("tc"),
    skipped("tcn"),
    skipped("template"),
    skipped("themedata"),
    skipped("txe"),
    skipped("xe"),
};

// Names are found through a table of twice their number, filled by the compiler.

constexpr std::size_t wordCount = sizeof words / sizeof *words;
constexpr std::size_t slotCount = 1024;
static_assert(wordCount * 2 <= slotCount, "a fuller table makes unknown words slow");

constexpr std::size_t slotOf(std::string_view name)
{
    unsigned hash = 0;
    for (const char letter : name)
        hash = hash * 31 + static_cast<unsigned char>(letter);
    return (hash ^ (hash >> 11)) % slotCount;
}

constexpr std::array<short, slotCount> fillSlots()
{
    std::array<short, slotCount> slots {};
    for (short &slot : slots)
        slot = -1;
    for (std::size_t i = 0; i < wordCount; ++i) {
        std::size_t at = slotOf(words[i].name);
        while (slots[at] >= 0)
            at = (at + 1) % slotCount;
        slots[at] = static_cast<short>(i);
    }
    return slots;
}

constexpr std::array<short, slotCount> wordSlots = fillSlots();

void appendNumber(std::string_view name, int number, QByteArray *rtf)
{
    *rtf += '\\';
    rtf->append(name.data(), static_cast<int>(name.size()));
    *rtf += QByteArray::number(number);
}

void appendName(std::string_view name, QByteArray *rtf)
{
    *rtf += '\\';
    rtf->append(name.data(), static_cast<int>(name.size()));
}

template <typename Props>
void appendWords(const Props &from, const Props &to, int Props::*RtfWord::*prop, QByteArray *rtf)
{
    for (const RtfWord &word : words) {
        if (!word.written || !(word.*prop) || from.*(word.*prop) == to.*(word.*prop))
            continue;
        if (!word.constant)
            appendNumber(word.name, to.*(word.*prop), rtf);
        else if (to.*(word.*prop) == word.value)
            appendName(word.name, rtf);
    }
}

} // namespace

const RtfWord *findRtfWord(std::string_view name)
{
    for (std::size_t at = slotOf(name); wordSlots[at] >= 0; at = (at + 1) % slotCount) {
        const RtfWord &word = words[wordSlots[at]];
        if (word.name == name)
            return &word;
    }
    return nullptr;
}

void appendRtfWords(const RtfCharProps &from, const RtfCharProps &to, QByteArray *rtf)
{
    appendWords(from, to, &RtfWord::charProp, rtf);
}

void appendRtfWords(const RtfParaProps &from, const RtfParaProps &to, QByteArray *rtf)
{
    appendWords(from, to, &RtfWord::paraProp, rtf);
}
