// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Loading.h>
#include <tool/Messages.h>
#include <tool/Progress.h>
#include <tool/Table.h>
#include <tool/commands/Commands.h>
#include <tool/formats/Formats.h>
#include <tool/formats/ScreenplayPages.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const char examples[] = R"(  mvrtext pages script.fdx
  mvrtext pages --json script.fdx | jq '.scenes[] | [.number, .eighths]'
)";

// As a breakdown has it: "1 3/8", "2", "4/8".
QString eighthsText(int eighths)
{
    const QString rest = QStringLiteral("%1/8").arg(eighths % 8);
    if (eighths < 8)
        return rest;
    const QString whole = QString::number(eighths / 8);
    return eighths % 8 == 0 ? whole : whole + QLatin1Char(' ') + rest;
}

MVRScreenplayScene sceneOf(const MVRScreenplaySceneLength &part,
                           const QVector<MVRScreenplayScene> &scenes)
{
    return part.scene < 0 ? MVRScreenplayScene() : scenes[part.scene];
}

QJsonObject toJson(const MVRScreenplayPages &pages)
{
    const QVector<MVRScreenplayScene> scenes = pages.scenes();
    const QVector<MVRScreenplayPage> all = pages.pages();
    const QVector<MVRScreenplaySceneLength> lengths = pages.sceneLengths();
    QJsonArray parts;
    for (const MVRScreenplaySceneLength &part : lengths) {
        const MVRScreenplayScene scene = sceneOf(part, scenes);
        parts.append(QJsonObject {{QStringLiteral("page"), all[part.page].number},
                                  {QStringLiteral("scene"), scene.number},
                                  {QStringLiteral("heading"), scene.heading},
                                  {QStringLiteral("firstLine"), part.firstLine},
                                  {QStringLiteral("lastLine"), part.lastLine},
                                  {QStringLiteral("first"), part.firstText},
                                  {QStringLiteral("last"), part.lastText},
                                  {QStringLiteral("eighths"), part.eighths}});
    }
    QJsonArray sceneList;
    for (const MVRScreenplayScene &scene : scenes) {
        sceneList.append(QJsonObject {{QStringLiteral("number"), scene.number},
                                      {QStringLiteral("heading"), scene.heading},
                                      {QStringLiteral("eighths"), scene.eighths}});
    }
    int titlePages = 0;
    for (const MVRScreenplayPage &page : all)
        titlePages += page.isTitlePage ? 1 : 0;
    return {{QStringLiteral("pages"), all.size() - titlePages},
            {QStringLiteral("titlePages"), titlePages},
            {QStringLiteral("parts"), parts},
            {QStringLiteral("scenes"), sceneList}};
}

QString toTable(const MVRScreenplayPages &pages)
{
    const QVector<MVRScreenplayScene> scenes = pages.scenes();
    const QVector<MVRScreenplayPage> all = pages.pages();
    const QVector<MVRScreenplaySceneLength> lengths = pages.sceneLengths();
    Table table({QStringLiteral("PAGE"), QStringLiteral("SCENE"), QStringLiteral("LINES"),
                 QStringLiteral("EIGHTHS"), QStringLiteral("FIRST LINE"),
                 QStringLiteral("LAST LINE")});
    for (const MVRScreenplaySceneLength &part : lengths) {
        table.addRow({QString::number(all[part.page].number), sceneOf(part, scenes).number,
                      QStringLiteral("%1-%2").arg(part.firstLine).arg(part.lastLine),
                      eighthsText(part.eighths), part.firstText.simplified(),
                      part.lastText.simplified()});
    }
    return table.toString();
}

int runPages(const CommandLine &commandLine)
{
    Document document;
    std::optional<MVRScreenplayPages> pages;
    {
        Progress progress;
        const int exitCode = loadForReport(commandLine, document, progress);
        if (exitCode != Success)
            return exitCode;
        QString error;
        if (document.isScreenplay)
            pages = screenplayPages(document, WriteOptions(), &error);
    }
    if (!pages) {
        printMessage(commandLine.file(0), Tool::tr("is no screenplay: it has no scenes"));
        return Failure;
    }
    if (commandLine.isSet("json"))
        printOutput(jsonText(QJsonDocument(toJson(*pages))));
    else
        printOutput(toTable(*pages));
    return Success;
}

}

Command pagesCommand()
{
    return {"pages",
            QT_TRANSLATE_NOOP("Tool", "Tell what stands on which page of a screenplay."),
            "[OPTIONS] FILE",
            QT_TRANSLATE_NOOP("Tool",
                              "Tells what stands on which page of a screenplay: the scenes, their "
                              "first and last lines, and their lengths in eighths of a page."),
            examples,
            {{"FILE", QT_TRANSLATE_NOOP("Tool", "The screenplay; - is the standard input.")}},
            {fromOption(),
             jsonOption(QT_TRANSLATE_NOOP("Tool", "Print an object instead of a table."))},
            {},
            runPages};
}
