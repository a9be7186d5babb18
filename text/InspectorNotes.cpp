// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRCoreUtil.h>
#include <core/MVRSettings.h>
#include <core/MVRTextFinder.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/MVRTextUtil.h>
#include <core/STextDoc.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/NoteFormat_p.h>
#include <core/document/SafeHtml_p.h>
#include <text/NoteRuns_p.h>

#include <QDateTime>
#include <QTextDocument>
#include <QUrl>

namespace {

bool holdsTrue(const QTextCursor &cursor, int property)
{
    return MVRTextFinder::hasFormatProperty(cursor, property, true, true, true);
}

/*! What the text that gets a note says already. */
struct FormerText
{
    bool namesAuthorOrDate = false;
    bool isResolved = false;
    QVector<std::pair<MVRTextRange, QString>> links; // and where they lead

    void add(const MVRTextRange &range, const QTextCharFormat &format)
    {
        namesAuthorOrDate |= format.hasProperty(MVRTextFormat::CommentAuthorProperty)
            || format.hasProperty(MVRTextFormat::CommentDateProperty);
        isResolved |= format.boolProperty(MVRTextFormat::CommentResolvedProperty);
        const QString href = format.isAnchor() ? format.anchorHref() : QString();
        if (href.isEmpty() || isNoteAnchor(href))
            return;
        if (!links.isEmpty() && links.last().first.end == range.start
            && links.last().second == href)
            links.last().first.end = range.end;
        else
            links.append({range, href});
    }
};

/*! Reads the text of \a selection; to be called in an edit block. */
FormerText formerText(const Selection &selection)
{
    constexpr int fewCharacters = 64;
    FormerText former;
    QTextCursor cursor(selection.document());
    for (const MVRTextRange &range : selection.ranges()) {
        if (range.end - range.start > fewCharacters) {
            FragmentWalker walker(selection.document(), range.start);
            for (; walker.isValid() && walker.start() < range.end; walker.next())
                former.add(
                    MVRTextRange(qMax(range.start, walker.start()), qMin(range.end, walker.end())),
                    walker.format());
            continue;
        }
        // A cursor finds its place faster than a walker, which begins with the paragraph.
        for (int position = range.start + 1; position <= range.end; ++position) {
            cursor.setPosition(position);
            if (!cursor.atBlockStart())
                former.add(MVRTextRange(position - 1, position), cursor.charFormat());
        }
    }
    return former;
}

QTextCharFormat noteFormat(const MVRTextCommentLink &link)
{
    const int kind = link.isFootnote ? MVRTextFormat::InspectorFootnoteProperty
                                     : MVRTextFormat::InspectorCommentProperty;
    const int otherKind = link.isFootnote ? MVRTextFormat::InspectorCommentProperty
                                          : MVRTextFormat::InspectorFootnoteProperty;
    QTextCharFormat format;
    format.setProperty(kind, true);
    format.setProperty(otherKind, false);
    format.setProperty(MVRTextFormat::InlineAnnotationProperty, false);
    format.setProperty(MVRTextFormat::InlineFootnoteProperty, false);
    format.setProperty(MVRTextFormat::CommentLinkProperty, true);
    format.setProperty(MVRTextFormat::CommentCDataProperty, link.cdata);
    if (!link.isFootnote) {
        const QColor color = link.color.isValid()
            ? link.color
            : mvrOptions().value(MVRSettings::CommentColorSetting);
        format.setProperty(MVRTextFormat::CommentColorProperty, color);
    }
    const QString prefix
        = link.isFootnote ? QStringLiteral("Footnote:") : QStringLiteral("Comment:");
    format.setAnchorHref(prefix + MVRCoreUtil::CreateUUID());
    return format;
}

/*! What tells the note that \a format carries from all others. */
QTextCharFormat noteIdentity(const QTextCharFormat &format)
{
    const int kind = format.boolProperty(MVRTextFormat::InspectorCommentProperty)
        ? MVRTextFormat::InspectorCommentProperty
        : MVRTextFormat::InspectorFootnoteProperty;
    QTextCharFormat identity;
    identity.setProperty(MVRTextFormat::CommentLinkProperty, true);
    // A note that lost its kind is still found by its content.
    if (format.boolProperty(kind))
        identity.setProperty(kind, true);
    if (format.hasProperty(MVRTextFormat::CommentCDataProperty))
        identity.setProperty(MVRTextFormat::CommentCDataProperty, noteContent(format));
    return identity;
}

/*! The run of the note at \a position; an empty range when there is none. */
MVRTextRange noteAt(QTextDocument *document, int position)
{
    const QTextCursor cursor = MVRTextRange(position, position).toTextCursor(document);
    const QTextCharFormat format = cursor.charFormat();
    if (!format.boolProperty(MVRTextFormat::CommentLinkProperty))
        return MVRTextRange();
    return MVRTextRange(MVRTextFinder::findFragmentAtPosition(noteIdentity(format), cursor));
}

/*!
    \a range without a fragment that began before it, but with the rest of the last fragment that
    begins in it.
*/
MVRTextRange fragmentsBeginningIn(const QTextDocument *document, const MVRTextRange &range)
{
    MVRTextRange whole = range;
    const FragmentWalker first(document, range.start);
    if (first.isValid() && first.start() < range.start)
        whole.start = first.end();
    const FragmentWalker last(document, range.end - 1);
    if (last.isValid() && last.start() < range.end)
        whole.end = qMax(range.end, last.end());
    return whole;
}

/*! New content for the note at \a range. */
struct NewContent
{
    MVRTextRange range;
    QByteArray oldContent;
    QByteArray content;
};

/*! Gives the notes their new content in one pass; \a contents is in document order. */
void setContents(QTextDocument *document, const QVector<NewContent> &contents)
{
    auto note = contents.cbegin();
    changeAllFormats(document, [&](QTextCharFormat &format, const MVRTextRange &place) {
        // The end of a paragraph has the format of the next one.
        const int position = place.start < place.end ? place.start : place.start - 1;
        while (note != contents.cend() && note->range.end <= position)
            ++note;
        // The range of a note may hold text between its paragraphs that is not part of it.
        if (note != contents.cend() && note->range.start <= position
            && format.boolProperty(MVRTextFormat::CommentLinkProperty)
            && isSameContent(noteContent(format), note->oldContent))
            format.setProperty(MVRTextFormat::CommentCDataProperty, note->content);
    });
}

} // namespace

