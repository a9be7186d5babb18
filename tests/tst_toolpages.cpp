// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

/*! Pages as the tool writes and lists them. */
class TestToolPages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void writesTheWantedPages_data();
    void writesTheWantedPages();
    void editedTextIsPrinted();
    void pagesMissNothing();
    void listsScenes();
    void drawsMarksAndWatermark();
    void saysThatTheFaceIsMissing();

private:
    std::unique_ptr<ToolFolder> m_folder;
};

namespace {

QByteArray scenes(int count)
{
    QByteArray content;
    for (int i = 1; i <= count; ++i) {
        const QByteArray number = QByteArray::number(i);
        content += "<Paragraph Type=\"Scene Heading\" Number=\"" + number
            + "\" StartsNewPage=\"Yes\"><Text>INT. ROOM " + number
            + "</Text></Paragraph><Paragraph Type=\"Action\"><Text>Rain.</Text></Paragraph>";
    }
    return content;
}

}

void TestToolPages::init()
{
    m_folder = std::make_unique<ToolFolder>();
    QVERIFY(m_folder->isValid());
    m_folder->write(
        QStringLiteral("script.fdx"),
        script(scenes(9), "<PageLayout><PageSize Width=\"5.00\" Height=\"7.00\"/></PageLayout>"));
}

void TestToolPages::writesTheWantedPages_data()
{
    QTest::addColumn<QString>("options");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<int>("pages");
    QTest::addColumn<QByteArray>("says");

    const QByteArray own = "/MediaBox [ 0 0 360";
    QTest::newRow("all, on the file's paper") << "" << 0 << 9 << own;
    QTest::newRow("other paper") << "--paper a4" << 0 << 9 << QByteArray("/MediaBox [ 0 0 595");
    QTest::newRow("scenes") << "--scenes 4-6" << 0 << 3 << own;
    QTest::newRow("one scene") << "--scenes 4" << 0 << 1 << own;
    QTest::newRow("no such scene") << "--scenes 4-12" << 1 << 0 << QByteArray("no scenes 4-12");
    QTest::newRow("pages") << "--pages 8-99" << 0 << 2 << own;
    QTest::newRow("no such page") << "--pages 10-11" << 1 << 0 << QByteArray("no pages 10-11");
    QTest::newRow("no range") << "--pages x" << 2 << 0 << QByteArray("such as 3-7");
    QTest::newRow("backward range") << "--pages 7-3" << 2 << 0 << QByteArray("such as 3-7");
}

void TestToolPages::writesTheWantedPages()
{
    QFETCH(const QString, options);
    QFETCH(const int, exitCode);
    QFETCH(const int, pages);
    QFETCH(const QByteArray, says);

    const Run run = mvrtext(
        qPrintable(QStringLiteral("convert %1 script.fdx out.pdf").arg(options)), m_folder->path());
    QVERIFY2(run.exitCode == exitCode, run.errors.constData());
    const QByteArray pdf = m_folder->read(QStringLiteral("out.pdf"));
    QCOMPARE(pdf.count("/Type /Page >>"), pages);
    QVERIFY2((exitCode == 0 ? pdf : run.errors).contains(says), run.errors.constData());
}

void TestToolPages::editedTextIsPrinted()
{
    // A word more on each page, and as many pages as the file makes of them.
    QCOMPARE(mvrtext("replace script.fdx --find Rain --with Snow -o edited.pdf", m_folder->path())
                 .exitCode,
             0);
    QCOMPARE(mvrtext("convert script.fdx plain.pdf", m_folder->path()).exitCode, 0);
    const QByteArray edited = m_folder->read(QStringLiteral("edited.pdf"));
    QCOMPARE(edited.count("/Type /Page >>"), 9);
    QVERIFY(edited.contains("/MediaBox [ 0 0 360"));
    const Run read
        = mvrtext("replace script.fdx --find Rain --with Snow -o edited.png", m_folder->path());
    QCOMPARE(read.exitCode, 0);
    // With scene numbers and all, as if it had been saved before.
    QCOMPARE(mvrtext("replace script.fdx --find Rain --with Snow -o saved.fdx", m_folder->path())
                 .exitCode,
             0);
    QCOMPARE(mvrtext("convert saved.fdx saved.png", m_folder->path()).exitCode, 0);
    QCOMPARE(QImage(m_folder->path(QStringLiteral("edited.png"))),
             QImage(m_folder->path(QStringLiteral("saved.png"))));
    QCOMPARE(mvrtext("convert script.fdx plain.png", m_folder->path()).exitCode, 0);
    QVERIFY(QImage(m_folder->path(QStringLiteral("edited.png")))
            != QImage(m_folder->path(QStringLiteral("plain.png"))));
}

// Neither headers, which pages show, nor hidden text, which they do not.
void TestToolPages::pagesMissNothing()
{
    m_folder->write(
        QStringLiteral("headed.fdx"),
        script(scenes(2) + "<Paragraph><Text Style=\"HiddenText\">Hush</Text></Paragraph>",
               "<HeaderAndFooter HeaderVisible=\"Yes\"><Header><Paragraph><Text>"
               "Draft</Text></Paragraph></Header></HeaderAndFooter>"));
    QCOMPARE(mvrtext("convert headed.fdx headed.pdf", m_folder->path()).errors, QByteArray());
    const Run text = mvrtext("convert headed.fdx headed.txt", m_folder->path());
    QVERIFY2(text.errors.contains("1 header or footer"), text.errors);
    QVERIFY2(text.errors.contains("hidden text, which is shown"), text.errors);
}

