// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRQtCompat.h>
#include <core/MVRTextRange.h>
#include <text/MVRTextCommentLink.h>
#include <text/MVRTextNote.h>
#include <text/MvrTextExport.h>

#include <QList>
#include <QPair>
#include <QStringList>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QVector>

#include <functional>

class MVRFormat;
class MVRPicturePolicy;
class QAbstractTextDocumentLayout;
class QColor;
class QDateTime;
class QMimeData;
class QPen;
#ifdef MVR_HAS_QREGEXP
class QRegExp;
#endif
class QRegularExpression;
class QSizeF;
class QTextDocument;
class QTextDocumentFragment;
class QUrl;
struct MVRTextRtfLeftOut;

/*!
    The operations on a writer's document.

    All are stateless and work in place on the caller's document. A null document or cursor is
    harmless: nothing happens, or the result is empty; so is a cursor whose document is gone.
    Positions and ranges are UTF-16 code units from the document's start. A selected rectangle of
    table cells is the text of these cells, without what lies between. An operation that changes the
    document is one undo step, except where it says otherwise; when nothing changes there is none,
    nor does the document call itself modified.

    Four kinds of note live in the character formats of the text (MVRTextFormat::Property).
    Inspector comments and inspector footnotes are attached to a run of text and hold their content
    as RTF beside it; inline annotations and inline footnotes are runs of text that are the note.
*/
class MVRTEXT_EXPORT MVRTextDoc
{
public:
    /*! \name Inspector notes: queries */
    //@{

    /*! True when the document holds any inspector note. */
    static bool hasInspectorCommentsOrFootnotes(const QTextDocument *document);

    /*!
        True when any selected character carries an inspector note; without a selection, when the
        text at the position does; see MVRTextFinder::hasFormatProperty().
    */
    static bool hasInspectorCommentsOrFootnotes(const QTextCursor &cursor);
    /*! The same for inspector comments. */
    static bool hasInspectorComment(const QTextCursor &cursor);
    /*! The same for inspector footnotes. */
    static bool hasInspectorFootnote(const QTextCursor &cursor);
    /*! The same for inline footnotes. */
    static bool hasInlineFootnote(const QTextCursor &cursor);
    /*! The same for inline annotations. */
    static bool hasInlineAnnotation(const QTextCursor &cursor);

    /*! True when the whole selection, or the position, lies inside an inline annotation. */
    static bool isInInlineAnnotation(const QTextCursor &cursor);
    /*! True when the whole selection, or the position, lies inside an inline footnote. */
    static bool isInInlineFootnote(const QTextCursor &cursor);

    /*! Whether a menu shows a check mark at "inline annotation" for this selection. */
    static bool isInlineAnnotationChecked(const QTextCursor &cursor);
    /*! Whether a menu shows a check mark at "inline footnote" for this selection. */
    static bool isInlineFootnoteChecked(const QTextCursor &cursor);

    /*! True for the anchors that inspector notes carry: "Comment:…" and "Footnote:…". */
    static bool isCommentFootnoteAnchor(const QString &href);
    /*! The same for a URL, whose scheme QUrl may have put in lower case. */
    static bool isCommentFootnoteAnchor(const QUrl &url);

    /*!
        The content of the note that \a format carries, as HTML or plain text.

        \return a null string when there is no content or it cannot be read
    */
    static QString commentText(QTextCharFormat format, bool asHtml);

    //@}
    /*! \name Inspector notes: attaching and removing */
    //@{

