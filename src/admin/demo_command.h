#pragma once

#include "admin/commands.h"

namespace porvane::admin {

// demo --from YYYY-MM --months N --per-month N [--seed S]: fills month files with invented bookings.
int runDemoCommand(CommandContext& context);

} // namespace porvane::admin
