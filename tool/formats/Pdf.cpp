// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Progress.h>
#include <tool/formats/PageSetups.h>
#include <tool/formats/ScreenplayPages.h>
#include <tool/pages/Pages.h>
#include <tool/pages/SceneOutline.h>

#include <core/MVRTextRtf.h>
#include <pages/MVRPagePainter.h>

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

namespace {

/*! Tells a listener, if there is one, how many pages are drawn. */
class PageCounter
{
public:
    PageCounter(Listener *listener, int total)
        : m_listener(listener)
        , m_total(total)
    {
        if (m_listener)
            m_listener->setStep(Tool::tr("Drawing pages"));
    }

    void operator()(int drawn) const
    {
        if (m_listener)
            m_listener->setShare(drawn, m_total);
    }

private:
    Listener *m_listener;
    int m_total;
};

PdfExtras extrasOf(const Document &document, const MVRScreenplayPages &pages)
{
    PdfExtras extras;
    extras.title = document.title;
    extras.author = document.text.property(MVRTextRtf::authorProperty).toString();
    extras.outline = sceneOutline(pages);
    return extras;
}

bool writeScreenplay(const Document &document, const WriteOptions &options, QByteArray *bytes,
                     QString *error)
{
    const std::optional<MVRScreenplayPages> pages = screenplayPages(document, options, error);
    if (!pages)
        return false;
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    const bool isWritten
        = MVRPagePainter::writePdf(&buffer, *pages, document.title, options.watermark,
                                   PageCounter(options.listener, pages->pages().size()));
    buffer.close();
    if (isWritten && completePdf(bytes, extrasOf(document, *pages)))
        return true;
    *error = Tool::tr("cannot be written as PDF");
    return false;
}

// Where only some pages are written, those before them do not count.
void moveAreas(PdfExtras &extras, int pages)
{
    for (PdfLink &link : extras.links) {
        link.area.page -= pages;
        link.target.page -= pages;
    }
    for (PdfComment &comment : extras.comments) {
        for (PdfArea &area : comment.areas)
            area.page -= pages;
    }
    for (PdfHeading &heading : extras.outline)
        heading.area.page -= pages;
}

bool drawPages(const Pages &pages, const PageSetup &setup, int first, int last, QByteArray *bytes)
{
    QBuffer buffer(bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setResolution(Pages::resolution);
    writer.setPageSize(QPageSize(setup.paper, QPageSize::Point));
    writer.setPageMargins(QMarginsF());
    writer.setCreator(QStringLiteral("mvrtext"));
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    const PageCounter drawn(setup.listener, last + 1 - first);
    for (int page = first; page <= last; ++page) {
        if (page > first)
            writer.newPage();
        painter.save();
        painter.scale(Pages::resolution / 72.0, Pages::resolution / 72.0);
        MVRPagePainter::paintWatermark(painter, setup.paper, setup.watermark);
        painter.restore();
        pages.paint(painter, page);
        drawn(page + 1 - first);
    }
    return painter.end();
}

/*! Draws the pages of a document that is no screenplay, and says what they have beside. */
bool drawDocument(Document &document, const WriteOptions &options, QByteArray *bytes,
                  PdfExtras *extras, QString *error)
{
    const PageSetup setup = pageSetupFor(document, options);
    const Pages pages(document, setup);
    if (pages.count() == 0) {
        *error = Tool::tr("is too long for pages");
        return false;
    }
    const int first = qMax(1, options.firstPage) - 1;
    const int last
        = (options.firstPage > 0 ? qMin(options.lastPage, pages.count()) : pages.count()) - 1;
    if (first > last) {
        *error = Tool::tr("has no pages %1-%2").arg(options.firstPage).arg(options.lastPage);
        return false;
    }
    *extras = pages.extras();
    moveAreas(*extras, first);
    if (drawPages(pages, setup, first, last, bytes))
        return true;
    *error = Tool::tr("cannot be written as PDF");
    return false;
}

bool writePdf(Document &document, const WriteOptions &options, QByteArray *bytes, QString *error)
{
    if (document.isScreenplay)
        return writeScreenplay(document, options, bytes, error);
    if (!options.firstScene.isEmpty()) {
        *error = Tool::tr("is no screenplay: it has no scenes");
        return false;
    }
    PdfExtras extras;
    if (!drawDocument(document, options, bytes, &extras, error))
        return false;
    document.text.clear(); // thousands of links and comments take as much as the text
    if (completePdf(bytes, extras))
        return true;
    *error = Tool::tr("cannot be written as PDF");
    return false;
}

}

const Format pdfFormat
    = {"pdf", "PDF", "", nullptr, writePdf, NoteSupport::OnPages, PictureSupport::Held, false};
