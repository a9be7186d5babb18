// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRFormat.h>
#include <core/MVRTextFinder.h>
#include <core/MVRTextRtf.h>
#include <core/MVRTextUtil.h>
#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QSignalSpy>
#include <QTextDocumentFragment>
#include <QTextTable>
#include <QtTest>

#include <functional>
#include <limits>
#include <memory>

using MarkedText::fill;
using MarkedText::marks;
using MarkedText::select;

using Operation = std::function<void(QTextDocument *, const QTextCursor &)>;
Q_DECLARE_METATYPE(Operation)

/*! What operations take for selected, and what they leave alone. */
class TestSelections : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void worksOnSelectedCellsOnly_data();
    void worksOnSelectedCellsOnly();
    void asksSelectedCellsOnly();
    void freesEmptyParagraphs_data();
    void freesEmptyParagraphs();
    void leavesDocumentsUnmodified_data();
    void leavesDocumentsUnmodified();
    void survivesWrongCursors_data();
    void survivesWrongCursors();
    void survivesExtremes_data();
    void survivesExtremes();
};

namespace {

constexpr int annotation = MVRTextFormat::InlineAnnotationProperty;
constexpr int footnote = MVRTextFormat::InlineFootnoteProperty;

/*! A table of two rows and columns with " a " to " d " in it, all of them with one mark. */
QTextTable *fillTable(QTextDocument *document, char mark)
{
    QTextTable *table = QTextCursor(document).insertTable(2, 2);
    for (int cell = 0; cell < 4; ++cell)
        table->cellAt(cell / 2, cell % 2)
            .firstCursorPosition()
            .insertText(QStringLiteral(" %1 ").arg(QChar(u'a' + cell)),
                        MarkedText::formatOf(QLatin1Char(mark)));
    return table;
}

/*! The text of each cell with the mark of its first character. */
QString cells(const QTextTable &table)
{
    QStringList all;
    for (int cell = 0; cell < 4; ++cell) {
        QTextCursor text = table.cellAt(cell / 2, cell % 2).firstCursorPosition();
        text.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
        QTextCursor first = text;
        first.setPosition(text.selectionStart() + 1);
        all += text.selectedText() + MarkedText::markOf(first.charFormat());
    }
    return all.join(QLatin1Char('|'));
}

/*! The cells of one column, selected downwards or upwards. */
QTextCursor column(const QTextTable &table, int column, bool upwards)
{
    QTextCursor cursor = table.cellAt(upwards ? 1 : 0, column).firstCursorPosition();
    cursor.setPosition(table.cellAt(upwards ? 0 : 1, column).firstPosition(),
                       QTextCursor::KeepAnchor);
    return cursor;
}

/*! A cursor that says it has a selection, in a document that is gone. */
QTextCursor staleCursor()
{
    QTextDocument gone;
    gone.setPlainText(QStringLiteral("some words here"));
    return select(&gone, 2, 9);
}

/*! Every operation that takes a cursor. */
QVector<std::pair<const char *, Operation>> cursorOperations()
{
    using D = MVRTextDoc;
    const auto inlineMoves = [](QTextDocument *document, const QTextCursor &cursor) {
        D::convertInlineFootnotesToInspectorComments(document, true, cursor);
        D::convertInlineFootnotesToInspectorFootnotes(document, false, cursor);
        D::convertInlineAnnotationsToInspectorComments(document, false, cursor);
        D::swapInlineToInspector(document, annotation, true, true, cursor);
    };
    const auto inspectorMoves = [](QTextDocument *document, const QTextCursor &cursor) {
        D::convertInspectorFootnotesToInlineFootnotes(document, cursor);
        D::convertInspectorCommentsToInlineAnnotations(document, cursor);
    };
    const auto kindSwaps = [](QTextDocument *document, const QTextCursor &cursor) {
        D::convertInlineAnnotationsToInlineFootnotes(document, cursor);
        D::convertInlineFootnotesToInlineAnnotations(document, cursor);
        D::convertInspectorCommentsToInspectorFootnotes(document, cursor);
        D::convertInspectorFootnotesToInspectorComments(document, cursor);
    };
    const auto queries = [](QTextDocument *, const QTextCursor &cursor) {
        for (const auto query :
             {&D::hasInspectorComment, &D::hasInspectorFootnote, &D::hasInlineFootnote,
              &D::hasInlineAnnotation, &D::isInInlineAnnotation, &D::isInInlineFootnote,
              &D::isInlineAnnotationChecked, &D::isInlineFootnoteChecked})
            query(cursor);
        D::hasInspectorCommentsOrFootnotes(cursor);
    };
    const auto searches = [](QTextDocument *, const QTextCursor &cursor) {
        const QTextCharFormat pattern = MarkedText::formatOf(QLatin1Char('a'));
        MVRTextFinder::findFragment(pattern, cursor, true);
        MVRTextFinder::findContinuousFragment(pattern, cursor, true);
        MVRTextFinder::findFragmentAtPosition(pattern, cursor);
        MVRTextFinder::findAllAnchors(cursor, true);
        MVRTextUtil::closestWordCursor(cursor, true, MVRTextUtil::Backward, nullptr);
        MVRTextRange range(cursor);
    };
    const auto attaching = [](QTextDocument *, const QTextCursor &cursor) {
        D::setComment(cursor, MVRTextCommentLink());
        D::setComment(cursor, QStringLiteral("text"), true);
        D::setCommentCData(cursor, "cdata", false);
    };
    const auto removing = [](QTextDocument *, QTextCursor cursor) {
        D::removeComment(cursor);
        STextDoc::clearCommentPropertiesCursor(&cursor);
    };
    const auto marking = [](QTextDocument *, const QTextCursor &cursor) {
        D::setInlineFootnoteAnnotation(cursor, true, true);
        D::setInlineFootnoteAnnotation(cursor, false, false);
        D::setPreserveFormatting(cursor, true);
    };
    const auto trimming = [](QTextDocument *document, const QTextCursor &cursor) {
        D::trimInlineNotes(document, annotation, true, 0, 0, cursor);
        D::removeInlineNotes(document, footnote, cursor);
        MVRTextUtil::trim(cursor, true, 0, 0, nullptr);
    };
    const auto appending = [](QTextDocument *, QTextCursor cursor) {
        QTextDocument source;
        source.setPlainText(QStringLiteral("\nsource"));
        D::appendDocument(cursor, &source);
        D::appendDocumentPreservePageBreak(cursor, &source);
        D::appendFragment(cursor, QTextDocumentFragment(&source));
        D::appendFragmentPreservePageBreak(cursor, QTextDocumentFragment(&source));
    };
    const auto replacing = [](QTextDocument *, const QTextCursor &cursor) {
        D::replace(QStringLiteral("o"), QStringLiteral("0"), cursor);
        D::replace(QRegularExpression(QStringLiteral("w.")), QString(), cursor);
    };
    return {{"inline moves", inlineMoves}, {"inspector moves", inspectorMoves},
            {"kind swaps", kindSwaps},     {"queries", queries},
            {"searches", searches},        {"attaching", attaching},
            {"removing", removing},        {"marking", marking},
            {"trimming", trimming},        {"appending", appending},
            {"replacing", replacing}};
}

} // namespace

