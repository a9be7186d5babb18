// SPDX-License-Identifier: MIT
#include "FdxOpened.h"

#include <core/MVRParagraphView.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <text/MVRTextDoc.h>

#include <QTextDocumentFragment>

namespace {

// Ranges of notes move with the text in front of them.
QByteArray withoutRanges(const QByteArray &bytes)
{
    static const QRegularExpression range(QStringLiteral("Range=\"[0-9,]*\""));
    return QString::fromUtf8(bytes).remove(range).toUtf8();
}

}

/*! A Final Draft file that is edited in place. */
class TestFdxFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unchangedFiles_data();
    void unchangedFiles();
    void oneWord_data();
    void oneWord();
    void otherEncodings();
    void runsKeepTheirAttributes_data();
    void runsKeepTheirAttributes();
    void manyFonts();
    void severalEdits_data();
    void severalEdits();
    void paragraphsKeepTheirElements();
    void dualDialogue();
    void textBesideDualDialogue();
    void filesWithoutScript_data();
    void filesWithoutScript();
    void filesWithoutSettings();
    void wholeFile();
};

void TestFdxFile::unchangedFiles_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QStringList names = sampleNames();
    QVERIFY(names.size() > 10);
    for (const QString &name : names) {
        const QByteArray bytes = sample(name);
        const QByteArray row = name.toUtf8();
        QTest::newRow(row.constData()) << bytes;
        QTest::newRow((row + " CRLF").constData())
            << QByteArray(bytes).replace("\r\n", "\n").replace("\n", "\r\n");
    }
    const QByteArray shapes = sample(QStringLiteral("synthetic-shapes.fdx"));
    QTest::newRow("blanks before, nothing declared")
        << QByteArray(" \n") + shapes.mid(shapes.indexOf("<Final"));
    QTest::newRow("byte order mark") << QByteArray("\xef\xbb\xbf") + shapes;
    const QString text = QString::fromUtf8(shapes);
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe")
            + QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
    QTest::newRow("no paragraphs") << QByteArray("<FinalDraft><Content/></FinalDraft>");
    QTest::newRow("no content") << QByteArray("<FinalDraft></FinalDraft>");
    QTest::newRow("several contents, odd runs")
        << QByteArray("<FinalDraft><Content><Paragraph><Text>a<![CDATA[<b>]]><i>c</i></Text>"
                      "<Text/><Text >&#x2029;&bad;&#0;\xff</Text></Paragraph></Content>"
                      "<!-- -- --><Content><Paragraph  Type = 'Acti\"on' /><x/></Content>"
                      "</FinalDraft>");
}

void TestFdxFile::unchangedFiles()
{
    QFETCH(const QByteArray, bytes);
    Opened opened(bytes);
    QVERIFY2(opened.isRead, qPrintable(opened.file.errorString()));
    QCOMPARE(opened.written(), bytes);
    touch(&opened.document);
    QCOMPARE(opened.written(), bytes);
    const std::unique_ptr<QTextDocument> clone(opened.document.clone());
    QCOMPARE(writtenFdx(&opened.file, *clone), bytes);
    const MVRParagraphView view(&opened.document); // shows indents that are not the file's
    touch(&opened.document);
    QCOMPARE(opened.written(), bytes);
}

void TestFdxFile::oneWord_data()
{
    addSampleRows();
}

// A letter put into each paragraph is all that differs, a letter taken out too.
void TestFdxFile::oneWord()
{
    QFETCH(const QByteArray, bytes);
    Opened opened(bytes);
    for (QTextBlock block = opened.document.begin(); block.isValid(); block = block.next()) {
        if (block.length() < 3)
            continue;
        QTextCursor cursor(block);
        cursor.movePosition(QTextCursor::Right);
        cursor.insertText(QStringLiteral("Zqz"));
        const QByteArray changed = opened.written();
        QCOMPARE(changed.count("Zqz"), 1);
        QByteArray back = changed;
        QCOMPARE(withoutRanges(back.replace("Zqz", "")), withoutRanges(bytes));
        opened.document.undo();
    }
    QCOMPARE(opened.written(), bytes);
}

