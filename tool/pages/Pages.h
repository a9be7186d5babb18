// SPDX-License-Identifier: MIT
#pragma once

#include <QPageSize>
#include <QSize>

class QPainter;
class QTextDocument;
struct Document;

/*!
    Makes a document ready for what Qt lays out or writes itself.

    Paragraphs get stock margins and indents, lengths become pixels, the body begins on a new page
    behind a title page.
    \param unitsPerPoint  pixelsPerPoint for Qt's writers
*/
void prepareForQt(Document &document, const QPageSize &paper, double unitsPerPoint);

/*! A document on pages of paper. Screenplays have six lines to the inch. */
class Pages
{
public:
    /*!
        Dots per inch of the pages' coordinates. A 12 point Courier letter is 30 dots wide.

        The application's default resolution (QT_FONT_DPI) must be the same: Qt scales only some
        lengths of a layout from the one to the other.
    */
    static constexpr int resolution = 300;

    /*! Lays \a document out; it is changed for that, and must outlive the pages. */
    Pages(Document &document, const QPageSize &paper);

    int count() const;

    /*! Draws the page \a index, counted from 0, with its number from the second script page on. */
    void paint(QPainter &painter, int index) const;

private:
    void paintNumber(QPainter &painter, int number) const;

    QTextDocument &m_text;
    QSize m_size;
    int m_titlePages = 0;
};
