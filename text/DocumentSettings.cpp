// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRTextFormat.h>
#include <core/MVRToolkit.h>
#include <core/document/FormatEdits_p.h>

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPen>
#include <QSizeF>
#include <QTextDocument>

QTextCharFormat MVRTextDoc::defaultCharFormat(const QTextDocument &document)
{
    return MVRTextFormat::defaultCharFormat(document);
}

void MVRTextDoc::setDefaultCharFormat(QTextDocument &document, const QTextCharFormat &format)
{
    MVRTextFormat::setDefaultCharFormat(document, format);
}

void MVRTextDoc::setDefaultCharFormatColors(QTextDocument *document, const QColor &foreground,
                                            const QColor &background)
{
    if (!document)
        return;
    QTextCharFormat format = MVRTextFormat::defaultCharFormat(*document);
    if (foreground.isValid())
        format.setForeground(foreground);
    else
        format.clearForeground();
    if (background.isValid())
        format.setBackground(background);
    else
        format.clearBackground();
    MVRTextFormat::setDefaultCharFormat(*document, format);
}

void MVRTextDoc::setFont(QTextDocument *document, const QFont &font)
{
    if (!document)
        return;
    QTextCharFormat onlyFont;
    onlyFont.setFont(font);
    const auto takeFont = [&onlyFont](QTextCharFormat &format) {
        // A font has one of the units, and what stays of another one would win over it.
        for (const int size : {QTextFormat::FontPointSize, QTextFormat::FontPixelSize,
                               QTextFormat::FontSizeAdjustment}) {
            if (format.hasProperty(size) && !onlyFont.hasProperty(size))
                format.clearProperty(size);
        }
        format.merge(onlyFont);
    };
    QTextCharFormat defaultFormat = MVRTextFormat::defaultCharFormat(*document);
    takeFont(defaultFormat);
    MVRTextFormat::setDefaultCharFormat(*document, defaultFormat);
    changeAllFormats(document, takeFont);
}

QPen MVRTextDoc::typographyPen(const QTextDocument &document)
{
    return MVRToolkit::typographyPen(document);
}

void MVRTextDoc::setTypographyPen(QTextDocument *document, const QPen &pen)
{
    if (document && MVRToolkit::typographyPen(*document) != pen)
        MVRToolkit::setTypographyPen(*document, pen);
}

void MVRTextDoc::setAutoCorrection(QTextDocument &document, bool on)
{
    MVRToolkit::setAutoCorrected(document, on);
}

QSizeF mvrPageSize(const QAbstractTextDocumentLayout &layout)
{
    return MVRToolkit::pageSize(layout);
}

void mvrSetPageSize(QAbstractTextDocumentLayout &layout, const QSizeF &size)
{
    MVRToolkit::setPageSize(layout, size);
}
