// SPDX-License-Identifier: MIT
#include <tool/PageOptions.h>

#include <tool/CommandLine.h>
#include <tool/formats/Formats.h>

#include <tool/Messages.h>

#include <QRegularExpression>

namespace {

// "4-9", or "4" for both.
bool readRange(const CommandLine &commandLine, const char *name, QString *first, QString *last)
{
    static const QRegularExpression range(
        QStringLiteral("\\A\\s*([^\\s-]+)\\s*(?:-\\s*([^\\s-]+)\\s*)?\\z"));
    const QRegularExpressionMatch match = range.match(commandLine.value(name));
    *first = match.captured(1);
    *last = match.captured(2).isEmpty() ? *first : match.captured(2);
    return match.hasMatch() || !commandLine.isSet(name);
}

bool readPages(const CommandLine &commandLine, WriteOptions *options)
{
    QString first;
    QString last;
    if (!readRange(commandLine, "pages", &first, &last))
        return false;
    options->firstPage = first.toInt();
    options->lastPage = last.toInt();
    return first.isEmpty() || (options->firstPage > 0 && options->lastPage >= options->firstPage);
}

}

QVector<Option> pageOptions()
{
    return {
        {"scenes",
         "FIRST-LAST",
         QT_TRANSLATE_NOOP("Tool", "Only these scenes of a screenplay, where they stand."),
         {}},
        {"pages",
         "FIRST-LAST",
         QT_TRANSLATE_NOOP("Tool", "Only the pages of a pdf that bear these numbers."),
         {}},
        {"page-numbers",
         nullptr,
         QT_TRANSLATE_NOOP("Tool", "Number the pages of a pdf or png that is no screenplay."),
         {}},
        {"revisions",
         nullptr,
         QT_TRANSLATE_NOOP("Tool", "Mark revised lines of a screenplay in the margin."),
         {}},
        {"watermark",
         "TEXT",
         QT_TRANSLATE_NOOP("Tool", "Write a text across the pages of a pdf or png."),
         {}},
    };
}

bool readPageOptions(const CommandLine &commandLine, WriteOptions *options, QString *error)
{
    options->hasPageNumbers = commandLine.isSet("page-numbers");
    options->hasRevisionMarks = commandLine.isSet("revisions");
    options->watermark = commandLine.value("watermark");
    if (!readRange(commandLine, "scenes", &options->firstScene, &options->lastScene)) {
        *error = Tool::tr("--scenes takes a range such as 4-9");
        return false;
    }
    if (readPages(commandLine, options))
        return true;
    *error = Tool::tr("--pages takes a range such as 3-7");
    return false;
}
