// SPDX-License-Identifier: MIT
#include <tool/Command.h>
#include <tool/commands/Commands.h>

QVector<Command> allCommands()
{
    return {convertCommand(), notesCommand(),   linksCommand(),   infoCommand(),
            pagesCommand(),   countCommand(),   replaceCommand(), appendCommand(),
            markupCommand(),  endNotesCommand()};
}
