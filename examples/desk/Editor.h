// SPDX-License-Identifier: MIT
#pragma once

#include "Elements.h"

#include <text/MVRTextNote.h>

#include <QTextEdit>

#include <memory>

class CardColumn;
class Counts;
class MVRNoteHighlighter;
class MVRNotesModel;
class NoteFilter;

/*! The text on its page, with the cards of its notes beside it. */
class Editor : public QTextEdit
{
    Q_OBJECT

public:
    explicit Editor(QWidget *parent = nullptr);
    ~Editor() override;

    /*! Shows a document, which the editor owns from now on, and what belongs to it. */
    void show(std::unique_ptr<QTextDocument> document, const Elements &elements);
    const Elements &elements() const { return m_elements; }
    void setElement(const QString &name);

    MVRNotesModel *notes() const { return m_notes; }
    NoteFilter *filter() const { return m_filter; }
    CardColumn *cards() const { return m_cards; }
    const Counts &counts() const { return *m_counts; }

    /*! Gives a note other content, wherever it stands by now. */
    void changeNote(const MVRTextNote &note, const QByteArray &rtf);

    /*! Where the letter behind a position stands, in the editor's own coordinates. */
    QRect place(int position) const;
    /*! The text that is in sight. */
    MVRTextRange visibleText() const;
    void jumpTo(int position);
    /*! The text in sight moved, or other text stands there. */
    Q_SIGNAL void viewChanged();
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
    double pixelsPerPoint() const;

    Elements m_elements;
    MVRNotesModel *m_notes;
    NoteFilter *m_filter;
    CardColumn *m_cards;
    MVRNoteHighlighter *m_tints = nullptr; // of the document, like the next
    Counts *m_counts = nullptr;
    QMargins m_margins; // around the text
    int m_paper = 0; // of the page between its edge and the text's viewport, at both sides
};
