// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/document/TextFragments_p.h>
#include <text/InlineMarkup_p.h>
#include <text/MVRTextDoc.h>

#include <QRandomGenerator>
#include <QTextTable>
#include <QtTest>

using MarkedText::fill;
using MarkedText::marks;

class TestInlineMarkup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writes_data();
    void writes();
    void writesLinkedImages_data();
    void writesLinkedImages();
    void reads_data();
    void reads();
    void readsBackWhatItWrote();
    void keepsNotesThatReachAcrossCells();
    void leavesUndoAsItShould();
    void isFastOnHostileText();
};

namespace {

/*! Codes, and what stands for them so that rows of a test can be read. */
constexpr const char *codes[][2]
    = {{"{\\Mvrn_annot \\color={\\R=1.000000\\G=0.000000\\B=0.000000} \\text=", "<a:"},
       {"\\end_Mvrn_annot}", ":a>"},
       {"{\\Mvrn_fn=", "<f:"},
       {"\\end_Mvrn_fn}", ":f>"},
       {"{\\Mvrn_ps=", "<p:"},
       {"\\end_Mvrn_ps}", ":p>"}};

QString shortened(QString text)
{
    for (const auto &code : codes)
        text.replace(QLatin1String(code[0]), QLatin1String(code[1]));
    return text;
}

QString spelledOut(QString text)
{
    for (const auto &code : codes)
        text.replace(QLatin1String(code[1]), QLatin1String(code[0]));
    return text;
}

QTextImageFormat linkedImage(double width, const QString &link)
{
    QTextImageFormat format;
    format.setName(QStringLiteral("picture"));
    format.setWidth(width);
    format.setHeight(2);
    format.setProperty(MVRTextFormat::ImageLinkProperty, link);
    return format;
}

constexpr int properties[]
    = {MVRTextFormat::InlineAnnotationProperty, MVRTextFormat::InlineFootnoteProperty,
       MVRTextFormat::PreserveFormattingProperty};

/*! Everything that is to survive writing and reading: text, notes, bold type and images. */
QStringList contentOf(const QTextDocument &document)
{
    QStringList content(document.toRawText());
    for (const int property : properties) {
        const FormatPattern pattern(property, true);
        const auto matches = [&](const QTextFormat &format) { return pattern.matches(format); };
        for (const MVRTextRange &run : runsBehind(&document, 0, matches))
            content << QStringLiteral("%1: %2-%3").arg(property).arg(run.start).arg(run.end);
    }
    for (FragmentWalker walker(&document, 0); walker.isValid(); walker.next()) {
        const QTextImageFormat format = walker.format().toImageFormat();
        for (int i = walker.start(); i < walker.end(); ++i) {
            if (format.fontWeight() == QFont::Bold)
                content << QStringLiteral("bold: %1").arg(i);
            if (format.isImageFormat())
                content << QString::number(format.width())
                        << format.stringProperty(MVRTextFormat::ImageLinkProperty);
        }
    }
    return content;
}

// Letters of every plane, and what looks like codes or parts of them.
QString piece(QRandomGenerator &random)
{
    static const QStringList pieces
        = QStringLiteral("word |{|}|\\|\u00a0|\u2028|\u05d0\u0301|\ufffd|\U00010330\U0001F600|"
                         "\U00020000|\U000E0041\U0010FFFD|{\\Mvrn_fn|\\end_Mvrn_f}|<$MvrKeepWith|"
                         "{\\Mvrn_annot \\color={\\R=-1\\G=0\\B=0} \\text=|[w:1;h:2]=|"
                         "{$MVRImageLink[w:1.5;h:2]=x}")
              .split(QLatin1Char('|'));
    return pieces.at(random.bounded(pieces.size()));
}

void fillAtRandom(QTextDocument *document, QRandomGenerator &random)
{
    QTextCursor cursor(document);
    QTextCharFormat format;
    for (int i = random.bounded(1, 40); i > 0; --i) {
        // Few changes, so that notes run over several pieces and paragraphs.
        if (random.bounded(3) == 0)
            format.setProperty(properties[random.bounded(3)], random.bounded(2) == 0);
        if (random.bounded(4) == 0)
            format.setFontWeight(random.bounded(2) == 0 ? QFont::Bold : QFont::Normal);
        QTextCharFormat image
            = linkedImage(random.bounded(1, 40), QStringLiteral("/%1.png").arg(i % 3));
        image.merge(format);
        const int kind = random.bounded(40);
        if (kind == 0)
            cursor.insertTable(1, 2);
        else if (kind < 6)
            cursor.insertBlock(QTextBlockFormat(), format);
        else if (kind < 11)
            cursor.insertImage(image.toImageFormat());
        else
            cursor.insertText(piece(random), format);
    }
}

} // namespace

