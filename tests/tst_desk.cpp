// SPDX-License-Identifier: MIT
// Drives a real window of the desk with keys and mouse. As a child of itself it is the program that
// crashes: "tst_desk --crash FILE" types into a file and waits to be killed.
#include "DeskTest.h"

#include <core/MVRToolkit.h>
#include <core/STextDoc.h>

#include <QAbstractEventDispatcher>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QClipboard>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProcess>
#include <QScrollBar>
#include <QTranslator>

#include <algorithm>
#include <ctime>

namespace {

/*! Milliseconds that this thread has worked. */
double threadTime()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

/*! Has keys typed and all done that follows; says what one costs. */
void measureKeys(QWidget *widget, const char *what)
{
    constexpr int count = 300;
    std::vector<double> keys; // ms of this thread, whatever else the machine does
    std::vector<double> times; // ms that pass
    QElapsedTimer clock;
    for (int key = 0; key < count; ++key) {
        clock.start();
        const double start = threadTime();
        QTest::keyClick(widget, key % 6 == 5 ? Qt::Key_Space : Qt::Key_E);
        do // until everything that waits is done and shown
            QCoreApplication::sendPostedEvents();
        while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents));
        keys.push_back(threadTime() - start);
        times.push_back(double(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(keys.begin(), keys.end());
    std::sort(times.begin(), times.end());
    qInfo("%s: %.1f ms a key, 99th percentile %.1f, most %.1f; passed %.1f, %.1f", what, keys[150],
          keys[297], keys[299], times[150], times[297]);
}

/*! Whether there is a copy for after a crash. */
bool isCopied()
{
    const QDir folder(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
                      + QLatin1String("/recovery"));
    return !folder.entryList({QStringLiteral("*.copy")}).isEmpty();
}

/*! Letters that two entries of a menu share, which no key would tell apart. */
QStringList sharedLetters(const QList<QAction *> &actions)
{
    QStringList letters;
    for (const QAction *action : actions) {
        const int mark = action->text().indexOf(QLatin1Char('&'));
        if (mark >= 0)
            letters += action->text().mid(mark + 1, 1).toLower();
    }
    QStringList once = letters;
    once.removeDuplicates();
    for (const QString &letter : qAsConst(once))
        letters.removeOne(letter);
    return letters;
}

} // namespace

class TestDesk : public DeskTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { DeskTest::init(); }
    void cleanup() { DeskTest::cleanup(); }
    void filesComeBack_data();
    void filesComeBack();
    void screenplaysStayThemselves();
    void keysCycleElements();
    void findsAndReplaces();
    void crashesLoseNothing();
    void placesAreRemembered();
    void everythingHasAName();
    void exportsLeaveTheTextAlone_data();
    void exportsLeaveTheTextAlone();
    void bbCodeHasNoNotes();
    void hostileFilesAreRefused();
    void droppedFilesOpen();
    void pagesAreDarkOrLight();
    void menusSpeakGerman();
    void typesFast();
    void screenshots();
};

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
    const QString path = filePath("text.") + suffix;
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
    const QString path = filePath("script.fdx");
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
    const QString path = filePath("text.rtf");
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
    clickNext(QMessageBox::Yes);
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
    const QString path = filePath("text.rtf");
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

void TestDesk::exportsLeaveTheTextAlone_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<QByteArray>("beginning");
    QTest::newRow("ODT") << QStringLiteral("odt") << QByteArray("PK");
    QTest::newRow("PDF") << QStringLiteral("pdf") << QByteArray("%PDF-1.");
}

