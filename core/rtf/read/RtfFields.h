// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QByteArray;

/*! Field instructions (RTF 1.9.1, "Fields"). */
namespace RtfFields {

/*!
    \return what a HYPERLINK instruction links to, its bookmark (\l) behind a '#'; empty for
            other fields and for a link to nothing
*/
QString linkTarget(const QString &instruction);

/*!
    \return what a field shows that has no result: the symbol of a SYMBOL, in Unicode where its font
    is one that is known; the words of an EQ that puts a reading beside them, with the reading in
    parentheses. Empty for other fields.
*/
QString shownText(const QString &instruction);

/*! A field that counts pages, which other programs count again: PAGE, NUMPAGES, SECTIONPAGES. */
bool isPageNumber(const QString &instruction);

/*! What is shown of a field that has no result: a button's text, a formula's letters, the name that
    a reference goes to; empty for fields that show nothing. */
QString textWithoutResult(const QString &instruction);

}
