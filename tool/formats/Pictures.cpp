// SPDX-License-Identifier: MIT
#include <tool/formats/Pictures.h>

#include <core/document/FormatEdits_p.h>
#include <core/document/Pictures_p.h>

#include <QBuffer>
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
