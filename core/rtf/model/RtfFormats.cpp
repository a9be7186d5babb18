// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfFormats.h>

#include <core/MVRTextFormat.h>
#include <core/MVRToolkit.h>
#include <core/document/NoteFormat_p.h>
#include <core/document/PointSize_p.h>
#include <core/rtf/model/RtfExact.h>

#include <QBrush>
#include <QFont>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

constexpr double twipsPerPoint = 20;
constexpr double singleLine = 240; // \sl counts multiples of a line in 240ths
constexpr int listIndent = 720; // half an inch a level, as other programs indent lists
constexpr double indentWidth = 40; // QTextDocument's default step of QTextBlockFormat::indent()

int twips(double points)
{
    // A NaN fails both comparisons of a bound, so it is asked for first.
    constexpr double maxTwips = rtfMaxTwips;
    return std::isnan(points) ? 0 : qRound(qBound(-maxTwips, points * twipsPerPoint, maxTwips));
}

double points(int twipsValue)
{
    return twipsValue / twipsPerPoint;
}

void setLineHeight(const RtfParaProps &props, QTextBlockFormat *format)
{
    if (props.lineSpacing == 0)
        return;
    if (props.lineMultiple != 0) {
        if (props.lineSpacing != singleLine)
            format->setLineHeight(std::abs(props.lineSpacing / singleLine) * 100,
                                  QTextBlockFormat::ProportionalHeight);
    } else if (props.lineSpacing < 0) {
        format->setLineHeight(-points(props.lineSpacing), QTextBlockFormat::FixedHeight);
    } else {
        format->setLineHeight(points(props.lineSpacing), QTextBlockFormat::MinimumHeight);
    }
}

void readLineHeight(const QTextBlockFormat &format, RtfParaProps *props)
{
    double multiple = 0;
    const QVariant spacing = format.property(MVRTextFormat::LineSpacingProperty);
    if (spacing.userType() == QMetaType::Double) // an integer there is a heading's level
        multiple = spacing.toDouble();
    else if (format.lineHeightType() == QTextBlockFormat::ProportionalHeight)
        multiple = format.lineHeight() / 100;
    if (multiple > 0 && multiple < 100) {
        props->lineSpacing = qRound(multiple * singleLine);
        props->lineMultiple = 1;
    } else if (format.lineHeightType() == QTextBlockFormat::FixedHeight) {
        props->lineSpacing = -twips(std::abs(format.lineHeight()));
    } else if (format.lineHeightType() == QTextBlockFormat::MinimumHeight) {
        props->lineSpacing = twips(std::abs(format.lineHeight()));
    }
}

// Left and right edge measured from the left margin, and a first line that is not relative.
void readScriptIndents(const QTextBlockFormat &format, int textWidth, RtfParaProps *props)
{
    props->leftIndent = twips(format.doubleProperty(MVRTextFormat::BlockLeftIndentProperty));
    if (format.hasProperty(QTextFormat::TextIndent))
        props->firstIndent = twips(format.textIndent()) - props->leftIndent;
    if (format.hasProperty(MVRTextFormat::BlockRightIndentProperty))
        props->rightIndent
            = textWidth - twips(format.doubleProperty(MVRTextFormat::BlockRightIndentProperty));
}

int colorOf(const QTextFormat &format, int property, RtfResources *resources)
{
    const QVariant value = format.property(property);
    if (value.userType() == QMetaType::QColor)
        return value.value<QColor>().isValid() ? resources->colorNumber(value.value<QColor>()) : 0;
    const QBrush brush = value.value<QBrush>();
    return brush.style() == Qt::NoBrush ? 0 : resources->colorNumber(brush.color());
}

QString familyOf(const QTextCharFormat &format)
{
    return MVRToolkit::fontFamily(format);
}

// Tab stops as \tx can say them, each at a place of its own.
QList<QTextOption::Tab> inTwips(const QList<QTextOption::Tab> &stops)
{
    QList<QTextOption::Tab> known;
    for (QTextOption::Tab stop : stops) {
        stop.position = points(twips(stop.position));
        stop.delimiter = stop.type == QTextOption::DelimiterTab ? QLatin1Char('.') : QChar();
        RtfResources::addTab(&known, stop);
    }
    return known;
}

// What there is a word for; the rest goes out exactly.
int writable(int value, std::initializer_list<int> words)
{
    return std::find(words.begin(), words.end(), value) != words.end() ? value : 0;
}

