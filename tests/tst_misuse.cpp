// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <bbcode/MVRBbCodeConverter.h>
#include <core/MVRDomDoc.h>
#include <core/MVRParagraphView.h>
#include <core/MVRTextFinder.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <finaldraft/MVRFinalDraftWriter.h>
#include <finaldraft/MVRScreenplayElements.h>
#include <pages/MVRPagePainter.h>
#include <text/MVRNoteEdits.h>
#include <text/MVRNoteHighlighter.h>
#include <text/MVRNotesFilter.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRRecovery.h>
#include <text/MVRTextDoc.h>
#include <text/MVRWordCounter.h>

#include <QBuffer>
#include <QStandardPaths>
#include <QtTest>

#include <functional>
#include <limits>
#include <memory>

using MarkedText::fill;
using MarkedText::marks;
using MarkedText::select;

/*!
    What classes for hosts make of nothing, of what is gone, of another document's, and of numbers
    that mean nothing. See tst_selections for the operations of MVRTextDoc.
*/
class TestMisuse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void editsNoNotesOfOthers();
    void boundsNotes();
    void outlivesItsModel();
    void countsNoWordsOfOthers();
    void findsNothingInNothing();
    void keepsNoCopyOfNothing();
    void allowsNoOddPictures();
    void movesThroughNoTree();
    void setsUpNoElements();
    void opensNoFile();
    void showsNoParagraphs();
    void saysThatTheDiskIsFull();
    void composesOddPages_data();
    void composesOddPages();
};

namespace {

constexpr int least = std::numeric_limits<int>::min();
constexpr int most = std::numeric_limits<int>::max();

QTextCursor staleCursor()
{
    QTextDocument gone;
    gone.setPlainText(QStringLiteral("some words here"));
    return select(&gone, 2, 9);
}

MVRTextNote note(MVRTextNote::Kind kind, int start, int end)
{
    MVRTextNote made;
    made.kind = kind;
    made.range = MVRTextRange(start, end);
    return made;
}

}

void TestMisuse::editsNoNotesOfOthers()
{
    QTextDocument other(QStringLiteral("words of another one"));
    QTextDocument document;
    fill(&document, QStringLiteral("some words here"), QStringLiteral("....aaaaaa....."));
    document.setUndoRedoEnabled(true);
    const QString before = marks(document);
    for (const QTextCursor &cursor : {staleCursor(), select(&other, 2, 9)}) {
        MVRNoteEdits::moveToText(&document, cursor);
        MVRNoteEdits::moveToMargin(&document, cursor);
        QCOMPARE(marks(document), before);
        QVERIFY(!document.isUndoAvailable());
        MVRNoteEdits::moveToMargin(nullptr, cursor);
        MVRNoteEdits::moveToText(nullptr, cursor);
    }
    for (const MVRTextNote::Kind kind : MVRTextNote::allKinds) {
        for (const QTextCursor &cursor : {QTextCursor(), staleCursor()})
            QVERIFY(MVRNoteEdits::add(cursor, kind, QString()) == MVRTextRange());
    }
}

void TestMisuse::boundsNotes()
{
    QTextDocument document;
    fill(&document, QStringLiteral("some words here"), QStringLiteral("....aaaaaa....."));
    const QString text = document.toPlainText();
    for (QTextDocument *edited : {&document, static_cast<QTextDocument *>(nullptr)}) {
        for (const MVRTextNote::Kind kind : MVRTextNote::allKinds) {
            for (const MVRTextRange &range :
                 {MVRTextRange(most, least), MVRTextRange(-9, -1), MVRTextRange(99, 999)}) {
                const MVRTextNote odd = note(kind, range.start, range.end);
                MVRNoteEdits::setContent(edited, odd, QByteArray("{\\rtf1 x}"));
                MVRNoteEdits::setColor(edited, odd, Qt::red);
                MVRNoteEdits::setResolved(edited, odd, true);
                if (!MVRTextNote::isInline(kind))
                    MVRNoteEdits::remove(edited, odd);
                QVERIFY(odd.text(document).isEmpty() || odd.text(document) == text);
            }
        }
        MVRNoteEdits::trim(edited);
    }
    QCOMPARE(document.toPlainText(), text);
    MVRNoteEdits::enclose(nullptr, QString(), QString());
    MVRNoteEdits::footnotesToEndNotes(nullptr);

    MVRNotesModel model;
    for (QTextDocument *listed : {static_cast<QTextDocument *>(nullptr), &document}) {
        model.setDocument(listed);
        for (const int row : {least, -1, 1, most}) {
            QVERIFY(model.note(row).cdata.isEmpty());
            QVERIFY(!model.data(model.index(row, 0)).isValid());
            QVERIFY(!model.data(model.index(0, row == 1 ? 99 : row)).isValid());
            QVERIFY(!model.headerData(row, Qt::Vertical, Qt::UserRole).isValid());
            model.rowAt(row);
        }
        QCOMPARE(model.rowOf(MVRTextNote()), -1);
    }
    MVRNoteHighlighter none(nullptr);
    none.rehighlight();
    QVERIFY(!none.document());
}

