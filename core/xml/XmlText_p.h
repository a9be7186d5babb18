// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

/*!
    Gives \a text without the characters that XML 1.0 cannot hold: control characters other than
    tab and line breaks, unpaired surrogates, U+FFFE and U+FFFF. Shares the text when it is clean.
*/
QString xmlText(const QString &text);

/*! White space with a line feed: between elements it only lays a file out. */
bool isXmlLayout(const QString &text);
