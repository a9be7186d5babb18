// SPDX-License-Identifier: MIT
#include "PageDump.h"

#include <finaldraft/MVRFinalDraftFile.h>

#include <QBuffer>
#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

/*! Pages against pictures of them in letters: each script has a rule or two of its own. */
class TestPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void looksAsBefore_data();
    void looksAsBefore();
    void editedDocumentsLookAsTheirFiles_data() { looksAsBefore_data(); }
    void editedDocumentsLookAsTheirFiles();
    void documentsAlone();
    void textBesideDualDialogue();
};

void TestPages::looksAsBefore_data()
{
    QTest::addColumn<QString>("name");

    const char *const names[]
        = {"continueds",   "dual",      "header-footer", "headings",   "hidden",
           "lines",        "margins",   "more",          "more-off",   "more-texts",
           "no-sentences", "revisions", "sentences",     "title-page", "scene-continueds"};
    for (const char *name : names)
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TestPages::looksAsBefore()
{
    QFETCH(const QString, name);
    const QByteArray dump = dumpOf(MVRScreenplayPages(screenplayOf(name)));
    QFile golden(QStringLiteral(MVR_TEST_DATA "/pages/%1.txt").arg(name));
    // Look at what was written before you keep it.
    if (qEnvironmentVariableIsSet("MVR_WRITE_PAGES")) {
        QVERIFY(golden.open(QIODevice::WriteOnly));
        golden.write(dump);
        QSKIP("written");
    }
    QVERIFY(golden.open(QIODevice::ReadOnly));
    const QByteArray expected = golden.readAll();
    if (dump != expected)
        qWarning("%s", dump.constData());
    QVERIFY(dump == expected);
}

void TestPages::editedDocumentsLookAsTheirFiles()
{
    QFETCH(const QString, name);
    MVRFinalDraftFile file;
    QTextDocument document;
    QVERIFY(file.load(QStringLiteral(MVR_TEST_DATA "/pages/%1.fdx").arg(name)));
    QVERIFY(file.read(&document));
    // A word goes to the end, and comes back.
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(QStringLiteral("x"));
    MVRScreenplay edited;
    QVERIFY(MVRScreenplay::fromFinalDraft(&file, &document, &edited, nullptr));
    QVERIFY(edited.body.last().runs.last().text.endsWith(QLatin1Char('x')));
    cursor.deletePreviousChar();
    QVERIFY(MVRScreenplay::fromFinalDraft(&file, &document, &edited, nullptr));
    QCOMPARE(dumpOf(MVRScreenplayPages(edited)), dumpOf(MVRScreenplayPages(screenplayOf(name))));

    QString error;
    QVERIFY(!MVRScreenplay::fromFinalDraft(&file, nullptr, &edited, &error));
    QVERIFY(!error.isEmpty());
}

// What a document knows of its file without it.
void TestPages::documentsAlone()
{
    const auto pagesOf = [](const char *name) {
        MVRFinalDraftFile file;
        QTextDocument document;
        if (!file.load(QStringLiteral(MVR_TEST_DATA "/pages/%1.fdx").arg(QLatin1String(name)))
            || !file.read(&document))
            return MVRScreenplay();
        return MVRScreenplay::fromDocument(document, file.titlePageBlockCount());
    };
    const MVRScreenplay dualFile = screenplayOf(QStringLiteral("dual"));
    MVRScreenplay dual = pagesOf("dual");
    dual.settings = dualFile.settings;
    QCOMPARE(dumpOf(MVRScreenplayPages(dual)), dumpOf(MVRScreenplayPages(dualFile)));

    const QByteArray hidden = dumpOf(MVRScreenplayPages(pagesOf("hidden")));
    for (const char *text : {"secretly", "Nobody reads", "outline", "summary", "note"})
        QVERIFY2(!hidden.contains(text), text);
    QVERIFY(hidden.contains("harbuor lies grey still."));
    QCOMPARE(pagesOf("scene-continueds").body.first().sceneNumber, QStringLiteral("12A"));
    QVERIFY(!pagesOf("title-page").titlePage.isEmpty());
}

// No program writes any, but what a document shows of a file its pages show too.
void TestPages::textBesideDualDialogue()
{
    QByteArray fdx = "<FinalDraft><Content><Paragraph><DualDialogue><Paragraph><Text>one</Text>"
                     "</Paragraph><Paragraph><DualDialogue><Paragraph><Text>two</Text></Paragraph>"
                     "</DualDialogue></Paragraph></DualDialogue><Text>beside</Text></Paragraph>"
                     "<Paragraph><Text>after</Text></Paragraph></Content></FinalDraft>";
    QBuffer device(&fdx);
    QVERIFY(device.open(QIODevice::ReadOnly));
    MVRScreenplay screenplay;
    QVERIFY(MVRScreenplay::fromFinalDraft(&device, &screenplay, nullptr));
    QByteArray read;
    for (const MVRScreenplayParagraph &paragraph : screenplay.body)
        read += paragraph.runs.value(0).text.toUtf8() + ' ' + QByteArray::number(paragraph.source)
            + ' ' + (paragraph.dualDialogue ? "dual " : "");
    QCOMPARE(read, QByteArray("beside 0 one 1 dual two 2 dual after 3 "));
}

QTEST_MAIN(TestPages)
#include "tst_pages.moc"
