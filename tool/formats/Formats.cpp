// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <QFileInfo>

namespace {

// In the order in which users see them.
constexpr const Format *formats[]
    = {&fdxFormat,    &rtfFormat, &htmlFormat, &textFormat, &markdownFormat,
       &bbCodeFormat, &odtFormat, &pdfFormat,  &pngFormat};

template <typename Test> QStringList formatNames(Test test)
{
    QStringList names;
    for (const Format *format : formats) {
        if (test(*format))
            names << QString::fromLatin1(format->name);
    }
    return names;
}

}

void ReadOptions::setTarget(const Format &to)
{
    // A screenplay file keeps the letters as typed; its reader puts them in capitals again.
    capitals = !to.hasElements;
    goesBack = to.hasElements;
    leavesFile = !to.hasElements;
    goesToPages = &to == &pdfFormat || &to == &pngFormat;
    holdsPictures = to.pictures == PictureSupport::Held;
}

const Format *formatByName(const QString &name)
{
    const QString wanted = name.toLower();
    for (const Format *format : formats) {
        const QStringList others
            = QString::fromLatin1(format->otherSuffixes).split(QLatin1Char(' '));
        if (!wanted.isEmpty() && (wanted == QLatin1String(format->name) || others.contains(wanted)))
            return format;
    }
    return nullptr;
}

const Format *formatOfFile(const QString &path)
{
    return formatByName(QFileInfo(path).suffix());
}

QStringList readableFormats()
{
    return formatNames([](const Format &format) { return format.read != nullptr; });
}

QStringList writableFormats()
{
    return formatNames([](const Format &format) { return format.write != nullptr; });
}
