// SPDX-License-Identifier: MIT
#include <tool/Saving.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Output.h>
#include <tool/Progress.h>
#include <tool/formats/Formats.h>

#include <core/MVRTextRtf.h>

#include <QHash>
#include <QTextBlock>

namespace {

void reportNotes(Listener &listener, const QString &name, const Format &format, NotesChoice choice,
                 int lost)
{
    if (lost == 0)
        return;
    const QString notes = counted(lost, QT_TRANSLATE_NOOP("mvrtext", "note"),
                                  QT_TRANSLATE_NOOP("mvrtext", "notes"));
    const bool couldStay = choice == NotesChoice::ByFormat || choice == NotesChoice::Inspector;
    listener.say(name,
                 couldStay ? Tool::tr("%1 left out that %2 cannot carry; --notes inline keeps them "
                                      "in the text, mvrtext endnotes lists footnotes behind it")
                                 .arg(notes, QLatin1String(format.title))
                           : Tool::tr("%1 left out").arg(notes));
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

void reportShapes(Listener &listener, const QString &name, const Document &document)
{
    const int count = ownShapes(document);
    if (count > 0)
        listener.say(name,
                     Tool::tr("%1 like the element now, not as set in the input")
                         .arg(counted(count, QT_TRANSLATE_NOOP("mvrtext", "paragraph looks"),
                                      QT_TRANSLATE_NOOP("mvrtext", "paragraphs look"))));
}

}

bool saveDocument(const QString &path, const Format &format, NotesChoice choice,
                  const WriteOptions &options, Document &document, Listener &listener)
{
    const QString name = displayName(path, Tool::tr("standard output"));
    listener.setStep(Tool::tr("Writing %1").arg(name));
    if (!options.author.isEmpty() && !document.text.property(MVRTextRtf::authorProperty).isValid())
        document.text.setProperty(MVRTextRtf::authorProperty, options.author);
    const int lost = placeNotes(document.text, choice, format.notes);
    QByteArray bytes;
    QString error;
    if (!format.write(document, options, &bytes, &error) || !writeOutput(path, bytes, &error)) {
        listener.say(name, error);
        return false;
    }
    reportNotes(listener, name, format, choice, lost);
    if (format.hasElements)
        reportShapes(listener, name, document);
    return true;
}