    /*!
        Attaches a note to the selected text, whose other formatting stays. The note's anchor takes
        the place of a link's, whose target waits in MVRTextFormat::CoveredLinkProperty.

        When the new note begins inside another note, that note is cut off where the new one begins;
        whatever of it lay behind the new note carries none any more. Otherwise the selected
        characters join the new note and the rest of an old one keeps it.
        \param cursor  the text to attach to; nothing happens without a selection
        \param link    the note; a comment with an invalid colour takes the default comment colour
                       of the application's settings
    */
    static void setComment(QTextCursor cursor, const MVRTextCommentLink &link);
    /*! Attaches a note to a range, which is cut to the document's length. Many in one paragraph
        are attached faster like this, or inside an edit block, than through cursors: each of these
        itemizes the paragraph anew to find its place after an edit. */
    static void setComment(QTextDocument *document, const MVRTextRange &range,
                           const MVRTextCommentLink &link);
    /*!
        Attaches a note and says who wrote it, and when; see MVRTextNote. The other forms leave both
        unknown.
    */
    static void setComment(QTextCursor cursor, const MVRTextCommentLink &link,
                           const QString &author, const QDateTime &date);
    /*! Attaches a note with plain \a text in the note font of the application's settings. */
    static void setComment(QTextCursor cursor, const QString &text, bool isFootnote);
    /*! Attaches a note with RTF content; a comment takes the default comment colour. */
    static void setCommentCData(QTextCursor cursor, const QByteArray &cdata, bool isFootnote);

    /*! Makes the notes of \a map the document's inspector notes; all others are removed. */
    static void setComments(QTextDocument *document, const MVRTextCommentLinkMap &map);

    /*!
        Removes the note at \a position from there to its end; the part before keeps it.

        The note is that of the character before the position, at a paragraph's start of the one
        after it.
    */
    static void clearComment(QTextDocument *document, int position);

    /*!
        Removes the notes whose fragments (characters of one paragraph that share one format) begin
        inside the selection, from the whole fragment. A fragment that began before the selection
        keeps its note. An empty paragraph that the cursor stands in loses a note's format, so
        that what is typed there is plain.
    */
    static void removeComment(QTextCursor &cursor);

    //@}
    /*! \name Inspector notes: listing */
    //@{

    /*!
        Lists each inspector note once, as one range, however many fragments and paragraphs it runs
        over.

        Fragments belong to one note when their content is equal byte for byte and they touch, or
        the one ends a paragraph and the other begins one.
        \param propertyId  the kind: MVRTextFormat::CommentLinkProperty for all,
                           InspectorCommentProperty or InspectorFootnoteProperty
        \param start       where to begin, when above 0; otherwise at the document's start
        \param end         when above 0: a fragment that begins after it ends the listing, and the
                           note that was being put together then is left out
        \param firstOnly   true: only the first note is wanted
        \return the notes, each described by the format of its last character
    */
    static MVRTextCommentLinkMap commentsMapByType(int propertyId, const QTextDocument *document,
                                                   int start, int end, bool firstOnly);
    /*! Lists the inspector notes of both kinds; see commentsMapByType(). */
    static MVRTextCommentLinkMap commentsMap(const QTextDocument *document, int start, int end);

    /*!
        Lists the notes of all four kinds.

        An inspector note is the text that follows each other with the same kind, content and
        anchor, over any change of other formatting and any number of paragraphs. So two notes with
        equal content that were attached one behind the other stay two, which commentsMap() puts
        together. The inline notes are those of inlineNotes().
        \param start  position: notes that end there or before are left out; at most 0 for the
                      document's start
        \param end    position: notes that begin there or behind are left out; at most 0 for the
                      document's end
        \return the notes, each whole, in the order of their first characters; an inspector note
                in front of an inline one that begins with it
    */
    static MVRTextNotes notes(const QTextDocument *document, int start = -1, int end = -1);

    /*! The plain text of every inspector note, in document order; empty and unreadable ones are
        left out. */
    static QStringList inspectorNotesToPlainText(const QTextDocument *document);

    /*!
        Trims the content of the inspector notes of one kind.

        \param propertyId  the kind, as for commentsMapByType(); nothing happens for other values
        \param trimFlag    also shrink repeated empty paragraphs; see MVRTextUtil::trim()
        \param count       white space to leave in front; -1: one character for footnotes, none for
                           comments
        \param limit       white space to leave behind; -1: none
    */
    static void trimInspectorNotes(QTextDocument *document, int propertyId, bool trimFlag,
                                   int count, int limit);

    //@}
    /*! \name Inline notes

        Where an operation takes a document and a cursor, it works on the cursor's selection; a null
        cursor stands for the whole document. A cursor without a selection, of another document, or
        of one that is gone does nothing. */
    //@{

