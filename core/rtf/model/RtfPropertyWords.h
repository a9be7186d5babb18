// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfProps.h>

#include <QFont>
#include <QTextCharFormat>

#include <string_view>

/*!
    A control word that stands for one property of a run or a paragraph.

    The reader and the writer share the table: a new property is a new row. Properties that the
    reader has to look at more closely have a row in RtfControlWords.cpp, too.
*/
struct RtfPropertyWord
{
    std::string_view name;
    int RtfCharProps::*charProp = nullptr; /*!< one of the two is set */
    int RtfParaProps::*paraProp = nullptr;
    bool isWritten = false; /*!< the spelling that the writer uses for its property */
    bool isConstant = false; /*!< stands for \c value itself instead of carrying a number */
    int value = 0;
};

namespace RtfPropertyWords {

enum Spelling { Reads, Writes };

constexpr RtfPropertyWord number(std::string_view name, int RtfCharProps::*prop, Spelling spelling)
{
    return {name, prop, nullptr, spelling == Writes, false, 0};
}

constexpr RtfPropertyWord number(std::string_view name, int RtfParaProps::*prop, Spelling spelling)
{
    return {name, nullptr, prop, spelling == Writes, false, 0};
}

constexpr RtfPropertyWord constant(std::string_view name, int RtfCharProps::*prop, int value,
                                   Spelling spelling)
{
    return {name, prop, nullptr, spelling == Writes, true, value};
}

constexpr RtfPropertyWord constant(std::string_view name, int RtfParaProps::*prop, int value,
                                   Spelling spelling)
{
    return {name, nullptr, prop, spelling == Writes, true, value};
}

using C = RtfCharProps;
using P = RtfParaProps;
using F = QTextCharFormat;

constexpr RtfPropertyWord table[] = {
    // Characters (RTF 1.9.1, "Font (Character) Formatting Properties")
    number("f", &C::font, Writes),
    number("fs", &C::size, Writes),
    constant("b", &C::bold, 1, Writes),
    constant("i", &C::italic, 1, Writes),
    constant("strike", &C::strike, 1, Writes),
    constant("striked", &C::strike, 1, Reads),
    constant("super", &C::vertical, F::AlignSuperScript, Writes),
    constant("sub", &C::vertical, F::AlignSubScript, Writes),
    constant("nosupersub", &C::vertical, F::AlignNormal, Reads),
    constant("caps", &C::capitalization, QFont::AllUppercase, Writes),
    constant("scaps", &C::capitalization, QFont::SmallCaps, Writes),
    constant("v", &C::hidden, 1, Reads),
    constant("deleted", &C::deleted, 1, Reads),
    number("cf", &C::foreground, Writes),
    number("cb", &C::background, Writes),
    number("chcbpat", &C::background, Writes),
    number("highlight", &C::highlight, Reads),
    number("expndtw", &C::spacing, Writes),
    constant("ul", &C::underline, F::SingleUnderline, Writes),
    constant("ulnone", &C::underline, F::NoUnderline, Reads),
    constant("uld", &C::underline, F::DotLine, Writes),
    constant("uldash", &C::underline, F::DashUnderline, Writes),
    constant("uldashd", &C::underline, F::DashDotLine, Writes),
    constant("uldashdd", &C::underline, F::DashDotDotLine, Writes),
    constant("uldb", &C::underline, F::SingleUnderline, Reads),
    constant("ulhair", &C::underline, F::SingleUnderline, Reads),
    constant("ulhwave", &C::underline, F::WaveUnderline, Reads),
    constant("ulldash", &C::underline, F::DashUnderline, Reads),
    constant("ulth", &C::underline, F::SingleUnderline, Reads),
    constant("ulthd", &C::underline, F::DotLine, Reads),
    constant("ulthdash", &C::underline, F::DashUnderline, Reads),
    constant("ulthdashd", &C::underline, F::DashDotLine, Reads),
    constant("ulthdashdd", &C::underline, F::DashDotDotLine, Reads),
    constant("ulthldash", &C::underline, F::DashUnderline, Reads),
    constant("ululdbwave", &C::underline, F::WaveUnderline, Reads),
    constant("ulw", &C::underline, F::SingleUnderline, Reads),
    constant("ulwave", &C::underline, F::WaveUnderline, Writes),
    number("ulc", &C::underlineColor, Writes),
    number("mvrx", &C::exact, Writes),

    // Paragraphs ("Paragraph Formatting Properties")
    constant("ql", &P::alignment, 0, Reads),
    constant("qc", &P::alignment, Qt::AlignHCenter, Writes),
    constant("qr", &P::alignment, Qt::AlignRight, Writes),
    constant("qj", &P::alignment, Qt::AlignJustify, Writes),
    constant("qd", &P::alignment, Qt::AlignJustify, Reads),
    number("li", &P::leftIndent, Writes),
    number("lin", &P::leftIndent, Reads),
    number("ri", &P::rightIndent, Writes),
    number("rin", &P::rightIndent, Reads),
    number("fi", &P::firstIndent, Writes),
    number("sb", &P::spaceBefore, Writes),
    number("sa", &P::spaceAfter, Writes),
    number("sl", &P::lineSpacing, Writes),
    number("slmult", &P::lineMultiple, Writes),
    constant("pagebb", &P::pageBreakBefore, 1, Writes),
    constant("keep", &P::keepTogether, 1, Writes),
    constant("rtlpar", &P::rightToLeft, 1, Writes),
    constant("ltrpar", &P::rightToLeft, 0, Reads),
    number("cbpat", &P::shading, Writes),
    number("outlinelevel", &P::outline, Writes),
    number("mvrp", &P::exact, Writes),

    // Lists and tables ("List Tables", "Table Definitions")
    number("ilvl", &P::listLevel, Writes),
    number("ls", &P::list, Writes),
    constant("intbl", &P::inTable, 1, Writes),
    number("itap", &P::tableLevel, Writes),
};

}
