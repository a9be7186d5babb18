// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRFormat.h>
#include <text/MVRTextDoc.h>

#include <QTextDocumentFragment>
#include <QTextTable>
#include <QtTest>

#include <limits>

using MarkedText::fill;
using MarkedText::formatAt;
using MarkedText::marks;

class TestEndNotes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbers_data();
    void numbers();
    void formatsMarksAndNotes();
    void leavesTextOfOtherCells();
    void isOneUndoStep();
};

namespace {

} // namespace

void TestEndNotes::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marked");
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("first");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("notes");

    const int none = MVRFormat::NoFormat;
    const int mmd = MVRFormat::MultiMarkdownLatex;
    QTest::newRow("none") << "ab"
                          << ".a" << none << 1 << "ab"
                          << "";
    QTest::newRow("brackets") << "afbgch"
                              << ".f.f.f" << mmd << 5 << "a[^fn5]b[^fn6]c[^fn7]"
                              << "f|g|h";
    QTest::newRow("whole, over paragraphs") << "af\n\nPfx"
                                            << ".fffPf." << none << 9 << "a9x"
                                            << "f\n\nPf";
    QTest::newRow("all of the text") << "f"
                                     << "f" << none << 0 << "0"
                                     << "f";
    QTest::newRow("beyond an int")
        << "fxg"
        << "f.f" << none << std::numeric_limits<int>::max() << "2147483647x2147483648"
        << "f|g";
}

void TestEndNotes::numbers()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marked);
    QFETCH(const int, format);
    QFETCH(const int, first);
    QFETCH(const QString, left);
    QFETCH(const QString, notes);
    QTextDocument document;
    fill(&document, text, marked);
    QStringList texts;
    const QList<QTextDocumentFragment> fragments = MVRTextDoc::inlineFootnotesToEndNotes(
        &document, first, QTextCharFormat(), MVRFormat::Format(format));
    for (const QTextDocumentFragment &fragment : fragments)
        texts << fragment.toPlainText();
    QCOMPARE(document.toPlainText(), left);
    QCOMPARE(texts.join(QLatin1Char('|')), notes);
}

void TestEndNotes::formatsMarksAndNotes()
{
    QTextDocument document;
    fill(&document, QStringLiteral("afbf"), QStringLiteral(".f.f"));
    QTextImageFormat image;
    image.setName(QStringLiteral("picture"));
    image.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
    QTextCursor end(&document);
    end.movePosition(QTextCursor::End);
    end.insertImage(image);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    const QList<QTextDocumentFragment> notes
        = MVRTextDoc::inlineFootnotesToEndNotes(&document, 1, bold, MVRFormat::EPub3);
    QTextDocument note;
    QTextCursor(&note).insertFragment(notes.value(0));
    QCOMPARE(marks(note), QStringLiteral("f"));
    QCOMPARE(formatAt(&note, 0).fontWeight(), int(QFont::Bold));

    QCOMPARE(document.toPlainText(), QStringLiteral("a1b2"));
    QVERIFY(!formatAt(&document, 2).isAnchor());
    const QTextCharFormat mark = formatAt(&document, 3); // of the note that ends with an image
    QCOMPARE(mark.anchorHref(), QStringLiteral("footnotes.xhtml#fn2"));
    QCOMPARE(mark.anchorNames(), QStringList(QStringLiteral("fn2")));
    QCOMPARE(mark.verticalAlignment(), QTextCharFormat::AlignSuperScript);
    QVERIFY(mark.isAnchor() && !mark.isImageFormat() && !mark.hasProperty(QTextFormat::FontWeight));
    QVERIFY(mark.boolProperty(MVRTextFormat::InlineFootnoteProperty));
}

// A cursor would select whole cells, or the whole table, the one without a note included.
void TestEndNotes::leavesTextOfOtherCells()
{
    for (int plainCell = 0; plainCell < 4; ++plainCell) {
        QTextDocument document;
        QTextCursor cursor(&document);
        const QTextTable *table = cursor.insertTable(2, 2);
        for (int i = 0; i < 4; ++i)
            table->cellAt(i / 2, i % 2)
                .firstCursorPosition()
                .insertText(QString(QLatin1Char(char('a' + i))));
        QTextCharFormat format;
        format.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
        cursor.select(QTextCursor::Document);
        cursor.mergeCharFormat(format);
        cursor = table->cellAt(plainCell / 2, plainCell % 2).firstCursorPosition();
        cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
        format.setProperty(MVRTextFormat::InlineFootnoteProperty, false);
        cursor.mergeCharFormat(format);

        QString expected = QStringLiteral("abcd");
        QString left = QStringLiteral("123");
        left.insert(plainCell, expected[plainCell]);
        expected.remove(plainCell, 1);
        QString notes;
        for (const auto &note : MVRTextDoc::inlineFootnotesToEndNotes(&document, 1))
            notes += note.toPlainText();
        QCOMPARE(notes, expected);
        QCOMPARE(document.toPlainText().remove(QLatin1Char('\n')), left);
    }
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertTable(2, 2)->firstCursorPosition().insertText(QStringLiteral("a"));
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("b"));
    cursor.select(QTextCursor::Document);
    QTextCharFormat format;
    format.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
    cursor.mergeCharFormat(format);
    QCOMPARE(MVRTextDoc::inlineFootnotesToEndNotes(&document, 1).size(), 1);
    QCOMPARE(document.toPlainText(), QStringLiteral("1"));
}

void TestEndNotes::isOneUndoStep()
{
    QTextDocument document;
    const QString text = QStringLiteral("afbf");
    const QString marked = QStringLiteral(".f.f");
    fill(&document, text, marked);
    MVRTextDoc::inlineFootnotesToEndNotes(&document, 1);
    document.undo();
    QCOMPARE(document.toPlainText(), text);
    QCOMPARE(marks(document), marked);
    fill(&document, text, QStringLiteral(".a.a"));
    MVRTextDoc::inlineFootnotesToEndNotes(&document, 1);
    QVERIFY(!document.isUndoAvailable());
    QVERIFY(MVRTextDoc::inlineFootnotesToEndNotes(nullptr, 1).isEmpty());
}

QTEST_MAIN(TestEndNotes)
#include "tst_endnotes.moc"
