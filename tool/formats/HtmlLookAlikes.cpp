// SPDX-License-Identifier: MIT
#include <tool/formats/HtmlLookAlikes.h>

#include <QUrl>

namespace {

// This many take some 50 ms.
constexpr int maxPlaces = 2000;
// Tables deeper than that are refused.
constexpr int maxTableDepth = 1000;

}

void HtmlLookAlikes::addTag(const HtmlTag &tag, const QString &name)
{
    const bool isTable = name == QLatin1String("table");
    const bool isCell = name == QLatin1String("td") || name == QLatin1String("th");
    if (isTable && tag.isEnd && !m_openTables.isEmpty())
        closeTable();
    if (tag.isEnd)
        return;
    if (isTable && m_openTables.size() < maxTableDepth)
        m_openTables.append(Table());
    for (const HtmlAttribute &attribute : tag.attributes) {
        const QString key
            = m_html.mid(attribute.start, attribute.nameEnd - attribute.start).toLower();
        const bool isLink = name == QLatin1String("a");
        if (key == QLatin1String("id") || (isLink && key == QLatin1String("name"))) {
            addPlace(attribute);
        } else if (isLink && key == QLatin1String("href")) {
            addTarget(valueOf(attribute));
        } else if (key == QLatin1String("face")) {
            addFonts(valueOf(attribute), attribute.start, attribute.nameEnd);
        } else if (key == QLatin1String("style")) {
            addFontsOfStyle(attribute);
        } else if (key == QLatin1String("width") && isCell && !m_openTables.isEmpty()) {
            m_openTables.last().widths += valueOf(attribute).toString() + QLatin1Char(' ');
            m_openTables.last().attributes.append({attribute.start, attribute.nameEnd});
        }
    }
}

QStringView HtmlLookAlikes::valueOf(const HtmlAttribute &attribute) const
{
    return QStringView(m_html).mid(attribute.valueStart, attribute.valueEnd - attribute.valueStart);
}

void HtmlLookAlikes::addPlace(const HtmlAttribute &attribute)
{
    m_places.append({valueOf(attribute).toString(), {attribute.start, attribute.nameEnd}});
}

void HtmlLookAlikes::addTarget(QStringView target)
{
    if (!target.startsWith(QLatin1Char('#')))
        return;
    const QString name = target.mid(1).toString();
    m_targets.insert(name);
    m_targets.insert(QUrl::fromPercentEncoding(name.toUtf8()));
}

void HtmlLookAlikes::addFonts(QStringView fonts, int start, int end)
{
    if (!m_fonts.take(fonts.trimmed().toString()))
        m_unnamed.append({start, end});
}

void HtmlLookAlikes::addFontsOfStyle(const HtmlAttribute &style)
{
    static const QLatin1String property("font-family");
    const QStringView value = valueOf(style);
    for (auto at = value.indexOf(property, 0, Qt::CaseInsensitive); at >= 0;
         at = value.indexOf(property, at + 1, Qt::CaseInsensitive)) {
        const auto start = at + property.size();
        const auto end = value.indexOf(QLatin1Char(';'), start);
        const int place = style.valueStart + int(at);
        addFonts(value.mid(start, end < 0 ? -1 : end - start), place, place + int(property.size()));
    }
}

void HtmlLookAlikes::closeTable()
{
    const Table table = m_openTables.takeLast();
    if (!m_widths.take(table.widths))
        m_unnamed += table.attributes;
}

bool HtmlLookAlikes::hasLostPlaces() const
{
    int linked = 0;
    for (const Place &place : m_places)
        linked += m_targets.contains(place.name) ? 1 : 0;
    return linked > maxPlaces;
}

void HtmlLookAlikes::finish()
{
    while (!m_openTables.isEmpty())
        closeTable();
}

QVector<QPair<int, int>> HtmlLookAlikes::unnamed() const
{
    QVector<QPair<int, int>> unnamed = m_unnamed;
    if (m_places.size() <= maxPlaces)
        return unnamed;
    int left = maxPlaces;
    for (const Place &place : m_places) {
        if (!m_targets.contains(place.name) || --left < 0)
            unnamed.append(place.attribute);
    }
    return unnamed;
}
