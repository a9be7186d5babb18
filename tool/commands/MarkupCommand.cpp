// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Notes.h>
#include <tool/Progress.h>
#include <tool/Rewriting.h>
#include <tool/commands/Commands.h>
#include <tool/formats/Formats.h>
#include <tool/pages/Lengths.h>

#include <core/MVRTextFormat.h>
#include <core/document/FormatEdits_p.h>
#include <core/document/Pictures_p.h>
#include <text/LinkedPictures_p.h>
#include <text/MVRPicturePolicy.h>
#include <text/MVRTextDoc.h>

#include <QDir>
#include <QFileInfo>
#include <QImage>

namespace {

const char examples[] = R"(  mvrtext markup --write script.fdx -o script.txt
  mvrtext markup --read script.txt -o script.rtf
  mvrtext markup --read chapter.txt -o chapter.html
)";

/*! Writes every note as a code, and says which were lost. */
void writeMarkup(QTextDocument &text, const QString &name, Listener &listener)
{
    // Only what stands in the text has a code.
    MVRTextDoc::convertInspectorCommentsToInlineAnnotations(&text, QTextCursor());
    MVRTextDoc::convertInspectorFootnotesToInlineFootnotes(&text, QTextCursor());
    const int lost = MVRTextDoc::commentsMap(&text, -1, -1).size();
    if (lost > 0)
        listener.say(name,
                     Tool::tr("%1 left out whose content cannot be read")
                         .arg(counted(lost, QT_TRANSLATE_NOOP("Tool", "note"),
                                      QT_TRANSLATE_NOOP("Tool", "notes"))));
    MVRTextDoc::toInlineMarkup(&text);
}

bool isLinkedPicture(const QTextCharFormat &format)
{
    return format.isImageFormat()
        && !format.stringProperty(MVRTextFormat::ImageLinkProperty).isEmpty();
}

// Codes count pixels.
void sizePicturesInPoints(QTextDocument &text)
{
    changeAllFormats(&text, [](QTextCharFormat &format) {
        if (!isLinkedPicture(format))
            return;
        QTextImageFormat image = format.toImageFormat();
        image.setWidth(image.width() * pointsPerPixel);
        image.setHeight(image.height() * pointsPerPixel);
        format = image;
    });
}

/*! Gives the pictures of codes the names that a written file is to refer to. */
void nameByFile(QTextDocument &text)
{
    changeAllFormats(&text, [](QTextCharFormat &format) {
        if (isLinkedPicture(format))
            format.setProperty(QTextFormat::ImageName,
                               format.property(MVRTextFormat::ImageLinkProperty));
    });
}

/*! Which pictures the input may have opened: those beside it, unless the user says more. */
MVRPicturePolicy picturePolicy(const CommandLine &commandLine)
{
    if (commandLine.isSet("media"))
        return MVRPicturePolicy::anywhere();
    if (commandLine.isSet("media-from"))
        return MVRPicturePolicy::below(commandLine.value("media-from"));
    const QString input = commandLine.file(0);
    return MVRPicturePolicy::below(input == QLatin1String("-") ? QDir::currentPath()
                                                               : QFileInfo(input).absolutePath());
}

/*! How many pictures of codes are only placeholders, for one reason or the other. */
struct Unopened
{
    int outside = 0; // of the folder for pictures
    int missing = 0;
};

Unopened unopened(const QTextDocument &text, const MVRPicturePolicy &policy)
{
    Unopened unopened;
    for (FragmentWalker walker(&text, 0); walker.isValid(); walker.next()) {
        const QTextCharFormat format = walker.format();
        if (!isLinkedPicture(format)
            || !LinkedPictures::isPlaceholder(
                picture(text, format.toImageFormat().name()).value<QImage>()))
            continue;
        const bool isOutside
            = !policy.allows(format.stringProperty(MVRTextFormat::ImageLinkProperty));
        (isOutside ? unopened.outside : unopened.missing) += walker.end() - walker.start();
    }
    return unopened;
}

