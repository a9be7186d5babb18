// SPDX-License-Identifier: MIT
#pragma once

#include <tool/Command.h>
#include <tool/Notes.h>

class CommandLine;
struct WriteOptions;

// Options that mean the same in every subcommand that has them.

/*! --from, the format of what is read. */
Option fromOption();
/*! --to, the format of what is written. */
Option toOption();
/*! --json; \a what is printed then, "Print an array of objects instead of a table." */
Option jsonOption(const char *what);
/*! How a document is written: --notes, --paper, --author and --elements. */
QVector<Option> writingOptions();

/*! Takes what writingOptions() say; false, and \a error says why, when they make no sense. */
bool readWritingOptions(const CommandLine &commandLine, NotesChoice *notes, WriteOptions *options,
                        QString *error);

/*! What was called --as: --to. */
OldWord oldFormatWord();
