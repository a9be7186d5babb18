// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Folders.h>
#include <tool/Loading.h>
#include <tool/Messages.h>
#include <tool/Output.h>
#include <tool/PageOptions.h>
#include <tool/Progress.h>
#include <tool/Saving.h>
#include <tool/System.h>
#include <tool/commands/Batch.h>
#include <tool/commands/Commands.h>
#include <tool/formats/Formats.h>

#include <core/MVRSettings.h>

#include <QFileInfo>
#include <QThread>

namespace {

constexpr int maxJobs = 1000;

const char examples[] = R"(  mvrtext convert script.fdx script.pdf
  mvrtext convert --notes inline script.fdx script.txt
  mvrtext convert --scenes 4-9 script.fdx sides.pdf
  mvrtext convert --page 2 --dpi 300 script.fdx page2.png
  mvrtext convert --from md --to html - - < chapter.md > chapter.html
  mvrtext convert --to pdf --into out *.fdx
  mvrtext convert --to rtf --into out --keep-tree drafts
)";

/*! How documents are converted. */
struct Conversion
{
    const Format *to = nullptr;
    NotesChoice notes = NotesChoice::ByFormat;
    WriteOptions options;
    QString mediaFolder; // whose pictures may be opened
    bool hasSmartPunctuation = false;
};

bool readOptions(const CommandLine &commandLine, Conversion *conversion, QString *error)
{
    conversion->mediaFolder = commandLine.value("media-from");
    conversion->hasSmartPunctuation = commandLine.isSet("smart");
    return readWritingOptions(commandLine, &conversion->notes, &conversion->options, error)
        && readPageOptions(commandLine, &conversion->options, error)
        && commandLine.readNumber("page", 1, 100000, &conversion->options.page, error)
        && commandLine.readNumber("dpi", 20, 600, &conversion->options.dpi, error);
}

bool convert(const QString &input, const Format &from, const QString &output,
             const Conversion &conversion, Listener &listener)
{
    Document document;
    ReadOptions readOptions;
    readOptions.setTarget(*conversion.to);
    readOptions.mediaFolder = conversion.mediaFolder;
    readOptions.hasSmartPunctuation = conversion.hasSmartPunctuation;
    return loadDocument(input, from, readOptions, document, listener)
        && saveDocument(output, *conversion.to, conversion.notes, conversion.options, document,
                        listener);
}

int convertOne(const CommandLine &commandLine, Conversion *conversion)
{
    const QString input = commandLine.file(0);
    const QString output = commandLine.file(1);
    QString error;
    const Format *from = readableFormat(input, commandLine.value("from"), &error);
    if (from)
        conversion->to = findFormat(output, commandLine.value("to"), &error);
    if (!from || !conversion->to)
        return commandLine.usageError(error);
    if (System::isSameFile(input, output)) {
        printMessage(output, Tool::tr("is the input itself; nothing was written"));
        return Failure;
    }
    Progress progress;
    return convert(input, *from, output, *conversion, progress) ? Success : Failure;
}

bool convertInBatch(const BatchFile &file, const Conversion &conversion, Listener &listener)
{
    if (!file.from) {
        listener.say(file.input, file.error);
        return false;
    }
    const QString folder = QFileInfo(file.output).path();
    if (!Folders::make(folder)) {
        listener.say(file.input, Tool::tr("the folder %1 cannot be made").arg(folder));
        return false;
    }
    return convert(file.input, *file.from, file.output, conversion, listener);
}

/*! How many threads work; 0, and \a error says so, when the option is wrong. */
int readJobs(const CommandLine &commandLine, QString *error)
{
    int jobs = qMax(1, QThread::idealThreadCount());
    if (commandLine.value("jobs").isEmpty()
        || commandLine.readNumber("jobs", 1, maxJobs, &jobs, error))
        return jobs;
    return 0;
}