// Edited files keep their encoding.
void TestFdxFile::otherEncodings()
{
    const QString text
        = QString::fromUtf8(script("<Paragraph><Text>One \xc3\xa9 two.</Text></Paragraph>\n"));
    const auto utf16 = [](const QString &of, bool isBigEndian) {
        QByteArray bytes;
        for (const QChar character : QChar(QChar::ByteOrderMark) + of)
            bytes.append(char(isBigEndian ? character.row() : character.cell()))
                .append(char(isBigEndian ? character.cell() : character.row()));
        return bytes;
    };
    for (const bool isBigEndian : {false, true}) {
        Opened opened(utf16(text, isBigEndian));
        const QString word = QString::fromUtf8("zwei \xf0\x9f\x8e\xac");
        opened.find("two").insertText(word);
        QCOMPARE(opened.written(),
                 utf16(QString(text).replace(QLatin1String("two"), word), isBigEndian));
    }
    const QByteArray latin1 = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + text.toLatin1();
    Opened opened(latin1);
    opened.find("two").insertText(QString::fromUtf8("\xc3\xbc\xe2\x82\xac"));
    QCOMPARE(opened.written(), QByteArray(latin1).replace("two", "\xfc&#8364;"));
}

void TestFdxFile::runsKeepTheirAttributes_data()
{
    QTest::addColumn<QString>("find");
    QTest::addColumn<QString>("with");
    QTest::addColumn<QByteArray>("runs");
    QTest::newRow("marked word")
        << "teh"
        << "the"
        << QByteArray("<Text>See </Text><Text AdornmentStyle=\"-1\">the</Text>"
                      "<Text> cat &#38; dog</Text><Text Style=\"Bold\" X=\"1\"> run</Text>");
    QTest::newRow("end of a run")
        << "dog"
        << "dogs"
        << QByteArray("<Text>See </Text><Text AdornmentStyle=\"-1\">teh</Text>"
                      "<Text> cat &#38; dogs</Text><Text Style=\"Bold\" X=\"1\"> run</Text>");
    QTest::newRow("bold")
        << " run"
        << "<&"
        << QByteArray("<Text>See </Text><Text AdornmentStyle=\"-1\">teh</Text>"
                      "<Text> cat &#38; dog</Text><Text Style=\"Bold\" X=\"1\">&lt;&amp;</Text>");
    QTest::newRow("over runs") << "e teh c"
                               << "en d"
                               << QByteArray("<Text>Seen</Text><Text> dat &#38; dog</Text>"
                                             "<Text Style=\"Bold\" X=\"1\"> run</Text>");
    QTest::newRow("two places")
        << "See teh cat & dog"
        << "Sea teh cat & dogs"
        << QByteArray("<Text>Sea </Text><Text AdornmentStyle=\"-1\">teh</Text>"
                      "<Text> cat &#38; dogs</Text><Text Style=\"Bold\" X=\"1\"> run</Text>");
    QTest::newRow("start of a run")
        << "te"
        << "xy"
        << QByteArray("<Text>See </Text><Text AdornmentStyle=\"-1\">xyh</Text>"
                      "<Text> cat &#38; dog</Text><Text Style=\"Bold\" X=\"1\"> run</Text>");
    QTest::newRow("word made longer at its start")
        << "teh"
        << "ateh"
        << QByteArray("<Text>See </Text><Text AdornmentStyle=\"-1\">ateh</Text>"
                      "<Text> cat &#38; dog</Text><Text Style=\"Bold\" X=\"1\"> run</Text>");
    QTest::newRow("text in front that begins alike")
        << "teh cat"
        << "t cat"
        << QByteArray("<Text>See </Text><Text AdornmentStyle=\"-1\">t</Text>"
                      "<Text> cat &#38; dog</Text><Text Style=\"Bold\" X=\"1\"> run</Text>");
    QTest::newRow("all gone") << "See teh cat & dog run"
                              << "" << QByteArray("<Text></Text>");
}

void TestFdxFile::runsKeepTheirAttributes()
{
    QFETCH(const QString, find);
    QFETCH(const QString, with);
    QFETCH(const QByteArray, runs);
    Opened opened(
        script("<Paragraph><Text>See </Text><Text AdornmentStyle=\"-1\">teh</Text>"
               "<Text> cat &#38; dog</Text><Text Style=\"Bold\" X=\"1\"> run</Text></Paragraph>"));
    opened.document.find(find).insertText(with);
    QCOMPARE(opened.written(), script("<Paragraph>" + runs + "</Paragraph>"));
}

// More fonts than a document is given are in the file still.
void TestFdxFile::manyFonts()
{
    QByteArray runs;
    for (int i = 0; i < 1100; ++i)
        runs += QByteArray("<Text Font=\"Font #\">w#.</Text>").replace('#', QByteArray::number(i));
    const QByteArray bytes = script("<Paragraph>" + runs + "</Paragraph>\n");
    Opened opened(bytes);
    opened.find("w1080").insertText(QStringLiteral("word"));
    QByteArray expected = bytes;
    expected.replace("w1080", "word");
    QCOMPARE(opened.written(), expected);
}

