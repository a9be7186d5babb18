// SPDX-License-Identifier: MIT
#include <tool/formats/PageSetups.h>

#include <tool/Document.h>

#include <core/MVRTextRtf.h>

PageSetup pageSetupFor(const Document &document, const WriteOptions &options)
{
    PageSetup setup;
    const QVariantMap page = document.text.property(MVRTextRtf::pageProperty).toMap();
    const auto length = [&](const char *name, double fallback) {
        return page.value(QLatin1String(name), fallback).toDouble();
    };
    const QSizeF letter = QPageSize(QPageSize::Letter).size(QPageSize::Point);
    setup.paper = options.paper
        ? options.paper->size(QPageSize::Point)
        : QSizeF(length("width", letter.width()), length("height", letter.height()));
    const QMarginsF margins(
        length("left", setup.margins.left()), length("top", setup.margins.top()),
        length("right", setup.margins.right()), length("bottom", setup.margins.bottom()));
    // Margins of another paper may leave nothing of this one, nor those of an inch of a small one.
    const double mostBeside = setup.paper.width() / 3.0;
    const double mostAbove = setup.paper.height() / 3.0;
    if (margins.left() + margins.right() <= 2.0 * mostBeside
        && margins.top() + margins.bottom() <= 2.0 * mostAbove)
        setup.margins = margins;
    else
        setup.margins = QMarginsF(
            qMin(setup.margins.left(), mostBeside), qMin(setup.margins.top(), mostAbove),
            qMin(setup.margins.right(), mostBeside), qMin(setup.margins.bottom(), mostAbove));
    setup.hasNumbers = options.hasPageNumbers;
    setup.hasCommentsInMargin = options.hasCommentsInMargin;
    setup.watermark = options.watermark;
    setup.listener = options.listener;
    return setup;
}
