// SPDX-License-Identifier: MIT
#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>

#include <QBuffer>
#include <QImage>
#include <QRandomGenerator>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <QtTest>

// Pictures, text boxes, bookmarks and what a file says about itself.
class TestRtfStructure : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eastAsianLetters();
    void pictures_data();
    void pictures();
    void pictureUsedTooOften();
    void cropsNoPictureOfItsOwn();
    void floatingPicture();
    void textBoxes_data();
    void textBoxes();
    void keepsTextBehindAnyGroup();
    void bookmarks();
    void headings();
    void title();
    void pageAndItsTexts();
    void lookAlikes_data();
    void lookAlikes();
    void boundsFonts();
    void sizes_data();
    void boundsWhatNests();
    void sizes();
};

// What \dbch announces is of other letters than what \loch says.
void TestRtfStructure::eastAsianLetters()
{
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(
        "{\\rtf1{\\fonttbl{\\f0 Arial;}{\\f6 SimSun;}}{\\rtlch\\af0\\afs90\\ab \\ltrch\\dbch\\af6"
        "\\afs40\\ab\\loch\\af0\\f0\\fs20\\i "
        "w\\'e9\\u26085?\\u-10187?\\u-8951?{\\dbch\\ab0\\ai0\\loch"
        "\\u26412?}\\plain\\u26412?}}",
        &document));
    QStringList runs;
    for (auto it = document.begin().begin(); !it.atEnd(); ++it) {
        const QTextCharFormat format = it.fragment().charFormat();
        runs += it.fragment().text()
            + QStringLiteral(" %1 %2")
                  .arg(MVRToolkit::fontFamily(format))
                  .arg(format.fontPointSize())
            + QLatin1String(format.fontWeight() == QFont::Bold ? "b" : "")
            + QLatin1String(format.fontItalic() ? "i" : "");
    }
    const QStringList expected {QStringLiteral("wé Arial 10i"), QStringLiteral("日 SimSun 20bi"),
                                QString::fromUtf8("\xf0\x9d\x94\x89 Arial 10i"),
                                QStringLiteral("本 SimSun 20"), QStringLiteral("本  0")};
    QCOMPARE(runs, expected);
}

void TestRtfStructure::pictures_data()
{
    QTest::addColumn<QByteArray>("picture"); // behind "{\\pict"
    QTest::addColumn<QByteArray>("file"); // what the document keeps; empty: a placeholder
    QTest::addColumn<QSizeF>("size");

    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.setPixel(1, 0, qRgb(0, 0, 255));
    const auto fileOf = [](const QImage &shown, const char *format) {
        QByteArray file;
        QBuffer buffer(&file);
        buffer.open(QIODevice::WriteOnly);
        shown.save(&buffer, format);
        return file;
    };
    const QByteArray png = fileOf(image, "PNG");
    const QByteArray jpeg = fileOf(image, "JPG");
    const QByteArray bitmap = fileOf(image, "BMP");
    QByteArray digits = png.toHex();
    for (int at = 60; at < digits.size(); at += 61)
        digits.insert(at, "\r\n"); // programs break the lines, between the digits of a byte too
    QImage pixels(20000, 5001, QImage::Format_Mono); // more than 100 million
    pixels.fill(0);
    const QByteArray vast = fileOf(pixels, "PNG");

    QTest::newRow("hexadecimal") << "\\pngblip\\picwgoal600\\pichgoal300 " + digits << png
                                 << QSizeF(30, 15);
    QByteArray strewn = png.toHex().toUpper();
    for (int at = 10; at < strewn.size(); at += 11)
        strewn.insert(at, "gz-"); // no digits
    QTest::newRow("letters among digits") << "\\pngblip " + strewn << png << QSizeF(0, 0);
    QTest::newRow("scaled") << "\\picscalex50\\picscaley200\\pngblip\\picwgoal600\\pichgoal300 "
            + digits << png << QSizeF(15, 30);
    QTest::newRow("pixels only") << "\\pngblip\\picw3\\pich2 " + digits << png << QSizeF(2.25, 1.5);
    QTest::newRow("binary") << "{\\*\\blipuid 0011}\\pngblip\\bin" + QByteArray::number(png.size())
            + ' '
            + png << png << QSizeF(0, 0);
    QTest::newRow("JPEG") << "\\jpegblip " + jpeg.toHex() << jpeg << QSizeF(0, 0);
    QTest::newRow("bitmap without its head")
        << "\\dibitmap0 " + bitmap.mid(14).toHex() << fileOf(QImage::fromData(bitmap), "PNG")
        << QSizeF(0, 0);
    QByteArray claim = bitmap.mid(14);
    claim.replace(4, 8, QByteArray::fromHex("1027000010270000")); // 10,000 by 10,000 pixels
    QTest::newRow("bitmap larger than its bytes")
        << "\\dibitmap0 " + claim.toHex() << QByteArray() << QSizeF(0, 0);
    claim.replace(4, 8, QByteArray::fromHex("1002000001000000")); // 33 times its 64 bytes
    QTest::newRow("bitmap a little larger than packed bytes can say")
        << "\\dibitmap0 " + claim.toHex() << QByteArray() << QSizeF(0, 0);
    QTest::newRow("cropped")
        << "\\pngblip\\piccropl200\\piccropb100\\picscalex50\\picwgoal600\\pichgoal200 "
            + png.toHex()
        << fileOf(image.copy(1, 0, 2, 1), "PNG") << QSizeF(10, 5);
    QTest::newRow("cropped to nothing")
        << "\\pngblip\\piccropl400\\piccropr300\\picwgoal600\\pichgoal200 " + png.toHex() << png
        << QSizeF(30, 10);
    QTest::newRow("metafile") << QByteArray(
        "\\wmetafile8\\picw3\\pich4\\picwgoal200\\pichgoal100 00112233")
                              << QByteArray() << QSizeF(10, 5);
    QTest::newRow("metafile without a goal")
        << QByteArray("\\emfblip\\picw2540\\pich1270 00112233") << QByteArray() << QSizeF(72, 36);
    QTest::newRow("vast") << "\\pngblip " + vast.toHex() << QByteArray() << QSizeF(0, 0);
    QTest::newRow("vast goal") << QByteArray("\\picwgoal2000000000\\pichgoal-5 00") << QByteArray()
                               << QSizeF(10000, 0);
    QTest::newRow("damaged") << QByteArray("\\pngblip 89504e47 xyz") << QByteArray()
                             << QSizeF(0, 0);
}

