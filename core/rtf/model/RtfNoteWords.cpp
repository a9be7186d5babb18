// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfNoteWords.h>

namespace RtfNoteWords {

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

void dataFromText(const QByteArray &text, int *length, QByteArray *data)
{
    const int blank = text.indexOf(' ');
    bool isNumber = false;
    const int number = text.left(blank).toInt(&isNumber);
    if (isNumber && number >= 0)
        *length = number;
    if (blank >= 0)
        *data = QByteArray::fromHex(text.mid(blank + 1));
}

} // namespace RtfNoteWords
