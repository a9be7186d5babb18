// SPDX-License-Identifier: MIT
#include <text/RtfAttachments_p.h>

#include <core/MVRTextUtil.h>
#include <core/document/TextMarks_p.h>
#include <core/document/WellFormed_p.h>
#include <text/InlineMarkup_p.h>
#include <text/LinkGaps_p.h>

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <map>
#include <numeric>
#include <optional>
#include <queue>
#include <vector>

namespace {

/*! Finds what codes of inline notes begin and end with, in groups b0, e0, b1, e1... by their kind.
 */
QRegularExpression anyCode()
{
    QStringList patterns;
    int kind = 0;
    for (const InlineMarkup::Code &code : InlineMarkup::codes) {
        patterns << QStringLiteral("(?<b%1>%2)").arg(kind).arg(InlineMarkup::openingPattern(code))
                 << QStringLiteral("(?<e%1>%2)").arg(kind).arg(InlineMarkup::closingPattern(code));
        ++kind;
    }
    return QRegularExpression(patterns.join(QLatin1Char('|')));
}

// Half of a surrogate pair may be a letter; the search for words itself knows.
bool isOfWord(QChar character)
{
    return character.isLetterOrNumber() || character.isSurrogate();
}

/*!
    For each position of a paragraph the end of the last word before it, or -1.

    Codes of inline notes go when they are read, and what they enclose becomes a note, which another
    one cannot be attached to: behind such a code the words are those in front of it.
*/
class WordEnds
{
public:
    explicit WordEnds(const QString &text)
    {
        m_ends.reserve(size_t(text.size()) + 1);
        if (text.contains(QLatin1String("Mvrn_"))) {
            static const QRegularExpression code = anyCode();
            for (auto it = code.globalMatch(wellFormed(text)); it.hasNext();) {
                const QRegularExpressionMatch match = it.next();
                addText(text, int(match.capturedStart()));
                addCode(match);
            }
        }
        addText(text, text.size());
        m_ends.push_back(m_last);
    }

    int before(int position) const { return m_ends[size_t(position)]; }

private:
    void addText(const QString &text, int end)
    {
        for (int i = int(m_ends.size()); i < end; ++i) {
            m_ends.push_back(m_last);
            if (isOfWord(text.at(i)))
                m_last = i + 1;
        }
    }

    void addCode(const QRegularExpressionMatch &match)
    {
        for (const int kind : {InlineMarkup::Annotation, InlineMarkup::Footnote}) {
            std::optional<int> &outside = m_outside[kind];
            if (!outside && match.capturedStart(QStringLiteral("b%1").arg(kind)) >= 0) {
                outside = m_last;
            } else if (outside && match.capturedStart(QStringLiteral("e%1").arg(kind)) >= 0) {
                m_last = *outside;
                outside.reset();
            }
        }
        m_ends.resize(size_t(match.capturedEnd()), m_last);
    }

    std::vector<int> m_ends;
    int m_last = -1;
    std::optional<int>
        m_outside[std::size(InlineMarkup::codes)]; // the last word, while one is open
};

/*! Finds the words before positions; asked in document order it looks at no text twice. */
class WordsBefore
{
public:
    explicit WordsBefore(QTextDocument *document)
        : m_document(document)
    {
    }

