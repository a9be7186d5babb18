// SPDX-License-Identifier: MIT
#include <core/MVRTextFinder.h>

#include <core/MVRTextFormat.h>
#include <core/document/Selection_p.h>
#include <core/document/TextFragments_p.h>

#include <functional>

namespace {

using Matches = std::function<bool(const QTextCharFormat &)>;

QTextCursor selected(const QTextCursor &any, int start, int end)
{
    QTextCursor cursor = any;
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    return cursor;
}

bool asksForAnyImageLink(const QTextCharFormat &properties)
{
    return properties.property(MVRTextFormat::ImageLinkProperty).userType() == QMetaType::Bool
        && properties.boolProperty(MVRTextFormat::ImageLinkProperty);
}

Matches matcher(const QTextCharFormat &properties, bool anyImageLink)
{
    if (!anyImageLink) {
        return [pattern = FormatPattern(properties)](const QTextCharFormat &format) {
            return pattern.matches(format);
        };
    }
    QTextCharFormat others = properties;
    others.clearProperty(MVRTextFormat::ImageLinkProperty);
    return [pattern = FormatPattern(others)](const QTextCharFormat &format) {
        return !format.stringProperty(MVRTextFormat::ImageLinkProperty).isEmpty()
            && pattern.matches(format);
    };
}

Matches matcher(int id, const QVariant &value, bool exact)
{
    if (!exact)
        return [id](const QTextCharFormat &format) { return format.hasProperty(id); };
    return [pattern = FormatPattern(id, value)](const QTextCharFormat &format) {
        return pattern.matches(format);
    };
}

/*! The whole run around the fragment under \a walker, which matches. */
MVRTextRange runAround(FragmentWalker walker, const Matches &matches)
{
    MVRTextRange run(runStart(walker, matches), walker.end());
    if (const auto rest = nextRun(walker, matches))
        run.end = rest->end;
    return run;
}

/*! What the selected characters say: all of them, any, or that there are none. */
struct Matched
{
    bool any = false;
    bool all = false;
};

Matched matched(const Selection &selection, const Matches &matches)
{
    bool anyMatches = false;
    bool anyOther = false;
    for (const MVRTextRange &range : selection.ranges()) {
        FragmentWalker walker(selection.document(), range.start);
        for (; walker.isValid() && walker.start() < range.end; walker.next()) {
            const bool isMatch = matches(walker.format());
            anyMatches |= isMatch;
            anyOther |= !isMatch;
            if (anyMatches && anyOther)
                return {true, false};
        }
    }
    return {anyMatches, anyMatches && !anyOther};
}

void collectAnchors(const QTextDocument *document, const MVRTextRange &range, bool whole,
                    QList<MVRTextRange> *anchors)
{
    QTextCharFormat lastFormat;
    QTextBlock lastBlock;
    FragmentWalker walker(document, range.start);
    for (; walker.isValid() && walker.start() < range.end; walker.next()) {
        const QTextCharFormat format = walker.format();
        if (!format.isAnchor())
            continue;
        const int start = qMax(walker.start(), range.start);
        const int end = qMin(walker.end(), range.end);
        const bool continues = whole && lastBlock == walker.block() && anchors->last().end == start
            && format.anchorHref() == lastFormat.anchorHref()
            && format.anchorNames() == lastFormat.anchorNames();
        if (continues)
            anchors->last().end = end;
        else
            anchors->append(MVRTextRange(start, end));
        lastFormat = format;
        lastBlock = walker.block();
    }
}

/*! The format at the cursor's position in the text, without what the user is about to type in. */
QTextCharFormat formatInText(const QTextCursor &cursor)
{
    QTextCursor plain(cursor.document());
    plain.setPosition(cursor.position());
    return plain.charFormat();
}

} // namespace

QTextCursor MVRTextFinder::findFragment(const QTextCharFormat &properties, const QTextCursor &from,
                                        bool exact)
{
    if (from.isNull())
        return QTextCursor();
    const bool anyImageLink = !exact && asksForAnyImageLink(properties);
    const Matches matches = matcher(properties, anyImageLink);
    const int position = searchPosition(from);
    FragmentWalker walker(from.document(), position);
    while (walker.isValid() && !matches(walker.format()))
        walker.next();
    if (!walker.isValid())
        return QTextCursor();
    if (anyImageLink) {
        const int image = qMax(position, walker.start());
        return selected(from, image, image + 1);
    }
    return selected(from, walker.start(), walker.end());
}

QTextCursor MVRTextFinder::findContinuousFragment(const QTextCharFormat &properties,
                                                  const QTextCursor &from, bool exact)
{
    if (from.isNull())
        return QTextCursor();
    const Matches matches = matcher(properties, !exact && asksForAnyImageLink(properties));
    FragmentWalker walker(from.document(), searchPosition(from));
    while (walker.isValid() && !matches(walker.format()))
        walker.next();
    if (!walker.isValid())
        return QTextCursor();
    const MVRTextRange run = runAround(walker, matches);
    return selected(from, run.start, run.end);
}

QTextCursor MVRTextFinder::findFragmentAtPosition(const QTextCharFormat &properties,
                                                  const QTextCursor &at)
{
    if (at.isNull())
        return QTextCursor();
    const Matches matches = matcher(properties, false);
    const int position = at.position();
    FragmentWalker walker(at.document(), position);
    if (position > at.block().position()) {
        const FragmentWalker before(at.document(), position - 1);
        if (matches(before.format()))
            walker = before;
    }
    if (!walker.isValid() || !matches(walker.format()))
        return QTextCursor();
    const MVRTextRange run = runAround(walker, matches);
    // An empty paragraph lies in a run only when the run began before it.
    return run.start <= position ? selected(at, run.start, run.end) : QTextCursor();
}

bool MVRTextFinder::hasFormatProperty(const QTextCursor &cursor, int id, const QVariant &value,
                                      bool exact, bool atPosition)
{
    if (cursor.isNull())
        return false;
    const Matches matches = matcher(id, value, exact);
    const Selection selection(cursor);
    if (selection.isEmpty())
        return atPosition && matches(formatInText(cursor));
    return matched(selection, matches).any;
}

bool MVRTextFinder::isInFormatProperty(const QTextCursor &cursor, int id, const QVariant &value,
                                       bool exact)
{
    if (cursor.isNull())
        return false;
    const Matches matches = matcher(id, value, exact);
    const Selection selection(cursor);
    return selection.isEmpty() ? matches(formatInText(cursor)) : matched(selection, matches).all;
}

bool MVRTextFinder::isFormatCheckedProperty(const QTextCursor &cursor, int id,
                                            const QVariant &value, bool exact)
{
    if (cursor.isNull())
        return false;
    const Matches matches = matcher(id, value, exact);
    const Selection selection(cursor);
    return selection.isEmpty() ? matches(cursor.charFormat()) : matched(selection, matches).all;
}

QList<MVRTextRange> MVRTextFinder::findAllAnchors(const QTextCursor &cursor, bool whole)
{
    QList<MVRTextRange> anchors;
    const Selection selection(cursor);
    for (const MVRTextRange &range : selection.ranges())
        collectAnchors(selection.document(), range, whole, &anchors);
    return anchors;
}

int MVRTextFinder::formatCount(const QTextDocument *document, int property, const QVariant &value)
{
    if (!document)
        return 0;
    const Matches matches = matcher(property, value, true);
    FragmentWalker walker(document, 0);
    int count = 0;
    while (nextRun(walker, matches))
        ++count;
    return count;
}
