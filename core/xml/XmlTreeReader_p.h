// SPDX-License-Identifier: MIT
#pragma once

#include <QDomDocument>
#include <QString>

class QByteArray;

/*! What became of reading XML: a tree, or the reason why there is none. */
struct XmlTree
{
    QDomDocument document;
    QString errorString; /*!< null when the text was read whole */
};

/*!
    Reads XML of any origin into a tree.

    Text of white space is kept, but for line breaks that lay out elements which hold no other
    text. Characters beyond U+FFFF are read whole. Comments and processing instructions are kept,
    the document type is not.

    Elements nested deeper than \a maxDepth, entities that grow the text or stand for that of
    other files, and elements with hundreds of attributes are refused. White space before the XML
    declaration and bytes that are no characters are forgiven.
*/
XmlTree readXmlTree(const QByteArray &bytes, int maxDepth);
XmlTree readXmlTree(const QString &text, int maxDepth);
