// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QtTest>

/*! What comes from outside: hostile documents, and a system that refuses. */
class TestToolTrust : public ToolTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writesNoForeignMarkup_data();
    void writesNoForeignMarkup();
    void keepsTargets_data();
    void keepsTargets();
    void boundsHtml_data();
    void boundsHtml();
    void keepsPlacesOfLinks();
    void keepsTablesNarrow();
    void writesOneStyleForItems();
    void readsLinksThatArePlaces();
    void readsOddHtml_data();
    void readsOddHtml();
    void saysFaultsOfTheSystem_data();
    void saysFaultsOfTheSystem();
    void writesBothFilesOrNone();
    void saysThatMemoryEnds();
    void refusesLargeFilesUnread();
    void laysOutLongWords_data();
    void laysOutLongWords();
    void laysOutNotesOneByOne();
    void laysOutThousandsOfPages();
    void takesAnyLength_data();
    void takesAnyLength();
    void drawsWavesBelowLargeLetters();
    void drawsRowsOfManyPages();
    void writesAnyTextAsXml();
    void endsLinksOfPictures();
    void writesSignsOfObjects();
    void writesLinesOfFormats();
};

namespace {

// Title, link and font of a document that means no good.
const char hostile[]
    = "{\\rtf1{\\fonttbl{\\f0 a\"b';}}{\\info{\\title T & J</title><script>bad()</script>}}"
      "\\f0 a {\\field{\\*\\fldinst HYPERLINK \"java\\tab script:bad()\"}{\\fldrslt b}}"
      "{\\footnote n}\\par}";

QByteArray repeated(const QByteArray &part, int times)
{
    return part.repeated(times);
}
}

void TestToolTrust::init()
{
    QVERIFY(newFolder());
    m_folder->write(QStringLiteral("in.rtf"), hostile);
}

void TestToolTrust::writesNoForeignMarkup_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("file");

    QTest::newRow("HTML") << "convert in.rtf out.html"
                          << "out.html";
    QTest::newRow("BBCode") << "convert in.rtf out.bbcode"
                            << "out.bbcode";
    QTest::newRow("Markdown") << "convert in.rtf out.md"
                              << "out.md";
    QTest::newRow("page of notes") << "endnotes --style ebook in.rtf -o out.html"
                                   << "footnotes.xhtml";
}

void TestToolTrust::writesNoForeignMarkup()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, file);

    const Run run = mvrtext(arguments.toUtf8().constData(), m_folder->path());
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    const QByteArray written = m_folder->read(file);
    QVERIFY(!written.isEmpty());
    QVERIFY2(!written.contains("<script") && !written.contains("bad()\""), written.constData());
    QVERIFY2(!written.contains("&quot;a&quot;"), written.constData());
    if (file.endsWith(QLatin1String("html")))
        QVERIFY2(written.contains("<title>T &amp; J&lt;/title"), written.constData());
}

void TestToolTrust::keepsTargets_data()
{
    QTest::addColumn<QString>("format");
    for (const char *format : {"rtf", "md", "html"})
        QTest::newRow(format) << QString::fromLatin1(format);
}

/*! What would end a target in a format comes back from it. */
void TestToolTrust::keepsTargets()
{
    QFETCH(const QString, format);
    const QByteArrayList targets {
        "http://a/\"q\"", "http://a/b\\c\\", "http://a/}{b}",         "http://a/b c",
        "\\\\host\\l",    "x\" \\o \"y",     "http://a/\xc3\xbc)(<>", "\\l"};
    QByteArray html;
    for (const QByteArray &target : targets) {
        html += "<p>a <a href=\"" + QString::fromUtf8(target).toHtmlEscaped().toUtf8()
            + "\">b</a> c</p>";
    }
    write(QStringLiteral("in.html"), html);
    const Run run = shell("$T convert in.html a." + format.toUtf8() + " && $T convert a."
                          + format.toUtf8() + " out.html");
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    QByteArrayList found;
    const QString written = QString::fromUtf8(read(QStringLiteral("out.html")));
    const QRegularExpression link(QStringLiteral("<a href=\"([^\"]*)\""));
    for (auto links = link.globalMatch(written); links.hasNext();) {
        found << links.next()
                     .captured(1)
                     .toUtf8()
                     .replace("&lt;", "<")
                     .replace("&gt;", ">")
                     .replace("&quot;", "\"");
    }
    QCOMPARE(found, targets);
}

