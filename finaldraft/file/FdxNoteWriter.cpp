// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxDocument_p.h>
#include <finaldraft/file/FdxText_p.h>
#include <finaldraft/file/FdxWriter_p.h>

#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>

#include <QDateTime>
#include <QTextDocument>

#include <algorithm>
#include <limits>

using File = MVRFinalDraftFile;

namespace {

QStringList lines(const QByteArray &rtf)
{
    QTextDocument content;
    if (!MVRTextRtf::fromRtfCData(rtf, &content))
        return {QString::fromUtf8(rtf)};
    QStringList texts;
    for (QTextBlock block = content.begin(); block.isValid(); block = block.next())
        texts.append(block.text());
    return texts;
}

QStringList withLineFeeds(QStringList texts)
{
    for (QString &text : texts) {
        text.replace(QChar::LineSeparator, QLatin1Char('\n'));
        text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    }
    return texts;
}

QByteArray paragraph(const QByteArray &runs)
{
    return "<Paragraph Alignment=\"Left\">" + runs + "</Paragraph>";
}

QByteArray blockRuns(const QTextBlock &block, const QByteArray &newLine)
{
    QByteArray runs;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const FdxLook look = FdxLook().with(it.fragment().charFormat());
        runs += "<Text Style=\"" + look.styleText() + "\">"
            + fdxEscaped(it.fragment().text(), newLine) + "</Text>";
    }
    return runs.isEmpty() ? QByteArray("<Text Style=\"\"></Text>") : runs;
}

// Final Draft writes its times in UTC.
QByteArray fileTime(const QDateTime &time)
{
    return time.toUTC().toString(QStringLiteral("yyyyMMdd'T'hhmmss")).toLatin1();
}

QByteArray now()
{
    return fileTime(QDateTime::currentDateTimeUtc());
}

QByteArray fileColor(const QColor &color)
{
    return MVRFinalDraft::toString(color.isValid() ? color : QColor(Qt::black)).toLatin1();
}

}

void FdxWriter::writeNotes()
{
    findNumbers();
    for (int i = 0; i < m_notes.size(); ++i)
        writeKeptNote(i);
    writeNewNotes();
}

/*! Only what the document changed of a note is written. */
void FdxWriter::writeKeptNote(int index)
{
    const FdxNote &note = m_notes[index];
    const int now = m_documentNote[index];
    const bool isBesideScript = note.shape == File::NoteOfRange || note.paragraph < 0;
    if (!isBesideScript) {
        if (now >= 0 && !hasMoved(note, m_match.notes[now]))
            m_changedIn[note.paragraph].append(index);
    } else if (note.isRemoved || (note.isAttached() && now < 0 && isGone(note))) {
        const FdxTree::Span span = m_tree.span(note.node);
        m_splices.append({m_tree.gapStart(span.start), span.end, QByteArray()});
    } else {
        if (note.hasNumbers)
            writeRange(index);
        if (now >= 0)
            m_splices += contentSplices(index);
    }
}

/*! Gives a note the content and colour that the document has for it. */
FdxSplices FdxWriter::contentSplices(int index) const
{
    FdxSplices splices;
    const FdxElement &node = m_notes[index].node;
    const FdxDocumentNote &current = m_match.notes[m_documentNote[index]];
    const QColor color
        = current.format.property(MVRTextFormat::CommentColorProperty).value<QColor>();
    const FdxSourceAttribute oldColor = node.attribute("Color");
    if (oldColor && color.isValid() && fdxColor(oldColor.value(), color) != color)
        addAttribute(node, "Color", fileColor(color), &splices);
    const QByteArray rtf
        = current.format.property(MVRTextFormat::CommentCDataProperty).toByteArray();
    if (rtf == fdxNoteRtf(node, m_tree))
        return splices;
    if (withLineFeeds(lines(rtf)) == withLineFeeds(fdxParagraphTexts(m_tree, node)))
        return splices;
    if (node.attribute("DateModified"))
        addAttribute(node, "DateModified", now(), &splices);
    const FdxTree::Span span = m_tree.span(node);
    if (!span.isEmptyTag)
        splices.append({span.innerStart, span.innerEnd, noteParagraphs(current)});
    return splices;
}

