// SPDX-License-Identifier: MIT
#include <tool/OpenFile.h>

#include <algorithm>
#include <cerrno>

#include <poll.h>
#include <sys/stat.h>

namespace {

constexpr int pieceSize = 1 << 20;

/*! Whether a call is to be made again, having waited where the other end of a pipe that somebody
    made non-blocking is not ready. */
bool isToBeRepeated(int descriptor, short event)
{
    if (errno != EAGAIN)
        return errno == EINTR;
    pollfd wanted = {descriptor, event, 0};
    return poll(&wanted, 1, -1) >= 0 || errno == EINTR;
}

}

int OpenFile::write(const QByteArray &data) const
{
    for (qint64 written = 0; written < data.size();) {
        const ssize_t count
            = ::write(m_descriptor, data.constData() + written, size_t(data.size() - written));
        if (count < 0 && !isToBeRepeated(m_descriptor, POLLOUT))
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
        if (count < 0 && !isToBeRepeated(m_descriptor, POLLIN))
            return errno;
        if (count == 0)
            return 0;
        data->append(piece.constData(), int(std::max<ssize_t>(count, 0)));
    }
    return EFBIG;
}
