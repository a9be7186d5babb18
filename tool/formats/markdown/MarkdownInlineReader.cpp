// SPDX-License-Identifier: MIT
#include <tool/formats/markdown/MarkdownInlineReader.h>

#include <tool/formats/markdown/MarkdownComments.h>
#include <tool/formats/markdown/MarkdownLook.h>
#include <tool/formats/markdown/MarkdownMarks.h>

#include <QColor>
#include <QRegularExpression>
#include <QTextImageFormat>

#include <array>

using namespace MarkdownLook;

namespace {

struct HtmlTag
{
    const char *name;
    Style style;
};

constexpr HtmlTag htmlTags[] = {
    {"b", Bold},        {"strong", Bold}, {"i", Italic},        {"em", Italic},
    {"s", Strike},      {"del", Strike},  {"strike", Strike},   {"u", Underline},
    {"ins", Underline}, {"code", Code},   {"sup", Superscript}, {"sub", Subscript},
};

/*! Follows the nodes of one paragraph. */
class InlineReader
{
public:
    explicit InlineReader(const QTextCharFormat &format)
        : m_base(format)
    {
    }

    void read(cmark_node *block);
    MarkdownText take() { return {std::move(m_runs), std::move(m_notes)}; }

private:
    void enter(cmark_node *node);
    void change(Style style, int by) { m_depths[indexOf(style)] += by; }
    static int indexOf(Style style) { return int(qCountTrailingZeroBits(uint(style))); }
    QTextCharFormat format() const;
    void addText(const QString &text, const QTextCharFormat &format);
    void addHtml(const QString &html);
    bool addTag(const QString &html);
    void addImage(cmark_node *node);
    void openLink(cmark_node *node);

