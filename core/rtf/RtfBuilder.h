#pragma once

#include <core/rtf/RtfFormats.h>

#include <QTextCursor>

#include <string_view>
#include <vector>

class QTextDocument;

/*!
    Puts what the reader found into a document, paragraph by paragraph.

    A paragraph is collected and inserted when its formatting is final, which in RTF is at its
    end. So each block and each run is one insertion, and nothing is formatted afterwards.
*/
class RtfBuilder
{
public:
    /*! \param document  empty; filled from its first block on */
    RtfBuilder(QTextDocument *document, const RtfFormatCache &formats);

    /*! Adds printable ASCII to the paragraph. */
    void append(std::string_view ascii, int charFormat)
    {
        beginRun(charFormat);
        m_text.append(QLatin1String(ascii.data(), static_cast<int>(ascii.size())));
    }
    void append(QStringView text, int charFormat)
    {
        beginRun(charFormat);
        m_text.append(text.data(), static_cast<int>(text.size()));
    }

    bool hasText() const { return !m_text.isEmpty(); }

    /*! Takes \a last off the paragraph's end, if it stands there. */
    void chop(char16_t last)
    {
        if (m_text.endsWith(QChar(last)))
            m_text.chop(1);
    }

    /*!
        Inserts the paragraph.
        \param blockFormat  its formatting
        \param markFormat   character formatting of its end, which an empty paragraph shows
    */
    void endParagraph(int blockFormat, int markFormat);

private:
    struct Run
    {
        int start; // in m_text; the run ends where the next one starts
        int charFormat;
    };

    void beginRun(int charFormat)
    {
        if (m_runs.empty() || m_runs.back().charFormat != charFormat)
            m_runs.push_back({m_text.size(), charFormat});
    }
    void insertBlock(const QTextBlockFormat &blockFormat, const QTextCharFormat &markFormat);

    QTextCursor m_cursor;
    const RtfFormatCache &m_formats;
    QString m_text;
    std::vector<Run> m_runs;
    bool m_first = true;
};
