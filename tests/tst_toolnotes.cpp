// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

/*! The commands that list and change notes and links. */
class TestToolNotes : public ToolTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void exitCodes_data();
    void exitCodes();
    void movesNotes_data();
    void movesNotes();
    void saysWhatWouldMove();
    void removesTrimsAndEncloses_data();
    void removesTrimsAndEncloses();
    void keepsTablesAroundNotes();
    void saysWhoAndWhen();
    void listsAndRemovesLinks();
    void writesLinksUnderNotes();
    void leftOutNotesPartNoLinks();
    void tellsListingsFromText();

private:
    QStringList kinds(const char *file) const;
};

namespace {

// A comment on "text", a footnote behind "second", an annotation and a footnote in the text.
const char manuscript[]
    = R"({\rtf1 Some text{\*\atnid A}{\*\atnauthor A}\chatn{\*\annotation  said  A} and )"
      R"(second{\footnote  Below. } word \{\\Mvrn_annot \\color=\{\\R=1\\G=0\\B=0\} )"
      R"(\\text= aside\\end_Mvrn_annot\}, then\{\\Mvrn_fn= noted \\end_Mvrn_fn\} on.\par})";

}

void TestToolNotes::init()
{
    QVERIFY(newFolder());
    m_folder->write(QStringLiteral("in.rtf"), manuscript);
}

/*! The kind and content of each note. */
QStringList TestToolNotes::kinds(const char *file) const
{
    const Run run
        = mvrtext({QStringLiteral("notes"), QStringLiteral("--json"), QString::fromLatin1(file)},
                  QByteArray(), m_folder->path());
    QStringList kinds;
    const QJsonArray notes = QJsonDocument::fromJson(run.output).array();
    for (const QJsonValue &note : notes)
        kinds << note[QLatin1String("kind")].toString() + QLatin1Char(':')
                + note[QLatin1String("content")].toString();
    return kinds;
}

void TestToolNotes::exitCodes_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QString>("message");

    QTest::newRow("no output") << "notes in.rtf --make inline" << 2 << "-o OUT";
    QTest::newRow("no change") << "notes in.rtf -o out.rtf" << 2 << "--make";
    QTest::newRow("no such kind") << "notes in.rtf --make poems -o out.rtf" << 2 << "poems";
    QTest::newRow("one string") << "notes in.rtf --enclose [ -o out.rtf" << 2 << "two strings";
    QTest::newRow("itself") << "notes in.rtf --trim -o in.rtf" << 1 << "input itself";
    QTest::newRow("links without change") << "links in.rtf -o out.rtf" << 2 << "--remove items";
    QTest::newRow("links of nothing") << "links nowhere.rtf" << 1 << "nowhere";
}

void TestToolNotes::exitCodes()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, message);
    const Run run = mvrtext(arguments.toUtf8().constData(), m_folder->path());
    QTEST(run.exitCode, "exitCode");
    QVERIFY2(run.errors.contains(message.toUtf8()), run.errors.constData());
    QVERIFY(m_folder->read(QStringLiteral("out.rtf")).isEmpty());
    QCOMPARE(m_folder->read(QStringLiteral("in.rtf")), QByteArray(manuscript));
}

void TestToolNotes::movesNotes_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("notes");

    QTest::newRow("into the text") << "inline"
                                   << "inline annotation:said  A|inline footnote:Below.|inline "
                                      "annotation:aside|inline footnote:noted";
    QTest::newRow("beside the text")
        << "inspector"
        << "comment:said  A|footnote:Below.|comment:aside|footnote:noted";
    QTest::newRow("one kind") << "footnotes"
                              << "footnote:said  A|footnote:Below.|footnote:aside|footnote:noted";
    QTest::newRow("one kind in the text")
        << "annotations"
        << "inline annotation:said  A|inline annotation:Below.|inline annotation:aside|inline "
           "annotation:noted";
}

void TestToolNotes::movesNotes()
{
    QFETCH(const QString, kind);
    const QString arguments = QStringLiteral("notes in.rtf -o out.rtf --make ") + kind;
    const Run run = mvrtext(arguments.toUtf8().constData(), m_folder->path());
    QVERIFY2(run.exitCode == 0 && run.errors.isEmpty(), run.errors.constData());
    QTEST(kinds("out.rtf").join(QLatin1Char('|')), "notes");
}

