// SPDX-License-Identifier: MIT
// Reading and writing Final Draft files, each beside the floor it is measured against: what the
// toolkit alone needs for the same tree and the same runs. Compare lines of one run only.

#include "SampleScreenplay.h"

#include <finaldraft/MVRFinalDraftReader.h>
#include <finaldraft/MVRFinalDraftWriter.h>

#include <QBuffer>
#include <QDomDocument>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <benchmark/benchmark.h>

namespace {

bool readSample(QIODevice *xml, QTextDocument *document,
                QHash<QString, MVRFinalDraft::ElementSettings> *settings)
{
    MVRFinalDraftReader reader;
    return reader.load(xml) && reader.read(document, {}) && reader.readElements(settings);
}

QDomElement appended(QDomDocument &dom, QDomElement parent, const QString &tag)
{
    QDomElement element = dom.createElement(tag);
    parent.appendChild(element);
    return element;
}

void readFloor(benchmark::State &state)
{
    const Sample &input = sample(state.range(0), readSample);
    for (auto _ : state) {
        QDomDocument dom;
        dom.setContent(input.xml);
        QTextDocument document;
        insertByHand(input.blocks, &document);
        benchmark::DoNotOptimize(document.blockCount());
    }
    state.SetBytesProcessed(state.iterations() * input.xml.size());
}

void read(benchmark::State &state)
{
    const Sample &input = sample(state.range(0), readSample);
    for (auto _ : state) {
        QBuffer buffer;
        buffer.setData(input.xml);
        buffer.open(QIODevice::ReadOnly);
        MVRFinalDraftReader reader;
        QTextDocument document;
        reader.load(&buffer);
        reader.read(&document, {});
        benchmark::DoNotOptimize(document.blockCount());
    }
    state.SetBytesProcessed(state.iterations() * input.xml.size());
}

void writeFloor(benchmark::State &state)
{
    const Sample &input = sample(state.range(0), readSample);
    for (auto _ : state) {
        QDomDocument dom;
        QDomElement root = dom.createElement(QStringLiteral("FinalDraft"));
        dom.appendChild(root);
        const QDomElement content = appended(dom, root, QStringLiteral("Content"));
        for (const SampleBlock &block : input.blocks) {
            QDomElement paragraph = appended(dom, content, QStringLiteral("Paragraph"));
            paragraph.setAttribute(QStringLiteral("Type"), QStringLiteral("Action"));
            for (const SampleRun &run : block.runs) {
                QDomElement text = appended(dom, paragraph, QStringLiteral("Text"));
                text.setAttribute(QStringLiteral("AdornmentStyle"), QStringLiteral("0"));
                text.setAttribute(QStringLiteral("Color"), QStringLiteral("#000000000000"));
                text.setAttribute(QStringLiteral("Background"), QStringLiteral("#FFFFFFFFFFFF"));
                text.setAttribute(QStringLiteral("Font"), QStringLiteral("Courier Final Draft"));
                text.setAttribute(QStringLiteral("Style"), QString());
                text.setAttribute(QStringLiteral("Size"), QStringLiteral("12"));
                text.setAttribute(QStringLiteral("RevisionID"), QStringLiteral("0"));
                text.appendChild(dom.createTextNode(run.text));
            }
        }
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        buffer.write(dom.toByteArray());
        benchmark::DoNotOptimize(buffer.size());
    }
    state.SetBytesProcessed(state.iterations() * input.xml.size());
}

void write(benchmark::State &state)
{
    const Sample &input = sample(state.range(0), readSample);
    for (auto _ : state) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        MVRFinalDraftWriter writer;
        writer.write(&buffer, &input.document, input.elements);
        benchmark::DoNotOptimize(buffer.size());
    }
    state.SetBytesProcessed(state.iterations() * input.xml.size());
}

constexpr int megabyte = 1000 * 1000;

// One size after the other: what a large round leaves in the heap slows the first small one.
BENCHMARK(readFloor)->Arg(3 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(read)->Arg(3 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(writeFloor)->Arg(3 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(write)->Arg(3 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(readFloor)->Arg(30 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(read)->Arg(30 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(writeFloor)->Arg(30 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(write)->Arg(30 * megabyte)->Unit(benchmark::kMillisecond);

}