int convertBatch(const CommandLine &commandLine, Conversion *conversion)
{
    QString error;
    BatchWish wish;
    wish.inputs = commandLine.files();
    wish.into = commandLine.value("into");
    wish.from = commandLine.value("from");
    wish.keepsTree = commandLine.isSet("keep-tree");
    const int jobs = readJobs(commandLine, &error);
    if (jobs == 0)
        return commandLine.usageError(error);
    if (!commandLine.isSet("to"))
        return commandLine.usageError(Tool::tr("--into goes with --to FORMAT"));
    if (wish.inputs.contains(QStringLiteral("-")))
        return commandLine.usageError(Tool::tr("--into takes no standard input"));
    wish.to = conversion->to = findFormat(QString(), commandLine.value("to"), &error);
    if (!wish.to)
        return commandLine.usageError(error);

    const BatchPlan plan = planBatch(wish);
    for (const QString &collision : plan.collisions)
        printMessage(QString(), collision);
    if (!plan.collisions.isEmpty()) {
        printMessage(QString(),
                     Tool::tr("nothing was written; --keep-tree keeps files of one name "
                              "apart that come from different folders"));
        return Failure;
    }
    return runBatch(plan.files, jobs, [conversion](const BatchFile &file, Listener &listener) {
        return convertInBatch(file, *conversion, listener);
    });
}

int runConvert(const CommandLine &commandLine)
{
    Conversion conversion;
    QString error;
    if (!readOptions(commandLine, &conversion, &error))
        return commandLine.usageError(error);
    if (commandLine.isSet("into"))
        return convertBatch(commandLine, &conversion);
    if (commandLine.isSet("keep-tree") || commandLine.isSet("jobs"))
        return commandLine.usageError(Tool::tr("--keep-tree and --jobs go with --into"));
    if (commandLine.files().size() < 2)
        return commandLine.usageError(Tool::tr("a file name is missing"));
    if (commandLine.files().size() > 2)
        return commandLine.usageError(Tool::tr("too many file names; --into FOLDER takes them"));
    return convertOne(commandLine, &conversion);
}

}

Command convertCommand()
{
    return {
        "convert",
        QT_TRANSLATE_NOOP("Tool", "Convert documents; the suffixes tell the formats."),
        "[OPTIONS] IN OUT\n[OPTIONS] --to FORMAT --into FOLDER IN...",
        QT_TRANSLATE_NOOP("Tool",
                          "Converts a document, or many into a folder, several at a time; a folder "
                          "among them stands for all documents below it. The suffixes of the files "
                          "tell the formats."),
        examples,
        {{"IN", QT_TRANSLATE_NOOP("Tool", "The file to read; - is the standard input."), true}},
        QVector<Option> {fromOption(), toOption()} + writingOptions() + pageOptions()
            + QVector<Option> {{"media-from",
                                "FOLDER",
                                QT_TRANSLATE_NOOP("Tool",
                                                  "Open the pictures that md and html name, where "
                                                  "they are in this folder or below."),
                                {}},
                               {"smart",
                                nullptr,
                                QT_TRANSLATE_NOOP(
                                    "Tool", "Make quotes, dashes and dots of md typographic."),
                                {}},
                               {"page",
                                "NUMBER",
                                QT_TRANSLATE_NOOP("Tool", "Page to draw as png."),
                                {},
                                "1"},
                               {"dpi",
                                "NUMBER",
                                QT_TRANSLATE_NOOP("Tool", "Dots per inch of a png, 20 to 600."),
                                {},
                                "150"},
                               {"into",
                                "FOLDER",
                                QT_TRANSLATE_NOOP(
                                    "Tool",
                                    "Write the converted files there, under the names of the files "
                                    "that are read. Goes on after a failure."),
                                {}},
                               {"keep-tree",
                                nullptr,
                                QT_TRANSLATE_NOOP(
                                    "Tool",
                                    "With --into: keep the folders below the one that all files "
                                    "share."),
                                {}},
                               {"jobs",
                                "NUMBER",
                                QT_TRANSLATE_NOOP(
                                    "Tool",
                                    "With --into: how many files to convert at a time. Default: as "
                                    "many as there are processors."),
                                {}}},
        {},
        runConvert};
}
