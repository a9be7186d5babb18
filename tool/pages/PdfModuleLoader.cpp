// SPDX-License-Identifier: MIT
#include <tool/System.h>
#include <tool/pages/PdfModule.h>

#include <QCoreApplication>
#include <QDir>
#include <QLibrary>

#include <new>

namespace {

using Completion = decltype(&mvrtextCompletePdf);

// Beside the program where it was built, else where it is installed.
Completion loadCompletion()
{
    const QDir folder(QCoreApplication::applicationDirPath());
    for (const char *place : {"mvrpdf", "../" MVRTEXT_LIBRARIES "/mvrtext/mvrpdf"}) {
        QLibrary module(folder.filePath(QLatin1String(place)));
        if (const auto found = module.resolve("mvrtextCompletePdf"))
            return reinterpret_cast<Completion>(found);
    }
    return nullptr;
}

}

bool completePdf(QByteArray *pdf, const PdfExtras &extras)
{
    constexpr size_t takenByModule = 32 << 20;
    static const Completion complete = loadCompletion();
    if (!complete && !System::hasRoomFor(takenByModule))
        throw std::bad_alloc();
    return complete && complete(pdf, &extras);
}
