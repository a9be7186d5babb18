// SPDX-License-Identifier: MIT
#include <core/MVRScriptElement.h>

#include <core/MVRTextFormat.h>

#include <cmath>

namespace {

// Points. Files round a length to hundredths of an inch, so that it comes back up to 0.36 off.
constexpr double lengthTolerance = 0.4;
constexpr double spacingTolerance = 0.01; // a multiple of single spacing

constexpr int lengthProperties[] = {
    QTextFormat::TextIndent,
    QTextFormat::BlockTopMargin,
    QTextFormat::BlockBottomMargin,
    QTextFormat::BlockLeftMargin,
    QTextFormat::BlockRightMargin,
    MVRTextFormat::BlockLeftIndentProperty,
    MVRTextFormat::BlockRightIndentProperty,
};

Qt::Alignment horizontalAlignment(const QTextBlockFormat &format)
{
    const Qt::Alignment alignment = format.alignment() & Qt::AlignHorizontal_Mask;
    return alignment ? alignment : Qt::Alignment(Qt::AlignLeft);
}

bool sameSpacing(const QTextBlockFormat &first, const QTextBlockFormat &second)
{
    double firstValue = 1.0;
    double secondValue = 1.0;
    return MVRTextFormat::spacingType(first, &firstValue)
        == MVRTextFormat::spacingType(second, &secondValue)
        && std::abs(firstValue - secondValue) <= spacingTolerance;
}

}

bool MVRScriptElement::equal(const QTextBlockFormat &elementFormat,
                             const QTextBlockFormat &blockFormat)
{
    for (const int property : lengthProperties) {
        const double difference
            = elementFormat.doubleProperty(property) - blockFormat.doubleProperty(property);
        if (std::abs(difference) > lengthTolerance)
            return false;
    }
    return elementFormat.indent() == blockFormat.indent()
        && horizontalAlignment(elementFormat) == horizontalAlignment(blockFormat)
        && sameSpacing(elementFormat, blockFormat);
}
