#include <core/rtf/RtfFields.h>

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

QString quoted(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    return QLatin1Char('"') + text + QLatin1Char('"');
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

QString linkInstruction(const QString &target)
{
    if (target.startsWith(QLatin1Char('#')) && target.size() > 1)
        return QLatin1String("HYPERLINK \\l ") + quoted(target.mid(1));
    return QLatin1String("HYPERLINK ") + quoted(target);
}

} // namespace RtfFields
