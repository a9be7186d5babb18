// SPDX-License-Identifier: MIT
#pragma once

#include <QFileDevice>

/*! Whether what was written to \a device has reached the system: a file keeps the last of it back,
    and the disk may be full. */
inline bool isFlushed(QIODevice &device)
{
    auto *file = qobject_cast<QFileDevice *>(&device);
    return !file || file->flush();
}