void TestToolTrust::boundsHtml_data()
{
    QTest::addColumn<QByteArray>("html");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("says");
    QTest::addColumn<QByteArray>("text");

    const auto row
        = [](const char *name, const QByteArray &html, int exitCode, const QByteArray &says,
             const QByteArray &text) { QTest::newRow(name) << html << exitCode << says << text; };
    const QByteArray widest = "<tr><td ROWSPAN='999' colspan=&#57;99 colspan=999>a";
    row("cells over each other", "<table>" + repeated(widest, 50) + "</table>", 0, "", "a");
    row("in a section that Qt does not know",
        "<![CDATA[<table>" + repeated(widest, 50) + "</table>]]>", 0, "", "a");
    row("many small tables", repeated("<table><tr><td colspan=999>a</td></tr></table>", 1000), 0,
        "", "a");
    row("rows behind a wide one",
        "<table><tr>" + repeated("<td>a", 1000) + repeated("<tr><td>b", 1000) + "</table>", 1,
        "empty cells", "");
    row("a heading over all columns",
        "<table><tr><td colspan=100>h<tr><td>a<td>b<tr><td>c<td>d</table>", 0, "", "h");
    row("a long list", "<ul>" + repeated("<li>a", 10001) + "</ul>", 1, "too many items", "");
    row("elements without end", repeated("<wbr><option>", 50000) + "a", 0, "", "a");
    row("columns of a table", "<table>" + repeated("<col span=999>", 30000) + "<tr><td>a", 0, "",
        "a");
    row("pictures of one paragraph", repeated("a<img src='x'>", 30000), 0, "pictures", "a");
    row("pictures of many", repeated("<p>a<img src='x'>", 10000), 0, "", "a");
    const auto numbered = [](const QByteArray &part, int times) {
        QByteArray all;
        for (int i = 0; i < times; ++i)
            all += QByteArray(part).replace('#', QByteArray::number(i));
        return all;
    };
    row("places", numbered("<p id='n#'>a", 30000) + "<a href='&#35;n1'>b</a>", 0, "", "a");
    row("places of links", numbered("<p id=n#><a href=$n#>a</a>", 3000).replace('$', '#'), 0,
        "places that links lead to", "a");
    row("widths of columns", numbered("<table><tr><td width=#>a</table>", 9000), 0, "", "a");
    row("fonts", numbered("<font face='A,F#'>a</font><b style='font-family:A,G#'>b</b>", 9000), 0,
        "", "a");
    row("pictures behind text", numbered("<p style='background:url(#)'>a", 20000), 0, "", "a");
    row("nested", repeated("<div>", 1001), 1, "nested", "");
    row("style rules",
        "<style>" + repeated("p.x{color:red}", 6000) + "</style>" + repeated("<p>a", 6000), 0,
        "style rules", "a");
}

void TestToolTrust::boundsHtml()
{
    QFETCH(const QByteArray, html);
    QFETCH(const int, exitCode);
    QFETCH(const QByteArray, says);
    QFETCH(const QByteArray, text);

    m_folder->write(QStringLiteral("in.html"), html);
    const Run run = shell("ulimit -t 20; $T convert in.html out.txt");
    QVERIFY2(run.exitCode == exitCode, run.errors.constData());
    QVERIFY2(run.errors.contains(says), run.errors.constData());
    QVERIFY(m_folder->read(QStringLiteral("out.txt")).contains(text));
}

// Of many names, those that links of the document lead to are needed most.
void TestToolTrust::keepsPlacesOfLinks()
{
    QByteArray html = "<a href='#n2001'>a</a>";
    for (int i = 0; i <= 2001; ++i)
        html += "<p id='n" + QByteArray::number(i) + "'>b";
    m_folder->write(QStringLiteral("in.html"), html);
    const Run run = mvrtext("convert in.html out.html", m_folder->path());
    QVERIFY2(run.exitCode == 0 && run.errors.isEmpty(), run.errors.constData());
    const QByteArray written = m_folder->read(QStringLiteral("out.html"));
    QVERIFY(written.contains("name=\"n2001\""));
    QVERIFY(!written.contains("name=\"n2000\""));
}