void TestDesk::exportsLeaveTheTextAlone()
{
    QFETCH(const QString, suffix);
    QFETCH(const QByteArray, beginning);
    for (const bool isScreenplay : {false, true}) {
        Desk desk(QStringLiteral("One two three."));
        if (isScreenplay) {
            desk.editor()->document()->setModified(false);
            QVERIFY(desk.open(exampleScreenplay()));
        }
        desk.select(4, 7);
        MVRTextDoc::setComment(desk.editor()->textCursor(), QStringLiteral("A note."), true);
        const QString before = desk.text();
        const int notes = desk.notes().size();
        const QString path = filePath("out.") + suffix;
        QVERIFY(desk.exportAs(path));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.size() > 500);
        QVERIFY(file.read(16).startsWith(beginning));
        QCOMPARE(desk.text(), before);
        QCOMPARE(desk.notes().size(), notes);
        QVERIFY(desk.isWindowModified()); // it is not saved by this
        file.close();
        QVERIFY(QFile::remove(path));
    }
}

void TestDesk::bbCodeHasNoNotes()
{
    Desk desk(QStringLiteral("One two three."));
    desk.select(0, 3);
    desk.run("Bold");
    desk.select(4, 7);
    MVRTextDoc::setInlineFootnoteAnnotation(desk.editor()->textCursor(), true, true);
    desk.select(8, 13);
    MVRTextDoc::setComment(desk.editor()->textCursor(), QStringLiteral("A note."), false);
    desk.run("Copy as BBCode");
    QCOMPARE(QApplication::clipboard()->text().trimmed(), QStringLiteral("[b]One[/b]  three."));
    QCOMPARE(desk.notes().size(), 2);
}

