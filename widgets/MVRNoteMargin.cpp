// SPDX-License-Identifier: MIT
#include <widgets/MVRNoteMargin.h>

#include <text/MVRNoteEdits.h>
#include <text/MVRNotesFilter.h>
#include <widgets/NoteCard_p.h>

#include <QAbstractTextDocumentLayout>
#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextEdit>

#include <algorithm>

namespace {

constexpr int gap = 6; // between two cards
constexpr int lead = 18; // between the page and the cards
constexpr int tip = 12; // where a line meets its card, below the card's top
constexpr int above = 120; // pixels of text out of sight whose cards may reach into it

QRectF rectOf(const QTextBlock &block)
{
    return block.document()->documentLayout()->blockBoundingRect(block);
}

/*! Where the line at a height of the document begins, or the last one above it, in a paragraph. */
int lineAt(const QTextBlock &block, double y)
{
    const double top = rectOf(block).top();
    const QTextLayout *layout = block.layout();
    int line = 0;
    while (line + 1 < layout->lineCount() && top + layout->lineAt(line + 1).y() <= y)
        ++line;
    return block.position() + (line < layout->lineCount() ? layout->lineAt(line).textStart() : 0);
}

} // namespace

MVRNoteMargin::MVRNoteMargin(QTextEdit *edit, MVRNotesFilter *filter)
    : QWidget(edit)
    , m_edit(edit)
    , m_filter(filter)
    , m_pane(new QWidget(edit))
{
    setAccessibleName(tr("Notes in the margin"));
    m_pane->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_pane->installEventFilter(this);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &MVRNoteMargin::follow);
    connect(edit, &QTextEdit::textChanged, this, &MVRNoteMargin::followSoon);
    connect(edit, &QTextEdit::cursorPositionChanged, this, &MVRNoteMargin::followSoon);
    connect(edit->verticalScrollBar(), &QScrollBar::valueChanged, this, &MVRNoteMargin::followSoon);
    connect(filter, &MVRNotesFilter::changed, this, &MVRNoteMargin::followSoon);
    connect(filter, &QAbstractItemModel::modelReset, this, &MVRNoteMargin::watchLayout);
    watchLayout();
}

void MVRNoteMargin::followSoon()
{
    m_timer.start();
}

/*! Lines move while Qt lays a long text out. */
void MVRNoteMargin::watchLayout()
{
    connect(m_edit->document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged,
            this, &MVRNoteMargin::followSoon, Qt::UniqueConnection);
    followSoon();
}

void MVRNoteMargin::setPlace(const QRect &place)
{
    setGeometry(place);
    m_pane->setGeometry(0, 0, place.right() + 1, place.bottom() + 1);
    followSoon();
}

NoteCard *MVRNoteMargin::makeCard()
{
    auto *card = new NoteCard(this);
    connect(card, &NoteCard::edited, m_edit,
            [this](const MVRTextNote &note, const QByteArray &rtf) {
                const MVRTextNote now = m_filter->notes()->note(m_filter->notes()->rowOf(note));
                MVRNoteEdits::setContent(m_edit->document(), now, rtf);
            });
    connect(card, &NoteCard::entered, this, [this, card] {
        QTextCursor cursor = m_edit->textCursor();
        cursor.setPosition(card->note().range.start);
        m_edit->setTextCursor(cursor);
    });
    connect(card, &NoteCard::left, m_edit, [this] { m_edit->setFocus(); });
    connect(card, &NoteCard::heightChanged, this, &MVRNoteMargin::followSoon);
    return card;
}

void MVRNoteMargin::follow()
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

void MVRNoteMargin::commit()
{
    const QVector<NoteCard *> cards = m_cards; // what they hand over changes the text
    for (NoteCard *card : cards)
        card->commit();
}

/*! Where the letter behind a position stands, in the coordinates of the text's widget. */
QRect MVRNoteMargin::placeOf(int position) const
{
    QTextCursor cursor(m_edit->document());
    cursor.setPosition(qBound(0, position, m_edit->document()->characterCount() - 1));
    return m_edit->cursorRect(cursor).translated(m_edit->viewport()->pos());
}

