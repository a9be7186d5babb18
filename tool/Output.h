// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

/*!
    Reads a whole file, or the standard input for "-".

    \param error  receives the reason of a failure
    \return false when the file cannot be opened or read, or is larger than 1 GiB
*/
bool readInput(const QString &path, QByteArray *data, QString *error);

/*!
    Writes a whole file in one step, or to the standard output for "-".

    The file holds what it held before unless everything could be written.
    \param error  receives the reason of a failure
*/
bool writeOutput(const QString &path, const QByteArray &data, QString *error);

/*! What is to be written, and where: a path, or "-" for the standard output. */
struct OutputFile
{
    QString path;
    QByteArray data;
    QString leftOut = QString(); /*!< what it does not carry, in words; see saveFiles() */
};

/*!
    Writes files that belong together: all hold what they held before unless each could be written.

    \param failed  receives the path that \a error is about
*/
bool writeOutputs(const QVector<OutputFile> &files, QString *failed, QString *error);
