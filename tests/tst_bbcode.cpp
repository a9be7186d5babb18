// SPDX-License-Identifier: MIT
#include "ToolkitDifferences.h"

#include <bbcode/MVRBbCodeConverter.h>
#include <core/MVRTextXhtmlExporter.h>

#include <QRandomGenerator>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QtTest>

#include <functional>

class TestBbCode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void convertsMarkup_data();
    void convertsMarkup();
    void refusesMarkup_data();
    void refusesMarkup();
    void leavesTheErrorAlone();
    void keepsThePiecesOfAnEarlierCall();
    void writesXhtml_data();
    void writesXhtml();
    void knowsAllNamesOfCharacters();
    void survivesHostileText_data();
    void survivesHostileText();
    void convertsAToolkitDocument();
    void convertsLongTexts_data();
    void convertsLongTexts();
    void losesNoText();
};

namespace {

QString fromHtml(const QString &html, QString *error = nullptr)
{
    MVRBbCodeConverter converter;
    return converter.fromHtml(html, error);
}

QString inBody(const QString &html)
{
    return QStringLiteral("<body>%1</body>").arg(html);
}

/*! HTML that says of itself that the toolkit wrote it. */
QString asToolkits(const QString &body)
{
    return QStringLiteral("<html><head><meta name=\"qrichtext\" content=\"1\" /></head><body>")
        + body + QStringLiteral("</body></html>");
}

QTextCharFormat formatWith(const std::function<void(QTextCharFormat &)> &change)
{
    QTextCharFormat format;
    change(format);
    return format;
}

const QTextCharFormat plain;
const QTextCharFormat bold
    = formatWith([](QTextCharFormat &format) { format.setFontWeight(QFont::Bold); });
const QTextCharFormat link = formatWith([](QTextCharFormat &format) {
    format.setAnchor(true);
    format.setAnchorHref(QStringLiteral("http://example.org/?a=1&b=2"));
});

void addParagraph(QTextCursor &cursor, const QString &text = QString())
{
    cursor.insertBlock(QTextBlockFormat(), plain);
    cursor.insertText(text, plain);
}

}

void TestBbCode::convertsMarkup_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("bbCode");

    const auto row = [](const char *name, const char *body, const char *bbCode) {
        QTest::newRow(name) << QString::fromUtf8(body) << QString::fromUtf8(bbCode);
    };
    const auto span
        =
            [](const char *name, const char *style, const char *bbCode) {
                QTest::newRow(name)
                    << QStringLiteral("<span style=\"%1\">x</span>").arg(QLatin1String(style))
                    << QString::fromLatin1(bbCode);
            };
    row("nothing in the body", "", "");
    row("bold italic paragraph",
        "<p><span style=\" font-weight:600; font-style:italic;\">Hi</span></p>",
        "\n[b][i]Hi[/b][/i]");
    span("bold red", "font-weight:600; color:#ff0000", "[b][color=#ff0000]x[/b][/color]");
    span("underlined", " text-decoration: underline;", "[u]x[/u]");
    span("underlined and struck", "text-decoration: underline line-through;", "[s]x[/s]");
    span("only struck", "text-decoration: line-through;", "x");
    span("background", "background-color:#00ff00", "[color=#00ff00]x[/color]");
    span("another spelling", "font-weight: 600; FONT-STYLE:italic; font-weight:800", "x");
    row("span in a span", "<span style=\"font-weight:600\">a<span>b</span></span>", "[b]ab[/b]b");
    row("text outside a span", "<p>lost<br/><b>lost</b></p>", "\n\n");
    row("line feed in a span", "<span>one\ntwo</span>", "onetwo");
    row("break in a span", "<span>one<br/>two</span>", "onetwo\n");
    row("blanks between words",
        "<span>a</span><span> </span><span>b&nbsp;</span><span>&#160;</span>", "a b\u00a0\u00a0");
    row("quotation", "<p><span>&gt; quoted</span></p>", "\n[quote] quoted[/quote]");
    row("code", "<p><span>{x = 1;</span></p><p><span>y}</span></p>", "\n[code]x = 1;[/code]\ny}");
    row("bold quotation", "<p><span style='font-weight:600'>&gt; q</span></p>", "\n[b]> q[/b]");
    row("list", "<ol><li><span>a</span></li><li><span>b</span></li></ol>",
        "[list=1][*] a[*] b[/list]ab");
    row("lists in each other", "<ul>\n<li>a<ol><li>b</li><li></li></ol></li></ul>",
        "[list][*] ab[/list][list=1][*] b[/list]");
    row("mail address", "<a href=\"mailto:ann@example.org\"><span>Ann</span></a>",
        "[email]ann@example.org[/email]Ann");
    row("anchor with two addresses", "<a name=\"n\" href=\"u;v\"><span>t</span></a>",
        "[url][url][url]n[/url][/url][/url]t");
    row("anchor without one", "<a>text</a>", "text");
    row("tags are told by case", "<P><SPAN>x</SPAN></P><span>y</span>", "y");
    row("beyond the first plane", "<span>&#x1F600;\xF0\x9F\x98\x80</span>",
        "\xF0\x9F\x98\x80\xF0\x9F\x98\x80");
}

