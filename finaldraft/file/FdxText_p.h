// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

/*! White space of XML 1.0. */
inline bool fdxIsSpace(char character)
{
    return character == ' ' || character == '\n' || character == '\r' || character == '\t';
}

/*!
    The character data of XML source as a document takes it: references resolved, line ends and
    other breaks as line separators, what a document cannot hold as U+FFFD. Markup inside is
    passed over, the text of CDATA is text.
*/
QString fdxText(const QByteArray &source, int start, int end);

/*! The same as the file has it: line ends as line feeds, other breaks as they are. */
QString fdxPlainText(const QByteArray &source, int start, int end);

/*! The length of fdxText() if \a text begins with that, else -1. */
int fdxPrefixLength(const QByteArray &source, int start, int end, QStringView text);

/*! How many UTF-16 units fdxText() would give. */
int fdxTextLength(const QByteArray &source, int start, int end);

/*! The place behind the first \a count UTF-16 units of [start, end). */
int fdxTextPlace(const QByteArray &source, int start, int end, int count);

/*! Text as XML source; line separators become \a newLine. */
QByteArray fdxEscaped(QStringView text, const QByteArray &newLine);

/*! A value to stand between double quotes. */
QByteArray fdxEscapedValue(const QString &value);
