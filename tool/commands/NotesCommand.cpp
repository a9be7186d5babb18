// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Messages.h>
#include <tool/Notes.h>
#include <tool/Place.h>
#include <tool/Progress.h>
#include <tool/Rewriting.h>
#include <tool/Table.h>
#include <tool/commands/Commands.h>
#include <tool/commands/NoteChanges.h>
#include <tool/commands/ScriptReport.h>

#include <text/MVRTextDoc.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

const char examples[] = R"(  mvrtext notes script.fdx
  mvrtext notes --json script.fdx | jq -r '.[].content'
  mvrtext notes draft.rtf --make inline -o marked.rtf
  mvrtext notes draft.rtf --make comments --dry-run
  mvrtext notes draft.rtf --make annotations --trim --enclose "[ ]" --as-text -o draft.txt
  mvrtext notes draft.rtf --remove comments -o clean.rtf
)";

QString colorName(const QColor &color)
{
    return color.isValid() ? color.name() : QString();
}

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonObject toJson(const Note &note, const QTextDocument &document)
{
    QJsonObject object = Place(note.range, document).toJson();
    object.insert(QStringLiteral("kind"), kindName(note.kind));
    object.insert(QStringLiteral("text"), note.text(document));
    object.insert(QStringLiteral("color"), textOrNull(colorName(note.color)));
    object.insert(QStringLiteral("author"), textOrNull(note.author));
    object.insert(QStringLiteral("date"), textOrNull(note.date.toString(Qt::ISODate)));
    object.insert(QStringLiteral("content"), note.contentText(document).trimmed());
    return object;
}

Table noteTable()
{
    return Table(Tool::tr("KIND PLACE TEXT COLOUR CONTENT").split(QLatin1Char(' ')));
}

void printTable(const MVRTextNotes &notes, const QTextDocument &document)
{
    Table table = noteTable();
    for (const Note &note : notes)
        table.addRow({kindTitle(note.kind), Place(note.range, document).toWords(),
                      note.text(document), colorName(note.color),
                      note.contentText(document).trimmed()});
    printOutput(table.toString());
}

/*! In the document one note gives way to the other; the file has all of them. */
void printScriptTable(const MVRFinalDraftFile &file, const QTextDocument &document)
{
    Table table = noteTable();
    const QVector<MVRFinalDraftFile::Note> notes = file.notes();
    for (const MVRFinalDraftFile::Note &note : notes) {
        const QString place
            = note.range.start < 0 ? QString() : Place(note.range, document).toWords();
        table.addRow({kindTitle(Note::Comment), place, note.text,
                      colorName(MVRFinalDraft::toColor(note.color, QColor())),
                      note.content().trimmed()});
    }
    printOutput(table.toString());
}

int list(const CommandLine &commandLine, const Rewriting &rewriting)
{
    Document document;
    MVRTextNotes notes;
    {
        Progress progress;
        if (!rewriting.load(document, progress))
            return Failure;
        notes = MVRTextDoc::notes(&document.text);
    }
    if (!commandLine.isSet("json")) {
        if (document.script)
            printScriptTable(*document.script, document.text);
        else
            printTable(notes, document.text);
        return Success;
    }
    QJsonArray array = document.script ? scriptNotes(document) : QJsonArray();
    if (!document.script) {
        for (const Note &note : qAsConst(notes))
            array.append(toJson(note, document.text));
    }
    printOutput(jsonText(QJsonDocument(array)));
    return Success;
}

int change(const CommandLine &commandLine, const Rewriting &rewriting, const NoteChanges &changes)
{
    QStringList report;
    {
        Progress progress;
        Document document;
        if (!rewriting.load(document, progress))
            return Failure;
        report = changes.apply(document.text);
        const int hidden = changes.removes(Note::Comment) && document.script
            ? document.script->removeHiddenNotes()
            : 0;
        if (hidden > 0)
            report << Tool::tr("%1 removed from beside the text")
                          .arg(countedKind(hidden, Note::Comment));
        if (!commandLine.isSet("dry-run"))
            return rewriting.saveWithNotes(changes.endsInText(), document, progress) ? Success
                                                                                     : Failure;
    }
    if (report.isEmpty())
        report << Tool::tr("no note would change");
    printOutput(report.join(QLatin1Char('\n')) + QLatin1Char('\n'));
    return Success;
}

int runNotes(const CommandLine &commandLine)
{
    Rewriting rewriting(commandLine);
    NoteChanges changes;
    QString error;
    if (!changes.read(commandLine, &error))
        return commandLine.usageError(error);
    const bool writes = !changes.isEmpty() && !commandLine.isSet("dry-run");
    if (!rewriting.readArguments(writes, &error))
        return commandLine.usageError(error);
    if (changes.isEmpty() && (commandLine.isSet("output") || commandLine.isSet("dry-run")))
        return commandLine.usageError(Tool::tr("say what to change: --make, --remove, ..."));
    if (changes.isEmpty())
        return list(commandLine, rewriting);
    if (writes && !rewriting.isSafe())
        return Failure;
    return change(commandLine, rewriting, changes);
}

}

Command notesCommand()
{
    Command command {
        "notes",
        QT_TRANSLATE_NOOP("Tool", "List, move, trim or remove the notes of a document."),
        "[OPTIONS] IN\n[OPTIONS] --make KIND|--remove KIND|--trim|--enclose STRINGS -o OUT IN",
        QT_TRANSLATE_NOOP("Tool",
                          "Lists the notes of a document: their kind, place (paragraph from 1, "
                          "characters from 0), the text that they are attached to, colour and "
                          "content. Or changes them, in this order: remove, make, trim, enclose."),
        examples,
        {Rewriting::input()},
        {jsonOption(QT_TRANSLATE_NOOP("Tool", "Print an array of objects instead of a table."))},
        {oldFormatWord(), {"to", "make", nullptr, NoteChanges::kindWords()}},
        runNotes};
    command.options += NoteChanges::options();
    command.options.append({"dry-run",
                            nullptr,
                            QT_TRANSLATE_NOOP("Tool", "Only say how many notes would change."),
                            {}});
    command.options += Rewriting::options(false);
    return command;
}
