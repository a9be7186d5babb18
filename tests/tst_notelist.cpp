// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRTextRtf.h>
#include <text/MVRTextDoc.h>

#include <QTextTable>
#include <QtTest>

using MarkedText::fill;
using MarkedText::formatOf;
using MarkedText::select;

// The list of the notes of all kinds.
class TestNoteList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void lists_data();
    void lists();
    void tellsEqualNotesApart();
    void stopsAtCells();
    void readsContent();
    void knowsAuthorAndDate();
};

namespace {

/*! "0-3 c" for a comment on [0, 3); 'f' footnote, 'A' inline annotation, 'F' inline footnote. */
QString described(const MVRTextNotes &notes)
{
    QStringList result;
    for (const MVRTextNote &note : notes)
        result.append(QStringLiteral("%1-%2 %3")
                          .arg(note.range.start)
                          .arg(note.range.end)
                          .arg(QLatin1Char("cfAF"[note.kind])));
    return result.join(QLatin1String(", "));
}

QByteArray rtf(const char *text)
{
    return MVRTextRtf::textToRtf(QString::fromLatin1(text), nullptr);
}

} // namespace

void TestNoteList::lists_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<QString>("notes");

    QTest::newRow("all kinds") << "abcdefgh"
                               << "1155aaff" << -1 << -1 << "0-2 c, 2-4 f, 4-6 A, 6-8 F";
    QTest::newRow("other content") << "abcd"
                                   << "1122" << -1 << -1 << "0-2 c, 2-4 c";
    QTest::newRow("equal content apart") << "abcd"
                                         << "1.11" << -1 << -1 << "0-1 c, 2-4 c";
    QTest::newRow("over paragraphs") << "ab\ncd\n\nef"
                                     << ".11111555" << -1 << -1 << "1-5 c, 7-9 f";
    QTest::newRow("over an empty paragraph") << "ab\n\ncd"
                                             << ".1.11." << -1 << -1 << "1-5 c";
    QTest::newRow("over bold") << "abcd"
                               << "aAAa" << -1 << -1 << "0-4 A";
    QTest::newRow("inline over paragraphs") << "ab\ncd\n\nef"
                                            << ".f.f...ff" << -1 << -1 << "1-4 F, 7-9 F";
    QTest::newRow("whole at the start") << "abcdef"
                                        << "1111.." << 2 << 5 << "0-4 c";
    QTest::newRow("whole at the end") << "ab\ncdef"
                                      << "..af..." << 3 << 4 << "3-4 F";
    QTest::newRow("goes on behind the end") << "abcdef"
                                            << ".11aaa" << 1 << 4 << "1-3 c, 3-6 A";
    QTest::newRow("ends at the start") << "abcdef"
                                       << "11aa55" << 2 << 4 << "2-4 A";
    QTest::newRow("ends before") << "abcdef"
                                 << "11aa.." << 4 << 6 << "";
}

void TestNoteList::lists()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marks);
    QFETCH(const int, start);
    QFETCH(const int, end);
    QTextDocument document;
    fill(&document, text, marks);
    QTEST(described(MVRTextDoc::notes(&document, start, end)), "notes");
    QVERIFY(MVRTextDoc::notes(nullptr).isEmpty());
    QVERIFY(MVRTextDoc::inlineNotes(nullptr, MVRTextFormat::InlineFootnoteProperty).isEmpty());
}

void TestNoteList::tellsEqualNotesApart()
{
    QTextDocument document(QStringLiteral("one\ntwo"));
    MVRTextDoc::setCommentCData(select(&document, 0, 3), rtf("Ibid."), true);
    MVRTextDoc::setCommentCData(select(&document, 4, 7), rtf("Ibid."), true);
    QCOMPARE(described(MVRTextDoc::notes(&document)), QStringLiteral("0-3 f, 4-7 f"));
    QCOMPARE(MVRTextDoc::commentsMap(&document, -1, -1).size(), 1);

    // They come back from a file as two, one over both paragraphs as one.
    QTextDocument copy;
    QVERIFY(MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &copy));
    QCOMPARE(described(MVRTextDoc::notes(&copy)), QStringLiteral("0-3 f, 4-7 f"));
    MVRTextDoc::setCommentCData(select(&document, 0, 7), rtf("Ibid."), true);
    QVERIFY(MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &copy));
    QCOMPARE(described(MVRTextDoc::notes(&copy)), QStringLiteral("0-7 f"));

    // A part that the host made a link of is still the note's; half of another kind is not.
    QTextCharFormat link;
    link.setAnchorHref(QStringLiteral("https://example.org"));
    select(&document, 4, 5).mergeCharFormat(link);
    QCOMPARE(described(MVRTextDoc::notes(&document)), QStringLiteral("0-7 f"));
    MVRTextDoc::convertInspectorFootnotesToInspectorComments(&document, select(&document, 0, 2));
    QCOMPARE(described(MVRTextDoc::notes(&document)), QStringLiteral("0-2 c, 2-7 f"));
}

