// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRTextFinder.h>
#include <core/MVRTextFormat.h>
#include <core/STextDoc.h>
#include <core/document/FormatEdits_p.h>

namespace {

bool hasAnchors(const QTextDocument &document)
{
    return hasFormat(document, [](const QTextFormat &format) {
        return format.boolProperty(QTextFormat::IsAnchor);
    });
}

QTextCharFormat linkFormat(int id)
{
    QTextCharFormat link;
    link.setAnchor(true);
    link.setAnchorHref(QString::number(id));
    return link;
}

/*! False when all that \a links are to be set on is such a link already. */
bool changesLinks(QTextDocument *document, const QMap<MVRTextRange, int> &links)
{
    FragmentWalker walker(document, 0);
    for (auto it = links.cbegin(); it != links.cend(); ++it) {
        const MVRTextRange range(it.key().toTextCursor(document));
        if (!walker.isValid() || walker.start() > range.start)
            walker = FragmentWalker(document, range.start);
        const QTextCharFormat link = linkFormat(it.value());
        const auto merge = [&link](QTextCharFormat &format) { format.merge(link); };
        if (range.start < range.end
            && !collectFormatEdits(walker, document, range.start, range.end, merge).isEmpty())
            return true;
    }
    return false;
}

/*!
    Collects what makes the text of a link plain; \a walker moves on behind it. All text gets the
    format of its last character, but pictures stay what they are through their own.
*/
void collectUnlinking(FragmentWalker &walker, const MVRTextRange &link, QVector<FormatEdit> *edits)
{
    const int first = edits->size();
    QTextCharFormat textFormat;
    for (; walker.isValid() && walker.start() < link.end; walker.next()) {
        QTextCharFormat format = walker.format();
        STextDoc::clearLinkProperties(&format);
        if (format.objectType() == QTextFormat::NoObject)
            textFormat = format;
        edits->append({walker.start(), walker.end(), format});
    }
    for (int i = first; i < edits->size(); ++i) {
        FormatEdit &edit = (*edits)[i];
        if (edit.format.objectType() == QTextFormat::NoObject)
            edit.format = textFormat;
    }
}

} // namespace

MVRTextInternalLinkMap MVRTextDoc::internalLinks(const QTextDocument &document)
{
    MVRTextInternalLinkMap map;
    map.title = document.metaInformation(QTextDocument::DocumentTitle);
    QTextBlock block;
    MVRTextRange range;
    int id = 0;
    for (FragmentWalker walker(&document, 0); walker.isValid(); walker.next()) {
        const QTextCharFormat format = walker.format();
        if (!MVRTextFormat::isMovarinLink(format))
            continue;
        const int nextId = format.anchorHref().toInt();
        const bool continues
            = walker.block() == block && walker.start() == range.end && nextId == id;
        if (!continues)
            range.start = walker.start();
        else
            map.links.remove(range);
        range.end = walker.end();
        id = nextId;
        block = walker.block();
        map.links.insert(range, id);
    }
    return map;
}

void MVRTextDoc::setInternalLinks(QTextDocument *document, const MVRTextInternalLinkMap &map)
{
    if (!document || !changesLinks(document, map.links))
        return;
    const EditBlock undoStep(document);
    for (auto it = map.links.cbegin(); it != map.links.cend(); ++it) {
        mergeIfChanged(it.key().toTextCursor(document), linkFormat(it.value()));
    }
}

void MVRTextDoc::convertMovarinLinksToText(QTextDocument *document)
{
    if (!document || !hasAnchors(*document))
        return;
    QTextCursor all(document);
    all.select(QTextCursor::Document);
    const QList<MVRTextRange> anchors = MVRTextFinder::findAllAnchors(all, true);
    QVector<FormatEdit> edits;
    FragmentWalker walker(document, 0);
    for (const MVRTextRange &anchor : anchors) {
        while (walker.end() <= anchor.start)
            walker.next();
        if (MVRTextFormat::isMovarinLink(walker.format()))
            collectUnlinking(walker, anchor, &edits);
    }
    // What is typed into an empty paragraph of a link is plain as well.
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        QTextCharFormat format = block.charFormat();
        if (!MVRTextFormat::isMovarinLink(format))
            continue;
        STextDoc::clearLinkProperties(&format);
        edits.append({block.position(), block.position(), format});
    }
    applyFormatEdits(document, edits);
}

void MVRTextDoc::clearInternalLinks(QTextDocument *document)
{
    changeAllFormats(document, [](QTextCharFormat &format) {
        if (format.isAnchor())
            STextDoc::clearLinkProperties(&format);
    });
}
