// SPDX-License-Identifier: MIT
#include "Utf16.h"

#include <core/MVRTextFormat.h>
#include <finaldraft/MVRFinalDraftReader.h>
#include <text/MVRTextDoc.h>

#include <QBuffer>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <QtTest>

class TestFdxReader : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsParagraphs_data();
    void readsParagraphs();
    void fallsBackWhereTheFileIsSilent();
    void standardSettingsInAnyEncoding_data();
    void standardSettingsInAnyEncoding();
    void anchorsNotes_data();
    void anchorsNotes();
    void formatsParagraphsByThemselves();
    void formatsRunsOneByOne();
    void letsTheApplicationsFormatsWin();
    void upperCasesCapitalElements();
    void readsPageLayoutAndTextState();
    void completesElementSettings();
    void restoresUndoRecording();
    void keepsNotesOfFormerReads();
    void countsWhatItLeavesOut();
    void reportsFaults_data();
    void reportsFaults();
    void survivesNoFile();
};

namespace {

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

// Settings of the types that the rows below use.
const char actionSettings[]
    = "<ElementSettings Type='Action'><ParagraphSpec LeftIndent='1.50'/></ElementSettings>";
const char headingSettings[]
    = "<ElementSettings Type='Scene Heading'><FontSpec Style='Bold'/>"
      "<ParagraphSpec LeftIndent='2.50'/><Behavior PaginateAs='Scene Heading'/></ElementSettings>";
const char introSettings[]
    = "<ElementSettings Type='Scene Intro'><ParagraphSpec LeftIndent='3.50'/>"
      "<Behavior PaginateAs='Scene Heading'/></ElementSettings>";

bool load(MVRFinalDraftReader *reader, const QString &xml)
{
    QBuffer buffer;
    buffer.setData(xml.toUtf8());
    buffer.open(QIODevice::ReadOnly);
    return reader->load(&buffer);
}

QString screenplay(const QString &body, const QString &rest = QString())
{
    return s("<FinalDraft><Content>%1</Content>%2</FinalDraft>").arg(body, rest);
}

/*! Each paragraph as "Type:text", joined by "|"; the closing empty one is left out. */
QString outline(const QTextDocument &document)
{
    QStringList paragraphs;
    for (QTextBlock block = document.begin(); block != document.lastBlock(); block = block.next()) {
        paragraphs << block.blockFormat().stringProperty(MVRScriptElement::NameProperty)
                + QLatin1Char(':') + block.text();
    }
    return paragraphs.join(QLatin1Char('|'));
}

}

