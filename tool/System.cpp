// SPDX-License-Identifier: MIT
// POSIX; Windows has SystemWindows.cpp.
#include <tool/System.h>

#include <tool/FileName.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int pieceSize = 1 << 20;

int openFile(const QString &path, int flags)
{
    return open(fileNameToBytes(path).constData(), flags | O_CLOEXEC);
}

/*! A file of the system, closed at the end unless it is one of the standard streams. */
class OpenFile
{
public:
    explicit OpenFile(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~OpenFile()
    {
        if (m_descriptor > STDERR_FILENO)
            ::close(m_descriptor);
    }
    Q_DISABLE_COPY_MOVE(OpenFile)

    bool isOpen() const { return m_descriptor >= 0; }
    int descriptor() const { return m_descriptor; }
    int write(const QByteArray &data) const;
    int read(qint64 maxSize, QByteArray *data) const;

private:
    const int m_descriptor;
};

int OpenFile::write(const QByteArray &data) const
{
    for (qint64 written = 0; written < data.size();) {
        const ssize_t count
            = ::write(m_descriptor, data.constData() + written, size_t(data.size() - written));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count == 0) // no system does that for a size above 0
            return EIO;
        written += std::max<ssize_t>(count, 0);
    }
    return 0;
}

// In pieces: a device such as /dev/zero never ends.
int OpenFile::read(qint64 maxSize, QByteArray *data) const
{
    struct stat file = {};
    if (fstat(m_descriptor, &file) == 0 && S_ISREG(file.st_mode) && file.st_size > maxSize)
        return EFBIG;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    data->clear();
    while (data->size() <= maxSize) {
        const ssize_t count = ::read(m_descriptor, piece.data(), size_t(piece.size()));
        if (count < 0 && errno != EINTR)
            return errno;
        if (count == 0)
            return 0;
        data->append(piece.constData(), int(std::max<ssize_t>(count, 0)));
    }
    return EFBIG;
}

}

int System::readFile(const QString &path, qint64 maxSize, QByteArray *data)
{
    const OpenFile file(openFile(path, O_RDONLY));
    return file.isOpen() ? file.read(maxSize, data) : errno;
}

int System::readStandardInput(qint64 maxSize, QByteArray *data)
{
    return OpenFile(STDIN_FILENO).read(maxSize, data);
}

int System::writeStandardOutput(const QByteArray &data)
{
    return OpenFile(STDOUT_FILENO).write(data);
}

namespace {

/*! The path of the file that a link leads to, or the path itself. */
QByteArray target(const QByteArray &path)
{
    const std::unique_ptr<char, decltype(&std::free)> found(realpath(path.constData(), nullptr),
                                                            &std::free);
    return found ? QByteArray(found.get()) : path;
}

QByteArray folderOf(const QByteArray &path)
{
    const int slash = path.lastIndexOf('/');
    return slash < 0 ? QByteArray(".") : path.left(qMax(slash, 1));
}

/*! The path of the file that links would lead to if it were there. Links do not go in circles. */
QByteArray missingTarget(QByteArray path)
{
    std::array<char, PATH_MAX> content;
    for (;;) {
        const ssize_t size = readlink(path.constData(), content.data(), content.size());
        if (size < 0)
            return path;
        const QByteArray next(content.data(), int(size));
        path = next.startsWith('/') ? next : folderOf(path) + '/' + next;
    }
}

/*! What a new file may be read and written by, as the user has set it. */
mode_t newMode()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

/*! A file beside the one to be written, which it takes the place of at the end. */
class NewFile
{
public:
    explicit NewFile(const QByteArray &path)
        : m_path(path)
        , m_name(folderOf(path) + "/.mvrtext-XXXXXX")
    {
    }
    ~NewFile()
    {
        if (m_hasName)
            unlink(m_name.constData());
    }
    Q_DISABLE_COPY_MOVE(NewFile)

    /*! Gives the code of what went wrong, or 0; the old file is then as it was. */
    int write(const QByteArray &data, mode_t mode);

private:
    int open();
    int giveName(int descriptor);

    const QByteArray m_path;
    QByteArray m_name;
    bool m_hasName = false;
};

int NewFile::open()
{
#ifdef O_TMPFILE
    // Has no name until it is whole, so that nothing is left where the program is killed. The name
    // is given by way of a folder that a closed environment may lack.
    if (access("/proc/self/fd", X_OK) == 0) {
        const int descriptor
            = ::open(folderOf(m_path).constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600);
        if (descriptor >= 0)
            return descriptor;
    }
#endif
    const int named = mkostemp(m_name.data(), O_CLOEXEC);
    m_hasName = named >= 0;
    return named;
}

int NewFile::giveName(int descriptor)
{
    if (m_hasName)
        return 0;
    const QByteArray source = "/proc/self/fd/" + QByteArray::number(descriptor);
    for (int number = 0; number < 100; ++number) {
        const QByteArray name = folderOf(m_path) + "/.mvrtext-" + QByteArray::number(getpid()) + '-'
            + QByteArray::number(number);
        if (linkat(AT_FDCWD, source.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW)
            == 0) {
            m_name = name;
            m_hasName = true;
            return 0;
        }
        if (errno != EEXIST)
            return errno;
    }
    return EEXIST;
}

int NewFile::write(const QByteArray &data, mode_t mode)
{
    const OpenFile file(open());
    if (!file.isOpen())
        return errno;
    if (const int fault = file.write(data))
        return fault;
    if (fchmod(file.descriptor(), mode) != 0 || fsync(file.descriptor()) != 0)
        return errno;
    if (const int fault = giveName(file.descriptor()))
        return fault;
    if (rename(m_name.constData(), m_path.constData()) != 0)
        return errno;
    m_hasName = false;
    return 0;
}

}

QStringList System::arguments(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << fileNameFromBytes(argv[i]);
    return arguments;
}

void System::prepareStandardStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) == -1 && errno == EBADF
            && open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY) < 0)
            return;
    }
}

bool System::isTerminal(FILE *stream)
{
    return isatty(fileno(stream));
}

int System::terminalColumns()
{
    winsize size = {};
    const bool isKnown = isatty(STDOUT_FILENO) && ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0;
    return isKnown ? size.ws_col : 0;
}

bool System::hasRoomFor(size_t size)
{
    void *const room = mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return room != MAP_FAILED && munmap(room, size) == 0;
}

void System::giveMemoryBack()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

bool System::isSameFile(const QString &one, const QString &other)
{
    struct stat first = {};
    struct stat second = {};
    return stat(fileNameToBytes(one).constData(), &first) == 0
        && stat(fileNameToBytes(other).constData(), &second) == 0 && first.st_dev == second.st_dev
        && first.st_ino == second.st_ino;
}

int System::writeFile(const QString &path, const QByteArray &data)
{
    const QByteArray name = fileNameToBytes(path);
    struct stat old = {};
    if (stat(name.constData(), &old) != 0)
        return errno == ENOENT ? NewFile(missingTarget(name)).write(data, newMode()) : errno;
    if (S_ISDIR(old.st_mode))
        return EISDIR;
    if (!S_ISREG(old.st_mode)) {
        // Pipes and devices cannot be replaced; they take the text as it comes.
        const OpenFile file(openFile(path, O_WRONLY));
        return file.isOpen() ? file.write(data) : errno;
    }
    if (access(name.constData(), W_OK) != 0)
        return errno;
    return NewFile(target(name)).write(data, old.st_mode & 07777);
}
