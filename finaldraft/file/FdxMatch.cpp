// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxMatch_p.h>

#include <core/MVRParagraphView.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextRange.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <finaldraft/file/FdxIdentity_p.h>

#include <QTextDocument>
#include <QTextFragment>

#include <algorithm>

namespace {

using File = MVRFinalDraftFile;

bool isInlineNote(const QTextCharFormat &format)
{
    return format.boolProperty(MVRTextFormat::InlineAnnotationProperty)
        || format.boolProperty(MVRTextFormat::InlineFootnoteProperty);
}

}

QVector<FdxNewRun> FdxEntry::runs() const
{
    QVector<FdxNewRun> runs;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        const QTextCharFormat format = fragment.charFormat();
        QString text = fragment.text();
        text.remove(QChar::ObjectReplacementCharacter);
        if (!text.isEmpty() && !isInlineNote(format))
            runs.append({text, format});
    }
    return runs;
}

QString FdxEntry::text() const
{
    if (isPlain)
        return block.text();
    QString text;
    const QVector<FdxNewRun> all = runs();
    for (const FdxNewRun &run : all)
        text += run.text;
    return text;
}

FdxMatch::FdxMatch(const FdxScript &script, int fileId, const QTextDocument *document)
    : m_script(script)
    , m_fileId(fileId)
{
    entryOf.fill(-1, script.paragraphs().size());
    collect(document);
    FdxIdentity(script, &entries).identify();
    resolveMarks();
    resolveByText();
    assignContainers();
    findInPlace();
    gatherDualDialogue();
}

void FdxMatch::collect(const QTextDocument *document)
{
    entries.reserve(document->blockCount());
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next())
        readBlock(block);
    // The block that a document has at least; a file without paragraphs has none for it.
    if (entries.size() == 1 && entries.first().length == 0 && m_script.paragraphs().isEmpty())
        entries.clear();
}

void FdxMatch::readBlock(const QTextBlock &block)
{
    FdxEntry entry;
    entry.block = block;
    entry.position = m_position;
    entry.origin = markOf(block);
    entries.append(entry);
    const QString text = block.text();
    const bool hasObjects = text.contains(QChar::ObjectReplacementCharacter);
    int read = 0;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextFragment fragment = it.fragment();
        if (!hasObjects && fragment.charFormatIndex() == m_plainFormat)
            m_position += fragment.length();
        else
            readFragment(fragment, text.mid(read, fragment.length()),
                         read > 0 || block.position() > 0);
        read += fragment.length();
    }
    entries.last().length = m_position - entry.position;
    ++m_position;
    expectText(&entries.last(), text);
}

void FdxMatch::readFragment(const QTextFragment &fragment, QString text, bool continues)
{
    const QTextCharFormat format = fragment.charFormat();
    const bool isNote = isInlineNote(format);
    const bool isAnchor = format.boolProperty(MVRTextFormat::CommentLinkProperty);
    text.remove(QChar::ObjectReplacementCharacter);
    if (isNote || text.size() != fragment.length())
        entries.last().isPlain = false;
    if (isNote) {
        addInlineNote(text, continues);
    } else {
        if (isAnchor && !text.isEmpty())
            addNote(format, m_position, m_position + text.size());
        m_position += text.size();
    }
    if (!isNote && !isAnchor)
        m_plainFormat = fragment.charFormatIndex();
}

/*! Looks, while the text of a block is at hand, whether it is that of the paragraph to come. */
void FdxMatch::expectText(FdxEntry *entry, const QString &text)
{
    constexpr int ring = FdxScript::markRing;
    if (entry->origin < 0)
        return;
    const int ahead = m_script.hasOwnMarks() ? entry->origin - m_expected
                                             : (entry->origin - m_expected % ring + ring) % ring;
    const int paragraph = m_expected + ahead;
    if (paragraph >= m_script.paragraphs().size())
        return;
    if (entry->isPlain && m_script.paragraphs()[paragraph].hasBlock
        && m_script.hasText(paragraph, text))
        entry->textOf = paragraph;
    if (entry->textOf >= 0 || ahead == 0)
        m_expected = paragraph + 1;
}

void FdxMatch::addInlineNote(const QString &text, bool continues)
{
    const bool isTouching = continues && !notes.isEmpty() && notes.last().isInline
        && (notes.last().end == m_position || notes.last().end == m_position - 1)
        && notes.last().entry >= entries.size() - 2;
    const bool isNewParagraph = isTouching && notes.last().entry != entries.size() - 1
        && entries.last().position == m_position;
    if (!isTouching || (notes.last().entry != entries.size() - 1 && !isNewParagraph)) {
        FdxDocumentNote note;
        note.start = note.end = m_position;
        note.entry = entries.size() - 1;
        note.isInline = true;
        note.paragraphs.append(text);
        notes.append(note);
        return;
    }
    if (isNewParagraph)
        notes.last().paragraphs.append(text);
    else
        notes.last().paragraphs.last() += text;
}

