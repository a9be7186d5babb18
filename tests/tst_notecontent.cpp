// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRTextRtf.h>
#include <text/MVRTextDoc.h>

#include <QDataStream>
#include <QtTest>

using MarkedText::fill;
using MarkedText::formatAt;
using MarkedText::select;

// What a note holds: its record in streams, its RTF as text and HTML.
class TestNoteContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void streamsLinks();
    void leavesForeignStreamsAlone();
    void readsDamagedRecordsAsEmpty();
    void readsContent();
    void writesNoForeignMarkupAsHtml();
    void trimsContent_data();
    void trimsContent();
};

namespace {

MVRTextCommentLink footnote(const QByteArray &content)
{
    MVRTextCommentLink link;
    link.isFootnote = true;
    link.cdata = content;
    return link;
}

QByteArray rtf(const QString &text)
{
    const QFont font;
    return MVRTextRtf::textToRtf(text, &font);
}

} // namespace

void TestNoteContent::streamsLinks()
{
    MVRTextCommentLink link = footnote("x");
    link.extraFlag = true;
    link.color = Qt::red;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << link;
    // Behind the tag and the colour: extraFlag, isFootnote, then length and content.
    QCOMPARE(bytes.right(7), QByteArray("\x01\x01\x00\x00\x00\x01x", 7));

    MVRTextCommentLink copy;
    QDataStream in(bytes);
    in >> copy;
    QVERIFY(copy.isFootnote && copy.extraFlag);
    QCOMPARE(copy.color, link.color);
    QCOMPARE(copy.cdata, link.cdata);
    QVERIFY(in.atEnd());
}

void TestNoteContent::leavesForeignStreamsAlone()
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << QStringLiteral("MVRTextCommentLink::1.1") << 42;
    QDataStream in(bytes);
    MVRTextCommentLink link = footnote("x");
    in >> link;
    QVERIFY(link.isFootnote);
    QCOMPARE(link.cdata, QByteArray("x"));
    int next = 0;
    in >> next;
    QCOMPARE(next, 42);
}

void TestNoteContent::readsDamagedRecordsAsEmpty()
{
    MVRTextCommentLink link = footnote("x");
    link.color = Qt::red;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out << link;
    const int colorKind = bytes.size() - 18; // the flags, the content and the colour go behind
    QCOMPARE(int(bytes.at(colorKind)), int(QColor::Rgb));
    const auto isEmpty = [](const QByteArray &record) {
        MVRTextCommentLink read = footnote("y");
        QDataStream in(record);
        in >> read;
        return !read.isFootnote && read.cdata.isEmpty() && !read.color.isValid();
    };
    QVERIFY(!isEmpty(bytes));
    for (int size = colorKind; size < bytes.size(); ++size)
        QVERIFY2(isEmpty(bytes.left(size)), qPrintable(QString::number(size)));
    for (const char kind : {'\x06', '\x7f', '\xff'})
        QVERIFY(isEmpty(QByteArray(bytes).replace(colorKind, 1, &kind, 1)));
}

void TestNoteContent::readsContent()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("one two three"));
    MVRTextDoc::setComment(select(&document, 0, 3), QStringLiteral("first\nnote"), false);
    MVRTextDoc::setCommentCData(select(&document, 4, 7), "not rtf", true);
    MVRTextDoc::setComment(select(&document, 8, 13), QStringLiteral("last"), true);
    QCOMPARE(MVRTextDoc::inspectorNotesToPlainText(&document),
             QStringList({QStringLiteral("first\nnote"), QStringLiteral("last")}));

    const QTextCharFormat format = formatAt(&document, 8);
    QCOMPARE(MVRTextDoc::commentText(format, false), QStringLiteral("last"));
    QVERIFY(MVRTextDoc::commentText(format, true).contains(QLatin1String("<html")));
    QVERIFY(MVRTextDoc::commentText(formatAt(&document, 4), false).isNull());
    QVERIFY(MVRTextDoc::commentText(QTextCharFormat(), true).isNull());
}

void TestNoteContent::writesNoForeignMarkupAsHtml()
{
    QTextDocument document;
    document.setPlainText(QStringLiteral("one"));
    // Title, font and link of a note come with it from outside.
    MVRTextDoc::setCommentCData(
        select(&document, 0, 3),
        "{\\rtf1{\\fonttbl{\\f0 a\"b';}}{\\info{\\title </title><script>&}}\\f0 x"
        "{\\field{\\*\\fldinst HYPERLINK \"java\\tab script:y\"}{\\fldrslt z}}"
        "{\\field{\\*\\fldinst HYPERLINK \"http://w/?a&b\"}{\\fldrslt v}}}",
        false);
    const QString html = MVRTextDoc::commentText(formatAt(&document, 0), true);
    QVERIFY2(html.contains(QLatin1String("<title>&lt;/title&gt;&lt;script&gt;&amp;</title>")),
             qPrintable(html));
    QVERIFY2(!html.contains(QLatin1String("script:y")), qPrintable(html));
    QVERIFY2(html.contains(QLatin1String("href=\"http://w/?a&amp;b\"")), qPrintable(html));
    QVERIFY2(!html.contains(QLatin1String("a&quot;")), qPrintable(html));
}

void TestNoteContent::trimsContent_data()
{
    QTest::addColumn<int>("property");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("contents");

    const QString comment = QStringLiteral("  comment ");
    const QString footnote = QStringLiteral("  footnote ");
    QTest::newRow("defaults for both kinds")
        << int(MVRTextFormat::CommentLinkProperty) << -1
        << QStringList({QStringLiteral("comment"), QStringLiteral(" footnote")});
    QTest::newRow("one kind") << int(MVRTextFormat::InspectorFootnoteProperty) << 0
                              << QStringList({comment, QStringLiteral("footnote")});
    QTest::newRow("not a note property")
        << int(MVRTextFormat::InlineFootnoteProperty) << 0 << QStringList({comment, footnote});
}

void TestNoteContent::trimsContent()
{
    QFETCH(const int, property);
    QFETCH(const int, count);
    QTextDocument document;
    fill(&document, QStringLiteral("abcdef"), QStringLiteral("B.BB.."));
    MVRTextDoc::setCommentCData(select(&document, 0, 3), rtf(QStringLiteral("  comment ")), false);
    MVRTextDoc::setCommentCData(select(&document, 3, 6), rtf(QStringLiteral("  footnote ")), true);
    const QString anchor = formatAt(&document, 0).anchorHref();
    document.clearUndoRedoStacks();

    MVRTextDoc::trimInspectorNotes(&document, property, false, count, -1);
    QTEST(MVRTextDoc::inspectorNotesToPlainText(&document), "contents");
    QCOMPARE(MVRTextDoc::commentsMap(&document, -1, -1).size(), 2);
    QCOMPARE(formatAt(&document, 0).anchorHref(), anchor);
    if (property != MVRTextFormat::InlineFootnoteProperty) {
        document.undo();
        QVERIFY(!document.isUndoAvailable());
        QCOMPARE(MVRTextDoc::inspectorNotesToPlainText(&document).last(),
                 QStringLiteral("  footnote "));
    }
}

QTEST_MAIN(TestNoteContent)
#include "tst_notecontent.moc"
