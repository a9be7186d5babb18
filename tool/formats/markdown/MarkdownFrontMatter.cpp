// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownFrontMatter.h>

#include <QRegularExpression>
#include <QStringList>
#include <QVector>

namespace {

// Words that a text may begin with too ("Note: …") are not among them.
constexpr const char *metadataKeys[] = {
    "title",      "author",          "date",   "subtitle",     "keywords",
    "copyright",  "language",        "css",    "affiliation",  "base header level",
    "latex mode", "quotes language", "email",  "bibliography", "version",
    "abstract",   "subject",         "format", "html header",  "transclude base",
};

constexpr int maxLines = 1000;

struct Entry
{
    QString key; // in small letters
    QString value;
};

/*! A line of its own, or one that goes on with the value before. */
bool addLine(const QString &line, bool takesLists, QVector<Entry> *entries)
{
    static const QRegularExpression start(QStringLiteral("^([\\w][\\w .-]*):(?:[ \\t]+(.*)|)$"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    const QRegularExpressionMatch match = start.match(line);
    if (match.hasMatch()) {
        entries->append({match.captured(1).trimmed().toLower(), match.captured(2).trimmed()});
        return true;
    }
    const bool isListItem = takesLists && line.startsWith(QLatin1String("- "));
    if (entries->isEmpty()
        || !(isListItem || line.startsWith(QLatin1Char(' ')) || line.startsWith(QLatin1Char('\t'))))
        return takesLists && (line.trimmed().isEmpty() || line.startsWith(QLatin1Char('#')));
    QString more = line.trimmed();
    const bool isNext = takesLists && more.startsWith(QLatin1String("- "));
    QString &value = entries->last().value;
    if (isNext)
        more = more.mid(2).trimmed();
    if (!value.isEmpty() && value != QLatin1String("|") && value != QLatin1String(">"))
        more = value + QLatin1String(isNext ? ", " : " ") + more;
    value = more;
    return true;
}

QString unescaped(const QString &quoted)
{
    const QLatin1String angleBracket("x3C");
    QString text;
    for (int at = 0; at < quoted.size(); ++at) {
        const bool isEscape = quoted.at(at) == QLatin1Char('\\') && at + 1 < quoted.size();
        if (isEscape && QStringView(quoted).mid(at + 1).startsWith(angleBracket)) {
            text += QLatin1Char('<');
            at += int(angleBracket.size());
        } else {
            at += isEscape ? 1 : 0;
            text += quoted.at(at);
        }
    }
    return text;
}

QString yamlText(QString value)
{
    if (value.startsWith(QLatin1Char('[')) && value.endsWith(QLatin1Char(']'))
        && value.size() > 1) {
        QStringList parts = value.mid(1, value.size() - 2).split(QLatin1Char(','));
        for (QString &part : parts)
            part = part.trimmed().remove(QLatin1Char('"'));
        return parts.join(QLatin1String(", "));
    }
    const bool isQuoted = value.size() > 1 && value.front() == value.back();
    if (isQuoted && value.startsWith(QLatin1Char('"'))) {
        return unescaped(value.mid(1, value.size() - 2));
    }
    if (isQuoted && value.startsWith(QLatin1Char('\'')))
        return value.mid(1, value.size() - 2).replace(QLatin1String("''"), QLatin1String("'"));
    return value;
}

MarkdownFrontMatter fromEntries(const QVector<Entry> &entries, bool isYaml)
{
    MarkdownFrontMatter found;
    for (const Entry &entry : entries) {
        const QString value = isYaml ? yamlText(entry.value) : entry.value;
        if (entry.key == QLatin1String("title"))
            found.title = value;
        else if (entry.key == QLatin1String("author") || entry.key == QLatin1String("authors"))
            found.author = value;
        else
            found.hasMore = true;
    }
    return found;
}

/*! The entries before the line that ends them, and where the text goes on; -1 for no metadata. */
int readEntries(const QString &text, bool isYaml, QVector<Entry> *entries)
{
    int start = isYaml ? int(text.indexOf(QLatin1Char('\n'))) + 1 : 0;
    for (int number = 0; number < maxLines; ++number) {
        const int end = int(text.indexOf(QLatin1Char('\n'), start));
        const QString line = text.mid(start, end < 0 ? -1 : end - start);
        const int next = end < 0 ? int(text.size()) : end + 1;
        const bool isEnd = isYaml
            ? line.trimmed() == QLatin1String("---") || line.trimmed() == QLatin1String("...")
            : line.trimmed().isEmpty();
        if (isEnd)
            return entries->isEmpty() ? -1 : next;
        if (!addLine(line, isYaml, entries))
            return -1;
        if (end < 0)
            return isYaml ? -1 : next;
        start = next;
    }
    return -1;
}

QString quoted(QString text)
{
    static const QRegularExpression plain(QStringLiteral("^[^\\W\\d_][\\w ,.()-]*$"),
                                          QRegularExpression::UseUnicodePropertiesOption);
    text = text.simplified();
    static const QStringList words {QStringLiteral("true"), QStringLiteral("false"),
                                    QStringLiteral("yes"),  QStringLiteral("no"),
                                    QStringLiteral("null"), QStringLiteral("on"),
                                    QStringLiteral("off")};
    if (plain.match(text).hasMatch() && !words.contains(text.toLower()))
        return text;
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('"'), QLatin1String("\\\""));
    text.replace(QLatin1Char('<'), QLatin1String("\\x3C")); // pages may show it as it is
    return QLatin1Char('"') + text + QLatin1Char('"');
}

} // namespace

bool beginsMetadata(const QString &line)
{
    const int colon = int(line.indexOf(QLatin1Char(':')));
    const QString key = line.left(colon).trimmed().toLower();
    for (const char *known : metadataKeys) {
        if (colon > 0 && key == QLatin1String(known))
            return true;
    }
    return false;
}

MarkdownFrontMatter MarkdownFrontMatter::take(QString *text)
{
    const int lineEnd = int(text->indexOf(QLatin1Char('\n')));
    const QString first = text->left(lineEnd);
    const bool isYaml = first.trimmed() == QLatin1String("---")
        && !first.startsWith(QLatin1Char(' ')) && lineEnd > 0 && lineEnd + 1 < text->size()
        && text->at(lineEnd + 1) != QLatin1Char('\n');
    if (!isYaml && !beginsMetadata(first))
        return {};
    QVector<Entry> entries;
    const int end = readEntries(*text, isYaml, &entries);
    if (end < 0)
        return {};
    text->remove(0, end);
    return fromEntries(entries, isYaml);
}

QString MarkdownFrontMatter::toYaml() const
{
    QString lines;
    if (!title.simplified().isEmpty())
        lines += QStringLiteral("title: ") + quoted(title) + QLatin1Char('\n');
    if (!author.simplified().isEmpty())
        lines += QStringLiteral("author: ") + quoted(author) + QLatin1Char('\n');
    return lines.isEmpty() ? lines : QStringLiteral("---\n") + lines + QStringLiteral("---\n\n");
}
