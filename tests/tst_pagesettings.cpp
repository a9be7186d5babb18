// SPDX-License-Identifier: MIT
#include "PageDump.h"

#include <QBuffer>
#include <QtTest>

/*! What a Final Draft file says about its pages, attribute by attribute. */
class TestPageSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsEachSetting();
    void keepsDefaultsOfWhatIsNotSaid();
    void readsLeadings_data();
    void readsLeadings();
    void headersHaveLines();
    void marksTheRevisionsThatAreShown();
    void titlePagesCountForThemselves();
    void addedTextHasItsLook();
};

namespace {

const char fog[] = "<Paragraph Type=\"Action\"><Text>Fog.</Text></Paragraph>";

MVRScreenplay read(const QByteArray &rest, const QByteArray &content = fog)
{
    QBuffer buffer;
    buffer.setData("<FinalDraft><Content>" + content + "</Content>" + rest + "</FinalDraft>");
    buffer.open(QIODevice::ReadOnly);
    MVRScreenplay screenplay;
    QString error;
    if (!MVRScreenplay::fromFinalDraft(&buffer, &screenplay, &error))
        qWarning("%s", qPrintable(error));
    return screenplay;
}

}

void TestPageSettings::readsEachSetting()
{
    const MVRScreenplaySettings s
        = read(
              "<PageLayout TopMargin=\"50\" BottomMargin=\"60\" HeaderMargin=\"20\" "
              "FooterMargin=\"30\" BreakDialogueAndActionAtSentences=\"No\">"
              "<PageSize Width=\"8.00\" Height=\"10.00\"/></PageLayout>"
              "<MoresAndContinueds><DialogueBreaks AutomaticCharacterContinueds=\"Yes\" "
              "BottomOfPage=\"No\" TopOfNext=\"No\" DialogueBottom=\"more\" DialogueTop=\"top\"/>"
              "<SceneBreaks SceneBottomOfPage=\"Yes\" SceneTopOfNext=\"Yes\" "
              "ContinuedNumber=\"Yes\" SceneBottom=\"below\" SceneTop=\"above\"/>"
              "</MoresAndContinueds>"
              "<HeaderAndFooter HeaderVisible=\"No\" HeaderFirstPage=\"Yes\" FooterVisible=\"Yes\" "
              "FooterFirstPage=\"No\" StartingPage=\"7\">"
              "<Header><Paragraph><Text>h</Text></Paragraph></Header>"
              "<Footer><Paragraph><Text>f</Text></Paragraph><Paragraph><Text>g</Text></Paragraph>"
              "</Footer></HeaderAndFooter>"
              "<SceneNumberOptions ShowNumbersOnLeft=\"No\" ShowNumbersOnRight=\"No\" "
              "LeftLocation=\"0.5\" RightLocation=\"7.0\"/>"
              "<Revisions Location=\"7.5\" ActiveSet=\"2\" RevisionsShown=\"Active\">"
              "<Revision ID=\"1\" Name=\"Blue\" Mark=\"+\"/><Revision ID=\"2\" Name=\"Pink\"/>"
              "</Revisions>"
              "<TitlePage><HeaderAndFooter HeaderVisible=\"Yes\" HeaderFirstPage=\"Yes\" "
              "FooterVisible=\"No\"><Header><Paragraph><Text>t</Text></Paragraph></Header>"
              "</HeaderAndFooter></TitlePage>")
              .settings;
    QCOMPARE(s.topMargin, 50.0);
    QCOMPARE(s.bottomMargin, 60.0);
    QCOMPARE(s.headerMargin, 20.0);
    QCOMPARE(s.footerMargin, 30.0);
    QVERIFY(!s.breaksAtSentences);
    QCOMPARE(s.pageSize, QSizeF(576, 720));
    QVERIFY(s.continuesSpeakers && !s.marksBrokenSpeech && !s.namesBrokenSpeech);
    QCOMPARE(s.moreText + s.continuedText, QStringLiteral("moretop"));
    QVERIFY(s.marksBrokenScene && s.continuesBrokenScene && s.countsContinueds);
    QCOMPARE(s.sceneBottomText + s.sceneTopText, QStringLiteral("belowabove"));
    QVERIFY(!s.header.isVisible && s.header.isOnFirstPage);
    QVERIFY(s.footer.isVisible && !s.footer.isOnFirstPage);
    QCOMPARE(s.header.paragraphs.size(), 1);
    QCOMPARE(s.footer.paragraphs.size(), 2);
    QCOMPARE(s.startingPage, 7);
    QVERIFY(!s.showsNumbersLeft && !s.showsNumbersRight);
    QCOMPARE(s.numberLeft, 0.5);
    QCOMPARE(s.numberRight, 7.0);
    QCOMPARE(s.revisionMark, 7.5);
    QCOMPARE(s.activeRevision, 2);
    QVERIFY(s.showsActiveRevisionOnly);
    QCOMPARE(s.revisions.value(1).name + s.revisions.value(1).mark, QStringLiteral("Blue+"));
    QCOMPARE(s.revisions.value(2).name + s.revisions.value(2).mark, QStringLiteral("Pink*"));
    QVERIFY(s.titleHeader.isVisible && s.titleHeader.isOnFirstPage && !s.titleFooter.isVisible);
    QCOMPARE(s.titleHeader.paragraphs.size(), 1);
}

