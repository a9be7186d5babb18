// SPDX-License-Identifier: MIT
#pragma once

#include <fuzz/Require.h>
#include <tool/Document.h>
#include <tool/formats/Formats.h>

/*! Reads \a input as the tool would and writes it in \a format, which must then be read. */
inline void checkFormat(const Format &format, const QByteArray &input)
{
    QString error;
    Document document;
    document.text.setUndoRedoEnabled(false);
    if (!format.read(input, ReadOptions(), document, &error)) {
        require(!error.isEmpty(), "a fault has a message");
        return;
    }
    QByteArray written;
    require(format.write(document, WriteOptions(), &written, &error), "what was read is written");
    Document again;
    again.text.setUndoRedoEnabled(false);
    require(format.read(written, ReadOptions(), again, &error), "what was written is read");
}
