// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRSettings.h>
#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QTemporaryDir>
#include <QTextTable>
#include <QUrl>
#include <QtTest>

#include <functional>

using MarkedText::fill;
using MarkedText::formatAt;
using MarkedText::marks;
using MarkedText::select;

class TestInspectorNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void attaches_data();
    void attaches();
    void writesEveryProperty();
    void takesTheDefaultColour_data();
    void takesTheDefaultColour();
    void cuts_data();
    void cuts();
    void removes_data();
    void removes();
    void removesNothingFromOtherText();
    void freesTheEmptyParagraph();
    void lists_data();
    void lists();
    void replacesAllNotes();
    void removesByKind();
    void leavesLinksAlone();
    void keepsCoveredLinks();
    void attachesManyNotesToOneParagraph();
    void removesInsideTables();
    void recognizesAnchors();
    void isHarmlessWithoutDocument();

private:
    QTemporaryDir m_dir;
};

namespace {

MVRTextCommentLink note(char content, bool isFootnote)
{
    MVRTextCommentLink link;
    link.isFootnote = isFootnote;
    link.cdata = QByteArray(1, content);
    return link;
}

/*! "0-3 c1" for a comment with the content "1" on [0, 3). */
QStringList described(const MVRTextCommentLinkMap &map)
{
    QStringList result;
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        result.append(QStringLiteral("%1-%2 %3%4")
                          .arg(it.key().start)
                          .arg(it.key().end)
                          .arg(QLatin1Char(it->isFootnote ? 'f' : 'c'))
                          .arg(QString::fromLatin1(it->cdata)));
    }
    return result;
}

} // namespace

void TestInspectorNotes::initTestCase()
{
    QVERIFY(m_dir.isValid());
    mvrOptions().setFileName(m_dir.filePath(QStringLiteral("settings.ini")));
}

void TestInspectorNotes::attaches_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("anchor");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("after");

    QTest::newRow("on plain text") << "abcdef"
                                   << "......" << 1 << 3 << ".22...";
    QTest::newRow("no selection") << "abcdef"
                                  << ".1111." << 3 << 3 << ".1111.";
    QTest::newRow("inside another, whose tail goes") << "abcdef"
                                                     << "111111" << 2 << 4 << "1122..";
    QTest::newRow("from inside another to its end") << "abcdef"
                                                    << ".1111." << 3 << 5 << ".1122.";
    QTest::newRow("from before another") << "abcdef"
                                         << "..1111" << 1 << 4 << ".22211";
    QTest::newRow("from the start of another") << "abcdef"
                                               << ".1111." << 1 << 3 << ".2211.";
    QTest::newRow("from a start at a paragraph's start") << "abcdef"
                                                         << "1111.." << 0 << 2 << "2211..";
    QTest::newRow("behind a touching note") << "abcdef"
                                            << "111555" << 3 << 5 << "111225";
    QTest::newRow("out of another into plain text") << "abcdef"
                                                    << "1111.." << 2 << 6 << "112222";
    QTest::newRow("at a paragraph's start inside another") << "ab\ncd"
                                                           << "11111" << 3 << 4 << "1112.";
    QTest::newRow("over paragraphs") << "ab\n\ncd"
                                     << "......" << 1 << 5 << ".2222.";
}

void TestInspectorNotes::attaches()
{
    QFETCH(const QString, text);
    QFETCH(const QString, before);
    QFETCH(const int, anchor);
    QFETCH(const int, position);
    QTextDocument document;
    fill(&document, text, before);
    MVRTextDoc::setComment(select(&document, anchor, position), note('2', false));
    QTEST(marks(document), "after");
    QCOMPARE(document.isUndoAvailable(), marks(document) != before);
    document.undo();
    QCOMPARE(marks(document), before);
    QVERIFY(!document.isUndoAvailable());
}

