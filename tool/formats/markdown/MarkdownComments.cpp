// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownComments.h>

#include <tool/formats/markdown/MarkdownMarks.h>

#include <core/MVRTextRange.h>

#include <QColor>

#include <algorithm>

namespace {

bool holdsMarks(const MarkdownRuns &runs)
{
    return std::any_of(runs.cbegin(), runs.cend(), [](const MarkdownRun &run) {
        return std::any_of(run.text.cbegin(), run.text.cend(), MarkdownMarks::isMark);
    });
}

/*! Where an address that begins at \a start ends. */
int addressEnd(const QString &text, int start)
{
    int end = start;
    int open = 0;
    for (; end < text.size(); ++end) {
        const QChar c = text.at(end);
        if (c.isSpace() || c == QLatin1Char('<') || c == QChar::ObjectReplacementCharacter)
            break;
        if (c.unicode() >= MarkdownMarks::commentStart && c.unicode() < MarkdownMarks::pipe) {
            // Two of three signs stand behind the mark, the first one before it.
            end -= c.unicode() == MarkdownMarks::address || end == start ? 0 : 1;
            break;
        }
        open += c == QLatin1Char('(') ? 1 : 0;
    }
    int closed = int(QStringView(text).mid(start, end - start).count(QLatin1Char(')')));
    for (; end > start; --end) { // what ends a sentence is no part of it
        const QChar last = text.at(end - 1);
        if (last == QLatin1Char(')') && closed <= open)
            break;
        closed -= last == QLatin1Char(')') ? 1 : 0;
        if (!QStringView(u"?!.,:;*_~'\")]").contains(last))
            break;
    }
    return end;
}

/*! The text without what was dropped; the places of notes move along. */
class Rebuilding
{
public:
    Rebuilding(const QVector<MVRTextRange> &dropped, const QString &text)
        : m_places(text.size() + 1)
    {
        int to = 0;
        auto next = dropped.cbegin();
        for (int at = 0; at < text.size(); ++at) {
            while (next != dropped.cend() && next->end <= at)
                ++next;
            m_places[at] = to;
            const bool isDropped = next != dropped.cend() && next->start <= at;
            if (!isDropped)
                to += MarkdownMarks::unmarked(QString(text.at(at))).size();
        }
        m_places[text.size()] = to;
    }

    /*! Where a place has gone. */
    int place(int at) const { return m_places.at(at); }
    bool isKept(int at) const { return m_places.at(at + 1) > m_places.at(at); }

private:
    QVector<int> m_places;
};

/*! Finds what the marks of one paragraph mean. */
class Marks
{
public:
    explicit Marks(const MarkdownText &text)
        : m_source(text)
    {
        for (const MarkdownRun &run : text.runs) {
            m_starts.append(m_text.size());
            m_text += run.text;
        }
    }

    MarkdownText read();

private:
    bool isComment(int brace) const
    {
        return brace + 1 < m_text.size()
            && m_text.at(brace + 1).unicode() == MarkdownMarks::commentStart;
    }
    int readComment(int mark);
    void readHighlightEnd(int mark);
    void drop(int start, int end) { m_dropped.append(MVRTextRange(start, end)); }
    MarkdownRuns runs(int start, int end) const;
    QTextCharFormat linkFormat(const MVRTextRange &link, QTextCharFormat format) const;
    MarkdownRuns rebuiltRuns(const Rebuilding &rebuilding) const;
    MarkdownText rebuilt() const;

