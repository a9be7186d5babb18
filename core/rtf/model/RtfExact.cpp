// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfExact.h>

#include <core/MVRTextFormat.h>
#include <core/MVRToolkit.h>

#include <QBrush>

#include <charconv>
#include <cmath>

namespace {

// What a property's value may be; the letters stand in the file.
enum Type : char {
    Boolean = 'b',
    Integer = 'i',
    Real = 'd',
    Text = 's',
    TextList = 'l',
    Color = 'c',
    Tabs = 't',
    Length = 'w',
    Lengths = 'v'
};

struct PropertyRow
{
    int id;
    Type type;
    double minimum = 0; // of numbers, also those in lists
    double maximum = 0;
};

constexpr double maxLength = 1e6; // points; no page is larger

constexpr PropertyRow propertyRows[] = {
    {QTextFormat::LayoutDirection, Integer, 0, 2},
    {QTextFormat::BackgroundBrush, Color},
    {QTextFormat::ForegroundBrush, Color},
    {QTextFormat::BlockAlignment, Integer, 0, 0x1ff},
    {QTextFormat::BlockTopMargin, Real, -maxLength, maxLength},
    {QTextFormat::BlockBottomMargin, Real, -maxLength, maxLength},
    {QTextFormat::BlockLeftMargin, Real, -maxLength, maxLength},
    {QTextFormat::BlockRightMargin, Real, -maxLength, maxLength},
    {QTextFormat::TextIndent, Real, -maxLength, maxLength},
    {MVRTextFormat::BlockLeftIndentProperty, Real, -maxLength, maxLength},
    {MVRTextFormat::BlockRightIndentProperty, Real, -maxLength, maxLength},
    {QTextFormat::BlockIndent, Integer, -1000, 1000},
    {QTextFormat::LineHeight, Real, 0, maxLength},
    {QTextFormat::LineHeightType, Integer, 0, 4},
    {QTextFormat::BlockNonBreakableLines, Boolean},
    // One number, told apart by type: a spacing is a real, a heading's level an integer.
    {MVRTextFormat::LineSpacingProperty, Real, 0, maxLength},
    {QTextFormat::HeadingLevel, Integer, 0, 6},
    {MVRTextFormat::LineSpacingBaseProperty, Real, -maxLength, maxLength},
    {MVRTextFormat::LineSpacingBaseProperty, Integer, -maxLength, maxLength},
    {QTextFormat::BlockMarker, Integer, 0, 2},
    {QTextFormat::TabPositions, Tabs, -maxLength, maxLength},
    {QTextFormat::PageBreakPolicy, Integer, 0, 0x11},
    {QTextFormat::FontCapitalization, Integer, 0, 4},
    {QTextFormat::FontLetterSpacing, Real, -maxLength, maxLength},
    {QTextFormat::FontLetterSpacingType, Integer, 0, 1},
    {QTextFormat::FontWordSpacing, Real, -maxLength, maxLength},
    {QTextFormat::FontStretch, Integer, 0, 4000},
    {QTextFormat::FontStyleHint, Integer, 0, 8},
    {QTextFormat::FontStyleStrategy, Integer, 0, 0xffff},
    {QTextFormat::FontKerning, Boolean},
    {QTextFormat::FontHintingPreference, Integer, 0, 3},
    {QTextFormat::FontFamilies, TextList},
    {QTextFormat::FontStyleName, Text},
    {QTextFormat::FontFamily, Text},
    {QTextFormat::FontPointSize, Real, 0.01, 10000},
    {QTextFormat::FontPixelSize, Integer, 1, 10000},
    {QTextFormat::FontSizeAdjustment, Integer, -7, 7},
    {QTextFormat::FontWeight, Integer, 0, 1000},
    {QTextFormat::FontItalic, Boolean},
    {QTextFormat::FontUnderline, Boolean},
    {QTextFormat::FontOverline, Boolean},
    {QTextFormat::FontStrikeOut, Boolean},
    {QTextFormat::FontFixedPitch, Boolean},
    {QTextFormat::TextUnderlineColor, Color},
    {QTextFormat::TextVerticalAlignment, Integer, 0, 6},
    {QTextFormat::TextUnderlineStyle, Integer, 0, 7},
    {QTextFormat::TextToolTip, Text},
    {QTextFormat::IsAnchor, Boolean},
    {QTextFormat::AnchorHref, Text},
    {QTextFormat::AnchorName, TextList},
    {QTextFormat::ImageName, Text},
    {QTextFormat::ImageWidth, Real, 0, maxLength},
    {QTextFormat::ImageHeight, Real, 0, maxLength},
    {QTextFormat::ListStyle, Integer, QTextListFormat::ListUpperRoman, 0},
    {QTextFormat::ListIndent, Integer, 0, 1000},
    {QTextFormat::ListNumberPrefix, Text},
    {QTextFormat::ListNumberSuffix, Text},
    {MVRTextFormat::ListStartProperty, Integer, 0, 32767},
    {MVRTextFormat::ListNumberFormatProperty, Integer, 0, 255},
    {MVRTextFormat::ListLabelProperty, Text},
    {QTextFormat::CssFloat, Integer, 0, 2},
    {QTextFormat::FrameBorder, Real, 0, maxLength},
    {QTextFormat::FrameMargin, Real, -maxLength, maxLength},
    {QTextFormat::FramePadding, Real, 0, maxLength},
    {QTextFormat::FrameWidth, Length, 0, maxLength},
    {QTextFormat::FrameHeight, Length, 0, maxLength},
    {QTextFormat::FrameTopMargin, Real, -maxLength, maxLength},
    {QTextFormat::FrameBottomMargin, Real, -maxLength, maxLength},
    {QTextFormat::FrameLeftMargin, Real, -maxLength, maxLength},
    {QTextFormat::FrameRightMargin, Real, -maxLength, maxLength},
    {QTextFormat::FrameBorderBrush, Color},
    {QTextFormat::FrameBorderStyle, Integer, 0, 10},
    {QTextFormat::TableColumnWidthConstraints, Lengths, 0, maxLength},
    {QTextFormat::TableCellSpacing, Real, 0, maxLength},
    {QTextFormat::TableCellPadding, Real, 0, maxLength},
    {QTextFormat::TableHeaderRowCount, Integer, 0, maxLength},
    {QTextFormat::TableBorderCollapse, Boolean},
    {QTextFormat::TableCellTopPadding, Real, 0, maxLength},
    {QTextFormat::TableCellBottomPadding, Real, 0, maxLength},
    {QTextFormat::TableCellLeftPadding, Real, 0, maxLength},
    {QTextFormat::TableCellRightPadding, Real, 0, maxLength},
    {QTextFormat::TableCellTopBorder, Real, 0, maxLength},
    {QTextFormat::TableCellBottomBorder, Real, 0, maxLength},
    {QTextFormat::TableCellLeftBorder, Real, 0, maxLength},
    {QTextFormat::TableCellRightBorder, Real, 0, maxLength},
    {QTextFormat::TableCellTopBorderStyle, Integer, 0, 10},
    {QTextFormat::TableCellBottomBorderStyle, Integer, 0, 10},
    {QTextFormat::TableCellLeftBorderStyle, Integer, 0, 10},
    {QTextFormat::TableCellRightBorderStyle, Integer, 0, 10},
    {QTextFormat::TableCellTopBorderBrush, Color},
    {QTextFormat::TableCellBottomBorderBrush, Color},
    {QTextFormat::TableCellLeftBorderBrush, Color},
    {QTextFormat::TableCellRightBorderBrush, Color},
};

Type typeOf(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::Bool:
        return Boolean;
    case QMetaType::Int:
    case QMetaType::UInt:
        return Integer;
    case QMetaType::Double:
    case QMetaType::Float:
        return Real;
    case QMetaType::QString:
        return Text;
    case QMetaType::QStringList:
        return TextList;
    case QMetaType::QColor:
    case QMetaType::QBrush:
        return Color;
    case QMetaType::QTextLength:
        return Length;
    case QMetaType::QVariantList: {
        const QVariantList list = value.toList();
        return !list.isEmpty() && list.first().userType() == QMetaType::QTextLength ? Lengths
                                                                                    : Tabs;
    }
    default:
        return Type();
    }
}

