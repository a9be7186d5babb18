// SPDX-License-Identifier: MIT
#include <pages/MVRPagePainter.h>

#include <QImage>
#include <QPainter>
#include <QtTest>

using namespace MVRFinalDraft;

// What is drawn for a line whose places are known, looked at pixel by pixel.
class TestPagePainter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void drawsInTheirPlaces_data();
    void drawsInTheirPlaces();
    void underlinesWordsAlone();
    void drawsBackgroundsAndColours();
    void watermarkStaysBelow();
};

namespace {

constexpr int pixels = 4; // a point
const QSizeF paper(200, 100);

MVRScreenplayLine::Run run(double x, const QString &text)
{
    MVRScreenplayLine::Run made;
    made.x = x;
    made.text = text;
    made.width = 7.2 * text.size();
    made.attr = MVRScreenplay::standardElement(QStringLiteral("Action")).fontSpec;
    return made;
}

MVRScreenplayLine line(const QVector<MVRScreenplayLine::Run> &runs)
{
    MVRScreenplayLine made;
    made.y = 40;
    made.height = 12;
    made.runs = runs;
    return made;
}

QImage drawn(const MVRScreenplayLine &line, const QString &watermark = QString())
{
    QImage image((paper * pixels).toSize(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::TextAntialiasing, false);
    painter.scale(pixels, pixels);
    MVRScreenplayPage page;
    page.lines.append(line);
    MVRPagePainter::paint(painter, page, paper, watermark);
    return image;
}

/*! What is not white, in points. */
QRectF ink(const QImage &image)
{
    QRect found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                found |= QRect(x, y, 1, 1);
        }
    }
    return QRectF(QPointF(found.topLeft()) / pixels, QSizeF(found.size()) / pixels);
}

QRect pixelsOf(const QRectF &area)
{
    return QRectF(area.topLeft() * pixels, area.size() * pixels).toRect();
}

bool holds(const QImage &image, const QRectF &area, const QColor &color)
{
    const QRect part = pixelsOf(area);
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (image.pixel(x, y) == color.rgb())
                return true;
        }
    }
    return false;
}

} // namespace

void TestPagePainter::drawsInTheirPlaces_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("needsShaping");
    QTest::newRow("letters") << QStringLiteral("Hxgx") << false;
    QTest::newRow("placed by the toolkit") << QStringLiteral("Hxgx") << true;
    QTest::newRow("to the left") << QString::fromUtf8("\xd7\xa9\xd7\x9c\xd7\x95\xd7\x9d") << true;
}

void TestPagePainter::drawsInTheirPlaces()
{
    QFETCH(const QString, text);
    QFETCH(const bool, needsShaping);
    MVRScreenplayLine shown = line({run(50, text)});
    shown.needsShaping = needsShaping;
    const QRectF place = ink(drawn(shown));
    QVERIFY2(place.left() > 48 && place.left() < 56, qPrintable(QString::number(place.left())));
    QVERIFY2(place.right() < 82, qPrintable(QString::number(place.right())));
    QVERIFY2(place.top() > 38 && place.bottom() < 54, qPrintable(QString::number(place.bottom())));

    // What tabs part is drawn each for itself, shaped or not.
    shown.runs.append(run(150, text));
    const QRectF both = ink(drawn(shown));
    QCOMPARE(both.left(), place.left());
    QVERIFY2(both.right() > 155 && both.right() < 182, qPrintable(QString::number(both.right())));
}

void TestPagePainter::underlinesWordsAlone()
{
    const QRectF gap(66, 48, 5, 5); // below the blank of "no no"
    for (const auto style : {Underline, WordUnderline}) {
        MVRScreenplayLine::Run words = run(50, QStringLiteral("no no"));
        words.attr.style = style;
        const QImage image = drawn(line({words}));
        QCOMPARE(ink(image.copy(pixelsOf(gap))).isEmpty(), style == WordUnderline);
        QVERIFY(!ink(image.copy(pixelsOf(QRectF(58, 49.2, 6, 1)))).isEmpty());
    }
}

void TestPagePainter::drawsBackgroundsAndColours()
{
    MVRScreenplayLine::Run marked = run(50, QStringLiteral("mark"));
    marked.attr.background = Qt::yellow;
    marked.attr.color = Qt::red;
    for (const bool needsShaping : {false, true}) {
        MVRScreenplayLine shown = line({run(20, QStringLiteral("a")), marked});
        shown.needsShaping = needsShaping;
        const QImage image = drawn(shown);
        QVERIFY(holds(image, QRectF(50, 40, 1, 1), Qt::yellow));
        QVERIFY(holds(image, QRectF(78, 51, 0.5, 0.5), Qt::yellow));
        QVERIFY(holds(image, QRectF(50, 40, 28, 12), Qt::red));
        QVERIFY(!holds(image, QRectF(20, 36, 20, 20), Qt::yellow));
        QVERIFY(!holds(image, QRectF(50, 53, 40, 20), Qt::yellow));
    }
}

void TestPagePainter::watermarkStaysBelow()
{
    const MVRScreenplayLine shown = line({run(10, QString(25, QLatin1Char('M')))});
    const QRectF text = ink(drawn(shown));
    const QImage image = drawn(shown, QStringLiteral("DRAFT"));
    const QRectF all = ink(image);
    QVERIFY(all.height() > 2 * text.height() && QRectF(QPointF(), paper).contains(all));
    const QImage plain = drawn(shown);
    for (int y = 0; y < plain.height(); ++y) {
        for (int x = 0; x < plain.width(); ++x) {
            if (plain.pixel(x, y) == qRgb(0, 0, 0))
                QCOMPARE(image.pixel(x, y), plain.pixel(x, y));
        }
    }
    QImage any(9, 9, QImage::Format_RGB32);
    QPainter painter(&any);
    for (const double side : {0.0, -1.0, 1e300, qQNaN()}) // which undefined behaviour would tell
        MVRPagePainter::paintWatermark(painter, QSizeF(side, side), QStringLiteral("DRAFT"));

    // What does not fit across the paper is no part of the file.
    QBuffer file;
    file.open(QIODevice::WriteOnly);
    const QString endless(20000, QLatin1Char('W'));
    QVERIFY(
        MVRPagePainter::writePdf(&file, MVRScreenplayPages {MVRScreenplay()}, QString(), endless));
    QVERIFY2(file.size() < 200000, QByteArray::number(file.size()));
}

QTEST_MAIN(TestPagePainter)
#include "tst_pagepainter.moc"
