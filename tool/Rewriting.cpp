// SPDX-License-Identifier: MIT
#include <tool/Rewriting.h>

#include <tool/CommandLine.h>
#include <tool/Document.h>
#include <tool/Loading.h>
#include <tool/Messages.h>
#include <tool/Output.h>
#include <tool/Saving.h>
#include <tool/formats/Formats.h>

Rewriting::Rewriting(CommandLine &commandLine, Inputs inputs)
    : m_commandLine(commandLine)
{
    commandLine.addFile("IN", "The file to read; - is the standard input.");
    if (inputs == SeveralInputs)
        commandLine.addFiles("MORE", "Files to read after it.");
    commandLine.addOption("output", "The file to write; - is the standard output.",
                          QStringLiteral("OUT"));
    commandLine.addOption("from", "Format of IN where its suffix does not tell.",
                          readableFormats().join(QLatin1Char('|')));
    commandLine.addOption("as", "Format of OUT where its suffix does not tell.",
                          writableFormats().join(QLatin1Char('|')));
}

bool Rewriting::readArguments(bool needsOutput, QString *error)
{
    const QStringList inputs = m_commandLine.files();
    for (const QString &input : inputs) {
        m_from.append(readableFormat(input, m_commandLine.value("from"), error));
        if (!m_from.last())
            return false;
    }
    m_output = m_commandLine.value("output");
    if (m_output.isEmpty()) {
        *error = QStringLiteral("say where to write: -o OUT");
        return !needsOutput;
    }
    m_to = findFormat(m_output, m_commandLine.value("as"), error);
    return m_to != nullptr;
}

bool Rewriting::isSafe() const
{
    const QStringList inputs = m_commandLine.files();
    for (const QString &input : inputs) {
        if (isSameFile(input, m_output)) {
            printMessage(m_output, QStringLiteral("is the input itself; nothing was written"));
            return false;
        }
    }
    return true;
}

bool Rewriting::load(Document &document, Progress &progress, int number) const
{
    ReadOptions options;
    // What is written as a screenplay keeps the letters as typed; so does what is only looked at.
    options.capitals = m_to && !m_to->hasElements;
    return loadDocument(m_commandLine.file(number), *m_from.at(number), options, document,
                        progress);
}

bool Rewriting::save(Document &document, Progress &progress) const
{
    return saveWithNotes(false, document, progress);
}

bool Rewriting::saveWithNotes(bool keepsInline, Document &document, Progress &progress) const
{
    const NotesChoice choice = keepsInline && m_to->notes == NoteSupport::None
        ? NotesChoice::Inline
        : NotesChoice::ByFormat;
    return saveDocument(m_output, *m_to, choice, WriteOptions(), document, progress);
}

QString Rewriting::inputName(int number) const
{
    return displayName(m_commandLine.file(number), QStringLiteral("standard input"));
}

QString Rewriting::outputName() const
{
    return displayName(m_output, QStringLiteral("standard output"));
}
