// SPDX-License-Identifier: MIT
#include <tool/formats/HtmlLimits.h>

#include <tool/Messages.h>
#include <tool/formats/HtmlLookAlikes.h>
#include <tool/formats/TextDecoding.h>

#include <core/html/HtmlTokens_p.h>

#include <QSet>
#include <QVector>

#include <algorithm>

namespace {

// Qt's HTML parser walks up the open elements for each new one.
constexpr int maxElementDepth = 1000;
// HTML itself ends spans at 1000 columns.
constexpr int maxSpan = 1000;
// Empty cells that spans may add for each cell that is written.
constexpr int spannedPerCell = 8;
// A table takes room for all columns in each row. A cell takes Qt some 0.3 ms and 6 KB.
constexpr qint64 roomPerCell = 16;
constexpr qint64 roomAllowance = 10000;
// Qt looks through a list for each of its items: this many take some 3 s.
constexpr int maxListItems = 10000;
// Comparing an element with a part of a rule takes some 60 ns.
constexpr qint64 maxComparisons = 30000000;

// A picture has Qt look through the paragraph before it, some 15 ns for a character and 100 ns for
// a tag: this many take some 2 s.
constexpr qint64 maxBeforePictures = 60000000;
constexpr qint64 charactersPerTag = 6;

// Qt compares the picture behind a paragraph with all others.
constexpr int maxBackgrounds = 500;

QSet<QString> namesIn(const char *names)
{
    const QStringList list = QString::fromLatin1(names).split(QLatin1Char(' '));
    return QSet<QString>(list.cbegin(), list.cend());
}

// Elements that need no end tag, or have none, as Qt knows: they do not nest.
bool isNesting(const QString &tag)
{
    static const QSet<QString> others
        = namesIn("br dd dt hr img li meta p tbody td tfoot th thead tr");
    return !others.contains(tag);
}

// Elements of which Qt makes nothing, but waits for an end tag that they do not have.
bool isUnused(const QString &tag)
{
    static const QSet<QString> names
        = namesIn("area base col embed input link option param source track wbr");
    return names.contains(tag);
}

bool beginsParagraph(const QString &tag)
{
    static const QSet<QString> names
        = namesIn("blockquote center dd div dl dt h1 h2 h3 h4 h5 h6 hr li p");
    return names.contains(tag);
}

/*! A number in the text, and what is to stand there. */
struct Span
{
    int start;
    int end;
    int number;
};

struct Cell
{
    int row;
    Span rows; // start < 0: it says nothing
    Span columns;
};

struct Table
{
    int rows = 0;
    QVector<Cell> cells;
};

class HtmlCheck
{
public:
    explicit HtmlCheck(const QString &html)
        : m_html(html)
        , m_lookAlikes(html)
    {
    }

    BoundedHtml run();

private:
    void addTag(const HtmlTag &tag);
    void addPicture(const HtmlTag &tag);
    void addBackgrounds(const HtmlTag &tag);
    void addTableTag(const QString &name, const HtmlTag &tag);
    void addListTag(const QString &name, bool isEnd);
    int endOf(QLatin1String tag, int start) const;
    void dropOpenComments(int start, int end);
    int skipStyle(int start);
    bool isNamed(const HtmlAttribute &attribute, const char *name) const
    {
        return QStringView(m_html)
                   .mid(attribute.start, attribute.nameEnd - attribute.start)
                   .compare(QLatin1String(name), Qt::CaseInsensitive)
            == 0;
    }
    QStringView valueOf(const HtmlAttribute &attribute) const
    {
        return QStringView(m_html).mid(attribute.valueStart,
                                       attribute.valueEnd - attribute.valueStart);
    }
    Span span(const HtmlTag &tag, const char *name) const;
    static int lastColumn(const Table &table);
    void closeTable();
    QString rewritten() const;

