#pragma once

#include "admin/commands.h"
#include "store/file_error.h"

namespace porvane::admin {

// pass REGNO [--count N] [--period Day|Week|Month] [--start YYYY-MM-DD] [--pdf FILE]: issues and prints the
// booking's pass exactly as the pass window would with that choice. The record's pass fields are stored with
// the record store's update and the pass goes to the default printer, or to FILE as PDF.
int runPassCommand(CommandContext& context);
inline constexpr const char* kPassSynopsis =
    "REGNO [--count N] [--period Day|Week|Month] [--start YYYY-MM-DD] [--pdf FILE] [--yes]";

// Loads the booking REGNO from the month file named by its first four digits into the current record.
FileError loadBooking(AppState& state, const QString& regNo);

} // namespace porvane::admin
