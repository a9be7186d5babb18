// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRTextRtf.h>
#include <text/MVRTextDoc.h>

#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>
#include <QtTest>

// Notes of RTF files become inspector notes, and the other way round.
class TestRtfNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void comesBackAsItWas();
    void keepsInlineNotes();
    void crossesCellsAndFrames();
    void readsOtherPrograms_data();
    void readsOtherPrograms();
    void keepsListsOfJoinedNotes();
    void keepsThePlaceOfMarks();
    void keepsTheThreadOfReplies();
    void keepsWhoAndWhen();
    void leavesNotesOutOfContent();
    void takesItsOwnContentOver();
    void keepsContentInItsGroup_data();
    void keepsContentInItsGroup();
    void leavesLinksAlone_data();
    void leavesLinksAlone();
    void attachesManyNotes();
};

namespace {

QString describe(const QTextFormat &format)
{
    QString text;
    QDebug(&text) << format.properties();
    return text;
}

QStringList contentsOf(const QByteArray &rtf)
{
    QTextDocument document;
    QStringList lines;
    if (!MVRTextRtf::fromRtfCData(rtf, &document))
        return {QString::fromLatin1(rtf)};
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        lines += describe(block.blockFormat()) + describe(block.charFormat());
        for (auto it = block.begin(); !it.atEnd(); ++it)
            lines += it.fragment().text() + describe(it.fragment().charFormat());
    }
    return lines;
}

QByteArray contentFromHtml(const char *html)
{
    QTextDocument document;
    document.setHtml(QString::fromUtf8(html));
    return MVRTextRtf::toRtfCData(&document, false);
}

// "kind text: content", notes in the order of the document.
QStringList listOf(QTextDocument *document)
{
    QStringList lines;
    const MVRTextCommentLinkMap notes = MVRTextDoc::commentsMap(document, -1, -1);
    for (auto it = notes.cbegin(); it != notes.cend(); ++it) {
        QTextDocument content;
        MVRTextRtf::fromRtfCData(it->cdata, &content);
        lines += (it->isFootnote ? QStringLiteral("f ") : QStringLiteral("c "))
            + it.key().toTextCursor(document).selectedText().replace(QChar::ParagraphSeparator,
                                                                     QLatin1Char('/'))
            + QStringLiteral(": ")
            + content.toPlainText().replace(QLatin1Char('\n'), QLatin1Char('/'));
    }
    return lines;
}

} // namespace

void TestRtfNotes::comesBackAsItWas()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertHtml(QStringLiteral("<p>One <b>bold</b> word, <a href='http://x.y'>linked</a> "
                                     "text</p><p>next and last</p>"));
    cursor.insertTable(1, 2)->cellAt(0, 1).firstCursorPosition().insertText(
        QStringLiteral("in a cell"));
    const QString text = document.toPlainText();
    const auto attach = [&](const QString &part, bool isFootnote, const QByteArray &content,
                            const QColor &color = QColor()) {
        MVRTextCommentLink link;
        link.isFootnote = isFootnote;
        link.color = color;
        link.cdata = content;
        QTextCursor place = document.find(part);
        QVERIFY2(place.hasSelection(), qPrintable(part));
        MVRTextDoc::setComment(place, link);
    };
    attach(QStringLiteral("One bold"), false, contentFromHtml("a <i>rich</i> {note}"),
           QColor(1, 2, 3, 4));
    attach(QStringLiteral(" "), true, contentFromHtml("<p>  on a blank</p><p><b>end</b></p>"));
    attach(QStringLiteral("wo"), true, contentFromHtml("<ul><li>item<li>item</ul>"));
    attach(QStringLiteral("rd"), false, QByteArray());
    attach(QStringLiteral("cell"), true, QByteArray("no RTF"));
    QTextCursor across = document.find(QStringLiteral("text"));
    across.setPosition(document.find(QStringLiteral("next")).position(), QTextCursor::KeepAnchor);
    MVRTextDoc::setCommentCData(across, contentFromHtml("<p>two<p>paragraphs<p><br>"), false);

    QTextDocument read;
    QVERIFY(MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &read));
    QCOMPARE(read.toPlainText(), text);
    QVERIFY(!read.isUndoAvailable());
    const MVRTextCommentLinkMap expected = MVRTextDoc::commentsMap(&document, -1, -1);
    const MVRTextCommentLinkMap actual = MVRTextDoc::commentsMap(&read, -1, -1);
    QCOMPARE(expected.size(), 6);
    QVERIFY(actual.keys() == expected.keys());
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        const MVRTextCommentLink link = actual.value(it.key());
        QCOMPARE(link.isFootnote, it->isFootnote);
        QCOMPARE(link.color, it->color);
        QCOMPARE(contentsOf(link.cdata), contentsOf(it->cdata));
    }
    // What is not of the notes is as it was, too.
    QCOMPARE(contentsOf(MVRTextRtf::toRtfCData(&read, true)),
             contentsOf(MVRTextRtf::toRtfCData(&document, true)));
}

