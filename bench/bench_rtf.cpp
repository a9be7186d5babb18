// SPDX-License-Identifier: MIT
// What RTF costs, and beside it what the toolkit needs for the same document.
#include "SampleManuscript.h"

#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>

#include <benchmark/benchmark.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <memory>
#include <vector>

namespace {

using namespace SampleManuscript;
using Book = std::vector<Paragraph>;

void insertByHand(QTextDocument *document, const Book &book)
{
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    for (const Paragraph &runs : book)
        insertByHand(&cursor, runs);
    cursor.endEditBlock();
}

std::unique_ptr<QTextDocument> newDocument()
{
    auto document = std::make_unique<QTextDocument>();
    document->setUndoRedoEnabled(false);
    return document;
}

const Book &book(Language language)
{
    static Book books[3];
    Book &wanted = books[language];
    while (wanted.size() < std::size_t(paragraphs))
        wanted.push_back(paragraph(language, static_cast<int>(wanted.size())));
    return wanted;
}

const QTextDocument &bookDocument(Language language)
{
    static std::unique_ptr<QTextDocument> documents[3];
    if (!documents[language]) {
        documents[language] = newDocument();
        insertByHand(documents[language].get(), book(language));
    }
    return *documents[language];
}

void insertBook(benchmark::State &state)
{
    const auto language = static_cast<Language>(state.range(0));
    for (auto _ : state) {
        auto document = newDocument();
        insertByHand(document.get(), book(language));
        state.PauseTiming(); // its end costs both the same
        document.reset();
        state.ResumeTiming();
    }
}

void readBook(benchmark::State &state)
{
    const auto language = static_cast<Language>(state.range(0));
    const QByteArray rtf = MVRTextRtf::toRtfCData(&bookDocument(language), false);
    for (auto _ : state) {
        auto document = newDocument();
        MVRTextRtf::fromRtfCData(rtf, document.get());
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * rtf.size());
}

void bookToHtml(benchmark::State &state)
{
    const QTextDocument &document = bookDocument(static_cast<Language>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(document.toHtml());
}

void bookToRtf(benchmark::State &state)
{
    const QTextDocument &document = bookDocument(static_cast<Language>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(MVRTextRtf::toRtfCData(&document, true));
}

const char note[] = "Twenty words of a note that somebody left beside the text so that another one "
                    "finds it before it is printed.";

QTextCharFormat noteFormat()
{
    QTextCharFormat format;
    MVRToolkit::setFontFamily(&format, QStringLiteral("Helvetica"));
    format.setFontPointSize(11);
    return format;
}

void insertNote(benchmark::State &state)
{
    const QString text = QString::fromLatin1(note);
    const QTextCharFormat format = noteFormat();
    for (auto _ : state) {
        QTextDocument document;
        document.setUndoRedoEnabled(false);
        QTextCursor(&document).insertText(text, format);
        benchmark::DoNotOptimize(document.isEmpty());
    }
}

void readNote(benchmark::State &state)
{
    QTextDocument source;
    QTextCursor(&source).insertText(QString::fromLatin1(note), noteFormat());
    const QByteArray rtf = MVRTextRtf::toRtfCData(&source, false);
    for (auto _ : state) {
        QTextDocument document;
        document.setUndoRedoEnabled(false);
        MVRTextRtf::fromRtfCData(rtf, &document);
        benchmark::DoNotOptimize(document.isEmpty());
    }
}

BENCHMARK(insertBook)->DenseRange(English, Japanese)->Unit(benchmark::kMillisecond);
BENCHMARK(readBook)->DenseRange(English, Japanese)->Unit(benchmark::kMillisecond);
BENCHMARK(bookToHtml)->DenseRange(English, Japanese)->Unit(benchmark::kMillisecond);
BENCHMARK(bookToRtf)->DenseRange(English, Japanese)->Unit(benchmark::kMillisecond);
BENCHMARK(insertNote)->Unit(benchmark::kMicrosecond);
BENCHMARK(readNote)->Unit(benchmark::kMicrosecond);

} // namespace
