// SPDX-License-Identifier: MIT
// The memory that reading RTF takes at its peak, beside inserting the same runs by hand.
#include "PeakMemory.h"
#include "SampleManuscript.h"

#include <core/MVRTextRtf.h>

#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>

#include <cstdio>

namespace {

using namespace SampleManuscript;

void insertBook(QTextDocument *document, Language language)
{
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    for (int number = 0; number < paragraphs; ++number)
        insertByHand(&cursor, paragraph(language, number));
    cursor.endEditBlock();
}

// "insert", "write" or "read", the number of the language, the file. Prints kilobytes.
int measure(const QStringList &arguments)
{
    const QString work = arguments.at(1);
    const auto language = static_cast<Language>(arguments.at(2).toInt());
    QFile file(arguments.at(3));
    const long before = peakKilobytes();
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    if (work == QLatin1String("read")) {
        if (!file.open(QIODevice::ReadOnly) || !MVRTextRtf::fromRtfCData(file.readAll(), &document))
            return 1;
    } else {
        insertBook(&document, language);
    }
    if (work == QLatin1String("write")
        && (!file.open(QIODevice::WriteOnly)
            || file.write(MVRTextRtf::toRtfCData(&document, true)) < 0))
        return 1;
    std::printf("%ld", peakKilobytes() - before);
    return 0;
}

long peakOf(const char *work, Language language, const QString &file)
{
    return printedBy({QString::fromLatin1(work), QString::number(language), file});
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    if (application.arguments().size() == 4)
        return measure(application.arguments());
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("book.rtf"));
    std::printf("%-10s %12s %12s %12s %8s %8s\n", "peak, MB", "by hand", "reading", "writing",
                "read", "write");
    for (const Language language : {English, Russian, Japanese}) {
        static const char *const names[] = {"English", "Russian", "Japanese"};
        const double hand = static_cast<double>(peakOf("insert", language, file));
        const double write = static_cast<double>(peakOf("write", language, file));
        const double read = static_cast<double>(peakOf("read", language, file));
        if (hand <= 0 || write <= 0 || read <= 0)
            return 1;
        std::printf("%-10s %12.1f %12.1f %12.1f %8.2f %8.2f\n", names[language], hand / 1024,
                    read / 1024, write / 1024, read / hand, write / hand);
    }
    return 0;
}
