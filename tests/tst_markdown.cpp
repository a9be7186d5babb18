// SPDX-License-Identifier: MIT
#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/document/TextFragments_p.h>
#include <text/MVRTextDoc.h>
#include <tool/formats/markdown/MarkdownLook.h>
#include <tool/formats/markdown/MarkdownReader.h>
#include <tool/formats/markdown/MarkdownWriter.h>

#include <QRandomGenerator>
#include <QTextBlock>
#include <QTextList>
#include <QTextTable>
#include <QtTest>

/*! Markdown into documents and back. */
class TestMarkdown : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void reads_data();
    void reads();
    void readsLongLists();
    void keepsWriting_data();
    void keepsWriting();
    void keepsText_data();
    void keepsText();
    void keepsDocuments();
};

namespace {

using namespace MarkdownLook;

QByteArray styleNames(const QTextCharFormat &format)
{
    constexpr char letters[] = "bisu^_c";
    QByteArray names;
    for (int bit = 0; bit < styleCount; ++bit) {
        const bool isOfLink = format.isAnchor() && (1 << bit) == Underline;
        if ((stylesOf(format) & (1 << bit)) && !isOfLink)
            names += letters[bit];
    }
    return names;
}

QString target(const QTextCharFormat &format)
{
    const QString covered = format.stringProperty(MVRTextFormat::CoveredLinkProperty);
    if (!covered.isEmpty())
        return covered;
    return MVRTextDoc::isCommentFootnoteAnchor(format.anchorHref()) ? QString()
                                                                    : format.anchorHref();
}

/*! The paragraph's place in lists and quotes, and what kind it is. */
QByteArray blockLine(const QTextBlock &block, QHash<QTextList *, int> *numbers)
{
    const QTextBlockFormat format = block.blockFormat();
    QByteArray line(format.intProperty(QTextFormat::BlockQuoteLevel), '>');
    if (QTextList *list = block.textList()) {
        const int start = list->format().hasProperty(MVRTextFormat::ListStartProperty)
            ? list->format().intProperty(MVRTextFormat::ListStartProperty)
            : 1;
        const int number = start + (*numbers)[list]++;
        line += QByteArray(list->format().indent(), '-');
        if (list->format().style() == QTextListFormat::ListDecimal)
            line += QByteArray::number(number) + list->format().numberSuffix().toUtf8();
        if (format.marker() != QTextBlockFormat::MarkerType::NoMarker)
            line += format.marker() == QTextBlockFormat::MarkerType::Checked ? "[x]" : "[ ]";
    } else {
        line += QByteArray(format.indent(), '+');
    }
    line += QByteArray(format.headingLevel(), '#');
    if (format.hasProperty(QTextFormat::BlockCodeFence))
        line += '`' + format.stringProperty(QTextFormat::BlockCodeLanguage).toUtf8();
    if (format.hasProperty(QTextFormat::BlockTrailingHorizontalRulerWidth))
        line += "***";
    return line + ' ';
}

// How blanks look hardly anybody sees.
QByteArray runs(const QTextBlock &block)
{
    const QTextTable *table = QTextCursor(block).currentTable();
    const bool isHead
        = table && table->cellAt(block.position()).row() < table->format().headerRowCount();
    const bool isHeading = block.blockFormat().headingLevel() > 0;
    QByteArray line;
    QByteArray last;
    for (auto it = block.begin(); !it.atEnd(); ++it) {
        const QTextCharFormat format = it.fragment().charFormat();
        QByteArray style = styleNames(format);
        if (isHead || isHeading)
            style.replace("b", "");
        if (!target(format).isEmpty())
            style += "(" + target(format).toUtf8() + ")";
        if (format.isImageFormat())
            style += "!" + format.toImageFormat().name().toUtf8();
        const QString text = it.fragment().text();
        for (const QChar c : text) {
            const bool isSeen = !c.isSpace() || format.fontFixedPitch();
            if (isSeen && style != last)
                line += '{' + style + '}';
            if (isSeen)
                last = style;
            line += QString(c).toUtf8();
        }
    }
    return line.replace("\xe2\x80\xa8", "|");
}

/*! All that Markdown can say of a document. */
QByteArray dump(const QTextDocument &document)
{
    QByteArray lines;
    QHash<QTextList *, int> numbers;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QByteArray line = blockLine(block, &numbers) + runs(block);
        if (const QTextTable *table = QTextCursor(block).currentTable()) {
            const QTextTableCell cell = table->cellAt(block.position());
            line = "cell " + QByteArray::number(cell.row()) + ','
                + QByteArray::number(cell.column())
                + (cell.row() < table->format().headerRowCount() ? " head " : " ") + line;
        } else if (line.trimmed().isEmpty()) {
            continue; // around tables there have to be some
        }
        lines += line + '\n';
    }
    const MVRTextNotes notes = MVRTextDoc::notes(&document);
    for (const MVRTextNote &note : notes) {
        const QTextBlock block = document.findBlock(note.range.end);
        lines += (note.isFootnote() ? "footnote " : "comment " + note.text(document).toUtf8() + ' ')
            + block.text().left(note.range.end - block.position()).toUtf8() + ": "
            + note.contentText(document).toUtf8().replace('\n', '/') + '\n';
    }
    return lines;
}

