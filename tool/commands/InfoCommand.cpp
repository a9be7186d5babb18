// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Loading.h>
#include <tool/Messages.h>
#include <tool/Notes.h>
#include <tool/Progress.h>
#include <tool/Table.h>
#include <tool/commands/Commands.h>
#include <tool/commands/ScriptReport.h>
#include <tool/formats/Formats.h>
#include <tool/formats/PageSetups.h>
#include <tool/formats/ScreenplayPages.h>
#include <tool/pages/Pages.h>

#include <core/MVRScriptElement.h>
#include <text/MVRTextDoc.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QTextBlock>

namespace {

const char examples[] = R"(  mvrtext info script.fdx
  mvrtext info --json novel.rtf | jq .words
)";

/*! What is told about a document. */
struct Figures
{
    int paragraphs = 0;
    int words = 0;
    int characters = 0;
    int pages = 0;
    QMap<QString, int> elements;
    QVector<int> notes; // by kind
};

int pageCount(Document &document, Listener &listener)
{
    QString error;
    if (document.isScreenplay)
        return screenplayPages(document, WriteOptions(), &error)->pages().size();
    WriteOptions options;
    options.listener = &listener;
    return Pages(document, pageSetupFor(document, options)).count();
}

Figures figuresOf(Document &document, Listener &listener)
{
    Figures figures;
    for (QTextBlock block = document.text.begin(); block.isValid(); block = block.next()) {
        const QString element = block.blockFormat().stringProperty(MVRScriptElement::NameProperty);
        if (!element.isEmpty() && block.blockNumber() >= document.titlePageBlocks)
            ++figures.elements[element];
    }
    figures.notes = noteCounts(document.text);
    figures.paragraphs = document.text.blockCount();
    const QPair<int, int> counts
        = MVRTextDoc::wordCharacterCount(&document.text, false, false, true, true);
    figures.words = counts.first;
    figures.characters = counts.second;
    figures.pages = pageCount(document, listener);
    return figures;
}

QJsonObject toJson(const Figures &figures, const Document &document)
{
    QJsonObject notes;
    for (const Note::Kind kind : Note::allKinds)
        notes.insert(kindName(kind), figures.notes.value(kind));
    QJsonObject object {{QStringLiteral("title"), document.title},
                        {QStringLiteral("paragraphs"), figures.paragraphs},
                        {QStringLiteral("words"), figures.words},
                        {QStringLiteral("characters"), figures.characters},
                        {QStringLiteral("pages"), figures.pages},
                        {QStringLiteral("notes"), notes}};
    if (!document.isScreenplay)
        return object;
    QJsonObject elements;
    for (auto entry = figures.elements.cbegin(); entry != figures.elements.cend(); ++entry)
        elements.insert(entry.key(), entry.value());
    object.insert(QStringLiteral("elements"), elements);
    object.insert(QStringLiteral("titlePageParagraphs"), document.titlePageBlocks);
    object.insert(QStringLiteral("scaling"), document.scaling);
    object.insert(QStringLiteral("showInvisibles"), document.showInvisibles);
    if (document.script) {
        const QJsonObject script = scriptFigures(document);
        for (auto member = script.constBegin(); member != script.constEnd(); ++member)
            object.insert(member.key(), member.value());
    }
    return object;
}

void printTable(const Figures &figures, const Document &document)
{
    Table table({Tool::tr("TITLE"), document.title});
    const auto add = [&table](const QString &name, int number) {
        table.addRow({name, QString::number(number)});
    };
    add(Tool::tr("paragraphs"), figures.paragraphs);
    add(Tool::tr("words"), figures.words);
    add(Tool::tr("characters"), figures.characters);
    add(Tool::tr("pages"), figures.pages);
    for (const Note::Kind kind : Note::allKinds)
        add(kindsTitle(kind), figures.notes.value(kind));
    if (document.isScreenplay) {
        for (auto entry = figures.elements.cbegin(); entry != figures.elements.cend(); ++entry)
            add(Tool::tr("element %1").arg(entry.key()), entry.value());
        add(Tool::tr("title page paragraphs"), document.titlePageBlocks);
        table.addRow({Tool::tr("scaling"), QString::number(document.scaling) + QLatin1Char('%')});
        table.addRow({Tool::tr("invisible characters"),
                      document.showInvisibles ? Tool::tr("shown") : Tool::tr("hidden")});
    }
    printOutput(table.toString());
}

int runInfo(const CommandLine &commandLine)
{
    Document document;
    Figures figures;
    {
        Progress progress;
        const int exitCode = loadForReport(commandLine, document, progress);
        if (exitCode != Success)
            return exitCode;
        progress.setStep(Tool::tr("Counting"));
        figures = figuresOf(document, progress);
    }
    if (commandLine.isSet("json"))
        printOutput(jsonText(QJsonDocument(toJson(figures, document))));
    else
        printTable(figures, document);
    return Success;
}

}

Command infoCommand()
{
    return {"info",
            QT_TRANSLATE_NOOP("Tool", "Count what is in a document."),
            "[OPTIONS] FILE",
            QT_TRANSLATE_NOOP("Tool",
                              "Counts the paragraphs, words, characters, pages and notes of a "
                              "document and, in a screenplay, the paragraphs of each element."),
            examples,
            {{"FILE", QT_TRANSLATE_NOOP("Tool", "The file to read; - is the standard input.")}},
            {fromOption(),
             jsonOption(QT_TRANSLATE_NOOP("Tool", "Print an object instead of a table."))},
            {},
            runInfo};
}
