// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Messages.h>
#include <tool/pages/Pages.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>

namespace {

constexpr double metersPerInch = 0.0254;

bool writePng(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    const Pages pages(document, options.paper);
    if (options.page > pages.count()) {
        *error = QStringLiteral("has %1, no page %2")
                     .arg(counted(pages.count(), "page", "pages"))
                     .arg(options.page);
        return false;
    }
    QImage image(options.paper.sizePixels(options.dpi), QImage::Format_RGB32);
    if (image.isNull()) {
        *error = QStringLiteral("the picture is too large");
        return false;
    }
    image.setDotsPerMeterX(qRound(options.dpi / metersPerInch));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing
                           | QPainter::SmoothPixmapTransform);
    painter.scale(double(options.dpi) / Pages::resolution, double(options.dpi) / Pages::resolution);
    pages.paint(painter, options.page - 1);
    painter.end();
    if (image.allGray())
        image = image.convertToFormat(QImage::Format_Grayscale8);
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG");
}

}

const Format pngFormat
    = {"png", "PNG", "", nullptr, writePng, NoteSupport::None, PictureSupport::Held, false};
