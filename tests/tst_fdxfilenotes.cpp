// SPDX-License-Identifier: MIT
#include "FdxOpened.h"
#include "FdxSchemaReader.h"

#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <text/MVRTextDoc.h>

namespace {

QByteArray note(const QByteArray &attributes)
{
    return "<ScriptNote " + attributes
        + " Author=\"A &amp; B\" Color=\"#FFFFC8C80000\" DateTime=\"20200102T030405\">"
          "<Paragraph Alignment=\"Left\"><Text Style=\"\">First.</Text></Paragraph>\n<Paragraph/>"
          "<Paragraph><Text>La</Text> <Text Style=\"Bold\"> st</Text></Paragraph></ScriptNote>";
}

}

/*! The notes of a Final Draft file that is edited in place. */
class TestFdxFileNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsNotes_data();
    void listsNotes();
    void overlappingNotes();
    void hiddenNotes();
    void allNotesRemoved_data();
    void allNotesRemoved();
    void notesAfterEdits();
    void notesOfEditedWords_data();
    void notesOfEditedWords();
    void rangesThatNoScriptHas();
    void newNotes_data();
    void newNotes();
    void inlineAnnotationsBecomeNotes();
};

void TestFdxFileNotes::listsNotes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text"); // that the note is about
    QTest::addColumn<int>("shape");

    const QByteArray body
        = "<Paragraph Type=\"Action\"><Text>One two-three.</Text></Paragraph>\n"
          "<Paragraph Type=\"Action\"><Text/></Paragraph>\n"
          "<Paragraph><DualDialogue><Paragraph Type=\"Character\"><Text>ADA</Text>"
          "</Paragraph><Paragraph Type=\"Dialogue\"><Text>Hey</Text></Paragraph>"
          "</DualDialogue></Paragraph>\n"
          "<Paragraph Type=\"Action\"><Text>La\nst.</Text></Paragraph>\n"
          "<Paragraph Type=\"Action\"><Text>y "
          "-\xf0\x9f\x8e\xac\xf0\x9f\x8e\xac</Text></Paragraph>\n";
    const auto range = [&](const char *name, const char *numbers, const char *text) {
        QTest::newRow(name) << script(
            body,
            "<ScriptNotes>" + note("Range=\"" + QByteArray(numbers) + "\"") + "</ScriptNotes>")
                            << QString::fromUtf8(text) << int(MVRFinalDraftFile::NoteOfRange);
    };
    range("a word", "4,7", "two");
    range("point in a word", "5,5", "two");
    range("point at the end", "14,14", "three");
    range("point between words", "3,3", "One");
    range("point behind a word of one letter", "27,27", "y");
    range("over paragraphs", "8,23", "three.\n\nADA\nHey\nLa\ns");
    range("empty paragraph", "15,15", "");
    range("start of dual dialogue", "16,16", "ADA");
    range("all of dual dialogue", "16,18", "ADA\nHey");
    range("behind dual dialogue", "19,21", "La");
    range("ends beyond the script", "19,900", "La\nst.\ny -\xf0\x9f\x8e\xac\xf0\x9f\x8e\xac");
    range("begins beyond the script", "800,900", "");
    range("backwards", "7,4", "two");
    range("within surrogate pairs", "30,32", "\xf0\x9f\x8e\xac\xf0\x9f\x8e\xac");
    range("point within a surrogate pair", "30,30", "\xf0\x9f\x8e\xac\xf0\x9f\x8e\xac");
    QTest::newRow("no numbers") << script(
        body, "<ScriptNotes>" + note("Range=\"a,b\"") + "</ScriptNotes>")
                                << QString() << int(MVRFinalDraftFile::NoteUnanchored);

    const auto inside = [&](const char *name, const QByteArray &paragraph, const char *text,
                            MVRFinalDraftFile::NoteShape shape) {
        QTest::newRow(name) << script("<Paragraph><Text>Before.</Text></Paragraph>" + paragraph, {},
                                      "2")
                            << QString::fromUtf8(text) << int(shape);
    };
    const QByteArray runs = "<Text>INT. HOUSE</Text>";
    inside("of a paragraph", "<Paragraph>" + note("Name=\"\"") + runs + "</Paragraph>", "INT",
           MVRFinalDraftFile::NoteOfParagraph);
    inside("of a paragraph without words",
           "<Paragraph>" + note("Name=\"\"") + "<Text> --</Text></Paragraph>", "-",
           MVRFinalDraftFile::NoteOfParagraph);
    inside("of a paragraph without text", "<Paragraph>" + note("Name=\"\"") + "</Paragraph>", "",
           MVRFinalDraftFile::NoteOfParagraph);
    inside("beside dual dialogue",
           "<Paragraph>" + note("Name=\"\"") + "<DualDialogue><Paragraph>" + runs
               + "</Paragraph></DualDialogue><Text></Text></Paragraph>",
           "INT", MVRFinalDraftFile::NoteOfParagraph);
    inside("in dual dialogue",
           "<Paragraph><DualDialogue><Paragraph>" + runs + note("ID=\"1\"")
               + "</Paragraph></DualDialogue></Paragraph>",
           "HOUSE", MVRFinalDraftFile::NoteAmongRuns);
    inside("behind runs", "<Paragraph>" + runs + note("ID=\"1\"") + "</Paragraph>", "HOUSE",
           MVRFinalDraftFile::NoteAmongRuns);
    inside("in front of runs", "<Paragraph>" + note("ID=\"1\"") + runs + "</Paragraph>", "INT",
           MVRFinalDraftFile::NoteAmongRuns);
    QTest::newRow("unanchored") << script(
        body, "<UnanchoredScriptNotes>" + note("Name=\"x\"") + "</UnanchoredScriptNotes>")
                                << QString() << int(MVRFinalDraftFile::NoteUnanchored);
}

