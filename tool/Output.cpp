// SPDX-License-Identifier: MIT
#include <tool/Output.h>

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

#include <sys/stat.h>

namespace {

constexpr int pieceSize = 1 << 20;
constexpr int maxInputSize = 1 << 30; // a QByteArray ends at twice that

bool isStream(const QString &path)
{
    return path == QLatin1String("-");
}

bool writeAll(QFileDevice &file, const QByteArray &data, QString *error)
{
    if (file.write(data) == data.size() && file.flush())
        return true;
    *error = file.errorString();
    return false;
}

// Pipes and devices cannot be replaced by a finished file; they take the text as it comes.
bool writeInPlace(const QString &path, const QByteArray &data, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = file.errorString();
        return false;
    }
    return writeAll(file, data, error);
}

}

bool isSameFile(const QString &one, const QString &other)
{
    struct stat first = {};
    struct stat second = {};
    return stat(QFile::encodeName(one).constData(), &first) == 0
        && stat(QFile::encodeName(other).constData(), &second) == 0 && first.st_dev == second.st_dev
        && first.st_ino == second.st_ino;
}

bool readInput(const QString &path, QByteArray *data, QString *error)
{
    QFile file(path);
    const bool isOpen
        = isStream(path) ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!isOpen) {
        *error = file.errorString();
        return false;
    }
    data->clear();
    // In pieces: a device such as /dev/zero never ends.
    for (QByteArray piece = file.read(pieceSize); !piece.isEmpty(); piece = file.read(pieceSize)) {
        *data += piece;
        if (data->size() > maxInputSize) {
            *error = QStringLiteral("is larger than 1 GiB");
            return false;
        }
    }
    if (file.error() == QFileDevice::NoError)
        return true;
    *error = file.errorString();
    return false;
}

bool writeOutput(const QString &path, const QByteArray &data, QString *error)
{
    if (isStream(path)) {
        QFile file;
        if (file.open(stdout, QIODevice::WriteOnly))
            return writeAll(file, data, error);
        *error = file.errorString();
        return false;
    }
    const QFileInfo info(path);
    if (info.exists() && !info.isFile() && !info.isDir())
        return writeInPlace(path, data, error);

    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && writeAll(file, data, error) && file.commit())
        return true;
    *error = file.errorString();
    return false;
}
