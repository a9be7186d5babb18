// SPDX-License-Identifier: MIT
#include <tool/Loading.h>

#include <tool/CommandLine.h>
#include <tool/Document.h>
#include <tool/FileName.h>
#include <tool/Messages.h>
#include <tool/Output.h>
#include <tool/Progress.h>
#include <tool/System.h>
#include <tool/formats/Formats.h>
#include <tool/formats/Media.h>
#include <tool/formats/TableDepth.h>

#include <QDir>
#include <QFileInfo>
#include <QFont>

namespace {

constexpr int largeInput = 1 << 16; // bytes

/*! Says what was not read, and what would keep it. */
void reportLosses(Listener &listener, const QString &name, const ReadOptions &options,
                  Document &document)
{
    if (!document.losses.isEmpty() && !(options.goesBack && document.script)) {
        QString text = Tool::tr("not read: %1").arg(document.losses.join(QLatin1String(", ")));
        if (document.script && options.leavesFile)
            text += Tool::tr("; --to fdx keeps all of that");
        listener.say(name, text);
    }
    const bool isAsked = !options.mediaFolder.isEmpty();
    if (!isAsked && !options.holdsPictures)
        return;
    const auto say = [&](int closed, const QString &text) {
        if (closed > 0)
            listener.say(name,
                         text.arg(counted(closed, QT_TRANSLATE_NOOP("Tool", "picture"),
                                          QT_TRANSLATE_NOOP("Tool", "pictures"))));
    };
    say(closedPictures(document),
        isAsked
            ? Tool::tr("%1 not opened: not in that folder, or no pictures")
            : Tool::tr("%1 not opened; convert --media-from FOLDER opens those that are in it"));
    say(document.notePictures, Tool::tr("%1 of footnotes not opened"));
}

}

const Format *findFormat(const QString &path, const QString &name, QString *error)
{
    const Format *format = name.isEmpty() ? formatOfFile(path) : formatByName(name);
    if (format)
        return format;
    if (!name.isEmpty())
        *error = Tool::tr("unknown format \"%1\"").arg(name);
    else if (path == QLatin1String("-"))
        *error = Tool::tr("a stream has no suffix: name its format");
    else
        *error = Tool::tr("cannot tell the format of \"%1\" by its suffix").arg(path);
    return nullptr;
}

const Format *readableFormat(const QString &path, const QString &name, QString *error)
{
    const Format *format = findFormat(path, name, error);
    if (!format || format->read)
        return format;
    *error = Tool::tr("%1 is not read").arg(QLatin1String(format->title));
    return nullptr;
}

bool loadDocument(const QString &path, const Format &format, const ReadOptions &options,
                  Document &document, Listener &listener)
{
    const QString name = displayName(path, Tool::tr("standard input"));
    listener.setStep(Tool::tr("Reading %1").arg(name));
    QByteArray bytes;
    QString error;
    document.text.setUndoRedoEnabled(false);
    // Text that names no font has the same one on every system.
    document.text.setDefaultFont(QFont(QStringLiteral("Times New Roman"), 12));
    bool isRead = readInput(path, &bytes, &error) && format.read(bytes, options, document, &error);
    if (isRead && hasDeepTables(document.text)) {
        error = Tool::tr("its tables are nested too deep");
        isRead = false;
    }
    if (!isRead) {
        listener.say(name, error);
        return false;
    }
    if (bytes.size() > largeInput)
        System::giveMemoryBack(); // trees of readers, which writers may have no use for
    if (!options.mediaFolder.isEmpty()) {
        const QString base
            = path == QLatin1String("-") ? QDir::currentPath() : QFileInfo(path).absolutePath();
        openPictures(document, options.mediaFolder, base);
    }
    if (document.title.isEmpty() && path != QLatin1String("-"))
        document.title = shownOnTerminal(QFileInfo(path).completeBaseName());
    reportLosses(listener, name, options, document);
    return true;
}

int loadForReport(const CommandLine &commandLine, Document &document, Listener &listener)
{
    QString error;
    const Format *format = readableFormat(commandLine.file(0), commandLine.value("from"), &error);
    if (!format)
        return commandLine.usageError(error);
    ReadOptions options;
    options.capitals = false;
    return loadDocument(commandLine.file(0), *format, options, document, listener) ? Success
                                                                                   : Failure;
}
