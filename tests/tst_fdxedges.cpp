// SPDX-License-Identifier: MIT
#include "Utf16.h"

#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <finaldraft/MVRFinalDraftReader.h>
#include <text/MVRTextDoc.h>

#include <QBuffer>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

/*! Characters at the edges of what a Final Draft file can hold, edited in place. */
class TestFdxEdges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void editsBetweenAnyCharacters_data();
    void editsBetweenAnyCharacters();
    void keepsTheEncoding_data();
    void keepsTheEncoding();
    void fillsEmptyRuns_data();
    void fillsEmptyRuns();
    void readsWhatTheReaderReads();
    void listsScenesOfTheScript();
    void writesNotesInParagraphs();
    void refuses_data();
    void refuses();
};

namespace {

QByteArray withText(const QByteArray &text)
{
    return "<FinalDraft><Content><Paragraph Type=\"Action\"><Text>" + text
        + "</Text></Paragraph></Content></FinalDraft>";
}

bool load(MVRFinalDraftFile *file, QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return file->load(&buffer);
}

QByteArray written(MVRFinalDraftFile *file, const QTextDocument &document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return file->write(&buffer, &document) ? buffer.data() : QByteArray();
}

}

void TestFdxEdges::editsBetweenAnyCharacters_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *source, const char *text) {
        QTest::newRow(name) << QByteArray(source) << QString::fromUtf8(text);
    };
    row("names", "a&amp;b&lt;&gt;c&quot;&apos;d", "a&b<>c\"'d");
    row("numbers", "&#65;bc&#x1F600;d&#x42;&#66;", "Abc😀dBB");
    row("no references", "a&b &; &#; &#x; &#65 &unknown;c", "a&b &; &#; &#x; &#65 &unknown;c");
    row("sequences of bytes", "é日𝄞e", "é日𝄞e");
    row("sections", "a<![CDATA[<b>&amp;]]>c<!-- > -->d<?x?>e", "a<b>&amp;cde");
    row("line ends", "a\r\nb\nc&#13;d&#13;&#10;e", "a\u2028b\u2028c\u2028d\u2028e");
    row("what a document cannot hold", "a&#0;b&#xD800;c&#xFDD0;d&#x110000;e&#x2029;f",
        "a\uFFFDb\uFFFDc\uFFFDd\uFFFDe\u2028f");
}

// What is put in is all that differs from the source, wherever it is put.
void TestFdxEdges::editsBetweenAnyCharacters()
{
    QFETCH(const QByteArray, source);
    QFETCH(const QString, text);
    MVRFinalDraftFile file;
    QVERIFY(load(&file, withText(source)));
    QTextDocument document;
    QVERIFY(file.read(&document));
    QCOMPARE(document.begin().text(), text);
    for (int place = 0; place <= text.size(); ++place) {
        if (place < text.size() && text.at(place).isLowSurrogate())
            continue;
        QTextCursor cursor(&document);
        cursor.setPosition(place);
        cursor.insertText(QStringLiteral("Z"));
        QByteArray changed = written(&file, document);
        MVRFinalDraftFile again;
        QTextDocument read;
        QVERIFY(load(&again, changed) && again.read(&read));
        QCOMPARE(read.begin().text(), document.begin().text());
        QCOMPARE(changed.count('Z'), 1);
        if (!source.contains("<![CDATA[")) // a run with sections is written anew
            QCOMPARE(changed.replace("Z", ""), withText(source));
        cursor.deletePreviousChar();
    }
}

void TestFdxEdges::keepsTheEncoding_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    const QByteArray before = withText("ab");
    const QByteArray after = withText("aé日b");
    QTest::newRow("UTF-8") << before << after;
    QTest::newRow("UTF-16, small end first") << inUtf16(before, false) << inUtf16(after, false);
    QTest::newRow("UTF-16, big end first") << inUtf16(before, true) << inUtf16(after, true);
    const QByteArray latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";
    QTest::newRow("Latin 1") << latin + before << latin + withText("a\xe9&#26085;b");
}

