// SPDX-License-Identifier: MIT
#include "PageDump.h"

#include <QtTest>

/*! Pages against pictures of them in letters: each script has a rule or two of its own. */
class TestPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void looksAsBefore_data();
    void looksAsBefore();
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

QTEST_MAIN(TestPages)
#include "tst_pages.moc"