void TestInlineMarkup::writes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marked");
    QTest::addColumn<QString>("written");

    QTest::newRow("two notes") << "xabyc."
                               << ".ff.f."
                               << "x<f:ab:f>y<f:c:f>.";
    QTest::newRow("bold inside a note") << "xabcy"
                                        << ".aAa."
                                        << "x<a:abc:a>y";
    QTest::newRow("over paragraphs") << "xa\n\nby"
                                     << ".ffff."
                                     << "x<f:a\n\nb:f>y";
    // The opening code takes the format of the text before it.
    QTest::newRow("annotation behind a footnote") << "xfa"
                                                  << ".fa"
                                                  << "x<f:f<a::f>a:a>";
    QTest::newRow("footnote in preserved text") << "xpfpy"
                                                << ".pPp."
                                                << "x<p:p<f:f:f>p:p>y";
    QTest::newRow("both begin together") << "xfpy"
                                         << ".Pp."
                                         << "x<f:<p:f:f>p:p>y";
    QTest::newRow("both begin a paragraph") << "fpy"
                                            << "Pp."
                                            << "<p:<f:f:f>p:p>y";
    QTest::newRow("inspector notes") << "abc"
                                     << "1f5"
                                     << "a<f:b:f>c";
}

void TestInlineMarkup::writes()
{
    QFETCH(const QString, text);
    QFETCH(const QString, marked);
    QFETCH(const QString, written);
    QTextDocument document;
    fill(&document, text, marked);
    MVRTextDoc::toInlineMarkup(&document);
    QCOMPARE(shortened(document.toPlainText()), written);
    QVERIFY(!marks(document).contains(QRegularExpression(QStringLiteral("[aAfpP1-8]"))));

    fill(&document, text, marked);
    InlineMarkup::writeNoteCodes(&document);
    QVERIFY(!marks(document).contains(QRegularExpression(QStringLiteral("[aAf]"))));
    QCOMPARE(marks(document).contains(QLatin1Char('p')), written.contains(QLatin1String("<p:")));
    QCOMPARE(marks(document).contains(QLatin1Char('1')), marked.contains(QLatin1Char('1')));
}

void TestInlineMarkup::writesLinkedImages_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>("readBack");

    const QString image(QChar::ObjectReplacementCharacter);
    QTest::newRow("path") << 200.0 << "/%1"
                          << "{$MVRImageLink[w:200;h:2]=/%1}" << image;
    QTest::newRow("no link") << 1.0 << "" << image << image;
    // What does not come back:
    QTest::newRow("no plain number") << 1234567.0 << "a"
                                     << "{$MVRImageLink[w:1.23457e+06;h:2]=a}"
                                     << "{$MVRImageLink[w:1.23457e+06;h:2]=a}";
    QTest::newRow("brace") << 1.0 << "a}b"
                           << "{$MVRImageLink[w:1;h:2]=a}b}" << QStringLiteral("\ufffcb}");
}

void TestInlineMarkup::writesLinkedImages()
{
    QFETCH(const double, width);
    QFETCH(const QString, link);
    QFETCH(const QString, written);
    QFETCH(const QString, readBack);
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertImage(linkedImage(width, link));
    cursor.insertImage(linkedImage(width, link)); // one fragment with the first
    QTextCharFormat format;
    format.setProperty(MVRTextFormat::ImageLinkProperty, QStringLiteral("no image"));
    cursor.insertText(QStringLiteral("x"), format);
    MVRTextDoc::toInlineMarkup(&document);
    QCOMPARE(document.toRawText(), written + written + QLatin1Char('x'));
    MVRTextDoc::fromInlineMarkup(&document);
    QCOMPARE(document.toRawText(), readBack + readBack + QLatin1Char('x'));
}

void TestInlineMarkup::reads_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read");
    QTest::addColumn<QString>("marked"); // without the codes that are left

    QTest::newRow("empty note") << "x<f::f>y"
                                << "xy"
                                << "..";
    QTest::newRow("not nested") << "<f:a<f:b:f>c:f>"
                                << "a<f:bc:f>"
                                << "ff.";
    QTest::newRow("over paragraphs") << "<a:a\nb:a>c"
                                     << "a\nbc"
                                     << "aaa.";
    QTest::newRow("crossing kinds") << "<p:a<f:b:p>c:f>d"
                                    << "abcd"
                                    << "pPf.";
    QTest::newRow("closing code first") << ":f>a<f:b:f>"
                                        << ":f>ab"
                                        << ".f";
    QTest::newRow("unpaired ones end a kind") << "<f:a:f><f:b<a:c:a>"
                                              << "a<f:bc"
                                              << "f.a";
    QTest::newRow("made by another kind") << "{\\Mvrn_p<f::f>s=a:p>"
                                          << "a"
                                          << "p";
    QTest::newRow("made by its own kind") << "{\\Mvrn_<f::f>fn=a:f>"
                                          << "<f:a:f>"
                                          << ".";
    QTest::newRow("no blanks, any digits") << "{\\Mvrn_annot\\color={\\R=0.5\\G=..\\B=7}\\text=n:a>"
                                           << "n"
                                           << "a";
    QTest::newRow("no-break spaces")
        << "{\\Mvrn_annot\u00a0\\color={\\R=0\\G=0\\B=0}\u00a0\\text=n:a>"
        << "n"
        << "a";
    QTest::newRow("negative colour")
        << "{\\Mvrn_annot \\color={\\R=-1\\G=0\\B=0} \\text=x:a>"
        << "{\\Mvrn_annot \\color={\\R=-1\\G=0\\B=0} \\text=x:a>" << QString(43, QLatin1Char('.'));
    QTest::newRow("split code") << "{\\Mvrn_\nfn=x:f>"
                                << "{\\Mvrn_\nfn=x:f>"
                                << "............";
    QTest::newRow("markers") << "a<$mvrkeepWITHnext>b<$MvrKeepWithNext>"
                             << "ab"
                             << "..";
    QTest::newRow("markers in a marker")
        << "<$Mvr<$MvrKeepWithNext>Keep<$Mvr<$MvrKeepWithNext>KeepWithNext>WithNext>c"
        << "c"
        << ".";
    QTest::newRow("marker in a beginning") << "<$MvrK<$MvrKeepWithNext>"
                                           << "<$MvrK"
                                           << "......";
    QTest::newRow("marker in a code") << "{\\Mvrn_f<$MvrKeepWithNext>n=x:f>"
                                      << "x"
                                      << "f";
}