void TestFdxEdges::keepsTheEncoding()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, after);
    MVRFinalDraftFile file;
    QVERIFY(load(&file, before));
    QTextDocument document;
    QVERIFY(file.read(&document));
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::Right);
    cursor.insertText(QString::fromUtf8("é日"));
    QCOMPARE(written(&file, document), after);
}

void TestFdxEdges::fillsEmptyRuns_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    const auto row = [](const char *name, const char *before, const char *after) {
        QTest::newRow(name) << QByteArray(before) << QByteArray(after);
    };
    row("no attributes", "<Text/>", "<Text>Z</Text>");
    row("blank", "<Text />", "<Text>Z</Text>");
    row("attribute", "<Text AdornmentStyle=\"0\"/>", "<Text AdornmentStyle=\"0\">Z</Text>");
    row("both tags", "<Text Size=\"12\"></Text>", "<Text Size=\"12\">Z</Text>");
}

void TestFdxEdges::fillsEmptyRuns()
{
    QFETCH(QByteArray, before);
    QFETCH(QByteArray, after);
    const auto inScript = [](const QByteArray &runs) {
        return "<FinalDraft><Content><Paragraph Type=\"Action\">" + runs
            + "</Paragraph></Content></FinalDraft>";
    };
    MVRFinalDraftFile file;
    QTextDocument document;
    QVERIFY(load(&file, inScript(before)) && file.read(&document));
    QTextCursor(&document).insertText(QStringLiteral("Z"));
    QCOMPARE(written(&file, document), inScript(after));
}

// The file that is edited in place has a reader of its own.
void TestFdxEdges::readsWhatTheReaderReads()
{
    QByteArray bytes
        = "<FinalDraft DocumentType=\"Script\" Version=\"5\"><Content>"
          "<Paragraph Type=\"Action\" LeftIndent=\"2.25\" RightIndent=\"6.50\" "
          "FirstIndent=\"-0.25\" SpaceBefore=\"7\" Spacing=\"1.5\" Alignment=\"Right\">"
          "<Text Color=\"red\">a</Text><Text Color=\"#12123C3C5656\" Style=\"Bold\">b</Text>"
          "<Text Color=\"#FFFFFF\" Background=\"white\" Size=\"x\">c</Text>"
          "<Text Size=\"20\">d</Text></Paragraph></Content></FinalDraft>";
    MVRFinalDraftFile file;
    QTextDocument inPlace;
    QVERIFY(load(&file, bytes) && file.read(&inPlace));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    MVRFinalDraftReader reader;
    QTextDocument read;
    QVERIFY(reader.load(&buffer) && reader.read(&read, {}));

    QTextBlockFormat ours = inPlace.begin().blockFormat();
    ours.clearProperty(MVRFinalDraftFile::SourceParagraphProperty);
    const QTextBlockFormat theirs = read.begin().blockFormat();
    for (const int property :
         {int(MVRTextFormat::BlockLeftIndentProperty), int(MVRTextFormat::BlockRightIndentProperty),
          int(MVRTextFormat::LineSpacingProperty), int(QTextFormat::TextIndent),
          int(QTextFormat::BlockTopMargin), int(QTextFormat::BlockAlignment)})
        QCOMPARE(ours.property(property), theirs.property(property));
    QCOMPARE(ours.doubleProperty(MVRTextFormat::BlockRightIndentProperty), 396.0);
    QCOMPARE(inPlace.begin().text(), read.begin().text());
    for (int position = 1; position <= 4; ++position) {
        QTextCursor a(&inPlace);
        QTextCursor b(&read);
        a.setPosition(position);
        b.setPosition(position);
        QCOMPARE(a.charFormat().foreground().color(), b.charFormat().foreground().color());
        QCOMPARE(a.charFormat().fontPointSize(), b.charFormat().fontPointSize());
        QCOMPARE(a.charFormat().fontWeight(), b.charFormat().fontWeight());
    }
}

