// SPDX-License-Identifier: MIT
#include <finaldraft/MVRFinalDraft.h>

#include <QStringList>

#include <algorithm>
#include <iterator>

namespace MVRFinalDraft {

namespace {

template <typename Value> struct Keyword
{
    Value value;
    const char *parsed;
    const char *written;
};

constexpr Keyword<ElementType> elementTypes[] = {
    {General, "General", "General"},
    {SceneHeading, "Scene Heading", "Scene Heading"},
    {Action, "Action", "Action"},
    {Character, "Character", "Character"},
    {Parenthetical, "Parenthetical", "Parenthetical"},
    {Dialogue, "Dialogue", "Dialogue"},
    {Transition, "Transition", "Transition"},
    {Shot, "Shot", "Shot"},
    {CastList, "Cast List", "CastList"}, // the two forms differ, and stay so
};

constexpr Keyword<LeadingParStyle> leadings[] = {
    {VeryTight, "VeryTight", "VeryTight"}, {Tight, "Tight", "Tight"},
    {Regular, "Regular", "Regular"},       {Loose, "Loose", "Loose"},
    {Normal, "Normal", "Regular"},
};

constexpr Keyword<FontStyleFlag> fontStyles[] = {
    {Bold, "Bold", "Bold"},
    {Italic, "Italic", "Italic"},
    {Underline, "Underline", "Underline"},
    {WordUnderline, "WordUnderline", "WordUnderline"},
    {DottedUnderline, "DottedUnderline", "DottedUnderline"},
    {AllCaps, "AllCaps", "AllCaps"},
    {Strikeout, "Strikeout", "Strikeout"},
};

constexpr Keyword<Qt::AlignmentFlag> alignments[] = {
    {Qt::AlignLeft, "Left", "Left"},
    {Qt::AlignRight, "Right", "Right"},
    {Qt::AlignCenter, "Center", "Center"},
    {Qt::AlignJustify, "Full", "Full"},
};

template <typename Value, size_t Size>
const Keyword<Value> *findKeyword(const Keyword<Value> (&rows)[Size], const QString &text)
{
    const auto row = std::find_if(std::begin(rows), std::end(rows), [&](const auto &candidate) {
        return text == QLatin1String(candidate.parsed);
    });
    return row == std::end(rows) ? nullptr : row;
}

template <typename Value, size_t Size>
QString keywordOf(const Keyword<Value> (&rows)[Size], Value value)
{
    const auto row = std::find_if(std::begin(rows), std::end(rows),
                                  [&](const auto &candidate) { return candidate.value == value; });
    return row == std::end(rows) ? QString() : QString::fromLatin1(row->written);
}

}

ElementType toElementType(const QString &keyword)
{
    const auto *row = findKeyword(elementTypes, keyword);
    return row ? row->value : NoElement;
}

QString toString(ElementType type)
{
    return keywordOf(elementTypes, type);
}

LeadingParStyle toLeadingParStyle(const QString &keyword)
{
    const auto *row = findKeyword(leadings, keyword);
    return row ? row->value : NoLeading;
}

QString toString(LeadingParStyle leading)
{
    return keywordOf(leadings, leading);
}

QFlags<FontStyleFlag> toFontFlags(const QString &keywords)
{
    QFlags<FontStyleFlag> style;
    const QStringList parts = keywords.split(QLatin1Char('+'));
    for (const QString &part : parts) {
        if (const auto *row = findKeyword(fontStyles, part))
            style |= row->value;
    }
    return style;
}

QString toString(QFlags<FontStyleFlag> style)
{
    QString keywords = QLatin1String("");
    for (const auto &row : fontStyles) {
        if (!style.testFlag(row.value))
            continue;
        if (!keywords.isEmpty())
            keywords += QLatin1Char('+');
        keywords += QLatin1String(row.written);
    }
    return keywords;
}

QFlags<Qt::AlignmentFlag> toAlignment(const QString &keyword, QFlags<Qt::AlignmentFlag> fallback)
{
    const auto *row = findKeyword(alignments, keyword);
    return row ? QFlags<Qt::AlignmentFlag>(row->value) : fallback;
}

QString toString(QFlags<Qt::AlignmentFlag> alignment)
{
    const auto value = static_cast<Qt::AlignmentFlag>(int(alignment));
    const QString keyword = keywordOf(alignments, value);
    return keyword.isEmpty() ? QStringLiteral("Left") : keyword;
}

QColor toColor(const QString &text, const QColor &fallback)
{
    if (text.isEmpty())
        return fallback;
    int channels[3];
    for (int i = 0; i < 3; ++i) {
        bool isNumber = false;
        channels[i] = text.mid(1 + 4 * i, 4).toInt(&isNumber, 16) & 0xff;
        if (!isNumber)
            return fallback;
    }
    return QColor(channels[0], channels[1], channels[2]);
}

QString toString(const QColor &color)
{
    constexpr char digits[] = "0123456789ABCDEF";
    QString text(13, QLatin1Char('#'));
    QChar *out = text.data() + 1;
    for (const int channel : {color.red(), color.green(), color.blue()}) {
        for (int repeat = 0; repeat < 2; ++repeat) { // 16 bits: the byte twice
            *out++ = QLatin1Char(digits[channel >> 4]);
            *out++ = QLatin1Char(digits[channel & 0xf]);
        }
    }
    return text;
}

}
