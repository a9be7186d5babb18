// SPDX-License-Identifier: MIT
#pragma once

#include <core/rtf/model/RtfResources.h>

#include <QTextFormat>

/*!
    What RTF's own words cannot say exactly: fractions of a twip, this system's paragraph
    properties, values that are set although they equal the default.

    The file keeps them in one ignorable destination, a numbered list of property sets that
    \mvrx (characters) and \mvrp (paragraphs) refer to, so that a set is written once however
    many runs share it. Other programs skip both.
*/
namespace RtfExact {

/*!
    The properties in which \a wanted differs from \a got, out of those that may be written.
    Notes and other properties of the user range are never among them.
*/
RtfExactProperties difference(const QTextFormat &wanted, const QTextFormat &got);

/*! Sets and clears \a properties on \a format. */
void apply(const RtfExactProperties &properties, QTextFormat *format);

/*! One set as text: `id` in hexadecimal, a letter for the type, the value; blanks between. */
QByteArray toText(const RtfExactProperties &properties);

/*!
    Reads what toText() wrote, sets separated by ';'. What is not known, of the wrong type or out
    of range is left out: the file may come from anywhere.
*/
QVector<RtfExactProperties> fromText(const QByteArray &text);

}
