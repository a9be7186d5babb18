#include "CommandLine.h"
#include "Commands.h"
#include "Document.h"
#include "Formats.h"
#include "Loading.h"
#include "Messages.h"
#include "Notes.h"
#include "Output.h"
#include "Progress.h"

#include <QHash>
#include <QTextBlock>

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
    conversion->from = findFormat(conversion->input, commandLine.value("from"), error);
    if (!conversion->from)
        return false;
    conversion->to = findFormat(conversion->output, commandLine.value("to"), error);
    if (!conversion->to)
        return false;
    if (!conversion->from->read)
        *error = QStringLiteral("%1 is not read").arg(QString::fromLatin1(conversion->from->title));
    return conversion->from->read != nullptr;
}

void reportNotes(const Conversion &conversion, int lost)
{
    if (lost == 0)
        return;
    QString text = QStringLiteral("%1 left out").arg(counted(lost, "note", "notes"));
    if (conversion.notes == NotesChoice::ByFormat || conversion.notes == NotesChoice::Inspector)
        text += QStringLiteral(" that %1 cannot carry; --notes inline keeps them in the text")
                    .arg(QString::fromLatin1(conversion.to->title));
    printMessage(displayName(conversion.output, QStringLiteral("standard output")), text);
}

// The writer of screenplays gives a paragraph its element and nothing of its own.
int ownShapes(const Document &document)
{
    QHash<QString, QTextBlockFormat> formats;
    for (const MVRScriptElement &element : document.elements)
        formats.insert(element.name(), element.blockFormat());
    int count = 0;
    QTextBlock block = document.text.findBlockByNumber(document.titlePageBlocks);
    for (; block.isValid(); block = block.next()) {
        const QTextBlockFormat format = block.blockFormat();
        const auto element
            = formats.constFind(format.stringProperty(MVRScriptElement::NameProperty));
        if (element != formats.constEnd() && block.length() > 1
            && !MVRScriptElement::equal(*element, format))
            ++count;
    }
    return count;
}

void reportShapes(const Conversion &conversion, const Document &document)
{
    const int count = conversion.to->write == writeFdx ? ownShapes(document) : 0;
    if (count > 0)
        printMessage(displayName(conversion.output, QStringLiteral("standard output")),
                     counted(count, "paragraph looks", "paragraphs look")
                         + QLatin1String(" like the element now, not as set in the input"));
}

bool convert(const Conversion &conversion)
{
    Progress progress;
    Document document;
    ReadOptions readOptions;
    // A screenplay file keeps the letters as typed; its reader puts them in capitals again.
    readOptions.capitals = conversion.to->write != writeFdx;
    if (!loadDocument(conversion.input, *conversion.from, readOptions, document, progress))
        return false;

    const QString name = displayName(conversion.output, QStringLiteral("standard output"));
    progress.setStep(QStringLiteral("Writing ") + name);
    const int lost = placeNotes(document.text, conversion.notes, conversion.to->notes);
    QByteArray bytes;
    QString error;
    if (!conversion.to->write(document, conversion.options, &bytes, &error)
        || !writeOutput(conversion.output, bytes, &error)) {
        printMessage(name, error);
        return false;
    }
    reportNotes(conversion, lost);
    reportShapes(conversion, document);
    return true;
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