void TestToolNotes::saysWhatWouldMove()
{
    const Run run = mvrtext("notes in.rtf --make comments --dry-run", m_folder->path());
    QCOMPARE(run.output,
             QByteArray("1 footnote -> comments\n1 inline annotation -> comments\n"
                        "1 inline footnote -> comments\n"));
    const Run none = mvrtext("notes out.rtf --make inline --dry-run", m_folder->path());
    QCOMPARE(none.exitCode, 1);
    m_folder->write(QStringLiteral("bare.txt"), "no note");
    QCOMPARE(mvrtext("notes bare.txt --remove all --dry-run", m_folder->path()).output,
             QByteArray("no note would change\n"));
}

void TestToolNotes::removesTrimsAndEncloses_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<QString>("text");

    QTest::newRow("remove in the text") << "--remove inline"
                                        << "Some text and second word , then on.";
    QTest::newRow("brackets") << "--remove inline-footnotes --enclose [] --as-text"
                              << "Some text and second word  [aside], then on.";
    QTest::newRow("everything in brackets")
        << "--make annotations --trim --enclose << --as-text"
        << "Some text <said  A< and second <Below.< word  <aside<, then <noted<  on.";
}

void TestToolNotes::removesTrimsAndEncloses()
{
    QFETCH(const QString, options);
    const QString arguments = QStringLiteral("notes in.rtf -o out.txt ") + options;
    const Run run = mvrtext(arguments.toUtf8().constData(), m_folder->path());
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    QTEST(QString::fromUtf8(m_folder->read(QStringLiteral("out.txt"))).trimmed(), "text");
}

void TestToolNotes::listsAndRemovesLinks()
{
    m_folder->write(QStringLiteral("in.html"),
                    "<p>See <a href=42>chapter <b>two</b></a>, <a href=http://a/b>web</a>.</p>");
    QCOMPARE(mvrtext("links in.html", m_folder->path()).output,
             QByteArray("ITEM  PLACE   TEXT\n42    1:4-15  chapter two\n"));
    mvrtext("convert in.html in2.rtf", m_folder->path());
    const QJsonArray links
        = QJsonDocument::fromJson(mvrtext("links --json in2.rtf", m_folder->path()).output).array();
    QCOMPARE(links.size(), 1);
    QCOMPARE(links[0][QLatin1String("item")].toInt(), 42);
    QCOMPARE(
        mvrtext("links in.html --remove items -o - --to md", m_folder->path()).output.trimmed(),
        QByteArray("See **chapter two**, [web](http://a/b)."));
    QCOMPARE(mvrtext("links in2.rtf --remove all -o - --to md", m_folder->path()).output.trimmed(),
             QByteArray("---\ntitle: in\n---\n\nSee chapter **two**, web."));
}

void TestToolNotes::keepsTablesAroundNotes()
{
    const QByteArray table
        = R"({\rtf1 {\trowd\cellx3000\cellx6000\intbl left\cell right \{\\Mvrn_fn=note\\end_Mvrn_fn\}\cell)"
          R"(\row}\pard \{\\Mvrn_fn=note 2\\end_Mvrn_fn\}after\par})";
    m_folder->write(QStringLiteral("in.rtf"), table);
    QCOMPARE(kinds("in.rtf").join(QLatin1Char('|')),
             QStringLiteral("inline footnote:note|inline footnote:note 2"));
    QCOMPARE(mvrtext("convert --to txt in.rtf -", m_folder->path()).output.simplified(),
             QByteArray("left right after"));
}