QByteArray dumped(const QString &markdown)
{
    QTextDocument document;
    readMarkdown(markdown, MarkdownOptions(), &document);
    return dump(document);
}

/*! Draws documents over what Markdown can say. */
class Generator
{
public:
    explicit Generator(uint seed)
        : m_random(seed)
    {
    }

    void fill(QTextDocument *document)
    {
        m_cursor = QTextCursor(document);
        for (int count = 1 + m_random.bounded(12); count > 0; --count)
            addBlock();
        const int length = document->characterCount();
        for (int position = m_random.bounded(30); position < length;
             position += 1 + m_random.bounded(60))
            addNote(document, position);
    }

private:
    bool chance(int outOf) { return m_random.bounded(outOf) == 0; }

    void addBlock()
    {
        if (chance(10))
            return addTable();
        QTextBlockFormat format;
        if (!m_lists.isEmpty() && chance(3))
            m_lists.resize(m_random.bounded(int(m_lists.size())));
        if (chance(5)) {
            m_lists.clear();
            m_quotes = m_random.bounded(3);
        }
        int quotes = m_quotes;
        QTextList *list = nullptr;
        const bool isItem = chance(2);
        const bool isNewList = isItem && m_lists.size() < 4 && (m_lists.isEmpty() || chance(3));
        if (isItem && !isNewList)
            list = m_lists.last();
        const int kind = m_random.bounded(8);
        if (isItem && chance(4) && kind > 1)
            format.setMarker(chance(2) ? QTextBlockFormat::MarkerType::Checked
                                       : QTextBlockFormat::MarkerType::Unchecked);
        if (!isItem && !m_lists.isEmpty()) {
            format.setIndent(int(m_lists.size()));
            quotes += m_random.bounded(2);
        }
        if (quotes > 0)
            format.setProperty(QTextFormat::BlockQuoteLevel, quotes);
        if (list)
            format.setObjectIndex(list->objectIndex());
        if (kind == 0)
            format.setHeadingLevel(1 + m_random.bounded(6));
        if (kind == 1) {
            format.setProperty(QTextFormat::BlockCodeFence, QStringLiteral("`"));
            if (chance(2))
                format.setProperty(QTextFormat::BlockCodeLanguage, QStringLiteral("c++"));
        }
        startBlock(format);
        if (isNewList)
            m_lists.append(m_cursor.createList(listFormat()));
        QTextCharFormat code;
        setStyle(&code, Code);
        if (kind == 1)
            m_cursor.insertText(
                text(false) + QStringLiteral("\u2028\u2028  ```` {>>x<<} ") + text(false), code);
        else
            addRuns(m_random.bounded(6), kind != 0);
    }

    void startBlock(const QTextBlockFormat &format)
    {
        if (m_isFree)
            m_cursor.setBlockFormat(format);
        else
            m_cursor.insertBlock(format, QTextCharFormat());
        m_isFree = false;
    }

    QTextListFormat listFormat()
    {
        QTextListFormat format;
        format.setIndent(int(m_lists.size()) + 1);
        format.setStyle(chance(2) ? QTextListFormat::ListDisc : QTextListFormat::ListDecimal);
        if (format.style() == QTextListFormat::ListDecimal) {
            if (chance(2))
                format.setNumberSuffix(QStringLiteral(")"));
            if (chance(2))
                format.setProperty(MVRTextFormat::ListStartProperty, m_random.bounded(20) * 7);
            if (format.intProperty(MVRTextFormat::ListStartProperty) == 1)
                format.clearProperty(MVRTextFormat::ListStartProperty);
        }
        return format;
    }

