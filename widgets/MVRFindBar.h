// SPDX-License-Identifier: MIT
#pragma once

#include <QRegularExpression>
#include <QTextDocument>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QTextEdit;

/*!
    Finds and replaces in a text, also by regular expressions. Hidden until open(); the Escape key
    goes back to the text.

    What is replaced keeps the format of the text around it, its notes included; replacing all is
    one undo step.
*/
class MVRFindBar : public QWidget
{
    Q_OBJECT

public:
    /*! \param edit  the text, not null, which may get other documents */
    explicit MVRFindBar(QTextEdit *edit, QWidget *parent = nullptr);

    /*! Shows the bar, with what is selected as the text to find. */
    void open();
    /*!
        Selects the next match in a direction, beginning anew behind the last one.

        \param flags  QTextDocument::FindBackward or nothing
    */
    void find(QTextDocument::FindFlags flags = {});

protected:
    /*! Escape closes the bar. */
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