void TestFdxFileNotes::listsNotes()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, text);
    Opened opened(bytes);
    const QVector<MVRFinalDraftFile::Note> notes = opened.file.notes();
    QCOMPARE(notes.size(), 1);
    const MVRFinalDraftFile::Note &note = notes.first();
    QTEST(int(note.shape), "shape");
    QCOMPARE(note.text, text);
    QCOMPARE(note.content(), QStringLiteral("First.\n\nLa st"));
    QCOMPARE(note.author, QStringLiteral("A & B"));
    QCOMPARE(note.date, QStringLiteral("20200102T030405"));
    QCOMPARE(note.color, QStringLiteral("#FFFFC8C80000"));

    const MVRTextCommentLinkMap comments = MVRTextDoc::commentsMap(&opened.document, -1, -1);
    QCOMPARE(comments.size(), text.isEmpty() ? 0 : 1);
    if (!text.isEmpty()) {
        const QTextCursor cursor = comments.firstKey().toTextCursor(&opened.document);
        QCOMPARE(cursor.selectedText()
                     .replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
                     .replace(QChar::LineSeparator, QLatin1Char('\n')),
                 text);
        QCOMPARE(comments.first().color, QColor(255, 200, 0));
        QTextDocument content;
        QVERIFY(MVRTextRtf::fromRtfCData(comments.first().cdata, &content));
        QCOMPARE(content.toPlainText(), note.content());
    }
    touch(&opened.document);
    QCOMPARE(opened.written(), bytes);
}

