// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRTextFinder.h>
#include <core/MVRTextUtil.h>
#include <core/STextDoc.h>

#include <QTextDocumentFragment>
#include <QTextList>
#include <QTextTable>
#include <QtTest>

using MarkedText::fill;
using MarkedText::select;

class TestFinder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsFragmentsAndRuns_data();
    void findsFragmentsAndRuns();
    void findsTheRunAtAPosition_data();
    void findsTheRunAtAPosition();
    void runEndsAtTheBorderOfACell();
    void answersForSelections_data();
    void answersForSelections();
    void findsLinkedImagesOneByOne();
    void listsAnchors();
    void trims_data();
    void trims();
    void trimsFragmentsAndSelections();
    void findsTheClosestWord_data();
    void findsTheClosestWord();
    void clampsRanges();
    void isHarmlessWithoutDocument();
};

namespace {

QTextCharFormat annotation()
{
    return MarkedText::formatOf(QLatin1Char('a'));
}

QString positions(const QTextCursor &cursor)
{
    return cursor.isNull()
        ? QStringLiteral("none")
        : QStringLiteral("%1-%2").arg(cursor.selectionStart()).arg(cursor.selectionEnd());
}

} // namespace

void TestFinder::findsFragmentsAndRuns_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("anchor");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("fragment");
    QTest::addColumn<QString>("run");

    const auto row = [](const char *name, const char *text, const char *marks, int anchor,
                        int position, const char *fragment, const char *run) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(marks) << anchor
                            << position << QString::fromUtf8(fragment) << QString::fromUtf8(run);
    };
    row("nothing", "abc", "...", 0, 0, "none", "none");
    row("first of two", "abcdefg", ".aa.aa.", 0, 0, "1-3", "1-3");
    row("behind the selection", "abcdefg", ".aa.aa.", 1, 3, "4-6", "4-6");
    row("backward selection", "abcdefg", ".aa.aa.", 3, 1, "4-6", "4-6");
    row("at a run's end", "abcdefg", ".aa.aa.", 3, 3, "4-6", "4-6");
    row("from inside", "abcdefg", ".aaaaa.", 3, 3, "1-6", "1-6");
    row("behind the last", "abc", "aa.", 0, 2, "none", "none");
    row("other formatting inside", "abcdef", "aaAAaa", 3, 3, "2-4", "0-6");
    row("over a paragraph end", "ab\ncd", "aa.aa", 3, 3, "3-5", "0-5");
    row("plain text at the paragraph end", "ab\ncd", "a..aa", 1, 1, "3-5", "3-5");
    row("empty paragraph of the run", "ab\n\ncd", "aaa.aa", 0, 0, "0-2", "0-6");
    row("plain empty paragraph", "ab\n\ncd", "aa.aaa", 0, 0, "0-2", "0-2");
    row("surrogate pairs", "a😀b", ".aa.", 0, 0, "1-3", "1-3");
}

void TestFinder::findsFragmentsAndRuns()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marks);
    QFETCH(const int, anchor);
    QFETCH(const int, position);
    QTextDocument document;
    fill(&document, text, marks);
    const QTextCursor from = select(&document, anchor, position);
    QTEST(positions(MVRTextFinder::findFragment(annotation(), from, true)), "fragment");
    QTEST(positions(MVRTextFinder::findContinuousFragment(annotation(), from, true)), "run");
}

void TestFinder::findsTheRunAtAPosition_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("run");

    const auto row
        = [](const char *name, const char *text, const char *marks, int position, const char *run) {
              QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(marks) << position
                                  << QString::fromUtf8(run);
          };
    row("inside", "abcdef", ".aAAa.", 3, "1-5");
    row("at the start: the character behind", "abcdef", ".aaaa.", 1, "1-5");
    row("at the end: the character before", "abcdef", ".aaaa.", 5, "1-5");
    row("apart", "abcdef", "aa..aa", 3, "none");
    row("start of a paragraph", "ab\ncd", ".aaaa", 3, "1-5");
    row("end of a paragraph, note in the next", "ab\ncd", "....a", 2, "none");
    row("empty paragraph inside", "ab\n\ncd", "aaaaaa", 3, "0-6");
    row("empty paragraph before", "\nab", ".aa", 0, "none");
}

