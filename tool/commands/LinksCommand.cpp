// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Place.h>
#include <tool/Progress.h>
#include <tool/Rewriting.h>
#include <tool/Table.h>
#include <tool/commands/Commands.h>

#include <text/MVRTextDoc.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const char examples[] = R"(  mvrtext links chapter.rtf
  mvrtext links --json chapter.rtf | jq '.[].item'
  mvrtext links chapter.rtf --remove items -o plain.rtf
  mvrtext links chapter.html --remove all -o bare.html
)";

void print(const MVRTextInternalLinkMap &map, QTextDocument &document, bool asJson)
{
    Table table(Tool::tr("ITEM PLACE TEXT").split(QLatin1Char(' ')));
    QJsonArray array;
    for (auto link = map.links.cbegin(); link != map.links.cend(); ++link) {
        const Place place(link.key(), document);
        const QString text = selectedText(link.key(), document);
        if (!asJson) {
            table.addRow({QString::number(link.value()), place.toWords(), text});
            continue;
        }
        QJsonObject object = place.toJson();
        object.insert(QStringLiteral("item"), link.value());
        object.insert(QStringLiteral("text"), text);
        array.append(object);
    }
    printOutput(asJson ? jsonText(QJsonDocument(array)) : table.toString());
}

int list(const CommandLine &commandLine, const Rewriting &rewriting)
{
    Document document;
    MVRTextInternalLinkMap map;
    {
        Progress progress;
        if (!rewriting.load(document, progress))
            return Failure;
        map = MVRTextDoc::internalLinks(document.text);
    }
    print(map, document.text, commandLine.isSet("json"));
    return Success;
}

int change(const CommandLine &commandLine, const Rewriting &rewriting)
{
    Progress progress;
    Document document;
    if (!rewriting.load(document, progress))
        return Failure;
    if (commandLine.value("remove") == QLatin1String("all"))
        MVRTextDoc::clearInternalLinks(&document.text);
    else
        MVRTextDoc::convertMovarinLinksToText(&document.text);
    return rewriting.save(document, progress) ? Success : Failure;
}

int runLinks(const CommandLine &commandLine)
{
    const bool changes = commandLine.isSet("remove");
    Rewriting rewriting(commandLine);
    QString error;
    if (!rewriting.readArguments(changes, &error))
        return commandLine.usageError(error);
    if (!changes && commandLine.isSet("output"))
        return commandLine.usageError(
            Tool::tr("say what to change: --remove items or --remove all"));
    if (!changes)
        return list(commandLine, rewriting);
    return rewriting.isSafe() ? change(commandLine, rewriting) : Failure;
}

}

Command linksCommand()
{
    Command command {
        "links",
        QT_TRANSLATE_NOOP("Tool", "List or remove links to other items of the application."),
        "[OPTIONS] IN\n[OPTIONS] --remove LINKS -o OUT IN",
        QT_TRANSLATE_NOOP("Tool",
                          "Lists the links of a document to other items of the application, whose "
                          "target is a number: the item, place (paragraph from 1, characters from "
                          "0) and text. Or takes links away and leaves their text."),
        examples,
        {Rewriting::input()},
        {jsonOption(QT_TRANSLATE_NOOP("Tool", "Print an array of objects instead of a table.")),
         {"remove",
          "LINKS",
          QT_TRANSLATE_NOOP("Tool",
                            "Make links ordinary text: those to items, or all, web links too."),
          {QStringLiteral("items"), QStringLiteral("all")}}},
        {oldFormatWord(), {"to-text", "remove", "items", {}}, {"clear", "remove", "all", {}}},
        runLinks};
    command.options += Rewriting::options(false);
    return command;
}