void TestRtfStructure::pictures()
{
    QFETCH(const QByteArray, picture);
    QFETCH(const QByteArray, file);
    QFETCH(const QSizeF, size);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 a{\\b{\\*\\shppict{\\pict" + picture
                                         + "}}{\\nonshppict{\\pict 00}}}z}",
                                     &document));
    QCOMPARE(document.begin().text(), QStringLiteral("a\uFFFCz"));
    QTextCursor cursor(&document);
    cursor.setPosition(2);
    const QTextImageFormat format = cursor.charFormat().toImageFormat();
    QVERIFY(format.isValid());
    QCOMPARE(QSizeF(format.width(), format.height()), size);
    QCOMPARE(format.fontWeight(), int(QFont::Bold));
    const QVariant resource = document.resource(QTextDocument::ImageResource, QUrl(format.name()));
    QCOMPARE(resource.toByteArray(), file);
    QCOMPARE(format.toolTip().isEmpty(), !file.isEmpty());
    QVERIFY(!file.isEmpty() || !resource.value<QImage>().isNull());

    QTextDocument read;
    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&document, false), &read));
    QTextCursor again(&read);
    again.setPosition(2);
    QCOMPARE(again.charFormat().properties(), format.properties());
    const QVariant copy = read.resource(QTextDocument::ImageResource, QUrl(format.name()));
    QVERIFY(!copy.isNull());
    if (!file.isEmpty())
        QCOMPARE(copy.toByteArray(), file);

    // Metafiles are not shown, but other programs get them back.
    const bool isMetafile = picture.contains("\\wmetafile8") || picture.contains("\\emfblip");
    const QByteArray ours = MVRTextRtf::toRtfCData(&read, false).replace('\n', ' ');
    const QByteArray words = picture.left(picture.indexOf("\\picwgoal"));
    QCOMPARE(ours.contains(words.left(words.indexOf(' '))) && ours.contains(" 00112233}"),
             isMetafile);
}

