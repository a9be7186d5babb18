// SPDX-License-Identifier: MIT
#include <tool/formats/TextDecoding.h>

#include <QTextCodec>

#include <algorithm>

namespace {

QString decoded(const QByteArray &bytes)
{
    if (const QTextCodec *marked = QTextCodec::codecForUtfText(bytes, nullptr))
        return marked->toUnicode(bytes);

    QTextCodec::ConverterState state;
    const QTextCodec *utf8 = QTextCodec::codecForName("UTF-8");
    const QString text = utf8->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars == 0 && state.remainingChars == 0)
        return text;
    return QTextCodec::codecForName("windows-1252")->toUnicode(bytes);
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
    return QStringLiteral("not a text file");
}

QString nestingError()
{
    return QStringLiteral("its elements are nested too deep");
}
