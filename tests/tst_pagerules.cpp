// SPDX-License-Identifier: MIT
#include "PageDump.h"

#include <QRandomGenerator>
#include <QtTest>

#include <map>

using namespace MVRFinalDraft;

Q_DECLARE_METATYPE(MVRScreenplaySettings)

namespace {

/*! Scripts of all elements in orders and lengths that nobody would think of. */
class RandomScript
{
public:
    explicit RandomScript(quint32 seed)
        : m_random(seed)
    {
    }

    MVRScreenplay make()
    {
        MVRScreenplay script;
        MVRScreenplaySettings &settings = script.settings;
        settings.pageSize.setHeight(144.0 + 12.0 * (14 + below(50)));
        settings.breaksAtSentences = below(4) > 0;
        settings.marksBrokenSpeech = below(3) > 0;
        settings.namesBrokenSpeech = below(3) > 0;
        settings.continuesSpeakers = below(2) > 0;
        settings.marksBrokenScene = below(3) == 0;
        settings.continuesBrokenScene = below(3) == 0;
        const int scenes = 3 + below(8);
        for (int i = 0; i < scenes; ++i)
            addScene(script.body);
        return script;
    }

private:
    int below(int limit) { return int(m_random.bounded(limit)); }

    QString text(int words)
    {
        static const QStringList known
            = QStringLiteral("rain harbour a the boat-house old Anna? No. waits. light --and "
                             "never! stands quay "
                             "\"So.\" somewhere-or-other Mr. Tom… (quietly) x again, nobody "
                             "incomprehensibilities "
                             "two  blanks lines\nbroken")
                  .split(QLatin1Char(' '));
        QStringList text;
        for (int i = 0; i < words; ++i)
            text << known[below(known.size())];
        return text.join(QLatin1Char(' '));
    }

    void addSpeech(QVector<MVRScreenplayParagraph> &body, int dual)
    {
        const int first = body.size();
        body.append(
            scriptParagraph(QStringLiteral("Character"),
                            below(2) ? QStringLiteral("Anna") : QStringLiteral("TOM (V.O.)")));
        const int parts = 1 + below(3);
        for (int i = 0; i < parts; ++i) {
            if (below(3) == 0)
                body.append(scriptParagraph(QStringLiteral("Parenthetical"), text(1 + below(8))));
            body.append(
                scriptParagraph(QStringLiteral("Dialogue"), text(1 + below(dual ? 60 : 120))));
        }
        for (int i = first; i < body.size(); ++i)
            body[i].dualDialogue = dual;
    }

    void addScene(QVector<MVRScreenplayParagraph> &body)
    {
        body.append(scriptParagraph(QStringLiteral("Scene Heading"), text(1 + below(12))));
        body.last().attr.startsNewPage = below(10) == 0;
        const int parts = 1 + below(12);
        for (int i = 0; i < parts; ++i) {
            switch (below(7)) {
            case 0:
                body.append(
                    scriptParagraph(QStringLiteral("Transition"), QStringLiteral("cut to:")));
                break;
            case 1:
                body.append(scriptParagraph(QStringLiteral("Shot"), text(3)));
                body.append(scriptParagraph(QStringLiteral("Action"), text(below(60))));
                break;
            case 2:
                ++m_dual;
                addSpeech(body, m_dual);
                addSpeech(body, m_dual);
                break;
            case 3:
            case 4:
                addSpeech(body, 0);
                break;
            default:
                body.append(scriptParagraph(QStringLiteral("Action"), text(below(150))));
            }
        }
    }

