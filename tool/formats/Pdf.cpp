// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/pages/Pages.h>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

namespace {

bool writePdf(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    const Pages pages(document, options.paper);
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(Pages::resolution);
    writer.setPageSize(options.paper);
    writer.setPageMargins(QMarginsF());
    writer.setTitle(document.title);
    writer.setCreator(QStringLiteral("mvrtext"));
    QPainter painter;
    if (!painter.begin(&writer)) {
        *error = QStringLiteral("cannot be written as PDF");
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
