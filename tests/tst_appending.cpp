#include "MarkedText.h"

#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QImage>
#include <QTextDocumentFragment>
#include <QTextFrame>
#include <QTextList>
#include <QTextTable>
#include <QtTest>

#include <memory>

class TestAppending : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsThePageBreak_data();
    void keepsThePageBreak();
    void keepsListsWhole_data();
    void keepsListsWhole();
    void keepsTables();
    void bringsPictures();
    void appendsToItself();
    void replacesLikeRepeatedSearch_data();
    void replacesLikeRepeatedSearch();
    void replacesPlainText_data();
    void replacesPlainText();
    void replacesEmptyMatchesOnce_data();
    void replacesEmptyMatchesOnce();
    void replacesAsOneStep();
    void clones();
    void cloneFetchesNothing();
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

void addSquare(QTextDocument *document, const QString &name, Qt::GlobalColor color)
{
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

void TestAppending::keepsListsWhole_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("texts");

    QTest::newRow("empty document") << "0"
                                    << "one|two";
    QTest::newRow("empty paragraph") << "0x|0"
                                     << "x|one|two";
    QTest::newRow("text") << "0x"
                          << "x|one|two";
    QTest::newRow("page break") << "0x|0b"
                                << "x|one|two";
}

void TestAppending::keepsListsWhole()
{
    QFETCH(const QString, target);
    QTextDocument source;
    QTextCursor cursor(&source);
    cursor.insertText(QStringLiteral("one"));
    cursor.createList(QTextListFormat::ListDecimal);
    cursor.insertBlock();
    cursor.insertText(QStringLiteral("two"));
    const QTextDocumentFragment fragment(&source);

    for (const bool isFragment : {false, true}) {
        QTextDocument document;
        draw(&document, target);
        cursor = atEnd(&document);
        if (isFragment)
            MVRTextDoc::appendFragmentPreservePageBreak(cursor, fragment);
        else
            MVRTextDoc::appendDocumentPreservePageBreak(cursor, &source);
        QTEST(document.toPlainText().replace(QLatin1Char('\n'), QLatin1Char('|')), "texts");
        const QTextList *list = document.lastBlock().textList();
        QVERIFY(list);
        QCOMPARE(list->count(), 2);
        QCOMPARE(list->format().style(), QTextListFormat::ListDecimal);
        const bool hadBreak = target.contains(QLatin1Char('b'));
        QCOMPARE(list->item(0).blockFormat().hasProperty(QTextFormat::PageBreakPolicy), hadBreak);
    }
}

void TestAppending::keepsTables()
{
    QTextDocument source;
    QTextCursor cursor(&source);
    cursor.insertTable(1, 2)->cellAt(0, 1).firstCursorPosition().insertText(QStringLiteral("cell"));
    for (const char *target : {"0x|1", "0x|1b", "0x"}) {
        QTextDocument document;
        draw(&document, QLatin1String(target));
        cursor = atEnd(&document);
        MVRTextDoc::appendDocumentPreservePageBreak(cursor, &source);
        QCOMPARE(document.rootFrame()->childFrames().size(), 1);
        const auto *table = qobject_cast<QTextTable *>(document.rootFrame()->childFrames().first());
        QCOMPARE(table->cellAt(0, 1).firstCursorPosition().block().text(), QStringLiteral("cell"));
        const QTextBlock before = document.findBlock(table->firstPosition() - 1);
        QCOMPARE(before.blockFormat().hasProperty(QTextFormat::PageBreakPolicy),
                 QLatin1String(target).contains(QLatin1Char('b')));
    }
}

void TestAppending::bringsPictures()
{
    QTextDocument document;
    addSquare(&document, QStringLiteral("a.png"), Qt::red);
    QTextDocument source;
    source.setBaseUrl(QUrl(QStringLiteral("file:///elsewhere/")));
    source.addResource(QTextDocument::ImageResource,
                       QUrl(QStringLiteral("file:///elsewhere/b.png")), square(Qt::green));
    QTextCursor(&source).insertImage(QStringLiteral("b.png"));
    QTextCursor cursor = atEnd(&document);
    MVRTextDoc::appendDocument(cursor, &source);
    QCOMPARE(shown(document, 1), square(Qt::green));

    // Another picture of a name that is taken, and the same one.
    for (const Qt::GlobalColor color : {Qt::blue, Qt::red}) {
        QTextDocument other;
        addSquare(&other, QStringLiteral("a.png"), color);
        MVRTextDoc::appendDocument(cursor, &other);
    }
    QCOMPARE(shown(document, 0), square(Qt::red));
    QCOMPARE(shown(document, 2), square(Qt::blue));
    QCOMPARE(shown(document, 3), square(Qt::red));
}

