// SPDX-License-Identifier: MIT
#include <tool/commands/NoteChanges.h>

#include <tool/CommandLine.h>
#include <tool/Messages.h>

#include <text/MVRTextDoc.h>

#include <QHash>
#include <QTextCursor>

#include <algorithm>

namespace {

/*! What a word of the command line says about kinds of note. */
struct KindWord
{
    const char *word;
    Note::Kind targets[4]; // what each kind becomes
    QVector<Note::Kind> kinds; // which are removed
};

const QVector<KindWord> &kindWordTable()
{
    constexpr auto C = Note::Comment;
    constexpr auto F = Note::Footnote;
    constexpr auto IA = Note::InlineAnnotation;
    constexpr auto IF = Note::InlineFootnote;
    static const QVector<KindWord> words {
        {"inline", {IA, IF, IA, IF}, {IA, IF}},  {"inspector", {C, F, C, F}, {C, F}},
        {"comments", {C, C, C, C}, {C}},         {"footnotes", {F, F, F, F}, {F}},
        {"annotations", {IA, IA, IA, IA}, {IA}}, {"inline-footnotes", {IF, IF, IF, IF}, {IF}},
    };
    return words;
}

const QLatin1String allWord("all");

QVector<Note::Kind> removedBy(const QString &word)
{
    if (word == allWord)
        return QVector<Note::Kind>(std::begin(Note::allKinds), std::end(Note::allKinds));
    for (const KindWord &row : kindWordTable()) {
        if (word == QLatin1String(row.word))
            return row.kinds;
    }
    return {};
}

QVector<Note::Kind> targetsOf(const QString &word)
{
    for (const KindWord &row : kindWordTable()) {
        if (word == QLatin1String(row.word))
            return QVector<Note::Kind>(std::begin(row.targets), std::end(row.targets));
    }
    return {};
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
        MVRTextDoc::moveInlineBesideText(&document, Note::property(from), Note::isFootnote(to),
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

}

QStringList NoteChanges::kindWords()
{
    QStringList words;
    for (const KindWord &row : kindWordTable())
        words << QLatin1String(row.word);
    return words;
}

QVector<Option> NoteChanges::options()
{
    return {
        {"make", "KIND",
         QT_TRANSLATE_NOOP("Tool",
                           "Make all notes notes of this kind, or put them into the text (inline) "
                           "or beside it (inspector)."),
         kindWords()},
        {"remove", "KIND", QT_TRANSLATE_NOOP("Tool", "Remove the notes of a kind."),
         kindWords() << allWord},
        {"trim",
         nullptr,
         QT_TRANSLATE_NOOP("Tool",
                           "Take white space from the ends of the notes, and repeated empty "
                           "paragraphs from inside."),
         {}},
        {"enclose",
         "STRINGS",
         QT_TRANSLATE_NOOP("Tool", "Put two strings around the inline annotations: \"[ ]\"."),
         {}},
        {"as-text",
         nullptr,
         QT_TRANSLATE_NOOP("Tool", "With --enclose: make the annotations ordinary text."),
         {}},
    };
}

bool NoteChanges::read(const CommandLine &commandLine, QString *error)
{
    m_trims = commandLine.isSet("trim");
    m_encloses = commandLine.isSet("enclose");
    m_asText = commandLine.isSet("as-text");
    m_targets = targetsOf(commandLine.value("make"));
    m_removed = removedBy(commandLine.value("remove"));
    if (m_asText && !m_encloses) {
        *error = Tool::tr("--as-text goes with --enclose");
        return false;
    }
    if (m_encloses && !splitInTwo(commandLine.value("enclose"), &m_opening, &m_closing)) {
        *error = Tool::tr("--enclose takes two strings with a blank between");
        return false;
    }
    return true;
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
            report << what.arg(countedKind(count, kind));
    };
    for (const Note::Kind kind : m_removed)
        add(removeNotes(document, kind), kind, Tool::tr("%1 removed"));
    const QVector<int> toMove = m_targets.isEmpty() ? QVector<int>() : noteCounts(document);
    for (const Note::Kind kind : Note::allKinds) {
        if (m_targets.isEmpty() || m_targets[kind] == kind)
            continue;
        add(toMove[kind], kind, QLatin1String("%1 -> ") + kindsTitle(m_targets[kind]));
        move(document, kind, m_targets[kind]);
    }
    const QVector<int> moved = m_trims || m_encloses ? noteCounts(document) : QVector<int>();
    if (m_trims) {
        for (const Note::Kind kind : Note::allKinds)
            add(moved[kind], kind, Tool::tr("%1 trimmed"));
        trim(document);
    }
    if (m_encloses) {
        add(moved[Note::InlineAnnotation], Note::InlineAnnotation, Tool::tr("%1 enclosed"));
        encloseAnnotations(document, m_opening, m_closing, m_asText);
    }
    return report;
}
