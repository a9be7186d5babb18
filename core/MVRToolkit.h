#pragma once

#include <core/MvrCoreExport.h>

#include <QString>

class QFont;
class QTextDocument;

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
};
