// SPDX-License-Identifier: MIT
#include <pages/MVRPagePainter.h>
#include <pages/MVRScreenplayFace.h>
#include <tool/pages/SceneOutline.h>

#include <benchmark/benchmark.h>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

namespace {

MVRScreenplayParagraph paragraph(const char *type, const QString &text)
{
    MVRScreenplayParagraph made;
    made.type = QLatin1String(type);
    const MVRFinalDraft::ElementSettings element = MVRScreenplay::standardElement(made.type);
    made.paginateAs = element.paginateAs;
    made.attr = element.paragraphSpec;
    MVRScreenplayRun run;
    run.text = text;
    run.attr = element.fontSpec;
    made.runs = {run};
    return made;
}

/*! A screenplay of about so many pages, half of it dialogue. */
MVRScreenplay screenplay(int pages)
{
    MVRScreenplay script;
    script.settings.continuesSpeakers = true;
    const QString sentence
        = QStringLiteral("The harbour lies grey under the rain, and nobody comes. ");
    for (int i = 0; i < pages; ++i) {
        script.body += paragraph("Scene Heading", QStringLiteral("INT. HARBOUR OFFICE - NIGHT"));
        for (int j = 0; j < 4; ++j) {
            script.body += paragraph("Action", sentence.repeated(2 + j % 3));
            script.body
                += paragraph("Character", j % 2 ? QStringLiteral("ANNA") : QStringLiteral("TOM"));
            script.body += paragraph("Parenthetical", QStringLiteral("(quietly)"));
            script.body += paragraph("Dialogue", sentence.repeated(2 + j % 2));
        }
    }
    return script;
}

void composePages(benchmark::State &state)
{
    const MVRScreenplay script = screenplay(int(state.range(0)));
    int pages = 0;
    for (auto _ : state)
        pages = MVRScreenplayPages(script).pages().size();
    state.counters["pages"] = pages;
    state.SetComplexityN(state.range(0));
}

/*! As the tool does: composed, drawn, and given title and outline. */
void writePages(benchmark::State &state)
{
    const MVRScreenplay script = screenplay(int(state.range(0)));
    for (auto _ : state) {
        QByteArray pdf;
        QBuffer buffer(&pdf);
        buffer.open(QIODevice::WriteOnly);
        const MVRScreenplayPages pages(script);
        MVRPagePainter::writePdf(&buffer, pages, QString());
        buffer.close();
        PdfExtras extras;
        extras.title = QStringLiteral("The Harbour");
        extras.outline = sceneOutline(pages);
        completePdf(&pdf, extras);
        benchmark::DoNotOptimize(pdf.size());
    }
    state.SetComplexityN(state.range(0));
}

/*! The floor: the same lines of text, known beforehand, drawn where they stand in one font. */
void drawLinesBlindly(benchmark::State &state)
{
    const MVRScreenplayPages composed(screenplay(int(state.range(0))));
    const QVector<MVRScreenplayPage> pages = composed.pages();
    for (auto _ : state) {
        QByteArray pdf;
        QBuffer buffer(&pdf);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setResolution(1440);
        QPainter painter(&writer);
        QFont font(MVRScreenplayFace::family());
        font.setPixelSize(240);
        painter.setFont(font);
        for (int i = 0; i < pages.size(); ++i) {
            if (i > 0)
                writer.newPage();
            for (const MVRScreenplayLine &line : pages[i].lines) {
                for (const MVRScreenplayLine::Run &run : line.runs)
                    painter.drawText(QPointF(run.x * 20.0, line.y * 20.0), run.text);
            }
        }
        painter.end();
        benchmark::DoNotOptimize(pdf.size());
    }
}

}

BENCHMARK(composePages)
    ->RangeMultiplier(10)
    ->Range(10, 10000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity();
BENCHMARK(writePages)->Arg(120)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(drawLinesBlindly)->Arg(120)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