void TestToolNotes::saysWhoAndWhen()
{
    m_folder->write(QStringLiteral("in.rtf"),
                    R"({\rtf1 one{\*\atnid A}{\*\atnauthor Ada}\chatn{\*\annotation)"
                    R"({\*\atntime\yr2001\mo12\dy31\hr8\min5}x} two{\footnote y}})");
    // Also after another program's file was written anew.
    mvrtext("convert in.rtf out.rtf", m_folder->path());
    for (const char *file : {"in.rtf", "out.rtf"}) {
        const Run run = mvrtext(
            {QStringLiteral("notes"), QStringLiteral("--json"), QString::fromLatin1(file)},
            QByteArray(), m_folder->path());
        const QJsonArray notes = QJsonDocument::fromJson(run.output).array();
        QCOMPARE(notes[0][QLatin1String("author")].toString(), QStringLiteral("Ada"));
        QCOMPARE(notes[0][QLatin1String("date")].toString(), QStringLiteral("2001-12-31T08:05:00"));
        QVERIFY(notes[1][QLatin1String("author")].isNull());
    }
}

// The note goes onto the word before it, which is a link: every format has its target all the same.
void TestToolNotes::writesLinksUnderNotes()
{
    m_folder->write(
        QStringLiteral("link.rtf"),
        R"({\rtf1 see {\field{\*\fldinst HYPERLINK "http://x.y/"}{\fldrslt site}})"
        R"(\{\\Mvrn_annot \\color=\{\\R=1\\G=0\\B=0\} \\text=aside\\end_Mvrn_annot\} end\par})");
    QCOMPARE(mvrtext("markup --read link.rtf -o over.rtf", m_folder->path()).exitCode, 0);
    QVERIFY(mvrtext("notes over.rtf", m_folder->path()).output.contains("  site  "));
    const std::pair<const char *, const char *> targets[]
        = {{"md", "{==[site](http://x.y/)==}{>>aside<<}"},
           {"rtf", "HYPERLINK \"http://x.y/\""},
           {"html", "href=\"http://x.y/\""},
           {"bbcode", "[url]http://x.y/[/url]"},
           {"pdf", "(http://x.y/)"}};
    for (const auto &[format, target] : targets) {
        const QString name = QStringLiteral("out.") + QLatin1String(format);
        const Run run = mvrtext({QStringLiteral("convert"), QStringLiteral("over.rtf"), name},
                                QByteArray(), m_folder->path());
        QCOMPARE(run.exitCode, 0);
        QVERIFY2(m_folder->read(name).contains(target), format);
    }
}

void TestToolNotes::leftOutNotesPartNoLinks()
{
    m_folder->write(QStringLiteral("link.rtf"),
                    "{\\rtf1{\\field{\\*\\fldinst HYPERLINK \"http://x.y/\"}{\\fldrslt one word"
                    "{\\footnote{\\*\\mvrnote 2 }note}s}}}");
    QCOMPARE(mvrtext("convert link.rtf out.bbcode", m_folder->path()).exitCode, 0);
    QCOMPARE(m_folder->read(QStringLiteral("out.bbcode")).trimmed(),
             QByteArray("[url]http://x.y/[/url]one words"));
}

// A listing of Markdown has room for no note and no emphasis.
void TestToolNotes::tellsListingsFromText()
{
    const auto markdown = [this](const char *name, const QByteArray &content) {
        m_folder->write(QLatin1String(name), content);
        return mvrtext(QByteArray("convert ") + name + " - --to md", m_folder->path()).output;
    };
    QCOMPARE(markdown("kept.rtf", "{\\rtf1\\pard\\keep one {\\b two}{\\footnote n}\\par}"),
             QByteArray("one **two**[^1]\n\n[^1]: n\n"));
    QCOMPARE(markdown("in.html", "<pre>one\ntwo</pre>"), QByteArray("```\none\ntwo\n```\n"));
    // Somebody wrote a note onto a listing that came from Markdown.
    m_folder->write(QStringLiteral("in.md"), "```\nzero\none\n```\n");
    QCOMPARE(mvrtext("convert in.md out.rtf", m_folder->path()).exitCode, 0);
    QByteArray rtf = m_folder->read(QStringLiteral("out.rtf"));
    rtf.replace("one", "one{\\footnote n}");
    QVERIFY(markdown("noted.rtf", rtf).endsWith("\n`zero`\\\n`one`[^1]\n\n[^1]: n\n"));
}

QTEST_GUILESS_MAIN(TestToolNotes)
#include "tst_toolnotes.moc"
