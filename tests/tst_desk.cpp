// SPDX-License-Identifier: MIT
// Drives a real window of the desk with keys and mouse. As a child of itself it is the program that
// crashes: "tst_desk --crash FILE" types into a file and waits to be killed.
#include "DeskWindow.h"
#include "Editor.h"

#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>
#include <core/STextDoc.h>
#include <pages/MVRScreenplayFace.h>
#include <text/MVRNotesFilter.h>
#include <text/MVRTextDoc.h>
#include <widgets/MVRFindBar.h>
#include <widgets/MVRNoteMargin.h>
#include <widgets/NoteCard_p.h>

#include <QAbstractEventDispatcher>
#include <QAbstractItemView>
#include <QAbstractTextDocumentLayout>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProcess>
#include <QRandomGenerator>
#include <QScrollBar>
#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QtTest>

#include <algorithm>
#include <ctime>

namespace {

QString exampleScreenplay()
{
    return QStringLiteral(MVR_SOURCE_DIR "/examples/screenplay.fdx");
}

/*! A window with a text, in sight and with the keyboard. */
class Desk : public DeskWindow
{
public:
    explicit Desk(const QString &text = QString())
    {
        resize(1200, 800);
        show();
        activateWindow(); // no window manager does it
        if (!QTest::qWaitForWindowActive(this))
            qWarning("the window is not active");
        editor()->setFocus();
        editor()->insertPlainText(text);
        editor()->moveCursor(QTextCursor::Start);
    }
    ~Desk() override { editor()->document()->setModified(false); }

    void run(const char *command)
    {
        auto *action = findChild<QAction *>(QString::fromUtf8(command));
        QVERIFY2(action, command);
        action->trigger();
    }
    void select(int start, int end)
    {
        QTextCursor cursor = editor()->textCursor();
        cursor.setPosition(start);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        editor()->setTextCursor(cursor);
    }
    QVector<NoteCard *> cards()
    {
        editor()->margin()->follow();
        return editor()->margin()->cards();
    }
    MVRTextNotes notes() const { return MVRTextDoc::notes(editor()->document()); }
    QString text() const { return editor()->toPlainText(); }
    static QTextEdit *body(const NoteCard *card) { return card->findChild<QTextEdit *>(); }
};

/*! Whether a copy for after a crash holds \a text. */
bool isCopied(const char *text)
{
    QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    folder.cd(QStringLiteral("recovery"));
    const QFileInfoList copies = folder.entryInfoList({QStringLiteral("*.rtf")}, QDir::Files);
    return std::any_of(copies.begin(), copies.end(), [text](const QFileInfo &copy) {
        QFile file(copy.filePath());
        return file.open(QIODevice::ReadOnly) && file.readAll().contains(text);
    });
}

/*! Milliseconds that this thread has worked. */
double threadTime()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/*! Clicks a button of the next message box that appears. */
void answerNext(QMessageBox::StandardButton answer)
{
    auto *timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, answer] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            timer->deleteLater();
            box->button(answer)->click();
        }
    });
    timer->start(10);
}

/*! A text of so many words in paragraphs of a hundred, a note at every twentieth word. */
void fill(QTextDocument *document, int words)
{
    document->setUndoRedoEnabled(false);
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    const QByteArray content = MVRTextRtf::textToRtf(QStringLiteral("A short note."), nullptr);
    for (int word = 0; word < words; ++word) {
        if (word > 0 && word % 100 == 0)
            cursor.insertBlock(QTextBlockFormat(), QTextCharFormat());
        QTextCharFormat format;
        if (word % 20 == 10) {
            format.setProperty(MVRTextFormat::CommentLinkProperty, true);
            format.setProperty(MVRTextFormat::InspectorCommentProperty, true);
            format.setProperty(MVRTextFormat::CommentCDataProperty, content);
            format.setProperty(MVRTextFormat::CommentColorProperty, QColor(Qt::yellow));
            format.setAnchorHref(QStringLiteral("Comment:%1").arg(word));
        }
        cursor.insertText(QStringLiteral("lorem"), format);
        cursor.insertText(QStringLiteral(" "), QTextCharFormat());
    }
    cursor.endEditBlock();
    document->setUndoRedoEnabled(true);
}

} // namespace

