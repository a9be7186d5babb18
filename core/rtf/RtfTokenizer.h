#pragma once

#include <QByteArray>

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

    /*! The byte that the next token begins with, as it stands there; 0 at the end. */
    char peek() const { return m_at != m_end ? *m_at : char(0); }
    /*! Passes over the byte of peek(). */
    void skipByte() { m_at += m_at != m_end ? 1 : 0; }

    /*!
        Reads on behind a \u word, in text of which most characters are such words.

        Takes what stands between them, too, as long as every \u has one fallback character and
        stands for an ordinary character; anything else ends the run.
        \param units     receives the characters
        \param fallback  true when the fallback of the last \u is still to be skipped
        \return number of characters
    */
    int readUnicodeRun(char16_t *units, int size, bool *fallback);

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
    bool skipFallback();
    bool readUnicode(char16_t *unit);

    const char *m_at;
    const char *m_end;
};