/*! What changes of the notes that a paragraph has. */
FdxSplices FdxWriter::noteSplices(int paragraph) const
{
    FdxSplices splices;
    for (const int note : m_goneIn.value(paragraph)) {
        const FdxTree::Span span = m_tree.span(m_notes[note].node);
        splices.append({m_tree.gapStart(span.start), span.end, QByteArray()});
    }
    for (const int note : m_changedIn.value(paragraph))
        splices += contentSplices(note);
    return splices;
}

/*! What changes among the notes of a paragraph. */
FdxSplices FdxWriter::childSplices(int index) const
{
    const FdxEntry &entry = m_match.entries[index];
    FdxSplices splices = noteSplices(entry.source);
    const QVector<NewNote> notes = m_newIn.value(index);
    if (notes.isEmpty())
        return splices;
    const QVector<FdxRun> runs = m_script.runs(m_script.paragraphs()[entry.source].node);
    QVector<int> ends; // of their texts in the paragraph
    for (const FdxRun &run : runs)
        ends.append((ends.isEmpty() ? 0 : ends.last())
                    + fdxTextLength(m_tree.source(), run.textStart, run.textEnd));
    for (const NewNote &note : notes)
        splices.append(childSplice(index, note, runs, ends));
    return splices;
}

/*! Puts a note behind the text that it is about, as far as that stands in the file already. */
FdxSplice FdxWriter::childSplice(int index, const NewNote &note, const QVector<FdxRun> &runs,
                                 const QVector<int> &ends) const
{
    const FdxEntry &entry = m_match.entries[index];
    const FdxTextDiff diff = this->diff(index);
    int offset = note.offset;
    if (offset > diff.prefix)
        offset
            = offset > diff.newLength - diff.suffix ? offset + diff.oldLength - diff.newLength : -1;
    const auto end = std::lower_bound(ends.cbegin(), ends.cend(), offset);
    if (offset <= 0 || end == ends.cend()) {
        const int start = m_tree.span(m_script.paragraphs()[entry.source].node).innerStart;
        return {start, start, note.element};
    }
    const FdxRun &run = runs[int(end - ends.cbegin())];
    const FdxTree::Span span = m_tree.span(run.node);
    // What holds more than text is not cut.
    if (*end == offset || m_tree.slice(run.textStart, run.textEnd).contains('<'))
        return {span.end, span.end, note.element};
    const int start = end == ends.cbegin() ? 0 : *(end - 1);
    const int place = fdxTextPlace(m_tree.source(), run.textStart, run.textEnd, offset - start);
    return {place, place,
            "</Text>" + note.element
                + m_tree.source().mid(span.start, span.innerStart - span.start)};
}

/*! The numbers that ranges count paragraphs from, as the document has them. */
void FdxWriter::findNumbers()
{
    int number = 0;
    int last = -1; // dual dialogue that the last entry was in
    for (const FdxEntry &entry : qAsConst(m_match.entries)) {
        const FdxContainer &container = m_script.containers().value(entry.container);
        const int dual = dualDialogueOf(entry);
        const bool isWrapper = entry.source >= 0 && m_script.paragraphs()[entry.source].isWrapper;
        if (dual >= 0 && dual != last)
            number += 3;
        last = dual;
        m_numbers.append(dual >= 0 ? number - 3 : number);
        if (!container.isTitlePage && dual < 0 && !isWrapper)
            number += entry.length + 1;
    }
}

/*! A number for the dual dialogue that an entry is in; -1 for none. */
int FdxWriter::dualDialogueOf(const FdxEntry &entry) const
{
    if (entry.newDual >= 0)
        return m_script.containers().size() + entry.newDual;
    return m_script.containers().value(entry.container).wrapper >= 0 ? entry.container : -1;
}

/*! The number of a place in the document. */
int FdxWriter::numberOf(int position) const
{
    const QVector<FdxEntry> &entries = m_match.entries;
    const auto behind
        = std::upper_bound(entries.cbegin(), entries.cend(), position,
                           [](int value, const FdxEntry &entry) { return value < entry.position; });
    if (behind == entries.cbegin())
        return 0;
    const int index = int(behind - entries.cbegin()) - 1;
    const FdxEntry &entry = entries[index];
    const bool isDual
        = entry.container >= 0 && m_script.containers().value(entry.container).wrapper >= 0;
    return m_numbers[index] + (isDual ? 0 : qMin(position - entry.position, entry.length));
}

