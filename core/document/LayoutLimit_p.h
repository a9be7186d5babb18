// SPDX-License-Identifier: MIT
#pragma once

class QTextDocument;

/*! The height that a layout can count, in its units, with room for what it adds itself. */
constexpr double maxLayoutHeight = 3.0e7;

/*!
    Whether a text becomes higher than the toolkit can count: its coordinates end at 2^25, and a
    layout that comes there never comes back.

    \param text          its lengths are units of the layout, which is made as far as that is safe;
                         sizes of fonts are points
    \param width         of lines, in units
    \param unitsPerPoint for the sizes of fonts
*/
bool isTooHigh(QTextDocument &text, double width, double unitsPerPoint);

/*! Sets the width of lines, and has them laid out where they have another one. */
void setLineWidth(QTextDocument &text, double width);
