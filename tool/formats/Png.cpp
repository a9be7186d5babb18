// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/PageSetups.h>
#include <tool/formats/ScreenplayPages.h>
#include <tool/pages/Pages.h>

#include <pages/MVRPagePainter.h>

#include <QBuffer>
#include <QImage>
#include <QPainter>

#include <functional>

namespace {

constexpr double metersPerInch = 0.0254;

/*! What a picture is made of: the size of the paper in points and what is drawn on it. */
struct Sheet
{
    QSizeF size;
    std::function<void(QPainter &)> draw; // in points
};

QString noPage(int count, int page)
{
    return Tool::tr("has %1, no page %2")
        .arg(counted(count, QT_TRANSLATE_NOOP("Tool", "page"), QT_TRANSLATE_NOOP("Tool", "pages")))
        .arg(page);
}

bool draw(const Sheet &sheet, int dpi, QByteArray *bytes, QString *error)
{
    const double scale = dpi / 72.0;
    QImage image((sheet.size * scale).toSize(), QImage::Format_RGB32);
    if (image.isNull()) {
        *error = Tool::tr("the picture is too large");
        return false;
    }
    image.setDotsPerMeterX(qRound(dpi / metersPerInch));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing
                           | QPainter::SmoothPixmapTransform);
    painter.scale(scale, scale);
    sheet.draw(painter);
    painter.end();
    if (image.allGray())
        image = image.convertToFormat(QImage::Format_Grayscale8);
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    return image.save(&buffer, "PNG");
}

bool writeScreenplay(const Document &document, const WriteOptions &options, QByteArray *bytes,
                     QString *error)
{
    const std::optional<MVRScreenplayPages> pages = screenplayPages(document, options, error);
    if (!pages)
        return false;
    const QVector<MVRScreenplayPage> all = pages->pages();
    if (options.page > all.size()) {
        *error = noPage(all.size(), options.page);
        return false;
    }
    const auto drawPage = [&](QPainter &painter) {
        MVRPagePainter::paint(painter, all[options.page - 1], pages->pageSize(), options.watermark);
    };
    return draw({pages->pageSize(), drawPage}, options.dpi, bytes, error);
}

bool writePng(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    if (document.isScreenplay)
        return writeScreenplay(document, options, bytes, error);
    // A picture has no annotations.
    PageSetup setup = pageSetupFor(document, options);
    setup.hasCommentsInMargin = true;
    const Pages pages(document, setup);
    if (pages.count() == 0) {
        *error = Tool::tr("is too long for pages");
        return false;
    }
    if (options.page > pages.count()) {
        *error = noPage(pages.count(), options.page);
        return false;
    }
    const auto drawPage = [&](QPainter &painter) {
        MVRPagePainter::paintWatermark(painter, setup.paper, setup.watermark);
        painter.scale(72.0 / Pages::resolution, 72.0 / Pages::resolution);
        pages.paint(painter, options.page - 1);
    };
    return draw({setup.paper, drawPage}, options.dpi, bytes, error);
}

}

const Format pngFormat
    = {"png", "PNG", "", nullptr, writePng, NoteSupport::OnPages, PictureSupport::Held, false};