void TestRtfNotes::keepsInlineNotes()
{
    QTextDocument document;
    MarkedText::fill(&document, QStringLiteral("one two\nthree four five"),
                     QStringLiteral("...aaaa......fffff....."));
    QTextCursor cursor = document.find(QStringLiteral("five"));
    MVRTextDoc::setComment(cursor, QStringLiteral("beside"), false);
    const QString text = document.toPlainText();
    const QString marks = MarkedText::marks(document);

    QTextDocument read;
    QVERIFY(MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &read));
    QCOMPARE(read.toPlainText(), text);
    QCOMPARE(MarkedText::marks(read), marks);
    QCOMPARE(document.toPlainText(), text);

    QVERIFY(
        MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document, MVRTextDoc::InlineNotesAsNotes), &read));
    QCOMPARE(MVRTextDoc::inspectorNotesToPlainText(&read).join(QLatin1Char('|')),
             QStringLiteral("two|four|beside"));
    QCOMPARE(document.toPlainText(), text);
}

// Ranges from any word to any other one behind it, through the edges of cells and frames.
void TestRtfNotes::crossesCellsAndFrames()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertText(QStringLiteral("before"));
    QTextTable *table = cursor.insertTable(1, 2);
    table->cellAt(0, 0).firstCursorPosition().insertText(QStringLiteral("one\nmore"));
    QTextCursor inner = table->cellAt(0, 1).firstCursorPosition();
    inner.insertText(QStringLiteral("two"));
    inner.insertFrame(QTextFrameFormat());
    inner.insertText(QStringLiteral("framed"));
    cursor.setPosition(table->lastPosition() + 1);
    cursor.insertFrame(QTextFrameFormat());
    cursor.insertText(QStringLiteral("inner"));
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("after"));

    MVRTextRtfNotes notes;
    const QStringList words {QStringLiteral("before"), QStringLiteral("one"),
                             QStringLiteral("more"),   QStringLiteral("two"),
                             QStringLiteral("framed"), QStringLiteral("inner"),
                             QStringLiteral("after")};
    for (const QString &first : words) {
        for (const QString &last : words) {
            MVRTextRtfNote note;
            note.start = document.find(first).selectionStart();
            note.end = document.find(last).selectionEnd();
            if (note.start > note.end)
                continue;
            note.rtf = "{\\rtf1 n}";
            note.kind = MVRTextRtfNote::Footnote;
            notes.append(note);
            note.kind = MVRTextRtfNote::Comment;
            notes.append(note);
        }
    }
    QTextDocument read;
    MVRTextRtfNotes actual;
    QVERIFY(
        MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&document, true, notes), &read, &actual));
    QCOMPARE(read.toRawText(), document.toRawText());
    const auto places = [](const MVRTextRtfNotes &of) {
        QStringList list;
        for (const MVRTextRtfNote &note : of)
            list += QStringLiteral("%1 %2-%3").arg(note.kind).arg(note.start).arg(note.end);
        list.sort();
        return list;
    };
    QCOMPARE(places(actual), places(notes));

    QTextCursor across = document.find(QStringLiteral("one"));
    across.setPosition(document.find(QStringLiteral("inner")).position(), QTextCursor::KeepAnchor);
    MVRTextDoc::setCommentCData(across, "{\\rtf1 wide}", false);
    QVERIFY(MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &read));
    QCOMPARE(read.toRawText(), document.toRawText());
    QVERIFY(!listOf(&document).isEmpty());
    QCOMPARE(listOf(&read), listOf(&document));
}