/*! Asks the paragraphs near those that were in sight last: Qt's own search passes all others. */
MVRTextRange MVRNoteMargin::visibleText()
{
    const QTextDocument *document = m_edit->document();
    const double top = m_edit->verticalScrollBar()->value();
    const double bottom = top + m_edit->viewport()->height();
    QTextBlock first = document->findBlockByNumber(m_firstVisible);
    if (!first.isValid())
        first = document->lastBlock();
    while (first.previous().isValid() && rectOf(first).top() > top)
        first = first.previous();
    while (first.next().isValid() && rectOf(first).bottom() < top)
        first = first.next();
    m_firstVisible = first.blockNumber();
    QTextBlock last = first;
    while (last.next().isValid() && rectOf(last.next()).top() < bottom)
        last = last.next();
    const int end = rectOf(last).bottom() < bottom ? last.position() + last.length()
                                                   : lineAt(last, bottom) + 1;
    return {lineAt(first, top - above), qMin(end, document->characterCount())};
}

/*! Takes the cards of the notes in sight; those that are there already keep what they show. */
void MVRNoteMargin::gather(const QVector<NoteCard *> &before)
{
    const MVRTextRange visible = visibleText();
    for (int row = m_filter->firstFrom(visible.start); row < m_filter->rowCount(); ++row) {
        const MVRTextNote note = m_filter->note(row);
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

bool MVRNoteMargin::editNote()
{
    follow();
    NoteCard *card = m_cards.value(activeIndex());
    if (card)
        card->edit();
    return card != nullptr;
}

int MVRNoteMargin::activeIndex() const
{
    const int position = m_edit->textCursor().position();
    for (int i = m_cards.size() - 1; i >= 0; --i) {
        const MVRTextRange range = m_cards[i]->note().range;
        if (range.start <= position && position < range.end)
            return i;
    }
    return -1;
}

void MVRNoteMargin::placeCards()
{
    const int active = activeIndex();
    QVector<int> wanted;
    QVector<int> heights;
    for (int i = 0; i < m_cards.size(); ++i) {
        m_cards[i]->setActive(i == active);
        wanted.append(placeOf(m_cards[i]->note().range.start).top());
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

void MVRNoteMargin::drawLines(const QVector<int> &tops, int active)
{
    QVector<Line> lines;
    const int page = geometry().left();
    for (int i = 0; i < m_cards.size(); ++i) {
        const QRect word = placeOf(m_cards[i]->note().range.start);
        QColor color = m_cards[i]->color();
        color.setAlpha(i == active ? 255 : 190);
        const QPen pen(color, i == active ? 2 : 1, i == active ? Qt::SolidLine : Qt::DotLine);
        lines.append({QPolygon({QPoint(word.left(), word.bottom()), QPoint(page, word.bottom()),
                                QPoint(page + lead, tops[i] + tip)}),
                      pen});
    }
    if (lines == m_lines)
        return;
    m_lines = lines;
    m_pane->update();
}

bool MVRNoteMargin::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() != QEvent::Paint)
        return QWidget::eventFilter(object, event);
    const QRect region = static_cast<QPaintEvent *>(event)->rect();
    QPainter painter(m_pane);
    painter.setRenderHint(QPainter::Antialiasing);
    for (const Line &line : qAsConst(m_lines)) {
        if (!line.first.boundingRect().adjusted(-2, -2, 2, 2).intersects(region))
            continue;
        painter.setPen(line.second);
        painter.drawPolyline(line.first);
    }
    return true;
}

QVector<int> MVRNoteMargin::tops(const QVector<int> &wanted, const QVector<int> &heights,
                                 int active, int distance)
{
    QVector<int> tops = wanted;
    const int fixed = active < tops.size() ? qMax(0, active) : 0;
    for (int i = fixed + 1; i < tops.size(); ++i)
        tops[i] = qMax(tops[i], tops[i - 1] + heights.value(i - 1) + distance);
    for (int i = fixed - 1; i >= 0; --i)
        tops[i] = qMin(tops[i], tops[i + 1] - distance - heights.value(i));
    return tops;
}
