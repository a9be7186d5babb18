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

void reportNotes(Listener &listener, const QString &name, const Format &format, NotesChoice choice,
                 int lost)
{
    if (lost == 0)
        return;
    const QString notes
        = counted(lost, QT_TRANSLATE_NOOP("Tool", "note"), QT_TRANSLATE_NOOP("Tool", "notes"));
    const bool couldStay = choice == NotesChoice::ByFormat || choice == NotesChoice::Inspector;
    listener.say(name,
                 couldStay ? Tool::tr("%1 left out that %2 cannot carry; --notes inline keeps them "
                                      "in the text, mvrtext endnotes lists footnotes behind it")
                                 .arg(notes, QLatin1String(format.title))
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
    const int lost = placeNotes(document.text, choice, supportFor(document, format));
    if (!format.hasElements && document.script)
        putInCapitals(document.text);
    if (!placePictures(document, format, options, path, name, listener))
        return false;
    QByteArray bytes;
    QString error;
    if (!format.write(document, options, &bytes, &error) || !writeOutput(path, bytes, &error)) {
        listener.say(name, error);
        return false;
    }
    reportNotes(listener, name, format, choice, lost);
    return true;
}
