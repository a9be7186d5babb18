// SPDX-License-Identifier: MIT
#include <tool/CommandLine.h>

#include <tool/Messages.h>
#include <tool/UserSettings.h>

namespace {

bool namesPath(const Option &option)
{
    const QLatin1String value(option.value);
    return value == QLatin1String("FOLDER") || value == QLatin1String("FILE")
        || value == QLatin1String("OUT");
}

}

CommandLine::CommandLine(const Command &command, const QStringList &arguments)
    : m_command(command)
{
    parse(arguments);
    if (m_state == Ready)
        readSettings();
    if (m_state == Ready)
        check();
}

/*! Whether all is there that has to be. */
void CommandLine::check()
{
    for (const Option &option : m_command.options) {
        if (option.isRequired && !isSet(option.name))
            return fail(QT_TRANSLATE_NOOP("Tool", "--%1 %2 is missing"), QLatin1String(option.name),
                        QLatin1String(option.value));
    }
    const bool repeats = !m_command.files.isEmpty() && m_command.files.last().repeats;
    if (m_files.size() < m_command.files.size())
        fail(QT_TRANSLATE_NOOP("Tool", "a file name is missing"));
    else if (m_files.size() > m_command.files.size() && !repeats)
        fail(QT_TRANSLATE_NOOP("Tool", "too many file names"));
}

void CommandLine::parse(const QStringList &arguments)
{
    bool hasEnded = false; // "--": what follows are files
    for (int at = 0; at < arguments.size() && m_state == Ready;) {
        const QString &word = arguments.at(at);
        if (hasEnded || word == QLatin1String("-") || !word.startsWith(QLatin1Char('-'))) {
            m_files.append(word);
            ++at;
        } else if (word == QLatin1String("--")) {
            hasEnded = true;
            ++at;
        } else {
            at += parseOption(arguments, at);
        }
    }
}

/*! Takes the option at \a at with its value; \return how many arguments these are. */
int CommandLine::parseOption(const QStringList &arguments, int at)
{
    const QString &word = arguments.at(at);
    const bool isLong = word.startsWith(QLatin1String("--"));
    const int equals = isLong ? word.indexOf(QLatin1Char('=')) : -1;
    // "--name=value", "--name value", "-ovalue", "-o value"
    QString name = isLong ? word.mid(2, equals < 0 ? -1 : equals - 2) : word.mid(1, 1);
    const bool holdsValue = isLong ? equals >= 0 : word.size() > 2;
    QString value = isLong ? word.mid(equals + 1) : word.mid(2);
    if (name == QLatin1String("help") || name == QLatin1String("h")) {
        m_state = HelpWanted;
        return 1;
    }
    const bool takesValue = takesValueAs(name);
    if (!findOption(name) && !findOldWord(name, QString()))
        fail(QT_TRANSLATE_NOOP("Tool", "there is no option %1"), word);
    else if (holdsValue && !takesValue)
        fail(QT_TRANSLATE_NOOP("Tool", "%1 takes no value"), word);
    const bool isBehind = takesValue && !holdsValue;
    if (isBehind && at + 1 >= arguments.size())
        fail(QT_TRANSLATE_NOOP("Tool", "%1 needs a value"), word);
    if (m_state == Wrong)
        return 1;
    if (isBehind)
        value = arguments.at(at + 1);
    const Option *option = findOption(name);
    if (const OldWord *old = findOldWord(name, value)) {
        m_oldWords.append(*old);
        option = findOption(QLatin1String(old->option));
        if (old->value)
            value = QLatin1String(old->value);
    }
    give(*option, option->value ? value : QString());
    return isBehind ? 2 : 1;
}

/*! The former word \a name; one that is about certain values only when \a value is one of them. */
const OldWord *CommandLine::findOldWord(const QString &name, const QString &value) const
{
    for (const OldWord &old : m_command.oldWords) {
        if (name == QLatin1String(old.name)
            && (old.onlyFor.isEmpty() || old.onlyFor.contains(value.toLower())))
            return &old;
    }
    return nullptr;
}

