// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfFormats.h>
#include <core/rtf/model/RtfLists.h>
#include <core/rtf/model/RtfTable.h>

#include <QHash>
#include <QSet>
#include <QTextCursor>

#include <string_view>
#include <utility>
#include <vector>

class QTextDocument;
class QTextFrame;
class QTextList;
class QTextTable;

/*!
    Puts what the reader found into a document, paragraph by paragraph.

    A paragraph is collected and inserted when its formatting is final, which in RTF is at its
    end. So each block and each run is one insertion, and nothing is formatted afterwards. Tables
    wait until their last row is known.
*/
class RtfDocumentBuilder
{
public:
    /*! \param document  empty, filled from its first block on; null when nothing is to be put in */
    RtfDocumentBuilder(QTextDocument *document, const RtfFormatCache &formats,
                       const RtfResources &resources, const RtfLists &lists);
    /*! One with the formats, resources and lists of \a model. */
    RtfDocumentBuilder(QTextDocument *document, const RtfDocumentBuilder &model)
        : RtfDocumentBuilder(document, model.m_formats, model.m_resources, model.m_listFormats)
    {
    }

    /*! Adds printable ASCII to the paragraph. */
    void append(std::string_view ascii, int charFormat)
    {
        beginRun(charFormat);
        m_paragraph.text.append(QLatin1String(ascii.data(), static_cast<int>(ascii.size())));
    }
    void append(QStringView text, int charFormat)
    {
        beginRun(charFormat);
        m_paragraph.text.append(text.data(), static_cast<int>(text.size()));
    }

    /*! Sets the paragraph that is being collected aside, so that others come before it. */
    RtfParagraph takeParagraph() { return std::exchange(m_paragraph, {}); }
    void giveParagraph(RtfParagraph paragraph) { m_paragraph = std::move(paragraph); }

    /*! Marks the place behind the text so far; gives the mark's number. */
    int addMark();
    /*! Where a mark came to stand; the document's end for one in a paragraph that was left out. */
    int markPosition(int number) const;

    /*! How many characters the paragraph has so far. */
    int textLength() const { return static_cast<int>(m_paragraph.text.size()); }
    bool hasText() const { return !m_paragraph.text.isEmpty(); }

    void endParagraph(const RtfParagraphEnd &end);
    /*! Ends the paragraph and its cell; a paragraph in no table is taken for one of a cell. */
    void endCell(RtfParagraphEnd end);
    /*! Ends the row of the table at \a level, 1 for a table that is in no other. */
    void endRow(int level, const RtfRowFormat &format);
    /*!
        Begins a frame, in a cell of the table at \a level or, for 0, in no table.
        \param exact  number of the set of properties that its format has
    */
    void beginFrame(int level, int exact);
    void endFrame(int level);
    /*! Inserts what is open; the document is complete then. */
    void finish();
    /*! Tells whether there is anything but the paragraph that is being collected. */
    bool hasContent() const { return m_started || !m_tables.empty(); }

private:
    void beginRun(int charFormat)
    {
        std::vector<RtfRun> &runs = m_paragraph.runs;
        if (runs.empty() || runs.back().charFormat != charFormat)
            runs.push_back({int(m_paragraph.text.size()), charFormat});
    }
    void openTables(int level);
    void closeTables(int level);
    void addToCell(const RtfParagraphEnd &end);

    void insert(const RtfParagraph &paragraph);
    void insertBlock(const QTextBlockFormat &blockFormat, const QTextCharFormat &markFormat);
    void insertItem(const RtfParagraph &paragraph);
    void insertTable(const RtfTable &table);
    void insertCell(const RtfCell &cell, QTextTable *table, const RtfGridCell &place,
                    const RtfCellFormat &format);
    void insertAsParagraphs(const RtfTable &table);
    void insertContent(const RtfCellContent &content);
    QTextTableFormat tableFormat(const RtfTable &table, const RtfTableGrid &grid);
    void enterFrame(int exact);
    void leaveFrame();

    QTextCursor m_cursor;
    const RtfFormatCache &m_formats;
    const RtfResources &m_resources;
    const RtfLists &m_listFormats;
    RtfParagraph m_paragraph;
    std::vector<RtfTable> m_tables; // those that are open, the innermost last
    bool m_blockReady = true; // an empty block waits for the next paragraph
    bool m_started = false;
    std::vector<int> m_markPositions; // -1 until the paragraph is inserted
    int m_cellStart = -1; // position of the cell or frame that was begun last
    std::vector<QTextFrame *> m_frames; // that are open; null for what is too much
    std::size_t m_framesOutside = 0; // how many of them are open around the cell
    int m_frameCount = 0;
    QSet<QVector<int>> m_tableWidths; // of the tables so far

    QHash<QPair<int, int>, QTextList *> m_lists; // by \ls and level
    int m_lastList = 0;
};
