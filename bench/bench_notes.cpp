// SPDX-License-Identifier: MIT
// What the operations on notes cost, beside a plain walk over the same document.
//
// Arguments of every benchmark: notes (one to twenty words), words per paragraph (0: one
// paragraph).

#include <core/MVRTextFormat.h>
#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QFont>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextDocumentFragment>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

enum NoteKind { InspectorNotes, InlineNotes };

constexpr int wordsPerNote = 20;

/*! A text in which every twentieth word carries or is a note. */
std::unique_ptr<QTextDocument> manuscript(const benchmark::State &state, NoteKind kind)
{
    const int notes = int(state.range(0));
    const int wordsPerParagraph = int(state.range(1));
    auto document = std::make_unique<QTextDocument>();
    document->setUndoRedoEnabled(false);
    QTextCursor cursor(document.get());
    cursor.beginEditBlock();
    const QFont font;
    int words = 0;
    for (int i = 0; i < notes; ++i) {
        for (int word = 1; word < wordsPerNote; ++word)
            cursor.insertText(QStringLiteral("word "), QTextCharFormat());
        const int start = cursor.position();
        QTextCharFormat format;
        if (kind == InlineNotes)
            format.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
        cursor.insertText(QStringLiteral("noted%1").arg(i), format);
        if (kind == InspectorNotes) {
            QTextCursor note(document.get());
            note.setPosition(start);
            note.setPosition(cursor.position(), QTextCursor::KeepAnchor);
            MVRTextDoc::setComment(note, QStringLiteral(" content %1 ").arg(i), i % 2 == 1);
        }
        cursor.insertText(QStringLiteral(" "), QTextCharFormat());
        words += wordsPerNote;
        if (wordsPerParagraph > 0 && words >= wordsPerParagraph) {
            cursor.insertBlock();
            words = 0;
        }
    }
    cursor.endEditBlock();
    document->setUndoRedoEnabled(true);
    return document;
}

/*! The floor: every fragment and its format. */
void walkFragments(benchmark::State &state)
{
    const auto document = manuscript(state, InspectorNotes);
    for (auto _ : state) {
        int formats = 0;
        for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
            for (auto it = block.begin(); !it.atEnd(); ++it)
                formats += it.fragment().charFormat().propertyCount();
        }
        benchmark::DoNotOptimize(formats);
    }
}

void listNotes(benchmark::State &state)
{
    const auto document = manuscript(state, InspectorNotes);
    for (auto _ : state) {
        const MVRTextCommentLinkMap notes = MVRTextDoc::commentsMap(document.get(), -1, -1);
        benchmark::DoNotOptimize(notes.size());
    }
}

/*! What a view asks for after each edit; it costs its range, not the document. */
void listNotesOfAFewWords(benchmark::State &state)
{
    const auto document = manuscript(state, InspectorNotes);
    for (auto _ : state)
        benchmark::DoNotOptimize(MVRTextDoc::notes(document.get(), 50, 200).size());
}

/*! Runs \a change on a fresh document each time; only the change is timed. */
template <typename Change> void change(benchmark::State &state, NoteKind kind, const Change &change)
{
    for (auto _ : state) {
        state.PauseTiming();
        auto document = manuscript(state, kind);
        state.ResumeTiming();
        change(document.get());
        state.PauseTiming();
        document.reset();
        state.ResumeTiming();
    }
}

/*! A note to be moved by hand: where its text or the word that carries it stands. */
struct NotedText
{
    int start;
    int end;
};

/*! Where every twentieth word stands, found outside the time that is measured. */
QVector<NotedText> places(benchmark::State &state, const QTextDocument &document)
{
    state.PauseTiming();
    QVector<NotedText> places;
    const QString text = document.toPlainText();
    for (int start = text.indexOf(QLatin1String("noted")); start >= 0;
         start = text.indexOf(QLatin1String("noted"), start + 1))
        places.append({start, text.indexOf(QLatin1Char(' '), start)});
    state.ResumeTiming();
    return places;
}

void select(QTextCursor &cursor, const NotedText &place)
{
    cursor.setPosition(place.start);
    cursor.setPosition(place.end, QTextCursor::KeepAnchor);
}

