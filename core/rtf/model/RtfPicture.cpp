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
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
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

double side(int goal, int pixels, int scale)
{
    // 15 twips to the pixel is what programs assume of a bitmap without a goal.
    const double twips = goal > 0 ? goal : qMax(0, pixels) * 15.0;
    const int percent = scale > 0 ? scale : 100;
    return qMin(twips / 20 * percent / 100, maxSide);
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
    return kind == Unknown ? QByteArray() : m_bytes;
}

void RtfPicture::setShownSize(const QSize &twips)
{
    if (twips.isEmpty())
        return;
    goalWidth = twips.width();
    goalHeight = twips.height();
    scaleX = scaleY = 100;
}

QSizeF RtfPicture::size() const
{
    return {side(goalWidth, width, scaleX), side(goalHeight, height, scaleY)};
}

QTextImageFormat RtfPicture::store(QTextDocument *document, const QTextCharFormat &around) const
{
    QTextImageFormat format;
    format.merge(around);
    const QSizeF shown = size();
    const bool isKnown = !format.name().isEmpty();
    if (!isKnown && shown.width() > 0)
        format.setWidth(shown.width());
    if (!isKnown && shown.height() > 0)
        format.setHeight(shown.height());

    const QByteArray bytes = file();
    QVariant resource = bytes;
    if (bytes.isEmpty() || !canBeShown(bytes)) {
        QImage grey(1, 1, QImage::Format_RGB32);
        grey.fill(Qt::lightGray);
        resource = grey;
        format.setToolTip(QCoreApplication::translate(
            "QObject", "A picture in a format that cannot be shown stands here"));
        if (!isKnown)
            format.setName(QStringLiteral("rtf-placeholder"));
    } else if (!isKnown) {
        // Named for its content, so that pictures of several files can meet in one document.
        const QByteArray hash = QCryptographicHash::hash(bytes, QCryptographicHash::Sha1).toHex();
        format.setName(QLatin1String("rtf-" + hash + suffix(kind)));
    }
    document->addResource(QTextDocument::ImageResource, QUrl(format.name()), resource);
    return format;
}

QByteArray RtfPicture::toRtf(const QVariant &image, const QTextImageFormat &format)
{
    QByteArray bytes
        = image.userType() == QMetaType::QByteArray ? image.toByteArray() : QByteArray();
    const bool isJpeg = bytes.startsWith("\xff\xd8\xff");
    QSize pixels;
    if (isJpeg || bytes.startsWith("\x89PNG\r\n\x1a\n")) {
        QBuffer buffer(&bytes);
        pixels = QImageReader(&buffer).size();
    } else {
        QImage shown = image.userType() == QMetaType::QPixmap ? image.value<QPixmap>().toImage()
                                                              : image.value<QImage>();
        if (shown.isNull() && !bytes.isEmpty())
            shown = QImage::fromData(bytes);
        if (shown.isNull()) { // keeps its place, whatever has become of it
            shown = QImage(1, 1, QImage::Format_RGB32);
            shown.fill(Qt::lightGray);
        }
        pixels = shown.size();
        bytes = asPng(shown);
    }
    const auto goal = [](double points, int pixelCount) {
        const double twips = points > 0 ? points * 20 : pixelCount * 15.0;
        return QByteArray::number(qRound(qMin(twips, double(rtfMaxTwips))));
    };
    QByteArray rtf = isJpeg ? "{\\pict\\jpegblip" : "{\\pict\\pngblip";
    rtf += "\\picw" + QByteArray::number(pixels.width()) + "\\pich"
        + QByteArray::number(pixels.height()) + "\\picwgoal" + goal(format.width(), pixels.width())
        + "\\pichgoal" + goal(format.height(), pixels.height()) + '\n' + bytes.toHex() + '}';
    return rtf;
}
