// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxWriter_p.h>

#include <core/MVRParagraphView.h>
#include <finaldraft/file/FdxDocument_p.h>
#include <finaldraft/file/FdxSkeleton_p.h>
#include <finaldraft/file/FdxText_p.h>

#include <algorithm>

using File = MVRFinalDraftFile;

FdxWriter::FdxWriter(FdxScript &script, const FdxPlaces &places, const QVector<FdxNote> &notes,
                     const QHash<QString, int> &anchors, int fileId,
                     const QList<MVRScriptElement> &elements, const QTextDocument *document)
    : m_script(script)
    , m_tree(script.tree())
    , m_places(places)
    , m_notes(notes)
    , m_anchors(anchors)
    , m_elements(script.elements() + elements)
    , m_match(script, fileId, document)
    , m_containers(script.containers().size())
{
}

FdxSplices FdxWriter::splices()
{
    compareParagraphs();
    matchNotes();
    writeNotes();
    findAlive();
    findFirstInPlace();
    removeParagraphs();
    writeParagraphs();
    fillContainers();
    writeSettings();
    return m_splices;
}

/*! Wrappers stay as long as anything that they hold, or text of their own. */
void FdxWriter::findAlive()
{
    for (const FdxEntry &entry : qAsConst(m_match.entries)) {
        if (entry.source >= 0)
            m_alive.insert(entry.source);
        int wrapper = m_script.containers().value(entry.container).wrapper;
        for (; wrapper >= 0; wrapper = m_script.containerOf(wrapper).wrapper)
            m_alive.insert(wrapper);
    }
}

void FdxWriter::findFirstInPlace()
{
    for (const FdxEntry &entry : m_match.entries) {
        if (!entry.isInPlace)
            continue;
        int paragraph = entry.source;
        for (int container = entry.container; container >= 0;) {
            if (m_containers[container].firstInPlace < 0)
                m_containers[container].firstInPlace = paragraph;
            paragraph = m_script.containers().value(container).wrapper;
            container = paragraph < 0 ? -1 : m_script.paragraphs()[paragraph].container;
        }
    }
}

void FdxWriter::removeParagraphs()
{
    for (int i = 0; i < m_script.paragraphs().size(); ++i) {
        const FdxParagraph &paragraph = m_script.paragraphs()[i];
        const int entry = m_match.entryOf[i];
        if (paragraph.isWrapper) {
            removeWrapper(i);
            continue;
        }
        if (entry >= 0 && m_match.entries[entry].isInPlace)
            continue;
        const FdxTree::Span span = m_tree.span(paragraph.node);
        m_splices.append({m_tree.gapStart(span.start), span.end, QByteArray()});
    }
}

void FdxWriter::removeWrapper(int paragraph)
{
    const FdxElement &node = m_script.paragraphs()[paragraph].node;
    const int entry = m_match.entryOf[paragraph];
    if (!m_alive.contains(paragraph)) {
        const FdxTree::Span span = m_tree.span(node);
        m_splices.append({m_tree.gapStart(span.start), span.end, QByteArray()});
        return;
    }
    if (entry >= 0 && m_match.entries[entry].isInPlace)
        return; // it is written as other paragraphs are
    m_splices += noteSplices(paragraph);
    if (m_script.paragraphs()[paragraph].hasBlock) {
        const QVector<FdxRun> runs = m_script.runs(paragraph);
        for (const FdxRun &run : runs) {
            const FdxTree::Span span = m_tree.span(run.node);
            m_splices.append({m_tree.gapStart(span.start), span.end, QByteArray()});
        }
    }
}

void FdxWriter::writeParagraphs()
{
    for (int i = 0; i < m_match.entries.size(); ++i) {
        const FdxEntry &entry = m_match.entries[i];
        if (entry.isInPlace) {
            m_splices += paragraphSplices(i);
            passInPlace(i);
        } else if (entry.newDual < 0) {
            placeNew(entry.container, element(i));
        } else if (entry.newDual == i) {
            placeNew(entry.container, newDualDialogue(i));
        }
    }
}

QByteArray FdxWriter::element(int entry)
{
    return m_match.entries[entry].source >= 0 ? movedParagraph(entry) : newParagraph(entry);
}

