// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QImage>
#include <QRegularExpression>
#include <QTextDocumentFragment>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QtTest>

class TestAppending : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsThePageBreak_data();
    void keepsThePageBreak();
    void keepsListsAndTables_data();
    void keepsListsAndTables();
    void fragmentsTakeTheirFormatAlong();
    void bringsEmptyItems_data();
    void bringsEmptyItems();
    void bringsPictures();
    void replacesLikeRepeatedSearch_data();
    void replacesLikeRepeatedSearch();
    void replacesEmptyMatchesOnce();
    void replacesAsOneStep();
    void clones();
};

namespace {

/*!
    Documents drawn as text: paragraphs divided by '|', each an indent, a 'b' when a page break
    stands before it, and its text.
*/
void draw(QTextDocument *document, const QString &drawing)
{
    QTextCursor cursor(document);
    const QStringList paragraphs = drawing.split(QLatin1Char('|'));
    for (int i = 0; i < paragraphs.size(); ++i) {
        QTextBlockFormat format;
        QTextCharFormat charFormat;
        const QString &paragraph = paragraphs[i];
        format.setIndent(paragraph[0].digitValue());
        charFormat.setFontPointSize(10 + paragraph[0].digitValue());
        const bool breaks = paragraph.mid(1).startsWith(QLatin1Char('b'));
        if (breaks)
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        if (i > 0) {
            cursor.insertBlock(format, charFormat);
        } else {
            cursor.setBlockFormat(format);
            cursor.setBlockCharFormat(charFormat);
        }
        cursor.insertText(paragraph.mid(breaks ? 2 : 1));
    }
    document->clearUndoRedoStacks();
}

QString drawing(const QTextDocument &document)
{
    QStringList paragraphs;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextBlockFormat format = block.blockFormat();
        paragraphs << QString::number(format.indent())
                + QLatin1String(format.hasProperty(QTextFormat::PageBreakPolicy) ? "b" : "")
                + block.text();
    }
    return paragraphs.join(QLatin1Char('|'));
}

QTextCursor atEnd(QTextDocument *document)
{
    QTextCursor cursor(document);
    cursor.movePosition(QTextCursor::End);
    return cursor;
}

QImage square(Qt::GlobalColor color)
{
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

void addSquare(QTextDocument *document, Qt::GlobalColor color)
{
    const QString name = QStringLiteral("picture");
    document->addResource(QTextDocument::ImageResource, QUrl(name), square(color));
    atEnd(document).insertImage(name);
}

QImage shown(const QTextDocument &document, int position)
{
    QTextCursor cursor(const_cast<QTextDocument *>(&document));
    cursor.setPosition(position + 1);
    const QUrl name(cursor.charFormat().toImageFormat().name());
    return document.resource(QTextDocument::ImageResource, name).value<QImage>();
}

} // namespace

void TestAppending::keepsThePageBreak_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("result");

    QTest::newRow("empty paragraphs, then text") << "0x|1b"
                                                 << "2|3|4T|5U"
                                                 << "0x|2b|2|4T|5U";
    QTest::newRow("no policy") << "0x|1"
                               << "2|3|4T"
                               << "0x|2|3|4T";
    QTest::newRow("text first") << "0x|1b"
                                << "2T|3"
                                << "0x|2bT|3";
    QTest::newRow("behind text") << "1by"
                                 << "2T|3U"
                                 << "1byT|3U";
    QTest::newRow("empty paragraphs behind text") << "1by"
                                                  << "2|3T"
                                                  << "2by|3T";
    QTest::newRow("text with a break of its own") << "1b"
                                                  << "2|3bT"
                                                  << "2b|3bT";
    QTest::newRow("nothing but empty paragraphs") << "1b"
                                                  << "2|3|4"
                                                  << "2b|2|3";
    QTest::newRow("one empty paragraph") << "1b"
                                         << "2"
                                         << "2b|2";
}

