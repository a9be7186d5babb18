#include <core/MVRGuiUtil.h>
#include <core/MVRTextFormat.h>
#include <text/MVRTextDoc.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QtTest>

#include <sys/stat.h>

class TestImageLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void loadsPictures_data();
    void loadsPictures();
    void keepsTheFormatOfTheCode();
    void takesSizes_data();
    void takesSizes();
    void drawsPlaceholders_data();
    void drawsPlaceholders();
    void boundsPlaceholders();
    void reducesLargePhotographs();
    void sharesEqualPictures();
    void namesEqualImagesAlike();

private:
    QTemporaryDir m_dir;
};

namespace {

QImage picture(int width, int height, Qt::GlobalColor color)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QString code(const QString &path, const char *width = "320", const char *height = "200")
{
    return QStringLiteral("{$MVRImageLink[w:%1;h:%2]=%3}")
        .arg(QLatin1String(width), QLatin1String(height), path);
}

void read(QTextDocument *document, const QString &text)
{
    document->setPlainText(text);
    MVRTextDoc::fromInlineMarkupImageLinks(document);
}

QTextImageFormat imageAt(QTextDocument *document, int position)
{
    QTextCursor cursor(document);
    cursor.setPosition(position + 1);
    return cursor.charFormat().toImageFormat();
}

QImage resourceOf(QTextDocument *document, const QTextImageFormat &format)
{
    return document->resource(QTextDocument::ImageResource, QUrl(format.name())).value<QImage>();
}

void write(const QString &name, const QByteArray &bytes)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

} // namespace

void TestImageLinks::initTestCase()
{
    QVERIFY(m_dir.isValid());
    QVERIFY(QDir::setCurrent(m_dir.path()));
    QVERIFY(picture(30, 20, Qt::red).save(QStringLiteral("cover.final.png")));
    QVERIFY(picture(30, 20, Qt::red).save(QStringLiteral("photo.png"), "JPG"));
    QVERIFY(QDir().mkdir(QStringLiteral("images")));
    QVERIFY(QFile::copy(QStringLiteral("cover.final.png"), QStringLiteral("images/a.png")));
    write(QStringLiteral("text.png"), "no picture");
    write(QStringLiteral("empty.png"), "");
    write(QStringLiteral("drawing.svg"),
          "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>");
    // Well-formed, and 64 million pixels large.
    write(QStringLiteral("large.pbm"), "P4\n8000 8000\n" + QByteArray(8000000, 0));
    QFile sparse(QStringLiteral("sparse.png"));
    QVERIFY(sparse.open(QIODevice::WriteOnly) && sparse.resize(qint64(4) << 30));
    QCOMPARE(mkfifo("pipe.png", 0600), 0);
}

void TestImageLinks::loadsPictures_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("baseName");

    QTest::newRow("relative") << "cover.final.png"
                              << "cover.final.png"
                              << "cover";
    QTest::newRow("absolute") << m_dir.filePath(QStringLiteral("images/a.png"))
                              << m_dir.filePath(QStringLiteral("images/a.png")) << "a";
    QTest::newRow("slash too much") << "/images/a.png"
                                    << "images/a.png"
                                    << "a";
    QTest::newRow("backslash too much") << "images/a.png\\"
                                        << "images/a.png"
                                        << "a";
    QTest::newRow("wrong suffix") << "photo.png"
                                  << "photo.png"
                                  << "photo";
}

void TestImageLinks::loadsPictures()
{
    QFETCH(const QString, path);
    QFETCH(const QString, link);
    QFETCH(const QString, baseName);
    QTextDocument document;
    read(&document, QLatin1Char('x') + code(path) + QLatin1Char('y'));
    QCOMPARE(document.toRawText(), QStringLiteral("x\ufffcy"));
    const QTextImageFormat format = imageAt(&document, 1);
    QCOMPARE(format.width(), 320.0);
    QCOMPARE(format.height(), 200.0);
    QCOMPARE(format.toolTip(), QStringLiteral("Image Link: '%1'").arg(link));
    QCOMPARE(format.property(MVRTextFormat::ImageLinkProperty), QVariant(link));
    QCOMPARE(format.property(MVRTextFormat::ImageLinkBaseNameProperty), QVariant(baseName));
    QCOMPARE(resourceOf(&document, format).size(), QSize(30, 20));
}

void TestImageLinks::keepsTheFormatOfTheCode()
{
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    QTextCursor cursor(&document);
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    cursor.insertText(code(QStringLiteral("cover.final.png")), bold);
    cursor.insertText(code(QStringLiteral("cover.final.png")), QTextCharFormat());
    MVRTextDoc::fromInlineMarkupImageLinks(&document);
    QCOMPARE(imageAt(&document, 0).fontWeight(), int(QFont::Bold));
    QVERIFY(!imageAt(&document, 1).hasProperty(QTextFormat::FontWeight));
    QVERIFY(imageAt(&document, 0).isImageFormat());
    MVRTextDoc::fromInlineMarkupImageLinks(nullptr);
}

