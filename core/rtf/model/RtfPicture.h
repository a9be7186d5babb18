// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QTextImageFormat>

#include <string_view>

class QTextDocument;

/*!
    A picture while it is read (RTF 1.9.1, "Pictures"): what its words say and its bytes.

    PNG and JPEG keep their bytes, device-independent bitmaps become PNG. What Qt
    cannot show (metafiles), or could only show by filling the memory, gets a placeholder of the
    same size.
*/
class RtfPicture
{
public:
    enum Kind { Unknown, Png, Jpeg, Dib };

    Kind kind = Unknown;
    int width = 0; /*!< \picw: pixels of a bitmap */
    int height = 0;
    int goalWidth = 0; /*!< \picwgoal: twips */
    int goalHeight = 0;
    int scaleX = 100; /*!< per cent */
    int scaleY = 100;

    void addHex(std::string_view digits);
    void addBytes(std::string_view bytes);
    bool isEmpty() const { return m_bytes.isEmpty(); }
    /*! The size in twips, whatever the words say; nothing happens when it is empty. */
    void setShownSize(const QSize &twips);

    /*!
        Stores the picture with \a document.
        \param format  of the text around; where it names the picture and its size, as our own
                       files do, the picture keeps them
        \return the format that shows the picture
    */
    QTextImageFormat store(QTextDocument *document, const QTextCharFormat &format) const;

    /*! The group that holds \a image: bytes as they are in PNG and JPEG, others as PNG. */
    static QByteArray toRtf(const QVariant &image, const QTextImageFormat &format);

private:
    QByteArray file() const;
    QSizeF size() const;

    QByteArray m_bytes;
    int m_half = -1; // the first digit of a byte that is not complete
};
