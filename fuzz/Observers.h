// SPDX-License-Identifier: MIT
#pragma once

#include <text/MVRNoteHighlighter.h>
#include <text/MVRNotesFilter.h>
#include <text/MVRNotesModel.h>
#include <text/MVRWordCounter.h>

/*! What follows a document while it is edited, and has to say at any time what a new one would. */
class Observers
{
public:
    explicit Observers(QTextDocument *document);

    /*! Ends the process where one of them says something else than the document. */
    void check() const;

private:
    /*! Tells how paragraphs are to look. */
    class Highlighter : public MVRNoteHighlighter
    {
    public:
        using MVRNoteHighlighter::looks;
        using MVRNoteHighlighter::MVRNoteHighlighter;
    };

    void checkNotes() const;
    void checkWords() const;
    void checkLooks() const;

    QTextDocument &m_document;
    MVRNotesModel m_notes;
    MVRNotesFilter m_filter;
    MVRWordCounter *m_counter; // both are the document's children
    Highlighter *m_highlighter;
};
