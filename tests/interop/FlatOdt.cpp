// SPDX-License-Identifier: MIT
#include "Content.h"

#include <QHash>
#include <QSet>
#include <QXmlStreamReader>

#include <utility>

namespace {

/*! Attributes by qualified name, those of text and paragraphs apart. */
struct Style
{
    QString parent;
    Properties text;
    Properties paragraph;
    QStringList tabs; // position and type in turn
};

struct Table
{
    int row = -1;
    int column = 0;
    QString cell;
};

double pointsOf(const QString &length)
{
    static const QHash<QString, double> units {{QStringLiteral("cm"), 72 / 2.54},
                                               {QStringLiteral("mm"), 72 / 25.4},
                                               {QStringLiteral("in"), 72},
                                               {QStringLiteral("pt"), 1},
                                               {QStringLiteral("px"), 0.75}};
    return length.chopped(qMin(2, length.size())).toDouble() * units.value(length.right(2), 0);
}

QString colorOf(const QString &value)
{
    return value == QLatin1String("transparent") ? QString() : value;
}

void merge(const Properties &from, Properties *to)
{
    static const QString color = QStringLiteral("fo:color");
    static const QString automatic = QStringLiteral("style:use-window-font-color");
    if (from.contains(color))
        to->remove(automatic);
    for (auto it = from.begin(); it != from.end(); ++it)
        to->insert(it.key(), it.value());
    if (to->value(automatic) == QLatin1String("true"))
        to->remove(color);
}

QString underlineText(const Properties &style)
{
    static const QHash<QString, QString> names {
        {QStringLiteral("solid"), QStringLiteral("single")},
        {QStringLiteral("dotted"), QStringLiteral("dot")},
        {QStringLiteral("long-dash"), QStringLiteral("dash")}};
    const QString kind = style.value(QStringLiteral("style:text-underline-style"));
    return kind == QLatin1String("none") ? QString() : names.value(kind, kind);
}

QString positionText(const QString &value)
{
    if (value.startsWith(QLatin1String("super")))
        return QStringLiteral("super");
    if (value.startsWith(QLatin1String("sub")))
        return QStringLiteral("sub");
    const double rise = value.section(QLatin1Char('%'), 0, 0).toDouble();
    return rise == 0 ? QString() : rise > 0 ? QStringLiteral("super") : QStringLiteral("sub");
}

Properties charProperties(const Properties &style, const QHash<QString, QString> &fonts)
{
    const auto value = [&](const char *name) { return style.value(QString::fromLatin1(name)); };
    const auto is = [&](const char *name, const char *wanted, const char *text) {
        return QString::fromLatin1(value(name) == QLatin1String(wanted) ? text : "");
    };
    Properties properties;
    setProperty(&properties, "font",
                fonts.value(value("style:font-name"), value("fo:font-family")));
    setProperty(&properties, "size", lengthText(pointsOf(value("fo:font-size"))));
    setProperty(&properties, "bold", is("fo:font-weight", "bold", "yes"));
    setProperty(&properties, "italic", is("fo:font-style", "italic", "yes"));
    setProperty(&properties, "underline", underlineText(style));
    const QString underlineColor = value("style:text-underline-color");
    if (underlineColor.startsWith(QLatin1Char('#'))
        && properties.contains(QStringLiteral("underline")))
        setProperty(&properties, "underline colour", underlineColor);
    const QString strike = value("style:text-line-through-style");
    setProperty(&properties, "strike",
                strike.isEmpty() || strike == QLatin1String("none") ? "" : "yes");
    setProperty(&properties, "position", positionText(value("style:text-position")));
    setProperty(&properties, "capitals",
                is("fo:text-transform", "uppercase", "all")
                    + is("fo:font-variant", "small-caps", "small"));
    setProperty(&properties, "colour", value("fo:color"));
    setProperty(&properties, "background", colorOf(value("fo:background-color")));
    setProperty(&properties, "letter spacing", lengthText(pointsOf(value("fo:letter-spacing"))));
    return properties;
}

QString lineHeightText(const Properties &style)
{
    const QString height = style.value(QStringLiteral("fo:line-height"));
    const double least = pointsOf(style.value(QStringLiteral("style:line-height-at-least")));
    if (height.endsWith(QLatin1Char('%')))
        return height == QLatin1String("100%") ? QString() : height;
    if (pointsOf(height) > 0)
        return lengthText(pointsOf(height)) + QLatin1String(" exactly");
    return least > 0 ? lengthText(least) + QLatin1String(" at least") : QString();
}

QString alignmentText(const QString &value)
{
    static const QHash<QString, QString> names {{QStringLiteral("start"), {}},
                                                {QStringLiteral("left"), {}},
                                                {QStringLiteral("end"), QStringLiteral("right")}};
    return names.value(value, value);
}

Properties blockProperties(const Properties &style)
{
    const auto value = [&](const char *name) { return style.value(QString::fromLatin1(name)); };
    const auto length = [&](const char *name) { return lengthText(pointsOf(value(name))); };
    Properties properties;
    setProperty(&properties, "alignment", alignmentText(value("fo:text-align")));
    setProperty(&properties, "left", length("fo:margin-left"));
    setProperty(&properties, "first line", length("fo:text-indent"));
    setProperty(&properties, "right", length("fo:margin-right"));
    setProperty(&properties, "before", length("fo:margin-top"));
    setProperty(&properties, "after", length("fo:margin-bottom"));
    setProperty(&properties, "line height", lineHeightText(style));
    setProperty(&properties, "page break",
                value("fo:break-before") == QLatin1String("page") ? "before" : "");
    setProperty(&properties, "keep together",
                value("fo:keep-together") == QLatin1String("always") ? "yes" : "");
    setProperty(&properties, "direction",
                value("style:writing-mode") == QLatin1String("rl-tb") ? "right to left" : "");
    setProperty(&properties, "shading", colorOf(value("fo:background-color")));
    return properties;
}

class FlatOdtReader
{
public:
    FlatOdtReader(const QByteArray &bytes, Content *content)
        : m_xml(bytes)
        , m_content(content)
    {
    }

