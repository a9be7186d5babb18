// SPDX-License-Identifier: MIT
#pragma once

#include <QVector>

class QTextDocument;

/*! A line of a row or frame, in the layout's units. */
struct RowLine
{
    double top = 0.0;
    double bottom = 0.0;
    double drawnTop = 0.0; /*!< see drawnEdges() */
    bool mayStartPage = true;
};

/*! What stands in a row side by side: the lines of a cell, or of a frame, from top to bottom. */
struct RowColumn
{
    double left = 0.0;
    double right = 0.0;
    QVector<RowLine> lines;
};

/*! What a page shows of a column of a row that is higher than a page. */
struct ColumnPart
{
    double left = 0.0;
    double right = 0.0;
    double top = 0.0;
    double bottom = 0.0;
    double drawnTop = 0.0;
};

/*! What never breaks of a laid out text: a line, a row of a table or a frame. */
struct FlowItem
{
    double top = 0.0; /*!< from the text's top, in the layout's units */
    double bottom = 0.0;
    int start = 0; /*!< positions of its text, [start, end) */
    int end = 0;
    bool startsPage = false;
    bool mayStartPage = true; /*!< else it stays with the item before it */
    double drawnTop = 0.0; /*!< of a line; see drawnEdges() */
    double above = 0.0; /*!< so far the letters of a line reach above its top, */
    double below = 0.0; /*!< and below its bottom */
    double headTop = 0.0; /*!< the rows that a table repeats where it breaks before this item */
    double headBottom = 0.0;
    double notes = 0.0; /*!< height of the footnotes that it has */
    QVector<RowColumn> columns; /*!< of a row or frame */
};

/*! Drawing begins and ends so far inside a part, in the layout's units: lines are rounded by less.
 */
constexpr double drawingSlack = 2.1;

/*! What the items at the edges of a part of a text ask of drawing. */
struct DrawnEdges
{
    double top = 0.0; /*!< where drawing begins, that nothing above is drawn */
    double above = 0.0; /*!< so far the first line reaches above the part */
    double below = 0.0; /*!< so far the last one reaches below it */
    double next = 0.0; /*!< so far the line behind the part reaches into it */
};

/*! The part of a text that one page shows. */
struct PageSlice
{
    double top = 0.0;
    double bottom = 0.0;
    DrawnEdges edges;
    double headTop = 0.0; /*!< shown above it */
    double headBottom = 0.0;
    double notesTop
        = 0.0; /*!< shown at the foot: what part of all footnotes, one below the other */
    double notesBottom = 0.0;
    int start = 0;
    int end = 0;
    QVector<ColumnPart> columns; /*!< of a row of which other pages show the rest */

    double headHeight() const { return headBottom - headTop; }
};

/*! The items of a text that was laid out without breaks, from top to bottom. */
QVector<FlowItem> flowItems(const QTextDocument &text);

/*!
    What drawing of the items [\a first, \a end) has to heed.

    It begins where the second line ends, about, where the first one goes on with a paragraph, and
    behind the border of a row: the toolkit draws the last line that ends above, and the row above.
    Lines that are closer than their letters are high reach into each other.
*/
DrawnEdges drawnEdges(const QVector<FlowItem> &items, int first, int end);

/*! No text has more pages: the toolkit's coordinates end there. */
constexpr int mostPages = 12000;

/*! Of a page, while there is text on it. */
constexpr double maxShareOfNotes = 0.5;

/*! Of pages, in the layout's units. */
struct PageHeights
{
    double body = 0.0; /*!< footnotes and all */
    double noteGap = 0.0; /*!< between text and footnotes */
};

/*!
    Cuts a text into pages.

    Headings stay with two lines of what follows, paragraphs leave two lines on each side, tables
    repeat their header rows. Each cell of a row that is higher than a page is cut between its own
    lines, so that the parts on two pages may overlap. Footnotes that would take more than half of
    a page go on at the foot of the next one.
    \param noteCuts  where footnotes may be cut, all one below the other
    \return nothing where there would be more than mostPages, or rows that are higher than a page
            have too many cells for all the pages that they are on
*/
QVector<PageSlice> cutPages(const QVector<FlowItem> &items, const QVector<double> &noteCuts,
                            const PageHeights &heights);
