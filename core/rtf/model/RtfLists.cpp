// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfLists.h>

#include <core/rtf/model/RtfExact.h>
#include <core/rtf/write/RtfOutput.h>

namespace {

struct NumberFormat
{
    int code; // \levelnfc
    QTextListFormat::Style style;
};

constexpr NumberFormat numberFormats[]
    = {{0, QTextListFormat::ListDecimal},         {1, QTextListFormat::ListUpperRoman},
       {2, QTextListFormat::ListLowerRoman},      {3, QTextListFormat::ListUpperAlpha},
       {4, QTextListFormat::ListLowerAlpha},      {5, QTextListFormat::ListDecimal},
       {22, QTextListFormat::ListDecimal},        {23, QTextListFormat::ListDisc},
       {255, QTextListFormat::ListStyleUndefined}};

// Signs of Unicode, and of the Symbol and Wingdings fonts as their glyph numbers.
QTextListFormat::Style bulletStyle(char16_t sign)
{
    switch (sign) {
    case 'o':
    case 0x25cb:
    case 0x25e6:
        return QTextListFormat::ListCircle;
    case 0x25a0:
    case 0x25aa:
    case 0xf06e:
    case 0xf0a7:
        return QTextListFormat::ListSquare;
    default:
        return QTextListFormat::ListDisc;
    }
}

bool isPlace(QChar character)
{
    return character.unicode() < 9;
}

QByteArray hexByte(int byte)
{
    return "\\'" + QByteArray::number(byte, 16).rightJustified(2, '0');
}

QByteArray bulletText(QTextListFormat::Style style)
{
    if (style == QTextListFormat::ListStyleUndefined)
        return hexByte(0);
    const char16_t sign = style == QTextListFormat::ListSquare ? 0x25aa
        : style == QTextListFormat::ListCircle                 ? 0x25e6
                                                               : 0x2022;
    RtfOutput out;
    out.raw(hexByte(1));
    out.text(QString(QChar(sign)));
    return out.rtf();
}

// The number's place stands as the number of its level, counted from the length on.
QByteArray numberText(const QTextListFormat &format, int level)
{
    constexpr int longestAffix = 100;
    const QString prefix = format.numberPrefix().left(longestAffix);
    const QString suffix = format.hasProperty(QTextFormat::ListNumberSuffix)
        ? format.numberSuffix().left(longestAffix)
        : QStringLiteral(".");
    RtfOutput out;
    out.raw(hexByte(prefix.size() + 1 + suffix.size()));
    out.text(prefix);
    out.raw(hexByte(level));
    out.text(suffix);
    out.raw(";}{\\levelnumbers" + hexByte(prefix.size() + 1));
    return out.rtf();
}

} // namespace

QByteArray RtfLists::levelRtf(const QTextListFormat &format, int level)
{
    int code = 23;
    for (const NumberFormat &row : numberFormats) {
        if (row.style == format.style()) {
            code = row.code;
            break;
        }
    }
    const bool isNumber = format.style() <= QTextListFormat::ListDecimal;
    const int indent = (level + 1) * 720;
    return "{\\listlevel\\levelnfc" + QByteArray::number(code)
        + "\\leveljc0\\levelfollow0\\levelstartat1{\\leveltext"
        + (isNumber ? numberText(format, level) : bulletText(format.style())) + ";}\\fi-360\\li"
        + QByteArray::number(indent) + '}';
}

void RtfLists::beginList()
{
    m_list = {};
    m_level = -1;
    m_id = 0;
}

void RtfLists::beginLevel()
{
    ++m_level;
    current() = {};
}

void RtfLists::setNumberFormat(int format)
{
    current().style = QTextListFormat::ListDecimal; // what a script we cannot count in gets
    for (const NumberFormat &row : numberFormats) {
        if (row.code == format)
            current().style = row.style;
    }
}

void RtfLists::setLevelText(const QString &text)
{
    if (text.isEmpty())
        return;
    const QString shown = text.mid(1, text.at(0).unicode());
    Level &level = current();
    if (level.style == QTextListFormat::ListDisc && !shown.isEmpty()) {
        level.style = bulletStyle(shown.at(0).unicode());
        return;
    }
    int first = 0;
    while (first < shown.size() && !isPlace(shown.at(first)))
        ++first;
    int last = shown.size();
    while (last > first && !isPlace(shown.at(last - 1)))
        --last;
    if (first == shown.size()) // no number is shown
        return;
    level.prefix = shown.left(first);
    level.suffix = shown.mid(last);
}

void RtfLists::finishList()
{
    m_lists.insert(m_id, m_list);
}

void RtfLists::setOverride(int number)
{
    m_ids.insert(number, m_id);
}

const RtfLists::List *RtfLists::find(int number) const
{
    const auto id = m_ids.constFind(number);
    const auto list = id != m_ids.cend() ? m_lists.constFind(*id) : m_lists.cend();
    return list != m_lists.cend() ? &*list : nullptr;
}

bool RtfLists::isShown(int number, int level, const RtfResources &tables) const
{
    const List *list = find(number);
    return (list && !tables.exact.value(list->exact).isEmpty())
        || format(number, level, tables).style() != QTextListFormat::ListStyleUndefined;
}

QTextListFormat RtfLists::format(int number, int level, const RtfResources &tables) const
{
    QTextListFormat format;
    const int depth = qBound(0, level, levels - 1);
    format.setIndent(depth + 1);
    if (number >= firstOldList) {
        format.setStyle(QTextListFormat::Style(firstOldList - number));
        return format;
    }
    const List *list = find(number);
    if (!list) {
        format.setStyle(QTextListFormat::ListStyleUndefined);
        return format;
    }
    const RtfExactProperties exact = tables.exact.value(list->exact);
    if (!exact.isEmpty()) {
        format.clearProperty(QTextFormat::ListIndent);
        RtfExact::apply(exact, &format);
        return format;
    }
    const Level &found = list->levels[depth];
    format.setStyle(found.style);
    if (!found.prefix.isEmpty())
        format.setNumberPrefix(found.prefix);
    if (found.suffix != QLatin1String(".") && found.style <= QTextListFormat::ListDecimal)
        format.setNumberSuffix(found.suffix); // a period is what Qt shows by itself
    return format;
}
