// SPDX-License-Identifier: MIT
#include "Editor.h"

#include <core/MVRParagraphView.h>
#include <core/MVRTextRtf.h>
#include <text/MVRNoteHighlighter.h>
#include <text/MVRNotesFilter.h>
#include <text/MVRTextDoc.h>
#include <text/MVRWordCounter.h>
#include <widgets/MVRNoteMargin.h>

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QUrl>

namespace {

constexpr double defaultTextWidth = 468.0; // letter paper less an inch on each side, in points
constexpr double paperMargin = 72.0;
constexpr int topMargin = 16; // pixels of paper that stay above the text

double textWidth(const QTextDocument *document)
{
    const QVariantMap page = document->property(MVRTextRtf::pageProperty).toMap();
    const double width = page.value(QStringLiteral("width")).toDouble()
        - page.value(QStringLiteral("left")).toDouble()
        - page.value(QStringLiteral("right")).toDouble();
    return width >= 72.0 && width <= 1440.0 ? width : defaultTextWidth;
}

} // namespace

Editor::Editor(QWidget *parent)
    : QTextEdit(parent)
    , m_notes(new MVRNotesModel(this))
    , m_filter(new MVRNotesFilter(m_notes, this))
    , m_margin(new MVRNoteMargin(this, m_filter))
{
    setAccessibleName(tr("Text"));
    setFrameShape(NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setLineWrapMode(FixedPixelWidth);
}

Editor::~Editor()
{
    const QSignalBlocker blocker(this); // who listens may be gone in part
    setDocument(nullptr); // before it goes
}

void Editor::show(std::shared_ptr<QTextDocument> document, const MVRScreenplayElements &elements)
{
    m_elements = elements;
    auto *paragraphs = new MVRParagraphView(document.get());
    paragraphs->setTextWidth(textWidth(document.get()));
    paragraphs->setScale(logicalDpiY() / 72.0);
    setDocument(document.get());
    m_tints = new MVRNoteHighlighter(document.get());
    setColors();
    m_words = new MVRWordCounter(document.get());
    m_notes->setDocument(document.get());
    m_document = std::move(document); // the one before goes
    arrange();
}

/*! Files mean the usual colour by black, which nobody sees on a dark page. */
void Editor::setColors()
{
    const bool isDark = palette().color(QPalette::Base).lightness() < 128;
    m_tints->setTextColor(isDark ? palette().color(QPalette::Text) : QColor());
}

/*! Puts the page into the middle of what the cards leave. */
void Editor::arrange()
{
    const double scale = logicalDpiY() / 72.0;
    const int text = qRound(textWidth(document()) * scale + 2 * document()->documentMargin());
    const int paper = qMax(0, qRound(paperMargin * scale - document()->documentMargin()));
    const int room = width() - verticalScrollBar()->sizeHint().width() - MVRNoteMargin::width;
    m_paper = qBound(8, (room - text) / 2, paper);
    const int left = qMax(m_paper, (room - text) / 2);
    const int right = qMax(m_paper, room - left - text) + MVRNoteMargin::width;
    const QMargins margins(left, topMargin, right, 0);
    setLineWrapColumnOrWidth(text);
    if (margins != m_margins) {
        m_margins = margins;
        setViewportMargins(margins);
    }
    const int edge = viewport()->geometry().right() + 1 + m_paper;
    m_margin->setPlace(QRect(edge, 0, MVRNoteMargin::width, viewport()->geometry().bottom() + 1));
}

void Editor::paintPage()
{
    QPainter painter(this);
    const QRect page = viewport()->geometry().adjusted(-m_paper, -topMargin, m_paper, 0);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.fillRect(page, palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(page.topLeft(), page.bottomLeft());
    painter.drawLine(page.topRight(), page.bottomRight());
}

bool Editor::event(QEvent *event)
{
    const bool isHandled = QTextEdit::event(event);
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
        arrange();
    if (event->type() == QEvent::Paint)
        paintPage();
    if (event->type() == QEvent::PaletteChange && m_tints)
        setColors();
    return isHandled;
}

void Editor::jumpTo(int position)
{
    QTextCursor cursor = textCursor();
    cursor.setPosition(qBound(0, position, document()->characterCount() - 1));
    setTextCursor(cursor);
    const int line = cursorRect().center().y() - viewport()->height() / 3;
    if (!viewport()->rect().contains(cursorRect().adjusted(0, 0, 0, 80)))
        verticalScrollBar()->setValue(verticalScrollBar()->value() + line);
}

void Editor::keyPressEvent(QKeyEvent *event)
{
    QTextCursor cursor = textCursor();
    const bool isElement = !cursor.hasSelection() && m_elements.has(cursor.block());
    const bool isTab = event->key() == Qt::Key_Tab && event->modifiers() == Qt::NoModifier;
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isElement && (isTab || event->key() == Qt::Key_Backtab)) {
        m_elements.cycle(cursor, isTab ? 1 : -1);
        setCurrentCharFormat(cursor.block().charFormat());
    } else if (isElement && isReturn && (event->modifiers() & ~Qt::KeypadModifier) == 0
               && m_elements.startNext(&cursor)) {
        setTextCursor(cursor);
        ensureCursorVisible();
    } else {
        QTextEdit::keyPressEvent(event);
    }
}

QMimeData *Editor::createMimeDataFromSelection() const
{
    QMimeData *copied = QTextEdit::createMimeDataFromSelection();
    MVRTextDoc::copyMimeData(copied, textCursor()); // other programs see its notes too
    return copied;
}

bool Editor::canInsertFromMimeData(const QMimeData *source) const
{
    return source->hasUrls() || source->hasFormat(QStringLiteral("text/rtf"))
        || source->hasFormat(QStringLiteral("application/rtf"))
        || QTextEdit::canInsertFromMimeData(source);
}

void Editor::insertFromMimeData(const QMimeData *source)
{
    QTextCursor cursor = textCursor();
    if (source->hasUrls() && source->urls().constFirst().isLocalFile())
        Q_EMIT fileDropped(source->urls().constFirst().toLocalFile());
    else if (MVRTextDoc::pasteMimeData(source, cursor))
        setTextCursor(cursor);
    else
        QTextEdit::insertFromMimeData(source);
}
