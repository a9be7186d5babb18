// SPDX-License-Identifier: MIT
#include <core/STextDoc.h>
#include <fuzz/Observers.h>
#include <fuzz/Require.h>
#include <text/MVRTextDoc.h>

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace {

bool isEqual(const MVRTextNote &one, const MVRTextNote &other)
{
    return one.kind == other.kind && one.range == other.range && one.color == other.color
        && one.author == other.author && one.date == other.date && one.anchor == other.anchor
        && one.cdata == other.cdata && one.isResolved == other.isResolved;
}

// Qt tells nothing of edits without a layout; its own ends the process over what floats in tables.
class NoLayout : public QAbstractTextDocumentLayout
{
public:
    explicit NoLayout(QTextDocument *document)
        : QAbstractTextDocumentLayout(document)
    {
    }
    void draw(QPainter *, const PaintContext &) override { }
    int hitTest(const QPointF &, Qt::HitTestAccuracy) const override { return -1; }
    int pageCount() const override { return 1; }
    QSizeF documentSize() const override { return QSizeF(); }
    QRectF frameBoundingRect(QTextFrame *) const override { return QRectF(); }
    QRectF blockBoundingRect(const QTextBlock &) const override { return QRectF(); }

protected:
    void documentChanged(int, int, int) override { }
};

QTextDocument *withoutLayout(QTextDocument *document)
{
    document->setDocumentLayout(new NoLayout(document));
    return document;
}

}

Observers::Observers(QTextDocument *document)
    : m_document(*withoutLayout(document))
    , m_filter(&m_notes)
    , m_counter(new MVRWordCounter(document))
    , m_highlighter(new Highlighter(document))
{
    m_notes.setDocument(document);
    m_filter.setShowsResolved(false);
}

void Observers::check() const
{
    checkNotes();
    checkWords();
    checkLooks();
}

void Observers::checkNotes() const
{
    const MVRTextNotes notes = MVRTextDoc::notes(&m_document);
    require(m_notes.rowCount() == notes.size(), "a model has the notes of its document");
    int shown = 0;
    for (int row = 0; row < notes.size(); ++row) {
        require(isEqual(m_notes.note(row), notes[row]), "a note of a model is as in the document");
        require(m_notes.index(row, MVRNotesModel::TextColumn).data().toString()
                    == notes[row].text(m_document),
                "a model gives the text of a note");
        if (!notes[row].isResolved)
            require(isEqual(m_filter.note(shown++), notes[row]), "a filter shows open notes");
    }
    require(m_filter.rowCount() == shown, "a filter shows open notes only");
}

void Observers::checkWords() const
{
    const int words = STextDoc::wordCountTextDocument(m_document);
    require(m_counter->words().all == words, "words are counted while they are written");
    require(m_counter->words().outsideNotes <= words, "words in notes are some of all");
    QTextCursor all(&m_document);
    all.select(QTextCursor::Document);
    require(MVRWordCounter::words(all) == words, "all text selected has all words");
}

void Observers::checkLooks() const
{
    for (QTextBlock block = m_document.begin(); block.isValid(); block = block.next())
        require(block.layout()->formats() == m_highlighter->looks(block),
                "tints are where notes are");
}
