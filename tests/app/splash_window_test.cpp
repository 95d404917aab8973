#include "app/about_window.h"
#include "app/app_state.h"
#include "app/splash_window.h"
#include "scripted_prompter.h"

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
        const auto* note = splash.findChild<QLabel*>(QStringLiteral("laDefaults"));
        ASSERT_NE(note, nullptr);
        EXPECT_EQ(note->text(), u"Defaulf Settings Applied");
        EXPECT_EQ(note->isVisible(), created);
        EXPECT_EQ(splash.findChild<QLabel*>(QStringLiteral("laSiteName"))->text(), u"Harbour Works Ltd");
        EXPECT_EQ(splash.findChild<QLabel*>(QStringLiteral("laProduct"))->text(), u"Porvane 90");
        EXPECT_TRUE(splash.findChild<QLabel*>(QStringLiteral("laVersion"))
                        ->text()
                        .contains(QStringLiteral(PORVANE_VERSION)));
    }

    AboutWindow about(state);
    EXPECT_EQ(about.findChild<QLabel*>(QStringLiteral("laSiteName"))->text(), u"Harbour Works Ltd");
}

} // namespace
