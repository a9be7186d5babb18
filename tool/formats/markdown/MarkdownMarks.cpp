// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownMarks.h>

#include <algorithm>

namespace MarkdownMarks {

namespace {

// The parser's work grows by the square of these.
constexpr int maxCellsInLine = 1000;
constexpr int maxPicturesInParagraph = 1000;
// It fills each row of a table with empty cells, which would be many more than were written.
constexpr int spareCells = 100000;

constexpr char restored[] = {'>', '<', '=', '=', 0, '|', 0, 0};

struct Signs
{
    char text[4];
    ushort mark;
    int at; // which of the three it takes the place of
};

constexpr Signs allSigns[] = {
    {"{>>", commentStart, 1},
    {"<<}", commentEnd, 1},
    {"{==", highlightStart, 1},
    {"==}", highlightEnd, 1},
};

constexpr const char *addressStarts[] = {"http://", "https://", "ftp://", "www."};

bool isForbidden(QChar c)
{
    return (c.unicode() >= 0xfdd0 && c.unicode() <= 0xfdef) || c.unicode() >= 0xfffe
        || c == QChar::ParagraphSeparator || c == QChar::LineSeparator
        || c == QChar::ObjectReplacementCharacter || c.isNull();
}

bool startsAddress(const QString &text, int at)
{
    const QChar before = at > 0 ? text.at(at - 1) : QChar(QLatin1Char(' '));
    if (before.isLetterOrNumber() || before == QLatin1Char('<'))
        return false;
    for (const char *start : addressStarts) {
        const QLatin1String sign(start);
        const int end = at + int(sign.size());
        if (QStringView(text).mid(at, int(sign.size())).compare(sign, Qt::CaseInsensitive) == 0
            && end < text.size() && text.at(end).isLetterOrNumber())
            return true;
    }
    return false;
}

/*! Whether "[x] " or "[ ] " stands at \a at, behind a list's marker. */
bool isTask(const QString &text, int at)
{
    if (at + 3 >= text.size() || at < 2 || text.at(at + 2) != QLatin1Char(']')
        || !QStringView(u" xX").contains(text.at(at + 1)) || text.at(at + 3) != QLatin1Char(' ')
        || text.at(at - 1) != QLatin1Char(' '))
        return false;
    constexpr int maxBlanks = 4; // behind a marker
    int marker = at - 1;
    while (marker > 0 && at - marker <= maxBlanks && text.at(marker) == QLatin1Char(' '))
        --marker;
    return QStringView(u"-+*.)").contains(text.at(marker));
}

/*! Goes through the source once. */
class Marker
{
public:
    explicit Marker(const QString &source)
        : m_source(source)
    {
        m_marked.reserve(source.size() + source.size() / 8);
    }

    QString marked()
    {
        for (m_at = 0; m_at < m_source.size();)
            step();
        return m_marked;
    }

private:
    void step()
    {
        const QChar c = m_source.at(m_at);
        if (c == QLatin1Char('\n')) {
            m_cells = 0;
            if (m_at + 1 < m_source.size() && m_source.at(m_at + 1) == QLatin1Char('\n'))
                m_pictures = 0;
        } else if (c == QLatin1Char('\\')) { // and what it escapes
            m_marked += m_source.mid(m_at, 2);
            m_at += 2;
            return;
        } else if (putSigns()) {
            return;
        } else if (c == QLatin1Char('|') && ++m_cells > maxCellsInLine) {
            put(pipe);
            return;
        } else if (c == QLatin1Char('[') && m_marked.endsWith(QLatin1Char('!'))
                   && ++m_pictures > maxPicturesInParagraph) {
            m_marked += QChar(nothing);
        } else if (c == QLatin1Char('[') && isTask(m_source, m_at)) {
            m_marked += c;
            m_marked += QChar(task);
            ++m_at;
            return;
        } else if (c.isLetter() && startsAddress(m_source, m_at)) {
            m_marked += QChar(address);
        }
        m_marked += c;
        ++m_at;
    }

    void put(ushort mark)
    {
        m_marked += QChar(mark);
        ++m_at;
    }

    bool putSigns()
    {
        const QChar c = m_source.at(m_at);
        for (const Signs &signs : allSigns) {
            if (c != QLatin1Char(signs.text[0])
                || QStringView(m_source).mid(m_at, 3) != QLatin1String(signs.text, 3))
                continue;
            QString text = QString::fromLatin1(signs.text, 3);
            text[signs.at] = QChar(signs.mark);
            m_marked += text;
            m_at += 3;
            return true;
        }
        return false;
    }

    const QString &m_source;
    QString m_marked;
    int m_at = 0;
    int m_cells = 0;
    int m_pictures = 0;
};

bool isDelimiterRow(QStringView line)
{
    bool hasDash = false;
    for (const QChar c : line) {
        hasDash = hasDash || c == QLatin1Char('-');
        if (!QStringView(u"|:- \t>*+").contains(c) && !c.isDigit())
            return false;
    }
    return hasDash;
}

/*! Makes text of tables that the parser would fill up beyond what the source writes. */
QString withBoundedTables(const QString &source)
{
    QString bounded;
    qint64 cells = 0;
    qint64 columns = 0; // of the table that the lines may belong to
    int tableStart = -1;
    bool isFull = false;
    for (int start = 0; start < source.size();) {
        int end = source.indexOf(QLatin1Char('\n'), start);
        end = end < 0 ? int(source.size()) : end + 1;
        const QStringView line = QStringView(source).mid(start, end - start);
        if (line.trimmed().isEmpty()) {
            columns = 0;
        } else if (isFull && isDelimiterRow(line.trimmed())) {
            bounded += QChar(nothing);
        } else if (isDelimiterRow(line.trimmed())) {
            columns = qMax<qint64>(columns, std::count(line.begin(), line.end(), QChar(u'|')) + 1);
            tableStart = bounded.size();
        }
        cells += columns;
        if (columns > 0 && cells > spareCells + source.size()) {
            bounded.insert(tableStart, QChar(nothing));
            isFull = true;
            columns = 0;
        }
        bounded += line;
        start = end;
    }
    return bounded;
}

} // namespace

QString marked(const QString &source)
{
    QString clean = source;
    clean.truncate(int(std::remove_if(clean.begin(), clean.end(), isForbidden) - clean.begin()));
    return withBoundedTables(Marker(clean).marked());
}

QString unmarked(QString text)
{
    auto to = text.begin();
    for (const QChar c : qAsConst(text)) {
        if (!isMark(c))
            *to++ = c;
        else if (const char original = restored[c.unicode() - commentStart])
            *to++ = QLatin1Char(original);
    }
    text.truncate(int(to - text.begin()));
    return text;
}

} // namespace MarkdownMarks
