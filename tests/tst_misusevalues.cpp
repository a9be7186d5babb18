// SPDX-License-Identifier: MIT
#include <core/MVRDomDoc.h>
#include <core/MVRFormat.h>
#include <core/MVRParagraphView.h>
#include <core/MVRScriptElement.h>
#include <core/MVRSettings.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>
#include <core/MVRUnit.h>
#include <finaldraft/MVRFinalDraftFile.h>
#include <finaldraft/MVRFinalDraftReader.h>
#include <finaldraft/MVRFinalDraftWriter.h>
#include <finaldraft/MVRScreenplayElements.h>
#include <pages/MVRPagePainter.h>
#include <pages/MVRScreenplayFace.h>
#include <text/MVRNoteHighlighter.h>
#include <text/MVRTextDoc.h>

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QPainter>
#include <QTextTable>
#include <QtTest>

#include <limits>

/*!
    Operations on numbers, formats, screenplays and pages, with nothing, with values that mean
   nothing and in an order that nobody means; see tst_misusecalls.
*/
class TestMisuseValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void takesOddNumbers();
    void boundsNumbers();
    void writesNoScreenplay();
    void readsNoScreenplay();
    void paintsNothing();
};

namespace {

constexpr int least = std::numeric_limits<int>::min();
constexpr int most = std::numeric_limits<int>::max();
constexpr int oddNumbers[] = {least, -1, 0, 3, most};

}

void TestMisuseValues::takesOddNumbers()
{
    MVRSettings settings(QDir::tempPath() + QStringLiteral("/no/such/folder/x.ini"));
    for (const int odd : oddNumbers) {
        settings.setValue(odd, QVariant());
        settings.remove(odd);
        QVERIFY(!settings.contains(odd));
        QVERIFY(!settings.stored(odd).isValid());
        settings.key(odd);
        settings.value(MVRSettings::BoolSetting(odd & 7));
        settings.defaultValue(MVRSettings::FontSetting(odd & 15));
        settings.value(MVRSettings::ColorSetting(odd & 31));
        MVRFormat::isEBook(MVRFormat::Format(odd & 7));
        MVRFormat::isMmdVariant(MVRFormat::Format(odd & 7));
        MVRToolkit::propertyOfStored(MVRToolkit::storedProperty(odd));
        MVRToolkit::weightOfStored(MVRToolkit::storedWeight(odd));
        MVRTextNote::property(MVRTextNote::Kind(odd & 3));
    }
    QTextBlockFormat format;
    for (const double odd : {0.0, -1.0, 1e308, qQNaN(), qInf(), -qInf()}) {
        MVRUnit::toUnit(MVRUnit::Points, MVRUnit::Twips, odd);
        format.setTextIndent(odd);
        format.setLeftMargin(odd);
        format.setLineHeight(odd, QTextBlockFormat::FixedHeight);
        MVRToolkit::stockBlockFormat(format, odd);
        MVRTextFormat::spacingType(format, nullptr);
        MVRScriptElement::equal(format, format);
        MVRParagraphView::ownFormat(format);
        MVRFinalDraft::ParagraphAttr attr;
        attr.fromBlockFormat(format, odd);
        attr.toBlockFormat();
        QTextDocument document(QStringLiteral("a"));
        QTextCursor(&document).setBlockFormat(format);
        QVERIFY(MVRTextRtf::isRtf(MVRTextDoc::toRtf(&document)));
        mvrSetPageSize(*document.documentLayout(), QSizeF(odd, odd));
        mvrPageSize(*document.documentLayout());
    }
    QTextDocument document;
    MVRNoteHighlighter highlighter(&document);
    highlighter.setTint(MVRTextNote::Comment, QColor());
    highlighter.setTextColor(QColor());
    QVERIFY(!highlighter.tint(MVRTextNote::Comment).isValid());
}

