// SPDX-License-Identifier: MIT
#include <tool/pages/PageBreaks.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>

void wrapLines(QTextDocument &text)
{
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        if (!block.blockFormat().nonBreakableLines())
            continue;
        QTextBlockFormat format = block.blockFormat();
        format.clearProperty(QTextFormat::BlockNonBreakableLines);
        format.setProperty(KeptTogether, true);
        QTextCursor(block).setBlockFormat(format);
    }
}

void takeBreaks(QTextDocument &text)
{
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = block.blockFormat();
        if (!format.hasProperty(QTextFormat::PageBreakPolicy))
            continue;
        format.setProperty(PageBreaks, int(format.pageBreakPolicy()));
        format.clearProperty(QTextFormat::PageBreakPolicy);
        QTextCursor(block).setBlockFormat(format);
    }
    const QList<QTextFrame *> frames = text.findChildren<QTextFrame *>();
    for (QTextFrame *frame : frames) {
        QTextFrameFormat format = frame->frameFormat();
        if (!format.hasProperty(QTextFormat::PageBreakPolicy))
            continue;
        format.setProperty(PageBreaks, int(format.pageBreakPolicy()));
        format.clearProperty(QTextFormat::PageBreakPolicy);
        frame->setFrameFormat(format);
    }
}
