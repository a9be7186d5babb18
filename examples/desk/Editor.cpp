// SPDX-License-Identifier: MIT
#include "Editor.h"

#include "CardColumn.h"
#include "Counts.h"
#include "NoteEdits.h"
#include "NoteFilter.h"
#include "Tints.h"

#include <core/MVRParagraphView.h>
#include <core/MVRTextRtf.h>
#include <text/MVRNotesModel.h>
#include <text/MVRTextDoc.h>

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QUrl>

namespace {

constexpr double defaultTextWidth = 468.0; // letter paper less an inch on each side, in points
constexpr double paperMargin = 72.0;
constexpr int maxVisible = 20000; // characters
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
    , m_filter(new NoteFilter(m_notes, this))
    , m_cards(new CardColumn(this))
{
    setAccessibleName(tr("Text"));
    setFrameShape(NoFrame);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setLineWrapMode(FixedPixelWidth);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &Editor::viewChanged);
    connect(this, &QTextEdit::textChanged, this, &Editor::viewChanged);
    connect(this, &QTextEdit::cursorPositionChanged, this, &Editor::viewChanged);
    connect(m_filter, &NoteFilter::changed, this, &Editor::viewChanged);
}

Editor::~Editor() = default;

double Editor::pixelsPerPoint() const
{
    return logicalDpiY() / 72.0;
}

void Editor::show(std::unique_ptr<QTextDocument> document, const Elements &elements)
{
    const QPointer<QTextDocument> before(this->document());
    QTextDocument *shown = document.release();
    shown->setParent(this);
    m_elements = elements;
    shown->setDefaultFont(font());
    setDocument(shown);
    delete before; // Qt itself deletes its own
    auto *paragraphs = new MVRParagraphView(shown);
    paragraphs->setTextWidth(textWidth(shown));
    paragraphs->setScale(pixelsPerPoint());
    m_tints = new Tints(shown, this);
    m_counts = new Counts(shown);
    connect(shown->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
            &Editor::viewChanged);
    m_notes->setDocument(shown);
    arrange();
    Q_EMIT viewChanged();
}

/*! Puts the page into the middle of what the cards leave. */
void Editor::arrange()
{
    const double scale = pixelsPerPoint();
    const int text = qRound(textWidth(document()) * scale + 2 * document()->documentMargin());
    const int paper = qMax(0, qRound(paperMargin * scale - document()->documentMargin()));
    const int room = width() - verticalScrollBar()->sizeHint().width() - CardColumn::width;
    m_paper = qBound(8, (room - text) / 2, paper);
    const int left = qMax(m_paper, (room - text) / 2);
    const int right = qMax(m_paper, room - left - text) + CardColumn::width;
    const QMargins margins(left, topMargin, right, 0);
    setLineWrapColumnOrWidth(text);
    if (margins != m_margins) {
        m_margins = margins;
        setViewportMargins(margins);
    }
    const int edge = viewport()->geometry().right() + 1 + m_paper;
    m_cards->setPlace(QRect(edge, 0, CardColumn::width, viewport()->geometry().bottom() + 1));
    Q_EMIT viewChanged();
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
        m_tints->rehighlight();
    return isHandled;
}

QRect Editor::place(int position) const
{
    QTextCursor cursor(document());
    cursor.setPosition(qBound(0, position, document()->characterCount() - 1));
    return cursorRect(cursor).translated(viewport()->pos());
}

MVRTextRange Editor::visibleText() const
{
    const int start = cursorForPosition(QPoint(0, 0)).block().position();
    const int end = cursorForPosition(viewport()->rect().bottomRight()).position();
    // While a long text is laid out for the first time, Qt takes it all to be in sight.
    return {start, qMin(end + 1, start + maxVisible)};
}

void Editor::changeNote(const MVRTextNote &note, const QByteArray &rtf)
{
    MVRTextNote now; // the note that was meant, or else a copy of it
    for (int row = 0; row < m_notes->rowCount() && now.range != note.range; ++row) {
        const MVRTextNote one = m_notes->note(row);
        if (one.anchor == note.anchor && one.cdata == note.cdata)
            now = one;
    }
    if (!now.anchor.isEmpty())
        NoteEdits::setContent(document(), now, rtf);
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

void Editor::setElement(const QString &name)
{
    m_elements.apply(textCursor(), name);
}

void Editor::keyPressEvent(QKeyEvent *event)
{
    const bool isPlain = (event->modifiers() & ~Qt::ShiftModifier) == 0;
    const bool isElement = isPlain && !textCursor().hasSelection()
        && m_elements.names().contains(Elements::of(textCursor().block()));
    if (isElement && (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)) {
        m_elements.cycle(textCursor(), event->key() == Qt::Key_Tab ? 1 : -1);
        setCurrentCharFormat(textCursor().block().charFormat());
        Q_EMIT viewChanged();
        return;
    }
    QTextCursor cursor = textCursor();
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isElement && isReturn && event->modifiers() == Qt::NoModifier
        && m_elements.startNext(&cursor)) {
        setTextCursor(cursor);
        ensureCursorVisible();
        return;
    }
    QTextEdit::keyPressEvent(event);
}

QMimeData *Editor::createMimeDataFromSelection() const
{
    QMimeData *copied = QTextEdit::createMimeDataFromSelection();
    QTextDocument selected;
    QTextCursor(&selected).insertFragment(textCursor().selection());
    const QByteArray rtf = MVRTextDoc::toRtf(&selected); // other programs see its notes too
    for (const char *type : {"text/rtf", "application/rtf"})
        copied->setData(QLatin1String(type), rtf);
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
    if (source->hasUrls() && source->urls().constFirst().isLocalFile()) {
        Q_EMIT fileDropped(source->urls().constFirst().toLocalFile());
        return;
    }
    for (const char *type : {"text/rtf", "application/rtf", "text/richtext"}) {
        QTextDocument pasted;
        if (!MVRTextDoc::fromRtf(source->data(QLatin1String(type)), &pasted))
            continue;
        QTextCursor cursor = textCursor();
        cursor.beginEditBlock();
        cursor.removeSelectedText();
        MVRTextDoc::appendDocument(cursor, &pasted);
        cursor.endEditBlock();
        setTextCursor(cursor);
        return;
    }
    QTextEdit::insertFromMimeData(source);
}
