// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

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
