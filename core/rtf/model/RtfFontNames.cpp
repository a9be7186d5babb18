// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfFontNames.h>

#include <QString>

namespace {

struct ScriptRow
{
    QLatin1String ending;
    int charset;
};

constexpr ScriptRow scriptRows[] = {
    {QLatin1String(" Cyr"), 204},      {QLatin1String(" CE"), 238},
    {QLatin1String(" Greek"), 161},    {QLatin1String(" Tur"), 162},
    {QLatin1String(" (Hebrew)"), 177}, {QLatin1String(" (Arabic)"), 178},
    {QLatin1String(" Baltic"), 186},   {QLatin1String(" (Vietnamese)"), 163},
    {QLatin1String(" (Thai)"), 222},   {QLatin1String(" Cyrillic"), 204},
    {QLatin1String(" Turkish"), 162},
};

} // namespace

int RtfFontNames::charset(const QString &family)
{
    if (!family.contains(QLatin1Char(' ')))
        return 0;
    for (const ScriptRow &row : scriptRows) {
        if (family.endsWith(row.ending))
            return row.charset;
    }
    return 0;
}
