// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/Document.h>
#include <tool/Loading.h>
#include <tool/Messages.h>
#include <tool/Output.h>
#include <tool/Progress.h>
#include <tool/Saving.h>
#include <tool/commands/Commands.h>
#include <tool/formats/Formats.h>

#include <QHash>

namespace {

const char examples[] = R"(  mvrtext convert script.fdx script.pdf
  mvrtext convert --notes inline script.fdx script.txt
  mvrtext convert --page 2 --dpi 300 script.fdx page2.png
  mvrtext convert --from md --to html - - < chapter.md > chapter.html
)";

/*! What the user asked for, checked. */
struct Conversion
{
    QString input;
    QString output;
    const Format *from = nullptr;
    const Format *to = nullptr;
    NotesChoice notes = NotesChoice::ByFormat;
    WriteOptions options;
};

void addOptions(CommandLine &commandLine)
{
    commandLine.addFile("IN", "The file to read; - is the standard input.");
    commandLine.addFile("OUT", "The file to write; - is the standard output.");
    commandLine.addOption("from", "Format of IN where its suffix does not tell.",
                          readableFormats().join(QLatin1Char('|')));
    commandLine.addOption("to", "Format of OUT where its suffix does not tell.",
                          writableFormats().join(QLatin1Char('|')));
    commandLine.addOption("notes",
                          "Put notes into the text (inline), attach them to words (inspector) or "
                          "leave them out (drop). Default: inline for fdx, inspector for rtf, "
                          "else drop.",
                          QStringLiteral("inline|inspector|drop"));
    commandLine.addOption("paper", "Paper of pdf, png, odt and html.", QStringLiteral("letter|a4"),
                          "letter");
    commandLine.addOption("page", "Page to draw as png.", QStringLiteral("number"), "1");
    commandLine.addOption("dpi", "Dots per inch of a png, 20 to 600.", QStringLiteral("number"),
                          "150");
}

bool readNumber(const CommandLine &commandLine, const char *name, int least, int most, int *number,
                QString *error)
{
    bool isNumber = false;
    const int value = commandLine.value(name).toInt(&isNumber);
    if (isNumber && value >= least && value <= most) {
        *number = value;
        return true;
    }
    *error = QStringLiteral("--%1 takes a number from %2 to %3")
                 .arg(QString::fromLatin1(name))
                 .arg(least)
                 .arg(most);
    return false;
}

template <typename Value>
bool readChoice(const CommandLine &commandLine, const char *name,
                const QHash<QString, Value> &choices, Value *choice, QString *error)
{
    const QString word = commandLine.value(name).toLower();
    if (choices.contains(word)) {
        *choice = choices.value(word);
        return true;
    }
    *error = QStringLiteral("--%1 does not take \"%2\"").arg(QString::fromLatin1(name), word);
    return false;
}

bool readOptions(const CommandLine &commandLine, Conversion *conversion, QString *error)
{
    static const QHash<QString, NotesChoice> notes {
        {QString(), NotesChoice::ByFormat},
        {QStringLiteral("inline"), NotesChoice::Inline},
        {QStringLiteral("inspector"), NotesChoice::Inspector},
        {QStringLiteral("drop"), NotesChoice::Drop}};
    static const QHash<QString, QPageSize> papers {
        {QStringLiteral("letter"), QPageSize(QPageSize::Letter)},
        {QStringLiteral("a4"), QPageSize(QPageSize::A4)}};
    WriteOptions &options = conversion->options;
    return readChoice(commandLine, "notes", notes, &conversion->notes, error)
        && readChoice(commandLine, "paper", papers, &options.paper, error)
        && readNumber(commandLine, "page", 1, 100000, &options.page, error)
        && readNumber(commandLine, "dpi", 20, 600, &options.dpi, error);
}

bool readFormats(const CommandLine &commandLine, Conversion *conversion, QString *error)
{
    conversion->input = commandLine.file(0);
    conversion->output = commandLine.file(1);
    conversion->from = readableFormat(conversion->input, commandLine.value("from"), error);
    if (!conversion->from)
        return false;
    conversion->to = findFormat(conversion->output, commandLine.value("to"), error);
    return conversion->to != nullptr;
}

bool convert(const Conversion &conversion)
{
    Progress progress;
    Document document;
    ReadOptions readOptions;
    // A screenplay file keeps the letters as typed; its reader puts them in capitals again.
    readOptions.capitals = !conversion.to->hasElements;
    return loadDocument(conversion.input, *conversion.from, readOptions, document, progress)
        && saveDocument(conversion.output, *conversion.to, conversion.notes, conversion.options,
                        document, progress);
}

}

int runConvert(const QStringList &arguments)
{
    CommandLine commandLine(
        "convert", "Converts a document. The suffixes of the files tell the formats.", examples);
    addOptions(commandLine);
    if (const std::optional<int> exitCode = commandLine.parse(arguments))
        return *exitCode;

    Conversion conversion;
    QString error;
    if (!readFormats(commandLine, &conversion, &error)
        || !readOptions(commandLine, &conversion, &error))
        return commandLine.usageError(error);
    if (isSameFile(conversion.input, conversion.output)) {
        printMessage(conversion.output, QStringLiteral("is the input itself; nothing was written"));
        return Failure;
    }
    return convert(conversion) ? Success : Failure;
}
