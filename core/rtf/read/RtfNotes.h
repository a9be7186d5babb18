// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRtfNote.h>
#include <core/rtf/model/RtfTable.h>

#include <QHash>
#include <QTextDocument>

#include <memory>
#include <vector>

class RtfBuilder;

/*! What \info says about a file; of the content of a note, who wrote it and when. */
struct RtfInfo
{
    QString title;
    QString author;
    QDateTime time; /*!< \creatim */
};

/*! A note whose content is being read, and what waits around it meanwhile. */
struct RtfOpenNote
{
    MVRTextRtfNote note;
    int mark = 0; /*!< where it stands, in the body also for a note in a note */
    int reference = -1; /*!< \atnref: number of the range that it belongs to, -1: none */
    int length = -1; /*!< of the text before it that it belongs to, -1: not said */
    bool isNumbered = false; /*!< the content begins with \chftn */
    bool isNested = false;
    QTextDocument content;
    std::unique_ptr<RtfBuilder> builder;

    QTextDocument *outerDocument = nullptr;
    RtfBuilder *outerBuilder = nullptr;
    bool outerPageBreak = false;
    bool outerSectionBreak = false;
    RtfRowFormat outerRow;
    RtfRowFormat outerNestedRow;
    RtfCellFormat outerNextCell;
};

/*! The notes that were read; where they stand is known when the document is complete. */
class RtfFoundNotes
{
public:
    /*! One edge of the text that a comment is attached to: \atrfstart or \atrfend. */
    void addEdge(int reference, int mark, bool isStart);
    void add(const RtfOpenNote &note);
    MVRTextRtfNotes resolved(const RtfBuilder &body) const;

private:
    struct Found
    {
        MVRTextRtfNote note;
        int mark;
        int reference;
        int length;
    };

    std::vector<Found> m_notes;
    QHash<int, int> m_starts; // marks by reference
    QHash<int, int> m_ends;
};

/*! What stands in the words of notes. */
namespace RtfNotes {

/*! \atndate: minutes, hours, day, month, years since 1900 and day of the week in 32 bits. */
QDateTime dateFromNumber(quint32 number);
quint32 dateToNumber(const QDateTime &time);

/*! \mvrnote: the length of the text that the note belongs to, and the caller's data. */
QByteArray dataToText(int length, const QByteArray &data);
void dataFromText(const QByteArray &text, RtfOpenNote *note);

}