void TestBbCode::convertsMarkup()
{
    QFETCH(QString, body);
    QFETCH(QString, bbCode);

    QString error = QStringLiteral("untouched");
    const QString result = fromHtml(inBody(body), &error);
    QCOMPARE(result, bbCode);
    QVERIFY(!result.isNull());
    QCOMPARE(error, QStringLiteral("untouched"));
}

void TestBbCode::refusesMarkup_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("message");

    const QString bodies = QStringLiteral("Missing or more than one <body> tag inside html");
    QTest::newRow("no body") << QStringLiteral("<p/>") << bodies;
    QTest::newRow("two bodies") << QStringLiteral("<html><body/><body/></html>") << bodies;
    QTest::newRow("tags out of order, the document type counted")
        << QStringLiteral("<!DOCTYPE html>\n<body>\n       <p></b></p></body>")
        << QStringLiteral("Error Line:              3; Error Column: %2; ")
            + onToolkit(QStringLiteral("tag mismatch"));
    QTest::newRow("bare ampersand in the toolkit's text")
        << asToolkits(QStringLiteral("<p>\n&</p>"))
        << QStringLiteral("Error Line:  2; Error Column: %2; ")
            + onToolkit(QStringLiteral("letter is expected"));
}

void TestBbCode::refusesMarkup()
{
    QFETCH(QString, html);
    QFETCH(QString, message);

    QString error;
    QVERIFY(fromHtml(html, &error).isNull());
    QCOMPARE(error, message);
    QVERIFY(fromHtml(html).isNull());
}

void TestBbCode::leavesTheErrorAlone()
{
    QString error = QStringLiteral("untouched");
    QVERIFY(fromHtml(QString(), &error).isNull());
    QVERIFY(fromHtml(QStringLiteral(" \n"), &error).isNull());
    QCOMPARE(error, QStringLiteral("untouched"));
}

void TestBbCode::keepsThePiecesOfAnEarlierCall()
{
    MVRBbCodeConverter converter;
    converter.fromHtml(inBody(QStringLiteral("<p><span>first</span></p>")), nullptr);
    converter.fromHtml(QStringLiteral("<p/>"), nullptr);
    QCOMPARE(converter.fromHtml(inBody(QStringLiteral("<p><span>2nd</span></p>")), nullptr),
             QStringLiteral("\n2nd\nfirst"));
}

