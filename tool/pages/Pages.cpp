// SPDX-License-Identifier: MIT
#include <tool/pages/Pages.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Progress.h>
#include <tool/pages/Lengths.h>
#include <tool/pages/PageFloats.h>
#include <tool/pages/PageText.h>
#include <tool/pages/PageWidths.h>

#include <core/MVRTextRange.h>
#include <core/MVRToolkit.h>
#include <core/document/EditBlock_p.h>
#include <core/document/LongParagraphs_p.h>
#include <pages/MVRScreenplayFace.h>

#include <QAbstractTextDocumentLayout>
#include <QFont>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextLayout>

#include <algorithm>

namespace {

constexpr double dotsPerPoint = Pages::resolution / 72.0;
constexpr double tabDistance = 0.5; // inches
constexpr double noteGap = 12.0 * dotsPerPoint; // between the text and the footnotes
constexpr double minCommentMargin = 72.0; // points, and no more than a third of the paper
constexpr double borderSlack = 1.0 * dotsPerPoint;

// A document that names a typewriter face gets the one that there is.
void nameOwnFace(QTextDocument &text)
{
    QVector<MVRTextRange> places;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QString family = MVRToolkit::fontFamily(fragment.charFormat());
            if (!family.isEmpty() && MVRScreenplayFace::isAlias(family))
                places.append({fragment.position(), fragment.position() + fragment.length()});
        }
    }
    if (places.isEmpty())
        return;
    QTextCharFormat ownFace;
    MVRToolkit::setFontFamily(&ownFace, MVRScreenplayFace::family());
    const EditBlock edit(&text);
    for (const MVRTextRange &place : qAsConst(places))
        place.toTextCursor(&text).mergeCharFormat(ownFace);
}

void breakBehindTitlePage(Document &document)
{
    if (document.titlePageBlocks == 0)
        return;
    const QTextBlock body = document.text.findBlockByNumber(document.titlePageBlocks);
    if (!body.isValid())
        return;
    QTextBlockFormat format = body.blockFormat();
    format.setPageBreakPolicy(format.pageBreakPolicy() | QTextFormat::PageBreak_AlwaysBefore);
    QTextCursor(body).setBlockFormat(format);
}

// Asked for the place of a paragraph, the layout goes as far as that.
void layOut(const QTextDocument &text, Listener *listener)
{
    QAbstractTextDocumentLayout *const layout = text.documentLayout();
    const int length = text.characterCount();
    const int piece = qMax(1000, length / 100);
    if (listener)
        listener->setStep(Tool::tr("Laying out pages"));
    for (int end = piece; listener && end < length; end += piece) {
        layout->blockBoundingRect(text.findBlock(end));
        listener->setShare(end, length);
    }
    layout->documentSize(); // finishes the rest
}

// How to draw what stands from one place between lines to another.
DrawnEdges edgesOf(const QVector<FlowItem> &items, double top, double bottom)
{
    const auto itemAt = [&items](double y) {
        const auto isAbove = [](const FlowItem &item, double place) { return item.top < place; };
        return int(std::lower_bound(items.cbegin(), items.cend(), y - 1.0, isAbove)
                   - items.cbegin());
    };
    const int first = qMin(itemAt(top), int(items.size()) - 1);
    DrawnEdges edges = drawnEdges(items, first, qMax(first + 1, itemAt(bottom)));
    const bool isCut = first > 0 && !items[first - 1].columns.isEmpty() // one without room
        && items[first - 1].bottom > top + 1.0;
    if (isCut)
        edges.top = top;
    return edges;
}

