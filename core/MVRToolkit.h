// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QString>

class QFont;
class QPen;
class QSizeF;
class QTextBlockFormat;
class QTextCharFormat;
class QTextDocument;
class QAbstractTextDocumentLayout;

/*!
    Every place where the toolkit at hand differs from what the library needs.

    Nothing else in the project asks for a Qt version or knows what stock Qt leaves out.
*/
class MVRCORE_EXPORT MVRToolkit
{
public:
    /*!
        The raw window-system name of a font.

        Stock Qt answers "unknown" or nothing; then the family stands in, which is said once in
        the debug output: a wrong face name would break every exported screenplay.
    */
    static QString rawFontName(const QFont &font);

    /*!
        Takes the bytes of file names and of the program's arguments for UTF-8, as the system's
        terminals do; Qt 6 does nothing else, Qt 5 would take them for Latin-1 without a locale.
        For a program's start.
    */
    static void useUtf8();

    /*! Whether the system has a bold face of a font family; its name is matched as Qt does. */
    static bool hasBoldFace(const QString &family);

    /*! The document as HTML that names UTF-8 as its encoding; Qt 5 would leave that out. */
    static QString toHtml(const QTextDocument &document);

    /*!
        The first family that a format asks for; empty where it asks for none. Qt 5 keeps one
        family beside a list of families, Qt 6 the list alone.
    */
    static QString fontFamily(const QTextCharFormat &format);
    /*! Makes \a family the one that \a format asks for. Does nothing for null. */
    static void setFontFamily(QTextCharFormat *format, const QString &family);

    /*!
        The number that a property of QTextFormat has in files, and the property that has it: Qt 6
        has renumbered a few. Files have the numbers of Qt 5.
    */
    static int storedProperty(int property);
    /*! The property that has the number \a stored in files; see storedProperty(). */
    static int propertyOfStored(int stored);

    /*!
        The number that a font's weight has in files, and the weight of it. QFont's named weights
        are those of Qt 5, 50 for normal and 75 for bold; others are as the toolkit counts, up to
        99 with Qt 5 and from 100 on with Qt 6, which each takes for its nearest from the other.
    */
    static int storedWeight(int weight);
    /*! The weight that has the number \a stored in files; see storedWeight(). */
    static int weightOfStored(int stored);

    /*!
        Takes away the look that Qt's HTML reader gives to links: underlined, in the palette's
        colour for links. Both go, or neither. Does nothing for null.
    */
    static void clearLinkLook(QTextCharFormat *format);

    /*!
        Translates the application's paragraph properties to those that stock Qt lays out.

        BlockLeftIndentProperty, BlockRightIndentProperty, the absolute TextIndent that goes with
        them, and LineSpacingProperty become margins, a relative first-line indent and a line
        height; they are removed, so that a second call changes nothing. Other paragraphs, and
        all else of these, stay. Meant for a copy of the document, right before it is rendered or
        written by Qt. One undo step.
        \param document   changed in place; nothing happens for null
        \param textWidth  distance between the text margins in points, from which right indents
                          are measured
    */
    static void toStockParagraphs(QTextDocument *document, double textWidth);

    /*!
        The same for one paragraph format; \a format itself when it has none of these properties.
        What a MVRParagraphView added to it does not count.
    */
    static QTextBlockFormat stockBlockFormat(const QTextBlockFormat &format, double textWidth);

    /*!
        The pen that marks of typography (invisible characters) are drawn with; a default pen where
        none was set. It is kept with the document, as is the switch below.
    */
    static QPen typographyPen(const QTextDocument &document);
    /*! Sets that pen. No undo step. */
    static void setTypographyPen(QTextDocument &document, const QPen &pen);

    /*! Whether what is typed into the document is corrected; true where nothing was set. */
    static bool isAutoCorrected(const QTextDocument &document);
    /*! Sets whether it is. No undo step. */
    static void setAutoCorrected(QTextDocument &document, bool on);

    /*! The page size of a layout, which is that of its document. */
    static QSizeF pageSize(const QAbstractTextDocumentLayout &layout);
    /*! Sets it, in the document's units; does nothing for a layout of no document. */
    static void setPageSize(QAbstractTextDocumentLayout &layout, const QSizeF &size);

    /*!
        The number of pages that a document would fill.

        The application's paragraph properties count, as translated by toStockParagraphs(). The
        document and its layout stay as they are: a copy is laid out.
        Lengths count as two pages at most.
        \param size  of a page, in the document's units; without a height all is one page
        \return 0 for a text that is too high for a layout: at 30 million units, some 30,000 pages
                of 72 dots per inch, the toolkit's coordinates end, and it would never come back
    */
    static int pageCount(const QTextDocument &document, const QSizeF &size);
};
