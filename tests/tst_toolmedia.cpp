// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QRegularExpression>
#include <QtTest>

namespace {

QByteArray pngOf(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::darkGreen);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "png");
    return bytes;
}

QByteArray rtfWithPictures()
{
    const QByteArray picture = "{\\pict\\pngblip\\picw7\\pich5 " + pngOf({7, 5}).toHex() + '}';
    return "{\\rtf1 one " + picture + " two " + picture + "\\par}";
}

} // namespace

/*! What the tool does with pictures, and with lists that a forum would show twice. */
class TestToolMedia : public ToolTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void putsPicturesIntoPages();
    void writesPicturesAsFiles_data();
    void writesPicturesAsFiles();
    void countsWhatIsLeftOut_data();
    void countsWhatIsLeftOut();
    void keepsNotesOnPictures();
    void opensPicturesThatAreAskedFor();
    void opensNothingButPictures();
    void boundsPicturesOfAPage();
    void takesPicturesFromPages();
    void showsNestedListsOnce();
    void makesPunctuationTypographic();
};

void TestToolMedia::init()
{
    QVERIFY(newFolder());
    m_folder->write(QStringLiteral("in.rtf"), rtfWithPictures());
}

void TestToolMedia::putsPicturesIntoPages()
{
    const Run run = mvrtext("convert in.rtf out.html", m_folder->path());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.errors, QByteArray());
    const QString page = QString::fromUtf8(m_folder->read(QStringLiteral("out.html")));
    const QRegularExpression embedded(
        QStringLiteral("<img[^>]* src=\"data:image/png;base64,([^\"]+)\""));
    QRegularExpressionMatchIterator found = embedded.globalMatch(page);
    int count = 0;
    for (; found.hasNext(); ++count) {
        const QByteArray bytes = QByteArray::fromBase64(found.next().captured(1).toLatin1());
        QCOMPARE(QImage::fromData(bytes).size(), QSize(7, 5));
    }
    QCOMPARE(count, 2);
}

void TestToolMedia::writesPicturesAsFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reference");
    QTest::newRow("html") << "out.html"
                          << "src=\"pictures/%1\"";
    QTest::newRow("md") << "out.md"
                        << "](pictures/%1)";
}

void TestToolMedia::writesPicturesAsFiles()
{
    QFETCH(const QString, name);
    QFETCH(const QString, reference);
    const Run run = mvrtext({QStringLiteral("convert"), QStringLiteral("--extract-media"),
                             QStringLiteral("pictures"), QStringLiteral("in.rtf"), name},
                            QByteArray(), m_folder->path());
    QCOMPARE(run.exitCode, 0);
    const QDir pictures(m_folder->path(QStringLiteral("pictures")));
    const QStringList files = pictures.entryList(QDir::Files);
    QCOMPARE(files.size(), 1); // the same picture twice
    QCOMPARE(QImage(pictures.filePath(files.first())).size(), QSize(7, 5));
    const QString written = QString::fromUtf8(m_folder->read(name));
    QVERIFY2(written.count(reference.arg(files.first())) == 2, qPrintable(written));
}

void TestToolMedia::countsWhatIsLeftOut_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("txt") << "out.txt" << QByteArray("2 pictures left out that plain text");
    QTest::newRow("bbcode") << "out.bbcode" << QByteArray("cannot carry; rtf, html, odt and pdf");
    QTest::newRow("md") << "out.md" << QByteArray("2 pictures left out; --extract-media");
}

void TestToolMedia::countsWhatIsLeftOut()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, message);
    const Run run = mvrtext({QStringLiteral("convert"), QStringLiteral("in.rtf"), name},
                            QByteArray(), m_folder->path());
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.errors.contains(message), run.errors.constData());
    QVERIFY(m_folder->read(name).contains("one"));
}

void TestToolMedia::keepsNotesOnPictures()
{
    m_folder->write(QStringLiteral("in.rtf"),
                    "{\\rtf1 a {\\*\\atrfstart 1}{\\pict\\pngblip " + pngOf({6, 4}).toHex()
                        + "}{\\*\\atrfend 1}{\\*\\annotation{\\*\\atnref 1}remark} b\\par}");
    const Run run = mvrtext("convert in.rtf out.fdx", m_folder->path());
    QVERIFY2(run.exitCode == 0, run.errors.constData());
    const QByteArray fdx = m_folder->read(QStringLiteral("out.fdx"));
    QVERIFY2(fdx.contains(">a [picture] b<"), fdx.constData());
    QVERIFY2(fdx.contains("Range=\"2,11\"") && fdx.contains("remark"), fdx.constData());
}