    QRandomGenerator m_random;
    int m_dual = 0;
};

bool isBody(const MVRScreenplayLine &line)
{
    return line.kind <= MVRScreenplayLine::SceneTop;
}

QString withoutBlanks(QString text)
{
    return text.remove(QLatin1Char(' ')).remove(QLatin1Char('\n'));
}

QString textOf(const MVRScreenplayParagraph &paragraph)
{
    QString text;
    for (const MVRScreenplayRun &run : paragraph.runs)
        text += run.attr.style.testFlag(AllCaps) ? run.text.toUpper() : run.text;
    return text;
}

/*! The lines of one paragraph on one page. */
struct Part
{
    int page;
    int lines;
};

std::map<int, QVector<Part>> partsOf(const QVector<MVRScreenplayPage> &pages)
{
    std::map<int, QVector<Part>> parts;
    for (int page = 0; page < pages.size(); ++page) {
        for (const MVRScreenplayLine &line : pages[page].lines) {
            if (line.paragraph < 0)
                continue;
            QVector<Part> &known = parts[line.paragraph];
            if (known.isEmpty() || known.last().page != page)
                known.append({page, 0});
            ++known.last().lines;
        }
    }
    return parts;
}

/*! The last paragraph that each column of a page shows. */
QVector<int> lastParagraphs(const MVRScreenplayPage &page)
{
    QVector<int> last(2, -1);
    double end[2] = {-1.0, -1.0};
    for (const MVRScreenplayLine &line : page.lines) {
        if (line.paragraph >= 0 && line.y > end[line.column]) {
            end[line.column] = line.y;
            last[line.column] = line.paragraph;
        }
    }
    if (end[1] < end[0])
        last[1] = -1;
    return last;
}

bool holds(const MVRScreenplayPage &page, MVRScreenplayLine::Kind kind)
{
    return std::any_of(page.lines.cbegin(), page.lines.cend(),
                       [kind](const MVRScreenplayLine &line) { return line.kind == kind; });
}

bool isSpeech(const MVRScreenplayParagraph &paragraph)
{
    return paragraph.paginateAs == Dialogue || paragraph.paginateAs == Parenthetical;
}

}

/*! The rules of breaks on scripts at random, and the measuring of text. */
class TestPageRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsRules_data();
    void keepsRules();
    void keepsText_data() { keepsRules_data(); }
    void keepsText();
    void breaksLongParagraphs();
    void survivesAnySettings_data();
    void survivesAnySettings();
    void placesWideAndLeftwardText();
    void breaksLongTextOfAnyScript();
    void justifiesLines();
    void movesLinesWithTabsAsTheyAre();
    void tellsColumnsApart();
    void goesOverWholeWhereNoSentenceEnds();
    void titlePageGoesOverTheMargin();
    void pagesStartWhereAsked();
    void largeLettersNeedHigherLines();
    void endsSentencesAtNoInitial();
    void takesNoSpacingForSingle();
};

void TestPageRules::keepsRules_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 300; ++seed)
        QTest::newRow(QByteArray::number(seed).constData()) << seed;
}

void TestPageRules::keepsText()
{
    QFETCH(const quint32, seed);
    const MVRScreenplay script = RandomScript(seed).make();
    QVector<QString> seen(script.body.size());
    const double bottom = script.settings.pageSize.height() - script.settings.bottomMargin;
    const QVector<MVRScreenplayPage> pages = MVRScreenplayPages(script).pages();
    for (const MVRScreenplayPage &page : pages) {
        for (const MVRScreenplayLine &line : page.lines) {
            if (line.paragraph >= 0)
                seen[line.paragraph] += line.text();
            if (isBody(line))
                QVERIFY2(line.y + line.height < bottom + 0.1, qPrintable(line.text()));
            for (const MVRScreenplayLine::Run &run : line.runs)
                QVERIFY(run.x + run.width <= script.settings.pageSize.width());
        }
    }
    for (int i = 0; i < script.body.size(); ++i) {
        const QString expected = textOf(script.body[i]);
        if (script.body[i].type == QLatin1String("Character"))
            QVERIFY(withoutBlanks(seen[i]).startsWith(withoutBlanks(expected)));
        else
            QCOMPARE(withoutBlanks(seen[i]), withoutBlanks(expected));
    }
}

