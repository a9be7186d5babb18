// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>
#include <text/MvrTextExport.h>

#include <QByteArray>
#include <QColor>
#include <QMap>

class QDataStream;
class QTextCharFormat;

/*! One inspector note: a comment or footnote whose content stands beside the text. */
struct MVRTEXT_EXPORT MVRTextCommentLink
{
    bool isFootnote; /*!< true: a footnote; false: a comment */
    bool extraFlag; /*!< carried along and stored; nothing here gives it a meaning */
    QColor color; /*!< colour of a comment; invalid when it has none, and for footnotes */
    QByteArray cdata; /*!< the content as RTF; empty when the note has none */

    /*! An empty comment without a colour. */
    MVRTextCommentLink();

    /*!
        The note that \a format carries.

        \param format  format of a character inside a note; one that carries no note gives an empty
                       comment
    */
    explicit MVRTextCommentLink(const QTextCharFormat &format);
};

/*! The inspector notes of a document, each once under its whole range. */
using MVRTextCommentLinkMap = QMap<MVRTextRange, MVRTextCommentLink>;

/*!
    Writes a note with the stream's own version and byte order: the tag "MVRTextCommentLink::1.0"
    as a string, then colour, extraFlag, isFootnote and cdata.
*/
MVRTEXT_EXPORT QDataStream &operator<<(QDataStream &stream, const MVRTextCommentLink &link);

/*!
    Reads what operator<<() wrote. Behind any other tag nothing is read and \a link stays as it was;
    the stream then stands behind the tag. A record that is cut off, or names a colour of no kind,
    gives an empty comment.
*/
MVRTEXT_EXPORT QDataStream &operator>>(QDataStream &stream, MVRTextCommentLink &link);
