// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRPicturePolicy.h>

#include <QHash>
#include <QImage>
#include <QPair>
#include <QSize>
#include <QString>

class QTextDocument;

/*!
    The pictures that the text of one document names by their files, as resources of the document.

    The text may come from anybody: no path that it names and no size that it claims makes this
    wait, or take more than a bounded amount of memory.
*/
class LinkedPictures
{
public:
    /*! A file that the text names. */
    struct File
    {
        QString path; /*!< as it is used: without a leading slash where that finds a file */
        bool exists = false;
    };

    LinkedPictures(QTextDocument *document, const MVRPicturePolicy &policy)
        : m_document(document)
        , m_policy(policy)
    {
    }

    /*! The file, which does not exist for one that may not open it. */
    File find(const QString &path);

    /*!
        Makes the picture in \a file a resource of the document, or a placeholder when the file is
        missing or no picture.

        \param shown  the size at which it is shown, both sides 1 or more; the placeholder's
        \return the name of the resource
    */
    QString add(const File &file, const QSize &shown);

    /*! The size that the head of a bitmap tells; invalid for what is none, or is not there. */
    static QSize sizeOf(const File &file);

    /*! Whether a resource that add() has made stands for a file that was not opened, or is no
        picture. */
    static bool isPlaceholder(const QImage &image);

private:
    bool exists(const QString &path) const;
    QImage load(const QString &path, const QSize &shown);
    QString addFile(const QString &path, const QSize &shown);
    QString addPlaceholder(const QSize &shown);
    QString addPlaceholder(QImage image);
    QString addResource(const QImage &image);

    QTextDocument *m_document;
    MVRPicturePolicy m_policy;
    qint64 m_pixelsLeft = qint64(256) << 20; // for the pictures of files together, 1 GiB
    static constexpr qint64 maxPlaceholderPixels = 64000000; // 256 MB
    qint64 m_placeholderPixelsLeft = maxPlaceholderPixels; // for all of them together
    QHash<QString, File> m_files; // by the path in the text
    QHash<QString, QString> m_pictures; // names of resources by canonical path; empty: no picture
    QHash<QPair<int, int>, QString> m_placeholders; // names of resources by size
    QString m_alertIcon; // name of the resource
    bool m_triedAlertIcon = false;
};
