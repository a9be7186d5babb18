// SPDX-License-Identifier: MIT
#pragma once

#include <core/document/BoundedNames_p.h>
#include <core/html/HtmlTokens_p.h>

#include <QSet>
#include <QString>
#include <QVector>

/*!
    Finds what makes formats that differ in a list alone: names of places, columns' widths, and
    fonts. A document finds its formats by a number that it makes of them, in which a list counts
    for its length at most, so that it looks through all of these for each that is like them.
*/
class HtmlLookAlikes
{
public:
    explicit HtmlLookAlikes(const QString &html)
        : m_html(html)
    {
    }

    /*! \param name  of the element, in lower case */
    void addTag(const HtmlTag &tag, const QString &name);

    /*! To be called behind the last tag. */
    void finish();
    /*! Whether names of places that links lead to are too many. */
    bool hasLostPlaces() const;
    /*! Places in the HTML, [start, end): names that are to be read as ones that mean nothing. */
    QVector<QPair<int, int>> unnamed() const;

private:
    struct Place
    {
        QString name;
        QPair<int, int> attribute; // its name
    };

    struct Table
    {
        QString widths;
        QVector<QPair<int, int>> attributes;
    };

    void addPlace(const HtmlAttribute &attribute);
    void addTarget(QStringView target);
    void addFonts(QStringView fonts, int start, int end);
    void addFontsOfStyle(const HtmlAttribute &style);
    void closeTable();
    QStringView valueOf(const HtmlAttribute &attribute) const;

    const QString &m_html;
    QVector<Place> m_places;
    QSet<QString> m_targets;
    QVector<Table> m_openTables;
    BoundedNames m_widths;
    BoundedNames m_fonts;
    QVector<QPair<int, int>> m_unnamed;
};