void TestFdxReader::readsParagraphs_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("rest");
    QTest::addColumn<QString>("paragraphs");

    const QString action = s(actionSettings);
    QTest::newRow("no paragraph") << ""
                                  << ""
                                  << "";
    QTest::newRow("runs of one paragraph")
        << "<Paragraph Type='Action'><Text>a </Text><Text AdornmentStyle='-1'>wrod</Text>"
           "<Text> </Text><Text Style='Bold'>b</Text></Paragraph>"
        << ""
        << "Action:a wrod b";
    QTest::newRow("line ends of other systems in a run")
        << "<Paragraph Type='Action'><Text>a&#13;&#10;b&#13;c</Text></Paragraph>"
        << ""
        << "Action:a|Action:b|Action:c";
    QTest::newRow("empty run is a blank") << "<Paragraph Type='Action'><Text/></Paragraph>"
                                          << ""
                                          << "Action: ";
    QTest::newRow("line feed, tab and blanks in a run")
        << "<Paragraph Type='Action'><Text>  a\tb&#xA;c</Text></Paragraph>"
        << ""
        << "Action:  a\tb|Action:c";
    QTest::newRow("unknown type without Action settings disappears")
        << "<Paragraph Type='Foo'><Text>x</Text></Paragraph>"
           "<Paragraph Type='Shot'><Text>y</Text></Paragraph>"
        << ""
        << "Shot:y";
    QTest::newRow("unknown and missing type with Action settings")
        << "<Paragraph Type='Foo'><Text>x</Text></Paragraph><Paragraph><Text>y</Text></Paragraph>"
        << action << "Action:x|Action:y";
    QTest::newRow("Action settings that come up on the way")
        << "<Paragraph><Text>x</Text></Paragraph>"
           "<Paragraph Type='Action'><Text>y</Text></Paragraph>"
           "<Paragraph><Text>z</Text></Paragraph>"
        << ""
        << "Action:y|Action:z";
    QTest::newRow("custom type that paginates as a standard one")
        << "<Paragraph Type='Scene Intro'><Text>x</Text></Paragraph>"
        << s(headingSettings) + s(introSettings) << "Scene Heading:x";
    QTest::newRow("custom type whose standard one has no settings")
        << "<Paragraph Type='Scene Intro'><Text>x</Text></Paragraph>" << s(introSettings)
        << "Scene Intro:x";
    QTest::newRow("dual dialogue")
        << "<Paragraph><DualDialogue><Paragraph Type='Character'><Text>A</Text></Paragraph>"
           "<Paragraph Type='Dialogue'><Text>a</Text></Paragraph></DualDialogue>"
           "<DualDialogue><Paragraph Type='Dialogue'><Text>b</Text></Paragraph></DualDialogue>"
           "<Text/></Paragraph><Paragraph Type='Action'><Text>after</Text></Paragraph>"
        << ""
        << "Character:A|Dialogue:a|Dialogue:b|Action:after";
    QTest::newRow("dual dialogue in a note")
        << "<Paragraph Type='Action'><Text>a</Text><ScriptNote><Paragraph><DualDialogue>"
           "<Paragraph Type='Dialogue'><Text>b</Text></Paragraph></DualDialogue></Paragraph>"
           "</ScriptNote><Text>c</Text></Paragraph>"
        << action << "Dialogue:ab|Action:c";
    QTest::newRow("settings that a type leaves for itself")
        << "<Paragraph Type='Cast List'><Text>a</Text></Paragraph>"
           "<Paragraph Type='Cast List'><Text>b</Text></Paragraph>"
        << "<ElementSettings Type='CastList'/>"
        << "Cast List:a|CastList:b";
    QTest::newRow("title page comes first")
        << "<Paragraph Type='Action'><Text>body</Text></Paragraph>"
        << action
            + s("<TitlePage><Content><Paragraph><Text>title</Text></Paragraph></Content>"
                "</TitlePage>")
        << "Action:title|Action:body";
    QTest::newRow("paragraph without text")
        << "<Paragraph Type='Action'><Text>a</Text></Paragraph><Paragraph Type='Shot'/>"
           "<Paragraph Type='Shot'><Text>b</Text></Paragraph>"
        << ""
        << "Action:a|Action:|Shot:b";
}

void TestFdxReader::readsParagraphs()
{
    QFETCH(const QString, body);
    QFETCH(const QString, rest);
    MVRFinalDraftReader reader;
    QVERIFY(load(&reader, screenplay(body, rest)));
    QTextDocument document(s("text from before"));
    QVERIFY2(reader.read(&document, {}), qPrintable(reader.errorString()));
    QTEST(outline(document), "paragraphs");
    QVERIFY(document.lastBlock().text().isEmpty());
}

