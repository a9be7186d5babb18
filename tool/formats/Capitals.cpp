// SPDX-License-Identifier: MIT
#include <tool/formats/Capitals.h>

#include <core/document/EditBlock_p.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QVector>

namespace {

/*! A run of text. */
struct FormatSpan
{
    int start;
    QString text;
    QTextCharFormat format;
};

}

void putInCapitals(QTextDocument &document)
{
    QTextCursor cursor(&document);
    const EditBlock editBlock(cursor);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QVector<FormatSpan> spans;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (fragment.charFormat().fontCapitalization() == QFont::AllUppercase)
                spans.append({fragment.position(), fragment.text(), fragment.charFormat()});
        }
        // From behind: a letter may become two.
        for (int i = spans.size(); i-- > 0;) {
            const QString capitals = spans[i].text.toUpper();
            cursor.setPosition(spans[i].start);
            cursor.setPosition(spans[i].start + spans[i].text.size(), QTextCursor::KeepAnchor);
            spans[i].format.setFontCapitalization(QFont::MixedCase);
            cursor.insertText(capitals, spans[i].format);
        }
    }
}
