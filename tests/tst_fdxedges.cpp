// SPDX-License-Identifier: MIT
#include <finaldraft/MVRFinalDraftFile.h>

#include <QBuffer>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

/*! Characters at the edges of what a Final Draft file can hold, edited in place. */
class TestFdxEdges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void editsBetweenAnyCharacters_data();
    void editsBetweenAnyCharacters();
    void keepsTheEncoding_data();
    void keepsTheEncoding();
    void refuses_data();
    void refuses();
};

namespace {

QByteArray withText(const QByteArray &text)
{
    return "<FinalDraft><Content><Paragraph Type=\"Action\"><Text>" + text
        + "</Text></Paragraph></Content></FinalDraft>";
}

bool load(MVRFinalDraftFile *file, QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return file->load(&buffer);
}

QByteArray written(MVRFinalDraftFile *file, const QTextDocument &document)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    return file->write(&buffer, &document) ? buffer.data() : QByteArray();
}

QByteArray utf16(const QByteArray &utf8, bool bigEndian)
{
    const QString text = QChar(QChar::ByteOrderMark) + QString::fromUtf8(utf8);
    QByteArray bytes;
    for (const QChar unit : text) {
        bytes += char(bigEndian ? unit.row() : unit.cell());
        bytes += char(bigEndian ? unit.cell() : unit.row());
    }
    return bytes;
}

}

void TestFdxEdges::editsBetweenAnyCharacters_data()
{
    QTest::addColumn<QByteArray>("source");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *source, const char *text) {
        QTest::newRow(name) << QByteArray(source) << QString::fromUtf8(text);
    };
    row("names", "a&amp;b&lt;&gt;c&quot;&apos;d", "a&b<>c\"'d");
    row("numbers", "&#65;bc&#x1F600;d&#x42;&#66;", "Abc😀dBB");
    row("no references", "a&b &; &#; &#x; &#65 &unknown;c", "a&b &; &#; &#x; &#65 &unknown;c");
    row("sequences of bytes", "é日𝄞e", "é日𝄞e");
    row("sections", "a<![CDATA[<b>&amp;]]>c<!-- > -->d<?x?>e", "a<b>&amp;cde");
    row("line ends", "a\r\nb\nc&#13;d&#13;&#10;e", "a\u2028b\u2028c\u2028d\u2028e");
    row("what a document cannot hold", "a&#0;b&#xD800;c&#xFDD0;d&#x110000;e&#x2029;f",
        "a\uFFFDb\uFFFDc\uFFFDd\uFFFDe\u2028f");
}

// What is put in is all that differs from the source, wherever it is put.
void TestFdxEdges::editsBetweenAnyCharacters()
{
    QFETCH(const QByteArray, source);
    QFETCH(const QString, text);
    MVRFinalDraftFile file;
    QVERIFY(load(&file, withText(source)));
    QTextDocument document;
    QVERIFY(file.read(&document));
    QCOMPARE(document.begin().text(), text);
    for (int place = 0; place <= text.size(); ++place) {
        if (place < text.size() && text.at(place).isLowSurrogate())
            continue;
        QTextCursor cursor(&document);
        cursor.setPosition(place);
        cursor.insertText(QStringLiteral("Z"));
        QByteArray changed = written(&file, document);
        MVRFinalDraftFile again;
        QTextDocument read;
        QVERIFY(load(&again, changed) && again.read(&read));
        QCOMPARE(read.begin().text(), document.begin().text());
        QCOMPARE(changed.count('Z'), 1);
        if (!source.contains("<![CDATA[")) // a run with sections is written anew
            QCOMPARE(changed.replace("Z", ""), withText(source));
        cursor.deletePreviousChar();
    }
}

void TestFdxEdges::keepsTheEncoding_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    const QByteArray before = withText("ab");
    const QByteArray after = withText("aé日b");
    QTest::newRow("UTF-8") << before << after;
    QTest::newRow("UTF-16, small end first") << utf16(before, false) << utf16(after, false);
    QTest::newRow("UTF-16, big end first") << utf16(before, true) << utf16(after, true);
    const QByteArray latin = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>";
    QTest::newRow("Latin 1") << latin + before << latin + withText("a\xe9&#26085;b");
}

void TestFdxEdges::keepsTheEncoding()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, after);
    MVRFinalDraftFile file;
    QVERIFY(load(&file, before));
    QTextDocument document;
    QVERIFY(file.read(&document));
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::Right);
    cursor.insertText(QString::fromUtf8("é日"));
    QCOMPARE(written(&file, document), after);
}

void TestFdxEdges::refuses_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("blanks") << QByteArray(" \n ");
    QTest::newRow("other XML") << QByteArray("<html><Content/></html>");
    QTest::newRow("no XML") << QByteArray("FinalDraft");
    QTest::newRow("cut off") << withText("a").left(60);
}

void TestFdxEdges::refuses()
{
    QFETCH(const QByteArray, bytes);
    MVRFinalDraftFile file;
    QVERIFY(load(&file, withText("a")));
    QVERIFY(!load(&file, bytes));
    QVERIFY(!file.errorString().isEmpty());
    QTextDocument document;
    document.setPlainText(QStringLiteral("stays"));
    QVERIFY(!file.read(&document));
    QCOMPARE(document.toPlainText(), QStringLiteral("stays"));
}

QTEST_MAIN(TestFdxEdges)
#include "tst_fdxedges.moc"