class TestDesk : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void notesAreWrittenInTheMargin();
    void cardsStandBesideTheirLines();
    void cardsMakeRoomForTheActiveOne_data();
    void cardsMakeRoomForTheActiveOne();
    void eachEditOfNotesIsOneStep_data();
    void eachEditOfNotesIsOneStep();
    void filesComeBack_data();
    void filesComeBack();
    void screenplaysStayThemselves();
    void keysCycleElements();
    void copiesCarryNotes();
    void filtersChooseNotes();
    void findsAndReplaces();
    void crashesLoseNothing();
    void placesAreRemembered();
    void everythingHasAName();
    void typesFast();
    void screenshots();

private:
    std::unique_ptr<QTemporaryDir> m_folder;
    QTimer m_watch; // closes boxes that no test expects
};

void TestDesk::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_watch.callOnTimeout(this, [] {
        if (auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget())) {
            qWarning("nobody answers: %s", qPrintable(box->text()));
            box->reject();
        }
    });
    m_watch.start(4000);
    QSettings().clear();
    QSettings().setValue(QStringLiteral("author"), QStringLiteral("Ada"));
}

void TestDesk::cleanup()
{
    QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).removeRecursively();
    m_folder.reset();
}

void TestDesk::notesAreWrittenInTheMargin()
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

void TestDesk::cardsStandBesideTheirLines()
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
        if (bottom < top)
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

void TestDesk::cardsMakeRoomForTheActiveOne_data()
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
}

void TestDesk::cardsMakeRoomForTheActiveOne()
{
    QFETCH(const QVector<int>, wanted);
    QFETCH(const QVector<int>, heights);
    QFETCH(const int, active);
    QFETCH(const QVector<int>, tops);
    QCOMPARE(MVRNoteMargin::tops(wanted, heights, active, 5), tops);
}

void TestDesk::eachEditOfNotesIsOneStep_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("after"); // the text, and the kinds of its notes
    QTest::newRow("to the text") << QStringLiteral("Move into the text") << 8
                                 << QStringLiteral("One two a three four five f. 2233");
    QTest::newRow("to the margin")
        << QStringLiteral("Move into the margin") << 8
        << QStringLiteral("One two (Linked Comment) (Linked Footnote) five. 0011");
    QTest::newRow("remove") << QStringLiteral("Remove") << 5
                            << QStringLiteral("One two three four five. 231");
    QTest::newRow("remove an inline note")
        << QStringLiteral("Remove") << 10 << QStringLiteral("One two  four five. 031");
    QTest::newRow("end notes") << QStringLiteral("Footnotes to end notes") << 0
                               << QStringLiteral("One two three 1 five2.\n1. four\n2. f 02");
}

void TestDesk::eachEditOfNotesIsOneStep()
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
            kinds += QString::number(note.kind);
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

void TestDesk::filesComeBack_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QString>("kinds"); // of the notes in the file
    QTest::newRow("RTF") << QStringLiteral("rtf") << QStringLiteral("02");
    QTest::newRow("Markdown") << QStringLiteral("md") << QStringLiteral("00");
    QTest::newRow("HTML, all in the text") << QStringLiteral("html") << QStringLiteral("22");
    QTest::newRow("a new screenplay") << QStringLiteral("fdx") << QStringLiteral("00");
}

