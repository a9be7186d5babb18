// The part of the writer that makes the header, when the body has been written.
#include <core/rtf/RtfLists.h>
#include <core/rtf/RtfWriter.h>

#include <QTextList>

QByteArray RtfWriter::finished() const
{
    QByteArray rtf = header();
    rtf.reserve(rtf.size() + m_body.rtf().size() + 8);
    rtf += '\n';
    rtf += m_body.rtf();
    rtf += '}';
    return rtf;
}

QByteArray RtfWriter::header() const
{
    QByteArray rtf = QByteArrayLiteral("{\\rtf1\\ansi\\ansicpg1252");
    rtf += fontTable() + colorTable() + listTable();
    if (!m_tables.exactText().isEmpty())
        rtf += "{\\*\\mvrprops " + m_tables.exactText() + '}';
    return rtf + m_defaults;
}

QByteArray RtfWriter::fontTable() const
{
    if (m_tables.fonts.isEmpty())
        return {};
    RtfOutput out;
    out.words(QByteArrayLiteral("{\\fonttbl"));
    for (int number = 0; number < m_tables.fonts.size(); ++number) {
        out.words("{\\f" + QByteArray::number(number) + "\\fnil");
        out.text(m_tables.fonts.value(number).family);
        out.raw(QByteArrayLiteral(";}"));
    }
    out.endGroup();
    return out.rtf();
}

QByteArray RtfWriter::colorTable() const
{
    if (m_tables.colors.size() < 2)
        return {};
    QByteArray rtf = QByteArrayLiteral("{\\colortbl;");
    for (int number = 1; number < m_tables.colors.size(); ++number) {
        const QColor color = m_tables.colors.at(number);
        rtf += "\\red" + QByteArray::number(color.red()) + "\\green"
            + QByteArray::number(color.green()) + "\\blue" + QByteArray::number(color.blue()) + ';';
    }
    return rtf + '}';
}

QByteArray RtfWriter::listTable() const
{
    if (m_lists.isEmpty())
        return {};
    QByteArray lists = QByteArrayLiteral("{\\*\\listtable");
    QByteArray overrides = QByteArrayLiteral("{\\*\\listoverridetable");
    for (int i = 0; i < m_lists.size(); ++i) {
        const QByteArray number = QByteArray::number(i + 1);
        const QTextListFormat format = m_lists.at(i)->format();
        lists += "{\\list\\listtemplateid" + number;
        // A level is found by its place, so those above it are there too.
        for (int level = 0; level < qBound(1, format.indent(), RtfLists::levels); ++level)
            lists += RtfLists::levelRtf(format, level);
        lists += "\\listid" + number + '}';
        overrides += "{\\listoverride\\listid" + number + "\\listoverridecount0\\ls" + number + '}';
    }
    return lists + '}' + overrides + '}';
}
