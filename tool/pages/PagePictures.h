// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QRectF>
#include <QTextObjectInterface>

class OfflineDocument;

/*!
    Draws the pictures of a text that is drawn in parts: those that the part shows and the document
    has. The toolkit draws pictures beside paragraphs wherever they stand.
*/
class PagePictures : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public:
    /*! Draws for the layout of \a text, which must live as long. */
    explicit PagePictures(OfflineDocument &text);

    /*! What is drawn next, in units of the layout. */
    void setPart(const QRectF &part) { m_part = part; }

    QSizeF intrinsicSize(QTextDocument *text, int position, const QTextFormat &format) override;
    void drawObject(QPainter *painter, const QRectF &rect, QTextDocument *text, int position,
                    const QTextFormat &format) override;

private:
    OfflineDocument &m_text;
    QTextObjectInterface *m_toolkits;
    QRectF m_part;
};
