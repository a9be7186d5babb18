// What RTF costs, and beside it what the toolkit needs for the same document.
#include <core/MVRTextRtf.h>

#include <benchmark/benchmark.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <memory>
#include <vector>

namespace {

constexpr int paragraphs = 10000;
constexpr int wordsInParagraph = 100;

struct Run
{
    QString text;
    bool isItalic;
};
using Paragraph = std::vector<Run>;

enum Language { English, Russian };

// 1,000,000 words of prose: every fifth paragraph has two words in italics, quotes are curly. A
// Russian one takes a control word for each letter.
std::vector<Paragraph> manuscript(Language language)
{
    static const char *const texts[] = {
        "the harbour was quiet and nobody counted boats before dawn",
        "\u0433\u0430\u0432\u0430\u043d\u044c \u0431\u044b\u043b\u0430 \u0442\u0438\u0445\u0430"};
    const QStringList words = QString::fromUtf8(texts[language]).split(QLatin1Char(' '));
    std::vector<Paragraph> book;
    for (int i = 0; i < paragraphs; ++i) {
        QString text = QStringLiteral("\u201c");
        for (int word = 0; word < wordsInParagraph; ++word) {
            text += words.at((word * 7 + i) % words.size());
            text += QLatin1Char(' ');
        }
        text += QStringLiteral("don\u2019t.\u201d");
        if (i % 5 == 0)
            book.push_back(
                {{text.left(200), false}, {text.mid(200, 12), true}, {text.mid(212), false}});
        else
            book.push_back({{text, false}});
    }
    return book;
}

void insertByHand(QTextDocument *document, const std::vector<Paragraph> &book)
{
    QTextCharFormat plain;
    plain.setFontFamily(QStringLiteral("Times New Roman"));
    plain.setFontPointSize(12);
    QTextCharFormat italic = plain;
    italic.setFontItalic(true);
    QTextBlockFormat paragraph;
    paragraph.setTextIndent(18);
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    for (const Paragraph &runs : book) {
        cursor.insertBlock(paragraph, plain);
        for (const Run &run : runs)
            cursor.insertText(run.text, run.isItalic ? italic : plain);
    }
    cursor.endEditBlock();
}

std::unique_ptr<QTextDocument> newDocument()
{
    auto document = std::make_unique<QTextDocument>();
    document->setUndoRedoEnabled(false);
    return document;
}

const std::vector<Paragraph> &book(Language language)
{
    static const std::vector<Paragraph> books[] = {manuscript(English), manuscript(Russian)};
    return books[language];
}

const QTextDocument &bookDocument(Language language)
{
    static std::unique_ptr<QTextDocument> documents[2];
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
    format.setFontFamily(QStringLiteral("Helvetica"));
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

BENCHMARK(insertBook)->Arg(English)->Arg(Russian)->Unit(benchmark::kMillisecond);
BENCHMARK(readBook)->Arg(English)->Arg(Russian)->Unit(benchmark::kMillisecond);
BENCHMARK(bookToHtml)->Arg(English)->Arg(Russian)->Unit(benchmark::kMillisecond);
BENCHMARK(bookToRtf)->Arg(English)->Arg(Russian)->Unit(benchmark::kMillisecond);
BENCHMARK(insertNote)->Unit(benchmark::kMicrosecond);
BENCHMARK(readNote)->Unit(benchmark::kMicrosecond);

} // namespace
