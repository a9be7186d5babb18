// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRtfLeftOut.h>
#include <core/rtf/lex/RtfTextDecoder.h>
#include <core/rtf/lex/RtfTokenizer.h>
#include <core/rtf/model/RtfFormats.h>
#include <core/rtf/model/RtfLists.h>
#include <core/rtf/model/RtfPicture.h>
#include <core/rtf/read/RtfBookmarks.h>
#include <core/rtf/read/RtfDocumentBuilder.h>
#include <core/rtf/read/RtfFieldReader.h>
#include <core/rtf/read/RtfFormatReader.h>
#include <core/rtf/read/RtfGroups.h>
#include <core/rtf/read/RtfHeaderReader.h>
#include <core/rtf/read/RtfNoteReader.h>
#include <core/rtf/read/RtfPageTextReader.h>
#include <core/rtf/read/RtfShapeReader.h>
#include <core/rtf/read/RtfStory.h>

#include <utility>

/*!
    The state of reading: groups, the readers of the parts of a file, and the story that text goes
    to. What a control word does stands in RtfControlWords.cpp and calls the functions here; where
    the tokens come from is RtfParser's business.
*/
class RtfReader final : private RtfTextSink
{
public:
    /*! \param notes  receives the notes of the file through \a write; null leaves them out */
    RtfReader(RtfTokenizer *tokens, QTextDocument *document, MVRTextRtfNotes *notes,
              RtfContentWriter write);

    // The parts
    RtfGroups &groups() { return m_groups; }
    RtfGroup &group() { return m_groups.current(); }
    const RtfGroup &group() const { return m_groups.current(); }
    RtfTextDecoder &text() { return m_text; }
    RtfHeaderReader &header() { return m_header; }
    RtfFormatReader &formatting() { return m_formatting; }
    RtfFieldReader &fields() { return m_fields; }
    RtfNoteReader &notes() { return m_notes; }
    RtfShapeReader &shapes() { return m_shapes; }
    RtfRowReader &rows() { return m_story.rows; }
    RtfStory &story() { return m_story; }
    RtfLists &lists() { return m_lists; }
    RtfResources &resources() { return m_resources; }
    RtfPicture &picture() { return m_picture; }

    // Groups and destinations
    /*! What a group that only collects its text has said; forgets it. */
    QString takeValue() { return std::exchange(m_value, QString()); }
    void addToValue(const QString &text) { m_value += text; }
    /*! \return false when the group's text goes somewhere else, or has been skipped */
    bool openDestination(const RtfDestination &destination);
    void skipDestination();
    /*! Ends what the group began; to be called before the group goes. */
    void closeDestination();
    void openUnicodeAlternative();

    // Text
    void addByte(int byte);
    void addUnicode(int value);
    void readCodedRun();
    int codePage() { return m_header.codePage(&group()); }

    // Paragraphs, sections and cells
    void resetChars();
    void resetPara();
    void setOldList(QTextListFormat::Style style);
    void endParagraph();
    void breakPage();
    void breakColumn();
    void beginSection(bool isContinuous) { m_isContinuous = isContinuous; }
    void setColumns(int columns) { m_columns = columns; }
    void endSection();
    void endCell();
    void endRow();
    void endNestedRow();

    // Lists
    /*! \leveltext: its bytes wait for the level's font, which may come behind them. */
    void keepLevelText();
    void finishListLevel();

    // What stands in the text
    void beginField(const RtfDestination &field);
    void finishField();
    void beginFieldResult(const RtfDestination &ignored);
    void beginPicture(const RtfDestination &picture);
    void finishPicture();
    void beginTextBox(const RtfDestination &box);
    void finishTextBox();
    void addShapeText();
    void beginFrame(int exact);
    void endFrame();
    void addBookmark();
    void beginNote(MVRTextRtfNote::Kind kind, const RtfDestination &note);
    void finishNote();
    /*! The text of the note that the value names begins or ends here. */
    void addNoteEdge(bool isStart);
    void beginPageText(const QString &word, const RtfDestination &text);
    void finishPageText();
    void addPageNumber();
    /*! One part of a time: year, month, day, hour, minute, counted from 0. */
    void setTime(int part, int value);
    void finishExactProperties();
    void takeDefaults();

    /*! Ends what is open. */
    void finish();

    /*! The default character format that the file carries, see \mvrdefaults; may be empty. */
    const QTextCharFormat &defaultFormat() const { return m_defaultFormat; }
    const QVariantMap &pageTexts() const { return m_pageTexts.texts(); }
    const RtfInfo &info() { return m_header.info(); }
    const MVRTextRtfLeftOut &leftOut() const { return m_leftOut; }

private:
    void addAscii(std::string_view text) override;
    void addCharacters(QStringView characters) override;
    void addControl(unsigned char byte) override;

    void countLeftOut(std::size_t length);
    RtfDocumentBuilder &builder() { return *m_story.builder; }
    void addLineEnd(unsigned char byte);
    void finishDestinations();
    void insertParagraph();
    void insertLastParagraph();
    RtfParagraphEnd takeParagraphEnd();
    int tableLevel() const;
    bool isOwnMark() const { return group().isVisible() && m_groups.isNested(); }
    int charFormat();
    int eastAsianFormat();
    void addEastAsian(QStringView characters);
    int takeAnchorFormat();

    RtfTokenizer &m_tokens;
    RtfResources m_resources;
    RtfLists m_lists;
    RtfFormatCache m_formats;
    RtfDocumentBuilder m_body;
    RtfStory m_story; // of the body or the innermost note

    RtfGroups m_groups;
    RtfTextDecoder m_text;
    RtfHeaderReader m_header;
    RtfFormatReader m_formatting;
    RtfFieldReader m_fields;
    RtfShapeReader m_shapes;
    RtfBookmarks m_bookmarks;
    RtfPicture m_picture;
    RtfNoteReader m_notes;
    RtfPageTextReader m_pageTexts;
    MVRTextRtfNotes *m_foundNotes;

    QString m_value; // text of the destination that is open
    QString m_levelText; // of the level of a list that is open
    QTextCharFormat m_defaultFormat;
    MVRTextRtfLeftOut m_leftOut;
    bool m_endsWithReturn = false; // the text so far ends with \'0d
    bool m_inHeader = true;
    bool m_isFloating = false; // m_picture is of a shape
    bool m_isContinuous = false; // of the section
    int m_columns = 1;
};
