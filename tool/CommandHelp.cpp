// SPDX-License-Identifier: MIT
#include <tool/Command.h>

#include <tool/Columns.h>
#include <tool/Messages.h>

namespace {

constexpr int textIndent = 24; // of what is said about an option
constexpr int minTextWidth = 30;

/*! \a text in lines of at most \a width columns, broken between words; \a column is taken in the
    first one, the others begin behind \a indent blanks. */
QString wrapped(const QString &text, int column, int indent, int width)
{
    width = qMax(width, indent + minTextWidth);
    QString result;
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    bool isFirst = true;
    for (const QString &word : words) {
        const int columns = columnCount(word);
        if (!isFirst && column + 1 + columns > width) {
            result += QLatin1Char('\n') + QString(indent, QLatin1Char(' '));
            column = indent;
        } else if (!isFirst) {
            result += QLatin1Char(' ');
            ++column;
        }
        result += word;
        column += columns;
        isFirst = false;
    }
    return result + QLatin1Char('\n');
}

/*! A line that names something and says what it is; the text goes on below where it must. */
QString entry(const QString &name, const QString &text, int width)
{
    QString line = QLatin1String("  ") + name;
    if (columnCount(line) + 2 > textIndent)
        line += QLatin1Char('\n') + QString(textIndent, QLatin1Char(' '));
    else
        line += QString(textIndent - columnCount(line), QLatin1Char(' '));
    return line + wrapped(text, textIndent, textIndent, width);
}

QString nameOf(const Option &option)
{
    const QString name = QLatin1String(option.name);
    const char letter = letterOf(name);
    QString text = letter ? QLatin1Char('-') + QString(QLatin1Char(letter)) + QLatin1String(", ")
                          : QStringLiteral("    ");
    text += QLatin1String("--") + name;
    if (option.value)
        text += QLatin1Char(' ') + QLatin1String(option.value);
    return text;
}

QString entry(const Option &option, int width)
{
    QString text = entry(nameOf(option), Tool::tr(option.description), width);
    const auto addLine = [&text, width](const QString &line) {
        text
            += QString(textIndent, QLatin1Char(' ')) + wrapped(line, textIndent, textIndent, width);
    };
    if (!option.choices.isEmpty())
        addLine(option.choices.join(QLatin1String(", ")));
    if (*option.initial)
        addLine(Tool::tr("Default: %1").arg(QLatin1String(option.initial)));
    return text;
}

QString title(const QString &text)
{
    return QLatin1Char('\n') + text + QLatin1Char('\n');
}

}

char letterOf(const QString &option)
{
    struct Letter
    {
        const char *option;
        char letter;
    };
    static constexpr Letter letters[]
        = {{"from", 'f'}, {"jobs", 'j'}, {"output", 'o'}, {"to", 't'}};
    for (const Letter &row : letters) {
        if (option == QLatin1String(row.option))
            return row.letter;
    }
    return 0;
}

QString helpText(const Command &command, int width)
{
    const QString name = QLatin1String(command.name);
    QString text;
    const QStringList usage = QString::fromLatin1(command.usage).split(QLatin1Char('\n'));
    for (const QString &line : usage) {
        const QString start = text.isEmpty()
            ? Tool::tr("Usage:") + QLatin1Char(' ')
            : QString(columnCount(Tool::tr("Usage:")) + 1, QLatin1Char(' '));
        text += start + QLatin1String("mvrtext ") + name + QLatin1Char(' ') + line
            + QLatin1Char('\n');
    }
    text += QLatin1Char('\n') + wrapped(Tool::tr(command.description), 0, 0, width);
    text += title(Tool::tr("Arguments:"));
    for (const Argument &file : command.files)
        text += entry(QLatin1String(file.name), Tool::tr(file.description), width);
    text += title(Tool::tr("Options:"));
    for (const Option &option : command.options)
        text += entry(option, width);
    text += entry(QStringLiteral("-h, --help"), Tool::tr("Show this help."), width);
    return text + title(Tool::tr("Examples:")) + QLatin1String(command.examples);
}

QString helpText(const QVector<Command> &commands, int width)
{
    QString text = Tool::tr("Usage:") + QLatin1String(" mvrtext COMMAND [OPTIONS] FILE...\n\n");
    text += wrapped(Tool::tr("Converts and examines the documents of writers: screenplays, "
                             "manuscripts and their notes."),
                    0, 0, width);
    text += title(Tool::tr("Commands:"));
    for (const Command &command : commands)
        text += entry(QLatin1String(command.name), Tool::tr(command.summary), width);
    text += title(Tool::tr("Options:"));
    text += entry(QStringLiteral("-h, --help"),
                  Tool::tr("Show this help; after a command, the help of the command."), width);
    text += entry(QStringLiteral("-v, --version"), Tool::tr("Show the version."), width);
    text += entry(QStringLiteral("--completion SHELL"),
                  Tool::tr("Print a script that completes commands in bash, zsh or fish."), width);
    text += QLatin1Char('\n')
        + wrapped(Tool::tr("Reads fdx (Final Draft), rtf, html, txt, md; writes these and bbcode, "
                           "odt, pdf, png. The exit code is 0, or 1 for a failure, or 2 for wrong "
                           "arguments."),
                  0, 0, width);
    return text + title(Tool::tr("Examples:"))
        + QLatin1String("  mvrtext convert script.fdx script.pdf\n"
                        "  mvrtext convert --to pdf --into out *.fdx\n"
                        "  mvrtext notes script.fdx\n"
                        "  mvrtext info --json script.fdx\n"
                        "  mvrtext count --with-footnotes chapter*.rtf\n"
                        "  mvrtext append chapter1.rtf chapter2.rtf -o book.rtf\n");
}
