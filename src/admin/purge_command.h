#pragma once

#include "admin/commands.h"

namespace porvane::admin {

inline constexpr const char* kPurgeSynopsis =
    "year YYYY | month YYYY-MM [KIND TEXT] | day YYYY-MM-DD  [--yes]\n"
    "           deletes bookings in bulk as the desk's Purge window does; asks y/N on the terminal unless\n"
    "           --yes. Prints the result and exits 0, also for \"No Records Deleted ...\" (nothing matched,\n"
    "           nothing written); exits 1 when not confirmed, switched off in the settings, or failed";

// purge: the bulk deletion of the desk, by year, month, month and text, or day.
int runPurgeCommand(CommandContext& context);

} // namespace porvane::admin
