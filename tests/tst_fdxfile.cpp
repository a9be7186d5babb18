// SPDX-License-Identifier: MIT
#include "FdxSchemaReader.h"

#include <core/MVRParagraphView.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <text/MVRTextDoc.h>

#include <QBuffer>
#include <QDir>
#include <QRandomGenerator>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QtTest>

namespace {

QByteArray sample(const QString &name)
{
    QFile file(QStringLiteral(MVR_TEST_DATA "/fdx/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList sampleNames()
{
    return QDir(QStringLiteral(MVR_TEST_DATA "/fdx")).entryList({QStringLiteral("*.fdx")});
}

bool load(MVRFinalDraftFile *file, const QByteArray &bytes)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return file->load(&buffer);
}

QByteArray written(MVRFinalDraftFile *file, const QTextDocument &document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return file->write(&buffer, &document) ? buffer.data() : QByteArray();
}

/*! A file and the document that it was read into. */
struct Opened
{
    explicit Opened(const QByteArray &bytes)
        : isRead(load(&file, bytes) && file.read(&document))
    {
        document.setUndoRedoEnabled(true);
    }

    QByteArray written() { return ::written(&file, document); }
    QTextCursor find(const char *text) { return document.find(QString::fromUtf8(text)); }
    QString type(int block)
    {
        return document.findBlockByNumber(block).blockFormat().stringProperty(
            MVRScriptElement::NameProperty);
    }

    MVRFinalDraftFile file;
    QTextDocument document;
    bool isRead;
};

QByteArray script(const QByteArray &paragraphs, const QByteArray &rest = QByteArray(),
                  const QByteArray &version = "5")
{
    return "<FinalDraft DocumentType=\"Script\" Version=\"" + version + "\">\n  <Content>\n"
        + paragraphs + "  </Content>\n" + rest + "</FinalDraft>\n";
}

QByteArray note(const QByteArray &attributes)
{
    return "<ScriptNote " + attributes
        + " Author=\"A &amp; B\" Color=\"#FFFFC8C80000\" DateTime=\"20200102T030405\">"
          "<Paragraph Alignment=\"Left\"><Text Style=\"\">First.</Text></Paragraph>\n<Paragraph/>"
          "<Paragraph><Text>La</Text> <Text Style=\"Bold\"> st</Text></Paragraph></ScriptNote>";
}

// A change that write() has to look at, and that leaves the document as it was.
void touch(QTextDocument *document)
{
    QTextCursor cursor(document);
    cursor.insertText(QStringLiteral("x"));
    cursor.deletePreviousChar();
}

// Ranges of notes move with the text in front of them.
QByteArray withoutRanges(const QByteArray &bytes)
{
    static const QRegularExpression range(QStringLiteral("Range=\"[0-9,]*\""));
    return QString::fromUtf8(bytes).remove(range).toUtf8();
}

QString describe(const QTextCharFormat &format)
{
    return QStringLiteral("%1%2%3%4%5 ")
        .arg(format.fontWeight() > QFont::Normal)
        .arg(format.fontItalic())
        .arg(format.fontUnderline())
        .arg(format.fontStrikeOut())
        .arg(format.fontCapitalization());
}

/*! A document as text: type, and text of each look. */
QStringList described(const QTextDocument &document, bool withLooks)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QString line
            = block.blockFormat().stringProperty(MVRScriptElement::NameProperty) + QLatin1Char('|');
        QString last;
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QString look = describe(it.fragment().charFormat());
            if (withLooks && look != last)
                line += QLatin1Char('<') + look + QLatin1Char('>');
            last = look;
            line += it.fragment().text();
        }
        // Paragraphs of the title page that have no type get none.
        lines.append(line.startsWith(QLatin1String("General|")) ? line.mid(7) : line);
    }
    return lines;
}

/*! What the file of a document has to be: read by others, and as it was where nobody edited. */
class Judge
{
public:
    explicit Judge(const Opened &opened, const QByteArray &bytes)
        : m_before(FdxSchemaReader(bytes).paragraphs())
        , m_lines(described(opened.document, true))
    {
        for (QTextBlock block = opened.document.begin(); block.isValid(); block = block.next())
            m_blocks.insert(sourceOf(block.blockFormat()),
                            {block.blockNumber(), block.blockFormat()});
    }