bool MVRTextDoc::hasInspectorCommentsOrFootnotes(const QTextDocument *document)
{
    if (!document)
        return false;
    FragmentWalker walker(document, 0);
    while (walker.isValid() && !walker.format().boolProperty(MVRTextFormat::CommentLinkProperty))
        walker.next();
    return walker.isValid();
}

bool MVRTextDoc::hasInspectorCommentsOrFootnotes(const QTextCursor &cursor)
{
    return holdsTrue(cursor, MVRTextFormat::CommentLinkProperty);
}

bool MVRTextDoc::hasInspectorComment(const QTextCursor &cursor)
{
    return holdsTrue(cursor, MVRTextFormat::InspectorCommentProperty);
}

bool MVRTextDoc::hasInspectorFootnote(const QTextCursor &cursor)
{
    return holdsTrue(cursor, MVRTextFormat::InspectorFootnoteProperty);
}

bool MVRTextDoc::hasInlineFootnote(const QTextCursor &cursor)
{
    return holdsTrue(cursor, MVRTextFormat::InlineFootnoteProperty);
}

bool MVRTextDoc::hasInlineAnnotation(const QTextCursor &cursor)
{
    return holdsTrue(cursor, MVRTextFormat::InlineAnnotationProperty);
}

bool MVRTextDoc::isInInlineAnnotation(const QTextCursor &cursor)
{
    return MVRTextFinder::isInFormatProperty(cursor, MVRTextFormat::InlineAnnotationProperty, true,
                                             true);
}

bool MVRTextDoc::isInInlineFootnote(const QTextCursor &cursor)
{
    return MVRTextFinder::isInFormatProperty(cursor, MVRTextFormat::InlineFootnoteProperty, true,
                                             true);
}

bool MVRTextDoc::isInlineAnnotationChecked(const QTextCursor &cursor)
{
    return MVRTextFinder::isFormatCheckedProperty(cursor, MVRTextFormat::InlineAnnotationProperty,
                                                  true, true);
}

bool MVRTextDoc::isInlineFootnoteChecked(const QTextCursor &cursor)
{
    return MVRTextFinder::isFormatCheckedProperty(cursor, MVRTextFormat::InlineFootnoteProperty,
                                                  true, true);
}

