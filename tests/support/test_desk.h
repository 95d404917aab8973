#pragma once

#include "app/app_state.h"
#include "scripted_prompter.h"
#include "temp_data_folder.h"

namespace porvane::test {

// The application state of a desk over a throw-away data folder, with a scripted prompter, a fixed clock
// and pauses that return at once.
struct TestDesk {
    TempDataFolder folder;
    ScriptedPrompter prompter;
    FixedClock clock;
    InstantPause pause;
    AppState state{prompter, clock, pause};

    explicit TestDesk(const QDateTime& now)
        : clock(now) {
        state.AppPath = folder.appPath();
        state.settings.DataPath = folder.dataPath();
    }
    // The record store the desk would make over this folder and clock.
    RecordStore recordStore() { return recordStoreOf(state); }
};

} // namespace porvane::test