    /*!
        Lists the inline notes of one kind.

        A note is marked text that follows each other; it goes on into the next paragraph, and over
        empty ones whose own character format is marked. What reaches across cells of a table, but
        is not all of its text, is one note in each of them.
        \param propertyId  MVRTextFormat::InlineAnnotationProperty or InlineFootnoteProperty
        \param start       as for notes(), like \a end
        \return the ranges of the notes, each whole, in document order
    */
    static QVector<MVRTextRange> inlineNotes(const QTextDocument *document, int propertyId,
                                             int start = -1, int end = -1);

    /*!
        Removes the inline notes of one kind that have any text in the selection, each whole.

        \param propertyId  as for inlineNotes()
        \return how many were removed
    */
    static int removeInlineNotes(QTextDocument *document, int propertyId, QTextCursor cursor);

    /*!
        Marks the selection as an inline note, which is then no inline note of the other kind, or
        takes the mark of one kind away.

        \param footnote  true: inline footnote; false: inline annotation
        \return the format that was merged into the selection, for text that is to be typed
    */
    static QTextCharFormat setInlineFootnoteAnnotation(QTextCursor cursor, bool footnote, bool on);

    /*! Marks the selection's formatting as to be kept on export, or not; returns the format that
        was merged. */
    static QTextCharFormat setPreserveFormatting(QTextCursor cursor, bool on);

    /*!
        Exchanges one boolean character property for another: what has \a fromProperty true inside
        the selection loses it and gets \a toProperty true.
    */
    static void swapBoolProperties(QTextDocument *document, int fromProperty, int toProperty,
                                   QTextCursor cursor);

    /*! Makes inline annotations inline footnotes, by swapBoolProperties(). */
    static void convertInlineAnnotationsToInlineFootnotes(QTextDocument *document,
                                                          QTextCursor cursor);
    /*! Makes inline footnotes inline annotations, by swapBoolProperties(). */
    static void convertInlineFootnotesToInlineAnnotations(QTextDocument *document,
                                                          QTextCursor cursor);
    /*! Makes comments footnotes, by swapBoolProperties(): content, colour and anchor stay as they
        are, and only a part that is selected changes. */
    static void convertInspectorCommentsToInspectorFootnotes(QTextDocument *document,
                                                             QTextCursor cursor);
    /*! Makes footnotes comments; see convertInspectorCommentsToInspectorFootnotes(). */
    static void convertInspectorFootnotesToInspectorComments(QTextDocument *document,
                                                             QTextCursor cursor);

    /*!
        Trims the text of the inline notes in the selection, up to the first that goes on beyond its
        end.

        \param propertyId  MVRTextFormat::InlineAnnotationProperty or InlineFootnoteProperty
        \param trimFlag    as for MVRTextUtil::trim(), like the next two
    */
    static void trimInlineNotes(QTextDocument *document, int propertyId, bool trimFlag, int count,
                                int limit, QTextCursor cursor);

    /*!
        Puts strings around every inline annotation of the document, in the format of its first and
        last character. Every insertion is an undo step of its own.

        \param opening  goes in front; may be empty
        \param closing  goes behind; may be empty
        \param unmark   true: annotations and strings become ordinary text; false: the strings
                        become part of the annotation
    */
    static void encloseAnnotations(QTextDocument *document, const QString &opening,
                                   const QString &closing, bool unmark);

    //@}
    /*! \name Notes between inspector and text

        Selection and cursor as for inline notes. The moves are one undo step; taking leftovers of
        the old kind from the whole document, where there are any, is another. */
    //@{

    /*!
        Puts the content of inspector notes into the text, behind the text that carried them, as
        inline notes: a blank and the trimmed content.

        Notes whose content cannot be read are left out, but \a propertyId is then taken from the
        whole document, so that such a footnote becomes a comment.
        \param propertyId  MVRTextFormat::InspectorCommentProperty or InspectorFootnoteProperty
        \param toFootnote  true: inline footnotes; false: inline annotations
    */
    static void swapInspectorToInline(QTextDocument *document, int propertyId, bool toFootnote,
                                      QTextCursor cursor);

