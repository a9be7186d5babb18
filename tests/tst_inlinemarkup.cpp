#include "MarkedText.h"

#include <core/TextFragments_p.h>
#include <text/InlineMarkup_p.h>
#include <text/MVRTextDoc.h>

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QTextTable>
#include <QtTest>

using MarkedText::fill;
using MarkedText::marks;
using MarkedText::select;

class TestInlineMarkup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writes_data();
    void writes();
    void writesLinkedImages_data();
    void writesLinkedImages();
    void dropsInspectorNotesOnlyFromWholeMarkup();
    void reads_data();
    void reads();
    void removesKeepWithNextMarkers_data();
    void removesKeepWithNextMarkers();
    void readsBackWhatItWrote();
    void readsBackNotesInTables();
    void saysWhatDoesNotComeBack_data();
    void saysWhatDoesNotComeBack();
    void leavesUndoAsItShould();
    void isFastOnHostileText_data();
    void isFastOnHostileText();
};

namespace {

const QString annotation
    = QStringLiteral("{\\Mvrn_annot \\color={\\R=1.000000\\G=0.000000\\B=0.000000} \\text=");

/*! Shortens the codes to one letter each, so that rows of a test can be read. */
QString shortened(QString text)
{
    text.replace(annotation, QLatin1String("<a:"));
    text.replace(QLatin1String("\\end_Mvrn_annot}"), QLatin1String(":a>"));
    text.replace(QLatin1String("{\\Mvrn_fn="), QLatin1String("<f:"));
    text.replace(QLatin1String("\\end_Mvrn_fn}"), QLatin1String(":f>"));
    text.replace(QLatin1String("{\\Mvrn_ps="), QLatin1String("<p:"));
    return text.replace(QLatin1String("\\end_Mvrn_ps}"), QLatin1String(":p>"));
}

QString spelledOut(QString text)
{
    text.replace(QLatin1String("<a:"), annotation);
    text.replace(QLatin1String(":a>"), QLatin1String("\\end_Mvrn_annot}"));
    text.replace(QLatin1String("<f:"), QLatin1String("{\\Mvrn_fn="));
    text.replace(QLatin1String(":f>"), QLatin1String("\\end_Mvrn_fn}"));
    text.replace(QLatin1String("<p:"), QLatin1String("{\\Mvrn_ps="));
    return text.replace(QLatin1String(":p>"), QLatin1String("\\end_Mvrn_ps}"));
}

/*! The marks of a text after spelledOut(): those of a short code go on over all of the code. */
QString spelledOutMarks(const QString &text, const QString &marked)
{
    static const QRegularExpression code(QStringLiteral("<[afp]:|:[afp]>"));
    QString result = marked;
    int growth = 0;
    for (auto codes = code.globalMatch(text); codes.hasNext();) {
        const QRegularExpressionMatch match = codes.next();
        const int more = spelledOut(match.captured()).size() - match.capturedLength();
        const int position = match.capturedStart() + growth;
        result.insert(position, QString(more, result.at(position)));
        growth += more;
    }
    return result;
}

QTextImageFormat linkedImage(double width, double height, const QString &link)
{
    QTextImageFormat format;
    format.setName(QStringLiteral("picture"));
    format.setWidth(width);
    format.setHeight(height);
    format.setProperty(MVRTextFormat::ImageLinkProperty, link);
    return format;
}

constexpr int noteProperties[]
    = {MVRTextFormat::InlineAnnotationProperty, MVRTextFormat::InlineFootnoteProperty,
       MVRTextFormat::PreserveFormattingProperty};

/*! Everything that is to survive writing and reading: text, notes, bold type and images. */
QStringList contentOf(const QTextDocument &document)
{
    QStringList content(document.toRawText());
    for (const int property : noteProperties) {
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
                content << QStringLiteral("%1x%2 %3")
                               .arg(format.width())
                               .arg(format.height())
                               .arg(format.stringProperty(MVRTextFormat::ImageLinkProperty));
        }
    }
    return content;
}