void TestDesk::filesComeBack()
{
    QFETCH(const QString, suffix);
    const QString path = m_folder->filePath(QLatin1String("text.") + suffix);
    Desk desk(QStringLiteral("One two three."));
    QTextDocument *document = desk.editor()->document();
    MVRTextDoc::setComment(MVRTextRange(0, 3).toTextCursor(document), QStringLiteral("A note."),
                           false);
    MVRTextDoc::setInlineFootnoteAnnotation(MVRTextRange(4, 7).toTextCursor(document), false, true);
    QVERIFY(desk.isWindowModified());
    QVERIFY(desk.save(path));
    QVERIFY(!desk.isWindowModified());

    Desk other;
    QVERIFY(other.open(path));
    QString kinds;
    QStringList contents;
    for (const MVRTextNote &note : other.notes()) {
        kinds += QString::number(note.kind);
        contents += note.contentText(*other.editor()->document()).trimmed();
    }
    QTEST(kinds, "kinds");
    QCOMPARE(contents, QStringList({QStringLiteral("A note."), QStringLiteral("two")}));
    QVERIFY(other.text().contains(QStringLiteral("three.")));
}

void TestDesk::screenplaysStayThemselves()
{
    const QString path = m_folder->filePath(QStringLiteral("script.fdx"));
    QVERIFY(QFile::copy(exampleScreenplay(), path));
    const auto bytes = [&path] {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QByteArray before = bytes();
    Desk desk;
    QVERIFY(desk.open(path));
    QVERIFY(desk.save(path));
    QCOMPARE(bytes(), before); // no view, tint or scale gets into the file

    desk.editor()->moveCursor(QTextCursor::End);
    QTest::keyClicks(desk.editor(), QStringLiteral(" Indeed."));
    QVERIFY(desk.save(path));
    QVERIFY(bytes().contains(" Indeed.</Text>"));
    QCOMPARE(bytes().size(), before.size() + 8);
    QVERIFY(desk.findChild<QDockWidget *>(QStringLiteral("ScenesDock"))->isVisible());
    QVERIFY(desk.findChild<QAbstractItemView *>(QStringLiteral("Scenes"))->model()->rowCount() > 2);
}

void TestDesk::keysCycleElements()
{
    Desk desk;
    desk.run("New screenplay");
    Editor *editor = desk.editor();
    const auto element
        = [editor] { return MVRScreenplayElements::elementOf(editor->textCursor().block()); };
    QCOMPARE(element(), QStringLiteral("Scene Heading"));
    QTest::keyClicks(editor, QStringLiteral("INT. HOUSE"));
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(element(), QStringLiteral("Action"));
    QTest::keyClick(editor, Qt::Key_Tab);
    QCOMPARE(element(), QStringLiteral("Character"));
    QTest::keyClicks(editor, QStringLiteral("ADA"));
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(element(), QStringLiteral("Dialogue"));
    QTest::keyClick(editor, Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(element(), QStringLiteral("Parenthetical"));
    editor->undo();
    QCOMPARE(element(), QStringLiteral("Dialogue"));
    // What the file says of the element is what is seen: three inches and a half, at any screen.
    const QTextBlockFormat shown = editor->textCursor().block().blockFormat();
    const double scale = editor->logicalDpiY() / 72.0;
    QCOMPARE(shown.leftMargin(), MVRToolkit::stockBlockFormat(shown, 468.0).leftMargin() * scale);

    // The file's own settings, not the standard ones, say what follows.
    QVERIFY(desk.open(exampleScreenplay()));
    editor->moveCursor(QTextCursor::End);
    editor->setElement(QStringLiteral("Montage Beat"));
    QTest::keyClick(editor, Qt::Key_Return);
    QCOMPARE(element(), QStringLiteral("Montage Beat"));
}

void TestDesk::copiesCarryNotes()
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

void TestDesk::filtersChooseNotes()
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

void TestDesk::findsAndReplaces()
{
    Desk desk(QStringLiteral("cat Cot cut"));
    QTest::keyClick(desk.editor(), Qt::Key_F, Qt::ControlModifier);
    const auto fields = desk.findBar()->findChildren<QLineEdit *>();
    const auto boxes = desk.findBar()->findChildren<QCheckBox *>();
    QTest::keyClicks(fields[0], QStringLiteral("c[ou]t"));
    QTest::keyClick(fields[0], Qt::Key_Return);
    QVERIFY(!desk.editor()->textCursor().hasSelection());
    QTest::mouseClick(boxes[0], Qt::LeftButton, Qt::NoModifier, QPoint(8, boxes[0]->height() / 2));
    QTest::keyClick(fields[0], Qt::Key_Return);
    QCOMPARE(desk.editor()->textCursor().selectedText(), QStringLiteral("Cot"));
    QTest::keyClicks(fields[1], QStringLiteral("dog"));
    QTest::keyClick(fields[1], Qt::Key_Return);
    QCOMPARE(desk.text(), QStringLiteral("cat dog cut"));
    QCOMPARE(desk.editor()->textCursor().selectedText(), QStringLiteral("cut"));
    QTest::keyClick(fields[0], Qt::Key_Escape);
    QVERIFY(!desk.findBar()->isVisible());
}

void TestDesk::crashesLoseNothing()
{
    const QString path = m_folder->filePath(QStringLiteral("text.rtf"));
    {
        Desk desk(QStringLiteral("Before."));
        QVERIFY(desk.save(path));
    }
    QProcess program;
    program.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--crash"), path});
    QVERIFY2(program.waitForReadyRead(60000), program.readAllStandardError().constData());
    {
        Desk other; // while it runs, its copy is its own
        other.offerRecovery();
        QVERIFY(other.text().isEmpty());
    }
    program.kill();
    QVERIFY(program.waitForFinished());

    Desk desk;
    answerNext(QMessageBox::Yes);
    desk.offerRecovery();
    QCOMPARE(desk.text(), QStringLiteral("Typed. Before."));
    QVERIFY(desk.isWindowModified());
    QVERIFY(desk.save(path)); // which is the file that it was
    Desk later;
    later.offerRecovery(); // nothing is left to ask about
    QVERIFY(later.open(path));
    QCOMPARE(later.text(), QStringLiteral("Typed. Before."));
}

void TestDesk::placesAreRemembered()
{
    const QString path = m_folder->filePath(QStringLiteral("text.rtf"));
    {
        Desk desk(QStringLiteral("One two three."));
        QVERIFY(desk.save(path));
        QVERIFY(desk.open(path));
        desk.select(8, 8);
        desk.resize(900, 700);
        desk.close();
    }
    DeskWindow desk;
    QCOMPARE(desk.size(), QSize(900, 700));
    QVERIFY(desk.open(path));
    QCOMPARE(desk.editor()->textCursor().position(), 8);
}

void TestDesk::everythingHasAName()
{
    Desk desk;
    QVERIFY(desk.open(exampleScreenplay()));
    desk.run("Find and replace…");
    desk.cards();
    const auto widgets = desk.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!widget->isVisible() || !(widget->focusPolicy() & Qt::TabFocus))
            continue;
        const auto *button = qobject_cast<const QAbstractButton *>(widget);
        QVERIFY2(
            !widget->accessibleName().isEmpty() || (button && !button->text().isEmpty())
                || qobject_cast<const QScrollBar *>(widget),
            qPrintable(QLatin1String(widget->metaObject()->className()) + widget->objectName()));
    }
    QStringList keys;
    for (const QAction *action : desk.findChildren<QAction *>()) {
        if (!action->shortcut().isEmpty())
            keys += action->shortcut().toString();
    }
    const QStringList all = keys;
    keys.removeDuplicates();
    QCOMPARE(all, keys);
}

