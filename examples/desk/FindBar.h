// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QTextDocument>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QTextEdit;

/*! Finds and replaces, also by regular expressions. */
class FindBar : public QWidget
{
    Q_OBJECT

public:
    FindBar(QTextEdit *edit, QWidget *parent);

    /*! Shows the bar, with what is selected as the text to find. */
    void open();
    /*! Selects the next match, beginning anew behind the last one. */
    void findNext();
    void findPrevious();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QRegularExpression expression() const;
    void find(QTextDocument::FindFlags flags);
    void replace();
    void replaceAll();
    void say(const QString &text);

    QTextEdit *m_edit;
    QLineEdit *m_before;
    QLineEdit *m_after;
    QCheckBox *m_isExpression;
    QCheckBox *m_matchesCase;
    QLabel *m_answer;
};
