// SPDX-License-Identifier: MIT
#pragma once

#include <tool/Command.h>

struct WriteOptions;

/*! Options of commands that write pages: which of them, and what stands around their text. */
QVector<Option> pageOptions();

/*! Reads them; false, and \a error says so, when one is wrong. */
bool readPageOptions(const CommandLine &commandLine, WriteOptions *options, QString *error);
