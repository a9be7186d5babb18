// SPDX-License-Identifier: MIT
#include <tool/Place.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>

Place::Place(const MVRTextRange &range, const QTextDocument &document)
{
    const QTextBlock first = document.findBlock(range.start);
    const QTextBlock last = document.findBlock(qMax(range.start, range.end - 1));
    paragraph = first.blockNumber() + 1;
    start = range.start - first.position();
    endParagraph = last.blockNumber() + 1;
    end = range.end - last.position();
}

QString Place::toWords() const
{
    QString words = QStringLiteral("%1:%2-").arg(paragraph).arg(start);
    if (endParagraph != paragraph)
        words += QString::number(endParagraph) + QLatin1Char(':');
    return words + QString::number(end);
}

QJsonObject Place::toJson() const
{
    return {{QStringLiteral("paragraph"), paragraph},
            {QStringLiteral("start"), start},
            {QStringLiteral("endParagraph"), endParagraph},
            {QStringLiteral("end"), end}};
}

QString selectedText(const MVRTextRange &range, QTextDocument &document)
{
    return range.toTextCursor(&document).selection().toPlainText();
}