void TestBbCode::writesXhtml_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("xhtml");

    const auto row = [](const char *name, const char *html, const char *xhtml) {
        QTest::newRow(name) << QString::fromUtf8(html) << QString::fromUtf8(xhtml);
    };
    row("document type", "<!DOCTYPE h [<!ENTITY e \"]>\">]>\n<p/>", "\n<p/>");
    row("void elements", "<BR><hr width=\"1\"/><img src='a>b'></img>",
        "<BR /><hr width=\"1\"/><img src='a>b' />");
    row("white space in tags", "<br\tid='a'><hr\r\nid='b'>x", "<br\tid='a' /><hr\r\nid='b' />x");
    row("references", "<i t='&nbsp;'>&amp;&eacute;&hearts;&apos;&#65;&#32;&#31;&#0;&x; & &y</i>",
        "<i t='&#160;'>&amp;&#233;&#9829;&apos;&#65;&#32;&amp;x; & &y</i>");
    row("what XML cannot hold", "\xEF\xBB\xBF\xEF\xBB\xBF<i>\x01\xEF\xBF\xBF</i>", "<i></i>");
    row("two styles", "<li style=\" a:b;\" class='c' style='d:\"e\"'>",
        "<li style=\" a:b;d:&quot;e&quot;\" class='c'>");
    row("passages", "<!--<br>&eacute;--><![CDATA[<br>]]><?x <br>?>",
        "<!--<br>&eacute;--><![CDATA[<br>]]><?x <br>?>");
    row("title", "<TITLE a='1'>a & <b></TITLE><title/><p/>",
        "<TITLE a='1'>a &amp; &lt;b&gt;</TITLE><title/><p/>");
    row("broken markup stays", "<p>a<b></p></i><p class=x", "<p>a<b></p></i><p class=x");
    row("text of others stays bare", "<body><p>a</p></body>", "<body><p>a</p></body>");

    const auto toolkits = [](const char *name, const char *html, const char *xhtml) {
        QTest::newRow(name) << asToolkits(QString::fromUtf8(html))
                            << asToolkits(QString::fromUtf8(xhtml));
    };
    toolkits(
        "bare text", "<p>a<br />b<span> c</span> <a href=\"x\">d</a></p><h1>e</h1><td>\nf</td>",
        "<p><span>a</span><br /><span>b</span><span> c</span><span><![CDATA[ ]]></span>"
        "<a href=\"x\"><span>d</span></a></p><h1><span>e</span></h1><td><span>\nf</span></td>");
    toolkits("bare list items", "<ul><li>a <span>b</span> <span>c</span></li>\n</ul><pre>d</pre>",
             "<ul><li>a <span>b</span><![CDATA[ ]]><span>c</span></li>\n</ul>"
             "<pre><span>d</span></pre>");
    toolkits("unbreakable list items", "<ol><li><pre>a</pre><li><pre>b</pre></ol><p></p>",
             "<ol><li><pre>a</pre></li><li><pre>b</pre></li></ol><p></p>");
    toolkits("rule as list item", "<ul><li<hr /><li>a</li></ul>",
             "<ul><li><hr /></li><li>a</li></ul>");
    toolkits("lists end in each other",
             "<ul><li>a\n<ol><li>1</li><li>b</li></ul></li><li>2</li></ol>",
             "<ul><li>a\n<ol><li>1</li><li>b</li></ol></li><li>2</li></ul>");
    toolkits("list leaves a cell", "<td><ul><li>a</li></td><li>b</li></ul><p></p>",
             "<td><ul><li>a</li></ul></td><ul><li>b</li></ul><p></p>");
    toolkits("title of a hostile document",
             "<title>Tom & </title><script>x</script><body>&lt;&amp;"
             "</title><style type=\"text/css\"></style><p></p>",
             "<title>Tom &amp; &lt;/title&gt;&lt;script&gt;x&lt;/script&gt;&lt;body&gt;&lt;&amp;"
             "</title><style type=\"text/css\"></style><p></p>");
    toolkits("number prefix", "<ol style=\"-qt-list-number-prefix: '&<';\"></ol>",
             "<ol style=\"-qt-list-number-prefix: '&amp;&lt;';\"></ol>");
}

void TestBbCode::writesXhtml()
{
    QFETCH(QString, html);
    QFETCH(QString, xhtml);

    QCOMPARE(MVRTextXhtmlExporter::htmlToXhtml(html), xhtml);
}