void TestInspectorNotes::writesEveryProperty()
{
    QTextDocument document;
    fill(&document, QStringLiteral("ab"), QStringLiteral("aB"));
    MVRTextCommentLink link = note('1', false);
    link.color = Qt::green;
    MVRTextDoc::setComment(&document, MVRTextRange(0, 2), link);
    const QTextCharFormat comment = formatAt(&document, 0);
    const QString href = comment.anchorHref();
    QCOMPARE(comment.colorProperty(MVRTextFormat::CommentColorProperty), QColor(Qt::green));
    QVERIFY(href.startsWith(QLatin1String("Comment:")) && href.size() > 40);
    QCOMPARE(comment.property(MVRTextFormat::InlineAnnotationProperty), QVariant(false));
    QCOMPARE(comment.property(MVRTextFormat::InlineFootnoteProperty), QVariant(false));
    QCOMPARE(formatAt(&document, 1).fontWeight(), int(QFont::Bold));

    MVRTextDoc::setComment(&document, MVRTextRange(0, 2), note('5', true));
    const QTextCharFormat footnote = formatAt(&document, 0);
    QCOMPARE(footnote.property(MVRTextFormat::InspectorCommentProperty), QVariant(false));
    QVERIFY(footnote.anchorHref().startsWith(QLatin1String("Footnote:")));
    QVERIFY(footnote.anchorHref().mid(9) != href.mid(8));
    const MVRTextCommentLink read(footnote);
    QVERIFY(read.isFootnote);
    QVERIFY2(!read.color.isValid(), "the colour of the comment before it is not the footnote's");
}

void TestInspectorNotes::takesTheDefaultColour_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QColor>("colour");

    QTest::newRow("nothing stored")
        << QVariant() << mvrOptions().defaultValue(MVRSettings::CommentColorSetting);
    QTest::newRow("colour") << QVariant(QColor(Qt::blue)) << QColor(Qt::blue);
    QTest::newRow("name of a colour") << QVariant(QStringLiteral("#00ff00")) << QColor(0, 255, 0);
    QTest::newRow("no colour at all") << QVariant(QByteArray("\x01")) << QColor();
}

void TestInspectorNotes::takesTheDefaultColour()
{
    QFETCH(const QVariant, stored);
    QFETCH(const QColor, colour);
    if (stored.isValid())
        mvrOptions().setValue(MVRSettings::CommentColorSetting, stored);
    QTextDocument document;
    fill(&document, QStringLiteral("ab"), QStringLiteral(".."));
    MVRTextDoc::setCommentCData(select(&document, 0, 1), "1", false);
    MVRTextDoc::setCommentCData(select(&document, 1, 2), "5", true);
    mvrOptions().remove(MVRSettings::CommentColorSetting);
    QCOMPARE(formatAt(&document, 0).colorProperty(MVRTextFormat::CommentColorProperty), colour);
    QVERIFY(!formatAt(&document, 1).hasProperty(MVRTextFormat::CommentColorProperty));
}

void TestInspectorNotes::cuts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("after");

    QTest::newRow("inside") << "abcdef"
                            << ".1111." << 3 << ".11...";
    QTest::newRow("at the end") << "abcdef"
                                << ".11..." << 3 << ".11...";
    QTest::newRow("at the start") << "abcdef"
                                  << ".11..." << 1 << ".11...";
    QTest::newRow("at the paragraph's start") << "abcdef"
                                              << "11...." << 0 << "......";
    QTest::newRow("only this note") << "abcdef"
                                    << "112255" << 1 << "1.2255";
    QTest::newRow("over paragraphs") << "ab\n\ncd"
                                     << ".11111" << 2 << ".1....";
    QTest::newRow("from an empty paragraph") << "ab\n\ncd"
                                             << "111111" << 3 << "111...";
}

void TestInspectorNotes::cuts()
{
    QFETCH(const QString, text);
    QFETCH(const QString, before);
    QFETCH(const int, position);
    QTextDocument document;
    fill(&document, text, before);
    MVRTextDoc::clearComment(&document, position);
    QTEST(marks(document), "after");
    QCOMPARE(document.isUndoAvailable(), marks(document) != before);
    document.undo();
    QCOMPARE(marks(document), before);
}

void TestInspectorNotes::removes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<QString>("after");

    QTest::newRow("no selection") << "abcdef"
                                  << ".1111." << 3 << 3 << ".1111.";
    QTest::newRow("begins inside, goes beyond") << "abcdef"
                                                << "..1111" << 1 << 4 << "......";
    QTest::newRow("began before") << "abcdef"
                                  << "1111.5" << 2 << 6 << "1111..";
    QTest::newRow("begins at the end") << "abcdef"
                                       << "1...55" << 0 << 4 << "....55";
    QTest::newRow("paragraphs and what is between") << "ab\n\ncd"
                                                    << ".11111" << 1 << 6 << "......";
    QTest::newRow("last paragraph of one that began before") << "ab\ncd"
                                                             << "11111" << 1 << 5 << "11...";
}

