// SPDX-License-Identifier: MIT
#pragma once

#include <tool/Notes.h>

#include <QString>

class Listener;
struct Document;
struct Format;
struct OutputFile;
struct WriteOptions;

/*!
    Makes a file of \a document; pictures that go into files of their own are written.

    \param format    the format, one that is written
    \param choice    what becomes of notes
    \param document  its notes are prepared for the format
    \param file      names where it will go; the rest is filled in
    \return false when that failed; the reason was printed
*/
bool renderDocument(const Format &format, NotesChoice choice, const WriteOptions &options,
                    Document &document, Listener &listener, OutputFile *file);

/*! Writes all files or none, and says what was left out; false when that failed, and said why. */
bool saveFiles(const QVector<OutputFile> &files, Listener &listener);

/*! Does both, for a file or the standard output, "-". */
bool saveDocument(const QString &path, const Format &format, NotesChoice choice,
                  const WriteOptions &options, Document &document, Listener &listener);
