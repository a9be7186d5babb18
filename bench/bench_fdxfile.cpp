// SPDX-License-Identifier: MIT
// Editing a Final Draft file in place, each step beside what it is measured against: inserting the
// same runs by hand, copying the bytes, the writer that goes through the document alone. Compare
// lines of one run only.

#include "SampleScreenplay.h"

#include <finaldraft/MVRFinalDraftFile.h>
#include <finaldraft/MVRFinalDraftWriter.h>

#include <QBuffer>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <benchmark/benchmark.h>

#include <map>
#include <memory>

namespace {

struct Run
{
    QString text;
    QTextCharFormat format;
};

struct Block
{
    QTextBlockFormat format;
    QVector<Run> runs;
};

/*! One screenplay in the forms that the benchmarks start from. */
struct Sample
{
    QByteArray xml;
    MVRFinalDraftFile file;
    QTextDocument document;
    QList<MVRScriptElement> elements;
    QVector<Block> blocks;
};

bool load(MVRFinalDraftFile *file, const QByteArray &xml)
{
    QBuffer buffer;
    buffer.setData(xml);
    buffer.open(QIODevice::ReadOnly);
    return file->load(&buffer);
}

const Sample &sample(qint64 bytes)
{
    static std::map<qint64, std::unique_ptr<Sample>> samples;
    std::unique_ptr<Sample> &entry = samples[bytes];
    if (entry)
        return *entry;
    entry = std::make_unique<Sample>();
    entry->xml = sampleScreenplay(int(bytes));
    if (!load(&entry->file, entry->xml) || !entry->file.read(&entry->document))
        qFatal("The sample screenplay cannot be read.");
    const QHash<QString, MVRFinalDraft::ElementSettings> settings = entry->file.elementSettings();
    for (const MVRFinalDraft::ElementSettings &setting : settings) {
        MVRScriptElement element(setting.type);
        element.setBlockFormat(setting.parBlockFormat());
        element.setCharFormat(setting.textCharFormat());
        entry->elements.append(element);
    }
    for (QTextBlock block = entry->document.begin(); block.isValid(); block = block.next()) {
        // By hand nobody gives every block a format of its own.
        QTextBlockFormat format = block.blockFormat();
        format.clearProperty(MVRFinalDraftFile::SourceParagraphProperty);
        QVector<Run> runs;
        for (auto it = block.begin(); !it.atEnd(); ++it)
            runs.append({it.fragment().text(), it.fragment().charFormat()});
        entry->blocks.append({format, runs});
    }
    return *entry;
}

void insertByHand(benchmark::State &state)
{
    const Sample &input = sample(state.range(0));
    for (auto _ : state) {
        QTextDocument document;
        document.setUndoRedoEnabled(false);
        QTextCursor cursor(&document);
        cursor.beginEditBlock();
        for (const Block &block : input.blocks) {
            cursor.insertBlock(block.format);
            for (const Run &run : block.runs)
                cursor.insertText(run.text, run.format);
        }
        cursor.endEditBlock();
        benchmark::DoNotOptimize(document.blockCount());
    }
}

void loadAndRead(benchmark::State &state)
{
    const Sample &input = sample(state.range(0));
    for (auto _ : state) {
        MVRFinalDraftFile file;
        QTextDocument document;
        load(&file, input.xml);
        file.read(&document);
        benchmark::DoNotOptimize(document.blockCount());
    }
}

void loadOnly(benchmark::State &state)
{
    const Sample &input = sample(state.range(0));
    for (auto _ : state) {
        MVRFinalDraftFile file;
        benchmark::DoNotOptimize(load(&file, input.xml));
    }
}

void write(MVRFinalDraftFile &file, const QTextDocument &document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    file.write(&buffer, &document);
    benchmark::DoNotOptimize(buffer.size());
}

void copyBytes(benchmark::State &state)
{
    const Sample &input = sample(state.range(0));
    for (auto _ : state) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        buffer.write(input.xml);
        benchmark::DoNotOptimize(buffer.size());
    }
}

void writeUnchanged(benchmark::State &state)
{
    const Sample &input = sample(state.range(0));
    MVRFinalDraftFile file;
    QTextDocument document;
    load(&file, input.xml);
    file.read(&document);
    for (auto _ : state)
        write(file, document);
}

void writeOneEdit(benchmark::State &state)
{
    const Sample &input = sample(state.range(0));
    MVRFinalDraftFile file;
    QTextDocument document;
    load(&file, input.xml);
    file.read(&document);
    QTextCursor cursor(document.findBlockByNumber(document.blockCount() / 2));
    for (auto _ : state) {
        cursor.insertText(QStringLiteral("x"));
        write(file, document);
    }
}

void writeThroughDocument(benchmark::State &state)
{
    const Sample &input = sample(state.range(0));
    for (auto _ : state) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        MVRFinalDraftWriter writer;
        writer.write(&buffer, &input.document, input.elements);
        benchmark::DoNotOptimize(buffer.size());
    }
}

constexpr int megabyte = 1000 * 1000;

void sizes(benchmark::internal::Benchmark *measured)
{
    measured->Arg(3 * megabyte)->Arg(30 * megabyte)->Unit(benchmark::kMillisecond);
}

BENCHMARK(insertByHand)->Apply(sizes);
BENCHMARK(loadAndRead)->Apply(sizes);
BENCHMARK(loadOnly)->Apply(sizes);
BENCHMARK(copyBytes)->Apply(sizes);
BENCHMARK(writeUnchanged)->Apply(sizes);
BENCHMARK(writeOneEdit)->Apply(sizes);
BENCHMARK(writeThroughDocument)->Apply(sizes);

}
