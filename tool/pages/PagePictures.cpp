// SPDX-License-Identifier: MIT
#include <tool/pages/PagePictures.h>

#include <core/document/OfflineDocument_p.h>
#include <core/document/Pictures_p.h>

#include <QAbstractTextDocumentLayout>

PagePictures::PagePictures(OfflineDocument &text)
    : m_text(text)
    , m_toolkits(text.documentLayout()->handlerForObject(QTextFormat::ImageObject))
{
    text.documentLayout()->registerHandler(QTextFormat::ImageObject, this);
}

QSizeF PagePictures::intrinsicSize(QTextDocument *text, int position, const QTextFormat &format)
{
    return m_toolkits->intrinsicSize(text, position, format);
}

void PagePictures::drawObject(QPainter *painter, const QRectF &rect, QTextDocument *text,
                              int position, const QTextFormat &format)
{
    const QString name = format.stringProperty(QTextFormat::ImageName);
    if (rect.intersects(m_part) && m_text.holdsPicture(pictureUrl(m_text, name)))
        m_toolkits->drawObject(painter, rect, text, position, format);
}