void TestImageLinks::takesSizes_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QSize>("size");

    QTest::newRow("zero") << code(QStringLiteral("x"), "0", "000") << QSize(1, 1);
    QTest::newRow("too long") << code(QStringLiteral("x"), "99999999999", "99999999999")
                              << QSize(800, 600);
    QTest::newRow("size in the path") << code(QStringLiteral("w:7;h:8"), "2", "3") << QSize(2, 3);
    QTest::newRow("digits of another script")
        << QStringLiteral("{$MVRImageLink[w:\u0663;h:4]=x}") << QSize(800, 4);
    QTest::newRow("fraction") << code(QStringLiteral("x"), "1.5") << QSize();
    QTest::newRow("negative") << code(QStringLiteral("x"), "-1") << QSize();
    QTest::newRow("no path") << code(QString()) << QSize();
}

void TestImageLinks::takesSizes()
{
    QFETCH(const QString, text);
    QFETCH(const QSize, size);
    QTextDocument document;
    read(&document, text);
    const QTextImageFormat format = imageAt(&document, 0);
    QCOMPARE(format.isImageFormat(), size.isValid());
    if (size.isValid())
        QCOMPARE(QSizeF(format.width(), format.height()), QSizeF(size));
    else
        QCOMPARE(document.toPlainText(), text);
}

void TestImageLinks::drawsPlaceholders_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("isMissing");

    QTest::newRow("missing") << "/no such folder/a.png" << true;
    QTest::newRow("folder") << "images" << false;
    QTest::newRow("endless device") << "/dev/zero" << false;
    QTest::newRow("pipe") << "pipe.png" << false;
    QTest::newRow("4 GB") << "sparse.png" << false;
    QTest::newRow("no picture") << "text.png" << false;
    QTest::newRow("empty") << "empty.png" << false;
    QTest::newRow("no bitmap") << "drawing.svg" << false;
    QTest::newRow("too many pixels") << "large.pbm" << false;
}

void TestImageLinks::drawsPlaceholders()
{
    QFETCH(const QString, path);
    QFETCH(const bool, isMissing);
    QTextDocument document;
    read(&document, code(path));
    const QTextImageFormat format = imageAt(&document, 0);
    QCOMPARE(format.property(MVRTextFormat::ImageLinkProperty), QVariant(path));
    QCOMPARE(format.toolTip(),
             QLatin1String(isMissing ? "Missing " : "")
                 + QStringLiteral("Image Link: '%1'").arg(path));
    const QImage image = resourceOf(&document, format);
    QCOMPARE(image.size(), QSize(320, 200));
    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
    QVERIFY(image != picture(320, 200, Qt::white));
}

void TestImageLinks::boundsPlaceholders()
{
    QTextDocument document;
    QString text = code(QStringLiteral("x"), "2000000000", "1");
    for (int i = 1; i <= 300; ++i)
        text += code(QStringLiteral("x"), "2000", QByteArray::number(1700 + i).constData());
    read(&document, text);
    QCOMPARE(imageAt(&document, 0).width(), 2e9);
    qint64 pixels = 0;
    for (int i = 0; i <= 300; ++i) {
        const QImage image = resourceOf(&document, imageAt(&document, i));
        QVERIFY(!image.isNull());
        pixels += qint64(image.width()) * image.height();
    }
    QVERIFY(pixels < 300 * 1000 * 1000);
}

void TestImageLinks::reducesLargePhotographs()
{
    QImage photograph(8000, 7000, QImage::Format_Grayscale8);
    photograph.fill(0x40);
    QVERIFY(photograph.save(QStringLiteral("photograph.jpg")));
    QTextDocument document;
    read(&document, code(QStringLiteral("photograph.jpg")));
    QCOMPARE(resourceOf(&document, imageAt(&document, 0)).size(), QSize(2000, 1750));
}

void TestImageLinks::sharesEqualPictures()
{
    QTextDocument document;
    // A base URL must not hide what was put in under a name.
    document.setMetaInformation(QTextDocument::DocumentUrl, QStringLiteral("file:///elsewhere/"));
    read(&document, code(QStringLiteral("images/a.png")) + code(QStringLiteral("cover.final.png")));
    QCOMPARE(imageAt(&document, 0).name(), imageAt(&document, 1).name());
    QCOMPARE(resourceOf(&document, imageAt(&document, 1)).size(), QSize(30, 20));
}

void TestImageLinks::namesEqualImagesAlike()
{
    QImage image = picture(3, 2, Qt::blue);
    QImage equal = image;
    reinterpret_cast<QRgb *>(equal.scanLine(1))[1] &= 0x00ffffff; // a byte that is not shown
    QVERIFY(image == equal);
    QCOMPARE(MVRGuiUtil::resourceId(equal), MVRGuiUtil::resourceId(image));
    image.setPixelColor(1, 1, QColor(0, 0, 254));
    QVERIFY(MVRGuiUtil::resourceId(equal) != MVRGuiUtil::resourceId(image));
    QVERIFY(MVRGuiUtil::resourceId(picture(2, 3, Qt::blue)) != MVRGuiUtil::resourceId(equal));
    QVERIFY(MVRGuiUtil::resourceId(QImage()).isEmpty());
}

QTEST_MAIN(TestImageLinks)
#include "tst_imagelinks.moc"