const PropertyRow *rowFor(int id, Type type)
{
    for (const PropertyRow &row : propertyRows) {
        if (row.id == id && row.type == type)
            return &row;
    }
    return nullptr;
}

bool isWritable(int id)
{
    for (const PropertyRow &row : propertyRows) {
        if (row.id == id)
            return true;
    }
    return false;
}

// Gradients and textures have no text form; their colour has gone out in RTF's own words.
bool canBeWritten(int id, const QVariant &value)
{
    const Type type = typeOf(value);
    const PropertyRow *row = rowFor(id, type);
    if (!row)
        return false;
    if (value.userType() == QMetaType::QBrush) {
        const Qt::BrushStyle style = value.value<QBrush>().style();
        return style == Qt::SolidPattern || style == Qt::NoBrush;
    }
    if (type == Real || type == Integer) {
        const double number = value.toDouble();
        return number >= row->minimum && number <= row->maximum;
    }
    return true;
}

QByteArray colorText(const QVariant &value)
{
    if (value.userType() == QMetaType::QBrush && value.value<QBrush>().style() == Qt::NoBrush)
        return QByteArrayLiteral("-");
    const QColor color = value.userType() == QMetaType::QBrush ? value.value<QBrush>().color()
                                                               : value.value<QColor>();
    return color.isValid() ? QByteArray::number(quint64(color.rgba64()), 16) : QByteArray();
}

