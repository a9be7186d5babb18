// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfFormatReader.h>

#include <utility>

void RtfFormatReader::resetChars(RtfGroup *group) const
{
    const int link = group->chars.link; // comes from the field around, not from a word
    const int deleted = group->chars.deleted;
    group->chars = m_plain;
    group->chars.link = link;
    group->chars.deleted = deleted;
    group->eastAsian = {};
    group->fontChanged();
}

void RtfFormatReader::setFont(RtfGroup *group, int number) const
{
    group->chars.font = number;
    group->fontChanged();
}

void RtfFormatReader::setDefaultFont(RtfGroup *group, int number)
{
    m_plain.font = number;
    setFont(group, number);
}

void RtfFormatReader::addTab(RtfGroup *group, int twips)
{
    constexpr int maxTabs = 64;
    const QTextOption::TabType type = std::exchange(m_tabType, QTextOption::LeftTab);
    const int known = qMax(0, group->para.tabs);
    if (m_resources.tabs.value(known).size() >= maxTabs)
        return;
    QList<QTextOption::Tab> stops = m_resources.tabs.value(known);
    const QChar delimiter = type == QTextOption::DelimiterTab ? QLatin1Char('.') : QChar();
    RtfResources::addTab(&stops, QTextOption::Tab(twips / 20.0, type, delimiter));
    if (const int number = m_resources.tabsNumber(stops, RtfResources::maxLookAlikes))
        group->para.tabs = number;
}

void RtfFormatReader::setStyle(RtfGroup *group, int number)
{
    if (group->isIn(RtfDestination::StyleSheet)) {
        m_styles.begin(number);
        return;
    }
    const int font = group->chars.font;
    if (font == m_plain.font) // the default font is not a choice against the style's
        group->chars.font = -1;
    m_styles.applyToParagraph(number, &group->chars, &group->para);
    if (group->chars.font < 0)
        group->chars.font = font;
    group->fontChanged();
}

void RtfFormatReader::setCharStyle(RtfGroup *group, int number)
{
    if (group->isIn(RtfDestination::StyleSheet)) {
        m_styles.begin(number);
        return;
    }
    m_styles.applyToChars(number, &group->chars);
    group->fontChanged();
}

void RtfFormatReader::beginStyle(RtfGroup *group)
{
    group->chars = {};
    group->para = {};
    group->charsChanged();
}

void RtfFormatReader::finishStyle(RtfGroup *group, const QString &name)
{
    const QString known = name.trimmed().toLower();
    if (group->para.outline < 0 && known.startsWith(QLatin1String("heading "))) // not always said
        group->para.outline = known.mid(8).chopped(1).toInt() - 1;
    m_styles.finish(std::exchange(m_isStyleRepeated, false) ? RtfCharProps() : group->chars,
                    group->para);
    beginStyle(group);
}
