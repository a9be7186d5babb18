// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
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
  mvrtext links chapter.rtf --to-text -o plain.rtf
  mvrtext links chapter.html --clear -o bare.html
)";

void print(const MVRTextInternalLinkMap &map, QTextDocument &document, bool asJson)
{
    Table table(QStringLiteral("ITEM PLACE TEXT").split(QLatin1Char(' ')));
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
    printOutput(asJson ? QString::fromUtf8(QJsonDocument(array).toJson()) : table.toString());
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
    if (commandLine.isSet("clear"))
        MVRTextDoc::clearInternalLinks(&document.text);
    else
        MVRTextDoc::convertMovarinLinksToText(&document.text);
    return rewriting.save(document, progress) ? Success : Failure;
}

}

int runLinks(const QStringList &arguments)
{
    CommandLine commandLine(
        "links",
        "Lists the links of a document to other items of the application, whose target is a\n"
        "number: the item, place (paragraph from 1, characters from 0) and text. Or takes links\n"
        "away and leaves their text.",
        examples);
    Rewriting rewriting(commandLine);
    commandLine.addFlag("json", "Print an array of objects instead of a table.");
    commandLine.addFlag("to-text", "Make the links to items ordinary text; web links stay.");
    commandLine.addFlag("clear", "Make all links ordinary text, web links too.");
    if (const std::optional<int> exitCode = commandLine.parse(arguments))
        return *exitCode;

    const bool changes = commandLine.isSet("to-text") || commandLine.isSet("clear");
    QString error;
    if (!rewriting.readArguments(changes, &error))
        return commandLine.usageError(error);
    if (!changes && commandLine.isSet("output"))
        return commandLine.usageError(QStringLiteral("say what to change: --to-text or --clear"));
    if (!changes)
        return list(commandLine, rewriting);
    return rewriting.isSafe() ? change(commandLine, rewriting) : Failure;
}