    bool read();

private:
    QString attribute(const char *name) const
    {
        return m_xml.attributes().value(QLatin1String(name)).toString();
    }
    bool isElement(const char *name) const { return m_xml.qualifiedName() == QLatin1String(name); }
    static QString key(const QString &family, const QString &name)
    {
        return family + QLatin1Char(' ') + name;
    }

    void readStyles();
    void readStyle();
    void readListStyle();
    void readSettings();
    void readBlocks();
    void readBlock();
    void readList();
    void readTable();
    void readRow();
    void readParagraph();
    void readInline(Content::Paragraph *paragraph, const Properties &style, const QString &link);
    bool readCharacter(Content::Paragraph *paragraph, const Properties &style, const QString &link);
    void readDrawing(Content::Paragraph *paragraph, const Properties &style, const QString &link);
    void readNote(const Content::Paragraph &paragraph);
    void readComment(const Content::Paragraph &paragraph);
    void append(Content::Paragraph *paragraph, const QString &text, const Properties &style,
                const QString &link);
    Style resolved(const QString &family, const QString &name) const;
    QString tabsText(const Style &style) const;
    QString textOfNote(const char *body);

    QXmlStreamReader m_xml;
    Content *m_content;
    QHash<QString, Style> m_styles;
    QHash<QString, QString> m_fonts;
    QHash<QString, QString> m_lists; // by name and level
    QStringList m_openLists;
    QVector<Table> m_tables;
    bool m_isItem = false;
    bool m_tabsFollowIndent = true;
    bool m_breakBefore = false;
    QString m_bookmark;
    QHash<QString, int> m_comments; // by name
};

bool FlatOdtReader::read()
{
    m_xml.readNextStartElement();
    while (m_xml.readNextStartElement()) {
        if (isElement("office:settings"))
            readSettings();
        else if (isElement("office:font-face-decls") || isElement("office:styles")
                 || isElement("office:automatic-styles"))
            readStyles();
        else if (isElement("office:body"))
            readBlocks();
        else
            m_xml.skipCurrentElement();
    }
    return !m_xml.hasError();
}

void FlatOdtReader::readSettings()
{
    while (m_xml.readNextStartElement()) {
        if (attribute("config:name") == QLatin1String("TabsRelativeToIndent"))
            m_tabsFollowIndent = m_xml.readElementText() == QLatin1String("true");
        else if (isElement("config:config-item"))
            m_xml.skipCurrentElement();
        else
            readSettings();
    }
}

void FlatOdtReader::readStyles()
{
    while (m_xml.readNextStartElement()) {
        if (isElement("style:style") || isElement("style:default-style")) {
            readStyle();
        } else if (isElement("text:list-style")) {
            readListStyle();
        } else {
            if (isElement("style:font-face"))
                m_fonts.insert(attribute("style:name"),
                               attribute("svg:font-family").remove(QLatin1Char('\'')));
            m_xml.skipCurrentElement();
        }
    }
}

void FlatOdtReader::readStyle()
{
    const auto properties = [this](Properties *to) {
        const auto attributes = m_xml.attributes();
        for (const QXmlStreamAttribute &attribute : attributes)
            to->insert(attribute.qualifiedName().toString(), attribute.value().toString());
    };
    Style style;
    const QString name = key(attribute("style:family"), attribute("style:name"));
    style.parent = attribute("style:parent-style-name");
    if (!attribute("style:master-page-name").isEmpty())
        style.paragraph.insert(QStringLiteral("fo:break-before"), QStringLiteral("page"));
    while (m_xml.readNextStartElement()) {
        if (isElement("style:text-properties"))
            properties(&style.text);
        if (!isElement("style:paragraph-properties") && !isElement("style:table-properties")) {
            m_xml.skipCurrentElement();
            continue;
        }
        properties(&style.paragraph);
        while (m_xml.readNextStartElement()) {
            if (!isElement("style:tab-stops")) {
                m_xml.skipCurrentElement();
                continue;
            }
            while (m_xml.readNextStartElement()) {
                style.tabs << attribute("style:position") << attribute("style:type");
                m_xml.skipCurrentElement();
            }
        }
    }
    m_styles.insert(name, style);
}

void FlatOdtReader::readListStyle()
{
    const QString name = attribute("style:name");
    while (m_xml.readNextStartElement()) {
        const QString level = attribute("text:level");
        const QString number = attribute("style:num-format");
        QString text = isElement("text:list-level-style-bullet")
            ? QStringLiteral("bullet")
            : attribute("style:num-prefix") + number + attribute("style:num-suffix");
        if (isElement("text:list-level-style-number") && number.isEmpty())
            text.clear();
        m_lists.insert(key(name, level), text);
        m_xml.skipCurrentElement();
    }
}

Style FlatOdtReader::resolved(const QString &family, const QString &name) const
{
    QStringList chain;
    for (QString at = name; !at.isEmpty() && chain.size() < 20;
         at = m_styles.value(key(family, at)).parent)
        chain.prepend(at);
    Style style = m_styles.value(key(family, QString()));
    for (const QString &link : qAsConst(chain)) {
        const Style &next = *m_styles.constFind(key(family, link));
        merge(next.text, &style.text);
        merge(next.paragraph, &style.paragraph);
        if (!next.tabs.isEmpty())
            style.tabs = next.tabs;
    }
    return style;
}

QString FlatOdtReader::tabsText(const Style &style) const
{
    const double indent = pointsOf(style.paragraph.value(QStringLiteral("fo:margin-left")));
    QStringList stops;
    for (int i = 0; i + 1 < style.tabs.size(); i += 2) {
        const QString type = style.tabs.at(i + 1);
        stops += QString::number(
                     qRound(pointsOf(style.tabs.at(i)) + (m_tabsFollowIndent ? indent : 0)))
            + QLatin1Char(' ') + (type.isEmpty() ? QStringLiteral("left") : type);
    }
    return stops.join(QLatin1String(", "));
}

void FlatOdtReader::readBlocks()
{
    while (m_xml.readNextStartElement())
        readBlock();
}

void FlatOdtReader::readBlock()
{
    static const QSet<QString> containers {
        QStringLiteral("office:text"), QStringLiteral("text:section"),
        QStringLiteral("text:list-item"), QStringLiteral("text:list-header"),
        QStringLiteral("draw:text-box")};
    if (isElement("text:p") || isElement("text:h"))
        readParagraph();
    else if (isElement("text:list"))
        readList();
    else if (isElement("table:table"))
        readTable();
    else if (containers.contains(m_xml.qualifiedName().toString()))
        readBlocks();
    else
        m_xml.skipCurrentElement();
}

void FlatOdtReader::readList()
{
    const QString name = attribute("text:style-name");
    m_openLists.append(name.isEmpty() ? m_openLists.value(m_openLists.size() - 1) : name);
    while (m_xml.readNextStartElement()) {
        m_isItem = isElement("text:list-item");
        readBlock();
    }
    m_openLists.removeLast();
    m_isItem = false;
}

void FlatOdtReader::readTable()
{
    const Style style = resolved(QStringLiteral("table"), attribute("table:style-name"));
    if (style.paragraph.value(QStringLiteral("fo:break-before")) == QLatin1String("page"))
        m_breakBefore = true;
    m_tables.append(Table());
    const QStringList lists = std::exchange(m_openLists, {});
    readRow();
    m_openLists = lists;
    m_tables.removeLast();
}

// The table's rows, those of its header included, and what is inside them.
void FlatOdtReader::readRow()
{
    while (m_xml.readNextStartElement()) {
        if (isElement("table:table-row")) {
            ++m_tables.last().row;
            m_tables.last().column = 0;
            readRow();
        } else if (isElement("table:table-header-rows") || isElement("table:table-rows")) {
            readRow();
        } else if (isElement("table:table-cell")) {
            Table &table = m_tables.last();
            table.cell = QStringLiteral("%1,%2 %3x%4")
                             .arg(table.row)
                             .arg(table.column++)
                             .arg(qMax(1, attribute("table:number-rows-spanned").toInt()))
                             .arg(qMax(1, attribute("table:number-columns-spanned").toInt()));
            readBlocks();
        } else {
            if (isElement("table:covered-table-cell"))
                m_tables.last().column
                    += qMax(1, attribute("table:number-columns-repeated").toInt());
            m_xml.skipCurrentElement();
        }
    }
}

void FlatOdtReader::readParagraph()
{
    const Style style = resolved(QStringLiteral("paragraph"), attribute("text:style-name"));
    Content::Paragraph paragraph;
    paragraph.format = blockProperties(style.paragraph);
    if (isElement("text:h"))
        setProperty(&paragraph.format, "heading", attribute("text:outline-level"));
    setProperty(&paragraph.format, "tabs", tabsText(style));
    const QString list = m_openLists.isEmpty()
        ? QString()
        : m_lists.value(key(m_openLists.last(), QString::number(m_openLists.size())));
    if (m_isItem && !list.isEmpty()) {
        setProperty(&paragraph.format, "list",
                    list + QLatin1String(" level ") + QString::number(m_openLists.size()));
        setProperty(&paragraph.format, "left", QString());
        setProperty(&paragraph.format, "first line", QString());
    }
    QStringList cells;
    for (const Table &table : qAsConst(m_tables))
        cells += table.cell;
    setProperty(&paragraph.format, "cell", cells.join(QLatin1Char(' ')));
    if (std::exchange(m_breakBefore, false))
        setProperty(&paragraph.format, "page break", QStringLiteral("before"));
    if (m_content->paragraphs.isEmpty()) // the first page starts without one
        setProperty(&paragraph.format, "page break", QString());
    readInline(&paragraph, style.text, QString());
    m_content->paragraphs.append(paragraph);
}

void FlatOdtReader::append(Content::Paragraph *paragraph, const QString &text,
                           const Properties &style, const QString &link)
{
    if (text.isEmpty() || style.value(QStringLiteral("text:display")) == QLatin1String("none"))
        return;
    Properties format = charProperties(style, m_fonts);
    setProperty(&format, "link", link);
    if (m_bookmark.isEmpty()) {
        paragraph->append(text, format);
        return;
    }
    Properties first = format;
    setProperty(&first, "bookmark", std::exchange(m_bookmark, QString()));
    paragraph->append(text.left(1), first);
    if (text.size() > 1)
        paragraph->append(text.mid(1), format);
}

void FlatOdtReader::readInline(Content::Paragraph *paragraph, const Properties &style,
                               const QString &link)
{
    while (!m_xml.atEnd()) {
        m_xml.readNext();
        if (m_xml.isEndElement())
            return;
        if (m_xml.isCharacters()) {
            append(paragraph, m_xml.text().toString(), style, link);
        } else if (m_xml.isStartElement() && !readCharacter(paragraph, style, link)) {
            if (isElement("text:note")) {
                readNote(*paragraph);
            } else if (isElement("office:annotation")) {
                readComment(*paragraph);
            } else if (m_xml.prefix() == QLatin1String("draw")) {
                readDrawing(paragraph, style, link);
            } else if (isElement("text:a")) {
                readInline(paragraph, style, attribute("xlink:href"));
            } else {
                Properties inner = style;
                if (isElement("text:span"))
                    merge(resolved(QStringLiteral("text"), attribute("text:style-name")).text,
                          &inner);
                readInline(paragraph, inner, link);
            }
        }
    }
}

// The text of a frame stands before the paragraph that it is anchored in; a picture stands for
// itself.
void FlatOdtReader::readDrawing(Content::Paragraph *paragraph, const Properties &style,
                                const QString &link)
{
    while (m_xml.readNextStartElement()) {
        if (isElement("draw:image")) {
            append(paragraph, QString(QChar(QChar::ObjectReplacementCharacter)), style, link);
            m_xml.skipCurrentElement();
        } else if (isElement("draw:frame") || isElement("draw:custom-shape")) {
            readDrawing(paragraph, style, link);
        } else {
            readBlock();
        }
    }
}

// Elements that stand for characters or for a place.
bool FlatOdtReader::readCharacter(Content::Paragraph *paragraph, const Properties &style,
                                  const QString &link)
{
    const QString name = m_xml.qualifiedName().toString();
    if (name == QLatin1String("text:tab"))
        append(paragraph, QStringLiteral("\t"), style, link);
    else if (name == QLatin1String("text:line-break"))
        append(paragraph, QString(QChar(QChar::LineSeparator)), style, link);
    else if (name == QLatin1String("text:s"))
        append(paragraph, QString(qMax(1, attribute("text:c").toInt()), QLatin1Char(' ')), style,
               link);
    else if (name == QLatin1String("text:bookmark-start") || name == QLatin1String("text:bookmark"))
        m_bookmark = attribute("text:name").startsWith(QLatin1String("__"))
            ? m_bookmark
            : attribute("text:name");
    else if (name == QLatin1String("office:annotation-end")
             && m_comments.contains(attribute("office:name")))
        m_content->notes[m_comments.value(attribute("office:name"))].before
            = paragraph->text.right(20);
    else if (name != QLatin1String("text:bookmark-end"))
        return false;
    m_xml.skipCurrentElement();
    return true;
}

// The text of the paragraphs inside the current element, or inside its child of that name.
QString FlatOdtReader::textOfNote(const char *body)
{
    Content content;
    Content *outer = std::exchange(m_content, &content);
    const QStringList lists = std::exchange(m_openLists, {});
    const QVector<Table> tables = std::exchange(m_tables, {});
    while (m_xml.readNextStartElement()) {
        if (!body)
            readBlock();
        else if (isElement(body))
            readBlocks();
        else
            m_xml.skipCurrentElement();
    }
    m_openLists = lists;
    m_tables = tables;
    m_content = outer;
    return plainText(content).chopped(content.paragraphs.isEmpty() ? 0 : 1);
}

void FlatOdtReader::readNote(const Content::Paragraph &paragraph)
{
    const QString kind = attribute("text:note-class");
    const int number = m_content->notes.size();
    m_content->notes.append({kind, paragraph.text.right(20), QString(), QString()});
    m_content->notes[number].text = textOfNote("text:note-body");
}

void FlatOdtReader::readComment(const Content::Paragraph &paragraph)
{
    Content::Note note {QStringLiteral("comment"), paragraph.text.right(20), QString(), QString()};
    m_comments.insert(attribute("office:name"), m_content->notes.size());
    QStringList lines;
    while (m_xml.readNextStartElement()) {
        if (isElement("dc:creator"))
            note.author = m_xml.readElementText();
        else if (isElement("text:p"))
            lines += m_xml.readElementText(QXmlStreamReader::IncludeChildElements);
        else
            m_xml.skipCurrentElement();
    }
    note.text = lines.join(QLatin1Char('\n'));
    m_content->notes.append(note);
}

} // namespace

bool readFlatOdt(const QByteArray &bytes, Content *content)
{
    return FlatOdtReader(bytes, content).read();
}