    void addTable()
    {
        m_lists.clear();
        m_quotes = 0;
        QTextTableFormat format;
        format.setHeaderRowCount(m_random.bounded(2));
        const int rows = 2 + m_random.bounded(3);
        const int columns = 1 + m_random.bounded(3);
        QTextTable *table = m_cursor.insertTable(rows, columns, format);
        for (int cell = 0; cell < rows * columns; ++cell) {
            m_cursor.setPosition(table->cellAt(cell / columns, cell % columns).firstPosition());
            addRuns(1 + m_random.bounded(3), true);
        }
        m_cursor.movePosition(QTextCursor::End);
        m_isFree = true;
    }

    // Ends and begins with a letter, so that no reader trims it.
    void addRuns(int count, bool hasBold)
    {
        m_cursor.insertText(QStringLiteral("Go"), QTextCharFormat());
        for (; count > 0; --count) {
            QTextCharFormat format;
            if (chance(3) && hasBold)
                setStyle(&format, Bold);
            for (const Style style : {Italic, Strike, Superscript}) {
                if (chance(4))
                    setStyle(&format, style);
            }
            if (chance(8)) {
                format.setAnchor(true);
                format.setAnchorHref(QStringLiteral("a b/(c)_*d&amp;") + text(false).simplified());
            } else if (chance(5)) {
                setStyle(&format, Underline);
            }
            if (chance(10)) {
                QTextCharFormat code = format;
                setStyle(&code, Code);
                m_cursor.insertText(QStringLiteral("`a`\\*")
                                        + QString(m_random.bounded(3), QLatin1Char('`')),
                                    code);
            } else {
                m_cursor.insertText(text(hasBold), format);
            }
        }
        if (chance(2))
            m_cursor.insertText(QStringLiteral("x"), QTextCharFormat());
        else
            m_cursor.insertText(QStringLiteral(" end."), QTextCharFormat());
    }

    QString text(bool hasBreaks)
    {
        static const QStringList words {
            QStringLiteral("a"),      QStringLiteral(" "),        QStringLiteral("*"),
            QStringLiteral("_"),      QStringLiteral("`"),        QStringLiteral("[x](y)"),
            QStringLiteral("!"),      QStringLiteral("\\"),       QStringLiteral("&amp;"),
            QStringLiteral("<b>"),    QStringLiteral("~~"),       QStringLiteral("|"),
            QStringLiteral("{>>"),    QStringLiteral("<<}"),      QStringLiteral("{=="),
            QStringLiteral("==}"),    QStringLiteral("{"),        QStringLiteral("="),
            QStringLiteral("[^1]"),   QStringLiteral("http://x"), QStringLiteral("www.b"),
            QStringLiteral("\u00e9"), QStringLiteral("(1)"),      QStringLiteral("\u201cq\u201d"),
            QStringLiteral("1."),     QStringLiteral("<!-- -->"), QStringLiteral("\U0001f600"),
            QStringLiteral(":"),      QStringLiteral("#"),        QStringLiteral("-"),
        };
        static const QStringList starts {
            QStringLiteral("# a"), QStringLiteral("- a"), QStringLiteral("1. a"),
            QStringLiteral("> a"), QStringLiteral("==="), QStringLiteral("---"),
            QStringLiteral(":-"),  QStringLiteral("+"),   QStringLiteral("~~~"),
            QStringLiteral("***"), QStringLiteral("<p>"), QStringLiteral("[a]: b"),
        };
        QString drawn;
        for (int i = m_random.bounded(6); i >= 0; --i)
            drawn += words.at(m_random.bounded(int(words.size())));
        if (hasBreaks && chance(6))
            drawn += QStringLiteral("z\u2028") + starts.at(m_random.bounded(int(starts.size())));
        return drawn;
    }

    void addNote(QTextDocument *document, int position)
    {
        const QTextBlock block = document->findBlock(position);
        if (block.blockFormat().hasProperty(QTextFormat::BlockCodeFence) || block.length() < 4)
            return;
        // Its first word is plain.
        MVRTextCommentLink note;
        note.isFootnote = chance(2);
        QTextDocument content;
        QTextCursor cursor(&content);
        cursor.insertText(QStringLiteral("N*1 "));
        cursor.insertText(text(false) + QLatin1Char('.'));
        if (chance(2)) {
            cursor.insertBlock();
            cursor.insertText(QStringLiteral("# M"));
        }
        note.cdata = MVRTextRtf::toRtfCData(&content, false);
        MVRTextDoc::setComment(document, MVRTextRange(block.position(), block.position() + 2),
                               note);
    }

