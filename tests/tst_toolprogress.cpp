// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <QRegularExpression>
#include <QStandardPaths>
#include <QtTest>

/*! What long work shows on a terminal, and that it shows nothing elsewhere. */
class TestToolProgress : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void showsPercentages_data();
    void showsPercentages();
    void saysNothingToAPipe();

private:
    QByteArray onTerminal(const QString &arguments) const;

    ToolFolder m_folder;
};

/*! What a run shows whose output and messages go to a terminal. */
QByteArray TestToolProgress::onTerminal(const QString &arguments) const
{
    QProcess script;
    script.setWorkingDirectory(m_folder.path());
    script.setProcessChannelMode(QProcess::MergedChannels);
    script.start(QStringLiteral("script"),
                 {QStringLiteral("-qec"), QStringLiteral(MVR_TOOL " ") + arguments,
                  QStringLiteral("/dev/null")});
    return script.waitForFinished(120000) && script.exitCode() == 0 ? script.readAll()
                                                                    : QByteArray();
}

// Work of some seconds: nothing is shown of what takes less than half of one.
void TestToolProgress::initTestCase()
{
    QVERIFY(m_folder.isValid());
    QByteArray text;
    for (int i = 0; i < 12000; ++i)
        text += "All that there is to say in this line, and in that one, and in all of them. "
                "Nobody would read it twice, and everybody has to.\n";
    m_folder.write(QStringLiteral("long.txt"), text);
    m_folder.write(QStringLiteral("short.txt"), "text");
    if (QStandardPaths::findExecutable(QStringLiteral("script")).isEmpty())
        QSKIP("There is no script(1) to make a terminal.");
}

void TestToolProgress::showsPercentages_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("steps");
    QTest::newRow("one document") << "convert --page-numbers long.txt long.pdf"
                                  << "(Laying out pages|Drawing pages)";
    QTest::newRow("batch") << "convert --jobs 1 --to pdf --into out short.txt long.txt"
                           << "(1 of 2 files)";
}

void TestToolProgress::showsPercentages()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, steps);
    const QString shown = QString::fromUtf8(onTerminal(arguments));
    const QRegularExpression line(
        QStringLiteral("\\r\\x1b\\[K%1 \\.\\.\\. (\\d+) %, \\d+ s").arg(steps));
    QRegularExpressionMatchIterator matches = line.globalMatch(shown);
    QVERIFY2(matches.hasNext(), qPrintable(shown));
    QString step;
    int percent = 0;
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const int next = match.captured(2).toInt();
        QVERIFY2(next <= 100 && (match.captured(1) != step || next >= percent), qPrintable(shown));
        step = match.captured(1);
        percent = next;
    }
    // Nothing of it is left on the screen.
    const int last = shown.lastIndexOf(QLatin1String(" %, "));
    QVERIFY2(shown.indexOf(QLatin1String("\r\x1b[K"), last) > last, qPrintable(shown));
}

void TestToolProgress::saysNothingToAPipe()
{
    const Run run = mvrtext("convert long.txt long.pdf", m_folder.path());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.errors + run.output, QByteArray());
}

QTEST_GUILESS_MAIN(TestToolProgress)
#include "tst_toolprogress.moc"
