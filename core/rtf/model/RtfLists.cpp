// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfLists.h>

#include <core/MVRTextFormat.h>
#include <core/rtf/model/RtfExact.h>

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

// Symbols of Unicode, and of the Symbol and Wingdings fonts as their glyph numbers.
QTextListFormat::Style bulletStyle(char16_t symbol)
{
    switch (symbol) {
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

// "%1.%2" for a label with the numbers of two levels; a percent sign of its own is "%%".
QString labelPattern(const QString &shown)
{
    QString pattern;
    for (const QChar character : shown) {
        if (isPlace(character))
            pattern += QLatin1Char('%') + QString::number(character.unicode() + 1);
        else if (character == QLatin1Char('%'))
            pattern += QLatin1String("%%");
        else
            pattern += character;
    }
    return pattern;
}

} // namespace

int RtfLists::numberFormat(QTextListFormat::Style style)
{
    constexpr int bullet = 23;
    for (const NumberFormat &row : numberFormats) {
        if (row.style == style)
            return row.code;
    }
    return bullet;
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
    // Scripts that Qt cannot count in get its plain numbers.
    current().style = QTextListFormat::ListDecimal;
    for (const NumberFormat &row : numberFormats) {
        if (row.code == format)
            current().style = row.style;
    }
    current().code = numberFormat(current().style) == format || format < 0 ? -1 : qMin(format, 255);
}

void RtfLists::setStart(int number)
{
    current().start = qBound(0, number, maxStart);
}

void RtfLists::setLevelText(const QString &text)
{
    if (text.isEmpty())
        return;
    const QString shown = text.mid(1, text.at(0).unicode());
    Level &level = current();
    if (shown.isEmpty()) {
        level.style = QTextListFormat::ListStyleUndefined;
        return;
    }
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
    if (last - first > 1)
        level.text = labelPattern(shown);
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

bool RtfLists::isShown(int number, int level, const RtfResources &resources) const
{
    const List *list = find(number);
    return (list && !resources.exact.value(list->exact).isEmpty())
        || format(number, level, resources).style() != QTextListFormat::ListStyleUndefined;
}

QTextListFormat RtfLists::format(int number, int level, const RtfResources &resources) const
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
    const RtfExactProperties exact = resources.exact.value(list->exact);
    if (!exact.isEmpty()) {
        format.clearProperty(QTextFormat::ListIndent);
        RtfExact::apply(exact, &format);
        return format;
    }
    const Level &found = list->levels[depth];
    format.setStyle(found.style);
    if (found.code >= 0)
        format.setProperty(MVRTextFormat::ListNumberFormatProperty, found.code);
    if (found.start != 1)
        format.setProperty(MVRTextFormat::ListStartProperty, found.start);
    if (!found.text.isEmpty())
        format.setProperty(MVRTextFormat::ListLabelProperty, found.text);
    if (!found.prefix.isEmpty())
        format.setNumberPrefix(found.prefix);
    if (found.suffix != QLatin1String(".") && found.style <= QTextListFormat::ListDecimal)
        format.setNumberSuffix(found.suffix); // a period is what Qt shows by itself
    return format;
}