void TestSelections::worksOnSelectedCellsOnly_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<char>("mark");
    QTest::addColumn<QString>("after"); // of the first column; the second is to stay

    const auto row = [](const char *name, char mark, const char *after, const Operation &run) {
        QTest::newRow(name) << run << mark << QString::fromLatin1(after);
    };
    row("attach", '.', " a 1| b .| c 1| d .", [](QTextDocument *, const QTextCursor &cursor) {
        MVRTextDoc::setCommentCData(cursor, "1", false);
    });
    row("remove", '1', " a .| b 1| c .| d 1",
        [](QTextDocument *, QTextCursor cursor) { MVRTextDoc::removeComment(cursor); });
    row("clear", '1', " a .| b 1| c .| d 1", [](QTextDocument *, QTextCursor cursor) {
        STextDoc::clearCommentPropertiesCursor(&cursor);
    });
    row("mark", '.', " a f| b .| c f| d .", [](QTextDocument *, const QTextCursor &cursor) {
        MVRTextDoc::setInlineFootnoteAnnotation(cursor, true, true);
    });
    row("unmark", 'a', " a .| b a| c .| d a", [](QTextDocument *, const QTextCursor &cursor) {
        MVRTextDoc::setInlineFootnoteAnnotation(cursor, false, false);
    });
    row("swap", 'a', " a f| b a| c f| d a", MVRTextDoc::convertInlineAnnotationsToInlineFootnotes);
    row("trim notes", 'a', "aa| b a|ca| d a",
        [](QTextDocument *document, const QTextCursor &cells) {
            MVRTextDoc::trimInlineNotes(document, annotation, false, 0, 0, cells);
        });
    row("trim text", '.', "a.| b .|c.| d .", [](QTextDocument *, const QTextCursor &cells) {
        MVRTextUtil::trim(cells, false, 0, 0, nullptr);
    });
    row("to the inspector", 'f', "(Linked Comment){| b f|(Linked Comment){| d f",
        [](QTextDocument *document, const QTextCursor &cells) {
            MVRTextDoc::convertInlineFootnotesToInspectorComments(document, false, cells);
        });
    row("into the text", '.', " a  n.| b {| c  n.| d {",
        [](QTextDocument *document, const QTextCursor &cells) {
            // One note in the whole table.
            QTextCursor all(document);
            all.select(QTextCursor::Document);
            MVRTextDoc::setComment(all, QStringLiteral("n"), false);
            MVRTextDoc::convertInspectorCommentsToInlineAnnotations(document, cells);
        });
}