/*! A cell that spans more columns than there are has those that there are. */
void TestToolTrust::keepsTablesNarrow()
{
    const auto cells = [this](const QByteArray &rows) {
        m_folder->write(QStringLiteral("in.html"), "<table>" + rows + "</table>");
        mvrtext("convert in.html out.rtf", m_folder->path());
        const QByteArray rtf = m_folder->read(QStringLiteral("out.rtf"));
        return rtf.contains("z\\cell") ? rtf.count("\\cellx") : -1;
    };
    QCOMPARE(cells("<tr><td colspan=100>a<tr><td>b<td>c<tr><td>d<td colspan=999>z"), 6);
    QCOMPARE(cells("<tr><td colspan=2>a<td colspan=2>b<tr><td>c<td>d<td>e<td>z"), 8);
    QCOMPARE(cells("<tr><td rowspan=2>a<td>b<tr><td colspan=2>c<td>z"), 8);
}

/*! Of two attributes of one name a browser takes the first. */
void TestToolTrust::writesOneStyleForItems()
{
    m_folder->write(QStringLiteral("in.html"),
                    "&#xD800;<ul><li align=right style='font-weight:700;margin-top:40px'>a</ul>");
    QCOMPARE(mvrtext("convert in.html out.html", m_folder->path()).exitCode, 0);
    const QByteArray written = m_folder->read(QStringLiteral("out.html"));
    const QByteArray item = written.mid(written.indexOf("<li"));
    QCOMPARE(item.left(item.indexOf('>')).count("style="), 1);
    QVERIFY2(item.contains("font-weight") && item.contains("margin-top:40px"), item);
}

/*! Qt makes a link of their first letter alone. */
void TestToolTrust::readsLinksThatArePlaces()
{
    m_folder->write(QStringLiteral("in.html"),
                    "<p><a href='http://a.b' id='i'>abc</a> d <em id='j'>efg</em></p>");
    const auto written = [this](const char *name) {
        return mvrtext(QByteArray("convert in.html ").append(name), m_folder->path()).exitCode == 0
            ? m_folder->read(QLatin1String(name))
            : QByteArray();
    };
    QVERIFY2(written("out.md").contains("[abc](http://a.b) d"), written("out.md"));
    QVERIFY2(written("out.html").contains(">bc</span></a>"), written("out.html"));
    QCOMPARE(written("out.bbcode").count("[url]"), 1);
    QVERIFY2(written("out.bbcode").contains("[i]efg[/i]"), written("out.bbcode"));
    written("out.odt");
    if (shell("python3 -m zipfile -e out.odt odt").errors.isEmpty())
        QVERIFY(m_folder->read(QStringLiteral("odt/content.xml")).contains(">abc</text:span>"));
}

void TestToolTrust::readsOddHtml_data()
{
    QTest::addColumn<QByteArray>("html");

    QTest::newRow("comment that ends in no script")
        << QByteArray("<p>one</p><script>a <!-- b --> <!-- c</script><p>two</p>");
    QTest::newRow("comment that ends in no style sheet")
        << QByteArray("<style>p { color:red } <!--</style><p>one</p><!-- a --><p>two</p>");
    QTest::newRow("style sheet in a comment")
        << QByteArray("<style><!-- p { color:red } --></style><p>one</p><p>two</p>");
    QTest::newRow("characters of no number") << QByteArray("<p>one&#0;</p><p>&#x00;two</p>");
}

void TestToolTrust::readsOddHtml()
{
    QFETCH(const QByteArray, html);
    m_folder->write(QStringLiteral("in.html"), html);
    const Run run = shell("$T convert in.html out.html && $T convert out.html out.txt");
    QVERIFY2(run.exitCode == 0 && run.errors.isEmpty(), run.errors.constData());
    QByteArray text = m_folder->read(QStringLiteral("out.txt"));
    text.replace("\xef\xbf\xbd", "");
    QCOMPARE(text.simplified(), QByteArray("one two"));
}