void TestMisuse::outlivesItsModel()
{
    auto document = std::make_unique<QTextDocument>();
    fill(document.get(), QStringLiteral("some words here"), QStringLiteral("....aaaaaa....."));
    auto model = std::make_unique<MVRNotesModel>();
    model->setDocument(document.get());
    MVRNotesFilter filter(model.get());
    QCOMPARE(filter.rowCount(), 1);
    QCOMPARE(filter.firstFrom(least), 0);
    QCOMPARE(filter.firstFrom(most), 1);
    document.reset();
    QCOMPARE(filter.rowCount(), 0);
    QVERIFY(filter.note(0).range == MVRTextRange());
    model.reset();
    MVRNotesFilter empty(nullptr);
    for (MVRNotesFilter *left : {&filter, &empty}) {
        left->setWanted(MVRNotesModel::AuthorColumn, QStringLiteral("nobody"));
        left->setShowsResolved(false);
        QCOMPARE(left->rowCount(), 0);
        QVERIFY(left->values(MVRNotesModel::AuthorColumn).isEmpty());
        QVERIFY(left->note(0).range == MVRTextRange());
        QVERIFY(!left->notes());
        QCOMPARE(left->firstFrom(3), 0);
    }
}

void TestMisuse::countsNoWordsOfOthers()
{
    QCOMPARE(MVRWordCounter::words(QTextCursor()), 0);
    QCOMPARE(MVRWordCounter::words(staleCursor()), 0);
    const MVRWordCounter nothing(nullptr);
    QCOMPARE(nothing.words().all, 0);
}

void TestMisuse::findsNothingInNothing()
{
    QTextCharFormat wanted;
    wanted.setFontItalic(true);
    for (const QTextCursor &cursor : {QTextCursor(), staleCursor()}) {
        QVERIFY(MVRTextFinder::findFragment(wanted, cursor, true).isNull());
        QVERIFY(MVRTextFinder::findContinuousFragment(wanted, cursor, false).isNull());
        QVERIFY(MVRTextFinder::findFragmentAtPosition(wanted, cursor).isNull());
        QVERIFY(!MVRTextFinder::hasFormatProperty(cursor, most, QVariant(), false, true));
        QVERIFY(!MVRTextFinder::isInFormatProperty(cursor, least, QVariant(), true));
        QVERIFY(!MVRTextFinder::isFormatCheckedProperty(cursor, -1, QVariant(), false));
        QVERIFY(MVRTextFinder::findAllAnchors(cursor, true).isEmpty());
    }
    QCOMPARE(MVRTextFinder::formatCount(nullptr, 1, QVariant()), 0);
}

void TestMisuse::keepsNoCopyOfNothing()
{
    const int before = MVRRecovery::leftCopies().size();
    MVRRecovery none(nullptr);
    MVRRecovery emptyWriter([]() -> MVRRecovery::Writer { return {}; });
    for (MVRRecovery *recovery : {&none, &emptyWriter}) {
        recovery->noteEdit(QString(), QStringLiteral("../../x"));
        recovery->write();
        recovery->wait();
        recovery->drop();
        recovery->drop();
    }
    MVRRecovery::remove({});
    QCOMPARE(MVRRecovery::leftCopies().size(), before);
}