void FdxMatch::addNote(const QTextCharFormat &format, int start, int end)
{
    const QString href = format.anchorHref();
    const auto content = [](const QTextCharFormat &of) {
        return of.property(MVRTextFormat::CommentCDataProperty);
    };
    if (!notes.isEmpty() && !notes.last().isInline && notes.last().href == href
        && start - notes.last().end == entries.size() - 1 - notes.last().lastEntry
        && content(notes.last().format) == content(format)) {
        // Nothing but paragraph ends stands between.
        notes.last().end = end;
        notes.last().lastEntry = entries.size() - 1;
        return;
    }
    FdxDocumentNote note;
    note.start = start;
    note.end = end;
    note.entry = note.lastEntry = entries.size() - 1;
    note.format = format;
    note.href = href;
    notes.append(note);
}

/*! What a block was marked by when the file was read; -1 when it came from elsewhere. */
int FdxMatch::markOf(const QTextBlock &block)
{
    const auto known = m_marks.constFind(block.blockFormatIndex());
    if (known != m_marks.constEnd())
        return *known;
    const QTextBlockFormat format = MVRParagraphView::ownFormat(block.blockFormat());
    int mark = -1;
    if (format.intProperty(File::SourceFileProperty) == m_fileId
        && format.hasProperty(File::SourceParagraphProperty))
        mark = format.intProperty(File::SourceParagraphProperty);
    if (mark >= m_script.paragraphs().size())
        mark = -1;
    return *m_marks.insert(block.blockFormatIndex(), mark);
}

/*! Of several blocks of one paragraph, the first is it, but not what was put in front. */
void FdxMatch::resolveMarks()
{
    const QVector<FdxParagraph> &paragraphs = m_script.paragraphs();
    for (int i = 0; i < entries.size(); ++i) {
        FdxEntry &entry = entries[i];
        const int paragraph = entry.origin;
        if (paragraph < 0 || !paragraphs[paragraph].hasBlock) {
            entry.origin = -1;
            continue;
        }
        const int known = entryOf[paragraph];
        if (known >= 0) {
            const bool isBehindNew = known == i - 1 && entry.length > 0
                && entry.length != entries[known].length
                && m_script.hasText(paragraph, entry.text());
            if (!isBehindNew)
                continue;
            entries[known].source = -1;
        }
        entry.source = paragraph;
        entryOf[paragraph] = i;
    }
}

/*! Between two known paragraphs, a block without a mark is the missing one with the same text. */
void FdxMatch::resolveByText()
{
    int last = -1; // the paragraph known last
    for (int i = 0; i < entries.size(); ++i) {
        if (entries[i].source >= 0) {
            last = entries[i].source;
            continue;
        }
        if (entries[i].origin >= 0)
            continue;
        constexpr int reach = 8; // paragraphs looked through for each block
        for (int paragraph = last + 1; paragraph < qMin(last + 1 + reach, int(entryOf.size()));
             ++paragraph) {
            if (!m_script.paragraphs()[paragraph].hasBlock)
                continue;
            if (entryOf[paragraph] >= 0)
                break;
            if (!m_script.hasText(paragraph, entries[i].text()))
                continue;
            entries[i].source = entries[i].origin = last = paragraph;
            entryOf[paragraph] = i;
            break;
        }
    }
}

/*! The container that a block asks for; -1 when it does not say. */
int FdxMatch::ownContainer(const FdxEntry &entry) const
{
    if (entry.origin < 0) {
        const bool isTitlePage = entry.block.blockFormat().boolProperty(File::TitlePageProperty);
        return isTitlePage && m_script.containers().value(0).isTitlePage ? 0 : -1;
    }
    const int container = m_script.paragraphs()[entry.origin].container;
    const int wrapper = m_script.containers()[container].wrapper;
    if (wrapper < 0)
        return container;
    const bool isDual = entry.block.blockFormat().hasProperty(File::DualDialogueProperty);
    return isDual ? container : m_script.paragraphs()[wrapper].container;
}

void FdxMatch::assignContainers()
{
    for (FdxEntry &entry : entries)
        entry.container = ownContainer(entry);
    separateTitlePage();
    // The rest goes with what stands in front of it, and behind the title page with what follows.
    const auto parent = [this](int container) {
        const int wrapper = container < 0 ? -1 : m_script.containers()[container].wrapper;
        return wrapper < 0 ? container : m_script.paragraphs()[wrapper].container;
    };
    int next = m_script.containers().size() - 1;
    next = parent(next);
    QVector<int> following(entries.size());
    for (int i = entries.size(); i-- > 0;) {
        following[i] = next;
        if (entries[i].container >= 0)
            next = parent(entries[i].container);
    }
    int last = -1;
    for (int i = 0; i < entries.size(); ++i) {
        const bool isBehindTitle = last < 0 || m_script.containers()[last].isTitlePage;
        if (entries[i].container < 0)
            entries[i].container = isBehindTitle ? following[i] : last;
        last = parent(entries[i].container);
    }
}