void TestInspectorNotes::removes()
{
    QFETCH(const QString, text);
    QFETCH(const QString, before);
    QFETCH(const int, start);
    QFETCH(const int, end);
    QTextDocument document;
    fill(&document, text, before);
    QTextCursor cursor = select(&document, end, start);
    MVRTextDoc::removeComment(cursor);
    QTEST(marks(document), "after");
    document.undo();
    QCOMPARE(marks(document), before);
}

void TestInspectorNotes::removesNothingFromOtherText()
{
    QTextDocument document;
    fill(&document, QStringLiteral("ab"), QStringLiteral("1."));
    QTextCharFormat former; // as text has it that a footnote was moved away from
    former.setProperty(MVRTextFormat::InspectorFootnoteProperty, false);
    select(&document, 1, 2).mergeCharFormat(former);
    QTextCursor cursor = select(&document, 0, 2);
    MVRTextDoc::removeComment(cursor);
    QCOMPARE(marks(document), QStringLiteral(".."));
    QCOMPARE(formatAt(&document, 1), former);
}

void TestInspectorNotes::freesTheEmptyParagraph()
{
    QTextDocument document;
    fill(&document, QStringLiteral("ab\n"), QStringLiteral("111"));
    QTextCursor cursor = select(&document, 3, 3);
    MVRTextDoc::removeComment(cursor);
    QCOMPARE(marks(document), QStringLiteral("11."));
    cursor.insertText(QStringLiteral("x"));
    QVERIFY(!MVRTextDoc::hasInspectorCommentsOrFootnotes(cursor));
}

void TestInspectorNotes::lists_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("property");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<bool>("firstOnly");
    QTest::addColumn<QStringList>("notes");

    const int all = MVRTextFormat::CommentLinkProperty;
    const int comments = MVRTextFormat::InspectorCommentProperty;
    const int footnotes = MVRTextFormat::InspectorFootnoteProperty;
    const auto row = [](const char *name, const char *text, const char *marks, int property,
                        int start, int end, bool firstOnly, const char *notes) {
        const QString list = QString::fromLatin1(notes);
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(marks) << property
                            << start << end << firstOnly
                            << list.split(QLatin1Char(','), Qt::SkipEmptyParts);
    };
    row("none", "abc", "...", all, -1, -1, false, "");
    row("both kinds", "abcdef", ".11.55", all, -1, -1, false, "1-3 c1,4-6 f5");
    row("comments", "abcdef", ".11.55", comments, -1, -1, false, "1-3 c1");
    row("footnotes", "abcdef", ".11.55", footnotes, -1, -1, false, "4-6 f5");
    row("touching notes", "abcdef", "112255", all, -1, -1, false, "0-2 c1,2-4 c2,4-6 f5");
    row("same content apart", "abcdef", "11..11", all, -1, -1, false, "0-2 c1,4-6 c1");
    row("over a paragraph end", "ab\ncd", ".1111", all, -1, -1, false, "1-5 c1");
    row("over a plain paragraph", "ab\nxx\ncd", "11....11", all, -1, -1, false, "0-8 c1");
    row("only ends a paragraph", "ab\ncd", "11..1", all, -1, -1, false, "0-2 c1,4-5 c1");
    row("first only", "abcdef", ".11.55", all, -1, -1, true, "1-3 c1");
    row("first from a start", "abcdef", ".11.55", all, 3, -1, true, "4-6 f5");
    row("start inside a fragment", "abcdefg", ".111.55", all, 3, -1, false, "2-4 c1,5-7 f5");
    row("start behind the end", "abcdef", ".11.55", all, 99, -1, false, "");
    row("end before a note", "abcdef", ".11.55", all, -1, 3, false, "1-3 c1");
    row("end where a note begins", "abcdef", ".11.55", all, -1, 4, false, "1-3 c1,4-6 f5");
    row("end inside a note of two paragraphs", "ab\ncd\ne", "11.2222", all, -1, 4, false, "0-2 c1");
}

void TestInspectorNotes::lists()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marks);
    QFETCH(const int, property);
    QFETCH(const int, start);
    QFETCH(const int, end);
    QFETCH(const bool, firstOnly);
    QTextDocument document;
    fill(&document, text, marks);
    // Other formatting splits a note into fragments, which is not to show.
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    select(&document, 1, 2).mergeCharFormat(bold);
    QTEST(described(MVRTextDoc::commentsMapByType(property, &document, start, end, firstOnly)),
          "notes");
}

