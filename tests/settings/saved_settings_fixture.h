#pragma once

#include "settings/settings_file.h"
#include "test_desk.h"

#include <gtest/gtest.h>

namespace porvane::test {

// A desk whose settings file holds the defaults, with the data folder of its throw-away folder.
struct SavedSettingsFixture : ::testing::Test {
    TestDesk desk{QDateTime(QDate(2026, 11, 23), QTime(9, 30))};
    AppState& state = desk.state;

    SavedSettingsFixture() {
        state.settings = defaultSettings(desk.folder.appPath());
        state.settings.DataPath = desk.folder.dataPath();
        EXPECT_FALSE(SaveSettings(state.AppPath, state.settings));
    }
    QByteArray settingsFile() const {
        return desk.folder.read(QStringLiteral("../_PSF/PSystem/twsabusr.dat"));
    }
    // The settings as the file holds them now.
    Settings reread() const {
        TestDesk fresh{desk.clock.now()};
        fresh.state.AppPath = state.AppPath;
        EXPECT_EQ(LoadSettings(fresh.state.AppPath, fresh.state.settings).status,
                  SettingsLoad::Status::Loaded);
        return fresh.state.settings;
    }
};

} // namespace porvane::test