// Each note of the file is listed; in the document each has characters of its own.
void TestFdxFileNotes::overlappingNotes()
{
    const QByteArray body = "<Paragraph><Text>abcdefghij</Text></Paragraph>\n";
    QByteArray all;
    for (const char *numbers : {"0,8", "2,4", "2,4", "0,10", "9,10", "9,10"})
        all += note("Range=\"" + QByteArray(numbers) + "\" Id=\"1\"");
    const QByteArray bytes = script(body, "<ScriptNotes>" + all + "</ScriptNotes>");
    Opened opened(bytes);
    QStringList texts;
    const QVector<MVRFinalDraftFile::Note> notes = opened.file.notes();
    for (const MVRFinalDraftFile::Note &listed : notes)
        texts.append(listed.text);
    QCOMPARE(texts.join(QLatin1Char(' ')), QStringLiteral("abcdefgh cd cd abcdefghij j j"));
    touch(&opened.document);
    QCOMPARE(opened.written(), bytes);
    // A note goes with the last of what it is about, not with the characters that it was given.
    opened.find("c").deleteChar();
    Opened again(opened.written());
    QVERIFY(again.isRead);
    QCOMPARE(again.file.notes().size(), 6);
    QCOMPARE(again.file.notes().at(0).text, QStringLiteral("abdefgh"));
    QCOMPARE(again.file.notes().at(1).text, QStringLiteral("d"));
    again.find("d").deleteChar(); // of the one that it was given to
    QCOMPARE(Opened(again.written()).file.notes().size(), 5);
}

// What no document shows goes when it is told to, and nothing else.
void TestFdxFileNotes::hiddenNotes()
{
    const QByteArray body
        = "<Paragraph><Text>\xf0\x9f\x8e\xac</Text></Paragraph>\n<Paragraph>%1</Paragraph>\n";
    const QByteArray hidden = note("Range=\"0,2\"") + note("Range=\"900,901\"");
    const QByteArray rest
        = "<ScriptNotes>" + note("Range=\"0,2\"") + "%2</ScriptNotes>\n<X>%3</X>\n";
    const auto file = [&](const QByteArray &one, const QByteArray &two, const QByteArray &three) {
        return script(QByteArray(body).replace("%1", one),
                      QByteArray(rest).replace("%2", two).replace("%3", three));
    };
    Opened opened(file(note("Name=\"\""), hidden, note("Name=\"x\"")));
    QCOMPARE(opened.file.notes().size(), 5);
    QCOMPARE(opened.file.removeHiddenNotes(), 4);
    QCOMPARE(opened.file.removeHiddenNotes(), 0);
    QCOMPARE(opened.file.notes().size(), 1);
    QCOMPARE(opened.written(), file({}, {}, {}));
}

void TestFdxFileNotes::allNotesRemoved_data()
{
    addSampleRows();
}

// Whoever else reads the file finds it as it was, but for the notes.
void TestFdxFileNotes::allNotesRemoved()
{
    QFETCH(const QByteArray, bytes);
    Opened opened(bytes);
    MVRTextDoc::setComments(&opened.document, {});
    opened.file.removeHiddenNotes();
    const QByteArray output = opened.written();
    QCOMPARE(output.count("<ScriptNote "), 0);
    const FdxSchemaReader was(bytes);
    const FdxSchemaReader is(output);
    QCOMPARE(is.error(), QString());
    QCOMPARE(is.rest(), was.rest());
    QCOMPARE(is.paragraphs().size(), was.paragraphs().size());
    for (int i = 0; i < is.paragraphs().size(); ++i)
        QCOMPARE(is.paragraphs().at(i).xml, was.paragraphs().at(i).xml);
}

