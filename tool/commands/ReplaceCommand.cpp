// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Progress.h>
#include <tool/Rewriting.h>
#include <tool/commands/Commands.h>

#include <text/MVRTextDoc.h>

#include <QRegularExpression>
#include <QTextBlock>
#include <QTextCursor>

namespace {

const char examples[] = R"(  mvrtext replace draft.rtf --find Anselm --with Ansel -o draft2.rtf
  mvrtext replace script.fdx --regexp --find "  +" --with " " -o script2.fdx
)";

/*! What the user asked for. */
struct Replacement
{
    QRegularExpression expression;
    QString after;
};

bool readOptions(const CommandLine &commandLine, Replacement *replacement, QString *error)
{
    const QString before = commandLine.value("find");
    if (before.isEmpty() || !commandLine.isSet("with")) {
        *error = Tool::tr("say what to replace: --find TEXT --with TEXT");
        return false;
    }
    replacement->expression = QRegularExpression(
        commandLine.isSet("regexp") ? before : QRegularExpression::escape(before),
        commandLine.isSet("match-case") ? QRegularExpression::UseUnicodePropertiesOption
                                        : QRegularExpression::UseUnicodePropertiesOption
                | QRegularExpression::CaseInsensitiveOption);
    replacement->after = commandLine.value("with");
    if (!replacement->expression.isValid())
        *error = QStringLiteral("--find: ") + replacement->expression.errorString();
    return replacement->expression.isValid();
}

int replaceIn(Document &document, const Replacement &replacement)
{
    QTextCursor script(&document.text);
    script.setPosition(document.text.findBlockByNumber(document.titlePageBlocks).position());
    script.setKeepPositionOnInsert(true);
    const int count = MVRTextDoc::replaceAll(replacement.expression, replacement.after,
                                             QTextCursor(&document.text));
    // A line feed on the title page has made one more paragraph of it.
    if (document.titlePageBlocks > 0)
        document.titlePageBlocks = script.blockNumber();
    return count;
}

int runReplace(const CommandLine &commandLine)
{
    Rewriting rewriting(commandLine);
    QString error;
    Replacement replacement;
    if (!rewriting.readArguments(true, &error) || !readOptions(commandLine, &replacement, &error))
        return commandLine.usageError(error);
    if (!rewriting.isSafe())
        return Failure;
    int count = 0;
    {
        Progress progress;
        Document document;
        if (!rewriting.load(document, progress))
            return Failure;
        progress.setStep(Tool::tr("Replacing"));
        count = replaceIn(document, replacement);
        if (count < 0) {
            printMessage(rewriting.inputName(0),
                         Tool::tr("--find takes too many steps; nothing was written"));
            return Failure;
        }
        if (!rewriting.save(document, progress))
            return Failure;
    }
    printMessage(rewriting.outputName(),
                 Tool::tr("%1 replaced")
                     .arg(counted(count, QT_TRANSLATE_NOOP("Tool", "place"),
                                  QT_TRANSLATE_NOOP("Tool", "places"))));
    return Success;
}

}

Command replaceCommand()
{
    Command command {
        "replace",
        QT_TRANSLATE_NOOP("Tool", "Replace text in a document."),
        "[OPTIONS] --find TEXT --with TEXT -o OUT IN",
        QT_TRANSLATE_NOOP("Tool",
                          "Replaces text in a document. What is found lies within a paragraph and "
                          "gives its format to what takes its place."),
        examples,
        {Rewriting::input()},
        {{"find", "TEXT", QT_TRANSLATE_NOOP("Tool", "The text to replace."), {}, "", true},
         {"with",
          "TEXT",
          QT_TRANSLATE_NOOP("Tool", "What takes its place; may be empty."),
          {},
          "",
          true},
         {"regexp",
          nullptr,
          QT_TRANSLATE_NOOP("Tool", "TEXT to find is a regular expression."),
          {}},
         {"match-case",
          nullptr,
          QT_TRANSLATE_NOOP("Tool", "Tell capitals from small letters."),
          {}}},
        {oldFormatWord()},
        runReplace};
    command.options += Rewriting::options(true);
    return command;
}
