// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/lex/RtfCodePages.h>
#include <core/rtf/lex/RtfTokenizer.h>
#include <core/rtf/model/RtfFormats.h>
#include <core/rtf/model/RtfLists.h>
#include <core/rtf/model/RtfPicture.h>
#include <core/rtf/model/RtfProps.h>
#include <core/rtf/read/RtfBuilder.h>
#include <core/rtf/read/RtfDestinations.h>
#include <core/rtf/read/RtfHeader.h>
#include <core/rtf/read/RtfNotes.h>
#include <core/rtf/read/RtfStyles.h>

#include <memory>
#include <utility>
#include <vector>

struct RtfWord;

/*! What a `{` saves and a `}` brings back (RTF 1.9.1, "Groups"). */
struct RtfGroup
{
    RtfCharProps chars;
    RtfParaProps para;
    const RtfDestination *destination = &RtfDestinations::body;
    const RtfDestination *uprOuter = nullptr; /*!< destination around an \upr */
    bool opensDestination = false;
    int unicodeSkip = 1; /*!< \uc: characters of fallback behind each \u */
    int field = -1; /*!< number of the field that the group is part of */
    int charFormat = -1; /*!< number of the format for chars, -1: to be looked up */
    int codePage = -1; /*!< of the font in chars, -1: to be looked up */
};

/*!
    Reads an RTF file into an empty document.

    One pass over the tokens with an explicit stack of groups. The control words stand in a table
    (RtfWords) whose functions call back into the public part of this class; the document itself
    is the builder's. Nothing in a file makes it fail: unknown words and destinations are passed
    over by RTF's own rules, and input that ends early ends the document.
*/
class RtfReader
{
public:
    /*!
        \param rtf    the file, from its first `{` on; must outlive the reader
        \param notes  receives the notes of the file; null leaves them out
    */
    RtfReader(const QByteArray &rtf, QTextDocument *document, MVRTextRtfNotes *notes = nullptr);

    /*! Tells whether \a rtf begins, after white space, with `{\rtf`. */
    static bool isRtf(const QByteArray &rtf);

    void read();

    /*! The default character format that the file carries, see \mvrdefaults; may be empty. */
    const QTextCharFormat &defaultFormat() const { return m_defaultFormat; }

    /*! What \info says about the file. */
    const RtfInfo &info() const { return m_info; }

    // For the functions of the control words.
    RtfGroup &group() { return m_group; }
    RtfResources &tables() { return m_tables; }
    RtfFontTable &fontTable() { return m_fontTable; }
    RtfColorTable &colorTable() { return m_colorTable; }
    RtfStyles &styles() { return m_styles; }
    RtfLists &lists() { return m_lists; }
    /*! The row that \trowd, \cellx and their kin describe. */
    RtfRowFormat &row();
    RtfCellFormat &nextCell() { return m_nextCell; }

    /*! Text of the document, of a note or of a text box. */
    bool inBody() const { return m_group.destination->isBody; }
    /*! Body text that a reader of the file would see: neither hidden nor a deleted revision. */
    bool isVisible() const { return inBody() && !m_group.chars.hidden && !m_group.chars.deleted; }

    bool inPicture() const { return m_group.destination == &RtfDestinations::picture; }
    bool inStyleSheet() const { return m_group.destination == &RtfDestinations::styleSheet; }

    void charsChanged() { m_group.charFormat = -1; }
    void setFont(int number);
    void resetChars();
    void setTabType(QTextOption::TabType type) { m_tabType = type; }
    void addTab(int twips);
    void applyParagraphStyle(int number);
    void applyCharStyle(int number);
    void beginStyle();
    void finishStyle();
    void resetPara();
    void appendCharacter(char16_t character);
    void appendUnicode(int value);
    void endParagraph();
    void breakPage();
    void breakColumn();
    void endCell();
    void endRow();
    void endNestedRow();
    void beginRow();
    void addCellFormat(int right);
    void setOldList(QTextListFormat::Style style);
    void addCollected(const QString &text) { m_collected += text; }
    void dropCollected() { m_collected.clear(); }
    void finishLevelText();
    void openWithin(const RtfDestination *around, const RtfDestination *destination);
    void endSection();
    void setColumns(int columns) { m_columns = columns; }
    void setSectionContinuous(bool continuous) { m_continuousSection = continuous; }

    void openDestination(const RtfDestination *destination);
    void skipDestination();
    void openUnicodeAlternative();

    void setCodePage(int codePage);
    void setCharset(int charset);
    void setDefaultFont(int number);
    void setFromMac();
    void beginPicture();
    RtfPicture &picture() { return m_picture; }
    void finishPicture();
    void takeDefaults();

