// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRSettings.h>
#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QTemporaryDir>
#include <QTextList>
#include <QTextTable>
#include <QtTest>

using MarkedText::fill;
using MarkedText::formatAt;
using MarkedText::marks;
using MarkedText::select;

class TestInlineNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void marksText_data();
    void marksText();
    void swapsKinds_data();
    void swapsKinds();
    void listsAHalfConvertedCommentOnce();
    void trims_data();
    void trims();
    void encloses_data();
    void encloses();
    void enclosesInALongParagraph();
    void movesIntoTheText_data();
    void movesIntoTheText();
    void keepsTheParagraphAroundAMovedNote();
    void movesToTheInspector_data();
    void movesToTheInspector();
    void avoidsWordsThatCarriedANote();
    void searchesOtherParagraphsWhenAsked();
    void freesMovedContentOfItsPlace();
    void movesInsideTables();
    void turnsTablesIntoText();
    void readsItemLinks();
    void clearsLinks();
    void writesTextBesidePictures();
    void keepsPicturesInLinks();
    void isHarmlessWithoutDocument();

private:
    QTemporaryDir m_dir;
};

namespace {

/*! The text with "{note}" after the text of each inspector note. */
QString withNotes(const QTextDocument &document)
{
    QString text = document.toPlainText();
    const MVRTextCommentLinkMap notes = MVRTextDoc::commentsMap(&document, -1, -1);
    for (auto it = notes.cend(); it != notes.cbegin();) {
        --it;
        QTextDocument content;
        MVRTextRtf::fromRtfCData(it->cdata, &content);
        text.insert(it.key().end, QLatin1Char('{') + content.toPlainText() + QLatin1Char('}'));
    }
    return text;
}

void attach(QTextDocument *document, int start, int end, const char *text, bool isFootnote)
{
    MVRTextDoc::setComment(select(document, start, end), QString::fromLatin1(text), isFootnote);
}

QTextImageFormat picture()
{
    QTextImageFormat format;
    format.setName(QStringLiteral("map.png"));
    format.setProperty(MVRTextFormat::ImageLinkProperty, QStringLiteral("/maps/map.png"));
    return format;
}

} // namespace

void TestInlineNotes::initTestCase()
{
    QVERIFY(m_dir.isValid());
    mvrOptions().setFileName(m_dir.filePath(QStringLiteral("settings.ini")));
}

void TestInlineNotes::marksText_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<bool>("footnote");
    QTest::addColumn<bool>("on");
    QTest::addColumn<QString>("after");

    QTest::newRow("plain text") << "......" << true << true << ".ffff.";
    QTest::newRow("other kind") << "aaaaaa" << true << true << "affffa";
    QTest::newRow("off") << "aaaaaa" << false << false << "a....a";
    QTest::newRow("off leaves the other kind") << "ffffff" << false << false << "ffffff";
    QTest::newRow("already marked") << "BaAAaB" << false << true << "BaAAaB";
}

void TestInlineNotes::marksText()
{
    QFETCH(const QString, before);
    QFETCH(const bool, footnote);
    QFETCH(const bool, on);
    QTextDocument document;
    fill(&document, QStringLiteral("ab\ncde"), before);
    QTextCursor cursor = select(&document, 5, 1);
    const QTextCharFormat merged = MVRTextDoc::setInlineFootnoteAnnotation(cursor, footnote, on);
    QTEST(marks(document), "after");
    const int other = footnote ? MVRTextFormat::InlineAnnotationProperty
                               : MVRTextFormat::InlineFootnoteProperty;
    QCOMPARE(merged.hasProperty(other), on);
    document.undo();
    QCOMPARE(marks(document), before);

    cursor.clearSelection();
    MVRTextDoc::setInlineFootnoteAnnotation(cursor, footnote, on);
    QCOMPARE(marks(document), before);
}

void TestInlineNotes::swapsKinds_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<QString>("after");

    QTest::newRow("whole document") << "aa.AAa" << -1 << -1 << "ff.fff";
    QTest::newRow("straddles both edges") << "aaaaaa" << 1 << 4 << "afffaa";
    QTest::newRow("no selection") << "aaaaaa" << 2 << 2 << "aaaaaa";
    QTest::newRow("nothing of the kind") << "ff..11" << -1 << -1 << "ff..11";
}

