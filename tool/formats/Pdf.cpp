// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/formats/ScreenplayPages.h>
#include <tool/pages/Pages.h>

#include <pages/MVRPagePainter.h>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

namespace {

bool writeScreenplay(const Document &document, const WriteOptions &options, QBuffer &buffer,
                     QString *error)
{
    const std::optional<MVRScreenplayPages> pages = screenplayPages(document, options, error);
    if (!pages)
        return false;
    if (MVRPagePainter::writePdf(&buffer, *pages, document.title, options.watermark))
        return true;
    *error = Tool::tr("cannot be written as PDF");
    return false;
}

bool writePdf(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    if (document.isScreenplay)
        return writeScreenplay(document, options, buffer, error);
    const Pages pages(document, options.paperOrLetter());
    QPdfWriter writer(&buffer);
    writer.setResolution(Pages::resolution);
    writer.setPageSize(options.paperOrLetter());
    writer.setPageMargins(QMarginsF());
    writer.setTitle(document.title);
    writer.setCreator(QStringLiteral("mvrtext"));
    QPainter painter;
    if (!painter.begin(&writer)) {
        *error = Tool::tr("cannot be written as PDF");
        return false;
    }
    for (int page = 0; page < pages.count(); ++page) {
        if (page > 0)
            writer.newPage();
        pages.paint(painter, page);
    }
    return painter.end();
}

}

const Format pdfFormat
    = {"pdf", "PDF", "", nullptr, writePdf, NoteSupport::None, PictureSupport::Held, false};
