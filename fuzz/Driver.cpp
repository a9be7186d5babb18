// SPDX-License-Identifier: MIT
// The program that libFuzzer drives; MVR_FUZZ_TARGET names what it calls.
#include <fuzz/Targets.h>

#include <QByteArray>
#include <QGuiApplication>
#include <QLoggingCategory>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto *application = new QGuiApplication(*argc, *argv); // lives as long as the process
    Q_UNUSED(application)
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    MVR_FUZZ_TARGET(
        QByteArray::fromRawData(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    return 0;
}
