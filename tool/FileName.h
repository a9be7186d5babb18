// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

/*!
    The name of a file as a text. To the system it is bytes, UTF-8 as a rule; a byte that is none
    becomes half a surrogate pair, which no text has, so that the name can be had back.
*/
QString fileNameFromBytes(const QByteArray &bytes);

/*! The name as the system knows it. */
QByteArray fileNameToBytes(const QString &name);

/*!
    A text for a terminal: control characters, which could move the cursor or change the colours,
    and bytes of no character are written as "\x1B"; line feeds and tabs, too.
*/
QString shownOnTerminal(const QString &text);
