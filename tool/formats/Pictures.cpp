// SPDX-License-Identifier: MIT
#include <tool/formats/Pictures.h>

#include <core/document/FormatEdits_p.h>
#include <core/document/Pictures_p.h>

#include <QBuffer>
#include <QCryptographicHash>
#include <QImageReader>
#include <QPixmap>
#include <QSizeF>

namespace {

constexpr double maxLength = 1.0e6; // beyond any paper; infinite sizes have no proportion

QSizeF pixelSize(const QTextDocument &text, const QString &name)
{
    const QVariant shown = picture(text, name);
    if (shown.userType() == QMetaType::QByteArray) {
        QByteArray bytes = shown.toByteArray();
        QBuffer buffer(&bytes);
        return QImageReader(&buffer).size();
    }
    if (shown.userType() == QMetaType::QPixmap)
        return shown.value<QPixmap>().size();
    return shown.value<QImage>().size();
}

QSizeF shownSize(const QTextDocument &text, const QTextImageFormat &format, double unitsPerPixel)
{
    const bool hasWidth = format.width() > 0.0;
    const bool hasHeight = format.height() > 0.0;
    const QSizeF said(qMin(format.width(), maxLength), qMin(format.height(), maxLength));
    if (hasWidth && hasHeight)
        return said;
    const QSizeF pixels = pixelSize(text, format.name());
    if (pixels.isEmpty())
        return QSizeF();
    if (hasWidth)
        return {said.width(), pixels.height() * said.width() / pixels.width()};
    if (hasHeight)
        return {pixels.width() * said.height() / pixels.height(), said.height()};
    return pixels * unitsPerPixel;
}

// What the name of a picture holds of it; empty for none that can be shown.
QByteArray embeddedFile(const QString &name)
{
    constexpr qint64 maxPixels = 50000000;
    const int comma = name.indexOf(QLatin1Char(','));
    const QString head = name.left(comma);
    if (comma < 0 || !head.startsWith(QLatin1String("data:image/"), Qt::CaseInsensitive)
        || !head.endsWith(QLatin1String(";base64"), Qt::CaseInsensitive))
        return QByteArray();
    QByteArray bytes = QByteArray::fromBase64(name.mid(comma + 1).toLatin1());
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    const QSize size = reader.format().startsWith("svg") ? QSize() : reader.size();
    return size.isEmpty() || qint64(size.width()) * size.height() > maxPixels ? QByteArray()
                                                                              : bytes;
}

}

void fitPictures(QTextDocument &text, const QSizeF &maxSize, double unitsPerPixel)
{
    changeAllFormats(&text, [&](QTextCharFormat &format) {
        if (!format.isImageFormat())
            return;
        QTextImageFormat image = format.toImageFormat();
        QSizeF size = shownSize(text, image, unitsPerPixel);
        if (size.isEmpty())
            return;
        if (size.width() > maxSize.width() || size.height() > maxSize.height())
            size = size.scaled(maxSize, Qt::KeepAspectRatio).expandedTo(QSizeF(1.0, 1.0));
        image.setWidth(size.width());
        image.setHeight(size.height());
        format = image;
    });
}

void renamePictures(QTextDocument &text, const QHash<QString, QString> &names)
{
    changeAllFormats(&text, [&names](QTextCharFormat &format) {
        if (!format.isImageFormat())
            return;
        const auto name = names.constFind(format.toImageFormat().name());
        if (name != names.constEnd())
            format.setProperty(QTextFormat::ImageName, *name);
    });
}

void takeEmbeddedPictures(QTextDocument &text)
{
    QHash<QString, QString> names;
    const QSet<QString> all = pictureNames(text);
    for (const QString &name : all) {
        const QByteArray file = embeddedFile(name);
        if (file.isEmpty())
            continue;
        const QByteArray sum = QCryptographicHash::hash(file, QCryptographicHash::Sha1).toHex();
        names.insert(name, QLatin1String("embedded-") + QLatin1String(sum));
        addPicture(&text, names.value(name), file);
    }
    renamePictures(text, names);
}
