// SPDX-License-Identifier: MIT
#include <tool/FileName.h>

#include <algorithm>

namespace {

constexpr ushort firstByteOfNoCharacter = 0xdc80;
constexpr ushort lastByteOfNoCharacter = 0xdcff;

bool isUtf8(const QByteArray &bytes)
{
    return QString::fromUtf8(bytes).toUtf8() == bytes;
}

bool isByteOfNoCharacter(QChar character)
{
    return character.unicode() >= firstByteOfNoCharacter
        && character.unicode() <= lastByteOfNoCharacter;
}

/*! How many bytes from \a position on are one character; 0 for none. */
int characterLength(const QByteArray &bytes, int position)
{
    constexpr int longest = 4;
    for (int length = 1; length <= longest && position + length <= bytes.size(); ++length) {
        if (isUtf8(bytes.mid(position, length)))
            return length;
    }
    return 0;
}

/*! Whether the character at \a position is a byte; the second half of a pair looks the same. */
bool isByteAt(const QString &text, int position)
{
    return isByteOfNoCharacter(text.at(position))
        && (position == 0 || !text.at(position - 1).isHighSurrogate());
}

}

QString fileNameFromBytes(const QByteArray &bytes)
{
    if (isUtf8(bytes))
        return QString::fromUtf8(bytes);
    QString name;
    for (int position = 0; position < bytes.size();) {
        const int length = characterLength(bytes, position);
        if (length > 0)
            name += QString::fromUtf8(bytes.mid(position, length));
        else
            name += QChar(ushort(0xdc00 + uchar(bytes.at(position))));
        position += qMax(1, length);
    }
    return name;
}

QByteArray fileNameToBytes(const QString &name)
{
    QByteArray bytes;
    int start = 0;
    for (int position = 0; position < name.size(); ++position) {
        if (!isByteAt(name, position))
            continue;
        bytes += name.mid(start, position - start).toUtf8();
        bytes += char(name.at(position).unicode() - 0xdc00);
        start = position + 1;
    }
    return bytes + name.mid(start).toUtf8();
}

QString shownOnTerminal(const QString &text)
{
    QString shown;
    for (int position = 0; position < text.size(); ++position) {
        const QChar character = text.at(position);
        const bool isByte = isByteAt(text, position);
        if (isByte || character.category() == QChar::Other_Control)
            shown
                += QStringLiteral("\\x%1").arg(character.unicode() & 0xff, 2, 16, QLatin1Char('0'));
        else
            shown += character;
    }
    return shown;
}
