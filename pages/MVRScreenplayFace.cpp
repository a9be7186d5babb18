// SPDX-License-Identifier: MIT
#include <pages/MVRScreenplayFace.h>

#include <core/MVRToolkit.h>

#include <QByteArray>
#include <QFile>
#include <QFontDatabase>
#include <QStandardPaths>
#include <QtEndian>

#include <algorithm>
#include <utility>

namespace {

const char primeFamily[] = "Courier Prime";

// The four files of Debian's package all say that they are its light upright face. They are put
// right in memory, under a family name of the same length that is not taken.
const char ownFamily[] = "Courier Print";
static_assert(sizeof(primeFamily) == sizeof(ownFamily), "The name is replaced in place");

/*! A file of the package and what it should say, in the values of the OpenType tables. */
struct Face
{
    const char *file;
    const char *style; // as long as the one that it replaces
    quint16 weightClass; // OS/2, usWeightClass
    quint16 selection; // OS/2, fsSelection: 0x01 italic, 0x20 bold, 0x40 regular
    quint16 macStyle; // head, macStyle: 1 bold, 2 italic
};

const char style[] = "Light";

constexpr Face faces[] = {
    {"Courier Prime.otf", "Roman", 400, 0x40, 0},
    {"Courier Prime Bold.otf", "Thick", 700, 0x20, 1},
    {"Courier Prime Italic.otf", "Slant", 400, 0x01, 2},
    {"Courier Prime Bold Italic.otf", "Heavy", 700, 0x21, 3},
};

/*! Reads and writes the big-endian numbers of a font; what lies outside it reads as 0. */
class FontBytes
{
public:
    explicit FontBytes(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    QByteArray bytes() const { return m_bytes; }

    quint16 word(quint32 offset) const
    {
        return holds(offset, 2) ? qFromBigEndian<quint16>(m_bytes.constData() + offset) : 0;
    }

    void setWord(quint32 offset, quint16 value)
    {
        if (holds(offset, 2))
            qToBigEndian(value, m_bytes.data() + offset);
    }

    /*! Where a table begins; 0 when the font has none of that tag. */
    quint32 table(const char *tag) const
    {
        constexpr quint32 headerSize = 12;
        constexpr quint32 recordSize = 16;
        for (quint32 i = 0; i < word(4); ++i) {
            const quint32 record = headerSize + i * recordSize;
            if (holds(record, recordSize) && m_bytes.mid(int(record), 4) == tag)
                return quint32(word(record + 8)) << 16 | word(record + 10);
        }
        return 0;
    }

    void replace(const QByteArray &before, const QByteArray &after)
    {
        m_bytes.replace(before, after);
    }

private:
    bool holds(quint32 offset, quint32 size) const
    {
        return quint64(offset) + size <= quint64(m_bytes.size());
    }

    QByteArray m_bytes;
};

// Qt takes faces with one style name for one face. Files have two such names: the one for old
// programs, the same in all four files, makes way.
void dropOldStyleNames(FontBytes &font)
{
    constexpr quint16 styleName = 2;
    constexpr quint16 firstPrivateName = 256;
    const quint32 names = font.table("name");
    for (quint32 i = 0; names > 0 && i < font.word(names + 2); ++i) {
        const quint32 nameId = names + 6 + i * 12 + 6;
        if (font.word(nameId) == styleName)
            font.setWord(nameId, firstPrivateName);
    }
}

QByteArray utf16(const char *text)
{
    QByteArray bytes;
    for (const char *letter = text; *letter; ++letter)
        bytes.append('\0').append(*letter);
    return bytes;
}

QByteArray corrected(const QByteArray &file, const Face &face)
{
    FontBytes font(file);
    const quint32 metrics = font.table("OS/2");
    const quint32 head = font.table("head");
    if (metrics == 0 || head == 0)
        return file;
    font.setWord(metrics + 4, face.weightClass);
    font.setWord(metrics + 62, face.selection);
    font.setWord(head + 44, face.macStyle);
    dropOldStyleNames(font);
    for (const auto &[before, after] :
         {std::pair(primeFamily, ownFamily), std::pair(style, face.style)}) {
        font.replace(utf16(before), utf16(after));
        font.replace(before, after);
    }
    return font.bytes();
}

// Screenplays name faces that few systems have; all are typewriter faces of the same width.
const char *const aliases[]
    = {"Courier Final Draft", "Courier",      "Courier New", "Courier Std", "Courier 10 Pitch",
       "Courier Screenplay",  "Courier Prime"};

bool registerFaces()
{
    bool all = true;
    for (const Face &face : faces) {
        QFile file(QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                          QLatin1String("fonts/opentype/courier-prime/")
                                              + QLatin1String(face.file)));
        all = all && file.open(QIODevice::ReadOnly)
            && QFontDatabase::addApplicationFontFromData(corrected(file.readAll(), face)) >= 0;
    }
    return all;
}

}

QString MVRScreenplayFace::family()
{
    static const QString face = [] {
        const QString name = QString::fromLatin1(primeFamily);
        return !MVRToolkit::hasBoldFace(name) && registerFaces() ? QString::fromLatin1(ownFamily)
                                                                 : name;
    }();
    return face;
}

bool MVRScreenplayFace::isAlias(const QString &family)
{
    if (family.isEmpty())
        return true;
    return std::any_of(std::begin(aliases), std::end(aliases), [&](const char *alias) {
        return family.compare(QLatin1String(alias), Qt::CaseInsensitive) == 0;
    });
}
