// SPDX-License-Identifier: MIT
// What editors are made of: counts, filters, elements, edits of notes, copies for after a crash.
#include <core/MVRTextRtf.h>
#include <core/STextDoc.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <finaldraft/MVRScreenplayElements.h>
#include <text/MVRNoteEdits.h>
#include <text/MVRNoteHighlighter.h>
#include <text/MVRNotesFilter.h>
#include <text/MVRRecovery.h>
#include <text/MVRTextDoc.h>
#include <text/MVRWordCounter.h>

#include <QMimeData>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QtTest>

class TestEditing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void wordsFollowEdits();
    void filterChoosesNotes();
    void resolvedNotesStay();
    void notesAreMadeOfWords();
    void footnotesGoToTheEnd();
    void elementsFollowTheKeys();
    void elementsKeepWhatIsTheirs();
    void notesGoOverTheClipboard();
    void copiesOutliveTheirPrograms();
};

namespace {

QTextCursor at(QTextDocument &document, int start, int end)
{
    return MVRTextRange(start, end).toTextCursor(&document);
}

void attach(QTextDocument &document, int start, int end, const QString &author, const QColor &color)
{
    MVRTextCommentLink link;
    link.color = color;
    link.cdata = MVRTextRtf::textToRtf(author, nullptr);
    MVRTextDoc::setComment(at(document, start, end), link, author, QDateTime());
}

MVRTextNote noteOf(const QTextDocument &document, int number)
{
    return MVRTextDoc::notes(&document).value(number);
}

} // namespace

void TestEditing::wordsFollowEdits()
{
    QTextDocument document(QStringLiteral("one two\nthree four\nfive"));
    const MVRWordCounter counter(&document);
    QCOMPARE(counter.words().all, 5);
    MVRTextDoc::setInlineFootnoteAnnotation(at(document, 4, 7), true, true);
    QCOMPARE(counter.words().outsideNotes, 4);
    QCOMPARE(MVRWordCounter::words(at(document, 4, 21)), 4);
    QCOMPARE(MVRWordCounter::words(QTextCursor(&document)), 0);
    QRandomGenerator random(7);
    for (int step = 0; step < 200; ++step) {
        const int start = random.bounded(document.characterCount());
        QTextCursor cursor = at(document, start, start + random.bounded(9));
        switch (random.bounded(4)) {
        case 0:
            cursor.insertText(QStringLiteral("a b\nc"));
            break;
        case 1:
            cursor.removeSelectedText();
            break;
        case 2:
            MVRTextDoc::setInlineFootnoteAnnotation(cursor, true, random.bounded(2));
            break;
        default:
            document.undo();
        }
        QCOMPARE(counter.words().all, STextDoc::wordCountTextDocument(document));
    }
    document.clear();
    QCOMPARE(counter.words().outsideNotes, 0);
    const MVRWordCounter nothing(nullptr);
    QCOMPARE(nothing.words().all, 0);
}

void TestEditing::filterChoosesNotes()
{
    QTextDocument document(QStringLiteral("One two three four."));
    attach(document, 0, 3, QStringLiteral("Bob"), Qt::red);
    attach(document, 4, 7, QStringLiteral("Ada"), Qt::blue);
    MVRTextDoc::setComment(at(document, 8, 13), QStringLiteral("f"), true);
    MVRNotesModel notes;
    notes.setDocument(&document);
    MVRNotesFilter filter(&notes);
    QSignalSpy changes(&filter, &MVRNotesFilter::changed);
    QCOMPARE(filter.values(MVRNotesModel::AuthorColumn),
             QStringList({QStringLiteral("Ada"), QStringLiteral("Bob")}));
    QCOMPARE(filter.firstFrom(4), 1);
    QCOMPARE(filter.firstFrom(9), 3);
    filter.setWanted(MVRNotesModel::AuthorColumn, QStringLiteral("Ada"));
    QCOMPARE(filter.rowCount(), 1);
    QCOMPARE(filter.note(0).range, MVRTextRange(4, 7));
    filter.setWanted(MVRNotesModel::ColorColumn, QStringLiteral("#ff0000"));
    QCOMPARE(filter.rowCount(), 0);
    filter.setWanted(MVRNotesModel::AuthorColumn, QString());
    QCOMPARE(filter.note(0).author, QStringLiteral("Bob"));
    filter.setWanted(MVRNotesModel::ColorColumn, QString());
    filter.setShowsResolved(false);
    QCOMPARE(filter.rowCount(), 3);
    QCOMPARE(changes.count(), 5);

    // A note that is resolved goes as soon as it is, and comes back with the undo step.
    MVRNoteEdits::setResolved(&document, noteOf(document, 0), true);
    QCOMPARE(filter.rowCount(), 2);
    QCOMPARE(filter.note(0).author, QStringLiteral("Ada"));
    QVERIFY(notes.index(0, 0).data(MVRNotesModel::ResolvedRole).toBool());
    document.undo();
    QCOMPARE(filter.rowCount(), 3);
    QCOMPARE(filter.note(3).range, MVRTextRange());

    // Notes are found again where they stand by now; other ones are not.
    const MVRTextNote ada = notes.note(1);
    QTextCursor(&document).insertText(QStringLiteral("So: "));
    QCOMPARE(notes.rowOf(ada), 1);
    at(document, 8, 11).removeSelectedText();
    QCOMPARE(notes.rowOf(ada), -1);
}