void TestFdxReader::fallsBackWhereTheFileIsSilent()
{
    MVRFinalDraftReader reader;
    QHash<QString, MVRFinalDraft::ElementSettings> fallback;
    for (const auto type : {MVRFinalDraft::Action, MVRFinalDraft::SceneHeading})
        fallback[MVRFinalDraft::toString(type)].applyFdxAppDefaults(type);
    fallback[s("Action")].paragraphSpec.leftIndent = 4.0;
    reader.setFallbackSettings(fallback);
    QVERIFY(load(&reader,
                 screenplay(s("<Paragraph Type='Foo'><Text>x</Text></Paragraph>"
                              "<Paragraph Type='Scene Heading'><Text>y</Text></Paragraph>"
                              "<Paragraph Type='Scene Intro'><Text>z</Text></Paragraph>"),
                            s(introSettings) + s("<PageLayout TopMargin='36'/>"))));
    QTextDocument document;
    QVERIFY(reader.read(&document, {}));
    // A custom type looks like a standard one of its file, never like a fallback.
    QCOMPARE(outline(document), s("Action:x|Scene Heading:Y|Scene Intro:z"));
    // The fallback counts from one inch, the document from half of one.
    const int leftIndent = MVRTextFormat::BlockLeftIndentProperty;
    QCOMPARE(document.begin().blockFormat().doubleProperty(leftIndent), 4.5 * 72);

    QHash<QString, MVRFinalDraft::ElementSettings> settings;
    QVERIFY(reader.readElements(&settings));
    QCOMPARE(settings.size(), 3);
    QCOMPARE(settings[s("Action")].paragraphSpec.leftIndent, 4.0);
}

void TestFdxReader::standardSettingsInAnyEncoding_data()
{
    QTest::addColumn<QByteArray>("file");

    const QByteArray file
        = screenplay(s("<Paragraph Type='Dialogue'><Text>é</Text></Paragraph>")).toUtf8();
    QTest::newRow("UTF-8") << file;
    QTest::newRow("UTF-16, small end first") << inUtf16(file, false);
    QTest::newRow("UTF-16, big end first") << inUtf16(file, true);
}

void TestFdxReader::standardSettingsInAnyEncoding()
{
    QFETCH(QByteArray, file);
    MVRFinalDraftReader reader;
    QHash<QString, MVRFinalDraft::ElementSettings> standard;
    standard[s("Dialogue")].applyFdxAppDefaults(MVRFinalDraft::Dialogue);
    reader.setFallbackSettings(standard);
    QBuffer buffer(&file);
    QVERIFY(buffer.open(QIODevice::ReadOnly) && reader.load(&buffer));
    QTextDocument document;
    QVERIFY(reader.read(&document, {}));
    QCOMPARE(outline(document), s("Dialogue:é"));
    QHash<QString, MVRFinalDraft::ElementSettings> settings;
    QVERIFY(reader.readElements(&settings));
    QCOMPARE(settings[s("Dialogue")].paragraphSpec.leftIndent,
             standard[s("Dialogue")].paragraphSpec.leftIndent);
    QVERIFY(document.begin().blockFormat().doubleProperty(MVRTextFormat::BlockLeftIndentProperty)
            > 72);
}

void TestFdxReader::anchorsNotes_data()
{
    QTest::addColumn<QString>("body"); // "^x^" is a note with the text x
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("notes"); // "anchored text=content" each

    QTest::newRow("on the word before") << "Hello, world^n^"
                                        << "Hello, world"
                                        << "world=n";
    QTest::newRow("past blanks and punctuation") << "one two?! ^n^ three"
                                                 << "one two?!  three"
                                                 << "two=n";
    QTest::newRow("in a word") << "an bet^n^ter"
                               << "an better"
                               << "bet=n";
    QTest::newRow("over a paragraph break") << "one two/^n^three"
                                            << "one two/three"
                                            << "two=n";
    QTest::newRow("over an emoji") << QString::fromUtf8("a film \xF0\x9F\x8E\xAC ^n^")
                                   << QString::fromUtf8("a film \xF0\x9F\x8E\xAC ") << "film=n";
    QTest::newRow("second note on a word replaces the first") << "a word^first^^second^"
                                                              << "a word"
                                                              << "word=second";
    QTest::newRow("notes on different words") << "a b^x^ c^y^"
                                              << "a b c"
                                              << "b=x|c=y";
    QTest::newRow("other alphabets")
        << s("x слово^n^ y größer^m^.") << s("x слово y größer.") << s("слово=n|größer=m");
    QTest::newRow("growing word") << "x a^1^b^2^c^3^ d"
                                  << "x abc d"
                                  << "abc=3";
    QTest::newRow("behind a line end of another system") << "one two&#13;&#10;three^n^ four"
                                                         << "one two/three four"
                                                         << "three=n";
    QTest::newRow("at the start: the characters behind the stand-in") << "^n^INT. HOUSE"
                                                                      << "CommentINT. HOUSE"
                                                                      << "INT. HO=n";
    QTest::newRow("the word that begins the document carries none") << "Hello^n^ there friend"
                                                                    << "HelloComment there friend"
                                                                    << " there =n";
    QTest::newRow("behind punctuation only") << "...^n^"
                                             << "...Comment"
                                             << "";
}