void TestFinder::findsTheRunAtAPosition()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marks);
    QFETCH(const int, position);
    QTextDocument document;
    fill(&document, text, marks);
    const QTextCursor at = select(&document, position, position);
    QTEST(positions(MVRTextFinder::findFragmentAtPosition(annotation(), at)), "run");
}

void TestFinder::runEndsAtTheBorderOfACell()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextTable *table = cursor.insertTable(1, 2);
    for (int column = 0; column < 2; ++column)
        table->cellAt(0, column).firstCursorPosition().insertText(QStringLiteral("ab"),
                                                                  annotation());
    const QTextCursor run
        = MVRTextFinder::findContinuousFragment(annotation(), QTextCursor(&document), true);
    QCOMPARE(run.selectedText(), QStringLiteral("ab"));
    QCOMPARE(MVRTextFinder::formatCount(&document, MVRTextFormat::InlineAnnotationProperty, true),
             2);
}

void TestFinder::answersForSelections_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("anchor");
    QTest::addColumn<int>("position");
    QTest::addColumn<bool>("has");
    QTest::addColumn<bool>("isIn");

    const auto row = [](const char *name, const char *text, const char *marks, int anchor,
                        int position, bool has, bool isIn) {
        QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(marks) << anchor
                            << position << has << isIn;
    };
    row("all selected", "abc", "aaa", 0, 3, true, true);
    row("part selected", "abc", ".a.", 0, 3, true, false);
    row("next to it", "abc", ".a.", 0, 1, false, false);
    row("over an empty paragraph", "a\n\nb", "a..a", 0, 4, true, true);
    row("only a paragraph end", "a\nb", "aaa", 1, 2, false, false);
    row("position behind", "abc", ".a.", 2, 2, true, true);
    row("position before", "abc", ".a.", 1, 1, false, false);
    row("position at the start of the document", "abc", "aa.", 0, 0, true, true);
}

void TestFinder::answersForSelections()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marks);
    QFETCH(const int, anchor);
    QFETCH(const int, position);
    QTextDocument document;
    fill(&document, text, marks);
    const QTextCursor cursor = select(&document, anchor, position);
    const int id = MVRTextFormat::InlineAnnotationProperty;
    QTEST(MVRTextFinder::hasFormatProperty(cursor, id, true, true, true), "has");
    QTEST(MVRTextFinder::isInFormatProperty(cursor, id, true, true), "isIn");
    QTEST(MVRTextFinder::isFormatCheckedProperty(cursor, id, true, true), "isIn");
    QVERIFY(!MVRTextFinder::isInFormatProperty(cursor, id, false, true));
}

void TestFinder::findsLinkedImagesOneByOne()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextImageFormat image;
    image.setName(QStringLiteral("image"));
    cursor.insertImage(image);
    image.setProperty(MVRTextFormat::ImageLinkProperty, QStringLiteral("/tmp/a.png"));
    cursor.insertImage(image);
    cursor.insertImage(image);

    QTextCharFormat anyLink;
    anyLink.setProperty(MVRTextFormat::ImageLinkProperty, true);
    QTextCursor found(&document);
    QStringList images;
    for (found = MVRTextFinder::findFragment(anyLink, found, false); !found.isNull();
         found = MVRTextFinder::findFragment(anyLink, found, false))
        images.append(positions(found));
    QCOMPARE(images, QStringList({QStringLiteral("1-2"), QStringLiteral("2-3")}));
    QVERIFY(MVRTextFinder::findFragment(anyLink, QTextCursor(&document), true).isNull());
}

