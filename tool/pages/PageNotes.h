// SPDX-License-Identifier: MIT
#pragma once

#include <tool/pages/PageSlices.h>

#include <core/document/OfflineDocument_p.h>

#include <QByteArray>
#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QString>
#include <QVector>

#include <memory>
#include <vector>

/*! A footnote at the foot of a page; its text is laid out when it is asked for, see NoteLayout. */
struct PageFootnote
{
    int position = 0; /*!< of its number in the text */
    QString number;
    QByteArray cdata; /*!< of the note */
    double fontSize = 0.0; /*!< points */
    double top = 0.0; /*!< where all footnotes stand one below the other, in units of the layout */
    double height = 0.0;
};

/*! A comment, and the text that it is about. */
struct PageComment
{
    int start = 0;
    int end = 0;
    QString text;
    QString author;
    QColor color;
    QDateTime date;
};

/*! The notes of a document. */
struct PageNotes
{
    std::vector<PageFootnote> footnotes; /*!< in the order of their places */
    std::vector<PageComment> comments;
};

/*!
    Takes the inspector notes out of a document; a number stays where a footnote was.

    Inspector notes that no writer of pages can show any more lose their marks.
*/
PageNotes takeNotes(QTextDocument &text);

/*!
    Lays footnotes out, one at a time: a document and its layout take many times what a note does.
*/
class NoteLayout
{
public:
    /*! A note, number and all. */
    struct Note
    {
        std::unique_ptr<OfflineDocument> text;
        QVector<FlowItem> items;
    };

    /*! For pages with room for so much of notes, in units. */
    NoteLayout(const QFont &font, const QSizeF &room, double unitsPerPoint);

    /*! The laid out note, until another one is asked for; null for one that is too high. */
    const Note *layOut(const PageFootnote &note);

    /*! Where a note may be cut: between any lines of what is to stay together and has no room. */
    QVector<double> cuts(const Note &note) const;

private:
    bool prepare(QTextDocument &text) const;
    QVector<FlowItem> itemsOf(QTextDocument &text) const;

    QFont m_font;
    QSizeF m_room;
    double m_unitsPerPoint;
    Note m_note;
    QString m_number; // of m_note
};