void TestFdxReader::anchorsNotes()
{
    QFETCH(QString, body);
    body.replace(
        QRegularExpression(s("\\^([^^]*)\\^")),
        s("</Text><ScriptNote><Paragraph><Text>\\1</Text></Paragraph></ScriptNote><Text>"));
    body.replace(QLatin1Char('/'), QChar(1)); // but not the one of the tags
    body.replace(s("<\x01"), s("</"));
    body.replace(QChar(1), s("</Text></Paragraph><Paragraph Type='Action'><Text>"));
    body = s("<Paragraph Type='Action'><Text>%1</Text></Paragraph>").arg(body);
    body.remove(s("<Text></Text>"));

    MVRFinalDraftReader reader;
    QVERIFY(load(&reader, screenplay(body)));
    QTextDocument document;
    QVERIFY(reader.read(&document, {}));
    QString text = document.toPlainText();
    text.chop(1);
    text.replace(QLatin1Char('\n'), QLatin1Char('/'));
    QTEST(text, "text");

    QStringList notes;
    const MVRTextCommentLinkMap map = MVRTextDoc::commentsMap(&document, -1, -1);
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        QTextCursor cursor = it.key().toTextCursor(&document);
        notes << cursor.selectedText().remove(QChar::ParagraphSeparator) + QLatin1Char('=')
                + MVRTextDoc::commentText(cursor.charFormat(), false);
        QVERIFY(!it.value().isFootnote);
    }
    QTEST(notes.join(QLatin1Char('|')), "notes");
}

void TestFdxReader::formatsParagraphsByThemselves()
{
    MVRFinalDraftReader reader;
    QVERIFY(load(&reader,
                 screenplay(s("<Paragraph Alignment='Center'><Text>a</Text></Paragraph>"
                              "<Paragraph StartsNewPage='Yes'><Text>b</Text></Paragraph>"
                              "<Paragraph/><Paragraph><Text>c</Text></Paragraph>"
                              "<Paragraph Spacing='2'><Text>d</Text></Paragraph>"
                              "<Paragraph SpaceBefore='30'><Text>e</Text></Paragraph>"
                              "<Paragraph FirstIndent='0.50'><Text>f</Text></Paragraph>"
                              "<Paragraph LeftIndent='2.00'><Text>g</Text></Paragraph>"
                              "<Paragraph RightIndent='5.00'><Text>h</Text></Paragraph>"),
                            s(actionSettings))));
    QTextDocument document;
    QVERIFY(reader.read(&document, {}));
    QTextBlock block = document.firstBlock();
    QCOMPARE(block.blockFormat().alignment(), Qt::AlignCenter);
    block = block.next();
    QCOMPARE(block.blockFormat().alignment(), Qt::AlignLeft);
    QVERIFY(block.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore);
    block = block.next(); // has no text, and no page of its own
    QVERIFY(!block.blockFormat().hasProperty(QTextFormat::PageBreakPolicy));
    block = block.next();
    QVERIFY(!block.blockFormat().hasProperty(QTextFormat::PageBreakPolicy));
    block = block.next();
    QCOMPARE(block.blockFormat().property(MVRTextFormat::LineSpacingProperty), QVariant(2.0));
    block = block.next();
    QCOMPARE(block.blockFormat().property(MVRTextFormat::LineSpacingProperty), QVariant(1.0));
    QCOMPARE(block.blockFormat().topMargin(), 30.0);
    block = block.next();
    QCOMPARE(block.blockFormat().textIndent(), 72.0); // from the margin
    block = block.next(); // behind a margin of an inch
    QCOMPARE(block.blockFormat().doubleProperty(MVRTextFormat::BlockLeftIndentProperty), 72.0);
    block = block.next();
    QCOMPARE(block.blockFormat().doubleProperty(MVRTextFormat::BlockRightIndentProperty), 288.0);
}

