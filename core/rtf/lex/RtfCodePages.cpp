// SPDX-License-Identifier: MIT
#include <core/rtf/lex/RtfCodePages.h>

#include <core/rtf/lex/RtfSymbolFonts.h>

#include <QTextCodec>

namespace {

struct CharsetRow
{
    int charset;
    int codePage;
};

// RTF 1.9.1, "Font Table", \fcharset. Charset 1 is "the default", so it names none.
constexpr CharsetRow charsetRows[] = {{0, 1252},   {2, RtfCodePages::Symbol},
                                      {77, 10000}, {78, 10001},
                                      {79, 10003}, {80, 10008},
                                      {81, 10002}, {83, 10005},
                                      {84, 10004}, {85, 10006},
                                      {86, 10081}, {87, 10021},
                                      {88, 10029}, {89, 10007},
                                      {128, 932},  {129, 949},
                                      {130, 1361}, {134, 936},
                                      {136, 950},  {161, 1253},
                                      {162, 1254}, {163, 1258},
                                      {177, 1255}, {178, 1256},
                                      {179, 1256}, {180, 1256},
                                      {181, 1255}, {186, 1257},
                                      {204, 1251}, {222, 874},
                                      {238, 1250}, {254, 437},
                                      {255, 850}};

struct CodecRow
{
    int codePage;
    const char *codec;
};

constexpr CodecRow codecRows[] = {{708, "ISO-8859-6"},
                                  {819, "ISO-8859-1"},
                                  {852, "IBM852"},
                                  {860, "IBM860"},
                                  {862, "IBM862"},
                                  {863, "IBM863"},
                                  {865, "IBM865"},
                                  {866, "IBM866"},
                                  {874, "TIS-620"},
                                  {932, "Shift_JIS"},
                                  {936, "GBK"},
                                  {949, "windows-949"},
                                  {950, "Big5"},
                                  {1250, "windows-1250"},
                                  {1251, "windows-1251"},
                                  {1252, "windows-1252"},
                                  {1253, "windows-1253"},
                                  {1254, "windows-1254"},
                                  {1255, "windows-1255"},
                                  {1256, "windows-1256"},
                                  {1257, "windows-1257"},
                                  {1258, "windows-1258"},
                                  {1361, "Johab"},
                                  {10000, "Apple Roman"},
                                  {10001, "Shift_JIS"},
                                  {10002, "Big5"},
                                  {10003, "windows-949"},
                                  {10006, "x-mac-greek"},
                                  {10007, "x-mac-cyrillic"},
                                  {10008, "GBK"},
                                  {10029, "x-mac-centraleurroman"},
                                  {10081, "x-mac-turkish"},
                                  {20127, "ISO-8859-1"},
                                  {28591, "ISO-8859-1"},
                                  {54936, "GB18030"},
                                  {65001, "UTF-8"}};

// windows-874 puts these into the upper control range, which TIS-620 leaves empty.
struct Thai
{
    int byte;
    char16_t character;
};
constexpr Thai thaiAdditions[]
    = {{0x80, 0x20ac}, {0x85, 0x2026}, {0x91, 0x2018}, {0x92, 0x2019}, {0x93, 0x201c},
       {0x94, 0x201d}, {0x95, 0x2022}, {0x96, 0x2013}, {0x97, 0x2014}, {0xa0, 0x00a0}};

// DOS US and Western Europe, for which Qt has codecs on some machines only.
constexpr char16_t dosUpper[]
    = u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜ¢£¥₧ƒáíóúñÑªº¿⌐¬½¼¡«»░▒▓│┤╡╢╖╕╣║╗╝╜╛┐"
      u"└┴┬├─┼╞╟╚╔╩╦╠═╬╧╨╤╥╙╘╒╓╫╪┘┌█▄▌▐▀αßΓπΣσµτΦΘΩδ∞φε∩≡±≥≤⌠⌡÷≈°∙·√ⁿ²■\u00a0";
constexpr char16_t dosWesternUpper[]
    = u"ÇüéâäàåçêëèïîìÄÅÉæÆôöòûùÿÖÜø£Ø×ƒáíóúñÑªº¿®¬½¼¡«»░▒▓│┤ÁÂÀ©╣║╗╝¢¥"
      u"┐└┴┬├─┼ãÃ╚╔╩╦╠═╬¤ðÐÊËÈıÍÎÏ┘┌█▄¦Ì▀ÓßÔÒõÕµþÞÚÛÙýÝ¯´\u00ad±‗¾¶§÷¸°¨·¹³²■\u00a0";

// The upper half of such a code page, or null.
const char16_t *dosCharacters(int codePage)
{
    return codePage == 437 ? dosUpper : codePage == 850 ? dosWesternUpper : nullptr;
}

bool isDoubleByte(int codePage)
{
    switch (codePage) {
    case 932:
    case 936:
    case 949:
    case 950:
    case 1361:
    case 10001:
    case 10002:
    case 10003:
    case 10008:
    case 54936:
        return true;
    default:
        return false;
    }
}

const char *codecName(int codePage)
{
    for (const CodecRow &row : codecRows) {
        if (row.codePage == codePage)
            return row.codec;
    }
    return nullptr;
}

using Characters = std::array<QChar, 256>;

void fill(int codePage, QTextCodec *codec, Characters *characters)
{
    for (int byte = 0x80; byte < 0x100; ++byte) {
        const char single = static_cast<char>(byte);
        const QString character = codec->toUnicode(&single, 1);
        (*characters)[byte]
            = character.size() == 1 ? character.at(0) : QChar(QChar::ReplacementCharacter);
    }
    if (codePage == 874) {
        for (const Thai &row : thaiAdditions)
            (*characters)[row.byte] = QChar(row.character);
    }
}

void fill(const char16_t *upper, Characters *characters)
{
    for (int index = 0; index < 128 && upper[index] != 0; ++index)
        (*characters)[0x80 + index] = QChar(upper[index]);
}

} // namespace

