// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#include <QImage>
#include <QtTest>

/*! The commands that write and read codes and make end notes. */
class TestToolMarkup : public ToolTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void runs_data();
    void runs();
    void readsBackAScreenplay_data();
    void readsBackAScreenplay();
    void writesNotesOfABook();
    void readsBackMultiMarkdown();
    void drawsPicturesInTheirSize();
};

namespace {

// A comment, a footnote of two paragraphs, an annotation and a picture.
const char manuscript[]
    = R"({\rtf1 Some text{\*\annotation said} and more{\footnote Be\i low.\par Second.} end)"
      R"(\{\\Mvrn_annot \\color=\{\\R=1\\G=0\\B=0\} \\text=aside\\end_Mvrn_annot\})"
      R"(\{$MVRImageLink[w:30;h:20]=a.png\}\par})";

}

void TestToolMarkup::init()
{
    QVERIFY(newFolder());
    m_folder->write(QStringLiteral("in.rtf"), manuscript);
    m_folder->write(QStringLiteral("no.png"), "no picture");
    m_folder->write(QStringLiteral("odd.txt"),
                    "{$MVRImageLink[w:3;h:2]=none.png}"
                    "{$MVRImageLink[w:3;h:2]=no.png}"
                    "{$MVRImageLink[w:3;h:2]=/\\host/a.png}"
                    "{$MVRImageLink[w:3;h:2]=a.png}");
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("sub")));
    m_folder->write(QStringLiteral("sub/in.rtf"), manuscript);
    QVERIFY(QImage(3, 2, QImage::Format_RGB32).save(m_folder->path(QStringLiteral("a.png"))));
}

void TestToolMarkup::runs_data()
{
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("says"); // in the file, or on the standard error

    QTest::newRow("every note as a code") << "markup --write in.rtf -o a.txt"
                                          << "a.txt"
                                          << "more{\\Mvrn_fn= Below.\nSecond.\\end_Mvrn_fn} end{";
    QTest::newRow("no picture in text") << "markup --read in.rtf -o a.txt"
                                        << ""
                                        << "1 picture left out";
    QTest::newRow("picture by its file") << "markup --read in.rtf -o a.html"
                                         << "a.html"
                                         << "<img src=\"a.png\" width=\"30\" height=\"20\" />";
    QTest::newRow("picture outside of the folder") << "markup --read sub/in.rtf -o a.html"
                                                   << ""
                                                   << "1 picture not opened";
    QTest::newRow("picture in another folder") << "markup --read --media-from . sub/in.rtf -o a.rtf"
                                               << "a.rtf"
                                               << "\\pngblip";
    QTest::newRow("picture anywhere") << "markup --read --media anywhere sub/in.rtf -o a.rtf"
                                      << "a.rtf"
                                      << "\\pngblip";
    for (const char *where : {"", "--media anywhere "}) {
        QTest::addRow("pictures that are not there %s", where)
            << QStringLiteral("markup --read %1odd.txt -o a.rtf").arg(QLatin1String(where)) << ""
            << "2 pictures not opened: not there, or no pictures\n";
    }
    QTest::newRow("picture of another machine") << "markup --read --media anywhere odd.txt -o a.rtf"
                                                << ""
                                                << "1 picture not opened: of another machine\n";
    QTest::newRow("numbers") << "endnotes --first 7 in.rtf -o a.txt"
                             << "a.txt"
                             << "Some text [said] and more7 end[aside]"
                                "{$MVRImageLink[w:30;h:20]=a.png}\n\n7. Below.\nSecond.\n";
    QTest::newRow("MultiMarkdown") << "endnotes --style mmd in.rtf -o a.md"
                                   << "a.md"
                                   << "\n[^fn1]: Be*low.*\n\n    *Second.*\n";
    QTest::newRow("notes elsewhere") << "endnotes in.rtf -o a.txt --notes-out b.txt"
                                     << "b.txt"
                                     << "1. Below.\nSecond.\n";
}

void TestToolMarkup::runs()
{
    QFETCH(const QString, arguments);
    QFETCH(const QString, file);
    QFETCH(const QString, says);
    const Run run = mvrtext(arguments.toUtf8().constData(), m_folder->path());
    QCOMPARE(run.exitCode, 0);
    const QByteArray text = file.isEmpty() ? run.errors : m_folder->read(file);
    QVERIFY2(text.contains(says.toUtf8()), text.constData());
}