/*! Says how many pictures were left alone, and why. */
void reportUnopened(const Unopened &unopened, bool isAnywhere, const QString &name,
                    Listener &listener)
{
    const auto say = [&](int count, const QString &reason) {
        if (count > 0)
            listener.say(name,
                         reason.arg(counted(count, QT_TRANSLATE_NOOP("Tool", "picture"),
                                            QT_TRANSLATE_NOOP("Tool", "pictures"))));
    };
    say(unopened.outside,
        isAnywhere ? Tool::tr("%1 not opened: of another machine")
                   : Tool::tr("%1 not opened, outside of the folder for pictures; see --media-from "
                              "and --media"));
    say(unopened.missing, Tool::tr("%1 not opened: not there, or no pictures"));
}

void readMarkup(QTextDocument &text, const Format &output, const CommandLine &commandLine,
                const QString &name, Listener &listener)
{
    const MVRPicturePolicy policy = picturePolicy(commandLine);
    MVRTextDoc::fromInlineMarkup(&text, policy);
    reportUnopened(unopened(text, policy), commandLine.isSet("media"), name, listener);
    text.setUndoRedoEnabled(false); // reading has switched it on
    sizePicturesInPoints(text);
    // In the text they would be codes again.
    if (output.notes == NoteSupport::Attached)
        placeNotes(text, NotesChoice::Inspector, output.notes);
    if (output.pictures == PictureSupport::Named)
        nameByFile(text);
}

int runMarkup(const CommandLine &commandLine)
{
    Rewriting rewriting(commandLine);
    QString error;
    if (commandLine.isSet("write") == commandLine.isSet("read"))
        return commandLine.usageError(Tool::tr("say either --write or --read"));
    if (commandLine.isSet("media") && commandLine.isSet("media-from"))
        return commandLine.usageError(Tool::tr("say either --media or --media-from"));
    if (!rewriting.readArguments(true, &error))
        return commandLine.usageError(error);
    if (!rewriting.isSafe())
        return Failure;

    Progress progress;
    Document document;
    if (commandLine.isSet("read"))
        rewriting.keepLetters();
    if (!rewriting.load(document, progress))
        return Failure;
    const Format &output = *rewriting.outputFormat();
    const QString name = rewriting.outputName();
    if (commandLine.isSet("write"))
        writeMarkup(document.text, name, progress);
    else
        readMarkup(document.text, output, commandLine, name, progress);
    // What was spelled out so as not to be lost is not to be lost now.
    return rewriting.saveWithNotes(true, document, progress) ? Success : Failure;
}

} // namespace

Command markupCommand()
{
    Command command {
        "markup",
        QT_TRANSLATE_NOOP("Tool", "Write notes as codes into the text, or read such codes."),
        "[OPTIONS] --write -o OUT IN\n[OPTIONS] --read -o OUT IN",
        QT_TRANSLATE_NOOP("Tool",
                          "Writes the notes of a document as codes into its text, where any "
                          "program keeps them, or reads such codes: notes become notes of OUT "
                          "where its format has any, else text in brackets, and the pictures that "
                          "codes name are loaded."),
        examples,
        {Rewriting::input()},
        {{"write", nullptr, QT_TRANSLATE_NOOP("Tool", "Write codes."), {}},
         {"read", nullptr, QT_TRANSLATE_NOOP("Tool", "Read codes."), {}},
         {"media-from",
          "DIR",
          QT_TRANSLATE_NOOP("Tool",
                            "Open pictures in this folder and below, instead of in that of IN."),
          {}},
         {"media",
          "WHERE",
          QT_TRANSLATE_NOOP("Tool", "Open the pictures that codes name wherever they are."),
          {QStringLiteral("anywhere")}}},
        {oldFormatWord()},
        runMarkup};
    command.options += Rewriting::options(true);
    return command;
}
