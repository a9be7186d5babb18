// SPDX-License-Identifier: MIT
#pragma once

#include <core/document/OfflineDocument_p.h>

#include <QColor>
#include <QDateTime>
#include <QString>

#include <memory>
#include <vector>

/*! A footnote, ready for the foot of a page. */
struct PageFootnote
{
    int position = 0; /*!< of its number in the text */
    double top = 0.0; /*!< where all footnotes stand one below the other */
    std::unique_ptr<OfflineDocument> text; /*!< laid out, number and all */
    double height() const { return text->size().height(); }
};

/*! A comment, and the text that it is about. */
struct PageComment
{
    int start = 0;
    int end = 0;
    QString text;
    QString author;
    QColor color;
    QDateTime date;
};

/*! The notes of a document. */
struct PageNotes
{
    std::vector<PageFootnote> footnotes; /*!< in the order of their places */
    std::vector<PageComment> comments;
};

/*!
    Takes the inspector notes out of a document; a number stays where a footnote was.

    Inspector notes that no writer of pages can show any more lose their marks.
*/
PageNotes takeNotes(QTextDocument &text);

/*!
    Lays a footnote's text out for the foot of pages \a width units wide.
    \return false for one that is too high
*/
bool layOutFootnote(QTextDocument &note, double width, double unitsPerPoint);