void TestFdxReader::formatsRunsOneByOne()
{
    MVRFinalDraftReader reader;
    QVERIFY(load(&reader,
                 screenplay(s("<Paragraph Type='Scene Heading' Alignment='Center' "
                              "StartsNewPage='Yes'><Text Style='Italic' Size='14' "
                              "Color='#FFFF00000000'>a</Text><Text>b</Text>"
                              "<Text Size='20'>c</Text></Paragraph>"
                              "<Paragraph Type='Scene Heading'><Text>c</Text></Paragraph>"),
                            s(headingSettings))));
    QTextDocument document;
    QVERIFY(reader.read(&document, {}));

    const QTextBlock first = document.firstBlock();
    auto run = first.begin();
    QVERIFY(run.fragment().charFormat().fontItalic());
    // A run's style replaces the element's.
    QCOMPARE(run.fragment().charFormat().fontWeight(), int(QFont::Normal));
    QCOMPARE(run.fragment().charFormat().foreground().color(), QColor(Qt::red));
    ++run;
    QVERIFY(!run.fragment().charFormat().fontItalic());
    QCOMPARE(run.fragment().charFormat().fontWeight(), int(QFont::Bold));
    QCOMPARE(run.fragment().charFormat().fontPointSize(), 12.0);
    ++run;
    QCOMPARE(run.fragment().charFormat().fontPointSize(), 20.0);

    QCOMPARE(first.blockFormat().alignment(), Qt::AlignCenter);
    QVERIFY(first.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore);
    // No page layout: the text margin is an inch.
    QCOMPARE(first.blockFormat().doubleProperty(MVRTextFormat::BlockLeftIndentProperty), 108.0);
    QCOMPARE(first.next().blockFormat().alignment(), Qt::AlignLeft);
    QVERIFY(!first.next().blockFormat().hasProperty(QTextFormat::PageBreakPolicy));
}

void TestFdxReader::letsTheApplicationsFormatsWin()
{
    MVRScriptElement element(s("Scene Heading"));
    QTextBlockFormat blockFormat;
    blockFormat.setTopMargin(30);
    element.setBlockFormat(blockFormat);
    QTextCharFormat charFormat;
    charFormat.setFontPointSize(20);
    element.setCharFormat(charFormat);

    MVRFinalDraftReader reader;
    QVERIFY(load(&reader,
                 screenplay(s("<Paragraph Type='Scene Intro'><Text Style='Italic'>x</Text>"
                              "</Paragraph>"),
                            s(headingSettings) + s(introSettings))));
    QTextDocument document;
    QVERIFY(reader.read(&document, {element}));
    const QTextBlock block = document.firstBlock();
    QCOMPARE(block.blockFormat().topMargin(), 30.0);
    QCOMPARE(block.blockFormat().doubleProperty(MVRTextFormat::BlockLeftIndentProperty), 108.0);
    QCOMPARE(block.begin().fragment().charFormat().fontPointSize(), 20.0);
    QVERIFY(block.begin().fragment().charFormat().fontItalic());
}