void TestAppending::appendsToItself()
{
    QTextDocument document;
    draw(&document, QStringLiteral("1one|2two|3"));
    QTextCursor cursor = MarkedText::select(&document, 4, 7);
    MVRTextDoc::appendDocument(cursor, &document);
    QCOMPARE(drawing(document), QStringLiteral("1one|1one|2two|3|3"));
    document.undo();
    QCOMPARE(drawing(document), QStringLiteral("1one|2two|3"));
    MVRTextDoc::appendDocument(cursor, nullptr);
    cursor = QTextCursor();
    MVRTextDoc::appendDocument(cursor, &document);
    QCOMPARE(drawing(document), QStringLiteral("1one|2two|3"));
}

void TestAppending::replacesLikeRepeatedSearch_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("after");
    QTest::addColumn<int>("from");

    QTest::newRow("several paragraphs") << "a1 b22\nc333"
                                        << "[0-9]+"
                                        << "#" << 0;
    QTest::newRow("from inside") << "aa aa\naa"
                                 << "a"
                                 << "b" << 3;
    QTest::newRow("removed at the start again and again") << "aaab\naab"
                                                          << "^a"
                                                          << "" << 0;
    QTest::newRow("start behind a new paragraph") << "a-a-b"
                                                  << "^a-"
                                                  << "x\n"
                                                  << 0;
    QTest::newRow("start from inside") << "aaa"
                                       << "^a"
                                       << "" << 1;
    QTest::newRow("letter in front of a boundary") << "-a -a"
                                                   << "-|\\ba"
                                                   << "b" << 0;
    QTest::newRow("boundary where a letter was removed") << "xa-xa"
                                                         << "x|\\ba"
                                                         << "" << 0;
    QTest::newRow("boundary where text stays in front") << "cxa"
                                                        << "x|\\ba"
                                                        << "" << 0;
    QTest::newRow("no-break space") << "a\u00a0b a b"
                                    << "a b"
                                    << "\u00a0" << 0;
    QTest::newRow("not in what was inserted") << "aa"
                                              << "a"
                                              << "aa" << 0;
    QTest::newRow("never across paragraphs") << "a\nb"
                                             << "a.?b"
                                             << "c" << 0;
    QTest::newRow("case by the expression") << "Cat cat"
                                            << "cat"
                                            << "dog" << 0;
    QTest::newRow("invalid") << "a("
                             << "("
                             << "b" << 0;
}

void TestAppending::replacesLikeRepeatedSearch()
{
    QFETCH(const QString, text);
    QFETCH(const QString, after);
    QFETCH(const int, from);
    QFETCH(const QString, expression);
    const QRegExp pattern(expression);
    QTextDocument expected;
    expected.setPlainText(text);
    int count = 0;
    QTextCursor found = expected.find(pattern, MarkedText::select(&expected, 0, from));
    for (; found.hasSelection(); found = expected.find(pattern, found), ++count)
        found.insertText(after);

    QTextDocument document;
    document.setPlainText(text);
    QCOMPARE(MVRTextDoc::replace(pattern, after, MarkedText::select(&document, 0, from)), count);
    QCOMPARE(document.toPlainText(), expected.toPlainText());
}

void TestAppending::replacesPlainText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("result");

    QTest::newRow("any case") << "cat Cat CAT"
                              << "cat"
                              << "dog"
                              << "dog dog dog";
    QTest::newRow("overlapping") << "aaa"
                                 << "aa"
                                 << "b"
                                 << "ba";
    QTest::newRow("signs of expressions") << "a.b ab"
                                          << "."
                                          << "*"
                                          << "a*b ab";
    QTest::newRow("no-break space") << "a\u00a0b"
                                    << "a b"
                                    << "c"
                                    << "c";
    QTest::newRow("line feeds") << "a-b\nc-d"
                                << "-"
                                << "\n"
                                << "a\nb\nc\nd";
    QTest::newRow("nothing to find") << "abc"
                                     << ""
                                     << "x"
                                     << "abc";
    QTest::newRow("removed") << "a-b\n-\n"
                             << "-"
                             << ""
                             << "ab\n\n";
}

void TestAppending::replacesPlainText()
{
    QFETCH(const QString, text);
    QFETCH(const QString, before);
    QFETCH(const QString, after);
    QTextDocument document;
    document.setPlainText(text);
    MVRTextDoc::replace(before, after, QTextCursor(&document));
    QTEST(document.toPlainText(), "result");
}

void TestAppending::replacesEmptyMatchesOnce_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("result");

    QTest::newRow("starts") << "a\n\nb"
                            << "^"
                            << "<>a\n<>\n<>b";
    QTest::newRow("ends") << "a\n\nb"
                          << "$"
                          << "a<>\n<>\nb<>";
    QTest::newRow("between all letters") << "axb"
                                         << "x*"
                                         << "<>a<><>b<>";
    QTest::newRow("not inside a pair") << "\U0001F600"
                                       << "x*"
                                       << "<>\U0001F600<>";
}

