// SPDX-License-Identifier: MIT
#include <text/MVRTextDoc.h>

#include <core/MVRTextFinder.h>
#include <core/MVRTextFormat.h>
#include <core/MVRTextRtf.h>
#include <core/MVRToolkit.h>
#include <core/STextDoc.h>

#include <QSizeF>
#include <QTextDocument>

namespace {

using Counts = QPair<int, int>;

Counts &operator+=(Counts &sum, const Counts &more)
{
    sum.first += more.first;
    sum.second += more.second;
    return sum;
}

Counts countsOf(const QTextDocument &document, bool countWords, bool countCharacters)
{
    return {countWords ? STextDoc::wordCountTextDocument(document) : 0,
            countCharacters ? qMax(0, document.characterCount() - 1) : 0};
}

} // namespace

QPair<int, int> MVRTextDoc::wordCharacterCount(const QTextDocument *document, bool withComments,
                                               bool withFootnotes, bool countWords,
                                               bool countCharacters)
{
    if (!document)
        return {0, 0};
    Counts counts = countsOf(*document, countWords, countCharacters);
    if (withFootnotes)
        counts += wordCharacterCountNotes(document, MVRTextFormat::InspectorFootnoteProperty,
                                          countWords, countCharacters);
    if (withComments)
        counts += wordCharacterCountNotes(document, MVRTextFormat::InspectorCommentProperty,
                                          countWords, countCharacters);
    return counts;
}

QPair<int, int> MVRTextDoc::wordCharacterCountNotes(const QTextDocument *document, int noteProperty,
                                                    bool countWords, bool countCharacters)
{
    Counts counts;
    const MVRTextCommentLinkMap notes = commentsMapByType(noteProperty, document, -1, -1, false);
    for (const MVRTextCommentLink &note : notes) {
        QTextDocument content;
        content.setUndoRedoEnabled(false);
        if (!note.cdata.isEmpty() && MVRTextRtf::fromRtfCData(note.cdata, &content))
            counts += countsOf(content, countWords, countCharacters);
    }
    return counts;
}

int MVRTextDoc::wordCount(const QTextDocument &document, bool withComments, bool withFootnotes)
{
    return wordCharacterCount(&document, withComments, withFootnotes, true, false).first;
}

int MVRTextDoc::characterCount(const QTextDocument &document, bool withComments, bool withFootnotes)
{
    return wordCharacterCount(&document, withComments, withFootnotes, false, true).second;
}

int MVRTextDoc::formatCount(const QTextDocument *document, int property, const QVariant &value)
{
    return MVRTextFinder::formatCount(document, property, value);
}

int MVRTextDoc::pageCount(const QTextDocument *document, const QSizeF &size)
{
    return document ? MVRToolkit::pageCount(*document, size) : 0;
}