void TestInlineNotes::swapsKinds()
{
    QFETCH(const QString, before);
    QFETCH(const int, start);
    QFETCH(const int, end);
    QTextDocument document;
    fill(&document, QStringLiteral("ab\ncde"), before);
    const QTextCursor cursor = start < 0 ? QTextCursor() : select(&document, start, end);
    MVRTextDoc::convertInlineAnnotationsToInlineFootnotes(&document, cursor);
    QTEST(marks(document), "after");
    QCOMPARE(document.isUndoAvailable(), marks(document) != before);
    document.undo();
    QCOMPARE(marks(document), before);

    QTextDocument other;
    MVRTextDoc::convertInlineAnnotationsToInlineFootnotes(&other, QTextCursor(&document));
    QCOMPARE(marks(document), before);
}

void TestInlineNotes::listsAHalfConvertedCommentOnce()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("abcd"));
    attach(&document, 0, 4, "note", false);
    const QString anchor = formatAt(&document, 3).anchorHref();
    MVRTextDoc::convertInspectorCommentsToInspectorFootnotes(&document, select(&document, 2, 4));
    const MVRTextCommentLinkMap notes = MVRTextDoc::commentsMap(&document, -1, -1);
    QCOMPARE(notes.keys(), QList<MVRTextRange>({MVRTextRange(0, 4)}));
    QVERIFY(notes.first().isFootnote);
    QVERIFY(!MVRTextCommentLink(formatAt(&document, 1)).isFootnote);
    QCOMPARE(formatAt(&document, 3).anchorHref(), anchor);
}

void TestInlineNotes::trims_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("end");
    QTest::addColumn<QString>("trimmed");

    QTest::newRow("two notes") << "x  a  y  b  z"
                               << ".aaaaa.aaaaa." << 13 << "xaybz";
    QTest::newRow("of several fragments") << "x  a  y"
                                          << ".aAAAa." << 7 << "xay";
    QTest::newRow("beyond the end, and all behind") << "x a . b . c ."
                                                    << ".aaa.aaa.aaa." << 7 << "xa. b . c .";
    QTest::newRow("over paragraphs") << "x \na\n y"
                                     << ".aaaaa." << 7 << "xay";
    QTest::newRow("only white space") << "x   y"
                                      << ".aaa." << 5 << "xy";
    QTest::newRow("nothing to trim") << "x  a  y"
                                     << "...a..." << 7 << "x  a  y";
}

void TestInlineNotes::trims()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marks);
    QFETCH(const int, end);
    QFETCH(const QString, trimmed);
    QTextDocument document;
    fill(&document, text, marks);
    MVRTextDoc::trimInlineNotes(&document, MVRTextFormat::InlineAnnotationProperty, false, 0, 0,
                                select(&document, 0, end));
    QCOMPARE(document.toPlainText(), trimmed);
    QCOMPARE(document.isUndoAvailable(), trimmed != text);
    document.undo();
    QCOMPARE(document.toPlainText(), text);
    QCOMPARE(MarkedText::marks(document), marks);
}

void TestInlineNotes::encloses_data()
{
    QTest::addColumn<QString>("opening");
    QTest::addColumn<QString>("closing");
    QTest::addColumn<bool>("unmark");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("after");

    QTest::newRow("grow") << "["
                          << "]" << false << "a[b].\n[c]d"
                          << ".AAA..aaa.";
    QTest::newRow("unmark") << "["
                            << "]" << true << "a[b].\n[c]d"
                            << ".BBB......";
    QTest::newRow("only unmark") << ""
                                 << "" << true << "ab.\ncd"
                                 << ".B....";
    QTest::newRow("nothing") << ""
                             << "" << false << "ab.\ncd"
                             << ".A..a.";
    QTest::newRow("closing with a paragraph end") << ""
                                                  << ";\n"
                                                  << false << "ab;\n.\nc;\nd"
                                                  << ".AAA..aaa.";
}

void TestInlineNotes::encloses()
{
    QFETCH(const QString, opening);
    QFETCH(const QString, closing);
    QFETCH(const bool, unmark);
    QTextDocument document;
    fill(&document, QStringLiteral("ab.\ncd"), QStringLiteral(".A..a."));
    MVRTextDoc::encloseAnnotations(&document, opening, closing, unmark);
    QTEST(document.toPlainText(), "text");
    QTEST(marks(document), "after");
}

