#pragma once

#include <core/rtf/RtfOutput.h>
#include <core/rtf/RtfProps.h>
#include <core/rtf/RtfTables.h>

#include <QHash>
#include <QVector>

class QTextBlock;
class QTextBlockFormat;
class QTextCharFormat;
class QTextDocument;
class QTextFrame;
class QTextList;
class QTextTable;
class QTextTableCell;

/*!
    Writes a document as RTF.

    The body is written first, so that the header names only the fonts and colours that are used.
    Each format is turned into words once. Runs stand in groups of their own and say only what
    they have; paragraphs say their formatting when it differs from the paragraph before.
*/
class RtfWriter
{
public:
    /*! \param withDefaults  the default font goes out too, see MVRTextRtf::toRtfCData() */
    QByteArray write(const QTextDocument &document, bool withDefaults);
    QByteArray write(const QString &text, const QTextCharFormat &format);

private:
    struct Run
    {
        QByteArray words;
        int link = 0;
    };

    /*! How a paragraph ends: with \par, or as the last of a cell. */
    enum BlockEnd { ParagraphEnd, CellEnd };

    void writeFrame(const QTextFrame &frame, int tableLevel);
    void writeTable(const QTextTable &table, int tableLevel);
    void writeCell(const QTextTableCell &cell, int tableLevel);
    QByteArray rowWords(const QTextTable &table, int row, const QVector<int> &edges);
    void writeBlock(const QTextBlock &block, int tableLevel, BlockEnd end);
    void writeBlockFormat(const QTextBlock &block, int tableLevel);
    void writePictures(int count, const QTextCharFormat &format);
    int listNumber(const QTextList *list);
    QByteArray listTable() const;
    QByteArray fontTable() const;
    QByteArray colorTable() const;
    void writeRuns(const QTextBlock &block);
    void writeDefaults(const QTextDocument &document);
    void openLink(int link);
    void closeLink();
    const Run &run(int formatNumber, const QTextCharFormat &format);
    const QByteArray &markWords(int formatNumber, const QTextCharFormat &format);
    QByteArray header() const;
    QByteArray finished() const;

    const QTextDocument *m_document = nullptr;
    RtfOutput m_body;
    RtfTables m_tables;
    QHash<int, Run> m_runs;
    QHash<int, QByteArray> m_marks;
    QHash<qint64, QByteArray> m_paragraphs;
    QHash<const QTextList *, int> m_listNumbers;
    QVector<const QTextList *> m_lists;
    QByteArray m_paragraph; // words of the paragraph formatting in force
    QByteArray m_defaults;
    bool m_breakBefore = false; // the block before ended its page
    int m_link = 0; // the field that is open
    bool m_openRun = false; // the last run's group waits for the paragraph's end
};