    const QString &m_html;
    HtmlLookAlikes m_lookAlikes;
    int m_depth = 0;
    int m_deepest = 0;
    qint64 m_elements = 0;
    qint64 m_ruleParts = 0;
    qint64 m_cells = 0;
    qint64 m_room = 0;
    QVector<int> m_openLists; // their items
    int m_mostItems = 0;
    QVector<Table> m_open;
    QVector<Span> m_spans; // to be rewritten
    QVector<QPair<int, int>> m_styles; // what stands in style elements
    QVector<QPair<int, int>> m_unused; // tags to be left out
    QVector<int> m_backgrounds; // where style attributes name pictures
    int m_lastTagEnd = 0;
    qint64 m_paragraph = 0; // its characters so far, and its tags
    qint64 m_beforePictures = 0;
    int m_scriptStart = 0; // from where to where nothing begins a comment
    int m_scriptEnd = 0;
};

BoundedHtml HtmlCheck::run()
{
    HtmlTag tag;
    for (int next = m_html.indexOf(QLatin1Char('<')); next >= 0;
         next = m_html.indexOf(QLatin1Char('<'), next)) {
        // The toolkit takes no notice of CDATA sections and instructions.
        const bool isComment = QStringView(m_html).mid(next, 4) == QLatin1String("<!--")
            && (next < m_scriptStart || next >= m_scriptEnd);
        int end = isComment ? htmlPassageEnd(m_html, next) : next + 1;
        if (isHtmlTagStart(m_html, next)) {
            if (!readHtmlTag(m_html, next, &tag))
                break;
            addTag(tag);
            end = tag.end;
            const QStringView name
                = QStringView(m_html).mid(tag.nameStart, tag.nameEnd - tag.nameStart);
            if (!tag.isEnd && name.compare(QLatin1String("style"), Qt::CaseInsensitive) == 0)
                end = skipStyle(tag.end);
            if (!tag.isEnd && tag.end > m_scriptEnd
                && name.compare(QLatin1String("script"), Qt::CaseInsensitive) == 0)
                dropOpenComments(tag.end, endOf(QLatin1String("</script"), tag.end));
        }
        next = end;
    }
    while (!m_open.isEmpty())
        closeTable();
    m_lookAlikes.finish();

    BoundedHtml result;
    if (m_deepest > maxElementDepth)
        result.error = nestingError();
    else if (m_room > roomAllowance + m_cells * roomPerCell)
        result.error = Tool::tr("its tables have too many empty cells");
    else if (m_mostItems > maxListItems)
        result.error = Tool::tr("one of its lists has too many items");
    else
        result.html = rewritten();
    result.hasLostStyles = m_ruleParts * m_elements > maxComparisons;
    result.hasLostPlaces = m_lookAlikes.hasLostPlaces();
    result.hasLostPictures = m_beforePictures > maxBeforePictures;
    return result;
}

void HtmlCheck::addTag(const HtmlTag &tag)
{
    const QString name = m_html.mid(tag.nameStart, tag.nameEnd - tag.nameStart).toLower();
    m_paragraph += charactersPerTag + tag.start - m_lastTagEnd;
    m_lastTagEnd = tag.end;
    if (isUnused(name)) {
        m_unused.append({tag.start, tag.end});
        return;
    }
    if (!tag.isEnd)
        ++m_elements;
    if (name == QLatin1String("img"))
        addPicture(tag);
    else
        addBackgrounds(tag);
    if (beginsParagraph(name) || (!m_open.isEmpty() && name == QLatin1String("td")))
        m_paragraph = 0;
    if (isNesting(name))
        m_depth = qMax(0, m_depth + (tag.isEnd ? -1 : 1));
    m_deepest = qMax(m_deepest, m_depth);
    addTableTag(name, tag);
    addListTag(name, tag.isEnd);
    m_lookAlikes.addTag(tag, name);
}

void HtmlCheck::addPicture(const HtmlTag &tag)
{
    m_beforePictures += m_paragraph;
    if (m_beforePictures > maxBeforePictures)
        m_unused.append({tag.start, tag.end});
}

void HtmlCheck::addBackgrounds(const HtmlTag &tag)
{
    static const QLatin1String picture("url(");
    for (const HtmlAttribute &attribute : tag.attributes) {
        if (!isNamed(attribute, "style"))
            continue;
        const QStringView value = valueOf(attribute);
        for (auto at = value.indexOf(picture, 0, Qt::CaseInsensitive); at >= 0;
             at = value.indexOf(picture, at + 1, Qt::CaseInsensitive))
            m_backgrounds.append(attribute.valueStart + int(at));
    }
}

void HtmlCheck::addListTag(const QString &name, bool isEnd)
{
    if (name == QLatin1String("ul") || name == QLatin1String("ol")) {
        if (!isEnd && m_deepest <= maxElementDepth)
            m_openLists.append(0);
        else if (isEnd && !m_openLists.isEmpty())
            m_openLists.removeLast();
    } else if (name == QLatin1String("li") && !isEnd && !m_openLists.isEmpty()) {
        m_mostItems = qMax(m_mostItems, ++m_openLists.last());
    }
}

void HtmlCheck::addTableTag(const QString &name, const HtmlTag &tag)
{
    if (name == QLatin1String("table") && !tag.isEnd) {
        if (m_deepest <= maxElementDepth)
            m_open.append(Table());
    } else if (name == QLatin1String("table") && !m_open.isEmpty()) {
        closeTable();
    } else if (tag.isEnd || m_open.isEmpty()) {
        return;
    } else if (name == QLatin1String("tr")) {
        ++m_open.last().rows;
    } else if (name == QLatin1String("td") || name == QLatin1String("th")) {
        Table &table = m_open.last();
        table.rows = qMax(table.rows, 1);
        table.cells.append({table.rows - 1, span(tag, "rowspan"), span(tag, "colspan")});
    }
}

/*! The number that an attribute gives; of several the last one counts, as it does for Qt. */
Span HtmlCheck::span(const HtmlTag &tag, const char *name) const
{
    Span span {-1, -1, 1};
    for (const HtmlAttribute &attribute : tag.attributes) {
        if (!isNamed(attribute, name))
            continue;
        bool isNumber = false;
        const int number = valueOf(attribute).trimmed().toString().toInt(&isNumber);
        span
            = {attribute.valueStart, attribute.valueEnd, isNumber ? qBound(1, number, maxSpan) : 1};
    }
    return span;
}

/*! Where \a tag follows on \a start, or the text ends. */
int HtmlCheck::endOf(QLatin1String tag, int start) const
{
    const auto end = m_html.indexOf(tag, start, Qt::CaseInsensitive);
    return int(end < 0 ? m_html.size() : end);
}

/*!
    Leaves out the marks that begin comments and no comment ends between \a start and \a end, which
    are those of a script or style sheet: Qt would take the rest of the document for the comment.
*/
void HtmlCheck::dropOpenComments(int start, int end)
{
    const QStringView text = QStringView(m_html).mid(start, end - start);
    const int ended = qMax(0, int(text.lastIndexOf(QLatin1String("-->"))));
    for (int at = int(text.indexOf(QLatin1String("<!--"), ended)); at >= 0;
         at = int(text.indexOf(QLatin1String("<!--"), at + 4)))
        m_unused.append({start + at, start + at + 4});
    m_scriptStart = start + ended;
    m_scriptEnd = end;
}

/*! Counts the parts of the rules in a style element; returns the position of its end. */
int HtmlCheck::skipStyle(int start)
{
    const int end = endOf(QLatin1String("</style"), start);
    dropOpenComments(start, end);
    for (int position = start; position < end; ++position) {
        const QChar c = m_html.at(position);
        m_ruleParts += int(c == QLatin1Char('{') || c == QLatin1Char(',') || c == QLatin1Char('>')
                           || c == QLatin1Char('+') || isHtmlSpace(c));
    }
    m_styles.append({start, end});
    return end;
}

/*!
    The last column of a table in which a cell may begin. What spans more than the columns up to it
    adds columns without cells, which browsers draw without width, and Qt with padding and borders.
*/
int HtmlCheck::lastColumn(const Table &table)
{
    constexpr int most = 1000000; // which is refused in any case
    QVector<int> widths(table.rows); // columns that are taken in each row
    int last = 0;
    for (const Cell &cell : table.cells) {
        last = qMax(last, widths[cell.row]);
        const int end = cell.row + qMin(cell.rows.number, table.rows - cell.row);
        for (int row = cell.row; row < end; ++row)
            widths[row] = qMin(most, widths[row] + cell.columns.number);
    }
    return last;
}

/*! Bounds the spans of the innermost open table, and adds the room that it takes. */
void HtmlCheck::closeTable()
{
    const Table table = m_open.takeLast();
    const int columns = lastColumn(table) + 1;
    const bool hasHighCells = std::any_of(table.cells.cbegin(), table.cells.cend(),
                                          [](const Cell &cell) { return cell.rows.number > 1; });
    QVector<int> widths(table.rows); // columns that are taken in each row
    int spare = table.cells.size() * spannedPerCell;
    for (Cell cell : table.cells) {
        cell.rows.number = qMin(cell.rows.number, table.rows - cell.row);
        // Below cells of rows above, cells may begin further on the left than is counted here.
        const int start = hasHighCells ? 0 : widths[cell.row];
        cell.columns.number = qMin(cell.columns.number, qMax(1, columns - start));
        cell.columns.number = qMin(cell.columns.number, qMax(1, (1 + spare) / cell.rows.number));
        cell.rows.number = qMin(cell.rows.number, (1 + spare) / cell.columns.number);
        spare -= cell.rows.number * cell.columns.number - 1;
        for (int row = 0; row < cell.rows.number; ++row)
            widths[cell.row + row] += cell.columns.number;
        for (const Span &span : {cell.rows, cell.columns}) {
            if (span.start >= 0)
                m_spans.append(span);
        }
    }
    const int widest = widths.isEmpty() ? 0 : *std::max_element(widths.cbegin(), widths.cend());
    m_cells += table.cells.size();
    m_room += qint64(table.rows) * widest;
}

QString HtmlCheck::rewritten() const
{
    struct Edit
    {
        int start;
        int end;
        QString text;
    };
    QVector<Edit> edits;
    for (const Span &span : m_spans)
        edits.append({span.start, span.end, QString::number(span.number)});
    if (m_ruleParts * m_elements > maxComparisons) {
        for (const QPair<int, int> &style : m_styles)
            edits.append({style.first, style.second, QString()});
    }
    for (const int at : m_backgrounds) {
        if (m_backgrounds.size() > maxBackgrounds)
            edits.append({at, at + 4, QStringLiteral("none(")});
    }
    const QVector<QPair<int, int>> unnamed = m_lookAlikes.unnamed();
    for (const QPair<int, int> &name : unnamed)
        edits.append({name.first, name.second, QStringLiteral("x")});
    for (const QPair<int, int> &tag : m_unused)
        edits.append({tag.first, tag.second, QString()});
    std::sort(edits.begin(), edits.end(),
              [](const Edit &a, const Edit &b) { return a.start < b.start; });
    QString html;
    html.reserve(m_html.size());
    int copied = 0;
    for (const Edit &edit : edits) {
        if (edit.start < copied) // in a tag that is left out
            continue;
        html.append(m_html.constData() + copied, edit.start - copied);
        html += edit.text;
        copied = edit.end;
    }
    html.append(m_html.constData() + copied, m_html.size() - copied);
    return html;
}

}

BoundedHtml boundedHtml(const QString &html)
{
    return HtmlCheck(html).run();
}
