// SPDX-License-Identifier: MIT
// The part of the reader that reads footnotes and comments.
#include <core/rtf/read/RtfReader.h>
#include <core/rtf/write/RtfWriter.h>

#include <QTextCursor>

namespace {

// Footnotes have comments in Word; what lies deeper comes from no program.
constexpr std::size_t deepestNote = 4;

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

void RtfReader::beginNote(MVRTextRtfNote::Kind kind)
{
    // The mark of a comment is hidden in some programs' files; a hidden footnote is not shown.
    const bool isComment = kind == MVRTextRtfNote::Comment;
    const bool isShown = isComment ? inBody() && !m_group.chars.deleted : isVisible();
    if (!m_notes || !isShown || m_openNotes.size() >= deepestNote) {
        skipDestination();
        return;
    }
    if (m_group.opensDestination) // said twice in one group
        return;
    openDestination(&RtfDestinations::note);
    if (!m_group.opensDestination)
        return;

    putLoneSurrogate();
    auto note = std::make_unique<RtfOpenNote>();
    note->note.kind = kind;
    if (isComment) {
        note->note.author = std::exchange(m_noteAuthor, QString());
        note->note.initials = std::exchange(m_noteInitials, QString());
    }
    m_bookmarks.clear();
    note->isNested = openNote() != nullptr;
    note->mark = note->isNested ? openNote()->mark : m_body.addMark();
    note->content.setUndoRedoEnabled(false);
    note->builder = std::make_unique<RtfBuilder>(&note->content, m_formats, m_tables, m_lists);
    note->outerDocument = std::exchange(m_document, &note->content);
    note->outerBuilder = std::exchange(m_builder, note->builder.get());
    note->outerPageBreak = std::exchange(m_pageBreak, false);
    note->outerSectionBreak = std::exchange(m_sectionBreak, false);
    note->outerRow = std::exchange(m_row, {});
    note->outerNestedRow = std::exchange(m_nestedRow, {});
    note->outerNextCell = std::exchange(m_nextCell, {});
    m_openNotes.push_back(std::move(note));

    resetChars();
    resetPara();
    m_group.chars.link = 0;
    m_group.field = -1;
}

void RtfReader::finishNote()
{
    if (!openNote())
        return;
    insertLastParagraph();
    const std::unique_ptr<RtfOpenNote> note = std::move(m_openNotes.back());
    m_openNotes.pop_back();
    m_document = note->outerDocument;
    m_builder = note->outerBuilder;
    m_pageBreak = note->outerPageBreak;
    m_sectionBreak = note->outerSectionBreak;
    m_row = note->outerRow;
    m_nestedRow = note->outerNestedRow;
    m_nextCell = note->outerNextCell;

    if (note->isNumbered)
        dropBlankBehindNumber(&note->content);
    RtfWriter writer;
    writer.setInfo({QString(), note->note.author, note->note.time});
    note->note.rtf = writer.write(note->content, false);
    if (note->isNested) // its range would be one of the note around it
        note->reference = note->length = -1;
    m_foundNotes.add(*note);
}

void RtfReader::resolveNotes()
{
    *m_notes = m_foundNotes.resolved(m_body);
}

// Opens a destination that says something about a note, when notes are asked for.
void RtfReader::openNoteWord(const RtfDestination *around, const RtfDestination *destination)
{
    const bool isThere = m_group.destination == around
        || (around == &RtfDestinations::body && m_group.destination == &RtfDestinations::note);
    if (!m_notes || !isThere) {
        skipDestination();
        return;
    }
    openDestination(destination);
}

void RtfReader::setNoteNumber()
{
    if (openNote() && inBody() && !m_builder->hasText() && !m_builder->hasContent())
        openNote()->isNumbered = true;
}

void RtfReader::setEndNote()
{
    if (openNote() && inBody())
        openNote()->note.isEndNote = openNote()->note.kind == MVRTextRtfNote::Footnote;
}

void RtfReader::addRangeEdge(bool isStart)
{
    int reference = 0;
    if (toNumber(takeCollected(), &reference) && !openNote())
        m_foundNotes.addEdge(reference, m_body.addMark(), isStart);
}

void RtfReader::setNoteReference()
{
    int reference = 0;
    if (toNumber(takeCollected(), &reference) && openNote())
        openNote()->reference = reference;
}

void RtfReader::setNoteDate()
{
    int number = 0;
    if (toNumber(takeCollected(), &number) && openNote())
        openNote()->note.time = RtfNotes::dateFromNumber(static_cast<quint32>(number));
}

// \atntime and \creatim say part after part: year, month, day, hour, minute.
void RtfReader::setNoteTime(int component, int value)
{
    const bool isOfDocument = m_group.destination == &RtfDestinations::infoTime;
    RtfOpenNote *note = openNote();
    if (!isOfDocument && (!note || m_group.destination != &RtfDestinations::noteTime))
        return;
    QDateTime &time = isOfDocument ? m_info.time : note->note.time;
    if (!time.isValid())
        time = QDateTime(QDate(1900, 1, 1), QTime(0, 0));
    QDate date = time.date();
    int parts[] = {date.year(), date.month(), date.day(), time.time().hour(), time.time().minute()};
    parts[component] = value;
    date = QDate(parts[0], parts[1], parts[2]);
    const QTime clock(parts[3], parts[4]);
    if (date.isValid() && clock.isValid())
        time = QDateTime(date, clock);
}

void RtfReader::setNoteData()
{
    const QByteArray text = takeCollected().toLatin1();
    if (openNote())
        RtfNotes::dataFromText(text, openNote());
}
