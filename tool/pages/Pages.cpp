// SPDX-License-Identifier: MIT
#include <tool/pages/Pages.h>

#include <tool/Document.h>
#include <tool/formats/Pictures.h>
#include <tool/pages/Lengths.h>
#include <tool/pages/PageBreaks.h>

#include <core/MVRTextRange.h>
#include <core/MVRToolkit.h>
#include <pages/MVRScreenplayFace.h>

#include <QAbstractTextDocumentLayout>
#include <QFont>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QVector>

namespace {

constexpr double dotsPerPoint = Pages::resolution / 72.0;
constexpr double linePitch = 12.0 * dotsPerPoint; // a typewriter's six lines to the inch
constexpr double maxLineFont = 12.0; // points; larger letters would overlap at that pitch

// Where pages have their number: half an inch from the top, ending at the right margin.
constexpr double numberTop = 0.5; // inches
constexpr double numberRight = 1.0; // inches

constexpr double tabDistance = 0.5; // inches

const char *const courierFaces[]
    = {"Courier Final Draft", "Courier",          "Courier New",
       "Courier Std",         "Courier 10 Pitch", "Courier Screenplay"};

// Screenplays name faces that few systems have; all are typewriter faces of the same width.
void substituteCourier()
{
    static const bool done = [] {
        for (const char *face : courierFaces)
            QFont::insertSubstitution(QString::fromLatin1(face), MVRScreenplayFace::family());
        return true;
    }();
    Q_UNUSED(done)
}

// A document that names the family itself would get the files that do not know what they are.
void nameOwnFace(QTextDocument &text)
{
    const QString family = QStringLiteral("Courier Prime");
    if (MVRScreenplayFace::family() == family)
        return;
    QVector<MVRTextRange> places;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            if (MVRToolkit::fontFamily(fragment.charFormat()) == family)
                places.append({fragment.position(), fragment.position() + fragment.length()});
        }
    }
    QTextCharFormat ownFace;
    MVRToolkit::setFontFamily(&ownFace, MVRScreenplayFace::family());
    for (const MVRTextRange &place : qAsConst(places))
        place.toTextCursor(&text).mergeCharFormat(ownFace);
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
        if (largestFont(block) > maxLineFont)
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

void prepareForQt(Document &document, const QPageSize &paper, double unitsPerPoint)
{
    const double margin = document.text.documentMargin();
    breakBehindTitlePage(document);
    MVRToolkit::toStockParagraphs(&document.text,
                                  paper.size(QPageSize::Point).width() - 2 * margin);
    scaleLengths(document.text, unitsPerPoint);
    document.text.setDocumentMargin(margin * unitsPerPoint);
}

Pages::Pages(Document &document, const QPageSize &paper)
    : m_text(document.text)
    , m_size(paper.sizePixels(resolution))
{
    substituteCourier();
    nameOwnFace(m_text);
    prepareForQt(document, paper, dotsPerPoint);
    if (document.isScreenplay)
        setLinePitch(m_text);

    QTextOption option = m_text.defaultTextOption();
    option.setUseDesignMetrics(true);
    option.setTabStopDistance(tabDistance * resolution);
    m_text.setDefaultTextOption(option);
    const double margins = 2 * m_text.documentMargin();
    // What reaches below the line that a picture stands on needs room too.
    fitPictures(m_text, QSizeF(m_size) - QSizeF(margins, margins + 2 * linePitch),
                dotsPerPoint * pointsPerPixel);
    m_text.setPageSize(m_size);
    if (document.isScreenplay)
        breakPages(m_text, m_size.height() - margins);

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
    QFont font(MVRScreenplayFace::family());
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