    /*! What is wrong with the file of an edited document; empty when nothing is. */
    QString fault(const QTextDocument &document, const QByteArray &bytes) const
    {
        const FdxSchemaReader reader(bytes);
        const QVector<FdxSchemaReader::Paragraph> now = reader.paragraphs();
        if (!reader.error().isNull() || now.size() != document.blockCount())
            return QStringLiteral("%1 %2").arg(reader.error()).arg(now.size());
        const QStringList lines = described(document, true);
        QHash<int, int> blocks; // by paragraph of the file
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            ++blocks[sourceOf(block.blockFormat())];
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            const int i = block.blockNumber();
            if (now[i].text != block.text())
                return QStringLiteral("text of %1: %2").arg(i).arg(now[i].text);
            const int source = sourceOf(block.blockFormat());
            const auto [old, format] = m_blocks.value(source, {-1, QTextBlockFormat()});
            const bool keepsPage = (i < reader.titlePageCount())
                == format.boolProperty(MVRFinalDraftFile::TitlePageProperty);
            const bool isUntouched = old >= 0 && blocks[source] == 1 && keepsPage
                && format == block.blockFormat() && m_lines[old] == lines[i];
            if (isUntouched && m_before[old].xml != now[i].xml)
                return QStringLiteral("%1\nwas %2").arg(now[i].xml, m_before[old].xml);
        }
        return QString();
    }

private:
    static int sourceOf(const QTextBlockFormat &format)
    {
        return format.hasProperty(MVRFinalDraftFile::SourceParagraphProperty)
            ? format.intProperty(MVRFinalDraftFile::SourceParagraphProperty)
            : -1;
    }

    QVector<FdxSchemaReader::Paragraph> m_before;
    QStringList m_lines;
    QHash<int, QPair<int, QTextBlockFormat>> m_blocks; // by paragraph of the file: as it was
};

/*! Edits a document at random; the same seed makes the same edits. */
class Editor
{
public:
    Editor(QTextDocument *document, uint seed)
        : m_document(document)
        , m_random(seed)
    {
    }

    void edit()
    {
        QTextCursor cursor = place(0);
        switch (m_random.bounded(9)) {
        case 0:
        case 1:
            cursor.insertText(word());
            break;
        case 2:
            select(12).removeSelectedText();
            break;
        case 3:
            cursor.insertBlock();
            break;
        case 4:
            cursor.deletePreviousChar();
            break;
        case 5:
            select(20).mergeCharFormat(look());
            break;
        case 6: {
            QTextCursor moved = select(60);
            const QTextDocumentFragment fragment(moved);
            if (m_random.bounded(2) == 0)
                moved.removeSelectedText();
            place(0).insertFragment(fragment);
            break;
        }
        case 7:
            select(200).removeSelectedText();
            break;
        default:
            m_document->undo();
        }
    }

private:
    QTextCursor place(int behind)
    {
        QTextCursor cursor(m_document);
        cursor.setPosition(qMin(m_document->characterCount() - 1,
                                m_random.bounded(m_document->characterCount()) + behind));
        return whole(cursor);
    }

    QTextCursor select(int most)
    {
        QTextCursor cursor = place(0);
        cursor.setPosition(
            qMin(m_document->characterCount() - 1, cursor.position() + m_random.bounded(most)),
            QTextCursor::KeepAnchor);
        return whole(cursor);
    }

    // Half a character is nothing that an editor would stand before.
    QTextCursor whole(QTextCursor cursor)
    {
        if (m_document->characterAt(cursor.position()).isLowSurrogate())
            cursor.setPosition(cursor.position() + 1,
                               cursor.hasSelection() ? QTextCursor::KeepAnchor
                                                     : QTextCursor::MoveAnchor);
        return cursor;
    }

    QTextCharFormat look()
    {
        QTextCharFormat format;
        const bool on = m_random.bounded(2);
        switch (m_random.bounded(3)) {
        case 0:
            format.setFontWeight(on ? QFont::Bold : QFont::Normal);
            break;
        case 1:
            format.setFontItalic(on);
            break;
        default:
            format.setFontUnderline(on);
        }
        return format;
    }

