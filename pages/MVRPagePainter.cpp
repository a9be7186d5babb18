// SPDX-License-Identifier: MIT
#include <pages/MVRPagePainter.h>

#include <pages/MVRScreenplayFace.h>
#include <pages/ShapedText_p.h>

#include <core/document/Devices_p.h>

#include <QBuffer>
#include <QPageSize>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>
#include <QTextLayout>
#include <QtMath>

using MVRFinalDraft::TextAttr;

namespace {

constexpr int pdfResolution = 1440; // dots per inch; a whole number for each of fontUnits
constexpr double baselineShare = 0.79; // of a typewriter line, above the baseline

bool isSameFont(const TextAttr &a, const TextAttr &b)
{
    return a.font == b.font && a.size == b.size && a.style == b.style;
}

/*! Fonts by look; asking the toolkit for one each time costs more than drawing with it. */
class FontCache
{
public:
    const QFont &font(const TextAttr &attr)
    {
        for (const Entry &entry : m_entries) {
            if (isSameFont(entry.attr, attr))
                return entry.font;
        }
        if (m_entries.size() >= maxEntries)
            m_entries.clear();
        m_entries.append({attr, pageFont(attr)});
        return m_entries.last().font;
    }

private:
    static constexpr int maxEntries = 64;

    struct Entry
    {
        TextAttr attr;
        QFont font;
    };
    QVector<Entry> m_entries;
};

// A hair smaller than its line: programs that take text out of pages divide the one by the other
// to find empty lines, and 24 by 12 is 1.9999 to them.
constexpr double shrink = 0.9995;

double lineSize(const MVRScreenplayLine &line)
{
    double size = 12.0;
    for (const MVRScreenplayLine::Run &run : line.runs)
        size = qMax(size, run.attr.size);
    return size;
}

QPointF at(double x, double y)
{
    return QPointF(x, y) * (fontUnits / shrink);
}

void drawBackground(QPainter &painter, const MVRScreenplayLine &line,
                    const MVRScreenplayLine::Run &run)
{
    if (run.attr.background == QColor(Qt::white) || !run.attr.background.isValid())
        return;
    painter.fillRect(QRectF(at(run.x, line.y), at(run.x + run.width, line.y + line.height)),
                     run.attr.background);
}

void drawWords(QPainter &painter, const MVRScreenplayLine::Run &run, double baseline, QFont font)
{
    const double letter = run.text.isEmpty() ? 0.0 : run.width / run.text.size();
    for (int start = 0; start < run.text.size();) {
        int end = start;
        const bool isBlank = hangs(run.text[start]);
        while (end < run.text.size() && hangs(run.text[end]) == isBlank)
            ++end;
        font.setUnderline(!isBlank);
        painter.setFont(font);
        painter.drawText(at(run.x + start * letter, baseline), run.text.mid(start, end - start));
        start = end;
    }
}

void drawRun(QPainter &painter, const MVRScreenplayLine::Run &run, double baseline,
             const QFont &font, bool isShaped)
{
    painter.setPen(run.attr.color.isValid() ? run.attr.color : QColor(Qt::black));
    if (run.attr.style.testFlag(MVRFinalDraft::WordUnderline) && !isShaped) {
        drawWords(painter, run, baseline, font);
        return;
    }
    painter.setFont(font);
    painter.drawText(at(run.x, baseline), run.text);
}

// The whole line in one: letters join over runs, and runs come in the order of reading.
void drawShaped(QPainter &painter, const MVRScreenplayLine &line, double baseline)
{
    QString text;
    QVector<QTextLayout::FormatRange> formats;
    double left = line.runs.first().x;
    for (const MVRScreenplayLine::Run &run : line.runs) {
        QTextLayout::FormatRange range;
        range.start = text.size();
        range.length = run.text.size();
        range.format.setFont(pageFont(run.attr));
        range.format.setForeground(run.attr.color.isValid() ? run.attr.color : QColor(Qt::black));
        formats.append(range);
        text += run.text;
        left = qMin(left, run.x);
    }
    QTextLayout layout(text, pageFont(line.runs.first().attr));
    layout.setFormats(formats);
    layout.beginLayout();
    QTextLine laidOut = layout.createLine();
    laidOut.setLineWidth(1e6);
    layout.endLayout();
    // The toolkit puts text that runs to the left at the right end of the line's width.
    const double shift = laidOut.naturalTextRect().left();
    layout.draw(&painter, at(left, baseline) - QPointF(shift, laidOut.ascent()));
}

// Stretches that tabs part are drawn each for itself.
bool hasGaps(const MVRScreenplayLine &line)
{
    for (int i = 1; i < line.runs.size(); ++i) {
        if (qAbs(line.runs[i].x - line.runs[i - 1].x - line.runs[i - 1].width) > 0.5)
            return true;
    }
    return false;
}

void drawLine(QPainter &painter, const MVRScreenplayLine &line, FontCache &fonts)
{
    if (line.runs.isEmpty())
        return;
    for (const MVRScreenplayLine::Run &run : line.runs)
        drawBackground(painter, line, run);
    // Letters stand at the top of a line that is higher than they are.
    const double baseline = line.y + lineSize(line) * baselineShare;
    if (line.needsShaping && !hasGaps(line)) {
        drawShaped(painter, line, baseline);
        return;
    }
    for (const MVRScreenplayLine::Run &run : line.runs)
        drawRun(painter, run, baseline, fonts.font(run.attr), line.needsShaping);
}

}

