// SPDX-License-Identifier: MIT
#include <core/MVRCoreUtil.h>
#include <core/MVRSettings.h>
#include <core/MVRTextFormat.h>
#include <core/MVRToolkit.h>
#include <core/MVRUnit.h>
#include <core/STextDoc.h>
#include <text/MVRTextDoc.h>

#include <QAbstractTextDocumentLayout>
#include <QPen>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

#include <memory>

class TestSettings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsAndForgets();
    void standsWrongTypes();
    void readsFiles();
    void keepsTheDefaultFormat();
    void setsTheFont();
    void keepsPenAndCorrection();
    void recognizesItemLinks_data();
    void recognizesItemLinks();
    void readsLineSpacing_data();
    void readsLineSpacing();
    void normalizesPageBreaks_data();
    void normalizesPageBreaks();
    void clearsTextOptionFlags();
    void convertsLengths();

private:
    QTemporaryDir m_dir;
};

void TestSettings::readsAndForgets()
{
    const QString path = m_dir.filePath(QStringLiteral("a.ini"));
    MVRSettings settings(path);
    QVERIFY(!settings.contains(MVRSettings::CommentColorSetting));
    QVERIFY(settings.value(MVRSettings::CommentColorSetting).isValid());
    QCOMPARE(settings.value(MVRSettings::WordSearchSetting), false);

    settings.setValue(MVRSettings::WordSearchSetting, true);
    const QFont font(QStringLiteral("Courier Prime"), 13);
    settings.setValue(MVRSettings::FootnoteFontSetting, font);
    QSettings sameFile(path, QSettings::IniFormat);
    sameFile.setValue(settings.key(MVRSettings::CommentColorSetting), QColor(Qt::red));
    QCOMPARE(settings.value(MVRSettings::WordSearchSetting), true);
    QCOMPARE(settings.value(MVRSettings::FootnoteFontSetting).family(), font.family());
    QCOMPARE(settings.value(MVRSettings::CommentColorSetting), QColor(Qt::red));
    QVERIFY(settings.value(MVRSettings::CommentFontSetting) != font);

    settings.setValue(1234, QStringLiteral("last"));
    settings.setFileName(m_dir.filePath(QStringLiteral("b.ini")));
    QFile file(path); // what was set is in it once it is no longer in use
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll().contains("1234=last"));
    QCOMPARE(settings.value(MVRSettings::WordSearchSetting), false);
    settings.setFileName(path);
    settings.remove(MVRSettings::WordSearchSetting);
    QCOMPARE(settings.value(MVRSettings::WordSearchSetting), false);
}

void TestSettings::standsWrongTypes()
{
    MVRSettings settings(m_dir.filePath(QStringLiteral("wrong.ini")));
    const QByteArray noise("\x01\x02");
    for (const int setting : {6, 10, 20})
        settings.setValue(setting, noise);
    QVERIFY(!settings.value(MVRSettings::CommentColorSetting).isValid());
    QCOMPARE(settings.value(MVRSettings::CommentFontSetting),
             settings.defaultValue(MVRSettings::CommentFontSetting));
    settings.setValue(MVRSettings::WordSearchSetting, QStringLiteral("false"));
    QCOMPARE(settings.value(MVRSettings::WordSearchSetting), false);
}