    QString word()
    {
        static const QStringList words
            = {QStringLiteral("a"), QStringLiteral(" & <b> "), QString::fromUtf8("é🎬"),
               QStringLiteral("two words"), QString(QChar::LineSeparator)};
        return words[m_random.bounded(words.size())];
    }

    QTextDocument *m_document;
    QRandomGenerator m_random;
};

}

class TestFdxFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void unchangedFiles_data();
    void unchangedFiles();
    void oneWord_data();
    void oneWord();
    void otherEncodings();
    void randomEdits_data();
    void randomEdits();
    void listsNotes_data();
    void listsNotes();
    void overlappingNotes();
    void notesAfterEdits();
    void notesOfEditedWords_data();
    void notesOfEditedWords();
    void newNotes_data();
    void newNotes();
    void inlineAnnotationsBecomeNotes();
    void runsKeepTheirAttributes_data();
    void runsKeepTheirAttributes();
    void paragraphsKeepTheirElements();
    void dualDialogue();
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
    QCOMPARE(written(&opened.file, *clone), bytes);
    const MVRParagraphView view(&opened.document); // shows indents that are not the file's
    touch(&opened.document);
    QCOMPARE(opened.written(), bytes);
}

void TestFdxFile::oneWord_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QStringList names = sampleNames();
    for (const QString &name : names)
        QTest::newRow(name.toUtf8().constData()) << sample(name);
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

void TestFdxFile::randomEdits_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QStringList names = sampleNames();
    for (const QString &name : names)
        QTest::newRow(name.toUtf8().constData()) << sample(name);
}

void TestFdxFile::randomEdits()
{
    QFETCH(const QByteArray, bytes);
    static const int rounds = qEnvironmentVariableIntValue("MVR_RANDOM_DOCUMENTS") + 20;
    for (uint seed = 1; seed <= uint(rounds); ++seed) {
        Opened opened(bytes);
        const Judge judge(opened, bytes);
        Editor editor(&opened.document, seed);
        for (int i = 0; i < 12; ++i) {
            editor.edit();
            if (i % 4 != 3)
                continue;
            const QByteArray output = opened.written();
            Opened again(output);
            QVERIFY2(
                again.isRead,
                qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(again.file.errorString())));
            const QString fault = judge.fault(opened.document, output);
            QVERIFY2(
                fault.isEmpty(),
                qPrintable(QStringLiteral("seed %1, edit %2: %3").arg(seed).arg(i).arg(fault)));
            const QStringList is = described(again.document, true);
            const QStringList was = described(opened.document, true);
            QVERIFY2(is.size() == was.size(), qPrintable(QStringLiteral("seed %1").arg(seed)));
            for (int line = 0; line < was.size(); ++line) {
                // A block that lost its type is shown as some other one.
                const QString lost = was[line];
                const int from
                    = lost.startsWith(QLatin1Char('|')) ? is[line].indexOf(QLatin1Char('|')) : 0;
                const QString found = is[line].mid(from);
                QVERIFY2(found == lost,
                         qPrintable(QStringLiteral("seed %1, edit %2, block %3 is\n%4\nand was\n%5")
                                        .arg(seed)
                                        .arg(i)
                                        .arg(line)
                                        .arg(is.value(line), lost)));
            }
        }
    }
}

void TestFdxFile::listsNotes_data()
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
          "<Paragraph Type=\"Action\"><Text>y -</Text></Paragraph>\n";
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
    range("ends beyond the script", "19,900", "La\nst.\ny -");
    range("begins beyond the script", "800,900", "");
    range("backwards", "7,4", "two");
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

void TestFdxFile::listsNotes()
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
void TestFdxFile::overlappingNotes()
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

// Ranges move with their text; what was said of a note stays unless it was changed.
void TestFdxFile::notesAfterEdits()
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

void TestFdxFile::notesOfEditedWords_data()
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
    row("range over empty paragraphs", {}, note("Range=\"6,17\""), "INT", "INTO", "OUSE\nNext\n");
}

// No note is lost because the word was edited that shows it.
void TestFdxFile::notesOfEditedWords()
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

void TestFdxFile::newNotes_data()
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

void TestFdxFile::newNotes()
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

void TestFdxFile::inlineAnnotationsBecomeNotes()
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
    Opened again(written(&file, document));
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