void TestRtfNotes::readsOtherPrograms_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("notes");
    const auto row
        = [](const char *name, const char *body, const char *text, const QStringList &notes) {
              QTest::newRow(name) << QByteArray(body) << QString::fromUtf8(text) << notes;
          };
    const auto one = [](const char *note) { return QStringList(QString::fromUtf8(note)); };

    row("footnote behind a word",
        "A word.{\\super\\chftn}{\\footnote\\pard\\plain{\\super\\chftn} "
        "See {\\i there}.\\par Or here.} More.",
        "A word. More.", one("f word.: See there./Or here."));
    row("end note without number", "end{\\footnote\\ftnalt note}", "end", one("f end: note"));
    row("starred, behind the last paragraph", "one\\par\\par two\\par{\\*\\footnote\\chftn\\tab n}",
        "one\n\ntwo", one("f two: n"));
    row("marks with and without text between", "a word{\\footnote x}, {\\footnote y}{\\footnote z}",
        "a word, ", {QStringLiteral("f word: x"), QStringLiteral("f , : y/z")});
    row("no word before", "... {\\footnote n}word", "... (Linked Footnote)word",
        one("f (Linked Footnote): n"));
    row("behind the code of a note in the text",
        "a \\{\\'5cMvrn_fn=b{\\footnote m} d\\'5cend_Mvrn_fn\\}{\\footnote n} c", "a b d c",
        {QStringLiteral("f a : n"), QStringLiteral("f b: m")});
    row("behind such a code and the first word of a link",
        "\\{\\'5cMvrn_fn=b\\'5cend_Mvrn_fn\\} {\\field{\\*\\fldinst HYPERLINK \"x:y\"}"
        "{\\fldrslt d{\\footnote n}}}",
        "b d(Linked Footnote)", one("f (Linked Footnote): n"));
    row("four notes about a link and a word",
        "a {\\*\\atrfstart 3}{\\field{\\*\\fldinst HYPERLINK \"x:y\"}{\\fldrslt d{\\footnote k}}} "
        "few{\\*\\atrfend 3}{\\*\\annotation{\\*\\atnref 3}l{\\footnote m}\\chatn{\\*\\annotation "
        "n}}",
        "a d few(Linked Footnote)",
        {QStringLiteral("f  : k"), QStringLiteral("c fe: n"), QStringLiteral("c w: l"),
         QStringLiteral("f (Linked Footnote): m")});
    row("comment over two cells, with another note",
        "\\trowd\\cellx2000\\cellx4000\\intbl {\\*\\atrfstart 3}a few\\cell of{\\*\\atrfend 3}"
        "{\\*\\annotation{\\*\\atnref 3}m} them{\\footnote n}\\cell\\row",
        "\na few\nof them\n", {QStringLiteral("c a few: m"), QStringLiteral("f them: n")});
    row("annotated range",
        "a {\\*\\atrfstart 3}few words{\\*\\atrfend 3}{\\*\\atnid X}{\\*\\atnauthor Xi}\\chatn"
        "{\\*\\annotation{\\*\\atnref 3}{\\*\\atndate 123}note} here",
        "a few words here", one("c few words: note"));
    row("hidden mark", "word{\\v\\fs16{\\*\\atnid X}\\chatn{\\*\\annotation note}} x", "word x",
        one("c word: note"));
    row("range crossed over",
        "a{\\*\\atrfend 1}b{\\*\\atrfstart 1}{\\*\\annotation{\\*\\atnref 1}n}", "ab",
        one("c ab: n"));
    row("comment and footnote on one word",
        "{\\*\\atrfstart 1}word{\\*\\atrfend 1}{\\footnote f}{\\*\\annotation{\\*\\atnref 1}c}",
        "word", {QStringLiteral("c wor: c"), QStringLiteral("f d: f")});
    row("footnote in an annotated range",
        "{\\*\\atrfstart 1}long range of{\\footnote f} text{\\*\\atrfend 1}"
        "{\\*\\annotation{\\*\\atnref 1}c}",
        "long range of text", {QStringLiteral("c long range : c"), QStringLiteral("f of: f")});
    row("two on one letter",
        "{\\*\\atrfstart 1}I{\\*\\atrfend 1}{\\footnote f}{\\*\\annotation{\\*\\atnref 1}c} am",
        "I(Linked Footnote) am",
        {QStringLiteral("c I: c"), QStringLiteral("f (Linked Footnote): f")});
    row("comment in a footnote", "word{\\footnote foot{\\*\\annotation deep}note}", "word",
        {QStringLiteral("c wor: deep"), QStringLiteral("f d: footnote")});
    row("in a table",
        "\\trowd\\cellx100\\cellx200\\intbl a\\cell b{\\footnote n}\\cell\\row\\pard x",
        "\na\nb\nx", one("f b: n"));
    row("footnote to text from before a table, beside another one's cell",
        "few\\par\\trowd\\cellx100\\cellx200\\intbl or{\\footnote{\\*\\mvrnote 6 }m}\\cell "
        "b{\\footnote n}\\cell\\row",
        "few\nor\nb\n", {QStringLiteral("f or: m"), QStringLiteral("f b: n")});
    row("footnote to text from a table on, behind another one's cell",
        "\\trowd\\cellx100\\cellx200\\intbl a{\\footnote n}\\cell b\\cell\\row\\pard few"
        "{\\footnote{\\*\\mvrnote 5 }m}",
        "\na\nb\nfew", {QStringLiteral("f a: n"), QStringLiteral("f few: m")});
    row("table and page break inside",
        "a{\\footnote x\\page\\trowd\\cellx9\\intbl c\\cell\\row\\pard y}b", "ab",
        one("f a: x/c/y"));
    row("deleted", "a{\\deleted b{\\footnote n}}c", "ac", {});
    row("cut off", "a{\\footnote note{\\b b", "a", one("f a: noteb"));
    row("what nobody knows in the middle", "a{\\footnote b\\*\\zzz c} d", "a d", one("f a: b"));
    row("another destination in the middle", "a{\\footnote b\\shpinst c} d", "a d", one("f a: b"));
    row("a value in the middle", "a{\\footnote b\\atnid c} d", "a d", one("f a: bc"));
    row("cut off in a box", "a{\\*\\atrfstart 1}{\\shp{\\shptxt b{\\footnote c\\shpinst d", "b\na",
        one("f b: c"));
    row("half a pair around", "\\u-10179?{\\footnote n}\\u-8704?b",
        "\xef\xbf\xbd(Linked Footnote)\xef\xbf\xbd"
        "b",
        one("f (Linked Footnote): n"));
}

