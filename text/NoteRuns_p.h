// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextFormat.h>
#include <core/document/Selection_p.h>
#include <core/document/TextFragments_p.h>
#include <text/MVRTextCommentLink.h>

#include <optional>

/*! The inline notes that an operation on a selection is for. */
struct InlineNotes
{
    QVector<MVRTextRange> runs;
    /*! Where the first note begins that goes on beyond the selection; else the selection's end. */
    int end = 0;
};

/*!
    The runs of the inline note property in \a selection, from one that its start lies in to the
    last before the first that goes on beyond its end. Of a rectangle in a table the selected cells
    count, each by itself.

    Each can be selected without other text: a run that crosses the borders of table cells and is
    not the whole table is cut there.
*/
InlineNotes inlineNotesIn(int property, const Selection &selection);

/*! An inspector note being put together from its fragments. */
struct NoteRun
{
    MVRTextRange range;
    QTextBlock block; // that the last fragment stands in
    MVRTextCommentLink link; // as the last fragment has it

    NoteRun(const FragmentWalker &fragment, const QTextCharFormat &format);

    /*!
        Equal content makes fragments one note when they touch, or the one ends a paragraph and the
        other begins one.
    */
    bool isContinuedBy(const NoteRun &next, bool nextStartsBlock) const;
};

/*! Puts the inspector notes of one kind together, fragment by fragment. */
class NoteCollector
{
public:
    explicit NoteCollector(int property)
        : m_property(property)
    {
    }

    /*! Takes the next fragment. \return whether it is part of a note. */
    bool add(const FragmentWalker &fragment);

    /*! The notes behind which another one has begun. */
    const MVRTextCommentLinkMap &notes() const { return m_notes; }

    /*! The same with the last one, once all fragments have been added. */
    const MVRTextCommentLinkMap &finish();

private:
    int m_property;
    std::optional<NoteRun> m_current;
    MVRTextCommentLinkMap m_notes;
};

/*! The same for the runs that have any text in \a range, each whole. */
QVector<MVRTextRange> inlineNotesAround(const QTextDocument *document, int property,
                                        const MVRTextRange &range);
QVector<MVRTextRange> inlineNotesAround(int property, const Selection &selection);

/*! What marks text as an inline note of one kind, and not of the other; or unmarks it. */
inline QTextCharFormat inlineNoteFormat(bool footnote, bool on)
{
    const int kind = footnote ? MVRTextFormat::InlineFootnoteProperty
                              : MVRTextFormat::InlineAnnotationProperty;
    const int otherKind = footnote ? MVRTextFormat::InlineAnnotationProperty
                                   : MVRTextFormat::InlineFootnoteProperty;
    QTextCharFormat format;
    format.setProperty(kind, on);
    if (on)
        format.setProperty(otherKind, false);
    return format;
}