void TestToolTrust::saysFaultsOfTheSystem_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<QByteArray>("says");

    QTest::newRow("report to a full disk")
        << QByteArray("$T info in.rtf >/dev/full") << QByteArray("No space left on device");
    QTest::newRow("document to a full disk")
        << QByteArray("$T convert in.rtf - --to rtf >/dev/full")
        << QByteArray("No space left on device");
    QTest::newRow("report of a batch to a full disk")
        << QByteArray("mkdir f; $T convert --to txt --into f in.rtf >/dev/full")
        << QByteArray("standard output: No space left on device");
    QTest::newRow("a file larger than the user allows")
        << QByteArray("yes abcdef | head -c 9000 >in.txt; mv in.txt in.rtf; ulimit -f 1;"
                      "$T convert --from txt in.rtf out.txt")
        << QByteArray("out.txt: File too large");
    QTest::newRow("two outputs of one name")
        << QByteArray("$T endnotes in.rtf -o out.txt --notes-out ./out.txt")
        << QByteArray("nothing was written");
    QTest::newRow("full device as a file") << QByteArray("$T convert in.rtf /dev/full --to rtf")
                                           << QByteArray("No space left on device");
    QTest::newRow("help to a full disk")
        << QByteArray("$T --help >/dev/full") << QByteArray("No space left on device");
    QTest::newRow("report to a closed stream")
        << QByteArray("$T info in.rtf >&-") << QByteArray("standard output: Bad file descriptor");
    QTest::newRow("closed input") << QByteArray("$T convert - out.txt --from rtf <&-")
                                  << QByteArray("standard input: Bad file descriptor");
    QTest::newRow("expression without end")
        << QByteArray("printf '{\\\\rtf1 %0500d}' 0 >in.rtf;"
                      "$T replace --regexp --find '(0+)+(0|00)+[xy]' --with y in.rtf -o out.txt")
        << QByteArray("too many steps");
    // Beyond the toolkit's coordinates a layout never comes back.
    QTest::newRow("paragraphs far apart")
        << QByteArray("ulimit -t 60; (printf '{\\\\rtf1 '; yes '\\sb200000 a\\par' | head -n 9000) "
                      ">in.rtf; $T convert in.rtf out.pdf")
        << QByteArray("too long for pages");
    QTest::newRow("paragraphs far apart in a footnote") << QByteArray(
        "ulimit -t 60; (printf '{\\\\rtf1 a{\\\\footnote '; yes '\\sb200000 a\\par' | "
        "head -n 9000; printf '}}') >in.rtf; $T convert in.rtf out.pdf")
                                                        << QByteArray("too long for pages");
    // Cells are measured without pages.
    QTest::newRow("paragraphs far apart in a cell")
        << QByteArray("ulimit -t 60; (printf '{\\\\rtf1\\\\trowd\\\\cellx9000\\\\intbl ';"
                      "yes '\\sb200000 a\\par' | head -n 1700; printf '\\\\cell\\\\row}') >in.rtf;"
                      "$T convert in.rtf out.pdf")
        << QByteArray("too long for pages");
    QTest::newRow("one paragraph of large letters")
        << QByteArray("ulimit -t 60; (printf '{\\\\rtf1\\\\fs2000 '; yes 'aaaa' | head -n 9000) "
                      ">in.rtf; $T convert in.rtf out.png")
        << QByteArray("too long for pages");
    QTest::newRow("one cell of it")
        << QByteArray("ulimit -t 60; (printf '{\\\\rtf1\\\\fs2000\\\\trowd\\\\cellx9000\\\\intbl ';"
                      "yes 'aaaa' | head -n 9000; printf '\\\\cell\\\\row') "
                      ">in.rtf; $T convert in.rtf out.pdf")
        << QByteArray("too long for pages");
    QTest::newRow("script of too many pages")
        << QByteArray("(printf '<FinalDraft><Content>'; yes '<Paragraph StartsNewPage=\"Yes\"/>' |"
                      "head -n 12001; printf '</Content></FinalDraft>') >in.rtf;"
                      "$T convert --from fdx in.rtf out.png")
        << QByteArray("too long for pages");
    QTest::newRow("folder as input")
        << QByteArray("$T convert . out.txt --from rtf") << QByteArray("Is a directory");
    QTest::newRow("folder as output")
        << QByteArray("mkdir out.txt; $T convert in.rtf out.txt") << QByteArray("Is a directory");
    QTest::newRow("no folder") << QByteArray("$T convert in.rtf no/out.txt")
                               << QByteArray("No such file or directory");
}

void TestToolTrust::saysFaultsOfTheSystem()
{
    QFETCH(const QByteArray, command);
    QFETCH(const QByteArray, says);

    const Run run = shell(command);
    QCOMPARE(run.exitCode, 1);
    QVERIFY2(run.errors.contains(says), run.errors.constData());
    const QStringList names = QDir(m_folder->path()).entryList(QDir::Files | QDir::Hidden);
    QCOMPARE(names, QStringList(QStringLiteral("in.rtf")));
}

