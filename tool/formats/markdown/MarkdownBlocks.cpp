// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownBlocks.h>

#include <tool/formats/markdown/MarkdownLook.h>

#include <core/MVRTextFormat.h>

namespace {

constexpr int maxNumber = 999999999;

bool isNumbered(const QTextList &list)
{
    const QTextListFormat::Style style = list.format().style();
    return style <= QTextListFormat::ListDecimal && style >= QTextListFormat::ListUpperRoman;
}

int startOf(const QTextListFormat &format)
{
    if (!format.hasProperty(MVRTextFormat::ListStartProperty))
        return 1;
    return qBound(0, format.intProperty(MVRTextFormat::ListStartProperty), maxNumber);
}

QString trimmedEnd(QString text)
{
    while (text.endsWith(QLatin1Char(' ')))
        text.chop(1);
    return text;
}

/*! What tells a list from its neighbour: "-", "*", "." or ")". */
QChar sign(const QString &marker)
{
    const int blank = int(marker.indexOf(QLatin1Char(' ')));
    return blank > 0 ? marker.at(blank - 1) : QChar();
}

QString taskMark(const QTextBlock &block)
{
    const QTextBlockFormat::MarkerType marker = block.blockFormat().marker();
    if (marker == QTextBlockFormat::MarkerType::NoMarker)
        return QString();
    return marker == QTextBlockFormat::MarkerType::Checked ? QStringLiteral("[x] ")
                                                           : QStringLiteral("[ ] ");
}

} // namespace

MarkdownBlocks::MarkdownBlocks(const QString &label)
{
    if (label.isEmpty())
        return;
    Container note;
    note.marker = label;
    note.indent = -1; // below all lists
    m_open.append(note);
}

int MarkdownBlocks::quoteLevel(const QTextBlock &block)
{
    return qBound(0, block.blockFormat().intProperty(QTextFormat::BlockQuoteLevel), 90);
}

/*! Whether \a list is what was open \a before, or the next piece of a long list. */
bool MarkdownBlocks::goesOn(QTextList *before, QTextList *list) const
{
    if (before == list || !before || !list || before->count() < MarkdownLook::maxListItems)
        return before == list;
    const QTextListFormat a = before->format();
    const QTextListFormat b = list->format();
    return a.style() == b.style() && a.indent() == b.indent()
        && a.numberSuffix() == b.numberSuffix()
        && (!isNumbered(*list) || startOf(b) == m_numbers.value(before));
}

void MarkdownBlocks::closeTo(int count)
{
    while (m_open.size() > count) {
        if (!m_open.last().isMarkerWritten)
            write(QString());
        m_closedList = m_open.last().list;
        m_closedMarker = m_open.last().marker;
        m_closedAt = int(m_open.size()) - 1;
        m_open.removeLast();
    }
}

QString MarkdownBlocks::marker(const QTextBlock &block, bool isNewList)
{
    QTextList *list = block.textList();
    const QTextListFormat format = list->format();
    if (!isNumbered(*list)) {
        const bool isNeighbour = isNewList && m_closedAt == m_open.size()
            && m_closedMarker.startsWith(QLatin1Char('-'));
        const bool isOther = !isNewList && m_open.last().marker.startsWith(QLatin1Char('*'));
        return QLatin1String(isNeighbour || isOther ? "* " : "- ");
    }
    auto number = m_numbers.find(list);
    if (number == m_numbers.end()) {
        number = m_numbers.insert(list, startOf(format));
    }
    const QLatin1Char end(format.numberSuffix().startsWith(QLatin1Char(')')) ? ')' : '.');
    const QString text = QString::number(*number) + end + QLatin1Char(' ');
    *number = qMin(*number + 1, maxNumber);
    return text;
}

