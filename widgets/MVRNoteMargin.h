// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>

#include <QPair>
#include <QPen>
#include <QPolygon>
#include <QTimer>
#include <QVector>
#include <QWidget>

class MVRNotesFilter;
class NoteCard;
class QTextEdit;

/*!
    The notes of a text as cards in its margin, each beside its line and joined to its words.

    There are cards for the notes in sight only, whatever the length of the text. A card is edited
    in place, as rich text; what was written is one undo step. The card of the note that the text
    cursor stands in is in front and shows all of its note.

    \code
    auto *margin = new MVRNoteMargin(edit, filter); // over a viewport that leaves room for it
    margin->setPlace(QRect(edit->width() - MVRNoteMargin::width, 0, MVRNoteMargin::width, height));
    \endcode
*/
class MVRNoteMargin : public QWidget
{
    Q_OBJECT

public:
    static constexpr int width = 264; /*!< pixels */

    /*!
        \param edit    the text, not null, which becomes the parent
        \param filter  the notes to show, not null, of the document that \a edit shows
    */
    MVRNoteMargin(QTextEdit *edit, MVRNotesFilter *filter);

    /*! The margin's place in the text's widget; lines come to it from the left. */
    void setPlace(const QRect &place);
    /*! Brings the cards in step with the text at once; else that happens before the next event. */
    void follow();
    /*! Has all cards hand over what was written in them, as before the text is saved. */
    void commit();
    /*! Gives the keyboard to the card of the note that the text cursor stands in; false for none.
     */
    bool editNote();
    /*! From top to bottom. */
    const QVector<NoteCard *> &cards() const { return m_cards; }

    /*!
        Where cards stand: as near to their lines as they can without overlap, in order.

        \param wanted    tops of the lines, ascending, pixels
        \param heights   of the cards
        \param active    the card that stands at its own line whatever the others do; -1 for none
        \param distance  between two cards
    */
    static QVector<int> tops(const QVector<int> &wanted, const QVector<int> &heights, int active,
                             int distance);

protected:
    /*! Paints the lines from the cards to their words. */
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    using Line = QPair<QPolygon, QPen>; // from a marked word to its card

    void followSoon();
    void watchLayout();
    QRect placeOf(int position) const;
    MVRTextRange visibleText();
    void gather(const QVector<NoteCard *> &before);
    NoteCard *makeCard();
    int activeIndex() const;
    void placeCards();
    void drawLines(const QVector<int> &tops, int active);

    QTextEdit *m_edit;
    MVRNotesFilter *m_filter;
    QWidget *m_pane; // above text and page, for the lines
    QVector<Line> m_lines;
    QVector<NoteCard *> m_cards;
    QTimer m_timer;
    int m_firstVisible = 0; // number of a paragraph near the first one in sight
    bool m_isFollowing = false;
};