void TestRtfNotes::readsOtherPrograms()
{
    QFETCH(const QByteArray, body);
    QTextDocument document;
    QVERIFY(MVRTextDoc::fromRtf("{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}}\n" + body + '}',
                                &document));
    QTEST(document.toPlainText(), "text");
    QTEST(listOf(&document), "notes");
}

// Contents that become one: formats know the lists of their documents by number.
void TestRtfNotes::keepsListsOfJoinedNotes()
{
    const QByteArray list
        = "{\\footnote\\pard{\\*\\pn\\pnlvlbody\\pndec\\pnstart1{\\pntxta.}}item\\par\\pard text}";
    QTextDocument document;
    QVERIFY(MVRTextDoc::fromRtf("{\\rtf1 word{\\footnote plain}" + list + list + '}', &document));
    const MVRTextCommentLinkMap notes = MVRTextDoc::commentsMap(&document, -1, -1);
    QCOMPARE(notes.size(), 1);
    QTextDocument content;
    QVERIFY(MVRTextRtf::fromRtfCData(notes.first().cdata, &content));
    QStringList items;
    for (QTextBlock block = content.begin(); block.isValid(); block = block.next())
        items << (block.textList() ? block.textList()->itemText(block) : QString()) + block.text();
    const QStringList wanted {QStringLiteral("plain"), QStringLiteral("1.item"),
                              QStringLiteral("text"), QStringLiteral("1.item"),
                              QStringLiteral("text")};
    QCOMPARE(items.join(QLatin1Char(124)), wanted.join(QLatin1Char(124)));
}

