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

void reportNotes(Listener &listener, const QString &name, const Format &format, NotesChoice choice,
                 const LostNotes &lost)
{
    if (lost.count == 0)
        return;
    const QString notes = counted(lost.count, QT_TRANSLATE_NOOP("Tool", "note"),
                                  QT_TRANSLATE_NOOP("Tool", "notes"));
    const bool couldStay = choice == NotesChoice::ByFormat || choice == NotesChoice::Inspector;
    listener.say(name,
                 couldStay
                     ? Tool::tr("%1 left out that %2 cannot carry; %3")
                           .arg(notes, QLatin1String(format.title), keepers(lost.hasFootnotes))
                     : Tool::tr("%1 left out").arg(notes));
}

// A screenplay's lines leave no room for notes.
NoteSupport supportFor(const Document &document, const Format &format)
{
    return format.notes == NoteSupport::OnPages && document.isScreenplay ? NoteSupport::None
                                                                         : format.notes;
}

}

bool saveDocument(const QString &path, const Format &format, NotesChoice choice,
                  const WriteOptions &options, Document &document, Listener &listener)
{
    const QString name = displayName(path, Tool::tr("standard output"));
    listener.setStep(Tool::tr("Writing %1").arg(name));
    if (!options.author.isEmpty() && !document.text.property(MVRTextRtf::authorProperty).isValid())
        document.text.setProperty(MVRTextRtf::authorProperty, options.author);
    const QVector<int> notes = noteCounts(document.text);
    LostNotes lost;
    lost.hasFootnotes = notes[Note::Footnote] + notes[Note::InlineFootnote] > 0;
    lost.count = placeNotes(document.text, choice, supportFor(document, format));
    if (!format.hasElements && document.script)
        putInCapitals(document.text);
    if (!placePictures(document, format, options, path, name, listener))
        return false;
    QByteArray bytes;
    QString error;
    WriteOptions told = options;
    told.listener = &listener;
    if (!format.write(document, told, &bytes, &error) || !writeOutput(path, bytes, &error)) {
        listener.say(name, error);
        return false;
    }
    reportNotes(listener, name, format, choice, lost);
    return true;
}
