// SPDX-License-Identifier: MIT
#include <core/rtf/lex/RtfSymbolFonts.h>

#include <core/rtf/lex/RtfCodePages.h>

#include <string>

namespace {

/*! Symbols of one font that follow one another. */
struct Symbols
{
    int codePage;
    int firstByte;
    const char16_t *characters; // a blank: none of one unit
};

constexpr Symbols symbolRows[] = {
    {RtfCodePages::SymbolFont, 0x20,
     u" !∀#∃%&∋()∗+,−./0123456789:;<=>?≅ΑΒΧΔΕΦΓ"
     u"ΗΙϑΚΛΜΝΟΠΘΡΣΤΥςΩΞΨΖ[∴]⊥_‾αβχδεφγηιϕκλμνο"
     u"πθρστυϖωξψζ{|}∼"},
    {RtfCodePages::SymbolFont, 0xa0,
     u"€ϒ′≤⁄∞ƒ♣♦♥♠↔←↑→↓°±″≥×∝∂•÷≠≡≈…⏐⎯↵ℵℑℜ℘⊗⊕∅∩"
     u"∪⊃⊇⊄⊂⊆∈∉∠∇®©™∏√⋅¬∧∨⇔⇐⇑⇒⇓◊\u2329®©™∑⎛⎜⎝⎡⎢⎣⎧⎨⎩⎪"},
    {RtfCodePages::SymbolFont, 0xf1, u"\u232a∫⌠⎮⌡⎞⎟⎠⎤⎥⎦⎫⎬⎭"},
    {RtfCodePages::Wingdings, 0x22, u"✂✁"},
    {RtfCodePages::Wingdings, 0x29, u"✆"},
    {RtfCodePages::Wingdings, 0x36, u"⌛"},
    {RtfCodePages::Wingdings, 0x3e, u"✇✍ ✌"},
    {RtfCodePages::Wingdings, 0x45, u"☜☞☝☟ ☺ ☹ ☠  ✈☼ ❄ ✞ ✠✡☪☯ॐ☸♈♉♊♋♌♍♎♏♐♑♒♓"},
    {RtfCodePages::Wingdings, 0x6c, u"● ■□ ❑❒⬧⧫◆❖⬥⌧ ⌘"},
    {RtfCodePages::Wingdings, 0x80, u"⓪①②③④⑤⑥⑦⑧⑨⑩⓿❶❷❸❹❺❻❼❽❾❿"},
    {RtfCodePages::Wingdings, 0x9e, u"·•"},
    {RtfCodePages::Wingdings, 0xa7, u"▪◻  ★"},
    {RtfCodePages::Wingdings, 0xb5, u"✪✰"},
    {RtfCodePages::Wingdings, 0xd5, u"⌫⌦ ➢"},
    {RtfCodePages::Wingdings, 0xdf, u"←→↑↓↖↗↙↘"},
    {RtfCodePages::Wingdings, 0xe8, u"➔"},
    {RtfCodePages::Wingdings, 0xef, u"⇦⇨⇧⇩⬄⇳"},
    {RtfCodePages::Wingdings, 0xfb, u"✗✓☒☑"},
    {RtfCodePages::Webdings, 0x33, u"⏴⏵⏶⏷⏪⏩⏮⏭⏸⏹⏺"},
    {RtfCodePages::Webdings, 0x59, u"❤"},
    {RtfCodePages::Webdings, 0x61, u"✔"},
    {RtfCodePages::Webdings, 0x67, u"■"},
    {RtfCodePages::Webdings, 0x6e, u"⚫"},
    {RtfCodePages::Webdings, 0x72, u"✖"},
};

} // namespace

int RtfSymbolFonts::codePage(const QString &family)
{
    if (family == QLatin1String("Symbol"))
        return RtfCodePages::SymbolFont;
    if (family == QLatin1String("Wingdings"))
        return RtfCodePages::Wingdings;
    return family == QLatin1String("Webdings") ? int(RtfCodePages::Webdings) : 0;
}

QChar RtfSymbolFonts::character(int codePage, unsigned char byte)
{
    if (byte == ' ')
        return QLatin1Char(' ');
    for (const Symbols &symbols : symbolRows) {
        const int at = byte - symbols.firstByte;
        const int count = static_cast<int>(std::char_traits<char16_t>::length(symbols.characters));
        const bool isThere = symbols.codePage == codePage && at >= 0 && at < count;
        if (isThere && symbols.characters[at] != ' ')
            return QChar(symbols.characters[at]);
    }
    return QChar(0xf000 + byte);
}