void TestSelections::worksOnSelectedCellsOnly()
{
    QFETCH(const Operation, operation);
    QFETCH(const char, mark);
    QFETCH(const QString, after);
    for (const bool upwards : {false, true}) {
        QTextDocument document;
        const QTextTable *table = fillTable(&document, mark);
        operation(&document, column(*table, 0, upwards));
        QCOMPARE(cells(*table), after);
    }
}

void TestSelections::asksSelectedCellsOnly()
{
    QTextDocument document;
    const QTextTable *table = fillTable(&document, '.');
    const QTextCharFormat note = MarkedText::formatOf(QLatin1Char('a'));
    QTextCharFormat link;
    link.setAnchor(true);
    link.setAnchorHref(QStringLiteral("1"));
    const auto mark = [&](const char *text, const QTextCharFormat &format) {
        document.find(QLatin1String(text)).mergeCharFormat(format);
    };
    mark("b", note);
    mark("b", link);
    const QTextCursor left = column(*table, 0, false);
    QVERIFY(!MVRTextDoc::hasInlineAnnotation(left));
    QVERIFY(MVRTextFinder::findAllAnchors(left, true).isEmpty());
    mark("c", note);
    mark("c", link);
    QVERIFY(MVRTextDoc::hasInlineAnnotation(left));
    QVERIFY(!MVRTextDoc::isInInlineAnnotation(left));
    QCOMPARE(MVRTextFinder::findAllAnchors(left, true).size(), 1);
    mark(" a ", note);
    mark(" c ", note);
    QVERIFY(MVRTextDoc::isInInlineAnnotation(left) && MVRTextDoc::isInlineAnnotationChecked(left));
    QVERIFY(!MVRTextDoc::isInInlineAnnotation(column(*table, 1, false)));
    // Behind a selection of cells is behind the last of them.
    mark(" d ", note);
    const QTextCursor next = MVRTextFinder::findFragment(note, column(*table, 0, true), true);
    QCOMPARE(next.selectedText(), QStringLiteral(" d "));
}

void TestSelections::freesEmptyParagraphs_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marks");
    QTest::addColumn<int>("start");
    QTest::addColumn<int>("end");
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QVector<int>>("plain"); // empty paragraphs, by their number from the end
    QTest::addColumn<QVector<int>>("marked");

    const Operation toInspector = [](QTextDocument *document, const QTextCursor &cursor) {
        MVRTextDoc::convertInlineAnnotationsToInspectorComments(document, false, cursor);
    };
    const Operation toText = [](QTextDocument *document, const QTextCursor &cursor) {
        MVRTextDoc::setComment(cursor, QStringLiteral("n"), false);
        MVRTextDoc::convertInspectorCommentsToInlineAnnotations(document, cursor);
    };
    const Operation unmark = [](QTextDocument *, const QTextCursor &cursor) {
        MVRTextDoc::setInlineFootnoteAnnotation(cursor, false, false);
    };
    using Numbers = QVector<int>;
    QTest::newRow("behind a note that moves")
        << "word note\n\n"
        << ".....aaaaaa" << 0 << 11 << toInspector << Numbers({0, 1}) << Numbers();
    QTest::newRow("of no note") << "word\n\nend"
                                << ".....a..." << 0 << 9 << toInspector << Numbers({1})
                                << Numbers();
    QTest::newRow("outside the selection")
        << "note\n\nend\n\nend"
        << "aaaaa....a...." << 0 << 6 << toInspector << Numbers({3}) << Numbers({1});
    QTest::newRow("in a note that stays")
        << "a b\n\nnote"
        << "a.aaaaaaa" << 0 << 7 << toInspector << Numbers() << Numbers({1});
    QTest::newRow("at the selection's start")
        << "x\n\ny\nz"
        << ".1...." << 2 << 5 << toText << Numbers({2}) << Numbers();
    QTest::newRow("behind an inspector note")
        << "word\n\nend"
        << "........." << 0 << 6 << toText << Numbers({1}) << Numbers();
    QTest::newRow("unmarked") << "x\n\n\ny"
                              << "..aa.." << 2 << 4 << unmark << Numbers({1, 2}) << Numbers();
}

