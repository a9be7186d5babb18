// SPDX-License-Identifier: MIT
#include "FindBar.h"

#include <text/MVRTextDoc.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>

FindBar::FindBar(QTextEdit *edit, QWidget *parent)
    : QWidget(parent)
    , m_edit(edit)
    , m_before(new QLineEdit(this))
    , m_after(new QLineEdit(this))
    , m_isExpression(new QCheckBox(tr("E&xpression"), this))
    , m_matchesCase(new QCheckBox(tr("Match &case"), this))
    , m_answer(new QLabel(this))
{
    m_before->setAccessibleName(tr("Text to find"));
    m_before->setPlaceholderText(tr("Find"));
    m_after->setAccessibleName(tr("Text to put in its place"));
    m_after->setPlaceholderText(tr("Replace by"));
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(m_before, 2);
    layout->addWidget(m_after, 2);
    layout->addWidget(m_isExpression);
    layout->addWidget(m_matchesCase);
    const auto addButton = [&](const QString &text, void (FindBar::*slot)()) {
        auto *button = new QPushButton(text, this);
        connect(button, &QPushButton::clicked, this, slot);
        layout->addWidget(button);
    };
    addButton(tr("&Next"), &FindBar::findNext);
    addButton(tr("&Previous"), &FindBar::findPrevious);
    addButton(tr("&Replace"), &FindBar::replace);
    addButton(tr("Replace &all"), &FindBar::replaceAll);
    layout->addWidget(m_answer, 1);
    connect(m_before, &QLineEdit::returnPressed, this, &FindBar::findNext);
    connect(m_after, &QLineEdit::returnPressed, this, &FindBar::replace);
    hide();
}

void FindBar::open()
{
    const QString selected = m_edit->textCursor().selectedText();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
        m_before->setText(selected);
    show();
    m_before->setFocus();
    m_before->selectAll();
}

void FindBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return QWidget::keyPressEvent(event);
    hide();
    m_edit->setFocus();
}

QRegularExpression FindBar::expression() const
{
    const QString text = m_before->text();
    return QRegularExpression(m_isExpression->isChecked() ? text : QRegularExpression::escape(text),
                              m_matchesCase->isChecked()
                                  ? QRegularExpression::NoPatternOption
                                  : QRegularExpression::CaseInsensitiveOption);
}

void FindBar::say(const QString &text)
{
    m_answer->setText(text);
    m_answer->setAccessibleName(text);
}

void FindBar::findNext()
{
    find(QTextDocument::FindFlags());
}

void FindBar::findPrevious()
{
    find(QTextDocument::FindBackward);
}

void FindBar::find(QTextDocument::FindFlags flags)
{
    const QRegularExpression wanted = expression();
    if (!wanted.isValid() || m_before->text().isEmpty())
        return say(wanted.isValid() ? QString() : wanted.errorString());
    if (m_matchesCase->isChecked())
        flags |= QTextDocument::FindCaseSensitively;
    say(QString());
    QTextCursor found = m_edit->document()->find(wanted, m_edit->textCursor(), flags);
    if (found.isNull()) { // once around
        QTextCursor start(m_edit->document());
        if (flags & QTextDocument::FindBackward)
            start.movePosition(QTextCursor::End);
        found = m_edit->document()->find(wanted, start, flags);
    }
    if (found.isNull())
        return say(tr("Not found"));
    m_edit->setTextCursor(found);
}

void FindBar::replace()
{
    const QTextCursor selected = m_edit->textCursor();
    const QRegularExpressionMatch match = expression().match(selected.selectedText());
    if (selected.hasSelection() && match.capturedLength() == selected.selectedText().size())
        m_edit->textCursor().insertText(m_after->text());
    findNext();
}

void FindBar::replaceAll()
{
    const QRegularExpression wanted = expression();
    if (!wanted.isValid() || m_before->text().isEmpty())
        return say(wanted.isValid() ? QString() : wanted.errorString());
    const int count
        = MVRTextDoc::replaceAll(wanted, m_after->text(), QTextCursor(m_edit->document()));
    say(tr("%n replaced", nullptr, count));
}
