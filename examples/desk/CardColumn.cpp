// SPDX-License-Identifier: MIT
#include "CardColumn.h"

#include "Editor.h"
#include "NoteCard.h"

#include <text/MVRNoteEdits.h>
#include <text/MVRNotesFilter.h>

#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>

namespace {

constexpr int gap = 6; // between two cards
constexpr int lead = 18; // between the page and the cards
constexpr int tip = 12; // where a line meets its card, below the card's top

} // namespace

CardColumn::CardColumn(Editor *editor)
    : QWidget(editor)
    , m_editor(editor)
    , m_pane(new QWidget(editor))
{
    setAccessibleName(tr("Notes in the margin"));
    m_pane->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_pane->installEventFilter(this);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &CardColumn::follow);
    connect(editor, &Editor::viewChanged, &m_timer, QOverload<>::of(&QTimer::start));
}

void CardColumn::setPlace(const QRect &place)
{
    setGeometry(place);
    m_pane->setGeometry(0, 0, place.right() + 1, place.bottom() + 1);
}

NoteCard *CardColumn::makeCard()
{
    auto *card = new NoteCard(this);
    connect(card, &NoteCard::edited, m_editor,
            [this](const MVRTextNote &note, const QByteArray &rtf) {
                const MVRTextNote now = m_editor->notes()->note(m_editor->notes()->rowOf(note));
                MVRNoteEdits::setContent(m_editor->document(), now, rtf);
            });
    connect(card, &NoteCard::entered, this, [this, card] {
        QTextCursor cursor = m_editor->textCursor();
        cursor.setPosition(card->note().range.start);
        m_editor->setTextCursor(cursor);
    });
    connect(card, &NoteCard::left, m_editor, [this] { m_editor->setFocus(); });
    connect(card, &NoteCard::heightChanged, &m_timer, QOverload<>::of(&QTimer::start));
    return card;
}

void CardColumn::follow()
{
    if (m_isFollowing)
        return;
    const QScopedValueRollback<bool> following(m_isFollowing, true);
    const QVector<NoteCard *> before = m_cards;
    m_cards.clear();
    gather(before);
    for (NoteCard *card : before) {
        if (m_cards.contains(card))
            continue;
        card->commit();
        card->hide();
        card->deleteLater();
    }
    placeCards();
}

void CardColumn::commit()
{
    const QVector<NoteCard *> cards = m_cards; // what they hand over changes the text
    for (NoteCard *card : cards)
        card->commit();
}

/*! Takes the cards of the notes in sight; those that are there already keep what they show. */
void CardColumn::gather(const QVector<NoteCard *> &before)
{
    const MVRNotesFilter *filter = m_editor->filter();
    const MVRTextRange visible = m_editor->visibleText();
    for (int row = filter->firstFrom(visible.start); row < filter->rowCount(); ++row) {
        const MVRTextNote note = filter->note(row);
        if (note.range.start >= visible.end)
            break;
        if (note.isInline())
            continue;
        const auto same = std::find_if(before.begin(), before.end(), [&](NoteCard *card) {
            return card->shows(note) && !m_cards.contains(card);
        });
        m_cards.append(same == before.end() ? makeCard() : *same);
        m_cards.last()->setNote(note);
    }
}

int CardColumn::activeIndex() const
{
    const int position = m_editor->textCursor().position();
    for (int i = m_cards.size() - 1; i >= 0; --i) {
        const MVRTextRange range = m_cards[i]->note().range;
        if (range.start <= position && position < range.end)
            return i;
    }
    return -1;
}

void CardColumn::placeCards()
{
    const int active = activeIndex();
    QVector<int> wanted;
    QVector<int> heights;
    for (int i = 0; i < m_cards.size(); ++i) {
        m_cards[i]->setActive(i == active);
        wanted.append(m_editor->place(m_cards[i]->note().range.start).top());
        heights.append(m_cards[i]->wantedHeight(width - lead - gap));
    }
    const QVector<int> places = tops(wanted, heights, active, gap);
    for (int i = 0; i < m_cards.size(); ++i) {
        m_cards[i]->setGeometry(lead, places[i], width - lead - gap, heights[i]);
        m_cards[i]->show();
    }
    if (active >= 0)
        m_cards[active]->raise();
    drawLines(places, active);
}

void CardColumn::drawLines(const QVector<int> &tops, int active)
{
    QVector<Line> lines;
    const int page = geometry().left();
    for (int i = 0; i < m_cards.size(); ++i) {
        const QRect word = m_editor->place(m_cards[i]->note().range.start);
        QColor color = m_cards[i]->color();
        color.setAlpha(i == active ? 255 : 190);
        lines.append({QPolygon({QPoint(word.left(), word.bottom()), QPoint(page, word.bottom()),
                                QPoint(page + lead, tops[i] + tip)}),
                      color, i == active ? 2 : 1});
    }
    if (lines == m_lines)
        return;
    m_lines = lines;
    m_pane->update();
}

bool CardColumn::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::Paint)
        return QWidget::eventFilter(object, event);
    const QRect region = static_cast<QPaintEvent *>(event)->rect();
    QPainter painter(m_pane);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Line &line : qAsConst(m_lines)) {
        if (!line.points.boundingRect().adjusted(-2, -2, 2, 2).intersects(region))
            continue;
        painter.setPen(QPen(line.color, line.width, line.width > 1 ? Qt::SolidLine : Qt::DotLine));
        painter.drawPolyline(line.points);
    }
    return true;
}

QVector<int> CardColumn::tops(const QVector<int> &wanted, const QVector<int> &heights, int active,
                              int distance)
{
    QVector<int> tops = wanted;
    const int fixed = qMax(0, active);
    for (int i = fixed + 1; i < tops.size(); ++i)
        tops[i] = qMax(tops[i], tops[i - 1] + heights[i - 1] + distance);
    for (int i = fixed - 1; i >= 0; --i)
        tops[i] = qMin(tops[i], tops[i + 1] - distance - heights[i]);
    return tops;
}
