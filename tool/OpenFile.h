// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <unistd.h>

/*! A file of the system, closed at the end unless it is one of the standard streams. */
class OpenFile
{
public:
    explicit OpenFile(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~OpenFile()
    {
        if (m_descriptor > STDERR_FILENO)
            ::close(m_descriptor);
    }
    Q_DISABLE_COPY_MOVE(OpenFile)

    bool isOpen() const { return m_descriptor >= 0; }
    int descriptor() const { return m_descriptor; }
    /*! Gives the code of what went wrong, or 0. */
    int write(const QByteArray &data) const;
    int read(qint64 maxSize, QByteArray *data) const;

private:
    const int m_descriptor;
};