template <typename Number, typename... Base>
void appendNumber(QByteArray *text, Number number, Base... base)
{
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, number, base...);
    text->append(digits, static_cast<int>(end.ptr - digits));
}

QByteArray realText(double number)
{
    QByteArray text;
    appendNumber(&text, number);
    return text;
}

QByteArray tabsText(const QVariant &value)
{
    QByteArray text;
    const QVariantList stops = value.toList();
    for (const QVariant &stop : stops) {
        const auto tab = stop.value<QTextOption::Tab>();
        text += realText(tab.position) + '/' + QByteArray::number(int(tab.type)) + '/'
            + QByteArray::number(tab.delimiter.unicode()) + ',';
    }
    return text;
}

QByteArray lengthText(const QTextLength &length)
{
    return QByteArray::number(int(length.type())) + '/' + realText(length.rawValue());
}

QByteArray lengthsText(const QVariant &value)
{
    QByteArray text;
    const QVariantList lengths = value.toList();
    for (const QVariant &length : lengths)
        text += lengthText(length.value<QTextLength>()) + ',';
    return text;
}

QByteArray valueText(const QVariant &value)
{
    switch (typeOf(value)) {
    case Boolean:
        return value.toBool() ? QByteArrayLiteral("1") : QByteArrayLiteral("0");
    case Integer:
    case Real:
        break; // written by toText() itself
    case Text:
        return value.toString().toUtf8().toHex();
    case TextList: {
        QByteArray text;
        const QStringList strings = value.toStringList();
        for (const QString &string : strings)
            text += string.toUtf8().toHex() + ',';
        return text;
    }
    case Color:
        return colorText(value);
    case Tabs:
        return tabsText(value);
    case Length:
        return lengthText(value.value<QTextLength>());
    case Lengths:
        return lengthsText(value);
    }
    return {};
}

QVariant colorFromText(const PropertyRow &row, const QByteArray &text)
{
    // Underlines keep a colour, the other properties a brush.
    if (row.id == QTextFormat::TextUnderlineColor && text.isEmpty())
        return QColor();
    if (text == "-")
        return QBrush(Qt::NoBrush);
    bool ok = false;
    const QColor color = QColor::fromRgba64(QRgba64::fromRgba64(text.toULongLong(&ok, 16)));
    if (!ok)
        return {};
    return row.id == QTextFormat::TextUnderlineColor ? QVariant(color) : QVariant(QBrush(color));
}

QVariant realFromText(const PropertyRow &row, const QByteArray &text)
{
    double number = 0;
    const auto end = std::from_chars(text.constBegin(), text.constEnd(), number);
    if (end.ec != std::errc() || !(number >= row.minimum && number <= row.maximum))
        return {};
    return number;
}

// Each is followed by its comma; none of more than any format has.
QList<QByteArray> entriesOf(const QByteArray &text)
{
    constexpr int maxEntries = 10000;
    if (text.count(',') > maxEntries)
        return {};
    QList<QByteArray> entries = text.split(',');
    entries.removeLast();
    return entries;
}

QVariant tabsFromText(const PropertyRow &row, const QByteArray &text)
{
    QVariantList stops;
    const QList<QByteArray> parts = entriesOf(text);
    for (const QByteArray &part : parts) {
        const QList<QByteArray> fields = part.split('/');
        const QVariant position = realFromText(row, fields.value(0));
        const int type = qBound(0, fields.value(1).toInt(), int(QTextOption::DelimiterTab));
        if (position.isValid())
            stops.append(QVariant::fromValue(QTextOption::Tab(position.toDouble(),
                                                              QTextOption::TabType(type),
                                                              QChar(fields.value(2).toUShort()))));
    }
    return stops;
}

QVariant lengthFromText(const PropertyRow &row, const QByteArray &text)
{
    const int slash = text.indexOf('/');
    const int type = text.left(slash).toInt();
    const QVariant number = realFromText(row, text.mid(slash + 1));
    if (slash < 0 || !number.isValid() || type < 0 || type > QTextLength::PercentageLength)
        return {};
    return QTextLength(QTextLength::Type(type), number.toDouble());
}

QVariant lengthsFromText(const PropertyRow &row, const QByteArray &text)
{
    QVariantList lengths;
    const QList<QByteArray> parts = entriesOf(text);
    for (const QByteArray &part : parts)
        lengths.append(lengthFromText(row, part));
    return lengths.contains(QVariant()) ? QVariant() : lengths;
}

