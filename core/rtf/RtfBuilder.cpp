#include <core/rtf/RtfBuilder.h>

#include <QTextDocument>

RtfBuilder::RtfBuilder(QTextDocument *document, const RtfFormatCache &formats)
    : m_cursor(document)
    , m_formats(formats)
{
}

void RtfBuilder::endParagraph(int blockFormat, int markFormat)
{
    insertBlock(m_formats.blockFormat(blockFormat), m_formats.charFormat(markFormat));
    for (std::size_t i = 0; i < m_runs.size(); ++i) {
        const int start = m_runs[i].start;
        const int end = i + 1 < m_runs.size() ? m_runs[i + 1].start : m_text.size();
        if (end > start)
            m_cursor.insertText(QString::fromRawData(m_text.constData() + start, end - start),
                                m_formats.charFormat(m_runs[i].charFormat));
    }
    m_text.resize(0); // keeps the capacity, unlike clear()
    m_runs.clear();
}

void RtfBuilder::insertBlock(const QTextBlockFormat &blockFormat, const QTextCharFormat &markFormat)
{
    if (!m_first) {
        m_cursor.insertBlock(blockFormat, markFormat);
        return;
    }
    // A document is born with its first block.
    m_first = false;
    if (!blockFormat.isEmpty())
        m_cursor.setBlockFormat(blockFormat);
    if (!markFormat.isEmpty())
        m_cursor.setBlockCharFormat(markFormat);
}
