// SPDX-License-Identifier: MIT
#include <finaldraft/MVRFinalDraft.h>

#include <core/MVRDomDoc.h>
#include <core/MVRTextFormat.h>
#include <core/MVRUnit.h>

namespace MVRFinalDraft {

namespace {

// Keeps a margin of any size within an int.
constexpr double maxSpace = 1e6;

double toInches(double points)
{
    return MVRUnit::toUnit(MVRUnit::Points, MVRUnit::Inches, points);
}

double toPoints(double inches)
{
    return MVRUnit::toUnit(MVRUnit::Inches, MVRUnit::Points, inches);
}

Qt::Alignment blockAlignment(Qt::Alignment alignment)
{
    if (alignment & Qt::AlignLeft)
        return Qt::AlignLeft;
    if (alignment & Qt::AlignRight)
        return Qt::AlignRight;
    if (alignment & Qt::AlignCenter)
        return Qt::AlignCenter;
    return alignment & Qt::AlignJustify ? Qt::AlignJustify : Qt::AlignLeft;
}

QString spacingText(double spacing)
{
    if (spacing == 1.0)
        return QStringLiteral("1");
    if (spacing == 2.0)
        return QStringLiteral("2");
    return QString::number(spacing, 'f', 1);
}

QString indentText(double inches)
{
    return QString::number(inches, 'f', 2);
}

// No page has lengths beyond these; layouts overflow on such numbers.
constexpr double maxInches = 1000.0;
constexpr double maxSpacing = 100.0;

bool readNumber(const QDomElement &element, const QString &name, double limit, double *number)
{
    double value = 0.0;
    if (!MVRDomDoc::getAttr(name, &value, element) || qAbs(value) > limit)
        return false;
    *number = value;
    return true;
}

void readIndent(const QDomElement &element, const QString &name, double leftMargin, double *indent)
{
    if (readNumber(element, name, maxInches, indent))
        *indent -= toInches(leftMargin);
}

/*! Final Draft's own paragraph settings of one type; indents in inches. */
struct ParagraphDefaults
{
    ElementType type;
    double firstIndent;
    double leftIndent;
    double rightIndent;
    int spaceBefore;
    bool allCaps;
};

constexpr ParagraphDefaults paragraphDefaults[] = {
    {General, 0.0, 0.5, 6.5, 0, false},         {SceneHeading, 0.0, 0.5, 6.5, 22, true},
    {Action, 0.0, 0.5, 6.5, 11, false},         {Character, 0.0, 2.5, 6.25, 11, true},
    {Parenthetical, -0.1, 2.0, 4.5, 11, false}, {Dialogue, 0.0, 1.5, 5.0, 0, false},
    {Transition, 0.0, 4.5, 6.1, 11, true},      {Shot, 0.0, 0.5, 6.5, 22, true},
    {CastList, 0.0, 0.5, 6.5, 0, true},
};

}

ParagraphAttr::ParagraphAttr() = default;

QTextBlockFormat ParagraphAttr::toBlockFormat() const
{
    QTextBlockFormat format;
    format.setAlignment(blockAlignment(alignment));
    format.setProperty(MVRTextFormat::LineSpacingProperty, spacing);
    format.setTextIndent(toPoints(leftIndent + firstIndent));
    format.setProperty(MVRTextFormat::BlockLeftIndentProperty, toPoints(leftIndent));
    format.setProperty(MVRTextFormat::BlockRightIndentProperty, toPoints(rightIndent));
    format.setTopMargin(spaceBefore);
    if (startsNewPage)
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    return format;
}

void ParagraphAttr::fromBlockFormat(const QTextBlockFormat &format, double leftMargin)
{
    const int alignmentValue = format.intProperty(QTextFormat::BlockAlignment);
    alignment = alignmentValue == 0 ? Qt::Alignment(Qt::AlignLeft) : Qt::Alignment(alignmentValue);
    MVRTextFormat::spacingType(format, &spacing);
    spaceBefore = int(qBound(-maxSpace, format.topMargin(), maxSpace));
    const double left = format.doubleProperty(MVRTextFormat::BlockLeftIndentProperty);
    const double right = format.doubleProperty(MVRTextFormat::BlockRightIndentProperty);
    rightIndent = toInches(right + leftMargin);
    leftIndent = toInches(left + leftMargin);
    firstIndent = toInches(format.textIndent() - left);
    startsNewPage = format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore;
}

bool ParagraphAttr::fromDomElement(const QDomElement &element, double leftMargin)
{
    readIndent(element, QStringLiteral("LeftIndent"), leftMargin, &leftIndent);
    readIndent(element, QStringLiteral("RightIndent"), leftMargin, &rightIndent);
    readNumber(element, QStringLiteral("FirstIndent"), maxInches, &firstIndent);
    QString text;
    if (MVRDomDoc::getAttr(QStringLiteral("Alignment"), &text, element))
        alignment = toAlignment(text, Qt::AlignLeft);
    if (MVRDomDoc::getAttr(QStringLiteral("Leading"), &text, element))
        leading = toLeadingParStyle(text);
    int space = 0;
    if (MVRDomDoc::getAttr(QStringLiteral("SpaceBefore"), &space, element) && space >= -maxSpace
        && space <= maxSpace) // there is no qAbs() of the least int
        spaceBefore = space;
    readNumber(element, QStringLiteral("Spacing"), maxSpacing, &spacing);
    MVRDomDoc::getAttr(QStringLiteral("StartsNewPage"), &startsNewPage, element);
    return true;
}

bool ParagraphAttr::toDomDoc(MVRDomDoc *dom, const QString &tagName)
{
    if (!dom || !dom->create(tagName))
        return false;
    const QString here;
    dom->setAttr(QStringLiteral("Alignment"), toString(alignment), here, true);
    dom->setAttr(QStringLiteral("Spacing"), spacingText(spacing), here, true);
    dom->setAttr(QStringLiteral("Leading"), toString(leading), here, true);
    dom->setAttr(QStringLiteral("FirstIndent"), indentText(firstIndent), here, true);
    dom->setAttr(QStringLiteral("LeftIndent"), indentText(leftIndent), here, true);
    dom->setAttr(QStringLiteral("RightIndent"), indentText(rightIndent), here, true);
    dom->setAttr(QStringLiteral("SpaceBefore"), spaceBefore, here, true);
    dom->setAttr(QStringLiteral("StartsNewPage"), startsNewPage ? "Yes" : "No", here, true);
    if (style)
        dom->setAttr(QStringLiteral("Style"), toString(style), here, true);
    dom->cdUp(1);
    return true;
}

void ParagraphAttr::applyFdxAppDefaults(ElementType type)
{
    for (const ParagraphDefaults &row : paragraphDefaults) {
        if (row.type != type)
            continue;
        firstIndent = row.firstIndent;
        leftIndent = row.leftIndent;
        rightIndent = row.rightIndent;
        spaceBefore = row.spaceBefore;
        spacing = 1.0;
        alignment = Qt::AlignLeft;
        leading = Regular;
        style = row.allCaps ? QFlags<FontStyleFlag>(AllCaps) : QFlags<FontStyleFlag>();
        return;
    }
}

}
