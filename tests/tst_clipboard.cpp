// SPDX-License-Identifier: MIT
#include "MarkedText.h"

#include <core/MVRTextRtf.h>
#include <text/MVRTextDoc.h>

#include <QDir>
#include <QImage>
#include <QMimeData>
#include <QtTest>

class TestClipboard : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void carriesMarkedText();
    void carriesPictures();
    void readsOtherPrograms_data();
    void readsOtherPrograms();
    void leavesTheDocumentToForeignData();
};

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage square(Qt::GlobalColor color)
{
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QTextCharFormat formatBehind(QTextDocument *document, int position)
{
    return MarkedText::select(document, position, position + 1).charFormat();
}

} // namespace

void TestClipboard::carriesMarkedText()
{
    const QString text = QStringLiteral("ab note fn kept fn kept, seen.\nnext one");
    const QString marks = QStringLiteral("...AAaa.ff.ppppPPPpppp..11111..ppp.BBB.");
    QTextDocument document;
    MarkedText::fill(&document, text, marks);
    QMimeData data;
    data.setData(QStringLiteral("application/x-own"), "kept");
    MVRTextDoc::setMovarinMarkupRtfMimeData(&data, &document);
    QCOMPARE(MarkedText::marks(document), marks);
    QVERIFY(!document.isUndoAvailable());
    QCOMPARE(data.data(QStringLiteral("application/x-own")), QByteArray("kept"));
    QCOMPARE(data.data(QStringLiteral("application/rtf")), data.data(QStringLiteral("text/rtf")));
    QVERIFY(data.text().contains(QStringLiteral("{\\Mvrn_fn=fn\\end_Mvrn_fn}")));

    QTextDocument pasted;
    pasted.setPlainText(QStringLiteral("replaced"));
    QVERIFY(MVRTextDoc::fromMovarinMarkupRtfMimeData(&data, &pasted));
    QCOMPARE(pasted.toPlainText(), text);
    QCOMPARE(MarkedText::marks(pasted), QString(marks).replace(QLatin1Char('1'), QLatin1Char('.')));
    QVERIFY(pasted.isUndoRedoEnabled() && !pasted.isUndoAvailable());
    QVERIFY(!MVRTextDoc::fromMovarinMarkupRtfMimeData(&data, nullptr));
}

void TestClipboard::carriesPictures()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("linked.png"));
    QVERIFY(square(Qt::blue).save(path));
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextImageFormat linked;
    linked.setName(path);
    linked.setWidth(40);
    linked.setHeight(30);
    linked.setProperty(MVRTextFormat::ImageLinkProperty, path);
    cursor.insertImage(linked);
    document.addResource(QTextDocument::ImageResource, QUrl(QStringLiteral("own")),
                         square(Qt::red));
    cursor.insertImage(QStringLiteral("own"));
    cursor.insertText(QStringLiteral("end"), QTextCharFormat());

    QMimeData data;
    MVRTextDoc::setMovarinMarkupRtfMimeData(&data, &document);
    QCOMPARE(data.text(), QStringLiteral("{$MVRImageLink[w:40;h:30]=%1}end").arg(path));
    QTextDocument pasted;
    QVERIFY(MVRTextDoc::fromMovarinMarkupRtfMimeData(&data, &pasted));
    QCOMPARE(pasted.characterCount(), document.characterCount());
    const QTextCharFormat format = formatBehind(&pasted, 0);
    QCOMPARE(format.stringProperty(MVRTextFormat::ImageLinkProperty), path);
    QCOMPARE(format.toImageFormat().width(), 40.0);
    const QUrl own(formatBehind(&pasted, 1).toImageFormat().name());
    const QByteArray file = pasted.resource(QTextDocument::ImageResource, own).toByteArray();
    QCOMPARE(QImage::fromData(file).pixelColor(1, 1), QColor(Qt::red));
}

void TestClipboard::readsOtherPrograms_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("type");

    QTest::newRow("LibreOffice") << "tika-testRTFListLibreOffice"
                                 << "text/richtext";
    QTest::newRow("Word") << "tika-testRTFListMicrosoftWord"
                          << "text/rtf";
    QTest::newRow("Word, with pictures") << "tika-testRTFRegularImages"
                                         << "application/rtf";
}

void TestClipboard::readsOtherPrograms()
{
    QFETCH(const QString, name);
    QFETCH(const QString, type);
    const QString path = QStringLiteral(MVR_TEST_DATA "/rtf/") + name;
    QMimeData data;
    data.setData(QStringLiteral("text/rtf"), "no RTF");
    // Some programs end it like a string of their language.
    data.setData(type, contentOf(path + QLatin1String(".rtf")) + '\0');
    QTextDocument document;
    QVERIFY(MVRTextDoc::fromMovarinMarkupRtfMimeData(&data, &document));
    QStringList lines;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        lines += block.text();
    QCOMPARE(lines.join(QLatin1Char('\n')) + QLatin1Char('\n'),
             QString::fromUtf8(contentOf(path + QLatin1String(".txt"))));
}

void TestClipboard::leavesTheDocumentToForeignData()
{
    QTextDocument document;
    QTextCursor(&document).insertText(QStringLiteral("{\\Mvrn_fn=mine\\end_Mvrn_fn}"));
    const QString before = document.toHtml();
    QMimeData data;
    data.setHtml(QStringLiteral("<b>{\\rtf1 x}</b>"));
    data.setText(QStringLiteral("{\\rtf1 x}"));
    data.setData(QStringLiteral("text/richtext"), "<bold>x</bold>");
    for (const QByteArray &noise :
         {QByteArray(), QByteArray("\x01\0{\\rtf1", 7), QByteArray("{\\rt")}) {
        data.setData(QStringLiteral("text/rtf"), noise);
        QVERIFY(!MVRTextDoc::fromMovarinMarkupRtfMimeData(&data, &document));
        QCOMPARE(document.toHtml(), before);
        QVERIFY(document.isUndoAvailable());
    }
    MVRTextDoc::setMovarinMarkupRtfMimeData(nullptr, &document);
    MVRTextDoc::setMovarinMarkupRtfMimeData(&data, nullptr);
    QVERIFY(!MVRTextDoc::fromMovarinMarkupRtfMimeData(nullptr, &document));
}

QTEST_MAIN(TestClipboard)
#include "tst_clipboard.moc"
