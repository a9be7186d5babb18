// SPDX-License-Identifier: MIT
#pragma once

#include <core/document/EditBlock_p.h>
#include <core/document/Selection_p.h>
#include <core/document/TextFragments_p.h>

#include <algorithm>
#include <type_traits>
#include <vector>

/*!
    A format to be set: on the text of [start, end), or, where both are equal, as the character
    format of the paragraph that begins there.
*/
struct FormatEdit
{
    int start;
    int end;
    QTextCharFormat format;

    void apply(QTextCursor &cursor) const
    {
        cursor.setPosition(start);
        if (start == end) {
            cursor.setBlockCharFormat(format);
        } else {
            cursor.setPosition(end, QTextCursor::KeepAnchor);
            cursor.setCharFormat(format);
        }
    }
};

template <typename Change>
QVector<FormatEdit> collectFormatEdits(FragmentWalker &walker, const QTextDocument *document,
                                       int start, int end, const Change &change);

/*!
    Collects what \a change does to the formats of [\a start, \a end), in document order.

    Paragraph ends inside the range count too: they hold the character format of the paragraph that
    follows. A negative \a start includes that of the document's first paragraph.
    \param change  called as change(QTextCharFormat &) or, in document order, as
                   change(QTextCharFormat &, const MVRTextRange &place), where the place of a
                   paragraph's format is empty; what it leaves equal is not collected
*/
template <typename Change>
QVector<FormatEdit> collectFormatEdits(const QTextDocument *document, int start, int end,
                                       const Change &change)
{
    FragmentWalker walker(document, start);
    return collectFormatEdits(walker, document, start, end, change);
}

/*!
    The same for ranges in the order of the text: \a walker, which stands at or before the first of
    them, goes on with each.
*/
template <typename Change>
QVector<FormatEdit> collectFormatEdits(FragmentWalker &walker, const QTextDocument *document,
                                       int start, int end, const Change &change)
{
    QVector<FormatEdit> edits;
    const auto collect = [&](int from, int to, const QTextCharFormat &before) {
        QTextCharFormat after = before;
        if constexpr (std::is_invocable_v<Change, QTextCharFormat &, const MVRTextRange &>)
            change(after, MVRTextRange(from, to));
        else
            change(after);
        if (after != before)
            edits.append({from, to, after});
    };
    while (walker.isValid() && walker.end() <= start)
        walker.next();
    QTextBlock block = document->findBlock(qMax(0, start));
    for (; block.isValid() && block.position() <= end; block = block.next()) {
        if (block.position() > start)
            collect(block.position(), block.position(), block.charFormat());
        for (; walker.isValid() && walker.block() == block && walker.start() < end; walker.next()) {
            collect(qMax(start, walker.start()), qMin(end, walker.end()), walker.format());
            if (walker.end() > end)
                return edits;
        }
    }
    return edits;
}

/*!
    The same for what is selected: an empty paragraph that the selection begins with, like that of
    an empty cell, lies in it and counts as well.
*/
template <typename Change>
QVector<FormatEdit> collectFormatEdits(const QTextDocument *document, const MVRTextRange &selected,
                                       const Change &change)
{
    const bool beginsEmpty = document->findBlock(selected.start).length() == 1;
    return collectFormatEdits(document, selected.start - (beginsEmpty ? 1 : 0), selected.end,
                              change);
}

template <typename Change>
QVector<FormatEdit> collectFormatEdits(const Selection &selection, const Change &change)
{
    QVector<FormatEdit> edits;
    for (const MVRTextRange &range : selection.ranges())
        edits += collectFormatEdits(selection.document(), range, change);
    return edits;
}

/*! The same for the selected characters alone, without an empty paragraph in front of them. */
template <typename Change>
QVector<FormatEdit> collectCharacterEdits(const Selection &selection, const Change &change)
{
    QVector<FormatEdit> edits;
    for (const MVRTextRange &range : selection.ranges())
        edits += collectFormatEdits(selection.document(), range.start, range.end, change);
    return edits;
}

/*! Applies \a edits as one undo step; none are no undo step. */
inline void applyFormatEdits(QTextDocument *document, const QVector<FormatEdit> &edits)
{
    if (edits.isEmpty())
        return;
    const EditBlock undoStep(document);
    QTextCursor cursor(document);
    for (const FormatEdit &edit : edits)
        edit.apply(cursor);
}

/*! Collects and applies; see collectFormatEdits(). */
template <typename Change>
void changeFormats(QTextDocument *document, int start, int end, const Change &change)
{
    applyFormatEdits(document, collectFormatEdits(document, start, end, change));
}