void TestToolMedia::opensPicturesThatAreAskedFor()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("art")));
    m_folder->write(QStringLiteral("art/a b.png"), pngOf({6, 4}));
    m_folder->write(QStringLiteral("other.png"), pngOf({6, 4}));
    m_folder->write(
        QStringLiteral("in.md"),
        "One ![a](art/a%20b.png) two ![b](other.png)[^1][^1].\n\n[^1]: ![c](art/c.png)\n");
    const Run closed = mvrtext("convert in.md none.rtf", m_folder->path());
    QCOMPARE(closed.exitCode, 0);
    QVERIFY2(closed.errors.contains("2 pictures not opened; convert --media-from"),
             closed.errors.constData());
    QVERIFY2(closed.errors.contains("2 pictures of footnotes not"), closed.errors.constData());
    for (const char *line : {"convert in.md none.html", "convert in.md none.md"}) {
        const QByteArray errors = mvrtext(line, m_folder->path()).errors;
        QVERIFY2(!errors.contains("picture"), errors.constData());
    }
    QVERIFY(m_folder->read(QStringLiteral("none.md")).contains("(art/c.png)"));
    QVERIFY(!m_folder->read(QStringLiteral("none.rtf")).contains("\\picw6\\pich4"));

    const Run run = mvrtext("convert --media-from art in.md art.rtf", m_folder->path());
    QCOMPARE(run.exitCode, 0);
    const QByteArray rtf = m_folder->read(QStringLiteral("art.rtf"));
    QVERIFY2(rtf.count("\\picw6\\pich4") == 1, rtf.constData());
    QVERIFY2(run.errors.contains("1 picture not opened: not in"), run.errors.constData());
}

/*! A pipe waits for who writes into it, and a drawing can name other files. */
void TestToolMedia::opensNothingButPictures()
{
    write(QStringLiteral("drawing.png"),
          "<svg xmlns='http://www.w3.org/2000/svg' width='9' "
          "height='9'></svg>");
    write(QStringLiteral("in.md"), "![a](pipe.png) ![b](drawing.png)\n");
    const Run run = shell("mkfifo pipe.png; timeout 20 $T convert --media-from . in.md out.rtf");
    QVERIFY2(run.errors.contains("2 pictures not opened"), run.errors.constData());
}

/*! A page that shows a picture often holds it as often. */
void TestToolMedia::boundsPicturesOfAPage()
{
    QImage noise(300, 300, QImage::Format_RGB32);
    quint32 next = 1;
    for (int y = 0; y < noise.height(); ++y) {
        for (int x = 0; x < noise.width(); ++x) {
            next = next * 1664525 + 1013904223;
            noise.setPixel(x, y, next >> 8);
        }
    }
    QVERIFY(noise.save(path(QStringLiteral("noise.png"))));
    write(QStringLiteral("in.md"), QByteArray("a ![b](noise.png)\n\n").repeated(1000));
    const Run run = mvrtext("convert --media-from . in.md out.html", m_folder->path());
    QVERIFY2(run.errors.contains("1000 pictures left out"), run.errors.constData());
    QVERIFY(read(QStringLiteral("out.html")).size() < 1000000);
}

// What the tool itself writes into a page, and others do.
void TestToolMedia::takesPicturesFromPages()
{
    QCOMPARE(mvrtext("convert in.rtf page.html", m_folder->path()).exitCode, 0);
    const QByteArray link = "data:image/png;base64," + pngOf({9, 8}).toBase64();
    m_folder->write(QStringLiteral("page.md"), "A ![b](" + link + ") c.\n");
    const QByteArray broken = "data:image/png;base64," + QByteArray("no picture").toBase64();
    m_folder->write(QStringLiteral("broken.html"), "a <img src=\"" + broken + "\"> b");
    for (const auto &[name, size, count] :
         {std::tuple("page.html", "\\picw7\\pich5", 2), std::tuple("page.md", "\\picw9\\pich8", 1),
          std::tuple("broken.html", "\\picw1\\pich1", 1)}) {
        const Run run
            = mvrtext({QStringLiteral("convert"), QLatin1String(name), QStringLiteral("back.rtf")},
                      QByteArray(), m_folder->path());
        QCOMPARE(run.exitCode, 0);
        QCOMPARE(run.errors.contains("not opened"), QByteArray(name) == "broken.html");
        QVERIFY2(m_folder->read(QStringLiteral("back.rtf")).count(size) == count, name);
    }
}

void TestToolMedia::showsNestedListsOnce()
{
    m_folder->write(QStringLiteral("in.md"), "- one\n  - inner\n- two\n\ntext\n\n1. first\n");
    QCOMPARE(mvrtext("convert in.md out.bbcode", m_folder->path()).exitCode, 0);
    const QByteArray forum = m_folder->read(QStringLiteral("out.bbcode"));
    for (const char *text : {"one", "inner", "two", "first"})
        QVERIFY2(forum.count(text) == 1, forum.constData());
    QCOMPARE(forum.count("[list]") + forum.count("[list=1]"), 2);
}

void TestToolMedia::makesPunctuationTypographic()
{
    const QByteArray typed = "\"Quote\" -- and so on...\n";
    m_folder->write(QStringLiteral("in.md"), typed);
    QCOMPARE(mvrtext("convert in.md plain.txt", m_folder->path()).exitCode, 0);
    QCOMPARE(m_folder->read(QStringLiteral("plain.txt")).trimmed(), typed.trimmed());
    QCOMPARE(mvrtext("convert --smart in.md smart.txt", m_folder->path()).exitCode, 0);
    QCOMPARE(QString::fromUtf8(m_folder->read(QStringLiteral("smart.txt")).trimmed()),
             QString::fromUtf8("\u201cQuote\u201d \u2013 and so on\u2026"));
}

QTEST_GUILESS_MAIN(TestToolMedia)
#include "tst_toolmedia.moc"
