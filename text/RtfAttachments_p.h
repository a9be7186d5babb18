// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>
#include <core/MVRTextRtfNote.h>

#include <QVector>

class QTextDocument;

/*! Where notes of a file are attached; no two places overlap. */
struct RtfAttachment
{
    MVRTextRange range; /*!< empty: nothing there can carry a note, so a label is to */
    MVRTextRtfNote::Kind kind = MVRTextRtfNote::Comment;
    QVector<int> notes; /*!< those that are attached as one, in the order of the file */
};

/*! Whether an application attached \a note to the very text, as only files of ours say. */
bool isOfApplication(const MVRTextRtfNote &note);

/*!
    Finds the text for each of \a notes: the range of its own, else the word before it.

    Linear in the document and the notes, up to sorting them.
    \return the places in document order
*/
QVector<RtfAttachment> attachmentsForNotes(QTextDocument *document, const MVRTextRtfNotes &notes);
