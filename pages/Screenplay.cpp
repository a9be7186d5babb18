// SPDX-License-Identifier: MIT
#include <pages/MVRScreenplay.h>

#include <finaldraft/file/FdxStandards_p.h>

using namespace MVRFinalDraft;

namespace {

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
    return fdxStandardSettings(name, name == QLatin1String("Lyrics") ? Dialogue : Action);
}
