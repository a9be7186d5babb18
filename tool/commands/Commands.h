// SPDX-License-Identifier: MIT
#pragma once

class QStringList;

/*!
    The subcommands. Each takes the arguments from its own name on and gives the program's exit
    code; what went wrong was printed.
*/
int runConvert(const QStringList &arguments);
int runNotes(const QStringList &arguments);
int runLinks(const QStringList &arguments);
int runInfo(const QStringList &arguments);
int runCount(const QStringList &arguments);
int runReplace(const QStringList &arguments);
int runAppend(const QStringList &arguments);
int runMarkup(const QStringList &arguments);
int runEndNotes(const QStringList &arguments);
