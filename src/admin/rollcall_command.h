#pragma once

#include "admin/commands.h"

namespace porvane::admin {

// rollcall [--pdf FILE]: rebuilds today's on-site list as the desk does and prints the roll-call sheet of
// everyone on site now on the default printer, or into FILE as PDF.
int runRollCallCommand(CommandContext& context);
inline constexpr const char* kRollCallSynopsis = "[--pdf FILE]";

} // namespace porvane::admin