    /*!
        Takes inline notes out of the text and attaches them as inspector notes to the closest word
        before, or else to a label, "(Linked Comment)" or "(Linked Footnote)", where they stood.

        The first note that goes on beyond the selection's end and all behind it stay inline.
        Setting 6 lets the search for a word leave the paragraph.
        \param propertyId     MVRTextFormat::InlineAnnotationProperty or InlineFootnoteProperty
        \param toFootnote     true: inspector footnotes; false: comments in the default colour
        \param skipNoteWords  true: words of inline notes are passed over; false: when the closest
                              word is one, the closest behind it is asked for instead
    */
    static void swapInlineToInspector(QTextDocument *document, int propertyId, bool toFootnote,
                                      bool skipNoteWords, QTextCursor cursor);

    /*!
        swapInlineToInspector() that takes no note from a word: it asks the last letter of a word
        whether it carries one; here, a word is not free as long as any letter does. The notes that
        find no free word get a label. Nothing for a null document.
    */
    static void moveInlineBesideText(QTextDocument *document, int propertyId, bool toFootnote,
                                     bool skipNoteWords, const QTextCursor &cursor);

    /*! swapInspectorToInline() for footnotes that become inline footnotes. */
    static void convertInspectorFootnotesToInlineFootnotes(QTextDocument *document,
                                                           QTextCursor cursor);
    /*! swapInspectorToInline() for comments that become inline annotations. */
    static void convertInspectorCommentsToInlineAnnotations(QTextDocument *document,
                                                            QTextCursor cursor);
    /*! swapInlineToInspector() for inline footnotes that become comments. */
    static void convertInlineFootnotesToInspectorComments(QTextDocument *document,
                                                          bool skipNoteWords, QTextCursor cursor);
    /*! swapInlineToInspector() for inline footnotes that become inspector footnotes. */
    static void convertInlineFootnotesToInspectorFootnotes(QTextDocument *document,
                                                           bool skipNoteWords, QTextCursor cursor);
    /*! swapInlineToInspector() for inline annotations that become comments. */
    static void convertInlineAnnotationsToInspectorComments(QTextDocument *document,
                                                            bool skipNoteWords, QTextCursor cursor);

    //@}
    /*! \name RTF files with their notes */
    //@{

    /*!
        Replaces a document's content by an RTF file (RTF 1.9.1), as MVRTextRtf::fromRtfCData()
        does, and attaches its notes: footnotes and end notes become inspector footnotes,
        annotations inspector comments, text between markup codes inline notes.

        A note is attached to the text that it was written for, or else to the word before its mark
        in the same paragraph and what
        stands between them, else to a label such as "(Linked Footnote)". Where notes overlap, the
        longer one gives way, and a comment and a footnote on one word share its letters. Notes of
        one kind on the same text become one note, their contents in the order of the file, each
        behind the name of its author. A comment's colour is the default one unless toRtf() wrote
        the file.
        \param leftOut  receives what the document has not got of the file; may be null
        \return false, the document being as it was, when \a rtf is no RTF or the document is null
    */
    static bool fromRtf(const QByteArray &rtf, QTextDocument *document,
                        MVRTextRtfLeftOut *leftOut = nullptr);

    /*! What becomes of inline notes in an RTF file. */
    enum InlineNotesInRtf {
        InlineNotesAsCodes, /*!< markup codes around their text, as toInlineMarkup() writes them */
        InlineNotesAsNotes /*!< footnotes and annotations; see swapInlineToInspector() */
    };

    /*!
        Writes a document as an RTF file, its inspector notes as footnotes and annotations that
        other programs show too.

        fromRtf() gives the notes back with their kind, colour, range, content and, of comments,
        author and date to the minute; only the letters
        of content that is no RTF reach no other program.
        \param document     stays as it is
        \param inlineNotes  how the inline notes stand in the file
        \return the file, plain ASCII; empty for a null document
    */
    static QByteArray toRtf(const QTextDocument *document,
                            InlineNotesInRtf inlineNotes = InlineNotesAsCodes);