// By Qt's own reader of HTML, which takes "and" and "or" for others.
void TestBbCode::knowsAllNamesOfCharacters()
{
    const char *names
        = "AElig Aacute Acirc Agrave Alpha Aring Atilde Auml Beta Ccedil Chi Dagger Delta ETH "
          "Eacute Ecirc Egrave Epsilon Eta Euml Gamma Iacute Icirc Igrave Iota Iuml Kappa Lambda "
          "Mu "
          "Ntilde Nu OElig Oacute Ocirc Ograve Omega Omicron Oslash Otilde Ouml Phi Pi Prime Psi "
          "Rho Scaron Sigma THORN Tau Theta Uacute Ucirc Ugrave Upsilon Uuml Xi Yacute Yuml Zeta "
          "aacute acirc acute aelig agrave alefsym alpha ang aring asymp atilde auml bdquo "
          "beta "
          "brvbar bull cap ccedil cedil cent chi circ clubs cong copy crarr cup curren dArr dagger "
          "darr deg delta diams divide eacute ecirc egrave empty emsp ensp epsilon equiv eta eth "
          "euml euro exist fnof forall frac12 frac14 frac34 frasl gamma ge hArr harr hearts hellip "
          "iacute icirc iexcl igrave image infin int iota iquest isin iuml kappa lArr lambda lang "
          "laquo larr lceil ldquo le lfloor lowast loz lrm lsaquo lsquo macr mdash micro middot "
          "minus mu nabla nbsp ndash ne ni not notin nsub ntilde nu oacute ocirc oelig ograve "
          "oline "
          "omega omicron oplus ordf ordm oslash otilde otimes ouml para part permil perp phi pi "
          "piv plusmn pound prime prod prop psi rArr radic rang raquo rarr rceil rdquo real reg "
          "rfloor rho rlm rsaquo rsquo sbquo scaron sdot sect shy sigma sigmaf sim spades sub sube "
          "sum sup sup1 sup2 sup3 supe szlig tau there4 theta thetasym thinsp thorn tilde times "
          "trade uArr uacute uarr ucirc ugrave uml upsih upsilon uuml weierp xi yacute yen yuml "
          "zeta "
          "zwj zwnj";
    const QList<QByteArray> all = QByteArray(names).split(' ');
    for (const QByteArray &name : all) {
        const QString reference = QLatin1Char('&') + QString::fromLatin1(name) + QLatin1Char(';');
        QTextDocument document;
        document.setHtml(QStringLiteral("<pre>x%1x</pre>").arg(reference));
        QCOMPARE(document.begin().text().size(), 3);
        QCOMPARE(MVRTextXhtmlExporter::htmlToXhtml(reference),
                 QStringLiteral("&#%1;").arg(document.begin().text().at(1).unicode()));
    }
    QCOMPARE(MVRTextXhtmlExporter::htmlToXhtml(QStringLiteral("&and;&or;")),
             QStringLiteral("&#8743;&#8744;"));
}

void TestBbCode::survivesHostileText_data()
{
    QTest::addColumn<QString>("html");
    QTest::addColumn<QString>("message");

    const int many = 100000;
    const auto repeated
        = [](const char *text, int times) { return QString::fromLatin1(text).repeated(times); };
    const auto nested = [&](const char *name, int depth) {
        const QString tag = QString::fromUtf8(name);
        return repeated("<%1>x", depth).replace(QStringLiteral("%1"), tag)
            + repeated("</%1>", depth).replace(QStringLiteral("%1"), tag);
    };
    QString attributes;
    for (int i = 0; i < many; ++i)
        attributes += QStringLiteral(" a%1=''").arg(i);

    QTest::newRow("nested") << inBody(nested("b", many)) << QStringLiteral("256 levels deep");
    QTest::newRow("nested behind false end tags")
        << inBody(repeated("<i><!--</i>--><![CDATA[</i>]]><?x </i>?>", many))
        << QStringLiteral("256 levels deep");
    QTest::newRow("nested by a sign that XML takes for a letter")
        << inBody(nested("\u212e", many)) << QStringLiteral("256 levels deep");
    QTest::newRow("nested in the toolkit's lists")
        << asToolkits(nested("ul", many)) << QStringLiteral("256 levels deep");
    QTest::newRow("deep enough") << inBody(nested("b", 200)) << QString();
    QTest::newRow("spans that repeat a text") << inBody(
        repeated("<span>", 200) + QString(many, QLatin1Char('x')) + repeated("</span>", 200))
                                              << QStringLiteral("grow too much");
    QTest::newRow("attributes") << inBody(QStringLiteral("<p%1/>").arg(attributes))
                                << QStringLiteral("more than 256 attributes");
    QTest::newRow("styles") << inBody(QStringLiteral("<p%1/>").arg(repeated(" style=''", many)))
                            << QString();
    QTest::newRow("entities that grow")
        << QStringLiteral("<!DOCTYPE b [<!ENTITY e '%1'><!ENTITY f '%2'>]>")
                .arg(repeated("<b>", 1000), repeated("&e;", 1000))
            + inBody(QStringLiteral("<span>&f;</span>"))
        << QString();
    for (const char *start :
         {"<p a='", "<!--", "<!DOCTYPE [", "<![CDATA[", "<?x", "<p ", "</", "<"})
        QTest::newRow(start) << inBody(repeated(start, many)) << QStringLiteral("Error Line");
}

