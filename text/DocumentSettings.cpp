#include <text/MVRTextDoc.h>

#include <core/MVRTextFormat.h>

#include <QBrush>
#include <QColor>
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
