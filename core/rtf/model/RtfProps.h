// SPDX-License-Identifier: MIT
#pragma once

#include <QtGlobal>

/*!
    Character formatting in RTF's own units, as a group carries it.

    Plain integers, so that a group start is a copy and a format is found by comparing bytes.
    Zero means "not said" except where noted.
*/
struct RtfCharProps
{
    int font = -1; /*!< \f: key of the font table, -1: not said */
    int size = 0; /*!< \fs: half-points */
    int bold = 0;
    int italic = 0;
    int underline = 0; /*!< QTextCharFormat::UnderlineStyle */
    int underlineColor = 0; /*!< \ulc: index of the colour table */
    int strike = 0;
    int vertical = 0; /*!< QTextCharFormat::VerticalAlignment */
    int capitalization = 0; /*!< QFont::Capitalization */
    int hidden = 0;
    int deleted = 0; /*!< text of a deleted revision */
    int foreground = 0; /*!< \cf: index of the colour table */
    int background = 0; /*!< \cb, \chcbpat: index of the colour table */
    int highlight = 0; /*!< \highlight: index of the colour table; covers the background */
    int spacing = 0; /*!< \expndtw: twips between letters */
    int link = 0; /*!< number of an interned link target */
    int field = 0; /*!< number of an interned instruction, see MVRTextFormat::FieldProperty */
    int exact = 0; /*!< \mvrx: number of a set of exact properties */
};

/*! Paragraph formatting in RTF's own units. Lengths are twips; zero means "not said". */
struct RtfParaProps
{
    int alignment = 0; /*!< Qt::Alignment */
    int leftIndent = 0;
    int rightIndent = 0;
    int firstIndent = 0; /*!< relative to leftIndent */
    int spaceBefore = 0;
    int spaceAfter = 0;
    int lineSpacing = 0; /*!< \sl: > 0 at least, < 0 exactly; in 240ths with lineMultiple */
    int lineMultiple = 0;
    int pageBreakBefore = 0;
    int keepTogether = 0;
    int rightToLeft = 0;
    int shading = 0; /*!< \cbpat: index of the colour table */
    int outline = -1; /*!< \outlinelevel: 0–8, -1: body text */
    int list = 0; /*!< \ls: number of a list override, 0: in no list */
    int listLevel = 0;
    int inTable = 0; /*!< \intbl */
    int tableLevel = 0; /*!< \itap: depth of nesting, which only newer files say */
    int tabs = 0; /*!< number of an interned set of tab stops */
    int exact = 0; /*!< \mvrp: number of a set of exact properties */
};

static_assert(sizeof(RtfCharProps) % sizeof(int) == 0 && sizeof(RtfParaProps) % sizeof(int) == 0,
              "compared and hashed as bytes, so there must be no padding");

/*! Lengths beyond this (10,000 points, in twips) are cut: no page is larger. */
constexpr int rtfMaxTwips = 200000;

/*! The largest size of a font, in half-points. */
constexpr int rtfMaxFontSize = 20000;
