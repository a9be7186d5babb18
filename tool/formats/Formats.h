// SPDX-License-Identifier: MIT
#pragma once

#include <tool/Notes.h>
#include <tool/formats/Readers.h>
#include <tool/formats/Writers.h>

#include <QString>
#include <QStringList>

/*! A file format that the tool reads, writes or both. */
struct Format
{
    const char *name; /*!< also its first suffix */
    const char *title;
    const char *otherSuffixes; /*!< separated by blanks */
    ReadFunction read; /*!< null when it is not read */
    WriteFunction write; /*!< null when it is not written */
    NoteSupport notes;
};

/*! The format called \a name (in any case); null when there is none. */
const Format *formatByName(const QString &name);

/*! The format of a file by the suffix of its name; null for an unknown one. */
const Format *formatOfFile(const QString &path);

/*! The names of all formats that are read, or written. */
QStringList readableFormats();
QStringList writableFormats();
