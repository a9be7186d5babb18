// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRange.h>

#include <vector>

class QTextDocument;

/*! The links of a document, for notes to stand beside them: a note's own anchor would hide one. */
class LinkGaps
{
public:
    /*! Goes through the whole document, which must not change meanwhile. */
    explicit LinkGaps(const QTextDocument &document);

    /*! Tells whether text of \a range is a link. */
    bool coversLink(const MVRTextRange &range) const { return lastLink(range) != nullptr; }

    /*! The last link that \a range covers text of, whole, as runs of one or several links that
        touch; empty where there is none. */
    MVRTextRange link(const MVRTextRange &range) const;

    /*!
        The longer one of the parts of \a range in front of and behind the last link in it, without
        the ends of paragraphs that it begins with; empty where both are.
    */
    MVRTextRange partBeside(const MVRTextRange &range) const;

    /*! The punctuation mark or blank that follows \a link in its paragraph; empty for other text.
     */
    MVRTextRange markBehind(const MVRTextRange &link) const;

private:
    const MVRTextRange *lastLink(const MVRTextRange &range) const;
    MVRTextRange trimmed(MVRTextRange range) const;

    const QTextDocument &m_document;
    std::vector<MVRTextRange> m_links; // in the order of the text
};
