// SPDX-License-Identifier: MIT
#include <tool/commands/ScriptReport.h>

#include <tool/Document.h>
#include <tool/Place.h>

#include <QMap>
#include <QRegularExpression>
#include <QTextBlock>
#include <QXmlStreamReader>

namespace {

using Note = MVRFinalDraftFile::Note;

QJsonValue textOrNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QString shapeName(MVRFinalDraftFile::NoteShape shape)
{
    static const char *const names[] = {"among runs", "paragraph", "unanchored", "range"};
    return QString::fromLatin1(names[shape]);
}

/*! Eighths of a page: "1 3/8" are 11; null for anything else. */
QJsonValue eighths(const QString &length)
{
    static const QRegularExpression form(
        QStringLiteral("^\\s*(?:(\\d{1,4})(?:\\s+|$))?(?:(\\d)/8)?\\s*$"));
    const QRegularExpressionMatch match = form.match(length);
    if (!match.hasMatch() || length.trimmed().isEmpty())
        return QJsonValue();
    return match.captured(1).toInt() * 8 + match.captured(2).toInt();
}

int wordCount(const QString &text)
{
    const QString words = text.simplified();
    return words.isEmpty() ? 0 : words.count(QLatin1Char(' ')) + 1;
}

QJsonArray scenesOf(const MVRFinalDraftFile &file)
{
    QJsonArray array;
    const QVector<MVRFinalDraftFile::Scene> scenes = file.scenes();
    for (const MVRFinalDraftFile::Scene &scene : scenes) {
        array.append(QJsonObject {{QStringLiteral("paragraph"), scene.block + 1},
                                  {QStringLiteral("heading"), scene.heading},
                                  {QStringLiteral("number"), textOrNull(scene.number)},
                                  {QStringLiteral("title"), textOrNull(scene.title)},
                                  {QStringLiteral("color"), textOrNull(scene.color)},
                                  {QStringLiteral("page"), textOrNull(scene.page)},
                                  {QStringLiteral("eighths"), eighths(scene.length)},
                                  {QStringLiteral("summary"), textOrNull(scene.summary)}});
    }
    return array;
}

struct Part
{
    int speeches = 0;
    int words = 0;
};

/*! Who speaks: a name without what stands behind it in parentheses, in capitals. */
QJsonArray charactersOf(const QTextDocument &document)
{
    QMap<QString, Part> parts;
    QString speaker;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString type = block.blockFormat().stringProperty(MVRScriptElement::NameProperty);
        if (type == QLatin1String("Character")) {
            speaker = block.text().section(QLatin1Char('('), 0, 0).simplified().toUpper();
            if (!speaker.isEmpty())
                ++parts[speaker].speeches;
        } else if (type == QLatin1String("Dialogue") && !speaker.isEmpty()) {
            parts[speaker].words += wordCount(block.text());
        } else if (type != QLatin1String("Parenthetical")) {
            speaker.clear();
        }
    }
    QJsonArray array;
    for (auto part = parts.cbegin(); part != parts.cend(); ++part) {
        array.append(QJsonObject {{QStringLiteral("name"), part.key()},
                                  {QStringLiteral("speeches"), part->speeches},
                                  {QStringLiteral("words"), part->words}});
    }
    return array;
}

QJsonArray revisionsOf(const MVRFinalDraftFile &file)
{
    QJsonArray array;
    QXmlStreamReader xml(file.elementXml(QStringLiteral("Revisions")));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement
            || xml.name() != QLatin1String("Revision"))
            continue;
        const QXmlStreamAttributes attributes = xml.attributes();
        const auto value = [&attributes](const char *name) {
            return textOrNull(attributes.value(QLatin1String(name)).toString());
        };
        array.append(QJsonObject {{QStringLiteral("id"), value("ID")},
                                  {QStringLiteral("name"), value("Name")},
                                  {QStringLiteral("mark"), value("Mark")},
                                  {QStringLiteral("color"), value("Color")}});
    }
    return array;
}

}

QJsonArray scriptNotes(const Document &document)
{
    QJsonArray array;
    const QVector<Note> notes = document.script->notes();
    for (const Note &note : notes) {
        QJsonObject object;
        if (note.range.start >= 0)
            object = Place(note.range, document.text).toJson();
        object.insert(QStringLiteral("kind"), QStringLiteral("comment"));
        object.insert(QStringLiteral("shape"), shapeName(note.shape));
        object.insert(QStringLiteral("text"), note.text);
        object.insert(QStringLiteral("color"), textOrNull(note.color));
        object.insert(QStringLiteral("author"), textOrNull(note.author));
        object.insert(QStringLiteral("date"), textOrNull(note.date));
        object.insert(QStringLiteral("name"), textOrNull(note.name));
        object.insert(QStringLiteral("type"), textOrNull(note.type));
        object.insert(QStringLiteral("content"), note.content());
        array.append(object);
    }
    return array;
}

QJsonObject scriptFigures(const Document &document)
{
    const MVRFinalDraftFile &file = *document.script;
    QJsonObject byAuthor;
    const QVector<Note> notes = file.notes();
    for (const Note &note : notes)
        byAuthor.insert(note.author, byAuthor.value(note.author).toInt() + 1);
    return {{QStringLiteral("version"), textOrNull(file.version())},
            {QStringLiteral("scenes"), scenesOf(file)},
            {QStringLiteral("cast"), charactersOf(document.text)},
            {QStringLiteral("revisions"), revisionsOf(file)},
            {QStringLiteral("notesByAuthor"), byAuthor}};
}