/*! Numbers that are too large for a file or a layout are the largest that it takes. */
void TestMisuseValues::boundsNumbers()
{
    QTextDocument document;
    QTextCursor cursor(&document);
    QTextListFormat list;
    list.setIndent(least);
    cursor.insertList(list);
    QTextCharFormat letters;
    letters.setProperty(QTextFormat::FontPixelSize, most);
    cursor.insertText(QStringLiteral("large"), letters);
    QTextBlockFormat heading;
    heading.setHeadingLevel(1);
    letters.clearProperty(QTextFormat::FontPixelSize);
    letters.setProperty(QTextFormat::FontPointSize, -1e300);
    cursor.insertBlock(heading, letters);
    cursor.insertText(QStringLiteral("none"));
    const QByteArray rtf = MVRTextDoc::toRtf(&document);
    QVERIFY2(rtf.contains("\\fs20000"), rtf);
    QVERIFY2(!rtf.contains("\\ilvl8"), rtf);

    QTextDocument shown;
    QTextBlockFormat odd;
    odd.setProperty(MVRTextFormat::BlockLeftIndentProperty, 1e300);
    odd.setProperty(MVRTextFormat::BlockRightIndentProperty, qInf());
    odd.setProperty(MVRTextFormat::LineSpacingProperty, 1e300);
    QTextCursor(&shown).insertBlock(odd);
    MVRParagraphView view(&shown);
    for (const double number : {0.0, -1.0, 1e308, qQNaN(), qInf()}) {
        view.setTextWidth(number);
        view.setScale(number);
    }
    QCOMPARE(view.textWidth(), 468.0);
    QCOMPARE(view.scale(), 1.0);
    const QTextBlockFormat bounded = shown.lastBlock().blockFormat();
    QCOMPARE(bounded.leftMargin(), 100000.0);
    QCOMPARE(bounded.lineHeightType(), int(QTextBlockFormat::SingleHeight));
}

void TestMisuseValues::writesNoScreenplay()
{
    MVRFinalDraftWriter writer;
    QTextDocument document(QStringLiteral("one\ntwo"));
    QBuffer closed;
    QVERIFY(!writer.write(static_cast<QIODevice *>(nullptr), &document, {}));
    QVERIFY(!writer.write(&closed, &document, {}));
    QVERIFY(!writer.write(QString(), &document, {}));
    QVERIFY(!writer.write(QStringLiteral("/no/such/folder/x.fdx"), &document, {}));
    QBuffer open;
    QVERIFY(open.open(QIODevice::WriteOnly));
    QVERIFY(!writer.write(&open, nullptr, {}));
    for (const int odd : oddNumbers) {
        writer.setTitlePageBlockCount(odd);
        QVERIFY(writer.write(&open, &document, {MVRScriptElement(), MVRScriptElement()}));
    }
    // The steps, outside of write().
    writer.processFrame(*document.rootFrame());
    writer.processFrameIterator(document.rootFrame()->begin());
    writer.processFrameIterator({});
    writer.processTable(*QTextCursor(&document).insertTable(1, 1));
    QVERIFY(!writer.processBlock(document.begin()));
    QVERIFY(!writer.processBlock(QTextBlock()));
    const MVRFinalDraftWriter::FragmentState state = writer.toFragmentState(QTextCharFormat());
    writer.startFragmentState(state, QTextBlockFormat());
    writer.finalizeFragmentState(state, {MVRFinalDraftWriter::FragmentState::InlineFootnote, {}});
    QVERIFY(!writer.writeElementSettings());
    writer.writePageLayout();
    writer.writeHeaderFooter();
    QVERIFY(writer.findScriptElement(QTextBlockFormat()).name().isEmpty());
    QCOMPARE(writer.findScriptElementName(QTextBlockFormat()), QStringLiteral("Action"));
    QVERIFY(writer.docDefaultBackground() != writer.docDefaultForeground());
    writer.clear();
}