// Draws the part of a text and nothing else: what a clip only hides is text of the file still.
void drawPart(QPainter &painter, const QTextDocument &text, const QRectF &part,
              const DrawnEdges &edges)
{
    // Lines that touch the context's clip are drawn, and the one before the first of a paragraph.
    constexpr double least = 2.0 * drawingSlack;
    if (part.height() <= least)
        return;
    const double bottom = qMax(part.top() + least, part.bottom() - edges.next);
    const double top = qMin(edges.top, bottom - least) + drawingSlack;
    QAbstractTextDocumentLayout::PaintContext context;
    // Without a height it would be no clip at all.
    context.clip = QRectF(part.left(), top, part.width(), qMax(1.0, bottom - drawingSlack - top));
    context.palette.setColor(QPalette::Text, Qt::black);
    text.documentLayout()->draw(&painter, context);
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

Pages::Pages(Document &document, const PageSetup &setup)
    : m_document(document)
    , m_text(document.text)
    , m_setup(setup)
{
    breakLongWords(m_text);
    m_notes = takeNotes(m_text);
    if (m_setup.hasCommentsInMargin && !m_notes.comments.empty())
        m_setup.margins.setRight(
            qMax(m_setup.margins.right(), qMin(minCommentMargin, m_setup.paper.width() / 3.0)));
    m_body = QRectF(QPointF(), setup.paper).marginsRemoved(m_setup.margins);
    m_body = QRectF(m_body.topLeft() * dotsPerPoint, m_body.size() * dotsPerPoint);
    if (prepare())
        cut();
}

bool Pages::prepare()
{
    boundFontSizes(m_text);
    nameOwnFace(m_text);
    breakBehindTitlePage(m_document);
    preparePageText(m_text, {m_body.width(), m_body.left()}, dotsPerPoint);
    QTextOption option = m_text.defaultTextOption();
    option.setTabStopDistance(tabDistance * resolution);
    m_text.setDefaultTextOption(option);
    fitPagePictures(m_text, m_body.size(), dotsPerPoint);
    return setLongPage(m_text, m_body.width(), dotsPerPoint) && measureNotes();
}

/*! \return false where a footnote is too high */
bool Pages::measureNotes()
{
    const QSizeF room(m_body.width(), maxShareOfNotes * m_body.height());
    m_noteLayout = std::make_unique<NoteLayout>(m_text.defaultFont(), room, dotsPerPoint);
    double top = 0.0;
    for (PageFootnote &note : m_notes.footnotes) {
        const NoteLayout::Note *laidOut = m_noteLayout->layOut(note);
        if (!laidOut)
            return false;
        note.top = top;
        note.height = laidOut->text->size().height();
        const QVector<double> cuts = m_noteLayout->cuts(*laidOut);
        for (const double cut : cuts)
            m_noteCuts.append(top + cut);
        const QVector<TextLink> links = linksOf(*laidOut->text);
        for (const TextLink &link : links)
            m_noteLinks.append({link.rect.translated(0.0, top), link.target});
        top += note.height;
    }
    // The cells of a row stand side by side.
    std::stable_sort(m_noteLinks.begin(), m_noteLinks.end(),
                     [](const TextLink &one, const TextLink &other) {
                         return one.rect.center().y() < other.rect.center().y();
                     });
    return true;
}

void Pages::cut()
{
    m_pictures = std::make_unique<PagePictures>(m_document.text);
    layOut(m_text, m_setup.listener);
    if (takePicturesFromTables(m_text, m_body.width() + m_body.left()))
        layOut(m_text, m_setup.listener);
    if (keepTablesOnPage(m_text, {m_body.width(), m_body.left()}))
        layOut(m_text, m_setup.listener);
    keepLongParagraphs(m_text);
    QVector<FlowItem> items = flowItems(m_text);
    int item = 0;
    for (const PageFootnote &note : m_notes.footnotes) {
        while (item + 1 < items.size() && items[item + 1].start <= note.position)
            ++item;
        items[item].notes += note.height;
    }
    m_slices = cutPages(items, m_noteCuts, {m_body.height(), noteGap});
    if (items.isEmpty())
        m_slices.append(PageSlice());
    if (m_slices.isEmpty())
        return;
    m_commentsOfPage.resize(m_slices.size());
    TextPlaces places(m_text);
    for (int i = 0; i < int(m_notes.comments.size()); ++i) {
        const PageComment &comment = m_notes.comments[size_t(i)];
        m_commentAreas.append(areasOf(places, comment.start, comment.end));
        for (const PdfArea &area : qAsConst(m_commentAreas.last())) {
            if (!m_commentsOfPage[area.page].endsWith(i))
                m_commentsOfPage[area.page].append(i);
        }
    }
}

void Pages::paint(QPainter &painter, int index) const
{
    const PageSlice &slice = m_slices[index];
    if (m_setup.hasCommentsInMargin)
        paintComments(painter, index);
    PageSlice head;
    head.top = head.edges.top = slice.headTop;
    head.bottom = slice.headBottom;
    paintText(painter, head, 0.0);
    paintText(painter, slice, slice.headHeight());
    paintFootnotes(painter, index);
    if (m_setup.hasNumbers)
        paintNumber(painter, index + 1);
}

/*! Draws the text of \a slice, so far below the body's top. */
void Pages::paintText(QPainter &painter, const PageSlice &slice, double y) const
{
    const double height = slice.bottom - slice.top;
    if (height <= 0.0)
        return;
    // What stands out at the sides is drawn; lines above and below are not.
    const QRectF part(-m_body.left(), slice.top, m_setup.paper.width() * dotsPerPoint, height);
    painter.save();
    painter.translate(m_body.left(), m_body.top() + y - slice.top);
    // The borders of a row stand half outside of it.
    painter.setClipRect(part.adjusted(0.0, -qMax(borderSlack, slice.edges.above), 0.0,
                                      qMax(borderSlack, slice.edges.below)));
    m_pictures->setPart(part);
    if (slice.columns.isEmpty())
        drawPart(painter, m_text, part, slice.edges);
    for (const ColumnPart &column : slice.columns) {
        const QRectF own(column.left, column.top, column.right - column.left,
                         column.bottom - column.top);
        m_pictures->setPart(own);
        drawPart(painter, m_text, own, {qMax(column.top, column.drawnTop)});
    }
    painter.restore();
}

void Pages::paintFootnotes(QPainter &painter, int index) const
{
    const PageSlice &slice = m_slices[index];
    if (slice.notesBottom <= slice.notesTop)
        return;
    painter.save();
    painter.translate(m_body.left(), m_body.bottom() - slice.notesBottom);
    painter.setPen(QPen(Qt::black, 0.5 * dotsPerPoint));
    const double lineY = slice.notesTop - noteGap / 3.0;
    painter.drawLine(QPointF(0.0, lineY), QPointF(m_body.width() / 3.0, lineY));
    const auto endsAbove
        = [](const PageFootnote &note, double y) { return note.top + note.height <= y; };
    auto note = std::lower_bound(m_notes.footnotes.cbegin(), m_notes.footnotes.cend(),
                                 slice.notesTop + 1.0, endsAbove);
    for (; note != m_notes.footnotes.cend() && note->top < slice.notesBottom - 1.0; ++note) {
        const double top = qMax(0.0, slice.notesTop - note->top);
        const double bottom = qMin(note->height, slice.notesBottom - note->top);
        const QRectF part(0.0, top, m_body.width(), bottom - top);
        painter.save();
        painter.translate(0.0, note->top);
        if (const NoteLayout::Note *laidOut = m_noteLayout->layOut(*note)) {
            const DrawnEdges edges = edgesOf(laidOut->items, top, bottom);
            painter.setClipRect(part.adjusted(0.0, -edges.above, 0.0, edges.below));
            drawPart(painter, *laidOut->text, part, edges);
        }
        painter.restore();
    }
    painter.restore();
}

void Pages::paintNumber(QPainter &painter, int number) const
{
    QFont font(m_text.defaultFont());
    font.setPointSizeF(10.0);
    painter.save();
    painter.setFont(font);
    painter.setPen(Qt::black);
    const double margin = m_setup.margins.bottom() * dotsPerPoint;
    painter.drawText(QRectF(m_body.left(), m_body.bottom() + margin / 4.0, m_body.width(), margin),
                     Qt::AlignHCenter | Qt::AlignTop, QString::number(number));
    painter.restore();
}
