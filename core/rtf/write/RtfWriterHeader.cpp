// SPDX-License-Identifier: MIT
// The part of the writer that makes the header, when the body has been written.
#include <core/rtf/model/RtfFontNames.h>
#include <core/rtf/write/RtfWriter.h>

#include <QTextDocument>
#include <QTextFormat>

QByteArray RtfWriter::finished()
{
    QByteArray rtf = m_body.take();
    rtf += '}';
    return rtf.insert(0, header() + '\n'); // in place: a long document does not stand there twice
}

QByteArray RtfWriter::header()
{
    const QByteArray texts = pageTexts(); // first, since they use fonts and colours too
    QByteArray rtf = QByteArrayLiteral("{\\rtf1\\ansi\\ansicpg1252\\uc1");
    rtf += fontTable() + colorTable() + styleSheet() + listTable();
    if (!m_resources.exactText().isEmpty())
        rtf += "{\\*\\mvrprops " + m_resources.exactText() + '}';
    // Without a generator LibreOffice takes neighbouring blanks for something that they are not.
    if (!m_defaults.isEmpty())
        rtf += "{\\*\\generator MvrText;}";
    return rtf + infoGroup() + pageWords() + m_defaults + texts;
}

QByteArray RtfWriter::pageTexts()
{
    if (m_pageTexts.isEmpty())
        return QByteArray();
    static constexpr const char *words[]
        = {"header", "headerl", "headerr", "headerf", "footer", "footerl", "footerr", "footerf"};
    QByteArray texts;
    for (const char *word : words) {
        const QByteArray rtf = m_pageTexts.value(QLatin1String(word)).toByteArray();
        if (rtf.isEmpty() || !m_contents.read)
            continue;
        RtfInfo info;
        texts += QByteArrayLiteral("{\\") + word + contentOf(rtf, {}, &info) + '}';
    }
    const bool hasFacing = texts.contains("{\\headerl") || texts.contains("{\\footerl");
    const bool hasFirst = texts.contains("{\\headerf") || texts.contains("{\\footerf");
    return QByteArray(hasFacing ? "\\facingp" : "") + (hasFirst ? "\\titlepg" : "") + texts;
}

QByteArray RtfWriter::pageWords() const
{
    QByteArray words;
    if (!m_saysPage)
        return words;
    const std::pair<const char *, int> lengths[]
        = {{"\\paperw", m_page.width}, {"\\paperh", m_page.height}, {"\\margl", m_page.left},
           {"\\margr", m_page.right},  {"\\margt", m_page.top},     {"\\margb", m_page.bottom}};
    for (const auto &length : lengths)
        words += length.first + QByteArray::number(length.second);
    return words;
}

// The text says its looks itself, which \mvrs tells our reader: else they would be the text's.
QByteArray RtfWriter::styleSheet() const
{
    if (m_resources.headings == 0)
        return {};
    QByteArray rtf = QByteArrayLiteral("{\\stylesheet{Normal;}");
    for (int level = 0; level < 6; ++level) {
        if ((m_resources.headings & 1 << level) == 0)
            continue;
        const QByteArray number = QByteArray::number(level + 1);
        const QByteArray look = m_headingLooks.value(level);
        rtf += "{\\s" + number + "\\sbasedon0\\snext0\\outlinelevel" + QByteArray::number(level)
            + (look.isEmpty() ? look : look + "\\mvrs") + " heading " + number + ";}";
    }
    return rtf + '}';
}

QByteArray RtfWriter::infoGroup() const
{
    RtfOutput out;
    const auto entry = [&out](const char *word, const QString &text) {
        if (text.isEmpty())
            return;
        out.beginGroup();
        out.words(word);
        out.text(text);
        out.endGroup();
    };
    entry("\\title", m_info.title);
    entry("\\author", m_info.author);
    if (m_info.time.isValid()) {
        const QDate day = m_info.time.date();
        const QTime clock = m_info.time.time();
        const std::pair<const char *, int> parts[] = {{"\\yr", day.year()},
                                                      {"\\mo", day.month()},
                                                      {"\\dy", day.day()},
                                                      {"\\hr", clock.hour()},
                                                      {"\\min", clock.minute()}};
        out.beginGroup();
        out.words(QByteArrayLiteral("\\creatim"));
        for (const auto &part : parts)
            out.words(part.first + QByteArray::number(part.second));
        out.endGroup();
    }
    return out.rtf().isEmpty() ? QByteArray() : "{\\info" + out.rtf() + '}';
}

QByteArray RtfWriter::fontTable() const
{
    if (m_resources.fonts.isEmpty())
        return {};
    RtfOutput out;
    out.words(QByteArrayLiteral("{\\fonttbl"));
    for (int number = 0; number < m_resources.fonts.size(); ++number) {
        const QString family = m_resources.fonts.value(number).family;
        QByteArray words = "{\\f" + QByteArray::number(number) + "\\fnil";
        if (const int charset = RtfFontNames::charset(family))
            words += "\\fcharset" + QByteArray::number(charset);
        out.words(words);
        out.text(family);
        out.raw(QByteArrayLiteral(";}"));
    }
    out.endGroup();
    return out.rtf();
}

QByteArray RtfWriter::colorTable() const
{
    if (m_resources.colors.size() < 2)
        return {};
    QByteArray rtf = QByteArrayLiteral("{\\colortbl;");
    for (int number = 1; number < m_resources.colors.size(); ++number) {
        const QColor color = m_resources.colors.at(number);
        rtf += "\\red" + QByteArray::number(color.red()) + "\\green"
            + QByteArray::number(color.green()) + "\\blue" + QByteArray::number(color.blue()) + ';';
    }
    return rtf + '}';
}
