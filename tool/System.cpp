// SPDX-License-Identifier: MIT
// POSIX; Windows has SystemWindows.cpp.
#include <tool/System.h>

#include <tool/FileName.h>
#include <tool/OpenFile.h>

#include <cerrno>

#include <fcntl.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

int System::readFile(const QString &path, qint64 maxSize, QByteArray *data)
{
    const OpenFile file(open(fileNameToBytes(path).constData(), O_RDONLY | O_CLOEXEC));
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

QByteArray System::fileIdentity(const QString &path)
{
    struct stat file = {};
    if (stat(fileNameToBytes(path).constData(), &file) != 0)
        return {};
    return QByteArray::number(qulonglong(file.st_dev)) + ':'
        + QByteArray::number(qulonglong(file.st_ino));
}
