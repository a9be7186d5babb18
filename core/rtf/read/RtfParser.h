// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/read/RtfReader.h>

/*!
    Reads an RTF file into an empty document.

    One pass over the tokens with an explicit stack of groups. Nothing in a file makes it fail:
    unknown words and destinations are passed over by RTF's own rules, and input that ends early
    ends the document.
*/
class RtfParser
{
public:
    /*!
        \param rtf    the file, from its first `{` on; must outlive the parser
        \param document  null for a file that is not read beyond its header
        \param notes  receives the notes of the file, their content through \a write; null leaves
                      them out
    */
    RtfParser(const QByteArray &rtf, QTextDocument *document, MVRTextRtfNotes *notes = nullptr,
              RtfContentWriter write = {});

    /*! Tells whether \a rtf begins, after white space, with `{\rtf`. */
    static bool isRtf(const QByteArray &rtf);

    void read();

    // Step by step
    RtfTokenizer &tokens() { return m_tokens; }
    RtfReader &reader() { return m_reader; }
    /*! \return false for the end of the file */
    bool handle(const RtfToken &token);

    /*! The default character format that the file carries, see \mvrdefaults; may be empty. */
    const QTextCharFormat &defaultFormat() const { return m_reader.defaultFormat(); }
    /*! What \info says about the file. */
    const RtfInfo &info() { return m_reader.info(); }
    const MVRTextRtfLeftOut &leftOut() const { return m_reader.leftOut(); }

    /*! The page that the file says its text is for; nothing where it says none. */
    const std::optional<RtfPage> &page() { return m_reader.header().page(); }
    /*! Headers and footers, see MVRTextRtf::pageTextsProperty. */
    const QVariantMap &pageTexts() const { return m_reader.pageTexts(); }

private:
    void handleWord(const RtfToken &token);
    void handleSymbol(char symbol);
    void handleText(const RtfToken &token);
    void addLevelBytes(std::string_view bytes);
    bool popGroup();

    RtfTokenizer m_tokens;
    RtfReader m_reader;
    bool m_ignorable = false; // the last token was \*
};
