// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>

#include <tool/Messages.h>

CommandLine::CommandLine(const char *name, const char *description, const char *examples)
    : m_name(QString::fromLatin1(name))
    , m_examples(QString::fromLatin1(examples))
{
    m_parser.setApplicationDescription(QString::fromLatin1(description));
    m_parser.addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this help.")});
    m_parser.addPositionalArgument(m_name, QString(), m_name);
}

void CommandLine::addFlag(const char *name, const char *description)
{
    m_parser.addOption({QString::fromLatin1(name), QString::fromLatin1(description)});
}

void CommandLine::addOption(const char *name, const char *description, const QString &valueName,
                            const char *defaultValue)
{
    QStringList names(QString::fromLatin1(name));
    if (names.first() == QLatin1String("output"))
        names.prepend(QStringLiteral("o"));
    m_parser.addOption(
        {names, QString::fromLatin1(description), valueName, QString::fromLatin1(defaultValue)});
}

void CommandLine::addFile(const char *name, const char *description)
{
    m_parser.addPositionalArgument(QString::fromLatin1(name), QString::fromLatin1(description));
    ++m_fileCount;
}

void CommandLine::addFiles(const char *name, const char *description)
{
    const QString text = QString::fromLatin1(name);
    m_parser.addPositionalArgument(text, QString::fromLatin1(description),
                                   text + QLatin1String("..."));
    ++m_fileCount;
    m_takesMore = true;
}

std::optional<int> CommandLine::parse(const QStringList &arguments)
{
    const bool isParsed = m_parser.parse(QStringList(QStringLiteral("mvrtext")) + arguments);
    if (m_parser.isSet(QStringLiteral("help"))) {
        printOutput(helpText());
        return Success;
    }
    if (!isParsed)
        return usageError(m_parser.errorText());
    const int given = m_parser.positionalArguments().size() - 1;
    if (given == m_fileCount || (given > m_fileCount && m_takesMore))
        return std::nullopt;
    return usageError(given < m_fileCount ? QStringLiteral("a file name is missing")
                                          : QStringLiteral("too many file names"));
}

bool CommandLine::isSet(const char *name) const
{
    return m_parser.isSet(QString::fromLatin1(name));
}

QString CommandLine::value(const char *name) const
{
    return m_parser.value(QString::fromLatin1(name));
}

QString CommandLine::file(int index) const
{
    return m_parser.positionalArguments().value(index + 1);
}

QStringList CommandLine::files() const
{
    return m_parser.positionalArguments().mid(1);
}

int CommandLine::usageError(const QString &reason) const
{
    printMessage(m_name, reason);
    printMessage(QString(), QStringLiteral("see mvrtext %1 --help").arg(m_name));
    return UsageError;
}

QString CommandLine::helpText() const
{
    return m_parser.helpText() + QLatin1String("\nExamples:\n") + m_examples;
}