void TestMisuseValues::readsNoScreenplay()
{
    MVRFinalDraftReader reader;
    QBuffer closed;
    QVERIFY(!reader.load(static_cast<QIODevice *>(nullptr)));
    QVERIFY(!reader.load(&closed));
    QVERIFY(!reader.load(QString()));
    QVERIFY(!reader.read(nullptr, {}));
    QVERIFY(!reader.readElements(nullptr));
    QHash<QString, MVRFinalDraft::ElementSettings> settings;
    QVERIFY(!reader.readElements(&settings));
    reader.setFallbackSettings({{QString(), MVRFinalDraft::ElementSettings()}});
    reader.leftOut();
    MVRFinalDraft::TextAttr text;
    MVRFinalDraft::ParagraphAttr paragraph;
    MVRFinalDraft::ElementSettings element;
    MVRDomDoc empty;
    text.fromDomElement(QDomElement());
    paragraph.fromDomElement(QDomElement(), qQNaN());
    QVERIFY(!element.fromDomDoc(&empty, qQNaN()));
    QVERIFY(!element.fromDomDoc(nullptr, qQNaN()));
    QVERIFY(!element.toDomDoc(nullptr));
    QVERIFY(!text.toDomDoc(nullptr, QString(), QString()));
    QVERIFY(!paragraph.toDomDoc(nullptr, QString()));
    QVERIFY(!text.toDomDoc(&empty, QString(), QString()));
    QVERIFY(!paragraph.toDomDoc(&empty, QString()));
    for (const QString &odd : {QString(), QString(70000, u'+'), QStringLiteral("#"),
                               QString(1, QChar(0xd800)), QStringLiteral("#12")}) {
        MVRFinalDraft::toElementType(odd);
        MVRFinalDraft::toLeadingParStyle(odd);
        QVERIFY(!MVRFinalDraft::toFontFlags(odd));
        QCOMPARE(MVRFinalDraft::toColor(odd, Qt::red), QColor(Qt::red));
        MVRFinalDraft::toAlignment(odd, Qt::AlignRight);
        MVRScreenplay::standardElement(odd);
        MVRScreenplayFace::isAlias(odd);
    }
    MVRFinalDraft::toString(QColor());
    MVRFinalDraft::toString(Qt::Alignment());
    QVERIFY(MVRScreenplayElements::elementOf(QTextBlock()).isEmpty());
    MVRFinalDraftFile file;
    QVERIFY(!file.isLoaded());
    file.setElements({MVRScriptElement()});
    file.setSettingsXml({{QString(), "<"}, {QStringLiteral("a"), "</FinalDraft>"}});
    QTextDocument document(QStringLiteral("one"));
    QBuffer whole;
    QVERIFY(whole.open(QIODevice::ReadWrite));
    file.write(&whole, &document);
    MVRDomDoc written;
    QVERIFY(whole.data().isEmpty() || written.setContent(QString::fromUtf8(whole.data())));
    QCOMPARE(file.titlePageBlockCount(), 0);
    file.settingsXml();
    file.elementSettings();
    file.leftOut();
    file.version();
    file.scaling();
    file.showInvisibles();
    file.clear();
}

void TestMisuseValues::paintsNothing()
{
    QPainter inactive;
    MVRPagePainter::paint(inactive, MVRScreenplayPage(), QSizeF(), QString());
    MVRPagePainter::paintWatermark(inactive, QSizeF(100, 100), QStringLiteral("x"));
    QImage image(20, 20, QImage::Format_RGB32);
    QPainter painter(&image);
    for (const double side : {0.0, -1.0, 1e308, qQNaN(), qInf()}) {
        MVRPagePainter::paint(painter, MVRScreenplayPage(), QSizeF(side, side), QString());
        MVRPagePainter::paintWatermark(painter, QSizeF(side, side), QString(9, u'x'));
    }
    MVRScreenplayPages pages {MVRScreenplay()};
    pages.removeRevisionMarks();
    pages.sceneLengths();
    QVERIFY(!pages.keepPages(most, least));
    MVRScreenplayPages none {MVRScreenplay()};
    QVERIFY(!none.keepScenes(QStringLiteral("1"), QString()));
    QVERIFY(!MVRPagePainter::writePdf(nullptr, pages, QString()));
    QVERIFY(!MVRPagePainter::writePdf(nullptr, pages, QString(), QString(), {}));
    QVERIFY(MVRScreenplayLine().text().isEmpty());
    QVERIFY(!MVRScreenplayFace::family().isEmpty());
}

QTEST_MAIN(TestMisuseValues)
#include "tst_misusevalues.moc"
