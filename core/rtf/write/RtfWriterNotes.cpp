// SPDX-License-Identifier: MIT
// The part of the writer that puts footnotes and comments into the text.
#include <core/rtf/model/RtfNoteWords.h>
#include <core/rtf/write/RtfWriter.h>

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <limits>
#include <map>

void RtfWriter::setNotes(const MVRTextRtfNotes &notes, RtfContentSource contents)
{
    m_notes = notes;
    m_contents = std::move(contents);
    m_edges.reserve(static_cast<std::size_t>(notes.size()) * 2);
    for (int i = 0; i < notes.size(); ++i) {
        MVRTextRtfNote &note = m_notes[i];
        note.start = qMax(0, note.start);
        note.end = qMax(note.start, note.end);
        if (note.kind == MVRTextRtfNote::Comment && note.start < note.end)
            m_edges.push_back({note.start, true, i});
        m_edges.push_back({note.end, false, i});
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

// Who wrote it and when may stand in the content itself, where the reader puts it.
QByteArray RtfWriter::noteContent(MVRTextRtfNote *note)
{
    RtfInfo info;
    const bool isNumbered = note->kind == MVRTextRtfNote::Footnote;
    const QByteArray content = contentOf(
        note->rtf, isNumbered ? QByteArrayLiteral("{\\super\\chftn} ") : QByteArray(), &info);
    if (note->author.isEmpty())
        note->author = info.author;
    if (!note->time.isValid())
        note->time = info.time;
    return content;
}

// Uses the resources of the whole file; content that cannot be read is an empty note.
QByteArray RtfWriter::contentOf(const QByteArray &rtf, const QByteArray &before, RtfInfo *info)
{
    if (const std::optional<RtfOwnContent> own = m_contents.takeOwn(rtf)) {
        *info = own->info;
        return contentOf(*own, before);
    }
    QTextDocument content;
    content.setUndoRedoEnabled(false);
    *info = m_contents.read(rtf, &content);
    return contentOf(content, before);
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

// What the other contentOf() writes for a document that was read from this content.
QByteArray RtfWriter::contentOf(const RtfOwnContent &content, const QByteArray &before)
{
    // Numbers are given in the order in which the content has them, as its runs get them.
    std::map<std::pair<RtfOwnContent::Kind, int>, QByteArray> numbers;
    for (const RtfOwnContent::Reference &reference : content.references)
        numbers.insert({{reference.kind, reference.number}, {}});
    for (auto &entry : numbers)
        entry.second
            = QByteArray::number(ownNumber(content, entry.first.first, entry.first.second));
    m_lists += content.lists;
    m_resources.headings |= content.headings;

    QByteArray rtf = rtfPlainParagraph + before;
    if (!content.startsPlain)
        rtf += rtfPlainParagraph;
    // Behind a group the blank that ends \pard would be text.
    const bool isBehindGroup = content.startsPlain && !before.isEmpty();
    int at = isBehindGroup && content.body.startsWith(' ') ? 1 : 0;
    for (const RtfOwnContent::Reference &reference : content.references) {
        rtf.append(content.body.constData() + at, reference.at - at);
        rtf += numbers[{reference.kind, reference.number}];
        at = reference.at;
    }
    return rtf.append(content.body.constData() + at, content.body.size() - at);
}

int RtfWriter::ownNumber(const RtfOwnContent &content, RtfOwnContent::Kind kind, int number)
{
    switch (kind) {
    case RtfOwnContent::Font:
        return m_resources.fontNumber(content.resources.fonts.value(number).family);
    case RtfOwnContent::Color:
        return m_resources.colorNumber(content.resources.color(number));
    case RtfOwnContent::Exact:
        return m_resources.exactNumber(content.resources.exact.value(number));
    case RtfOwnContent::List:
        break;
    }
    return m_lists.size() + 1 + number;
}
