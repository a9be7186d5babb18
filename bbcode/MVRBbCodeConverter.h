// SPDX-License-Identifier: MIT
#pragma once

#include <text/MvrTextExport.h>

#include <QString>
#include <QStringList>

class QDomElement;
class QDomNode;

/*!
    Turns the HTML that QTextDocument::toHtml() writes into BBCode for forum posts.

    Bold, italic, underlined, struck and coloured spans, links, mail addresses and lists become
    tags, every paragraph and line break a line; paragraphs that begin with ">" or "{" become
    quotations and code. What comes out for what is listed in docs/bbcode.md.

    An object serves one conversion: a second one on the same object returns its own text with
    the first one's behind it.
*/
class MVRTEXT_EXPORT MVRBbCodeConverter
{
public:
    /*!
        Converts one document.

        HTML of any origin is safe: markup nested more than 256 elements deep, elements with more
        than 256 attributes and nesting that would repeat the text many times are refused like
        markup that is not well-formed. The time grows with the length of the text only.

        \param html   the document, with one body element
        \param error  receives a translated message when the markup cannot be read, and is left
                      alone on success and for a text of nothing; may be null. The place in it is
                      that of the XHTML which was read.
        \return the BBCode, each paragraph behind a line feed; a null string when there is nothing
                to convert or the markup cannot be read
    */
    QString fromHtml(const QString &html, QString *error);

private:
    bool gatherInSegments(const QString &xhtml);
    void gather(const QString &xhtml, QString *message);
    QDomNode walkTree(const QDomNode &node);
    QDomElement sanitizeElement(const QDomElement &element);
    void cleanSpanTag(const QDomElement &span);
    void cleanAnchorTag(const QDomElement &anchor);
    QString listItems(const QDomElement &list) const;
    QString cleanQuotedText(const QString &text) const;

    // In document order, though gathered from the end: a list grows at its front for nothing.
    QStringList m_pieces;
};