// Letters of every plane, and what looks like codes or parts of them.
const QStringList &pieces()
{
    static const QStringList list = {
        QStringLiteral("word "),
        QStringLiteral("{"),
        QStringLiteral("}"),
        QStringLiteral("\\"),
        QStringLiteral("\u00a0"),
        QStringLiteral("\u2028"),
        QStringLiteral("\u05d0\u0301"),
        QStringLiteral("\ufffd"),
        QStringLiteral("\U00010330\U0001F600\U00020000\U000E0041\U0010FFFD"),
        QStringLiteral("{\\Mvrn_fn"),
        QStringLiteral("\\end_Mvrn_f}"),
        QStringLiteral("{\\Mvrn_annot \\color={\\R=-1\\G=0\\B=0} \\text="),
        QStringLiteral("<$MvrKeepWith"),
        QStringLiteral("{$MVRImageLink[w:1.5;h:2]=x}"),
        QStringLiteral("[w:1;h:2]="),
    };
    return list;
}

void fillAtRandom(QTextDocument *document, QRandomGenerator &random)
{
    QTextCursor cursor(document);
    QTextCharFormat format;
    const int count = random.bounded(1, 40);
    for (int i = 0; i < count; ++i) {
        // Few changes, so that notes run over several pieces and paragraphs.
        if (random.bounded(3) == 0)
            format.setProperty(noteProperties[random.bounded(3)], random.bounded(2) == 0);
        if (random.bounded(4) == 0)
            format.setFontWeight(random.bounded(2) == 0 ? QFont::Bold : QFont::Normal);
        QTextCharFormat image
            = linkedImage(random.bounded(1, 40), random.bounded(1, 40),
                          QStringLiteral("/no such folder/%1.png").arg(random.bounded(3)));
        image.merge(format);
        switch (random.bounded(8)) {
        case 0:
            cursor.insertBlock(QTextBlockFormat(), format);
            break;
        case 1:
            cursor.insertImage(image.toImageFormat());
            break;
        default:
            cursor.insertText(pieces().at(random.bounded(pieces().size())), format);
        }
    }
}

} // namespace

void TestInlineMarkup::writes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("marked");
    QTest::addColumn<QString>("written");

    QTest::newRow("nothing") << "ab"
                             << ".."
                             << "ab";
    QTest::newRow("annotation") << "abc"
                                << "aaa"
                                << "<a:abc:a>";
    QTest::newRow("two notes") << "xabyc."
                               << ".ff.f."
                               << "x<f:ab:f>y<f:c:f>.";
    QTest::newRow("bold inside a note") << "xabcy"
                                        << ".aAa."
                                        << "x<a:abc:a>y";
    QTest::newRow("over paragraphs") << "xa\n\nby"
                                     << ".ffff."
                                     << "x<f:a\n\nb:f>y";
    QTest::newRow("kinds side by side") << "xaf"
                                        << ".af"
                                        << "x<a:a:a><f:f:f>";
    // The opening code of the annotation takes the footnote's format.
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
    QVERIFY(!marks(document).contains(QRegularExpression(QStringLiteral("[aAfpP]"))));
}

void TestInlineMarkup::writesLinkedImages_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("written");

    QTest::newRow("path") << 200.0 << "/a.png"
                          << "{$MVRImageLink[w:200;h:100]=/a.png}";
    QTest::newRow("fraction") << 150.5 << "a"
                              << "{$MVRImageLink[w:150.5;h:100]=a}";
    QTest::newRow("large") << 1234567.0 << "a"
                           << "{$MVRImageLink[w:1.23457e+06;h:100]=a}";
    QTest::newRow("place holders") << 1.0 << "%1%2%3"
                                   << "{$MVRImageLink[w:1;h:100]=%1%2%3}";
    QTest::newRow("no link") << 1.0 << "" << QString(QChar::ObjectReplacementCharacter);
}

