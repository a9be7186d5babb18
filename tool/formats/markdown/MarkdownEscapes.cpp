// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownEscapes.h>

#include <QRegularExpression>

namespace MarkdownEscapes {

namespace {

constexpr const char *addressStarts[] = {"http:", "https:", "ftp:", "www."};

bool isLetterAt(const QString &text, int at)
{
    return at >= 0 && at < text.size() && text.at(at).isLetterOrNumber();
}

/*! Whether an entity ("&amp;") stands at \a at. */
bool isEntity(const QString &text, int at)
{
    static const QRegularExpression entity(
        QStringLiteral("\\G&(?:#[xX]?[0-9A-Fa-f]{1,8}|[A-Za-z][A-Za-z0-9]{1,40});"));
    return entity.match(text, at, QRegularExpression::NormalMatch).hasMatch();
}

/*! Whether the sign at \a at ends the start of an address, "https:" or "www.". */
bool endsAddressStart(const QString &text, int at)
{
    for (const char *start : addressStarts) {
        const QLatin1String sign(start);
        const int begin = at + 1 - int(sign.size());
        if (begin >= 0 && !isLetterAt(text, begin - 1)
            && QStringView(text).mid(begin, int(sign.size())).compare(sign, Qt::CaseInsensitive)
                == 0)
            return true;
    }
    return false;
}

bool startsSigns(const QString &text, int at, const char *signs)
{
    return QStringView(text).mid(at).startsWith(QLatin1String(signs));
}

bool isMarkup(const QString &text, int at)
{
    switch (text.at(at).unicode()) {
    case '\\':
    case '`':
    case '*':
    case '[':
    case ']':
    case '<':
    case '~':
    case '|':
        return true;
    case '_': // inside of a word it means nothing
        return !isLetterAt(text, at - 1) || !isLetterAt(text, at + 1);
    case '&':
        return isEntity(text, at);
    case '!': // a link or mark may follow
        return at + 1 == text.size();
    case '{': // a mark of a comment may follow, too
        return at + 1 == text.size() || text.at(at + 1) == QLatin1Char('=')
            || text.at(at + 1) == QLatin1Char('>');
    case '=':
        return startsSigns(text, at, "==}");
    case ':':
    case '.':
        return endsAddressStart(text, at);
    default:
        return false;
    }
}

// In targets entities are read before backslashes.
QString withoutEntities(QString text)
{
    for (int at = int(text.size()) - 1; at >= 0; --at) {
        if (text.at(at) == QLatin1Char('&') && isEntity(text, at))
            text.insert(at + 1, QLatin1String("amp;"));
    }
    return text;
}

} // namespace

QString escaped(const QString &text)
{
    QString result;
    result.reserve(text.size() + text.size() / 8);
    for (int at = 0; at < text.size(); ++at) {
        if (isMarkup(text, at))
            result += QLatin1Char('\\');
        result += text.at(at);
    }
    return result;
}

QString escapedLineStart(const QString &escaped, bool isFirst)
{
    static const QRegularExpression numbered(QStringLiteral("^[0-9]{1,9}([.)])(?:[ \\t]|$)"));
    static const QRegularExpression signs(
        QStringLiteral("^(?:#{1,6}(?:[ \\t]|$)|[-+](?:[-+ \\t:|]|\\\\|$)|>|:[-:])"));
    static const QRegularExpression underline(QStringLiteral("^=+[ \\t]*$"));
    QString text = escaped;
    const QRegularExpressionMatch number = numbered.match(text);
    if (number.hasMatch())
        return text.insert(number.capturedStart(1), QLatin1Char('\\'));
    if (signs.match(text).hasMatch() || (!isFirst && underline.match(text).hasMatch()))
        return QLatin1Char('\\') + text;
    return text;
}

QString codeSpan(const QString &code, bool isInTable)
{
    QString text = code;
    if (isInTable)
        text.replace(QLatin1Char('|'), QLatin1String("\\|"));
    int longest = 0;
    int run = 0;
    for (const QChar c : qAsConst(text)) {
        run = c == QLatin1Char('`') ? run + 1 : 0;
        longest = qMax(longest, run);
    }
    const QString ticks(longest + 1, QLatin1Char('`'));
    const bool hasBlanks = text.startsWith(QLatin1Char(' ')) && text.endsWith(QLatin1Char(' '))
        && !text.trimmed().isEmpty();
    const bool needsBlanks
        = hasBlanks || text.startsWith(QLatin1Char('`')) || text.endsWith(QLatin1Char('`'));
    const QString blank = needsBlanks ? QStringLiteral(" ") : QString();
    return ticks + blank + text + blank + ticks;
}

QString destination(const QString &target, const QString &title)
{
    static const QRegularExpression plain(QStringLiteral("^[^\\s<>()\\\\&\\[\\]|`{}]+$"));
    static const QRegularExpression special(QStringLiteral("([\\\\<>|`])"));
    static const QRegularExpression breaks(QStringLiteral("[\\r\\n\\x{2028}\\x{2029}]"));
    QString text = target;
    text.replace(breaks, QStringLiteral("%0A"));
    text = withoutEntities(text);
    if (!plain.match(text).hasMatch())
        text = QLatin1Char('<') + text.replace(special, QStringLiteral("\\\\1")) + QLatin1Char('>');
    if (title.isEmpty())
        return text;
    static const QRegularExpression inTitle(QStringLiteral("([\\\\\"|`<])"));
    return text + QLatin1String(" \"")
        + withoutEntities(title.simplified()).replace(inTitle, QStringLiteral("\\\\1"))
        + QLatin1Char('"');
}

} // namespace MarkdownEscapes
