// SPDX-License-Identifier: MIT
// A row of operations on two documents, as the bytes say: after each, undo brings back the document
// as it was and redo what became of it, notes stand where they are said to be, and no mark has
// changed outside the selection. Every fourth input has models, counters and highlighters follow,
// every fourth edits notes as menus do.
#include <fuzz/Observers.h>
#include <fuzz/Operations.h>
#include <fuzz/Require.h>
#include <fuzz/Snapshot.h>
#include <fuzz/Targets.h>
#include <tests/DocumentGenerator.h>
#include <text/MVRTextCommentLink.h>
#include <text/MVRTextDoc.h>

#include <QDataStream>
#include <QTextDocument>

#include <cstdio>
#include <memory>

namespace {

constexpr int maxSteps = 32;
constexpr int maxCharacters = 20000; // a document appended to the other one time and again

void fill(QTextDocument *document, Bytes *bytes)
{
    const int seed = bytes->byte();
    if (seed < 64)
        DocumentGenerator(uint(seed)).fill(document);
    else
        document->setPlainText(bytes->text(100));
}

QTextCursor cursor(QTextDocument *document, QTextDocument *other, Bytes *bytes)
{
    const int kind = bytes->byte() % 16;
    if (kind == 0)
        return QTextCursor();
    QTextDocument *target = kind == 1 ? other : document;
    QTextCursor cursor(target);
    cursor.setPosition(bytes->upTo(target->characterCount() - 1));
    if (kind > 4)
        cursor.setPosition(bytes->upTo(target->characterCount() - 1), QTextCursor::KeepAnchor);
    return cursor;
}

/*! Notes stand where they are listed, and come through a stream. */
void checkNotes(const QTextDocument &document)
{
    const MVRTextCommentLinkMap notes = MVRTextDoc::commentsMap(&document, -1, -1);
    for (auto note = notes.cbegin(); note != notes.cend(); ++note) {
        const MVRTextRange range = note.key();
        require(0 <= range.start && range.start < range.end
                    && range.end < document.characterCount(),
                "a note is in the document");
        QTextCursor first(document.findBlock(range.start));
        first.setPosition(range.start + 1);
        require(MVRTextCommentLink(first.charFormat()).cdata == note->cdata,
                "a note begins where it is listed");
        QTextCursor last(document.findBlock(range.end));
        last.setPosition(range.end);
        require(last.atBlockStart() || MVRTextCommentLink(last.charFormat()).cdata == note->cdata,
                "a note ends where it is listed");
        QByteArray record;
        QDataStream writing(&record, QIODevice::WriteOnly);
        writing << *note;
        MVRTextCommentLink again;
        QDataStream reading(record);
        reading >> again;
        require(again.cdata == note->cdata && again.isFootnote == note->isFootnote
                    && again.color == note->color,
                "a note comes through a stream");
    }
}

/*! Marks change inside of [start, end) only; a paragraph end carries those of the next one. */
void checkMarks(const QVector<int> &before, const QTextDocument &document, int start, int end)
{
    const QVector<int> after = marksOf(document);
    require(before.size() == after.size(), "marking changes no text");
    for (int position = 0; position < after.size(); ++position) {
        require((start <= position && position < end) || before[position] == after[position],
                "no mark changes outside of the selection");
    }
}

void requireSame(const Snapshot &is, const Snapshot &was, const char *promise)
{
    if (is != was)
        std::fprintf(stderr, "%s", is.difference(was).constData());
    require(is == was, promise);
}

void checkUndo(QTextDocument *document, const Snapshot &before, Operation::Kind kind)
{
    const bool isOneStep = kind != Operation::Edits;
    const Snapshot after(*document);
    if (!document->isUndoAvailable()) {
        requireSame(after, before, "what changes is recorded");
        return;
    }
    require(!after.isExactly(before) || !isOneStep || kind == Operation::Replaces,
            "what changes nothing is not recorded");
    int steps = 0;
    for (; document->isUndoAvailable(); ++steps)
        document->undo();
    require(steps == 1 || !isOneStep, "an operation is one undo step");
    requireSame(Snapshot(*document), before, "undo brings the document back");
    while (document->isRedoAvailable())
        document->redo();
    requireSame(Snapshot(*document), after, "redo brings the change back");
}

void run(const Operation &operation, QTextDocument *document, QTextDocument *other, Bytes *bytes)
{
    document->setUndoRedoEnabled(true);
    document->clearUndoRedoStacks();
    Call call {*bytes, *document, *other, cursor(document, other, bytes)};
    const QTextCursor selection = call.cursor;
    const bool isElsewhere = selection.isNull() || selection.document() != document;
    const int start = isElsewhere ? 0 : selection.selectionStart();
    const int end = isElsewhere ? document->characterCount() : selection.selectionEnd();
    const bool isRectangle = !selection.isNull() && selection.hasComplexSelection();
    const Snapshot before(*document);
    const QVector<int> marks = marksOf(*document);
    if (qEnvironmentVariableIsSet("MVR_SHOW_OPERATIONS"))
        std::fprintf(stderr, "%s [%d, %d)\n", operation.name, start, end);

    operation.run(call);
    checkNotes(*document);
    if (operation.kind == Operation::Reads)
        requireSame(Snapshot(*document), before, "looking changes nothing");
    if (operation.kind == Operation::Marks && !isRectangle)
        checkMarks(marks, *document, start, end);
    if (operation.kind != Operation::Restarts)
        checkUndo(document, before, operation.kind);
}

}

void fuzz_operations(const QByteArray &input)
{
    Bytes bytes(input);
    QTextDocument documents[2];
    for (QTextDocument &document : documents)
        fill(&document, &bytes);
    std::unique_ptr<Observers> observers[2];
    for (int i = 0; i < 2 && input.size() % 4 == 0; ++i)
        observers[i] = std::make_unique<Observers>(&documents[i]);
    const QVector<Operation> &table
        = input.size() % 4 == 2 ? operationsAndNoteEdits() : operations();
    for (int step = 0; step < maxSteps && !bytes.isAtEnd(); ++step) {
        const bool isSecond = bytes.flag();
        const Operation &operation = table.at(bytes.byte() % table.size());
        run(operation, &documents[int(isSecond)], &documents[int(!isSecond)], &bytes);
        for (const auto &each : observers) {
            if (each)
                each->check();
        }
        if (documents[0].characterCount() + documents[1].characterCount() > maxCharacters)
            return;
    }
}
