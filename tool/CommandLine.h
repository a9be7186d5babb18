// SPDX-License-Identifier: MIT
#pragma once

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

#include <optional>

/*! The command line of one subcommand: its options, its file arguments and its help. */
class CommandLine
{
public:
    /*!
        \param name         the subcommand
        \param description  what it does
        \param examples     lines of the help, each a command
    */
    CommandLine(const char *name, const char *description, const char *examples);

    /*! Adds an option that takes no value. */
    void addFlag(const char *name, const char *description);
    /*! Adds an option with a value; \a valueName says in the help what it is. "output" is "o" for
        short. */
    void addOption(const char *name, const char *description, const QString &valueName,
                   const char *defaultValue = "");
    /*! Adds a file argument; all of them must be given. */
    void addFile(const char *name, const char *description);
    /*! Adds the last file argument, of which there can be any number but none. */
    void addFiles(const char *name, const char *description);

    /*!
        Parses the arguments, from the name of the subcommand on.

        \return the program's exit code when there is nothing left to do: help was asked for and
                shown, or the arguments are wrong and it was said why
    */
    std::optional<int> parse(const QStringList &arguments);

    bool isSet(const char *name) const;
    QString value(const char *name) const;
    QString file(int index) const;
    QStringList files() const;

    /*! Says on the standard error what is wrong and where help is; \return UsageError. */
    int usageError(const QString &reason) const;

private:
    QString helpText() const;

    QString m_name;
    QString m_examples;
    QCommandLineParser m_parser;
    int m_fileCount = 0;
    bool m_takesMore = false;
};