void TestEditing::resolvedNotesStay()
{
    QTextDocument document(QStringLiteral("One two three."));
    attach(document, 4, 7, QStringLiteral("Ada"), Qt::red);
    const MVRNoteHighlighter tints(&document);
    const auto tinted = [&document] { return document.begin().layout()->formats().size(); };
    QCOMPARE(tinted(), 1);
    MVRNoteEdits::setResolved(&document, noteOf(document, 0), true);
    QVERIFY(noteOf(document, 0).isResolved);
    QCOMPARE(tinted(), 0);

    MVRNoteEdits::setColor(&document, noteOf(document, 0), Qt::blue);
    MVRNoteEdits::setContent(&document, noteOf(document, 0),
                             MVRTextRtf::textToRtf(QStringLiteral("Done."), nullptr));
    QVERIFY(noteOf(document, 0).isResolved);
    QCOMPARE(noteOf(document, 0).color, QColor(Qt::blue));
    QCOMPARE(noteOf(document, 0).author, QStringLiteral("Ada"));
    QTextDocument read;
    QVERIFY(MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &read));
    QVERIFY(noteOf(read, 0).isResolved);
    QCOMPARE(noteOf(read, 0).contentText(read), QStringLiteral("Done."));

    // Who writes another note there has one that is open.
    attach(document, 4, 7, QStringLiteral("Bob"), Qt::red);
    QVERIFY(!noteOf(document, 0).isResolved);
    MVRNoteEdits::setResolved(&document, noteOf(document, 0), true);
    MVRNoteEdits::remove(&document, noteOf(document, 0));
    QVERIFY(MVRTextDoc::notes(&document).isEmpty());
    QVERIFY(!at(document, 4, 5).charFormat().hasProperty(MVRTextFormat::CommentResolvedProperty));
    document.undo();
    QVERIFY(noteOf(document, 0).isResolved);
    document.undo();
    QVERIFY(!noteOf(document, 0).isResolved);
    QCOMPARE(noteOf(document, 0).author, QStringLiteral("Bob"));
}

void TestEditing::notesAreMadeOfWords()
{
    QTextDocument document(QStringLiteral("One two  "));
    QTextCursor cursor = at(document, 9, 9);
    QCOMPARE(MVRNoteEdits::add(cursor, MVRTextNote::Comment, QStringLiteral("Ada")),
             MVRTextRange(4, 7));
    QVERIFY(noteOf(document, 0).date.isValid());
    QCOMPARE(MVRNoteEdits::add(at(document, 0, 3), MVRTextNote::InlineFootnote, QString()),
             MVRTextRange(0, 3));
    QCOMPARE(noteOf(document, 0).kind, MVRTextNote::InlineFootnote);
    document.undo();
    QCOMPARE(MVRTextDoc::notes(&document).size(), 1);
    document.setPlainText(QStringLiteral(" ... "));
    QCOMPARE(MVRNoteEdits::add(at(document, 2, 2), MVRTextNote::Footnote, QString()),
             MVRTextRange());
    QVERIFY(!document.isUndoAvailable());
    QCOMPARE(MVRNoteEdits::add(QTextCursor(), MVRTextNote::Footnote, QString()), MVRTextRange());
    MVRNoteEdits::moveToText(nullptr, QTextCursor());
}