void TestFdxFile::severalEdits_data()
{
    QTest::addColumn<QByteArray>("runs");
    const auto row
        = [](const char *name, const char *runs) { QTest::newRow(name) << QByteArray(runs); };
    row("marked word between quotes",
        "<Text>w1q \"</Text><Text AdornmentStyle=\"-1\">teh</Text><Text>\", w2q</Text>");
    row("word that goes on in the next run",
        "<Text>w1q low</Text><Text RevisionID=\"3\">er w2q</Text><Text>w, w3q</Text>");
    row("comment and instruction",
        "<Text>w1q a<!-- > b -->c<?p x > y?> d</Text><Text>&#8232;end</Text>");
    row("line separator of the file", "<Text>w1q one\xe2\x80\xa8two&#10;three w2q</Text>");
    row("CDATA beside it", "<Text>w1q &#65;</Text><Text><![CDATA[<b>]]></Text>");
}

// What stands between two edits of a paragraph stays in its run, as the file writes it.
void TestFdxFile::severalEdits()
{
    QFETCH(const QByteArray, runs);
    const auto file = [](const QByteArray &of) {
        const QByteArray notes = "<ScriptNotes><ScriptNote Range=\"%1\"/></ScriptNotes>\n";
        const int grown = of.contains("qq") ? 1 : 0;
        return script("<Paragraph>" + of + "</Paragraph>",
                      QByteArray(notes).replace("%1",
                                                QByteArray::number(4 + grown) + ','
                                                    + QByteArray::number(6 + grown)));
    };
    Opened opened(file(runs));
    QCOMPARE(opened.file.notes().size(), 1);
    QByteArray expected = runs;
    for (const char *word : {"w1q", "w2q", "w3q"}) {
        QTextCursor cursor = opened.find(word);
        if (cursor.isNull())
            continue;
        cursor.setPosition(cursor.selectionEnd());
        cursor.insertText(QStringLiteral("q"));
        expected.replace(word, QByteArray(word) + 'q');
    }
    QCOMPARE(opened.written(), file(expected));
}

void TestFdxFile::paragraphsKeepTheirElements()
{
    const QByteArray first
        = "    <Paragraph Number=\"1\" Type=\"Shot\">\n      <SceneProperties Title=\"T\"/>\n"
          "      <Text>First one.</Text>\n    </Paragraph>\n";
    const QByteArray second
        = "    <Paragraph Number=\"2\" Type=\"Odd\"><Text>Second</Text><Alts/></Paragraph>\n";
    Opened opened(script(first + second));
    QCOMPARE(opened.type(0), QStringLiteral("Shot"));
    QCOMPARE(opened.type(1), QStringLiteral("Odd"));
    const QTextBlockFormat shot = opened.document.firstBlock().blockFormat();
    QCOMPARE(shot.stringProperty(MVRFinalDraftFile::SceneNumberProperty), QStringLiteral("1"));
    QCOMPARE(shot.stringProperty(MVRFinalDraftFile::SceneTitleProperty), QStringLiteral("T"));

    QTextCursor cursor = opened.find("one.");
    cursor.setPosition(cursor.selectionStart());
    cursor.insertBlock();
    QCOMPARE(opened.written(),
             script(QByteArray(first).replace("one.", "")
                    + "    <Paragraph Type=\"Shot\"><Text>one.</Text></Paragraph>\n" + second));
    cursor.deletePreviousChar();
    QCOMPARE(opened.written(), script(first + second));

    // An empty paragraph in front takes nothing from the one behind it.
    cursor.setPosition(0);
    cursor.insertBlock();
    QCOMPARE(opened.written(),
             script("    <Paragraph Type=\"Shot\"></Paragraph>\n" + first + second));
    cursor.deletePreviousChar();

    // To another place, with all that it has.
    cursor.movePosition(QTextCursor::NextBlock);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    const QTextBlockFormat odd = cursor.blockFormat();
    cursor.removeSelectedText();
    cursor.deletePreviousChar();
    cursor.setPosition(0);
    cursor.insertBlock();
    cursor.setPosition(0);
    cursor.setBlockFormat(odd);
    cursor.insertText(QStringLiteral("Second"), QTextCharFormat());
    QVERIFY(opened.written().contains("<Text>Second</Text><Alts/></Paragraph>"));
    QCOMPARE(Opened(opened.written()).document.toPlainText(), QStringLiteral("Second\nFirst one."));

    // Type and shape of its own.
    QTextBlockFormat format;
    format.setProperty(MVRScriptElement::NameProperty, QStringLiteral("A & B"));
    format.setAlignment(Qt::AlignCenter);
    cursor.mergeBlockFormat(format);
    QVERIFY2(opened.written().contains(
                 "<Paragraph Number=\"2\" Type=\"A &amp; B\" Alignment=\"Center\">"),
             opened.written().constData());
}