// A few bytes of text can name a large picture again and again.
void TestRtfStructure::pictureUsedTooOften()
{
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    file.append(25 << 20, '\0');
    QTextDocument document;
    document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("p")), file);
    QTextImageFormat format;
    format.setName(QStringLiteral("p"));
    QTextCursor cursor(&document);
    for (const int width : {0, 60, 60, 90}) {
        format.setWidth(width);
        cursor.insertImage(format);
        cursor.insertText(QStringLiteral("x"));
    }
    const QByteArray rtf = MVRTextRtf::toRtfCData(&document, false);
    QVERIFY2(rtf.size() < 51 << 20, qPrintable(QString::number(rtf.size())));
    QCOMPARE(rtf.count("\\picwgoal1200\\pichgoal300\n"), 2); // other programs see the size
    QTextDocument read;
    QVERIFY(MVRTextRtf::fromRtfCData(rtf, &read));
    QCOMPARE(read.toPlainText(), document.toPlainText());
    QTextCursor last(&read);
    last.setPosition(7);
    QCOMPARE(last.charFormat().toImageFormat().width(), 90.0);
    QVERIFY(read.resource(QTextDocument::ImageResource, QUrl(QStringLiteral("p"))) == file);
}

// A name is that of one picture, which other places show as well.
void TestRtfStructure::cropsNoPictureOfItsOwn()
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QTextDocument document;
    document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("p")), image);
    QTextImageFormat format;
    format.setName(QStringLiteral("p"));
    format.setWidth(30);
    format.setHeight(20);
    QTextCursor(&document).insertImage(format);
    QTextDocument read;
    QVERIFY(MVRTextRtf::fromRtfCData(
        MVRTextRtf::toRtfCData(&document, false).replace("\\picwgoal", "\\piccropl200\\picwgoal"),
        &read));
    const QVariant picture = read.resource(QTextDocument::ImageResource, QUrl(QStringLiteral("p")));
    QCOMPARE(QImage::fromData(picture.toByteArray()).size(), image.size());
}

void TestRtfStructure::floatingPicture()
{
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    const QByteArray pict = "{\\sv{\\pict\\picwgoal90\\pichgoal90\\pngblip " + file.toHex() + "}}";
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(
        "{\\rtf1 a{\\b{\\shp{\\*\\shpinst\\shpleft-200\\shptop100\\shpright1000\\shpbottom700"
        "{\\sp{\\sn fillBlip}"
            + pict + "}{\\sp{\\sn pib}" + pict
            + "}}{\\shprslt{\\pict 00}}}}b"
              "{\\v{\\shp{\\*\\shpinst{\\sp{\\sn pib}"
            + pict + "}}}}}",
        &document));
    QCOMPARE(document.begin().text(), QStringLiteral("a\uFFFCb"));
    QTextCursor cursor(&document);
    cursor.setPosition(2);
    const QTextImageFormat format = cursor.charFormat().toImageFormat();
    QCOMPARE(QSizeF(format.width(), format.height()), QSizeF(60, 30));
    QCOMPARE(document.resource(QTextDocument::ImageResource, QUrl(format.name())).toByteArray(),
             file);
}

void TestRtfStructure::textBoxes_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const QByteArray &body, const char *text) {
        QTest::newRow(name) << body << QString::fromLatin1(text);
    };
    const QByteArray box(
        "{\\shp{\\*\\shpinst\\shpleft9{\\sp{\\sn a}{\\sv b}}{\\shptxt \\pard box\\par two}}"
        "{\\shprslt old}}");
    row("before its paragraph", "one\\par here" + box + " on\\par", "one\nbox\ntwo\nhere on");
    row("at the end of a file", "a\\par" + box, "a\nbox\ntwo");
    row("in a table", "\\trowd\\cellx9\\cellx99\\intbl a\\cell " + box + "b\\cell\\row\\pard",
        "\na\nbox\ntwo\nb\n");
    row("box in a box", "{\\shp{\\shptxt x" + box + "}}y", "box\ntwo\nx\ny");
    row("cut off", "a{\\shp{\\shptxt b{\\b c", "bc\na");
    row("hidden", "a{\\v" + box + "}", "a");
    row("what nobody knows inside", "a{\\shp{\\shptxt b\\*\\zzz c}}d\\par e", "b\nad\ne");
    row("group of shapes",
        "a{\\shpgrp{\\*\\shpinst{\\sp{\\sn n}{\\sv v}}" + box + "{\\shpgrp{\\*\\shpinst" + box
            + "}}}{\\shprslt old}}b",
        "box\ntwo\nbox\ntwo\nab");
}

