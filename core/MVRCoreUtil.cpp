#include <core/MVRCoreUtil.h>

#include <QFile>
#include <QUuid>

QString MVRCoreUtil::CreateUUID()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

QByteArray MVRCoreUtil::ReadBinaryFile(const QString &path, QString *error)
{
    QFile file(path);
    QByteArray content;
    if (file.open(QIODevice::ReadOnly))
        content = file.readAll();
    const bool failed = file.error() != QFileDevice::NoError;
    if (error)
        *error = failed ? file.errorString() : QString();
    if (failed)
        return QByteArray();
    // An empty file is not an unreadable one.
    return content.isNull() ? QByteArray("") : content;
}