void TestDesk::hostileFilesAreRefused()
{
    Desk desk(QStringLiteral("Still here."));
    desk.editor()->document()->setModified(false);
    const QByteArray deep = QByteArray("<div>").repeated(200000) + "x";
    const QPair<const char *, QByteArray> files[] = {{"deep.html", deep},
                                                     {"deep.md", QByteArray("> ").repeated(5000)},
                                                     {"no.rtf", "text"},
                                                     {"no.fdx", "<a>"},
                                                     {"no.xyz", "text"}};
    for (const auto &[name, bytes] : files) {
        QFile file(filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        clickNext(QMessageBox::Ok);
        QVERIFY2(!desk.open(file.fileName()), name);
        QCOMPARE(desk.text(), QStringLiteral("Still here."));
    }
}

void TestDesk::droppedFilesOpen()
{
    const QString path = filePath("text.rtf");
    {
        Desk desk(QStringLiteral("Saved."));
        QVERIFY(desk.save(path));
    }
    Desk desk(QStringLiteral("Typed."));
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    const auto drop = [&data](QWidget *onto) {
        const QPoint place(50, 50);
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(onto, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent event(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(onto, &event);
        QCoreApplication::processEvents();
    };
    clickNext(QMessageBox::Cancel); // what is typed is not saved
    drop(desk.editor()->viewport());
    QCOMPARE(desk.text(), QStringLiteral("Typed."));
    clickNext(QMessageBox::Discard);
    drop(desk.editor()->viewport());
    QCOMPARE(desk.text(), QStringLiteral("Saved."));
    Desk other;
    drop(&other); // beside the text
    QCOMPARE(other.text(), QStringLiteral("Saved."));
}

void TestDesk::pagesAreDarkOrLight()
{
    Desk desk(QStringLiteral("Black by its file, seen on any page."));
    desk.select(0, 5);
    desk.editor()->setTextColor(Qt::black);
    desk.select(36, 36);
    for (const bool isDark : {true, false, true}) {
        DeskWindow::setDark(isDark);
        QTest::qWait(20);
        const QImage page = desk.editor()->viewport()->grab().toImage();
        int lightest = 0;
        int darkest = 255;
        const QRect word
            = desk.editor()->cursorRect(MVRTextRange(0, 0).toTextCursor(desk.editor()->document()));
        for (int x = word.left(); x < word.left() + 40; ++x) {
            for (int y = word.top(); y < word.bottom(); ++y) {
                lightest = qMax(lightest, qGray(page.pixel(x, y)));
                darkest = qMin(darkest, qGray(page.pixel(x, y)));
            }
        }
        QVERIFY2(lightest - darkest > 120, "the word is not seen");
        QCOMPARE(qGray(page.pixel(5, page.height() - 5)) < 100, isDark);
    }
    DeskWindow::setDark(false);
    QVERIFY(desk.save(filePath("text.rtf"))); // whose black is black
    QCOMPARE(MVRTextRange(0, 1).toTextCursor(desk.editor()->document()).charFormat().foreground(),
             QBrush(Qt::black));
}

void TestDesk::menusSpeakGerman()
{
    QTranslator german;
#ifdef MVR_DESK_TRANSLATION
    QVERIFY(german.load(QStringLiteral(MVR_DESK_TRANSLATION)));
#else
    QSKIP("the translation is not built");
#endif
    QStringList texts[2];
    for (const bool isGerman : {false, true}) {
        if (isGerman)
            QCoreApplication::installTranslator(&german);
        Desk desk;
        QCOMPARE(sharedLetters(desk.menuBar()->actions()), QStringList());
        const auto menus = desk.menuBar()->findChildren<QMenu *>();
        for (const QMenu *menu : menus) {
            QVERIFY2(
                sharedLetters(menu->actions()).isEmpty(),
                qPrintable(menu->title() + sharedLetters(menu->actions()).join(QLatin1Char(' '))));
            for (const QAction *action : menu->actions())
                texts[isGerman] += action->text();
        }
    }
    QCoreApplication::removeTranslator(&german);
    QStringList same;
    for (const QString &text : qAsConst(texts[0])) {
        if (!text.isEmpty() && texts[1].contains(text))
            same += text;
    }
    QCOMPARE(same.join(QLatin1Char('|')), QStringLiteral("Orange|F&ormat|E&lement"));
}

/*! Measures keys when MVR_DESK_WORDS says in how long a text; see docs/desk.md. */
void TestDesk::typesFast()
{
    const int words = qEnvironmentVariableIntValue("MVR_DESK_WORDS");
    if (words <= 0)
        QSKIP("MVR_DESK_WORDS is not set");
    const int layoutTime = words / 150; // ms; Qt lays a long text out while nobody types
    QElapsedTimer clock;
    const QString path = filePath("long.rtf");
    QTextDocument document;
    fill(&document, words);
    {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(MVRTextDoc::toRtf(&document));
    }
    QTextEdit bare; // what Qt itself costs
    bare.setDocument(&document);
    bare.setLineWrapMode(QTextEdit::FixedPixelWidth);
    bare.setLineWrapColumnOrWidth(632);
    bare.resize(1200, 800);
    bare.show();
    QTest::qWait(layoutTime);
    measureKeys(&bare, "QTextEdit, first paragraph");
    bare.hide();
    Desk desk;
    clock.start();
    QVERIFY(desk.open(path));
    QTest::qWait(1);
    qInfo("open: %lld ms", clock.elapsed());
    QTest::qWait(layoutTime);
    const QPair<int, const char *> places[] = {{0, "first"}, {50, "middle"}, {100, "last"}};
    for (const auto &[percent, name] : places) {
        desk.editor()->jumpTo(int(desk.editor()->document()->characterCount() / 100.0 * percent));
        QTest::qWait(50);
        measureKeys(desk.editor(), name);
    }
    clock.start();
    QTest::qWait(1); // a copy is due in a second and a half
    double longest = 0;
    while (clock.elapsed() < 4000) {
        const double start = threadTime();
        QCoreApplication::processEvents();
        longest = qMax(longest, threadTime() - start);
    }
    qInfo("the copy for recovery: %.0f ms of this thread", longest);
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
    QTemporaryDir settings;
    const QStringList arguments = QCoreApplication::arguments();
    const bool isToCrash = arguments.value(1) == QLatin1String("--crash");
    setUp(settings.path(), isToCrash); // it leaves its copy to the one that started it
    if (isToCrash) {
        Desk desk;
        desk.open(arguments.value(2));
        QTest::keyClicks(desk.editor(), QStringLiteral("Typed. "));
        while (!isCopied()) // the writer pauses
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