void TestInlineNotes::enclosesInALongParagraph()
{
    constexpr int count = 4000;
    QTextDocument document;
    fill(&document, QStringLiteral("an ").repeated(count), QStringLiteral("aa.").repeated(count));
    MVRTextDoc::encloseAnnotations(&document, QStringLiteral("["), QStringLiteral("]"), false);
    QCOMPARE(document.toPlainText(), QStringLiteral("[an] ").repeated(count));
    document.undo();
    QVERIFY(document.toPlainText().endsWith(QLatin1String(" [an] an] ")));
}

void TestInlineNotes::movesIntoTheText_data()
{
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("after");

    // The document: one{first} two{second}(footnote) six{third}
    QTest::newRow("whole document") << -1 << -1 << "one first two six third"
                                    << "...aaaaaa.666....aaaaaa";
    QTest::newRow("first by a part of it") << 1 << 2 << "one first two six"
                                           << "...aaaaaa.666.333";
    QTest::newRow("up to where one begins") << 0 << 8 << "one first two six"
                                            << "...aaaaaa.666.333";
    QTest::newRow("none of the kind selected") << 4 << 7 << "one two six"
                                               << "111.666.333";
}

void TestInlineNotes::movesIntoTheText()
{
    QFETCH(const int, start);
    QFETCH(const int, end);
    QTextDocument document;
    document.setPlainText(QStringLiteral("one two six"));
    const char *contents[] = {" first\n", "second", "third"};
    for (int i = 0; i < 3; ++i)
        attach(&document, 4 * i, 4 * i + 3, contents[i], i == 1);
    document.clearUndoRedoStacks();
    const QTextCursor cursor = start < 0 ? QTextCursor() : select(&document, start, end);
    MVRTextDoc::convertInspectorCommentsToInlineAnnotations(&document, cursor);
    QTEST(document.toPlainText(), "text");
    // Contents are RTF here: a note shows as '{', and by where it stands as its number.
    QString result = marks(document);
    const MVRTextCommentLinkMap notes = MVRTextDoc::commentsMap(&document, -1, -1);
    for (auto it = notes.cbegin(); it != notes.cend(); ++it) {
        const QString word = document.toPlainText().mid(it.key().start, 3);
        const QChar number = QLatin1Char(word == QLatin1String("one")       ? '1'
                                             : word == QLatin1String("two") ? '6'
                                                                            : '3');
        result.replace(it.key().start, 3, QString(3, number));
    }
    QTEST(result, "after");
    for (int i = 0; i < document.toPlainText().size(); ++i)
        QVERIFY(!formatAt(&document, i).boolProperty(MVRTextFormat::InspectorCommentProperty));
    while (document.isUndoAvailable())
        document.undo();
    QCOMPARE(document.toPlainText(), QStringLiteral("one two six"));
    QCOMPARE(MVRTextDoc::commentsMapByType(MVRTextFormat::InspectorCommentProperty, &document, -1,
                                           -1, false)
                 .size(),
             2);
}

void TestInlineNotes::keepsTheParagraphAroundAMovedNote()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("word rest"));
    QTextBlockFormat centred;
    centred.setAlignment(Qt::AlignHCenter);
    QTextCursor(&document).setBlockFormat(centred);
    MVRTextDoc::setCommentCData(select(&document, 0, 4), "{\\rtf1 {\\b one}\\par two}", true);
    MVRTextDoc::setCommentCData(select(&document, 5, 7), "unreadable", true);
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(&document, QTextCursor());
    QCOMPARE(document.toPlainText(), QStringLiteral("word one\ntwo rest"));
    QCOMPARE(document.firstBlock().blockFormat().alignment(), Qt::AlignHCenter);
    QCOMPARE(document.lastBlock().blockFormat().alignment(), Qt::AlignHCenter);
    QVERIFY(formatAt(&document, 5).fontWeight() > QFont::Normal);
    const MVRTextCommentLinkMap left = MVRTextDoc::commentsMap(&document, -1, -1);
    QCOMPARE(left.size(), 1);
    QVERIFY2(!left.first().isFootnote, "what cannot be read has lost its kind");
}

