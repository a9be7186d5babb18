// SPDX-License-Identifier: MIT
#include <core/MVRParagraphView.h>

#include <core/MVRTextFormat.h>
#include <core/MVRToolkit.h>
#include <core/document/ChangedText_p.h>
#include <core/document/LengthScale_p.h>

#include <QAbstractTextDocumentLayout>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <iterator>

namespace {

// What a view sets. A paragraph that is shown keeps in ParagraphViewProperty what stood there, and
// what the view put there: a host that sets one of them afterwards changes the paragraph's own.
constexpr int viewedProperties[]
    = {QTextFormat::BlockLeftMargin,  QTextFormat::BlockRightMargin, QTextFormat::TextIndent,
       QTextFormat::LineHeight,       QTextFormat::LineHeightType,   QTextFormat::BlockTopMargin,
       QTextFormat::BlockBottomMargin};
constexpr int scaledProperties[]
    = {QTextFormat::BlockLeftMargin, QTextFormat::BlockRightMargin, QTextFormat::TextIndent,
       QTextFormat::BlockTopMargin, QTextFormat::BlockBottomMargin};
// Beyond it a layout may not come back.
constexpr double maxScale = 100.0;
constexpr int viewedCount = int(std::size(viewedProperties));
constexpr int keptCount = 2 * viewedCount; // as they were, and as the view has them

void setOrClear(QTextBlockFormat &format, int property, const QVariant &value)
{
    if (value.isValid())
        format.setProperty(property, value);
    else
        format.clearProperty(property);
}

bool isViewed(const QTextBlockFormat &format)
{
    return format.hasProperty(MVRTextFormat::ParagraphViewProperty);
}

} // namespace

MVRParagraphView::MVRParagraphView(QTextDocument *document)
    : QObject(document)
    , m_document(document)
{
    if (!document)
        return;
    document->documentLayout(); // without one Qt tells nothing of edits
    connect(document, &QTextDocument::contentsChange, this, &MVRParagraphView::noteChange);
    connect(document, &QTextDocument::contentsChanged, this, &MVRParagraphView::follow);
    showAll(true);
}

MVRParagraphView::~MVRParagraphView()
{
    // As a child of its document the view may go when that one is no document any more.
    if (qobject_cast<QTextDocument *>(parent()) && m_document)
        showAll(false);
}

void MVRParagraphView::setTextWidth(double width)
{
    if (!(width > 0 && width <= maxLength) || qFuzzyCompare(width, m_textWidth))
        return;
    m_textWidth = width;
    if (m_document)
        showAll(true);
}

void MVRParagraphView::setScale(double factor)
{
    if (!(factor > 0 && factor <= maxScale) || qFuzzyCompare(factor, m_scale))
        return;
    m_scale = factor;
    if (m_document)
        showAll(true);
}

QTextBlockFormat MVRParagraphView::ownFormat(const QTextBlockFormat &format)
{
    if (!isViewed(format))
        return format;
    const QVariantList kept = format.property(MVRTextFormat::ParagraphViewProperty).toList();
    QTextBlockFormat own = format;
    own.clearProperty(MVRTextFormat::ParagraphViewProperty);
    if (kept.size() != keptCount)
        return own;
    for (int i = 0; i < viewedCount; ++i) {
        if (format.property(viewedProperties[i]) == kept[viewedCount + i])
            setOrClear(own, viewedProperties[i], kept[i]);
    }
    return own;
}

QTextBlockFormat MVRParagraphView::scaled(QTextBlockFormat format) const
{
    if (qFuzzyCompare(m_scale, 1.0))
        return format;
    for (const int property : scaledProperties) {
        if (format.hasProperty(property))
            format.setProperty(property, format.doubleProperty(property) * m_scale);
    }
    const int type = format.lineHeightType();
    if (type != QTextBlockFormat::SingleHeight && type != QTextBlockFormat::ProportionalHeight)
        format.setLineHeight(format.lineHeight() * m_scale, type);
    return format;
}

/*! The format that shows \a format, which may be shown already. */
QTextBlockFormat MVRParagraphView::shown(const QTextBlockFormat &format) const
{
    const QTextBlockFormat own = ownFormat(format);
    const QTextBlockFormat stock = scaled(MVRToolkit::stockBlockFormat(own, m_textWidth));
    if (stock == own)
        return own;
    QTextBlockFormat shown = own;
    QVariantList kept;
    for (const int property : viewedProperties)
        kept.append(own.property(property));
    for (const int property : viewedProperties) {
        kept.append(stock.property(property));
        setOrClear(shown, property, stock.property(property));
    }
    shown.setProperty(MVRTextFormat::ParagraphViewProperty, kept);
    return shown;
}

void MVRParagraphView::noteChange(int position, int removed, int added)
{
    if (m_isEditing)
        return;
    const int end = position + added + leftOutOfChange(*m_document, position, added);
    // An edit that comes before the last one was followed may have moved its end.
    m_dirtyEnd = qMax(end, m_dirtyEnd + qMax(0, added - removed));
    m_dirtyStart = m_dirtyStart < 0 ? position : qMin(m_dirtyStart, position);
}

/*! Brings the paragraphs of the last edit in step. Undoing finds them so, and edits nothing. */
void MVRParagraphView::follow()
{
    if (m_isEditing || m_dirtyStart < 0)
        return;
    const int end = m_dirtyEnd;
    QTextBlock block = m_document->findBlock(m_dirtyStart);
    m_dirtyStart = m_dirtyEnd = -1;
    const QScopedValueRollback<bool> editing(m_isEditing, true);
    QTextCursor cursor;
    for (; block.isValid() && block.position() <= end; block = block.next()) {
        const QTextBlockFormat format = block.blockFormat();
        const QTextBlockFormat wanted = shown(format);
        if (wanted == format)
            continue;
        if (cursor.isNull()) {
            cursor = QTextCursor(m_document);
            cursor.joinPreviousEditBlock();
        }
        cursor.setPosition(block.position());
        cursor.setBlockFormat(wanted);
    }
    if (!cursor.isNull())
        cursor.endEditBlock();
}

void MVRParagraphView::showAll(bool on)
{
    const QScopedValueRollback<bool> editing(m_isEditing, true);
    const bool isUndoEnabled = m_document->isUndoRedoEnabled();
    const bool isModified = m_document->isModified();
    m_document->setUndoRedoEnabled(false);
    QTextCursor cursor(m_document);
    cursor.beginEditBlock();
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next()) {
        const QTextBlockFormat format = block.blockFormat();
        const QTextBlockFormat wanted = on ? shown(format) : ownFormat(format);
        if (wanted == format)
            continue;
        cursor.setPosition(block.position());
        cursor.setBlockFormat(wanted);
    }
    cursor.endEditBlock();
    m_document->setUndoRedoEnabled(isUndoEnabled);
    m_document->setModified(isModified);
}
