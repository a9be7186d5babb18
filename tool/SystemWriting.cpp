// SPDX-License-Identifier: MIT
// POSIX; Windows has SystemWindows.cpp.
#include <tool/System.h>

#include <tool/FileName.h>
#include <tool/OpenFile.h>
#include <tool/UnfinishedFiles.h>

#include <QRandomGenerator>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/*! The path of what links lead to; empty where that is not there. */
QByteArray realPath(const QByteArray &path)
{
    const std::unique_ptr<char, decltype(&std::free)> found(realpath(path.constData(), nullptr),
                                                            &std::free);
    return QByteArray(found.get());
}

QByteArray folderOf(const QByteArray &path)
{
    const int slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.left(qMax(slash, 1));
}

/*! The path that a link has in it; empty for what is no link. */
QByteArray contentOfLink(const QByteArray &path)
{
    std::array<char, PATH_MAX> content;
    const ssize_t size = readlink(path.constData(), content.data(), content.size());
    if (size < 0)
        return {};
    const QByteArray next(content.data(), int(size));
    return next.startsWith('/') ? next : folderOf(path) + '/' + next;
}

/*! The path of the file that links would lead to if it were there. Links do not go in circles. */
QByteArray missingTarget(QByteArray path)
{
    for (QByteArray next = path; !next.isEmpty(); next = contentOfLink(path))
        path = next;
    return path;
}

/*! The open file of this program that a path such as "/dev/stdout" stands for; -1 for none. What is
    in front of its place there was written by others, and stays. */
int openFileAt(QByteArray path)
{
    const QByteArray openFiles = realPath("/proc/self/fd");
    for (; !openFiles.isEmpty() && !path.isEmpty(); path = contentOfLink(path)) {
        if (realPath(folderOf(path)) == openFiles)
            return path.mid(path.lastIndexOf('/') + 1).toInt();
    }
    return -1;
}

/*! What a new file may be read and written by, as the user has set it. */
mode_t newMode()
{
    // The system tells it only to who changes it, which threads must not do at the same time.
    static const mode_t mask = [] {
        const mode_t old = umask(0);
        umask(old);
        return old;
    }();
    return 0666 & ~mask;
}

bool isSameFile(const char *one, const char *other)
{
    struct stat first = {};
    struct stat second = {};
    return stat(one, &first) == 0 && stat(other, &second) == 0 && first.st_dev == second.st_dev
        && first.st_ino == second.st_ino;
}

/*! Gives a file a name, and by this the place of another. \return 0, or what went wrong */
int takePlaceOf(const char *file, const char *name, const char *path)
{
    if (linkat(AT_FDCWD, file, AT_FDCWD, name, AT_SYMLINK_FOLLOW) != 0)
        return errno;
    if (rename(name, path) == 0)
        return 0;
    const int fault = errno;
    unlink(name);
    return fault;
}

/*!
    The same in a process of its own, where there can be one: killed between the two calls, this one
    would leave the file under its first name. The other one calls the system only, as it has to
    where there were threads. \return 0, or -1 as calls of the system do
*/
int takePlaceApart(const char *file, const char *name, const char *path)
{
    const pid_t other = fork();
    if (other == 0)
        _exit(takePlaceOf(file, name, path));
    int status = 0;
    while (other > 0 && waitpid(other, &status, 0) < 0) {
        if (errno == EINTR)
            continue;
        // Where somebody has said to ignore processes that end, none tells how it ended.
        errno = EIO;
        return isSameFile(file, path) ? 0 : -1;
    }
    if (other < 0)
        errno = takePlaceOf(file, name, path);
    else
        errno = WIFEXITED(status) ? WEXITSTATUS(status) : EINTR;
    return errno == 0 ? 0 : -1;
}

/*! A file beside the one to be written, which it takes the place of at the end. */
class NewFile
{
public:
    explicit NewFile(const QByteArray &path)
        : m_path(path)
    {
    }

