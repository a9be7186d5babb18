// SPDX-License-Identifier: MIT
#pragma once

#include <tool/Command.h>
#include <tool/formats/Formats.h>

#include <QString>
#include <QVector>

class CommandLine;
class Progress;
struct Document;
struct OutputFile;

/*!
    What the subcommands have in common that read a document, or several, change it and write it
    elsewhere: the argument IN and the options --output, --from and --to, and those of
    writingOptions().
*/
class Rewriting
{
public:
    /*! The options, the one that says where to write first. */
    static QVector<Option> options(bool outputIsRequired);
    static Argument input();

    explicit Rewriting(const CommandLine &commandLine);

    /*!
        Takes the files and formats from the parsed command line.

        \param error  receives what is wrong: an unknown format, or a missing output where
                      \a needsOutput says that one is needed
    */
    bool readArguments(bool needsOutput, QString *error);

    const QString &output() const { return m_output; }
    /*! Null without an output. */
    const Format *outputFormat() const { return m_to; }

    /*! False, and said so, when the output is an input itself. */
    bool isSafe() const;

    /*! Reads the input \a number, counted from 0; false when that failed, and said why. */
    bool load(Document &document, Progress &progress, int number = 0) const;
    /*! Writes the output; false when that failed, and said why. */
    bool save(Document &document, Progress &progress) const;
    /*! The same. Notes in the text that the format does not know go out in brackets where
        \a keepsInline says so. */
    bool saveWithNotes(bool keepsInline, Document &document, Progress &progress) const;
    /*! Makes what saveWithNotes() writes with notes in brackets. */
    bool renderWithNotes(Document &document, Progress &progress, OutputFile *file) const;

    /*! Letters are not put in capitals before the document is written: codes would be, too. */
    void keepLetters() { m_keepsLetters = true; }

    int inputCount() const { return m_from.size(); }
    /*! What messages call an input and the output. */
    QString inputName(int number) const;
    QString outputName() const;

private:
    NotesChoice choiceFor(bool keepsInline) const;

    const CommandLine &m_commandLine;
    QString m_output;
    QVector<const Format *> m_from; // of each input
    const Format *m_to = nullptr;
    bool m_keepsLetters = false;
    NotesChoice m_notes = NotesChoice::ByFormat;
    WriteOptions m_writeOptions;
};
