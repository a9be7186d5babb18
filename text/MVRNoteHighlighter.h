// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRTextNote.h>

#include <QPointer>
#include <QTextLayout>

class QTextBlock;

/*!
    Shows where the notes of a document are: a tint behind the text, in a comment's own colour and
    one colour for each other kind.

    The document stays as it is: the tint lives in the layout of its view (additional formats), so
    that nothing of it is saved, copied or undone. One edit costs the paragraphs that it touches,
    all paragraphs together one layout of the document; Qt's own QSyntaxHighlighter has one made for
    each paragraph. A document has one highlighter of either class.
*/
class MVRTEXT_EXPORT MVRNoteHighlighter : public QObject
{
public:
    /*! Begins at once with \a document, which becomes the parent and gets its layout; does nothing
        for null. */
    explicit MVRNoteHighlighter(QTextDocument *document);
    /*! Takes the tints away. */
    ~MVRNoteHighlighter() override;

    /*! The document that is tinted; null where none was given. */
    QTextDocument *document() const;

    /*!
        The tint of a kind. Notes that are resolved have none.

        Comments have a colour of their own, which only its strength follows this one's alpha; the
        default tints are pale enough for black and for white text.
        \param kind   the kind of note
        \param color  with its alpha; an invalid colour shows no tint for this kind
    */
    void setTint(MVRTextNote::Kind kind, const QColor &color);
    /*! The tint of a kind, with its alpha. */
    QColor tint(MVRTextNote::Kind kind) const;

    /*!
        Shows text that is black by its format, or has no colour, in another one: what a dark page
        needs, since files say "black" where they mean the usual colour.

        \param color  an invalid one, which holds before the first call, leaves all text as it is
    */
    void setTextColor(const QColor &color);

    /*! Looks at all paragraphs, as after a change of what looks() answers. */
    void rehighlight();

protected:
    /*!
        How a paragraph looks beside its own formats: ranges from left to right that do not overlap,
        counted from the paragraph's start. A host that shows more than notes adds to it, and calls
        rehighlight() once, since it was not asked while this class was made.
    */
    virtual QVector<QTextLayout::FormatRange> looks(const QTextBlock &block) const;

private:
    void follow(int position, int removed, int added);
    void show(const QTextBlock &block, QVector<QTextLayout::FormatRange> looks) const;
    QColor background(const QTextCharFormat &format) const;
    QTextCharFormat look(const QTextCharFormat &format) const;

    QPointer<QTextDocument> m_document;
    QColor m_tints[4];
    QColor m_textColor;
};