void TestEditing::footnotesGoToTheEnd()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("One two three."));
    MVRNoteEdits::footnotesToEndNotes(&document);
    QVERIFY(!document.isUndoAvailable());
    QCOMPARE(document.blockCount(), 1);

    MVRTextDoc::setInlineFootnoteAnnotation(at(document, 8, 13), true, true);
    MVRTextCommentLink link;
    link.isFootnote = true;
    link.cdata = MVRTextRtf::textToRtf(QStringLiteral("First\nsecond"), nullptr);
    MVRTextDoc::setComment(at(document, 0, 3), link);
    MVRNoteEdits::footnotesToEndNotes(&document);
    QCOMPARE(document.toPlainText(), QStringLiteral("One1 two 2.\n1. First\nsecond\n2. three"));
    QVERIFY(MVRTextDoc::notes(&document).isEmpty());
    document.undo();
    QCOMPARE(document.toPlainText(), QStringLiteral("One two three."));
    QCOMPARE(MVRTextDoc::notes(&document).size(), 2);
}

void TestEditing::elementsFollowTheKeys()
{
    QTextDocument document;
    const MVRScreenplayElements elements {{}};
    QTextCursor cursor(&document);
    const auto element = [&cursor] { return MVRScreenplayElements::elementOf(cursor.block()); };
    QCOMPARE(elements.names().mid(0, 3),
             QStringList({QStringLiteral("General"), QStringLiteral("Scene Heading"),
                          QStringLiteral("Action")}));
    elements.cycle(cursor, 1);
    QVERIFY(element().isEmpty());
    QVERIFY(!elements.startNext(&cursor)); // a text stays a text
    elements.apply(cursor, QStringLiteral("General"));
    elements.cycle(cursor, -1);
    QCOMPARE(element(), elements.names().last());
    elements.cycle(cursor, 2);
    QCOMPARE(element(), QStringLiteral("Scene Heading"));
    QVERIFY(MVRScreenplayElements::isScene(cursor.block()));
    document.undo();
    QCOMPARE(element(), elements.names().last());
    document.redo();
    cursor.insertText(QStringLiteral("INT. HOUSE"));
    cursor.setPosition(3);
    QVERIFY(!elements.startNext(&cursor)); // a paragraph is split as everywhere
    cursor.movePosition(QTextCursor::End);
    QVERIFY(elements.startNext(&cursor));
    QCOMPARE(element(), QStringLiteral("Action"));
    QVERIFY(!elements.startNext(nullptr));
    elements.apply(cursor, QStringLiteral("Dialogue"));
    QCOMPARE(cursor.blockFormat().doubleProperty(MVRTextFormat::BlockLeftIndentProperty),
             1.5 * 72); // beside a margin of an inch
    QCOMPARE(elements.shortcut(QStringLiteral("Cast List")), QStringLiteral("8"));
    QCOMPARE(MVRScreenplayElements().names(), QStringList());
}

void TestEditing::elementsKeepWhatIsTheirs()
{
    MVRFinalDraftFile file;
    QVERIFY(file.load(QStringLiteral(MVR_SOURCE_DIR "/examples/screenplay.fdx")));
    QTextDocument document;
    QVERIFY(file.read(&document));
    const MVRScreenplayElements elements(file.elementSettings());
    const QString own = QStringLiteral("Montage Beat"); // which only this file has
    QVERIFY(elements.names().contains(own));
    const MVRTextNote note = noteOf(document, 0);
    QTextCursor cursor = note.range.toTextCursor(&document);
    const QVariant source
        = cursor.blockFormat().property(MVRFinalDraftFile::SourceParagraphProperty);
    QVERIFY(source.isValid());
    elements.apply(cursor, own);
    QCOMPARE(MVRScreenplayElements::elementOf(cursor.block()), own);
    QCOMPARE(cursor.blockFormat().property(MVRFinalDraftFile::SourceParagraphProperty), source);
    QCOMPARE(noteOf(document, 0).range, note.range);
    QCOMPARE(noteOf(document, 0).cdata, note.cdata);
    elements.apply(cursor, QStringLiteral("No such element"));
    QCOMPARE(MVRScreenplayElements::elementOf(cursor.block()), own);
}

