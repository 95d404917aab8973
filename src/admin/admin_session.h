#pragma once

#include "admin/commands.h"

#include <QCoreApplication>
#include <functional>
#include <memory>

namespace porvane::admin {

// Makes the program's application object: a plain one for porvane-admin, a GUI one for pass printing.
using ApplicationMaker = std::function<std::unique_ptr<QCoreApplication>(int& argc, char* argv[])>;

// Runs one porvane-admin command line: the common options, then the command of commandTable() it names over
// the desk's state for the chosen home and data folder. A command that lives in a sibling program is handed
// to that program with the same command line. Returns the exit status.
int runAdminCommandLine(int argc, char* argv[], const ApplicationMaker& makeApplication);

} // namespace porvane::admin
