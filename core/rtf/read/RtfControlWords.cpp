// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfControlWords.h>

#include <core/rtf/read/RtfReader.h>

#include <array>

namespace {

using Call = RtfCall;
using Reader = RtfReader;
using Word = RtfControlWord;
using To = RtfDestination;

// The kinds of rows.

constexpr Word formatting(std::string_view name, Word::Apply apply, int value = 0)
{
    return {name, Word::Formatting, apply, value};
}

constexpr Word structure(std::string_view name, Word::Apply apply)
{
    return {name, Word::Structure, apply};
}

constexpr Word header(std::string_view name, Word::Apply apply)
{
    return {name, Word::Header, apply};
}

constexpr Word character(std::string_view name, char16_t unit)
{
    return {name, Word::Character, nullptr, unit};
}

constexpr Word destination(
    std::string_view name, RtfDestination opens,
    Word::Apply apply = [](Reader &r, const Call &c) { r.openDestination(c.word.opens); })
{
    return {name, Word::Destination, apply, 0, nullptr, opens};
}

constexpr Word destination(
    std::string_view name, RtfDestination opens, To::Kind within,
    Word::Apply apply = [](Reader &r, const Call &c) { r.openDestination(c.word.opens); })
{
    return {name, Word::Destination, apply, 0, nullptr, opens, within};
}

// The group's content counts, the destination itself only says which programs read it.
constexpr Word readOn(std::string_view name)
{
    return {name, Word::Destination, [](Reader &, const Call &) {}};
}

constexpr Word own(std::string_view name, Word::Apply apply)
{
    return {name, Word::Destination, apply};
}

// A style of borders: an edge has one by what follows it, and \brdrnone and its kin are not here.
constexpr Word border(std::string_view name)
{
    return formatting(name, [](Reader &r, const Call &) { r.rows().setBorder(); });
}

constexpr Word skipped(std::string_view name)
{
    return {name, Word::Destination, [](Reader &r, const Call &) { r.skipDestination(); }};
}

/*! A destination whose text is used as a whole. */
constexpr RtfDestination value(void (*close)(Reader &), To::Kind kind = To::Value)
{
    return {kind, [](Reader &r, const QString &text) { r.addToValue(text); }, close};
}

// What several rows do.

// In a style "off" has to be told from "not said", for the styles that are based on others.
int forGroup(const Reader &reader, int number)
{
    return number == 0 && reader.group().isIn(To::StyleSheet) ? RtfStyles::switchedOff : number;
}

int length(int twips)
{
    return qBound(-rtfMaxTwips, twips, rtfMaxTwips);
}

// "\b" and "\b1" switch on, "\b0" off; likewise every kind of underline.
void setProperty(Reader &reader, const Call &call)
{
    const RtfPropertyWord &word = *call.word.property;
    const bool isOff = word.isConstant && call.hasParameter && call.parameter == 0;
    const int number = isOff ? 0 : word.isConstant ? word.value : call.parameter;
    if (word.charProp) {
        reader.group().chars.*word.charProp = forGroup(reader, number);
        reader.group().charsChanged();
    } else {
        reader.group().para.*word.paraProp = forGroup(reader, length(number));
    }
}

void setSpacing(Reader &reader, int twips)
{
    reader.group().chars.spacing = length(twips);
    reader.group().charsChanged();
}

// \up and \dn shift by half-points; Qt knows the two positions only.
template <QTextCharFormat::VerticalAlignment alignment>
void setRise(Reader &reader, const Call &call)
{
    const bool isOff = call.hasParameter && call.parameter == 0;
    reader.group().chars.vertical = forGroup(reader, isOff ? 0 : alignment);
    reader.group().charsChanged();
}

// Number 0 is the automatic colour; where the table gives it one, only text that says so has it.
void setTextColor(Reader &reader, const Call &call)
{
    RtfResources &resources = reader.resources();
    const QColor first = resources.colors.value(0);
    const bool isOther = call.parameter == 0 && first.isValid() && first != QColor(Qt::black);
    reader.group().chars.foreground
        = forGroup(reader, isOther ? resources.colorNumber(first) : call.parameter);
    reader.group().charsChanged();
}

void setFont(Reader &reader, const Call &call)
{
    if (reader.group().isIn(To::FontTable))
        reader.header().fonts().begin(call.parameter);
    else
        reader.formatting().setFont(&reader.group(), call.parameter);
}

void setList(Reader &reader, const Call &call)
{
    if (reader.group().isIn(To::ListTable))
        reader.lists().setOverride(RtfLists::number(call.parameter));
    else
        reader.group().para.list = RtfLists::number(call.parameter);
}

template <QTextOption::TabType type> void setTabType(Reader &reader, const Call &)
{
    reader.formatting().setTabType(type);
}

template <QTextListFormat::Style style> void setOldList(Reader &reader, const Call &)
{
    reader.setOldList(style);
}

template <int codePage> void setCodePage(Reader &reader, const Call &)
{
    reader.header().setCodePage(&reader.group(), codePage);
}

template <int component> void setColor(Reader &reader, const Call &call)
{
    reader.header().colors().setComponent(component, call.parameter);
}

template <int part> void setTime(Reader &reader, const Call &call)
{
    if (call.hasParameter)
        reader.setTime(part, call.parameter);
}

template <char16_t unit> void addCharacter(Reader &reader, const Call &)
{
    reader.text().addCharacter(unit);
}

template <bool RtfCellFormat::*flag> void setCell(Reader &reader, const Call &)
{
    reader.rows().nextCell().*flag = true;
}

template <RtfCellFormat::Edge edge> void beginBorder(Reader &reader, const Call &)
{
    reader.rows().beginBorder(edge);
}

template <RtfPicture::Kind kind> void setPictureKind(Reader &reader, const Call &)
{
    reader.picture().kind = kind;
}

template <int RtfPicture::*number> void setPicture(Reader &reader, const Call &call)
{
    reader.picture().*number = qBound(0, call.parameter, rtfMaxTwips);
}

template <RtfShapeReader::Edge edge> void setEdge(Reader &reader, const Call &call)
{
    reader.shapes().setEdge(edge, length(call.parameter));
}

// Says something about a comment that follows, when comments are asked for.
void openBesideNote(Reader &reader, const Call &call)
{
    if (reader.notes().isWanted() && reader.group().isBody())
        reader.openDestination(call.word.opens);
    else
        reader.skipDestination();
}

void openIfVisible(Reader &reader, const Call &call)
{
    if (reader.group().isVisible())
        reader.openDestination(call.word.opens);
    else
        reader.skipDestination();
}

// Shapes stand in the text, and in the group that they are drawn as.
void openShape(Reader &reader, const Call &call)
{
    if (!reader.group().isVisible() && !reader.group().isIn(To::Shape))
        reader.skipDestination();
    else if (reader.openDestination(call.word.opens))
        reader.shapes().begin();
}

void beginPageText(Reader &reader, const Call &call)
{
    const std::string_view name = call.word.name;
    reader.beginPageText(QString::fromLatin1(name.data(), static_cast<int>(name.size())),
                         call.word.opens);
}

template <int RtfPage::*length> void setPage(Reader &reader, const Call &call)
{
    reader.header().setPage(length, call.parameter);
}

void openBoth(Reader &reader, const Call &call)
{
    const RtfDestination *outer = reader.group().destination;
    if (reader.openDestination(call.word.opens))
        reader.group().uprOuter = outer;
}

void addStyleText(Reader &reader, const QString &text)
{
    reader.addToValue(text);
    // Each definition ends with the semicolon behind its name.
    if (text.endsWith(QLatin1Char(';')))
        reader.formatting().finishStyle(&reader.group(), reader.takeValue());
}

template <int RtfAssociated::*property> void setAssociated(Reader &reader, const Call &call)
{
    constexpr bool isSize = property == &RtfAssociated::size;
    const bool isSwitch = call.word.value == 1;
    const int number = isSize ? qBound(0, call.parameter, rtfMaxFontSize)
        : isSwitch            ? int(call.parameter != 0)
                              : call.parameter;
    reader.group().setAssociated(property, number);
}

constexpr RtfDestination fontTable {
    To::FontTable, [](Reader &r, const QString &text) { r.header().fonts().addText(text); },
    [](Reader &r) { r.header().fonts().finish(); }};

constexpr RtfDestination colorTable {
    To::ColorTable, [](Reader &r, const QString &text) { r.header().colors().addText(text); }};

constexpr RtfDestination fieldInstruction {
    To::FieldInstruction,
    [](Reader &r, const QString &text) { r.fields().addInstruction(r.group(), text); },
    [](Reader &r) { r.fields().finishInstruction(r.group()); }};

constexpr RtfDestination fieldText {To::Body, nullptr, [](Reader &r) { r.finishField(); }};

constexpr RtfDestination pageText {To::PageText, nullptr, [](Reader &r) { r.finishPageText(); }};

constexpr RtfDestination note {To::Note, nullptr, [](Reader &r) { r.finishNote(); }};

constexpr RtfDestination textBox {To::TextBox, nullptr, [](Reader &r) { r.finishTextBox(); }};

// The table. In it r is the reader, c the word with its parameter.

constexpr Word rows[] = {
    // The file (RTF 1.9.1, "Header")
    header("ansi", setCodePage<1252>),
    header("ansicpg",
           [](Reader &r, const Call &c) { r.header().setCodePage(&r.group(), c.parameter); }),
    header("cocoartf", [](Reader &r, const Call &) { r.header().setFromMac(); }),
    header(
        "deff",
        [](Reader &r, const Call &c) { r.formatting().setDefaultFont(&r.group(), c.parameter); }),
    header("mac", setCodePage<10000>),
    header("pc", setCodePage<437>),
    header("pca", setCodePage<850>),
    header("fcharset", [](Reader &r, const Call &c) { r.header().setCharset(c.parameter); }),
    header("cpg", [](Reader &r, const Call &c) { r.header().fonts().setCodePage(c.parameter); }),
    header("red", setColor<0>),
    header("green", setColor<1>),
    header("blue", setColor<2>),
    header("paperw", setPage<&RtfPage::width>),
    header("paperh", setPage<&RtfPage::height>),
    header("margl", setPage<&RtfPage::left>),
    header("margr", setPage<&RtfPage::right>),
    header("margt", setPage<&RtfPage::top>),
    header("margb", setPage<&RtfPage::bottom>),
    destination("fonttbl", fontTable),
    destination("colortbl", colorTable,
                [](Reader &r, const Call &c) {
                    if (r.openDestination(c.word.opens))
                        r.header().colors().begin();
                }),
    destination("info", {To::Info}),
    destination("title", value([](Reader &r) { r.header().info().title = r.takeValue(); }),
                To::Info),
    destination("author", value([](Reader &r) { r.header().info().author = r.takeValue(); }),
                To::Info),
    destination("creatim", {To::InfoTime}, To::Info),
    own("mvrdefaults", [](Reader &r, const Call &) { r.takeDefaults(); }),
    destination("mvrprops", value([](Reader &r) { r.finishExactProperties(); })),

    // Characters ("Font (Character) Formatting Properties"), beside those of RtfPropertyWords.h
    formatting("plain", [](Reader &r, const Call &) { r.resetChars(); }),
    formatting("f", setFont),
    formatting(
        "fs",
        [](Reader &r, const Call &c) {
            r.group().chars.size = qBound(0, c.parameter, rtfMaxFontSize);
            r.group().charsChanged();
        },
        24),
    formatting("up", setRise<QTextCharFormat::AlignSuperScript>),
    formatting("dn", setRise<QTextCharFormat::AlignSubScript>),
    formatting("cf", setTextColor),
    formatting("expnd",
               [](Reader &r, const Call &c) {
                   constexpr int max = rtfMaxTwips / 5; // counts quarters of a point
                   setSpacing(r, qBound(-max, c.parameter, max) * 5);
               }),
    formatting("expndtw", [](Reader &r, const Call &c) { setSpacing(r, c.parameter); }),

    // Of East Asian letters where a run has others too ("Associated Character Properties")
    formatting("dbch", [](Reader &r, const Call &) { r.group().isAssociating = true; }),
    formatting("loch", [](Reader &r, const Call &) { r.group().isAssociating = false; }),
    formatting("hich", [](Reader &r, const Call &) { r.group().isAssociating = false; }),
    formatting("ltrch", [](Reader &r, const Call &) { r.group().isAssociating = false; }),
    formatting("rtlch", [](Reader &r, const Call &) { r.group().isAssociating = false; }),
    formatting("af", setAssociated<&RtfAssociated::font>),
    formatting("afs", setAssociated<&RtfAssociated::size>, 24),
    formatting("ab", setAssociated<&RtfAssociated::bold>, 1),
    formatting("ai", setAssociated<&RtfAssociated::italic>, 1),

    // Styles ("Style Sheet")
    destination("stylesheet", {To::StyleSheet, addStyleText, [](Reader &r) { r.takeValue(); }},
                [](Reader &r, const Call &c) {
                    if (r.openDestination(c.word.opens))
                        RtfFormatReader::beginStyle(&r.group());
                }),
    formatting("s",
               [](Reader &r, const Call &c) { r.formatting().setStyle(&r.group(), c.parameter); }),
    formatting(
        "cs",
        [](Reader &r, const Call &c) { r.formatting().setCharStyle(&r.group(), c.parameter); }),
    formatting("sbasedon",
               [](Reader &r, const Call &c) { r.formatting().setStyleBase(c.parameter); }),
    formatting("mvrs", [](Reader &r, const Call &) { r.formatting().setStyleRepeated(); }),

    // Paragraphs and sections ("Paragraph Formatting Properties", "Section Text")
    formatting("pard", [](Reader &r, const Call &) { r.resetPara(); }),
    formatting("outlinelevel",
               [](Reader &r, const Call &c) { // level 0 is the first one, also in a style
                   constexpr int bodyText = 9;
                   r.group().para.outline = qBound(0, c.parameter, bodyText);
               }),
    formatting("tqc", setTabType<QTextOption::CenterTab>),
    formatting("tqdec", setTabType<QTextOption::DelimiterTab>),
    formatting("tqr", setTabType<QTextOption::RightTab>),
    formatting(
        "tx",
        [](Reader &r, const Call &c) { r.formatting().addTab(&r.group(), length(c.parameter)); }),
    formatting("sectd",
               [](Reader &r, const Call &) {
                   r.beginSection(false);
                   r.setColumns(1);
               }),
    formatting("sbknone", [](Reader &r, const Call &) { r.beginSection(true); }),
    formatting("cols", [](Reader &r, const Call &c) { r.setColumns(c.parameter); }),

    // Lists ("List Tables", "Bullets and Numbering")
    destination("listtable", {To::ListTable}),
    destination("listoverridetable", {To::ListTable}),
    destination("list", {To::List, nullptr, [](Reader &r) { r.lists().finishList(); }},
                To::ListTable,
                [](Reader &r, const Call &c) {
                    if (r.openDestination(c.word.opens))
                        r.lists().beginList();
                }),
    destination("listlevel", {To::ListLevel, nullptr, [](Reader &r) { r.finishListLevel(); }},
                To::List,
                [](Reader &r, const Call &c) {
                    if (r.openDestination(c.word.opens))
                        r.lists().beginLevel();
                }),
    destination("leveltext", value([](Reader &r) { r.keepLevelText(); }, To::LevelText),
                To::ListLevel),
    header("listid", [](Reader &r, const Call &c) { r.lists().setId(c.parameter); }),
    header("mvrl", [](Reader &r, const Call &c) { r.lists().setExact(c.parameter); }),
    header("levelstartat", [](Reader &r, const Call &c) { r.lists().setStart(c.parameter); }),
    header("levelnfc", [](Reader &r, const Call &c) { r.lists().setNumberFormat(c.parameter); }),
    header("levelnfcn", [](Reader &r, const Call &c) { r.lists().setNumberFormat(c.parameter); }),
    formatting("ls", setList),
    destination("pn", {To::OldList}),
    formatting("pnlvlblt", setOldList<QTextListFormat::ListDisc>),
    formatting("pnlvlbody", setOldList<QTextListFormat::ListDecimal>),
    formatting("pndec", setOldList<QTextListFormat::ListDecimal>),
    formatting("pnlcltr", setOldList<QTextListFormat::ListLowerAlpha>),
    formatting("pnlcrm", setOldList<QTextListFormat::ListLowerRoman>),
    formatting("pnlvlcont", setOldList<QTextListFormat::ListStyleUndefined>),
    formatting("pnucltr", setOldList<QTextListFormat::ListUpperAlpha>),
    formatting("pnucrm", setOldList<QTextListFormat::ListUpperRoman>),

    // Tables ("Table Definitions") and frames
    formatting("trowd", [](Reader &r, const Call &) { r.rows().begin(r.group()); }),
    formatting(
        "trleft",
        [](Reader &r, const Call &c) { r.rows().row(r.group()).left = length(c.parameter); }),
    formatting("trhdr", [](Reader &r, const Call &) { r.rows().row(r.group()).header = true; }),
    formatting("cellx", [](Reader &r, const Call &c) { r.rows().addCell(r.group(), c.parameter); }),
    formatting("mvrc", [](Reader &r, const Call &c) { r.rows().nextCell().exact = c.parameter; }),
    formatting("mvrt",
               [](Reader &r, const Call &c) { r.rows().row(r.group()).exact = c.parameter; }),
    formatting("clcbpat",
               [](Reader &r, const Call &c) { r.rows().nextCell().background = c.parameter; }),
    formatting("clmrg", setCell<&RtfCellFormat::joinsLeft>),
    formatting("clvmrg", setCell<&RtfCellFormat::joinsAbove>),
    formatting("clbrdrt", beginBorder<RtfCellFormat::Top>),
    formatting("clbrdrl", beginBorder<RtfCellFormat::Left>),
    formatting("clbrdrb", beginBorder<RtfCellFormat::Bottom>),
    formatting("clbrdrr", beginBorder<RtfCellFormat::Right>),
    border("brdrs"),
    border("brdrth"),
    border("brdrdb"),
    border("brdrdot"),
    border("brdrdash"),
    border("brdrhair"),
    border("brdrsh"),
    border("brdrdashsm"),
    border("brdrdashd"),
    border("brdrdashdd"),
    border("brdrdashdot"),
    border("brdrdashdotdot"),
    border("brdrinset"),
    border("brdroutset"),
    border("brdrtriple"),
    border("brdrtnthsg"),
    border("brdrthtnsg"),
    border("brdrtnthtnsg"),
    border("brdrtnthmg"),
    border("brdrthtnmg"),
    border("brdrtnthtnmg"),
    border("brdrtnthlg"),
    border("brdrthtnlg"),
    border("brdrtnthtnlg"),
    border("brdrwavy"),
    border("brdrwavydb"),
    border("brdrdashdotstr"),
    border("brdremboss"),
    border("brdrengrave"),
    border("brdrframe"),
    structure("cell", [](Reader &r, const Call &) { r.endCell(); }),
    structure("nestcell", [](Reader &r, const Call &) { r.endCell(); }),
    structure("row", [](Reader &r, const Call &) { r.endRow(); }),
    structure("nestrow", [](Reader &r, const Call &) { r.endNestedRow(); }),
    destination("nesttableprops", {To::NestedRow}),
    own("mvrframe", [](Reader &r, const Call &c) { r.beginFrame(c.parameter); }),
    own("mvrframeend", [](Reader &r, const Call &) { r.endFrame(); }),

    // Pictures ("Pictures"); kinds that are not named here only keep their place
    destination("pict", {To::Picture, nullptr, [](Reader &r) { r.finishPicture(); }},
                [](Reader &r, const Call &c) { r.beginPicture(c.word.opens); }),
    readOn("shppict"),
    formatting("pngblip", setPictureKind<RtfPicture::Png>),
    formatting("jpegblip", setPictureKind<RtfPicture::Jpeg>),
    formatting("dibitmap", setPictureKind<RtfPicture::Dib>),
    formatting("picw", setPicture<&RtfPicture::width>),
    formatting("pich", setPicture<&RtfPicture::height>),
    formatting("picwgoal", setPicture<&RtfPicture::goalWidth>),
    formatting("pichgoal", setPicture<&RtfPicture::goalHeight>),
    formatting("emfblip", setPictureKind<RtfPicture::Emf>),
    formatting(
        "wmetafile",
        [](Reader &r, const Call &c) {
            r.picture().kind = RtfPicture::Wmf;
            r.picture().mapMode = c.parameter;
        },
        1),
    formatting("piccropl", setPicture<&RtfPicture::cropLeft>),
    formatting("piccropt", setPicture<&RtfPicture::cropTop>),
    formatting("piccropr", setPicture<&RtfPicture::cropRight>),
    formatting("piccropb", setPicture<&RtfPicture::cropBottom>),
    formatting("picscalex", setPicture<&RtfPicture::scaleX>),
    formatting("picscaley", setPicture<&RtfPicture::scaleY>),

    // Text ("Special Characters", "Unicode RTF")
    structure("par", [](Reader &r, const Call &) { r.endParagraph(); }),
    structure("page", [](Reader &r, const Call &) { r.breakPage(); }),
    structure("column", [](Reader &r, const Call &) { r.breakColumn(); }),
    structure("sect", [](Reader &r, const Call &) { r.endSection(); }),
    structure("line", addCharacter<QChar::LineSeparator>),
    structure("lbr", addCharacter<QChar::LineSeparator>),
    structure("tab", addCharacter<'\t'>),
    structure("u",
              [](Reader &r, const Call &c) {
                  if (c.hasParameter)
                      r.addUnicode(c.parameter);
              }),
    formatting(
        "uc", [](Reader &r, const Call &c) { r.group().unicodeSkip = qMax(0, c.parameter); }, 1),
    destination("upr", {To::Ignored}, openBoth),
    own("ud", [](Reader &r, const Call &) { r.openUnicodeAlternative(); }),
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

    // Headers and footers
    destination("footer", pageText, beginPageText),
    destination("footerf", pageText, beginPageText),
    destination("footerl", pageText, beginPageText),
    destination("footerr", pageText, beginPageText),
    destination("header", pageText, beginPageText),
    destination("headerf", pageText, beginPageText),
    destination("headerl", pageText, beginPageText),
    destination("headerr", pageText, beginPageText),
    structure("chpgn", [](Reader &r, const Call &) { r.addPageNumber(); }),

    // Fields, bookmarks and shapes ("Fields", "Bookmarks", "Drawing Objects")
    destination("field", fieldText, [](Reader &r, const Call &c) { r.beginField(c.word.opens); }),
    destination("fldinst", fieldInstruction),
    destination("fldrslt", {To::Ignored},
                [](Reader &r, const Call &c) { r.beginFieldResult(c.word.opens); }),
    destination("bkmkstart", value([](Reader &r) { r.addBookmark(); }), openIfVisible),
    destination("shp", {To::Shape}, openShape),
    destination("shpgrp", {To::Shape}, openShape),
    destination("do", {To::Shape}, openIfVisible),
    destination("shpinst", {To::Shape}, To::Shape),
    destination("shptxt", textBox, To::Shape,
                [](Reader &r, const Call &c) { r.beginTextBox(c.word.opens); }),
    destination("dptxbxtext", textBox, To::Shape,
                [](Reader &r, const Call &c) { r.beginTextBox(c.word.opens); }),
    destination("sn", value([](Reader &r) { r.shapes().setProperty(r.takeValue()); }), To::Shape),
    destination("sv", value([](Reader &r) { r.addShapeText(); }, To::ShapeValue), To::Shape),
    formatting("shpleft", setEdge<RtfShapeReader::Left>),
    formatting("shptop", setEdge<RtfShapeReader::Top>),
    formatting("shpright", setEdge<RtfShapeReader::Right>),
    formatting("shpbottom", setEdge<RtfShapeReader::Bottom>),

    // Notes ("Footnotes", "Comments (Annotations)")
    destination(
        "footnote", note,
        [](Reader &r, const Call &c) { r.beginNote(MVRTextRtfNote::Footnote, c.word.opens); }),
    destination(
        "annotation", note,
        [](Reader &r, const Call &c) { r.beginNote(MVRTextRtfNote::Comment, c.word.opens); }),
    destination("atnauthor", value([](Reader &r) { r.notes().setAuthor(r.takeValue()); }),
                openBesideNote),
    destination("atnid", value([](Reader &r) { r.notes().setInitials(r.takeValue()); }),
                openBesideNote),
    destination("atrfstart", value([](Reader &r) { r.addNoteEdge(true); }), openBesideNote),
    destination("atrfend", value([](Reader &r) { r.addNoteEdge(false); }), openBesideNote),
    destination("atnref", value([](Reader &r) { r.notes().setReference(r.takeValue()); }),
                To::Note),
    destination("atndate", value([](Reader &r) { r.notes().setDate(r.takeValue()); }), To::Note),
    destination("atntime", {To::NoteTime}, To::Note),
    destination("mvrnote", value([](Reader &r) { r.notes().setData(r.takeValue()); }), To::Note),
    formatting("chftn",
               [](Reader &r, const Call &) {
                   if (r.group().isBody())
                       r.notes().setNumbered();
               }),
    formatting("ftnalt",
               [](Reader &r, const Call &) {
                   if (r.group().isBody())
                       r.notes().setEndNote();
               }),
    header("yr", setTime<0>),
    header("mo", setTime<1>),
    header("dy", setTime<2>),
    header("hr", setTime<3>),
    header("min", setTime<4>),

    // Destinations whose text is not the document's. All that begin with \* are passed over
    // without being named here.
    skipped("bkmkend"),
    skipped("comment"),
    skipped("datafield"),
    skipped("falt"),
    skipped("filetbl"),
    skipped("fontemb"),
    skipped("ftncn"),
    skipped("ftnsep"),
    skipped("ftnsepc"),
    skipped("aftncn"),
    skipped("aftnsep"),
    skipped("aftnsepc"),
    skipped("generator"),
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

// Names are found through a table of at least twice their number, filled by the compiler. Words
// that only set a property have no row above.

constexpr std::size_t rowCount = sizeof rows / sizeof *rows;
constexpr std::size_t wordCount
    = rowCount + sizeof RtfPropertyWords::table / sizeof *RtfPropertyWords::table;
constexpr std::size_t slotCount = 1024;
static_assert(wordCount * 2 <= slotCount, "a fuller table makes unknown words slow");

constexpr std::array<Word, wordCount> joinWords()
{
    std::array<Word, wordCount> words {};
    std::size_t count = 0;
    for (const Word &row : rows)
        words[count++] = row;
    for (const RtfPropertyWord &property : RtfPropertyWords::table)
        words[count++] = {property.name, Word::Formatting, setProperty, 0, &property};
    return words;
}

constexpr std::array<Word, wordCount> words = joinWords();

constexpr std::size_t slotOf(std::string_view name)
{
    unsigned hash = 0;
    for (const char letter : name)
        hash = hash * 31 + static_cast<unsigned char>(letter);
    return (hash ^ (hash >> 11)) % slotCount;
}

// Rows come first, so that a row goes before the property of the same name.
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

} // namespace

const RtfControlWord *RtfControlWords::find(std::string_view name)
{
    for (std::size_t at = slotOf(name); wordSlots[at] >= 0; at = (at + 1) % slotCount) {
        const RtfControlWord &word = words[wordSlots[at]];
        if (word.name == name)
            return &word;
    }
    return nullptr;
}

void RtfControlWords::apply(RtfReader *reader, const RtfControlWord &word, const RtfToken &token)
{
    if (word.within && !reader->group().isIn(*word.within)) {
        reader->skipDestination();
        return;
    }
    word.apply(*reader,
               {word, token.hasParameter, token.hasParameter ? token.parameter : word.value});
}
