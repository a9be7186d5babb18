#include <core/rtf/RtfWriter.h>

#include <core/rtf/RtfFields.h>
#include <core/rtf/RtfFormats.h>
#include <core/rtf/RtfWords.h>

#include <QTextBlock>
#include <QTextDocument>

QByteArray RtfWriter::write(const QTextDocument &document, bool withDefaults)
{
    if (withDefaults)
        writeDefaults(document);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        writeBlock(block);
    return finished();
}

QByteArray RtfWriter::write(const QString &text, const QTextCharFormat &format)
{
    const QByteArray words = run(0, format).words;
    m_body.words(QByteArrayLiteral("\\pard")); // ends the header, so that leading blanks count
    if (!words.isEmpty())
        m_body.beginGroup();
    m_body.words(words);
    const int length = text.size();
    for (int start = 0; start <= length;) {
        int end = start;
        while (end < length && text.at(end) != QLatin1Char('\n')
               && text.at(end) != QLatin1Char('\r') && text.at(end) != QChar::ParagraphSeparator)
            ++end;
        m_body.text(QStringView(text).mid(start, end - start));
        m_body.words(QByteArrayLiteral("\\par"));
        const bool pair = end + 1 < length && text.at(end) == QLatin1Char('\r')
            && text.at(end + 1) == QLatin1Char('\n');
        start = end + (pair ? 2 : 1);
        if (start <= length)
            m_body.lineEnd();
    }
    if (!words.isEmpty())
        m_body.endGroup();
    return finished();
}

void RtfWriter::writeBlock(const QTextBlock &block)
{
    writeBlockFormat(block);
    writeRuns(block);
    const QByteArray mark = markWords(block.charFormatIndex(), block.charFormat());
    const bool ownGroup = !m_openRun && !mark.isEmpty();
    if (ownGroup) {
        m_body.beginGroup();
        m_body.words(mark);
    }
    m_body.words(QByteArrayLiteral("\\par"));
    if (ownGroup || m_openRun)
        m_body.endGroup();
    m_openRun = false;
    m_body.lineEnd();
}

void RtfWriter::writeBlockFormat(const QTextBlock &block)
{
    // Two entries a format: with the page break that the paragraph before asks for, and without.
    const int key = block.blockFormatIndex() * 2 + (m_breakBefore ? 1 : 0);
    auto known = m_paragraphs.find(key);
    if (known == m_paragraphs.end()) {
        QByteArray words = QByteArrayLiteral("\\pard");
        appendRtfWords(RtfParaProps(),
                       RtfFormats::fromBlockFormat(block.blockFormat(), m_breakBefore, &m_tables),
                       &words);
        known = m_paragraphs.insert(key, words);
    }
    if (known.value() != m_paragraph) {
        m_paragraph = known.value();
        m_body.words(m_paragraph);
    }
    m_breakBefore = block.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysAfter;
}

void RtfWriter::writeRuns(const QTextBlock &block)
{
    const QString text = block.text();
    for (auto it = block.begin(); !it.atEnd();) {
        const QTextFragment fragment = it.fragment();
        const int number = fragment.charFormatIndex();
        ++it;
        const Run &next = run(number, fragment.charFormat());
        if (next.link != m_link) {
            closeLink();
            openLink(next.link);
        }
        const bool last = it.atEnd() && number == block.charFormatIndex() && next.link == 0;
        if (!next.words.isEmpty()) {
            m_body.beginGroup();
            m_body.words(next.words);
        }
        m_body.text(
            QStringView(text).mid(fragment.position() - block.position(), fragment.length()));
        m_openRun = last && !next.words.isEmpty();
        if (!next.words.isEmpty() && !m_openRun)
            m_body.endGroup();
    }
    closeLink();
}

void RtfWriter::openLink(int link)
{
    m_link = link;
    if (link == 0)
        return;
    m_body.beginGroup();
    m_body.words(QByteArrayLiteral("\\field"));
    m_body.beginGroup();
    m_body.words(QByteArrayLiteral("\\*\\fldinst"));
    m_body.text(RtfFields::linkInstruction(m_tables.links.at(link)));
    m_body.endGroup();
    m_body.beginGroup();
    m_body.words(QByteArrayLiteral("\\fldrslt"));
}

void RtfWriter::closeLink()
{
    if (m_link != 0) {
        m_body.endGroup();
        m_body.endGroup();
    }
    m_link = 0;
}

const RtfWriter::Run &RtfWriter::run(int formatNumber, const QTextCharFormat &format)
{
    auto known = m_runs.find(formatNumber);
    if (known == m_runs.end()) {
        const RtfCharProps props = RtfFormats::fromCharFormat(format, true, &m_tables);
        Run added;
        added.link = props.link;
        appendRtfWords(RtfCharProps(), props, &added.words);
        known = m_runs.insert(formatNumber, added);
    }
    return known.value();
}

const QByteArray &RtfWriter::markWords(int formatNumber, const QTextCharFormat &format)
{
    auto known = m_marks.find(formatNumber);
    if (known == m_marks.end()) {
        QByteArray words;
        appendRtfWords(RtfCharProps(), RtfFormats::fromCharFormat(format, false, &m_tables),
                       &words);
        known = m_marks.insert(formatNumber, words);
    }
    return known.value();
}

void RtfWriter::writeDefaults(const QTextDocument &document)
{
    QTextCharFormat format;
    format.setFontFamily(document.defaultFont().family());
    if (document.defaultFont().pointSizeF() > 0)
        format.setFontPointSize(document.defaultFont().pointSizeF());
    appendRtfWords(RtfCharProps(), RtfFormats::fromCharFormat(format, true, &m_tables),
                   &m_defaults);
    // Other programs take these as the formatting of all that says nothing else.
    m_defaults += "{\\*\\mvrdefaults}";
}

QByteArray RtfWriter::header() const
{
    RtfOutput out;
    out.words(QByteArrayLiteral("{\\rtf1\\ansi\\ansicpg1252"));
    if (!m_tables.fonts.isEmpty()) {
        out.words(QByteArrayLiteral("{\\fonttbl"));
        for (int number = 0; number < m_tables.fonts.size(); ++number) {
            out.words("{\\f" + QByteArray::number(number) + "\\fnil");
            QString family = m_tables.fonts.value(number).family;
            out.text(family.remove(QLatin1Char(';')));
            out.words(QByteArrayLiteral(";}"));
        }
        out.endGroup();
    }
    if (m_tables.colors.size() > 1) {
        out.words(QByteArrayLiteral("{\\colortbl;"));
        for (int number = 1; number < m_tables.colors.size(); ++number) {
            const QColor color = m_tables.colors.at(number);
            out.words("\\red" + QByteArray::number(color.red()) + "\\green"
                      + QByteArray::number(color.green()) + "\\blue"
                      + QByteArray::number(color.blue()) + ';');
        }
        out.endGroup();
    }
    if (!m_tables.exactText().isEmpty())
        out.words("{\\*\\mvrprops " + m_tables.exactText() + '}');
    return out.rtf() + m_defaults;
}

QByteArray RtfWriter::finished() const
{
    QByteArray rtf = header();
    rtf.reserve(rtf.size() + m_body.rtf().size() + 8);
    rtf += '\n';
    rtf += m_body.rtf();
    rtf += '}';
    return rtf;
}