void TestFdxEdges::listsScenesOfTheScript()
{
    const QByteArray bytes
        = "<FinalDraft><Content><Paragraph Type=\"Action\"><Text>a</Text></Paragraph>"
          "<Paragraph Type=\"Scene Heading\" Number=\"1A\"><SceneProperties Title=\"t\"/>"
          "<Text>b</Text></Paragraph><Paragraph Type=\"Character\"><Text>c</Text></Paragraph>"
          "<Paragraph Type=\"Scene Heading\"><Text>d</Text></Paragraph></Content><TitlePage>"
          "<Content><Paragraph Type=\"Scene Heading\"><Text>e</Text></Paragraph></Content>"
          "</TitlePage></FinalDraft>";
    MVRFinalDraftFile file;
    QTextDocument document;
    QVERIFY(load(&file, bytes) && file.read(&document));
    QStringList scenes;
    for (const MVRFinalDraftFile::Scene &scene : file.scenes()) {
        QCOMPARE(document.findBlockByNumber(scene.block).text(), scene.heading);
        scenes.append(scene.number + scene.heading + scene.title);
    }
    QCOMPARE(scenes, QStringList({QStringLiteral("1Abt"), QStringLiteral("d")}));
}

void TestFdxEdges::writesNotesInParagraphs()
{
    const QByteArray bytes
        = "<FinalDraft Version=\"3\"><Content><Paragraph Type=\"Action\"><ScriptNote ID=\"1\">"
          "<Paragraph><Text>old</Text></Paragraph></ScriptNote><Text>words</Text></Paragraph>"
          "<Paragraph Type=\"Action\"><Text>end</Text></Paragraph></Content></FinalDraft>";
    MVRFinalDraftFile file;
    QTextDocument document;
    QVERIFY(load(&file, bytes) && file.read(&document));
    const MVRTextNotes notes = MVRTextDoc::notes(&document);
    QCOMPARE(notes.size(), 1);
    QTextCharFormat content;
    content.setProperty(MVRTextFormat::CommentCDataProperty,
                        MVRTextRtf::textToRtf(QStringLiteral("new"), nullptr));
    notes[0].range.toTextCursor(&document).mergeCharFormat(content);
    const QByteArray changed = written(&file, document);
    QVERIFY2(changed.contains("new") && !changed.contains("old"), changed);
    QCOMPARE(changed.count("<ScriptNote"), 1);

    // A note whose words have two looks is one note, also over two paragraphs.
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    QTextCharFormat plain;
    plain.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
    QTextCharFormat bold = plain;
    bold.setFontWeight(QFont::Bold);
    cursor.insertText(QStringLiteral("one"), plain);
    cursor.insertText(QStringLiteral("two"), bold);
    const QByteArray inOne = written(&file, document);
    QVERIFY2(inOne.count("<ScriptNote") == 2 && inOne.contains("onetwo"), inOne);
}

void TestFdxEdges::refuses_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("blanks") << QByteArray(" \n ");
    QTest::newRow("other XML") << QByteArray("<html><Content/></html>");
    QTest::newRow("no XML") << QByteArray("FinalDraft");
    QTest::newRow("cut off") << withText("a").left(60);
}

void TestFdxEdges::refuses()
{
    QFETCH(const QByteArray, bytes);
    MVRFinalDraftFile file;
    QVERIFY(load(&file, withText("a")));
    QVERIFY(!load(&file, bytes));
    QVERIFY(!file.errorString().isEmpty());
    QTextDocument document;
    document.setPlainText(QStringLiteral("stays"));
    QVERIFY(!file.read(&document));
    QCOMPARE(document.toPlainText(), QStringLiteral("stays"));
}

QTEST_MAIN(TestFdxEdges)
#include "tst_fdxedges.moc"