/*! What comes next stands behind this paragraph, and behind the wrapper that it is in. */
void FdxWriter::passInPlace(int entry)
{
    int paragraph = m_match.entries[entry].source;
    while (paragraph >= 0) {
        const FdxTree::Span span = m_tree.span(m_script.paragraphs()[paragraph].node);
        Container &place = m_containers[m_script.paragraphs()[paragraph].container];
        place.behind = span.end;
        place.modelStart = span.start;
        paragraph = m_script.containerOf(paragraph).wrapper;
    }
}

QByteArray FdxWriter::gapBefore(int position) const
{
    const int start = m_tree.gapStart(position);
    return QByteArray(m_tree.source().constData() + start, position - start);
}

void FdxWriter::placeNew(int container, const QByteArray &element)
{
    if (container < 0) {
        m_newContent += fdxNewLine(m_tree) + "    " + element;
        return;
    }
    Container &place = m_containers[container];
    if (place.behind >= 0) {
        m_splices.append({place.behind, place.behind, gapBefore(place.modelStart) + element});
    } else if (place.firstInPlace >= 0) {
        const int start = m_tree.start(m_script.paragraphs()[place.firstInPlace].node);
        m_splices.append({start, start, element + gapBefore(start)});
    } else {
        const FdxElement first = m_script.containers().value(container).node.firstChild();
        place.content += (first ? gapBefore(m_tree.start(first)) : fdxNewLine(m_tree)) + element;
    }
}

void FdxWriter::fillContainers()
{
    for (int i = 0; i < m_containers.size(); ++i)
        fill(m_script.containers()[i].node, m_containers[i].content);
    if (!m_newContent.isEmpty()) // the file had no script
        fill(m_tree.root(),
             fdxNewLine(m_tree) + "  <Content>" + m_newContent + fdxNewLine(m_tree)
                 + "  </Content>");
}

/*! Puts content in front of all that an element holds. */
void FdxWriter::fill(const FdxElement &node, const QByteArray &content)
{
    if (content.isEmpty())
        return;
    const FdxTree::Span span = m_tree.span(node);
    if (span.isEmptyTag)
        m_splices.append({m_tree.gapStart(span.end - 2), span.end,
                          '>' + content + fdxNewLine(m_tree) + "</" + node.name() + '>'});
    else
        m_splices.append({span.innerStart, span.innerStart, content});
}

/*! Types that come into the file bring their settings along. */
void FdxWriter::writeSettings()
{
    QSet<QByteArray> known;
    for (const FdxElement &settings : m_tree.root().children("ElementSettings"))
        known.insert(settings.attribute("Type").value());
    for (int i = 0; i < m_script.paragraphs().size(); ++i)
        known.insert(m_script.typeName(i));
    QByteArray added;
    for (const FdxEntry &entry : qAsConst(m_match.entries)) {
        const QByteArray &name = shown(entry).typeName;
        if (known.contains(name))
            continue;
        known.insert(name);
        const QByteArray settings = m_settings.value(QString::fromUtf8(name));
        if (!settings.isEmpty()) {
            added += "  " + settings + fdxNewLine(m_tree);
            continue;
        }
        for (const MVRScriptElement &element : qAsConst(m_elements)) {
            if (element.name().toUtf8() != name)
                continue;
            added += fdxElementSettings(element, m_script.margin());
            break;
        }
    }
    const int place = m_tree.span(m_tree.root()).innerEnd;
    if (!added.isEmpty())
        m_splices.append({place, place, added});
}

// Paragraphs.

FdxSplices FdxWriter::paragraphSplices(int index)
{
    const FdxEntry &entry = m_match.entries[index];
    const FdxElement &node = m_script.paragraphs()[entry.source].node;
    FdxType &type = *shown(entry).type;
    FdxSplices splices = shown(entry).isAsInFile ? FdxSplices() : attributeSplices(entry);
    const FdxTree::Span span = m_tree.span(node);
    if (span.isEmptyTag) {
        const QByteArray content = newRuns(index, type);
        if (!content.isEmpty())
            splices.append(
                {m_tree.gapStart(span.end - 2), span.end, '>' + content + "</Paragraph>"});
        return splices;
    }
    if (m_diffs.contains(index))
        splices += runEdit(entry).splices();
    splices += childSplices(index);
    return splices;
}

QByteArray FdxWriter::movedParagraph(int entry)
{
    const FdxTree::Span span
        = m_tree.span(m_script.paragraphs()[m_match.entries[entry].source].node);
    return fdxSpliced(QByteArray(m_tree.source().constData() + span.start, span.end - span.start),
                      paragraphSplices(entry), span.start);
}