void TestAppending::keepsThePageBreak()
{
    QFETCH(const QString, target);
    QFETCH(const QString, source);
    QTextDocument document;
    draw(&document, target);
    QTextDocument appended;
    draw(&appended, source);
    const bool beginsEmpty = appended.begin().length() == 1;
    const QTextDocumentFragment fragment(&appended);
    QTextCursor cursor = atEnd(&document);
    MVRTextDoc::appendDocumentPreservePageBreak(cursor, &appended);
    QTEST(drawing(document), "result");
    QVERIFY(cursor.atEnd());
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.length() == 1)
            QCOMPARE(block.charFormat().fontPointSize(), 10.0 + block.blockFormat().indent());
    }
    document.undo();
    QCOMPARE(drawing(document), target);

    // A fragment has lost the format of an empty paragraph that it begins with.
    if (beginsEmpty)
        return;
    cursor = atEnd(&document);
    MVRTextDoc::appendFragmentPreservePageBreak(cursor, fragment);
    QTEST(drawing(document), "result");
}

void TestAppending::keepsListsAndTables_data()
{
    QTest::addColumn<QString>("target");

    for (const char *target : {"0", "0x|0", "0x", "0x|0b"})
        QTest::newRow(target) << target;
}

void TestAppending::keepsListsAndTables()
{
    QFETCH(const QString, target);
    const bool hasBreak = target.contains(QLatin1Char('b'));
    QTextDocument lists;
    QTextCursor cursor(&lists);
    cursor.insertText(QStringLiteral("one"));
    cursor.createList(QTextListFormat::ListDecimal);
    cursor.insertBlock();
    cursor.insertText(QStringLiteral("two"));
    const QTextDocumentFragment fragment(&lists);
    for (const bool isFragment : {false, true}) {
        QTextDocument document;
        draw(&document, target);
        cursor = atEnd(&document);
        if (isFragment)
            MVRTextDoc::appendFragmentPreservePageBreak(cursor, fragment);
        else
            MVRTextDoc::appendDocumentPreservePageBreak(cursor, &lists);
        QCOMPARE(document.blockCount(), target.contains(QLatin1Char('x')) ? 3 : 2);
        const QTextList *list = document.lastBlock().textList();
        QVERIFY(list && list->count() == 2);
        QCOMPARE(list->item(0).blockFormat().hasProperty(QTextFormat::PageBreakPolicy), hasBreak);
    }

    QTextDocument source;
    QTextCursor(&source).insertTable(1, 2);
    QTextDocument document;
    draw(&document, target);
    cursor = atEnd(&document);
    MVRTextDoc::appendDocumentPreservePageBreak(cursor, &source);
    QCOMPARE(document.rootFrame()->childFrames().size(), 1);
    const int table = document.rootFrame()->childFrames().first()->firstPosition();
    const QTextBlock before = document.findBlock(table - 1);
    QCOMPARE(before.blockFormat().hasProperty(QTextFormat::PageBreakPolicy), hasBreak);
}

void TestAppending::fragmentsTakeTheirFormatAlong()
{
    QTextDocument source;
    draw(&source, QStringLiteral("2bT|3U"));
    const QTextDocumentFragment fragment(&source);
    for (const auto &row : {std::make_pair("0x|1b", "0x|2bT|3U"), {"0x|1y", "0x|1yT|3U"}}) {
        QTextDocument document;
        draw(&document, QLatin1String(row.first));
        QTextCursor cursor = atEnd(&document);
        MVRTextDoc::appendFragment(cursor, fragment);
        QCOMPARE(drawing(document), QLatin1String(row.second));
        QVERIFY(cursor.atEnd());
        document.undo(); // one step
        QCOMPARE(drawing(document), QLatin1String(row.first));
        cursor = atEnd(&document);
        cursor.movePosition(QTextCursor::Left, QTextCursor::KeepAnchor); // stays for nothing
        MVRTextDoc::appendFragment(cursor, QTextDocumentFragment());
        QCOMPARE(drawing(document), QLatin1String(row.first));
    }
}

void TestAppending::bringsEmptyItems_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<QString>("result"); // paragraphs, items of the first list with a dash

    const QStringList one = {QString()};
    const QStringList two = {QString(), QStringLiteral("b")};
    QTest::newRow("alone") << "" << one << "-";
    QTest::newRow("alone, behind text") << "x" << one << "x|-";
    QTest::newRow("with another") << "" << two << "-|-b";
    QTest::newRow("with another, behind text") << "x" << two << "x|-|-b";
}

