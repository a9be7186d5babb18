#include <finaldraft/RunInserter_p.h>

using MVRFinalDraft::TextAttr;

namespace {

// Searching more of them costs more than making one.
constexpr int maxFormats = 32;

bool isSameFormat(const TextAttr &a, const TextAttr &b)
{
    return a.style == b.style && a.size == b.size && a.font == b.font && a.color == b.color
        && a.background == b.background;
}

}

void RunInserter::startParagraph(const QTextBlockFormat &format)
{
    if (m_isBreakDue)
        m_cursor.insertBlock(format);
    else
        m_cursor.setBlockFormat(format);
    m_isBreakDue = false;
}

void RunInserter::insertRun(const QString &text, const TextAttr &attr,
                            const QTextCharFormat &elementFormat)
{
    finish();
    m_cursor.insertText(text, charFormat(attr, elementFormat));
}

void RunInserter::insertText(const QString &text)
{
    finish();
    m_cursor.insertText(text);
}

void RunInserter::endParagraph()
{
    finish();
    m_isBreakDue = true;
}

void RunInserter::finish()
{
    if (m_isBreakDue)
        m_cursor.insertBlock();
    m_isBreakDue = false;
}

QTextCharFormat RunInserter::charFormat(const TextAttr &attr, const QTextCharFormat &elementFormat)
{
    for (const MadeFormat &made : qAsConst(m_formats)) {
        if (isSameFormat(attr, made.attr) && elementFormat == made.elementFormat)
            return made.charFormat;
    }
    if (m_formats.size() == maxFormats)
        m_formats.clear();
    QTextCharFormat format = attr.toCharFormat();
    format.merge(elementFormat);
    m_formats.append({attr, elementFormat, format});
    return format;
}
