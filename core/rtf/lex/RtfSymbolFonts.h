// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/*!
    The fonts whose letters are symbols: what stands in a file as "a" shows an alpha.

    Documents hold Unicode, so the symbols become the characters that they show. Symbols that
    Unicode has not, or not in its first plane, stay where such fonts keep them, at U+F000 and the
    byte.
*/
namespace RtfSymbolFonts {

/*! \return the code page (RtfCodePages) of the symbols of font \a family; 0 for one we do not know
 */
int codePage(const QString &family);

/*! The character that \a byte shows in a font with that code page. */
QChar character(int codePage, unsigned char byte);

}