void TestInlineNotes::movesToTheInspector_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<bool>("skip");
    QTest::addColumn<QString>("moved");

    const QString label = QStringLiteral("(Linked Footnote)");
    const auto row = [](const char *name, const char *text, const char *marks, int start, int end,
                        bool skip, const QString &moved) {
        QTest::newRow(name) << QString::fromLatin1(text) << QString::fromLatin1(marks) << start
                            << end << skip << moved;
    };
    const auto latin = [](const char *text) { return QString::fromLatin1(text); };
    row("behind a word", "one note two", "...aaaaa....", 0, 12, false, latin("one{note} two"));
    row("behind blank and sign", "one, note two", "....aaaaa....", 0, 13, false,
        latin("one{note}, two"));
    row("only text", "note", "aaAa", 0, 4, false, label + latin("{note}"));
    row("at the start", "note two", "aaaa....", 0, 8, false, label + latin("{note} two"));
    row("over paragraphs", "one a\n\nb two", "...aaaaa....", 0, 12, false,
        latin("one{a\n\nb} two"));
    row("a paragraph of its own", "one\nnote\ntwo", "....aaaa....", 0, 12, false,
        latin("one{note}\n\ntwo"));
    row("word taken", "one a. b", "...aa.aa", 0, 8, false, latin("one{a}.") + label + latin("{b}"));
    row("word of another note", "one abc fn two", "....fff.aaa...", 0, 14, false,
        latin("one abc two{fn}"));
    row("word of another note passed over", "one abc fn two", "....fff.aaa...", 0, 14, true,
        latin("one{fn} abc two"));
    row("no word but that of another note", "abc fn", "fff.aa", 0, 6, false,
        latin("abc ") + label + latin("{fn}"));
    row("straddles the selection's end", "one a two b", "...aa....aa", 0, 10, false,
        latin("one{a} two b"));
    row("straddles the selection's start", "one aa two", "...aaa....", 5, 10, false,
        latin("one{aa} two"));
    row("nothing", "one two", ".......", 0, 7, true, latin("one two"));
}

void TestInlineNotes::movesToTheInspector()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marks);
    QFETCH(const int, start);
    QFETCH(const int, end);
    QFETCH(const bool, skip);
    QTextDocument document;
    fill(&document, text, marks);
    MVRTextDoc::swapInlineToInspector(&document, MVRTextFormat::InlineAnnotationProperty, true,
                                      skip, select(&document, start, end));
    QTEST(withNotes(document), "moved");
    // What was not moved is still an annotation.
    const bool left = MarkedText::marks(document).contains(QLatin1Char('a'));
    QCOMPARE(left, marks.lastIndexOf(QLatin1Char('a')) >= end);
    while (document.isUndoAvailable())
        document.undo();
    QCOMPARE(document.toPlainText(), text);
    QCOMPARE(MarkedText::marks(document), marks);
}

void TestInlineNotes::avoidsWordsThatCarriedANote()
{
    QTextDocument document;
    fill(&document, QStringLiteral("one fn two"), QStringLiteral("...fff...."));
    attach(&document, 0, 3, "old", false);
    QTextCursor word = select(&document, 0, 3);
    MVRTextDoc::removeComment(word);
    MVRTextDoc::convertInlineFootnotesToInspectorComments(&document, false, QTextCursor());
    QCOMPARE(withNotes(document), QStringLiteral("one two{fn}"));
    QCOMPARE(MVRTextDoc::commentsMap(&document, -1, -1).first().color,
             mvrOptions().defaultValue(MVRSettings::CommentColorSetting));
}

void TestInlineNotes::searchesOtherParagraphsWhenAsked()
{
    for (const bool leave : {false, true}) {
        mvrOptions().setValue(MVRSettings::WordSearchSetting, leave);
        QTextDocument document;
        fill(&document, QStringLiteral("one\n... fn"), QStringLiteral(".......fff"));
        MVRTextDoc::convertInlineFootnotesToInspectorFootnotes(&document, false, QTextCursor());
        QCOMPARE(withNotes(document),
                 leave ? QStringLiteral("one{fn}\n...")
                       : QStringLiteral("one\n...(Linked Footnote){fn}"));
    }
    mvrOptions().remove(MVRSettings::WordSearchSetting);
}

void TestInlineNotes::freesMovedContentOfItsPlace()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextBlockFormat block;
    block.setAlignment(Qt::AlignRight);
    block.setIndent(2);
    block.setTextIndent(20);
    cursor.setBlockFormat(block);
    cursor.createList(QTextListFormat::ListDisc);
    cursor.insertText(QStringLiteral("word"));
    QTextCharFormat link = MarkedText::formatOf(QLatin1Char('A'));
    link.setAnchor(true);
    link.setAnchorHref(QStringLiteral("42"));
    cursor.insertText(QStringLiteral(" note"), link);

    MVRTextDoc::convertInlineAnnotationsToInspectorComments(&document, false, QTextCursor());
    QCOMPARE(withNotes(document), QStringLiteral("word{note}"));
    QVERIFY(document.firstBlock().textList());
    QTextDocument content;
    MVRTextRtf::fromRtfCData(MVRTextDoc::commentsMap(&document, 0, 0).first().cdata, &content);
    const QTextBlock paragraph = content.firstBlock();
    QVERIFY(!(paragraph.blockFormat().alignment() & Qt::AlignRight));
    QCOMPARE(paragraph.blockFormat().indent(), 0);
    QCOMPARE(paragraph.blockFormat().textIndent(), 0.0);
    const QTextCharFormat format = formatAt(&content, 0);
    QVERIFY(!format.isAnchor());
    QVERIFY(format.fontWeight() > QFont::Normal);
    QVERIFY(!format.hasProperty(MVRTextFormat::InlineAnnotationProperty));
}