void TestEditing::notesGoOverTheClipboard()
{
    QTextDocument document(QStringLiteral("One two three."));
    attach(document, 4, 7, QStringLiteral("Ada"), Qt::red);
    MVRTextDoc::setInlineFootnoteAnnotation(at(document, 8, 13), false, true);
    QMimeData data;
    MVRTextDoc::copyMimeData(&data, at(document, 5, 14));
    QTextCursor cursor = at(document, 0, 3);
    QVERIFY(MVRTextDoc::pasteMimeData(&data, cursor));
    QCOMPARE(document.toPlainText(), QStringLiteral("wo three. two three."));
    QCOMPARE(cursor.position(), 9);
    QCOMPARE(MVRTextDoc::notes(&document).size(), 4);
    QCOMPARE(noteOf(document, 0).range, MVRTextRange(0, 2));
    QCOMPARE(noteOf(document, 1).kind, MVRTextNote::InlineAnnotation);
    document.undo();
    QCOMPARE(document.toPlainText(), QStringLiteral("One two three."));

    QMimeData plain;
    plain.setText(QStringLiteral("plain"));
    QVERIFY(!MVRTextDoc::pasteMimeData(&plain, cursor));
    MVRTextDoc::copyMimeData(&plain, QTextCursor(&document));
    QVERIFY(!plain.hasFormat(QStringLiteral("text/rtf")));
}

void TestEditing::copiesOutliveTheirPrograms()
{
    QTextDocument document(QStringLiteral("Typed."));
    const auto writer = [&document]() -> MVRRecovery::Writer {
        const auto copy = MVRRecovery::detachedCopy(document);
        return [copy] { return MVRTextDoc::toRtf(copy.get()); };
    };
    auto recovery = std::make_unique<MVRRecovery>(writer);
    const QString original = QStringLiteral("/a folder/Äpfel.rtf");
    recovery->noteEdit(original, QStringLiteral("rtf"));
    recovery->write();
    recovery->wait();
    QVERIFY(MVRRecovery::leftCopies().isEmpty()); // it is in use
    recovery.reset();
    QVector<MVRRecovery::Copy> left = MVRRecovery::leftCopies();
    QCOMPARE(left.size(), 1);
    QCOMPARE(left[0].original, original);
    QFile file(left[0].file);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QTextDocument read;
    QVERIFY(MVRTextDoc::fromRtf(file.readAll(), &read));
    QCOMPARE(read.toPlainText(), QStringLiteral("Typed."));
    MVRRecovery::remove(left[0]);
    QVERIFY(MVRRecovery::leftCopies().isEmpty());

    // What is saved needs none; and nothing was edited since.
    recovery = std::make_unique<MVRRecovery>(writer);
    recovery->noteEdit(QString(), QStringLiteral("rtf"));
    recovery->write();
    recovery->drop();
    recovery->write();
    recovery.reset();
    QVERIFY(MVRRecovery::leftCopies().isEmpty());

    // It writes by itself when the writer pauses; a copy that fails leaves the one before.
    bool fails = false;
    recovery = std::make_unique<MVRRecovery>([&]() -> MVRRecovery::Writer {
        return fails ? MVRRecovery::Writer([] { return QByteArray(); }) : writer();
    });
    recovery->noteEdit(QString(), QStringLiteral("rtf"));
    QTest::qWait(1700);
    fails = true;
    recovery->noteEdit(QString(), QStringLiteral("rtf"));
    recovery->write();
    recovery.reset();
    left = MVRRecovery::leftCopies();
    QCOMPARE(left.size(), 1);
    QVERIFY(QFileInfo(left[0].file).size() > 0);

    // A record that somebody changed does not have other files offered, or deleted.
    QTemporaryFile other;
    QVERIFY(other.open());
    QFile record(left[0].record);
    QVERIFY(record.open(QIODevice::WriteOnly));
    record.write(other.fileName().toUtf8());
    record.close();
    MVRRecovery::remove(MVRRecovery::leftCopies().value(0));
    QVERIFY(other.exists());
    QVERIFY(MVRRecovery::leftCopies().isEmpty());
    MVRRecovery::remove(left[0]);

    MVRRecovery none(nullptr);
    none.noteEdit(QString(), QStringLiteral("rtf"));
    none.write();
    none.wait();
    QVERIFY(MVRRecovery::leftCopies().isEmpty());
}

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tst_editing"));
    const QTemporaryDir data; // where no other run of the test leaves copies
    qputenv("XDG_DATA_HOME", data.path().toLocal8Bit());
    TestEditing test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_editing.moc"
