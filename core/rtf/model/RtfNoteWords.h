// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

/*! What \info says about a file; of the content of a note, who wrote it and when. */
struct RtfInfo
{
    QString title;
    QString author;
    QDateTime time; /*!< \creatim */
};

/*! What stands in the words of notes. */
namespace RtfNoteWords {

/*! \atndate: minutes, hours, day, month, years since 1900 and day of the week in 32 bits. */
QDateTime dateFromNumber(quint32 number);
/*! \return 0 for a time that the word cannot say */
quint32 dateToNumber(const QDateTime &time);

/*! \mvrnote: the length of the text that the note belongs to, and the caller's data. */
QByteArray dataToText(int length, const QByteArray &data);
/*! Leaves \a length and \a data as they are where \a text does not say them. */
void dataFromText(const QByteArray &text, int *length, QByteArray *data);

}