void TestInlineNotes::movesInsideTables()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextTable *table = cursor.insertTable(1, 2);
    for (int column = 0; column < 2; ++column) {
        QTextCursor cell = table->cellAt(0, column).firstCursorPosition();
        cell.insertText(QStringLiteral("word"));
        cell.insertText(QStringLiteral(" note%1").arg(column),
                        MarkedText::formatOf(QLatin1Char('a')));
    }
    MVRTextDoc::convertInlineAnnotationsToInspectorComments(&document, true, QTextCursor());
    QCOMPARE(table->columns(), 2);
    QCOMPARE(withNotes(document), QStringLiteral("\nword{note0}\nword{note1}\n"));
    MVRTextDoc::convertInspectorCommentsToInlineAnnotations(&document, QTextCursor());
    QCOMPARE(document.toPlainText(), QStringLiteral("\nword note0\nword note1\n"));
}

void TestInlineNotes::turnsTablesIntoText()
{
    QTextDocument document;
    document.setHtml(QStringLiteral(
        "<p>above</p><table><tr><td colspan=2><b>a</b></td></tr><tr><td>b</td><td>"
        "<table><tr><td>x</td><td>y</td></tr></table></td></tr></table><p align=right>below</p>"));
    const QString before = document.toPlainText();
    document.setUndoRedoEnabled(true);
    STextDoc::tablesToText(&document);
    QVERIFY(document.rootFrame()->childFrames().isEmpty());
    const QStringList words = document.toPlainText().simplified().split(QLatin1Char(' '));
    QCOMPARE(words, QStringLiteral("above a b x y below").split(QLatin1Char(' ')));
    QVERIFY(document.toPlainText().contains(QLatin1String("x\ty")));
    QVERIFY(formatAt(&document, 6).fontWeight() > QFont::Normal);
    QCOMPARE(document.lastBlock().text(), QStringLiteral("below"));
    QCOMPARE(document.lastBlock().blockFormat().alignment() & Qt::AlignRight, Qt::AlignRight);
    document.undo();
    QCOMPARE(document.toPlainText(), before);
}

void TestInlineNotes::readsItemLinks()
{
    const QString html = QStringLiteral(
        "<p><a href=17>see <b>chapter</b></a><a href=18>x</a> <a href=http://a/1>web</a></p>"
        "<p><a href=18>y</a></p>");
    QTextDocument document;
    document.setMetaInformation(QTextDocument::DocumentTitle, QStringLiteral("Title"));
    QCOMPARE(MVRTextDoc::internalLinks(document).title, QStringLiteral("Title"));
    QVERIFY(MVRTextDoc::internalLinks(document).links.isEmpty());
    document.setHtml(html);
    const MVRTextInternalLinkMap map = MVRTextDoc::internalLinks(document);
    const QMap<MVRTextRange, int> links = {{{0, 11}, 17}, {{11, 12}, 18}, {{17, 18}, 18}};
    QCOMPARE(map.links, links);

    document.clearUndoRedoStacks();
    MVRTextDoc::setInternalLinks(&document, map);
    QVERIFY(!document.isUndoAvailable());
    QTextDocument plain;
    plain.setPlainText(document.toPlainText());
    MVRTextDoc::setInternalLinks(&plain, map);
    QCOMPARE(MVRTextDoc::internalLinks(plain).links, links);
    plain.undo();
    QVERIFY(MVRTextDoc::internalLinks(plain).links.isEmpty());
}

