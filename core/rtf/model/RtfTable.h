// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVector>

#include <memory>
#include <vector>

/*! What a paragraph has at its end, where its formatting is final. */
struct RtfParagraphEnd
{
    int blockFormat = 0; /*!< number in the format cache */
    int markFormat = 0; /*!< character format of the end itself, which an empty paragraph shows */
    int list = 0; /*!< \ls, 0: in no list */
    int listLevel = 0;
    int tableLevel = 0; /*!< 0: in no table, 2: in a table in a table */
};

/*! A run of characters of one format; it ends where the next one starts. */
struct RtfRun
{
    int start;
    int charFormat; /*!< number in the format cache */
};

/*! A place in a paragraph whose position is asked for when the document is complete. */
struct RtfMark
{
    int offset;
    int number;
};

struct RtfParagraph
{
    QString text;
    std::vector<RtfRun> runs;
    std::vector<RtfMark> marks;
    RtfParagraphEnd end;
};

struct RtfTable;

/*! A paragraph of a cell, a table in it, or an edge of a frame. */
struct RtfCellContent
{
    enum Kind { Paragraph, Table, FrameStart, FrameEnd };

    Kind kind = Paragraph;
    RtfParagraph paragraph;
    std::unique_ptr<RtfTable> table;
    int frame = 0; /*!< number of its set of exact properties */
};
using RtfCell = std::vector<RtfCellContent>;

/*! \cellx and the words before it (RTF 1.9.1, "Table Definitions"). */
struct RtfCellFormat
{
    enum Edge { Top = 1, Left = 2, Bottom = 4, Right = 8, AllEdges = 15 };

    int right = 0; /*!< right edge, in twips from the left margin */
    bool joinsLeft = false; /*!< \clmrg */
    bool joinsAbove = false; /*!< \clvmrg */
    int borders = 0; /*!< of the edges that have one */
    int background = 0; /*!< index of the colour table */
    int exact = 0; /*!< \mvrc: number of a set of exact properties */
};

struct RtfRowFormat
{
    int left = 0; /*!< \trleft, in twips */
    bool header = false;
    int exact = 0; /*!< \mvrt: number of the table's set of exact properties */
    QVector<RtfCellFormat> cells;
};

struct RtfRow
{
    RtfRowFormat format;
    std::vector<RtfCell> cells;
};

/*! A table while it is read: cells come before what is said about their row. */
struct RtfTable
{
    std::vector<RtfRow> rows;
    std::vector<RtfCell> cells; /*!< finished cells of the row that is open */
    RtfCell cell; /*!< the cell that is open */

    void endCell();
    void endRow(const RtfRowFormat &format);
};

/*! A cell's place in the grid that all rows of a table share. */
struct RtfGridCell
{
    int row = 0;
    int column = 0;
    int rowSpan = 1;
    int columnSpan = 1;
    int index = 0; /*!< in its row */
    int borders = 0; /*!< RtfCellFormat::Edge; what a neighbour says of an edge counts, too */
};

/*!
    Lays the rows of a table, each with edges of its own, over one grid.

    Rows say where their cells end; the grid's columns lie between all the edges that occur.
*/
class RtfTableGrid
{
public:
    explicit RtfTableGrid(const RtfTable &table);

    /*!
        False when the grid would be out of all proportion to the table's cells: a few thousand
        rows with an edge of their own each would fill the memory.
    */
    bool isReasonable() const { return m_reasonable; }
    int rows() const { return m_rows; }
    int columns() const { return m_columns; }
    /*! Widths in twips; empty when the rows do not say them. */
    const QVector<int> &widths() const { return m_widths; }
    const std::vector<RtfGridCell> &cells() const { return m_cells; }

    /*! Which edges of the cells have a border. */
    enum Borders { NoBorders, SomeBorders, AllBorders };
    Borders borders() const;

private:
    bool hasEdges(const RtfTable &table) const;
    bool layByEdges(const RtfTable &table, std::size_t maxCells);
    bool layRow(const RtfRow &row, int number, const std::vector<int> &edges,
                const std::vector<int> &above, std::vector<int> *here);
    void layByCount(const RtfTable &table);
    void shareBorders();

    int m_rows = 0;
    int m_columns = 0;
    bool m_reasonable = true;
    QVector<int> m_widths;
    std::vector<RtfGridCell> m_cells;
};
