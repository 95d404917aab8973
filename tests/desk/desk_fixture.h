#pragma once

#include "app/app_state.h"
#include "desk/booking_editor.h"
#include "desk/booking_store.h"
#include "scripted_prompter.h"
#include "store/record_store.h"
#include "temp_data_folder.h"

#include <gtest/gtest.h>

namespace porvane::test {

// The desk's state over a scripted prompter, a fixed clock (Thursday 14 March 2024, 10:05:07), an instant
// pause and a throw-away data folder.
class DeskFixture : public ::testing::Test {
protected:
    DeskFixture()
        : clock(QDateTime(QDate(2024, 3, 14), QTime(10, 5, 7)))
        , state(prompter, clock, pause) {
        state.AppPath = folder.appPath();
        state.settings.DataPath = folder.dataPath();
        state.settings.ckMakeSysRdO = QStringLiteral("0");
        state.settings.ckDisSingleD = QStringLiteral("0");
    }

    ScriptedPrompter prompter;
    FixedClock clock;
    InstantPause pause;
    TempDataFolder folder;
    AppState state;
};

// The desk through the real record store, on real files.
class DeskFlow : public DeskFixture {
protected:
    DeskFlow()
        : dates(2024)
        , times(state)
        , records(state)
        , store(records)
        , editor(state, dates, times, store) {
        records.lockWait = std::chrono::milliseconds(200);
        dates.cmdGetToday(clock);
        times.setMonth(2024, 3);
        editor.refreshList = [this] {
            ++refreshes;
        };
    }

    // NEW, then the boxes a new booking needs.
    void typeNewBooking() {
        editor.cmdNEW();
        editor.setBoxText(Field::FirstName, QStringLiteral("Jo"));
        editor.setBoxText(Field::LastName, QStringLiteral("Li"));
        editor.setBoxText(Field::Department, QStringLiteral(" ENGINEERING"));
        editor.setBoxText(Field::Organisation, QStringLiteral("Acme Widgets Ltd"));
    }

    DateSelection dates;
    BookedTimes times;
    RecordStore records;
    RecordStoreBooking store;
    BookingEditor editor;
    int refreshes = 0;
};

} // namespace porvane::test
