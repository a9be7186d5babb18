// SPDX-License-Identifier: MIT
#include <tool/pages/PageFloats.h>

#include <QAbstractTextDocumentLayout>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <QVector>

#include <algorithm>

namespace {

/*! From the top of a text down, in units of the layout. */
struct Span
{
    double top;
    double bottom;
};

/*! Of the tables that reach beyond the edge, from top to bottom; those that touch are one. */
QVector<Span> tablesBeyond(const QList<QTextFrame *> &frames, double right,
                           QAbstractTextDocumentLayout &layout)
{
    QVector<Span> all;
    for (QTextFrame *frame : frames) {
        if (!qobject_cast<QTextTable *>(frame))
            continue;
        const QRectF rect = layout.frameBoundingRect(frame);
        if (rect.right() > right)
            all.append({rect.top(), rect.bottom()});
    }
    std::sort(all.begin(), all.end(),
              [](const Span &one, const Span &other) { return one.top < other.top; });
    QVector<Span> spans;
    for (const Span &span : qAsConst(all)) {
        if (!spans.isEmpty() && span.top <= spans.last().bottom)
            spans.last().bottom = qMax(spans.last().bottom, span.bottom);
        else
            spans.append(span);
    }
    return spans;
}

bool isBeside(const QRectF &rect, const QVector<Span> &spans)
{
    const auto behind
        = std::upper_bound(spans.cbegin(), spans.cend(), rect.bottom(),
                           [](double bottom, const Span &span) { return bottom < span.top; });
    return behind != spans.cbegin() && (behind - 1)->bottom >= rect.top();
}

// The frame of a picture is one for the layout only, which its format names.
void putPictureIntoFlow(const QTextFrame &frame, QTextCursor &edit)
{
    edit.setPosition(frame.lastPosition());
    edit.setPosition(frame.firstPosition(), QTextCursor::KeepAnchor);
    QTextCharFormat format = edit.charFormat();
    format.clearProperty(QTextFormat::ObjectIndex);
    edit.setCharFormat(format);
}

}

bool takePicturesFromTables(QTextDocument &text, double right)
{
    QAbstractTextDocumentLayout &layout = *text.documentLayout();
    const QList<QTextFrame *> frames = text.findChildren<QTextFrame *>(); // those of pictures too
    const QVector<Span> spans = tablesBeyond(frames, right, layout);
    QVector<const QTextFrame *> pictures;
    for (QTextFrame *frame : frames) {
        if (!spans.isEmpty() && frame->frameFormat().position() == QTextFrameFormat::FloatLeft
            && isBeside(layout.frameBoundingRect(frame), spans))
            pictures.append(frame);
    }
    QTextCursor edit(&text);
    edit.beginEditBlock();
    for (const QTextFrame *picture : qAsConst(pictures))
        putPictureIntoFlow(*picture, edit);
    edit.endEditBlock();
    return !pictures.isEmpty();
}