    //@}
    /*! \name Links to other items of the application

        Such a link is an anchor whose target is the item's id in decimal. */
    //@{

    /*! Reads the document's title and its links: one entry for text that touches and leads to the
        same item, at most one paragraph long. */
    static MVRTextInternalLinkMap internalLinks(const QTextDocument &document);

    /*! Turns the ranges of \a map into links; links that the document has stay, and its title is
        not changed. */
    static void setInternalLinks(QTextDocument *document, const MVRTextInternalLinkMap &map);

    /*! Turns the links into plain text, each in the format of its last character; other anchors
        stay. */
    static void convertMovarinLinksToText(QTextDocument *document);

    /*! Removes every anchor of the document, web links included; the text keeps its other
        formatting. */
    static void clearInternalLinks(QTextDocument *document);

    //@}
    /*! \name Inline markup

        What plain and RTF text cannot carry, spelled out in codes: inline annotations, inline
        footnotes and text whose formatting is to be kept each between an opening and a closing
        code, images that are linked to a file as "{$MVRImageLink[w:320;h:200]=/pics/a.png}". */
    //@{

    /*!
        Writes codes for inline notes, preserved formatting and linked images into the text, and
        removes the inspector notes, for which there is no code.

        The marked text stays where it is and is ordinary text afterwards. Sizes and paths of images
        are written as they are, also those that are not read back: a fraction of a pixel, or a
        brace in a path.

        Every note and image is an undo step of its own. A document with a layout is laid out anew
        after each, unless the caller has opened an edit block.
    */
    static void toInlineMarkup(QTextDocument *document);

    /*!
        Turns codes in the text into marked text and images, and deletes the marker
        "<$MvrKeepWithNext>" in any case of letters.

        A code lies within one paragraph, what a pair encloses need not. An opening code belongs to
        the first closing code of its kind behind it; what is not paired or not spelled right stays
        text. Images are those of fromInlineMarkupImageLinks().

        No undo step: the undo history is cleared, and recording is on afterwards.

        \warning Opens the files that the text names, anywhere on this machine. A host that reads
        documents of others gives a \a policy.
    */
    static void fromInlineMarkup(QTextDocument *document);
    /*! The same, with only those files opened that \a policy allows. */
    static void fromInlineMarkup(QTextDocument *document, const MVRPicturePolicy &policy);

    /*!
        Turns image codes into images that are loaded from their files and shown at the size that
        the code gives, in pixels; 0 stands for 1, a number beyond an int for 800 (width) or 600
        (height).

        A path is relative to the current directory, also one with a leading slash that finds
        nothing itself. Where there is no file, or none that can be shown, the image is a
        placeholder: the application's resource ":/Icons/Application/MsgAlert", else a question
        mark of that size, smaller when it had more than 64 million pixels. The path is kept in
        MVRTextFormat::ImageLinkProperty either way. Bitmaps of up to 50 million pixels in files of
        up to 128 MiB are loaded, JPEG files of up to 200 million reduced to a quarter of their
        sides. Equal images share one resource of the document.

        Every image is an undo step of its own; as to a layout, see toInlineMarkup().

        \warning Opens the files that the text names, anywhere on this machine. A host that reads
        documents of others gives a \a policy; a file that it does not allow is as if missing.
    */
    static void fromInlineMarkupImageLinks(QTextDocument *document);
    /*! The same, with only those files opened that \a policy allows. */
    static void fromInlineMarkupImageLinks(QTextDocument *document, const MVRPicturePolicy &policy);

