#include "app/about_window.h"
#include "app/app_state.h"
#include "app/splash_window.h"
#include "scripted_prompter.h"
#include "widgets.h"

#include <QLabel>
#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;

namespace {

TEST(Splash, showsSiteAndTheDefaultsNoteOnlyWhenDefaultsWereApplied) {
    ScriptedPrompter prompter;
    FixedClock clock{QDateTime(QDate(2026, 3, 2), QTime(9, 0))};
    InstantPause pause;
    AppState state{prompter, clock, pause};
    state.settings.SiteName = QStringLiteral("Harbour Works Ltd");

    for (const bool created : {true, false}) {
        state.SettingsCreated = created;
        SplashWindow splash(state);
        splash.show();
        const auto* note = test::find<QLabel>(&splash, "laDefaults");
        EXPECT_EQ(note->text(), u"Defaulf Settings Applied");
        EXPECT_EQ(note->isVisible(), created);
        EXPECT_EQ(test::find<QLabel>(&splash, "laSiteName")->text(), u"Harbour Works Ltd");
    }

    AboutWindow about(state);
    EXPECT_EQ(test::find<QLabel>(&about, "laSiteName")->text(), u"Harbour Works Ltd");
}

// ckShowSplash "1": the desk opens behind the splash, which stays on top; "0": the splash is shown alone and
// the desk appears when it goes.
TEST(Splash, theSettingShowsItAboveTheDeskOrBeforeIt) {
    for (const bool above : {true, false}) {
        SCOPED_TRACE(above ? "above" : "before");
        ScriptedPrompter prompter;
        FixedClock clock{QDateTime(QDate(2026, 3, 2), QTime(9, 0))};
        InstantPause pause;
        AppState state{prompter, clock, pause};
        state.settings.ckShowSplash = above ? QStringLiteral("1") : QStringLiteral("0");
        SplashWindow splash(state);
        splash.show();
        EXPECT_EQ(splash.windowFlags().testFlag(Qt::WindowStaysOnTopHint), above);
        QWidget desk;
        splash.deskLoaded(&desk, true);
        EXPECT_EQ(desk.isVisible(), above);
        EXPECT_TRUE(splash.isVisible());
        splash.finish();
        EXPECT_FALSE(splash.isVisible());
        EXPECT_TRUE(desk.isVisible());
        EXPECT_TRUE(desk.windowState().testFlag(Qt::WindowMaximized));
    }
}

} // namespace