void TestSelections::freesEmptyParagraphs()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marks);
    QFETCH(const int, start);
    QFETCH(const int, end);
    QFETCH(const Operation, operation);
    QFETCH(const QVector<int>, plain);
    QFETCH(const QVector<int>, marked);
    QTextDocument document;
    fill(&document, text, marks);
    operation(&document, select(&document, start, end));
    const auto typedMark = [&document](int fromEnd) {
        QTextCursor cursor(document.findBlockByNumber(document.blockCount() - 1 - fromEnd));
        cursor.insertText(QStringLiteral("x"));
        return MarkedText::markOf(cursor.charFormat());
    };
    for (const int number : plain)
        QCOMPARE(typedMark(number), QLatin1Char('.'));
    for (const int number : marked)
        QCOMPARE(typedMark(number), QLatin1Char('a'));
}

void TestSelections::leavesDocumentsUnmodified_data()
{
    QTest::addColumn<Operation>("operation");
    const auto row = [](const char *name, const Operation &run) { QTest::newRow(name) << run; };
    using D = MVRTextDoc;
    row("no notes to set", [](QTextDocument *document, const QTextCursor &) {
        D::setComments(document, {});
        D::setComments(document, {{MVRTextRange(3, 3), MVRTextCommentLink()}});
        D::setComments(document, {{MVRTextRange(900, 990), MVRTextCommentLink()}});
    });
    row("notes without white space", [](QTextDocument *document, const QTextCursor &) {
        D::trimInlineNotes(document, annotation, true, 0, 0, QTextCursor());
        D::trimInspectorNotes(document, MVRTextFormat::CommentLinkProperty, true, 0, 0);
    });
    row("links that are there or void", [](QTextDocument *document, const QTextCursor &) {
        MVRTextInternalLinkMap map;
        map.links = {{MVRTextRange(2, 2), 4}, {MVRTextRange(8, 13), 7}, {MVRTextRange(99, 999), 1}};
        D::setInternalLinks(document, map);
        D::setInternalLinks(document, {});
    });
    row("marks that are there", [](QTextDocument *document, const QTextCursor &cursor) {
        D::setInlineFootnoteAnnotation(select(document, 0, 4), false, true);
        D::setPreserveFormatting(cursor, false);
        D::swapBoolProperties(document, annotation, annotation, cursor);
    });
    row("no notes to move", [](QTextDocument *document, const QTextCursor &) {
        D::convertInspectorCommentsToInlineAnnotations(document, QTextCursor());
        D::swapInlineToInspector(document, QTextFormat::UserProperty, true, true, QTextCursor());
        D::encloseAnnotations(document, QString(), QString(), false);
        D::inlineFootnotesToEndNotes(document, 1);
    });
    row("nothing to remove", [](QTextDocument *document, QTextCursor cursor) {
        D::removeComment(cursor);
        D::clearComment(document, 3);
        STextDoc::tablesToText(document);
        STextDoc::normalizePageBreaks(document);
    });
    row("nothing to replace", [](QTextDocument *document, const QTextCursor &) {
        D::replace(QStringLiteral("nowhere"), QStringLiteral("x"), QTextCursor(document));
    });
    row("nothing to append", [](QTextDocument *document, QTextCursor cursor) {
        QTextDocument empty;
        D::appendDocument(cursor, &empty);
        D::appendFragmentPreservePageBreak(cursor, QTextDocumentFragment());
        QTextBlockFormat format = document->begin().blockFormat();
        MVRTextFormat::convertToFormat(document, nullptr, &format);
    });
    row("no markup", [](QTextDocument *document, const QTextCursor &) {
        D::fromInlineMarkupImageLinks(document);
        if (!document->isUndoRedoEnabled()) // which reading clears otherwise
            D::fromInlineMarkup(document);
        document->setUndoRedoEnabled(false);
    });
}

void TestSelections::leavesDocumentsUnmodified()
{
    QFETCH(const Operation, operation);
    for (const bool recorded : {true, false}) {
        QTextDocument document;
        fill(&document, QStringLiteral("note text link"), QStringLiteral("aaaa.........."));
        QTextCharFormat link;
        link.setAnchor(true);
        link.setAnchorHref(QStringLiteral("7"));
        select(&document, 8, 13).mergeCharFormat(link);
        QTextCharFormat unkept;
        unkept.setProperty(MVRTextFormat::PreserveFormattingProperty, false);
        QTextCursor all = select(&document, 0, 14);
        MVRTextDoc::setInlineFootnoteAnnotation(select(&document, 0, 4), false, true);
        all.mergeCharFormat(unkept);
        document.setUndoRedoEnabled(recorded);
        document.clearUndoRedoStacks();
        document.setModified(false);
        const QSignalSpy changes(&document, &QTextDocument::contentsChanged);
        operation(&document, all);
        QCOMPARE(changes.size(), 0);
        QVERIFY(!document.isModified());
        QVERIFY(!document.isUndoAvailable());
    }
}

