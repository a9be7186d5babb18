// SPDX-License-Identifier: MIT
#include "ToolRun.h"

#define POINTERHOLDER_TRANSITION 4 // only the standard library's pointers
#include <qpdf/QPDF.hh>

#include <QtTest>

/*! What a PDF file of a document has beside the text of its pages. */
class TestPdf : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void completesThePdf();
    void boundsTheOutline();
    void linksHaveAnyTarget();
    void takesPaperAndMarginsOfRtf();
};

void TestPdf::completesThePdf()
{
    const ToolFolder folder;
    folder.write(QStringLiteral("in.rtf"),
                 "{\\rtf1{\\info{\\title Of Rain}{\\author Zo\\u235?}}"
                 "\\pard\\outlinelevel0 One\\par\\pard {\\field{\\*\\fldinst HYPERLINK "
                 "\"http://a.example/b?c=1\"}{\\fldrslt site}}\\par{\\field{\\*\\fldinst HYPERLINK "
                 "\\\\l \"far\"}{\\fldrslt there}}\\par\\pard\\outlinelevel1 Two\\par"
                 "\\pard{\\*\\atnauthor Ann}{\\*\\atrfstart 1}about{\\*\\atrfend 1}\\chatn"
                 "{\\*\\annotation{\\*\\atnref 1}A remark}\\par\\page\\pard\\outlinelevel0 "
                 "{\\*\\bkmkstart far}Three{\\*\\bkmkend far}\\par}");
    const Run run = mvrtext("convert in.rtf out.pdf", folder.path());
    QCOMPARE(run.errors, QByteArray());
    QPDF pdf;
    pdf.processFile(qPrintable(folder.path(QStringLiteral("out.pdf"))));
    QVERIFY(pdf.getWarnings().empty());
    const std::vector<QPDFObjectHandle> pages = pdf.getAllPages();
    QCOMPARE(int(pages.size()), 2);
    QPDFObjectHandle info = pdf.getTrailer().getKey("/Info");
    QCOMPARE(info.getKey("/Title").getUTF8Value(), std::string("Of Rain"));
    QCOMPARE(info.getKey("/Author").getUTF8Value(), std::string("Zo\xc3\xab"));

    QPDFObjectHandle outline = pdf.getRoot().getKey("/Outlines");
    QPDFObjectHandle one = outline.getKey("/First");
    QCOMPARE(one.getKey("/Title").getUTF8Value(), std::string("One"));
    QCOMPARE(one.getKey("/First").getKey("/Title").getUTF8Value(), std::string("Two"));
    QCOMPARE(one.getKey("/Next").getKey("/Title").getUTF8Value(), std::string("Three"));
    QVERIFY(one.getKey("/Next").getKey("/Dest").getArrayItem(0).getObjGen()
            == pages[1].getObjGen());

    QPDFObjectHandle marks = pages[0];
    marks = marks.getKey("/Annots");
    QCOMPARE(marks.getArrayNItems(), 3);
    QCOMPARE(marks.getArrayItem(0).getKey("/A").getKey("/URI").getStringValue(),
             std::string("http://a.example/b?c=1"));
    QVERIFY(marks.getArrayItem(1).getKey("/Dest").getArrayItem(0).getObjGen()
            == pages[1].getObjGen());
    QPDFObjectHandle comment = marks.getArrayItem(2);
    QCOMPARE(comment.getKey("/Contents").getUTF8Value(), std::string("A remark"));
    QCOMPARE(comment.getKey("/T").getUTF8Value(), std::string("Ann"));
    // The word stands in the fourth line of the page: its place tells that y counts from below.
    const double top = comment.getKey("/Rect").getArrayItem(3).getNumericValue();
    QVERIFY2(top > 640.0 && top < 690.0, QByteArray::number(top));
    QCOMPARE(comment.getKey("/QuadPoints").getArrayNItems(), 8);
}

