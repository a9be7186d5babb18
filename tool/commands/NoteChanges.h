// SPDX-License-Identifier: MIT
#pragma once

#include <tool/Command.h>
#include <tool/Notes.h>

#include <QString>
#include <QStringList>
#include <QVector>

class CommandLine;

/*! Changes to the notes of a document, as a command line names them. */
class NoteChanges
{
public:
    static QVector<Option> options();
    /*! The kinds that --make takes. */
    static QStringList kindWords();

    /*! Reads the options; false when one is wrong, and \a error then says which. */
    bool read(const CommandLine &commandLine, QString *error);

    /*! True when no change was asked for. */
    bool isEmpty() const;
    /*! True when the notes of a kind are removed. */
    bool removes(Note::Kind kind) const { return m_removed.contains(kind); }
    /*! True when moved notes end in the text. */
    bool endsInText() const;

    /*!
        Makes the changes.

        \return what becomes of how many notes: "2 comments -> inline annotations"; empty when the
                document has no note that they are about
    */
    QStringList apply(QTextDocument &document) const;

private:
    QVector<Note::Kind> m_removed;
    QVector<Note::Kind> m_targets; // by kind; empty when none moves
    bool m_trims = false;
    bool m_encloses = false;
    bool m_asText = false;
    QString m_opening;
    QString m_closing;
};