    /*!
        Takes the inline footnotes out of the text, for exports that list them elsewhere, and leaves
        a superscript number in place of each. A footnote that reaches across cells of a table, but
        is not all of its text, becomes one in each of them.

        \param firstNumber  the first note's number; the others follow
        \param noteFormat   merged into the notes that are returned; the marks have the format of
                            their note's last character, its footnote property included
        \param format       MultiMarkdown: a mark reads "[^fn1]"; an electronic book: it is an
                            anchor named "fn1" and a link to "footnotes.xhtml#fn1"; else the number
                            alone
        \return the notes in the order of the text
    */
    static QList<QTextDocumentFragment> inlineFootnotesToEndNotes(QTextDocument *document,
                                                                  int firstNumber,
                                                                  const QTextCharFormat &noteFormat,
                                                                  const MVRFormat &format);
    /*!
        The same for a host that puts each note where it belongs at once: a fragment is a document
        of its own, which takes some 7 KB however short it is.

        \param take  is given the notes in the order of the text, and leaves \a document alone
    */
    static void
    inlineFootnotesToEndNotes(QTextDocument *document, int firstNumber,
                              const QTextCharFormat &noteFormat, const MVRFormat &format,
                              const std::function<void(const QTextDocumentFragment &)> &take);
    /*! The same with the notes as they are and numbers alone for marks. */
    static QList<QTextDocumentFragment> inlineFootnotesToEndNotes(QTextDocument *document,
                                                                  int firstNumber);

    //@}
    /*! \name Counting */
    //@{

    /*!
        Counts the words and characters of a document; see STextDoc::wordCountTextDocument() for
        what a word is. Paragraph ends between paragraphs and blanks are characters.

        \param withComments     adds the content of the inspector comments
        \param withFootnotes    adds the content of the inspector footnotes
        \param countWords       false: the number of words stays 0
        \param countCharacters  false: the number of characters stays 0
        \return words and characters; both 0 for a null document
    */
    static QPair<int, int> wordCharacterCount(const QTextDocument *document, bool withComments,
                                              bool withFootnotes, bool countWords,
                                              bool countCharacters);
    /*!
        Counts the words and characters in the inspector notes of one kind; content that cannot be
        read counts nothing.

        \param noteProperty  the kind, as for commentsMapByType()
    */
    static QPair<int, int> wordCharacterCountNotes(const QTextDocument *document, int noteProperty,
                                                   bool countWords, bool countCharacters);
    /*! One of the two numbers of wordCharacterCount(). */
    static int wordCount(const QTextDocument &document, bool withComments, bool withFootnotes);
    /*! The other of the two. */
    static int characterCount(const QTextDocument &document, bool withComments, bool withFootnotes);

    /*! See MVRTextFinder::formatCount(). */
    static int formatCount(const QTextDocument *document, int property, const QVariant &value);

    /*! The pages of \a size that a document would fill, see MVRToolkit::pageCount(); 0 for null. */
    static int pageCount(const QTextDocument *document, const QSizeF &size);

    //@}
    /*! \name Appending and replacing */
    //@{

    /*! See STextDoc::appendDocument(). */
    static void appendDocument(QTextCursor &cursor, QTextDocument *source);
    /*! See STextDoc::appendFragment(). */
    static void appendFragment(QTextCursor &cursor, const QTextDocumentFragment &fragment);

    /*!
        Appends a document like appendDocument(), but leaves the page break, or other policy of
        page breaks, that the cursor's paragraph has.

        The empty paragraphs that \a source begins with become empty paragraphs too: the first of
        them is the cursor's, whose format it gives to the paragraph behind as well. An empty item
        of a list counts as text, and so does a paragraph right before a table.
        \param cursor  where to insert; stands behind the text afterwards
        \param source  is changed: it loses those empty paragraphs, or its first paragraph gets the
                       policy
    */
    static void appendDocumentPreservePageBreak(QTextCursor &cursor, QTextDocument *source);
    /*! The same for a fragment; an empty one does nothing. */
    static void appendFragmentPreservePageBreak(QTextCursor &cursor,
                                                const QTextDocumentFragment &fragment);