void TestInlineNotes::clearsLinks()
{
    QTextDocument document;
    document.setHtml(QStringLiteral(
        "<a href=17>see <b>it</b></a> <a href=http://a/1><i>web</i></a> <a href=18>no</a>"));
    MVRTextDoc::setComment(select(&document, 11, 13), QStringLiteral("note"), false);
    MVRTextDoc::convertMovarinLinksToText(&document);
    QVERIFY(MVRTextDoc::internalLinks(document).links.isEmpty());
    QVERIFY2(formatAt(&document, 0).fontWeight() > QFont::Normal, "takes the last format");
    QCOMPARE(formatAt(&document, 7).anchorHref(), QStringLiteral("http://a/1"));
    MVRTextDoc::clearInternalLinks(&document);
    QVERIFY(!formatAt(&document, 7).isAnchor());
    QVERIFY(formatAt(&document, 7).fontItalic());
    const QString noteAnchor = formatAt(&document, 11).anchorHref();
    QVERIFY2(MVRTextDoc::isCommentFootnoteAnchor(noteAnchor), "a note is no link");

    // What is typed into an empty paragraph of a link is plain as well.
    fill(&document, QStringLiteral("a\n\nb"), QStringLiteral("...."));
    QTextCharFormat link;
    link.setAnchor(true);
    link.setAnchorHref(QStringLiteral("17"));
    select(&document, 0, 4).mergeCharFormat(link);
    MVRTextDoc::convertMovarinLinksToText(&document);
    QVERIFY(!document.findBlockByNumber(1).charFormat().isAnchor());
}

void TestInlineNotes::writesTextBesidePictures()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertImage(picture());
    cursor.insertText(QStringLiteral("!"), MarkedText::formatOf(QLatin1Char('f')));
    MVRTextDoc::convertInlineFootnotesToInspectorFootnotes(&document, false, QTextCursor());
    MVRTextDoc::setInlineFootnoteAnnotation(select(&document, 0, 1), false, true);
    MVRTextDoc::encloseAnnotations(&document, QStringLiteral("<"), QStringLiteral(">"), false);
    MVRTextDoc::setComment(select(&document, 1, 2), QStringLiteral("seen"), false);
    MVRTextDoc::convertInspectorCommentsToInlineAnnotations(&document, QTextCursor());
    QCOMPARE(document.toPlainText(), QStringLiteral("<\uFFFC seen>(Linked Footnote)"));
    for (int position = 0; position < document.characterCount() - 1; ++position) {
        const QTextCharFormat format = formatAt(&document, position);
        QCOMPARE(format.isImageFormat(), position == 1);
        QCOMPARE(format.hasProperty(MVRTextFormat::ImageLinkProperty), position == 1);
    }
}

void TestInlineNotes::keepsPicturesInLinks()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    for (const char *const text : {"see", "it"}) {
        cursor.insertText(QLatin1String(text), QTextCharFormat());
        cursor.insertImage(picture());
    }
    MVRTextInternalLinkMap map;
    map.links.insert(MVRTextRange(0, 7), 17);
    MVRTextDoc::setInternalLinks(&document, map);
    MVRTextDoc::convertMovarinLinksToText(&document);
    for (int position = 0; position < 7; ++position) {
        const QTextCharFormat format = formatAt(&document, position);
        QVERIFY(!format.isAnchor());
        QCOMPARE(format.isImageFormat(), position == 3 || position == 6);
    }
    QCOMPARE(formatAt(&document, 6).toImageFormat().name(), picture().name());
}

void TestInlineNotes::isHarmlessWithoutDocument()
{
    const QTextCursor none;
    MVRTextDoc::setInlineFootnoteAnnotation(none, true, true);
    MVRTextDoc::setPreserveFormatting(none, true);
    MVRTextDoc::convertInlineFootnotesToInlineAnnotations(nullptr, none);
    MVRTextDoc::trimInlineNotes(nullptr, MVRTextFormat::InlineFootnoteProperty, true, 0, 0, none);
    MVRTextDoc::encloseAnnotations(nullptr, QString(), QString(), true);
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(nullptr, none);
    MVRTextDoc::convertInlineFootnotesToInspectorComments(nullptr, true, none);
    MVRTextDoc::setInternalLinks(nullptr, MVRTextInternalLinkMap());
    MVRTextDoc::convertMovarinLinksToText(nullptr);
    MVRTextDoc::clearInternalLinks(nullptr);
    QTextDocument empty;
    MVRTextDoc::convertInlineFootnotesToInspectorComments(&empty, true, none);
    QVERIFY(empty.isEmpty() && !empty.isUndoAvailable());
}

QTEST_MAIN(TestInlineNotes)
#include "tst_inlinenotes.moc"
