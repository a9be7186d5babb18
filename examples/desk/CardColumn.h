// SPDX-License-Identifier: MIT
#pragma once

#include <QPolygon>
#include <QTimer>
#include <QVector>
#include <QWidget>

class Editor;
class NoteCard;

/*!
    The cards of the notes in sight, each beside its line.

    There are cards for the notes in sight only, whatever the length of the text.
*/
class CardColumn : public QWidget
{
    Q_OBJECT

public:
    static constexpr int width = 264; /*!< pixels */

    explicit CardColumn(Editor *editor);

    /*! The column's place in the editor; lines come to it from the left. */
    void setPlace(const QRect &place);
    /*! Brings the cards in step with the text at once; else that happens before the next event. */
    void follow();
    /*! Has all cards hand over what was written in them. */
    void commit();
    /*! From top to bottom. */
    const QVector<NoteCard *> &cards() const { return m_cards; }
    /*! The card of the note that the text cursor stands in; null where there is none. */
    NoteCard *activeCard() const { return m_cards.value(activeIndex()); }

    /*!
        Where cards stand: as near to their lines as they can without overlap, in order.

        \param wanted  tops of the lines, ascending, pixels
        \param active  the card that stands at its own line whatever the others do; -1 for none
    */
    static QVector<int> tops(const QVector<int> &wanted, const QVector<int> &heights, int active,
                             int gap);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    /*! From the marked word to its card. */
    struct Line
    {
        QPolygon points;
        QColor color;
        int width;

        bool operator==(const Line &other) const
        {
            return points == other.points && color == other.color && width == other.width;
        }
    };

    void gather(const QVector<NoteCard *> &before);
    NoteCard *makeCard();
    int activeIndex() const;
    void placeCards();
    void drawLines(const QVector<int> &tops, int active);

    Editor *m_editor;
    QWidget *m_pane; // above text and page, for the lines
    QVector<Line> m_lines;
    QVector<NoteCard *> m_cards;
    QTimer m_timer;
    bool m_isFollowing = false;
};