bool CommandLine::takesValueAs(const QString &name) const
{
    if (const Option *option = findOption(name))
        return option->value;
    const OldWord *old = findOldWord(name, QString());
    return old && !old->value;
}

const Option *CommandLine::findOption(const QString &name) const
{
    for (const Option &option : m_command.options) {
        const QString own = QLatin1String(option.name);
        if (name == own || (name.size() == 1 && name.at(0) == QLatin1Char(letterOf(own))))
            return &option;
    }
    return nullptr;
}

void CommandLine::give(const Option &option, const QString &value)
{
    const QString name = QLatin1String(option.name);
    const QString word = option.choices.isEmpty() ? value : value.toLower();
    if (!option.choices.isEmpty() && !option.takesOthers && !option.choices.contains(word))
        fail(QT_TRANSLATE_NOOP("Tool", "--%1 does not take \"%2\""), name, value);
    if (value.isEmpty() && namesPath(option)) // that of a folder would be the current one
        fail(QT_TRANSLATE_NOOP("Tool", "%1 needs a value"), QLatin1String("--") + name);
    m_values.insert(name, word);
}

// A setting is a default for all subcommands that have the option.
void CommandLine::readSettings()
{
    const QHash<QString, QString> settings = userSettings();
    for (const Option &option : m_command.options) {
        const QString name = QLatin1String(option.name);
        const auto setting = settings.constFind(name);
        if (setting == settings.constEnd())
            continue;
        if (!option.choices.isEmpty() && !option.choices.contains(setting->toLower()))
            return fail(QT_TRANSLATE_NOOP("Tool", "%1 does not take what %2 says"), name,
                        userSettingsFile());
        m_settings.insert(name, option.choices.isEmpty() ? *setting : setting->toLower());
    }
}

void CommandLine::fail(const char *reason, const QString &word, const QString &more)
{
    m_state = Wrong;
    m_reason = reason;
    m_word = word;
    m_more = more;
}

QString CommandLine::error() const
{
    QString text = Tool::tr(m_reason);
    if (!m_word.isEmpty())
        text = text.arg(m_word);
    return m_more.isEmpty() ? text : text.arg(m_more);
}

QStringList CommandLine::hints() const
{
    QStringList hints;
    for (const OldWord &old : m_oldWords) {
        QString now = QLatin1String("--") + QLatin1String(old.option);
        if (old.value)
            now += QLatin1Char(' ') + QLatin1String(old.value);
        hints << Tool::tr("--%1 is called %2 now").arg(QLatin1String(old.name), now);
    }
    return hints;
}

bool CommandLine::isSet(const char *option) const
{
    return m_values.contains(QLatin1String(option));
}

QString CommandLine::value(const char *option) const
{
    const QString name = QLatin1String(option);
    const auto given = m_values.constFind(name);
    if (given != m_values.constEnd())
        return *given;
    const auto setting = m_settings.constFind(name);
    if (setting != m_settings.constEnd())
        return *setting;
    const Option *found = findOption(name);
    return found ? QString::fromLatin1(found->initial) : QString();
}

bool CommandLine::readNumber(const char *option, int least, int most, int *number,
                             QString *error) const
{
    bool isNumber = false;
    const int given = value(option).toInt(&isNumber);
    if (isNumber && given >= least && given <= most) {
        *number = given;
        return true;
    }
    *error = Tool::tr("--%1 takes a number from %2 to %3")
                 .arg(QLatin1String(option))
                 .arg(least)
                 .arg(most);
    return false;
}

int CommandLine::usageError(const QString &reason) const
{
    printMessage(QLatin1String(m_command.name), reason);
    printMessage(QString(), Tool::tr("see mvrtext %1 --help").arg(QLatin1String(m_command.name)));
    return UsageError;
}