/*! Measures keys when MVR_DESK_WORDS says in how long a text; see docs/desk.md. */
void TestDesk::typesFast()
{
    const int words = qEnvironmentVariableIntValue("MVR_DESK_WORDS");
    if (words <= 0)
        QSKIP("MVR_DESK_WORDS is not set");
    QElapsedTimer clock;
    clock.start();
    const QString path = m_folder->filePath(QStringLiteral("long.rtf"));
    {
        QTextDocument document;
        fill(&document, words);
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(MVRTextDoc::toRtf(&document));
    }
    Desk desk;
    clock.restart();
    QVERIFY(desk.open(path));
    QTest::qWait(1);
    qInfo("open: %lld ms", clock.elapsed());
    for (const int percent : {0, 50, 100}) {
        desk.editor()->jumpTo(int(desk.editor()->document()->characterCount() / 100.0 * percent));
        QTest::qWait(words / 150); // Qt lays a long text out while nobody types
        std::vector<double> keys; // ms of this thread, whatever else the machine does
        std::vector<double> times; // ms that pass
        for (int key = 0; key < 300; ++key) {
            clock.restart();
            const double start = threadTime();
            QTest::keyClick(desk.editor(), key % 6 == 5 ? Qt::Key_Space : Qt::Key_E);
            do // until everything that waits is done and shown
                QCoreApplication::sendPostedEvents();
            while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents));
            keys.push_back(threadTime() - start);
            times.push_back(double(clock.nsecsElapsed()) / 1e6);
        }
        std::sort(keys.begin(), keys.end());
        std::sort(times.begin(), times.end());
        qInfo("at %d %%: %.1f ms a key, 99th percentile %.1f, most %.1f; passed %.1f, %.1f",
              percent, keys[150], keys[297], keys[299], times[150], times[297]);
    }
}

