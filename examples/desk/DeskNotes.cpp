// SPDX-License-Identifier: MIT
// The window's part that is about notes.
#include "CardColumn.h"
#include "DeskWindow.h"
#include "Editor.h"
#include "NoteCard.h"
#include "NoteEdits.h"
#include "NoteFilter.h"

#include <QInputDialog>
#include <QSettings>
#include <QStatusBar>

QString DeskWindow::author() const
{
    const QString fallback = qEnvironmentVariable("USER");
    return QSettings().value(QStringLiteral("author"), fallback).toString();
}

void DeskWindow::askForName()
{
    bool isGiven = false;
    const QString name = QInputDialog::getText(this, tr("Your name"), tr("Who writes the notes:"),
                                               QLineEdit::Normal, author(), &isGiven);
    if (isGiven)
        QSettings().setValue(QStringLiteral("author"), name);
}

void DeskWindow::addNote(MVRTextNote::Kind kind)
{
    const MVRTextRange range = NoteEdits::add(m_editor->textCursor(), kind, author());
    if (range.start == range.end)
        return statusBar()->showMessage(tr("There is no word for the note."), 3000);
    m_editor->jumpTo(range.start);
    if (!MVRTextNote::isInline(kind))
        goToCard();
}

void DeskWindow::goToCard()
{
    m_editor->cards()->follow();
    if (NoteCard *card = m_editor->cards()->activeCard())
        card->edit();
}

/*! The row of the note at the text cursor; -1 where there is none. */
int DeskWindow::currentNote() const
{
    const int position = m_editor->textCursor().position();
    const int row = m_editor->notes()->rowAt(position);
    return row < 0 && position > 0 ? m_editor->notes()->rowAt(position - 1) : row;
}

void DeskWindow::jumpToNote(int direction)
{
    const NoteFilter *filter = m_editor->filter();
    const int position = m_editor->textCursor().position();
    const int row
        = direction > 0 ? filter->firstFrom(position + 1) : filter->firstFrom(position) - 1;
    if (row >= 0 && row < filter->rowCount())
        m_editor->jumpTo(filter->note(row).range.start);
}

void DeskWindow::setNoteColor(const QColor &color)
{
    m_editor->cards()->commit();
    const MVRTextNote note = m_editor->notes()->note(currentNote());
    if (color.isValid() && currentNote() >= 0 && note.kind == MVRTextNote::Comment)
        NoteEdits::setColor(m_editor->document(), note, color);
}

void DeskWindow::removeNote()
{
    const int row = currentNote();
    if (row >= 0)
        NoteEdits::remove(m_editor->document(), m_editor->notes()->note(row));
    m_editor->setFocus();
}

void DeskWindow::encloseNotes()
{
    bool isGiven = false;
    const QString marks
        = QInputDialog::getText(this, tr("Enclose annotations"),
                                tr("What stands in front of an annotation, a blank, what behind:"),
                                QLineEdit::Normal, QStringLiteral("[ ]"), &isGiven);
    if (isGiven)
        NoteEdits::enclose(m_editor->document(), marks.section(QLatin1Char(' '), 0, 0),
                           marks.section(QLatin1Char(' '), 1));
}
