// SPDX-License-Identifier: MIT
#include <widgets/MVRFindBar.h>

#include <text/MVRTextDoc.h>

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextEdit>

MVRFindBar::MVRFindBar(QTextEdit *edit, QWidget *parent)
    : QWidget(parent)
    , m_edit(edit)
    , m_isExpression(new QCheckBox(tr("E&xpression")))
    , m_matchesCase(new QCheckBox(tr("Match &case")))
    , m_answer(new QLabel)
{
    new QHBoxLayout(this);
    m_before = addField(tr("Find"), tr("Text to find"));
    m_after = addField(tr("Replace by"), tr("Text to put in its place"));
    layout()->addWidget(m_isExpression);
    layout()->addWidget(m_matchesCase);
    const auto addButton = [this](const QString &text, auto run) {
        auto *button = new QPushButton(text);
        connect(button, &QPushButton::clicked, this, run);
        layout()->addWidget(button);
    };
    addButton(tr("&Next"), [this] { find(); });
    addButton(tr("&Previous"), [this] { find(QTextDocument::FindBackward); });
    addButton(tr("&Replace"), [this] { replace(); });
    addButton(tr("Replace &all"), [this] { replaceAll(); });
    layout()->addWidget(m_answer);
    connect(m_before, &QLineEdit::returnPressed, this, [this] { find(); });
    connect(m_after, &QLineEdit::returnPressed, this, &MVRFindBar::replace);
    hide();
}

QLineEdit *MVRFindBar::addField(const QString &prompt, const QString &name)
{
    auto *field = new QLineEdit;
    field->setPlaceholderText(prompt);
    field->setAccessibleName(name);
    layout()->addWidget(field);
    return field;
}

void MVRFindBar::open()
{
    const QString selected = m_edit->textCursor().selectedText();
    if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator))
        m_before->setText(selected);
    show();
    m_before->setFocus();
    m_before->selectAll();
}

void MVRFindBar::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        return QWidget::keyPressEvent(event);
    hide();
    m_edit->setFocus();
}

void MVRFindBar::say(const QString &text)
{
    m_answer->setText(text);
    m_answer->setAccessibleName(text);
}

/*! Takes what is wanted from the fields, and says what is wrong with it. */
bool MVRFindBar::isUsable()
{
    const QString text = m_before->text();
    m_wanted.setPattern(m_isExpression->isChecked() ? text : QRegularExpression::escape(text));
    m_wanted.setPatternOptions(m_matchesCase->isChecked()
                                   ? QRegularExpression::NoPatternOption
                                   : QRegularExpression::CaseInsensitiveOption);
    say(m_wanted.isValid() ? QString() : m_wanted.errorString());
    return m_wanted.isValid() && !text.isEmpty();
}

void MVRFindBar::find(QTextDocument::FindFlags flags)
{
    if (!isUsable())
        return;
    if (m_matchesCase->isChecked())
        flags |= QTextDocument::FindCaseSensitively;
    QTextCursor found = m_edit->document()->find(m_wanted, m_edit->textCursor(), flags);
    if (found.isNull()) { // once around
        QTextCursor start(m_edit->document());
        if (flags & QTextDocument::FindBackward)
            start.movePosition(QTextCursor::End);
        found = m_edit->document()->find(m_wanted, start, flags);
    }
    if (found.isNull())
        return say(tr("Not found"));
    m_edit->setTextCursor(found);
}

void MVRFindBar::replace()
{
    const QString selected = m_edit->textCursor().selectedText();
    if (!isUsable())
        return;
    if (!selected.isEmpty() && m_wanted.match(selected).capturedLength() == selected.size())
        m_edit->textCursor().insertText(m_after->text());
    find();
}

void MVRFindBar::replaceAll()
{
    if (!isUsable())
        return;
    const int count
        = MVRTextDoc::replaceAll(m_wanted, m_after->text(), QTextCursor(m_edit->document()));
    say(count < 0 ? tr("The expression takes too long") : tr("%n replaced", nullptr, count));
}
