// SPDX-License-Identifier: MIT
#include <core/rtf/lex/RtfCodePages.h>

#include <core/rtf/lex/RtfSymbolFonts.h>

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

constexpr CodecRow codecRows[]
    = {{437, "IBM437"},           {708, "ISO-8859-6"},    {819, "ISO-8859-1"},
       {850, "IBM850"},           {852, "IBM852"},        {860, "IBM860"},
       {862, "IBM862"},           {863, "IBM863"},        {865, "IBM865"},
       {866, "IBM866"},           {874, "windows-874"},   {932, "windows-31j"},
       {936, "windows-936"},      {949, "windows-949"},   {950, "windows-950"},
       {1250, "windows-1250"},    {1251, "windows-1251"}, {1252, "windows-1252"},
       {1253, "windows-1253"},    {1254, "windows-1254"}, {1255, "windows-1255"},
       {1256, "windows-1256"},    {1257, "windows-1257"}, {1258, "windows-1258"},
       {1361, "Johab"},           {10000, "macintosh"},   {10001, "windows-31j"},
       {10002, "windows-950"},    {10003, "windows-949"}, {10006, "x-mac-greek"},
       {10007, "x-mac-cyrillic"}, {10008, "windows-936"}, {10029, "x-mac-centraleurroman"},
       {10081, "x-mac-turkish"},  {20127, "ISO-8859-1"},  {28591, "ISO-8859-1"},
       {54936, "GB18030"},        {65001, "UTF-8"}};

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

void fill(TextDecoder &decoder, Characters *characters)
{
    for (int byte = 0x80; byte < 0x100; ++byte) {
        const QString character = decoder.decode(QByteArray(1, static_cast<char>(byte)));
        (*characters)[byte]
            = character.size() == 1 ? character.at(0) : QChar(QChar::ReplacementCharacter);
    }
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
    if (codePage != Symbol && !isSymbols(codePage) && !codecName(codePage))
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

    auto decoder = std::make_unique<TextDecoder>(codecName(codePage));
    if (!decoder->isValid()) {
        if (codePage != Western)
            made->characters = findPage(Western).characters;
    } else if (isDoubleByte(codePage) || codePage == Utf8) {
        made->decoder = std::move(decoder);
    } else {
        fill(*decoder, &made->characters);
    }
    return made;
}

void RtfCodePages::decode(int codePage, const QByteArray &bytes, QString *text)
{
    const Page &known = page(codePage);
    if (known.decoder) {
        text->append(known.decoder->decode(bytes));
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