/*!
    The dual dialogue that each entry belongs to, by container; -1: none. What touches the
    paragraphs of dual dialogue that stay in place and belongs to them stays with them, and so does
    all between, also between them and the text of the paragraph that they are in.
*/
QVector<int> FdxMatch::dualContainers() const
{
    QVector<MVRTextRange> kept(m_script.containers().size(), MVRTextRange(-1, -1));
    for (int i = 0; i < entries.size(); ++i) {
        if (!entries[i].isInPlace)
            continue;
        MVRTextRange &range = kept[entries[i].container];
        range = MVRTextRange(range.start < 0 ? i : range.start, i);
    }
    QVector<int> containers(entries.size(), -1);
    const auto isPartOf = [&](int i, int wrapper) {
        return entries[i].source == wrapper
            || (containers[i] >= 0 && m_script.containers()[containers[i]].wrapper == wrapper);
    };
    for (int container = 0; container < kept.size(); ++container) {
        const int wrapper = m_script.containers()[container].wrapper;
        if (wrapper < 0 || kept[container].start < 0)
            continue;
        MVRTextRange range = kept[container];
        while (range.start > 0 && entries[range.start - 1].container == container)
            --range.start;
        while (range.end + 1 < entries.size() && entries[range.end + 1].container == container)
            ++range.end;
        int before = range.start - 1;
        while (before >= 0 && !entries[before].isInPlace && containers[before] < 0)
            --before;
        if (before >= 0 && isPartOf(before, wrapper))
            range.start = before + 1;
        for (int i = range.start; i <= range.end; ++i)
            containers[i] = container;
    }
    return containers;
}

/*! What strayed from dual dialogue becomes dual dialogue of its own, or none. */
void FdxMatch::gatherDualDialogue()
{
    const auto dualNumber = [this](int i) {
        const QTextBlockFormat format = MVRParagraphView::ownFormat(entries[i].block.blockFormat());
        return format.hasProperty(File::DualDialogueProperty)
            ? format.intProperty(File::DualDialogueProperty)
            : -1;
    };
    const QVector<int> containers = dualContainers();
    for (int i = 0; i < entries.size(); ++i) {
        const int wrapper = m_script.containers().value(entries[i].container).wrapper;
        if (containers[i] >= 0)
            entries[i].container = containers[i];
        else if (wrapper >= 0)
            entries[i].container = m_script.paragraphs()[wrapper].container;
    }
    for (int i = 1; i < entries.size(); ++i) {
        const int number = containers[i] < 0 && containers[i - 1] < 0 ? dualNumber(i) : -1;
        const bool isPair = number >= 0 && number == dualNumber(i - 1) && !entries[i].isInPlace
            && !entries[i - 1].isInPlace && entries[i].container == entries[i - 1].container;
        if (isPair && entries[i - 1].newDual < 0)
            entries[i - 1].newDual = i - 1;
        if (isPair)
            entries[i].newDual = entries[i - 1].newDual;
    }
}

/*! The title page ends where fewest blocks have to change sides. */
void FdxMatch::separateTitlePage()
{
    const auto isTitle = [this](const FdxEntry &entry) {
        return entry.container >= 0 && m_script.containers()[entry.container].isTitlePage;
    };
    const auto isScript
        = [&](const FdxEntry &entry) { return entry.container >= 0 && !isTitle(entry); };
    int wrong = int(std::count_if(entries.cbegin(), entries.cend(), isTitle));
    if (wrong == 0)
        return;
    int fewest = wrong;
    int split = 0;
    for (int i = 0; i < entries.size(); ++i) {
        wrong += isTitle(entries[i]) ? -1 : isScript(entries[i]) ? 1 : 0;
        if (wrong < fewest) {
            fewest = wrong;
            split = i + 1;
        }
    }
    int title = -1;
    for (int i = 0; i < split; ++i)
        title = isTitle(entries[i]) && title < 0 ? entries[i].container : title;
    for (int i = 0; i < entries.size(); ++i) {
        if (i < split ? isScript(entries[i]) : isTitle(entries[i]))
            entries[i].container = i < split ? title : -1;
    }
}

/*! The longest rising sequence of paragraphs that stay in their container stays in place. */
void FdxMatch::findInPlace()
{
    QVector<int> tails; // entry that ends the best sequence of each length
    QVector<int> previous(entries.size(), -1);
    for (int i = 0; i < entries.size(); ++i) {
        const int source = entries[i].source;
        if (source < 0 || entries[i].container != m_script.paragraphs()[source].container)
            continue;
        const auto place
            = std::lower_bound(tails.begin(), tails.end(), source, [this](int entry, int value) {
                  return entries[entry].source < value;
              });
        previous[i] = place == tails.begin() ? -1 : *(place - 1);
        if (place == tails.end())
            tails.append(i);
        else
            *place = i;
    }
    for (int i = tails.isEmpty() ? -1 : tails.last(); i >= 0; i = previous[i])
        entries[i].isInPlace = true;
}
