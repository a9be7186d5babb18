// SPDX-License-Identifier: MIT
#include <core/MVRGuiUtil.h>

#include <QCryptographicHash>
#include <QImage>

QString MVRGuiUtil::resourceId(const QImage &image)
{
    if (image.isNull())
        return QString();
    QCryptographicHash hash(QCryptographicHash::Sha1);
    // In one format, which pads no lines: what pads them, and the unused byte of a format without
    // transparency, may differ between equal images. A copy of the whole could be too large.
    constexpr int pixelsAtOnce = 1 << 16;
    const int lines = qMax(1, pixelsAtOnce / image.width());
    for (int y = 0; y < image.height(); y += lines) {
        const QImage strip = image.copy(0, y, image.width(), qMin(lines, image.height() - y))
                                 .convertToFormat(QImage::Format_ARGB32);
        hash.addData(QByteArray::fromRawData(reinterpret_cast<const char *>(strip.constBits()),
                                             int(strip.sizeInBytes())));
    }
    return QStringLiteral("image:%1x%2-%3")
        .arg(image.width())
        .arg(image.height())
        .arg(QString::fromLatin1(hash.result().toHex()));
}