    QTextCharFormat m_base;
    std::array<int, styleCount> m_depths {};
    QString m_href; // null outside of links
    QString m_linkTitle;
    MarkdownRuns m_runs;
    QVector<MarkdownNote> m_notes;
    int m_length = 0;
};

QTextCharFormat InlineReader::format() const
{
    QTextCharFormat format = m_base;
    for (int i = 0; i < styleCount; ++i) {
        if (m_depths[size_t(i)] > 0)
            setStyle(&format, Style(1 << i));
    }
    if (!m_href.isNull()) {
        setMarkdownLink(&format, m_href);
        if (!m_linkTitle.isEmpty())
            format.setToolTip(m_linkTitle);
    }
    return format;
}

void InlineReader::addText(const QString &text, const QTextCharFormat &format)
{
    if (text.isEmpty())
        return;
    m_length += text.size();
    if (!m_runs.isEmpty() && m_runs.last().format == format)
        m_runs.last().text += text;
    else
        m_runs.append({text, format});
}

/*! A start or end tag that a style answers to, or a break. */
bool InlineReader::addTag(const QString &html)
{
    static const QRegularExpression pattern(QStringLiteral("^<(/?)([A-Za-z]+)\\s*(/?)>$"));
    const QRegularExpressionMatch match = pattern.match(html);
    if (!match.hasMatch())
        return false;
    const QString name = match.captured(2).toLower();
    if (name == QLatin1String("br")) {
        addText(QString(QChar::LineSeparator), format());
        return true;
    }
    for (const HtmlTag &tag : htmlTags) {
        if (name != QLatin1String(tag.name))
            continue;
        const bool isEnd = !match.captured(1).isEmpty();
        if (isEnd && m_depths[size_t(indexOf(tag.style))] == 0)
            return false;
        change(tag.style, isEnd ? -1 : 1);
        return true;
    }
    return false;
}

void InlineReader::addHtml(const QString &html)
{
    const QString comment = htmlComment(html);
    if (!comment.isNull()) {
        MarkdownNote note;
        note.start = note.end = m_length;
        note.comment = {{comment, QTextCharFormat()}};
        if (!comment.isEmpty())
            m_notes.append(note);
    } else if (!addTag(html)) {
        addText(html, format());
    }
}

// What a picture is called may have formats, which nobody sees.
void InlineReader::addImage(cmark_node *node)
{
    QString alternative;
    const CmarkIterator iterator(cmark_iter_new(node));
    while (cmark_iter_next(iterator.get()) != CMARK_EVENT_DONE) {
        cmark_node *inner = cmark_iter_get_node(iterator.get());
        if (cmark_iter_get_event_type(iterator.get()) == CMARK_EVENT_ENTER)
            alternative += cmarkText(inner);
    }
    QTextImageFormat image;
    image.merge(format());
    image.setName(MarkdownMarks::unmarked(QString::fromUtf8(cmark_node_get_url(node))));
    image.setProperty(QTextFormat::ImageAltText, MarkdownMarks::unmarked(alternative));
    const QString title = MarkdownMarks::unmarked(QString::fromUtf8(cmark_node_get_title(node)));
    if (!title.isEmpty())
        image.setProperty(QTextFormat::ImageTitle, title);
    m_runs.append({QString(QChar::ObjectReplacementCharacter), image});
    ++m_length;
}

void InlineReader::openLink(cmark_node *node)
{
    m_href = MarkdownMarks::unmarked(QString::fromUtf8(cmark_node_get_url(node)));
    if (m_href.isNull())
        m_href = QLatin1String("");
    m_linkTitle = MarkdownMarks::unmarked(QString::fromUtf8(cmark_node_get_title(node)));
}

void InlineReader::enter(cmark_node *node)
{
    const cmark_node_type type = cmark_node_get_type(node);
    if (type == CMARK_NODE_TEXT) {
        addText(cmarkText(node), format());
    } else if (type == CMARK_NODE_SOFTBREAK) {
        addText(QStringLiteral(" "), format());
    } else if (type == CMARK_NODE_LINEBREAK) {
        addText(QString(QChar::LineSeparator), format());
    } else if (type == CMARK_NODE_CODE) {
        QTextCharFormat code = format();
        setStyle(&code, Code);
        addText(MarkdownMarks::unmarked(cmarkText(node)), code);
    } else if (type == CMARK_NODE_HTML_INLINE) {
        addHtml(MarkdownMarks::unmarked(cmarkText(node)));
    } else if (type == CMARK_NODE_FOOTNOTE_REFERENCE) {
        MarkdownNote note;
        note.start = note.end = m_length;
        note.footnote = cmarkText(node).toInt() - 1;
        m_notes.append(note);
    }
}

void InlineReader::read(cmark_node *block)
{
    const CmarkIterator iterator(cmark_iter_new(block));
    for (cmark_event_type event; (event = cmark_iter_next(iterator.get())) != CMARK_EVENT_DONE;) {
        cmark_node *node = cmark_iter_get_node(iterator.get());
        const cmark_node_type type = cmark_node_get_type(node);
        const int by = event == CMARK_EVENT_ENTER ? 1 : -1;
        if (node == block) {
            continue;
        } else if (type == CMARK_NODE_EMPH) {
            change(Italic, by);
        } else if (type == CMARK_NODE_STRONG) {
            change(Bold, by);
        } else if (isCmarkKind(node, "strikethrough")) {
            change(Strike, by);
        } else if (type == CMARK_NODE_LINK && by > 0) {
            openLink(node);
        } else if (type == CMARK_NODE_LINK) {
            m_href = QString();
        } else if (type == CMARK_NODE_IMAGE) {
            if (by > 0) {
                addImage(node);
                cmark_iter_reset(iterator.get(), node, CMARK_EVENT_EXIT);
            }
        } else if (by > 0) {
            enter(node);
        }
    }
}

} // namespace

int MarkdownText::length() const
{
    int sum = 0;
    for (const MarkdownRun &run : runs)
        sum += run.text.size();
    return sum;
}

MarkdownText readMarkdownText(cmark_node *node, const QTextCharFormat &format)
{
    InlineReader reader(format);
    reader.read(node);
    return withMarksRead(reader.take());
}

QString htmlComment(const QString &html)
{
    // A line that begins with a comment and ends with another one has text in between.
    if (!html.startsWith(QLatin1String("<!--"))
        || html.indexOf(QLatin1String("-->"), 4) != html.size() - 3)
        return QString();
    const QString content = html.mid(4, qMax(0, int(html.size()) - 7)).trimmed();
    return content.isNull() ? QString(QLatin1String("")) : content;
}