void TestFinder::listsAnchors()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextCharFormat link;
    link.setAnchor(true);
    link.setAnchorHref(QStringLiteral("17"));
    cursor.insertText(QStringLiteral("see "), link);
    QTextCharFormat bold = link;
    bold.setFontWeight(QFont::Bold);
    cursor.insertText(QStringLiteral("it"), bold);
    bold.setAnchorHref(QStringLiteral("18"));
    cursor.insertText(QStringLiteral("now"), bold);
    cursor.insertBlock();
    cursor.insertText(QStringLiteral("more"), bold);
    QTextCharFormat noteAnchor;
    noteAnchor.setAnchorHref(QStringLiteral("Comment:x"));
    cursor.insertText(QStringLiteral("note"), noteAnchor);

    cursor.select(QTextCursor::Document);
    const QList<MVRTextRange> whole = {{0, 6}, {6, 9}, {10, 14}};
    QCOMPARE(MVRTextFinder::findAllAnchors(cursor, true), whole);
    const QList<MVRTextRange> cut = {{2, 4}, {4, 6}, {6, 7}};
    QCOMPARE(MVRTextFinder::findAllAnchors(select(&document, 2, 7), false), cut);
}

void TestFinder::trims_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("emptyLines");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("limit");
    QTest::addColumn<QString>("trimmed");

    const auto row = [](const char *name, const char *text, bool emptyLines, int count, int limit,
                        const char *trimmed) {
        QTest::newRow(name) << QString::fromUtf8(text) << emptyLines << count << limit
                            << QString::fromUtf8(trimmed);
    };
    row("nothing to trim", "a b", true, 0, 0, "a b");
    row("all kinds of white space", " \t\n\u2028a \n", false, 0, 0, "a");
    row("some stays", "\n  a\t \n", false, 1, 2, " a\t ");
    row("less than may stay", " a", false, 3, 3, " a");
    row("negative counts", " a ", false, -1, -1, "a");
    row("nothing but white space", " \n ", false, 0, 0, "");
    row("empty paragraphs stay", "a\n\n\nb", false, 0, 0, "a\n\n\nb");
    row("empty paragraphs shrink", "a\n\n\n\nb\n\nc", true, 0, 0, "a\n\nb\n\nc");
}

void TestFinder::trims()
{
    QFETCH(const QString, text);
    QFETCH(const bool, emptyLines);
    QFETCH(const int, count);
    QFETCH(const int, limit);
    QFETCH(const QString, trimmed);
    QTextDocument document;
    document.setPlainText(text);
    document.setUndoRedoEnabled(true);
    const QString before = document.toPlainText();
    bool changed = false;
    MVRTextUtil::trim(&document, emptyLines, count, limit, &changed);
    QCOMPARE(document.toPlainText(), trimmed);
    QCOMPARE(changed, before != trimmed);
    QCOMPARE(document.isUndoAvailable(), changed);
    document.undo();
    QCOMPARE(document.toPlainText(), before);
}

void TestFinder::trimsFragmentsAndSelections()
{
    QTextDocument document;
    fill(&document, QStringLiteral(" \n ab "), QStringLiteral("BBBBBB"));
    const QTextDocumentFragment trimmed = MVRTextUtil::trimmed(QTextDocumentFragment(&document));
    QTextDocument result;
    QTextCursor(&result).insertFragment(trimmed);
    QCOMPARE(result.toPlainText(), QStringLiteral("ab"));
    QCOMPARE(MarkedText::marks(result), QStringLiteral("BB"));
    QVERIFY(MVRTextUtil::trimmed(QTextDocumentFragment()).isEmpty());

    bool changed = true;
    MVRTextUtil::trim(select(&document, 3, 3), false, 0, 0, &changed);
    QVERIFY(!changed);
    MVRTextUtil::trim(select(&document, 6, 2), false, 0, 0, &changed);
    QVERIFY(changed);
    QCOMPARE(document.toPlainText(), QStringLiteral(" \nab"));
}

