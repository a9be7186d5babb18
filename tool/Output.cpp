// SPDX-License-Identifier: MIT
#include <tool/Output.h>

#include <tool/Messages.h>
#include <tool/System.h>

#include <cerrno>
#include <cstring>

namespace {

constexpr qint64 maxInputSize = 1 << 30; // a QByteArray ends at twice that

bool isStream(const QString &path)
{
    return path == QLatin1String("-");
}

QString reason(int code)
{
    return QString::fromLocal8Bit(std::strerror(code));
}

}

bool readInput(const QString &path, QByteArray *data, QString *error)
{
    const int fault = isStream(path) ? System::readStandardInput(maxInputSize, data)
                                     : System::readFile(path, maxInputSize, data);
    if (fault != 0)
        *error = fault == EFBIG ? Tool::tr("is larger than 1 GiB") : reason(fault);
    return fault == 0;
}

bool writeOutput(const QString &path, const QByteArray &data, QString *error)
{
    QString failed;
    return writeOutputs({{path, data}}, &failed, error);
}

bool writeOutputs(const QVector<OutputFile> &files, QString *failed, QString *error)
{
    System::NewFiles written;
    int fault = 0;
    for (const OutputFile &file : files) {
        *failed = file.path;
        fault = isStream(file.path) ? System::writeStandardOutput(file.data)
                                    : written.add(file.path, file.data);
        if (fault != 0)
            break;
    }
    if (fault == 0)
        fault = written.takePlaces();
    if (fault != 0)
        *error = reason(fault);
    return fault == 0;
}
