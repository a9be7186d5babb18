// SPDX-License-Identifier: MIT
#pragma once

#include <tool/Command.h>

#include <QHash>
#include <QString>
#include <QStringList>

/*! A parsed command line of one subcommand. */
class CommandLine
{
public:
    enum State {
        Ready, /*!< the subcommand can run */
        HelpWanted,
        Wrong /*!< see error() */
    };

    /*! \param arguments  what follows the name of the subcommand */
    CommandLine(const Command &command, const QStringList &arguments);

    const Command &command() const { return m_command; }
    State state() const { return m_state; }
    /*! What is wrong, translated. */
    QString error() const;
    /*! What to say instead of words of former versions, each a sentence. */
    QStringList hints() const;

    /*! Whether the option was given. */
    bool isSet(const char *option) const;
    /*! The option's value: as it was given, else as the user's settings have it, else its initial
        one. Choices are in small letters. */
    QString value(const char *option) const;
    /*! The number that the option's value is; false, and \a error says so, for any other text and
        for numbers that are not from \a least to \a most. */
    bool readNumber(const char *option, int least, int most, int *number, QString *error) const;

    QString file(int index) const { return m_files.value(index); }
    const QStringList &files() const { return m_files; }

    /*! Says on the standard error what is wrong and where help is; \return UsageError. */
    int usageError(const QString &reason) const;

private:
    void parse(const QStringList &arguments);
    int parseOption(const QStringList &arguments, int at);
    const Option *findOption(const QString &name) const;
    const OldWord *findOldWord(const QString &name, const QString &value) const;
    bool takesValueAs(const QString &name) const;
    void give(const Option &option, const QString &value);
    void readSettings();
    void check();
    void fail(const char *reason, const QString &word = QString(), const QString &more = QString());

    const Command &m_command;
    State m_state = Ready;
    const char *m_reason = "";
    QString m_word;
    QString m_more;
    QHash<QString, QString> m_values;
    QHash<QString, QString> m_settings;
    QVector<OldWord> m_oldWords;
    QStringList m_files;
};
