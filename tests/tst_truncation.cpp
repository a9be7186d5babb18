// SPDX-License-Identifier: MIT
#include <core/MVRTextRtf.h>
#include <finaldraft/MVRFinalDraftReader.h>
#include <text/MVRTextDoc.h>

#include <QBuffer>
#include <QDir>
#include <QRandomGenerator>
#include <QTextDocument>
#include <QtTest>

/*! Files that end too soon, at each of their bytes. */
class TestTruncation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersAtEveryByte_data();
    void answersAtEveryByte();
    void answersToDamage_data() { answersAtEveryByte_data(); }
    void answersToDamage();
    void keepsTheTextBeforeTheCut();
    void refusesACutScreenplay();

private:
    static QString textOf(const QByteArray &rtf);
};

namespace {

// Larger files are cut at this many places, with MVR_EVERY_BYTE set everywhere.
constexpr int maxCuts = 100;

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void addSamples(const QString &folder, const QString &pattern)
{
    const QDir samples(folder);
    const QStringList names = samples.entryList({pattern}, QDir::Files);
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << samples.filePath(name);
}

bool readFdx(const QByteArray &bytes, QTextDocument *document, QString *error)
{
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    MVRFinalDraftReader reader;
    const bool isRead = reader.load(&buffer) && reader.read(document, {});
    *error = reader.errorString();
    return isRead;
}

}

void TestTruncation::answersAtEveryByte_data()
{
    QTest::addColumn<QString>("path");
    addSamples(QStringLiteral(MVR_TEST_DATA "/rtf"), QStringLiteral("*.rtf"));
    addSamples(QStringLiteral(MVR_TEST_DATA "/fdx"), QStringLiteral("*.fdx"));
    addSamples(QStringLiteral(MVR_SOURCE_DIR "/fuzz/corpus/rtf_reader"), QStringLiteral("*.rtf"));
}

void TestTruncation::answersAtEveryByte()
{
    QFETCH(const QString, path);
    const QByteArray bytes = read(path);
    QVERIFY(!bytes.isEmpty());
    const bool isRtf = path.endsWith(QLatin1String(".rtf"));
    const bool isEvery = qEnvironmentVariableIsSet("MVR_EVERY_BYTE");
    const int step = isEvery ? 1 : qMax(1, bytes.size() / maxCuts);
    for (int size = 0; size < bytes.size(); size += step) {
        QTextDocument document;
        QString error;
        const QByteArray cut = bytes.left(size);
        const bool isRead
            = isRtf ? MVRTextDoc::fromRtf(cut, &document) : readFdx(cut, &document, &error);
        QVERIFY2(isRead || isRtf || !error.isEmpty(), qPrintable(QString::number(size)));
        QVERIFY2(!isRead || !isRtf || size >= 5, qPrintable(QString::number(size)));
    }
}

/*! Cut off, with some bits of the rest turned over. */
void TestTruncation::answersToDamage()
{
    QFETCH(const QString, path);
    const QByteArray bytes = read(path);
    const bool isRtf = path.endsWith(QLatin1String(".rtf"));
    QRandomGenerator random(20261122); // the same damage in each run
    for (int cut = 0; cut < maxCuts; ++cut) {
        QByteArray damaged = bytes.left(1 + int(random.bounded(int(bytes.size()))));
        for (int bits = 1 + int(random.bounded(4)); bits > 0; --bits) {
            const int place = int(random.bounded(int(damaged.size())));
            damaged[place] = char(damaged.at(place) ^ (1 << random.bounded(8)));
        }
        QTextDocument document;
        QString error;
        if (isRtf) { // what is read is written, and read again
            const bool isRead = MVRTextDoc::fromRtf(damaged, &document);
            QTextDocument again;
            QVERIFY(!isRead || MVRTextDoc::fromRtf(MVRTextDoc::toRtf(&document), &again));
            QCOMPARE(again.characterCount(), isRead ? document.characterCount() : 1);
        } else {
            QVERIFY(readFdx(damaged, &document, &error) || !error.isEmpty());
        }
    }
}

QString TestTruncation::textOf(const QByteArray &rtf)
{
    QTextDocument document;
    MVRTextRtf::fromRtfCData(rtf, &document);
    return document.toPlainText();
}

void TestTruncation::keepsTheTextBeforeTheCut()
{
    const QByteArray rtf
        = "{\\rtf1\\ansi{\\fonttbl{\\f0 Serif;}}{\\colortbl;\\red1;}\\pard\\b One \\'e9{\\i two}"
          "\\par\\plain three\\line four{\\*\\unknown five} six\\tab\\par}";
    const QString whole = textOf(rtf);
    QVERIFY(whole.contains(QLatin1String("four six")));
    int length = 0;
    for (int size = 0; size <= rtf.size(); ++size) {
        const QString text = textOf(rtf.left(size));
        QVERIFY2(whole.startsWith(text), qPrintable(QString::number(size) + text));
        QVERIFY2(text.size() >= length, qPrintable(QString::number(size) + text));
        length = text.size();
    }
    QCOMPARE(length, whole.size());
}

void TestTruncation::refusesACutScreenplay()
{
    const QByteArray fdx
        = read(QStringLiteral(MVR_TEST_DATA "/fdx/synthetic-shapes.fdx")).trimmed();
    QTextDocument document;
    QString error;
    QVERIFY(readFdx(fdx, &document, &error));
    for (const int missing : {1, 2, 13, 100}) {
        QTextDocument cut;
        QVERIFY(!readFdx(fdx.left(fdx.size() - missing), &cut, &error));
        QVERIFY2(error.contains(QLatin1String("Line ")), qPrintable(error));
        QVERIFY(cut.isEmpty());
    }
}

QTEST_MAIN(TestTruncation)
#include "tst_truncation.moc"
