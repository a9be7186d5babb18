// SPDX-License-Identifier: MIT
#include <core/MVRGuiUtil.h>

#include <QCryptographicHash>
#include <QImage>

QString MVRGuiUtil::resourceId(const QImage &image)
{
    if (image.isNull())
        return QString();
    QCryptographicHash hash(QCryptographicHash::Sha1);
    // Line by line in one format: what pads the lines, and the unused byte of a format without
    // transparency, may differ between equal images. A copy of the whole could be too large.
    for (int y = 0; y < image.height(); ++y) {
        const QImage line
            = image.copy(0, y, image.width(), 1).convertToFormat(QImage::Format_ARGB32);
        hash.addData(QByteArray::fromRawData(reinterpret_cast<const char *>(line.constScanLine(0)),
                                             line.bytesPerLine()));
    }
    return QStringLiteral("image:%1x%2-%3")
        .arg(image.width())
        .arg(image.height())
        .arg(QString::fromLatin1(hash.result().toHex()));
}
