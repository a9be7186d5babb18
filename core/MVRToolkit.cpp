// SPDX-License-Identifier: MIT
#include <core/MVRToolkit.h>

#include <core/MVRParagraphView.h>
#include <core/MVRTextFormat.h>
#include <core/STextDoc.h>
#include <core/document/EditBlock_p.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/LayoutLimit_p.h>
#include <core/document/LengthScale_p.h>
#include <core/document/LongParagraphs_p.h>
#include <core/document/NoteFormat_p.h>

#include <QAbstractTextDocumentLayout>
#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QHash>
#include <QLoggingCategory>
#include <QPalette>
#include <QPen>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>

#include <algorithm>
#include <iterator>
#include <memory>
#include <optional>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QTextCodec>
#endif

namespace {

Q_LOGGING_CATEGORY(toolkitLog, "mvrtext.toolkit")

// The dynamic properties of a document that stand in for settings of its own.
constexpr const char *typographyPenName = "mvrTypographyPen";
constexpr const char *autoCorrectionName = "mvrAutoCorrection";

struct NumberPair
{
    int qt5;
    int qt6;
};

// Only those that the two number differently.
constexpr NumberPair propertyNumbers[] = {{0x2033, 0x1fe9}, // FontLetterSpacingType
                                          {0x2034, 0x1fea}, // FontStretch
                                          {0x2010, 0x2020}}; // TextUnderlineColor

// From QFont::Thin to QFont::Black; sorted.
constexpr NumberPair weights[] = {{0, 100},  {12, 200}, {25, 300}, {50, 400}, {57, 500},
                                  {63, 600}, {75, 700}, {81, 800}, {87, 900}, {99, 1000}};

constexpr bool isQt6 = QT_VERSION_MAJOR > 5;

/*! Between the two weights that \a weight lies between, as far along. */
int scaledWeight(int weight, int NumberPair::*from, int NumberPair::*to)
{
    for (size_t i = 1; i < std::size(weights); ++i) {
        const NumberPair &below = weights[i - 1];
        const NumberPair &above = weights[i];
        if (weight <= above.*from)
            return below.*to
                + (qMax(weight, below.*from) - below.*from) * (above.*to - below.*to)
                / (above.*from - below.*from);
    }
    return weights[std::size(weights) - 1].*to;
}

// LineSpacingProperty shares its number with QTextFormat::HeadingLevel, which is an int.
std::optional<double> lineSpacing(const QTextBlockFormat &format)
{
    const QVariant value = format.property(MVRTextFormat::LineSpacingProperty);
    if (value.userType() != QMetaType::Double)
        return std::nullopt;
    return value.toDouble();
}

bool isApplicationParagraph(const QTextBlockFormat &format)
{
    return format.hasProperty(MVRTextFormat::BlockLeftIndentProperty)
        || format.hasProperty(MVRTextFormat::BlockRightIndentProperty) || lineSpacing(format);
}

void translateIndents(QTextBlockFormat &format, double textWidth)
{
    const double left
        = boundedLength(format.doubleProperty(MVRTextFormat::BlockLeftIndentProperty));
    if (format.hasProperty(MVRTextFormat::BlockLeftIndentProperty)) {
        format.setLeftMargin(format.leftMargin() + left);
        if (format.hasProperty(QTextFormat::TextIndent))
            format.setTextIndent(format.textIndent() - left);
    }
    // A right edge that leaves no room for text is a broken one: the text keeps its full width.
    const double right
        = boundedLength(format.doubleProperty(MVRTextFormat::BlockRightIndentProperty));
    if (right > left)
        format.setRightMargin(textWidth - right);
    format.clearProperty(MVRTextFormat::BlockLeftIndentProperty);
    format.clearProperty(MVRTextFormat::BlockRightIndentProperty);
}

void translateSpacing(QTextBlockFormat &format)
{
    const std::optional<double> spacing = lineSpacing(format);
    if (!spacing)
        return;
    // With a base the number is a height on that base and no multiple: such text is single-spaced.
    const bool isMultiple = !format.hasProperty(MVRTextFormat::LineSpacingBaseProperty);
    constexpr double most = 100.0;
    if (isMultiple && *spacing > 0.0 && *spacing <= most && !qFuzzyCompare(*spacing, 1.0))
        format.setLineHeight(*spacing * 100.0, QTextBlockFormat::ProportionalHeight);
    format.clearProperty(MVRTextFormat::LineSpacingProperty);
    format.clearProperty(MVRTextFormat::LineSpacingBaseProperty);
}

}

QString MVRToolkit::rawFontName(const QFont &font)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    const QString name = font.rawName();
    QT_WARNING_POP
#else
    const QString name;
#endif
    if (!name.isEmpty() && name != QLatin1String("unknown"))
        return name;

    static const bool said = [] {
        qCDebug(toolkitLog, "This Qt tells no raw font names; font families stand in for them.");
        return true;
    }();
    Q_UNUSED(said)
    return font.family();
}

