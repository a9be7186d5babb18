// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/*! Takes an input apart from its front; behind the end everything is 0 or empty. */
class Bytes
{
public:
    explicit Bytes(const QByteArray &input)
        : m_input(input)
    {
    }

    bool isAtEnd() const { return m_position >= m_input.size(); }
    int byte() { return isAtEnd() ? 0 : uchar(m_input.at(m_position++)); }
    bool flag() { return byte() % 2 == 1; }
    /*! A number from 0 to \a most; takes two bytes. */
    int upTo(int most)
    {
        const int number = byte() << 8;
        return (number | byte()) % (most + 1);
    }
    /*! Bytes up to a null byte, at most \a most of them. */
    QByteArray line(int most = 200)
    {
        const int end = m_input.indexOf('\0', m_position);
        const int size = qMin(most, (end < 0 ? m_input.size() : end) - m_position);
        const QByteArray taken = m_input.mid(m_position, size);
        m_position += size + (m_position + size == end ? 1 : 0);
        return taken;
    }
    QString text(int most = 200) { return QString::fromUtf8(line(most)); }
    QByteArray rest() { return m_input.mid(m_position); }

private:
    const QByteArray m_input;
    int m_position = 0;
};
