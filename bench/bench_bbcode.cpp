// SPDX-License-Identifier: MIT
// HTML to BBCode, beside what the toolkit alone needs to parse the same text. Compare lines of one
// run only.

#include <bbcode/MVRBbCodeConverter.h>

#include <QColor>
#include <QDomDocument>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextListFormat>

#include <benchmark/benchmark.h>

#include <map>

namespace {

void insertChapter(QTextCursor &cursor)
{
    const QTextCharFormat plain;
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    QTextCharFormat red;
    red.setForeground(QColor(Qt::red));
    QTextCharFormat link;
    link.setAnchor(true);
    link.setAnchorHref(QStringLiteral("https://example.org/?a=1&b=2"));
    for (int paragraph = 0; paragraph < 200; ++paragraph) {
        cursor.insertBlock(QTextBlockFormat(), plain);
        for (int sentence = 0; sentence < 3; ++sentence) {
            cursor.insertText(QStringLiteral("She read the letter twice & burnt it, "), plain);
            cursor.insertText(QStringLiteral("slowly"), bold);
            cursor.insertText(QStringLiteral(" "), plain);
            cursor.insertText(QStringLiteral("from its edges."), red);
        }
        cursor.insertText(QStringLiteral("Sources"), link);
    }
    for (int entry = 0; entry < 20; ++entry) {
        if (entry == 0)
            cursor.insertList(QTextListFormat::ListDecimal);
        else
            cursor.insertBlock();
        cursor.insertText(QStringLiteral("A thing to remember, "), plain);
        cursor.insertText(QStringLiteral("really"), bold);
    }
}

/*! The HTML that the toolkit writes for a book of about so many bytes. */
const QString &sample(qint64 bytes)
{
    static std::map<qint64, QString> samples;
    QString &html = samples[bytes];
    if (html.isEmpty()) {
        QTextDocument document;
        QTextCursor cursor(&document);
        insertChapter(cursor);
        const QString chapter = document.toHtml();
        const int body
            = chapter.indexOf(QLatin1Char('>'), chapter.indexOf(QLatin1String("<body"))) + 1;
        const int end = chapter.indexOf(QLatin1String("</body>"));
        html = chapter.left(body);
        while (html.size() < bytes)
            html += chapter.mid(body, end - body);
        html += chapter.mid(end);
    }
    return html;
}

void parseFloor(benchmark::State &state)
{
    const QString &html = sample(state.range(0));
    for (auto _ : state) {
        QDomDocument tree;
        if (!tree.setContent(html))
            qFatal("The sample is not well-formed.");
    }
    state.SetBytesProcessed(state.iterations() * html.size());
}

void convert(benchmark::State &state)
{
    const QString &html = sample(state.range(0));
    for (auto _ : state) {
        MVRBbCodeConverter converter;
        benchmark::DoNotOptimize(converter.fromHtml(html, nullptr).size());
    }
    state.SetBytesProcessed(state.iterations() * html.size());
}

constexpr int megabyte = 1000 * 1000;

// One size after the other: what a large round leaves in the heap slows the first small one.
BENCHMARK(parseFloor)->Arg(megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(convert)->Arg(megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(parseFloor)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(convert)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(parseFloor)->Arg(40 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(convert)->Arg(40 * megabyte)->Unit(benchmark::kMillisecond);

}