void TestPdf::boundsTheOutline()
{
    const ToolFolder folder;
    folder.write(QStringLiteral("in.html"),
                 "<h1>a</h1>" + QByteArray("<h2>b</h2>").repeated(10000) + "<h1>c</h1>");
    QCOMPARE(mvrtext("convert in.html out.pdf", folder.path()).exitCode, 0);
    QPDF pdf;
    pdf.processFile(QFile::encodeName(folder.path(QStringLiteral("out.pdf"))).constData());
    QPDFObjectHandle outline = pdf.getRoot().getKey("/Outlines");
    QCOMPARE(outline.getKey("/First").getKey("/Title").getUTF8Value(), std::string("a"));
    QCOMPARE(outline.getKey("/First").getKey("/Next").getKey("/Title").getUTF8Value(),
             std::string("c"));
    QVERIFY(!outline.getKey("/First").hasKey("/First"));
}

void TestPdf::linksHaveAnyTarget()
{
    const ToolFolder folder;
    folder.write(QStringLiteral("in.md"),
                 "[a](<http://a.b/x_(y>) [b](<http://a.b/y\\\\>) [c](http://a.b/(z)) [^n]\n\n"
                 "[no](<JavaScript:x\\(\\)>) [no](<&#1;vbscript:x>) [no](<data:text/html,x>)"
                 " [no](<http://a b/>)\n\n"
                 "[^n]: [d](<http://a.b/n_(o>)\n");
    const Run run
        = mvrtext({QStringLiteral("convert"), QStringLiteral("in.md"), QStringLiteral("out.pdf")},
                  QByteArray(), folder.path());
    QCOMPARE(run.exitCode, 0);
    QVERIFY2(run.errors.isEmpty(), run.errors.constData()); // libqpdf warns of a damaged file
    QPDF pdf;
    pdf.processFile(QFile::encodeName(folder.path(QStringLiteral("out.pdf"))).constData());
    QVERIFY(!pdf.anyWarnings());
    QCOMPARE(pdf.getAllPages().size(), size_t(1));
    QPDFObjectHandle page = pdf.getAllPages().at(0);
    std::vector<QPDFObjectHandle> links = page.getKey("/Annots").getArrayAsVector();
    QStringList targets;
    for (QPDFObjectHandle &link : links)
        targets += QString::fromStdString(link.getKey("/A").getKey("/URI").getStringValue());
    const QStringList expected {QStringLiteral("http://a.b/x_(y"),
                                QStringLiteral("http://a.b/y%5C"), QStringLiteral("http://a.b/(z)"),
                                QStringLiteral("http://a.b/n_(o")};
    QCOMPARE(targets, expected);
    // That of the footnote stands at the foot, above the margin of an inch.
    const double bottom = links.back().getKey("/Rect").getArrayItem(1).getNumericValue();
    QVERIFY2(bottom > 70.0 && bottom < 80.0, QByteArray::number(bottom));
}

void TestPdf::takesPaperAndMarginsOfRtf()
{
    const ToolFolder folder;
    folder.write(QStringLiteral("in.rtf"),
                 "{\\rtf1\\paperw6000\\paperh8000\\margl400\\margr400\\margt400\\margb400 "
                     + QByteArray("x\\par ").repeated(20) + '}');
    const auto box = [&](const char *options) {
        const QByteArray command = QByteArray("convert in.rtf out.pdf ") + options;
        if (mvrtext(command.constData(), folder.path()).exitCode != 0)
            return QString();
        QPDF pdf;
        pdf.processFile(qPrintable(folder.path(QStringLiteral("out.pdf"))));
        QPDFObjectHandle page = pdf.getAllPages().at(0);
        return QStringLiteral("%1 of %2 by %3")
            .arg(int(pdf.getAllPages().size()))
            .arg(page.getKey("/MediaBox").getArrayItem(2).getNumericValue())
            .arg(page.getKey("/MediaBox").getArrayItem(3).getNumericValue());
    };
    QCOMPARE(box(""), QStringLiteral("1 of 300 by 400"));
    QCOMPARE(box("--paper a4"), QStringLiteral("1 of 595 by 842"));
    QCOMPARE(box("--pages 2-3"), QString());
}

QTEST_GUILESS_MAIN(TestPdf)
#include "tst_pdf.moc"
