// SPDX-License-Identifier: MIT
#include <core/rtf/model/RtfFontNames.h>

#include <QString>

namespace {

struct ScriptRow
{
    const char *ending;
    int charset;
};

constexpr ScriptRow scriptRows[] = {
    {" Cyr", 204},      {" CE", 238},       {" Greek", 161},   {" Tur", 162},
    {" (Hebrew)", 177}, {" (Arabic)", 178}, {" Baltic", 186},  {" (Vietnamese)", 163},
    {" (Thai)", 222},   {" Cyrillic", 204}, {" Turkish", 162},
};

} // namespace

int RtfFontNames::charset(const QString &family)
{
    if (!family.contains(QLatin1Char(' ')))
        return 0;
    for (const ScriptRow &row : scriptRows) {
        if (family.endsWith(QLatin1String(row.ending)))
            return row.charset;
    }
    return 0;
}