    QRandomGenerator m_random;
    QTextCursor m_cursor;
    QVector<QTextList *> m_lists;
    int m_quotes = 0;
    bool m_isFree = true;
};

} // namespace

void TestMarkdown::reads_data()
{
    QTest::addColumn<QString>("markdown");
    QTest::addColumn<QByteArray>("expected");

    QTest::newRow("words") << "*a* __b__ ~~c~~ `d` <u>e</u> x<sup>2</sup>"
                           << QByteArray(" {i}a {b}b {s}c {c}d {u}e {}x{^}2\n");
    QTest::newRow("breaks") << "a\nb\\\nc<br>d" << QByteArray(" a b|c|d\n");
    QTest::newRow("unknown HTML") << "a <span>b</i>" << QByteArray(" a <span>b</i>\n");
    QTest::newRow("bare addresses")
        << "See https://a.b/c_(d). (www.x.org) `http://no`"
        << QByteArray(" See {(https://a.b/c_(d))}https://a.b/c_(d){}. ({(http://www.x.org)}"
                      "www.x.org{}) {c}http://no\n");
    QTest::newRow("lists") << "3) a\n\n   b\n   - [x] c\n4) d\n- e\n"
                           << QByteArray("-3) a\n+ b\n--[x] c\n-4) d\n- e\n");
    QTest::newRow("quotes") << "> a\n> > b\n>\n> - c\n" << QByteArray("> a\n>> b\n>- c\n");
    QTest::newRow("code") << "```c++\nint *a;\n\n{>>b<<}\n```\n"
                          << QByteArray("`c++ {c}int *a;||{>>b<<}\n");
    QTest::newRow("table") << "| a | b |\n|--|:-:|\n| `1|` \\| | <br> |\n"
                           << QByteArray("cell 0,0 head  a\ncell 0,1 head  b\ncell 1,0  `1\n"
                                         "cell 1,1  ` | | |\n");
    QTest::newRow("more cells than the head")
        << "> a | b\n> --|--\n> 1 | 2 \\| 3 | 4 | 5 |\n> | 6 | 7 |\n\nx | y | z\n"
        << QByteArray("cell 0,0 head  a\ncell 0,1 head  b\ncell 1,0  1\ncell 1,1  2 | 3 | 4 | 5\n"
                      "cell 2,0  6\ncell 2,1  7\n x | y | z\n");
    QTest::newRow("footnote") << "End.[^a] x\n\n[^a]: One\n\n    Two"
                              << QByteArray(" End. x\nfootnote End.: One/Two\n");
    QTest::newRow("comments") << "A b{>>*c* d<<} {==e f==}{>>g<<} `{>>h<<}` \\{>>i<<} j<!-- k -->"
                              << QByteArray(" A b e f {c}{>>h<<} {}{>>i<<} j\ncomment b A b: c d\n"
                                            "comment e f A b e f: g\ncomment j A b e f {>>h<<} "
                                            "{>>i<<} j: k\n");
    QTest::newRow("notes on links")
        << "[a](b)[^1] {==[c](d)==}{>>e<<}, [f](g){>>h<<}\n\n[^1]: i"
        << QByteArray(" {(b)}a {(d)}c{}, {(g)}f{}(Linked Comment)\n"
                      "footnote a : i\ncomment , a c,: e\n"
                      "comment (Linked Comment) a c, f(Linked Comment): h\n");
    QTest::newRow("half a comment") << "a {>>b {==c==} <<" << QByteArray(" a {>>b {==c==} <<\n");
    QTest::newRow("comment on its own")
        << "<!-- a\nb -->\n\nc d" << QByteArray(" c d\ncomment c c: a/b\n");
    QTest::newRow("text between comments") << "<!-- a --> b <!-- c -->\n"
                                           << QByteArray(" <!-- a --> b <!-- c -->\n");
    QTest::newRow("no metadata") << "Note: a\n\nb" << QByteArray(" Note: a\n b\n");
}

void TestMarkdown::reads()
{
    QFETCH(const QString, markdown);
    QTEST(dumped(markdown), "expected");
}

// An item has a paragraph of its own: what marks its words does not add up.
void TestMarkdown::readsLongLists()
{
    QTextDocument document;
    const QString items = QStringLiteral("* **word** _word_\n").repeated(10001);
    QCOMPARE(readMarkdown(items, MarkdownOptions(), &document).refusal, MarkdownResult::NotRefused);
    QCOMPARE(document.blockCount(), 10001);
}

