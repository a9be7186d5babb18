// SPDX-License-Identifier: MIT
#include <tool/Saving.h>

#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Output.h>
#include <tool/Progress.h>
#include <tool/formats/Formats.h>

#include <QHash>
#include <QTextBlock>

namespace {

void reportNotes(const QString &name, const Format &format, NotesChoice choice, int lost)
{
    if (lost == 0)
        return;
    QString text = QStringLiteral("%1 left out").arg(counted(lost, "note", "notes"));
    if (choice == NotesChoice::ByFormat || choice == NotesChoice::Inspector)
        text += QStringLiteral(" that %1 cannot carry; --notes inline keeps them in the text")
                    .arg(QString::fromLatin1(format.title));
    printMessage(name, text);
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

void reportShapes(const QString &name, const Document &document)
{
    const int count = ownShapes(document);
    if (count > 0)
        printMessage(name,
                     counted(count, "paragraph looks", "paragraphs look")
                         + QLatin1String(" like the element now, not as set in the input"));
}

}

bool saveDocument(const QString &path, const Format &format, NotesChoice choice,
                  const WriteOptions &options, Document &document, Progress &progress)
{
    const QString name = displayName(path, QStringLiteral("standard output"));
    progress.setStep(QStringLiteral("Writing ") + name);
    const int lost = placeNotes(document.text, choice, format.notes);
    QByteArray bytes;
    QString error;
    if (!format.write(document, options, &bytes, &error) || !writeOutput(path, bytes, &error)) {
        printMessage(name, error);
        return false;
    }
    reportNotes(name, format, choice, lost);
    if (format.hasElements)
        reportShapes(name, document);
    return true;
}
