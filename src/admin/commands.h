#pragma once

#include "admin/console_prompter.h"
#include "app/app_state.h"

#include <QCommandLineParser>
#include <QStringList>
#include <optional>
#include <span>

namespace porvane::admin {

// What every command gets: the desk's state over the chosen home and data folder (fixed clock when --today
// or --now is given), the command's own arguments, whether to print CSV instead of aligned columns, and the
// prompter behind the state, whose way of answering questions a command may choose, and the connection string
// of the server (--db), empty for the data folder.
struct CommandContext {
    AppState& state;
    QStringList args;
    bool csv = false;
    ConsolePrompter& prompter;
    QString database;
};

// A command returns the exit status: 0 done, 1 refused or failed (reason on stderr), 2 wrong arguments.
using CommandFunction = int (*)(CommandContext& context);
inline constexpr int kWrongArguments = 2;

struct Command {
    const char* name;
    const char* synopsis; // arguments after the name, for the usage text
    CommandFunction run;
    // The sibling program that runs the command instead (pass printing needs Qt Gui, which the other
    // commands never load: loading it was most of the start-up time of a quick list).
    const char* program = nullptr;
};

// The commands the program knows; each lives in <name>_command.cpp and is one row of the table in the
// program's main file (admin_main.cpp, pass_main.cpp).
std::span<const Command> commandTable();

// Prints why, and the usage text with the table's commands, to stderr and returns kWrongArguments.
int usageError(const QString& why);

// Reads a command's own arguments with the parser, which knows the command's options (given anywhere among
// the arguments, as --name VALUE or --name=VALUE; "--" ends them). Returns the positional arguments, or
// nothing after printing why the command line is wrong: the command then returns kWrongArguments.
std::optional<QStringList> readCommandLine(const CommandContext& context, QCommandLineParser& parser);

} // namespace porvane::admin
