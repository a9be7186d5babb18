// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfPicture.h>

#include <core/rtf/model/RtfProps.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QCryptographicHash>
#include <QImage>
#include <QImageReader>
#include <QPixmap>
#include <QTextDocument>
#include <QUrl>

namespace {

constexpr qint64 maxPixels = 100000000;
constexpr double maxSide = rtfMaxTwips / 20.0;

int digitValue(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    const char lower = static_cast<char>(digit | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

const char *suffix(RtfPicture::Kind kind)
{
    switch (kind) {
    case RtfPicture::Png:
    case RtfPicture::Dib:
        return ".png";
    case RtfPicture::Jpeg:
        return ".jpg";
    case RtfPicture::Wmf:
        return ".wmf";
    case RtfPicture::Emf:
        return ".emf";
    case RtfPicture::Unknown:
        break;
    }
    return "";
}

// Looks at the head of the file only.
bool canBeShown(QByteArray file)
{
    QBuffer buffer(&file);
    const QSize size = QImageReader(&buffer).size();
    return size.isValid() && !size.isEmpty()
        && qint64(size.width()) * qint64(size.height()) <= maxPixels;
}

QByteArray asPng(const QImage &image)
{
    constexpr QSize maxSize(100000, 100000); // PNG files of a million pixels in a row are refused
    const QSize size = image.size().boundedTo(maxSize);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    (size == image.size() ? image : image.scaled(size)).save(&buffer, "PNG");
    return bytes;
}

// A bitmap in RTF lacks the head of a file. It may say any size, whatever pixels are there.
QByteArray fileOfBitmap(QByteArray bytes)
{
    constexpr qint64 maxGrowth = 32; // of bitmaps that are packed
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "dib");
    const QSize size = reader.size();
    const int depth = QImage::toPixelFormat(reader.imageFormat()).bitsPerPixel();
    if (size.isEmpty()
        || qint64(size.width()) * size.height() / 8 * depth > bytes.size() * maxGrowth)
        return {};
    const QImage image = reader.read();
    return image.isNull() ? QByteArray() : asPng(image);
}

// How a placeholder keeps a metafile: "wmf" or "emf", \wmetafile, \picw, \pich, the bytes in
// base 64, with blanks between.
constexpr char metafileKey[] = "rtf-metafile";

// The group that says what is in metafileKey, up to the size; nothing where that makes no sense.
QByteArray metafileRtf(const QString &text)
{
    const QList<QByteArray> parts = text.toLatin1().split(' ');
    const bool isWmf = parts.value(0) == "wmf";
    if (parts.size() != 5 || (!isWmf && parts.value(0) != "emf"))
        return {};
    QByteArray rtf = "{\\pict";
    rtf += isWmf ? "\\wmetafile" + QByteArray::number(parts.at(1).toInt()) : "\\emfblip";
    rtf += "\\picw" + QByteArray::number(parts.at(2).toInt()) + "\\pich"
        + QByteArray::number(parts.at(3).toInt());
    return rtf;
}

QByteArray goalWords(const QTextImageFormat &format, const QSize &pixels)
{
    const auto goal = [](double points, int pixelCount) {
        const double twips = points > 0 ? points * 20 : pixelCount * 15.0;
        return QByteArray::number(qRound(qMin(twips, double(rtfMaxTwips))));
    };
    return "\\picwgoal" + goal(format.width(), pixels.width()) + "\\pichgoal"
        + goal(format.height(), pixels.height()) + '\n';
}

} // namespace

void RtfPicture::addHex(std::string_view digits)
{
    m_bytes.reserve(m_bytes.size() + static_cast<int>(digits.size() / 2) + 1);
    for (const char digit : digits) {
        const int value = digitValue(digit);
        if (value < 0)
            continue;
        if (m_half < 0) {
            m_half = value;
        } else {
            m_bytes.append(static_cast<char>(m_half * 16 + value));
            m_half = -1;
        }
    }
}

void RtfPicture::addBytes(std::string_view bytes)
{
    m_bytes.append(bytes.data(), static_cast<int>(bytes.size()));
}

QByteArray RtfPicture::file() const
{
    if (kind == Dib)
        return fileOfBitmap(m_bytes);
    return kind == Png || kind == Jpeg ? m_bytes : QByteArray();
}

QSizeF RtfPicture::naturalTwips() const
{
    // 15 twips to the pixel is what programs assume of a bitmap without a goal.
    const double perUnit = isMetafile() ? 1440 / 2540.0 : 15;
    return {goalWidth > 0 ? goalWidth : qMax(0, width) * perUnit,
            goalHeight > 0 ? goalHeight : qMax(0, height) * perUnit};
}

// In points.
QSizeF RtfPicture::size(bool isCropped) const
{
    if (!m_shownSize.isEmpty())
        return QSizeF(m_shownSize) / 20;
    QSizeF twips = naturalTwips();
    if (isCropped)
        twips -= QSizeF(cropLeft + cropRight, cropTop + cropBottom);
    const auto side = [](double length, int percent) {
        return qBound(0.0, length / 20 * (percent > 0 ? percent : 100) / 100, maxSide);
    };
    return {side(twips.width(), scaleX), side(twips.height(), scaleY)};
}

// Empty where nothing is to be cropped, all would be, or only by filling the memory.
QByteArray RtfPicture::cropped(QByteArray file) const
{
    constexpr qint64 maxCropped = 25000000; // pixels
    constexpr qint64 maxGrowth = 256; // pixels to the byte
    QBuffer buffer(&file);
    QImageReader reader(&buffer);
    const QSize pixels = reader.size();
    const QSizeF twips = naturalTwips();
    const bool isCropped = cropLeft != 0 || cropTop != 0 || cropRight != 0 || cropBottom != 0;
    if (!isCropped || pixels.isEmpty() || twips.isEmpty()
        || qint64(pixels.width()) * pixels.height() > qMin(maxCropped, maxGrowth * file.size()))
        return {};
    const double x = pixels.width() / twips.width();
    const double y = pixels.height() / twips.height();
    const QRect shown(QPoint(qRound(cropLeft * x), qRound(cropTop * y)),
                      QPoint(pixels.width() - 1 - qRound(cropRight * x),
                             pixels.height() - 1 - qRound(cropBottom * y)));
    if (shown.isEmpty())
        return {};
    reader.setClipRect(shown);
    const QImage image = reader.read();
    return image.isNull() ? QByteArray() : asPng(image);
}

QImage RtfPicture::placeholder() const
{
    QImage grey(1, 1, QImage::Format_RGB32);
    grey.fill(Qt::lightGray);
    if (isMetafile())
        grey.setText(QLatin1String(metafileKey),
                     QStringLiteral("%1 %2 %3 %4 %5")
                         .arg(QLatin1String(suffix(kind) + 1))
                         .arg(mapMode)
                         .arg(width)
                         .arg(height)
                         .arg(QLatin1String(m_bytes.toBase64())));
    return grey;
}

QTextImageFormat RtfPicture::store(QTextDocument *document, const QTextCharFormat &around,
                                   bool *isLost, QSet<QString> *stored) const
{
    QTextImageFormat format;
    format.merge(around);
    const bool isKnown = !format.name().isEmpty();
    QByteArray bytes = file();
    const QByteArray part = isKnown || bytes.isEmpty() ? QByteArray() : cropped(bytes);
    const QSizeF shown = size(!part.isEmpty());
    if (!isKnown && shown.width() > 0)
        format.setWidth(shown.width());
    if (!isKnown && shown.height() > 0)
        format.setHeight(shown.height());

    if (!part.isEmpty())
        bytes = part;
    QVariant resource = bytes;
    const bool isShown = !bytes.isEmpty() && canBeShown(bytes);
    if (!isShown) {
        resource = placeholder();
        format.setToolTip(QCoreApplication::translate(
            "QObject", "A picture in a format that cannot be shown stands here"));
    }
    *isLost = !isShown && !isMetafile();
    if (!isKnown && *isLost) {
        format.setName(QStringLiteral("rtf-placeholder"));
    } else if (!isKnown) {
        // Named for its content, so that pictures of several files can meet in one document.
        const QByteArray hash
            = QCryptographicHash::hash(isShown ? bytes : m_bytes, QCryptographicHash::Sha1).toHex();
        format.setName(QLatin1String("rtf-" + hash + suffix(part.isEmpty() ? kind : Png)));
    }
    if (!stored->contains(format.name()))
        document->addResource(QTextDocument::ImageResource, QUrl(format.name()), resource);
    stored->insert(format.name());
    return format;
}

QByteArray RtfPicture::toFile(const QVariant &image)
{
    const QByteArray bytes
        = image.userType() == QMetaType::QByteArray ? image.toByteArray() : QByteArray();
    if (bytes.startsWith("\xff\xd8\xff") || bytes.startsWith("\x89PNG\r\n\x1a\n"))
        return bytes;
    QImage shown = image.userType() == QMetaType::QPixmap ? image.value<QPixmap>().toImage()
                                                          : image.value<QImage>();
    if (shown.isNull() && !bytes.isEmpty())
        shown = QImage::fromData(bytes);
    if (shown.isNull()) // keeps its place, whatever has become of it
        shown = RtfPicture().placeholder();
    return asPng(shown);
}

QByteArray RtfPicture::toRtf(const QVariant &image, const QByteArray &file,
                             const QTextImageFormat &format)
{
    if (image.userType() == QMetaType::QImage) {
        const QString text = image.value<QImage>().text(QLatin1String(metafileKey));
        const QByteArray rtf = text.isEmpty() ? QByteArray() : metafileRtf(text);
        if (!rtf.isEmpty())
            return rtf + goalWords(format, {0, 0})
                + QByteArray::fromBase64(text.mid(text.lastIndexOf(QLatin1Char(' '))).toLatin1())
                      .toHex()
                + '}';
    }
    const QSize pixels = pixelSize(file);
    QByteArray rtf = file.startsWith('\xff') ? "{\\pict\\jpegblip" : "{\\pict\\pngblip";
    rtf += "\\picw" + QByteArray::number(pixels.width()) + "\\pich"
        + QByteArray::number(pixels.height()) + goalWords(format, pixels) + file.toHex() + '}';
    return rtf;
}

QSize RtfPicture::pixelSize(const QByteArray &file)
{
    QByteArray bytes = file;
    QBuffer buffer(&bytes);
    return QImageReader(&buffer).size();
}

QByteArray RtfPicture::reduced(const QByteArray &file)
{
    constexpr qint64 maxRead = 25000000; // pixels
    constexpr int reducedSide = 16;
    QByteArray bytes = file;
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    QSize size = reader.size();
    QImage image;
    if (!size.isEmpty() && qint64(size.width()) * size.height() <= maxRead) {
        if (size.width() > reducedSide || size.height() > reducedSide)
            size = size.scaled(reducedSide, reducedSide, Qt::KeepAspectRatio)
                       .expandedTo(QSize(1, 1));
        reader.setScaledSize(size);
        image = reader.read();
    }
    return asPng(image.isNull() ? RtfPicture().placeholder() : image);
}
