// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

/*! The format of a file that a document is exported to. */
class MVRCORE_EXPORT MVRFormat
{
public:
    /*! A kind of file. */
    enum Format {
        NoFormat = 0,
        PlainText,
        Rtf,
        Html,
        OpenDocument,
        Pdf,
        FinalDraft,
        MultiMarkdown,
        MultiMarkdownHtml, /*!< MultiMarkdown that is turned into HTML afterwards */
        MultiMarkdownLatex, /*!< MultiMarkdown that is turned into LaTeX afterwards */
        EPub2,
        EPub3,
        Kindle
    };

    /*! A kind of file as the format to export to. */
    // NOLINTNEXTLINE(google-explicit-constructor): a format is an export format
    MVRFormat(Format format = NoFormat)
        : m_format(format)
    {
    }

    /*! The kind of file. */
    Format format() const { return m_format; }

    /*! True for MultiMarkdown and what is made of it. */
    static bool isMmdVariant(Format format);
    /*! True for the formats of electronic books. */
    static bool isEBook(Format format);

private:
    Format m_format;
};
