#include "Pages.h"

#include "Document.h"
#include "Lengths.h"

#include <core/MVRToolkit.h>

#include <QAbstractTextDocumentLayout>
#include <QFont>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

namespace {

constexpr double metersPerInch = 0.0254;
constexpr double linePitch = 12.0 * pixelsPerPoint; // a typewriter's six lines to the inch
constexpr double largestLineFont = 12.0; // points; larger letters would overlap at that pitch

// Where pages have their number: half an inch from the top, ending at the right margin.
constexpr double numberTop = 0.5; // inches
constexpr double numberRight = 1.0; // inches

QString screenplayFace()
{
    return QStringLiteral("Courier Prime");
}

// Screenplays name faces that few systems have; all are typewriter faces of the same width.
void substituteCourier()
{
    static const bool done = [] {
        for (const char *face :
             {"Courier Final Draft", "Courier", "Courier New", "Courier Std", "Courier 10 Pitch",
              "Courier Screenplay", "Courier Prime Final Draft"})
            QFont::insertSubstitution(QString::fromLatin1(face), screenplayFace());
        return true;
    }();
    Q_UNUSED(done)
}

QTextBlock firstBodyBlock(const Document &document)
{
    return document.titlePageBlocks > 0 ? document.text.findBlockByNumber(document.titlePageBlocks)
                                        : QTextBlock();
}

void breakBehindTitlePage(Document &document)
{
    const QTextBlock body = firstBodyBlock(document);
    if (!body.isValid())
        return;
    QTextBlockFormat format = body.blockFormat();
    format.setPageBreakPolicy(format.pageBreakPolicy() | QTextFormat::PageBreak_AlwaysBefore);
    QTextCursor(body).setBlockFormat(format);
}

double largestFont(const QTextBlock &block)
{
    double size = 0.0;
    for (auto it = block.begin(); !it.atEnd(); ++it)
        size = qMax(size, it.fragment().charFormat().font().pointSizeF());
    return size;
}

void setLinePitch(QTextDocument &text)
{
    QTextCursor cursor(&text);
    cursor.beginEditBlock();
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        if (largestFont(block) > largestLineFont)
            continue;
        QTextBlockFormat format = block.blockFormat();
        const bool isProportional = format.lineHeightType() == QTextBlockFormat::ProportionalHeight;
        const double lines = isProportional ? format.lineHeight() / 100.0 : 1.0;
        format.setLineHeight(lines * linePitch, QTextBlockFormat::FixedHeight);
        cursor.setPosition(block.position());
        cursor.setBlockFormat(format);
    }
    cursor.endEditBlock();
}

}

void prepareForQt(Document &document, const QPageSize &paper)
{
    const double margin = document.text.documentMargin();
    breakBehindTitlePage(document);
    MVRToolkit::toStockParagraphs(&document.text,
                                  paper.size(QPageSize::Point).width() - 2 * margin);
    scaleLengths(document.text, pixelsPerPoint);
    document.text.setDocumentMargin(margin * pixelsPerPoint);
}

Pages::Pages(Document &document, const QPageSize &paper)
    : m_text(document.text)
    , m_device(1, 1, QImage::Format_RGB32)
    , m_size(paper.sizePixels(resolution))
{
    substituteCourier();
    prepareForQt(document, paper);
    if (document.isScreenplay)
        setLinePitch(m_text);
    else
        m_text.setDefaultFont(QFont(screenplayFace(), 12));

    m_device.setDotsPerMeterX(qRound(resolution / metersPerInch));
    m_device.setDotsPerMeterY(m_device.dotsPerMeterX());
    QTextOption option = m_text.defaultTextOption();
    option.setUseDesignMetrics(true);
    m_text.setDefaultTextOption(option);
    m_text.documentLayout()->setPaintDevice(&m_device);
    m_text.setPageSize(m_size);

    const QTextBlock body = firstBodyBlock(document);
    if (body.isValid()) {
        const double top = m_text.documentLayout()->blockBoundingRect(body).top();
        m_titlePages = int(top / m_size.height());
    }
}

int Pages::count() const
{
    return m_text.pageCount();
}

void Pages::paint(QPainter &painter, int index) const
{
    const QRectF page(0, double(index) * m_size.height(), m_size.width(), m_size.height());
    painter.save();
    painter.translate(0, -page.top());
    painter.setClipRect(page);
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = page;
    context.palette.setColor(QPalette::Text, Qt::black);
    m_text.documentLayout()->draw(&painter, context);
    painter.restore();
    if (index > m_titlePages)
        paintNumber(painter, index - m_titlePages + 1);
}

void Pages::paintNumber(QPainter &painter, int number) const
{
    QFont font(screenplayFace());
    font.setPixelSize(resolution * 12 / 72);
    painter.save();
    painter.setFont(font);
    painter.setPen(Qt::black);
    const QRectF place(0, numberTop * resolution, m_size.width() - numberRight * resolution,
                       resolution);
    painter.drawText(place, Qt::AlignRight | Qt::AlignTop,
                     QString::number(number) + QLatin1Char('.'));
    painter.restore();
}