void TestInspectorNotes::replacesAllNotes()
{
    QTextDocument document;
    fill(&document, QStringLiteral("abcdef"), QStringLiteral("11..55"));
    const MVRTextCommentLinkMap map
        = {{MVRTextRange(1, 2), note('2', false)}, {MVRTextRange(4, 99), note('6', true)}};
    MVRTextDoc::setComments(&document, map);
    QCOMPARE(marks(document), QStringLiteral(".2..66"));
    document.undo();
    QCOMPARE(marks(document), QStringLiteral("11..55"));
    QVERIFY(!document.isUndoAvailable());
    MVRTextDoc::setComments(&document, MVRTextCommentLinkMap());
    QVERIFY(!MVRTextDoc::hasInspectorCommentsOrFootnotes(&document));
}

void TestInspectorNotes::removesByKind()
{
    QTextDocument document;
    const QString text = QStringLiteral("abcd\nef");
    const QString before = QStringLiteral("11.a155");
    fill(&document, text, before);
    STextDoc::removeInspectorComments(&document);
    QCOMPARE(marks(document), QStringLiteral("...a.55"));
    fill(&document, text, before);
    STextDoc::removeInspectorFootnotes(&document);
    QCOMPARE(marks(document), QStringLiteral("11.a1.."));
    fill(&document, text, QStringLiteral("...a..."));
    STextDoc::removeInspectorCommentsAndFootnotes(&document);
    QVERIFY(!document.isUndoAvailable());
}

void TestInspectorNotes::leavesLinksAlone()
{
    QTextDocument document;
    document.setHtml(QStringLiteral("<a href=\"http://a.b/\">web</a><a href=\"7\">item</a>"));
    QTextCharFormat format = MarkedText::formatOf(QLatin1Char('1'));
    QTextCursor cursor = select(&document, 0, 7);
    cursor.mergeCharFormat(format);
    MVRTextDoc::setComment(select(&document, 5, 7), note('2', false));
    MVRTextDoc::removeComment(cursor);
    QCOMPARE(formatAt(&document, 0).anchorHref(), QStringLiteral("http://a.b/"));
    QCOMPARE(formatAt(&document, 3).anchorHref(), QStringLiteral("7"));
    QCOMPARE(formatAt(&document, 5).anchorHref(), QStringLiteral("7"));
}

void TestInspectorNotes::keepsCoveredLinks()
{
    const auto isNote = [](const QTextCharFormat &format) {
        return MVRTextDoc::isCommentFootnoteAnchor(format.anchorHref());
    };
    const auto fillLinked = [](QTextDocument *document, int length) {
        fill(document, QString(length, QLatin1Char('x')), QString(length, QLatin1Char('.')));
        QTextCharFormat link;
        link.setAnchor(true);
        link.setAnchorHref(QStringLiteral("http://a.b/"));
        select(document, 2, length).mergeCharFormat(link);
    };
    const auto leadsTo = [](QTextDocument *document, int position) {
        return formatAt(document, position).anchorHref();
    };
    const QString web = QStringLiteral("http://a.b/");
    using Removal = std::function<void(QTextDocument *)>;
    const Removal removals[] = {
        [](QTextDocument *document) {
            QTextCursor all = select(document, 0, document->characterCount() - 1);
            MVRTextDoc::removeComment(all);
        },
        [](QTextDocument *document) { MVRTextDoc::clearComment(document, 0); },
        [](QTextDocument *document) { MVRTextDoc::setComments(document, {}); },
        [](QTextDocument *document) {
            MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(document, QTextCursor());
        },
    };
    for (const int length : {8, 200}) {
        for (const Removal &remove : removals) {
            QTextDocument document;
            fillLinked(&document, length);
            MVRTextDoc::setComment(select(&document, 0, length), note('1', false));
            MVRTextDoc::setComment(select(&document, 0, length), QStringLiteral("n"), true);
            QVERIFY(isNote(formatAt(&document, 1)) && isNote(formatAt(&document, length / 2)));
            remove(&document);
            QCOMPARE(leadsTo(&document, 3), web);
            QCOMPARE(leadsTo(&document, length / 2), web);
            QCOMPARE(leadsTo(&document, length - 1), web);
            QVERIFY(leadsTo(&document, 0).isEmpty());
            if (document.characterCount() > length + 1) // the note went into the text
                QVERIFY(!formatAt(&document, length).isAnchor());
        }
    }

    // Files keep both.
    QTextDocument document;
    fillLinked(&document, 8);
    MVRTextDoc::setComment(select(&document, 1, 8), QStringLiteral("n"), false);
    QTextDocument read;
    QVERIFY(MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &read));
    QVERIFY(isNote(formatAt(&read, 3)));
    QTextCursor all = select(&read, 0, 8);
    MVRTextDoc::removeComment(all);
    QCOMPARE(leadsTo(&read, 3), web);
    QVERIFY(leadsTo(&read, 1).isEmpty());

    // A link that is taken away while a note covers it stays away.
    MVRTextDoc::clearInternalLinks(&document);
    MVRTextDoc::setComments(&document, {});
    QVERIFY(!formatAt(&document, 3).isAnchor());
}

