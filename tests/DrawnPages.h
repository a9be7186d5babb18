// SPDX-License-Identifier: MIT
#pragma once

#include <tool/pages/Pages.h>

#include <QGuiApplication>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QStringList>
#include <QVector>
#include <QtTest>

struct DrawnLine
{
    double y; // baseline, points from the paper's top
    double x;
    QString text;
};
using DrawnPage = QVector<DrawnLine>;

/*! Keeps the text that is drawn, clipped or not, as a PDF file does. */
class TextEngine : public QPaintEngine
{
public:
    TextEngine()
        : QPaintEngine(AllFeatures)
    {
    }
    bool begin(QPaintDevice *) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState &now) override { m_to = now.transform(); }
    void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override { ++pictures; }
    void drawPath(const QPainterPath &) override { }
    void drawPolygon(const QPointF *, int, PolygonDrawMode) override { }
    Type type() const override { return User; }
    void drawTextItem(const QPointF &place, const QTextItem &item) override
    {
        const QPointF at = m_to.map(place) * 72.0 / Pages::resolution;
        if (!page.isEmpty() && qAbs(page.last().y - at.y()) < 1.0 && page.last().x < at.x())
            page.last().text += item.text();
        else if (!item.text().trimmed().isEmpty())
            page.append({at.y(), at.x(), item.text()});
    }

    DrawnPage page;
    int pictures = 0;

private:
    QTransform m_to;
};

class TextDevice : public QPaintDevice
{
public:
    QPaintEngine *paintEngine() const override { return &engine; }
    mutable TextEngine engine;

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 10000;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        default:
            return Pages::resolution;
        }
    }
};

inline QVector<DrawnPage> drawn(const Pages &pages)
{
    QVector<DrawnPage> all;
    for (int i = 0; i < pages.count(); ++i) {
        TextDevice device;
        QPainter painter(&device);
        pages.paint(painter, i);
        painter.end();
        all.append(device.engine.page);
    }
    return all;
}

inline QStringList textsOf(const DrawnPage &page)
{
    QStringList texts;
    for (const DrawnLine &line : page)
        texts.append(line.text.trimmed());
    return texts;
}

inline DrawnPage joined(const QVector<DrawnPage> &pages)
{
    DrawnPage lines;
    for (const DrawnPage &page : pages)
        lines += page;
    return lines;
}

inline PageSetup smallPaper()
{
    PageSetup setup;
    setup.paper = QSizeF(360.0, 400.0);
    setup.margins = QMarginsF(72.0, 72.0, 72.0, 72.0);
    return setup;
}

// Words that tell their paragraph: 7.0, 7.1, 7.2 …; those of headings begin with H, of notes with
// N.
inline QByteArray words(const QByteArray &name, int count)
{
    QByteArray text;
    for (int i = 0; i < count; ++i)
        text += name + '.' + QByteArray::number(i) + ' ';
    return text;
}

/*! Runs a test at the resolution of pages. */
template <typename Test> int runPageTest(int argc, char *argv[])
{
    qputenv("QT_FONT_DPI", QByteArray::number(Pages::resolution));
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0"); // by which Qt 6 would take that back
    QGuiApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}