bool MVRTextDoc::isCommentFootnoteAnchor(const QString &href)
{
    return isNoteAnchor(href);
}

bool MVRTextDoc::isCommentFootnoteAnchor(const QUrl &url)
{
    const QString href = url.toString();
    return isNoteAnchor(href) || href.startsWith(QLatin1String("footnote:"))
        || href.startsWith(QLatin1String("comment:"));
}

QString MVRTextDoc::commentText(QTextCharFormat format, bool asHtml)
{
    const QByteArray content = noteContent(format);
    QTextDocument document;
    if (content.isEmpty() || !MVRTextRtf::fromRtfCData(content, &document))
        return QString();
    if (!asHtml)
        return document.toPlainText();
    makeSafeForHtml(&document);
    return document.toHtml();
}

void MVRTextDoc::setComment(QTextCursor cursor, const MVRTextCommentLink &link)
{
    setComment(cursor, link, QString(), QDateTime());
}

void MVRTextDoc::setComment(QTextCursor cursor, const MVRTextCommentLink &link,
                            const QString &author, const QDateTime &date)
{
    // Without a selection there is nothing to attach to, and a note around the position must not
    // be cut either.
    const Selection selection(cursor);
    if (!selection.holdsText())
        return;
    const EditBlock undoStep(cursor);
    const QTextCharFormat format = cursor.charFormat();
    if (format.boolProperty(MVRTextFormat::InspectorFootnoteProperty)
        || format.boolProperty(MVRTextFormat::InspectorCommentProperty)) {
        const int start = selection.bounds().start;
        const MVRTextRange old = noteAt(cursor.document(), start);
        // At a paragraph's start the note found may be one that begins there, which is not cut.
        if (old.start < start && start < old.end) {
            QTextCursor rest = MVRTextRange(start, old.end).toTextCursor(cursor.document());
            STextDoc::clearCommentPropertiesCursor(&rest);
        }
    }
    QTextCharFormat newFormat = noteFormat(link);
    // Merging takes nothing away: what another note said there is overwritten, by nothing if need
    // be.
    const FormerText former = formerText(selection);
    const bool replaces = former.namesAuthorOrDate;
    if (replaces || !author.isEmpty())
        newFormat.setProperty(MVRTextFormat::CommentAuthorProperty, author);
    if (replaces || date.isValid())
        newFormat.setProperty(MVRTextFormat::CommentDateProperty, date);
    if (former.isResolved)
        newFormat.setProperty(MVRTextFormat::CommentResolvedProperty, false);
    cursor.mergeCharFormat(newFormat);
    for (const auto &[range, href] : former.links) {
        QTextCharFormat covered;
        covered.setProperty(MVRTextFormat::CoveredLinkProperty, href);
        QTextCursor text(cursor.document());
        mergeIntoRange(text, range.start, range.end, covered);
    }
}

void MVRTextDoc::setComment(QTextDocument *document, const MVRTextRange &range,
                            const MVRTextCommentLink &link)
{
    if (!document)
        return;
    const int last = document->characterCount() - 1;
    if (qBound(0, range.start, last) == qBound(0, range.end, last))
        return;
    // Outside of an edit block the cursor would itemize the whole paragraph to take its place.
    const EditBlock undoStep(document);
    setComment(range.toTextCursor(document), link);
}

void MVRTextDoc::setComment(QTextCursor cursor, const QString &text, bool isFootnote)
{
    const QFont font = mvrOptions().value(isFootnote ? MVRSettings::FootnoteFontSetting
                                                     : MVRSettings::CommentFontSetting);
    setCommentCData(cursor, MVRTextRtf::textToRtf(text, &font), isFootnote);
}

void MVRTextDoc::setCommentCData(QTextCursor cursor, const QByteArray &cdata, bool isFootnote)
{
    MVRTextCommentLink link;
    link.isFootnote = isFootnote;
    link.cdata = cdata;
    setComment(cursor, link);
}

