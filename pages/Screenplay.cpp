// SPDX-License-Identifier: MIT
#include <pages/MVRScreenplay.h>

using namespace MVRFinalDraft;

namespace {

/*! An element of a new script: indents in inches from the paper's edge, space in points. */
struct StandardElement
{
    const char *name;
    ElementType paginateAs;
    Qt::AlignmentFlag alignment;
    double firstIndent;
    double leftIndent;
    double rightIndent;
    int spaceBefore;
    bool isInCapitals;
};

constexpr StandardElement standardElements[] = {
    {"General", General, Qt::AlignLeft, 0.0, 1.5, 7.5, 0, false},
    {"Scene Heading", SceneHeading, Qt::AlignLeft, 0.0, 1.5, 7.5, 24, true},
    {"Action", Action, Qt::AlignLeft, 0.0, 1.5, 7.5, 12, false},
    {"Character", Character, Qt::AlignLeft, 0.0, 3.5, 7.25, 12, true},
    {"Parenthetical", Parenthetical, Qt::AlignLeft, -0.1, 3.0, 5.5, 0, false},
    {"Dialogue", Dialogue, Qt::AlignLeft, 0.0, 2.5, 6.0, 0, false},
    {"Transition", Transition, Qt::AlignRight, 0.0, 5.5, 7.1, 12, true},
    {"Shot", SceneHeading, Qt::AlignLeft, 0.0, 1.5, 7.5, 12, true},
    {"Cast List", Action, Qt::AlignLeft, 0.0, 1.5, 7.5, 0, true},
    {"Lyrics", Dialogue, Qt::AlignLeft, 0.0, 2.5, 6.0, 0, false},
};

const StandardElement &findStandardElement(const QString &name)
{
    const StandardElement *action = nullptr;
    for (const StandardElement &row : standardElements) {
        if (name == QLatin1String(row.name))
            return row;
        if (row.paginateAs == Action && !action)
            action = &row;
    }
    return *action;
}

// "2." at the right, where all scripts have it.
MVRScreenplayHeader pageNumber()
{
    MVRScreenplayRun number;
    number.label = QStringLiteral("Page #");
    MVRScreenplayRun period;
    period.text = QStringLiteral(".");
    MVRScreenplayParagraph line;
    line.attr.alignment = Qt::AlignRight;
    line.attr.leftIndent = 1.5;
    line.attr.rightIndent = -1.0;
    line.runs = {number, period};
    MVRScreenplayHeader header;
    header.isVisible = true;
    header.paragraphs = {line};
    return header;
}

}

MVRScreenplaySettings::MVRScreenplaySettings()
    : header(pageNumber())
{
}

ElementSettings MVRScreenplay::standardElement(const QString &name)
{
    const StandardElement &row = findStandardElement(name);
    ElementSettings settings;
    settings.type = name;
    settings.paginateAs = row.paginateAs;
    settings.paragraphSpec.alignment = row.alignment;
    settings.paragraphSpec.firstIndent = row.firstIndent;
    settings.paragraphSpec.leftIndent = row.leftIndent;
    settings.paragraphSpec.rightIndent = row.rightIndent;
    settings.paragraphSpec.spaceBefore = row.spaceBefore;
    if (row.isInCapitals)
        settings.fontSpec.style = AllCaps;
    return settings;
}
