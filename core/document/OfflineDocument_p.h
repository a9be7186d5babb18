// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QTextDocument>

/*!
    A document that opens nothing: no picture or style sheet that its text names is fetched, from
    this machine or another one. Pictures that it was given are shown, others stay blank.
*/
class OfflineDocument : public QTextDocument
{
public:
    using QTextDocument::QTextDocument;

    /*! Whether the document was given the picture at \a name. */
    bool holdsPicture(const QUrl &name)
    {
        m_wasAsked = false;
        return resource(ImageResource, name).isValid() && !m_wasAsked;
    }

protected:
    QVariant loadResource(int type, const QUrl &name) override
    {
        Q_UNUSED(name)
        m_wasAsked = true;
        if (type != ImageResource)
            return QByteArray();
        // Without an answer Qt goes on to open the name as a file.
        QImage blank(1, 1, QImage::Format_ARGB32_Premultiplied);
        blank.fill(Qt::transparent);
        return blank;
    }

private:
    bool m_wasAsked = false;
};