void TestToolTrust::writesBothFilesOrNone()
{
    write(QStringLiteral("in.rtf"), "{\\rtf1 a{\\footnote new}\\par}");
    write(QStringLiteral("long.rtf"),
          "{\\rtf1 a{\\footnote new}\\par" + repeated("\\sb30000 a\\par ", 9000) + "}");
    for (const char *files : {"in.rtf -o nowhere/out.txt", "in.rtf -o /dev/full -t txt",
                              "in.rtf -o /proc/out.txt", "long.rtf -o out.pdf"}) {
        write(QStringLiteral("notes.txt"), "old");
        const Run run = shell(QByteArray("$T endnotes --notes-out notes.txt ") + files);
        QVERIFY2(run.exitCode == 1 && !run.errors.isEmpty(), files);
        QCOMPARE(read(QStringLiteral("notes.txt")), QByteArray("old"));
        QCOMPARE(shell("ls -A").output, QByteArray("in.rtf\nlong.rtf\nnotes.txt\n"));
    }
}

void TestToolTrust::saysThatMemoryEnds()
{
    if (shell("ulimit -v 4000000; $T --version").exitCode != 0)
        QSKIP("sanitizers take more memory than can be limited");
    QVERIFY(QFile::copy(QStringLiteral(MVR_TEST_DATA "/rtf/tika-testRTFRegularImages.rtf"),
                        m_folder->path(QStringLiteral("pictures.rtf"))));
    // From where not even the libraries are loaded to where there is enough.
    const Run run
        = shell("for mb in $(seq 40 400); do"
                " (ulimit -v $((mb * 1024)); exec $T convert pictures.rtf out.pdf) 2>said;"
                " case $? in 0) test \"$said\"; exit;;"
                " 1) said=said; grep -qi 'out of memory' said || break;;" // libraries too
                " 134) grep -q 'instance of .std::bad_alloc' said || break;;" // in front of main()
                " 127) ;; *) break;; esac; done; echo $mb MB; cat said; exit 1");
    QVERIFY2(run.exitCode == 0, (run.output + run.errors).constData());
}

void TestToolTrust::refusesLargeFilesUnread()
{
    if (shell("ulimit -v 4000000; $T --version").exitCode != 0)
        QSKIP("sanitizers take more memory than can be limited");
    const Run run = shell("truncate -s 1073741825 large.txt; ulimit -v 800000;"
                          "$T convert large.txt out.rtf; $T count <large.txt --from text -");
    QCOMPARE(run.exitCode, 1);
    QCOMPARE(run.errors.count("is larger than 1 GiB"), 2);
}

void TestToolTrust::laysOutLongWords_data()
{
    QTest::addColumn<QByteArray>("word");
    QTest::addColumn<int>("times");

    // For each line, the toolkit looks through the rest of a word: minutes.
    QTest::newRow("letters") << QByteArray("abcdefghij") << 150000;
    QTest::newRow("formats") << QByteArray("{\\b a}{\\i b}") << 75000;
    QTest::newRow("a dictionary's words") << QByteArray("\\u3652?\\u3607?\\u3618?") << 250000;
}

void TestToolTrust::laysOutLongWords()
{
    QFETCH(const QByteArray, word);
    QFETCH(const int, times);

    if (shell("ulimit -v 4000000; $T --version").exitCode != 0)
        QSKIP("sanitizers take more time than can be limited");
    m_folder->write(QStringLiteral("in.rtf"), "{\\rtf1 " + repeated(word, times) + "\\par}");
    const Run run = shell("ulimit -t 25; $T info in.rtf");
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    QVERIFY2(!run.output.contains("pages               0"), run.output.constData());
}

/*! A layout without pages of its own never came back from what is higher than 2^23 units. */
void TestToolTrust::laysOutThousandsOfPages()
{
    const QByteArray picture = "{\\pict\\pngblip\\picwgoal9000\\pichgoal9000 89}";
    m_folder->write(QStringLiteral("in.rtf"),
                    "{\\rtf1 " + repeated(picture + "\\par ", 5000) + "}");
    const Run run = shell("ulimit -t 20; $T info in.rtf");
    QVERIFY2(run.output.contains(" 5000\n"), run.output.constData());
}

