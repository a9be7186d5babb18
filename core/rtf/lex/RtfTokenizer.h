// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QChar>

#include <string_view>

/*! One lexical element of an RTF file. */
struct RtfToken
{
    enum Kind {
        End, /*!< the input is used up */
        GroupStart,
        GroupEnd,
        Word, /*!< control word: text is its name, parameter its number */
        Symbol, /*!< control symbol: text is the one character behind the backslash */
        Hex, /*!< \'xx: parameter is the byte */
        Text, /*!< bytes of plain text, line ends left out */
        Binary /*!< \bin: text is the raw data, clipped to the input */
    };

    Kind kind = End;
    bool ascii = false; /*!< Text: all bytes are 0x20–0x7e, so no code page is needed */
    bool hasParameter = false;
    int parameter = 0;
    std::string_view text;
};

/*!
    Cuts RTF into tokens (RTF 1.9.1, "RTF Syntax").

    Works on the bytes in place and allocates nothing; the bytes must outlive it. Never fails:
    whatever is malformed comes out as the nearest token, the end of the input as End.
*/
class RtfTokenizer
{
public:
    explicit RtfTokenizer(const QByteArray &rtf)
        : m_at(rtf.constData())
        , m_end(rtf.constData() + rtf.size())
    {
    }

    RtfToken next();

    /*! Text of which many characters are words or bytes, and what it needs to be read. */
    struct CodedRun
    {
        const QChar *characters = nullptr; /*!< of the bytes 0x20–0xff; null: stop at a byte */
        int fallbackLength = 0; /*!< \uc: characters behind each \u that stand for it */
        int fallback = 0; /*!< how many of these are still to be passed over */
    };

    /*! The place behind the last token, with the blank that ends a word. */
    const char *at() const { return m_at; }
    /*! The byte that the next token begins with, as it stands there; 0 at the end. */
    char peek() const { return m_at != m_end ? *m_at : char(0); }
    /*! Passes over the byte of peek(). */
    void skipByte() { m_at += m_at != m_end ? 1 : 0; }

    /*!
        Reads on behind a \u word or a \'xx, as long as such and ASCII follow.

        Most of them stand among others, in text that is not English. Anything else ends the run,
        also a \u for other than an ordinary character, and a longer stretch of ASCII.
        \param units  receives the characters
        \return number of characters
    */
    int readCodedRun(CodedRun *run, char16_t *units, int size);

    /*!
        Passes over the rest of the group that the tokenizer stands in, its closing brace
        included, minding escapes and \bin data. Nesting is counted, not stacked.
    */
    void skipGroup();

private:
    RtfToken readEscape();
    RtfToken readHex();
    RtfToken readWord();
    RtfToken readBinary(int length);
    RtfToken readText();

    const char *m_at;
    const char *m_end;
};