void MVRTextDoc::setComments(QTextDocument *document, const MVRTextCommentLinkMap &map)
{
    if (!document)
        return;
    const auto isText = [document](const MVRTextRange &range) {
        return range.toTextCursor(document).hasSelection();
    };
    std::optional<EditBlock> undoStep;
    if (std::any_of(map.keyBegin(), map.keyEnd(), isText))
        undoStep.emplace(document);
    STextDoc::removeInspectorCommentsAndFootnotes(document);
    for (auto it = map.cbegin(); it != map.cend(); ++it)
        setComment(document, it.key(), it.value());
}

void MVRTextDoc::clearComment(QTextDocument *document, int position)
{
    if (!document)
        return;
    const MVRTextRange note = noteAt(document, position);
    QTextCursor rest = MVRTextRange(position, note.end).toTextCursor(document);
    if (position < note.end)
        STextDoc::clearCommentPropertiesCursor(&rest);
}

void MVRTextDoc::removeComment(QTextCursor &cursor)
{
    if (cursor.isNull())
        return;
    QTextDocument *document = cursor.document();
    const auto clear = [](QTextCharFormat &format) {
        if (format.boolProperty(MVRTextFormat::CommentLinkProperty))
            clearNoteProperties(format);
    };
    const Selection selection(cursor);
    QVector<FormatEdit> edits;
    if (selection.isRectangle()) {
        edits = collectFormatEdits(selection, clear);
    } else if (!selection.isEmpty()) {
        const MVRTextRange range = fragmentsBeginningIn(document, selection.bounds());
        if (range.start < range.end)
            edits = collectFormatEdits(document, range, clear);
    }
    const QTextBlock block = cursor.block();
    if (block.length() == 1) {
        QTextCharFormat format = cursor.charFormat();
        clearNoteProperties(format);
        QTextCharFormat blockFormat = block.charFormat();
        blockFormat.clearProperty(QTextFormat::ObjectIndex); // which cursors do not tell
        if (format != blockFormat)
            edits.append({block.position(), block.position(), format});
    }
    applyFormatEdits(document, edits);
}

MVRTextCommentLinkMap MVRTextDoc::commentsMapByType(int propertyId, const QTextDocument *document,
                                                    int start, int end, bool firstOnly)
{
    NoteCollector collector(propertyId);
    if (!document)
        return collector.notes();
    for (FragmentWalker walker(document, qMax(0, start)); walker.isValid(); walker.next()) {
        if (!collector.add(walker))
            continue;
        if ((firstOnly && !collector.notes().isEmpty()) || (end > 0 && walker.start() > end))
            return collector.notes();
    }
    return collector.finish();
}

MVRTextCommentLinkMap MVRTextDoc::commentsMap(const QTextDocument *document, int start, int end)
{
    return commentsMapByType(MVRTextFormat::CommentLinkProperty, document, start, end, false);
}

QStringList MVRTextDoc::inspectorNotesToPlainText(const QTextDocument *document)
{
    QStringList texts;
    const MVRTextCommentLinkMap notes = commentsMap(document, -1, -1);
    for (const MVRTextCommentLink &note : notes) {
        QTextDocument content;
        if (MVRTextRtf::fromRtfCData(note.cdata, &content) && !content.isEmpty())
            texts.append(content.toPlainText());
    }
    return texts;
}

void MVRTextDoc::trimInspectorNotes(QTextDocument *document, int propertyId, bool trimFlag,
                                    int count, int limit)
{
    const bool isNoteProperty = propertyId == MVRTextFormat::CommentLinkProperty
        || propertyId == MVRTextFormat::InspectorCommentProperty
        || propertyId == MVRTextFormat::InspectorFootnoteProperty;
    if (!isNoteProperty || !document || document->isEmpty())
        return;
    const int footnoteCount = count == -1 ? 1 : count;
    const int commentCount = count == -1 ? 0 : count;
    const MVRTextCommentLinkMap notes = commentsMapByType(propertyId, document, -1, -1, false);
    QVector<NewContent> contents;
    for (auto it = notes.cbegin(); it != notes.cend(); ++it) {
        QTextDocument content;
        if (!MVRTextRtf::fromRtfCData(it->cdata, &content) || content.isEmpty())
            continue;
        bool changed = false;
        MVRTextUtil::trim(&content, trimFlag, it->isFootnote ? footnoteCount : commentCount,
                          limit == -1 ? 0 : limit, &changed);
        if (changed)
            contents.append({it.key(), it->cdata, MVRTextRtf::toRtfCData(&content, false)});
    }
    setContents(document, contents);
}
