// SPDX-License-Identifier: MIT
#include <tool/commands/NoteChanges.h>

#include <tool/CommandLine.h>
#include <tool/Messages.h>

#include <text/MVRTextDoc.h>

#include <QHash>
#include <QTextCursor>

#include <algorithm>

namespace {

/*! What each kind of note becomes, by the word that names it on the command line. */
const QHash<QString, QVector<Note::Kind>> &targetsByWord()
{
    static const QHash<QString, QVector<Note::Kind>> targets {
        {QStringLiteral("inline"),
         {Note::InlineAnnotation, Note::InlineFootnote, Note::InlineAnnotation,
          Note::InlineFootnote}},
        {QStringLiteral("inspector"),
         {Note::Comment, Note::Footnote, Note::Comment, Note::Footnote}},
        {QStringLiteral("comments"), QVector<Note::Kind>(4, Note::Comment)},
        {QStringLiteral("footnotes"), QVector<Note::Kind>(4, Note::Footnote)},
        {QStringLiteral("annotations"), QVector<Note::Kind>(4, Note::InlineAnnotation)},
        {QStringLiteral("inline-footnotes"), QVector<Note::Kind>(4, Note::InlineFootnote)}};
    return targets;
}

/*! The kinds that a word means where notes are removed. */
const QHash<QString, QVector<Note::Kind>> &kindsByWord()
{
    static const QHash<QString, QVector<Note::Kind>> kinds {
        {QStringLiteral("all"),
         {Note::Comment, Note::Footnote, Note::InlineAnnotation, Note::InlineFootnote}},
        {QStringLiteral("inline"), {Note::InlineAnnotation, Note::InlineFootnote}},
        {QStringLiteral("inspector"), {Note::Comment, Note::Footnote}},
        {QStringLiteral("comments"), {Note::Comment}},
        {QStringLiteral("footnotes"), {Note::Footnote}},
        {QStringLiteral("annotations"), {Note::InlineAnnotation}},
        {QStringLiteral("inline-footnotes"), {Note::InlineFootnote}}};
    return kinds;
}

bool readKinds(const CommandLine &commandLine, const char *option,
               const QHash<QString, QVector<Note::Kind>> &words, QVector<Note::Kind> *kinds,
               QString *error)
{
    const QString word = commandLine.value(option).toLower();
    if (!commandLine.isSet(option))
        return true;
    *kinds = words.value(word);
    if (kinds->isEmpty())
        *error = QStringLiteral("--%1 does not take \"%2\"").arg(QLatin1String(option), word);
    return !kinds->isEmpty();
}

/*! "[ ]" are two strings, and so are "[]". */
bool splitInTwo(const QString &strings, QString *opening, QString *closing)
{
    const QString text = strings.trimmed();
    const int blank = text.indexOf(QLatin1Char(' '));
    if (blank < 0 && text.size() != 2)
        return false;
    *opening = text.left(blank < 0 ? 1 : blank);
    *closing = text.mid(blank < 0 ? 1 : blank).trimmed();
    return true;
}

void move(QTextDocument &document, Note::Kind from, Note::Kind to)
{
    const QTextCursor everywhere;
    if (Note::isInline(from) == Note::isInline(to))
        MVRTextDoc::swapBoolProperties(&document, Note::property(from), Note::property(to),
                                       everywhere);
    else if (Note::isInline(to))
        MVRTextDoc::swapInspectorToInline(&document, Note::property(from), Note::isFootnote(to),
                                          everywhere);
    else
        MVRTextDoc::swapInlineToInspector(&document, Note::property(from), Note::isFootnote(to),
                                          false, everywhere);
}

void trim(QTextDocument &document)
{
    // A blank in front of an inline note parts it from the word before.
    for (const Note::Kind kind : Note::allKinds) {
        if (Note::isInline(kind))
            MVRTextDoc::trimInlineNotes(&document, Note::property(kind), true, 1, 1, QTextCursor());
        else
            MVRTextDoc::trimInspectorNotes(&document, Note::property(kind), true, -1, -1);
    }
}

QString countedKind(int count, Note::Kind kind)
{
    const QByteArray name = kindName(kind).toLatin1();
    return counted(count, name.constData(), (name + 's').constData());
}

}

void NoteChanges::addOptions(CommandLine &commandLine)
{
    commandLine.addOption(
        "to",
        "Make all notes notes of this kind, or put them into the text "
        "(inline) or beside it (inspector).",
        QStringLiteral("inline|inspector|comments|footnotes|annotations|inline-footnotes"));
    commandLine.addOption("remove", "Remove the notes of a kind.",
                          QStringLiteral("KIND|inline|inspector|all"));
    commandLine.addFlag("trim",
                        "Take white space from the ends of the notes, and repeated empty "
                        "paragraphs from inside.");
    commandLine.addOption("enclose", "Put two strings around the inline annotations: \"[ ]\".",
                          QStringLiteral("STRINGS"));
    commandLine.addFlag("as-text", "With --enclose: make the annotations ordinary text.");
}

bool NoteChanges::read(const CommandLine &commandLine, QString *error)
{
    m_trims = commandLine.isSet("trim");
    m_encloses = commandLine.isSet("enclose");
    m_asText = commandLine.isSet("as-text");
    if (m_asText && !m_encloses) {
        *error = QStringLiteral("--as-text goes with --enclose");
        return false;
    }
    if (m_encloses && !splitInTwo(commandLine.value("enclose"), &m_opening, &m_closing)) {
        *error = QStringLiteral("--enclose takes two strings with a blank between");
        return false;
    }
    return readKinds(commandLine, "to", targetsByWord(), &m_targets, error)
        && readKinds(commandLine, "remove", kindsByWord(), &m_removed, error);
}

bool NoteChanges::isEmpty() const
{
    return m_removed.isEmpty() && m_targets.isEmpty() && !m_trims && !m_encloses;
}

bool NoteChanges::endsInText() const
{
    return std::any_of(m_targets.cbegin(), m_targets.cend(),
                       [](Note::Kind kind) { return Note::isInline(kind); });
}

QStringList NoteChanges::apply(QTextDocument &document) const
{
    QStringList report;
    const auto add = [&report](int count, Note::Kind kind, const QString &what) {
        if (count > 0)
            report << countedKind(count, kind) + what;
    };
    for (const Note::Kind kind : m_removed)
        add(removeNotes(document, kind), kind, QStringLiteral(" removed"));
    const QVector<int> toMove = m_targets.isEmpty() ? QVector<int>() : noteCounts(document);
    for (const Note::Kind kind : Note::allKinds) {
        if (m_targets.isEmpty() || m_targets[kind] == kind)
            continue;
        add(toMove[kind], kind,
            QLatin1String(" -> ") + kindName(m_targets[kind]) + QLatin1Char('s'));
        move(document, kind, m_targets[kind]);
    }
    const QVector<int> moved = m_trims || m_encloses ? noteCounts(document) : QVector<int>();
    if (m_trims) {
        for (const Note::Kind kind : Note::allKinds)
            add(moved[kind], kind, QStringLiteral(" trimmed"));
        trim(document);
    }
    if (m_encloses) {
        add(moved[Note::InlineAnnotation], Note::InlineAnnotation, QStringLiteral(" enclosed"));
        encloseAnnotations(document, m_opening, m_closing, m_asText);
    }
    return report;
}
