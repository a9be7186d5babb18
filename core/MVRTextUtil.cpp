// SPDX-License-Identifier: MIT
#include <core/MVRTextUtil.h>

#include <core/MVRTextRange.h>
#include <core/document/EditBlock_p.h>
#include <core/document/Selection_p.h>
#include <core/document/TextFragments_p.h>

#include <QTextBoundaryFinder>

#include <algorithm>

namespace {

void remove(QTextDocument *document, const MVRTextRange &range)
{
    QTextCursor cursor = range.toTextCursor(document);
    cursor.removeSelectedText();
}

/*!
    Collects the separators of empty paragraphs that follow another empty one inside \a range; no
    border of a table cell is among them.
*/
QVector<MVRTextRange> repeatedEmptyLines(const QTextDocument *document, const MVRTextRange &range)
{
    QVector<MVRTextRange> lines;
    QTextBlock block = document->findBlock(range.start);
    bool afterEmpty = false;
    for (; block.isValid() && block.position() <= range.end; block = block.next()) {
        const bool isEmpty = block.length() == 1 && block.position() >= range.start;
        if (isEmpty && afterEmpty && followsParagraph(block))
            lines.append(MVRTextRange(block.position() - 1, block.position()));
        afterEmpty = isEmpty;
    }
    return lines;
}

/*! The part of \a range between the white space that may go at both ends. */
MVRTextRange trimmedRange(const QTextDocument *document, const MVRTextRange &range, int count,
                          int limit)
{
    int first = range.start;
    while (first < range.end && document->characterAt(first).isSpace())
        ++first;
    int last = range.end;
    while (last > first && document->characterAt(last - 1).isSpace())
        --last;
    return MVRTextRange(qMax(range.start, first - qMax(0, count)),
                        last + qMin(range.end - last, qMax(0, limit)));
}

// Word boundaries never reach across white space, so words are looked for between two blanks at a
// time. The bound keeps text without any blanks from being read again for every word.
constexpr int maxToken = 1000;

/*! The characters without white space around \a position, inside the paragraph [first, last). */
MVRTextRange tokenAt(const QTextDocument *document, int position, const MVRTextRange &paragraph)
{
    MVRTextRange token(position, position);
    while (token.start > paragraph.start && position - token.start < maxToken
           && !document->characterAt(token.start - 1).isSpace())
        --token.start;
    while (token.end < paragraph.end && token.end - position < maxToken
           && !document->characterAt(token.end).isSpace())
        ++token.end;
    return token;
}

bool holdsLetterOrNumber(QStringView text)
{
    const QVector<uint> characters = text.toUcs4();
    return std::any_of(characters.cbegin(), characters.cend(),
                       [](uint character) { return QChar::isLetterOrNumber(character); });
}

QVector<MVRTextRange> wordsIn(const QTextDocument *document, const MVRTextRange &token)
{
    QVector<MVRTextRange> words;
    if (token.start == token.end)
        return words;
    QString text;
    text.reserve(token.end - token.start);
    for (int position = token.start; position < token.end; ++position)
        text.append(document->characterAt(position));
    // The finder's own word marks leave out scripts that are written without blanks.
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, text);
    int start = 0;
    for (int end = finder.toNextBoundary(); end >= 0; end = finder.toNextBoundary()) {
        if (holdsLetterOrNumber(QStringView(text).mid(start, end - start)))
            words.append(MVRTextRange(token.start + start, token.start + end));
        start = end;
    }
    return words;
}

// A cursor finds its place faster than a walker, which begins with the paragraph.
bool holdsAny(QTextDocument *document, const MVRTextRange &word, const QSet<int> *properties)
{
    if (!properties || properties->isEmpty())
        return false;
    QTextCursor cursor(document);
    for (int position = word.start + 1; position <= word.end; ++position) {
        cursor.setPosition(position);
        const QTextCharFormat format = cursor.charFormat();
        for (const int property : *properties) {
            if (format.boolProperty(property))
                return true;
        }
    }
    return false;
}

/*! The closest word of one paragraph; an empty range when it has none. */
MVRTextRange closestWord(QTextDocument *document, const MVRTextRange &paragraph, int position,
                         bool forward, const QSet<int> *skipProperties)
{
    int from = position;
    for (;;) {
        const MVRTextRange token = tokenAt(document, from, paragraph);
        const QVector<MVRTextRange> words = wordsIn(document, token);
        for (int i = 0; i < words.size(); ++i) {
            const MVRTextRange &word = forward ? words[i] : words[words.size() - 1 - i];
            const bool isOnThisSide = forward ? word.start >= position : word.start <= position;
            if (isOnThisSide && !holdsAny(document, word, skipProperties))
                return word;
        }
        const int edge = forward ? token.end : token.start;
        if (edge == (forward ? paragraph.end : paragraph.start))
            return MVRTextRange();
        from = forward ? edge + 1 : edge - 1;
    }
}

MVRTextRange textOf(const QTextBlock &block)
{
    return MVRTextRange(block.position(), block.position() + block.length() - 1);
}

/*! Removes what trim() removes from each of \a ranges; false when that is nothing. */
bool trimRanges(QTextDocument *document, const QVector<MVRTextRange> &ranges, bool emptyLines,
                int count, int limit)
{
    QVector<MVRTextRange> removals;
    for (const MVRTextRange &range : ranges) {
        const MVRTextRange kept = trimmedRange(document, range, count, limit);
        if (kept.start > range.start)
            removals.append(MVRTextRange(range.start, kept.start));
        if (emptyLines)
            removals += repeatedEmptyLines(document, kept);
        if (kept.end < range.end)
            removals.append(MVRTextRange(kept.end, range.end));
    }
    if (removals.isEmpty())
        return false;
    const EditBlock undoStep(document);
    for (auto it = removals.crbegin(); it != removals.crend(); ++it)
        remove(document, *it);
    return true;
}

} // namespace

void MVRTextUtil::trim(QTextCursor selection, bool emptyLines, int count, int limit, bool *changed)
{
    const Selection selected(selection);
    const bool isTrimmed
        = trimRanges(selected.document(), selected.ranges(), emptyLines, count, limit);
    if (changed)
        *changed = isTrimmed;
}

void MVRTextUtil::trim(QTextDocument *document, bool emptyLines, int count, int limit,
                       bool *changed)
{
    const bool isTrimmed = document
        && trimRanges(document, {MVRTextRange(0, document->characterCount() - 1)}, emptyLines,
                      count, limit);
    if (changed)
        *changed = isTrimmed;
}

QTextDocumentFragment MVRTextUtil::trimmed(const QTextDocumentFragment &fragment)
{
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    QTextCursor(&document).insertFragment(fragment);
    trim(&document, false, 0, 0, nullptr);
    return QTextDocumentFragment(&document);
}

QTextCursor MVRTextUtil::closestWordCursor(QTextCursor cursor, bool leaveParagraph,
                                           Direction direction, const QSet<int> *skipProperties)
{
    if (cursor.isNull())
        return cursor;
    QTextDocument *document = cursor.document();
    const bool forward = direction == Forward;
    int position = cursor.position();
    QTextBlock block = cursor.block();
    while (block.isValid()) {
        const MVRTextRange word
            = closestWord(document, textOf(block), position, forward, skipProperties);
        if (word.start < word.end)
            return word.toTextCursor(document);
        if (!leaveParagraph)
            break;
        block = forward ? block.next() : block.previous();
        if (block.isValid())
            position = forward ? textOf(block).start : textOf(block).end;
    }
    cursor.clearSelection();
    return cursor;
}
