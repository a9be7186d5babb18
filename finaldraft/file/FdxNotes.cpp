// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxNotes_p.h>

#include <finaldraft/NoteAnchor_p.h>
#include <finaldraft/file/FdxText_p.h>

#include <QMap>
#include <QSet>

#include <algorithm>
#include <iterator>

namespace {

using File = MVRFinalDraftFile;

// How far a word can be from its note, and how long. Keeps many notes in one paragraph cheap.
constexpr int reach = 4096;

/*! The stretch of word characters around \a offset, which is in one. */
MVRTextRange stretchAround(const QString &text, int offset)
{
    MVRTextRange stretch(offset, offset + 1);
    while (stretch.start > qMax(0, offset - reach)
           && !NoteAnchor::endsWord(text.at(stretch.start - 1)))
        --stretch.start;
    const int farthest = qMin(int(text.size()), offset + reach);
    while (stretch.end < farthest && !NoteAnchor::endsWord(text.at(stretch.end)))
        ++stretch.end;
    return stretch;
}

bool isWord(const QString &text, const MVRTextRange &stretch)
{
    const QChar first = text.at(stretch.start);
    return first.isLetterOrNumber() || first.isSurrogate();
}

/*! Reads "12,34"; false for anything else. */
bool readNumbers(const QByteArray &text, MVRTextRange *numbers)
{
    const QList<QByteArray> parts = text.split(',');
    bool isStart = false;
    bool isEnd = false;
    const int start = parts.value(0).trimmed().toInt(&isStart);
    const int end = parts.value(1).trimmed().toInt(&isEnd);
    if (parts.size() != 2 || !isStart || !isEnd || start < 0 || end < 0)
        return false;
    *numbers = MVRTextRange(qMin(start, end), qMax(start, end));
    return true;
}

/*! Finds the notes in one walk over the tree. */
class Finder
{
public:
    Finder(const FdxScript &script, const FdxPlaces &places)
        : m_script(script)
        , m_places(places)
    {
        for (const FdxContainer &container : script.containers())
            m_own.insert(container.node.index());
    }

    /*! Finds all of them, in the order of the file. */
    void find()
    {
        for (int i = 0; i < m_script.paragraphs().size(); ++i)
            find(m_script.paragraphs()[i].node, i);
        for (const FdxContainer &container : m_script.containers()) {
            for (const FdxElement &note : container.node.children("ScriptNote"))
                add(note, container.wrapper);
        }
        find(m_script.tree().root(), -1);
        std::stable_sort(notes.begin(), notes.end(), [this](const FdxNote &a, const FdxNote &b) {
            return m_script.tree().start(a.node) < m_script.tree().start(b.node);
        });
    }

    QVector<FdxNote> notes;

private:
    // Nested calls go down the tree, which is shallow. Containers are gone through by themselves.
    void find(const FdxElement &parent, int paragraph)
    {
        for (const FdxElement &child : parent.children()) {
            if (child.isNamed("ScriptNote"))
                add(child, paragraph);
            else if (!child.isNamed("Text") && !m_own.contains(child.index()))
                find(child, paragraph);
        }
    }

    void add(const FdxElement &node, int paragraph)
    {
        FdxNote note;
        note.node = node;
        note.paragraph = paragraph;
        const FdxSourceAttribute range = node.attribute("Range");
        note.hasNumbers = paragraph < 0 && range && readNumbers(range.value(), &note.numbers);
        if (note.hasNumbers)
            placeByNumbers(&note);
        else if (paragraph >= 0)
            placeInParagraph(&note);
        notes.append(note);
    }

    void placeByNumbers(FdxNote *note)
    {
        note->shape = File::NoteOfRange;
        const bool isPoint = note->numbers.start == note->numbers.end;
        const int start = m_places.pairStart(m_places.positionOf(note->numbers.start));
        int end = isPoint ? start : m_places.positionOf(note->numbers.end);
        if (m_places.pairStart(end) < end)
            ++end;
        note->range = MVRTextRange(start, end);
        note->paragraph = m_places.paragraphAt(start);
        if (!isPoint || note->paragraph < 0)
            return;
        const int first = m_places.position(note->paragraph);
        const MVRTextRange word = fdxWordAt(m_places.text(note->paragraph), start - first);
        if (word.start < word.end)
            note->range = MVRTextRange(first + word.start, first + word.end);
    }

