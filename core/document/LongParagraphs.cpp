// SPDX-License-Identifier: MIT
#include <core/document/LongParagraphs_p.h>

#include <QTextBlock>
#include <QTextBoundaryFinder>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextLayout>

#include <vector>

namespace {

constexpr int maxWord = 1000; // letters
constexpr int window = 200; // letters at its end that are searched for a place
constexpr ushort zeroWidthSpace = 0x200B;

bool separatesWords(QChar c)
{
    return c.unicode() == zeroWidthSpace || c == QChar::LineSeparator
        || (c.isSpace() && c.decompositionTag() != QChar::NoBreak);
}

// The last place in a text where a line may break, else where a letter ends, else its end.
int lastBreak(const QString &text)
{
    for (const auto type : {QTextBoundaryFinder::Line, QTextBoundaryFinder::Grapheme}) {
        QTextBoundaryFinder finder(type, text);
        finder.toEnd();
        const int place = int(finder.toPreviousBoundary());
        if (place > 0)
            return place;
    }
    return text.size();
}

void breakWordsOf(const QTextBlock &block)
{
    const QString text = block.text();
    std::vector<QTextCursor> places; // set before the first edit: each looks through the paragraph
    int start = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (separatesWords(text.at(i))) {
            start = i + 1;
        } else if (i + 1 - start == maxWord) {
            start = i + 1 - window + lastBreak(text.mid(i + 1 - window, window));
            QTextCursor place(block);
            place.setPosition(block.position() + start);
            places.push_back(place);
        }
    }
    for (QTextCursor &place : places) {
        const QTextCharFormat format = place.charFormat();
        place.insertText(QString(QChar(zeroWidthSpace)),
                         format.isImageFormat() ? QTextCharFormat() : format);
    }
}

}

void breakLongWords(QTextDocument &text)
{
    QTextCursor step(&text);
    step.beginEditBlock();
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        if (block.length() > maxWord)
            breakWordsOf(block);
    }
    step.endEditBlock();
}

void keepLongParagraphs(const QTextDocument &text)
{
    constexpr int linesOfPages = 200;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        if (block.layout()->lineCount() > linesOfPages)
            block.layout()->setCacheEnabled(true);
    }
}
