// SPDX-License-Identifier: MIT
#pragma once

#include <pages/MVRScreenplayPages.h>

#include <functional>

class QIODevice;
class QPainter;

/*! Draws composed pages. */
class MVRTEXT_EXPORT MVRPagePainter
{
public:
    /*!
        Draws a page in the order of its lines, so that selected text reads as it stands.

        \param painter    its units are points, (0, 0) the paper's top left
        \param page       the page
        \param pageSize   in points
        \param watermark  drawn in light grey from corner to corner, below the text and no part
                          of it; may be empty
    */
    static void paint(QPainter &painter, const MVRScreenplayPage &page, const QSizeF &pageSize,
                      const QString &watermark = QString());

    /*!
        Draws a watermark; paint() does it itself.

        \param painter  as for paint()
        \param text     none is drawn when it is empty
    */
    static void paintWatermark(QPainter &painter, const QSizeF &pageSize, const QString &text);

    /*!
        Writes pages as a PDF file with fonts in it.

        \param device     open for writing
        \param pages      the pages, on paper of pages.pageSize()
        \param title      in the file's metadata
        \param watermark  as for paint()
        \return false when the file cannot be written
    */
    static bool writePdf(QIODevice *device, const MVRScreenplayPages &pages, const QString &title,
                         const QString &watermark = QString());

    /*! The same; \a drawn hears how many pages are drawn, after each of them; it may be empty. */
    static bool writePdf(QIODevice *device, const MVRScreenplayPages &pages, const QString &title,
                         const QString &watermark, const std::function<void(int)> &drawn);
};
