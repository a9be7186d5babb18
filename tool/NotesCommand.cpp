#include "CommandLine.h"
#include "Commands.h"
#include "Document.h"
#include "Formats.h"
#include "Loading.h"
#include "Messages.h"
#include "Notes.h"
#include "Progress.h"
#include "Table.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocumentFragment>

namespace {

const char examples[] = R"(  mvrtext notes script.fdx
  mvrtext notes --json script.fdx | jq -r '.[].content'
)";

/*! Where a note stands: paragraph from 1, characters from 0 within their paragraphs. */
struct Place
{
    int paragraph;
    int start;
    int endParagraph;
    int end;
};

Place placeOf(const Note &note, const QTextDocument &document)
{
    const QTextBlock first = document.findBlock(note.start);
    const QTextBlock last = document.findBlock(qMax(note.start, note.end - 1));
    return {first.blockNumber() + 1, note.start - first.position(), last.blockNumber() + 1,
            note.end - last.position()};
}

QString anchoredText(const Note &note, QTextDocument &document)
{
    QTextCursor cursor(&document);
    cursor.setPosition(note.start);
    cursor.setPosition(note.end, QTextCursor::KeepAnchor);
    return cursor.selection().toPlainText();
}

QString colorName(const Note &note)
{
    return note.color.isValid() ? note.color.name() : QString();
}

QString placeInWords(const Place &place)
{
    QString words = QStringLiteral("%1:%2-").arg(place.paragraph).arg(place.start);
    if (place.endParagraph != place.paragraph)
        words += QString::number(place.endParagraph) + QLatin1Char(':');
    return words + QString::number(place.end);
}

QJsonObject toJson(const Note &note, QTextDocument &document)
{
    const Place place = placeOf(note, document);
    return {{QStringLiteral("kind"), kindName(note.kind)},
            {QStringLiteral("paragraph"), place.paragraph},
            {QStringLiteral("start"), place.start},
            {QStringLiteral("endParagraph"), place.endParagraph},
            {QStringLiteral("end"), place.end},
            {QStringLiteral("text"), anchoredText(note, document)},
            {QStringLiteral("color"),
             note.color.isValid() ? QJsonValue(colorName(note)) : QJsonValue()},
            {QStringLiteral("content"), note.content}};
}

void printTable(const QVector<Note> &notes, QTextDocument &document)
{
    Table table(QStringLiteral("KIND PLACE TEXT COLOUR CONTENT").split(QLatin1Char(' ')));
    for (const Note &note : notes)
        table.addRow({kindName(note.kind), placeInWords(placeOf(note, document)),
                      anchoredText(note, document), colorName(note), note.content});
    printOutput(table.toString());
}

}

int runNotes(const QStringList &arguments)
{
    CommandLine commandLine(
        "notes",
        "Lists the notes of a document: their kind, place (paragraph from 1, characters from 0),\n"
        "the text that they are attached to, colour and content.",
        examples);
    commandLine.addFile("FILE", "The file to read; - is the standard input.");
    commandLine.addFlag("json", "Print an array of objects instead of a table.");
    commandLine.addOption("from", "Format of FILE where its suffix does not tell.",
                          readableFormats().join(QLatin1Char('|')));
    if (const std::optional<int> exitCode = commandLine.parse(arguments))
        return *exitCode;

    Document document;
    QVector<Note> notes;
    {
        Progress progress;
        const int exitCode = loadForReport(commandLine, document, progress);
        if (exitCode != Success)
            return exitCode;
        notes = notesOf(document.text);
    }
    if (!commandLine.isSet("json")) {
        printTable(notes, document.text);
        return Success;
    }
    QJsonArray array;
    for (const Note &note : qAsConst(notes))
        array.append(toJson(note, document.text));
    printOutput(QString::fromUtf8(QJsonDocument(array).toJson()));
    return Success;
}