void TestBbCode::survivesHostileText()
{
    QFETCH(QString, html);
    QFETCH(QString, message);

    QString error;
    const QString bbCode = fromHtml(html, &error);
    QCOMPARE(bbCode.isNull(), !message.isEmpty());
    QVERIFY2(error.contains(message), qPrintable(error.left(500)));
}

void TestBbCode::convertsAToolkitDocument()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertText(QStringLiteral("Plain & "), plain);
    cursor.insertText(QStringLiteral("bold"), bold);
    cursor.insertText(QStringLiteral(" "), plain);
    cursor.insertText(QStringLiteral("italic"),
                      formatWith([](QTextCharFormat &format) { format.setFontItalic(true); }));
    cursor.insertText(QStringLiteral(" "), bold);
    cursor.insertText(QStringLiteral("red"), formatWith([](QTextCharFormat &format) {
                          format.setForeground(QColor(Qt::red));
                      }));
    addParagraph(cursor, QStringLiteral("See "));
    cursor.insertText(QStringLiteral("this"), link);
    cursor.insertText(QStringLiteral(".\u2028Next line"), plain);
    addParagraph(cursor, QStringLiteral("> said <b> \u00e9\u4e2d"));
    addParagraph(cursor, QStringLiteral("{if (a && b)"));
    addParagraph(cursor, QStringLiteral("A list:"));
    addParagraph(cursor);
    QTextList *list = cursor.createList(QTextListFormat::ListDecimal);
    cursor.insertText(QStringLiteral("first"), plain);
    cursor.insertBlock(QTextBlockFormat(), bold);
    list->add(cursor.block());
    cursor.insertText(QStringLiteral("second"), bold);
    cursor.insertBlock(QTextBlockFormat(), plain);
    list->add(cursor.block());
    cursor.insertText(QStringLiteral("the "), plain);
    cursor.insertText(QStringLiteral("third"), bold);
    addParagraph(cursor, QStringLiteral("End"));

    QCOMPARE(fromHtml(document.toHtml()),
             QStringLiteral("\nPlain & [b]bold[/b] [i]italic[/i][b] [/b][color=#ff0000]red[/color]"
                            "\nSee [url]http://example.org/?a=1&b=2[/url]this.\nNext line"
                            "\n[quote] said <b> \u00e9\u4e2d[/quote]"
                            "\n[code]if (a && b)[/code]"
                            "\nA list:"
                            "[list=1][*] first[*] second[*] the third[/list][b]third[/b]"
                            "\nEnd"));
}

