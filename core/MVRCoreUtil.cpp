// SPDX-License-Identifier: MIT
#include <core/MVRCoreUtil.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QUuid>

namespace {

constexpr int maxFileSize = 1 << 30;

// In pieces: files of the system itself do not say how long they are.
QByteArray readAtMost(QFile &file, int length)
{
    QByteArray content;
    content.reserve(int(qMin<qint64>(file.size(), length)));
    while (content.size() < length) {
        const QByteArray piece = file.read(qMin(1 << 16, length - content.size()));
        if (piece.isEmpty())
            break;
        content += piece;
    }
    return content;
}

}

QString MVRCoreUtil::CreateUUID()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QByteArray MVRCoreUtil::ReadBinaryFile(const QString &path, QString *error)
{
    QFile file(path);
    QString fault;
    QByteArray content;
    // Opening a pipe waits for its other end, and a device need not have one.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        fault = QCoreApplication::translate("QObject", "Not a file");
    } else {
        if (file.open(QIODevice::ReadOnly))
            content = readAtMost(file, maxFileSize + 1);
        if (file.error() != QFileDevice::NoError)
            fault = file.errorString();
        else if (content.size() > maxFileSize)
            fault = QCoreApplication::translate("QObject", "The file is too large");
    }
    if (error)
        *error = fault;
    if (!fault.isEmpty())
        return QByteArray();
    // An empty file is not an unreadable one.
    return content.isNull() ? QByteArray("") : content;
}
