// SPDX-License-Identifier: MIT
#include <tool/formats/Media.h>

#include <tool/Document.h>
#include <tool/Folders.h>
#include <tool/Messages.h>
#include <tool/Output.h>
#include <tool/Progress.h>
#include <tool/formats/Formats.h>
#include <tool/formats/Pictures.h>

#include <core/document/FormatEdits_p.h>
#include <core/document/Pictures_p.h>
#include <text/LinkedPictures_p.h>

#include <QBuffer>
#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QPixmap>

#include <numeric>

namespace {

// A page that shows a picture often holds it as often.
constexpr qint64 maxEmbedded = 256 << 20;

/*! A picture as a file has it. */
struct PictureFile
{
    QByteArray bytes; // empty for none that a browser shows
    QByteArray suffix;
};

PictureFile fileOf(const QVariant &picture)
{
    PictureFile file;
    if (picture.userType() == QMetaType::QByteArray) {
        file.bytes = picture.toByteArray();
        QBuffer buffer(&file.bytes);
        buffer.open(QIODevice::ReadOnly);
        file.suffix = QImageReader::imageFormat(&buffer);
        if (file.suffix.isEmpty())
            file.bytes.clear();
        return file;
    }
    const QImage image = picture.userType() == QMetaType::QPixmap
        ? picture.value<QPixmap>().toImage()
        : picture.value<QImage>();
    QBuffer buffer(&file.bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "png"))
        file.bytes.clear();
    file.suffix = "png";
    return file;
}

/*! How often the document shows each picture, by name. */
QHash<QString, int> pictureUses(const QTextDocument &text)
{
    QHash<QString, int> uses;
    for (FragmentWalker walker(&text, 0); walker.isValid(); walker.next()) {
        if (walker.format().isImageFormat())
            uses[walker.format().toImageFormat().name()] += walker.end() - walker.start();
    }
    return uses;
}

QString countedPictures(int count)
{
    return counted(count, QT_TRANSLATE_NOOP("Tool", "picture"),
                   QT_TRANSLATE_NOOP("Tool", "pictures"));
}

/*! Gives the pictures that a document holds names that lead to them. */
class HeldPictures
{
public:
    HeldPictures(Document &document, const WriteOptions &options, const QString &path)
        : m_document(document)
        , m_folder(options.mediaFolder)
        , m_path(path)
    {
    }

    /*! \param embeds  into the page where no folder is named
        \return false when a file cannot be written, see error() */
    bool place(bool embeds);
    const QString &error() const { return m_error; }
    int lost() const { return m_lost; }

private:
    QString newName(const PictureFile &file, bool embeds, int uses);
    QString written(const PictureFile &file);

    Document &m_document;
    QString m_folder;
    QString m_path;
    QString m_error;
    qint64 m_embedded = 0;
    int m_lost = 0;
};

/*! Writes the picture under a name that tells its content: equal ones are one file, and no other
    file has it. */
QString HeldPictures::written(const PictureFile &file)
{
    const QByteArray sum = QCryptographicHash::hash(file.bytes, QCryptographicHash::Sha1).toHex();
    const QString name
        = QStringLiteral("picture-") + QString::fromLatin1(sum.left(12) + '.' + file.suffix);
    const QString path = QDir(m_folder).filePath(name);
    if (!Folders::make(m_folder))
        m_error = Tool::tr("the folder %1 cannot be made").arg(m_folder);
    else
        writeOutput(path, file.bytes, &m_error);
    if (m_path == QLatin1String("-"))
        return path;
    return QFileInfo(Folders::absolutePath(m_path))
        .dir()
        .relativeFilePath(Folders::absolutePath(path));
}

/*! Empty for a picture that is left out. */
QString HeldPictures::newName(const PictureFile &file, bool embeds, int uses)
{
    if (!file.bytes.isEmpty() && !m_folder.isEmpty())
        return written(file);
    const qint64 size = qint64(file.bytes.size()) * 4 / 3 * uses;
    if (!embeds || file.bytes.isEmpty() || m_embedded + size > maxEmbedded)
        return QString();
    m_embedded += size;
    return QStringLiteral("data:image/") + QString::fromLatin1(file.suffix)
        + QLatin1String(";base64,") + QString::fromLatin1(file.bytes.toBase64());
}

bool HeldPictures::place(bool embeds)
{
    const QHash<QString, int> uses = pictureUses(m_document.text);
    QHash<QString, QString> names;
    for (auto use = uses.cbegin(); use != uses.cend(); ++use) {
        if (!m_document.text.holdsPicture(pictureUrl(m_document.text, use.key())))
            continue;
        const QString name
            = newName(fileOf(picture(m_document.text, use.key())), embeds, use.value());
        if (!m_error.isEmpty())
            return false;
        m_lost += name.isEmpty() ? use.value() : 0;
        names.insert(use.key(), name);
    }
    renamePictures(m_document.text, names);
    return true;
}

QString decoded(const QString &name)
{
    return QUrl::fromPercentEncoding(name.toUtf8());
}

} // namespace

void openPictures(Document &document, const QString &folder, const QString &base)
{
    LinkedPictures pictures(&document.text, MVRPicturePolicy::below(folder));
    QHash<QString, QString> names;
    const QSet<QString> all = pictureNames(document.text);
    for (const QString &name : all) {
        if (document.text.holdsPicture(pictureUrl(document.text, name)))
            continue;
        LinkedPictures::File file = pictures.find(QDir(base).absoluteFilePath(name));
        if (!file.exists)
            file = pictures.find(QDir(base).absoluteFilePath(decoded(name)));
        const QSize size = LinkedPictures::sizeOf(file);
        if (!size.isEmpty())
            names.insert(name, pictures.add(file, size));
    }
    renamePictures(document.text, names);
}

int closedPictures(Document &document)
{
    int closed = 0;
    const QHash<QString, int> uses = pictureUses(document.text);
    for (auto use = uses.cbegin(); use != uses.cend(); ++use) {
        if (!document.text.holdsPicture(pictureUrl(document.text, use.key())))
            closed += use.value();
    }
    return closed;
}

bool placePictures(Document &document, const Format &format, const WriteOptions &options,
                   const QString &path, const QString &name, Listener &listener)
{
    const QString title = QLatin1String(format.title);
    if (format.pictures == PictureSupport::None) {
        const QList<int> uses = pictureUses(document.text).values();
        const int count = std::accumulate(uses.cbegin(), uses.cend(), 0);
        if (count > 0)
            listener.say(
                name,
                Tool::tr("%1 left out that %2 cannot carry; rtf, html, odt and pdf keep them")
                    .arg(countedPictures(count), title));
        return true;
    }
    if (format.pictures == PictureSupport::Held)
        return true;
    HeldPictures held(document, options, path);
    if (!held.place(&format == &htmlFormat)) {
        listener.say(name, held.error());
        return false;
    }
    if (held.lost() > 0)
        listener.say(name,
                     (options.mediaFolder.isEmpty()
                          ? Tool::tr("%1 left out; --extract-media FOLDER writes them as files")
                          : Tool::tr("%1 left out"))
                         .arg(countedPictures(held.lost())));
    return true;
}
