// SPDX-License-Identifier: MIT
// What RTF costs, and beside it what the toolkit needs for the same document.
#include "SampleManuscript.h"

#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>

#include <benchmark/benchmark.h>

#include <QImage>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>

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

constexpr int noteCount = 2000;

// A paragraph to each comment; the content is what the library itself writes.
const QByteArray &bookWithNotes()
{
    static QByteArray rtf;
    if (!rtf.isEmpty())
        return rtf;
    const auto document = newDocument();
    QTextDocument content;
    QTextCursor(&content).insertText(QString::fromLatin1(note), noteFormat());
    MVRTextRtfNote comment;
    comment.kind = MVRTextRtfNote::Comment;
    comment.rtf = MVRTextRtf::toRtfCData(&content, false);
    MVRTextRtfNotes notes;
    QTextCursor cursor(document.get());
    for (int i = 0; i < noteCount; ++i) {
        comment.start = cursor.position();
        cursor.insertText(QStringLiteral("A few words."));
        comment.end = cursor.position();
        notes.append(comment);
        cursor.insertBlock();
    }
    return rtf = MVRTextRtf::toRtfCData(document.get(), true, notes);
}

void readNotes(benchmark::State &state)
{
    for (auto _ : state) {
        const auto document = newDocument();
        MVRTextRtfNotes notes;
        MVRTextRtf::fromRtfCData(bookWithNotes(), document.get(), &notes);
        benchmark::DoNotOptimize(notes.size());
    }
    state.SetItemsProcessed(state.iterations() * noteCount);
}

void writeNotes(benchmark::State &state)
{
    const auto document = newDocument();
    MVRTextRtfNotes notes;
    MVRTextRtf::fromRtfCData(bookWithNotes(), document.get(), &notes);
    for (auto _ : state)
        benchmark::DoNotOptimize(MVRTextRtf::toRtfCData(document.get(), true, notes));
    state.SetItemsProcessed(state.iterations() * noteCount);
}

/*! Compressing a picture takes longer than anything else, so that each is compressed once. */
void writePicture(benchmark::State &state)
{
    QImage image(1500, 1500, QImage::Format_RGB32);
    image.fill(Qt::red);
    const auto document = newDocument();
    document->addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("p")), image);
    QTextCursor cursor(document.get());
    QTextImageFormat format;
    format.setName(QStringLiteral("p"));
    for (int use = 0; use < state.range(0); ++use) {
        format.setWidth(use + 1);
        cursor.insertImage(format);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(MVRTextRtf::toRtfCData(document.get(), false));
}

BENCHMARK(insertBook)->DenseRange(English, Japanese)->Unit(benchmark::kMillisecond);
BENCHMARK(readBook)->DenseRange(English, Japanese)->Unit(benchmark::kMillisecond);
BENCHMARK(bookToHtml)->DenseRange(English, Japanese)->Unit(benchmark::kMillisecond);
BENCHMARK(bookToRtf)->DenseRange(English, Japanese)->Unit(benchmark::kMillisecond);
BENCHMARK(insertNote)->Unit(benchmark::kMicrosecond);
BENCHMARK(readNote)->Unit(benchmark::kMicrosecond);
BENCHMARK(readNotes)->Unit(benchmark::kMillisecond);
BENCHMARK(writeNotes)->Unit(benchmark::kMillisecond);
BENCHMARK(writePicture)->Arg(1)->Arg(60)->Unit(benchmark::kMillisecond);

} // namespace
