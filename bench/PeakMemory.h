// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QStringList>

#include <sys/resource.h>

/*! The most memory that this process has had, in kilobytes. */
inline long peakKilobytes()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

/*! What this program prints when it is run with \a arguments: a process knows its peak only once.
 */
inline long printedBy(const QStringList &arguments)
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), arguments);
    process.waitForFinished(-1);
    return process.readAllStandardOutput().toLong();
}
