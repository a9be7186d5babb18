// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <utility>

/*! Resets a paragraph. */
constexpr char rtfPlainParagraph[] = "\\pard";

/*!
    RTF under construction: words, groups and escaped text.

    Puts a blank behind a control word only where the text that follows would run into it.
*/
class RtfOutput
{
public:
    /*! Appends finished control words ("\\b\\fs24"); nothing for an empty array. */
    void words(const QByteArray &words)
    {
        m_rtf += words;
        m_afterWord = m_afterWord || !words.isEmpty();
    }
    /*! Appends what ends by itself, as a group does. */
    void raw(const QByteArray &rtf)
    {
        m_rtf += rtf;
        m_afterWord = false;
    }
    void beginGroup() { mark('{'); }
    void endGroup() { mark('}'); }
    /*! A line end in the file, which means nothing but reads better. */
    void lineEnd() { mark('\n'); }

    /*!
        Appends \a text: code page 1252 where it reaches, beyond it \u and, as \uc1 says, one
        letter for programs without Unicode. Not all programs mind the code page of a font.
    */
    void text(QStringView text);
    /*! Whether bytes are of code page 1252, which they are not in fonts of other scripts. */
    void setHasBytes(bool hasBytes) { m_hasBytes = hasBytes; }

    const QByteArray &rtf() const { return m_rtf; }
    /*! Hands over what was written; nothing is left. */
    QByteArray take() { return std::exchange(m_rtf, QByteArray()); }

private:
    void mark(char character)
    {
        m_rtf += character;
        m_afterWord = false;
    }
    void ascii(const QChar *text, int length);
    const QChar *coded(const QChar *at, const QChar *end);
    char *appendCoded(char16_t unit, char *to);

    QByteArray m_rtf;
    bool m_afterWord = false;
    bool m_hasBytes = true;
};
