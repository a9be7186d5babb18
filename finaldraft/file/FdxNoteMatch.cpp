// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxWriter_p.h>

#include <algorithm>

using File = MVRFinalDraftFile;

/*! Finds which notes of the file the document still has. */
void FdxWriter::matchNotes()
{
    findKeptText();
    m_documentNote.fill(-1, m_notes.size());
    for (int i = 0; i < m_match.notes.size(); ++i) {
        const int note
            = m_match.notes[i].isInline ? -1 : m_anchors.value(m_match.notes[i].href, -1);
        if (note < 0 || note >= m_notes.size() || m_documentNote[note] >= 0)
            continue;
        m_documentNote[note] = i;
        m_keptNotes.insert(i);
    }
    for (int i = 0; i < m_notes.size(); ++i) {
        const FdxNote &note = m_notes[i];
        const int now = m_documentNote[i];
        if (note.shape == File::NoteOfRange || note.paragraph < 0
            || !(note.isAttached() || note.isRemoved))
            continue;
        if (note.isRemoved || (now < 0 ? isGone(note) : hasMoved(note, m_match.notes[now])))
            m_goneIn[note.paragraph].append(i);
        if (now >= 0 && hasMoved(note, m_match.notes[now])) {
            const FdxTree::Span span = m_tree.span(note.node);
            m_newIn[m_match.notes[now].entry].append(
                {-1, m_tree.source().mid(span.start, span.end - span.start)});
        }
    }
}

/*! For each paragraph, which one at or behind it has text that nobody changed. */
void FdxWriter::findKeptText()
{
    const int count = m_match.entryOf.size();
    m_nextKept.fill(count, count + 1);
    for (int i = count; i-- > 0;) {
        const int entry = m_match.entryOf[i];
        const FdxTextDiff diff = entry < 0 ? FdxTextDiff() : this->diff(entry);
        m_nextKept[i] = diff.prefix + diff.suffix > 0 ? i : m_nextKept[i + 1];
    }
}

/*! Whether any text of a stretch of the document that was read is still as it was. */
bool FdxWriter::hasKeptText(const MVRTextRange &range) const
{
    const int first = m_places.paragraphAt(range.start);
    const int last = m_places.paragraphAt(range.end - 1);
    const auto isKeptIn = [&](int paragraph) {
        const int entry = m_match.entryOf[paragraph];
        if (entry < 0)
            return false;
        const FdxTextDiff diff = this->diff(entry);
        const int from = qMax(0, range.start - m_places.position(paragraph));
        const int to = qMin(diff.oldLength, range.end - m_places.position(paragraph));
        return from < to && (from < diff.prefix || to > diff.oldLength - diff.suffix);
    };
    return isKeptIn(first) || (first < last && (m_nextKept[first + 1] < last || isKeptIn(last)));
}

const FdxWriter::Changes &FdxWriter::changes(int entry)
{
    auto known = m_changes.find(entry);
    if (known == m_changes.end()) {
        const FdxEntry &changed = m_match.entries[entry];
        known = m_changes.insert(entry, {runEdit(changed).hunks(), changed.text()});
    }
    return *known;
}

/*! What stands in an entry where its paragraph had the characters [from, to). */
QString FdxWriter::textInPlaceOf(int entry, int from, int to)
{
    const Changes &all = changes(entry);
    for (const FdxRunEdit::Hunk &hunk : all.hunks) {
        if (hunk.oldStart < to && from < hunk.oldEnd)
            return all.text.mid(hunk.newStart, hunk.newEnd - hunk.newStart);
    }
    return QString();
}

/*! Whether text that had a note has another one of the file: they shared a word that was edited. */
bool FdxWriter::isUnderOther(const FdxNote &note)
{
    const int position = moved(note.attached.start);
    auto next = std::upper_bound(
        m_match.notes.cbegin(), m_match.notes.cend(), position,
        [](int value, const FdxDocumentNote &candidate) { return value < candidate.start; });
    while (next != m_match.notes.cbegin() && (next - 1)->isInline)
        --next;
    return next != m_match.notes.cbegin() && (next - 1)->end > position
        && m_anchors.contains((next - 1)->href);
}

/*!
    Whether a note that the document does not have any more was taken away: its text is still there,
    or is gone without anything in its place. Where other text took its place the note stays with
    that, and one of a paragraph stays with the paragraph.
*/
bool FdxWriter::isGone(const FdxNote &note)
{
    constexpr int longText = 4096; // in which nobody looks for a word
    if (hasKeptText(note.attached))
        return !isUnderOther(note);
    const bool isOfRange = note.shape == File::NoteOfRange;
    if (isOfRange && hasKeptText(note.range))
        return false;
    const int paragraph = m_places.paragraphAt(note.attached.start);
    const int entry = m_match.entryOf[paragraph];
    if (entry < 0)
        return isOfRange;
    const int start = note.range.start - m_places.position(paragraph);
    const QString text = textInPlaceOf(entry, note.attached.start - m_places.position(paragraph),
                                       note.attached.end - m_places.position(paragraph));
    if (text.isEmpty())
        return isOfRange;
    if (text.size() > longText)
        return false;
    const int length = qMin(longText, note.range.end - note.range.start);
    const QString words = m_places.text(paragraph).mid(start, length);
    return text.contains(words);
}

/*! Whether a note of a paragraph is in another one now. */
bool FdxWriter::hasMoved(const FdxNote &note, const FdxDocumentNote &now) const
{
    return !m_script.paragraphs()[note.paragraph].isWrapper
        && m_match.entries[now.entry].source != note.paragraph;
}