    /*! The word that \a position stands in or behind, in its paragraph; empty when there is none.
     */
    MVRTextRange word(int position)
    {
        const QTextBlock block = m_document->findBlock(position);
        if (block.position() != m_blockStart) {
            m_blockStart = block.position();
            m_ends.emplace(block.text());
            m_word = MVRTextRange(m_blockStart, m_blockStart);
            m_asked = -1;
        }
        const int end = m_ends->before(qMin(position - m_blockStart, block.length() - 1));
        if (end < 0) {
            m_word = MVRTextRange(m_blockStart, m_blockStart);
        } else if (end != m_asked) {
            const MVRTextRange at(m_blockStart + end, m_blockStart + end);
            m_word = MVRTextRange(MVRTextUtil::closestWordCursor(at.toTextCursor(m_document), false,
                                                                 MVRTextUtil::Backward, nullptr));
        }
        m_asked = end;
        return m_word;
    }

private:
    QTextDocument *m_document;
    int m_blockStart = -1;
    std::optional<WordEnds> m_ends; // of the paragraph asked last
    int m_asked = -1; // the end of the word found there
    MVRTextRange m_word;
};

/*! True when there is more than ends of paragraphs and cells, which carry no note. */
bool holdsText(const QTextDocument &document, const MVRTextRange &range)
{
    int position = range.start;
    while (position < range.end && isEndMark(document.characterAt(position)))
        ++position;
    return position < range.end;
}

/*! The first to begin comes first, of those the longest, of those the comment. */
struct ComesLater
{
    bool operator()(const RtfAttachment &a, const RtfAttachment &b) const
    {
        if (a.range.start != b.range.start)
            return a.range.start > b.range.start;
        if (a.range.end != b.range.end)
            return a.range.end < b.range.end;
        return a.kind == MVRTextRtfNote::Footnote && b.kind == MVRTextRtfNote::Comment;
    }
};

using AttachmentQueue = std::priority_queue<RtfAttachment, std::vector<RtfAttachment>, ComesLater>;

/*! Gives the last letter of what both want to \a second. */
void shareText(const QTextDocument &document, RtfAttachment *first, RtfAttachment *second)
{
    int middle = first->range.end - 1;
    if (middle > 0 && document.characterAt(middle).isLowSurrogate())
        --middle;
    if (middle > first->range.start)
        first->range.end = second->range.start = middle;
    else // a single letter
        second->range.start = second->range.end;
}

/*! Places \a next behind the others, none of which begins later. */
void place(const QTextDocument &document, RtfAttachment next, QVector<RtfAttachment> *places,
           AttachmentQueue *waiting)
{
    if (!places->isEmpty() && next.range.start < places->last().range.end) {
        RtfAttachment &last = places->last();
        if (next.range.start > last.range.start) {
            last.range.end = next.range.start;
        } else if (next.range.end == last.range.end) {
            shareText(document, &last, &next);
            waiting->push(next);
            return;
        } else if (next.range.end > last.range.end) { // which keeps what the shorter one leaves
            next.range.start = last.range.end;
            waiting->push(next);
            return;
        } else {
            last.range.start = next.range.end;
            waiting->push(places->takeLast());
        }
    }
    places->append(next);
}

/*! Finds text beside the links of notes that come in the order of the text. */
class BesideLinks
{
public:
    explicit BesideLinks(QTextDocument *document)
        : m_gaps(*document)
        , m_words(document)
    {
    }

    /*!
        \a range, where that covers a link the rest of it, else the mark behind the link, the word
        before it or, empty, the place of a label.
    */
    MVRTextRange place(const MVRTextRange &range, bool isSaid)
    {
        if (!m_gaps.coversLink(range))
            return range;
        const MVRTextRange link = m_gaps.link(range);
        const MVRTextRange part = m_gaps.partBeside(range);
        const bool isBehind = part.start >= link.end;
        if (part.start < part.end && (isSaid || isBehind))
            return part;
        const MVRTextRange mark = m_gaps.markBehind(link);
        if (mark.start < mark.end)
            return mark;
        MVRTextRange word = m_words.word(link.start);
        word.end = qMin(word.end, link.start);
        if (word.start < word.end && !m_gaps.coversLink(word))
            return word;
        return {range.end, range.end};
    }

private:
    LinkGaps m_gaps;
    WordsBefore m_words;
};

MVRTextRange wantedRange(const QTextDocument &document, const MVRTextRtfNote &note,
                         WordsBefore *words)
{
    const MVRTextRange range(note.start, note.end);
    if (range.start < range.end && holdsText(document, range))
        return range;
    // Up to the mark, so that it comes to stand behind the same full stop again.
    const MVRTextRange word = words->word(note.end);
    return word.start < word.end ? MVRTextRange(word.start, note.end)
                                 : MVRTextRange(note.end, note.end);
}

/*! What each note wants; notes of one kind that want the same are together. */
AttachmentQueue wantedPlaces(QTextDocument *document, const MVRTextRtfNotes &notes)
{
    std::vector<int> order(notes.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&notes](int a, int b) { return notes[a].end < notes[b].end; });
    std::map<std::pair<MVRTextRange, int>, RtfAttachment> places;
    WordsBefore words(document);
    BesideLinks links(document);
    for (const int number : order) {
        const MVRTextRtfNote &note = notes[number];
        MVRTextRange range = wantedRange(*document, note, &words);
        if (!isOfApplication(note))
            range = links.place(range, note.start < note.end);
        RtfAttachment &place = places[{range, notes[number].kind}];
        place.range = range;
        place.kind = notes[number].kind;
        place.notes.append(number);
    }
    AttachmentQueue queue;
    for (auto &entry : places) {
        std::sort(entry.second.notes.begin(), entry.second.notes.end());
        queue.push(std::move(entry.second));
    }
    return queue;
}

} // namespace

bool isOfApplication(const MVRTextRtfNote &note)
{
    return note.start < note.end && (note.kind == MVRTextRtfNote::Footnote || !note.data.isEmpty());
}

QVector<RtfAttachment> attachmentsForNotes(QTextDocument *document, const MVRTextRtfNotes &notes)
{
    QVector<RtfAttachment> places;
    for (AttachmentQueue waiting = wantedPlaces(document, notes); !waiting.empty();) {
        const RtfAttachment next = waiting.top();
        waiting.pop();
        place(*document, next, &places, &waiting);
    }
    // What is left of a range may be no text.
    for (RtfAttachment &place : places) {
        if (!holdsText(*document, place.range))
            place.range.start = place.range.end;
    }
    return places;
}
