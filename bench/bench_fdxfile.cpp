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

namespace {

bool load(MVRFinalDraftFile *file, const QByteArray &xml)
{
    QBuffer buffer;
    buffer.setData(xml);
    buffer.open(QIODevice::ReadOnly);
    return file->load(&buffer);
}

bool readSample(QIODevice *xml, QTextDocument *document,
                QHash<QString, MVRFinalDraft::ElementSettings> *settings)
{
    MVRFinalDraftFile file;
    if (!file.load(xml) || !file.read(document))
        return false;
    *settings = file.elementSettings();
    return true;
}

void insertRuns(benchmark::State &state)
{
    const Sample &input = sample(state.range(0), readSample);
    for (auto _ : state) {
        QTextDocument document;
        insertByHand(input.blocks, &document);
        benchmark::DoNotOptimize(document.blockCount());
    }
}

void loadAndRead(benchmark::State &state)
{
    const Sample &input = sample(state.range(0), readSample);
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
    const Sample &input = sample(state.range(0), readSample);
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
    const Sample &input = sample(state.range(0), readSample);
    for (auto _ : state) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        buffer.write(input.xml);
        benchmark::DoNotOptimize(buffer.size());
    }
}

void writeUnchanged(benchmark::State &state)
{
    const Sample &input = sample(state.range(0), readSample);
    MVRFinalDraftFile file;
    QTextDocument document;
    load(&file, input.xml);
    file.read(&document);
    for (auto _ : state)
        write(file, document);
}

void writeOneEdit(benchmark::State &state)
{
    const Sample &input = sample(state.range(0), readSample);
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
    const Sample &input = sample(state.range(0), readSample);
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

// What is to grow no faster than the file.
void largeSizes(benchmark::internal::Benchmark *measured)
{
    measured->Apply(sizes)->Arg(100 * megabyte);
}

BENCHMARK(insertRuns)->Apply(largeSizes);
BENCHMARK(loadAndRead)->Apply(largeSizes);
BENCHMARK(loadOnly)->Apply(largeSizes);
BENCHMARK(copyBytes)->Apply(largeSizes);
BENCHMARK(writeUnchanged)->Apply(largeSizes);
BENCHMARK(writeOneEdit)->Apply(largeSizes);
BENCHMARK(writeThroughDocument)->Apply(sizes);

}
