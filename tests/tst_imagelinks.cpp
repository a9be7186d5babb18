// SPDX-License-Identifier: MIT
#include <core/MVRGuiUtil.h>
#include <core/MVRTextFormat.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRTextDoc.h>

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTextCursor>
#include <QTextDocument>
#include <QtEndian>
#include <QtTest>

#include <sys/stat.h>

class TestImageLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void loadsFiles_data();
    void loadsFiles();
    void opensWhatThePolicyAllows_data();
    void opensWhatThePolicyAllows();
    void takesSizes();
    void boundsPlaceholders();
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

QString code(const QString &path, const QString &width, const QString &height)
{
    return QStringLiteral("{$MVRImageLink[w:%1;h:%2]=%3}").arg(width, height, path);
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

bool write(const char *name, const QByteArray &bytes)
{
    QFile file(QString::fromLatin1(name));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

void TestImageLinks::initTestCase()
{
    QVERIFY(m_dir.isValid() && QDir::setCurrent(m_dir.path())
            && QDir().mkdir(QStringLiteral("images")));
    QVERIFY(picture(30, 20, Qt::red).save(QStringLiteral("images/a.b.png")));
    QVERIFY(picture(30, 20, Qt::red).save(QStringLiteral("jpeg.png"), "JPG"));
    QVERIFY(picture(8000, 7000, Qt::red).save(QStringLiteral("photograph.jpg")));
    QVERIFY(write("text.png", "no picture") && write("empty.png", ""));
    QVERIFY(write("drawing.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9'/>"));
    // Well-formed, and 64 million pixels large.
    QVERIFY(write("large.pbm", "P4\n8000 8000\n" + QByteArray(8000000, 0)));
    // Icons hold a picture with a head of its own, which can say another size than the icon's.
    QVERIFY(picture(30, 20, Qt::red).save(QStringLiteral("icon.ico"), "ICO"));
    QFile icon(QStringLiteral("icon.ico"));
    QVERIFY(icon.open(QIODevice::ReadOnly));
    QByteArray pointer = icon.readAll();
    pointer[2] = 2;
    QVERIFY(write("pointer.cur", pointer));
    QByteArray large("\0\0\1\0\1\0\x10\x10\0\0\1\0\x20\0\0\0\0\0\x16\0\0\0", 22);
    QBuffer png(&large);
    QVERIFY(png.open(QIODevice::Append)
            && QImage(8000, 8000, QImage::Format_Mono).save(&png, "PNG"));
    qToLittleEndian(quint32(large.size() - 22), large.data() + 14);
    QVERIFY(write("large.ico", large));
    // A picture, and nothing behind it up to 128 MiB.
    QVERIFY(QFile::copy(QStringLiteral("jpeg.png"), QStringLiteral("sparse.png")));
    QVERIFY(QFile::resize(QStringLiteral("sparse.png"), (128 << 20) + 1));
    QCOMPARE(mkfifo("pipe.png", 0600), 0);
    QVERIFY(QDir().mkdir(QStringLiteral("images2"))
            && QFile::copy(QStringLiteral("jpeg.png"), QStringLiteral("images2/a.png")));
    QVERIFY(QFile::link(QStringLiteral("../jpeg.png"), QStringLiteral("images/link.png")));
    QVERIFY(QFile::copy(QStringLiteral("jpeg.png"), QStringLiteral("\\\\server\\a.png")));
}

void TestImageLinks::loadsFiles_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("link");
    QTest::addColumn<QString>("baseName");
    QTest::addColumn<QSize>("size");

    const QSize loaded(30, 20);
    const QString absolute = m_dir.filePath(QStringLiteral("images/a.b.png"));
    QTest::newRow("absolute") << absolute << absolute << "a" << loaded;
    QTest::newRow("slash too much") << "/images/a.b.png"
                                    << "images/a.b.png"
                                    << "a" << loaded;
    QTest::newRow("backslash") << "images/a.b.png\\"
                               << "images/a.b.png"
                               << "a" << loaded;
    QTest::newRow("icon") << "icon.ico"
                          << "icon.ico"
                          << "icon" << loaded;
    QTest::newRow("mouse pointer") << "pointer.cur"
                                   << "pointer.cur"
                                   << "pointer" << loaded;
    QTest::newRow("wrong suffix") << "jpeg.png"
                                  << "jpeg.png"
                                  << "jpeg" << loaded;
    QTest::newRow("reduced") << "photograph.jpg"
                             << "photograph.jpg"
                             << "photograph" << QSize(2000, 1750);
    const QSize placeholder(320, 200);
    for (const char *name : {"missing", "images", "pipe.png", "sparse.png", "text.png", "empty.png",
                             "drawing.svg", "large.pbm", "large.ico", "/dev/zero"})
        QTest::newRow(name) << name << name << QFileInfo(QLatin1String(name)).baseName()
                            << placeholder;
}

void TestImageLinks::loadsFiles()
{
    QFETCH(const QString, path);
    QFETCH(const QString, link);
    QTextDocument document;
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    QTextCursor(&document).insertText(QLatin1Char('x')
                                          + code(path, QStringLiteral("320"), QStringLiteral("200"))
                                          + QLatin1Char('y'),
                                      bold);
    MVRTextDoc::fromInlineMarkupImageLinks(&document);
    QCOMPARE(document.toRawText(), QStringLiteral("x\ufffcy"));
    const QTextImageFormat format = imageAt(&document, 1);
    QCOMPARE(QSizeF(format.width(), format.height()), QSizeF(320, 200));
    QCOMPARE(format.fontWeight(), int(QFont::Bold));
    QCOMPARE(format.toolTip(),
             (path == QStringLiteral("missing") ? QStringLiteral("Missing ") : QStringLiteral(""))
                 + QStringLiteral("Image Link: '") + link + QLatin1Char('\''));
    QCOMPARE(format.property(MVRTextFormat::ImageLinkProperty), QVariant(link));
    QTEST(format.stringProperty(MVRTextFormat::ImageLinkBaseNameProperty), "baseName");
    QTEST(resourceOf(&document, format).size(), "size");
}

void TestImageLinks::opensWhatThePolicyAllows_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("isAnywhere");
    QTest::addColumn<bool>("isBelow");

    const QString root = m_dir.path();
    const auto row = [](const char *name, const QString &path, bool isAnywhere, bool isBelow) {
        QTest::newRow(name) << path << isAnywhere << isBelow;
    };
    row("in the folder", root + QStringLiteral("/images/a.b.png"), true, true);
    row("relative", QStringLiteral("images/a.b.png"), true, true);
    row("relative with a slash", QStringLiteral("/images/a.b.png"), true, true);
    row("beside it", root + QStringLiteral("/jpeg.png"), true, false);
    row("out of it", QStringLiteral("images/../jpeg.png"), true, false);
    row("by a link out of it", QStringLiteral("images/link.png"), true, false);
    row("in a folder that begins like it", QStringLiteral("images2/a.png"), true, false);
    row("share", QStringLiteral("\\\\server\\a.png"), false, false);
}