    void beginField();
    void beginFieldResult();
    void addFieldInstruction(const QString &text);
    void finishFieldInstruction();
    void finishExactProperties();

    void beginFrame(int exact);
    void endFrame();
    void beginShape();
    void beginTextBox();
    void finishTextBox();
    void setShapeProperty() { m_shapeProperty = takeCollected(); }
    void addShapeText();
    void addBookmark();
    void setTitle() { m_info.title = takeCollected(); }
    void setAuthor() { m_info.author = takeCollected(); }

    void beginNote(MVRTextRtfNote::Kind kind);
    void finishNote();
    void openNoteWord(const RtfDestination *around, const RtfDestination *destination);
    void setNoteNumber();
    void setEndNote();
    void setNoteAuthor() { m_noteAuthor = takeCollected(); }
    void setNoteInitials() { m_noteInitials = takeCollected(); }
    void addRangeEdge(bool isStart);
    void setNoteReference();
    void setNoteDate();
    void setNoteTime(int component, int value);
    void setNoteData();

private:
    struct Field
    {
        QString instruction;
        int parent = -1;
        int link = 0;
        QString shown; // in place of its result
    };

    /*! A paragraph that waits for the end of the text box that is anchored in it. */
    struct Box
    {
        RtfParagraph paragraph;
        RtfParaProps para;
    };

    bool handle(const RtfToken &token);
    void handleWord(const RtfToken &token);
    void handleSymbol(char symbol);
    void pushGroup();
    bool popGroup();
    void finish();

    void addText(const RtfToken &token);
    void addByte(unsigned char byte);
    void flushBytes();
    void put(std::string_view ascii);
    void put(QStringView text);
    void putUnit(char16_t unit);
    void putLoneSurrogate();
    void putCodedRun();
    bool skipFallback();
    void takeRawTrailByte();
    int codePage();
    int lookUpCodePage() const;
    int charFormat();
    int anchorFormat();
    void insertParagraph();
    void insertLastParagraph();
    void resolveNotes();
    QString takeCollected() { return std::exchange(m_collected, QString()); }
    RtfOpenNote *openNote() { return m_openNotes.empty() ? nullptr : m_openNotes.back().get(); }
    RtfParagraphEnd paragraphEnd();
    int tableLevel() const;
    bool isOwnMark() const;

    RtfTokenizer m_tokens;
    QTextDocument *m_document;
    RtfResources m_tables;
    RtfLists m_lists;
    RtfFormatCache m_formats;
    RtfBuilder m_body;
    RtfBuilder *m_builder = &m_body; // of the body or the innermost note
    RtfFontTable m_fontTable;
    RtfColorTable m_colorTable;
    RtfStyles m_styles;
    RtfCodePages m_codePages;

    std::vector<RtfGroup> m_outer; // the groups around m_group
    RtfGroup m_group;
    qint64 m_uncounted = 0; // groups nested deeper than the stack goes

    QByteArray m_bytes; // of characters beyond ASCII, until the run of them ends
    int m_bytesCodePage = 0;
    bool m_leadByte = false; // m_bytes ends within a character
    char16_t m_highSurrogate = 0; // waits for its second half
    int m_fallback = 0; // characters still to be skipped behind a \u

    RtfCharProps m_plain; // what \plain goes back to
    int m_codePage = RtfCodePages::Western;
    bool m_fromMac = false;
    bool m_inHeader = true;
    bool m_ignorable = false; // the last token was \*
    bool m_pageBreak = false; // the next paragraph starts a page
    bool m_sectionBreak = false;
    bool m_continuousSection = false;
    int m_columns = 1; // of the section

    QTextOption::TabType m_tabType = QTextOption::LeftTab; // of the next \\tx
    RtfRowFormat m_row;
    RtfRowFormat m_nestedRow;
    RtfCellFormat m_nextCell; // what was said since the last \cellx

    RtfPicture m_picture;
    std::vector<Field> m_fields;
    std::vector<Box> m_boxes;
    QString m_shapeProperty; // whose value comes next
    QStringList m_bookmarks; // that wait for the next character
    int m_bookmarkCount = 0;
    RtfInfo m_info;

    MVRTextRtfNotes *m_notes;
    std::vector<std::unique_ptr<RtfOpenNote>> m_openNotes;
    RtfFoundNotes m_foundNotes;
    QString m_noteAuthor; // of the next comment
    QString m_noteInitials;
    QString m_collected; // text of the destination that is open
    QTextCharFormat m_defaultFormat;
};