void TestPageRules::keepsRules()
{
    QFETCH(const quint32, seed);
    const MVRScreenplay script = RandomScript(seed).make();
    const QVector<MVRScreenplayPage> pages = MVRScreenplayPages(script).pages();
    const std::map<int, QVector<Part>> parts = partsOf(pages);
    for (const auto &[index, places] : parts) {
        const MVRScreenplayParagraph &source = script.body[index];
        for (const Part &part : places)
            QVERIFY2(places.size() == 1 || part.lines >= 2, qPrintable(textOf(source)));
        if (source.paginateAs != Action && source.paginateAs != Dialogue)
            QCOMPARE(places.size(), 1);
    }
    for (int page = 0; page + 1 < pages.size(); ++page) {
        const QVector<int> lasts = lastParagraphs(pages[page]);
        for (const int last : lasts) {
            if (last < 0 || last + 1 >= script.body.size()
                || script.body[last + 1].attr.startsNewPage)
                continue;
            const MVRScreenplayParagraph &source = script.body[last];
            QVERIFY2(source.paginateAs != SceneHeading && source.paginateAs != Character
                         && source.paginateAs != Parenthetical,
                     qPrintable(textOf(source)));
            const bool isBroken = parts.at(last).last().page > page
                || (isSpeech(source) && isSpeech(script.body[last + 1]));
            if (!isBroken || !isSpeech(source))
                continue;
            QCOMPARE(holds(pages[page], MVRScreenplayLine::More),
                     script.settings.marksBrokenSpeech);
            QCOMPARE(holds(pages[page + 1], MVRScreenplayLine::Continued),
                     script.settings.namesBrokenSpeech);
        }
    }
}

void TestPageRules::breaksLongParagraphs()
{
    // One paragraph and one speech that go over hundreds of pages.
    MVRScreenplay script;
    const QString words = QStringLiteral("He waits. And waits, ").repeated(20000);
    script.body = {scriptParagraph(QStringLiteral("Action"), words),
                   scriptParagraph(QStringLiteral("Character"), QStringLiteral("ANNA")),
                   scriptParagraph(QStringLiteral("Dialogue"), words),
                   scriptParagraph(QStringLiteral("Action"), QString(200000, QLatin1Char('x'))),
                   scriptParagraph(QStringLiteral("Action"), QString(200000, QLatin1Char(' ')))};
    QVERIFY(MVRScreenplayPages(script).pages().size() > 400);
}

void TestPageRules::survivesAnySettings_data()
{
    QTest::addColumn<MVRScreenplaySettings>("settings");

    MVRScreenplaySettings settings;
    settings.pageSize = QSizeF(-1.0, qQNaN());
    QTest::newRow("no paper") << settings;
    settings = MVRScreenplaySettings();
    settings.topMargin = settings.bottomMargin = 400.0;
    QTest::newRow("margins that leave nothing") << settings;
    settings = MVRScreenplaySettings();
    settings.lineHeight = 0.0;
    QTest::newRow("no height of lines") << settings;
    settings = MVRScreenplaySettings();
    settings.pageSize = QSizeF(72.0, 72.0);
    settings.marksBrokenScene = settings.continuesBrokenScene = true;
    QTest::newRow("a page of an inch") << settings;
    settings = MVRScreenplaySettings();
    settings.dualLeft = 9.0;
    settings.dualRight = qInf();
    QTest::newRow("columns beside the paper") << settings;
}

void TestPageRules::survivesAnySettings()
{
    QFETCH(const MVRScreenplaySettings, settings);
    MVRScreenplay script = RandomScript(7).make();
    script.settings = settings;
    script.body[1].attr.leftIndent = qInf();
    script.body[2].attr.rightIndent = -50.0;
    script.body[9].attr.leftIndent = 360.0;
    script.body[9].attr.alignment = Qt::AlignHCenter;
    script.body[10].attr.firstIndent = -720.0;
    script.body[3].attr.spacing = 1e9;
    script.body[7].attr.spacing = 4.9e-324;
    script.body[4].runs.first().attr.size = 1e9;
    script.body[5].attr.spaceBefore = 1000000000;
    script.body[6].runs.first().attr.size = 390.0;
    QVector<QString> seen(script.body.size());
    const MVRScreenplayPages layout(script);
    const QVector<MVRScreenplayPage> pages = layout.pages();
    for (const MVRScreenplayPage &page : pages) {
        for (const MVRScreenplayLine &line : page.lines) {
            if (line.paragraph < 0 || line.runs.isEmpty())
                continue;
            seen[line.paragraph] += line.text();
            const double x = line.runs.first().x;
            QVERIFY2(x >= 0.0 && x < layout.pageSize().width(), qPrintable(line.text()));
            QVERIFY2(line.y < layout.pageSize().height(), qPrintable(line.text()));
        }
    }
    for (int i = 0; i < script.body.size(); ++i)
        QVERIFY(withoutBlanks(seen[i]).startsWith(withoutBlanks(textOf(script.body[i]))));
}

