// SPDX-License-Identifier: MIT
#pragma once

#include <tool/Notes.h>

#include <QString>

class Listener;
struct Document;
struct Format;
struct WriteOptions;

/*!
    Writes \a document to a file, or to the standard output for "-", and says what was left out.

    \param format    the format, one that is written
    \param choice    what becomes of notes
    \param document  its notes are prepared for the format
    \return false when that failed; the reason was printed
*/
bool saveDocument(const QString &path, const Format &format, NotesChoice choice,
                  const WriteOptions &options, Document &document, Listener &listener);
