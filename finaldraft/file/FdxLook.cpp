// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxLook_p.h>

#include <finaldraft/MVRFinalDraftFile.h>

#include <core/MVRTextFormat.h>

#include <QFont>
#include <QVector>

#include <cmath>

using MVRFinalDraft::ParagraphAttr;

namespace {

constexpr double maxPointSize = 1638.0;
constexpr double maxInches = 1000.0;
constexpr double maxSpace = 1e6;
constexpr double maxSpacing = 100.0;
constexpr double pointsPerInch = 72.0;
constexpr int underlines
    = MVRFinalDraft::Underline | MVRFinalDraft::WordUnderline | MVRFinalDraft::DottedUnderline;

struct StyleWord
{
    const char *word;
    int flag;
};

// In the order in which files have them.
constexpr StyleWord styleWords[] = {
    {"Bold", MVRFinalDraft::Bold},
    {"Italic", MVRFinalDraft::Italic},
    {"Underline", MVRFinalDraft::Underline},
    {"WordUnderline", MVRFinalDraft::WordUnderline},
    {"DottedUnderline", MVRFinalDraft::DottedUnderline},
    {"AllCaps", MVRFinalDraft::AllCaps},
    {"SmallCaps", fdxSmallCaps},
    {"Strikeout", MVRFinalDraft::Strikeout},
    {"HiddenText", fdxHiddenText},
};

int styleFlags(const QByteArray &text)
{
    int flags = 0;
    const QList<QByteArray> words = text.split('+');
    for (const QByteArray &word : words) {
        for (const StyleWord &row : styleWords) {
            if (word == row.word)
                flags |= row.flag;
        }
    }
    return flags;
}

double number(const QByteArray &text, double limit, double fallback)
{
    bool isNumber = false;
    const double value = text.trimmed().toDouble(&isNumber);
    return isNumber && std::abs(value) <= limit ? value : fallback;
}

void setFlag(int *flags, int flag, bool on)
{
    *flags = on ? *flags | flag : *flags & ~flag;
}

QByteArray inches(double value)
{
    return QByteArray::number(value, 'f', 2);
}

QByteArray spacingText(double spacing)
{
    return spacing == std::floor(spacing) ? QByteArray::number(int(spacing))
                                          : QByteArray::number(spacing, 'f', 1);
}

bool isNear(double a, double b)
{
    return std::abs(a - b) < 0.006; // files give two decimals of an inch
}

}

QColor fdxColor(const QByteArray &digits, const QColor &fallback)
{
    bool isNumber = false;
    const quint64 channels = digits.mid(1).toULongLong(&isNumber, 16);
    if (!isNumber || digits.size() != 13 || digits[0] != '#')
        return fallback;
    return QColor(int(channels >> 40) & 0xff, int(channels >> 24) & 0xff,
                  int(channels >> 8) & 0xff);
}

FdxLook FdxLook::with(const FdxElement &element) const
{
    FdxLook look = *this;
    for (const FdxSourceAttribute &attribute : element.attributes()) {
        const QByteArray value = attribute.value();
        if (attribute.isNamed("Style"))
            look.style = styleFlags(value);
        else if (attribute.isNamed("Font") && !value.isEmpty())
            look.font = QString::fromUtf8(value);
        else if (attribute.isNamed("Size"))
            look.size = number(value, maxPointSize, size);
        else if (attribute.isNamed("Color"))
            look.color = fdxColor(value, color);
        else if (attribute.isNamed("Background"))
            look.background = fdxColor(value, background);
    }
    if (look.size <= 0)
        look.size = size;
    return look;
}