    /*! These give the code of what went wrong, or 0; the old file is then as it was. */
    int write(const QByteArray &data, mode_t mode);
    int takePlace();

private:
    int openNameless();
    template <typename Make> int giveName(const Make &make);

    const QByteArray m_path;
    std::unique_ptr<OpenFile> m_file;
    QByteArray m_name; // empty for a file that has none yet
    UnfinishedFile m_unfinished;
};

/*! Calls \a make with a name that no other file has. Gives what that gives; below 0 it failed. */
template <typename Make> int NewFile::giveName(const Make &make)
{
    constexpr int tries = 100;
    for (int i = 0; i < tries; ++i) {
        m_name = folderOf(m_path) + "/.mvrtext-"
            + QByteArray::number(QRandomGenerator::system()->generate64(), 36);
        m_unfinished.setName(m_name);
        const int made = make(m_name.constData());
        if (made >= 0)
            return made;
        const int fault = errno;
        m_unfinished.forget();
        errno = fault;
        if (fault != EEXIST)
            break;
    }
    return -1;
}

/*! A file that has no name until it is whole, so that nothing is left where the program is killed;
    -1 where the system has none. */
int NewFile::openNameless()
{
#ifdef O_TMPFILE
    // The name is given by way of a folder that a closed environment may lack.
    if (access("/proc/self/fd", X_OK) == 0)
        return ::open(folderOf(m_path).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
#endif
    return -1;
}

int NewFile::write(const QByteArray &data, mode_t mode)
{
    int opened = openNameless();
    if (opened < 0)
        opened = giveName([](const char *name) {
            return ::open(name, O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0600);
        });
    if (opened < 0)
        return errno;
    m_file = std::make_unique<OpenFile>(opened);
    if (const int fault = m_file->write(data))
        return fault;
    return fchmod(opened, mode) != 0 || fsync(opened) != 0 ? errno : 0;
}

int NewFile::takePlace()
{
    const QByteArray source = "/proc/self/fd/" + QByteArray::number(m_file->descriptor());
    if (m_name.isEmpty()) {
        const auto take = [&](const char *name) {
            return takePlaceApart(source.constData(), name, m_path.constData());
        };
        if (giveName(take) < 0)
            return errno;
    } else if (rename(m_name.constData(), m_path.constData()) != 0) {
        return errno;
    }
    m_unfinished.forget();
    return 0;
}

}

struct System::NewFiles::Private
{
    std::vector<std::unique_ptr<NewFile>> files;

    int add(const QByteArray &path, const QByteArray &data, mode_t mode)
    {
        files.push_back(std::make_unique<NewFile>(path));
        return files.back()->write(data, mode);
    }
};

System::NewFiles::NewFiles()
    : d(std::make_unique<Private>())
{
}

System::NewFiles::~NewFiles() = default;

int System::NewFiles::add(const QString &path, const QByteArray &data)
{
    const QByteArray name = fileNameToBytes(path);
    struct stat old = {};
    if (stat(name.constData(), &old) != 0)
        return errno == ENOENT ? d->add(missingTarget(name), data, newMode()) : errno;
    if (S_ISDIR(old.st_mode))
        return EISDIR;
    const int open = openFileAt(name);
    if (open >= 0 || !S_ISREG(old.st_mode)) { // cannot be replaced
        const OpenFile file(open >= 0 ? dup(open) : ::open(name.constData(), O_WRONLY | O_CLOEXEC));
        return file.isOpen() ? file.write(data) : errno;
    }
    if (access(name.constData(), W_OK) != 0)
        return errno;
    const QByteArray target = realPath(name);
    return target.isEmpty() ? errno : d->add(target, data, old.st_mode & 07777);
}

int System::NewFiles::takePlaces()
{
    for (const std::unique_ptr<NewFile> &file : d->files) {
        if (const int fault = file->takePlace())
            return fault;
    }
    return 0;
}