void TestImageLinks::opensWhatThePolicyAllows()
{
    QFETCH(const QString, path);
    const QString images = QDir(QStringLiteral("images")).absolutePath();
    const auto isOpened = [&path](const MVRPicturePolicy &policy) {
        QTextDocument document;
        document.setPlainText(code(path, QStringLiteral("3"), QStringLiteral("2")));
        MVRTextDoc::fromInlineMarkup(&document, policy);
        const QTextImageFormat format = imageAt(&document, 0);
        return resourceOf(&document, format).size() == QSize(30, 20);
    };
    QTEST(isOpened(MVRPicturePolicy::anywhere()), "isAnywhere");
    QTEST(isOpened(MVRPicturePolicy::below(images)), "isBelow");
    QVERIFY(!isOpened(MVRPicturePolicy::nowhere()));
    QVERIFY(!isOpened(MVRPicturePolicy::below(QString())));
    QVERIFY(!isOpened(MVRPicturePolicy::below(QStringLiteral("missing"))));
}

void TestImageLinks::takesSizes()
{
    const QString x = QStringLiteral("x");
    const QString one = QStringLiteral("1");
    const QString tooLong = QStringLiteral("99999999999");
    QTextDocument document;
    const QString noCodes = code(x, QStringLiteral("-1"), one) + code(QString(), one, one);
    document.setPlainText(code(x, QStringLiteral("0"), QStringLiteral("000"))
                          + code(x, tooLong, tooLong) + code(QStringLiteral("w:7;h:8"), one, one)
                          + code(x, QStringLiteral("\u0663"), one) + noCodes);
    MVRTextDoc::fromInlineMarkupImageLinks(&document);
    QCOMPARE(document.toRawText(), QStringLiteral("\ufffc\ufffc\ufffc\ufffc") + noCodes);
    const QSizeF sizes[] = {{1, 1}, {800, 600}, {1, 1}, {800, 1}};
    for (int i = 0; i < 4; ++i)
        QCOMPARE(QSizeF(imageAt(&document, i).width(), imageAt(&document, i).height()), sizes[i]);
}