void TestRtfStructure::textBoxes()
{
    QFETCH(const QByteArray, body);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 " + body + '}', &document));
    QTEST(document.toPlainText(), "text");
}

namespace {

QByteArray randomGroup(QRandomGenerator &random, int depth)
{
    static const char *const pieces[]
        = {"\\*\\zzz ",   "\\*",           "\\footnote ",     "\\*\\annotation ",
           "\\header ",   "\\shp ",        "\\shptxt ",       "\\shpinst ",
           "\\field ",    "\\*\\fldinst ", "\\fldrslt ",      "\\upr ",
           "\\*\\ud ",    "\\pict ",       "\\nonshppict ",   "\\*\\shppict ",
           "\\*\\atnid ", "\\info ",       "\\*\\atrfstart ", "\\listtext ",
           "\\*\\pn ",    "\\fonttbl ",    "\\*\\mvrnote ",   "\\v ",
           "\\deleted ",  "\\cell ",       "\\row ",          "\\intbl ",
           "\\par ",      "a 1;"};
    QByteArray group("{");
    for (int left = random.bounded(7); left > 0; --left) {
        if (depth < 6 && random.bounded(3) == 0)
            group += randomGroup(random, depth + 1);
        else
            group += pieces[random.bounded(int(std::size(pieces)))];
    }
    return group + '}';
}

}

// A group ends what it began, wherever its words stand and whatever is left out of it.
void TestRtfStructure::keepsTextBehindAnyGroup()
{
    QRandomGenerator random(1);
    for (int i = 0; i < 2000; ++i) {
        const QByteArray rtf = "{\\rtf1 first" + randomGroup(random, 0) + randomGroup(random, 0)
            + "\\pard\\plain last}";
        QTextDocument document;
        MVRTextRtfNotes notes;
        QVERIFY(MVRTextRtf::fromRtfCData(rtf, &document, &notes));
        const QString text = document.toPlainText();
        QVERIFY2(text.contains(QLatin1String("first")) && text.endsWith(QLatin1String("last")),
                 rtf);
    }
}

void TestRtfStructure::bookmarks()
{
    const QByteArray rtf("{\\rtf1 a {\\*\\bkmkstart one}{\\*\\bkmkstart two}{\\*\\bkmkend two}"
                         "\\par\\u233?b{\\*\\bkmkend one}}");
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(rtf, &document));
    // Other programs get them from our file, and exact properties are not needed to read them.
    QByteArray ours = MVRTextRtf::toRtfCData(&document, true);
    ours.replace("mvrx", "none");
    for (const QByteArray &file : {rtf, ours}) {
        QVERIFY(MVRTextRtf::fromRtfCData(file, &document));
        QCOMPARE(document.toPlainText(), QString::fromUtf8("a \n\u00e9b"));
        const QTextFragment first = document.lastBlock().begin().fragment();
        QCOMPARE(first.length(), 1);
        QCOMPARE(first.charFormat().anchorNames(),
                 QStringList({QStringLiteral("one"), QStringLiteral("two")}));
    }
}

void TestRtfStructure::headings()
{
    QTextDocument document;
    QVERIFY(
        MVRTextRtf::fromRtfCData("{\\rtf1{\\stylesheet{\\s1\\outlinelevel0 A;}{\\s2 Heading 2;}"
                                 "{\\s3\\sbasedon1 B;}{\\s4\\outlinelevel9\\sbasedon1 C;}"
                                 "{\\s5 heading x;}{\\s6 no end}}{\\info{\\title T}}"
                                 "\\s1 a\\par\\pard\\s2 b\\par\\pard\\s3 c\\par\\pard\\s4 d\\par"
                                 "\\pard\\s5 e\\par\\pard\\outlinelevel0 f}",
                                 &document));
    QString levels;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        levels += QString::number(block.blockFormat().headingLevel());
    QCOMPARE(levels, QStringLiteral("121001"));
    QCOMPARE(document.metaInformation(QTextDocument::DocumentTitle), QStringLiteral("T"));
}

