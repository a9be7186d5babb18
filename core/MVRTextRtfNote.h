// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QVector>

/*!
    A footnote or comment of an RTF file (RTF 1.9.1, "Footnotes" and "Comments (Annotations)").

    The reader hands these to its caller and the writer takes them from there; what a note means
    to a document is the caller's business.
*/
struct MVRTextRtfNote
{
    /*! Which of the two it is. */
    enum Kind { Footnote, Comment };

    Kind kind = Footnote; /*!< which of the two it is */
    bool isEndNote = false; /*!< of footnotes: the text stands at the end (\\ftnalt) */
    /*!
        The text that the note belongs to: positions in the document, in UTF-16 code units. Equal
        when the file says only where the note's mark stands, which footnotes of other programs do.
    */
    int start = 0;
    int end = 0; /*!< position after the last character */
    QString author; /*!< of comments; may be empty */
    QString initials; /*!< of comments; may be empty */
    QDateTime time; /*!< local, of comments; invalid when it is not said */
    QByteArray rtf; /*!< the content as a file of its own, as MVRTextRtf::toRtfCData() writes it;
                         its \\info holds author and time, which the writer takes from there when
                         they are not given */
    QByteArray data; /*!< anything of the caller's, which other programs skip and do not keep */
};
using MVRTextRtfNotes = QVector<MVRTextRtfNote>;