void TestToolTrust::laysOutNotesOneByOne()
{
    if (shell("ulimit -v 4000000; $T --version").exitCode != 0)
        QSKIP("sanitizers take more memory than can be limited");
    m_folder->write(QStringLiteral("in.rtf"),
                    "{\\rtf1 " + repeated("a{\\footnote b} ", 12000) + "\\par}");
    const Run run = shell("ulimit -v 220000; $T convert in.rtf out.pdf"); // 13 KB for each note
    QVERIFY2(run.exitCode == 0, run.errors.constData());
}

void TestToolTrust::takesAnyLength_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("pages");

    const auto rtf = [](const char *name, const QByteArray &body, int pages) {
        QTest::newRow(name) << "rtf" << QByteArray("{\\rtf1 " + body + "}") << pages;
    };
    const auto cell = [](const char *name, const QByteArray &table, const QByteArray &own) {
        QTest::newRow(name) << "html"
                            << "<table " + table + "><tr><td " + own + ">a</table>" << 1;
    };
    rtf("no paper", "\\paperw1\\paperh9 a", 1);
    rtf("paper of less than nothing", "\\paperw0\\paperh-360 a", 1);
    rtf("paper as high as margins", "\\paperw14400\\paperh2880 a", 1);
    rtf("more pages than any text has", "\\paperw14400\\paperh1440 " + repeated("a\\par ", 15000),
        0);
    cell("spacing", "cellspacing=-1e308", "");
    cell("padding", "cellpadding=-1e308", "");
    cell("no number", "cellspacing=nan", "");
    cell("padding of a cell", "", "style='padding:-1e308px'");
    const QByteArray apart = "<table style='page-break-before:always'><tr><td>";
    QTest::newRow("tables on pages of their own")
        << "html" << repeated(apart + "a</table>", 9) << 9;
    QTest::newRow("pages in a cell") << "html"
                                     << "<table><tr><td>" + apart + "a</table>" << 1;
    QTest::newRow("padding beyond the paper")
        << "html" << QByteArray("<table cellpadding=999999><tr><td>a</table>") << 1;
    QTest::newRow("depth of a list")
        << "html" << QByteArray("<ul style='-qt-list-indent:99999999'><li>a</ul>") << 1;
    // Each table around it doubles the time for all of the text.
    QTest::newRow("text in tables")
        << "html" << repeated("<table><tr><td>", 12) + repeated("<p>abc def", 3000) << 0;
    QTest::newRow("cells in tables")
        << "html" << repeated("<table><tr><td>", 12) + repeated("<td>a", 3000) << 0;
    // And each row of a cell is one time more.
    QTest::newRow("cells of many rows")
        << "html"
        << repeated("<table><tr><td rowspan=40>", 3) + repeated("<p>a", 500)
            + repeated("</td><td>b" + repeated("<tr><td>b", 39) + "</table>", 3)
        << 0;
}

/*! A layout takes minutes and all memory for some, and so does the toolkit's writer of ODT. */
void TestToolTrust::takesAnyLength()
{
    QFETCH(const QString, format);
    QFETCH(const QByteArray, content);
    QFETCH(const int, pages);

    m_folder->write(QStringLiteral("in.") + format, content);
    const Run run = shell("ulimit -t 20; $T info in." + format.toLatin1() + " && $T convert in."
                          + format.toLatin1() + " out.odt");
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    QVERIFY2(run.output.contains("pages               " + QByteArray::number(pages) + '\n'),
             run.output.constData());
}

/*! A PDF has a picture for each wave, as large as the letters above. */
void TestToolTrust::drawsWavesBelowLargeLetters()
{
    m_folder->write(QStringLiteral("in.rtf"), "{\\rtf1\\ulwave\\fs65535 a a a a}");
    const Run run = shell("ulimit -t 60; $T convert in.rtf out.pdf");
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    QVERIFY(QFileInfo(m_folder->path(QStringLiteral("out.pdf"))).size() < 100000);
}