void TestRtfStructure::title()
{
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(
        "{\\rtf1{\\info{\\title A \\{B\\} \\u937?}{\\author X}{\\subject no}}"
        "{\\title t}ext}",
        &document));
    const QString title = QString::fromUtf8("A {B} \u03a9");
    QCOMPARE(document.metaInformation(QTextDocument::DocumentTitle), title);
    QCOMPARE(document.toPlainText(), QStringLiteral("ext"));
    QCOMPARE(document.property(MVRTextRtf::authorProperty).toString(), QStringLiteral("X"));

    QTextDocument read;
    QVERIFY(MVRTextRtf::fromRtfCData(MVRTextRtf::toRtfCData(&document, true), &read));
    QCOMPARE(read.metaInformation(QTextDocument::DocumentTitle), title);
    QCOMPARE(read.property(MVRTextRtf::authorProperty).toString(), QStringLiteral("X"));
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 other}", &read));
    QVERIFY(!read.property(MVRTextRtf::authorProperty).isValid());
    QVERIFY(!MVRTextRtf::toRtfCData(&document, false).contains("title")); // content has none
}

void TestRtfStructure::sizes_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<int>("count");
    QTest::newRow("100,000 cells") << QByteArray("\\trowd\\cellx900\\cellx1800\\intbl ")
                                   << QByteArray("a\\cell b\\cell\\row ") << 50000;
    QTest::newRow("joined cells") << QByteArray("\\intbl ")
                                  << QByteArray(
                                         "\\trowd\\clmgf\\cellx900\\clmrg\\cellx1800\\cell\\cell"
                                         "\\trowd\\cellx50\\cellx1800\\cell\\cell\\row ")
                                  << 10000;
    QTest::newRow("long row") << QByteArray("\\intbl ") << QByteArray("\\cellx900\\cell ")
                              << 100000;
    QTest::newRow("tables in tables")
        << QByteArray() << QByteArray("\\intbl\\itap999 a\\par\\itap1 ") << 20000;
    QTest::newRow("list of 20,000")
        << QByteArray("{\\*\\pn\\pnlvlbody\\pndec}") << QByteArray("a\\par ") << 20000;
}

void TestRtfStructure::sizes()
{
    QFETCH(const QByteArray, body);
    QFETCH(const QByteArray, row);
    QFETCH(const int, count);
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1" + body + row.repeated(count) + '}', &document));
    QVERIFY(document.blockCount() >= count);
}

void TestRtfStructure::pageAndItsTexts()
{
    QTextDocument document;
    MVRTextRtf::fromRtfCData(
        "{\\rtf1{\\fonttbl{\\f3 "
        "Odd;}}\\paperw11906\\paperh16838\\margl1134\\margt567{\\headerf\\pard }"
        "{\\header\\pard\\qc\\f3 Draft, p. {\\field{\\*\\fldinst  PAGE }{\\fldrslt 7}}\\par}\n"
        "{\\footer\\chpgn  of {\\field{\\*\\fldinst NUMPAGES}{\\fldrslt }}}\n{\\header second}"
        "\\pard Text\\par}",
        &document);
    QCOMPARE(document.toPlainText(), QStringLiteral("Text"));
    const QVariantMap page = document.property(MVRTextRtf::pageProperty).toMap();
    QCOMPARE(page.value(QStringLiteral("width")).toDouble(), 595.3);
    QCOMPARE(page.value(QStringLiteral("right")).toDouble(), 72.0);

    QTextDocument again;
    QByteArray rtf = MVRTextRtf::toRtfCData(&document, true);
    MVRTextRtf::fromRtfCData(rtf, &again);
    QCOMPARE(again.property(MVRTextRtf::pageProperty), document.property(MVRTextRtf::pageProperty));
    QCOMPARE(MVRTextRtf::toRtfCData(&again, true), rtf);
    for (const char *part :
         {"\\paperw11906\\paperh16838\\margl1134\\margr1440\\margt567\\margb1440", "\\titlepg{",
          "{\\headerf", "Draft, p. ", "\\*\\fldinst PAGE}{\\fldrslt",
          "\\*\\fldinst NUMPAGES}{\\fldrslt"})
        QVERIFY2(rtf.contains(part), rtf);
    QVERIFY(!rtf.contains("second"));

    QTextFrameFormat root = document.rootFrame()->frameFormat();
    root.setTopMargin(90);
    document.rootFrame()->setFrameFormat(root);
    rtf = MVRTextRtf::toRtfCData(&document, true);
    QVERIFY2(rtf.contains("\\margl1134\\margr1440\\margt1800\\margb1440"), rtf);

    document.setPageSize(QSizeF(612, 792)); // a page that a host sets goes before the file's
    QVERIFY(
        MVRTextRtf::toRtfCData(&document, true).contains("\\paperw12240\\paperh15840\\margl1134"));
    MVRTextRtf::fromRtfCData("{\\rtf1 x}", &document);
    QVERIFY(!document.property(MVRTextRtf::pageTextsProperty).isValid());
}

