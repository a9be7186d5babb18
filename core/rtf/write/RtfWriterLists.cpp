// SPDX-License-Identifier: MIT
// The part of the writer that makes the list table.
#include <core/MVRTextFormat.h>
#include <core/rtf/model/RtfLists.h>
#include <core/rtf/write/RtfOutput.h>
#include <core/rtf/write/RtfWriter.h>

#include <QTextListFormat>

#include <utility>

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

constexpr int maxAffixLength = 100;

QString numberSuffix(const QTextListFormat &format)
{
    return format.hasProperty(QTextFormat::ListNumberSuffix)
        ? format.numberSuffix().left(maxAffixLength)
        : QStringLiteral(".");
}

// What stands around a number, as a pattern of ListLabelProperty.
QString labelPattern(const QTextListFormat &format, int level)
{
    QString prefix = format.numberPrefix().left(maxAffixLength);
    QString suffix = numberSuffix(format);
    for (QString *affix : {&prefix, &suffix})
        affix->replace(QLatin1Char('%'), QLatin1String("%%"));
    return prefix + QLatin1Char('%') + QString::number(level + 1) + suffix;
}

// A number's place stands as the number of its level, counted from the length on.
QByteArray numberText(const QString &pattern)
{
    RtfOutput label;
    QByteArray places;
    QString literal;
    int length = 0;
    for (int at = 0; at < pattern.size() && length < 2 * maxAffixLength; ++at, ++length) {
        const bool isCode = pattern.at(at) == QLatin1Char('%') && at + 1 < pattern.size();
        if (isCode)
            ++at;
        const int level = pattern.at(at).unicode() - '1';
        if (isCode && level >= 0 && level < RtfLists::levels) {
            label.text(std::exchange(literal, QString()));
            label.raw(hexByte(level));
            places += hexByte(length + 1);
        } else {
            literal += pattern.at(at);
        }
    }
    label.text(literal);
    return hexByte(length) + label.rtf() + ";}{\\levelnumbers" + places;
}

// The group that describes a level, from 0, as one of a list that looks like the format.
QByteArray levelRtf(const QTextListFormat &format, int level)
{
    const bool isNumber = format.style() <= QTextListFormat::ListDecimal;
    const bool isOwnLevel = level + 1 >= format.indent();
    const int indent = (level + 1) * 720;
    const QVariant code = format.property(MVRTextFormat::ListNumberFormatProperty);
    const QVariant start = format.property(MVRTextFormat::ListStartProperty);
    QString label = format.stringProperty(MVRTextFormat::ListLabelProperty);
    if (label.isEmpty() || !isOwnLevel)
        label = labelPattern(format, level);
    return "{\\listlevel\\levelnfc"
        + QByteArray::number(code.isValid() ? code.toInt() : RtfLists::numberFormat(format.style()))
        + "\\leveljc0\\levelfollow0\\levelstartat"
        + QByteArray::number(start.isValid() && isOwnLevel ? start.toInt() : 1) + "{\\leveltext"
        + (isNumber ? numberText(label) : bulletText(format.style())) + ";}\\fi-360\\li"
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