void TestFinder::findsTheClosestWord_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("backward");
    QTest::addColumn<QString>("forward");
    QTest::addColumn<QString>("withOtherParagraphs"); // searched backward

    const auto row
        = [](const char *name, const char *text, const char *marks, int position,
             const char *backward, const char *forward, const char *withOtherParagraphs) {
              QTest::newRow(name) << QString::fromUtf8(text) << QString::fromUtf8(marks) << position
                                  << QString::fromUtf8(backward) << QString::fromUtf8(forward)
                                  << QString::fromUtf8(withOtherParagraphs);
          };
    row("inside a word", "one two", ".......", 5, "two", "", "two");
    row("at a word's start", "one two", ".......", 4, "two", "two", "two");
    row("at a word's end", "one two", ".......", 3, "one", "two", "one");
    row("between signs", "one -- two", "..........", 5, "one", "two", "one");
    row("in an empty paragraph", "one\n\ntwo", "........", 4, "", "", "one");
    row("skipped words", "one two six", "....aaa....", 7, "one", "six", "one");
    row("partly skipped word", "one two", ".a.....", 2, "", "two", "");
    row("word skipped for its first letter", "one two", "....a..", 7, "one", "", "one");
    row("word skipped for its last letter", "one two", "......a", 5, "one", "", "one");
    row("apostrophe", "don't go", "........", 1, "don't", "go", "don't");
    row("no words", "*** !", ".....", 2, "", "", "");
    row("beyond the plane", "𝐀𝐁 x", "......", 6, "x", "", "x");
    row("script without blanks", "你好", "..", 1, "好", "好", "好");
}

void TestFinder::findsTheClosestWord()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marks);
    QFETCH(const int, position);
    QTextDocument document;
    fill(&document, text, marks);
    const QTextCursor at = select(&document, position, position);
    const QSet<int> skip = {MVRTextFormat::InlineAnnotationProperty};
    const auto word = [&](bool leave, MVRTextUtil::Direction direction) {
        return MVRTextUtil::closestWordCursor(at, leave, direction, &skip).selectedText();
    };
    QTEST(word(false, MVRTextUtil::Backward), "backward");
    QTEST(word(false, MVRTextUtil::Forward), "forward");
    QTEST(word(true, MVRTextUtil::Backward), "withOtherParagraphs");
}

void TestFinder::clampsRanges()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("abc"));
    QCOMPARE(positions(MVRTextRange(-5, 99).toTextCursor(&document)), QStringLiteral("0-3"));
    QCOMPARE(MVRTextRange(select(&document, 3, 1)), MVRTextRange(1, 3));
    QVERIFY(MVRTextRange(1, 9) < MVRTextRange(2, 3) && MVRTextRange(1, 2) < MVRTextRange(1, 3));
}

void TestFinder::isHarmlessWithoutDocument()
{
    const QTextCursor none;
    QVERIFY(MVRTextFinder::findFragment(annotation(), none, true).isNull());
    QVERIFY(MVRTextFinder::findContinuousFragment(annotation(), none, true).isNull());
    QVERIFY(MVRTextFinder::findFragmentAtPosition(annotation(), none).isNull());
    QVERIFY(!MVRTextFinder::hasFormatProperty(none, 1, true, true, true));
    QVERIFY(MVRTextFinder::findAllAnchors(none, true).isEmpty());
    QCOMPARE(MVRTextFinder::formatCount(nullptr, 1, true), 0);
    MVRTextUtil::trim(nullptr, true, 0, 0, nullptr);
    QVERIFY(MVRTextUtil::closestWordCursor(none, true, MVRTextUtil::Forward, nullptr).isNull());
    QVERIFY(MVRTextRange(0, 1).toTextCursor(nullptr).isNull());
    STextDoc::clearCommentPropertiesCursor(nullptr);
    STextDoc::tablesToText(nullptr);
    STextDoc::normalizePageBreaks(nullptr);
}

QTEST_MAIN(TestFinder)
#include "tst_finder.moc"