void TestFdxFile::dualDialogue()
{
    const QByteArray before = "    <Paragraph Type=\"Action\"><Text>Before</Text></Paragraph>\n";
    const QByteArray wrapper
        = "    <Paragraph>\n      <DualDialogue>\n        <Paragraph Type=\"Character\">"
          "<Text>ADA</Text></Paragraph>\n        <Paragraph Type=\"Dialogue\"><Text>Hey."
          "</Text></Paragraph>\n      </DualDialogue>\n    </Paragraph>\n";
    const QByteArray behind = "    <Paragraph Type=\"Action\"><Text>Behind</Text></Paragraph>\n";
    Opened opened(script(before + wrapper + behind));
    QTextCursor cursor = opened.find("Hey.");
    cursor.insertText(QStringLiteral("Hey!"));
    cursor.insertBlock();
    cursor.insertText(QStringLiteral("Ho."));
    const QByteArray more
        = QByteArray(wrapper).replace("Hey.</Text></Paragraph>",
                                      "Hey!</Text></Paragraph>\n        <Paragraph "
                                      "Type=\"Dialogue\"><Text>Ho.</Text></Paragraph>");
    QCOMPARE(opened.written(), script(before + more + behind));

    // All of it gone, and its wrapper; all of it elsewhere, in a wrapper.
    cursor = opened.find("ADA");
    cursor.setPosition(cursor.selectionStart());
    cursor.setPosition(opened.find("Ho.").selectionEnd() + 1, QTextCursor::KeepAnchor);
    const QTextDocumentFragment fragment = cursor.selection();
    cursor.removeSelectedText();
    QCOMPARE(opened.written(), script(before + behind));
    cursor.movePosition(QTextCursor::Start);
    cursor.insertFragment(fragment);
    QCOMPARE(opened.written().count("<DualDialogue>"), 1);
}

// The paragraph that dual dialogue is in has text of its own, which is read before it.
void TestFdxFile::textBesideDualDialogue()
{
    const QByteArray dual
        = "<DualDialogue><Paragraph Type=\"Character\"><Text>ADA</Text></Paragraph></DualDialogue>";
    Opened opened(script("<Paragraph>" + dual + dual + "<Text>onetwo</Text></Paragraph>\n"));
    QTextCursor cursor = opened.find("two");
    cursor.setPosition(cursor.selectionStart());
    cursor.insertBlock();
    cursor = opened.find("ADA");
    cursor.setPosition(cursor.selectionEnd());
    cursor.insertBlock();
    cursor.insertText(QStringLiteral("three"));
    const QString text = opened.document.toPlainText();
    QCOMPARE(text, QStringLiteral("one\ntwo\nADA\nthree\nADA"));
    Opened again(opened.written());
    QCOMPARE(again.document.toPlainText(), text);
}

void TestFdxFile::filesWithoutScript_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("expected");
    const QByteArray root = "<FinalDraft DocumentType=\"Script\" Version=\"5\"";
    const QByteArray content = "\n  <Content>\n    <Paragraph Type=\"Action\"><Text>one"
                               "</Text></Paragraph>\n    <Paragraph "
                               "Type=\"Action\"><Text>two</Text></Paragraph>\n  </Content>";
    QTest::newRow("nothing") << root + "/>" << root + '>' + content + "\n</FinalDraft>";
    QTest::newRow("something else") << root + ">\n  <Macros/>\n</FinalDraft>"
                                    << root + '>' + content + "\n  <Macros/>\n</FinalDraft>";
}

// What a host puts in goes into the file.
void TestFdxFile::filesWithoutScript()
{
    QFETCH(const QByteArray, file);
    Opened opened(file);
    QVERIFY(opened.isRead);
    QCOMPARE(opened.written(), file);
    QTextCursor(&opened.document).insertText(QStringLiteral("one\ntwo"));
    QTEST(opened.written(), "expected");
}

