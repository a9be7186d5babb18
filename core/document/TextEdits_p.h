// SPDX-License-Identifier: MIT
#pragma once

#include <core/document/EditBlock_p.h>

#include <QTextBlock>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QVector>

/*!
    Changes the text of each run of one format.

    \param change called as change(const QString &, const QTextCharFormat &); gives the text that is
                  to stand there, without paragraph ends
*/
template <typename Change> void changeTexts(QTextDocument *document, const Change &change)
{
    struct Run
    {
        int start;
        int end;
        QString text;
        QTextCharFormat format;
    };
    QVector<Run> changed;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QString before = fragment.text();
            const QString after = change(before, fragment.charFormat());
            if (after != before)
                changed.append({fragment.position(), fragment.position() + fragment.length(), after,
                                fragment.charFormat()});
        }
    }
    if (changed.isEmpty())
        return;
    const EditBlock edit(
        document); // outside of one, Qt looks through the paragraph for each change
    QTextCursor cursor(document);
    for (auto run = changed.crbegin(); run != changed.crend(); ++run) {
        cursor.setPosition(run->start);
        cursor.setPosition(run->end, QTextCursor::KeepAnchor);
        cursor.insertText(run->text, run->format);
    }
}
