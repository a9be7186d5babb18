// SPDX-License-Identifier: MIT
// What counting, appending, replacing, cloning and the clipboard cost, beside the toolkit's own
// work on the same document.
//
// Arguments of every benchmark: words, words per paragraph (0: one paragraph).

#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QMimeData>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextBoundaryFinder>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using DocumentPtr = std::unique_ptr<QTextDocument>;

/*! Text in which every tenth word is bold and every twentieth is "Replace". */
DocumentPtr manuscript(const benchmark::State &state)
{
    const int words = int(state.range(0));
    const int wordsPerParagraph = int(state.range(1));
    auto document = std::make_unique<QTextDocument>();
    document->setUndoRedoEnabled(false);
    QTextCursor cursor(document.get());
    cursor.beginEditBlock();
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    for (int i = 1; i <= words; ++i) {
        const QString word
            = i % 20 == 0 ? QStringLiteral("Replace ") : QStringLiteral("some%1 ").arg(i % 97);
        cursor.insertText(word, i % 10 == 0 ? bold : QTextCharFormat());
        if (wordsPerParagraph > 0 && i % wordsPerParagraph == 0)
            cursor.insertBlock();
    }
    cursor.endEditBlock();
    document->setUndoRedoEnabled(true);
    return document;
}

/*! The floor of counting: every paragraph's text and Qt's own division into words. */
void findBoundaries(benchmark::State &state)
{
    const DocumentPtr document = manuscript(state);
    for (auto _ : state) {
        int words = 0;
        for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
            QTextBoundaryFinder finder(QTextBoundaryFinder::Word, block.text());
            while (finder.toNextBoundary() >= 0)
                words += finder.boundaryReasons() & QTextBoundaryFinder::StartOfItem ? 1 : 0;
        }
        benchmark::DoNotOptimize(words);
    }
}

void countWords(benchmark::State &state)
{
    const DocumentPtr document = manuscript(state);
    for (auto _ : state)
        benchmark::DoNotOptimize(MVRTextDoc::wordCount(*document, false, false));
}

/*! Runs \a change on fresh documents each time, one of text and one of what \a fill makes. */
template <typename Fill, typename Change>
void change(benchmark::State &state, const Fill &fill, const Change &change)
{
    for (auto _ : state) {
        state.PauseTiming();
        DocumentPtr document = manuscript(state);
        DocumentPtr other = fill();
        state.ResumeTiming();
        change(document.get(), other.get());
        state.PauseTiming();
        document.reset();
        other.reset();
        state.ResumeTiming();
    }
}

DocumentPtr emptyDocument()
{
    return std::make_unique<QTextDocument>();
}

/*! A document whose one paragraph begins a page. */
DocumentPtr newPage()
{
    DocumentPtr document = emptyDocument();
    QTextBlockFormat format;
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    QTextCursor(document.get()).setBlockFormat(format);
    return document;
}

void insertByHand(benchmark::State &state)
{
    change(state, newPage, [](QTextDocument *document, QTextDocument *page) {
        QTextCursor(page).insertFragment(QTextDocumentFragment(document));
    });
}

void appendDocument(benchmark::State &state)
{
    change(state, newPage, [](QTextDocument *document, QTextDocument *page) {
        QTextCursor cursor(page);
        MVRTextDoc::appendDocumentPreservePageBreak(cursor, document);
    });
}

void appendFragment(benchmark::State &state)
{
    change(state, newPage, [](QTextDocument *document, QTextDocument *page) {
        const QTextDocumentFragment fragment(document);
        QTextCursor cursor(page);
        MVRTextDoc::appendFragment(cursor, fragment);
    });
}

/*! As many leading empty paragraphs as there are words in a twentieth of the text. */
void appendEmptyParagraphs(benchmark::State &state)
{
    change(state, newPage, [&state](QTextDocument *document, QTextDocument *page) {
        state.PauseTiming();
        document->clear();
        QTextCursor text(document);
        for (int i = 0; i < int(state.range(0)) / 20; ++i)
            text.insertBlock();
        text.insertText(QStringLiteral("text"));
        state.ResumeTiming();
        QTextCursor cursor(page);
        MVRTextDoc::appendDocumentPreservePageBreak(cursor, document);
    });
}

/*! The floor of replacing: the same edits at places that are known. */
void replaceByHand(benchmark::State &state)
{
    change(state, emptyDocument, [](QTextDocument *document, QTextDocument *) {
        const QString before = QStringLiteral("replace");
        QVector<int> places;
        for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
            const QString text = block.text();
            int place = text.indexOf(before, 0, Qt::CaseInsensitive);
            for (; place >= 0; place = text.indexOf(before, place + 7, Qt::CaseInsensitive))
                places.append(block.position() + place);
        }
        QTextCursor cursor(document);
        cursor.beginEditBlock();
        for (auto place = places.crbegin(); place != places.crend(); ++place) {
            cursor.setPosition(*place);
            cursor.setPosition(*place + before.size(), QTextCursor::KeepAnchor);
            cursor.insertText(QStringLiteral("exchange"));
        }
        cursor.endEditBlock();
    });
}

void replacePlain(benchmark::State &state)
{
    change(state, emptyDocument, [](QTextDocument *document, QTextDocument *) {
        MVRTextDoc::replace(QStringLiteral("replace"), QStringLiteral("exchange"),
                            QTextCursor(document));
    });
}

void replaceExpression(benchmark::State &state)
{
    change(state, emptyDocument, [](QTextDocument *document, QTextDocument *) {
        MVRTextDoc::replace(QRegularExpression(QStringLiteral("\\bR[a-z]+e\\b")),
                            QStringLiteral("exchange"), QTextCursor(document));
    });
}

void cloneByQt(benchmark::State &state)
{
    const DocumentPtr document = manuscript(state);
    for (auto _ : state)
        delete document->clone();
}

void clone(benchmark::State &state)
{
    const DocumentPtr document = manuscript(state);
    for (auto _ : state)
        delete STextDoc::cloneDocumentQtStyle(document.get(), nullptr);
}

void copyToClipboard(benchmark::State &state)
{
    const DocumentPtr document = manuscript(state);
    for (auto _ : state) {
        QMimeData data;
        MVRTextDoc::setMovarinMarkupRtfMimeData(&data, document.get());
    }
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    for (const int wordsPerParagraph : {100, 0}) {
        for (const int words : {500000, 1000000})
            benchmark->Args({words, wordsPerParagraph});
    }
    benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK(findBoundaries)->Apply(sizes);
BENCHMARK(countWords)->Apply(sizes);
BENCHMARK(insertByHand)->Apply(sizes);
BENCHMARK(appendDocument)->Apply(sizes);
BENCHMARK(appendFragment)->Apply(sizes);
BENCHMARK(appendEmptyParagraphs)->Apply(sizes);
BENCHMARK(replaceByHand)->Apply(sizes);
BENCHMARK(replacePlain)->Apply(sizes);
BENCHMARK(replaceExpression)->Apply(sizes);
BENCHMARK(cloneByQt)->Apply(sizes);
BENCHMARK(clone)->Apply(sizes);
BENCHMARK(copyToClipboard)->Apply(sizes);

} // namespace
