// SPDX-License-Identifier: MIT
// The memory that editing a Final Draft file in place takes at its peak, beside the document made
// by hand and the file.
#include "PeakMemory.h"
#include "SampleScreenplay.h"

#include <finaldraft/MVRFinalDraftFile.h>

#include <QDataStream>
#include <QFile>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <cstdio>

namespace {

/*! Writes a screenplay, and its paragraphs as insertByHand() takes them, one by one. */
bool makeSample(int bytes, const QString &script, const QString &blocks)
{
    QFile scriptFile(script);
    QFile blocksFile(blocks);
    if (!scriptFile.open(QIODevice::WriteOnly) || !blocksFile.open(QIODevice::WriteOnly))
        return false;
    scriptFile.write(sampleScreenplay(bytes));
    scriptFile.close();
    MVRFinalDraftFile file;
    QTextDocument document;
    if (!file.load(script) || !file.read(&document))
        return false;
    QDataStream stream(&blocksFile);
    const QVector<SampleBlock> all = sampleBlocks(document);
    for (const SampleBlock &block : all) {
        stream << static_cast<const QTextFormat &>(block.format) << int(block.runs.size());
        for (const SampleRun &run : block.runs)
            stream << run.text << static_cast<const QTextFormat &>(run.format);
    }
    return true;
}

bool insert(const QString &blocks, QTextDocument *document)
{
    QFile file(blocks);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QDataStream stream(&file);
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    while (!stream.atEnd()) {
        QTextFormat format;
        int count = 0;
        stream >> format >> count;
        cursor.insertBlock(format.toBlockFormat());
        for (int i = 0; i < count; ++i) {
            QString text;
            stream >> text >> format;
            cursor.insertText(text, format.toCharFormat());
        }
    }
    cursor.endEditBlock();
    return true;
}

bool edit(const QString &script, bool writes, QTextDocument *document)
{
    MVRFinalDraftFile file;
    if (!file.load(script) || !file.read(document))
        return false;
    if (!writes)
        return true;
    QTextCursor(document->findBlockByNumber(document->blockCount() / 2))
        .insertText(QStringLiteral("x"));
    QFile target(script + QStringLiteral(".new"));
    return target.open(QIODevice::WriteOnly) && file.write(&target, document);
}

// "insert", "read" or "write", and the file. Prints kilobytes.
int measure(const QString &work, const QString &name)
{
    const long before = peakKilobytes();
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    const bool isDone = work == QLatin1String("insert")
        ? insert(name, &document)
        : edit(name, work == QLatin1String("write"), &document);
    std::printf("%ld", peakKilobytes() - before);
    return isDone ? 0 : 1;
}

}

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3)
        return measure(arguments.at(1), arguments.at(2));
    if (arguments.size() == 4)
        return makeSample(arguments.at(1).toInt(), arguments.at(2), arguments.at(3)) ? 0 : 1;
    const QTemporaryDir folder;
    const QString script = folder.filePath(QStringLiteral("script.fdx"));
    const QString blocks = folder.filePath(QStringLiteral("blocks"));
    std::printf("%-10s %10s %10s %10s %8s %8s\n", "peak, MB", "by hand", "read", "written", "read",
                "written");
    for (const int megabytes : {3, 30, 100}) {
        // Not here: what a process has had at its peak, its children begin with.
        printedBy({QString::number(megabytes * 1000 * 1000), script, blocks});
        const double hand = double(printedBy({QStringLiteral("insert"), blocks})) / 1024;
        const double read = double(printedBy({QStringLiteral("read"), script})) / 1024;
        const double write = double(printedBy({QStringLiteral("write"), script})) / 1024;
        const double floor = hand + megabytes;
        std::printf("%7d MB %10.1f %10.1f %10.1f %8.2f %8.2f\n", megabytes, hand, read, write,
                    read / floor, write / floor);
    }
    return 0;
}
