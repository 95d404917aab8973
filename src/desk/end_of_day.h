#pragma once

#include "app/app_state.h"

#include <QCoreApplication>

namespace porvane {

// "Sign out everyone still on site": after a question that says how many, every visitor on site now gets
// the present time as departure in today's status file, in one write.
class EndOfDay {
    Q_DECLARE_TR_FUNCTIONS(EndOfDay)

public:
    // Reads today's status file, which the caller has just rebuilt. True when departures were written.
    static bool signOutEveryone(AppState& state);
};

} // namespace porvane
