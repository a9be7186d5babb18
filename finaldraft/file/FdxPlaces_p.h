// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>
#include <finaldraft/file/FdxScript_p.h>

#include <QHash>
#include <QVector>

/*! Where the paragraphs of a file stand: in the document, and in the numbers of note ranges. */
class FdxPlaces
{
public:
    /*! \a lengths are those of the paragraphs' blocks; they are found when there are none. */
    explicit FdxPlaces(const FdxScript &script, const QVector<int> &lengths = {});

    /*! Place of a paragraph's first character in the document. */
    int position(int paragraph) const { return m_positions[paragraph]; }
    int length(int paragraph) const { return m_lengths[paragraph]; }
    /*! The text of a paragraph; asked for again and again, it is made once. */
    QString text(int paragraph) const;
    /*! A document's place, or the one in front of it when that is within a surrogate pair. */
    int pairStart(int position) const;

    /*! The document's place of a number in a note's Range; beyond the script, its end. */
    int positionOf(int offset) const;
    /*! The number of a document's place; within dual dialogue that of the wrapper. */
    int offsetOf(int position) const;
    /*! The paragraph with a block that holds a document's place; -1 when there is none. */
    int paragraphAt(int position) const;
    /*!
        A stretch of the document without the paragraph ends that it begins and ends with, which no
        format can stand on; empty when it holds nothing else.
    */
    MVRTextRange trimmed(const MVRTextRange &range) const;
    /*! The text of [range), a line a paragraph. */
    QString text(const MVRTextRange &range) const;
    /*! How many characters the document of the file has, and the number that ends its script. */
    int endPosition() const { return m_endPosition; }

private:
    const FdxScript &m_script;
    QVector<int> m_positions; // by paragraph; a wrapper has the place of what it holds
    QVector<int> m_lengths;
    QVector<int> m_offsets; // by paragraph, numbers of the script; title page: -1
    QVector<int> m_blocks; // the paragraphs that have one
    QVector<int> m_withText; // the paragraphs with a block that has text
    QVector<int> m_topLevel; // paragraphs of the script that are in no wrapper
    int m_endPosition = 0;
    mutable QHash<int, QString> m_texts; // by paragraph, those that were asked for
    mutable QHash<int, QString> m_plainTexts; // the same, with the file's own breaks
};
