// SPDX-License-Identifier: MIT
#include <widgets/NoteCard_p.h>

#include <core/MVRTextRtf.h>
#include <text/MVRNoteHighlighter.h>

#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QTextDocument>
#include <QTextEdit>
#include <QVBoxLayout>

namespace {

constexpr int stripe = 5; // of the note's colour, at the left edge
constexpr int linesShown = 3; // of a card that is not active

QString headOf(const MVRTextNote &note)
{
    QStringList parts;
    if (note.isResolved)
        parts << NoteCard::tr("Resolved");
    parts << (note.isFootnote() ? NoteCard::tr("Footnote") : note.author);
    if (note.date.isValid())
        parts << QLocale().toString(note.date.date(), QLocale::ShortFormat);
    parts.removeAll(QString());
    return parts.isEmpty() ? NoteCard::tr("Comment") : parts.join(QStringLiteral(" · "));
}

} // namespace

NoteCard::NoteCard(QWidget *parent)
    : QFrame(parent)
    , m_head(new QLabel(this))
    , m_body(new QTextEdit(this))
    , m_tints(new MVRNoteHighlighter(m_body->document()))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(stripe + 5, 3, 3, 3);
    layout->setSpacing(0);
    layout->addWidget(m_head);
    layout->addWidget(m_body);
    QFont small = font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    m_head->setFont(small);
    m_head->setTextFormat(Qt::PlainText); // it names whom a file says
    m_body->setFrameShape(NoFrame);
    m_body->document()->setDocumentMargin(1);
    m_body->document()->setModified(false);
    m_body->setTabChangesFocus(true);
    m_body->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_body->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_body->viewport()->setAutoFillBackground(false);
    m_body->installEventFilter(this);
    connect(m_body, &QTextEdit::textChanged, this, &NoteCard::heightChanged);
    setColors();
}

/*! As in Editor: files mean the usual colour by black. */
void NoteCard::setColors()
{
    const bool isDark = palette().color(QPalette::Base).lightness() < 128;
    m_tints->setTextColor(isDark ? palette().color(QPalette::Text) : QColor());
}

bool NoteCard::shows(const MVRTextNote &note) const
{
    // A note that is attached again, as after editing it, has another anchor.
    return note.kind == m_note.kind
        && (note.anchor == m_note.anchor || note.range.start == m_note.range.start);
}

void NoteCard::setNote(const MVRTextNote &note)
{
    const bool isSame = note.cdata == m_note.cdata && !m_note.anchor.isEmpty();
    m_note = note;
    const QString head = headOf(note);
    if (head != m_head->text()) {
        m_head->setText(head);
        setAccessibleName(head);
        m_body->setAccessibleName(tr("Content of the note: %1").arg(head));
    }
    if (isSame || m_body->document()->isModified())
        return;
    const QSignalBlocker blocker(m_body);
    if (!MVRTextRtf::fromRtfCData(note.cdata, m_body->document()))
        m_body->clear();
    m_body->document()->setModified(false);
    update();
}

void NoteCard::setActive(bool isActive)
{
    if (isActive != m_isActive)
        update();
    m_isActive = isActive;
    m_body->setVisible(isActive || !m_note.isResolved);
}

QColor NoteCard::color() const
{
    if (m_note.isResolved)
        return palette().color(QPalette::Mid);
    const QColor color = m_note.color.isValid() ? m_note.color : QColor(110, 150, 220);
    return color.lightness() > 170 ? QColor::fromHsl(color.hslHue(), color.hslSaturation(), 140)
                                   : color; // a pale line would not be seen
}

int NoteCard::wantedHeight(int width) const
{
    const QMargins margins = contentsMargins() + layout()->contentsMargins();
    const int frame = m_head->sizeHint().height() + margins.top() + margins.bottom();
    if (m_note.isResolved && !m_isActive)
        return frame;
    const int room = width - margins.left() - margins.right();
    if (int(m_body->document()->textWidth()) != room) // else it would be laid out anew
        m_body->document()->setTextWidth(room);
    const int all = qRound(m_body->document()->size().height()) + 1;
    const int few = linesShown * m_body->fontMetrics().lineSpacing() + 4;
    return frame + (m_isActive ? all : qMin(all, few));
}

void NoteCard::edit()
{
    m_body->setFocus(Qt::OtherFocusReason);
    m_body->moveCursor(QTextCursor::End);
}

void NoteCard::commit()
{
    if (!m_body->document()->isModified())
        return;
    m_body->document()->setModified(false);
    const bool isEmpty = m_body->document()->isEmpty();
    const MVRTextNote before = m_note;
    m_note.cdata = isEmpty ? QByteArray() : MVRTextRtf::toRtfCData(m_body->document(), false);
    Q_EMIT edited(before, m_note.cdata);
}

bool NoteCard::event(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        setColors();
    return QFrame::event(event);
}

bool NoteCard::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::FocusIn)
        Q_EMIT entered();
    if (event->type() == QEvent::FocusOut)
        commit();
    if (event->type() == QEvent::KeyPress
        && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        Q_EMIT left();
        return true;
    }
    return QFrame::eventFilter(object, event);
}

void NoteCard::paintEvent(QPaintEvent *event)
{
    Q_UNUSED(event)
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF card = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setPen(m_isActive ? QPen(color(), 2) : QPen(palette().color(QPalette::Mid)));
    painter.setBrush(palette().color(m_isActive ? QPalette::Base : QPalette::AlternateBase));
    painter.drawRoundedRect(card, 4, 4);
    painter.fillRect(QRectF(1, 4, stripe - 1, height() - 8), color());
}
