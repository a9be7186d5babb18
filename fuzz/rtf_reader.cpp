// Reads any bytes as RTF; what was read must come through writing and reading again unchanged.
#include <core/MVRTextRtf.h>

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
        if (block.text() != again.text())
            std::abort();
    }
    if (block.isValid() || again.isValid())
        std::abort();
    return 0;
}
