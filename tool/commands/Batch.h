// SPDX-License-Identifier: MIT
#pragma once

#include <tool/commands/BatchPlan.h>

#include <functional>

class Listener;

/*! Converts one file; false when that failed, and the listener was told why. */
using BatchStep = std::function<bool(const BatchFile &file, Listener &listener)>;

/*!
    Converts all files, goes on after a failure, prints a line for each and what became of all.

    \param workers  how many threads do that at a time, each with a document of its own
    \return the program's exit code: Failure when one of them failed
*/
int runBatch(const QVector<BatchFile> &files, int workers, const BatchStep &convert);
