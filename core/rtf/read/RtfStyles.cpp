// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfStyles.h>

#include <QVector>

namespace {

// Sets in \a to what \a from says and \a to does not; properties are plain integers.
template <typename Props> void fillFrom(const Props &from, Props *to)
{
    static const Props unsaid;
    const auto *source = reinterpret_cast<const int *>(&from);
    const auto *nothing = reinterpret_cast<const int *>(&unsaid);
    auto *target = reinterpret_cast<int *>(to);
    for (std::size_t i = 0; i < sizeof(Props) / sizeof(int); ++i) {
        if (target[i] == nothing[i])
            target[i] = source[i];
    }
}

template <typename Props> void dropSwitchedOff(Props *props)
{
    static const Props unsaid;
    const auto *nothing = reinterpret_cast<const int *>(&unsaid);
    auto *target = reinterpret_cast<int *>(props);
    for (std::size_t i = 0; i < sizeof(Props) / sizeof(int); ++i) {
        if (target[i] == RtfStyles::switchedOff)
            target[i] = nothing[i];
    }
}

} // namespace

void RtfStyles::finish(const RtfCharProps &chars, const RtfParaProps &para)
{
    m_styles.insert(m_number, {chars, para, m_base, false});
    m_number = 0;
    m_base = -1;
}

void RtfStyles::resolve(Style *style)
{
    constexpr int maxBases = 32;
    // Word repeats in a definition what it takes from its base, and what is not there is off. Its
    // \itap0 tells such a definition from one that somebody wrote by hand.
    const bool isComplete = style->para.tableLevel == switchedOff;
    int base = isComplete ? -1 : style->base;
    for (int i = 0; i < maxBases && m_styles.contains(base); ++i) {
        const Style &from = m_styles[base];
        fillFrom(from.chars, &style->chars);
        fillFrom(from.para, &style->para);
        if (from.resolved)
            break;
        base = from.base;
    }
    style->resolved = true;
}

const RtfStyles::Style *RtfStyles::find(int number)
{
    const auto style = m_styles.find(number);
    if (style == m_styles.end())
        return nullptr;
    if (!style->resolved)
        resolve(&style.value());
    return &style.value();
}

void RtfStyles::applyToParagraph(int number, RtfCharProps *chars, RtfParaProps *para)
{
    if (const Style *style = find(number)) {
        fillFrom(style->chars, chars);
        fillFrom(style->para, para);
        dropSwitchedOff(chars);
        dropSwitchedOff(para);
    }
}

void RtfStyles::applyToChars(int number, RtfCharProps *chars)
{
    if (const Style *style = find(number)) {
        RtfCharProps result = style->chars;
        fillFrom(*chars, &result);
        dropSwitchedOff(&result);
        *chars = result;
    }
}
