// SPDX-License-Identifier: MIT
#include <core/xml/XmlText_p.h>

#include <algorithm>

namespace {

bool isXmlCharacter(QChar character)
{
    const ushort code = character.unicode();
    if (code >= 0x20)
        return code < 0xfffe && !character.isSurrogate();
    return code == '\t' || code == '\n' || code == '\r';
}

}

QString xmlText(const QString &text)
{
    if (std::all_of(text.cbegin(), text.cend(), isXmlCharacter))
        return text;
    QString clean;
    clean.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        const bool isPair = text.at(i).isHighSurrogate() && i + 1 < text.size()
            && text.at(i + 1).isLowSurrogate();
        if (isPair) {
            clean += text.at(i);
            clean += text.at(++i);
        } else if (isXmlCharacter(text.at(i))) {
            clean += text.at(i);
        }
    }
    return clean;
}

bool isXmlLayout(const QString &text)
{
    return text.contains(QLatin1Char('\n'))
        && std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
}
