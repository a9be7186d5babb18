// SPDX-License-Identifier: MIT
#pragma once

#include <text/MvrTextExport.h>

#include <QObject>

#include <memory>

class QTextCursor;
class QTextDocument;

/*!
    The words of a document while it is edited: an edit costs the paragraphs that it touches, a
    question nothing. What a word is says STextDoc::wordCountTextDocument().

    The counts are kept with the paragraphs, as their QTextBlock::userData(): a document that is
    counted so has no other user data.
*/
class MVRTEXT_EXPORT MVRWordCounter : public QObject
{
    Q_OBJECT

public:
    /*! Numbers of words. */
    struct Words
    {
        int all = 0; /*!< of the document's text */
        int outsideNotes = 0; /*!< of these without annotations and footnotes in the text */
    };

    /*!
        Counts \a document, which becomes the parent, and follows its edits from now on. The
        document gets its layout, without which Qt tells nothing of edits. Null: nothing is
        counted.
    */
    explicit MVRWordCounter(QTextDocument *document);

    /*! The words of the document as it stands. */
    Words words() const { return *m_total; }

    /*!
        The words of a selection; in a document that is counted, paragraphs that it holds whole are
        not counted again. 0 without a selection.
    */
    static int words(const QTextCursor &selection);

private:
    void count(int position, int removed, int added);

    QTextDocument *m_document;
    std::shared_ptr<Words> m_total; // outlives the document's paragraphs
};
