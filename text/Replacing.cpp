// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/document/EditBlock_p.h>
#include <core/document/Selection_p.h>
#include <core/document/WellFormed_p.h>

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>

#ifdef MVR_HAS_QREGEXP
#include <QRegExp>
#endif

#include <optional>

namespace {

using Ranges = QVector<MVRTextRange>;

/*! What a search goes on behind, once what it found is replaced. */
struct Replacement
{
    explicit Replacement(const QString &after)
        : removes(after.isEmpty())
        , endsParagraph(after.endsWith(QLatin1Char('\n')) || after.endsWith(QLatin1Char('\r'))
                        || after.endsWith(QChar::ParagraphSeparator))
        , last(removes || endsParagraph ? QChar(QLatin1Char(' ')) : after.back())
    {
    }

    const bool removes;
    const bool endsParagraph;
    const QChar last;
};

#ifdef MVR_HAS_QREGEXP

/*!
    Finds what an expression matches in a paragraph, each match as it is found once those before it
    are replaced, without replacing anything: a replacement can be what a "\b" behind it stands
    beside, and its line feed can begin the paragraph that a "^" matches.
*/
class ExpressionSearch
{
public:
    ExpressionSearch(const QRegExp &expression, const QString &after)
        : m_expression(expression)
        , m_after(after)
    {
    }

    /*! The matches in \a text from \a offset on. */
    Ranges operator()(const QString &text, int offset) const
    {
        // Position 0 of the text is 1 here. The expression keeps a copy of what it searches, which
        // is not to become one of its own with each change.
        QString buffer = QLatin1Char(' ') + text;
        QChar *const characters = buffer.data();
        const QString subject = QString::fromRawData(characters, buffer.size());
        Ranges matches;
        bool beginsParagraph = offset == 0;
        for (int from = offset + 1; from <= buffer.size();) {
            const int start = m_expression.indexIn(
                subject, from, beginsParagraph ? QRegExp::CaretAtOffset : QRegExp::CaretWontMatch);
            if (start < 0)
                break;
            const int end = start + m_expression.matchedLength();
            if (start == end) { // goes on behind the next character: it would be found for ever
                if (!m_after.removes)
                    matches.append(MVRTextRange(start - 1, end - 1));
                const bool isPair = end < buffer.size() && characters[end].isHighSurrogate();
                from = end + (isPair ? 2 : 1);
                beginsParagraph = false;
                continue;
            }
            matches.append(MVRTextRange(start - 1, end - 1));
            beginsParagraph
                = m_after.endsParagraph || (m_after.removes && beginsParagraph && start == from);
            characters[end - 1] = m_after.removes ? characters[start - 1] : m_after.last;
            from = end;
        }
        return matches;
    }

private:
    const QRegExp m_expression;
    const Replacement m_after;
};

#endif

/*! The same for the other kind of expression, which knows a caret only at the start of a text. */
class PatternSearch
{
public:
    PatternSearch(const QRegularExpression &expression, const QString &after)
        : m_expression(expression)
        , m_after(after)
    {
    }

