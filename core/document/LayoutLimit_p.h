// SPDX-License-Identifier: MIT
#pragma once

class QSizeF;
class QTextDocument;

/*! The height that a layout can count, in its units, with room for what it adds itself. */
constexpr double maxLayoutHeight = 3.0e7;

/*!
    The height of a page for texts that are laid out in one piece. A layout without pages may not
    come back from any multiple of 2^23; one with them goes on, by a line that it moves behind it.
*/
constexpr double longPage = 4.0e6;

/*!
    Whether a text becomes higher than the toolkit can count: its coordinates end at 2^25, and a
    layout that comes there never comes back. So does one that has so much text in tables in tables
    that its layout takes minutes.

    \param text          its lengths are units of the layout, which is made as far as that is safe;
                         sizes of fonts are points
    \param lineWidth     of lines, in units
    \param page          what the text is laid out for
    \param unitsPerPoint for the sizes of fonts
*/
bool isTooHigh(QTextDocument &text, double lineWidth, const QSizeF &page, double unitsPerPoint);

/*!
    Lets all tables and frames stand in the flow. What cuts a long layout into pages needs that: the
    toolkit does not part what floats from what stands beside it, so that text of either would be on
    no page.
*/
void putFramesIntoFlow(QTextDocument &text);

/*!
    Lets tables and frames of a text stand in its flow where more of them float than anybody sets:
    for each line the toolkit looks through those that it may stand beside.
*/
void boundFloats(QTextDocument &text);

/*! Sets the page size, and has the text laid out where it has another one. */
void setPage(QTextDocument &text, const QSizeF &page);
