// SPDX-License-Identifier: MIT
#include <tool/formats/TextDecoding.h>

#include <tool/Messages.h>

#include <core/TextDecoder_p.h>

#include <algorithm>
#include <cstring>

namespace {

QString decoded(const QByteArray &bytes)
{
    bool hasErrors = false;
    const QString text = TextDecoder::decodeUnicode(bytes, &hasErrors);
    if (!hasErrors || TextDecoder::mark(bytes).encoding)
        return text;
    return TextDecoder("windows-1252").decode(bytes);
}

/*! The encoding that a page names in its first bytes; empty where it names none. */
QByteArray declaredCharset(const QByteArray &page)
{
    const QByteArray start = page.left(1024).toLower();
    const int meta = int(start.indexOf("<meta"));
    const int word = meta < 0 ? -1 : int(start.indexOf("charset=", meta));
    if (word < 0)
        return QByteArray();
    const char *name = start.constData() + word + std::strlen("charset=");
    name += std::strspn(name, " \"'");
    const QByteArray charset(name, int(std::strcspn(name, " \"'/>;")));
    return charset.startsWith("utf-16") ? QByteArray() : charset; // its bytes could not be read so
}

bool isStrayControl(QChar character)
{
    const ushort code = character.unicode();
    return code < 0x20 && code != '\t' && code != '\n' && code != '\r' && code != '\f';
}

}

bool decodeText(const QByteArray &bytes, QString *text)
{
    QString result = decoded(bytes);
    const auto controls = std::count_if(result.cbegin(), result.cend(), isStrayControl);
    // One in a hundred is more than any old text file has and less than any binary one.
    if (controls > 1 && controls > result.size() / 100)
        return false;
    if (controls > 0)
        result.truncate(
            int(std::remove_if(result.begin(), result.end(), isStrayControl) - result.begin()));
    result.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    result.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    *text = result;
    return true;
}

QString notTextError()
{
    return Tool::tr("not a text file");
}

QString nestingError()
{
    return Tool::tr("its elements are nested too deep");
}

QString decodeHtml(const QByteArray &bytes)
{
    TextDecoder declared(declaredCharset(bytes).constData());
    if (TextDecoder::mark(bytes).encoding || !declared.isValid())
        return TextDecoder::decodeUnicode(bytes);
    return declared.decode(bytes);
}
