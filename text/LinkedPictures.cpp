// SPDX-License-Identifier: MIT
#include <text/LinkedPictures_p.h>

#include <core/MVRCoreUtil.h>
#include <core/MVRGuiUtil.h>

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QTextDocument>
#include <QUrl>
#include <QtEndian>

#include <algorithm>
#include <limits>

namespace {

constexpr qint64 maxFileSize = 128 << 20;
constexpr qint64 maxPixels = 50000000;
// A JPEG file is decoded line by line and reduced on the way; its time grows all the same.
constexpr qint64 maxReducedPixels = 200000000;
constexpr int reducedPlaceholderSide = 2048;
constexpr int maxReducedSide = 1024;
constexpr int minPlaceholderSide = 16;

qint64 area(const QSize &size)
{
    return qint64(size.width()) * size.height();
}

QSize fitted(const QSize &size, int maxSide)
{
    if (size.width() <= maxSide && size.height() <= maxSide)
        return size;
    return size.scaled(maxSide, maxSide, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

// Formats whose head tells the size of what is decoded. Others hold pictures in pictures, or text
// that is drawn and can name further files.
bool isBitmapFormat(const QByteArray &format)
{
    static constexpr const char *formats[] = {"bmp", "cur", "gif", "ico",  "jpeg", "jpg", "pbm",
                                              "pgm", "png", "ppm", "tiff", "webp", "xbm", "xpm"};
    return std::any_of(std::begin(formats), std::end(formats),
                       [&format](const char *name) { return format == name; });
}

/*! The unsigned number of four bytes that stands at \a offset; 0 beyond the end. */
qint64 numberAt(const QByteArray &bytes, qint64 offset, bool bigEndian)
{
    if (offset < 0 || offset + 4 > bytes.size())
        return 0;
    const char *number = bytes.constData() + offset;
    return bigEndian ? qFromBigEndian<quint32>(number) : qFromLittleEndian<quint32>(number);
}

/*!
    The size of the first picture in the file of an icon or a mouse pointer, by the picture's own
    head: that of the file has one byte for each side, and what is decoded is not held to it.
*/
QSize iconSize(const QByteArray &bytes)
{
    constexpr int offsetOfFirst = 18; // behind the file's head and the first entry's other fields
    const qint64 head = numberAt(bytes, offsetOfFirst, false);
    const bool isPng = numberAt(bytes, head, true) == 0x89504e47; // "\x89PNG"
    const qint64 width = numberAt(bytes, head + (isPng ? 16 : 4), isPng);
    const qint64 height = numberAt(bytes, head + (isPng ? 20 : 8), isPng);
    constexpr qint64 maxSide = std::numeric_limits<int>::max();
    return width > maxSide || height > maxSide ? QSize() : QSize(int(width), int(height));
}

// The content tells the format, so that a wrong suffix does no harm.
QImage decoded(QByteArray &bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray format = QImageReader::imageFormat(&buffer);
    if (!isBitmapFormat(format))
        return QImage();
    QImageReader reader(&buffer, format);
    reader.setAutoDetectImageFormat(false);
    const bool isIcon = format == "ico" || format == "cur";
    const QSize size = isIcon ? iconSize(bytes) : reader.size();
    if (!size.isValid() || size.isEmpty())
        return QImage();
    if (area(size) > maxPixels) {
        if (format != "jpeg" || area(size) > maxReducedPixels)
            return QImage();
        reader.setScaledSize(size / 4);
    }
    const QImage image = reader.read();
    // Twice the memory shows nothing more.
    return image.depth() > 32 ? image.convertToFormat(QImage::Format_ARGB32) : image;
}

// Files of devices, processes and the kernel, some of which claim to have a size.
bool isOfSystem(const QString &path)
{
    static constexpr const char *folders[] = {"/dev/", "/proc/", "/sys/"};
    return std::any_of(std::begin(folders), std::end(folders), [&path](const char *folder) {
        return path.startsWith(QLatin1String(folder));
    });
}

// Pipes and devices would wait or never end; files of the system itself claim to be empty.
bool isReadable(const QFileInfo &file)
{
    return !isOfSystem(file.canonicalFilePath()) && file.isFile() && file.size() > 0
        && file.size() <= maxFileSize;
}

// Goes with the picture, also into copies of the document.
const char placeholderKey[] = "mvrPlaceholder";

QImage questionMark(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setPen(Qt::black);
    painter.drawText(image.rect(), Qt::AlignCenter, QStringLiteral("?"));
    return image;
}

} // namespace

bool LinkedPictures::exists(const QString &path) const
{
    return m_policy.allows(path) && QFileInfo::exists(path);
}

LinkedPictures::File LinkedPictures::find(const QString &path)
{
    const auto known = m_files.constFind(path);
    if (known != m_files.constEnd())
        return *known;
    File file {path, exists(path)};
    if (!file.exists && path.startsWith(QLatin1Char('/')) && exists(path.mid(1)))
        file = {path.mid(1), true};
    m_files.insert(path, file);
    return file;
}

QString LinkedPictures::add(const File &file, const QSize &shown)
{
    const QString name = file.exists ? addFile(file.path, shown) : QString();
    return name.isEmpty() ? addPlaceholder(shown) : name;
}

QString LinkedPictures::addFile(const QString &path, const QSize &shown)
{
    const QFileInfo info(path);
    const QString key = info.canonicalFilePath();
    const auto known = m_pictures.constFind(key);
    if (known != m_pictures.constEnd())
        return *known;
    const QString name = addResource(isReadable(info) ? load(path, shown) : QImage());
    m_pictures.insert(key, name);
    return name;
}

QImage LinkedPictures::load(const QString &path, const QSize &shown)
{
    QByteArray bytes = MVRCoreUtil::ReadBinaryFile(path, nullptr);
    QImage image = decoded(bytes);
    const QSize reduced = fitted(shown, maxReducedSide);
    if (area(image.size()) > qMax(m_pixelsLeft, area(reduced)))
        image = image.scaled(reduced);
    m_pixelsLeft = qMax<qint64>(0, m_pixelsLeft - area(image.size()));
    return image;
}

QSize LinkedPictures::sizeOf(const File &file)
{
    if (!file.exists || !isReadable(QFileInfo(file.path)))
        return {};
    QImageReader reader(file.path);
    reader.setDecideFormatFromContent(true);
    return isBitmapFormat(reader.format()) ? reader.size() : QSize();
}

bool LinkedPictures::isPlaceholder(const QImage &image)
{
    return !image.text(QLatin1String(placeholderKey)).isEmpty();
}

QString LinkedPictures::addPlaceholder(QImage image)
{
    image.setText(QLatin1String(placeholderKey), QStringLiteral("1"));
    return addResource(image);
}

QString LinkedPictures::addPlaceholder(const QSize &shown)
{
    if (!m_triedAlertIcon) {
        m_triedAlertIcon = true;
        m_alertIcon = addPlaceholder(QImage(QStringLiteral(":/Icons/Application/MsgAlert")));
    }
    if (!m_alertIcon.isEmpty())
        return m_alertIcon;
    QSize size = shown;
    if (area(size) > maxPlaceholderPixels)
        size = fitted(shown, reducedPlaceholderSide);
    if (area(size) > m_placeholderPixelsLeft)
        size = fitted(shown, minPlaceholderSide);
    QString &name = m_placeholders[{size.width(), size.height()}];
    if (name.isEmpty()) {
        name = addPlaceholder(questionMark(size));
        m_placeholderPixelsLeft -= area(size);
    }
    return name;
}

QString LinkedPictures::addResource(const QImage &image)
{
    const QString name = MVRGuiUtil::resourceId(image);
    if (!name.isEmpty())
        m_document->addResource(QTextDocument::ImageResource, QUrl(name), image);
    return name;
}
