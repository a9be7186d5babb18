// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <memory>

class QTextBlock;
class QTextCursor;
class QTextDocument;

/*!
    The words of a document, kept with each of its paragraphs: an edit costs the paragraphs that it
    touches, a question nothing.
*/
class Counts : public QObject
{
public:
    struct Words
    {
        int all = 0;
        int outsideNotes = 0; /*!< without annotations and footnotes in the text */
    };

    /*! Begins to count \a document, which becomes the parent. */
    explicit Counts(QTextDocument *document);

    Words words() const { return *m_total; }
    /*! The words of a selection; paragraphs that it holds whole are not counted again. */
    static int words(const QTextCursor &selection);

private:
    void count(int position, int removed, int added);

    QTextDocument *m_document;
    std::shared_ptr<Words> m_total; // outlives the document's paragraphs
};
