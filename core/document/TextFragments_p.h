// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>

#include <QTextBlock>
#include <QTextCharFormat>
#include <QTextDocument>
#include <QTextFragment>
#include <QVariant>
#include <QVector>

#include <limits>
#include <optional>
#include <utility>

/*!
    Walks the text fragments of a document in document order, over all its paragraphs.

    A fragment is one QTextFragment: characters of one paragraph that share a character format.
    Any edit of the document makes the walker invalid, as it does Qt's own iterators: collect
    values first, edit after.
*/
class FragmentWalker
{
public:
    /*! Stands at the first fragment of \a document that ends behind \a position. */
    FragmentWalker(const QTextDocument *document, int position)
        : m_block(document->findBlock(qMax(0, position)))
    {
        enterBlock();
        while (isValid() && m_end <= position)
            next();
    }

    bool isValid() const { return m_block.isValid(); }
    int start() const { return m_start; }
    int end() const { return m_end; }
    const QTextBlock &block() const { return m_block; }
    QTextCharFormat format() const { return m_fragment.charFormat(); }
    QString text() const { return m_fragment.text(); }
    bool isAtBlockStart() const { return m_start == m_blockStart; }
    bool isAtBlockEnd() const { return m_end == m_block.position() + m_block.length() - 1; }

    void next()
    {
        m_start = m_end;
        ++m_iterator;
        if (!readFragment()) {
            m_block = m_block.next();
            enterBlock();
        }
    }

    void previous()
    {
        while (m_block.isValid() && m_iterator == m_block.begin()) {
            m_block = m_block.previous();
            m_iterator = m_block.isValid() ? m_block.end() : QTextBlock::iterator();
        }
        if (m_block.isValid()) {
            --m_iterator;
            m_blockStart = m_block.position();
            m_start = m_iterator.fragment().position();
            readFragment();
        }
    }

private:
    void enterBlock()
    {
        for (; m_block.isValid(); m_block = m_block.next()) {
            m_iterator = m_block.begin();
            if (m_iterator.atEnd())
                continue;
            m_blockStart = m_block.position();
            m_start = m_blockStart;
            readFragment();
            return;
        }
    }

    /*! Reads the fragment at m_start, whose position Qt would have to search for. */
    bool readFragment()
    {
        if (m_iterator.atEnd())
            return false;
        m_fragment = m_iterator.fragment();
        m_end = m_start + m_fragment.length();
        return true;
    }

    QTextBlock m_block;
    QTextBlock::iterator m_iterator;
    QTextFragment m_fragment;
    int m_blockStart = 0;
    int m_start = 0;
    int m_end = 0;
};

/*!
    The text of \a block from one position of the document to another. The parts of a paragraph cost
    no more than a few times the whole.
*/
inline QString textBetween(const QTextBlock &block, int start, int end)
{
    constexpr qint64 fewParts = 32;
    if ((end - start) * fewParts >= block.length()) // Qt puts all of it together for any part
        return block.text().mid(start - block.position(), end - start);
    QString text;
    for (int position = start; position < end; ++position)
        text += block.document()->characterAt(position);
    return text;
}

/*! Tells whether a format holds every property of a pattern with an equal value. */
class FormatPattern
{
public:
    explicit FormatPattern(const QTextFormat &pattern)
    {
        const QMap<int, QVariant> properties = pattern.properties();
        for (auto it = properties.cbegin(); it != properties.cend(); ++it)
            m_properties.append({it.key(), it.value()});
    }
    FormatPattern(int property, const QVariant &value)
        : m_properties({{property, value}})
    {
    }

    bool matches(const QTextFormat &format) const
    {
        for (const auto &property : m_properties) {
            const QVariant value = format.property(property.first);
            // An absent property reads as an invalid variant, which would equal an invalid pattern.
            if (!value.isValid() || value != property.second)
                return false;
        }
        return true;
    }

private:
    QVector<std::pair<int, QVariant>> m_properties;
};

/*!
    True when nothing but an ordinary paragraph end stands before \a block: no border of a table
    cell or frame, and not the start of the document.
*/
inline bool followsParagraph(const QTextBlock &block)
{
    return block.position() > 0
        && block.document()->characterAt(block.position() - 1) == QChar::ParagraphSeparator;
}

/*!
    True when the matching fragment \a second continues the run that the matching fragment \a first
    belongs to; no other fragment lies between the two. Runs cross paragraph ends. Empty paragraphs
    and the borders of table cells and frames stop them unless their own character format matches.
*/
template <typename Matches>
bool continuesRun(const FragmentWalker &first, const FragmentWalker &second, const Matches &matches)
{
    if (first.end() == second.start())
        return true;
    if (!first.isAtBlockEnd() || !second.isAtBlockStart())
        return false;
    for (QTextBlock block = first.block().next(); block != second.block(); block = block.next()) {
        if (!matches(block.charFormat()))
            return false;
    }
    // What stands before a paragraph has the character format of the paragraph.
    return followsParagraph(second.block()) || matches(second.block().charFormat());
}

/*! Start of the run that the matching fragment under \a walker belongs to. */
template <typename Matches> int runStart(const FragmentWalker &walker, const Matches &matches)
{
    FragmentWalker first = walker;
    for (FragmentWalker previous = walker; previous.isValid(); first = previous) {
        previous.previous();
        if (!previous.isValid() || !matches(previous.format())
            || !continuesRun(previous, first, matches))
            break;
    }
    return first.start();
}

/*!
    The next run of text at or after \a walker whose fragments all match, beginning no earlier than
    the walker stands; the walker is left at the first fragment behind the run.
*/
template <typename Matches>
std::optional<MVRTextRange> nextRun(FragmentWalker &walker, const Matches &matches)
{
    while (walker.isValid() && !matches(walker.format()))
        walker.next();
    if (!walker.isValid())
        return std::nullopt;
    FragmentWalker last = walker;
    MVRTextRange run(walker.start(), walker.end());
    for (walker.next(); walker.isValid(); walker.next()) {
        if (!matches(walker.format()) || !continuesRun(last, walker, matches))
            break;
        last = walker;
        run.end = walker.end();
    }
    return run;
}

/*! The runs of the document that end behind \a position and begin before \a end, each whole, in
    document order. */
template <typename Matches>
QVector<MVRTextRange> runsBehind(const QTextDocument *document, int position,
                                 const Matches &matches, int end = std::numeric_limits<int>::max())
{
    QVector<MVRTextRange> runs;
    FragmentWalker walker(document, position);
    while (walker.isValid() && walker.start() < end) {
        if (!matches(walker.format())) {
            walker.next();
            continue;
        }
        // Only the first run can have begun before the position.
        const int start = runs.isEmpty() ? runStart(walker, matches) : walker.start();
        if (const auto run = nextRun(walker, matches))
            runs.append(MVRTextRange(start, run->end));
    }
    return runs;
}
