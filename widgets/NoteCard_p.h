// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRTextNote.h>

#include <QFrame>

class MVRNoteHighlighter;
class QLabel;
class QTextEdit;

/*! A note in the margin: who wrote it, and what it says, which can be edited in place. */
class NoteCard : public QFrame
{
    Q_OBJECT

public:
    explicit NoteCard(QWidget *parent);

    const MVRTextNote &note() const { return m_note; }
    /*! Whether \a note is the one of the card, perhaps changed since. */
    bool shows(const MVRTextNote &note) const;
    /*! Shows a note; what is being written in the card stays. */
    void setNote(const MVRTextNote &note);
    /*! The active card shows all of its note, others the first lines, resolved ones their head. */
    void setActive(bool isActive);
    /*! The height for what the card is to show. */
    int wantedHeight(int width) const;
    QColor color() const;
    void edit();
    /*! Hands over what was written, if anything was. */
    void commit();

    /*! Another content was written. */
    Q_SIGNAL void edited(const MVRTextNote &note, const QByteArray &rtf);
    /*! The card has the keyboard now. */
    Q_SIGNAL void entered();
    /*! The writer goes back to the text. */
    Q_SIGNAL void left();
    Q_SIGNAL void heightChanged();

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void setColors();

    MVRTextNote m_note;
    bool m_isActive = false;
    QLabel *m_head;
    QTextEdit *m_body;
    MVRNoteHighlighter *m_tints; // of the body
};