void TestMisuse::allowsNoOddPictures()
{
    const MVRPicturePolicy nobodys = MVRPicturePolicy::below(QString());
    const MVRPicturePolicy gone = MVRPicturePolicy::below(QStringLiteral("/no/such/folder"));
    const QString below = QDir::tempPath();
    const QString nul = below + QChar(0) + QStringLiteral("/x.png");
    for (const QString &path : {QString(), QStringLiteral("x.png"), nul, QString(70000, u'a')}) {
        QVERIFY(!nobodys.allows(path));
        QVERIFY(!gone.allows(path));
        QVERIFY(!MVRPicturePolicy::nowhere().allows(path));
    }
    QVERIFY(!MVRPicturePolicy::below(below).allows(nul));
    for (const char *share : {"", "//host/a", "\\\\host\\a", "/\\host/a", "\\/host/a", "//?/C:/a"})
        QVERIFY(!MVRPicturePolicy::anywhere().allows(QLatin1String(share)));
    QVERIFY(!MVRPicturePolicy::below(below).allows(below + QStringLiteral("/../x.png")));
}

void TestMisuse::movesThroughNoTree()
{
    MVRDomDoc tree;
    QVERIFY(!tree.setContent(static_cast<QIODevice *>(nullptr)));
    QBuffer closed;
    QVERIFY(!tree.setContent(&closed));
    QVERIFY(!tree.save(closed));
    for (const bool isEmpty : {true, false}) {
        if (!isEmpty)
            QVERIFY(tree.setContent(QStringLiteral("<a><b/></a>")));
        for (const QString &path : {QString(), QStringLiteral("/"), QStringLiteral("//"),
                                    QStringLiteral("b//"), QString(1, QChar(0xd800))}) {
            tree.cd(path);
            tree.find(path);
            QVERIFY(!tree.create(path));
            tree.setAttr(path, std::numeric_limits<double>::quiet_NaN(), path);
        }
        for (const int levels : {least, -1, 0, most})
            tree.cdUp(levels);
        QVERIFY(!tree.cdNext(QString()));
    }
    tree.setWorkElement(QDomElement());
    QCOMPARE(tree.currentElement().tagName(), QStringLiteral("a"));
    int number = 7;
    QVERIFY(!MVRDomDoc::getAttr(QStringLiteral("x"), &number, QDomElement()));
    QCOMPARE(number, 7);
    QVERIFY(MVRBbCodeConverter().fromHtml(QString(), nullptr).isNull());
    QVERIFY(MVRBbCodeConverter().fromHtml(QStringLiteral("<b"), nullptr).isNull());
}

void TestMisuse::setsUpNoElements()
{
    const MVRScreenplayElements elements(QHash<QString, MVRFinalDraft::ElementSettings> {});
    QTextDocument document;
    for (QTextCursor cursor : {QTextCursor(), staleCursor(), QTextCursor(&document)}) {
        elements.apply(cursor, QStringLiteral("no such element"));
        elements.cycle(cursor, least);
        elements.cycle(cursor, most);
        QVERIFY(!elements.startNext(&cursor));
        QVERIFY(!MVRScreenplayElements::isScene(cursor.block()));
    }
    elements.apply(staleCursor(), QStringLiteral("Action"));
    QTextCursor cursor(&document);
    elements.apply(cursor, QStringLiteral("Action"));
    for (const int steps : {least, -1, most})
        elements.cycle(cursor, steps);
    QVERIFY(elements.has(document.begin()));
    MVRScreenplayElements().apply(cursor, QString());
    QVERIFY(!elements.has(QTextBlock()));
}

void TestMisuse::opensNoFile()
{
    MVRFinalDraftFile file;
    QVERIFY(!file.load(static_cast<QIODevice *>(nullptr)));
    QBuffer closed;
    QVERIFY(!file.load(&closed));
    QVERIFY(!file.load(QString()));
    QVERIFY(!file.read(nullptr));
    QTextDocument document;
    QVERIFY(!file.read(&document));
    QVERIFY(!file.write(nullptr, &document));
    QVERIFY(!file.write(&closed, &document));
    QBuffer open;
    QVERIFY(open.open(QIODevice::WriteOnly));
    QVERIFY(!file.write(&open, nullptr));
    QVERIFY(open.data().isEmpty());
    QCOMPARE(file.removeHiddenNotes(), 0);
    QVERIFY(file.notes().isEmpty() && file.scenes().isEmpty());
    QVERIFY(file.elementXml(QString()).isEmpty());
    QVERIFY(file.elementXml(QStringLiteral("//")).isEmpty());
    MVRScreenplay screenplay;
    QVERIFY(!MVRScreenplay::fromFinalDraft(nullptr, &document, &screenplay, nullptr));
    QVERIFY(!MVRScreenplay::fromFinalDraft(&file, nullptr, &screenplay, nullptr));
    QVERIFY(!MVRScreenplay::fromFinalDraft(static_cast<QIODevice *>(nullptr), nullptr, nullptr));
}

