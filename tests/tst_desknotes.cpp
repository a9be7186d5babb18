// SPDX-License-Identifier: MIT
// The desk's notes, driven with keys and mouse.
#include "DeskTest.h"

#include <text/MVRNotesFilter.h>

#include <QAbstractTextDocumentLayout>
#include <QClipboard>
#include <QInputDialog>
#include <QMimeData>
#include <QScrollBar>
#include <QTextLayout>
#include <QWindow>

class TestDeskNotes : public DeskTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { DeskTest::init(); }
    void cleanup() { DeskTest::cleanup(); }
    void notesAreWrittenInTheMargin();
    void cardsStandBesideTheirLines();
    void cardsMakeRoomForTheActiveOne_data();
    void cardsMakeRoomForTheActiveOne();
    void eachEditOfNotesIsOneStep_data();
    void eachEditOfNotesIsOneStep();
    void copiesCarryNotes();
    void filtersChooseNotes();
    void annotationsAreEnclosed();
    void resolvedNotesKeepTheirHeads();
    void draggedTextTakesItsNoteAlong();
};

void TestDeskNotes::notesAreWrittenInTheMargin()
{
    Desk desk(QStringLiteral("The ferry leaves at night."));
    for (int i = 0; i < 6; ++i)
        QTest::keyClick(desk.editor(), Qt::Key_Right);
    QTest::keyClick(&desk, Qt::Key_C, Qt::ControlModifier | Qt::AltModifier);
    QCOMPARE(desk.notes().size(), 1);
    QCOMPARE(desk.notes()[0].text(*desk.editor()->document()), QStringLiteral("ferry"));
    QCOMPARE(desk.notes()[0].author, QStringLiteral("Ada"));

    // The card has the keyboard; Escape goes back and hands the note over, as one step.
    QTextEdit *body = Desk::body(desk.cards().value(0));
    QCOMPARE(QApplication::focusWidget(), body);
    QTest::keyClicks(body, QStringLiteral("Which one?"));
    QTest::keyClick(body, Qt::Key_Escape);
    QCOMPARE(QApplication::focusWidget(), desk.editor());
    QCOMPARE(desk.notes()[0].contentText(*desk.editor()->document()), QStringLiteral("Which one?"));

    // A click on the card's text edits it again, rich text and all.
    body = Desk::body(desk.cards().value(0));
    QTest::mouseClick(body->viewport(), Qt::LeftButton);
    QCOMPARE(QApplication::focusWidget(), body);
    body->selectAll();
    desk.run("Bold");
    desk.editor()->setFocus();
    QVERIFY(desk.notes()[0].cdata.contains("\\b"));
    QCOMPARE(desk.cards().size(), 1);
    QTest::keyClick(desk.editor(), Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(!desk.notes()[0].cdata.contains("\\b"));
    QTest::keyClick(desk.editor(), Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(desk.notes()[0].contentText(*desk.editor()->document()).isEmpty());
    QTest::keyClick(desk.editor(), Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(desk.notes().isEmpty());
    QVERIFY(desk.cards().isEmpty());
}

void TestDeskNotes::cardsStandBesideTheirLines()
{
    Desk desk;
    fill(desk.editor()->document(), 800);
    const QVector<NoteCard *> cards = desk.cards();
    QVERIFY(cards.size() >= 5);
    QCOMPARE(Desk::body(cards[0])->toPlainText(), QStringLiteral("A short note."));
    int bottom = -1000;
    for (const NoteCard *card : cards) {
        // Found without the desk's own ways: the line that the note's word is in.
        const int position = card->note().range.start;
        const QTextBlock block = desk.editor()->document()->findBlock(position);
        const QTextLine line = block.layout()->lineForTextPosition(position - block.position());
        const QRectF shown = desk.editor()->document()->documentLayout()->blockBoundingRect(block);
        const int top
            = qRound(shown.top() + line.y()) - desk.editor()->verticalScrollBar()->value();
        const int place = desk.editor()->viewport()->mapFromGlobal(card->mapToGlobal(QPoint())).y();
        QVERIFY2(place >= bottom, "cards overlap");
        if (bottom + 8 < top) // cards have a gap between them
            QVERIFY2(qAbs(place - top) <= 2, "nothing keeps the card from its line");
        QVERIFY(card->mapTo(desk.editor(), QPoint()).x()
                > desk.editor()->viewport()->geometry().right());
        bottom = place + card->height();
    }
    // Where the text goes, its cards go along.
    const int before = cards[0]->y();
    desk.editor()->verticalScrollBar()->setValue(40);
    QCOMPARE(desk.cards()[0], cards[0]);
    QCOMPARE(cards[0]->y(), before - 40);
}

void TestDeskNotes::cardsMakeRoomForTheActiveOne_data()
{
    QTest::addColumn<QVector<int>>("wanted");
    QTest::addColumn<QVector<int>>("heights");
    QTest::addColumn<int>("active");
    QTest::addColumn<QVector<int>>("tops");
    using List = QVector<int>;
    QTest::newRow("none") << List() << List() << -1 << List();
    QTest::newRow("room for all") << List {0, 100} << List {50, 50} << 0 << List {0, 100};
    QTest::newRow("one line, first in front")
        << List {0, 0, 0} << List {50, 50, 50} << -1 << List {0, 55, 110};
    QTest::newRow("the last is active")
        << List {100, 100, 100} << List {50, 20, 50} << 2 << List {20, 75, 100};
    QTest::newRow("one between") << List {100, 110, 120} << List {50, 60, 50} << 1
                                 << List {55, 110, 175};
    QTest::newRow("one that is not there") << List {0, 0} << List {50} << 7 << List {0, 55};
    QTest::newRow("no heights") << List {0, 0, 9} << List() << 2 << List {-5, 0, 9};
}

void TestDeskNotes::cardsMakeRoomForTheActiveOne()
{
    QFETCH(const QVector<int>, wanted);
    QFETCH(const QVector<int>, heights);
    QFETCH(const int, active);
    QFETCH(const QVector<int>, tops);
    QCOMPARE(MVRNoteMargin::tops(wanted, heights, active, 5), tops);
}

void TestDeskNotes::eachEditOfNotesIsOneStep_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("after"); // the text, and the kinds of its notes
    QTest::newRow("to the text") << QStringLiteral("Move into the text") << 8
                                 << QStringLiteral(
                                        "One two a three four five f. 2( a)2(three)3(four)3( f)");
    QTest::newRow("to the margin")
        << QStringLiteral("Move into the margin") << 8
        << QStringLiteral(
               "One two (Linked Comment) (Linked Footnote) five. 0(a )0(three)1(four)1(f )");
    QTest::newRow("remove") << QStringLiteral("Remove") << 5
                            << QStringLiteral("One two three four five. 2(three)3(four)1(f )");
    QTest::newRow("remove an inline note")
        << QStringLiteral("Remove") << 10
        << QStringLiteral("One two  four five. 0(a )3(four)1(f )");
    QTest::newRow("trim") << QStringLiteral("Trim") << 0
                          << QStringLiteral("One two three four five. 0(a)2(three)3(four)1(f)");
    QTest::newRow("end notes") << QStringLiteral("Footnotes to end notes") << 0
                               << QStringLiteral(
                                      "One two three 1 five2.\n1. four\n2. f 0(a )2(three)");
}

void TestDeskNotes::eachEditOfNotesIsOneStep()
{
    QFETCH(const QString, command);
    QFETCH(const int, position);
    Desk desk(QStringLiteral("One two three four five."));
    QTextDocument *document = desk.editor()->document();
    const auto at = [document](int start, int end) {
        return MVRTextRange(start, end).toTextCursor(document);
    };
    MVRTextDoc::setComment(at(4, 7), QStringLiteral("a "), false);
    MVRTextDoc::setInlineFootnoteAnnotation(at(8, 13), false, true);
    MVRTextDoc::setInlineFootnoteAnnotation(at(14, 18), true, true);
    MVRTextDoc::setComment(at(19, 23), QStringLiteral("f "), true);
    const auto state = [&desk] {
        QString kinds;
        for (const MVRTextNote &note : desk.notes())
            kinds += QString::number(note.kind) + QLatin1Char('(')
                + note.contentText(*desk.editor()->document()) + QLatin1Char(')');
        return desk.text() + QLatin1Char(' ') + kinds;
    };
    const QString before = state();
    desk.select(position, position);
    desk.run(command.toUtf8().constData());
    const QString after = state();
    QTEST(after, "after");
    document->undo();
    QCOMPARE(state(), before);
    document->redo();
    QCOMPARE(state(), after);
}

void TestDeskNotes::copiesCarryNotes()
{
    Desk desk(QStringLiteral("One two three."));
    MVRTextDoc::setComment(MVRTextRange(4, 7).toTextCursor(desk.editor()->document()),
                           QStringLiteral("A note."), false);
    desk.select(0, 8);
    QTest::keyClick(desk.editor(), Qt::Key_C, Qt::ControlModifier);
    desk.editor()->moveCursor(QTextCursor::End);
    QTest::keyClick(desk.editor(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(desk.text(), QStringLiteral("One two three.One two "));
    QCOMPARE(desk.notes().size(), 2);
    desk.editor()->undo();
    QCOMPARE(desk.text(), QStringLiteral("One two three."));

    auto *word = new QMimeData; // as a word processor puts it there
    word->setData(QStringLiteral("text/rtf"),
                  "{\\rtf1\\ansi Text{\\*\\atnid B}{\\*\\atnauthor Bob}\\chatn{\\*\\annotation "
                  "\\pard\\plain Said.} more}");
    QApplication::clipboard()->setMimeData(word);
    desk.run("Paste");
    QCOMPARE(desk.notes().last().author, QStringLiteral("Bob"));
    auto *page = new QMimeData; // as a browser does
    page->setHtml(QStringLiteral("<p>from <b>a page</b></p>"));
    QApplication::clipboard()->setMimeData(page);
    desk.run("Paste");
    QVERIFY(desk.text().contains(QStringLiteral("from a page")));
}

void TestDeskNotes::filtersChooseNotes()
{
    Desk desk(QStringLiteral("One two three four."));
    QTextDocument *document = desk.editor()->document();
    MVRTextCommentLink link;
    link.color = Qt::red;
    MVRTextDoc::setComment(MVRTextRange(0, 3).toTextCursor(document), link, QStringLiteral("Ada"),
                           QDateTime());
    link.color = Qt::blue;
    MVRTextDoc::setComment(MVRTextRange(4, 7).toTextCursor(document), link, QStringLiteral("Bob"),
                           QDateTime());
    MVRTextDoc::setComment(MVRTextRange(8, 13).toTextCursor(document), QStringLiteral("f"), true);
    MVRNotesFilter *filter = desk.editor()->filter();
    QCOMPARE(desk.cards().size(), 3);
    QCOMPARE(filter->values(MVRNotesModel::AuthorColumn),
             QStringList({QStringLiteral("Ada"), QStringLiteral("Bob")}));
    filter->setWanted(MVRNotesModel::AuthorColumn, QStringLiteral("Bob"));
    QCOMPARE(desk.cards().size(), 1);
    QCOMPARE(desk.cards()[0]->note().range.start, 4);
    filter->setWanted(MVRNotesModel::ColorColumn, QStringLiteral("#ff0000"));
    QVERIFY(desk.cards().isEmpty());
    filter->setWanted(MVRNotesModel::AuthorColumn, QString());
    QCOMPARE(desk.cards()[0]->note().author, QStringLiteral("Ada"));
    filter->setWanted(MVRNotesModel::ColorColumn, QString());
    desk.run("Next note");
    QCOMPARE(desk.editor()->textCursor().position(), 4);
    desk.run("Next note");
    desk.run("Previous note");
    QCOMPARE(desk.editor()->textCursor().position(), 4);
}

void TestDeskNotes::annotationsAreEnclosed()
{
    Desk desk(QStringLiteral("One two three."));
    desk.select(4, 7);
    desk.run("Mark as annotation");
    answerNext<QInputDialog>([](QInputDialog &dialog) {
        dialog.setTextValue(QStringLiteral("<< >>"));
        dialog.accept();
    });
    desk.run("Enclose annotations…");
    QCOMPARE(desk.text(), QStringLiteral("One <<two>> three."));
    QVERIFY(desk.notes().isEmpty());
    desk.editor()->undo();
    QCOMPARE(desk.text(), QStringLiteral("One two three."));
    QCOMPARE(desk.notes().size(), 1);
}

void TestDeskNotes::resolvedNotesKeepTheirHeads()
{
    const QString path = filePath("text.rtf");
    Desk desk(QStringLiteral("One two three."));
    desk.select(4, 7);
    QTest::keyClick(&desk, Qt::Key_F, Qt::ControlModifier | Qt::AltModifier);
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("A footnote of a few words."));
    QTest::keyClick(&desk, Qt::Key_R, Qt::ControlModifier | Qt::AltModifier);
    QVERIFY(desk.notes().value(0).isResolved);
    QCOMPARE(desk.notes()[0].contentText(*desk.editor()->document()),
             QStringLiteral("A footnote of a few words."));
    QVERIFY(Desk::body(desk.cards().value(0))->isVisible()); // it is the active one
    desk.select(12, 12);
    QVERIFY(!Desk::body(desk.cards().value(0))->isVisible());
    QVERIFY(desk.cards()[0]->height() < 30);
    QVERIFY(desk.save(path));
    Desk other;
    QVERIFY(other.open(path));
    QVERIFY(other.notes().value(0).isResolved);
    other.editor()->filter()->setShowsResolved(false);
    QVERIFY(other.cards().isEmpty());
    QTest::keyClick(desk.editor(), Qt::Key_Z, Qt::ControlModifier);
    QVERIFY(!desk.notes()[0].isResolved);
    QVERIFY(Desk::body(desk.cards().value(0))->isVisible());
}

/*! The mouse drags a word behind another one, as a hand would. */
void TestDeskNotes::draggedTextTakesItsNoteAlong()
{
    if (QGuiApplication::platformName() == QLatin1String("offscreen"))
        QSKIP("no mouse is there to drag");
    Desk desk(QStringLiteral("One two three."));
    desk.select(4, 8);
    MVRTextDoc::setComment(desk.editor()->textCursor(), QStringLiteral("A note."), false);
    QWindow *window = desk.windowHandle();
    const auto at = [&desk](int position) {
        const QRect place = desk.editor()->cursorRect(
            MVRTextRange(position, position).toTextCursor(desk.editor()->document()));
        return desk.editor()->viewport()->mapTo(&desk, place.center());
    };
    const QPoint from = at(6);
    const QPoint to = at(14);
    // While it drags Qt has a loop of its own, into which these come.
    QTimer::singleShot(300, window, [=] { QTest::mouseMove(window, to); });
    QTimer::singleShot(600, window, [=] { QTest::mouseMove(window, to + QPoint(1, 0)); });
    QTimer::singleShot(900, window, [=] {
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, to + QPoint(1, 0));
    });
    QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, from);
    QTest::qWait(50);
    QTest::mouseMove(window, from + QPoint(QApplication::startDragDistance() + 5, 0));
    QTest::qWait(1500);
    QCOMPARE(desk.text(), QStringLiteral("One three.two "));
    QCOMPARE(desk.notes().size(), 1);
    QCOMPARE(desk.notes()[0].range, MVRTextRange(10, 14));
    desk.editor()->undo();
    QCOMPARE(desk.text(), QStringLiteral("One two three."));
    QCOMPARE(desk.notes().value(0).range, MVRTextRange(4, 8));
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QTemporaryDir settings;
    setUp(settings.path());
    TestDeskNotes test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_desknotes.moc"
