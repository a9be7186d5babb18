// SPDX-License-Identifier: MIT
#include <tool/pages/Pages.h>

#include <QPainter>
#include <QTextDocument>

namespace {

constexpr double dotsPerPoint = Pages::resolution / 72.0;
constexpr int letterSize = 7; // points, where all comments of a page have room
constexpr int leastLetterSize = 1;
constexpr double gap = 6.0 * dotsPerPoint; // between the text, the comments and the paper's edge
constexpr int wrapping = Qt::TextWordWrap | Qt::AlignLeft | Qt::AlignTop;

struct MarginText
{
    QString text;
    QRectF place;
};

QRectF inDots(const PdfArea &area)
{
    return QRectF(area.rect.topLeft() * dotsPerPoint, area.rect.size() * dotsPerPoint);
}

// Letters as large as that all texts have room, one below the other.
void measure(QVector<MarginText> &texts, const QRectF &room, QPainter &painter)
{
    QFont font = painter.font();
    for (int size = letterSize; size >= leastLetterSize; --size) {
        font.setPointSize(size);
        painter.setFont(font);
        double height = -gap;
        for (MarginText &text : texts) {
            const QRectF from(room.left(), text.place.top(), room.width(), room.height());
            text.place = painter.boundingRect(from, wrapping, text.text);
            height += text.place.height() + gap;
        }
        if (height <= room.height())
            return;
    }
}

// One below the other, each as near to what it is about as the page's foot allows.
void spread(QVector<MarginText> &texts, double bottom)
{
    for (int i = 1; i < texts.size(); ++i)
        texts[i].place.moveTop(qMax(texts[i].place.top(), texts[i - 1].place.bottom() + gap));
    for (int i = int(texts.size()) - 1; i >= 0 && texts[i].place.bottom() > bottom; --i) {
        texts[i].place.moveBottom(bottom);
        bottom = texts[i].place.top() - gap;
    }
}

}

/*! Marks what comments are about, and writes those that begin on this page into the margin. */
void Pages::paintComments(QPainter &painter, int index) const
{
    const double width = m_setup.paper.width() * dotsPerPoint - m_body.right() - 2.0 * gap;
    const QRectF margin(m_body.right() + gap, m_body.top(), width, m_body.height());
    QVector<MarginText> texts;
    painter.save();
    painter.setFont(m_text.defaultFont());
    for (const int i : m_commentsOfPage[index]) {
        const PageComment &comment = m_notes.comments[size_t(i)];
        for (const PdfArea &area : m_commentAreas[i]) {
            if (area.page == index)
                painter.fillRect(inDots(area), comment.color);
        }
        if (m_commentAreas[i].first().page != index)
            continue;
        const QString author
            = comment.author.isEmpty() ? QString() : comment.author + QLatin1String(": ");
        const double top = inDots(m_commentAreas[i].first()).top();
        texts.append({author + comment.text, QRectF(margin.left(), top, width, 0.0)});
    }
    measure(texts, margin, painter);
    spread(texts, m_body.bottom());
    painter.setPen(Qt::darkGray);
    for (const MarginText &text : qAsConst(texts))
        painter.drawText(text.place, wrapping | Qt::TextDontClip, text.text);
    painter.restore();
}
