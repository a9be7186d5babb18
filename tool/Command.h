// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

class CommandLine;

// Texts of these tables are English; they are translated where they are shown.

/*! An option of a subcommand. */
struct Option
{
    const char *name;
    const char *value; /*!< what the help calls its value; null when it takes none */
    const char *description;
    QStringList choices; /*!< the words that it takes, in small letters; empty for any text */
    const char *initial = ""; /*!< its value when it is not given */
    bool isRequired = false;
    bool takesOthers = false; /*!< besides the choices also other words for them */
};

/*! A file argument; all of them must be given. */
struct Argument
{
    const char *name;
    const char *description;
    bool repeats = false; /*!< of the last one: there may be more of them */
};

/*! A word that an option was called by in former versions. */
struct OldWord
{
    const char *name;
    const char *option; /*!< what to say now */
    const char *value; /*!< the value that goes with it; null for the value of the old word */
    QStringList onlyFor; /*!< the values that this is about; empty for any */
};

/*! A subcommand of the tool. */
struct Command
{
    const char *name;
    const char *summary; /*!< one line of the tool's help */
    const char *usage; /*!< lines, what follows the name in each */
    const char *description;
    const char *examples; /*!< lines, each a whole command */
    QVector<Argument> files;
    QVector<Option> options;
    QVector<OldWord> oldWords;
    int (*run)(const CommandLine &commandLine);
};

/*! The letter that stands for an option everywhere ("-o"); 0 for most. */
char letterOf(const QString &option);

/*! All subcommands, in the order of the help. */
QVector<Command> allCommands();

/*! The help of one subcommand, and that of the tool; \a width in columns. */
QString helpText(const Command &command, int width);
QString helpText(const QVector<Command> &commands, int width);

/*! A script that completes command lines of the tool; empty for an unknown \a shell. */
QString completionScript(const QString &shell, const QVector<Command> &commands);