FdxLook FdxLook::with(const QTextCharFormat &format) const
{
    FdxLook look = *this;
    const auto has = [&format](int property) { return format.hasProperty(property); };
    if (has(QTextFormat::FontFamily) || has(QTextFormat::FontFamilies))
        look.font = format.font().family();
    if (has(QTextFormat::FontPointSize) && format.fontPointSize() > 0)
        look.size = format.fontPointSize();
    if (has(QTextFormat::FontWeight))
        setFlag(&look.style, MVRFinalDraft::Bold, format.fontWeight() > QFont::Normal);
    if (has(QTextFormat::FontItalic))
        setFlag(&look.style, MVRFinalDraft::Italic, format.fontItalic());
    if (has(QTextFormat::FontStrikeOut))
        setFlag(&look.style, MVRFinalDraft::Strikeout, format.fontStrikeOut());
    if (has(QTextFormat::TextUnderlineStyle) || has(QTextFormat::FontUnderline)) {
        setFlag(&look.style, underlines, false);
        const bool isWords = format.boolProperty(MVRFinalDraftFile::WordUnderlineProperty);
        if (format.underlineStyle() == QTextCharFormat::DotLine)
            look.style |= MVRFinalDraft::DottedUnderline;
        else if (format.fontUnderline())
            look.style |= isWords ? MVRFinalDraft::WordUnderline : MVRFinalDraft::Underline;
    }
    if (has(QTextFormat::FontCapitalization)) {
        const QFont::Capitalization capitals = format.fontCapitalization();
        setFlag(&look.style, MVRFinalDraft::AllCaps, capitals == QFont::AllUppercase);
        setFlag(&look.style, fdxSmallCaps, capitals == QFont::SmallCaps);
    }
    if (has(MVRFinalDraftFile::HiddenTextProperty))
        setFlag(&look.style, fdxHiddenText,
                format.boolProperty(MVRFinalDraftFile::HiddenTextProperty));
    if (has(QTextFormat::ForegroundBrush))
        look.color = format.foreground().color();
    if (has(QTextFormat::BackgroundBrush))
        look.background = format.background().style() == Qt::NoBrush ? QColor(Qt::white)
                                                                     : format.background().color();
    return look;
}

