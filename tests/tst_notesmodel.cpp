// SPDX-License-Identifier: MIT
#include <core/MVRTextFormat.h>
#include <text/MVRNoteHighlighter.h>
#include <text/MVRNotesModel.h>
#include <text/MVRTextDoc.h>

#include "MarkedText.h"

#include <QAbstractItemModelTester>
#include <QAbstractTextDocumentLayout>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QTextDocumentFragment>
#include <QTextLayout>
#include <QtTest>

class TestNotesModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsAllKinds();
    void followsRandomEdits_data();
    void followsRandomEdits();
    void rowsThatOnlyMoveKeepTheirIndexes();
    void innermostNoteIsFoundAtAPosition();
    void documentsComeAndGo();
    void tintsNotesWithoutTouchingTheDocument();
};

namespace {

QTextCursor selection(QTextDocument *document, int start, int end)
{
    QTextCursor cursor(document);
    cursor.setPosition(start);
    cursor.setPosition(end, QTextCursor::KeepAnchor);
    return cursor;
}

QString description(const MVRTextNotes &notes)
{
    QString all;
    for (const MVRTextNote &note : notes)
        all += QStringLiteral("%1[%2,%3)%4%5 ")
                   .arg(note.kind)
                   .arg(note.range.start)
                   .arg(note.range.end)
                   .arg(note.anchor.right(4), QString::fromLatin1(note.cdata.right(6)));
    return all;
}

QString description(const MVRNotesModel &model)
{
    MVRTextNotes notes;
    for (int row = 0; row < model.rowCount(); ++row)
        notes.append(model.note(row));
    return description(notes);
}

/*! One random edit of the kinds that a writer makes. */
void edit(QTextDocument *document, QRandomGenerator &random)
{
    const int last = document->characterCount() - 1;
    const int start = random.bounded(last + 1);
    QTextCursor cursor = selection(document, start, qMin(last, start + random.bounded(6)));
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    switch (random.bounded(12)) {
    case 0:
    case 1:
        cursor.insertText(QStringLiteral("ab"));
        break;
    case 2:
        cursor.insertText(QStringLiteral("plain"), QTextCharFormat());
        break;
    case 3:
        cursor.removeSelectedText();
        break;
    case 4:
        cursor.insertBlock();
        break;
    case 5:
        cursor.mergeCharFormat(bold);
        break;
    case 6:
        MVRTextDoc::setComment(cursor, QStringLiteral("note"), random.bounded(2));
        break;
    case 7:
        MVRTextDoc::setInlineFootnoteAnnotation(cursor, random.bounded(2), random.bounded(3));
        break;
    case 8:
        MVRTextDoc::removeComment(cursor);
        break;
    case 9:
        document->undo();
        break;
    case 10:
        document->redo();
        break;
    default:
        cursor.insertFragment(selection(document, 0, qMin(last, 12)).selection());
    }
}

} // namespace

void TestNotesModel::listsAllKinds()
{
    QTextDocument document;
    MarkedText::fill(
        &document, QStringLiteral("one two three four"),
        QStringLiteral("... aaa .ffff.    ").replace(QLatin1Char(' '), QLatin1Char('.')));
    MVRTextCommentLink link;
    link.isFootnote = false;
    link.color = Qt::red;
    link.cdata = "{\\rtf1 A note.}";
    const QDateTime date(QDate(2024, 2, 29), QTime(12, 0), Qt::UTC);
    MVRTextDoc::setComment(selection(&document, 0, 3), link, QStringLiteral("Ada"), date);
    MVRTextDoc::setComment(selection(&document, 14, 18), QStringLiteral("Foot."), true);

    MVRNotesModel model;
    const QAbstractItemModelTester tester(&model);
    model.setDocument(&document);
    QCOMPARE(model.rowCount(), 4);
    const auto cell = [&model](int row, int column, int role = Qt::DisplayRole) {
        return model.data(model.index(row, column), role);
    };
    QCOMPARE(cell(0, MVRNotesModel::KindColumn).toString(), QStringLiteral("Comment"));
    QCOMPARE(cell(0, MVRNotesModel::TextColumn).toString(), QStringLiteral("one"));
    QCOMPARE(cell(0, MVRNotesModel::ContentColumn).toString(), QStringLiteral("A note."));
    QCOMPARE(cell(0, MVRNotesModel::ColorColumn, Qt::DecorationRole).value<QColor>(),
             QColor(Qt::red));
    QCOMPARE(cell(0, MVRNotesModel::AuthorColumn).toString(), QStringLiteral("Ada"));
    QCOMPARE(cell(0, MVRNotesModel::DateColumn, MVRNotesModel::SortRole).toDateTime(), date);
    QCOMPARE(cell(1, MVRNotesModel::ContentColumn).toString(), QStringLiteral("two"));
    QCOMPARE(cell(3, MVRNotesModel::ContentColumn).toString(), QStringLiteral("Foot."));

    QSortFilterProxyModel sorted;
    sorted.setSourceModel(&model);
    sorted.setSortRole(MVRNotesModel::SortRole);
    sorted.sort(MVRNotesModel::KindColumn, Qt::DescendingOrder);
    QCOMPARE(sorted.index(0, MVRNotesModel::TextColumn).data().toString(), QStringLiteral("hree"));
}