/*! Where a place of the document that was read is now. */
int FdxWriter::moved(int position)
{
    int paragraph = m_places.paragraphAt(position);
    if (paragraph < 0)
        return 0;
    const int offset = position - m_places.position(paragraph);
    const int entry = m_match.entryOf[paragraph];
    if (entry >= 0)
        return m_match.entries[entry].position + movedWithin(entry, offset);
    // The paragraph is gone: what follows it has taken its place.
    while (paragraph < m_match.entryOf.size() && m_match.entryOf[paragraph] < 0)
        ++paragraph;
    if (paragraph < m_match.entryOf.size())
        return m_match.entries[m_match.entryOf[paragraph]].position;
    return m_match.entries.isEmpty()
        ? 0
        : m_match.entries.last().position + m_match.entries.last().length;
}

/*! The same within a paragraph, past each of the places where it was changed. */
int FdxWriter::movedWithin(int entry, int offset)
{
    if (!m_diffs.contains(entry))
        return offset;
    int moved = offset;
    for (const FdxRunEdit::Hunk &hunk : changes(entry).hunks) {
        if (offset <= hunk.oldStart)
            break;
        if (offset < hunk.oldEnd)
            return qMin(hunk.newStart + offset - hunk.oldStart, hunk.newEnd);
        moved = offset + hunk.newEnd - hunk.oldEnd;
    }
    return moved;
}

/*! Moves the range with the text. */
void FdxWriter::writeRange(int index)
{
    const FdxNote &note = m_notes[index];
    const int oldStart = m_places.positionOf(note.numbers.start);
    const int oldEnd = m_places.positionOf(note.numbers.end);
    int start = moved(oldStart);
    int end = moved(oldEnd);
    if (m_documentNote[index] >= 0 && note.numbers.start < note.numbers.end) {
        // Where a note gave way to another one, the document does not show its end.
        const MVRTextRange whole = m_places.trimmed(note.range);
        const FdxDocumentNote &now = m_match.notes[m_documentNote[index]];
        // Beyond its text a range can hold the ends of paragraphs, which no format stands on.
        if (note.attached.start == whole.start && now.start != moved(whole.start))
            start = now.start > moved(whole.start) ? now.start : qMin(start, now.start);
        if (note.attached.end == whole.end && now.end != moved(whole.end))
            end = now.end < moved(whole.end) ? now.end : qMax(end, now.end);
    }
    // Relative, for numbers that lie beyond the script or within dual dialogue.
    const auto shifted = [](int number, int by) {
        constexpr qint64 most = std::numeric_limits<int>::max();
        return int(qBound<qint64>(0, qint64(number) + by, most));
    };
    const int newStart = shifted(note.numbers.start, numberOf(start) - m_places.offsetOf(oldStart));
    const int newEnd
        = qMax(newStart, shifted(note.numbers.end, numberOf(end) - m_places.offsetOf(oldEnd)));
    if (newStart != note.numbers.start || newEnd != note.numbers.end)
        addAttribute(note.node, "Range",
                     QByteArray::number(newStart) + ',' + QByteArray::number(newEnd), &m_splices);
}

// New notes.

bool FdxWriter::isRangeFile() const
{
    return m_tree.root().attribute("Version").toInt() >= 5 || m_tree.root().child("ScriptNotes");
}

bool FdxWriter::isRunFile() const
{
    return m_tree.root().attribute("Version").toInt() < 2;
}

/*! The text that a note is about; an inline one is about the word before it. */
MVRTextRange FdxWriter::anchorOf(const FdxDocumentNote &note)
{
    if (!note.isInline)
        return MVRTextRange(note.start, note.end);
    const FdxEntry &entry = m_match.entries[note.entry];
    if (note.entry != m_anchorEntry) {
        m_anchorEntry = note.entry;
        m_anchorText = entry.text();
    }
    MVRTextRange word = fdxWordBefore(m_anchorText, note.start - entry.position);
    if (word.start == word.end)
        word = fdxFirstWord(m_anchorText, 0);
    return MVRTextRange(entry.position + word.start, entry.position + word.end);
}

