// SPDX-License-Identifier: MIT
#pragma once

#include <QTextCharFormat>

/*!
    The size in points that Qt shows letters of a format in: the format's own, or one that it counts
    from \a base points, as "large" in HTML does (QTextFormat::FontSizeAdjustment).
    \return 0 where the format says neither, or a size in pixels
*/
inline double pointSizeOf(const QTextCharFormat &format, double base)
{
    if (format.fontPointSize() > 0 || format.hasProperty(QTextFormat::FontPixelSize)
        || !format.hasProperty(QTextFormat::FontSizeAdjustment))
        return format.fontPointSize();
    constexpr double scales[] = {0.7, 0.8, 1.0, 1.2, 1.5, 2.0, 2.4}; // for -2 to 4
    return base * scales[qBound(0, format.intProperty(QTextFormat::FontSizeAdjustment) + 2, 6)];
}
