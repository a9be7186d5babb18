// SPDX-License-Identifier: MIT
// Reads any bytes as RTF; what was read must come through writing and reading again unchanged.
#include <core/MVRTextRtf.h>
#include <fuzz/Targets.h>
#include <text/MVRTextDoc.h>

#include <QTextBlock>
#include <QTextDocument>

#include <cstdlib>

void fuzz_rtf_reader(const QByteArray &input)
{
    QTextDocument first;
    if (!MVRTextRtf::fromRtfCData(input, &first))
        return;
    const QByteArray written = MVRTextRtf::toRtfCData(&first, false);
    QTextDocument second;
    if (!MVRTextRtf::fromRtfCData(written, &second))
        std::abort();
    QTextBlock block = first.begin();
    QTextBlock again = second.begin();
    for (; block.isValid() && again.isValid(); block = block.next(), again = again.next()) {
        // The number of a block's list or table is the document's own affair.
        QTextBlockFormat format = block.blockFormat();
        QTextBlockFormat formatAgain = again.blockFormat();
        format.clearProperty(QTextFormat::ObjectIndex);
        formatAgain.clearProperty(QTextFormat::ObjectIndex);
        if (block.text() != again.text() || format.properties() != formatAgain.properties()
            || !block.textList() != !again.textList())
            std::abort();
    }
    if (block.isValid() || again.isValid())
        std::abort();

    MVRTextRtfNotes notes;
    MVRTextRtf::fromRtfCData(input, &first, &notes);
    if (notes.isEmpty())
        return;
    MVRTextRtfNotes notesAgain;
    MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&first, true, notes), &second, &notesAgain);
    if (notesAgain.size() != notes.size())
        std::abort();
    MVRTextDoc::fromRtf(input, &first);
    MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&first), &second);
    if (!MVRTextDoc::hasInspectorCommentsOrFootnotes(&second))
        std::abort();
}
