// SPDX-License-Identifier: MIT
#include "SampleManuscript.h"

#include <core/MVRToolkit.h>

#include <QStringList>
#include <QTextCursor>

namespace SampleManuscript {

Paragraph paragraph(Language language, int number)
{
    constexpr int wordsInParagraph = 100;
    static const char *const texts[]
        = {"the harbour was quiet and nobody counted boats before dawn",
           "гавань была тиха и никто не считал лодки до самого рассвета",
           "港は 静かで 夜明け 前に 船を 数える 者は 誰も いな かった"};
    const QStringList words = QString::fromUtf8(texts[language]).split(QLatin1Char(' '));
    QString text = QStringLiteral("\u201c");
    for (int word = 0; word < wordsInParagraph; ++word) {
        text += words.at((word * 7 + number) % words.size());
        if (language != Japanese)
            text += QLatin1Char(' ');
    }
    text += QStringLiteral("don\u2019t.\u201d");
    if (number % 5 != 0)
        return {{text, false}};
    return {{text.left(200), false}, {text.mid(200, 12), true}, {text.mid(212), false}};
}

void insertByHand(QTextCursor *cursor, const Paragraph &runs)
{
    static const QTextCharFormat plain = [] {
        QTextCharFormat format;
        MVRToolkit::setFontFamily(&format, QStringLiteral("Times New Roman"));
        format.setFontPointSize(12);
        return format;
    }();
    static const QTextCharFormat italic = [] {
        QTextCharFormat format = plain;
        format.setFontItalic(true);
        return format;
    }();
    static const QTextBlockFormat indented = [] {
        QTextBlockFormat format;
        format.setTextIndent(18);
        return format;
    }();
    cursor->insertBlock(indented, plain);
    for (const Run &run : runs)
        cursor->insertText(run.text, run.isItalic ? italic : plain);
}

} // namespace SampleManuscript
