// SPDX-License-Identifier: MIT
// The part of the writer that makes the list table.
#include <core/rtf/model/RtfLists.h>
#include <core/rtf/write/RtfOutput.h>
#include <core/rtf/write/RtfWriter.h>

#include <QTextListFormat>

namespace {

QByteArray hexByte(int byte)
{
    return "\\'" + QByteArray::number(byte, 16).rightJustified(2, '0');
}

QByteArray bulletText(QTextListFormat::Style style)
{
    if (style == QTextListFormat::ListStyleUndefined)
        return hexByte(0);
    const char16_t symbol = style == QTextListFormat::ListSquare ? 0x25aa
        : style == QTextListFormat::ListCircle                   ? 0x25e6
                                                                 : 0x2022;
    RtfOutput out;
    out.raw(hexByte(1));
    out.text(QString(QChar(symbol)));
    return out.rtf();
}

// The number's place stands as the number of its level, counted from the length on.
QByteArray numberText(const QTextListFormat &format, int level)
{
    constexpr int maxAffixLength = 100;
    const QString prefix = format.numberPrefix().left(maxAffixLength);
    const QString suffix = format.hasProperty(QTextFormat::ListNumberSuffix)
        ? format.numberSuffix().left(maxAffixLength)
        : QStringLiteral(".");
    RtfOutput out;
    out.raw(hexByte(prefix.size() + 1 + suffix.size()));
    out.text(prefix);
    out.raw(hexByte(level));
    out.text(suffix);
    out.raw(";}{\\levelnumbers" + hexByte(prefix.size() + 1));
    return out.rtf();
}

// The group that describes a level, from 0, as one of a list that looks like the format.
QByteArray levelRtf(const QTextListFormat &format, int level)
{
    const bool isNumber = format.style() <= QTextListFormat::ListDecimal;
    const int indent = (level + 1) * 720;
    return "{\\listlevel\\levelnfc" + QByteArray::number(RtfLists::numberFormat(format.style()))
        + "\\leveljc0\\levelfollow0\\levelstartat1{\\leveltext"
        + (isNumber ? numberText(format, level) : bulletText(format.style())) + ";}\\fi-360\\li"
        + QByteArray::number(indent) + '}';
}

} // namespace

QByteArray RtfWriter::listTable()
{
    if (m_lists.isEmpty())
        return {};
    QByteArray lists = QByteArrayLiteral("{\\*\\listtable");
    QByteArray overrides = QByteArrayLiteral("{\\*\\listoverridetable");
    for (int i = 0; i < m_lists.size(); ++i) {
        const QByteArray number = QByteArray::number(i + 1);
        const QTextListFormat format = m_lists.at(i);
        lists += "{\\list";
        appendExact("\\mvrl", format, &lists);
        lists += "\\listtemplateid" + number;
        // A level is found by its place, so those above it are there too.
        for (int level = 0; level < qBound(1, format.indent(), RtfLists::levels); ++level)
            lists += levelRtf(format, level);
        lists += "\\listid" + number + '}';
        overrides += "{\\listoverride\\listid" + number + "\\listoverridecount0\\ls" + number + '}';
    }
    return lists + '}' + overrides + '}';
}