    void placeInParagraph(FdxNote *note)
    {
        const bool isAmongRuns = note->node.attribute("ID") && !note->node.attribute("Name");
        note->shape = isAmongRuns ? File::NoteAmongRuns : File::NoteOfParagraph;
        const int paragraph = firstWithText(note->paragraph);
        const int first = m_places.position(paragraph);
        const QString text = m_places.text(paragraph);
        MVRTextRange word = fdxWordBefore(text, paragraph == note->paragraph ? before(*note) : 0);
        if (word.start == word.end)
            word = fdxFirstWord(text, 0);
        note->range = MVRTextRange(first + word.start, first + word.end);
    }

    /*! What a wrapper holds begins with the paragraph that shows its notes. */
    int firstWithText(int paragraph) const
    {
        const QVector<FdxParagraph> &all = m_script.paragraphs();
        int index = paragraph;
        while (index + 1 < all.size() && all[index].isWrapper && !all[index].hasBlock)
            ++index;
        return index;
    }

    /*! How much text stands in front of the note, or of what holds it, in its paragraph. */
    int before(const FdxNote &note)
    {
        const FdxElement paragraph = m_script.paragraphs()[note.paragraph].node;
        FdxElement child = note.node;
        while (child.parent() && child.parent() != paragraph)
            child = child.parent();
        // On from the note that was found in the paragraph last.
        const bool goesOn = m_lastChild && m_lastChild.parent() == paragraph
            && m_lastChild.index() <= child.index();
        int length = goesOn ? m_lastLength : 0;
        for (FdxElement node = goesOn ? m_lastChild : paragraph.firstChild(); node && node != child;
             node = node.next()) {
            if (!node.isNamed("Text"))
                continue;
            const FdxTree::Span span = m_script.tree().span(node);
            length += fdxTextLength(m_script.tree().source(), span.innerStart, span.innerEnd);
        }
        m_lastChild = child;
        m_lastLength = length;
        return length;
    }

    const FdxScript &m_script;
    const FdxPlaces &m_places;
    QSet<int> m_own; // containers of the script
    FdxElement m_lastChild; // that a note was found in, and the text in front of it
    int m_lastLength = 0;
};

/*! Notes about the very same characters share them, as far as there are enough. */
void shareEqualRanges(const FdxPlaces &places, QVector<FdxNote *> *notes)
{
    for (int first = 0; first < notes->size();) {
        int end = first + 1;
        const MVRTextRange range = (*notes)[first]->attached;
        while (end < notes->size() && (*notes)[end]->attached == range)
            ++end;
        const int sharing = qMin(end - first, range.end - range.start);
        for (int i = 0; i < end - first; ++i) {
            const qint64 length = range.end - range.start;
            const auto bound = [&](int share) {
                return places.pairStart(range.start + int(length * share / sharing));
            };
            (*notes)[first + i]->attached
                = i >= sharing ? MVRTextRange() : MVRTextRange(bound(i), bound(i + 1));
        }
        first = end;
    }
}

/*! The stretches of a document that notes have taken; touching ones are one. */
class TakenStretches
{
public:
    /*! Takes the first free stretch of \a range. */
    MVRTextRange take(const MVRTextRange &range)
    {
        int start = range.start;
        auto next = m_ends.upperBound(start);
        if (next != m_ends.begin() && std::prev(next).value() > start)
            start = std::prev(next).value();
        const int end = next == m_ends.end() ? range.end : qMin(range.end, next.key());
        if (start >= end)
            return MVRTextRange();
        add(start, end);
        return MVRTextRange(start, end);
    }

private:
    void add(int start, int end)
    {
        auto next = m_ends.find(end);
        const int joinedEnd = next == m_ends.end() ? end : next.value();
        if (next != m_ends.end())
            m_ends.erase(next);
        const auto behind = m_ends.lowerBound(start);
        if (behind != m_ends.begin() && std::prev(behind).value() == start)
            std::prev(behind).value() = joinedEnd;
        else
            m_ends.insert(start, joinedEnd);
    }

