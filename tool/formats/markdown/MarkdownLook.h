// SPDX-License-Identifier: MIT
#pragma once

#include <core/MVRToolkit.h>

#include <QFont>
#include <QString>
#include <QTextBlockFormat>
#include <QTextCharFormat>

/*! How what Markdown names is shown, and told again, in a document. Lengths are points. */
namespace MarkdownLook {

constexpr double paragraphSpace = 6.0;
constexpr double quoteIndent = 30.0;
constexpr int maxHeadingLevels = 6;
constexpr int maxListItems = 500; /*!< a longer list may go on in another one */

/*! Formats of characters that both ways know, as bits. */
enum Style {
    Bold = 1,
    Italic = 2,
    Strike = 4,
    Underline = 8,
    Superscript = 16,
    Subscript = 32,
    Code = 64
};
constexpr int styleCount = 7;

inline void setStyle(QTextCharFormat *format, Style style)
{
    switch (style) {
    case Bold:
        format->setFontWeight(QFont::Bold);
        break;
    case Italic:
        format->setFontItalic(true);
        break;
    case Strike:
        format->setFontStrikeOut(true);
        break;
    case Underline:
        format->setFontUnderline(true);
        break;
    case Superscript:
        format->setVerticalAlignment(QTextCharFormat::AlignSuperScript);
        break;
    case Subscript:
        format->setVerticalAlignment(QTextCharFormat::AlignSubScript);
        break;
    case Code:
        MVRToolkit::setFontFamily(format, QStringLiteral("Courier New"));
        format->setFontFixedPitch(true);
        break;
    }
}

inline int stylesOf(const QTextCharFormat &format)
{
    const auto place = format.verticalAlignment();
    const bool isBold = format.hasProperty(QTextFormat::FontWeight)
        && format.fontWeight() > (QFont::Normal + QFont::Bold) / 2;
    return (isBold ? Bold : 0) | (format.fontItalic() ? Italic : 0)
        | (format.fontStrikeOut() ? Strike : 0) | (format.fontUnderline() ? Underline : 0)
        | (place == QTextCharFormat::AlignSuperScript ? Superscript : 0)
        | (place == QTextCharFormat::AlignSubScript ? Subscript : 0)
        | (format.fontFixedPitch() ? Code : 0);
}

/*! Headings are bold and of the sizes that web pages give them. */
inline QTextCharFormat headingFormat(int level)
{
    QTextCharFormat format;
    format.setFontWeight(QFont::Bold);
    format.setProperty(QTextFormat::FontSizeAdjustment, 4 - level);
    return format;
}

}
