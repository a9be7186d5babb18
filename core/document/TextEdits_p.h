// SPDX-License-Identifier: MIT
#pragma once

#include <core/document/EditBlock_p.h>
#include <core/document/TextFragments_p.h>

#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
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
    for (FragmentWalker walker(document, 0); walker.isValid(); walker.next()) {
        const QString before = walker.text();
        const QString after = change(before, walker.format());
        if (after != before)
            changed.append({walker.start(), walker.end(), after, walker.format()});
    }
    if (changed.isEmpty())
        return;
    // Outside of one, Qt looks through the paragraph for each change.
    const EditBlock edit(document);
    QTextCursor cursor(document);
    for (auto run = changed.crbegin(); run != changed.crend(); ++run) {
        cursor.setPosition(run->start);
        cursor.setPosition(run->end, QTextCursor::KeepAnchor);
        cursor.insertText(run->text, run->format);
    }
}
