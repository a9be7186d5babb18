// SPDX-License-Identifier: MIT
#include <tool/Messages.h>

#include <cstdio>

namespace {

void print(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
}

}

void printMessage(const QString &file, const QString &text)
{
    QString line = QStringLiteral("mvrtext: ");
    if (!file.isEmpty())
        line += file + QLatin1String(": ");
    print(stderr, line + text + QLatin1Char('\n'));
}

void printOutput(const QString &text)
{
    print(stdout, text);
    std::fflush(stdout);
}

QString displayName(const QString &path, const QString &nameOfStream)
{
    return path == QLatin1String("-") ? nameOfStream : path;
}

QString counted(int count, const char *singular, const char *plural)
{
    return QString::number(count) + QLatin1Char(' ') + Tool::tr(count == 1 ? singular : plural);
}
