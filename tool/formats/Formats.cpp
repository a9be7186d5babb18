// SPDX-License-Identifier: MIT
#include <tool/formats/Formats.h>

#include <QFileInfo>

namespace {

constexpr Format formats[] = {
    {"fdx", "Final Draft", "", readFdx, writeFdx, NoteSupport::InText},
    {"rtf", "RTF", "", readRtf, writeRtf, NoteSupport::Attached},
    {"html", "HTML", "htm xhtml", readHtml, writeHtml, NoteSupport::None},
    {"txt", "plain text", "text", readText, writeText, NoteSupport::None},
    {"md", "Markdown", "markdown", readMarkdown, writeMarkdown, NoteSupport::None},
    {"bbcode", "BBCode", "", nullptr, writeBbCode, NoteSupport::None},
    {"odt", "ODT", "", nullptr, writeOdt, NoteSupport::None},
    {"pdf", "PDF", "", nullptr, writePdf, NoteSupport::None},
    {"png", "PNG", "", nullptr, writePng, NoteSupport::None},
};

template <typename Test> QStringList formatNames(Test test)
{
    QStringList names;
    for (const Format &format : formats) {
        if (test(format))
            names << QString::fromLatin1(format.name);
    }
    return names;
}

}

const Format *formatByName(const QString &name)
{
    const QString wanted = name.toLower();
    for (const Format &format : formats) {
        const QStringList others
            = QString::fromLatin1(format.otherSuffixes).split(QLatin1Char(' '));
        if (!wanted.isEmpty() && (wanted == QLatin1String(format.name) || others.contains(wanted)))
            return &format;
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
