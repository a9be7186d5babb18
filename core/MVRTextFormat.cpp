// SPDX-License-Identifier: MIT
#include <core/MVRTextFormat.h>

#include <core/document/FormatEdits_p.h>

#include <QTextDocument>

#include <cmath>

namespace {

// The dynamic property of a document that its default character format is kept under.
constexpr const char *defaultFormatName = "mvrDefaultCharFormat";

/*! Spacing as a multiple of single spacing; 0 when the format sets none. */
double spacingOf(const QTextBlockFormat &format)
{
    const QVariant spacing = format.property(MVRTextFormat::LineSpacingProperty);
    if (spacing.userType() == QMetaType::Double)
        return spacing.toDouble();
    if (format.lineHeightType() == QTextBlockFormat::ProportionalHeight)
        return format.lineHeight() / 100.0;
    return 0;
}

} // namespace

QTextCharFormat MVRTextFormat::defaultCharFormat(const QTextDocument &document)
{
    const QVariant stored = document.property(defaultFormatName);
    if (stored.userType() == QMetaType::QTextFormat)
        return stored.value<QTextFormat>().toCharFormat();
    QTextCharFormat format;
    format.setFont(document.defaultFont());
    return format;
}

void MVRTextFormat::setDefaultCharFormat(QTextDocument &document, const QTextCharFormat &format)
{
    document.setProperty(defaultFormatName, QVariant(format));
}

bool MVRTextFormat::isMovarinLink(const QTextCharFormat &format)
{
    bool isNumber = false;
    format.anchorHref().toInt(&isNumber);
    return isNumber && format.isAnchor();
}

int MVRTextFormat::spacingType(const QTextBlockFormat &format, double *value)
{
    const double spacing = spacingOf(format);
    const bool isSet = std::isfinite(spacing) && spacing > 0;
    if (value)
        *value = isSet ? spacing : 1.0;
    return isSet && spacing != 1.0 ? QTextBlockFormat::ProportionalHeight
                                   : QTextBlockFormat::SingleHeight;
}

void MVRTextFormat::convertToFormat(QTextDocument *document, const QTextCharFormat *charFormat,
                                    const QTextBlockFormat *blockFormat)
{
    if (!document || (!charFormat && !blockFormat))
        return;
    QVector<FormatEdit> edits;
    if (charFormat) {
        edits = collectAllFormatEdits(document, [charFormat](QTextCharFormat &format) {
            // Images and table cells are what they are through their format.
            if (format.objectType() == QTextFormat::NoObject)
                format = *charFormat;
        });
    }
    std::optional<EditBlock> undoStep;
    if (!edits.isEmpty())
        undoStep.emplace(document);
    applyFormatEdits(document, edits);
    if (!blockFormat)
        return;
    QTextCursor cursor(document);
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format = *blockFormat;
        // An object index says which list of its own document a paragraph is in.
        format.setObjectIndex(block.blockFormat().objectIndex());
        if (format == block.blockFormat())
            continue;
        if (!undoStep)
            undoStep.emplace(document);
        cursor.setPosition(block.position());
        cursor.setBlockFormat(format);
    }
}