void TestInlineMarkup::reads()
{
    QFETCH(const QString, text);
    QFETCH(const QString, read);
    QFETCH(const QString, marked);
    QTextDocument document;
    document.setPlainText(spelledOut(text));
    MVRTextDoc::fromInlineMarkup(&document);
    QCOMPARE(shortened(document.toPlainText()), read);
    QString seen = marks(document);
    for (int i = read.size() - 3; i >= 0; --i) {
        const QString code = read.mid(i, 3);
        if (spelledOut(code) != code)
            seen.remove(spelledOut(read.left(i)).size(), spelledOut(code).size());
    }
    QCOMPARE(seen, marked);
}

void TestInlineMarkup::readsBackWhatItWrote()
{
    QRandomGenerator random(20);
    for (int i = 0; i < 1500; ++i) {
        QTextDocument document;
        fillAtRandom(&document, random);
        const QStringList content = contentOf(document);
        MVRTextDoc::toInlineMarkup(&document);
        const QString written = document.toPlainText();
        MVRTextDoc::fromInlineMarkup(&document);
        QVERIFY2(contentOf(document) == content, qPrintable(written));
    }
}

// All but one cell: what a cursor selects between two cells is a rectangle, or the whole table.
void TestInlineMarkup::keepsNotesThatReachAcrossCells()
{
    for (int plainCell = 0; plainCell < 4; ++plainCell) {
        QTextDocument document;
        QTextCursor cursor(&document);
        cursor.insertText(QStringLiteral("before"));
        const QTextTable *table = cursor.insertTable(2, 2);
        for (int i = 0; i < 4; ++i)
            table->cellAt(i / 2, i % 2).firstCursorPosition().insertText(QString::number(i));
        QTextCharFormat format;
        format.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
        cursor.select(QTextCursor::Document);
        cursor.mergeCharFormat(format);
        cursor = table->cellAt(plainCell / 2, plainCell % 2).firstCursorPosition();
        cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor);
        format.setProperty(MVRTextFormat::InlineFootnoteProperty, false);
        cursor.mergeCharFormat(format);

        const QStringList content = contentOf(document);
        MVRTextDoc::toInlineMarkup(&document);
        QCOMPARE(contentOf(document).size(), 1);
        MVRTextDoc::fromInlineMarkup(&document);
        QCOMPARE(contentOf(document), content);
    }
}

void TestInlineMarkup::leavesUndoAsItShould()
{
    QTextDocument document;
    fill(&document, QStringLiteral("afbf"), QStringLiteral(".f.f"));
    MVRTextDoc::toInlineMarkup(&document);
    document.undo(); // of one note only
    QCOMPARE(marks(document).count(QLatin1Char('f')), 1);
    document.undo();
    QCOMPARE(marks(document), QStringLiteral(".f.f"));

    MVRTextDoc::toInlineMarkup(&document);
    document.setUndoRedoEnabled(false);
    MVRTextDoc::fromInlineMarkup(&document);
    QVERIFY(document.isUndoRedoEnabled());
    QVERIFY(!document.isUndoAvailable());
    MVRTextDoc::toInlineMarkup(nullptr);
    MVRTextDoc::fromInlineMarkup(nullptr);
}

// Anything quadratic takes minutes for megabytes in one paragraph, until the program is stopped.
void TestInlineMarkup::isFastOnHostileText()
{
    for (const char *piece :
         {"{$MVRImageLink[w:1;h:1]=x", "{$MVRImageLink[w:", "{$MVRImageLink[w:11111111111",
          "{\\Mvrn_fn=", "{\\Mvrn_annot \\color={\\R=1", "<$MvrKeepWith<$MvrKeepWithNext>"}) {
        QTextDocument document;
        document.setPlainText(QString::fromLatin1(piece).repeated(100000) + QLatin1Char('}'));
        MVRTextDoc::fromInlineMarkup(&document);
        QVERIFY2(document.blockCount() == 1, piece);
    }
}

QTEST_MAIN(TestInlineMarkup)
#include "tst_inlinemarkup.moc"