void TestToolPages::listsScenes()
{
    const Run json = mvrtext("pages --json script.fdx", m_folder->path());
    QCOMPARE(json.exitCode, 0);
    const QJsonObject object = QJsonDocument::fromJson(json.output).object();
    QCOMPARE(object.value(QLatin1String("pages")).toInt(), 9);
    QCOMPARE(object.value(QLatin1String("scenes")).toArray().size(), 9);
    const QJsonObject part = object.value(QLatin1String("parts")).toArray().at(3).toObject();
    QCOMPARE(part.value(QLatin1String("page")).toInt(), 4);
    QCOMPARE(part.value(QLatin1String("scene")).toString(), QStringLiteral("4"));
    QCOMPARE(part.value(QLatin1String("first")).toString(), QStringLiteral("INT. ROOM 4"));
    QCOMPARE(part.value(QLatin1String("last")).toString(), QStringLiteral("Rain."));
    QCOMPARE(part.value(QLatin1String("lastLine")).toInt(), 2);

    const Run table = mvrtext("pages script.fdx", m_folder->path());
    QVERIFY(table.output.contains("INT. ROOM 9"));
    m_folder->write(QStringLiteral("novel.txt"), "It rained.\n");
    const Run novel = mvrtext("pages novel.txt", m_folder->path());
    QCOMPARE(novel.exitCode, 1);
    QVERIFY(novel.errors.contains("no screenplay"));
}

void TestToolPages::drawsMarksAndWatermark()
{
    m_folder->write(
        QStringLiteral("revised.fdx"),
        script("<Paragraph Type=\"Action\"><Text RevisionID=\"1\">New.</Text>"
               "</Paragraph>",
               "<Revisions Location=\"7.75\"><Revision ID=\"1\" Mark=\"*\"/></Revisions>"));
    const auto picture = [this](const QByteArray &options) {
        mvrtext(("convert --dpi 50 " + options + " revised.fdx out.png").constData(),
                m_folder->path());
        return QImage(m_folder->path(QStringLiteral("out.png")));
    };
    const auto darkest = [](const QImage &page, const QRect &area) {
        int dark = 255;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x)
                dark = qMin(dark, qGray(page.pixel(x, y)));
        }
        return dark;
    };
    const QRect mark(385, 48, 10, 12);
    const QRect middle(200, 220, 30, 110);
    const QImage plain = picture("");
    QCOMPARE(darkest(plain, mark), 255);
    QCOMPARE(darkest(plain, middle), 255);
    QVERIFY(darkest(picture("--revisions"), mark) < 200);
    const QImage marked = picture("--watermark DRAFT");
    QVERIFY(darkest(marked, middle) < 240);
    QRect drawn;
    for (int y = 0; y < marked.height(); ++y) {
        for (int x = 0; x < marked.width(); ++x) {
            if (marked.pixel(x, y) != plain.pixel(x, y))
                drawn |= QRect(x, y, 1, 1);
        }
    }
    const QPoint off = drawn.center() - marked.rect().center();
    QVERIFY2(off.manhattanLength() < 12, "not in the middle of the page");
}

void TestToolPages::saysThatTheFaceIsMissing()
{
    QCOMPARE(mvrtext("convert script.fdx out.pdf", m_folder->path()).errors, QByteArray());
    const QString fonts = m_folder->write(
        QStringLiteral("fonts.conf"),
        "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"fonts.dtd\"><fontconfig>"
        "<dir>/usr/share/fonts</dir><selectfont><rejectfont><glob>*courier-prime*</glob>"
        "</rejectfont></selectfont></fontconfig>");
    qputenv("FONTCONFIG_FILE", QFile::encodeName(fonts));
    qputenv("XDG_DATA_DIRS", QFile::encodeName(m_folder->path()));
    m_folder->write(QStringLiteral("second.fdx"), script(scenes(1)));
    const Run batch
        = mvrtext("convert --into pages --to pdf script.fdx second.fdx", m_folder->path());
    const Run novel = mvrtext({QStringLiteral("convert"), QStringLiteral("--to"),
                               QStringLiteral("pdf"), QStringLiteral("--from"),
                               QStringLiteral("txt"), QStringLiteral("-"), QStringLiteral("-")},
                              "It rained.");
    qunsetenv("FONTCONFIG_FILE");
    qunsetenv("XDG_DATA_DIRS");
    QCOMPARE(batch.exitCode, 0);
    QCOMPARE(batch.errors.count("Courier Prime is not installed: the pages are set in "), 1);
    QVERIFY2(!batch.errors.contains("set in Courier Prime"), batch.errors);
    QCOMPARE(novel.errors, QByteArray());
}

QTEST_MAIN(TestToolPages)
#include "tst_toolpages.moc"