void MVRPagePainter::paint(QPainter &painter, const MVRScreenplayPage &page, const QSizeF &pageSize,
                           const QString &watermark)
{
    FontCache fonts;
    paintWatermark(painter, pageSize, watermark);
    painter.save();
    painter.scale(shrink / fontUnits, shrink / fontUnits);
    for (const MVRScreenplayLine &line : page.lines)
        drawLine(painter, line, fonts);
    painter.restore();
}

void MVRPagePainter::paintWatermark(QPainter &painter, const QSizeF &pageSize, const QString &text)
{
    if (text.isEmpty())
        return;
    constexpr double smallest = 200.0;
    constexpr double letterWidth = 0.6; // of its size
    constexpr double mostLetters = 1000.0;
    const QSizeF size = pageSize * fontUnits;
    TextAttr attr;
    attr.style = MVRFinalDraft::Bold;
    QFont font = pageFont(attr);
    const double diagonal = std::hypot(size.width(), size.height());
    const double letters = qMax(4, text.size());
    font.setPixelSize(int(qBound(smallest, 0.75 * diagonal / letters / letterWidth, 3000.0)));
    const int shown = int(qBound(4.0, diagonal / smallest / letterWidth, mostLetters));
    painter.save();
    painter.scale(1.0 / fontUnits, 1.0 / fontUnits);
    painter.translate(size.width() / 2.0, size.height() / 2.0);
    painter.rotate(-qRadiansToDegrees(std::atan2(size.height(), size.width())));
    // Outlines: letters across the page would get between those of the text when it is selected.
    QPainterPath outlines;
    outlines.addText(QPointF(), font, text.mid(qMax(0, (int(text.size()) - shown) / 2), shown));
    painter.translate(-outlines.boundingRect().center());
    painter.fillPath(outlines, QColor(222, 222, 222));
    painter.restore();
}

bool MVRPagePainter::writePdf(QIODevice *device, const MVRScreenplayPages &pages,
                              const QString &title, const QString &watermark)
{
    return writePdf(device, pages, title, watermark, nullptr);
}

bool MVRPagePainter::writePdf(QIODevice *device, const MVRScreenplayPages &pages,
                              const QString &title, const QString &watermark,
                              const std::function<void(int)> &drawn)
{
    if (!device || !device->isWritable())
        return false;
    QBuffer file; // the toolkit does not tell whether its device took everything
    file.open(QIODevice::WriteOnly);
    QPdfWriter writer(&file);
    writer.setResolution(pdfResolution);
    writer.setPageSize(
        QPageSize(pages.pageSize(), QPageSize::Point, QString(), QPageSize::FuzzyOrientationMatch));
    writer.setPageMargins(QMarginsF());
    writer.setTitle(title);
    writer.setCreator(QStringLiteral("libMvrText"));
    QPainter painter;
    if (!painter.begin(&writer))
        return false;
    painter.scale(pdfResolution / 72.0, pdfResolution / 72.0);
    const QVector<MVRScreenplayPage> &all = pages.pages();
    for (int i = 0; i < all.size(); ++i) {
        if (i > 0)
            writer.newPage();
        paint(painter, all[i], pages.pageSize(), watermark);
        if (drawn)
            drawn(i + 1);
    }
    return painter.end() && device->write(file.data()) == file.size() && isFlushed(*device);
}
