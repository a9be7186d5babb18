// SPDX-License-Identifier: MIT
#include <tool/Command.h>

#include <tool/Messages.h>

namespace {

QString optionNames(const Command &command)
{
    QStringList names;
    for (const Option &option : command.options) {
        const QString name = QLatin1String(option.name);
        if (const char letter = letterOf(name))
            names << QLatin1Char('-') + QString(QLatin1Char(letter));
        names << QLatin1String("--") + name;
    }
    return (names << QStringLiteral("--help")).join(QLatin1Char(' '));
}

QString commandNames(const QVector<Command> &commands)
{
    QStringList names;
    for (const Command &command : commands)
        names << QLatin1String(command.name);
    return names.join(QLatin1Char(' '));
}

// Bash's patterns of a command and an option, "convert:--to|convert:-t".
QString bashPattern(const Command &command, const Option &option)
{
    const QString start = QLatin1String(command.name) + QLatin1Char(':');
    const QString name = QLatin1String(option.name);
    QString pattern = start + QLatin1String("--") + name;
    if (const char letter = letterOf(name))
        pattern += QLatin1Char('|') + start + QLatin1Char('-') + QLatin1Char(letter);
    return pattern;
}

QString bashScript(const QVector<Command> &commands)
{
    QString values;
    QString options;
    for (const Command &command : commands) {
        for (const Option &option : command.options) {
            if (!option.choices.isEmpty())
                values += QStringLiteral("        %1) words=\"%2\" ;;\n")
                              .arg(bashPattern(command, option),
                                   option.choices.join(QLatin1Char(' ')));
        }
        options += QStringLiteral("            %1) words=\"%2\" ;;\n")
                       .arg(QLatin1String(command.name), optionNames(command));
    }
    return QStringLiteral(R"(# bash completion for mvrtext
_mvrtext()
{
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]} words=
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        words="%1 --help --version --completion"
    elif [[ ${COMP_WORDS[1]} == --completion ]]; then
        words="bash zsh fish"
    else
        case "${COMP_WORDS[1]}:$previous" in
%2        esac
        if [[ -z $words && $current == -* ]]; then
            case "${COMP_WORDS[1]}" in
%3            esac
        fi
    fi
    if [[ -n $words ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -o filenames -F _mvrtext mvrtext
)")
        .arg(commandNames(commands), values, options);
}

/*! \a text between single quotes, as shells read it; a quote inside ends and begins them anew. */
QString quoted(QString text, const char *quote = "'\\''")
{
    return QLatin1Char('\'') + text.replace(QLatin1Char('\''), QLatin1String(quote))
        + QLatin1Char('\'');
}

// Brackets and colons part what zsh's _arguments is told.
QString zshText(QString text)
{
    for (const QChar special :
         {QLatin1Char('\\'), QLatin1Char('['), QLatin1Char(']'), QLatin1Char(':')})
        text.replace(special, QLatin1Char('\\') + QString(special));
    return text;
}

QString zshOption(const Option &option)
{
    const QString name = QLatin1String("--") + QLatin1String(option.name);
    QString rest = QLatin1Char('[') + zshText(Tool::tr(option.description)) + QLatin1Char(']');
    if (option.value) {
        const QString values = option.choices.isEmpty()
            ? QStringLiteral("_files")
            : QLatin1Char('(') + option.choices.join(QLatin1Char(' ')) + QLatin1Char(')');
        rest += QLatin1Char(':') + QLatin1String(option.value) + QLatin1Char(':') + values;
    }
    QString line = QStringLiteral("                ");
    const char letter = letterOf(QLatin1String(option.name));
    if (!letter)
        return line + quoted(name + rest) + QLatin1String(" \\\n");
    const QString shortName = QLatin1Char('-') + QString(QLatin1Char(letter));
    return line + QStringLiteral("'(%1 %2)'{%1,%2}%3 \\\n").arg(shortName, name, quoted(rest));
}

QString zshScript(const QVector<Command> &commands)
{
    QString list;
    QString cases;
    for (const Command &command : commands) {
        const QString name = QLatin1String(command.name);
        list += QLatin1String("        ")
            + quoted(name + QLatin1Char(':') + zshText(Tool::tr(command.summary)))
            + QLatin1Char('\n');
        cases += QStringLiteral("        %1)\n            _arguments \\\n").arg(name);
        for (const Option &option : command.options)
            cases += zshOption(option);
        cases += QLatin1String("                '--help' '*:file:_files' ;;\n");
    }
    return QStringLiteral(R"(#compdef mvrtext
_mvrtext()
{
    local -a commands=(
%1    )
    if ((CURRENT == 2)); then
        _describe command commands
        return
    fi
    local command=$words[2]
    shift words
    ((CURRENT--))
    case $command in
%2    esac
}
if [ "$funcstack[1]" = _mvrtext ]; then
    _mvrtext "$@"
else
    compdef _mvrtext mvrtext
fi
)")
        .arg(list, cases);
}

QString fishOption(const Command &command, const Option &option)
{
    const QString name = QLatin1String(option.name);
    QString line = QStringLiteral("complete -c mvrtext -n '__fish_seen_subcommand_from %1' -l %2")
                       .arg(QLatin1String(command.name), name);
    if (const char letter = letterOf(name))
        line += QLatin1String(" -s ") + QLatin1Char(letter);
    if (!option.choices.isEmpty())
        line += QLatin1String(" -x -a ") + quoted(option.choices.join(QLatin1Char(' ')));
    else if (option.value)
        line += QLatin1String(" -r");
    return line + QLatin1String(" -d ") + quoted(Tool::tr(option.description), "\\'")
        + QLatin1Char('\n');
}

QString fishScript(const QVector<Command> &commands)
{
    QString script = QStringLiteral("# fish completion for mvrtext\n");
    for (const Command &command : commands) {
        script += QStringLiteral("complete -c mvrtext -f -n __fish_use_subcommand -a %1 -d %2\n")
                      .arg(QLatin1String(command.name), quoted(Tool::tr(command.summary), "\\'"));
    }
    for (const Command &command : commands) {
        for (const Option &option : command.options)
            script += fishOption(command, option);
    }
    return script;
}

}

QString completionScript(const QString &shell, const QVector<Command> &commands)
{
    if (shell == QLatin1String("bash"))
        return bashScript(commands);
    if (shell == QLatin1String("zsh"))
        return zshScript(commands);
    return shell == QLatin1String("fish") ? fishScript(commands) : QString();
}