    /*!
        Replaces every match from the cursor on (from the end of its selection, when it has one)
        as repeated QTextDocument::find() would find them: within paragraphs, no-break spaces as
        blanks, never in what was inserted.

        \param expression  matches letters by its own case sensitivity; one that matches nothing,
                           like "$", is used once a place, and there \a after is inserted;
                           nothing is replaced with one that takes more steps than the toolkit
                           allows it, as "(a+)+b" does with a long row of a
        \param after       is inserted as it is, in the format of the last character replaced; a
                           line feed begins a paragraph
        \param from        in the document to change; nothing happens for a null one
    */
    static void replace(const QRegularExpression &expression, const QString &after,
                        const QTextCursor &from);
    /*! The same for every place where the text \a before stands, whatever the case of its letters.
     */
    static void replace(const QString &before, const QString &after, const QTextCursor &from);
    /*!
        Replaces like replace().

        \return how many matches were replaced; -1 when an expression takes too many steps
    */
    static int replaceAll(const QRegularExpression &expression, const QString &after,
                          const QTextCursor &from);
    /*! \overload */
    static int replaceAll(const QString &before, const QString &after, const QTextCursor &from);
#ifdef MVR_HAS_QREGEXP
    /*! \overload
        There with Qt 5 only. */
    static void replace(const QRegExp &expression, const QString &after, const QTextCursor &from);
    /*! \overload
        There with Qt 5 only. */
    static int replaceAll(const QRegExp &expression, const QString &after, const QTextCursor &from);
#endif

    //@}
    /*! \name Clipboard */
    //@{

    /*!
        Fills \a data with RTF and plain text in which inline notes, preserved formatting and linked
        images stand as markup; see toInlineMarkup(). Inspector notes are left out. Nothing happens
        when either is null.
    */
    static void setMovarinMarkupRtfMimeData(QMimeData *data, const QTextDocument *document);
    /*!
        Replaces a document's content by the RTF in \a data and turns its markup back.

        \warning Opens the files that the clipboard's text names, anywhere on this machine; nobody
        sees them before. With the \a policy MVRPicturePolicy::nowhere() it opens none.
        \return false, the document being as it was, when there is no RTF or either is null
    */
    static bool fromMovarinMarkupRtfMimeData(const QMimeData *data, QTextDocument *document);
    /*! The same, with only those files opened that \a policy allows. */
    static bool fromMovarinMarkupRtfMimeData(const QMimeData *data, QTextDocument *document,
                                             const MVRPicturePolicy &policy);

    /*! Fills \a data with the selection as RTF with its notes of all kinds, for word processors and
        for pasteMimeData(). Nothing happens without a selection. */
    static void copyMimeData(QMimeData *data, const QTextCursor &selection);
    /*!
        Puts the RTF in \a data, with its notes of all kinds, in the selection's place. Opens no
        files.

        \return false, with nothing done, when there is no RTF or no document
    */
    static bool pasteMimeData(const QMimeData *data, QTextCursor &cursor);

    //@}
    /*! \name Document settings */
    //@{

    /*! See MVRTextFormat::defaultCharFormat(). */
    static QTextCharFormat defaultCharFormat(const QTextDocument &document);
    /*! See MVRTextFormat::setDefaultCharFormat(). */
    static void setDefaultCharFormat(QTextDocument &document, const QTextCharFormat &format);
    /*!
        Sets text and background colour of the default character format; an invalid colour removes
        the one that was set. No undo step.
    */
    static void setDefaultCharFormatColors(QTextDocument *document, const QColor &foreground,
                                           const QColor &background);
    /*! Sets the font of the default character format and of all text and paragraphs, with all
        that a font says (family, size, weight and so on); other formatting stays. */
    static void setFont(QTextDocument *document, const QFont &font);

    /*! See MVRToolkit::typographyPen(). No undo step. */
    static QPen typographyPen(const QTextDocument &document);
    /*! Sets the pen; nothing happens for a null document. No undo step. */
    static void setTypographyPen(QTextDocument *document, const QPen &pen);
    /*! See MVRToolkit::isAutoCorrected(). No undo step. */
    static void setAutoCorrection(QTextDocument &document, bool on);

    //@}
};

/*! The page size of a layout, see MVRToolkit::pageSize(); invalid for a layout of no document. */
MVRTEXT_EXPORT QSizeF mvrPageSize(const QAbstractTextDocumentLayout &layout);
MVRTEXT_EXPORT void mvrSetPageSize(QAbstractTextDocumentLayout &layout, const QSizeF &size);
