// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>
#include <QTextBlock>
#include <QTextList>
#include <QVector>

/*!
    Writes blocks of a document inside the quotes and lists that their formats tell.

    A paragraph that is in no list, but indented, goes on with the open item of that depth.
*/
class MarkdownBlocks
{
public:
    /*! What stands before all lines: nothing, or the label of a footnote in front of the first. */
    explicit MarkdownBlocks(const QString &label = QString());

    /*! Opens and closes quotes and lists for \a block, which is going to be written; only a
        paragraph with text can be a task. */
    void enter(const QTextBlock &block, bool isParagraph);
    /*! Closes all, for what stands in no list. */
    void enterTable();
    /*! Whether the block that comes goes on with a footnote whose label was literal text. */
    void setIsNoteBody(bool isNoteBody);
    /*! Lines, parted by "\n", of the block that was entered; none is an empty item. */
    void write(const QString &lines);
    QString take();

    static int quoteLevel(const QTextBlock &block);

private:
    struct Container
    {
        QTextList *list = nullptr; // null for a note
        int indent = 0;
        int quotes = 0; // around it
        QString marker;
        bool isMarkerWritten = false;
        bool isTight = false; // no empty line goes before its marker
    };

    bool goesOn(QTextList *before, QTextList *list) const;
    void closeTo(int count);
    void openItem(const QTextBlock &block, int quotes);
    QString marker(const QTextBlock &block, bool isNewList);
    QString prefix(bool isBlankLine, int sharedQuotes = 1000);
    void separate();

    QString m_out;
    QVector<Container> m_open;
    int m_quotes = 0;
    int m_quotesBefore = 0;
    bool m_isFirst = true;
    bool m_needsBlankLine = false;
    bool m_isTight = false;
    bool m_isNoteBody = false;
    QTextList *m_closedList = nullptr; // right before what comes
    int m_closedAt = -1; // how many containers are around it
    QString m_closedMarker;
    QHash<QTextList *, int> m_numbers;
};