void TestImageLinks::boundsPlaceholders()
{
    QTextDocument document;
    document.setPlainText(code(QStringLiteral("x"), QStringLiteral("3000"), QStringLiteral("9")));
    MVRTextDoc::fromInlineMarkupImageLinks(&document);
    QCOMPARE(resourceOf(&document, imageAt(&document, 0)).size(), QSize(3000, 9));

    QString text = code(QStringLiteral("x"), QStringLiteral("2000000000"), QStringLiteral("1"));
    for (int i = 1; i <= 100; ++i)
        text += code(QStringLiteral("x"), QStringLiteral("2000"), QString::number(1700 + i));
    document.setPlainText(text);
    MVRTextDoc::fromInlineMarkupImageLinks(&document);
    QCOMPARE(imageAt(&document, 0).width(), 2e9);
    qint64 pixels = 0;
    for (int i = 0; i <= 100; ++i) {
        const QImage image = resourceOf(&document, imageAt(&document, i));
        QVERIFY(!image.isNull() && image.pixelColor(0, 0) == QColor(Qt::white));
        pixels += qint64(image.width()) * image.height();
    }
    QVERIFY(pixels < 65000000);
    MVRTextDoc::fromInlineMarkupImageLinks(nullptr);
}

void TestImageLinks::sharesEqualPictures()
{
    QVERIFY(QFile::copy(QStringLiteral("images/a.b.png"), QStringLiteral("copy.png")));
    QTextDocument document;
    // A base URL must not hide what was put in under a name.
    document.setMetaInformation(QTextDocument::DocumentUrl, QStringLiteral("file:///elsewhere/"));
    QTextCursor(&document).insertText(
        code(QStringLiteral("images/a.b.png"), QStringLiteral("1"), QStringLiteral("1"))
        + code(QStringLiteral("copy.png"), QStringLiteral("1"), QStringLiteral("1")));
    document.setUndoRedoEnabled(false);
    QSignalSpy changes(&document, &QTextDocument::contentsChanged);
    MVRTextDoc::fromInlineMarkupImageLinks(&document);
    QCOMPARE(changes.size(), 1); // nothing is laid out between two of them
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
    QVERIFY(MVRGuiUtil::resourceId(QImage()).isEmpty());

    QImage tall(1, 70000, QImage::Format_RGB32);
    tall.fill(Qt::white);
    const QString white = MVRGuiUtil::resourceId(tall);
    tall.setPixelColor(0, 69999, Qt::red);
    QVERIFY(MVRGuiUtil::resourceId(tall) != white);
    tall.fill(Qt::white);
    tall.setPixelColor(0, 65535, Qt::red);
    const QString before = MVRGuiUtil::resourceId(tall);
    QVERIFY(before != white);
    tall.fill(Qt::white);
    tall.setPixelColor(0, 65536, Qt::red);
    QVERIFY(MVRGuiUtil::resourceId(tall) != before);
}

QTEST_MAIN(TestImageLinks)
#include "tst_imagelinks.moc"
