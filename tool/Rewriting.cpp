// SPDX-License-Identifier: MIT
#include <tool/Rewriting.h>

#include <tool/CommandLine.h>
#include <tool/CommonOptions.h>
#include <tool/Document.h>
#include <tool/Loading.h>
#include <tool/Messages.h>
#include <tool/Output.h>
#include <tool/Progress.h>
#include <tool/Saving.h>
#include <tool/System.h>
#include <tool/formats/Formats.h>

QVector<Option> Rewriting::options(bool outputIsRequired)
{
    Option output {"output",
                   "OUT",
                   QT_TRANSLATE_NOOP("Tool", "The file to write; - is the standard output."),
                   {}};
    output.isRequired = outputIsRequired;
    return QVector<Option> {output, fromOption(), toOption()} + writingOptions();
}

Argument Rewriting::input()
{
    return {"IN", QT_TRANSLATE_NOOP("Tool", "The file to read; - is the standard input.")};
}

Rewriting::Rewriting(const CommandLine &commandLine)
    : m_commandLine(commandLine)
{
}

bool Rewriting::readArguments(bool needsOutput, QString *error)
{
    if (!readWritingOptions(m_commandLine, &m_notes, &m_writeOptions, error))
        return false;
    const QStringList inputs = m_commandLine.files();
    for (const QString &input : inputs) {
        m_from.append(readableFormat(input, m_commandLine.value("from"), error));
        if (!m_from.last())
            return false;
    }
    m_output = m_commandLine.value("output");
    if (m_output.isEmpty()) {
        *error = Tool::tr("say where to write: -o OUT");
        return !needsOutput;
    }
    m_to = findFormat(m_output, m_commandLine.value("to"), error);
    return m_to != nullptr;
}

bool Rewriting::isSafe() const
{
    const QStringList inputs = m_commandLine.files();
    for (const QString &input : inputs) {
        if (System::isSameFile(input, m_output)) {
            printMessage(m_output, Tool::tr("is the input itself; nothing was written"));
            return false;
        }
    }
    return true;
}

bool Rewriting::load(Document &document, Progress &progress, int number) const
{
    ReadOptions options;
    options.capitals = false; // what is only looked at keeps the letters as typed
    if (m_to)
        options.setTarget(*m_to);
    options.capitals = options.capitals && !m_keepsLetters;
    options.goesBack = options.goesBack && number == 0;
    return loadDocument(m_commandLine.file(number), *m_from.at(number), options, document,
                        progress);
}

bool Rewriting::save(Document &document, Progress &progress) const
{
    return saveWithNotes(false, document, progress);
}

bool Rewriting::saveWithNotes(bool keepsInline, Document &document, Progress &progress) const
{
    return saveDocument(m_output, *m_to, choiceFor(keepsInline), m_writeOptions, document,
                        progress);
}

bool Rewriting::renderWithNotes(Document &document, Progress &progress, OutputFile *file) const
{
    file->path = m_output;
    return renderDocument(*m_to, choiceFor(true), m_writeOptions, document, progress, file);
}

// What a command is about is not lost by a setting for all commands.
NotesChoice Rewriting::choiceFor(bool keepsInline) const
{
    if (!keepsInline || m_commandLine.isSet("notes"))
        return m_notes;
    return m_to->notes == NoteSupport::None ? NotesChoice::Inline : NotesChoice::ByFormat;
}

QString Rewriting::inputName(int number) const
{
    return displayName(m_commandLine.file(number), Tool::tr("standard input"));
}

QString Rewriting::outputName() const
{
    return displayName(m_output, Tool::tr("standard output"));
}