int RtfCodePages::fromCharset(int charset)
{
    for (const CharsetRow &row : charsetRows) {
        if (row.charset == charset)
            return row.codePage;
    }
    return 0;
}

const RtfCodePages::Page &RtfCodePages::findPage(int codePage)
{
    for (const auto &known : m_pages) {
        if (known->codePage == codePage)
            return *(m_last = known.get());
    }
    // Files may name thousands of pages that do not exist.
    if (codePage != Symbol && !isSymbols(codePage) && !dosCharacters(codePage)
        && !codecName(codePage))
        return findPage(Western);
    m_pages.push_back(makePage(codePage));
    return *(m_last = m_pages.back().get());
}

std::unique_ptr<RtfCodePages::Page> RtfCodePages::makePage(int codePage)
{
    auto made = std::make_unique<Page>();
    made->codePage = codePage;
    for (int byte = 0; byte < 0x100; ++byte)
        made->characters[byte] = QChar(codePage == Symbol ? 0xf000 + byte : byte);
    for (int byte = 0x20; byte < 0x100 && isSymbols(codePage); ++byte)
        made->characters[byte]
            = RtfSymbolFonts::character(codePage, static_cast<unsigned char>(byte));
    if (codePage == Symbol || isSymbols(codePage))
        return made;
    if (const char16_t *upper = dosCharacters(codePage)) {
        fill(upper, &made->characters);
        return made;
    }

    QTextCodec *codec = QTextCodec::codecForName(codecName(codePage));
    if (codec && (isDoubleByte(codePage) || codePage == Utf8))
        made->codec = codec;
    else if (codec)
        fill(codePage, codec, &made->characters);
    else if (codePage != Western)
        made->characters = findPage(Western).characters;
    return made;
}

void RtfCodePages::decode(int codePage, const QByteArray &bytes, QString *text)
{
    const Page &known = page(codePage);
    if (known.codec) {
        text->append(known.codec->toUnicode(bytes));
        return;
    }
    for (const char byte : bytes)
        text->append(known.characters[static_cast<unsigned char>(byte)]);
}

bool RtfCodePages::isLeadByte(int codePage, unsigned char byte)
{
    if (byte < 0x81 || !isDoubleByte(codePage))
        return false;
    if (codePage == 932 || codePage == 10001) // 0xa1-0xdf are half-width katakana
        return byte <= 0x9f || (byte >= 0xe0 && byte <= 0xfc);
    return byte <= 0xfe;
}
