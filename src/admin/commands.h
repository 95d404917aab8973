#pragma once

#include "admin/console_prompter.h"
#include "app/app_state.h"

#include <QStringList>
#include <span>

namespace porvane::admin {

// What every command gets: the desk's state over the chosen home and data folder (fixed clock when --today
// or --now is given), the command's own arguments, whether to print CSV instead of aligned columns, and the
// prompter behind the state, whose way of answering questions a command may choose.
struct CommandContext {
    AppState& state;
    QStringList args;
    bool csv = false;
    ConsolePrompter& prompter;
};

// A command returns the exit status: 0 done, 1 refused or failed (reason on stderr), 2 wrong arguments.
using CommandFunction = int (*)(CommandContext& context);

struct Command {
    const char* name;
    const char* synopsis; // arguments after the name, for the usage text
    CommandFunction run;
    // Draws with fonts (passes) and so needs a GUI application; the others start without one, which is
    // most of the start-up time of a quick list.
    bool draws = false;
};

// The commands porvane-admin knows; each lives in <name>_command.cpp and is one row of the table in main.cpp.
std::span<const Command> commandTable();

// Prints the usage text with the table's commands to stderr and returns 2.
int usageError(const QString& why);

} // namespace porvane::admin
