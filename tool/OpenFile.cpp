// SPDX-License-Identifier: MIT
#include <tool/OpenFile.h>

#include <algorithm>
#include <cerrno>

#include <sys/stat.h>

namespace {

constexpr int pieceSize = 1 << 20;

}

int OpenFile::write(const QByteArray &data) const
{
    for (qint64 written = 0; written < data.size();) {
        const ssize_t count
            = ::write(m_descriptor, data.constData() + written, size_t(data.size() - written));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count == 0) // no system does that for a size above 0
            return EIO;
        written += std::max<ssize_t>(count, 0);
    }
    return 0;
}

// In pieces: a device such as /dev/zero never ends.
int OpenFile::read(qint64 maxSize, QByteArray *data) const
{
    struct stat file = {};
    if (fstat(m_descriptor, &file) == 0 && S_ISREG(file.st_mode) && file.st_size > maxSize)
        return EFBIG;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    data->clear();
    while (data->size() <= maxSize) {
        const ssize_t count = ::read(m_descriptor, piece.data(), size_t(piece.size()));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count == 0)
            return 0;
        data->append(piece.constData(), int(std::max<ssize_t>(count, 0)));
    }
    return EFBIG;
}