// The anchor of a note goes with the note, which is not written here; the link that it covers is.
QTextCharFormat withoutNoteAnchor(QTextCharFormat format)
{
    const QString link = format.stringProperty(MVRTextFormat::CoveredLinkProperty);
    if (!link.isEmpty() && isNoteAnchor(format.anchorHref())) {
        format.setAnchorHref(link);
    } else if (format.boolProperty(MVRTextFormat::CommentLinkProperty)) {
        format.clearProperty(QTextFormat::AnchorHref);
        format.clearProperty(QTextFormat::IsAnchor);
    }
    return format;
}

} // namespace

namespace RtfFormats {

QTextCharFormat toCharFormat(const RtfCharProps &props, const RtfResources &resources)
{
    QTextCharFormat format;
    const QString family = resources.fonts.value(props.font).family;
    if (!family.isEmpty())
        MVRToolkit::setFontFamily(&format, family);
    if (props.size > 0)
        format.setFontPointSize(props.size / 2.0);
    if (props.bold)
        format.setFontWeight(QFont::Bold);
    if (props.italic)
        format.setFontItalic(true);
    if (props.underline)
        format.setUnderlineStyle(QTextCharFormat::UnderlineStyle(props.underline));
    if (props.underline && resources.color(props.underlineColor).isValid())
        format.setUnderlineColor(resources.color(props.underlineColor));
    if (props.strike)
        format.setFontStrikeOut(true);
    if (props.vertical)
        format.setVerticalAlignment(QTextCharFormat::VerticalAlignment(props.vertical));
    if (props.capitalization)
        format.setFontCapitalization(QFont::Capitalization(props.capitalization));
    if (props.spacing) {
        format.setFontLetterSpacingType(QFont::AbsoluteSpacing);
        format.setFontLetterSpacing(points(props.spacing));
    }
    if (resources.color(props.foreground).isValid())
        format.setForeground(resources.color(props.foreground));
    const QColor background = resources.color(props.highlight ? props.highlight : props.background);
    if (background.isValid())
        format.setBackground(background);
    if (props.link > 0) {
        format.setAnchor(true);
        format.setAnchorHref(resources.links.value(props.link));
    }
    if (props.field > 0)
        format.setProperty(MVRTextFormat::FieldProperty, resources.links.value(props.field));
    RtfExact::apply(resources.exact.value(props.exact), &format);
    return format;
}

QTextBlockFormat toBlockFormat(const RtfParaProps &props, const RtfResources &resources)
{
    QTextBlockFormat format;
    if (props.alignment)
        format.setAlignment(Qt::Alignment(props.alignment));
    // The list indents its items, and the number hangs in that indent.
    const bool isItem = props.list != 0;
    if (props.leftIndent && !isItem)
        format.setLeftMargin(points(props.leftIndent));
    if (props.rightIndent)
        format.setRightMargin(points(props.rightIndent));
    if (props.firstIndent && !isItem)
        format.setTextIndent(points(props.firstIndent));
    if (props.spaceBefore)
        format.setTopMargin(points(props.spaceBefore));
    if (props.spaceAfter)
        format.setBottomMargin(points(props.spaceAfter));
    setLineHeight(props, &format);
    if (props.pageBreakBefore)
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    if (props.keepTogether)
        format.setNonBreakableLines(true);
    if (props.rightToLeft)
        format.setLayoutDirection(Qt::RightToLeft);
    if (resources.color(props.shading).isValid())
        format.setBackground(resources.color(props.shading));
    if (props.outline >= 0 && props.outline < 6)
        format.setHeadingLevel(props.outline + 1);
    if (props.tabs)
        format.setTabPositions(resources.tabs.value(props.tabs));
    RtfExact::apply(resources.exact.value(props.exact), &format);
    return format;
}

RtfCharProps fromCharFormat(const QTextCharFormat &source, bool linked, RtfResources *resources)
{
    const QTextCharFormat format = withoutNoteAnchor(source);
    RtfCharProps props;
    const QString family = familyOf(format);
    if (!family.isEmpty())
        props.font = resources->fontNumber(family);
    const double size = pointSizeOf(format, resources->baseSize);
    if (size > 0)
        props.size = qBound(1, qRound(qMin(size * 2, double(rtfMaxFontSize))), rtfMaxFontSize);
    else if (format.hasProperty(QTextFormat::FontPixelSize)) // at Qt's 96 dots to the inch
        props.size = qRound(qBound(1.0, format.intProperty(QTextFormat::FontPixelSize) * 1.5,
                                   rtfMaxFontSize * 1.0));
    props.bold = format.fontWeight() > QFont::Medium ? 1 : 0;
    props.italic = format.fontItalic() ? 1 : 0;
    props.underline = format.underlineStyle() == QTextCharFormat::SpellCheckUnderline
        ? QTextCharFormat::WaveUnderline
        : writable(format.underlineStyle(),
                   {QTextCharFormat::SingleUnderline, QTextCharFormat::DashUnderline,
                    QTextCharFormat::DotLine, QTextCharFormat::DashDotLine,
                    QTextCharFormat::DashDotDotLine, QTextCharFormat::WaveUnderline});
    props.underlineColor
        = props.underline ? colorOf(format, QTextFormat::TextUnderlineColor, resources) : 0;
    props.strike = format.fontStrikeOut() ? 1 : 0;
    props.vertical = writable(format.verticalAlignment(),
                              {QTextCharFormat::AlignSuperScript, QTextCharFormat::AlignSubScript});
    props.capitalization
        = writable(format.fontCapitalization(), {QFont::AllUppercase, QFont::SmallCaps});
    if (format.fontLetterSpacingType() == QFont::AbsoluteSpacing)
        props.spacing = twips(format.fontLetterSpacing());
    props.foreground = colorOf(format, QTextFormat::ForegroundBrush, resources);
    props.background = colorOf(format, QTextFormat::BackgroundBrush, resources);
    if (linked && !format.anchorHref().isEmpty())
        props.link = resources->linkNumber(format.anchorHref());
    const QString field = format.stringProperty(MVRTextFormat::FieldProperty);
    if (linked && !field.isEmpty())
        props.field = resources->linkNumber(field);
    props.exact
        = resources->exactNumber(RtfExact::difference(format, toCharFormat(props, *resources)));
    return props;
}

RtfParaProps fromBlockFormat(const QTextBlockFormat &format, const Surroundings &place,
                             RtfResources *resources)
{
    RtfParaProps props;
    props.alignment = writable(format.alignment() & Qt::AlignHorizontal_Mask & ~Qt::AlignAbsolute,
                               {Qt::AlignRight, Qt::AlignHCenter, Qt::AlignJustify});
    if (format.hasProperty(MVRTextFormat::BlockLeftIndentProperty)) {
        readScriptIndents(format, place.textWidth, &props);
    } else {
        props.leftIndent = twips(format.leftMargin() + format.indent() * indentWidth);
        props.rightIndent = twips(format.rightMargin());
        props.firstIndent = twips(format.textIndent());
    }
    props.spaceBefore = twips(format.topMargin());
    props.spaceAfter = twips(format.bottomMargin());
    readLineHeight(format, &props);
    props.pageBreakBefore
        = place.breakBefore || (format.pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore) ? 1
                                                                                                : 0;
    props.keepTogether = format.nonBreakableLines() ? 1 : 0;
    props.rightToLeft = format.layoutDirection() == Qt::RightToLeft ? 1 : 0;
    props.shading = colorOf(format, QTextFormat::BackgroundBrush, resources);
    const QVariant heading = format.property(QTextFormat::HeadingLevel);
    if (heading.userType() == QMetaType::Int && heading.toInt() >= 1 && heading.toInt() <= 6)
        props.outline = heading.toInt() - 1;
    props.tabs = resources->tabsNumber(inTwips(format.tabPositions()));
    props.inTable = place.tableLevel > 0 ? 1 : 0;
    props.tableLevel = place.tableLevel > 1 ? place.tableLevel : 0;
    props.list = place.list;
    props.listLevel = place.listLevel;
    if (props.list != 0) {
        props.leftIndent = (props.listLevel + 1) * listIndent;
        props.firstIndent = -listIndent / 2;
    }
    props.exact
        = resources->exactNumber(RtfExact::difference(format, toBlockFormat(props, *resources)));
    return props;
}

} // namespace RtfFormats

int RtfFormatCache::charFormatNumber(const RtfCharProps &props)
{
    const auto added = m_charNumbers.try_emplace(props, static_cast<int>(m_charFormats.size()));
    if (added.second)
        m_charFormats.push_back(RtfFormats::toCharFormat(props, m_resources));
    return added.first->second;
}

int RtfFormatCache::blockFormatNumber(const RtfParaProps &props)
{
    const auto added = m_blockNumbers.try_emplace(props, static_cast<int>(m_blockFormats.size()));
    if (added.second)
        m_blockFormats.push_back(RtfFormats::toBlockFormat(props, m_resources));
    return added.first->second;
}

int RtfFormatCache::addCharFormat(const QTextCharFormat &format)
{
    m_charFormats.push_back(format);
    return static_cast<int>(m_charFormats.size()) - 1;
}

void RtfFormatCache::resourcesChanged()
{
    m_charNumbers.clear();
    m_blockNumbers.clear();
}
