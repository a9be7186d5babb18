// SPDX-License-Identifier: MIT
#pragma once

class QString;

/*! What the names of fonts say about their characters, where nothing else does. */
namespace RtfFontNames {

/*!
    The \fcharset (RTF 1.9.1, "Font Table") of a font that Windows names for a script: "Arial Cyr",
    "Courier New CE".
    \return 0 for other names
*/
int charset(const QString &family);

}