void MVRToolkit::useUtf8()
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
#endif
}

bool MVRToolkit::hasBoldFace(const QString &family)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    const QFontDatabase fonts;
    const auto isBold = [&](const QString &style) { return fonts.bold(family, style); };
    const QStringList styles = fonts.styles(family);
#else
    const auto isBold = [&](const QString &style) { return QFontDatabase::bold(family, style); };
    const QStringList styles = QFontDatabase::styles(family);
#endif
    return std::any_of(styles.cbegin(), styles.cend(), isBold);
}

static QString htmlOf(const QTextDocument &document)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    return document.toHtml("utf-8");
#else
    return document.toHtml();
#endif
}

// The anchors of notes lead nowhere outside the application; links below them do.
QString MVRToolkit::toHtml(const QTextDocument &document)
{
    const bool mayHaveNotes = hasFormat(document, [](const QTextFormat &format) {
        return isNoteAnchor(format.stringProperty(QTextFormat::AnchorHref));
    });
    if (!mayHaveNotes)
        return htmlOf(document);
    const std::unique_ptr<QTextDocument> copy(STextDoc::cloneDocumentQtStyle(&document, nullptr));
    copy->setUndoRedoEnabled(false);
    changeAllFormats(copy.get(), [](QTextCharFormat &format) { clearNoteProperties(format); });
    return htmlOf(*copy);
}

QString MVRToolkit::fontFamily(const QTextCharFormat &format)
{
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    const QString family = format.fontFamily();
    if (!family.isEmpty())
        return family;
#endif
    return format.fontFamilies().toStringList().value(0);
}

void MVRToolkit::setFontFamily(QTextCharFormat *format, const QString &family)
{
    if (!format)
        return;
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    format->setFontFamily(family);
#else
    format->setFontFamilies({family});
#endif
}

int MVRToolkit::storedProperty(int property)
{
    for (const NumberPair &pair : propertyNumbers) {
        if (isQt6 && pair.qt6 == property)
            return pair.qt5;
    }
    return property;
}

int MVRToolkit::propertyOfStored(int stored)
{
    for (const NumberPair &pair : propertyNumbers) {
        if (isQt6 && pair.qt5 == stored)
            return pair.qt6;
    }
    return stored;
}

int MVRToolkit::storedWeight(int weight)
{
    for (const NumberPair &pair : weights) {
        if (isQt6 && pair.qt6 == weight)
            return pair.qt5;
    }
    return weight;
}

int MVRToolkit::weightOfStored(int stored)
{
    const bool isOfQt6 = stored >= weights[0].qt6;
    if (isOfQt6 == isQt6)
        return stored;
    return isQt6 ? scaledWeight(stored, &NumberPair::qt5, &NumberPair::qt6)
                 : scaledWeight(stored, &NumberPair::qt6, &NumberPair::qt5);
}

void MVRToolkit::clearLinkLook(QTextCharFormat *format)
{
    if (!format || !format->fontUnderline()
        || format->foreground().color() != QGuiApplication::palette().color(QPalette::Link))
        return;
    for (const int property :
         {int(QTextFormat::FontUnderline), int(QTextFormat::TextUnderlineStyle),
          int(QTextFormat::ForegroundBrush)})
        format->clearProperty(property);
}

void MVRToolkit::toStockParagraphs(QTextDocument *document, double textWidth)
{
    if (!document)
        return;
    // Documents have few formats and many paragraphs: each format is translated once.
    QHash<int, QTextBlockFormat> translated;
    QTextCursor cursor(document);
    std::optional<EditBlock> undoStep;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        const int index = block.blockFormatIndex();
        auto known = translated.find(index);
        if (known == translated.end()) {
            known = translated.insert(index, stockBlockFormat(block.blockFormat(), textWidth));
        }
        if (*known == block.blockFormat())
            continue;
        if (!undoStep)
            undoStep.emplace(document);
        cursor.setPosition(block.position());
        cursor.setBlockFormat(*known);
    }
}

QTextBlockFormat MVRToolkit::stockBlockFormat(const QTextBlockFormat &format, double textWidth)
{
    QTextBlockFormat stock = MVRParagraphView::ownFormat(format);
    if (!isApplicationParagraph(stock))
        return stock;
    translateIndents(stock, textWidth);
    translateSpacing(stock);
    return stock;
}

QPen MVRToolkit::typographyPen(const QTextDocument &document)
{
    return document.property(typographyPenName).value<QPen>();
}

void MVRToolkit::setTypographyPen(QTextDocument &document, const QPen &pen)
{
    document.setProperty(typographyPenName, pen);
    // The option itself has no room for a pen here; setting it makes views draw the text anew.
    document.setDefaultTextOption(document.defaultTextOption());
}

