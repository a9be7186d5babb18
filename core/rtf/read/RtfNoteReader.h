// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRtfNote.h>
#include <core/rtf/model/RtfNoteWords.h>
#include <core/rtf/read/RtfDocumentBuilder.h>
#include <core/rtf/read/RtfStory.h>

#include <QHash>
#include <QTextDocument>

#include <functional>
#include <memory>
#include <vector>

/*! Makes a file of its own of the content of a note. */
using RtfContentWriter = std::function<QByteArray(const QTextDocument &, const RtfInfo &)>;

/*!
    Footnotes and comments (RTF 1.9.1, "Footnotes", "Comments (Annotations)"): those that are open,
    and those that were read. Where a note stands is known when the document is complete.
*/
class RtfNoteReader
{
public:
    /*!
        \param isWanted  false leaves all notes out
        \param write     called at the end of each note
    */
    RtfNoteReader(bool isWanted, RtfContentWriter write)
        : m_isWanted(isWanted)
        , m_write(std::move(write))
    {
    }

    bool isWanted() const { return m_isWanted; }
    bool isInNote() const { return !m_open.empty(); }
    bool canBegin() const;
    /*!
        \param mark   where the note stands in the body; one in a note stands where that one does
        \param story  becomes that of the note
    */
    void begin(MVRTextRtfNote::Kind kind, const RtfDocumentBuilder &model, int mark,
               RtfStory *story);
    /*! The mark of the innermost open note, where isInNote(). */
    int mark() const { return m_open.back()->mark; }
    /*! \param story  becomes what it was around the note */
    void finish(RtfStory *story);
    MVRTextRtfNotes resolved(const RtfDocumentBuilder &body) const;

    // Words and values of notes; without an open note nothing happens.
    void setAuthor(const QString &name) { m_author = name; } /*!< of the next comment */
    void setInitials(const QString &initials) { m_initials = initials; }
    /*! One edge of the text that a comment is attached to: \atrfstart or \atrfend. */
    void addEdge(const QString &reference, const RtfStory &story, bool isStart);
    void setNumbered();
    void setEndNote();
    void setReference(const QString &reference);
    void setDate(const QString &number);
    void setData(const QString &text);
    QDateTime *time() { return isInNote() ? &m_open.back()->note.time : nullptr; }

private:
    struct OpenNote
    {
        MVRTextRtfNote note;
        int mark = 0;
        int reference = -1; // \atnref: number of the range that it belongs to, -1: none
        int length = -1; // of the text before it that it belongs to, -1: not said
        bool isNumbered = false; // the content begins with \chftn
        bool isNested = false;
        QTextDocument content;
        std::unique_ptr<RtfDocumentBuilder> builder;
        RtfStory outer;
    };
    struct FoundNote
    {
        MVRTextRtfNote note;
        int mark;
        int reference;
        int length;
    };

    bool m_isWanted;
    RtfContentWriter m_write;
    std::vector<std::unique_ptr<OpenNote>> m_open;
    std::vector<FoundNote> m_found;
    QHash<int, int> m_starts; // marks by reference
    QHash<int, int> m_ends;
    QString m_author;
    QString m_initials;
};