void TestNoteList::stopsAtCells()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextTable *table = cursor.insertTable(1, 2);
    table->cellAt(0, 0).firstCursorPosition().insertText(QStringLiteral("left"));
    table->cellAt(0, 1).firstCursorPosition().insertText(QStringLiteral("note"),
                                                         formatOf(QLatin1Char('f')));
    cursor.movePosition(QTextCursor::End);
    cursor.setBlockCharFormat(formatOf(QLatin1Char('f')));
    cursor.insertText(QStringLiteral("second"), formatOf(QLatin1Char('f')));
    cursor.insertText(QStringLiteral(" after"), QTextCharFormat());

    QCOMPARE(described(MVRTextDoc::notes(&document)), QStringLiteral("6-10 F, 11-17 F"));
    QCOMPARE(described(MVRTextDoc::notes(&document, 11, 12)), QStringLiteral("11-17 F"));
    const int property = MVRTextFormat::InlineFootnoteProperty;
    QCOMPARE(MVRTextDoc::removeInlineNotes(&document, property, select(&document, 0, 10)), 1);
    QCOMPARE(document.toPlainText(), QStringLiteral("\nleft\n\nsecond after"));
    QCOMPARE(MVRTextDoc::removeInlineNotes(&document, property, QTextCursor()), 1);
    QCOMPARE(document.toPlainText(), QStringLiteral("\nleft\n\n after"));
    document.undo();
    QCOMPARE(document.toPlainText(), QStringLiteral("\nleft\n\nsecond after"));
    QVERIFY(document.rootFrame()->childFrames().size() == 1);
}

void TestNoteList::readsContent()
{
    QTextDocument document;
    fill(&document, QStringLiteral("ab\ncd"), QStringLiteral(".aaA."));
    MVRTextDoc::setCommentCData(select(&document, 4, 5), rtf("two words"), false);
    const MVRTextNotes notes = MVRTextDoc::notes(&document);
    QCOMPARE(notes.size(), 2);
    QCOMPARE(notes[0].text(document), QStringLiteral("b\nc"));
    QCOMPARE(notes[0].contentText(document), QStringLiteral("b\nc"));
    QVERIFY(notes[0].contentHtml(document).contains(QLatin1String("font-weight")));
    QCOMPARE(notes[1].text(document), QStringLiteral("d"));
    QCOMPARE(notes[1].contentText(document), QStringLiteral("two words"));
    QVERIFY(notes[1].contentHtml(document).contains(QLatin1String("two words</")));
    QVERIFY(notes[1].color.isValid() && !notes[0].color.isValid());
    QVERIFY(notes[1].anchor.startsWith(QLatin1String("Comment:")) && notes[0].anchor.isEmpty());
}

void TestNoteList::knowsAuthorAndDate()
{
    QTextDocument document(QStringLiteral("one two"));
    const QDateTime date(QDate(2024, 2, 29), QTime(23, 59));
    MVRTextCommentLink link;
    link.cdata = rtf("said");
    MVRTextDoc::setComment(select(&document, 0, 3), link, QStringLiteral("Zoë"), date);
    MVRTextDoc::setComment(select(&document, 4, 7), link);
    QTextDocument copy;
    QVERIFY(MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &copy));
    for (const QTextDocument *each : {&document, &copy}) {
        const MVRTextNotes notes = MVRTextDoc::notes(each);
        QCOMPARE(notes.size(), 2);
        QCOMPARE(notes[0].author, QStringLiteral("Zoë"));
        QCOMPARE(notes[0].date, date);
        QVERIFY(notes[1].author.isEmpty() && !notes[1].date.isValid());
    }

    // Nobody is named for what somebody else wrote over it, or where the note was taken away.
    MVRTextDoc::setComment(select(&document, 0, 3), link);
    const MVRTextNote overwritten = MVRTextDoc::notes(&document).first();
    QVERIFY(overwritten.author.isEmpty() && !overwritten.date.isValid());
    MVRTextDoc::setComments(&copy, MVRTextCommentLinkMap());
    QVERIFY(!select(&copy, 0, 1).charFormat().hasProperty(MVRTextFormat::CommentAuthorProperty));
}

QTEST_MAIN(TestNoteList)
#include "tst_notelist.moc"
