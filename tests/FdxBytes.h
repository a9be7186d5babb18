// SPDX-License-Identifier: MIT
#pragma once

#include <finaldraft/MVRFinalDraftFile.h>

#include <QBuffer>

/*! Loads a Final Draft file that is in memory. */
inline bool loadFdx(MVRFinalDraftFile *file, const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return file->load(&buffer);
}

/*! The file as a document has it; null when it cannot be written. */
inline QByteArray writtenFdx(MVRFinalDraftFile *file, const QTextDocument &document)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    return file->write(&buffer, &document) ? bytes : QByteArray();
}