void TestRtfNotes::keepsThePlaceOfMarks()
{
    QByteArray rtf(
        "{\\rtf1 A sentence.{\\footnote 1} Wo{\\footnote 2}rd\\u8221?{\\footnote 3}\\par "
        "Ibid.{\\footnote same}\\par Ibid.{\\footnote same}}");
    QVector<int> places;
    for (int round = 0; round < 3; ++round) {
        QTextDocument document;
        MVRTextRtfNotes notes;
        QVERIFY(MVRTextRtf::fromRtfCData(rtf, &document, &notes));
        places.clear();
        for (const MVRTextRtfNote &note : qAsConst(notes))
            places.append(note.end);
        QCOMPARE(places, QVector<int>({11, 14, 17, 23, 29}));
        QVERIFY(MVRTextDoc::fromRtf(rtf, &document));
        rtf = MVRTextDoc::toRtf(&document);
    }
}

void TestRtfNotes::keepsTheThreadOfReplies()
{
    QByteArray body;
    for (const char *number : {"1", "2", "3"})
        body += QByteArray("{\\*\\atrfstart ") + number + '}';
    body += "range";
    for (const char *number : {"1", "2", "3"})
        body += QByteArray("{\\*\\atrfend ") + number + "}{\\*\\atnauthor A" + number
            + "}\\chatn{\\*\\annotation{\\*\\atnref " + number + "}{\\b said} " + number + "}";
    QTextDocument document;
    QVERIFY(MVRTextDoc::fromRtf("{\\rtf1 " + body + '}', &document));
    QCOMPARE(listOf(&document),
             QStringList(QStringLiteral("c range: A1: said 1/A2: said 2/A3: said 3")));
}

void TestRtfNotes::keepsWhoAndWhen()
{
    MVRTextRtfNote note;
    note.kind = MVRTextRtfNote::Comment;
    note.end = 4;
    note.author = QString::fromUtf8("Zoë {Ω}");
    note.initials = QStringLiteral("Z");
    note.time = QDateTime(QDate(2024, 2, 29), QTime(23, 59)); // a Thursday: a negative number
    note.rtf = MVRTextRtf::textToRtf(QStringLiteral("content"), nullptr);
    note.data = QByteArray("\0;}", 3);
    QTextDocument document(QStringLiteral("text"));
    MVRTextRtfNotes read;
    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&document, false, {note}), &document,
                                     &read));
    QCOMPARE(read.size(), 1);
    QCOMPARE(read.first().author, note.author);
    QCOMPARE(read.first().initials, note.initials);
    QCOMPARE(read.first().time, note.time);
    QCOMPARE(read.first().data, note.data);

    // An inspector comment has them in its content.
    QVERIFY(MVRTextDoc::fromRtf(MVRTextRtf::toRtfCData(&document, false, {note}), &document));
    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextDoc::toRtf(&document), &document, &read));
    QCOMPARE(read.value(0).author, note.author);
    QCOMPARE(read.value(0).time, note.time);

    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 a{\\*\\annotation{\\*\\atntime\\yr2001\\mo12\\dy31"
                                     "\\hr8\\min5}x}}",
                                     &document, &read));
    QCOMPARE(read.value(0).time, QDateTime(QDate(2001, 12, 31), QTime(8, 5)));
}

void TestRtfNotes::leavesNotesOutOfContent()
{
    const QByteArray rtf("{\\rtf1 a{\\*\\atrfstart 1}b{\\*\\atrfend 1}{\\*\\atnid X}"
                         "{\\*\\annotation{\\*\\atnref 1}n}{\\footnote f}c}");
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(rtf, &document));
    QCOMPARE(document.toPlainText(), QStringLiteral("abc"));
    QVERIFY(!MVRTextDoc::hasInspectorCommentsOrFootnotes(&document));
}

// A search from the document's or a long paragraph's beginning for each note would take minutes.
namespace {

constexpr char ownHeader[] = "{\\rtf1\\ansi\\ansicpg1252\\uc1{\\fonttbl{\\f0\\fnil Serif;}}\n";

// "word behind" with a note on the first word.
QByteArray withNote(const QByteArray &content, MVRTextRtfNote::Kind kind)
{
    QTextDocument document;
    QTextCursor(&document).insertText(QStringLiteral("word behind"));
    MVRTextRtfNote note;
    note.kind = kind;
    note.start = 0;
    note.end = 4;
    note.rtf = content;
    return MVRTextRtf::toRtfCData(&document, false, {note});
}

} // namespace