    const MarkdownText &m_source;
    QString m_text;
    QVector<int> m_starts; // of the runs
    QVector<MVRTextRange> m_dropped; // in the order of their ends
    QVector<MVRTextRange> m_links;
    QVector<MarkdownNote> m_comments;
    QVector<int> m_highlights; // those that are open
    MVRTextRange m_about; // what a comment right behind it is about
    bool m_hasEnds = true; // of comments, further on
};

// Of each run the part that lies inside.
MarkdownRuns Marks::runs(int start, int end) const
{
    MarkdownRuns part;
    const auto first = std::upper_bound(m_starts.cbegin(), m_starts.cend(), start);
    for (int i = qMax(0, int(first - m_starts.cbegin()) - 1); i < m_starts.size(); ++i) {
        if (m_starts.at(i) >= end)
            break;
        const MarkdownRun &run = m_source.runs.at(i);
        const int from = qMax(start - m_starts.at(i), 0);
        const int to = qMin(end - m_starts.at(i), int(run.text.size()));
        if (from < to)
            part.append({MarkdownMarks::unmarked(run.text.mid(from, to - from)), run.format});
    }
    return part;
}

/*! \return where to go on */
int Marks::readComment(int mark)
{
    const int end = m_hasEnds ? int(m_text.indexOf(QChar(MarkdownMarks::commentEnd), mark)) : -1;
    m_hasEnds = end >= 0;
    if (mark == 0 || end < 0 || end + 1 >= m_text.size())
        return mark + 1;
    MarkdownNote note;
    note.start = mark - 1;
    note.end = end + 2;
    if (m_about.end == note.start) {
        note.start = m_about.start;
        m_about.end = note.end;
    } else {
        note.start = note.end;
    }
    note.comment = runs(mark + 2, end - 1);
    m_comments.append(note);
    drop(mark - 1, end + 2);
    return end + 2;
}

void Marks::readHighlightEnd(int mark)
{
    if (m_highlights.isEmpty() || !isComment(mark + 2))
        return;
    const int start = m_highlights.takeLast();
    drop(start - 1, start + 2);
    drop(mark - 1, mark + 2);
    m_about = MVRTextRange(start + 2, mark + 2);
}

MarkdownText Marks::read()
{
    m_about = MVRTextRange(-1, -1);
    for (int at = 0; at < m_text.size();) {
        const ushort c = m_text.at(at).unicode();
        if (c == MarkdownMarks::commentStart) {
            at = readComment(at);
            continue;
        }
        if (c == MarkdownMarks::highlightStart && at > 0)
            m_highlights.append(at);
        else if (c == MarkdownMarks::highlightEnd)
            readHighlightEnd(at);
        else if (c == MarkdownMarks::address)
            m_links.append(MVRTextRange(at + 1, addressEnd(m_text, at + 1)));
        ++at;
    }
    std::sort(m_dropped.begin(), m_dropped.end());
    return rebuilt();
}

/*! The format of a link's text, where it is no other link's. */
QTextCharFormat Marks::linkFormat(const MVRTextRange &link, QTextCharFormat format) const
{
    if (format.isAnchor())
        return format;
    const QString target = MarkdownMarks::unmarked(m_text.mid(link.start, link.end - link.start));
    const bool hasScheme = !target.startsWith(QLatin1String("www."), Qt::CaseInsensitive);
    setMarkdownLink(&format, hasScheme ? target : QLatin1String("http://") + target);
    return format;
}

MarkdownRuns Marks::rebuiltRuns(const Rebuilding &rebuilding) const
{
    MarkdownRuns result;
    int at = 0;
    auto link = m_links.cbegin();
    for (const MarkdownRun &run : m_source.runs) {
        bool wasLink = false;
        bool isNew = true;
        for (const QChar c : run.text) {
            while (link != m_links.cend() && link->end <= at) {
                ++link;
                isNew = true;
            }
            const bool isLink = link != m_links.cend() && link->start <= at;
            if (rebuilding.isKept(at++)) {
                if (isNew || isLink != wasLink)
                    result.append({QString(), isLink ? linkFormat(*link, run.format) : run.format});
                isNew = false;
                wasLink = isLink;
                result.last().text += MarkdownMarks::unmarked(QString(c));
            }
        }
    }
    return result;
}

MarkdownText Marks::rebuilt() const
{
    const Rebuilding rebuilding(m_dropped, m_text);
    MarkdownText result;
    result.runs = rebuiltRuns(rebuilding);
    result.notes = m_source.notes + m_comments;
    for (MarkdownNote &note : result.notes) {
        note.start = rebuilding.place(note.start);
        note.end = rebuilding.place(note.end);
    }
    return result;
}

} // namespace

MarkdownText withMarksRead(MarkdownText text)
{
    if (!holdsMarks(text.runs))
        return text;
    return Marks(text).read();
}

void setMarkdownLink(QTextCharFormat *format, const QString &target)
{
    format->setAnchor(true);
    format->setAnchorHref(target);
    format->setFontUnderline(true);
    format->setForeground(QColor(Qt::blue));
}
