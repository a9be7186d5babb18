// SPDX-License-Identifier: MIT
#include <tool/Folders.h>

#include <tool/FileName.h>

#include <QDir>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace {

#ifdef Q_OS_WIN
fs::path toPath(const QString &name)
{
    return fs::path(name.toStdWString());
}

QString fromPath(const fs::path &path)
{
    return QString::fromStdWString(path.generic_wstring());
}
#else
fs::path toPath(const QString &name)
{
    return fs::path(fileNameToBytes(name).toStdString());
}

QString fromPath(const fs::path &path)
{
    return fileNameFromBytes(QByteArray::fromStdString(path.native()));
}
#endif

/*! Adds the files of one folder to \a files and its folders to \a folders. */
std::error_code look(const fs::path &folder, QStringList *files, QStringList *folders)
{
    std::error_code fault;
    fs::directory_iterator entry(folder, fault);
    for (; !fault && entry != fs::directory_iterator(); entry.increment(fault)) {
        std::error_code unknown; // a link into nothing is no file
        if (fromPath(entry->path().filename()).startsWith(QLatin1Char('.')))
            continue;
        if (entry->is_regular_file(unknown))
            files->append(fromPath(entry->path()));
        else if (entry->is_directory(unknown) && !entry->is_symlink(unknown))
            folders->append(fromPath(entry->path()));
    }
    return fault;
}

}

bool Folders::isFolder(const QString &path)
{
    std::error_code unknown;
    return fs::is_directory(toPath(path), unknown);
}

QString Folders::absolutePath(const QString &path)
{
#ifdef Q_OS_WIN
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
#else
    // Qt would go by way of its own bytes, where those of no character are lost.
    return QDir::cleanPath(
        path.startsWith(QLatin1Char('/')) ? path : QDir::currentPath() + QLatin1Char('/') + path);
#endif
}

bool Folders::make(const QString &path)
{
    std::error_code fault;
    fs::create_directories(toPath(path), fault);
    return isFolder(path);
}

QStringList Folders::filesBelow(const QString &folder, QStringList *closed)
{
    QStringList files;
    QStringList folders(folder);
    while (!folders.isEmpty()) {
        const QString next = folders.takeLast();
        if (look(toPath(next), &files, &folders))
            closed->append(next);
    }
    files.sort();
    return files;
}
