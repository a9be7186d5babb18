// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <finaldraft/file/FdxPlaces_p.h>
#include <finaldraft/file/FdxScript_p.h>

#include <QVector>

/*! A note of a file and where it stands. */
struct FdxNote
{
    FdxElement node;
    MVRFinalDraftFile::NoteShape shape = MVRFinalDraftFile::NoteUnanchored;
    int paragraph = -1; // that it stands in, or its place does
    MVRTextRange numbers; // its Range as the file has it
    bool hasNumbers = false;
    MVRTextRange range = MVRTextRange(-1, -1); // what it is about, in the document
    MVRTextRange attached; // where the document carries it; empty: nowhere
    bool isRemoved = false; // though no document carries it

    bool isAttached() const { return attached.start < attached.end; }
};

/*! Finds all notes of a file, in its order. */
QVector<FdxNote> fdxNotes(const FdxScript &script, const FdxPlaces &places);

/*!
    The word before, at or behind \a offset of \a text, or the first one. Empty: there is none in
    reach.
*/
MVRTextRange fdxWordBefore(const QString &text, int offset);
MVRTextRange fdxWordAt(const QString &text, int offset);
MVRTextRange fdxFirstWord(const QString &text, int from);

/*! A note as it is told to the outside. */
MVRFinalDraftFile::Note fdxNoteRecord(const FdxNote &note, const FdxScript &script,
                                      const FdxPlaces &places);
