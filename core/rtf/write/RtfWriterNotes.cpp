// SPDX-License-Identifier: MIT
// The part of the writer that puts footnotes and comments into the text.
#include <core/rtf/model/RtfNoteWords.h>
#include <core/rtf/write/RtfWriter.h>

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <limits>

void RtfWriter::setNotes(const MVRTextRtfNotes &notes, RtfContentReader read)
{
    m_notes = notes;
    m_readContent = std::move(read);
    m_edges.reserve(static_cast<std::size_t>(notes.size()) * 2);
    for (int i = 0; i < notes.size(); ++i) {
        const MVRTextRtfNote &note = notes.at(i);
        if (note.kind == MVRTextRtfNote::Comment && note.start < note.end)
            m_edges.push_back({note.start, true, i});
        m_edges.push_back({qMax(note.start, note.end), false, i});
    }
    // Where notes touch, the one ends before the other begins.
    std::sort(m_edges.begin(), m_edges.end(), [](const NoteEdge &a, const NoteEdge &b) {
        return std::tie(a.position, a.isStart, a.note) < std::tie(b.position, b.isStart, b.note);
    });
}

int RtfWriter::nextEdge() const
{
    return m_nextEdge < m_edges.size() ? m_edges[m_nextEdge].position
                                       : std::numeric_limits<int>::max();
}

void RtfWriter::writeNotesUntil(int position)
{
    for (; m_nextEdge < m_edges.size() && nextEdge() <= position; ++m_nextEdge) {
        const NoteEdge &edge = m_edges[m_nextEdge];
        if (edge.isStart)
            m_body.raw("{\\*\\atrfstart " + QByteArray::number(edge.note + 1) + '}');
        else
            writeNote(edge.note);
    }
}

void RtfWriter::writeNote(int number)
{
    MVRTextRtfNote &note = m_notes[number];
    const QByteArray content = noteContent(&note);
    if (note.kind == MVRTextRtfNote::Comment)
        writeComment(number, content);
    else
        writeFootnote(note, content);
}

void RtfWriter::writeComment(int number, const QByteArray &content)
{
    const MVRTextRtfNote &note = m_notes.at(number);
    const bool hasRange = note.start < note.end;
    const QByteArray reference = QByteArray::number(number + 1) + '}';
    if (hasRange)
        m_body.raw("{\\*\\atrfend " + reference);
    const auto named = [this](const QByteArray &word, const QString &text) {
        m_body.beginGroup();
        m_body.words(word);
        m_body.text(text);
        m_body.endGroup();
    };
    named(QByteArrayLiteral("\\*\\atnid"), note.initials);
    if (!note.author.isEmpty())
        named(QByteArrayLiteral("\\*\\atnauthor"), note.author);
    m_body.words(QByteArrayLiteral("\\chatn"));
    m_body.beginGroup();
    m_body.words(QByteArrayLiteral("\\*\\annotation"));
    if (hasRange)
        m_body.raw("{\\*\\atnref " + reference);
    const quint32 date = RtfNoteWords::dateToNumber(note.time);
    if (date != 0) // counted as signed
        m_body.raw("{\\*\\atndate " + QByteArray::number(static_cast<int>(date)) + '}');
    if (!note.data.isEmpty())
        m_body.raw("{\\*\\mvrnote " + RtfNoteWords::dataToText(note.end - note.start, note.data)
                   + '}');
    m_body.raw(content);
    m_body.endGroup();
}

void RtfWriter::writeFootnote(const MVRTextRtfNote &note, const QByteArray &content)
{
    m_body.raw(QByteArrayLiteral("{\\super\\chftn}{\\footnote"));
    if (note.isEndNote)
        m_body.raw(QByteArrayLiteral("\\ftnalt"));
    m_body.raw("{\\*\\mvrnote " + RtfNoteWords::dataToText(note.end - note.start, note.data) + '}');
    m_body.raw(content);
    m_body.endGroup();
}

// Uses the resources of the whole file; content that cannot be read is an empty note. Who wrote it
// and when may stand in the content itself, where the reader puts it.
QByteArray RtfWriter::noteContent(MVRTextRtfNote *note)
{
    QTextDocument content;
    content.setUndoRedoEnabled(false);
    const RtfInfo info = m_readContent(note->rtf, &content);
    if (note->author.isEmpty())
        note->author = info.author;
    if (!note->time.isValid())
        note->time = info.time;

    return contentOf(content,
                     note->kind == MVRTextRtfNote::Footnote ? QByteArrayLiteral("{\\super\\chftn} ")
                                                            : QByteArray());
}

// \a before stands in the first paragraph, in front of its text.
QByteArray RtfWriter::contentOf(const QTextDocument &content, const QByteArray &before)
{
    RtfWriter writer;
    std::swap(writer.m_resources, m_resources);
    std::swap(writer.m_lists, m_lists);
    writer.m_page = m_page;
    writer.m_isNote = true;
    writer.m_paragraph = rtfPlainParagraph;
    writer.m_body.words(writer.m_paragraph);
    if (!before.isEmpty()) // what is raw stands by itself, even nothing
        writer.m_body.raw(before);
    writer.writeBody(content);
    std::swap(writer.m_resources, m_resources);
    std::swap(writer.m_lists, m_lists);
    return writer.m_body.rtf();
}