template <typename Change> void changeFormats(const Selection &selection, const Change &change)
{
    applyFormatEdits(selection.document(), collectFormatEdits(selection, change));
}

/*! What \a change makes of the formats of a document; each of them is changed only once. */
template <typename Change> class ChangedFormats
{
public:
    explicit ChangedFormats(const Change &change)
        : m_change(change)
    {
    }

    /*! The new format of what has the format \a index; null when it stays as it is. */
    template <typename Part> const QTextCharFormat *changed(const Part &part)
    {
        const size_t index = size_t(part.charFormatIndex());
        if (index >= m_formats.size())
            m_formats.resize(index + 1);
        Entry &entry = m_formats[index];
        if (!entry.isKnown) {
            entry.isKnown = true;
            entry.format = part.charFormat();
            m_change(entry.format);
            entry.isChanged = entry.format != part.charFormat();
        }
        return entry.isChanged ? &entry.format : nullptr;
    }

private:
    struct Entry
    {
        bool isKnown = false;
        bool isChanged = false;
        QTextCharFormat format;
    };

    const Change &m_change;
    std::vector<Entry> m_formats; // by index in the document's collection
};

/*!
    Whether any format that the document has, or had, is one for which \a test answers true. Tells
    without a look at the text that there is nothing to do, as is often so.
*/
template <typename Test> bool hasFormat(const QTextDocument &document, const Test &test)
{
    const QVector<QTextFormat> formats = document.allFormats();
    return std::any_of(formats.cbegin(), formats.cend(), test);
}

/*! Whether \a change would change any format that the document has or had. */
template <typename Change>
bool changesAnyFormat(const QTextDocument *document, const Change &change)
{
    return hasFormat(*document, [&change](const QTextFormat &format) {
        if (!format.isCharFormat())
            return false;
        QTextCharFormat changed = format.toCharFormat();
        change(changed);
        return changed != format;
    });
}

/*! Collects what \a change, called as change(QTextCharFormat &), does to the whole document. */
template <typename Change>
QVector<FormatEdit> collectAllFormatEdits(const QTextDocument *document, const Change &change)
{
    QVector<FormatEdit> edits;
    if (!changesAnyFormat(document, change))
        return edits;
    ChangedFormats<Change> formats(change);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        if (const QTextCharFormat *format = formats.changed(block))
            edits.append({block.position(), block.position(), *format});
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (const QTextCharFormat *format = formats.changed(fragment)) {
                const int start = fragment.position();
                edits.append({start, start + fragment.length(), *format});
            }
        }
    }
    return edits;
}

/*!
    Changes every character format of the document; does nothing for null. See
    collectFormatEdits() for the forms of \a change.
*/
template <typename Change> void changeAllFormats(QTextDocument *document, const Change &change)
{
    if (!document)
        return;
    if constexpr (std::is_invocable_v<Change, QTextCharFormat &, const MVRTextRange &>)
        changeFormats(document, -1, document->characterCount(), change);
    else
        applyFormatEdits(document, collectAllFormatEdits(document, change));
}

/*!
    Merges \a format into the selection; no undo step when every character holds it already. Does
    nothing without a selection.
*/
inline void mergeIfChanged(const QTextCursor &cursor, const QTextCharFormat &format)
{
    const Selection selection(cursor);
    const auto merge = [&format](QTextCharFormat &target) { target.merge(format); };
    applyFormatEdits(selection.document(), collectCharacterEdits(selection, merge));
}

/*!
    Selects [\a start, \a end). False when more is selected: across the border of a table cell that
    is a rectangle of whole cells, or the whole table.
*/
inline bool selectRange(QTextCursor &cursor, int start, int end)
{
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    return !cursor.hasComplexSelection() && cursor.selectionStart() == start
        && cursor.selectionEnd() == end;
}

/*! Merges \a format into [\a start, \a end) and nothing else; see selectRange(). */
inline void mergeIntoRange(QTextCursor &cursor, int start, int end, const QTextCharFormat &format)
{
    if (selectRange(cursor, start, end))
        cursor.mergeCharFormat(format);
    else
        changeFormats(cursor.document(), start, end,
                      [&format](QTextCharFormat &target) { target.merge(format); });
}

/*! Removes the first \a count paragraphs; false, nothing being removed, when no other one follows.
 */
inline bool removeFirstParagraphs(QTextDocument *document, int count)
{
    const QTextBlock next = document->findBlockByNumber(count);
    if (!next.isValid())
        return false;
    const QTextCharFormat charFormat = next.charFormat();
    const EditBlock undoStep(document);
    QTextCursor cursor(document);
    cursor.setPosition(next.position(), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.setBlockCharFormat(charFormat); // Qt left that of the paragraph before
    return true;
}