// Ranges move with their text; what was said of a note stays unless it was changed.
void TestFdxFileNotes::notesAfterEdits()
{
    const QByteArray bytes
        = script("<Paragraph Type=\"Action\"><Text>One two three.</Text></Paragraph>\n"
                 "<Paragraph Type=\"Action\"><Text>Four five.</Text></Paragraph>\n",
                 "<ScriptNotes>" + note("Range=\"4,7\" Id=\"3\"") + note("Range=\"20,24\" Id=\"4\"")
                     + "</ScriptNotes>\n");
    Opened opened(bytes);
    opened.find("One ").removeSelectedText();
    QByteArray expected
        = QByteArray(bytes).replace("One ", "").replace("\"4,7", "\"0,3").replace("20,24", "16,20");
    QCOMPARE(opened.written(), expected);

    QTextCursor inserted(&opened.document);
    inserted.insertText(QStringLiteral("A new one\n"), QTextCharFormat());
    Opened again(opened.written());
    QCOMPARE(again.file.notes().at(0).text, QStringLiteral("two"));
    QCOMPARE(again.file.notes().at(1).text, QStringLiteral("five"));

    Opened third(bytes);
    third.find("two ").removeSelectedText();
    QTextCursor word = third.find("five");
    MVRTextCommentLink link;
    link.cdata = MVRTextRtf::textToRtf(QStringLiteral("Other words"), nullptr);
    QTextCharFormat changed;
    changed.setProperty(MVRTextFormat::CommentCDataProperty, link.cdata);
    word.mergeCharFormat(changed);
    Opened last(third.written());
    QCOMPARE(last.file.notes().size(), 1);
    QCOMPARE(last.file.notes().at(0).id, QStringLiteral("4"));
    QCOMPARE(last.file.notes().at(0).content(), QStringLiteral("Other words"));
    QCOMPARE(last.file.notes().at(0).author, QStringLiteral("A & B"));
}

void TestFdxFileNotes::notesOfEditedWords_data()
{
    QTest::addColumn<QByteArray>("notes"); // in their paragraph
    QTest::addColumn<QByteArray>("ranges"); // beside the script
    QTest::addColumn<QString>("find");
    QTest::addColumn<QString>("with");
    QTest::addColumn<QStringList>("texts");
    const QByteArray three = note("Name=\"1\"") + note("Name=\"2\"") + note("Name=\"3\"");
    const QByteArray both = note("Range=\"0,3\"") + note("Range=\"0,3\"");
    const auto row = [](const char *name, const QByteArray &notes, const QByteArray &ranges,
                        const char *find, const char *with, const char *texts) {
        QTest::newRow(name) << notes << ranges << QString::fromUtf8(find) << QString::fromUtf8(with)
                            << QString::fromUtf8(texts).split(QLatin1Char('|'));
    };
    row("word of three notes", three, {}, "INT", "EXT", "EXT|EXT|EXT");
    row("word of three notes made longer", three, {}, "INT", "INTO", "INTO|INTO|INTO");
    row("first word taken away", three, {}, "INT. ", "", "HOUSE|HOUSE|HOUSE");
    row("word of two ranges", {}, both, "INT", "EXT", "EXT|EXT");
    row("word of two ranges taken away", {}, both, "INT. ", "", "");
    row("range from the end of a paragraph", {}, note("Range=\"10,14\"") + both, "HOUSE", "HUT",
        "\nNex|INT|INT");
    row("word of two ranges that overlap", {}, note("Range=\"0,10\"") + note("Range=\"6,14\""),
        "HOUSE", "HUT", "INT. HUT|HUT\nNex");
    row("range over empty paragraphs", {}, note("Range=\"6,17\""), "INT", "INTO", "OUSE\nNext\n");
}

// No note is lost because the word was edited that shows it.
void TestFdxFileNotes::notesOfEditedWords()
{
    QFETCH(const QByteArray, notes);
    QFETCH(const QByteArray, ranges);
    QFETCH(const QString, find);
    QFETCH(const QString, with);
    Opened opened(
        script("<Paragraph>" + notes + "<Text>INT. HOUSE</Text></Paragraph>"
                   + "<Paragraph><Text>Next</Text></Paragraph><Paragraph/><Paragraph/>",
               ranges.isEmpty() ? QByteArray() : "<ScriptNotes>" + ranges + "</ScriptNotes>"));
    opened.document.find(find).insertText(with);
    Opened again(opened.written());
    QStringList found;
    const QVector<MVRFinalDraftFile::Note> kept = again.file.notes();
    for (const MVRFinalDraftFile::Note &note : kept) {
        found.append(note.text);
        QCOMPARE(note.content(), QStringLiteral("First.\n\nLa st"));
    }
    QTEST(found.isEmpty() ? QStringList(QString()) : found, "texts");
}

