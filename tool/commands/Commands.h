// SPDX-License-Identifier: MIT
#pragma once

struct Command;

/*!
    The subcommands. Each runs with a command line that is ready and gives the program's exit code;
    what went wrong was printed.
*/
Command convertCommand();
Command notesCommand();
Command linksCommand();
Command infoCommand();
Command countCommand();
Command replaceCommand();
Command appendCommand();
Command markupCommand();
Command endNotesCommand();
Command pagesCommand();
