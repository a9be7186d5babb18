// SPDX-License-Identifier: MIT
#include <finaldraft/file/FdxStandards_p.h>

#include <algorithm>

using namespace MVRFinalDraft;

namespace {

/*! Indents in inches from the paper's edge, space in points. */
struct Standard
{
    const char *type;
    bool isInCapitals;
    Qt::AlignmentFlag alignment;
    double firstIndent;
    double leftIndent;
    double rightIndent;
    int spaceBefore;
    ElementType paginateAs;
    ElementType returnKey;
};

constexpr Standard standards[] = {
    {"General", false, Qt::AlignLeft, 0.0, 1.5, 7.5, 0, General, General},
    {"Scene Heading", true, Qt::AlignLeft, 0.0, 1.5, 7.5, 24, SceneHeading, Action},
    {"Action", false, Qt::AlignLeft, 0.0, 1.5, 7.5, 12, Action, Action},
    {"Character", true, Qt::AlignLeft, 0.0, 3.5, 7.25, 12, Character, Dialogue},
    {"Parenthetical", false, Qt::AlignLeft, -0.1, 3.0, 5.5, 0, Parenthetical, Dialogue},
    {"Dialogue", false, Qt::AlignLeft, 0.0, 2.5, 6.0, 0, Dialogue, Action},
    {"Transition", true, Qt::AlignRight, 0.0, 5.5, 7.1, 12, Transition, SceneHeading},
    {"Shot", true, Qt::AlignLeft, 0.0, 1.5, 7.5, 12, SceneHeading, Action},
    {"Cast List", true, Qt::AlignLeft, 0.0, 1.5, 7.5, 0, Action, Action},
};

ElementSettings settingsOf(const Standard &row)
{
    ElementSettings settings;
    settings.type = QLatin1String(row.type);
    settings.paginateAs = row.paginateAs;
    settings.returnKey = row.returnKey;
    settings.paragraphSpec.alignment = row.alignment;
    settings.paragraphSpec.firstIndent = row.firstIndent;
    settings.paragraphSpec.leftIndent = row.leftIndent;
    settings.paragraphSpec.rightIndent = row.rightIndent;
    settings.paragraphSpec.spaceBefore = row.spaceBefore;
    if (row.isInCapitals)
        settings.fontSpec.style = AllCaps;
    return settings;
}

const Standard *find(const QString &type)
{
    const auto row = std::find_if(
        std::begin(standards), std::end(standards),
        [&type](const Standard &standard) { return type == QLatin1String(standard.type); });
    return row == std::end(standards) ? nullptr : row;
}

}

ElementSettings fdxStandardSettings(const QString &type, ElementType otherwise)
{
    const Standard *row = find(type);
    if (!row)
        row = find(toString(otherwise));
    ElementSettings settings = row ? settingsOf(*row) : ElementSettings();
    settings.type = type;
    return settings;
}

QVector<ElementSettings> fdxStandardSettings()
{
    QVector<ElementSettings> all;
    for (const Standard &row : standards)
        all.append(settingsOf(row));
    return all;
}

void fdxCountFromMargin(ElementSettings *settings, double margin)
{
    constexpr double pointsPerInch = 72.0;
    settings->paragraphSpec.leftIndent -= margin / pointsPerInch;
    settings->paragraphSpec.rightIndent -= margin / pointsPerInch;
}