void TestPageSettings::keepsDefaultsOfWhatIsNotSaid()
{
    const MVRScreenplaySettings s
        = read("<PageLayout/><MoresAndContinueds><DialogueBreaks/></MoresAndContinueds>"
               "<Revisions RevisionsShown=\"Active\"/>")
              .settings;
    QCOMPARE(s.pageSize, QSizeF(612, 792)); // US Letter
    QCOMPARE(s.topMargin, 72.0);
    QCOMPARE(s.lineHeight, 12.0); // six lines to the inch
    QVERIFY(s.breaksAtSentences && s.marksBrokenSpeech && s.namesBrokenSpeech);
    QVERIFY(!s.continuesSpeakers && !s.marksBrokenScene);
    QCOMPARE(s.moreText, QStringLiteral("(MORE)"));
    QVERIFY(s.header.isVisible && !s.header.isOnFirstPage);
    QVERIFY(!s.showsActiveRevisionOnly); // there is no active one
}

void TestPageSettings::readsLeadings_data()
{
    QTest::addColumn<double>("lineHeight");
    QTest::newRow("VeryTight") << 10.8;
    QTest::newRow("Very Tight") << 10.8;
    QTest::newRow("Tight") << 11.4;
    QTest::newRow("Normal") << 12.0;
    QTest::newRow("Loose") << 12.6;
    QTest::newRow("Unknown") << 12.0;
}

void TestPageSettings::readsLeadings()
{
    const QByteArray leading = QTest::currentDataTag();
    QTEST(read("<PageLayout DocumentLeading=\"" + leading + "\"/>").settings.lineHeight,
          "lineHeight");
}

void TestPageSettings::headersHaveLines()
{
    const MVRScreenplay screenplay
        = read("<HeaderAndFooter HeaderFirstPage=\"Yes\" FooterVisible=\"No\"><Header>"
               "<Paragraph><Text>one\ntwo</Text></Paragraph>"
               "<Paragraph SpaceBefore=\"12\"><Text>three</Text></Paragraph></Header>"
               "</HeaderAndFooter>");
    const MVRScreenplayPages pages(screenplay);
    QCOMPARE(pages.pages().size(), 1);
    QVector<double> tops;
    for (const MVRScreenplayLine &line : pages.pages().first().lines) {
        if (line.text() != QLatin1String("Fog."))
            tops.append(line.y);
    }
    QCOMPARE(tops.size(), 3);
    QCOMPARE(tops[0], 36.0);
    QCOMPARE(tops[1] - tops[0], 12.0);
    QCOMPARE(tops[2] - tops[1], 24.0);
}

