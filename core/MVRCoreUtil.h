// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QByteArray>
#include <QString>

/*! Small services that do not belong to documents. */
class MVRCORE_EXPORT MVRCoreUtil
{
public:
    /*! A new random identifier (RFC 4122 version 4), lower-case and without braces. */
    static QString CreateUUID();

    /*!
        Reads a whole file, of at most 1 GiB.

        \param path   the file's path
        \param error  receives a translated message on failure and an empty one on success; may be
                      null
        \return the content; a null byte array when the file cannot be read or is no file but a
                folder, device or pipe
    */
    static QByteArray ReadBinaryFile(const QString &path, QString *error);
};