void TestAppending::replacesEmptyMatchesOnce()
{
    QFETCH(const QString, text);
    QFETCH(const QString, expression);
    QTextDocument document;
    document.setPlainText(text);
    MVRTextDoc::replace(QRegExp(expression), QStringLiteral("<>"), QTextCursor(&document));
    QTEST(document.toPlainText(), "result");
    document.setPlainText(text);
    MVRTextDoc::replace(QRegExp(QStringLiteral("y*")), QString(), QTextCursor(&document));
    QCOMPARE(document.toPlainText(), text);
}

void TestAppending::replacesAsOneStep()
{
    QTextDocument document;
    MarkedText::fill(&document, QStringLiteral("ab ab\nab"), QStringLiteral(".B..1..a"));
    const QString marks = MarkedText::marks(document);
    MVRTextDoc::replace(QStringLiteral("ab"), QStringLiteral("xyz"), QTextCursor(&document));
    QCOMPARE(document.toPlainText(), QStringLiteral("xyz xyz\nxyz"));
    QCOMPARE(MarkedText::marks(document), QStringLiteral("BBB.111.aaa"));
    document.undo();
    QCOMPARE(document.toPlainText(), QStringLiteral("ab ab\nab"));
    QCOMPARE(MarkedText::marks(document), marks);
    QVERIFY(!document.isUndoAvailable());
    MVRTextDoc::replace(QStringLiteral("nowhere"), QStringLiteral("x"), QTextCursor(&document));
    QVERIFY(document.isRedoAvailable());
    MVRTextDoc::replace(QStringLiteral("ab"), QStringLiteral("x"), QTextCursor());
}

void TestAppending::clones()
{
    QTextDocument document;
    draw(&document, QStringLiteral("1one|2two|3"));
    addSquare(&document, QStringLiteral("a.png"), Qt::red);
    atEnd(&document).insertTable(2, 2);
    document.setDefaultFont(QFont(QStringLiteral("Serif"), 17));
    document.setDefaultTextOption(QTextOption(Qt::AlignRight));
    document.setMetaInformation(QTextDocument::DocumentTitle, QStringLiteral("Title"));
    document.setDocumentMargin(33);
    document.setPageSize(QSizeF(300, 400));
    document.setProperty("own", 5);
    MVRTextDoc::setDefaultCharFormatColors(&document, Qt::red, QColor());

    QObject parent;
    const QTextDocument *clone = STextDoc::cloneDocumentQtStyle(&document, &parent);
    QCOMPARE(clone->parent(), &parent);
    QCOMPARE(clone->toHtml(), document.toHtml());
    QCOMPARE(drawing(*clone), drawing(document));
    QCOMPARE(shown(*clone, 8), square(Qt::red));
    QCOMPARE(clone->defaultTextOption().alignment(), Qt::AlignRight);
    QCOMPARE(clone->documentMargin(), 33.0);
    QCOMPARE(clone->pageSize(), QSizeF(300, 400));
    QCOMPARE(clone->property("own").toInt(), 5);
    QCOMPARE(MVRTextDoc::defaultCharFormat(*clone), MVRTextDoc::defaultCharFormat(document));
    QVERIFY(clone->isUndoRedoEnabled() && !clone->isUndoAvailable() && !clone->isModified());

    QTextDocument empty;
    for (const char *shape : {"4b", "4b|5", "4b|5x"}) {
        draw(&empty, QLatin1String(shape));
        QTextCursor(&empty).createList(QTextListFormat::ListDisc);
        clone = STextDoc::cloneDocumentQtStyle(&empty, &parent);
        QCOMPARE(drawing(*clone), drawing(empty));
        QCOMPARE(clone->begin().textList()->format().style(), QTextListFormat::ListDisc);
        empty.clear();
    }
    QVERIFY(!STextDoc::cloneDocumentQtStyle(nullptr, &parent));
}

void TestAppending::cloneFetchesNothing()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.png"));
    QVERIFY(square(Qt::red).save(path));
    QTextDocument document;
    QTextCursor(&document).insertText(QStringLiteral("x"));
    const std::unique_ptr<QTextDocument> clone(STextDoc::cloneDocumentQtStyle(&document, nullptr));
    QTextCursor(clone.get()).insertImage(path);
    QVERIFY(shown(*clone, 0) != square(Qt::red));
    // What the document itself loads is there for its clone.
    QTextCursor(&document).insertImage(path);
    const std::unique_ptr<QTextDocument> second(STextDoc::cloneDocumentQtStyle(&document, nullptr));
    QVERIFY(folder.remove());
    const QVariant picture = second->resource(QTextDocument::ImageResource, QUrl(path));
    QCOMPARE(picture.value<QPixmap>().toImage().convertToFormat(QImage::Format_RGB32),
             square(Qt::red));
}

QTEST_MAIN(TestAppending)
#include "tst_appending.moc"
