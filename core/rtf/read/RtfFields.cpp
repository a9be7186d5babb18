// SPDX-License-Identifier: MIT
#include <core/rtf/read/RtfFields.h>

#include <core/rtf/lex/RtfCodePages.h>
#include <core/rtf/lex/RtfSymbolFonts.h>

#include <QByteArray>

namespace {

// One argument: quoted, or up to the next blank. A backslash takes the next character as it is.
QString nextArgument(const QString &instruction, int *at)
{
    while (*at < instruction.size() && instruction.at(*at).isSpace())
        ++*at;
    QString argument;
    const bool quoted = *at < instruction.size() && instruction.at(*at) == QLatin1Char('"');
    if (quoted)
        ++*at;
    for (; *at < instruction.size(); ++*at) {
        const QChar character = instruction.at(*at);
        if (quoted ? character == QLatin1Char('"') : character.isSpace()) {
            ++*at;
            break;
        }
        if (quoted && character == QLatin1Char('\\') && *at + 1 < instruction.size())
            ++*at;
        argument += instruction.at(*at);
    }
    return argument;
}

QString symbolCharacter(char32_t code, const QString &font, bool isUnicode)
{
    if (isUnicode && code >= 0x20 && code < 0x110000 && !QChar::isSurrogate(code))
        return QString::fromUcs4(&code, 1);
    if (code < 0x20 || code > 0xff)
        return {};
    const auto byte = static_cast<unsigned char>(code);
    if (!font.isEmpty())
        return RtfSymbolFonts::character(RtfSymbolFonts::codePage(font), byte);
    QString text;
    RtfCodePages().decode(RtfCodePages::Western, QByteArray(1, static_cast<char>(byte)), &text);
    return text;
}

QString symbolText(const QString &instruction, int at)
{
    bool isNumber = false;
    const uint code = nextArgument(instruction, &at).toUInt(&isNumber, 0); // 0x is hexadecimal
    QString font;
    bool isUnicode = false;
    while (at < instruction.size()) {
        const QString argument = nextArgument(instruction, &at).toLower();
        if (argument == QLatin1String("\\f"))
            font = nextArgument(instruction, &at);
        isUnicode = isUnicode || argument == QLatin1String("\\u");
    }
    return isNumber ? symbolCharacter(code, font, isUnicode) : QString();
}

// EQ \o\ad(\s\up 9(reading),words): LibreOffice and Word write phonetic guides so.
QString wordsWithReading(const QString &instruction)
{
    const int raised = instruction.indexOf(QLatin1String("\\s\\up"));
    const int start = instruction.indexOf(QLatin1Char('('), raised) + 1;
    const int comma = instruction.indexOf(QLatin1String("),"), start);
    const int end = instruction.lastIndexOf(QLatin1Char(')'));
    if (raised < 0 || start <= 0 || comma < 0 || end < comma + 2)
        return {};
    return instruction.mid(comma + 2, end - comma - 2) + QChar(0xff08)
        + instruction.mid(start, comma - start) + QChar(0xff09);
}

// The letters of a formula: "\\s\\up8(ab)" raises "ab", "\\f(1,2)" is a fraction.
QString formulaText(const QString &formula)
{
    QString text;
    for (int at = 0; at < formula.size(); ++at) {
        const QChar character = formula.at(at);
        if (character == QLatin1Char('\\')) {
            const bool isSwitch = at + 1 < formula.size() && formula.at(at + 1).isLetter();
            while (isSwitch && at + 1 < formula.size() && formula.at(at + 1).isLetterOrNumber())
                ++at;
            if (!isSwitch && at + 1 < formula.size())
                text += formula.at(++at); // an escaped parenthesis or comma
            continue;
        }
        if (character == QLatin1Char(','))
            text += QLatin1Char('/');
        else if (character != QLatin1Char('(') && character != QLatin1Char(')'))
            text += character;
    }
    return text.trimmed();
}

} // namespace

namespace RtfFields {

QString linkTarget(const QString &instruction)
{
    int at = 0;
    if (nextArgument(instruction, &at).compare(QLatin1String("HYPERLINK"), Qt::CaseInsensitive)
        != 0)
        return {};
    QString target;
    QString bookmark;
    while (at < instruction.size()) {
        if (instruction.at(at).isSpace()) {
            ++at;
            continue;
        }
        const bool isQuoted = instruction.at(at) == QLatin1Char('"');
        const QString argument = nextArgument(instruction, &at);
        if (isQuoted || !argument.startsWith(QLatin1Char('\\'))) {
            if (target.isEmpty())
                target = argument;
        } else if (argument == QLatin1String("\\l")) {
            bookmark = nextArgument(instruction, &at);
        } else if (argument == QLatin1String("\\o") || argument == QLatin1String("\\t")) {
            nextArgument(instruction, &at); // the tool tip, the frame
        }
    }
    return bookmark.isEmpty() ? target : target + QLatin1Char('#') + bookmark;
}

QString shownText(const QString &instruction)
{
    int at = 0;
    const QString kind = nextArgument(instruction, &at).toUpper();
    if (kind == QLatin1String("SYMBOL"))
        return symbolText(instruction, at);
    return kind == QLatin1String("EQ") ? wordsWithReading(instruction) : QString();
}

bool isPageNumber(const QString &instruction)
{
    int at = 0;
    const QString kind = nextArgument(instruction, &at).toUpper();
    return kind == QLatin1String("PAGE") || kind == QLatin1String("NUMPAGES")
        || kind == QLatin1String("SECTIONPAGES");
}

QString textWithoutResult(const QString &instruction)
{
    int at = 0;
    const QString kind = nextArgument(instruction, &at).toUpper();
    if (kind == QLatin1String("GOTOBUTTON") || kind == QLatin1String("MACROBUTTON")) {
        nextArgument(instruction, &at); // where it goes, what it runs
        return instruction.mid(at).trimmed();
    }
    if (kind == QLatin1String("EQ"))
        return formulaText(instruction.mid(at));
    if (kind == QLatin1String("PAGEREF") || kind == QLatin1String("REF")
        || kind == QLatin1String("NOTEREF"))
        return kind + QLatin1Char(' ') + nextArgument(instruction, &at);
    return {};
}

} // namespace RtfFields
