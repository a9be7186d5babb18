// SPDX-License-Identifier: MIT
#pragma once

#include <core/TextDecoder_p.h>

#include <QByteArray>
#include <QString>

#include <array>
#include <memory>
#include <vector>

/*!
    Turns the bytes of Windows, DOS and Macintosh code pages into Unicode.

    Codecs are looked up when a byte first needs one and kept for the object's lifetime. Bytes
    that a code page does not define become U+FFFD, never an error.
*/
class RtfCodePages
{
public:
    enum : int {
        Western = 1252,
        MacRoman = 10000,
        Utf8 = 65001,
        Symbol = 42, /*!< fonts with their own glyph numbers: U+F000 and up, as Windows does */
        SymbolFont, /*!< these three fonts, whose symbols are known; see RtfSymbolFonts */
        Wingdings,
        Webdings
    };

    /*! The code page of a font's \fcharset (RTF 1.9.1, "Font Table"); 0 when it names none. */
    static int fromCharset(int charset);

    /*! Tells whether \a codePage counts as one of the Macintosh's. */
    static bool isMac(int codePage) { return codePage >= MacRoman && codePage < MacRoman + 100; }

    /*! Tells whether letters are symbols too in \a codePage. */
    static bool isSymbols(int codePage) { return codePage >= SymbolFont && codePage <= Webdings; }

    /*! The characters of a code page of single bytes, null for one of more than one byte. */
    const QChar *singleBytes(int codePage)
    {
        const Page &known = page(codePage);
        return known.decoder ? nullptr : known.characters.data();
    }

    /*! Appends \a bytes, read in \a codePage (an unknown one is read as 1252), to \a text. */
    void decode(int codePage, const QByteArray &bytes, QString *text);

    /*! Tells whether \a byte begins a two-byte character. */
    static bool isLeadByte(int codePage, unsigned char byte);

private:
    struct Page
    {
        int codePage = 0;
        std::unique_ptr<TextDecoder> decoder; // set for code pages of more than one byte
        std::array<QChar, 256> characters {}; // of the others
    };

    const Page &page(int codePage)
    {
        return m_last && m_last->codePage == codePage ? *m_last : findPage(codePage);
    }
    const Page &findPage(int codePage);
    std::unique_ptr<Page> makePage(int codePage);

    std::vector<std::unique_ptr<Page>> m_pages;
    const Page *m_last = nullptr;
};
