// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRtfNote.h>
#include <core/rtf/model/RtfNoteWords.h>
#include <core/rtf/model/RtfOwnContent.h>
#include <core/rtf/model/RtfPage.h>
#include <core/rtf/model/RtfProps.h>
#include <core/rtf/model/RtfResources.h>
#include <core/rtf/write/RtfOutput.h>

#include <QHash>
#include <QTextFormat>
#include <QVector>

#include <functional>
#include <optional>
#include <vector>

class QTextBlock;
class QTextBlockFormat;
class QTextCharFormat;
class QTextDocument;
class QTextFragment;
class QTextFrame;
class QTextList;
class QTextTable;
class QTextTableCell;

/*! Where the writer has the contents of notes from. */
struct RtfContentSource
{
    /*! Takes content to pieces that the writer itself wrote; nothing for any other. */
    std::function<std::optional<RtfOwnContent>(const QByteArray &)> takeOwn;
    /*! Puts any content into an empty document, and tells who wrote it and when. */
    std::function<RtfInfo(const QByteArray &, QTextDocument *)> read;
};

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
    /*! Notes of the document that is written next, and where their contents come from. */
    void setNotes(const MVRTextRtfNotes &notes, RtfContentSource contents);
    /*! What \info is to say; a document's own title comes first. */
    void setInfo(const RtfInfo &info) { m_info = info; }
    QByteArray write(const QString &text, const QTextCharFormat &format);

private:
    struct Run
    {
        QByteArray words;
        int link = 0; // above 0 a link, below 0 an instruction: their numbers
        bool isWestern = true; // by its font
        QStringList bookmarks;
        std::optional<QTextImageFormat> image;
    };

    /*! How a paragraph ends: with \par, or as the last of a cell. */
    enum BlockEnd { ParagraphEnd, CellEnd };

    /*! Where a note's text begins or ends; the note itself is written at the end. */
    struct NoteEdge
    {
        int position;
        bool isStart;
        int note;
    };

    struct Border
    {
        double width;
        int style; // QTextFrameFormat::BorderStyle
        QBrush brush;
    };
    static Border borderOf(const QTextFrameFormat &format)
    {
        return {format.border(), format.borderStyle(), format.borderBrush()};
    }

    void writeBody(const QTextDocument &document);

    void writeFrame(const QTextFrame &frame, int tableLevel);
    void writeFramed(const QTextFrame &frame, int tableLevel);
    void appendExact(const char *word, const QTextFormat &format, QByteArray *words);
    QByteArray borderWords(const char *edge, const Border &border);
    QByteArray cellBorderWords(const QTextFormat &cell);
    void writeTable(const QTextTable &table, int tableLevel);
    void writeCell(const QTextTableCell &cell, int tableLevel);
    QByteArray rowWords(const QTextTable &table, int row, const QVector<int> &edges);
    void writeBlock(const QTextBlock &block, int tableLevel, BlockEnd end);
    bool endsNote(const QTextBlock &block) const;
    void keepHeadingLook(const QTextBlock &block, int level);
    void writeBlockFormat(const QTextBlock &block, int tableLevel);
    void writeRun(const Run &run, QStringView text, bool stayOpen);
    void writePictures(int count, const QTextImageFormat &image);
    void writeReducedPictures(int count, const QByteArray &file, QTextImageFormat image);
    int nextEdge() const;
    void writeNotesUntil(int position);
    void writeNote(int number);
    void writeComment(int number, const QByteArray &content);
    void writeFootnote(const MVRTextRtfNote &note, const QByteArray &content);
    QByteArray noteContent(MVRTextRtfNote *note);
    QByteArray contentOf(const QByteArray &rtf, const QByteArray &before, RtfInfo *info);
    QByteArray contentOf(const QTextDocument &content, const QByteArray &before);
    QByteArray contentOf(const RtfOwnContent &content, const QByteArray &before);
    int ownNumber(const RtfOwnContent &content, RtfOwnContent::Kind kind, int number);
    QByteArray pageTexts();
    int listNumber(const QTextList *list);
    QByteArray listTable();
    QByteArray fontTable() const;
    QByteArray colorTable() const;
    QByteArray infoGroup() const;
    QByteArray pageWords() const;
    QByteArray styleSheet() const;
    void writeRuns(const QTextBlock &block, int markFormat);
    void writeDefaults(const QTextDocument &document);
    void writeBookmarks(const QStringList &names);
    void openLink(int link);
    void closeLink();
    const Run &run(int formatNumber, const QTextFragment &fragment);
    Run makeRun(const QTextCharFormat &format);
    const QByteArray &markWords(int formatNumber, const QTextBlock &block);
    QByteArray header();
    QByteArray finished();

    const QTextDocument *m_document = nullptr;
    RtfOutput m_body;
    RtfResources m_resources;
    QHash<QString, QByteArray> m_pictures; // the files, by name
    QHash<QString, QByteArray> m_reducedPictures; // those of them that stand again too often
    qint64 m_repeatsLeft = 48 << 20; // bytes of pictures that stand again
    QHash<int, Run> m_runs;
    QHash<int, QByteArray> m_marks;
    QHash<qint64, QByteArray> m_paragraphs;
    QHash<const QTextList *, int> m_listNumbers;
    QVector<QTextListFormat> m_lists;
    MVRTextRtfNotes m_notes;
    RtfContentSource m_contents;
    std::vector<NoteEdge> m_edges; // in the order of the text
    std::size_t m_nextEdge = 0;
    bool m_isNote = false; // what is written is the content of a note
    QVariantMap m_pageTexts;
    QHash<int, QByteArray> m_headingLooks; // by level from 0, of the first one with text
    RtfPage m_page;
    bool m_saysPage = false;
    QByteArray m_frameStart; // mark of the frame that the next paragraph begins
    QByteArray m_frameBorder; // words of the frame around the paragraph
    QByteArray m_paragraph; // words of the paragraph formatting in force
    QByteArray m_border; // words of the frame that are in force
    QByteArray m_defaults;
    RtfInfo m_info;
    QStringList m_bookmarks; // of the run before
    bool m_breakBefore = false; // the block before ended its page
    int m_link = 0; // the field that is open: a link, or below 0 an instruction
    bool m_openRun = false; // the last run's group waits for the paragraph's end
};