void TestInlineMarkup::writesLinkedImages()
{
    QFETCH(const double, width);
    QFETCH(const QString, link);
    QFETCH(const QString, written);
    QTextDocument document;
    QTextCursor cursor(&document);
    cursor.insertImage(linkedImage(width, 100, link));
    cursor.insertImage(linkedImage(width, 100, link)); // one fragment with the first
    QTextCharFormat format;
    format.setProperty(MVRTextFormat::ImageLinkProperty, QStringLiteral("no image"));
    cursor.insertText(QStringLiteral("x"), format);
    MVRTextDoc::toInlineMarkup(&document);
    QCOMPARE(document.toRawText(), written + written + QLatin1Char('x'));
}

void TestInlineMarkup::dropsInspectorNotesOnlyFromWholeMarkup()
{
    QTextDocument document;
    fill(&document, QStringLiteral("abc"), QStringLiteral("1f5"));
    InlineMarkup::writeNoteCodes(&document);
    QCOMPARE(shortened(document.toPlainText()), QStringLiteral("a<f:b:f>c"));
    QCOMPARE(MVRTextDoc::commentsMap(&document, -1, -1).size(), 2);
    MVRTextDoc::toInlineMarkup(&document);
    QVERIFY(!MVRTextDoc::hasInspectorCommentsOrFootnotes(&document));
}

void TestInlineMarkup::reads_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read");
    QTest::addColumn<QString>("marked");

    QTest::newRow("empty note") << "x<f::f>y"
                                << "xy"
                                << "..";
    QTest::newRow("not nested") << "<f:a<f:b:f>c:f>"
                                << "a<f:bc:f>"
                                << "fffff....";
    QTest::newRow("over paragraphs") << "<a:a\nb:a>c"
                                     << "a\nbc"
                                     << "aaa.";
    QTest::newRow("crossing kinds") << "<p:a<f:b:p>c:f>d"
                                    << "abcd"
                                    << "pPf.";
    QTest::newRow("closing code first") << ":f>a<f:b:f>"
                                        << ":f>ab"
                                        << "....f";
    QTest::newRow("unpaired ones end a kind") << "<f:a:f><f:b<a:c:a>"
                                              << "a<f:bc"
                                              << "f....a";
    QTest::newRow("made by an inner pair") << "{\\Mvrn_p<f::f>s=a:p>"
                                           << "a"
                                           << "p";
    QTest::newRow("made by an earlier pair of its kind") << "{\\Mvrn_<f::f>fn=a:f>"
                                                         << "<f:a:f>"
                                                         << ".......";
    QTest::newRow("no blanks, any digits") << "{\\Mvrn_annot\\color={\\R=0.5\\G=..\\B=7}\\text=n:a>"
                                           << "n"
                                           << "a";
    QTest::newRow("no-break spaces")
        << "{\\Mvrn_annot\u00a0\\color={\\R=0\\G=0\\B=0}\u00a0\\text=n:a>"
        << "n"
        << "a";
    const QString negative = QStringLiteral("{\\Mvrn_annot \\color={\\R=-1\\G=0\\B=0} \\text=x:a>");
    QTest::newRow("negative colour")
        << negative << negative << QString(negative.size(), QLatin1Char('.'));
    const QString split = QStringLiteral("{\\Mvrn_annot \\color={\\R=1\\G=0\n\\B=0} \\text=x:a>");
    QTest::newRow("code over two paragraphs")
        << split << split << QString(split.size(), QLatin1Char('.'));
    QTest::newRow("another case") << "{\\mvrn_fn=a:f>"
                                  << "{\\mvrn_fn=a:f>" << QString(14, QLatin1Char('.'));
}

void TestInlineMarkup::reads()
{
    QFETCH(const QString, text);
    QFETCH(const QString, read);
    QFETCH(const QString, marked);
    QTextDocument document;
    document.setPlainText(spelledOut(text));
    MVRTextDoc::fromInlineMarkup(&document);
    QCOMPARE(document.toPlainText(), spelledOut(read));
    QCOMPARE(marks(document), spelledOutMarks(read, marked));
}

