#pragma once

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
