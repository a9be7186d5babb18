// SPDX-License-Identifier: MIT
#include <tool/Columns.h>
#include <tool/Table.h>

#include <QtTest>

/*! Tables on a terminal, which counts columns. */
class TestToolTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void countsColumns_data();
    void countsColumns();
    void keepsColumnsInLine();
};

void TestToolTable::countsColumns_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("inFour");

    QTest::newRow("Latin") << "caf\u00e9 x" << 6 << "caf\u2026";
    QTest::newRow("fits") << "caf\u00e9" << 4 << "caf\u00e9";
    QTest::newRow("combining accent") << "cafe\u0301 x" << 6 << "caf\u2026";
    QTest::newRow("Chinese") << "\u6f22\u5b57x" << 5 << "\u6f22\u2026";
    QTest::newRow("half width, full width") << "\uff71\uff21b" << 4 << "\uff71\uff21b";
    QTest::newRow("Korean letters of one syllable")
        << "\u1100\u1161\u11a8" << 2 << "\u1100\u1161\u11a8";
    QTest::newRow("emoji") << "\U0001f3ac\U0001f3ac\U0001f3ac" << 6 << "\U0001f3ac\u2026";
    QTest::newRow("emoji by a selector") << "\u2764\ufe0fab" << 4 << "\u2764\ufe0fab";
    QTest::newRow("skin tone") << "\U0001f44d\U0001f3fdok" << 4 << "\U0001f44d\U0001f3fdok";
    QTest::newRow("soft hyphen, joiner") << "a\u00adb\u200dc" << 3 << "a\u00adb\u200dc";
}

void TestToolTable::countsColumns()
{
    QFETCH(const QString, text);
    QTEST(columnCount(text), "columns");
    QTEST(cutToColumns(text, 4), "inFour");
}

void TestToolTable::keepsColumnsInLine()
{
    Table table({QStringLiteral("A"), QStringLiteral("B")});
    table.addRow({QStringLiteral("\u6f22\u5b57\u6f22\u5b57\u6f22\u5b57"), QStringLiteral("x")});
    table.addRow({QStringLiteral("two  words"), QStringLiteral("y\nz")});
    QCOMPARE(table.toString(0),
             QStringLiteral("A             B\n"
                            "\u6f22\u5b57\u6f22\u5b57\u6f22\u5b57  x\n"
                            "two words     y z\n"));
    QCOMPARE(table.toString(13),
             QStringLiteral("A         B\n"
                            "\u6f22\u5b57\u6f22\u2026   x\n"
                            "two wor\u2026  y z\n"));
}

QTEST_GUILESS_MAIN(TestToolTable)
#include "tst_tooltable.moc"
