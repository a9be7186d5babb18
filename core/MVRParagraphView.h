// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QObject>
#include <QPointer>

class QTextBlockFormat;
class QTextDocument;

/*!
    Lets a view on stock Qt, a QTextEdit for example, show the paragraphs of the application as they
    are meant to look, while they are edited.

    Stock Qt ignores the indents and line spacings of the application (MVRTextFormat): an imported
    screenplay stands at the left margin. As long as a view lives, each such paragraph also has the
    margins, first-line indent and line height that show the same. They follow what is edited,
    split, joined, pasted, undone and redone: what the view adds belongs to the undo step of the
    edit that made it necessary. They are not the document's own: the writers and
    MVRToolkit::toStockParagraphs() look past them by ownFormat().

    \code
    auto *view = new MVRParagraphView(edit->document());
    view->setTextWidth(edit->viewport()->width() - 2 * edit->document()->documentMargin());
    \endcode
*/
class MVRCORE_EXPORT MVRParagraphView : public QObject
{
    Q_OBJECT

public:
    /*!
        Begins to show the paragraphs of \a document, which becomes the parent. The document gets
        its layout, and an undo history that was there is lost; whether it counts as modified stays.
        Nothing happens for null.
    */
    explicit MVRParagraphView(QTextDocument *document);
    /*! Takes what the view added from the document, and with it the undo history. */
    ~MVRParagraphView() override;

    /*!
        Sets the distance between the text margins, from which right indents are measured; 468
        points (letter paper) before the first call. A change ends the undo history.

        \param width  in the document's units (points at 72 dpi); at most 0, more than
                      100,000 and what is no number are ignored
    */
    void setTextWidth(double width);
    /*! The distance between the text margins, in the document's units. */
    double textWidth() const { return m_textWidth; }

    /*!
        Shows the lengths of all paragraphs (margins, indents, fixed line heights) larger or
        smaller, those of stock Qt too; 1 before the first call. Qt lays text out in pixels of the
        screen, of which a font of 12 points takes 16 at 96 dpi, and takes lengths for pixels as
        they are: with logicalDpiY() / 72.0 both are of one measure. A change ends the undo
        history.

        \param factor  pixels per point; at most 0, more than 100 and what is no number are ignored
    */
    void setScale(double factor);
    /*! Pixels per point; 1 before the first setScale(). */
    double scale() const { return m_scale; }

    /*!
        A paragraph format as it is without any view: what a writer writes.

        \return \a format itself when no view changed it
    */
    static QTextBlockFormat ownFormat(const QTextBlockFormat &format);

private:
    void noteChange(int position, int removed, int added);
    void follow();
    void showAll(bool on);
    QTextBlockFormat shown(const QTextBlockFormat &format) const;
    QTextBlockFormat scaled(QTextBlockFormat format) const;

    QPointer<QTextDocument> m_document;
    double m_textWidth = 468.0;
    double m_scale = 1.0;
    int m_dirtyStart = -1; // what changed since the last look, in UTF-16 code units; -1: nothing
    int m_dirtyEnd = -1;
    bool m_isEditing = false;
};
