// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QTextFormat>

class QTextDocument;

/*! Property ids of text formats, the default character format and tests on formats. */
class MVRCORE_EXPORT MVRTextFormat
{
public:
    /*!
        Ids of QTextFormat properties, used bare.

        Lengths are points. The block properties up to 0x1071 belong to paragraph formats, the
        others to character formats (ImageLink… to image formats).
    */
    enum Property : int {
        BlockLeftIndentProperty = 0x1036, /*!< double: left indent from the left text margin */
        BlockRightIndentProperty = 0x1037, /*!< double: right edge of the text, from the left text
                                                margin */
        /*! double: multiple of single spacing. Qt >= 5.14 gave this number to
            QTextFormat::HeadingLevel, an int: tell the two apart by type, see spacingType(). */
        LineSpacingProperty = 0x1070,
        LineSpacingBaseProperty = 0x1071, /*!< double, written together with LineSpacingProperty */
        PreserveFormattingProperty = 0x100003, /*!< bool: keep the run's formatting on export */
        CommentLinkProperty = 0x100007, /*!< bool: the run carries an inspector note */
        CommentCDataProperty = 0x100008, /*!< byte array: the note's content as RTF */
        CommentColorProperty = 0x100009, /*!< QColor: colour of an inspector comment */
        ImageLinkProperty = 0x10000b, /*!< string: path of the file an image came from */
        ImageLinkBaseNameProperty = 0x10000e, /*!< string: that file's name without suffixes */
        InlineAnnotationProperty = 0x100064, /*!< bool: the run is an inline annotation */
        InlineFootnoteProperty = 0x100065, /*!< bool: the run is an inline footnote */
        InspectorCommentProperty = 0x100066, /*!< bool: the inspector note is a comment */
        InspectorFootnoteProperty = 0x100067, /*!< bool: the inspector note is a footnote */
        CommentAuthorProperty = 0x100068, /*!< string: who wrote an inspector note; absent or empty
                                               when that is not known */
        CommentDateProperty = 0x100069, /*!< QDateTime: when an inspector note was written; absent
                                           or invalid when that is not known */
        CoveredLinkProperty = 0x10006a, /*!< string: where the text led before an inspector note was
                                             attached, whose anchor has taken the place of the link;
                                             it leads there again when the note goes */
        CommentResolvedProperty = 0x10006b, /*!< bool: an inspector note needs nobody any more */
        ListStartProperty = 0x100400, /*!< int: the number that a list's numbers begin with, where
                                           that is not 1; Qt shows 1 */
        ListNumberFormatProperty = 0x100401, /*!< int: the kind of a list's numbers that no style of
                                                  Qt has (RTF 1.9.1, \\levelnfc) */
        ListLabelProperty
        = 0x100402, /*!< string: a list's label with the numbers of several levels,
                         "%1.%2." for the second one's; "%%" is a percent sign */
        FieldProperty = 0x100403, /*!< string: instruction of the RTF field that the text is the
                                     result of ("PAGE"); only of those that count pages */
        ParagraphViewProperty = 0x100300 /*!< list: what a live view changed in the paragraph's
                                              format; see MVRParagraphView::ownFormat() */
    };

    /*!
        The format that text of the document starts from.

        \return the format set by setDefaultCharFormat(); as long as none was set, a format that
                holds the document's default font
    */
    static QTextCharFormat defaultCharFormat(const QTextDocument &document);

    /*! Stores \a format with the document as the one that its text starts from. */
    static void setDefaultCharFormat(QTextDocument &document, const QTextCharFormat &format);

    /*!
        Tells whether \a format links to another item of the application: an anchor whose target
        is a decimal integer ("42"). Web addresses and note anchors are no such links.
    */
    static bool isMovarinLink(const QTextCharFormat &format);

    /*!
        Reads a paragraph's line spacing: LineSpacingProperty, else Qt's own proportional line
        height.

        \param format  the paragraph's format
        \param value   receives the spacing as a multiple of single spacing, 1.0 when the format
                       sets none; may be null
        \return QTextBlockFormat::SingleHeight or QTextBlockFormat::ProportionalHeight
    */
    static int spacingType(const QTextBlockFormat &format, double *value);

    /*!
        Gives all text and all paragraphs of a document the same formats, as one undo step.

        \param document     the document to change; nothing happens when it is null
        \param charFormat   replaces every character format but those of images and table cells;
                            null leaves them as they are
        \param blockFormat  replaces every paragraph format, except that lists keep their
                            paragraphs; null leaves them as they are
    */
    static void convertToFormat(QTextDocument *document, const QTextCharFormat *charFormat,
                                const QTextBlockFormat *blockFormat);
};
