// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

class QObject;
class QTextCharFormat;
class QTextCursor;
class QTextDocument;
class QTextDocumentFragment;
class QVariant;

/*!
    Operations on whole documents.

    All work in place, as one undo step, or none when there is nothing to change. They do nothing
    when the document or cursor is null.
*/
class MVRCORE_EXPORT STextDoc
{
public:
    /*!
        Removes the properties of \a format from all text and from the paragraphs' own character
        formats.

        \param onlyEqual  true: a property goes only where its value equals the one in \a format;
                          false: whatever its value
    */
    static void clearAll(QTextDocument *document, const QTextCharFormat &format, bool onlyEqual);

    /*!
        Removes one character property from the whole document where it equals \a value; with
        \a anyValue wherever it stands.
    */
    static void clearAllProperty(QTextDocument *document, int property, const QVariant &value,
                                 bool anyValue);

    /*!
        Removes the inspector notes, with the anchors of their own, from the selected characters;
        other links stay.
    */
    static void clearCommentPropertiesCursor(QTextCursor *cursor);

    /*!
        Removes what makes \a format an anchor: target, names and the anchor flag, and the look that
        Qt's HTML reader gives to links. Other formatting stays, and so does the anchor of an
        inspector note.
    */
    static void clearLinkProperties(QTextCharFormat *format);

    /*! Removes the inspector comments of the whole document; footnotes stay. */
    static void removeInspectorComments(QTextDocument *document);

    /*! Removes the inspector footnotes of the whole document; comments stay. */
    static void removeInspectorFootnotes(QTextDocument *document);

    /*! Removes every inspector note of the whole document. */
    static void removeInspectorCommentsAndFootnotes(QTextDocument *document);

    /*!
        Replaces tables by their text: a paragraph per row, a tab between two cells. Paragraphs
        and character formatting inside the cells are kept.
    */
    static void tablesToText(QTextDocument *document);

    /*!
        Clears the flags of the document's default text option (marks shown for tabs, spaces and
        paragraph ends among them). No undo step.
    */
    static void clearDefaultTextOptionFlags(QTextDocument *document);

    /*!
        Writes page breaks one way: a break after a paragraph becomes a break before the next, and
        the policy "automatic", which says nothing, is removed. A break after the last paragraph
        of the document or before a table stays.
    */
    static void normalizePageBreaks(QTextDocument *document);

    /*!
        Inserts all of a document: its text, tables, lists and paragraph formats, and the pictures
        that it has.

        The first paragraph goes on with the cursor's when that one holds text; an empty one takes
        the format of the first paragraph. Text behind the cursor goes on with the last paragraph.
        A picture whose name stands for another one in the cursor's document gets a new name.
        \param cursor  where to insert; a selection is replaced; stands behind the text afterwards
        \param source  stays as it is; an empty document inserts nothing
    */
    static void appendDocument(QTextCursor &cursor, QTextDocument *source);

    /*!
        The same for a fragment. It brings only those pictures that Qt has loaded for the document
        that it was taken from.
    */
    static void appendFragment(QTextCursor &cursor, const QTextDocumentFragment &fragment);

    /*!
        Counts the words of a document; notes beside the text do not count.

        A word is what stands between blanks, dashes and ellipses and holds a letter or digit, so
        that hyphens, apostrophes and changes of format do not divide it. Each ideograph and kana is
        a word. Scripts that put no blanks between words are divided by QTextBoundaryFinder.
    */
    static int wordCountTextDocument(const QTextDocument &document);

    /*!
        Counts the words of a text by the same rules. The words of a document are those of its
        paragraphs, so that a host which counts while somebody types needs to count only the
        paragraphs of the last edit.
    */
    static int wordCountText(const QString &text);

    /*!
        Copies a document: content, default font and text option, page size, margins, meta
        information, dynamic properties, whether it records undo steps (but none of these), and
        the pictures of its text.

        The copy fetches nothing by itself: a picture that \a document has not and does not load
        either is blank in it.
        \param parent  owns the copy; null: the caller does
        \return null for a null document
    */
    static QTextDocument *cloneDocumentQtStyle(const QTextDocument *document, QObject *parent);
    /*! Makes a document that the caller has a copy of another one, as cloneDocumentQtStyle() does.

        \param target  without text; nothing is done where it or \a document is null, or both are
                       the same */
    static void copyDocument(const QTextDocument *document, QTextDocument *target);
};
