// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfNotes.h>

#include <core/rtf/read/RtfBuilder.h>

void RtfFoundNotes::addEdge(int reference, int mark, bool isStart)
{
    (isStart ? m_starts : m_ends).insert(reference, mark);
}

void RtfFoundNotes::add(const RtfOpenNote &note)
{
    m_notes.push_back({note.note, note.mark, note.reference, note.length});
}

MVRTextRtfNotes RtfFoundNotes::resolved(const RtfBuilder &body) const
{
    MVRTextRtfNotes notes;
    notes.reserve(static_cast<int>(m_notes.size()));
    for (const Found &found : m_notes) {
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

namespace RtfNotes {

QDateTime dateFromNumber(quint32 number)
{
    const auto bits = [number](int from, int count) {
        return static_cast<int>(number >> from & ((1U << count) - 1));
    };
    return QDateTime(QDate(1900 + bits(20, 9), bits(16, 4), bits(11, 5)),
                     QTime(bits(6, 5), bits(0, 6)));
}

quint32 dateToNumber(const QDateTime &time)
{
    const QDate day = time.date();
    const int years = day.year() - 1900;
    if (!time.isValid() || years < 0 || years > 511)
        return 0;
    const int number = time.time().minute() | time.time().hour() << 6 | day.day() << 11
        | day.month() << 16 | years << 20;
    return static_cast<quint32>(number) | static_cast<quint32>(day.dayOfWeek() % 7) << 29;
}

QByteArray dataToText(int length, const QByteArray &data)
{
    return QByteArray::number(length) + ' ' + data.toHex();
}

void dataFromText(const QByteArray &text, RtfOpenNote *note)
{
    const int blank = text.indexOf(' ');
    bool isNumber = false;
    const int length = text.left(blank).toInt(&isNumber);
    if (isNumber && length >= 0)
        note->length = length;
    if (blank >= 0)
        note->note.data = QByteArray::fromHex(text.mid(blank + 1));
}

} // namespace RtfNotes
