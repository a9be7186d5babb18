#pragma once

#include <core/MVRTextRange.h>
#include <text/MVRTextCommentLink.h>
#include <text/MvrTextExport.h>

#include <QStringList>
#include <QTextCharFormat>
#include <QTextCursor>

class QColor;
class QTextDocument;
class QUrl;

/*!
    The operations on a writer's document.

    All are stateless and work in place on the caller's document. A null document or cursor is
    harmless: nothing happens, or the result is empty. Positions and ranges are UTF-16 code units
    from the document's start. An operation that changes the document is one undo step, and none
    when nothing changes, except where it says otherwise.

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
        text at the position does (see MVRTextFinder::hasFormatProperty(), as for the next four).
    */
    static bool hasInspectorCommentsOrFootnotes(const QTextCursor &cursor);
    static bool hasInspectorComment(const QTextCursor &cursor);
    static bool hasInspectorFootnote(const QTextCursor &cursor);
    static bool hasInlineFootnote(const QTextCursor &cursor);
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
        Attaches a note to the selected text, whose other formatting stays.

        When the new note begins inside another note, that note is cut off where the new one begins;
        whatever of it lay behind the new note carries none any more. Otherwise the selected
        characters join the new note and the rest of an old one keeps it.
        \param cursor  the text to attach to; nothing happens without a selection
        \param link    the note; a comment with an invalid colour takes the default comment colour
                       of the application's settings
    */
    static void setComment(QTextCursor cursor, const MVRTextCommentLink &link);
    /*! Attaches a note to a range, which is cut to the document's length. */
    static void setComment(QTextDocument *document, const MVRTextRange &range,
                           const MVRTextCommentLink &link);
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

    //@}
};
