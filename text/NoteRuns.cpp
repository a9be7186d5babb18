// SPDX-License-Identifier: MIT
#include <text/NoteRuns_p.h>

#include <core/document/FormatEdits_p.h>

#include <QTextFrame>

#include <algorithm>

namespace {

/*! True when no text but that of \a run is selected, for instance a table that is all footnote. */
bool selectsOnly(const QTextCursor &cursor, const MVRTextRange &run)
{
    if (cursor.hasComplexSelection())
        return false;
    const FragmentWalker first(cursor.document(), cursor.selectionStart());
    const FragmentWalker behind(cursor.document(), run.end);
    return first.isValid() && first.start() >= run.start
        && (!behind.isValid() || behind.start() >= cursor.selectionEnd());
}

/*! Appends \a run in parts, each in one cell of a table or outside of it. */
void appendByCells(const QTextDocument *document, const MVRTextRange &run,
                   QVector<MVRTextRange> *parts)
{
    QTextBlock last;
    FragmentWalker walker(document, run.start);
    for (; walker.isValid() && walker.start() < run.end; walker.next()) {
        bool continues = last.isValid();
        for (QTextBlock block = walker.block(); continues && block != last;
             block = block.previous())
            continues = followsParagraph(block);
        if (continues)
            parts->last().end = walker.end();
        else
            parts->append(MVRTextRange(walker.start(), walker.end()));
        last = walker.block();
    }
}

QVector<MVRTextRange> selectableRuns(const QTextDocument *document,
                                     const QVector<MVRTextRange> &runs)
{
    if (document->rootFrame()->childFrames().isEmpty())
        return runs;
    QVector<MVRTextRange> parts;
    parts.reserve(runs.size());
    QTextCursor cursor(document->firstBlock());
    for (const MVRTextRange &run : runs) {
        if (selectRange(cursor, run.start, run.end) || selectsOnly(cursor, run))
            parts.append(run);
        else
            appendByCells(document, run, &parts);
    }
    return parts;
}

QVector<MVRTextRange> markedRuns(const QTextDocument *document, int property,
                                 const MVRTextRange &range)
{
    const FormatPattern pattern(property, true);
    const auto isMarked = [&pattern](const QTextFormat &format) { return pattern.matches(format); };
    return runsBehind(document, range.start, isMarked, range.end);
}

} // namespace

QVector<MVRTextRange> inlineNotesIn(const QTextDocument *document, int property,
                                    const MVRTextRange &range)
{
    QVector<MVRTextRange> runs = markedRuns(document, property, range);
    int kept = 0;
    while (kept < runs.size() && runs[kept].end <= range.end)
        ++kept;
    runs.resize(kept);
    return selectableRuns(document, runs);
}

QVector<MVRTextRange> inlineNotesAround(const QTextDocument *document, int property,
                                        const MVRTextRange &range)
{
    QVector<MVRTextRange> notes = selectableRuns(document, markedRuns(document, property, range));
    const auto isOutside = [&range](const MVRTextRange &note) {
        return note.end <= range.start || note.start >= range.end;
    };
    notes.erase(std::remove_if(notes.begin(), notes.end(), isOutside), notes.end());
    return notes;
}
