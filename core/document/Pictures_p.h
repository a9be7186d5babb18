// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextFormat.h>

#include <QSet>
#include <QTextDocument>
#include <QTextImageFormat>
#include <QUrl>
#include <QVector>

/*! The names of the pictures that a document's formats know. */
inline QSet<QString> pictureNames(const QTextDocument &document)
{
    QSet<QString> names;
    const QVector<QTextFormat> formats = document.allFormats();
    for (const QTextFormat &format : formats) {
        if (format.isImageFormat())
            names.insert(format.toImageFormat().name());
    }
    names.remove(QString());
    return names;
}

/*! Where a document keeps the picture called \a name. */
inline QUrl pictureUrl(const QTextDocument &document, const QString &name)
{
    const bool isCompiledIn = name.startsWith(QLatin1String(":/")); // Qt's own spelling of "qrc:/"
    return document.baseUrl().resolved(QUrl(isCompiledIn ? QLatin1String("qrc") + name : name));
}

/*! The picture that a document shows under \a name, loaded by its own rules; may be invalid. */
inline QVariant picture(const QTextDocument &document, const QString &name)
{
    return document.resource(QTextDocument::ImageResource, pictureUrl(document, name));
}

inline void addPicture(QTextDocument *document, const QString &name, const QVariant &picture)
{
    document->addResource(QTextDocument::ImageResource, pictureUrl(*document, name), picture);
}

/*! Makes \a format one for text, where it is that of a picture. */
inline void clearPicture(QTextCharFormat &format)
{
    if (format.objectType() == QTextFormat::NoObject)
        return;
    // A picture that is linked to a file says so in its tool tip.
    if (format.hasProperty(MVRTextFormat::ImageLinkProperty))
        format.clearProperty(QTextFormat::TextToolTip);
    for (const int property :
         {int(QTextFormat::ObjectType), int(QTextFormat::ObjectIndex), int(QTextFormat::ImageName),
          int(QTextFormat::ImageTitle), int(QTextFormat::ImageAltText),
          int(QTextFormat::ImageWidth), int(QTextFormat::ImageHeight),
          int(QTextFormat::ImageQuality), int(MVRTextFormat::ImageLinkProperty),
          int(MVRTextFormat::ImageLinkBaseNameProperty)})
        format.clearProperty(property);
}