/*!
    Documents of a few paragraphs as chance puts them: in shared lists, in tables, with unbreakable
    lines, headings, blanks and control characters between the words.
*/
void TestBbCode::convertsLongTexts_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("part"); // stands there often
    QTest::addColumn<QString>("behind");
    const auto row
        = [](const char *name, const char *before, const char *part, const char *behind) {
              QTest::newRow(name) << QString::fromLatin1(before) << QString::fromLatin1(part)
                                  << QString::fromLatin1(behind);
          };
    const char styled[] = "a<span style=\"font-weight:600;\">b <i>c</i></span><br />d";
    row("paragraphs", "", "<p class=\"x\">a<span>b</span>c</p>\n", "");
    row("one paragraph", "<p>", styled, "</p><p>e</p>");
    row("paragraphs in each other", "<p><div><p><br>", styled, "</br></p></div></p>");
    row("cells", "<table><tr>", "<td><p><a href=\"x\">a</a><!-- <p> --></p></td>", "</tr></table>");
    row("lists", "", "<ul><li>a</li><li><ol><li>b</li></ol></li></ul>", "");
    row("one list", "<ul>", "<li>a</li>", "</ul>");
}

// Read in segments, they come as if they were read as a whole.
void TestBbCode::convertsLongTexts()
{
    QFETCH(const QString, before);
    QFETCH(const QString, part);
    QFETCH(const QString, behind);
    constexpr int longEnough = 1000000;
    const int count = longEnough / part.size();
    const auto converted = [&](int times) {
        QString error;
        const QString html = asToolkits(before + part.repeated(times) + behind);
        return fromHtml(html, &error) + error;
    };
    // What the second of two parts is, all others are.
    const QString two = converted(2);
    const QString three = converted(3);
    int place = 0;
    while (place < two.size() && two[place] == three[place])
        ++place;
    const int length = three.size() - two.size();
    const QString added = three.mid(place - length, length);
    QVERIFY(length > 0);
    QString expected = two;
    expected.insert(place, added.repeated(count - 2));
    QVERIFY(converted(count) == expected);

    // A fault is found where it is, and nothing comes of a text that has one.
    const QString broken = part.repeated(count) + QStringLiteral("\n<b>");
    QString error;
    QVERIFY(fromHtml(asToolkits(before + broken + behind), &error).isNull());
    QVERIFY2(error.contains(QLatin1String("Error Line")), qPrintable(error));
}

void TestBbCode::losesNoText()
{
    for (uint seed = 0; seed < 500; ++seed) {
        QRandomGenerator random(seed);
        const auto chance = [&](int of) { return random.bounded(of) == 0; };
        const QTextCharFormat formats[] = {plain, bold, link};
        const char *fillers[] = {" ", "\u00a0", "\u2028", "\x0b<&>\"'", ""};
        QTextDocument document;
        QTextCursor cursor(&document);
        QVector<QTextList *> lists;
        QString words;
        for (int paragraph = 0; paragraph < 10; ++paragraph) {
            if (paragraph > 0)
                addParagraph(cursor);
            QTextBlockFormat format;
            format.setNonBreakableLines(chance(6));
            format.setHeadingLevel(chance(6) ? 2 : 0);
            cursor.setBlockFormat(format);
            if (chance(2)) {
                if (lists.isEmpty() || chance(3))
                    lists << cursor.createList(chance(2) ? QTextListFormat::ListDisc
                                                         : QTextListFormat::ListDecimal);
                else
                    lists.at(random.bounded(lists.size()))->add(cursor.block());
            }
            for (int run = random.bounded(4); run > 0; --run) {
                words += QStringLiteral("w%1_%2;").arg(paragraph).arg(run);
                cursor.insertText(words.mid(words.lastIndexOf(QLatin1Char('w'))),
                                  formats[random.bounded(3)]);
                cursor.insertText(QString::fromUtf8(fillers[random.bounded(5)]),
                                  formats[random.bounded(3)]);
            }
            if (chance(8))
                cursor = cursor.insertTable(1, 2)->cellAt(0, 1).firstCursorPosition();
            else if (chance(4))
                cursor.movePosition(QTextCursor::End);
        }
        QString error;
        const QString bbCode = fromHtml(document.toHtml(), &error);
        QVERIFY2(error.isNull(), qPrintable(error));
        const QStringList all = words.split(QLatin1Char(';'), Qt::SkipEmptyParts);
        for (const QString &word : all)
            QVERIFY2(bbCode.contains(word + QLatin1Char(';')), qPrintable(bbCode));
    }
}

QTEST_MAIN(TestBbCode)
#include "tst_bbcode.moc"
