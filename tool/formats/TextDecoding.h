// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/*!
    Turns the bytes of a plain text file into text.

    A byte order mark decides (UTF-8, UTF-16, UTF-32), else valid UTF-8 is UTF-8 and anything else
    Windows-1252. Line ends of every system become "\n"; stray control characters are left out.
    \param text  receives the text
    \return false when the bytes are no text: control characters are too many
*/
bool decodeText(const QByteArray &bytes, QString *text);

/*! What is wrong with bytes that are no text, and with text whose parts are nested too deep. */
QString notTextError();
QString nestingError();

/*!
    Turns the bytes of a web page into text: by a byte order mark, else by the first charset that
    its start names, else as UTF-8.
*/
QString decodeHtml(const QByteArray &bytes);
