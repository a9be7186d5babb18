// SPDX-License-Identifier: MIT
#include <tool/CommonOptions.h>

#include <tool/CommandLine.h>
#include <tool/formats/Formats.h>

namespace {

constexpr char marginWord[] = "margin"; // comments are drawn there

struct NotesWord
{
    const char *word;
    NotesChoice choice;
};

constexpr NotesWord notesWords[] = {
    {"inline", NotesChoice::Inline},
    {"inspector", NotesChoice::Inspector},
    {marginWord, NotesChoice::Inspector},
    {"drop", NotesChoice::Drop},
};

struct PaperWord
{
    const char *word;
    QPageSize::PageSizeId size;
};

constexpr PaperWord paperWords[] = {
    {"letter", QPageSize::Letter},
    {"a4", QPageSize::A4},
    {"legal", QPageSize::Legal},
};

QStringList paperChoices()
{
    QStringList words;
    for (const PaperWord &row : paperWords)
        words << QLatin1String(row.word);
    return words;
}

QStringList notesChoices()
{
    QStringList words;
    for (const NotesWord &row : notesWords)
        words << QLatin1String(row.word);
    return words;
}

}

Option fromOption()
{
    Option option {
        "from", "FORMAT",
        QT_TRANSLATE_NOOP("Tool", "Format of what is read, where its suffix does not tell."),
        readableFormats()};
    option.takesOthers = true;
    return option;
}

Option toOption()
{
    Option option {
        "to", "FORMAT",
        QT_TRANSLATE_NOOP("Tool", "Format of what is written, where its suffix does not tell."),
        writableFormats()};
    option.takesOthers = true;
    return option;
}

Option jsonOption(const char *what)
{
    return {"json", nullptr, what, {}};
}

QVector<Option> writingOptions()
{
    return {
        {"notes", "WHERE",
         QT_TRANSLATE_NOOP("Tool",
                           "Put notes into the text (inline), attach them to words (inspector), "
                           "the comments of pages into the margin (margin) or leave them out "
                           "(drop). Without this option they stay as they are in fdx, rtf and md, "
                           "and stand at the foot and beside the text in pdf and png; other "
                           "formats carry none."),
         notesChoices()},
        {"paper", "PAPER",
         QT_TRANSLATE_NOOP("Tool",
                           "Paper of pdf, png, odt and html. Without this option it is the "
                           "document's own, or letter."),
         paperChoices()},
        {"extract-media",
         "FOLDER",
         QT_TRANSLATE_NOOP("Tool",
                           "Write the pictures of html and md as files into this folder, instead "
                           "of into the page."),
         {}},
        {"author",
         "NAME",
         QT_TRANSLATE_NOOP("Tool", "Author of a document that names none (rtf)."),
         {}},
        {"elements",
         "MAP",
         QT_TRANSLATE_NOOP("Tool",
                           "Which elements the paragraphs of other documents become in fdx: "
                           "\"outline\", or pairs such as \"h1=Act,text=Dialogue\" (of scenes, "
                           "headings, h1 to h6, text). Without this option headings like those of "
                           "scenes become Scene Heading, others General, the rest Action."),
         {}},
    };
}

bool readWritingOptions(const CommandLine &commandLine, NotesChoice *notes, WriteOptions *options,
                        QString *error)
{
    const QString where = commandLine.value("notes");
    for (const NotesWord &row : notesWords) {
        if (where == QLatin1String(row.word))
            *notes = row.choice;
    }
    const QString paper = commandLine.value("paper");
    for (const PaperWord &row : paperWords) {
        if (paper == QLatin1String(row.word))
            options->paper = QPageSize(row.size);
    }
    options->hasCommentsInMargin = where == QLatin1String(marginWord);
    options->author = commandLine.value("author");
    options->mediaFolder = commandLine.value("extract-media");
    const QString elements = commandLine.value("elements");
    return elements.isEmpty() || readElementMapping(elements, &options->elements, error);
}

OldWord oldFormatWord()
{
    return {"as", "to", nullptr, {}};
}