    /*! The matches; nothing at all where a search takes more steps than the engine allows. */
    std::optional<Ranges> operator()(const QString &text, int offset) const
    {
        QString buffer = wellFormed(text);
        QChar *const characters = buffer.data();
        const int size = int(buffer.size());
        Ranges matches;
        int paragraph = 0; // where the one begins that is searched, once what is found is replaced
        const bool isWithinPair = offset < size && characters[offset].isLowSurrogate();
        for (int from = isWithinPair ? offset + 1 : offset; from <= size;) {
            const QString subject = QString::fromRawData(characters + paragraph, size - paragraph);
            const QRegularExpressionMatch match
                = findMatch(m_expression, subject, from - paragraph);
            if (!match.isValid())
                return std::nullopt;
            if (!match.hasMatch())
                break;
            const int start = paragraph + int(match.capturedStart());
            const int end = paragraph + int(match.capturedEnd());
            if (start < end || !m_after.removes)
                matches.append(MVRTextRange(start, end));
            if (start == end) { // goes on behind the next character: it would be found for ever
                from = end + (end < size && characters[end].isHighSurrogate() ? 2 : 1);
                continue;
            }
            if (m_after.endsParagraph || (m_after.removes && start == paragraph))
                paragraph = end;
            else
                setLast(characters, paragraph, end,
                        m_after.removes ? characters[start - 1] : m_after.last);
            from = end;
        }
        return matches;
    }

private:
    /*! Puts what a search goes on behind in front of \a end, without parting surrogate pairs. */
    static void setLast(QChar *characters, int paragraph, int end, QChar last)
    {
        if (end - 2 >= paragraph && characters[end - 1].isLowSurrogate())
            characters[end - 2] = QChar::ReplacementCharacter;
        characters[end - 1] = last.isSurrogate() ? QChar(QChar::ReplacementCharacter) : last;
    }

    const QRegularExpression m_expression;
    const Replacement m_after;
};

/*!
    Replaces what \a search finds at or behind the end of the selection.

    \param search  called as search(const QString &paragraph, int offset); gives the matches, or
                   nothing to have the document left as it is
    \return how many were replaced; -1 where a search gave nothing
*/
template <typename Search>
int replaceMatches(const Search &search, const QString &after, const QTextCursor &from)
{
    Ranges matches;
    const int start = searchPosition(from);
    QTextBlock block = from.document()->findBlock(start);
    for (; block.isValid(); block = block.next()) {
        QString text = block.text();
        text.replace(QChar::Nbsp, QLatin1Char(' '));
        const int position = block.position();
        const std::optional<Ranges> found = search(text, qMax(0, start - position));
        if (!found)
            return -1;
        for (const MVRTextRange &range : *found)
            matches.append(MVRTextRange(position + range.start, position + range.end));
    }
    if (matches.isEmpty())
        return 0;
    const EditBlock undoStep(from);
    // From the last to the first, so that none moves those that are still to be replaced.
    QTextCursor cursor(from.document());
    for (auto match = matches.crbegin(); match != matches.crend(); ++match) {
        cursor.setPosition(match->start);
        cursor.setPosition(match->end, QTextCursor::KeepAnchor);
        cursor.insertText(after);
    }
    return matches.size();
}

} // namespace

int MVRTextDoc::replaceAll(const QRegularExpression &expression, const QString &after,
                           const QTextCursor &from)
{
    if (from.isNull() || expression.pattern().isEmpty() || !expression.isValid())
        return 0;
    return replaceMatches(PatternSearch(expression, after), after, from);
}

void MVRTextDoc::replace(const QRegularExpression &expression, const QString &after,
                         const QTextCursor &from)
{
    replaceAll(expression, after, from);
}

#ifdef MVR_HAS_QREGEXP
int MVRTextDoc::replaceAll(const QRegExp &expression, const QString &after, const QTextCursor &from)
{
    if (from.isNull() || expression.isEmpty() || !expression.isValid())
        return 0;
    return replaceMatches(ExpressionSearch(expression, after), after, from);
}

void MVRTextDoc::replace(const QRegExp &expression, const QString &after, const QTextCursor &from)
{
    replaceAll(expression, after, from);
}
#endif

int MVRTextDoc::replaceAll(const QString &before, const QString &after, const QTextCursor &from)
{
    if (from.isNull() || before.isEmpty())
        return 0;
    const auto search = [&before](const QString &text, int offset) {
        Ranges matches;
        int start = text.indexOf(before, offset, Qt::CaseInsensitive);
        while (start >= 0) {
            const int end = start + before.size();
            matches.append(MVRTextRange(start, end));
            start = text.indexOf(before, end, Qt::CaseInsensitive);
        }
        return matches;
    };
    return replaceMatches(search, after, from);
}

void MVRTextDoc::replace(const QString &before, const QString &after, const QTextCursor &from)
{
    replaceAll(before, after, from);
}