void TestPageRules::placesWideAndLeftwardText()
{
    MVRScreenplay script;
    const QString hebrew = QStringLiteral("שלום עולם, ");
    const QString chinese = QStringLiteral("雨停了。船没有回来，");
    script.body = {scriptParagraph(QStringLiteral("Action"), hebrew.repeated(12)),
                   scriptParagraph(QStringLiteral("Action"), chinese.repeated(20))};
    const QVector<MVRScreenplayPage> pages = MVRScreenplayPages(script).pages();
    int lines[2] = {0, 0};
    for (const MVRScreenplayLine &line : pages.first().lines) {
        if (line.paragraph < 0)
            continue;
        QVERIFY(line.needsShaping);
        ++lines[line.paragraph];
        const MVRScreenplayLine::Run &run = line.runs.first();
        QVERIFY(run.x > 107.0 && run.x + run.width < 541.0);
        if (line.paragraph == 0) // begins at the right
            QVERIFY(qAbs(run.x + run.width - 540.0) < 1.0);
        else
            QVERIFY(qAbs(run.x - 108.0) < 0.1);
    }
    QVERIFY(lines[0] > 1);
    QVERIFY(lines[1] > 1); // although it has no blanks

    // Letters join, however far behind the paragraph's start: as many words fit on each line.
    script.body
        = {scriptParagraph(QStringLiteral("Action"), QStringLiteral("بيبيبيبي ").repeated(90))};
    QStringList arabic;
    const MVRScreenplayPage page = MVRScreenplayPages(script).pages().first();
    for (const MVRScreenplayLine &line : page.lines) {
        if (line.paragraph == 0)
            arabic.append(line.text().trimmed());
    }
    QVERIFY(arabic.size() > 3);
    QCOMPARE(arabic[2], arabic[0]);
}

// It is looked through in pieces, between which no place for a break is lost or made up.
void TestPageRules::breaksLongTextOfAnyScript()
{
    const QString sentences = QStringLiteral("ภาษาไทยไม่มีช่องว่าง “Naïve” 日本語の文章、"
                                             "e\u0301tude well-known 12.5 % ");
    QString text = sentences.repeated(200);
    MVRScreenplay script;
    script.body.append(scriptParagraph(QStringLiteral("Action"), text));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Line, text);
    const MVRScreenplayPages pages(script);
    QString shown;
    for (const MVRScreenplayPage &page : pages.pages()) {
        for (const MVRScreenplayLine &line : page.lines) {
            if (line.kind != MVRScreenplayLine::Text)
                continue;
            while (shown.size() < text.size() && text[shown.size()] == QLatin1Char(' '))
                shown += QLatin1Char(' ');
            finder.setPosition(shown.size());
            // Where there is a dictionary for Thai, the toolkit knows of no break between it and a
            // blank.
            QVERIFY2(finder.isAtBoundary() || shown.endsWith(QLatin1Char(' ')),
                     qPrintable(line.text()));
            shown += line.text();
            while (shown.endsWith(QLatin1Char(' ')))
                shown.chop(1);
        }
    }
    QCOMPARE(shown.trimmed(), text.trimmed());
}

