// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRTextNote.h>

#include <QSyntaxHighlighter>

/*!
    Shows where the notes of a document are: a tint behind the text, in a comment's own colour and
    one colour for each other kind.

    The document stays as it is: the tint lives in the layout of its view (additional formats), so
    that nothing of it is saved, copied or undone. One edit costs the paragraphs that it touches.
*/
class MVRTEXT_EXPORT MVRNoteHighlighter : public QSyntaxHighlighter
{
public:
    /*! Begins at once with \a document, which becomes the parent; null: with setDocument(). */
    explicit MVRNoteHighlighter(QTextDocument *document);

    /*!
        The tint of a kind.

        Comments have a colour of their own, which only its strength follows this one's alpha; the
        default tints are pale enough for black and for white text.
        \param kind   the kind of note
        \param color  with its alpha; an invalid colour shows no tint for this kind
    */
    void setTint(MVRTextNote::Kind kind, const QColor &color);
    /*! The tint of a kind, with its alpha. */
    QColor tint(MVRTextNote::Kind kind) const;

protected:
    /*! Tints the notes of one paragraph; Qt calls it. */
    void highlightBlock(const QString &text) override;

private:
    QColor background(const QTextCharFormat &format) const;

    QColor m_tints[4];
};