// Two runs that look alike are one to a document: where they stay two there was none.
void TestRtfNotes::takesItsOwnContentOver()
{
    const QByteArray body = "\\pard{\\f0\\b a}{\\f0\\b b}\\par\n}";
    const QByteArray own = withNote(ownHeader + body, MVRTextRtfNote::Comment);
    QVERIFY2(own.contains("\\pard{\\f0\\b a}{\\f0\\b b}}"), own);
    const QByteArray other
        = withNote("{\\rtf1{\\fonttbl{\\f0 Serif;}}" + body, MVRTextRtfNote::Comment);
    QVERIFY2(other.contains("\\pard{\\f0\\b ab}}"), other);

    // What a reader makes of a note is in that form.
    QTextDocument document;
    MVRTextRtfNotes notes;
    QVERIFY(MVRTextRtf::fromRtfCData(own, &document, &notes));
    QCOMPARE(notes.size(), 1);
    notes.first().rtf.replace("{\\f0\\b ab}", "{\\f0\\b a}{\\f0\\b b}");
    QVERIFY(MVRTextRtf::toRtfCData(&document, false, notes).contains("a}{\\f0\\b b}"));
}

void TestRtfNotes::keepsContentInItsGroup_data()
{
    QTest::addColumn<QByteArray>("body");
    const auto row = [](const char *name, const QByteArray &body) {
        QTest::newRow(name) << "\\pard " + body + "\\par\n}";
    };
    row("text", "a\\tab b \\{\\'e9\\u268 C");
    row("blank first", " a");
    row("runs", "a{\\f0 b}{\\f0\\b\\par}\nc{\\f0\\i d\\par}\n{\\b\\par}\n\\par\n\\pard\\qc e");
    row("empty ones", "a\\par\n\\par\n");
    row("closed too early", "a}}out{\\b ");
    row("left open", "a{{\\b ");
    row("binary data", "{\\bin3 }}}a}");
    row("binary data to the end", "a\\bin999 ");
    row("deep", QByteArray(30000, '{') + 'a' + QByteArray(30000, '}'));
    row("section", "a\\sect b\\page");
    row("what nobody knows", "a\\*\\zzz b");
    row("row of a table", "a\\cell\\row b");
    row("header", "{\\header out}a");
    row("another note", "{\\footnote in{\\footnote deeper}}a");
    row("end of the range", "a{\\*\\atrfend 1}");
    row("unknown numbers", "{\\f9\\cf9\\mvrx9 a}\\ls9");
    row("numbers without end", "{\\fs99999999999 a}\\li-2147483648");
    row("formats behind text", "{\\b a\\i b}\\qc");
    row("end in a field", "{\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt a\\par}}");
    row("half a picture", "{\\pict\\pngblip 89504E}a{\\pict");
    row("bytes of another code page", "\xe4\x80");
    row("two ends", "{\\b a\\par\\par}");
    QTest::newRow("end in a group by itself") << QByteArray("\\pard a{\\par}\n}");
    QTest::newRow("formatted end") << QByteArray("\\pard a{\\f0\\b\\par}\n}");
    QTest::newRow("run to the end") << QByteArray("\\pard\\qr a{\\f0\\b c\\par}\n}");
    QTest::newRow("empty, formatted") << QByteArray("\\pard\\qr{\\f0\\b\\par}\n}");
    QTest::newRow("text behind") << QByteArray("\\pard a\\par\n}out");
    QTest::newRow("text in the header") << QByteArray("out{\\pict}\\pard a\\par\n}");
    QTest::newRow("no end") << QByteArray("\\pard a");
}

// Content may come from anywhere and look like the writer's own.
void TestRtfNotes::keepsContentInItsGroup()
{
    QFETCH(const QByteArray, body);
    for (const auto kind : {MVRTextRtfNote::Footnote, MVRTextRtfNote::Comment}) {
        const QByteArray rtf = withNote(ownHeader + body, kind);
        QCOMPARE(rtf, withNote('\n' + (ownHeader + body), kind)); // read as a document
        QTextDocument document;
        MVRTextRtfNotes notes;
        QVERIFY(MVRTextRtf::fromRtfCData(rtf, &document, &notes));
        QCOMPARE(document.toPlainText(), QStringLiteral("word behind"));
        QCOMPARE(notes.size(), 1);
    }
}