void TestAppending::bringsEmptyItems()
{
    QFETCH(const QString, target);
    QFETCH(const QStringList, items);
    QTextDocument source;
    QTextCursor(&source).createList(QTextListFormat::ListDecimal);
    QTextCursor(&source).insertText(items.join(QLatin1Char('\n')));
    for (const bool keepsBreak : {false, true}) {
        QTextDocument document;
        QTextBlockFormat format;
        if (keepsBreak)
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        QTextCursor(&document).setBlockFormat(format);
        QTextCursor(&document).insertText(target);
        QTextCursor cursor = atEnd(&document);
        MVRTextDoc::appendDocumentPreservePageBreak(cursor, &source);
        const QTextList *list = document.lastBlock().textList();
        QVERIFY(list && list->format().style() == QTextListFormat::ListDecimal);
        QStringList paragraphs;
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
            paragraphs << (block.textList() == list ? QLatin1String("-") : QLatin1String(""))
                    + block.text();
        QTEST(paragraphs.join(QLatin1Char('|')), "result");
        QVERIFY(cursor.atEnd());
        QVERIFY(document.begin().blockFormat().hasProperty(QTextFormat::PageBreakPolicy)
                == keepsBreak);
    }
}

void TestAppending::bringsPictures()
{
    QTextDocument document;
    addSquare(&document, Qt::red);
    QTextCursor cursor = atEnd(&document);
    for (const Qt::GlobalColor color : {Qt::blue, Qt::red}) { // of the same name
        QTextDocument source;
        addSquare(&source, color);
        MVRTextDoc::appendDocument(cursor, &source);
    }
    QCOMPARE(shown(document, 0), square(Qt::red));
    QCOMPARE(shown(document, 1), square(Qt::blue));
    QCOMPARE(shown(document, 2), square(Qt::red));
}

void TestAppending::replacesLikeRepeatedSearch_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("from");

    QTest::newRow("paragraphs") << "a1 b22\nc333"
                                << "[0-9]+"
                                << "#" << 0;
    QTest::newRow("from inside") << "aa aA\naa"
                                 << "a"
                                 << "aa" << 3;
    QTest::newRow("removed at the start") << "aaab\naab"
                                          << "^a"
                                          << "" << 0;
    QTest::newRow("start of a new paragraph") << "a-a-b"
                                              << "^a-"
                                              << "x\n"
                                              << 0;
    QTest::newRow("start from inside") << "aaa"
                                       << "^a"
                                       << "" << 1;
    QTest::newRow("boundary beside new text") << "-a -a"
                                              << "-|\\ba"
                                              << "b" << 0;
    QTest::newRow("boundary at a gap") << "cxa xa-xa"
                                       << "x|\\ba"
                                       << "" << 0;
    QTest::newRow("no-break space") << "a\u00a0b a b"
                                    << "a b"
                                    << "\u00a0" << 0;
    QTest::newRow("across paragraphs") << "a\nb"
                                       << "a.?b"
                                       << "c" << 0;
    QTest::newRow("overlapping") << "aaa"
                                 << "aa"
                                 << "b" << 0;
    QTest::newRow("invalid") << "a("
                             << "("
                             << "b" << 0;
    QTest::newRow("nothing to find") << "abc"
                                     << ""
                                     << "x" << 0;
}

void TestAppending::replacesLikeRepeatedSearch()
{
    QFETCH(const QString, text);
    QFETCH(const QString, before);
    QFETCH(const QString, after);
    QFETCH(const int, from);
    const auto compare = [&](const auto &pattern, QTextDocument::FindFlags flags) {
        QTextDocument expected;
        expected.setPlainText(text);
        int count = 0;
        QTextCursor found = expected.find(pattern, MarkedText::select(&expected, 0, from), flags);
        for (; found.hasSelection(); found = expected.find(pattern, found, flags), ++count)
            found.insertText(after);
        QTextDocument document;
        document.setPlainText(text);
        const QTextCursor start = MarkedText::select(&document, 0, from);
        QCOMPARE(MVRTextDoc::replaceAll(pattern, after, start), count);
        QCOMPARE(document.toPlainText(), expected.toPlainText());
    };
    compare(before, {});
    // Without the flag the search would make the expression blind to the case of letters.
    compare(QRegularExpression(before), QTextDocument::FindCaseSensitively);
#ifdef MVR_HAS_QREGEXP
    compare(QRegExp(before), QTextDocument::FindCaseSensitively);
#endif
}

