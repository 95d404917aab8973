#pragma once

#include "app/app_state.h"

#include <QString>

namespace porvane::bench {

// Nobody answers questions in a benchmark: every message is declined, so a busy lock fails fast.
class DecliningPrompter final : public Prompter {
public:
    Answer ask(const Message& message) override {
        return message.buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
};

// A desk's state over a data folder, with the system clock and pauses that return at once.
struct BenchDesk {
    DecliningPrompter prompter;
    SystemClock clock;
    InstantPause pause;
    AppState state{prompter, clock, pause};

    explicit BenchDesk(const QString& dataPath) { state.settings.DataPath = dataPath; }
    RecordStore recordStore() { return recordStoreOf(state); }
};

// Fills the current record with a booking that the store accepts, under the identifier regNo (empty for a
// new one); `note` goes into OurRef, so that two updates with different notes really change the stored line.
void fillBenchBooking(CurrentRecord& record, const QString& regNo, const QString& note);

} // namespace porvane::bench
