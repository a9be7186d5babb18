// SPDX-License-Identifier: MIT
#pragma once

#include <tool/pages/PageLinks.h>
#include <tool/pages/PageNotes.h>
#include <tool/pages/PagePictures.h>
#include <tool/pages/PageSlices.h>
#include <tool/pages/PdfCompletion.h>

#include <QHash>
#include <QMarginsF>
#include <QPageSize>
#include <QSizeF>

class Listener;
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

/*! How pages are set up; lengths in points. */
struct PageSetup
{
    QSizeF paper;
    QMarginsF margins = QMarginsF(72.0, 72.0, 72.0, 72.0);
    bool hasNumbers = false; /*!< at the foot of each page */
    bool hasCommentsInMargin = false;
    QString watermark;
    Listener *listener = nullptr; /*!< hears how far the text is laid out */
};

/*!
    A document that is no screenplay on pages of paper: with footnotes at their feet, headings kept
    with text, no single lines, and tables that repeat their header rows.
*/
class Pages
{
public:
    /*!
        Dots per inch of the pages' coordinates.

        The application's default resolution (QT_FONT_DPI) must be the same: Qt scales only some
        lengths of a layout from the one to the other.
    */
    static constexpr int resolution = 300;

    /*! Lays \a document out; it is changed for that, and must outlive the pages. */
    Pages(Document &document, const PageSetup &setup);

    /*! 0 for a text that is too high for a layout, or has too many pages; see cutPages(). */
    int count() const { return int(m_slices.size()); }

    /*! Draws the page \a index, counted from 0. */
    void paint(QPainter &painter, int index) const;

    /*! Links, comments and headings, each where it stands. */
    PdfExtras extras() const;

private:
    bool prepare();
    bool measureNotes();
    void cut();
    QVector<PdfArea> areasOf(TextPlaces &places, int start, int end) const;
    QHash<QString, PdfArea> namedPlaces() const;
    PdfArea areaOf(const QRectF &rect) const;
    void addLinks(PdfExtras &extras) const;
    void addHeadings(PdfExtras &extras) const;
    void paintText(QPainter &painter, const PageSlice &slice, double y) const;
    void paintFootnotes(QPainter &painter, int index) const;
    void paintComments(QPainter &painter, int index) const;
    void paintNumber(QPainter &painter, int number) const;

    Document &m_document;
    QTextDocument &m_text;
    PageSetup m_setup;
    std::unique_ptr<PagePictures> m_pictures;
    PageNotes m_notes;
    std::unique_ptr<NoteLayout> m_noteLayout;
    QVector<double> m_noteCuts; // where footnotes may be cut, all one below the other
    QVector<TextLink> m_noteLinks; // in the same coordinates, from top to bottom
    QVector<QVector<PdfArea>> m_commentAreas; // what each is about
    QVector<QVector<int>> m_commentsOfPage; // that have an area there
    QRectF m_body; // of a page, in dots
    QVector<PageSlice> m_slices;
};