void TestSettings::readsFiles()
{
    const QString path = m_dir.filePath(QStringLiteral("data"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("a\0b", 3);
    file.close();
    QString error;
    QCOMPARE(MVRCoreUtil::ReadBinaryFile(path, &error), QByteArray("a\0b", 3));
    QVERIFY(error.isEmpty());
    QVERIFY(MVRCoreUtil::ReadBinaryFile(m_dir.path(), &error).isNull());
    QVERIFY(!error.isEmpty());
    QVERIFY(MVRCoreUtil::ReadBinaryFile(path + QLatin1Char('x'), nullptr).isNull());
    QVERIFY(MVRCoreUtil::CreateUUID() != MVRCoreUtil::CreateUUID());
}

void TestSettings::keepsTheDefaultFormat()
{
    QTextDocument document;
    document.setDefaultFont(QFont(QStringLiteral("Serif"), 17));
    QCOMPARE(MVRTextDoc::defaultCharFormat(document).font().pointSize(), 17);

    MVRTextDoc::setDefaultCharFormatColors(&document, Qt::red, Qt::blue);
    QCOMPARE(MVRTextDoc::defaultCharFormat(document).foreground(), QBrush(Qt::red));
    QCOMPARE(MVRTextDoc::defaultCharFormat(document).background(), QBrush(Qt::blue));
    MVRTextDoc::setDefaultCharFormatColors(&document, QColor(), QColor());
    const QTextCharFormat format = MVRTextDoc::defaultCharFormat(document);
    QVERIFY(!format.hasProperty(QTextFormat::ForegroundBrush));
    QVERIFY(!format.hasProperty(QTextFormat::BackgroundBrush));
    QCOMPARE(format.font().pointSize(), 17);
    MVRTextDoc::setDefaultCharFormatColors(nullptr, Qt::red, Qt::red);
}

void TestSettings::setsTheFont()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextCharFormat format;
    format.setFontWeight(QFont::Bold);
    format.setForeground(Qt::red);
    format.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
    cursor.insertText(QStringLiteral("text"), format);
    cursor.insertBlock();
    document.clearUndoRedoStacks();
    QTextDocument sized;
    sized.setHtml(QStringLiteral("<h1>a</h1><p>b <big>c</big> <span style='font-size:40px'>d"));
    QTextCharFormat inPixels;
    inPixels.setProperty(QTextFormat::FontPixelSize, 40);
    MVRTextDoc::setDefaultCharFormat(sized, inPixels);

    QFont font(QStringLiteral("Courier Prime"), 13);
    font.setItalic(true);
    MVRTextDoc::setFont(&document, font);
    QCOMPARE(MVRTextDoc::defaultCharFormat(document).font(), font);
    QCOMPARE(document.lastBlock().charFormat().font(), font);
    cursor.setPosition(4);
    QCOMPARE(cursor.charFormat().font(), font);
    QCOMPARE(cursor.charFormat().foreground(), QBrush(Qt::red));
    QVERIFY(cursor.charFormat().boolProperty(MVRTextFormat::InlineFootnoteProperty));
    document.undo();
    QVERIFY(!document.isUndoAvailable());
    QCOMPARE(cursor.charFormat(), format);

    // Of a size in other units, or relative to another one, nothing is left.
    MVRTextDoc::setFont(&sized, font);
    const auto hasOtherSize = [](const QTextFormat &any) {
        return any.hasProperty(QTextFormat::FontPixelSize)
            || any.hasProperty(QTextFormat::FontSizeAdjustment);
    };
    QVERIFY(!hasOtherSize(MVRTextDoc::defaultCharFormat(sized)));
    for (QTextCursor at(&sized); !at.atEnd(); at.movePosition(QTextCursor::NextCharacter)) {
        QVERIFY(!hasOtherSize(at.charFormat()));
        QCOMPARE(at.charFormat().fontPointSize(), 13.0);
    }
    font.setPixelSize(17);
    MVRTextDoc::setFont(&sized, font);
    QVERIFY(!QTextCursor(&sized).charFormat().hasProperty(QTextFormat::FontPointSize));
}

void TestSettings::keepsPenAndCorrection()
{
    QTextDocument document;
    QCOMPARE(MVRTextDoc::typographyPen(document), QPen());
    const QPen pen(Qt::blue, 2.5, Qt::DashLine);
    const QSignalSpy drawn(document.documentLayout(), &QAbstractTextDocumentLayout::update);
    MVRTextDoc::setTypographyPen(&document, pen);
    QCOMPARE(MVRTextDoc::typographyPen(document), pen);
    QVERIFY2(!drawn.isEmpty(), "a view shows the pen");
    const int count = drawn.size();
    MVRTextDoc::setTypographyPen(&document, pen);
    QCOMPARE(drawn.size(), count);
    const std::unique_ptr<QTextDocument> clone(STextDoc::cloneDocumentQtStyle(&document, nullptr));
    QCOMPARE(MVRTextDoc::typographyPen(*clone), pen);

    QVERIFY(MVRToolkit::isAutoCorrected(document));
    MVRTextDoc::setAutoCorrection(document, false);
    QVERIFY(!MVRToolkit::isAutoCorrected(document));
}

void TestSettings::recognizesItemLinks_data()
{
    QTest::addColumn<QString>("href");
    QTest::addColumn<bool>("isAnchor");
    QTest::addColumn<bool>("isLink");

    QTest::newRow("number") << "42" << true << true;
    QTest::newRow("not an anchor") << "42" << false << false;
    QTest::newRow("hexadecimal") << "0x2a" << true << false;
    QTest::newRow("beyond an int") << "4294967296" << true << false;
    QTest::newRow("web") << "http://example.org/42" << true << false;
    QTest::newRow("note") << "Comment:42" << true << false;
}

void TestSettings::recognizesItemLinks()
{
    QFETCH(const QString, href);
    QFETCH(const bool, isAnchor);
    QTextCharFormat format;
    format.setAnchorHref(href);
    format.setAnchor(isAnchor);
    QTEST(MVRTextFormat::isMovarinLink(format), "isLink");
}

void TestSettings::readsLineSpacing_data()
{
    QTest::addColumn<QVariant>("spacing");
    QTest::addColumn<double>("lineHeight"); // percent
    QTest::addColumn<double>("value");

    QTest::newRow("none") << QVariant() << 0.0 << 1.0;
    QTest::newRow("one and a half") << QVariant(1.5) << 0.0 << 1.5;
    QTest::newRow("heading level") << QVariant(2) << 0.0 << 1.0;
    QTest::newRow("line height of stock paragraphs") << QVariant() << 200.0 << 2.0;
    QTest::newRow("nonsense") << QVariant(-3.0) << 0.0 << 1.0;
}

void TestSettings::readsLineSpacing()
{
    QFETCH(const QVariant, spacing);
    QFETCH(const double, lineHeight);
    QFETCH(const double, value);
    QTextBlockFormat format;
    if (spacing.isValid())
        format.setProperty(MVRTextFormat::LineSpacingProperty, spacing);
    if (lineHeight > 0)
        format.setLineHeight(lineHeight, QTextBlockFormat::ProportionalHeight);
    double read = 0;
    QCOMPARE(MVRTextFormat::spacingType(format, &read) == QTextBlockFormat::SingleHeight,
             value == 1.0);
    QCOMPARE(read, value);
    MVRTextFormat::spacingType(format, nullptr);
}

void TestSettings::normalizesPageBreaks_data()
{
    // A letter per paragraph: '.' none, '0' automatic, b(efore), a(fter), 2 both
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");

    QTest::newRow("consistent") << "b.b"
                                << "b.b";
    QTest::newRow("after becomes before") << "a.a."
                                          << ".b.b";
    QTest::newRow("after the last") << "..a"
                                    << "..a";
    QTest::newRow("both, then before") << "2b."
                                       << "bb.";
    QTest::newRow("after in a row") << "aaa"
                                    << ".b2";
    QTest::newRow("automatic") << "0.0"
                               << "...";
}

void TestSettings::normalizesPageBreaks()
{
    QFETCH(const QString, before);
    const QString letters = QStringLiteral("0b..............a2");
    QTextDocument document;
    QTextCursor cursor(&document);
    for (int i = 0; i < before.size(); ++i) {
        if (i > 0)
            cursor.insertBlock(QTextBlockFormat());
        QTextBlockFormat format;
        if (before[i] != QLatin1Char('.'))
            format.setPageBreakPolicy(QTextFormat::PageBreakFlags(int(letters.indexOf(before[i]))));
        cursor.setBlockFormat(format);
    }
    document.clearUndoRedoStacks();
    STextDoc::normalizePageBreaks(&document);
    QString after;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QTextBlockFormat format = block.blockFormat();
        after += format.hasProperty(QTextFormat::PageBreakPolicy)
            ? letters[int(format.pageBreakPolicy())]
            : QLatin1Char('.');
    }
    QTEST(after, "after");
    QCOMPARE(document.isUndoAvailable(), after != before);
}

void TestSettings::clearsTextOptionFlags()
{
    QTextDocument document;
    QTextOption option(Qt::AlignRight);
    option.setFlags(QTextOption::ShowTabsAndSpaces | QTextOption::IncludeTrailingSpaces);
    document.setDefaultTextOption(option);
    STextDoc::clearDefaultTextOptionFlags(&document);
    QCOMPARE(int(document.defaultTextOption().flags()), 0);
    QCOMPARE(document.defaultTextOption().alignment(), Qt::AlignRight);
}

void TestSettings::convertsLengths()
{
    const QHash<int, double> inch {{MVRUnit::Points, 72},        {MVRUnit::Inches, 1},
                                   {MVRUnit::Centimeters, 2.54}, {MVRUnit::Millimeters, 25.4},
                                   {MVRUnit::Picas, 6},          {MVRUnit::Twips, 1440}};
    for (auto from = inch.cbegin(); from != inch.cend(); ++from) {
        for (auto to = inch.cbegin(); to != inch.cend(); ++to)
            QCOMPARE(MVRUnit::toUnit(MVRUnit::Unit(from.key()), MVRUnit::Unit(to.key()), *from),
                     *to);
    }
}

QTEST_MAIN(TestSettings)
#include "tst_settings.moc"
