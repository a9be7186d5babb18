// SPDX-License-Identifier: MIT
#include <core/MVRUnit.h>

namespace {

double unitsPerInch(MVRUnit::Unit unit)
{
    switch (unit) {
    case MVRUnit::Points:
        return 72.0;
    case MVRUnit::Inches:
        return 1.0;
    case MVRUnit::Centimeters:
        return 2.54;
    case MVRUnit::Millimeters:
        return 25.4;
    case MVRUnit::Picas:
        return 6.0;
    case MVRUnit::Twips:
        return 1440.0;
    }
    return 72.0;
}

}

double MVRUnit::toUnit(Unit from, Unit to, double value)
{
    return from == to ? value : value / unitsPerInch(from) * unitsPerInch(to);
}
