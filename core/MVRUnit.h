// SPDX-License-Identifier: MIT
#pragma once

#include <core/MvrCoreExport.h>

/*! Lengths in the units that documents and file formats use. */
class MVRCORE_EXPORT MVRUnit
{
public:
    /*! What a length is counted in. */
    enum Unit { Points, Inches, Centimeters, Millimeters, Picas, Twips };

    /*!
        Converts a length.

        \param from   the unit of \a value
        \param to     the unit wanted
        \param value  the length
        \return the length in \a to (72 points are 1 inch are 2.54 centimeters are 6 picas are
                1440 twips)
    */
    static double toUnit(Unit from, Unit to, double value);
};