void TestInlineMarkup::removesKeepWithNextMarkers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("left");

    QTest::newRow("any case") << "a<$mvrkeepWITHnext>b<$MvrKeepWithNext>"
                              << "ab";
    QTest::newRow("one in another") << "a<$Mvr<$MvrKeepWithNext>KeepWithNext>b"
                                    << "ab";
    QTest::newRow("several in another, and one behind")
        << "<$Mvr<$MvrKeepWithNext>Keep<$Mvr<$MvrKeepWithNext>KeepWithNext>WithNext>c"
           "<$MvrKeepWithNext>d"
        << "cd";
    QTest::newRow("restarted") << "<$MvrKeep<$MvrKeepWithNext>"
                               << "<$MvrKeep";
    QTest::newRow("over paragraphs") << "<$MvrKeep\nWithNext>"
                                     << "<$MvrKeep\nWithNext>";
    QTest::newRow("makes another code") << "{\\Mvrn_f<$MvrKeepWithNext>n=x\\end_Mvrn_fn}"
                                        << "x";
}

void TestInlineMarkup::removesKeepWithNextMarkers()
{
    QFETCH(const QString, text);
    QFETCH(const QString, left);
    QTextDocument document;
    document.setPlainText(text);
    MVRTextDoc::fromInlineMarkup(&document);
    QCOMPARE(document.toPlainText(), left);
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

void TestInlineMarkup::readsBackNotesInTables()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextTable *table = cursor.insertTable(1, 2);
    QTextCharFormat note;
    note.setProperty(MVRTextFormat::InlineFootnoteProperty, true);
    for (int column : {0, 1})
        table->cellAt(0, column).firstCursorPosition().insertText(QStringLiteral("note"), note);
    const QStringList content = contentOf(document);
    MVRTextDoc::toInlineMarkup(&document);
    QCOMPARE(document.toPlainText().count(QLatin1String("\\end_Mvrn_fn}")), 2);
    MVRTextDoc::fromInlineMarkup(&document);
    QCOMPARE(contentOf(document), content);
}

void TestInlineMarkup::saysWhatDoesNotComeBack_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("read");

    QTest::newRow("fraction of a pixel") << 1.5 << "a"
                                         << "{$MVRImageLink[w:1.5;h:2]=a}";
    QTest::newRow("brace in the path") << 1.0 << "a}b"
                                       << "\ufffcb}";
    QTest::newRow("line feed in the path") << 1.0 << "a\nb"
                                           << "{$MVRImageLink[w:1;h:2]=a\u2029b}";
}

void TestInlineMarkup::saysWhatDoesNotComeBack()
{
    QFETCH(const double, width);
    QFETCH(const QString, link);
    QFETCH(const QString, read);
    QTextDocument document;
    QTextCursor(&document).insertImage(linkedImage(width, 2, link));
    MVRTextDoc::toInlineMarkup(&document);
    MVRTextDoc::fromInlineMarkup(&document);
    QCOMPARE(document.toRawText(), read);
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

void TestInlineMarkup::isFastOnHostileText_data()
{
    QTest::addColumn<QString>("piece");

    QTest::newRow("open image codes") << "{$MVRImageLink[w:1;h:1]=x";
    QTest::newRow("image codes without a size") << "{$MVRImageLink[w:";
    QTest::newRow("digits") << "{$MVRImageLink[w:1111111111111111111111111111111";
    QTest::newRow("open footnotes") << "{\\Mvrn_fn=";
    QTest::newRow("open colours") << "{\\Mvrn_annot \\color={\\R=1";
    QTest::newRow("markers in markers") << "<$MvrKeepWith<$MvrKeepWithNext>";
}

void TestInlineMarkup::isFastOnHostileText()
{
    QFETCH(const QString, piece);
    const auto seconds = [&piece](int count) {
        QTextDocument document;
        document.setPlainText(piece.repeated(count) + QLatin1Char('}'));
        QElapsedTimer timer;
        timer.start();
        MVRTextDoc::fromInlineMarkup(&document);
        return timer.nsecsElapsed() / 1e9;
    };
    // Anything quadratic takes minutes for a megabyte in one paragraph.
    QVERIFY(seconds(50000) < 20);
}

QTEST_MAIN(TestInlineMarkup)
#include "tst_inlinemarkup.moc"