void TestFdxReader::upperCasesCapitalElements()
{
    MVRScriptElement element(s("Character"));
    element.setFlags(MVRScriptElement::AllCapsFlag);
    MVRFinalDraftReader reader;
    QVERIFY(load(&reader,
                 screenplay(QString::fromUtf8("<Paragraph Type='Character'><Text Style='Bold'>"
                                              "Zo\xC3\xAB</Text></Paragraph>"
                                              "<Paragraph Type='Dialogue'><Text>hi</Text>"
                                              "</Paragraph>"))));
    QTextDocument document;
    QVERIFY(reader.read(&document, {element}));
    QCOMPARE(outline(document), QString::fromUtf8("Character:ZO\xC3\x8B|Dialogue:hi"));
}

void TestFdxReader::readsPageLayoutAndTextState()
{
    MVRFinalDraftReader reader;
    const QString rest = s("<PageLayout TopMargin='54' ForegroundColor='#FFFFFFFFFFFF' "
                           "BackgroundColor='#000000000000'/>"
                           "<TextState Scaling='125' ShowInvisibles='Yes'/>");
    QVERIFY(load(&reader, screenplay(QString(), rest)));
    QTextDocument document;
    QVERIFY(reader.read(&document, {}));
    QCOMPARE(document.documentMargin(), 54.0);
    const QTextCharFormat format = MVRTextDoc::defaultCharFormat(document);
    QCOMPARE(format.foreground().color(), QColor(Qt::white));
    QCOMPARE(format.background().color(), QColor(Qt::black));
    QCOMPARE(reader.scaling(), 125.0);
    QVERIFY(reader.showInvisibles());

    QVERIFY(load(&reader, screenplay(QString())));
    QVERIFY(reader.read(&document, {}));
    QCOMPARE(document.documentMargin(), 72.0);
    QCOMPARE(MVRTextDoc::defaultCharFormat(document).foreground().color(), QColor(Qt::black));
    QCOMPARE(reader.scaling(), 100.0);
    QVERIFY(!reader.showInvisibles());
}

void TestFdxReader::completesElementSettings()
{
    MVRFinalDraftReader reader;
    QVERIFY(load(
        &reader,
        screenplay(s("<Paragraph Type='Shot'><Text>x</Text></Paragraph>"), s(actionSettings))));
    QHash<QString, MVRFinalDraft::ElementSettings> settings;
    settings.insert(s("left from before"), MVRFinalDraft::ElementSettings());
    QVERIFY(reader.readElements(&settings));
    QCOMPARE(settings.keys(), QStringList(s("Action")));
    QCOMPARE(settings.value(s("Action")).paragraphSpec.leftIndent, 0.5);

    QTextDocument document;
    QVERIFY(reader.read(&document, {}));
    QVERIFY(reader.readElements(&settings));
    QCOMPARE(settings.size(), 2);
    QCOMPARE(settings.value(s("Shot")).type, s("Shot"));
    QCOMPARE(int(settings.value(s("Shot")).paginateAs), int(MVRFinalDraft::Shot));
    QVERIFY(!reader.readElements(nullptr));
}

void TestFdxReader::restoresUndoRecording()
{
    MVRFinalDraftReader reader;
    QVERIFY(load(&reader,
                 screenplay(s("<Paragraph Type='Action'><Text>a b</Text><ScriptNote>"
                              "<Paragraph><Text>n</Text></Paragraph></ScriptNote>"
                              "</Paragraph>"))));
    QTextDocument document;
    QVERIFY(reader.read(&document, {}));
    QVERIFY(document.isUndoRedoEnabled());
    QVERIFY(!document.isUndoAvailable());
    document.setUndoRedoEnabled(false);
    QVERIFY(reader.read(&document, {}));
    QVERIFY(!document.isUndoRedoEnabled());
}

void TestFdxReader::keepsNotesOfFormerReads()
{
    const auto note = [](const char *text) {
        return s("<ScriptNote><Paragraph><Text>%1</Text></Paragraph></ScriptNote>").arg(s(text));
    };
    MVRFinalDraftReader reader;
    QTextDocument document;
    const QString paragraph = s("<Paragraph Type='Action'><Text>a bee</Text>%1"
                                "<Text> sea</Text>%2</Paragraph>");
    QVERIFY(load(&reader, screenplay(paragraph.arg(note("one"), QString()))));
    QVERIFY(reader.read(&document, {}));
    QVERIFY(load(&reader, screenplay(paragraph.arg(QString(), note("two")))));
    QVERIFY(reader.read(&document, {}));
    QCOMPARE(MVRTextDoc::inspectorNotesToPlainText(&document), QStringList({s("one"), s("two")}));
}