/*! The floor of moving into the text: a document per note, and the same edits. */
void insertByHand(benchmark::State &state)
{
    change(state, InspectorNotes, [&state](QTextDocument *document) {
        const QVector<NotedText> notes = places(state, *document);
        QTextCharFormat inlineNote;
        inlineNote.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
        QTextCursor cursor(document);
        cursor.beginEditBlock();
        for (int i = notes.size() - 1; i >= 0; --i) {
            QTextDocument content;
            QTextCursor(&content).insertText(QStringLiteral("content %1").arg(i));
            select(cursor, notes[i]);
            cursor.setCharFormat(QTextCharFormat());
            cursor.setPosition(notes[i].end);
            cursor.insertText(QStringLiteral(" "));
            cursor.insertFragment(QTextDocumentFragment(&content));
            select(cursor, {notes[i].end, cursor.position()});
            cursor.mergeCharFormat(inlineNote);
        }
        cursor.endEditBlock();
    });
}

/*! The floor of moving out of the text: a document per note, and the same edits. */
void removeByHand(benchmark::State &state)
{
    change(state, InlineNotes, [&state](QTextDocument *document) {
        const QVector<NotedText> notes = places(state, *document);
        QTextCursor cursor(document);
        cursor.beginEditBlock();
        for (int i = notes.size() - 1; i >= 0; --i) {
            QTextDocument content;
            select(cursor, notes[i]);
            QTextCursor(&content).insertFragment(cursor.selection());
            cursor.removeSelectedText();
            QTextCharFormat inspectorNote;
            // Qt finds equal formats by a hash that knows nothing of the bytes of a note.
            inspectorNote.setAnchorHref(QStringLiteral("Comment:%1").arg(i));
            inspectorNote.setProperty(MVRTextFormat::CommentCDataProperty, QByteArray::number(i));
            select(cursor, {notes[i].start - 5, notes[i].start - 1});
            cursor.mergeCharFormat(inspectorNote);
        }
        cursor.endEditBlock();
    });
}

void moveIntoText(benchmark::State &state)
{
    change(state, InspectorNotes, [](QTextDocument *document) {
        MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(document, QTextCursor());
        MVRTextDoc::convertInspectorCommentsToInlineAnnotations(document, QTextCursor());
    });
}

void moveToInspector(benchmark::State &state)
{
    change(state, InlineNotes, [](QTextDocument *document) {
        MVRTextDoc::convertInlineFootnotesToInspectorComments(document, true, QTextCursor());
    });
}

void swapKinds(benchmark::State &state)
{
    change(state, InlineNotes, [](QTextDocument *document) {
        MVRTextDoc::convertInlineFootnotesToInlineAnnotations(document, QTextCursor());
    });
}

void trimInlineNotes(benchmark::State &state)
{
    change(state, InlineNotes, [](QTextDocument *document) {
        MVRTextDoc::trimInlineNotes(document, MVRTextFormat::InlineFootnoteProperty, false, 0, 0,
                                    QTextCursor());
    });
}

void trimInspectorNotes(benchmark::State &state)
{
    change(state, InspectorNotes, [](QTextDocument *document) {
        MVRTextDoc::trimInspectorNotes(document, MVRTextFormat::CommentLinkProperty, false, 0, 0);
    });
}

void clearNotes(benchmark::State &state)
{
    change(state, InspectorNotes, STextDoc::removeInspectorCommentsAndFootnotes);
}

void replaceNotes(benchmark::State &state)
{
    change(state, InspectorNotes, [](QTextDocument *document) {
        MVRTextDoc::setComments(document, MVRTextDoc::commentsMap(document, -1, -1));
    });
}

void sizes(benchmark::internal::Benchmark *benchmark)
{
    for (const int wordsPerParagraph : {100, 0}) {
        for (const int notes : {25000, 50000})
            benchmark->Args({notes, wordsPerParagraph});
    }
    benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK(walkFragments)->Apply(sizes);
BENCHMARK(listNotes)->Apply(sizes);
BENCHMARK(listNotesOfAFewWords)->Apply(sizes);
BENCHMARK(swapKinds)->Apply(sizes);
BENCHMARK(trimInlineNotes)->Apply(sizes);
BENCHMARK(trimInspectorNotes)->Apply(sizes);
BENCHMARK(clearNotes)->Apply(sizes);
BENCHMARK(replaceNotes)->Apply(sizes);
BENCHMARK(insertByHand)->Apply(sizes);
BENCHMARK(moveIntoText)->Apply(sizes);
BENCHMARK(removeByHand)->Apply(sizes);
BENCHMARK(moveToInspector)->Apply(sizes);

} // namespace
