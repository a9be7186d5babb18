// SPDX-License-Identifier: MIT
#include <text/NoteRuns_p.h>

#include <core/document/FormatEdits_p.h>
#include <core/document/NoteFormat_p.h>

#include <QTextFrame>

#include <algorithm>
#include <utility>

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

/*! Appends the runs in one cell of a table, which end with the cell. */
template <typename Matches>
void appendRunsOfCell(const QTextDocument *document, const MVRTextRange &cell,
                      const Matches &matches, QVector<MVRTextRange> *runs)
{
    std::optional<FragmentWalker> last;
    FragmentWalker walker(document, cell.start);
    for (; walker.isValid() && walker.start() < cell.end; walker.next()) {
        if (!matches(walker.format())) {
            last.reset();
            continue;
        }
        if (last && continuesRun(*last, walker, matches))
            runs->last().end = walker.end();
        else
            runs->append(MVRTextRange(walker.start(), walker.end()));
        last = walker;
    }
}

QVector<MVRTextRange> runsOfCells(int property, const Selection &selection)
{
    const FormatPattern pattern(property, true);
    const auto matches = [&pattern](const QTextFormat &format) { return pattern.matches(format); };
    QVector<MVRTextRange> runs;
    for (const MVRTextRange &cell : selection.ranges())
        appendRunsOfCell(selection.document(), cell, matches, &runs);
    return runs;
}

QVector<MVRTextRange> markedRuns(const QTextDocument *document, int property,
                                 const MVRTextRange &range)
{
    const FormatPattern pattern(property, true);
    const auto isMarked = [&pattern](const QTextFormat &format) { return pattern.matches(format); };
    return runsBehind(document, range.start, isMarked, range.end);
}

} // namespace

InlineNotes inlineNotesIn(int property, const Selection &selection)
{
    QTextDocument *document = selection.document();
    const MVRTextRange range = selection.bounds();
    if (selection.isRectangle())
        return {runsOfCells(property, selection), range.end};
    InlineNotes notes {markedRuns(document, property, range), range.end};
    int kept = 0;
    while (kept < notes.runs.size() && notes.runs[kept].end <= range.end)
        ++kept;
    if (kept < notes.runs.size())
        notes.end = qMin(range.end, notes.runs[kept].start);
    notes.runs.resize(kept);
    notes.runs = selectableRuns(document, notes.runs);
    return notes;
}

NoteRun::NoteRun(const FragmentWalker &fragment, const QTextCharFormat &format)
    : range(fragment.start(), fragment.end())
    , block(fragment.block())
    , link(format)
{
}

bool NoteRun::isContinuedBy(const NoteRun &next, bool nextStartsBlock) const
{
    const bool endsBlock = range.end == block.position() + block.length() - 1;
    const bool touches = range.end == next.range.start || (nextStartsBlock && endsBlock);
    return touches && isSameContent(link.cdata, next.link.cdata);
}

bool NoteCollector::add(const FragmentWalker &fragment)
{
    const QTextCharFormat format = fragment.format();
    if (!format.boolProperty(m_property))
        return false;
    NoteRun next(fragment, format);
    if (m_current && m_current->isContinuedBy(next, fragment.isAtBlockStart()))
        next.range.start = m_current->range.start;
    else
        finish();
    m_current = std::move(next);
    return true;
}

const MVRTextCommentLinkMap &NoteCollector::finish()
{
    if (const auto last = std::exchange(m_current, std::nullopt))
        m_notes.insert(m_notes.cend(), last->range, last->link);
    return m_notes;
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

QVector<MVRTextRange> inlineNotesAround(int property, const Selection &selection)
{
    return selection.isRectangle()
        ? runsOfCells(property, selection)
        : inlineNotesAround(selection.document(), property, selection.bounds());
}
