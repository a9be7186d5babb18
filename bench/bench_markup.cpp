// SPDX-License-Identifier: MIT
// What inline markup costs, beside the same edits made by hand.
//
// Arguments of every benchmark: codes of each kind, pieces per paragraph (0: one paragraph). A
// piece has a note of each kind, preserved formatting, a linked image and a marker.

#include <core/MVRFormat.h>
#include <core/MVRTextFormat.h>
#include <text/MVRTextDoc.h>

#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

enum Content { Marked, Written };

QTextCharFormat marked(int property)
{
    QTextCharFormat format;
    format.setProperty(property, true);
    return format;
}

QTextImageFormat linkedImage(int number)
{
    QTextImageFormat format;
    format.setName(QStringLiteral("picture"));
    format.setWidth(40);
    format.setHeight(30);
    format.setProperty(MVRTextFormat::ImageLinkProperty,
                       QStringLiteral("/no such folder/%1.png").arg(number % 100));
    return format;
}

std::unique_ptr<QTextDocument> manuscript(const benchmark::State &state, Content content)
{
    const int pieces = int(state.range(0));
    const int piecesPerParagraph = int(state.range(1));
    const QTextCharFormat annotation = marked(MVRTextFormat::InlineAnnotationProperty);
    const QTextCharFormat footnote = marked(MVRTextFormat::InlineFootnoteProperty);
    const QTextCharFormat preserved = marked(MVRTextFormat::PreserveFormattingProperty);
    auto document = std::make_unique<QTextDocument>();
    document->setUndoRedoEnabled(false);
    QTextCursor cursor(document.get());
    cursor.beginEditBlock();
    for (int i = 0; i < pieces; ++i) {
        cursor.insertText(QStringLiteral("Some words of the text, "), QTextCharFormat());
        cursor.insertText(QStringLiteral("an annotation"), annotation);
        cursor.insertText(QStringLiteral(" and words "), QTextCharFormat());
        cursor.insertText(QStringLiteral("a footnote"), footnote);
        cursor.insertText(QStringLiteral(" <$MvrKeepWithNext>"), QTextCharFormat());
        cursor.insertText(QStringLiteral("as it is"), preserved);
        cursor.insertImage(linkedImage(i));
        if (piecesPerParagraph > 0 && i % piecesPerParagraph == piecesPerParagraph - 1)
            cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
    }
    cursor.endEditBlock();
    if (content == Written)
        MVRTextDoc::toInlineMarkup(document.get());
    document->setUndoRedoEnabled(true);
    return document;
}

/*! Runs \a change on a fresh document each time; only the change is timed. */
template <typename Change>
void change(benchmark::State &state, Content content, const Change &change)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto document = manuscript(state, content);
        state.ResumeTiming();
        change(document.get());
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
}

/*! The floor: as many insertions, from the last to the first. */
void insertByHand(benchmark::State &state)
{
    change(state, Marked, [&state](QTextDocument *document) {
        const int length = document->characterCount();
        const int count = int(state.range(0)) * 7;
        QTextCursor cursor(document);
        cursor.beginEditBlock();
        for (int i = count; i-- > 0;) {
            cursor.setPosition(int(qint64(length) * i / count));
            cursor.insertText(QStringLiteral("{\\Mvrn_fn="));
        }
        cursor.endEditBlock();
    });
}

void write(benchmark::State &state)
{
    change(state, Marked, MVRTextDoc::toInlineMarkup);
}

void writeWithoutUndo(benchmark::State &state)
{
    change(state, Marked, [](QTextDocument *document) {
        document->setUndoRedoEnabled(false);
        MVRTextDoc::toInlineMarkup(document);
    });
}

void read(benchmark::State &state)
{
    change(state, Written, MVRTextDoc::fromInlineMarkup);
}

void makeEndNotes(benchmark::State &state)
{
    change(state, Marked, [](QTextDocument *document) {
        const auto notes = MVRTextDoc::inlineFootnotesToEndNotes(document, 1, QTextCharFormat(),
                                                                 MVRFormat::MultiMarkdown);
        benchmark::DoNotOptimize(notes.size());
    });
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    for (const int piecesPerParagraph : {4, 0}) {
        for (const int pieces : {20000, 40000, 80000})
            benchmark->Args({pieces, piecesPerParagraph});
    }
    benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK(insertByHand)->Apply(sizes);
BENCHMARK(write)->Apply(sizes);
BENCHMARK(writeWithoutUndo)->Apply(sizes);
BENCHMARK(read)->Apply(sizes);
BENCHMARK(makeEndNotes)->Apply(sizes);

} // namespace
