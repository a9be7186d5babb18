#include <core/MVRTextRtf.h>

#include <QFont>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

class TestRtf : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void plainTextKeepsItsLines_data();
    void plainTextKeepsItsLines();
    void refusesWhatIsNotRtf();
};

void TestRtf::plainTextKeepsItsLines_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << "";
    QTest::newRow("blanks only") << "   ";
    QTest::newRow("leading and trailing blanks") << " a ";
    QTest::newRow("empty lines around") << "\n\na\n\n";
    QTest::newRow("braces and backslash") << "{a\\b}";
    QTest::newRow("digits and letters behind a tab") << "\t1\tb";
    QTest::newRow("beyond the code page") << QString::fromUtf8("Č € 日本 😀 é\u00a0\u00ad\u2011");
}

void TestRtf::plainTextKeepsItsLines()
{
    QFETCH(const QString, text);
    QFont font(QStringLiteral("Courier Prime"), 11);
    font.setItalic(true);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::textToRtf(text, &font), &document));
    QString read = document.toPlainText();
    if (text.contains(QChar::Nbsp)) // toPlainText() makes blanks of them
        read = document.begin().text();
    QCOMPARE(read, text);
    const QTextCharFormat format = document.begin().charFormat();
    QCOMPARE(format.fontFamily(), QStringLiteral("Courier Prime"));
    QCOMPARE(format.fontPointSize(), 11.0);
    QVERIFY(format.fontItalic());
}

void TestRtf::refusesWhatIsNotRtf()
{
    QTextDocument document(QStringLiteral("kept"));
    for (const char *bytes : {"", "text", "{\\rt", "\\rtf1 x", "{}"})
        QVERIFY(!MVRTextRtf::fromRtfCData(bytes, &document));
    QCOMPARE(document.toPlainText(), QStringLiteral("kept"));
    QVERIFY(!MVRTextRtf::fromRtfCData("{\\rtf1 x}", nullptr));
    QVERIFY(MVRTextRtf::fromRtfCData(" \r\n{\\rtf1}", &document));
    QVERIFY(document.isEmpty());
}

QTEST_MAIN(TestRtf)
#include "tst_rtf.moc"
