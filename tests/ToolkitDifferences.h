// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/*! What comes out differently with Qt 5 and with Qt 6, and why. All else is the same. */
struct ToolkitDifference
{
    const char *qt5;
    const char *qt6;
    const char *reason;
};

constexpr ToolkitDifference toolkitDifferences[] = {
    {"tag mismatch", "Opening and ending tag mismatch.", "QDomDocument has another parser"},
    {"letter is expected", "Expected '#' or '[a-zA-Z]', but got '<'.",
     "QDomDocument has another parser"},
};

/*! What \a qt5, a text that comes out with Qt 5, is with the toolkit at hand. */
inline QString onToolkit(const QString &qt5)
{
    for (const ToolkitDifference &difference : toolkitDifferences) {
        if (QT_VERSION_MAJOR > 5 && qt5 == QLatin1String(difference.qt5))
            return QLatin1String(difference.qt6);
    }
    return qt5;
}
