// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/*! A character reference ("&#38;") or an entity ("&amp;") in a text. */
struct HtmlReference
{
    enum Kind { None, Name, Number };

    Kind kind; /*!< None where the "&" begins nothing that ends in a semicolon */
    int end; /*!< behind the semicolon; behind the "&" where there is none */
    uint code; /*!< the character; 0 for an unknown name */
};

/*! Reads what begins with the "&" at \a start. */
HtmlReference readHtmlReference(QStringView text, int start);

/*! Where a text stands: in a LooseValue a bare "&" and a "<" were meant as they are. */
enum class HtmlPlace { Text, LooseValue };

/*!
    Appends a text, or the value of an attribute, to \a xml.

    The entities of HTML 4.01 become numbers but for those that XML knows, unknown ones become
    text, numbers beyond U+FFFF the character, and numbers of no XML character nothing. What is
    not well-formed stays, but for a loose value.
*/
void appendAsXml(QString *xml, QStringView text, HtmlPlace place);

/*!
    Whether a text is nothing but white space, also by references.

    \param blanks  the characters are appended to it; of no use when the result is false
*/
bool isHtmlBlank(QStringView text, QString *blanks);
