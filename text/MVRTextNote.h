// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextFormat.h>
#include <core/MVRTextRange.h>
#include <text/MvrTextExport.h>

#include <QByteArray>
#include <QColor>
#include <QDateTime>
#include <QString>
#include <QVector>

class QTextDocument;

/*!
    One note of a document, of any of the four kinds; see MVRTextDoc::notes().

    A value that keeps nothing of its document: it tells where the note was when it was listed. Text
    and content are made when they are asked for.
*/
struct MVRTEXT_EXPORT MVRTextNote
{
    /*! Where a note lives, and what it is. */
    enum Kind {
        Comment, /*!< an inspector comment */
        Footnote, /*!< an inspector footnote */
        InlineAnnotation, /*!< text that is an annotation */
        InlineFootnote /*!< text that is a footnote */
    };
    /*! All kinds, in the order of their numbers. */
    static constexpr Kind allKinds[] = {Comment, Footnote, InlineAnnotation, InlineFootnote};

    /*! Whether notes of a kind are text of the document. */
    static constexpr bool isInline(Kind kind)
    {
        return kind == InlineAnnotation || kind == InlineFootnote;
    }
    /*! Whether notes of a kind are footnotes. */
    static constexpr bool isFootnote(Kind kind)
    {
        return kind == Footnote || kind == InlineFootnote;
    }

    Kind kind = Comment; /*!< of the note */
    /*! The text that an inspector note is attached to, or that is the inline note. */
    MVRTextRange range;
    QColor color; /*!< of inspector comments; else invalid */
    QString author; /*!< of inspector notes; empty when it is not known */
    QDateTime date; /*!< when the note was written; invalid when that is not known */
    QString anchor; /*!< of inspector notes: "Comment:…" or "Footnote:…", another one for each note
                         that was attached, the same in copies of it */
    QByteArray cdata; /*!< content of inspector notes as RTF; may be empty */
    bool isResolved = false; /*!< of inspector notes: needs nobody any more */

    /*! Whether the note is text of the document. */
    bool isInline() const { return isInline(kind); }
    /*! Whether the note is a footnote. */
    bool isFootnote() const { return isFootnote(kind); }

    /*!
        The text in the note's range, a line feed at each paragraph's end.

        \param document  the one that the note was listed in, not changed since
    */
    QString text(const QTextDocument &document) const;

    /*!
        What the note says, as plain text; of an inline note its text.

        \param document  as for text()
        \return empty when there is no content or it cannot be read
    */
    QString contentText(const QTextDocument &document) const;
    /*! The same as HTML, a whole file. */
    QString contentHtml(const QTextDocument &document) const;

    /*! The property that is true in the formats of such notes. */
    static MVRTextFormat::Property property(Kind kind);
};
using MVRTextNotes = QVector<MVRTextNote>;
