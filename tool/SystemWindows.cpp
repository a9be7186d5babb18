// SPDX-License-Identifier: MIT
#include <tool/System.h>

#include <cerrno>
#include <memory>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <process.h>
#include <shellapi.h>

namespace {

constexpr int pieceSize = 1 << 20;

using File = std::unique_ptr<FILE, decltype(&std::fclose)>;

const wchar_t *wide(const QString &path)
{
    return reinterpret_cast<const wchar_t *>(path.utf16());
}

/*! "N" keeps it from other programs that this one starts. */
File openFile(const QString &path, const wchar_t *mode)
{
    return File(_wfopen(wide(path), mode), &std::fclose);
}

HANDLE handleOf(FILE *file)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
}

// In pieces: a device never ends.
int read(FILE *file, qint64 maxSize, QByteArray *data)
{
    if (_filelengthi64(_fileno(file)) > maxSize)
        return EFBIG;
    QByteArray piece(pieceSize, Qt::Uninitialized);
    data->clear();
    while (data->size() <= maxSize) {
        const size_t count = std::fread(piece.data(), 1, size_t(piece.size()), file);
        data->append(piece.constData(), int(count));
        if (count == 0)
            return std::ferror(file) != 0 ? EIO : 0;
    }
    return EFBIG;
}

int write(FILE *file, const QByteArray &data)
{
    const size_t size = size_t(data.size());
    const bool isWhole
        = std::fwrite(data.constData(), 1, size, file) == size && std::fflush(file) == 0;
    return isWhole ? 0 : errno;
}

int writeBeside(const QString &path, const QByteArray &data)
{
    const File file = openFile(path, L"wbN");
    if (!file)
        return errno;
    const int fault = write(file.get(), data);
    return fault == 0 && _commit(_fileno(file.get())) != 0 ? errno : fault;
}

}

// Those that the system hands over are cut to its code page.
QStringList System::arguments(int, char *[])
{
    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&LocalFree)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    QStringList arguments;
    for (int i = 1; words && i < count; ++i)
        arguments << QString::fromWCharArray(words.get()[i]);
    return arguments;
}

void System::prepareStandardStreams()
{
    for (FILE *stream : {stdin, stdout, stderr})
        _setmode(_fileno(stream), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
}

// No signal ends a program there but Ctrl+C, and no user limits the sizes of files.
void System::prepareSignals() { }

bool System::isTerminal(FILE *stream)
{
    // Lines are taken back by control sequences, which a console has to be asked to heed.
    DWORD mode = 0;
    return _isatty(_fileno(stream)) && GetConsoleMode(handleOf(stream), &mode) != 0
        && SetConsoleMode(handleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

int System::terminalColumns()
{
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &info) == 0)
        return 0;
    return info.srWindow.Right - info.srWindow.Left + 1;
}

bool System::hasRoomFor(size_t size)
{
    void *const room = VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_NOACCESS);
    return room != nullptr && VirtualFree(room, 0, MEM_RELEASE) != 0;
}

void System::giveMemoryBack() { }

QByteArray System::fileIdentity(const QString &path)
{
    BY_HANDLE_FILE_INFORMATION found = {};
    const File file = openFile(path, L"rbN");
    if (!file || GetFileInformationByHandle(handleOf(file.get()), &found) == 0)
        return {};
    return QByteArray::number(qulonglong(found.dwVolumeSerialNumber)) + ':'
        + QByteArray::number(qulonglong(found.nFileIndexHigh)) + ':'
        + QByteArray::number(qulonglong(found.nFileIndexLow));
}

int System::readFile(const QString &path, qint64 maxSize, QByteArray *data)
{
    const File file = openFile(path, L"rbN");
    return file ? read(file.get(), maxSize, data) : errno;
}

int System::readStandardInput(qint64 maxSize, QByteArray *data)
{
    return read(stdin, maxSize, data);
}

struct System::NewFiles::Private
{
    struct File
    {
        QString beside;
        QString path;
    };
    QVector<File> files;
};

System::NewFiles::NewFiles()
    : d(std::make_unique<Private>())
{
}

System::NewFiles::~NewFiles()
{
    for (const Private::File &file : qAsConst(d->files))
        _wunlink(wide(file.beside));
}

int System::NewFiles::add(const QString &path, const QByteArray &data)
{
    const QString beside = path + QStringLiteral(".mvrtext-%1").arg(_getpid());
    d->files.append({beside, path});
    return writeBeside(beside, data);
}

int System::NewFiles::takePlaces()
{
    const DWORD manner = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
    for (const Private::File &file : qAsConst(d->files)) {
        if (MoveFileExW(wide(file.beside), wide(file.path), manner) == 0)
            return EACCES;
    }
    return 0;
}

int System::writeStandardOutput(const QByteArray &data)
{
    return write(stdout, data);
}
