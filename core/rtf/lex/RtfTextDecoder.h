// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/lex/RtfCodePages.h>
#include <core/rtf/lex/RtfTokenizer.h>

#include <QStringView>

#include <string_view>

/*! Receives the characters that an RtfTextDecoder makes of bytes and \u words. */
class RtfTextSink
{
public:
    /*! Printable ASCII. */
    virtual void addAscii(std::string_view text) = 0;
    /*! Whole characters, such as a document may hold. */
    virtual void addCharacters(QStringView characters) = 0;
    /*! A control character, which is no text but in \leveltext. */
    virtual void addControl(unsigned char byte) = 0;

protected:
    ~RtfTextSink() = default;
};

/*!
    Turns bytes and \u words into characters (RTF 1.9.1, "Unicode RTF").

    Keeps what waits for more: the first byte of a character of two, the first half of a surrogate
    pair, and the characters behind a \u that are there for programs without Unicode.
*/
class RtfTextDecoder
{
public:
    /*! \param tokens  that the text comes from; what follows a character can be part of it */
    RtfTextDecoder(RtfTokenizer *tokens, RtfTextSink *sink)
        : m_tokens(*tokens)
        , m_sink(*sink)
    {
    }

    /*! Passes over one character when it is a fallback; false for one that counts. */
    bool skipFallback();
    /*! \param length  how many of the characters that follow stand for the last \u */
    void setFallback(int length) { m_fallback = length; }

    void addText(const RtfToken &token, int codePage);
    void addByte(unsigned char byte, int codePage);
    void addCharacter(char16_t character);
    void addCharacters(QStringView text);
    /*! Any number behind a \u, which takes signed ones of 16 bits and in some files larger ones. */
    void addUnicode(int value);
    /*!
        Reads on behind a \u word or a \'xx, as long as such and ASCII follow.
        \param fallbackLength  \uc
    */
    void readCodedRun(int codePage, int fallbackLength);

    /*! The character that \u shows as \a value in a symbol font; \a value in other fonts. */
    int shownValue(int value, int codePage);

    /*! Ends the run of bytes; a character of which half is there is a replacement character. */
    void flush();
    /*! The same, but a half character goes on waiting. */
    void flushWhole()
    {
        if (!m_leadByte)
            flush();
    }
    /*! Nothing completes the first half of a surrogate pair any more. */
    void endText();

private:
    void addUnit(char16_t unit);
    void takeRawTrailByte();

    RtfTokenizer &m_tokens;
    RtfTextSink &m_sink;
    RtfCodePages m_codePages;
    QByteArray m_bytes; // of characters beyond ASCII, until the run of them ends
    int m_bytesCodePage = 0;
    bool m_leadByte = false; // m_bytes ends within a character
    char16_t m_highSurrogate = 0; // waits for its second half
    int m_fallback = 0; // characters still to be skipped behind a \u
};