void TestPageRules::justifiesLines()
{
    MVRScreenplay script;
    const QString text = QStringLiteral("  One line of text and\tmore after the tab.\n")
        + QStringLiteral("Words of all lengths, quite some. ").repeated(9);
    script.body = {scriptParagraph(QStringLiteral("Action"), text.trimmed())};
    script.body[0].attr.alignment = Qt::AlignJustify;
    script.settings.pageSize.setHeight(144.0 + 12.0 * 4); // breaks in the middle
    QString seen;
    int wide = 0;
    const QVector<MVRScreenplayPage> pages = MVRScreenplayPages(script).pages();
    QCOMPARE(pages.size(), 2);
    for (int i = 0; i < pages.size(); ++i) {
        QVector<MVRScreenplayLine> lines = pages[i].lines;
        while (lines.last().paragraph < 0)
            lines.removeLast();
        for (const MVRScreenplayLine &line : qAsConst(lines)) {
            if (line.paragraph < 0)
                continue;
            seen += line.text();
            const MVRScreenplayLine::Run last = line.runs.last();
            const bool isWide = qAbs(last.x + last.width - 540.0) < 0.1;
            wide += isWide ? 1 : 0;
            // Lines that something ended, and the paragraph's last, are as wide as they are.
            if (&line == &lines.last() || line.text().contains(QLatin1String("One line")))
                QVERIFY2(!isWide && line.runs.size() <= 2, qPrintable(line.text()));
            QCOMPARE(line.runs.first().x, 108.0);
        }
    }
    QVERIFY(wide > 2);
    QCOMPARE(withoutBlanks(seen).remove(QLatin1Char('\t')),
             withoutBlanks(text).remove(QLatin1Char('\t')));
}

// Tabs are as wide as if the line began on the left: it ends on the right, at no later stop.
void TestPageRules::movesLinesWithTabsAsTheyAre()
{
    MVRScreenplay script;
    const QString texts[]
        = {QStringLiteral("ab\tcd"), QStringLiteral("ab\tcd"), QStringLiteral("שלום\tעולם")};
    for (const QString &text : texts)
        script.body.append(scriptParagraph(QStringLiteral("Action"), text));
    script.body[0].attr.alignment = Qt::AlignRight;
    script.body[1].attr.alignment = Qt::AlignHCenter;
    const double ends[] = {540.0, 324.0 + 25.2, 540.0};
    int lines = 0;
    const MVRScreenplayPage page = MVRScreenplayPages(script).pages().first();
    for (const MVRScreenplayLine &line : page.lines) {
        if (line.paragraph < 0)
            continue;
        ++lines;
        QCOMPARE(line.runs.size(), 2);
        const MVRScreenplayLine::Run &last = line.runs.last();
        QVERIFY2(qAbs(last.x + last.width - ends[line.paragraph]) < 0.1, qPrintable(line.text()));
        if (line.paragraph < 2)
            QVERIFY2(qAbs(last.x - line.runs.first().x - 36.0) < 0.1, qPrintable(line.text()));
    }
    QCOMPARE(lines, 3);
}

void TestPageRules::tellsColumnsApart()
{
    const MVRScreenplayPage page
        = MVRScreenplayPages(screenplayOf(QStringLiteral("dual"))).pages()[0];
    int lines[2] = {0, 0};
    for (const MVRScreenplayLine &line : page.lines) {
        ++lines[line.column];
        if (line.column == 1)
            QVERIFY2(line.runs.first().x > 306.0, qPrintable(line.text()));
    }
    QVERIFY(lines[0] > 10 && lines[1] > 8);
}

void TestPageRules::goesOverWholeWhereNoSentenceEnds()
{
    // A page of 24 lines; so many are left below the first paragraph, an empty one included.
    const auto kept = [](int left, bool atSentences) {
        MVRScreenplay script;
        script.settings.pageSize.setHeight(144.0 + 12.0 * 24);
        script.settings.breaksAtSentences = atSentences;
        script.body
            = {scriptParagraph(QStringLiteral("Action"),
                               QStringLiteral("x\n").repeated(23 - left) + QLatin1Char('x')),
               scriptParagraph(QStringLiteral("Action"), QStringLiteral("word ").repeated(130))};
        int lines = 0;
        const MVRScreenplayPage page = MVRScreenplayPages(script).pages().first();
        for (const MVRScreenplayLine &line : page.lines)
            lines += line.paragraph == 1 ? 1 : 0;
        return lines;
    };
    QCOMPARE(kept(6, true), 0); // a quarter of the page
    QCOMPARE(kept(6, false), 5);
    QCOMPARE(kept(8, true), 7);
}