void TestMarkdown::keepsWriting_data()
{
    QTest::addColumn<QString>("markdown");
    QTest::newRow("emphasis") << "a*b*c **d *e* f** *g*<strong>h</strong>i ***j** k*\n";
    QTest::newRow("flanking") << "a<strong>\u201cb\u201d</strong>c <em>\\!</em>d ~~e~~\n";
    QTest::newRow("lists") << "- a\n  - b\n\n    c\n  - d\n\n* e\n\n1. f\n\n<!-- -->\n\n1. g\n";
    QTest::newRow("item begins with a quote") << "- > a\n  >\n  > b\n- - c\n";
    QTest::newRow("long number") << "999. a\n\n     b\n";
    QTest::newRow("a list that begins with a list") << "a\n\n9. - b\n   - c\n10. - - d\n";
    QTest::newRow("headings") << "# C\\#\n\n###### d *e*\n\n***\n";
    QTest::newRow("links") << "[a *b*](<c d> \"e\\\"\") <https://x.y> ![p](q.png \"r\")\n";
    QTest::newRow("footnotes") << "a[^1]\\(b) **c[^2]d**\n\n[^1]: e\n\n    - f\n\n[^2]: \\# g\n";
    QTest::newRow("note behind a link") << "[a](b)[^1] c, [d](e)[^2] f\n\n[^1]: j\n\n[^2]: k\n";
    QTest::newRow("comment") << "{==a *b*==}{>>c<br><em>d</em><<}e\n";
    QTest::newRow("table") << "| **a** | b |\n| --- | --: |\n| c<br><br>d | `e\\|f` \\| |\n";
    QTest::newRow("no head") << "|  |\n| --- |\n| a |\n";
    QTest::newRow("code") << "````\n```\n\n  a\n````\n\n```c\nb\n```\n";
    QTest::newRow("front matter")
        << "---\ntitle: \"A: \\\"b\\\" \\x3Cc> \\\\x3C\"\nauthor: C D, E\n---\n\nText\n";
    QTest::newRow("like front matter") << "Title\\: a\n";
}

void TestMarkdown::keepsWriting()
{
    QFETCH(QString, markdown);
    QTextDocument document;
    readMarkdown(markdown, MarkdownOptions(), &document);
    if (qstrcmp(QTest::currentDataTag(), "table") == 0)
        markdown.replace(QLatin1String("**a**"), QLatin1String("a"));
    QCOMPARE(writeMarkdown(document), markdown);
}

void TestMarkdown::keepsText_data()
{
    QTest::addColumn<QString>("text");
    int number = 0;
    for (const char *text : {"# a",
                             "1. a",
                             "1986. Then",
                             "- a",
                             "+",
                             "---",
                             "> a",
                             "    a",
                             "~~~",
                             "```",
                             "[a]: b",
                             "[^a]: b",
                             "| a |\n|---|",
                             "a\n===",
                             "a\n:--",
                             "***",
                             "_a_ b_c *d*",
                             "<b>a</b>",
                             "&amp; &x",
                             "\\a\\*",
                             "![a](b)",
                             "http://x www.a.b",
                             "a {>>b<<} {==c==}",
                             "<!-- a -->",
                             "-",
                             "title: x",
                             "a  b",
                             "* a\n* b",
                             "1)",
                             "\\",
                             "a\\\nb",
                             "-\n-",
                             "{",
                             "C#",
                             "=\n="})
        QTest::addRow("%d %s", ++number, text) << QString::fromUtf8(text);
}

/*! Each line as a paragraph and as a line of one. */
void TestMarkdown::keepsText()
{
    QFETCH(QString, text);
    QTextDocument document;
    document.setPlainText(
        text.trimmed() + QLatin1Char('\n')
        + QString(text.trimmed()).replace(QLatin1Char('\n'), QChar::LineSeparator));
    const QString markdown = writeMarkdown(document);
    QCOMPARE(dumped(markdown), dump(document));
}

void TestMarkdown::keepsDocuments()
{
    for (uint seed = 0; seed < 200; ++seed) {
        QTextDocument document;
        Generator(seed).fill(&document);
        const QString markdown = writeMarkdown(document);
        const QByteArray before = dump(document);
        const QByteArray after = dumped(markdown);
        if (before != after)
            qWarning("seed %u\n%s\n---\n%s\n---\n%s", seed, before.constData(),
                     markdown.toUtf8().constData(), after.constData());
        QVERIFY(before == after);
    }
}

QTEST_MAIN(TestMarkdown)
#include "tst_markdown.moc"
