// SPDX-License-Identifier: MIT
#include <tool/formats/TextOutput.h>

#include <tool/System.h>

#include <QRegularExpression>
#include <QTextBlock>

namespace {

constexpr int largeText = 1 << 20; // characters

}

QByteArray withFinalNewline(QString text)
{
    if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n')))
        text += QLatin1Char('\n');
    if (text.size() > largeText)
        System::giveMemoryBack(); // a text that grows leaves copies of itself behind
    return text.toUtf8();
}

void dropBlankParagraphs(QString &text)
{
    static const QRegularExpression blankLines(QStringLiteral("\\n(?:[ \\t]*\\n){2,}"));
    text.replace(blankLines, QStringLiteral("\n\n"));
    text = text.trimmed();
}

bool hasSpaceBefore(const QTextBlock &block)
{
    return block.blockNumber() > 0 && block.blockFormat().topMargin() >= 6.0;
}