/*! Draws the pictures of docs/desk.md into the folder that MVR_DESK_SCREENSHOTS names. */
void TestDesk::screenshots()
{
    const QString folder = qEnvironmentVariable("MVR_DESK_SCREENSHOTS");
    if (folder.isEmpty())
        QSKIP("MVR_DESK_SCREENSHOTS is not set");
    const auto shoot = [&folder](Desk &desk, const char *name) {
        desk.cards();
        QTest::qWait(100);
        const QString path = folder + QLatin1String("/desk-") + QLatin1String(name);
        QVERIFY(desk.grab().save(path + QLatin1String(".png"), "PNG", 0));
    };
    Desk desk;
    desk.resize(1366, 740);
    QVERIFY(desk.open(exampleScreenplay()));
    desk.findChild<QDockWidget *>(QStringLiteral("ScenesDock"))->setFixedWidth(200);
    desk.run("Next note");
    desk.run("Next note");
    desk.editor()->verticalScrollBar()->setValue(desk.editor()->verticalScrollBar()->value() + 160);
    shoot(desk, "screenplay");
    DeskWindow::setDark(true);
    shoot(desk, "dark");
    DeskWindow::setDark(false);

    QVERIFY(desk.open(QStringLiteral(MVR_SOURCE_DIR "/tests/data/desk/essay.rtf")));
    shoot(desk, "text");
    desk.run("Markup codes");
    auto *codes = desk.findChild<QPlainTextEdit *>();
    codes->find(QStringLiteral("{"));
    QTest::qWait(100);
    QVERIFY(codes->grab().save(folder + QLatin1String("/desk-codes.png"), "PNG", 0));
    codes->close();
    desk.run("Next note");
    desk.run("Edit the note");
    shoot(desk, "editing");
    desk.editor()->setFocus();
    desk.findChild<QDockWidget *>(QStringLiteral("NotesDock"))->show();
    desk.run("Find and replace…");
    QTest::keyClicks(desk.findBar()->findChildren<QLineEdit *>()[0], QStringLiteral("lamp"));
    desk.findBar()->find();
    shoot(desk, "list");
}

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("mvrtext-test"));
    QCoreApplication::setApplicationName(QStringLiteral("tst_desk"));
    QTemporaryDir settings;
    const QStringList arguments = QCoreApplication::arguments();
    const bool isToCrash = arguments.value(1) == QLatin1String("--crash");
    if (!isToCrash) // which shares the folder of the one that started it, and no other run does
        qputenv("XDG_DATA_HOME", settings.filePath(QStringLiteral("data")).toLocal8Bit());
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    QFont::insertSubstitution(QStringLiteral("Courier Final Draft"), MVRScreenplayFace::family());
    if (isToCrash) {
        Desk desk;
        desk.open(arguments.value(2));
        QTest::keyClicks(desk.editor(), QStringLiteral("Typed. "));
        while (!isCopied("Typed. ")) // the writer pauses
            QTest::qWait(100);
        puts("typed");
        fflush(stdout);
        QTest::qWait(600000);
        return 1;
    }
    TestDesk test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_desk.moc"
