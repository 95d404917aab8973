#pragma once

#include "admin/commands.h"

namespace porvane::admin {

inline constexpr const char* kDbSynopsis =
    "init | import DATAFOLDER | export DATAFOLDER   (with --db CONNINFO)";

// db init | db import DATAFOLDER | db export DATAFOLDER: makes or upgrades the server's tables, loads a data
// folder's month and day status files into the server, writes them back into a data folder.
int runDbCommand(CommandContext& context);

} // namespace porvane::admin
