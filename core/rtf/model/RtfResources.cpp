// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfResources.h>

#include <core/rtf/model/RtfExact.h>

#include <algorithm>

namespace {

// A name as the font table can hold it: no semicolon, no controls, no blanks around.
QString tableName(const QString &family)
{
    QString name;
    for (const QChar &character : family) {
        const bool isSeparator = character == QLatin1Char(';') || character == QChar::LineSeparator
            || character == QChar::ParagraphSeparator;
        if (character.unicode() >= 0x20 && !isSeparator)
            name += character;
    }
    return name.left(RtfFont::maxNameLength).trimmed();
}

// Number 0 means none, so the first entry is never handed out.
template <typename List, typename Value> int appendNumbered(List *list, const Value &value)
{
    if (list->isEmpty())
        list->append(typename List::value_type());
    list->append(value);
    return list->size() - 1;
}

} // namespace

int RtfResources::fontNumber(const QString &family)
{
    const QString name = tableName(family);
    if (name.isEmpty())
        return -1;
    const auto known = m_fontNumbers.constFind(name);
    if (known != m_fontNumbers.constEnd())
        return known.value();
    const int number = fonts.size();
    fonts.insert(number, {name, 0});
    m_fontNumbers.insert(name, number);
    return number;
}

int RtfResources::colorNumber(const QColor &color)
{
    const auto known = m_colorNumbers.constFind(color.rgb());
    if (known != m_colorNumbers.constEnd())
        return known.value();
    const int number = appendNumbered(&colors, QColor(color.rgb())); // RTF is never translucent
    m_colorNumbers.insert(color.rgb(), number);
    return number;
}

int RtfResources::linkNumber(const QString &target)
{
    const auto known = m_linkNumbers.constFind(target);
    if (known != m_linkNumbers.constEnd())
        return known.value();
    const int number = appendNumbered(&links, target);
    m_linkNumbers.insert(target, number);
    return number;
}

void RtfResources::addTab(QList<QTextOption::Tab> *stops, const QTextOption::Tab &stop)
{
    const auto place = std::lower_bound(stops->begin(), stops->end(), stop,
                                        [](const QTextOption::Tab &a, const QTextOption::Tab &b) {
                                            return a.position < b.position;
                                        });
    if (place != stops->end() && place->position == stop.position)
        *place = stop;
    else
        stops->insert(place, stop);
}

int RtfResources::tabsNumber(const QList<QTextOption::Tab> &stops, int max)
{
    if (stops.isEmpty())
        return 0;
    QByteArray key;
    for (const QTextOption::Tab &stop : stops)
        key += QByteArray::number(stop.position) + char('0' + stop.type);
    const auto known = m_tabsNumbers.constFind(key);
    if (known != m_tabsNumbers.constEnd())
        return known.value();
    if (tabs.size() >= max)
        return 0;
    const int number = appendNumbered(&tabs, stops);
    m_tabsNumbers.insert(key, number);
    return number;
}

int RtfResources::exactNumber(const RtfExactProperties &properties)
{
    if (properties.isEmpty())
        return 0;
    const QByteArray text = RtfExact::toText(properties);
    const auto known = m_exactNumbers.constFind(text);
    if (known != m_exactNumbers.constEnd())
        return known.value();
    const int number = appendNumbered(&exact, properties);
    m_exactNumbers.insert(text, number);
    m_exactText += text + ';';
    return number;
}