void FdxWriter::writeNewNotes()
{
    QByteArray rangeNotes;
    int id = 0;
    for (const FdxNote &note : m_notes)
        id = qMax(id, note.node.attribute("Id").toInt());
    for (int i = 0; i < m_match.notes.size(); ++i) {
        if (m_keptNotes.contains(i))
            continue;
        const FdxDocumentNote &note = m_match.notes[i];
        const FdxEntry &entry = m_match.entries[note.entry];
        const bool isOnTitlePage
            = entry.container >= 0 && m_script.containers().value(entry.container).isTitlePage;
        const MVRTextRange anchor = anchorOf(note);
        if (isRangeFile() && !isOnTitlePage)
            rangeNotes += fdxNewLine(m_tree) + "    " + newNote(note, anchor, ++id);
        else
            m_newIn[note.entry].append(
                {isRunFile() ? anchor.end - entry.position : -1, newNote(note, anchor, 0)});
    }
    if (!rangeNotes.isEmpty())
        addRangeNotes(rangeNotes);
}

void FdxWriter::addRangeNotes(const QByteArray &elements)
{
    const QByteArray newLine = fdxNewLine(m_tree);
    const FdxElement notes = m_tree.root().child("ScriptNotes");
    const FdxTree::Span span = m_tree.span(notes ? notes : m_tree.root());
    if (!notes)
        m_splices.append({span.innerEnd, span.innerEnd,
                          "  <ScriptNotes>" + elements + newLine + "  </ScriptNotes>" + newLine});
    else if (span.isEmptyTag)
        m_splices.append({m_tree.gapStart(span.end - 2), span.end,
                          '>' + elements + newLine + "  </ScriptNotes>"});
    else
        m_splices.append(
            {m_tree.gapStart(span.innerEnd), m_tree.gapStart(span.innerEnd), elements});
}

QByteArray FdxWriter::newNote(const FdxDocumentNote &note, const MVRTextRange &anchor, int id) const
{
    const QDateTime date = note.format.property(MVRTextFormat::CommentDateProperty).toDateTime();
    const QByteArray time = date.isValid() ? fileTime(date) : now();
    const QByteArray author
        = fdxEscapedValue(note.format.stringProperty(MVRTextFormat::CommentAuthorProperty));
    const QColor color = note.format.property(MVRTextFormat::CommentColorProperty).value<QColor>();
    const QByteArray common = " Color=\"" + fileColor(color) + "\" DateModified=\"" + time
        + "\" DateTime=\"" + time + '"';
    QByteArray tag;
    if (id > 0) {
        tag = "<ScriptNote" + common + " Id=\"" + QByteArray::number(id) + "\" Name=\"\" Range=\""
            + QByteArray::number(numberOf(anchor.start)) + ','
            + QByteArray::number(numberOf(anchor.end)) + "\" Type=\"\" WriterName=\"" + author
            + "\">";
    } else if (!isRunFile()) {
        tag = "<ScriptNote Author=\"" + author + '"' + common + " Name=\"\" Type=\"\">";
    } else {
        // Notes of that version are an ID and text. What else is known of one stands beside it
        // under the names of later versions.
        const QByteArray known = author.isEmpty() ? QByteArray() : " Author=\"" + author + '"';
        tag = "<ScriptNote ID=\"1\"" + known
            + (date.isValid() || color.isValid() ? common : QByteArray()) + '>';
    }
    return tag + noteParagraphs(note) + "</ScriptNote>";
}

QByteArray FdxWriter::noteParagraphs(const FdxDocumentNote &note) const
{
    const QByteArray newLine = fdxNewLine(m_tree);
    QByteArray paragraphs;
    for (const QString &text : note.paragraphs)
        paragraphs += paragraph("<Text Style=\"\">" + fdxEscaped(text, newLine) + "</Text>");
    if (note.isInline)
        return paragraphs;
    QTextDocument content;
    MVRTextRtf::fromRtfCData(
        note.format.property(MVRTextFormat::CommentCDataProperty).toByteArray(), &content);
    for (QTextBlock block = content.begin(); block.isValid(); block = block.next())
        paragraphs += paragraph(blockRuns(block, newLine));
    return paragraphs;
}
