// SPDX-License-Identifier: MIT
#include <finaldraft/MVRFinalDraft.h>

#include <core/MVRDomDoc.h>
#include <core/MVRToolkit.h>

#include <QBrush>
#include <QFont>
#include <QFontInfo>

namespace MVRFinalDraft {

namespace {

// Larger than any word processor sets; a size beyond is a fault of the file.
constexpr double maxPointSize = 1638.0;

}

TextAttr::TextAttr() = default;

QTextCharFormat TextAttr::toCharFormat() const
{
    QTextCharFormat format;
    format.setForeground(color.isValid() ? color : QColor(Qt::black));
    if (background == Qt::white)
        format.clearBackground();
    else
        format.setBackground(background);

    QFont textFont = format.font();
    if (!font.isEmpty())
        textFont = QFont(font, -1, -1, false);
    textFont.setPointSizeF(size);
    textFont.setStrikeOut(style.testFlag(Strikeout));
    textFont.setWeight(style.testFlag(Bold) ? QFont::Bold : QFont::Normal);
    textFont.setStyle(style.testFlag(Italic) ? QFont::StyleItalic : QFont::StyleNormal);
    textFont.setUnderline(bool(style & (Underline | WordUnderline | DottedUnderline)));
    format.setFont(textFont);
    return format;
}

void TextAttr::fromCharFormat(const QTextCharFormat &format, const QColor &defaultBackground)
{
    color = format.foreground().color();
    background = format.background().color();
    if (defaultBackground.isValid()
        && (!background.isValid() || background == Qt::black || background == color))
        background = defaultBackground;
    if (color == background) {
        background = Qt::white;
        color = Qt::black;
    }

    const QFont textFont = format.font();
    font = MVRToolkit::rawFontName(textFont);
    // A font given in pixels has no point size of its own.
    size = textFont.pointSizeF() > 0 ? textFont.pointSizeF() : QFontInfo(textFont).pointSizeF();
    style.setFlag(Strikeout, style.testFlag(Strikeout) || textFont.strikeOut());
    style.setFlag(Bold, style.testFlag(Bold) || textFont.weight() > QFont::Normal);
    style.setFlag(Italic, style.testFlag(Italic) || textFont.style() != QFont::StyleNormal);
    style.setFlag(Underline, style.testFlag(Underline) || textFont.underline());
}

bool TextAttr::fromDomElement(const QDomElement &element)
{
    int adornment = 0;
    MVRDomDoc::getAttr(QStringLiteral("AdornmentStyle"), &adornment, element);
    QString colorText;
    MVRDomDoc::getAttr(QStringLiteral("Color"), &colorText, element);
    QString backgroundText;
    MVRDomDoc::getAttr(QStringLiteral("Background"), &backgroundText, element);
    MVRDomDoc::getAttr(QStringLiteral("Font"), &font, element);
    QString styleText;
    MVRDomDoc::getAttr(QStringLiteral("Style"), &styleText, element);
    double points = 0;
    if (MVRDomDoc::getAttr(QStringLiteral("Size"), &points, element) && points > 0
        && points <= maxPointSize)
        size = points;
    MVRDomDoc::getAttr(QStringLiteral("RevisionID"), &revisionId, element);

    if (!colorText.isEmpty())
        color = toColor(colorText, Qt::black);
    if (!backgroundText.isEmpty())
        background = toColor(backgroundText, Qt::white);
    if (!styleText.isEmpty())
        style = toFontFlags(styleText);
    if (adornment <= 0) // files mark a run with -1; what other numbers mean is not known
        adornmentStyle = adornment == -1;
    return true;
}

bool TextAttr::toDomDoc(MVRDomDoc *dom, const QString &text, const QString &tagName)
{
    if (!dom || !dom->create(tagName))
        return false;
    const QString here;
    dom->setAttr(QStringLiteral("AdornmentStyle"), adornmentStyle ? "1" : "0", here, true);
    dom->setAttr(QStringLiteral("Color"), toString(color), here, true);
    dom->setAttr(QStringLiteral("Background"), toString(background), here, true);
    dom->setAttr(QStringLiteral("Font"), font, here, true);
    dom->setAttr(QStringLiteral("Style"), toString(style), here, true);
    dom->setAttr(QStringLiteral("Size"), size, here, true);
    dom->setAttr(QStringLiteral("RevisionID"), revisionId, here, true);
    if (!text.isEmpty())
        dom->set(QStringLiteral("."), text);
    dom->cdUp(1);
    return true;
}

}
