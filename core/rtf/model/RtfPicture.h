// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QImage>
#include <QSet>
#include <QString>
#include <QTextImageFormat>

#include <string_view>

class QTextDocument;

/*!
    A picture while it is read (RTF 1.9.1, "Pictures"): what its words say and its bytes.

    PNG and JPEG keep their bytes, device-independent bitmaps and pictures that are cropped become
    PNG. What Qt cannot show, or could only show by filling the memory, gets a placeholder of the
    same size; that of a metafile holds its bytes, with which it is written again.
*/
class RtfPicture
{
public:
    enum Kind { Unknown, Png, Jpeg, Dib, Wmf, Emf };

    Kind kind = Unknown;
    int mapMode = 8; /*!< of a WMF, see \wmetafile */
    int width = 0; /*!< \picw: pixels of a bitmap, hundredths of a millimetre of a metafile */
    int height = 0;
    int goalWidth = 0; /*!< \picwgoal: twips */
    int goalHeight = 0;
    int scaleX = 100; /*!< per cent */
    int scaleY = 100;
    int cropLeft = 0; /*!< \piccropl and its kin: twips of the picture before it is scaled */
    int cropTop = 0;
    int cropRight = 0;
    int cropBottom = 0;

    void addHex(std::string_view digits);
    void addBytes(std::string_view bytes);
    bool isEmpty() const { return m_bytes.isEmpty(); }
    /*! The size in twips, whatever the words say; nothing happens when it is empty. */
    void setShownSize(const QSize &twips) { m_shownSize = twips; }

    /*!
        Stores the picture with \a document.
        \param format  of the text around; where it names the picture and its size, as our own
                       files do, the picture keeps them
        \param isLost  receives whether the placeholder is all that is left of the picture
        \param stored  the names of those before it; a picture of the same name is theirs, as where
                       it stands again it may be reduced
        \return the format that shows the picture
    */
    QTextImageFormat store(QTextDocument *document, const QTextCharFormat &format, bool *isLost,
                           QSet<QString> *stored) const;

    /*! The bytes of \a image as it is written: as they are in PNG and JPEG, else those of a PNG. */
    static QByteArray toFile(const QVariant &image);
    /*!
        The group that holds a picture.
        \param image  that is written in \a file, see toFile()
    */
    static QByteArray toRtf(const QVariant &image, const QByteArray &file,
                            const QTextImageFormat &format);
    static QSize pixelSize(const QByteArray &file);
    /*! A picture of a few pixels in place of the one in \a file. */
    static QByteArray reduced(const QByteArray &file);

private:
    QByteArray file() const;
    QByteArray cropped(QByteArray file) const;
    QSizeF naturalTwips() const;
    QSizeF size(bool isCropped) const;
    bool isMetafile() const { return kind == Wmf || kind == Emf; }
    QImage placeholder() const;

    QByteArray m_bytes;
    QSize m_shownSize; // in twips
    int m_half = -1; // the first digit of a byte that is not complete
};
