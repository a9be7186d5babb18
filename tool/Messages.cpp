// SPDX-License-Identifier: MIT
#include <tool/Messages.h>

#include <tool/FileName.h>
#include <tool/System.h>

#include <QJsonDocument>

#include <cstdio>
#include <system_error>

namespace {

void print(std::FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
    std::fflush(stream);
}

}

void printMessage(const QString &file, const QString &text)
{
    QString line = QStringLiteral("mvrtext: ");
    if (!file.isEmpty())
        line += file + QLatin1String(": ");
    print(stderr, shownOnTerminal(line + text) + QLatin1Char('\n'));
}

void printOutput(const QString &text)
{
    if (const int fault = System::writeStandardOutput(text.toUtf8()))
        throw std::system_error(fault, std::generic_category());
}

QString jsonText(const QJsonDocument &document)
{
    QString text;
    const QString json = QString::fromUtf8(document.toJson());
    for (const QChar character : json) {
        if (character.unicode() >= 0x7f && character.category() == QChar::Other_Control)
            text += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QLatin1Char('0'));
        else
            text += character;
    }
    return text;
}

QString displayName(const QString &path, const QString &nameOfStream)
{
    return path == QLatin1String("-") ? nameOfStream : shownOnTerminal(path);
}

QString counted(int count, const char *singular, const char *plural)
{
    return QString::number(count) + QLatin1Char(' ') + Tool::tr(count == 1 ? singular : plural);
}

void addCounted(QStringList *words, int count, const char *singular, const char *plural)
{
    if (count > 0)
        *words << counted(count, singular, plural);
}