void TestAppending::replacesEmptyMatchesOnce()
{
    const auto replaced = [](const QString &text, const char *expression, const char *after) {
        QTextDocument document;
        document.setPlainText(text);
        MVRTextDoc::replace(QRegularExpression(QLatin1String(expression)), QLatin1String(after),
                            QTextCursor(&document));
#ifdef MVR_HAS_QREGEXP
        QTextDocument other;
        other.setPlainText(text);
        MVRTextDoc::replace(QRegExp(QLatin1String(expression)), QLatin1String(after),
                            QTextCursor(&other));
        if (other.toPlainText() != document.toPlainText())
            return QStringLiteral("another text by QRegExp: ") + other.toPlainText();
#endif
        return document.toPlainText();
    };
    QCOMPARE(replaced(QStringLiteral("a\n\nb"), "^", "> "), QStringLiteral("> a\n> \n> b"));
    QCOMPARE(replaced(QStringLiteral("a\n\nb"), "$", ";"), QStringLiteral("a;\n;\nb;"));
    QCOMPARE(replaced(QStringLiteral("axb"), "x*", "-"), QStringLiteral("-a--b-"));
    QCOMPARE(replaced(QStringLiteral("\U0001F600"), "x*", "-"), QStringLiteral("-\U0001F600-"));
    QCOMPARE(replaced(QStringLiteral("abc"), "x*", ""), QStringLiteral("abc"));
}

void TestAppending::replacesAsOneStep()
{
    QTextDocument document;
    MarkedText::fill(&document, QStringLiteral("ab ab\nab"), QStringLiteral(".B..1..a"));
    MVRTextDoc::replace(QStringLiteral("AB"), QStringLiteral("xyz"), QTextCursor(&document));
    QCOMPARE(document.toPlainText(), QStringLiteral("xyz xyz\nxyz"));
    QCOMPARE(MarkedText::marks(document), QStringLiteral("BBB.111.aaa"));
    document.undo();
    QCOMPARE(MarkedText::marks(document), QStringLiteral(".B..1..a"));
    QVERIFY(!document.isUndoAvailable());
    MVRTextDoc::replace(QStringLiteral("nowhere"), QStringLiteral("x"), QTextCursor(&document));
    QVERIFY(document.isRedoAvailable());
}

void TestAppending::clones()
{
    QTextDocument document;
    QObject parent;
    for (const char *shape : {"4b", "4b|5", "4b|5x|1"}) {
        document.clear();
        draw(&document, QLatin1String(shape));
        QTextCursor(&document).createList(QTextListFormat::ListDisc);
        const QTextDocument *clone = STextDoc::cloneDocumentQtStyle(&document, &parent);
        QCOMPARE(drawing(*clone), drawing(document));
        QCOMPARE(clone->begin().textList()->format().style(), QTextListFormat::ListDisc);
    }
    addSquare(&document, Qt::red);
    atEnd(&document).insertTable(2, 2);
    document.setDefaultFont(QFont(QStringLiteral("Serif"), 17));
    document.setDefaultTextOption(QTextOption(Qt::AlignRight));
    document.setMetaInformation(QTextDocument::DocumentTitle, QStringLiteral("Title"));
    document.setDocumentMargin(33);
    document.setPageSize(QSizeF(300, 400));
    MVRTextDoc::setDefaultCharFormatColors(&document, Qt::red, QColor());
    QTextDocument *clone = STextDoc::cloneDocumentQtStyle(&document, &parent);
    QCOMPARE(clone->toHtml(), document.toHtml());
    QCOMPARE(shown(*clone, 3), square(Qt::red));
    QCOMPARE(clone->defaultTextOption().alignment(), Qt::AlignRight);
    QCOMPARE(clone->documentMargin(), 33.0);
    QCOMPARE(clone->pageSize(), QSizeF(300, 400));
    QCOMPARE(MVRTextDoc::defaultCharFormat(*clone), MVRTextDoc::defaultCharFormat(document));
    QVERIFY(clone->isUndoRedoEnabled() && !clone->isUndoAvailable() && !clone->isModified());

    // It fetches nothing.
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.png"));
    QVERIFY(square(Qt::red).save(path));
    QTextCursor(clone).insertImage(path);
    QVERIFY(shown(*clone, 0) != square(Qt::red));
}

QTEST_MAIN(TestAppending)
#include "tst_appending.moc"