void TestFdxReader::countsWhatItLeavesOut()
{
    QBuffer buffer;
    buffer.setData("<FinalDraft><Content><Paragraph Type=\"Scene Heading\"><SceneProperties>"
                   "<Summary><Paragraph><Text>s</Text></Paragraph></Summary></SceneProperties>"
                   "<Text>INT.</Text><OmittedScene><Paragraph><Text>a</Text></Paragraph><Paragraph>"
                   "<Text>b</Text></Paragraph><Paragraph/></OmittedScene></Paragraph><Paragraph>"
                   "<Text>x</Text><ScriptNote><Paragraph><Text>in its place</Text></Paragraph>"
                   "</ScriptNote></Paragraph></Content><AltCollection><Alt><Paragraph><Text>y"
                   "</Text></Paragraph></Alt><Alt><Paragraph/></Alt></AltCollection><ScriptNotes>"
                   "<ScriptNote><Paragraph><Text>n</Text></Paragraph></ScriptNote></ScriptNotes>"
                   "<UnanchoredScriptNotes><ScriptNote><Paragraph><Text>u</Text></Paragraph>"
                   "</ScriptNote></UnanchoredScriptNotes></FinalDraft>");
    buffer.open(QIODevice::ReadOnly);
    MVRFinalDraftReader reader;
    QCOMPARE(reader.leftOut().alternates, 0); // of no file
    QVERIFY(reader.load(&buffer));
    const MVRFinalDraft::LeftOut leftOut = reader.leftOut();
    QCOMPARE(leftOut.summaries, 1);
    QCOMPARE(leftOut.omittedParagraphs, 2);
    QCOMPARE(leftOut.alternates, 1);
    QCOMPARE(leftOut.detachedNotes, 2);
}

void TestFdxReader::reportsFaults_data()
{
    QTest::addColumn<QString>("xml");
    QTest::addColumn<QString>("error");
    QTest::addColumn<QString>("text");

    QTest::newRow("other root") << "<Screenplay><Content/></Screenplay>"
                                << "'ElementSettings' not found in Final Draft file."
                                << "";
    QTest::newRow("no script, but a title page")
        << s("<FinalDraft><TitlePage><Content><Paragraph Type='Action'><Text>title</Text>"
             "</Paragraph></Content></TitlePage></FinalDraft>")
        << "'/FinalDraft/Content' not found in Final Draft file."
        << "title\n";
}

void TestFdxReader::reportsFaults()
{
    QFETCH(const QString, xml);
    MVRFinalDraftReader reader;
    QVERIFY(load(&reader, xml));
    QTextDocument document(s("before"));
    QVERIFY(!reader.read(&document, {}));
    QTEST(reader.errorString(), "error");
    QTEST(document.toPlainText(), "text");
}

void TestFdxReader::survivesNoFile()
{
    MVRFinalDraftReader reader;
    QTextDocument document(s("before"));
    QHash<QString, MVRFinalDraft::ElementSettings> settings;
    QVERIFY(!reader.load(s("/no/such/file.fdx")));
    QVERIFY(reader.errorString().isNull());
    QVERIFY(!load(&reader, s("<FinalDraft><Content>")));
    QVERIFY(reader.errorString().contains(s("Line 1")));
    QVERIFY(!reader.read(nullptr, {}));
    QVERIFY(!reader.read(&document, {}));
    reader.clear();
    QVERIFY(!reader.read(&document, {}));
    QVERIFY(!reader.readElements(&settings));
}

QTEST_MAIN(TestFdxReader)

#include "tst_fdxreader.moc"
