// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRTextRtfLeftOut.h>
#include <core/MVRTextRtfNote.h>
#include <core/MvrCoreExport.h>

#include <QByteArray>
#include <QString>

class QFont;
class QMimeData;
class QTextDocument;

/*!
    Rich text as RTF and back.

    What is written here is read back with the same text, paragraphs and formats, property by
    property; what RTF cannot say exactly (fractions of its units, this system's paragraph
    properties) stands in destinations that other programs skip. Note properties are neither written
    nor made: notes are handed over beside the document, or left out.
*/
class MVRCORE_EXPORT MVRTextRtf
{
public:
    /*!
        Name of the dynamic property (QObject::property()) in which a document has its author, a
        string: Qt's meta information has a place for the title only.
    */
    static constexpr char authorProperty[] = "mvrAuthor";

    /*!
        Name of the dynamic property in which a document has the page that its file is for: a
        QVariantMap of "width", "height", "left", "right", "top" and "bottom" (paper and margins),
        doubles in points. A page size that is set on the document itself goes before it.
    */
    static constexpr char pageProperty[] = "mvrPage";

    /*!
        Name of the dynamic property in which a document has the headers and footers of its file: a
        QVariantMap of RTF files by the words of RTF ("header", "headerl", "headerr", "headerf",
        "footer" …; RTF 1.9.1, "Headers and Footers"). Only the RTF writer shows them.
    */
    static constexpr char pageTextsProperty[] = "mvrPageTexts";

    /*! Tells whether \a rtf begins, after white space, with <tt>{\\rtf</tt>, so that it is read. */
    static bool isRtf(const QByteArray &rtf);

    /*!
        Replaces a document's content by an RTF file (RTF 1.9.1).

        Words that are not known are passed over by RTF's own rules, and a file that is damaged
        or cut off gives what stands before the damage. The \c \\par at the end of a file ends
        the last paragraph, it does not begin another one; programs that end a file without it
        mean the same. A title and an author in the file become the document's
        (QTextDocument::DocumentTitle, authorProperty). Undo recording pauses meanwhile, so the
        document's undo history is empty afterwards, and its setting is as it was.

        \param rtf       the file
        \param document  receives the text; null reads nothing
        \return false, the document being as it was, when \a rtf is not RTF, see isRtf(), or the
                document is null; true otherwise, also for a file without text
    */
    static bool fromRtfCData(const QByteArray &rtf, QTextDocument *document);

    /*!
        The same, and lists the footnotes and comments of the file.

        \param notes    receives the notes in the order of the file, also those of deeper notes,
                        which stand where the note around them does; null leaves notes out
        \param leftOut  receives what the document has not got of the file; may be null
    */
    static bool fromRtfCData(const QByteArray &rtf, QTextDocument *document, MVRTextRtfNotes *notes,
                             MVRTextRtfLeftOut *leftOut = nullptr);

    /*!
        Writes a document as RTF.

        \param document      the document
        \param withDefaults  true for a file of its own: the document's default font, title and
                             author go out too, other programs show them and fromRtfCData() sets
                             them again, and the size and margins of its page. False
                             for text that will take its looks from where it is shown, as notes
                             do: only formatting that is set goes out.
        \return the file, plain ASCII; empty for a null document
    */
    static QByteArray toRtfCData(const QTextDocument *document, bool withDefaults);

    /*!
        The same with footnotes and comments.

        \param notes  in any order, their ranges inside the document; content that cannot be read
                      is written as an empty note
    */
    static QByteArray toRtfCData(const QTextDocument *document, bool withDefaults,
                                 const MVRTextRtfNotes &notes);

    /*!
        Writes plain text as RTF.

        \param text  the text; each line is a paragraph
        \param font  of the whole text: family, size and what differs from the normal style;
                     null writes text without formatting
        \return the file, plain ASCII
    */
    static QByteArray textToRtf(const QString &text, const QFont *font);

    /*!
        Puts a document on the clipboard, or what else mime data serves: as "text/rtf" and
        "application/rtf", and as plain text, which lacks its pictures. Other formats that \a data
        holds stay. Nothing happens when \a data or \a document is null.

        \param withDefaults  as for toRtfCData()
    */
    static void setMovarinMarkupRtfMimeData(QMimeData *data, const QTextDocument *document,
                                            bool withDefaults);

    /*!
        Replaces a document's content by the RTF in \a data, as fromRtfCData() does.

        \param data  its "text/rtf" counts, else "application/rtf", else "text/richtext", as which
                     some programs offer RTF; the first that is RTF is read
        \return false, the document being as it was, when there is none or either is null
    */
    static bool fromMovarinMarkupRtfMimeData(const QMimeData *data, QTextDocument *document);
};