void TestRtfNotes::leavesLinksAlone_data()
{
    QTest::addColumn<QByteArray>("rtf"); // "L" is a link with the text "site", "N" a footnote
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("note"); // that carries it, and where it begins
    QTest::newRow("full stop between") << QByteArray("see L.N more") << "see site. more"
                                       << ".8";
    QTest::newRow("full stop behind") << QByteArray("see LN. more") << "see site. more"
                                      << ".8";
    QTest::newRow("blank behind") << QByteArray("see LN more") << "see site more"
                                  << " 8";
    QTest::newRow("letters behind") << QByteArray("see LNs") << "see sites"
                                    << "see0";
    QTest::newRow("end of the paragraph") << QByteArray("see LN") << "see site"
                                          << "see0";
    QTest::newRow("nothing beside") << QByteArray("LN") << "site(Linked Footnote)"
                                    << "(Linked Footnote)4";
    QTest::newRow("two links") << QByteArray("see L LN") << "see site site(Linked Footnote)"
                               << "(Linked Footnote)13";
    QTest::newRow("range with a link in it")
        << QByteArray("{\\*\\atrfstart 1}see L{\\*\\atrfend 1}C more") << "see site more"
        << "see 0";
    QTest::newRow("range that is a link")
        << QByteArray("see {\\*\\atrfstart 1}L{\\*\\atrfend 1}C, more") << "see site, more"
        << ",8";
}

// A note's own anchor would take the place of a link.
void TestRtfNotes::leavesLinksAlone()
{
    QFETCH(QByteArray, rtf);
    rtf.replace('N', "{\\footnote note}");
    rtf.replace('C', "{\\*\\annotation{\\*\\atnref 1}note}");
    rtf.replace('L', "{\\field{\\*\\fldinst HYPERLINK \"http://x.y\"}{\\fldrslt site}}");
    rtf = "{\\rtf1 " + rtf + "}";
    QTextDocument document;
    QVERIFY(MVRTextDoc::fromRtf(rtf, &document));
    QTEST(document.toPlainText(), "text");
    const MVRTextNotes notes = MVRTextDoc::notes(&document);
    QCOMPARE(notes.size(), 1);
    const QTextCursor carrier = notes.first().range.toTextCursor(&document);
    QTEST(carrier.selectedText() + QString::number(notes.first().range.start), "note");
    QStringList links;
    for (auto it = document.begin().begin(); !it.atEnd(); ++it) {
        if (it.fragment().charFormat().anchorHref() == QLatin1String("http://x.y"))
            links += it.fragment().text();
    }
    QCOMPARE(links.join(QString()), QStringLiteral("site").repeated(rtf.count("fldinst")));

    // And there it stays, also one that an application attached to a link.
    const auto rangesOf = [](const QTextDocument &from) {
        QVector<MVRTextRange> ranges;
        for (const MVRTextNote &note : MVRTextDoc::notes(&from))
            ranges += note.range;
        return ranges;
    };
    QTextDocument again;
    QVERIFY(MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &again));
    QVERIFY(rangesOf(again) == rangesOf(document));
    MVRTextCommentLink link;
    link.isFootnote = true;
    link.cdata = contentFromHtml("on the link");
    MVRTextDoc::setComment(document.find(QStringLiteral("site")), link);
    QVERIFY(MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &again));
    QVERIFY(rangesOf(again) == rangesOf(document));
}

void TestRtfNotes::attachesManyNotes()
{
    QByteArray rtf("{\\rtf1 word ");
    for (int i = 0; i < 10000; ++i)
        rtf += ". ......................................................... {\\footnote n}";
    rtf += "{\\*\\atrfstart 1} x" + QByteArray("{\\footnote n}y ").repeated(5000)
        + "{\\*\\atrfend 1}{\\*\\annotation{\\*\\atnref 1}c}}";
    QTextDocument document;
    QVERIFY(MVRTextDoc::fromRtf(rtf, &document));
    QVERIFY(MVRTextDoc::notes(&document).size() > 10000);
}

QTEST_MAIN(TestRtfNotes)
#include "tst_rtfnotes.moc"
