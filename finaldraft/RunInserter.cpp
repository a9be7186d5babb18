// SPDX-License-Identifier: MIT
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
    insertPendingText();
    if (m_isBreakDue)
        m_cursor.insertBlock(format, m_charFormat);
    else
        m_cursor.setBlockFormat(format);
    m_isBreakDue = false;
}

void RunInserter::insertRun(const QString &text, const TextAttr &attr,
                            const QTextCharFormat &elementFormat)
{
    const QTextCharFormat format = charFormat(attr, elementFormat);
    if (m_pendingText.isEmpty() || format != m_charFormat) {
        finish();
        m_pendingText = text;
        m_charFormat = format;
    } else {
        m_pendingText += text;
    }
}

void RunInserter::insertText(const QString &text)
{
    finish();
    m_cursor.insertText(text);
    m_charFormat = m_cursor.charFormat();
}

void RunInserter::endParagraph()
{
    finish();
    m_isBreakDue = true;
}

void RunInserter::finish()
{
    insertPendingText();
    if (m_isBreakDue) {
        // The new paragraph looks like the one before it, but does not start a page as well.
        QTextBlockFormat format = m_cursor.blockFormat();
        format.clearProperty(QTextFormat::PageBreakPolicy);
        m_cursor.insertBlock(format);
    }
    m_isBreakDue = false;
}

void RunInserter::insertPendingText()
{
    if (!m_pendingText.isEmpty())
        m_cursor.insertText(m_pendingText, m_charFormat);
    m_pendingText.clear();
}

QTextCharFormat RunInserter::charFormat(const TextAttr &attr, const QTextCharFormat &elementFormat)
{
    for (const MadeFormat &made : qAsConst(m_formats)) {
        if (isSameFormat(attr, made.attr) && elementFormat == made.elementFormat)
            return made.charFormat;
    }
    if (m_formats.size() == maxFormats)
        m_formats.clear();
    TextAttr shown = attr;
    if (!m_fonts.take(attr.font))
        shown.font.clear();
    QTextCharFormat format = shown.toCharFormat();
    format.merge(elementFormat);
    m_formats.append({attr, elementFormat, format});
    return format;
}
