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

#include <text/MVRTextDoc.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const char examples[] = R"(  mvrtext count chapter1.rtf chapter2.rtf
  mvrtext count --with-footnotes --json thesis.rtf | jq .words
)";

struct Count
{
    QString file;
    int words;
    int characters;
};

bool count(const CommandLine &commandLine, const QString &path, const Format &format,
           Progress &progress, QVector<Count> *counts)
{
    Document document;
    ReadOptions options;
    options.capitals = false;
    if (!loadDocument(path, format, options, document, progress))
        return false;
    const QPair<int, int> counted
        = MVRTextDoc::wordCharacterCount(&document.text, commandLine.isSet("with-comments"),
                                         commandLine.isSet("with-footnotes"), true, true);
    counts->append({path, counted.first, counted.second});
    return true;
}

Count totalOf(const QVector<Count> &counts)
{
    Count total {Tool::tr("total"), 0, 0};
    for (const Count &one : counts) {
        total.words += one.words;
        total.characters += one.characters;
    }
    return total;
}

QJsonObject toJson(const Count &count)
{
    return {{QStringLiteral("words"), count.words},
            {QStringLiteral("characters"), count.characters}};
}

void printJson(const QVector<Count> &counts)
{
    QJsonArray files;
    for (const Count &one : counts) {
        QJsonObject object = toJson(one);
        object.insert(QStringLiteral("file"), one.file);
        files.append(object);
    }
    QJsonObject object = toJson(totalOf(counts));
    object.insert(QStringLiteral("files"), files);
    printOutput(jsonText(QJsonDocument(object)));
}

void printTable(const QVector<Count> &counts)
{
    Table table(Tool::tr("FILE WORDS CHARACTERS").split(QLatin1Char(' ')));
    const auto add = [&table](const Count &one) {
        table.addRow({displayName(one.file, one.file), QString::number(one.words),
                      QString::number(one.characters)});
    };
    for (const Count &one : counts)
        add(one);
    if (counts.size() > 1)
        add(totalOf(counts));
    printOutput(table.toString());
}

int runCount(const CommandLine &commandLine)
{
    QVector<const Format *> formats;
    const QStringList files = commandLine.files();
    for (const QString &file : files) {
        QString error;
        formats.append(readableFormat(file, commandLine.value("from"), &error));
        if (!formats.last())
            return commandLine.usageError(error);
    }
    QVector<Count> counts;
    bool isComplete = true;
    {
        Progress progress;
        for (int i = 0; i < files.size(); ++i)
            isComplete &= count(commandLine, files.at(i), *formats.at(i), progress, &counts);
    }
    if (!counts.isEmpty())
        commandLine.isSet("json") ? printJson(counts) : printTable(counts);
    return isComplete ? Success : Failure;
}

}

Command countCommand()
{
    return {
        "count",
        QT_TRANSLATE_NOOP("Tool", "Count the words and characters of documents."),
        "[OPTIONS] FILE...",
        QT_TRANSLATE_NOOP("Tool",
                          "Counts the words and characters of documents. Blanks and paragraph "
                          "ends are characters."),
        examples,
        {{"FILE", QT_TRANSLATE_NOOP("Tool", "The files to read; - is the standard input."), true}},
        {fromOption(),
         {"with-comments",
          nullptr,
          QT_TRANSLATE_NOOP("Tool", "Count the content of comments too."),
          {}},
         {"with-footnotes",
          nullptr,
          QT_TRANSLATE_NOOP("Tool", "Count the content of footnotes too."),
          {}},
         jsonOption(QT_TRANSLATE_NOOP("Tool", "Print an object instead of a table."))},
        {},
        runCount};
}