bool MVRToolkit::isAutoCorrected(const QTextDocument &document)
{
    const QVariant isOn = document.property(autoCorrectionName);
    return !isOn.isValid() || isOn.toBool();
}

void MVRToolkit::setAutoCorrected(QTextDocument &document, bool on)
{
    document.setProperty(autoCorrectionName, on);
}

QSizeF MVRToolkit::pageSize(const QAbstractTextDocumentLayout &layout)
{
    return layout.document() ? layout.document()->pageSize() : QSizeF();
}

void MVRToolkit::setPageSize(QAbstractTextDocumentLayout &layout, const QSizeF &size)
{
    if (layout.document())
        layout.document()->setPageSize(size);
}

// A layout does not come back from a text that is higher than it can count.
static bool canLayOut(QTextDocument &text, double lineWidth, const QSizeF &page)
{
    constexpr double unlimited = 1.0e6; // lines do not wrap
    constexpr double pointSize = 72.0;
    QFont font = text.defaultFont();
    font.setPointSizeF(pointSize);
    const double unitsPerPoint = QFontInfo(font).pixelSize() / pointSize;
    if (isTooHigh(text, lineWidth > 0.0 ? lineWidth : unlimited, page, unitsPerPoint))
        return false;
    double pages = 1.0;
    for (QTextBlock block = text.begin(); block.isValid(); block = block.next())
        pages += block.blockFormat().pageBreakPolicy() == QTextFormat::PageBreak_Auto ? 0.0 : 1.0;
    const QList<QTextFrame *> frames = text.findChildren<QTextFrame *>();
    for (const QTextFrame *frame : frames)
        pages += frame->frameFormat().pageBreakPolicy() == QTextFormat::PageBreak_Auto ? 0.0 : 1.0;
    return !(pages * page.height() > maxLayoutHeight) || pages == 1.0;
}

// Around the text itself, within which the toolkit would look for a place for a table for ever.
static void boundEdgesOfText(QTextDocument &text)
{
    QTextFrameFormat format = text.rootFrame()->frameFormat();
    for (const int edge :
         {QTextFormat::FrameTopMargin, QTextFormat::FrameBottomMargin, QTextFormat::FrameLeftMargin,
          QTextFormat::FrameRightMargin, QTextFormat::FrameBorder, QTextFormat::FramePadding}) {
        if (format.hasProperty(edge))
            format.setProperty(edge, boundedLength(format.doubleProperty(edge)));
    }
    if (format != text.rootFrame()->frameFormat())
        text.rootFrame()->setFrameFormat(format);
}

// Where the head of a table leaves no room on a page, the toolkit counts pages without end.
static void dropHighHeads(QTextDocument &text, const QSizeF &page)
{
    constexpr double mostOfPage = 0.5;
    QVector<QTextTable *> high;
    const QList<QTextTable *> tables = text.findChildren<QTextTable *>();
    for (QTextTable *table : tables) {
        const int rows = qMin(table->format().headerRowCount(), table->rows() - 1);
        if (rows <= 0)
            continue;
        if (text.pageSize().height() != longPage)
            text.setPageSize(QSizeF(page.width(), longPage));
        const QAbstractTextDocumentLayout &layout = *text.documentLayout();
        const QTextBlock below = table->cellAt(rows, 0).firstCursorPosition().block();
        const double height
            = layout.blockBoundingRect(below).top() - layout.frameBoundingRect(table).top();
        const bool isInOther = table->parentFrame() != text.rootFrame(); // with a head of its own
        if (isInOther || height > mostOfPage * page.height())
            high.append(table);
    }
    for (QTextTable *table : qAsConst(high)) {
        QTextTableFormat format = table->format();
        format.setHeaderRowCount(0);
        table->setFormat(format);
    }
}

int MVRToolkit::pageCount(const QTextDocument &document, const QSizeF &size)
{
    const std::unique_ptr<QTextDocument> copy(STextDoc::cloneDocumentQtStyle(&document, nullptr));
    copy->setUndoRedoEnabled(false);
    boundEdgesOfText(*copy);
    const QTextFrameFormat margins = copy->rootFrame()->frameFormat();
    const double lineWidth = size.width() - margins.leftMargin() - margins.rightMargin();
    toStockParagraphs(copy.get(), lineWidth);
    breakLongWords(*copy);
    boundFloats(*copy);
    const bool isOnePage = !(size.height() > 0);
    const QSizeF page(size.width(),
                      isOnePage ? longPage : qBound(1.0, size.height(), maxLayoutHeight));
    scaleLengths(*copy, 1.0,
                 qMin(maxLength, 2.0 * qMax(page.height(), page.width()))); // only bounds
    if (!canLayOut(*copy, lineWidth, page))
        return 0;
    if (isOnePage)
        return 1;
    dropHighHeads(*copy, page);
    copy->setPageSize(page);
    return qMax(1, copy->pageCount()); // margins below 0 may put all above the first
}