void TestSelections::survivesWrongCursors_data()
{
    QTest::addColumn<Operation>("operation");
    const auto operations = cursorOperations();
    for (const auto &operation : operations)
        QTest::newRow(operation.first) << operation.second;
}

void TestSelections::survivesWrongCursors()
{
    QFETCH(const Operation, operation);
    QTextDocument other;
    other.setPlainText(QStringLiteral("some words here"));
    QTextDocument document;
    fill(&document, QStringLiteral(" one  two \n four"), QStringLiteral("aaaaffffff.11111"));
    const QString html = document.toHtml();
    const QString text = document.toPlainText();
    const QString before = marks(document);
    QTextCursor nothing = select(&document, 3, 3);
    for (const QTextCursor &cursor : {staleCursor(), select(&other, 2, 9), nothing}) {
        const bool inserts = QLatin1String(QTest::currentDataTag()) == QLatin1String("appending")
            || QLatin1String(QTest::currentDataTag()) == QLatin1String("replacing");
        if (cursor.document() == &document && inserts)
            continue; // which need no selection
        operation(&document, cursor);
        QCOMPARE(document.toPlainText(), text);
        QCOMPARE(marks(document), before);
    }
    operation(nullptr, QTextCursor());
    operation(nullptr, staleCursor());
    operation(&document, QTextCursor());
    QTextDocument empty;
    operation(&empty, QTextCursor());
    operation(&empty, QTextCursor(&empty));
    QVERIFY(empty.blockCount() >= 1);
}

void TestSelections::survivesExtremes_data()
{
    QTest::addColumn<int>("number");
    for (const int number : {std::numeric_limits<int>::min(), -2, -1, 0, 1, 10, 16, 17, 0x100066,
                             std::numeric_limits<int>::max()})
        QTest::addRow("%d", number) << number;
}

/*! The number stands for a position, a property, a count or a size; none may crash or hang. */
void TestSelections::survivesExtremes()
{
    QFETCH(const int, number);
    using D = MVRTextDoc;
    QTextDocument document;
    fill(&document, QStringLiteral(" one  two \n four"), QStringLiteral("aaaaffffff.11111"));
    const QTextCursor none;
    const MVRTextRange reversed(number, -(number / 2));
    D::setComment(&document, reversed, MVRTextCommentLink());
    D::setComments(&document, {{reversed, MVRTextCommentLink()}});
    D::clearComment(&document, number);
    D::commentsMapByType(number, &document, number, number, true);
    D::commentsMap(&document, number, std::numeric_limits<int>::max());
    D::trimInspectorNotes(&document, MVRTextFormat::CommentLinkProperty, true, number, number);
    D::trimInlineNotes(&document, annotation, true, number, number, none);
    D::swapBoolProperties(&document, annotation, footnote, none);
    D::swapInspectorToInline(&document, number, true, none);
    D::swapInlineToInspector(&document, number, true, true, none);
    MVRTextInternalLinkMap links;
    links.links = {{reversed, number}, {MVRTextRange(0, number), number}};
    D::setInternalLinks(&document, links);
    D::formatCount(&document, number, QVariant());
    D::wordCharacterCountNotes(&document, number, true, true);
    for (const double size : {double(number), qQNaN(), qInf(), -qInf()}) {
        D::pageCount(&document, QSizeF(size, size));
        D::pageCount(&document, QSizeF(500, size));
    }
    D::inlineFootnotesToEndNotes(&document, number, QTextCharFormat(), MVRFormat::EPub3);
    QTextCursor cursor(&document);
    D::appendDocument(cursor, &document);
    D::appendDocumentPreservePageBreak(cursor, &document);
    D::replace(QRegularExpression(QStringLiteral("(")), QStringLiteral("x"), cursor);
    D::replace(QString(1, QChar(0xd800)), QString(1, QChar(0)), cursor);
    D::encloseAnnotations(&document, QString(1, QChar(0)), QString(1, QChar(0xdc00)), true);
    QVERIFY(document.blockCount() >= 1);
}

QTEST_MAIN(TestSelections)
#include "tst_selections.moc"
