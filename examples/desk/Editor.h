// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRScreenplayElements.h>

#include <QTextEdit>

#include <memory>

class MVRNoteHighlighter;
class MVRNoteMargin;
class MVRNotesFilter;
class MVRNotesModel;
class MVRWordCounter;

/*! The text on its page, with the cards of its notes beside it. */
class Editor : public QTextEdit
{
    Q_OBJECT

public:
    explicit Editor(QWidget *parent = nullptr);
    ~Editor() override;

    /*! Shows a document with all that belongs to it. */
    void show(std::shared_ptr<QTextDocument> document, const MVRScreenplayElements &elements);
    const MVRScreenplayElements &elements() const { return m_elements; }
    void setElement(const QString &name) { m_elements.apply(textCursor(), name); }

    MVRNotesModel *notes() const { return m_notes; }
    MVRNotesFilter *filter() const { return m_filter; }
    MVRNoteMargin *margin() const { return m_margin; }
    const MVRWordCounter &words() const { return *m_words; }

    void jumpTo(int position);
    /*! Somebody dropped a file. */
    Q_SIGNAL void fileDropped(const QString &path);

    QMimeData *createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void arrange();
    void paintPage();
    void setColors();

    std::shared_ptr<QTextDocument> m_document;
    MVRScreenplayElements m_elements;
    MVRNotesModel *m_notes;
    MVRNotesFilter *m_filter;
    MVRNoteMargin *m_margin;
    MVRNoteHighlighter *m_tints = nullptr; // of the document, like the next
    MVRWordCounter *m_words = nullptr;
    QMargins m_margins; // around the text
    int m_paper = 0; // of the page between its edge and the text's viewport, at both sides
};
