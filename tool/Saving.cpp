// SPDX-License-Identifier: MIT
#include <tool/Saving.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Output.h>
#include <tool/Progress.h>
#include <tool/formats/Capitals.h>
#include <tool/formats/Formats.h>
#include <tool/formats/Media.h>

#include <core/MVRTextRtf.h>

namespace {

struct LostNotes
{
    int count = 0;
    bool hasFootnotes = false;
};

QString keepers(bool hasFootnotes)
{
    const QString keepers = Tool::tr("--notes inline keeps them in the text, rtf and md beside it");
    return hasFootnotes ? keepers + Tool::tr(", mvrtext endnotes lists footnotes behind it")
                        : keepers;
}

QString leftOut(const Format &format, NotesChoice choice, const LostNotes &lost)
{
    if (lost.count == 0)
        return QString();
    const QString notes = counted(lost.count, QT_TRANSLATE_NOOP("Tool", "note"),
                                  QT_TRANSLATE_NOOP("Tool", "notes"));
    const bool couldStay = choice == NotesChoice::ByFormat || choice == NotesChoice::Inspector;
    return couldStay ? Tool::tr("%1 left out that %2 cannot carry; %3")
                           .arg(notes, QLatin1String(format.title), keepers(lost.hasFootnotes))
                     : Tool::tr("%1 left out").arg(notes);
}

QString nameOf(const QString &path)
{
    return displayName(path, Tool::tr("standard output"));
}

// A screenplay's lines leave no room for notes.
NoteSupport supportFor(const Document &document, const Format &format)
{
    return format.notes == NoteSupport::OnPages && document.isScreenplay ? NoteSupport::None
                                                                         : format.notes;
}

}

bool renderDocument(const Format &format, NotesChoice choice, const WriteOptions &options,
                    Document &document, Listener &listener, OutputFile *file)
{
    const QString name = nameOf(file->path);
    listener.setStep(Tool::tr("Writing %1").arg(name));
    if (!options.author.isEmpty() && !document.text.property(MVRTextRtf::authorProperty).isValid())
        document.text.setProperty(MVRTextRtf::authorProperty, options.author);
    const QVector<int> notes = noteCounts(document.text);
    LostNotes lost;
    lost.hasFootnotes = notes[Note::Footnote] + notes[Note::InlineFootnote] > 0;
    lost.count = placeNotes(document.text, choice, supportFor(document, format));
    if (!format.hasElements && document.script)
        putInCapitals(document.text);
    if (!placePictures(document, format, options, file->path, name, listener))
        return false;
    QString error;
    WriteOptions told = options;
    told.listener = &listener;
    if (!format.write(document, told, &file->data, &error)) {
        listener.say(name, error);
        return false;
    }
    file->leftOut = leftOut(format, choice, lost);
    return true;
}

bool saveFiles(const QVector<OutputFile> &files, Listener &listener)
{
    QString failed;
    QString error;
    if (!writeOutputs(files, &failed, &error)) {
        listener.say(nameOf(failed), error);
        return false;
    }
    for (const OutputFile &file : files) {
        if (!file.leftOut.isEmpty())
            listener.say(nameOf(file.path), file.leftOut);
    }
    return true;
}

bool saveDocument(const QString &path, const Format &format, NotesChoice choice,
                  const WriteOptions &options, Document &document, Listener &listener)
{
    OutputFile file {path, QByteArray()};
    return renderDocument(format, choice, options, document, listener, &file)
        && saveFiles({file}, listener);
}
