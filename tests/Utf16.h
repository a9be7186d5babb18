// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/*! A text in UTF-16, behind the mark that tells the order of its bytes. */
inline QByteArray inUtf16(const QByteArray &utf8, bool bigEndian)
{
    const QString text = QChar(QChar::ByteOrderMark) + QString::fromUtf8(utf8);
    QByteArray bytes;
    for (const QChar unit : text) {
        bytes += static_cast<char>(bigEndian ? unit.row() : unit.cell());
        bytes += static_cast<char>(bigEndian ? unit.cell() : unit.row());
    }
    return bytes;
}