QTextCharFormat FdxLook::toCharFormat(const FdxLook &base) const
{
    QTextCharFormat format;
    QFont face(font);
    face.setPointSizeF(size);
    format.setFont(face, QTextCharFormat::FontPropertiesSpecifiedOnly);
    // All is said, so that text keeps its look among other text.
    format.setFontWeight(style & MVRFinalDraft::Bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(style & MVRFinalDraft::Italic);
    format.setFontStrikeOut(style & MVRFinalDraft::Strikeout);
    format.setUnderlineStyle(style & MVRFinalDraft::DottedUnderline ? QTextCharFormat::DotLine
                                 : style & underlines ? QTextCharFormat::SingleUnderline
                                                      : QTextCharFormat::NoUnderline);
    if (style & MVRFinalDraft::WordUnderline)
        format.setProperty(MVRFinalDraftFile::WordUnderlineProperty, true);
    format.setFontCapitalization(style & fdxSmallCaps                 ? QFont::SmallCaps
                                     : style & MVRFinalDraft::AllCaps ? QFont::AllUppercase
                                                                      : QFont::MixedCase);
    if ((style | base.style) & fdxHiddenText)
        format.setProperty(MVRFinalDraftFile::HiddenTextProperty, bool(style & fdxHiddenText));
    format.setForeground(color);
    if (background != Qt::white || base.background != Qt::white)
        format.setBackground(background);
    return format;
}

QByteArray FdxLook::styleText() const
{
    QByteArray text;
    for (const StyleWord &row : styleWords) {
        if (style & row.flag)
            text += (text.isEmpty() ? "" : "+") + QByteArray(row.word);
    }
    return text;
}

bool FdxLook::hasFontOf(const FdxLook &other) const
{
    return size == other.size && font == other.font && color == other.color
        && background == other.background;
}

bool fdxIsSameShape(const ParagraphAttr &a, const ParagraphAttr &b)
{
    return fdxShapeAttributes(a, b, 0.0).isEmpty();
}

void fdxReadShape(const FdxElement &element, double margin, ParagraphAttr *shape)
{
    const double marginInches = margin / pointsPerInch;
    for (const FdxSourceAttribute &attribute : element.attributes()) {
        const QByteArray value = attribute.value();
        const auto isNamed = [&attribute](const char *name) { return attribute.isNamed(name); };
        if (isNamed("LeftIndent"))
            shape->leftIndent
                = number(value, maxInches, shape->leftIndent + marginInches) - marginInches;
        else if (isNamed("RightIndent"))
            shape->rightIndent
                = number(value, maxInches, shape->rightIndent + marginInches) - marginInches;
        else if (isNamed("FirstIndent"))
            shape->firstIndent = number(value, maxInches, shape->firstIndent);
        else if (isNamed("SpaceBefore"))
            shape->spaceBefore = int(number(value, maxSpace, shape->spaceBefore));
        else if (isNamed("Spacing"))
            shape->spacing = number(value, maxSpacing, shape->spacing);
        else if (isNamed("Alignment"))
            shape->alignment = MVRFinalDraft::toAlignment(QString::fromUtf8(value), Qt::AlignLeft);
        else if (isNamed("StartsNewPage"))
            shape->startsNewPage = value == "Yes";
    }
}

ParagraphAttr fdxShape(const QTextBlockFormat &format, const ParagraphAttr &base)
{
    ParagraphAttr said = base;
    said.fromBlockFormat(format, 0.0);
    ParagraphAttr shape = base;
    const auto has = [&format](int property) { return format.hasProperty(property); };
    const bool hasLeft = has(MVRTextFormat::BlockLeftIndentProperty);
    if (has(QTextFormat::BlockAlignment))
        shape.alignment = said.alignment;
    if (has(MVRTextFormat::LineSpacingProperty) || has(QTextFormat::LineHeight))
        shape.spacing = said.spacing;
    if (hasLeft)
        shape.leftIndent = said.leftIndent;
    if (has(MVRTextFormat::BlockRightIndentProperty))
        shape.rightIndent = said.rightIndent;
    if (has(QTextFormat::TextIndent))
        shape.firstIndent = format.textIndent() / pointsPerInch - shape.leftIndent;
    if (has(QTextFormat::BlockTopMargin))
        shape.spaceBefore = said.spaceBefore;
    // A paragraph that the file has says of its page break that there is none by saying nothing.
    if (has(QTextFormat::PageBreakPolicy) || has(MVRFinalDraftFile::SourceParagraphProperty))
        shape.startsNewPage = said.startsNewPage;
    return shape;
}

QVector<FdxAttribute> fdxShapeAttributes(const ParagraphAttr &shape, const ParagraphAttr &base,
                                         double margin)
{
    const double marginInches = margin / pointsPerInch;
    QVector<FdxAttribute> attributes;
    if (shape.alignment != base.alignment)
        attributes.append({"Alignment", MVRFinalDraft::toString(shape.alignment).toLatin1()});
    if (!isNear(shape.firstIndent, base.firstIndent))
        attributes.append({"FirstIndent", inches(shape.firstIndent)});
    if (!isNear(shape.leftIndent, base.leftIndent))
        attributes.append({"LeftIndent", inches(shape.leftIndent + marginInches)});
    if (!isNear(shape.rightIndent, base.rightIndent))
        attributes.append({"RightIndent", inches(shape.rightIndent + marginInches)});
    if (shape.spaceBefore != base.spaceBefore)
        attributes.append({"SpaceBefore", QByteArray::number(shape.spaceBefore)});
    if (!isNear(shape.spacing, base.spacing))
        attributes.append({"Spacing", spacingText(shape.spacing)});
    if (shape.startsNewPage != base.startsNewPage)
        attributes.append({"StartsNewPage", QByteArray(shape.startsNewPage ? "Yes" : "No")});
    return attributes;
}

bool fdxIsShapeAttribute(const FdxSourceAttribute &attribute)
{
    static constexpr const char *names[]
        = {"Alignment",   "FirstIndent", "LeftIndent",   "RightIndent",
           "SpaceBefore", "Spacing",     "StartsNewPage"};
    return std::any_of(std::begin(names), std::end(names),
                       [&attribute](const char *name) { return attribute.isNamed(name); });
}
