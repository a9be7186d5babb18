// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfResources.h>

#include <QHash>
#include <QTextListFormat>

#include <array>

/*!
    The lists that paragraphs refer to by \ls and \ilvl (RTF 1.9.1, "List Tables"), and the
    bullets and numbers of older files (\pn).
*/
class RtfLists
{
public:
    /*! Numbers from here on stand for \pn settings, which have no table. */
    static constexpr int firstOldList = 1 << 20;
    /*! Stands for \ls0, which is a list when the file has one of that number. */
    static constexpr int zeroList = firstOldList - 1;

    /*! The number that stands for \ls in paragraphs' properties, where 0 is in no list. */
    static int number(int ls) { return ls == 0 ? zeroList : qBound(0, ls, zeroList - 1); }

    // The list table
    void beginList();
    void beginLevel();
    void setNumberFormat(int format);
    void setStart(int number);
    /*! \param text  \leveltext: its length, then the text with the numbers' places as U+0000… */
    void setLevelText(const QString &text);
    void setId(int id) { m_id = id; }
    /*! \param exact  \mvrl: number of the set of properties that the list's format has */
    void setExact(int exact) { m_list.exact = exact; }
    void finishList();
    /*! Lets \a number (\ls) stand for the list whose id was given last. */
    void setOverride(int number);

    /*! The number that stands for a list of \a style without a table. */
    static int oldList(QTextListFormat::Style style) { return firstOldList - style; }

    /*!
        \param resources  hold the exact properties that the file gives of a list
        \return the format of list \a number at \a level (from 0), its indent one more than the
                level; an undefined style when there is no such list
    */
    QTextListFormat format(int number, int level, const RtfResources &resources) const;

    /*! Tells whether the paragraphs of a list are its items: not in one without any numbers, but
        for a list that a document had. */
    bool isShown(int number, int level, const RtfResources &resources) const;

    /*! How many levels a list has. */
    static constexpr int levels = 9;
    /*! The highest number that a list may begin with. */
    static constexpr int maxStart = 32767;

    /*! The \levelnfc that stands for \a style; that of a bullet where there is none. */
    static int numberFormat(QTextListFormat::Style style);

private:
    struct Level
    {
        QTextListFormat::Style style = QTextListFormat::ListStyleUndefined;
        QString prefix;
        QString suffix;
        int code = -1; // \levelnfc of numbers that Qt has no style for
        int start = 1;
        QString text; // of labels with the numbers of several levels, see ListLabelProperty
    };
    struct List
    {
        std::array<Level, RtfLists::levels> levels;
        int exact = 0;
    };

    const List *find(int number) const;
    Level &current() { return m_list.levels[qBound(0, m_level, levels - 1)]; }

    QHash<int, List> m_lists; // by id
    QHash<int, int> m_ids; // by \ls
    List m_list;
    int m_level = -1;
    int m_id = 0;
};
