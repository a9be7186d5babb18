// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfNoteReader.h>

#include <QTextCursor>

namespace {

// The number of a note in its own text is not part of it, nor is the blank that keeps it apart.
void dropBlankBehindNumber(QTextDocument *content)
{
    const QChar first = content->characterAt(0);
    if (first == QLatin1Char(' ') || first == QLatin1Char('\t') || first == QChar::Nbsp)
        QTextCursor(content).deleteChar();
}

bool toNumber(const QString &text, int *number)
{
    bool isNumber = false;
    *number = text.trimmed().toInt(&isNumber);
    return isNumber;
}

} // namespace

bool RtfNoteReader::canBegin() const
{
    // Footnotes have comments in Word; what lies deeper comes from no program.
    constexpr std::size_t maxNoteDepth = 4;
    return m_isWanted && m_open.size() < maxNoteDepth;
}

void RtfNoteReader::begin(MVRTextRtfNote::Kind kind, const RtfDocumentBuilder &model, int mark,
                          RtfStory *story)
{
    auto note = std::make_unique<OpenNote>();
    note->note.kind = kind;
    if (kind == MVRTextRtfNote::Comment) {
        note->note.author = std::exchange(m_author, QString());
        note->note.initials = std::exchange(m_initials, QString());
    }
    note->isNested = isInNote();
    note->mark = mark;
    note->content.setUndoRedoEnabled(false);
    note->builder = std::make_unique<RtfDocumentBuilder>(&note->content, model);
    note->outer = std::exchange(*story, {&note->content, note->builder.get(), {}, false, false});
    m_open.push_back(std::move(note));
}

void RtfNoteReader::finish(RtfStory *story)
{
    const std::unique_ptr<OpenNote> open = std::move(m_open.back());
    m_open.pop_back();
    *story = std::move(open->outer);
    if (open->isNumbered)
        dropBlankBehindNumber(&open->content);
    MVRTextRtfNote &note = open->note;
    note.rtf = m_write(open->content, {QString(), note.author, note.time});
    if (open->isNested) // its range would be one of the note around it
        open->reference = open->length = -1;
    m_found.push_back({note, open->mark, open->reference, open->length});
}

void RtfNoteReader::addEdge(const QString &reference, const RtfStory &story, bool isStart)
{
    int number = 0;
    if (toNumber(reference, &number) && !isInNote())
        (isStart ? m_starts : m_ends).insert(number, story.builder->addMark());
}

void RtfNoteReader::setNumbered()
{
    if (!isInNote())
        return;
    OpenNote &open = *m_open.back();
    if (!open.builder->hasText() && !open.builder->hasContent())
        open.isNumbered = true;
}

void RtfNoteReader::setEndNote()
{
    if (isInNote())
        m_open.back()->note.isEndNote = m_open.back()->note.kind == MVRTextRtfNote::Footnote;
}

void RtfNoteReader::setReference(const QString &reference)
{
    int number = 0;
    if (toNumber(reference, &number) && isInNote())
        m_open.back()->reference = number;
}

void RtfNoteReader::setDate(const QString &text)
{
    int number = 0;
    if (toNumber(text, &number) && isInNote())
        m_open.back()->note.time = RtfNoteWords::dateFromNumber(static_cast<quint32>(number));
}

void RtfNoteReader::setData(const QString &text)
{
    if (isInNote())
        RtfNoteWords::dataFromText(text.toLatin1(), &m_open.back()->length,
                                   &m_open.back()->note.data);
}

MVRTextRtfNotes RtfNoteReader::resolved(const RtfDocumentBuilder &body) const
{
    MVRTextRtfNotes notes;
    notes.reserve(static_cast<int>(m_found.size()));
    for (const FoundNote &found : m_found) {
        MVRTextRtfNote note = found.note;
        const int place = body.markPosition(found.mark);
        note.start = note.end = place;
        if (found.length >= 0)
            note.start = qMax(0, place - found.length);
        const auto start = m_starts.constFind(found.reference);
        const auto end = m_ends.constFind(found.reference);
        if (start != m_starts.cend())
            note.start = body.markPosition(*start);
        if (end != m_ends.cend())
            note.end = body.markPosition(*end);
        // A range that is crossed over leaves the place.
        if (note.start > note.end)
            note.start = note.end = place;
        notes.append(note);
    }
    return notes;
}
