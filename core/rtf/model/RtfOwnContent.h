// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfNoteWords.h>
#include <core/rtf/model/RtfResources.h>

#include <QByteArray>
#include <QTextListFormat>
#include <QVector>

#include <vector>

/*!
    The content of a note as the writer writes it, taken to pieces so that another file can have it
    with the numbers of its own fonts, colours and lists, and no document is built for that.
*/
struct RtfOwnContent
{
    enum Kind { Font, Color, Exact, List };

    /*! A number that stands at a place of the body, where it is left out. */
    struct Reference
    {
        int at;
        Kind kind;
        int number; /*!< in the resources; of lists: in \c lists, from 0 */
    };

    /*! The text behind its first \pard, as it ends in a note: without the last \par, unless that
        makes an empty paragraph. */
    QByteArray body;
    bool startsPlain = true; /*!< \pard is all that formats the first paragraph */
    std::vector<Reference> references; /*!< in the order of the body */
    RtfResources resources;
    QVector<QTextListFormat> lists;
    int headings = 0; /*!< levels that are used, a bit each */
    RtfInfo info;
};
