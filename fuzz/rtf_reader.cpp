// SPDX-License-Identifier: MIT
// Reads any bytes as RTF; what was read must come through writing and reading again unchanged.
#include <core/MVRTextRtf.h>
#include <text/MVRTextDoc.h>

#include <QGuiApplication>
#include <QTextBlock>
#include <QTextDocument>

#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto *application = new QGuiApplication(*argc, *argv); // lives as long as the process
    Q_UNUSED(application)
    return 0;
}

// The platform's own, at the end of the process.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig\nleak:QPlatformScreen\nleak:QScreen\nleak:libqoffscreen\n";
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    const auto input
        = QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<int>(size));
    QTextDocument first;
    if (!MVRTextRtf::fromRtfCData(input, &first))
        return 0;
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
        return 0;
    MVRTextRtfNotes notesAgain;
    MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&first, true, notes), &second, &notesAgain);
    if (notesAgain.size() != notes.size())
        std::abort();
    MVRTextDoc::fromRtf(input, &first);
    MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&first), &second);
    if (!MVRTextDoc::hasInspectorCommentsOrFootnotes(&second))
        std::abort();
    return 0;
}