void TestRtfStructure::lookAlikes_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::newRow("bookmarks") << QByteArray("{\\*\\bkmkstart n#}x");
    QTest::newRow("bookmarks at one place") << QByteArray("{\\*\\bkmkstart n#}");
    QTest::newRow("tab stops") << QByteArray("\\pard\\tx# x\\par ");
    QTest::newRow("widths") << QByteArray("\\trowd\\cellx#\\intbl x\\cell\\row\\pard x\\par ");
    QTest::newRow("names that are exact")
        << QByteArray("{\\*\\mvrprops 1fe1l:#,;}\\pard\\plain\\mvrx# x\\par ");
    QTest::newRow("fonts") << QByteArray("{\\fonttbl{\\f# F#;}}\\f# x");
    QTest::newRow("frames") << QByteArray("x\\par{\\*\\mvrframe0}x\\par{\\*\\mvrframeend}");
    QTest::newRow("styles") << QByteArray("{\\stylesheet{\\s#\\sbasedon1#\\fs# S;}}\\s# x");
}

// The toolkit finds formats by a hash that not every property goes into.
void TestRtfStructure::lookAlikes()
{
    QFETCH(const QByteArray, body);
    constexpr int count = 40000;
    QByteArray rtf = "{\\rtf1 ";
    for (int number = 1001; number < 1001 + count; ++number)
        rtf += QByteArray(body).replace('#', QByteArray::number(number));
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(rtf + "x}", &document));
    QVERIFY(document.characterCount() > (body.contains('x') ? count : 1));
    if (body.contains("mvrframe")) // for each the toolkit looks through the others
        QCOMPARE(document.rootFrame()->childFrames().size(), 5000);
}

void TestRtfStructure::boundsFonts()
{
    QByteArray rtf = "{\\rtf1{\\fonttbl";
    for (int i = 0; i < 1100; ++i)
        rtf += QByteArray("{\\f#Font #;}").replace('#', QByteArray::number(i) + ' ');
    QTextDocument document;
    QVERIFY(MVRTextRtf::fromRtfCData(rtf + "}{\\f0 a}{\\f1099 b}{\\f999 c}}", &document));
    QStringList families;
    for (auto it = document.begin().begin(); !it.atEnd(); ++it)
        families += MVRToolkit::fontFamily(it.fragment().charFormat());
    const QStringList expected {QStringLiteral("Font 0"), QString(), QStringLiteral("Font 999")};
    QCOMPARE(families, expected);
}

/*! Beyond what any writer makes, groups share their settings and styles end their chain. */
void TestRtfStructure::boundsWhatNests()
{
    const auto isBold = [](const QByteArray &body, int position) {
        QTextDocument document;
        if (!MVRTextRtf::fromRtfCData("{\\rtf1" + body + '}', &document))
            return false;
        QTextCursor cursor(&document);
        cursor.setPosition(position + 1);
        return cursor.charFormat().fontWeight() > QFont::Normal;
    };
    QVERIFY(!isBold(QByteArray(1900, '{') + "\\b a}b", 1));
    QVERIFY(isBold(QByteArray(2100, '{') + "\\b a}b", 1));

    QByteArray styles;
    for (int i = 1; i < 40; ++i) {
        const QByteArray number = QByteArray::number(i);
        styles += "{\\s" + number + "\\sbasedon" + QByteArray::number(i + 1) + " n" + number + ";}";
    }
    styles = "{\\stylesheet" + styles + "{\\s40\\b n40;}}";
    QVERIFY(isBold(styles + "\\s20 a", 0));
    QVERIFY(!isBold(styles + "\\s1 a", 0));

    // A footnote in a footnote, and so on: what lies deeper than four is left out.
    QByteArray notes = "n";
    for (int i = 0; i < 6; ++i)
        notes = "x{\\footnote " + notes + '}';
    QTextDocument document;
    MVRTextRtfNotes found;
    QVERIFY(MVRTextRtf::fromRtfCData("{\\rtf1 " + notes + '}', &document, &found, nullptr));
    QCOMPARE(int(found.size()), 4);
}

QTEST_MAIN(TestRtfStructure)
#include "tst_rtfstructure.moc"
