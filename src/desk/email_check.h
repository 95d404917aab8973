#pragma once

#include "app/prompter.h"

#include <QString>

namespace porvane {

// Advice only: an implausible address is kept as typed, the desk is just warned about it.
// Returns the fault (used as the warning's title), or an empty text when the address looks plausible.
QString emailFault(const QString& address);

// Shows at most one warning for the address; never changes it.
void checkEmailAddress(Prompter& prompter, const QString& address);

} // namespace porvane
