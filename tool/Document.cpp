#include "Document.h"

#include <QImage>

QVariant OfflineDocument::loadResource(int type, const QUrl &name)
{
    Q_UNUSED(name)
    if (type != ImageResource)
        return QByteArray();
    // Without an answer Qt goes on to open the name as a file.
    QImage blank(1, 1, QImage::Format_ARGB32_Premultiplied);
    blank.fill(Qt::transparent);
    return blank;
}
