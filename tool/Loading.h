// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class CommandLine;
class Listener;
struct Document;
struct Format;
struct ReadOptions;

/*!
    Finds the format of a file.

    \param name   the format's name, which decides; else the file's suffix does
    \param error  receives what is wrong
    \return null when neither names a format
*/
const Format *findFormat(const QString &path, const QString &name, QString *error);

/*! The same for a file that is going to be read: null also when the format is only written. */
const Format *readableFormat(const QString &path, const QString &name, QString *error);

/*!
    Reads a file, or the standard input for "-", into \a document.

    \param format  the format, one that is read
    \return false when that failed; the reason was printed
*/
bool loadDocument(const QString &path, const Format &format, const ReadOptions &options,
                  Document &document, Listener &listener);

/*!
    The same for a subcommand whose one argument is the file and whose option "from" its format.

    \return the program's exit code; Success when the document was read
*/
int loadForReport(const CommandLine &commandLine, Document &document, Listener &listener);