void TestToolMarkup::readsBackAScreenplay_data()
{
    QTest::addColumn<QString>("suffix");
    for (const char *suffix : {"txt", "html", "rtf", "fdx"})
        QTest::newRow(suffix) << suffix;
}

void TestToolMarkup::readsBackAScreenplay()
{
    QFETCH(const QString, suffix);
    const QString coded = m_folder->path(QStringLiteral("coded.") + suffix);
    const QString script = QStringLiteral(MVR_SOURCE_DIR "/examples/screenplay.fdx");
    const QString out = m_folder->path(QStringLiteral("out.rtf"));
    const QString markup = QStringLiteral("markup");
    QCOMPARE(
        mvrtext({markup, QStringLiteral("--write"), script, QStringLiteral("-o"), coded}).exitCode,
        0);
    QCOMPARE(mvrtext({markup, QStringLiteral("--read"), coded, QStringLiteral("-o"), out}).exitCode,
             0);
    const QByteArray notes = mvrtext({QStringLiteral("notes"), out}).output;
    QCOMPARE(notes.count("\ncomment "), 5);
    QVERIFY(notes.contains("Check that no registered vessel has this name.\n"));
}

void TestToolMarkup::writesNotesOfABook()
{
    QCOMPARE(mvrtext("endnotes --style ebook in.rtf -o a.html", m_folder->path()).exitCode, 0);
    QVERIFY(m_folder->read(QStringLiteral("a.html")).contains("<a href=\"footnotes.xhtml#fn1\">"));
    const QByteArray notes = m_folder->read(QStringLiteral("footnotes.xhtml"));
    QVERIFY2(notes.contains("<a id=\"fn1\"></a>"), notes.constData());
    QVERIFY(notes.startsWith("<?xml") && notes.endsWith("</html>\n"));
}

// 192 by 96 pixels are two inches by one; the other picture is higher than all paper.
// Marks and a list of notes are footnotes again, on the same words, also behind a link.
void TestToolMarkup::readsBackMultiMarkdown()
{
    m_folder->write(
        QStringLiteral("notes.rtf"),
        R"({\rtf1 One{\footnote First {\i one}.\par Second [b] *c*.} and {\field{\*\fldinst )"
        R"(HYPERLINK "http://x.y"}{\fldrslt link}}{\footnote Beside} end.\par {\i Two}{\footnote 1. x})");
    const auto notes
        = [this](const char *arguments) { return mvrtext(arguments, m_folder->path()).output; };
    const QByteArray before = notes("notes --json notes.rtf");
    QCOMPARE(before.count("\"kind\": \"footnote\""), 3);
    QCOMPARE(mvrtext("endnotes --style mmd notes.rtf -o notes.md", m_folder->path()).exitCode, 0);
    QCOMPARE(notes("notes --json notes.md"), before);
}

void TestToolMarkup::drawsPicturesInTheirSize()
{
    QImage black(1, 1, QImage::Format_RGB32);
    black.fill(Qt::black);
    QVERIFY(black.save(m_folder->path(QStringLiteral("black.png"))));
    m_folder->write(QStringLiteral("in.txt"),
                    "{$MVRImageLink[w:192;h:96]=black.png}\n"
                    "{$MVRImageLink[w:1;h:2147483647]=none.png}\nEnd\n");
    QCOMPARE(mvrtext("markup --read in.txt -o a.png", m_folder->path()).exitCode, 0);
    const QImage page(m_folder->path(QStringLiteral("a.png")));
    const int inch = page.width() * 2 / 17;
    int blackPixels = 0;
    for (int y = 0; y < page.height(); ++y)
        for (int x = 0; x < page.width(); ++x)
            blackPixels += qGray(page.pixel(x, y)) < 32 ? 1 : 0;
    QVERIFY2(qAbs(blackPixels - 2 * inch * inch) < inch * inch / 10,
             QByteArray::number(blackPixels));

    QCOMPARE(mvrtext("markup --read in.txt -o a.html", m_folder->path()).exitCode, 0);
    QVERIFY(m_folder->read(QStringLiteral("a.html")).contains("width=\"192\" height=\"96\""));

    QCOMPARE(mvrtext("markup --read in.txt -o a.pdf", m_folder->path()).exitCode, 0);
    QCOMPARE(m_folder->read(QStringLiteral("a.pdf")).count("/Type /Page >>"), 3);
}

QTEST_GUILESS_MAIN(TestToolMarkup)
#include "tst_toolmarkup.moc"