void TestPageSettings::marksTheRevisionsThatAreShown()
{
    const auto marksOf = [](const QByteArray &attributes) {
        const MVRScreenplayPages pages(
            read("<Revisions " + attributes
                     + "><Revision ID=\"1\" Mark=\"+\"/>"
                       "<Revision ID=\"2\" Mark=\"=\"/></Revisions>",
                 "<Paragraph><Text RevisionID=\"1\">One</Text></Paragraph>"
                 "<Paragraph><Text RevisionID=\"1\">One</Text><Text RevisionID=\"2\">Two</Text>"
                 "</Paragraph><Paragraph><Text>None</Text></Paragraph>"));
        QString marks;
        for (const MVRScreenplayLine &line : pages.pages().first().lines)
            marks += line.kind == MVRScreenplayLine::RevisionMark ? line.text() : QString();
        return marks;
    };
    QCOMPARE(marksOf("ActiveSet=\"2\" RevisionsShown=\"All\""), QStringLiteral("+="));
    QCOMPARE(marksOf("ActiveSet=\"2\" RevisionsShown=\"Active\""), QStringLiteral("="));
    QCOMPARE(marksOf("ActiveSet=\"1\" RevisionsShown=\"Active\""), QStringLiteral("+"));
}

void TestPageSettings::titlePagesCountForThemselves()
{
    const MVRScreenplayPages pages(read(
        "<HeaderAndFooter HeaderVisible=\"No\" FooterVisible=\"No\" StartingPage=\"8\"/>"
        "<TitlePage><HeaderAndFooter HeaderVisible=\"Yes\" FooterVisible=\"No\"><Header>"
        "<Paragraph><DynamicLabel Type=\"Page #\"/><Text>.</Text></Paragraph></Header>"
        "</HeaderAndFooter><Content><Paragraph><Text>One</Text></Paragraph>"
        "<Paragraph StartsNewPage=\"Yes\"><Text>Two</Text></Paragraph></Content></TitlePage>"));
    QStringList first;
    for (const MVRScreenplayPage &page : pages.pages())
        first.append(page.lines.first().text());
    QCOMPARE(first,
             QStringList({QStringLiteral("One"), QStringLiteral("2."), QStringLiteral("Fog.")}));
    QCOMPARE(pages.pages().last().number, 8);
}

void TestPageSettings::addedTextHasItsLook()
{
    const QByteArray words = QByteArray("One more sentence of hers. ").repeated(200);
    const MVRScreenplayPages pages(
        read("<MoresAndContinueds><FontSpec Style=\"Italic\" Size=\"12\"/></MoresAndContinueds>"
             "<SceneNumberOptions><FontSpec Style=\"Bold\" Size=\"12\"/></SceneNumberOptions>",
             "<Paragraph Type=\"Scene Heading\" Number=\"1\"><Text>Pier</Text></Paragraph>"
             "<Paragraph Type=\"Character\"><Text Style=\"Bold+AllCaps\">Ada</Text>"
             "<Text RevisionID=\"1\"> (V.O.)</Text></Paragraph>"
             "<Paragraph Type=\"Dialogue\"><Text>"
                 + words + "</Text></Paragraph>"));
    QStringList seen;
    for (const MVRScreenplayPage &page : pages.pages()) {
        for (const MVRScreenplayLine &line : page.lines) {
            const bool isAdded = line.kind == MVRScreenplayLine::More
                || line.kind == MVRScreenplayLine::Continued
                || line.kind == MVRScreenplayLine::SceneNumber;
            if (!isAdded || page.number > 2)
                continue;
            QString runs;
            for (const MVRScreenplayLine::Run &run : line.runs) {
                runs += QLatin1Char('<') + MVRFinalDraft::toString(run.attr.style)
                    + QLatin1Char('>') + run.text;
                QCOMPARE(run.attr.revisionId, 0);
            }
            seen.append(runs);
        }
    }
    // The name as it was typed.
    QCOMPARE(seen.join(QLatin1Char('|')),
             QStringLiteral("<Bold>1|<Bold>1|<Italic>(MORE)|"
                            "<Bold+AllCaps>ADA<AllCaps> (V.O.)<> (CONT'D)|<Italic>(MORE)"));
}

QTEST_GUILESS_MAIN(TestPageSettings)
#include "tst_pagesettings.moc"