void TestFdxFileNotes::rangesThatNoScriptHas()
{
    const QByteArray body = "<Paragraph><Text>one</Text></Paragraph>";
    Opened opened(script(body,
                         "<ScriptNotes>" + note("Range=\"1,2147483647\"")
                             + note("Range=\"-2147483648,2\"") + "</ScriptNotes>"));
    QVERIFY(opened.isRead);
    QTextCursor(&opened.document).insertText(QStringLiteral("two "));
    const QByteArray written = opened.written();
    QVERIFY2(written.contains("Range=\"5,2147483647\""), written.constData());
}

void TestFdxFileNotes::newNotes_data()
{
    QTest::addColumn<QByteArray>("version");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("shape");
    QTest::newRow("range") << QByteArray("6") << QStringLiteral("two three")
                           << int(MVRFinalDraftFile::NoteOfRange);
    QTest::newRow("paragraph") << QByteArray("3") << QStringLiteral("One")
                               << int(MVRFinalDraftFile::NoteOfParagraph);
    QTest::newRow("among runs") << QByteArray("1") << QStringLiteral("three")
                                << int(MVRFinalDraftFile::NoteAmongRuns);
}

void TestFdxFileNotes::newNotes()
{
    QFETCH(const QByteArray, version);
    QFETCH(const QString, text);
    Opened opened(
        script("<Paragraph Type=\"Action\"><Text>Before.</Text></Paragraph>\n"
               "<Paragraph Type=\"Action\"><Text>One two three four.</Text></Paragraph>\n",
               {}, version));
    MVRTextCommentLink link;
    link.color = QColor(1, 2, 3);
    link.cdata = MVRTextRtf::textToRtf(QStringLiteral("Said"), nullptr);
    const QDateTime date(QDate(2021, 2, 3), QTime(4, 5, 6), Qt::UTC);
    MVRTextDoc::setComment(opened.find("two three"), link, QStringLiteral("Eve"), date);
    const QByteArray output = opened.written();
    Opened again(output);
    QCOMPARE(again.file.notes().size(), 1);
    const MVRFinalDraftFile::Note written = again.file.notes().first();
    QTEST(int(written.shape), "shape");
    QCOMPARE(written.text, text);
    QCOMPARE(written.content(), QStringLiteral("Said"));
    QCOMPARE(again.document.toPlainText(), opened.document.toPlainText());
    QCOMPARE(written.author, QStringLiteral("Eve"));
    QCOMPARE(written.date, QStringLiteral("20210203T040506"));
    QCOMPARE(written.color, QStringLiteral("#010102020303"));
    MVRTextDoc::setComments(&again.document, {});
    QCOMPARE(again.written().count("<ScriptNote "), 0);
}

void TestFdxFileNotes::inlineAnnotationsBecomeNotes()
{
    Opened opened(script("<Paragraph Type=\"Action\"><Text>One two three.</Text></Paragraph>\n"));
    QTextCharFormat annotation;
    annotation.setProperty(MVRTextFormat::InlineAnnotationProperty, true);
    opened.find(" two").mergeCharFormat(annotation);
    Opened again(opened.written());
    QCOMPARE(again.document.toPlainText(), QStringLiteral("One three."));
    QCOMPARE(again.file.notes().size(), 1);
    QCOMPARE(again.file.notes().first().text, QStringLiteral("One"));
    QCOMPARE(again.file.notes().first().content(), QStringLiteral(" two"));
}

QTEST_MAIN(TestFdxFileNotes)
#include "tst_fdxfilenotes.moc"