/*! All cells of a row are gone through for each part that a page shows of it. */
void TestToolTrust::drawsRowsOfManyPages()
{
    QByteArray row = "\\trowd";
    for (int cell = 1; cell <= 500; ++cell)
        row += "\\cellx" + QByteArray::number(cell * 10);
    row += "\\intbl " + repeated("\\sb30000 a\\par ", 150) + "\\cell "
        + repeated("\\sb0 a\\cell ", 499) + "\\row";
    m_folder->write(QStringLiteral("in.rtf"), "{\\rtf1 " + row + "}");
    Run run = shell("ulimit -t 20; $T convert in.rtf out.pdf");
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    m_folder->write(QStringLiteral("in.rtf"), "{\\rtf1 " + repeated(row, 4) + "}");
    run = shell("ulimit -t 20; $T convert in.rtf out.pdf");
    QVERIFY2(run.errors.contains("too long for pages"), run.errors.constData());
}

void TestToolTrust::writesAnyTextAsXml()
{
    m_folder->write(QStringLiteral("in.html"),
                    "<p>a&#xFFFF;<a href='x&#xFFFE;y'>b</a>&#xDFFF;c<b>d&#xD83D;</b>e&#128512;");
    Run run = shell("$T convert in.html out.fdx && $T convert in.html out.odt");
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    QVERIFY(m_folder->read(QStringLiteral("out.fdx")).contains(">a\xef\xbf\xbd"));
    run = shell("python3 -m zipfile -e out.odt odt");
    if (!run.errors.isEmpty())
        QSKIP("There is no python3 to unpack the file.");
    QXmlStreamReader xml(m_folder->read(QStringLiteral("odt/content.xml")));
    QString text;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::Characters)
            text += xml.text();
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QVERIFY2(text.contains(QStringLiteral("abcde\U0001F600")), qPrintable(text));
}

/*! Qt's writer of ODT does not, nor those around signs of objects: all the rest stood in them. */
void TestToolTrust::endsLinksOfPictures()
{
    m_folder->write(QStringLiteral("in.html"),
                    "<p><a href='http://a.b'><img src=x>one</a></p><p><a href='http://a.b'>"
                    "&#xFFFC;</a><a href='http://c.d'>t&#xFFFC;wo</a></p><p>three</p>");
    Run run = shell("$T convert in.html out.odt && python3 -m zipfile -e out.odt odt");
    if (run.exitCode != 0)
        QSKIP("There is no python3 to unpack the file.");
    QXmlStreamReader xml(m_folder->read(QStringLiteral("odt/content.xml")));
    QStringList paragraphs;
    bool isOpen = false;
    while (!xml.atEnd()) {
        xml.readNext();
        if (xml.name() == QLatin1String("p")) {
            QVERIFY2(isOpen != xml.isStartElement(), "a paragraph stands in another one");
            isOpen = xml.isStartElement();
            paragraphs += isOpen ? QStringList(QString()) : QStringList();
        } else if (isOpen && xml.isCharacters()) {
            paragraphs.last() += xml.text().toString().trimmed();
        }
    }
    QCOMPARE(paragraphs.join(QLatin1Char('|')), QStringLiteral("one|two|three"));
    const QByteArray written = m_folder->read(QStringLiteral("odt/content.xml"));
    QVERIFY(written.contains("xlink:href=\"http://a.b\"><text:span"));
    QVERIFY(written.contains("<draw:frame draw:name=\"x\""));
}

/*! Where one is no object, the toolkit leaves out the text beside it. */
void TestToolTrust::writesSignsOfObjects()
{
    m_folder->write(QStringLiteral("in.txt"), "one \xef\xbf\xbc two");
    for (const char *name : {"out.html", "out.bbcode"}) {
        const Run run = mvrtext(QByteArray("convert in.txt ").append(name), m_folder->path());
        QVERIFY2(run.exitCode == 0, run.errors.constData());
        QVERIFY2(m_folder->read(QLatin1String(name)).contains("one  two"), name);
    }
}

/*! BBCode of text in which formats begin and end at breaks of lines, and go over them. */
void TestToolTrust::writesLinesOfFormats()
{
    m_folder->write(QStringLiteral("in.html"),
                    "<p>a <i>b<br>c</i> d <b>e<br></b>f<u><br><br>g</u></p>");
    QCOMPARE(mvrtext("convert in.html out.bbcode", m_folder->path()).exitCode, 0);
    QCOMPARE(m_folder->read(QStringLiteral("out.bbcode")).trimmed(),
             QByteArray("a [i]b[/i]\n[i]c[/i] d [b]e[/b]\nf\n\n[u]g[/u]"));
}

QTEST_GUILESS_MAIN(TestToolTrust)
#include "tst_tooltrust.moc"
