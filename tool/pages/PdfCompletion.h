// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QColor>
#include <QDateTime>
#include <QRectF>
#include <QString>
#include <QVector>

/*! A place on a page; points from the paper's top left, pages counted from 0. */
struct PdfArea
{
    int page = 0;
    QRectF rect;
};

/*! Text that leads somewhere. */
struct PdfLink
{
    PdfArea area;
    QString url; /*!< empty for a place in the document */
    PdfArea target;
};

/*! A comment on text, which may go over lines and pages. */
struct PdfComment
{
    QVector<PdfArea> areas;
    QString text;
    QString author;
    QColor color;
    QDateTime date;
};

/*! An entry of the outline. */
struct PdfHeading
{
    QString text;
    int level = 1;
    PdfArea area;
};

/*! What a PDF file has beside its pages. */
struct PdfExtras
{
    QString title;
    QString author;
    QVector<PdfLink> links;
    QVector<PdfComment> comments;
    QVector<PdfHeading> outline;
};

/*!
    Adds what the toolkit's PDF writer knows nothing of: links, annotations, outline and author.

    \param pdf   a file with pages of one size; left alone on failure
    \return false when it is no PDF file
*/
bool completePdf(QByteArray *pdf, const PdfExtras &extras);
