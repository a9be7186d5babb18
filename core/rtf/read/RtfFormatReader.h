// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfResources.h>
#include <core/rtf/read/RtfGroups.h>
#include <core/rtf/read/RtfStyles.h>

/*! What control words make of the formatting of a group, as far as one property is not all. */
class RtfFormatReader
{
public:
    /*! \param resources  receive sets of tab stops */
    explicit RtfFormatReader(RtfResources *resources)
        : m_resources(*resources)
    {
    }

    /*! \plain */
    void resetChars(RtfGroup *group) const;
    void setFont(RtfGroup *group, int number) const;
    /*! \deff */
    void setDefaultFont(RtfGroup *group, int number);
    /*! Nothing is the formatting that \plain goes back to. */
    void dropDefaults() { m_plain = {}; }

    void setTabType(QTextOption::TabType type) { m_tabType = type; }
    void addTab(RtfGroup *group, int twips);

    // Styles
    /*! \s and \cs: begins a definition in the style sheet, and applies the style elsewhere. */
    void setStyle(RtfGroup *group, int number);
    void setCharStyle(RtfGroup *group, int number);
    void setStyleBase(int number) { m_styles.setBase(number); }
    /*! \mvrs: text of the style says itself what the style says of characters. */
    void setStyleRepeated() { m_isStyleRepeated = true; }
    static void beginStyle(RtfGroup *group);
    /*! \param name  as the style sheet has it, with its semicolon */
    void finishStyle(RtfGroup *group, const QString &name);

private:
    RtfResources &m_resources;
    RtfStyles m_styles;
    bool m_isStyleRepeated = false;
    RtfCharProps m_plain; // what \plain goes back to
    QTextOption::TabType m_tabType = QTextOption::LeftTab; // of the next \tx
};
