// SPDX-License-Identifier: MIT
#include "interop/Content.h"

#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>

#include <QDir>
#include <QFile>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

// Files that other programs wrote; origins and licences are in data/README.md, and how the text
// beside each was extracted: a line for each paragraph, a picture as U+FFFC.
class TestRtfSamples : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsText_data();
    void readsText();
    void comesThroughWriting_data() { readsText_data(); }
    void comesThroughWriting();
    void readsFormats();
    void readsWhatLibreOfficeMeant();
};

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList linesOf(const QTextDocument &document)
{
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        lines += block.text();
    return lines;
}

QTextCharFormat formatAt(QTextDocument *document, const char *text)
{
    QTextCursor cursor = document->find(QString::fromUtf8(text));
    return cursor.isNull() ? QTextCharFormat() : cursor.charFormat();
}

const QString folder = QStringLiteral(MVR_TEST_DATA "/rtf/");

} // namespace

void TestRtfSamples::readsText_data()
{
    QTest::addColumn<QString>("path");
    const QStringList names = QDir(folder).entryList({QStringLiteral("*.rtf")});
    QVERIFY(names.size() >= 24);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << folder + name;
}

void TestRtfSamples::readsText()
{
    QFETCH(const QString, path);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(contentOf(path), &document));
    const QString expected = QString::fromUtf8(contentOf(path.chopped(4) + QStringLiteral(".txt")));
    QCOMPARE(linesOf(document).join(QLatin1Char('\n')) + QLatin1Char('\n'), expected);
}

void TestRtfSamples::comesThroughWriting()
{
    QFETCH(const QString, path);
    QTextDocument first;
    QVERIFY(MVRTextRtf::fromRtfCData(contentOf(path), &first));
    QTextDocument second;
    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&first, true), &second));
    QCOMPARE(linesOf(second), linesOf(first));
}

void TestRtfSamples::readsFormats()
{
    QTextDocument document;
    const auto read = [&](const char *name) {
        return MVRTextRtf::fromRtfCData(contentOf(folder + QLatin1String(name)), &document);
    };
    QVERIFY(read("tika-testRTFVarious.rtf"));
    QCOMPARE(formatAt(&document, "superscript").verticalAlignment(),
             QTextCharFormat::AlignSuperScript);
    QCOMPARE(formatAt(&document, "subscript").verticalAlignment(), QTextCharFormat::AlignSubScript);
    QVERIFY(formatAt(&document, "italic").fontItalic());
    QCOMPARE(formatAt(&document, "Bold").fontWeight(), int(QFont::Bold));
    QVERIFY(formatAt(&document, "underline").fontUnderline());
    QCOMPARE(formatAt(&document, "hyperlink").anchorHref(),
             QStringLiteral("http://tika.apache.org"));

    QVERIFY(read("rtf-parser-RTF-test.rtf"));
    QCOMPARE(MVRToolkit::fontFamily(formatAt(&document, "gras")), QStringLiteral("Helvetica"));
    QCOMPARE(formatAt(&document, "gras").fontWeight(), int(QFont::Bold));
    QCOMPARE(formatAt(&document, "Test").fontPointSize(), 12.0);

    QVERIFY(read("striprtf-mac_textedit_hyperlink.rtf"));
    QCOMPARE(formatAt(&document, "github").anchorHref(),
             QStringLiteral("http://github.com/joshy/striprtf"));
}

// A document with everything that both programs know, and the RTF that LibreOffice made of it.
void TestRtfSamples::readsWhatLibreOfficeMeant()
{
    const QString name = QStringLiteral(MVR_TEST_DATA "/interop/rich");
    Content meant;
    Content read;
    QVERIFY(readFlatOdt(contentOf(name + QStringLiteral(".fodt")), &meant));
    QVERIFY(readRtf(contentOf(name + QStringLiteral("-libreoffice.rtf")), &read));
    QCOMPARE(meant.notes.size(), 3);
    QCOMPARE(read.paragraphs.size(), meant.paragraphs.size());
    // Links look like links in the file, and East Asian letters have the font for such, which the
    // reader of the other file does not look for.
    QCOMPARE(compare(meant, read),
             QStringLiteral("| colour |  | #000080 | 25 | link to the web |\n"
                            "| font | Liberation Serif | DejaVu Sans | 11 | \u6F22\u5B57\u3068"
                            "\u304B\u306A\u3001\uD55C\uAE00 |\n"
                            "| underline |  | single | 25 | link to the web |\n"));
}

QTEST_MAIN(TestRtfSamples)
#include "tst_rtfsamples.moc"
