// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QStringList>

/*! Text of the writer in a Final Draft file that reading it into a document leaves behind. */
struct FdxLosses
{
    int detachedNotes = 0; /*!< notes kept beside the script, with or without a range */
    int alternates = 0; /*!< alternate versions of dialogue */
    int omittedParagraphs = 0; /*!< paragraphs of omitted scenes */
    int summaries = 0; /*!< summaries of scenes */

    /*! What there is, in words: "2 alternates"; empty when nothing is lost. */
    QStringList toWords() const;
};

/*! Looks through \a fdx once; what cannot be parsed any more is not counted. */
FdxLosses countFdxLosses(const QByteArray &fdx);