void TestNotesModel::followsRandomEdits_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestNotesModel::followsRandomEdits()
{
    QFETCH(const quint32, seed);
    QRandomGenerator random(seed);
    QTextDocument document;
    MarkedText::fill(&document, QStringLiteral("one two\nthree four five six"),
                     QStringLiteral("111.a55a555..22....ffff..33"));
    MVRNotesModel model;
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    model.setDocument(&document);
    for (int step = 0; step < 80; ++step) {
        QSignalSpy changed(&model, &MVRNotesModel::notesChanged);
        const QString before = description(model);
        edit(&document, random);
        const QString wanted = description(MVRTextDoc::notes(&document));
        QVERIFY2(description(model) == wanted,
                 qPrintable(QStringLiteral("step %1\nbefore %2\nmodel  %3\nwanted %4")
                                .arg(step)
                                .arg(before, description(model), wanted)));
        if (model.rowCount() != before.count(QLatin1Char(' ')))
            QVERIFY(changed.count() > 0);
    }
}

void TestNotesModel::rowsThatOnlyMoveKeepTheirIndexes()
{
    QTextDocument document;
    MarkedText::fill(&document, QStringLiteral("one two three"), QStringLiteral("111.222.aaaaa"));
    MVRNotesModel model;
    model.setDocument(&document);
    const QPersistentModelIndex last = model.index(2, 0);
    QSignalSpy changed(&model, &MVRNotesModel::notesChanged);
    QSignalSpy moved(&model, &MVRNotesModel::notesMoved);
    selection(&document, 3, 3).insertText(QStringLiteral(" more"), QTextCharFormat());
    QCOMPARE(moved.count(), 1);
    QCOMPARE(last.data(MVRNotesModel::StartRole).toInt(), 13);

    changed.clear();
    QTextCursor two = selection(&document, 9, 12);
    MVRTextDoc::removeComment(two);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(last.row(), 1);
}

void TestNotesModel::innermostNoteIsFoundAtAPosition()
{
    QTextDocument document;
    MarkedText::fill(&document, QStringLiteral("abcdef gh"), QStringLiteral("aaaaaa..."));
    MVRTextDoc::setComment(selection(&document, 2, 4), QStringLiteral("note"), true);
    // Attaching makes the text of an inline note ordinary text.
    MVRTextDoc::setInlineFootnoteAnnotation(selection(&document, 0, 6), false, true);
    MVRNotesModel model;
    model.setDocument(&document);
    QCOMPARE(model.rowCount(), 2);
    QCOMPARE(model.note(model.rowAt(1)).kind, MVRTextNote::InlineAnnotation);
    QCOMPARE(model.note(model.rowAt(3)).kind, MVRTextNote::Footnote);
    QCOMPARE(model.note(model.rowAt(5)).kind, MVRTextNote::InlineAnnotation);
    QCOMPARE(model.rowAt(6), -1);
}

void TestNotesModel::documentsComeAndGo()
{
    MVRNotesModel model;
    const QAbstractItemModelTester tester(&model);
    auto document = std::make_unique<QTextDocument>();
    MarkedText::fill(document.get(), QStringLiteral("one"), QStringLiteral("111"));
    model.setDocument(document.get());
    QCOMPARE(model.rowCount(), 1);
    document.reset();
    QCOMPARE(model.rowCount(), 0);
    QCOMPARE(model.note(0).range.end, 0);
    model.setDocument(nullptr);
    QCOMPARE(model.rowCount(), 0);
}

void TestNotesModel::tintsNotesWithoutTouchingTheDocument()
{
    QTextDocument document;
    MarkedText::fill(&document, QStringLiteral("one two\nthree"), QStringLiteral("111.fff......"));
    document.setModified(false);
    MVRNoteHighlighter highlighter(&document);
    QCOMPARE(document.firstBlock().layout()->formats().size(), 2);
    highlighter.setTint(MVRTextNote::InlineFootnote, Qt::green);
    QCoreApplication::processEvents(); // Qt puts the first look off until then
    const auto tints = document.firstBlock().layout()->formats();
    QCOMPARE(tints.size(), 2);
    QCOMPARE(tints[0].start, 0);
    QCOMPARE(tints[0].length, 3);
    QCOMPARE(tints[1].format.background().color(), QColor(Qt::green));
    QVERIFY(document.lastBlock().layout()->formats().isEmpty());
    QVERIFY(!document.isModified());
    QVERIFY(!document.isUndoAvailable());

    // Attaching a note changes formats and no text: the paragraph is looked at again.
    MVRTextDoc::setComment(selection(&document, 8, 11), QStringLiteral("note"), false);
    QCOMPARE(document.lastBlock().layout()->formats().size(), 1);

    MVRTextDoc::setComment(selection(&document, 8, 11), QStringLiteral("note"), true);
    highlighter.setTint(MVRTextNote::Footnote, Qt::blue);
    const auto again = document.lastBlock().layout()->formats();
    QCOMPARE(again.size(), 1);
    QCOMPARE(again[0].format.background().color(), QColor(Qt::blue));
}

QTEST_MAIN(TestNotesModel)
#include "tst_notesmodel.moc"
