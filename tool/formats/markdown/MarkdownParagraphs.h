// SPDX-License-Identifier: MIT
#pragma once

#include <tool/formats/markdown/MarkdownInlineWriter.h>

#include <core/document/TextFragments_p.h>
#include <text/MVRTextNote.h>

#include <QByteArray>
#include <QHash>
#include <QStringList>

/*! Writes the text of paragraphs with the notes of their document. */
class MarkdownParagraphs
{
public:
    /*! \param firstNote  number of the first footnote; below 1: notes are left out, as inside of
                          notes */
    MarkdownParagraphs(const QTextDocument &document, int firstNote);

    /*! The text of \a block, which comes behind all blocks that were asked for before. */
    QString text(const QTextBlock &block, MarkdownPlace place, int ignoredStyles = 0);

    /*! The contents of the footnotes whose marks were written, in the order of their numbers. */
    const QVector<MVRTextNote> &footnotes() const { return m_footnotes; }

private:
    struct Mark
    {
        int position;
        bool isBefore; // of what begins there
        const MVRTextNote *note; // null for the start of a highlighted text
    };

    void collectMarks();
    void addMarks(int position, bool isAtEnd, MarkdownInlineWriter *writer);
    void addFragment(const FragmentWalker &walker, int from, int to, int ignoredStyles,
                     MarkdownInlineWriter *writer);
    QString commentMarkup(const MVRTextNote &note) const;

    const QTextDocument &m_document;
    FragmentWalker m_walker;
    int m_firstNote;
    MVRTextNotes m_notes;
    QVector<Mark> m_marks;
    int m_nextMark = 0;
    QVector<MVRTextNote> m_footnotes;
};