void TestMisuse::showsNoParagraphs()
{
    MVRParagraphView none(nullptr);
    QTextDocument document(QStringLiteral("one"));
    auto *view = new MVRParagraphView(&document);
    for (const double odd : {0.0, -1.0, qQNaN(), qInf(), -qInf(), 1e308}) {
        none.setScale(odd);
        view->setTextWidth(odd);
        view->setScale(odd);
    }
    delete view;
    QCOMPARE(document.toPlainText(), QStringLiteral("one"));
}

/*! A file keeps the last of what is written back: it is told all the same. */
void TestMisuse::saysThatTheDiskIsFull()
{
    QTextDocument document(QStringLiteral("INT. HOUSE\nSome words of action."));
    const auto write = [&](const std::function<bool(QIODevice *)> &writer) {
        QFile full(QStringLiteral("/dev/full"));
        return full.open(QIODevice::WriteOnly) && writer(&full);
    };
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QSKIP("no disk is full");
    QVERIFY(
        !write([&](QIODevice *device) { return MVRFinalDraftFile().write(device, &document); }));
    QVERIFY(!write(
        [&](QIODevice *device) { return MVRFinalDraftWriter().write(device, &document, {}); }));
    QVERIFY(!MVRFinalDraftWriter().write(QStringLiteral("/dev/full"), &document, {}));
    QVERIFY(!write([&](QIODevice *device) {
        const MVRScreenplayPages pages(MVRScreenplay::fromDocument(document, 0));
        return MVRPagePainter::writePdf(device, pages, QString());
    }));
    QVERIFY(!write([](QIODevice *device) {
        MVRDomDoc tree;
        return tree.setContent(QStringLiteral("<a/>")) && tree.save(*device);
    }));
}

void TestMisuse::composesOddPages_data()
{
    QTest::addColumn<double>("length");
    for (const double length : {0.0, -1.0, 1e-9, 1e9, 1e308, qQNaN(), qInf(), -qInf()})
        QTest::addRow("%g", length) << length;
}

/*! A text has pages, and they are drawn, whatever a host takes for their lengths. */
void TestMisuse::composesOddPages()
{
    QFETCH(const double, length);
    QTextDocument document(QStringLiteral("INT. HOUSE\nSome words of action. And more.\n"));
    using Settings = MVRScreenplaySettings;
    for (double Settings::*const field :
         {&Settings::topMargin, &Settings::bottomMargin, &Settings::headerMargin,
          &Settings::footerMargin, &Settings::lineHeight, &Settings::dualLeft, &Settings::dualRight,
          &Settings::numberLeft, &Settings::revisionMark}) {
        MVRScreenplay screenplay = MVRScreenplay::fromDocument(document, most);
        screenplay = MVRScreenplay::fromDocument(document, least);
        screenplay.settings.*field = length;
        MVRScreenplayPages pages(screenplay);
        QVERIFY(!pages.pages().isEmpty());
        QBuffer pdf;
        QVERIFY(!MVRPagePainter::writePdf(&pdf, pages, QString()));
        QVERIFY(!pages.keepPages(least, -1));
        QVERIFY(!pages.keepScenes(QString(), QString()));
    }
    MVRScreenplay screenplay = MVRScreenplay::fromDocument(document, 0);
    screenplay.settings.pageSize = QSizeF(length, length);
    const MVRScreenplayPages pages(screenplay);
    QBuffer pdf;
    QVERIFY(pdf.open(QIODevice::WriteOnly));
    MVRPagePainter::writePdf(&pdf, pages, QString(), QStringLiteral("x"));
}

QTEST_MAIN(TestMisuse)
#include "tst_misuse.moc"