// Many programs write paragraphs and nothing else.
void TestFdxFile::filesWithoutSettings()
{
    Opened opened(script("<Paragraph Type=\"Character\"><Text>Ada</Text></Paragraph>"
                         "<Paragraph Type=\"Parenthetical\"><Text>(low)</Text></Paragraph>"
                         "<Paragraph Type=\"Transition\"><Text>cut to:</Text></Paragraph>"
                         "<Paragraph Type=\"Own\"><Text>Own.</Text></Paragraph>"));
    QVERIFY(opened.isRead);
    const auto format
        = [&opened](int block) { return opened.document.findBlockByNumber(block).blockFormat(); };
    QCOMPARE(format(0).topMargin(), 12.0);
    QCOMPARE(format(1).topMargin(), 0.0); // below the name
    QCOMPARE(format(2).alignment(), Qt::Alignment(Qt::AlignRight));
    QCOMPARE(format(3).topMargin(), 0.0);
    QCOMPARE(opened.find("Ada").charFormat().fontCapitalization(), QFont::AllUppercase);
    QVERIFY(opened.find("(low)").charFormat().fontCapitalization() != QFont::AllUppercase);

    // Elements that the application brings along break over pages as their names ask for.
    opened.file.setElements({MVRScriptElement(QStringLiteral("Dialogue"))});
    QTextCursor cursor(opened.document.findBlockByNumber(1));
    cursor.movePosition(QTextCursor::EndOfBlock);
    QTextBlockFormat dialogue;
    dialogue.setProperty(MVRScriptElement::NameProperty, QStringLiteral("Dialogue"));
    cursor.insertBlock(dialogue);
    cursor.insertText(QStringLiteral("Not now."));
    QVERIFY(opened.written().contains("PaginateAs=\"Dialogue\" ReturnKey=\"Action\""));
}

// A document that no file was read into.
void TestFdxFile::wholeFile()
{
    QTextDocument document;
    document.setDocumentMargin(72);
    QTextCursor cursor(&document);
    const auto add = [&](const char *type, const char *text, int property) {
        QTextBlockFormat format;
        if (*type)
            format.setProperty(MVRScriptElement::NameProperty, QString::fromUtf8(type));
        if (property)
            format.setProperty(property,
                               property == MVRFinalDraftFile::TitlePageProperty ? QVariant(true)
                                                                                : QVariant(1));
        if (document.isEmpty())
            cursor.setBlockFormat(format);
        else
            cursor.insertBlock(format);
        cursor.insertText(QString::fromUtf8(text), QTextCharFormat());
    };
    add("", "The Title", MVRFinalDraftFile::TitlePageProperty);
    add("Scene Heading", "INT. HOUSE", 0);
    add("", "Some action.", 0);
    add("Character", "ADA", MVRFinalDraftFile::DualDialogueProperty);
    add("Character", "BEN", MVRFinalDraftFile::DualDialogueProperty);
    add("Own Type", "Own.", 0);
    MVRTextCommentLink link;
    link.cdata = MVRTextRtf::textToRtf(QStringLiteral("Said"), nullptr);
    MVRTextDoc::setComment(document.find(QStringLiteral("Own")), link);

    MVRFinalDraftFile file;
    MVRScriptElement element(QStringLiteral("Own Type"));
    QTextCharFormat italic;
    italic.setFontItalic(true);
    element.setCharFormat(italic);
    QTextBlockFormat indented;
    indented.setProperty(MVRTextFormat::BlockLeftIndentProperty, 100.0);
    element.setBlockFormat(indented);
    file.setElements({element});
    Opened again(writtenFdx(&file, document));
    QVERIFY2(again.isRead, qPrintable(again.file.errorString()));
    QCOMPARE(again.file.version(), QStringLiteral("5"));
    QCOMPARE(again.file.titlePageBlockCount(), 1);
    QCOMPARE(again.document.toPlainText(), document.toPlainText());
    QCOMPARE(again.type(2), QStringLiteral("Action"));
    QVERIFY(again.document.findBlockByNumber(4).blockFormat().hasProperty(
        MVRFinalDraftFile::DualDialogueProperty));
    QCOMPARE(again.find("HOUSE").charFormat().fontCapitalization(), QFont::AllUppercase);
    QVERIFY(again.file.elementSettings().value(QStringLiteral("Own Type")).fontSpec.style
            == MVRFinalDraft::Italic);
    QCOMPARE(again.file.notes().value(0).text, QStringLiteral("Own"));
    QVERIFY(again.file.elementXml(QStringLiteral("PageLayout/PageSize")).contains("8.50"));
}

QTEST_MAIN(TestFdxFile)
#include "tst_fdxfile.moc"