    QMap<int, int> m_ends; // by start
};

/*! Gives each note characters of its own; a shorter one has its place before a longer one. */
void attach(const FdxPlaces &places, QVector<FdxNote> *notes)
{
    QVector<FdxNote *> sorted;
    for (FdxNote &note : *notes) {
        if (note.range.start >= 0 && note.range.start < note.range.end)
            note.attached = places.trimmed(note.range);
        if (note.isAttached())
            sorted.append(&note);
    }
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const FdxNote *a, const FdxNote *b) { return a->attached < b->attached; });
    shareEqualRanges(places, &sorted);
    std::stable_sort(sorted.begin(), sorted.end(), [](const FdxNote *a, const FdxNote *b) {
        return a->attached.end - a->attached.start < b->attached.end - b->attached.start;
    });
    TakenStretches taken;
    for (FdxNote *note : qAsConst(sorted)) {
        if (note->isAttached())
            note->attached = places.trimmed(taken.take(note->attached));
    }
}

}

MVRTextRange fdxWordBefore(const QString &text, int offset)
{
    for (int end = qMin(offset, int(text.size())); end > qMax(0, offset - reach); --end) {
        if (NoteAnchor::endsWord(text.at(end - 1)))
            continue;
        const MVRTextRange stretch = stretchAround(text, end - 1);
        if (isWord(text, stretch))
            return stretch;
        end = stretch.start + 1;
    }
    return MVRTextRange();
}

MVRTextRange fdxFirstWord(const QString &text, int from)
{
    MVRTextRange mark;
    for (int start = from; start < qMin(int(text.size()), from + reach); ++start) {
        if (NoteAnchor::endsWord(text.at(start))) {
            if (mark.end == 0 && !text.at(start).isSpace())
                mark = MVRTextRange(start, start + 1);
            continue;
        }
        const MVRTextRange stretch = stretchAround(text, start);
        if (isWord(text, stretch))
            return stretch;
        start = stretch.end - 1;
    }
    return mark; // a paragraph of dashes has no better place
}

MVRTextRange fdxWordAt(const QString &text, int offset)
{
    if (offset < text.size() && !NoteAnchor::endsWord(text.at(offset)))
        return stretchAround(text, offset);
    if (offset > 0 && offset <= text.size() && !NoteAnchor::endsWord(text.at(offset - 1)))
        return stretchAround(text, offset - 1);
    const MVRTextRange next = fdxFirstWord(text, offset);
    return next.start < next.end ? next : fdxWordBefore(text, offset);
}

QVector<FdxNote> fdxNotes(const FdxScript &script, const FdxPlaces &places)
{
    Finder finder(script, places);
    finder.find();
    attach(places, &finder.notes);
    return finder.notes;
}

MVRFinalDraftFile::Note fdxNoteRecord(const FdxNote &note, const FdxScript &script,
                                      const FdxPlaces &places)
{
    const FdxElement &node = note.node;
    File::Note record;
    record.shape = note.shape;
    record.id = fdxAttribute(node, note.shape == File::NoteOfRange ? "Id" : "ID");
    record.name = fdxAttribute(node, "Name");
    record.type = fdxAttribute(node, "Type");
    record.author = fdxAttribute(node, "WriterName");
    if (record.author.isEmpty())
        record.author = fdxAttribute(node, "Author");
    record.date = fdxAttribute(node, "DateTime");
    record.dateModified = fdxAttribute(node, "DateModified");
    record.color = fdxAttribute(node, "Color");
    record.paragraphs = fdxParagraphTexts(script.tree(), node);
    record.range = note.range;
    record.text = note.range.start >= 0 ? places.text(note.range) : QString();
    return record;
}
