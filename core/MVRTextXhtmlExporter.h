// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

#include <QString>

/*! XHTML from what the toolkit writes as HTML. */
class MVRCORE_EXPORT MVRTextXhtmlExporter
{
public:
    /*!
        Turns the HTML of QTextDocument::toHtml() into well-formed XHTML.

        The document type is dropped, void elements ("<br>") are closed, the named entities of
        HTML 4.01 become numbers, unknown ones text; two style attributes of one element become
        one, characters that XML cannot hold are left out. Elements, their order and the spelling
        of styles stay as they are. A blank that is all the text of a span comes as a CDATA
        section, because QDomDocument drops it otherwise.

        A title is text, whatever tags stand in it; the toolkit writes it as it is. Entities in it
        stay entities.

        In HTML that the toolkit wrote (meta name "qrichtext"), text that stands directly in a
        paragraph, a heading, a table cell or an anchor is enclosed in a span; text directly in a
        list item stays bare. What the toolkit gets wrong itself is set right there: list items
        without an end, and lists that end in each other or in another table cell.

        Broken markup of other origin is not repaired; a parser that reads the result reports it.
        The time grows with the length of the text only.

        \param html  the text; its markup may be of any origin
        \return the XHTML; a null string when there is nothing but blanks
    */
    static QString htmlToXhtml(const QString &html);
};