void TestInspectorNotes::attachesManyNotesToOneParagraph()
{
    constexpr int count = 4000;
    QTextDocument document;
    document.setPlainText(QStringLiteral("word ").repeated(count));
    for (int i = 0; i < count; ++i)
        MVRTextDoc::setComment(&document, MVRTextRange(5 * i, 5 * i + 4), note(char(i), false));
    QCOMPARE(MVRTextDoc::commentsMap(&document, -1, -1).size(), count);
}

void TestInspectorNotes::removesInsideTables()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextTable *table = cursor.insertTable(2, 2);
    table->mergeCells(0, 0, 1, 2);
    for (int row = 0; row < 2; ++row)
        table->cellAt(row, 1).firstCursorPosition().insertText(QStringLiteral("cell"));
    cursor.select(QTextCursor::Document);
    MVRTextDoc::setComment(cursor, note('1', false));
    QVERIFY(MVRTextDoc::hasInspectorComment(cursor));
    STextDoc::removeInspectorCommentsAndFootnotes(&document);
    QVERIFY(!MVRTextDoc::hasInspectorCommentsOrFootnotes(&document));
    QCOMPARE(table->cellAt(0, 0).columnSpan(), 2);
    QCOMPARE(table->cellAt(0, 0).firstCursorPosition().block().text(), QStringLiteral("cell"));
}

void TestInspectorNotes::recognizesAnchors()
{
    QVERIFY(MVRTextDoc::isCommentFootnoteAnchor(QStringLiteral("Footnote:")));
    QVERIFY(MVRTextDoc::isCommentFootnoteAnchor(QStringLiteral("Comment:1")));
    QVERIFY(!MVRTextDoc::isCommentFootnoteAnchor(QStringLiteral("comment:1")));
    QVERIFY(!MVRTextDoc::isCommentFootnoteAnchor(QStringLiteral(" Comment:1")));
    QVERIFY(MVRTextDoc::isCommentFootnoteAnchor(QUrl(QStringLiteral("Footnote:1a-2b"))));
    QVERIFY(!MVRTextDoc::isCommentFootnoteAnchor(QUrl(QStringLiteral("http://Comment:1"))));
}

void TestInspectorNotes::isHarmlessWithoutDocument()
{
    QTextCursor none;
    QVERIFY(!MVRTextDoc::hasInspectorCommentsOrFootnotes(nullptr));
    QVERIFY(!MVRTextDoc::hasInlineFootnote(none));
    QVERIFY(!MVRTextDoc::isInInlineAnnotation(none));
    MVRTextDoc::setComment(none, note('1', false));
    MVRTextDoc::setComment(nullptr, MVRTextRange(0, 1), note('1', false));
    MVRTextDoc::setComments(nullptr, MVRTextCommentLinkMap());
    MVRTextDoc::clearComment(nullptr, 0);
    MVRTextDoc::removeComment(none);
    MVRTextDoc::trimInspectorNotes(nullptr, MVRTextFormat::CommentLinkProperty, true, 0, 0);
    QVERIFY(MVRTextDoc::commentsMap(nullptr, 0, 0).isEmpty());
    QVERIFY(MVRTextDoc::inspectorNotesToPlainText(nullptr).isEmpty());
}

QTEST_MAIN(TestInspectorNotes)
#include "tst_inspectornotes.moc"
