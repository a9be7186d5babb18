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
    /*! Selects the next match in a direction, beginning anew behind the last one. */
    void find(QTextDocument::FindFlags flags = {});

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QLineEdit *addField(const QString &prompt, const QString &name);
    bool isUsable();
    void replace();
    void replaceAll();
    void say(const QString &text);

    QTextEdit *m_edit;
    QLineEdit *m_before;
    QLineEdit *m_after;
    QCheckBox *m_isExpression;
    QCheckBox *m_matchesCase;
    QLabel *m_answer;
    QRegularExpression m_wanted;
};