void MarkdownBlocks::openItem(const QTextBlock &block, int quotes)
{
    QTextList *list = block.textList();
    const int indent = qMax(1, list->format().indent());
    const bool isSame = !m_open.isEmpty() && goesOn(m_open.last().list, list);
    Container item;
    item.list = list;
    item.indent = indent;
    item.quotes = isSame ? m_open.last().quotes : quotes;
    item.marker = marker(block, !isSame);
    if (isSame) {
        if (!m_open.last().isMarkerWritten)
            write(QString());
        m_open.removeLast();
    } else {
        const bool isNeighbour = m_closedAt == m_open.size() && m_closedList
            && sign(m_closedMarker) == sign(item.marker);
        if (isNeighbour) { // or both would be one list
            m_needsBlankLine = true;
            write(QStringLiteral("<!-- -->"));
            m_needsBlankLine = true;
        }
        // Only such a list may follow a paragraph without an empty line.
        const bool mayInterrupt = item.marker.size() == 2
            || (item.marker.size() == 3 && item.marker.startsWith(QLatin1Char('1')));
        m_isTight
            = !m_open.isEmpty() && m_open.last().list && mayInterrupt && !block.text().isEmpty();
        // An item that begins with another one stands where that one's marker goes.
        if (!m_open.isEmpty() && m_open.last().list && !m_open.last().isMarkerWritten)
            m_isTight = m_open.last().isTight;
    }
    if (isSame)
        m_isTight = true;
    item.isTight = m_isTight;
    m_open.append(item);
}

void MarkdownBlocks::enter(const QTextBlock &block, bool isParagraph)
{
    const int quotes = quoteLevel(block);
    QTextList *list = block.textList();
    const int indent = list ? qMax(1, list->format().indent()) : block.blockFormat().indent();
    m_closedList = nullptr;
    m_closedAt = -1;
    m_isTight = false;
    int keep = int(m_open.size());
    while (keep > 0) {
        const Container &last = m_open.at(keep - 1);
        const bool isOwn = list && last.list && goesOn(last.list, list) && last.quotes == quotes;
        if (!last.list || isOwn || (last.quotes <= quotes && last.indent < indent)
            || (!list && last.quotes <= quotes && last.indent == indent))
            break;
        --keep;
    }
    closeTo(keep);
    if (list)
        openItem(block, quotes);
    m_quotes = quotes;
    if (list && isParagraph)
        m_open.last().marker += taskMark(block);
}

void MarkdownBlocks::enterTable()
{
    closeTo(!m_open.isEmpty() && !m_open.first().list ? 1 : 0);
    m_quotes = 0;
    m_isTight = false;
}

void MarkdownBlocks::setIsNoteBody(bool isNoteBody)
{
    if (isNoteBody != m_isNoteBody)
        closeTo(0);
    if (isNoteBody && !m_isNoteBody) {
        Container note;
        note.indent = -1;
        note.marker = QStringLiteral("    ");
        note.isMarkerWritten = true;
        m_open.append(note);
    }
    m_isNoteBody = isNoteBody;
}

/*! What stands before a line; markers that were not written yet are written with it. */
QString MarkdownBlocks::prefix(bool isBlankLine, int sharedQuotes)
{
    QString text;
    int quotes = 0;
    const int most = qMin(m_quotes, sharedQuotes);
    for (Container &container : m_open) {
        for (; quotes < qMin(container.quotes, most); ++quotes)
            text += QLatin1String("> ");
        if (container.isMarkerWritten || isBlankLine) {
            const int width
                = container.list ? int(container.marker.indexOf(QLatin1Char(' '))) + 1 : 4;
            text += QString(width, QLatin1Char(' '));
        } else {
            text += container.marker;
            container.isMarkerWritten = true;
        }
    }
    for (; quotes < most; ++quotes)
        text += QLatin1String("> ");
    return text;
}

void MarkdownBlocks::separate()
{
    if (m_needsBlankLine || (!m_isFirst && !m_isTight))
        m_out += trimmedEnd(prefix(true, m_quotesBefore)) + QLatin1Char('\n');
    m_needsBlankLine = false;
}

void MarkdownBlocks::write(const QString &lines)
{
    separate();
    const QStringList all = lines.split(QLatin1Char('\n'));
    for (const QString &line : all)
        m_out += (line.isEmpty() ? trimmedEnd(prefix(false)) : prefix(false) + line)
            + QLatin1Char('\n');
    m_isFirst = false;
    m_isTight = false;
    m_quotesBefore = m_quotes;
}

QString MarkdownBlocks::take()
{
    closeTo(0);
    return m_out;
}