QVariant valueFromText(const PropertyRow &row, const QByteArray &text)
{
    switch (row.type) {
    case Boolean:
        return text == "1";
    case Integer: {
        bool ok = false;
        const int number = text.toInt(&ok);
        return ok && number >= row.minimum && number <= row.maximum ? QVariant(number) : QVariant();
    }
    case Real:
        return realFromText(row, text);
    case Text:
        return QString::fromUtf8(QByteArray::fromHex(text));
    case TextList: {
        QStringList strings;
        const QList<QByteArray> parts = entriesOf(text);
        for (const QByteArray &part : parts)
            strings.append(QString::fromUtf8(QByteArray::fromHex(part)));
        return strings;
    }
    case Color:
        return colorFromText(row, text);
    case Tabs:
        return tabsFromText(row, text);
    case Length:
        return lengthFromText(row, text);
    case Lengths:
        return lengthsFromText(row, text);
    }
    return {};
}

RtfExactProperty propertyFromText(const QByteArray &text)
{
    bool ok = false;
    if (text.startsWith('-')) {
        const int id = MVRToolkit::propertyOfStored(text.mid(1).toInt(&ok, 16));
        return ok && isWritable(id) ? RtfExactProperty {id, QVariant()} : RtfExactProperty();
    }
    const int typeAt = text.indexOf(':') - 1;
    if (typeAt < 1)
        return {};
    const int id = MVRToolkit::propertyOfStored(text.left(typeAt).toInt(&ok, 16));
    const PropertyRow *row = ok ? rowFor(id, Type(text.at(typeAt))) : nullptr;
    if (!row)
        return {};
    QVariant value = valueFromText(*row, text.mid(typeAt + 2));
    if (id == QTextFormat::FontWeight && value.isValid())
        value = MVRToolkit::weightOfStored(value.toInt());
    return value.isValid() ? RtfExactProperty {id, value} : RtfExactProperty();
}

bool isSame(int id, const QVariant &a, const QVariant &b)
{
    if (a.userType() != b.userType())
        return false;
    // A variant does not know how to compare the stops in its list.
    return id == QTextFormat::TabPositions ? tabsText(a) == tabsText(b) : a == b;
}

} // namespace

namespace RtfExact {

RtfExactProperties difference(const QTextFormat &wanted, const QTextFormat &got)
{
    RtfExactProperties properties;
    const QMap<int, QVariant> wantedProperties = wanted.properties();
    const QMap<int, QVariant> gotProperties = got.properties();
    for (auto it = wantedProperties.cbegin(); it != wantedProperties.cend(); ++it) {
        if (!isSame(it.key(), it.value(), gotProperties.value(it.key()))
            && canBeWritten(it.key(), it.value()))
            properties.append({it.key(), it.value()});
    }
    for (auto it = gotProperties.cbegin(); it != gotProperties.cend(); ++it) {
        if (!wantedProperties.contains(it.key()))
            properties.append({it.key(), QVariant()});
    }
    return properties;
}

void apply(const RtfExactProperties &properties, QTextFormat *format)
{
    for (const RtfExactProperty &property : properties) {
        if (property.value.isValid())
            format->setProperty(property.id, property.value);
        else
            format->clearProperty(property.id);
    }
}

// Every note has some: what is common is written without a string of its own.
QByteArray toText(const RtfExactProperties &properties)
{
    QByteArray text;
    text.reserve(32 * properties.size());
    for (const RtfExactProperty &property : properties) {
        if (!text.isEmpty())
            text += ' ';
        if (!property.value.isValid())
            text += '-';
        appendNumber(&text, MVRToolkit::storedProperty(property.id), 16);
        if (!property.value.isValid())
            continue;
        const Type type = typeOf(property.value);
        text += char(type);
        text += ':';
        if (type == Integer)
            appendNumber(&text,
                         property.id == QTextFormat::FontWeight
                             ? MVRToolkit::storedWeight(property.value.toInt())
                             : property.value.toInt());
        else if (type == Real)
            appendNumber(&text, property.value.toDouble());
        else
            text += valueText(property.value);
    }
    return text;
}

QVector<RtfExactProperties> fromText(const QByteArray &text)
{
    QVector<RtfExactProperties> sets;
    QList<QByteArray> parts = text.split(';');
    parts.removeLast(); // every set is followed by its semicolon
    sets.reserve(parts.size());
    int lookAlikes = 0;
    for (const QByteArray &part : qAsConst(parts)) {
        RtfExactProperties properties;
        const QList<QByteArray> entries = part.split(' ');
        for (const QByteArray &entry : entries) {
            const RtfExactProperty property = propertyFromText(entry);
            const int type = property.value.userType();
            const bool isList = type == QMetaType::QVariantList || type == QMetaType::QStringList;
            const bool isTooMuch = isList && ++lookAlikes > RtfResources::maxLookAlikes * 2;
            if (property.id != 0 && !isTooMuch)
                properties.append(property);
        }
        sets.append(properties);
    }
    return sets;
}

} // namespace RtfExact