void TestPageRules::titlePageGoesOverTheMargin()
{
    const auto titlePages = [](int lines, int empty) {
        MVRScreenplay script;
        for (int i = 0; i < lines + empty; ++i)
            script.titlePage.append(scriptParagraph(QStringLiteral("General"),
                                                    i < lines ? QStringLiteral("x") : QString()));
        return MVRScreenplayPages(script).pages().size() - 1;
    };
    QCOMPARE(titlePages(57, 0), 1); // down to the footer's margin
    QCOMPARE(titlePages(58, 0), 2);
    QCOMPARE(titlePages(50, 40), 1); // what is empty needs no page
}

void TestPageRules::pagesStartWhereAsked()
{
    MVRScreenplay script;
    for (const char *type : {"Scene Heading", "Action", "Character", "Dialogue", "Dialogue"})
        script.body.append(scriptParagraph(QLatin1String(type), QStringLiteral("one\ntwo")));
    const auto pageOf = [&script](int index) {
        const QVector<MVRScreenplayPage> pages = MVRScreenplayPages(script).pages();
        const auto parts = partsOf(pages);
        return parts.at(index).size() == 1 ? parts.at(index).first().page : -1;
    };
    QCOMPARE(pageOf(4), 0);
    script.body[0].attr.startsNewPage = true; // there is one already
    QCOMPARE(pageOf(0), 0);
    script.body[1].attr.startsNewPage = true; // stronger than the heading's wish
    QCOMPARE(pageOf(0), 0);
    QCOMPARE(pageOf(1), 1);
    script.body[4].attr.startsNewPage = true; // in a speech
    QCOMPARE(pageOf(3), 1);
    QCOMPARE(pageOf(4), 2);
}

void TestPageRules::largeLettersNeedHigherLines()
{
    MVRScreenplay script;
    script.body = {scriptParagraph(QStringLiteral("Action"), QStringLiteral("a\nb"))};
    script.body[0].runs[0].attr.size = 18.0;
    const MVRScreenplayPage page = MVRScreenplayPages(script).pages().first();
    QCOMPARE(page.lines.last().y - page.lines.first().y, 18.0);
}

void TestPageRules::endsSentencesAtNoInitial()
{
    // A paragraph of eight lines where five more have room: what could end the page's last
    // sentence stands in the fourth.
    const auto lastWord = [](const QString &sign) {
        MVRScreenplay script;
        script.settings.pageSize.setHeight(144.0 + 12.0 * 11);
        script.body = {scriptParagraph(QStringLiteral("Action"),
                                       QStringLiteral("word\n").repeated(4) + QLatin1Char('x')),
                       scriptParagraph(QStringLiteral("Action"),
                                       QStringLiteral("word ").repeated(40) + sign
                                           + QStringLiteral(" Smith")
                                           + QStringLiteral(" word").repeated(40))};
        QString text;
        const MVRScreenplayPage page = MVRScreenplayPages(script).pages().first();
        for (const MVRScreenplayLine &line : page.lines) {
            if (line.paragraph == 1)
                text = line.text().trimmed();
        }
        return text.section(QLatin1Char(' '), -1);
    };
    QCOMPARE(lastWord(QStringLiteral("go.")), QStringLiteral("go."));
    QCOMPARE(lastWord(QStringLiteral("I.")), QStringLiteral("I."));
    QVERIFY(lastWord(QStringLiteral("J.")) != QStringLiteral("J."));
    QVERIFY(lastWord(QStringLiteral("Mr.")) != QStringLiteral("Mr."));
}

void TestPageRules::takesNoSpacingForSingle()
{
    MVRScreenplay script;
    for (const double spacing : {0.0, 1.0, 2.0}) {
        script.body.append(scriptParagraph(QStringLiteral("Action"), QStringLiteral("a\nb")));
        script.body.last().attr.spacing = spacing;
    }
    QVector<double> heights;
    const MVRScreenplayPage page = MVRScreenplayPages(script).pages().first();
    for (const MVRScreenplayLine &line : page.lines) {
        if (line.paragraph >= 0)
            heights.append(line.height);
    }
    QCOMPARE(heights, QVector<double>({12, 12, 12, 12, 24, 24}));
}

QTEST_MAIN(TestPageRules)
#include "tst_pagerules.moc"
