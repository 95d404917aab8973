#pragma once

#include "admin/commands.h"

namespace porvane::admin {

// verify: checks every month and day status file of the data folder and prints each damaged line as
// FILE:LINE: what is wrong. Exit status 1 when anything is damaged or the folder cannot be read.
int runVerifyCommand(CommandContext& context);

} // namespace porvane::admin
