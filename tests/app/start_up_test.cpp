#include "app/app_state.h"
#include "app/os_version.h"
#include "app/start_up.h"
#include "scripted_prompter.h"
#include "temp_data_folder.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;

namespace {

// Writes every platform step and pause into one log, so the order of the start-up can be read off it.
struct RecordingPlatform final : StartUpPlatform, Pause {
    QStringList log;
    QString version;
    bool themeActive = true;
    bool onlyCopy = true;
    int height = 1024;

    void enterAppFolder(const QString& appPath) override { log << QStringLiteral("folder ") + appPath; }
    QString osVersion() override {
        log << QStringLiteral("version");
        return version;
    }
    void prepareVisualStyle(const QString&) override { log << QStringLiteral("visual style"); }
    bool visualThemeActive() override {
        log << QStringLiteral("theme");
        return themeActive;
    }
    bool claimSingleInstance() override {
        log << QStringLiteral("single");
        return onlyCopy;
    }
    int screenHeight() override {
        log << QStringLiteral("screen");
        return height;
    }
    void showSplash() override { log << QStringLiteral("splash"); }
    void loadMainWindow() override { log << QStringLiteral("main window"); }
    void closeSplash() override { log << QStringLiteral("close splash"); }
    void wait(double seconds) override { log << QStringLiteral("wait %1").arg(seconds); }
};

struct StartUpTest : ::testing::Test {
    TempDataFolder folder;
    ScriptedPrompter prompter;
    FixedClock clock{QDateTime(QDate(2026, 3, 2), QTime(9, 0))};
    RecordingPlatform platform;
    AppState state{prompter, clock, platform};

    QString home() const { return folder.appPath(); }
    QString settingsFile() const { return home() + QStringLiteral("_PSF/PSystem/twsabusr.dat"); }
    bool run() { return StartUp(state, platform).run(home().chopped(1)); }
};

TEST_F(StartUpTest, firstStartRunsInOrderAndAppliesDefaults) {
    ASSERT_TRUE(run());
    const QStringList expected = {QStringLiteral("folder ") + home(), QStringLiteral("version"),
                                  QStringLiteral("single"),           QStringLiteral("screen"),
                                  QStringLiteral("splash"),           QStringLiteral("main window"),
                                  QStringLiteral("wait 2"),           QStringLiteral("close splash")};
    EXPECT_EQ(platform.log, expected);
    EXPECT_EQ(state.AppPath, home()) << "the folder gets its closing slash";
    EXPECT_TRUE(state.SettingsCreated);
    EXPECT_EQ(state.settings.DataPath, home() + QStringLiteral("Porvanedata"));
    EXPECT_EQ(state.settings.SettingsPassword, u"PPP");
    EXPECT_EQ(QFileInfo(settingsFile()).size(), 3839);
    EXPECT_TRUE(prompter.messages().isEmpty());
    EXPECT_FALSE(state.IsXpOrLater);

    // The next start finds its settings and applies nothing.
    AppState next{prompter, clock, platform};
    ASSERT_TRUE(StartUp(next, platform).run(home()));
    EXPECT_FALSE(next.SettingsCreated);
    EXPECT_EQ(next.settings.DataPath, home() + QStringLiteral("Porvanedata"));
}

TEST_F(StartUpTest, secondCopyIsRefusedBeforeAnythingIsWritten) {
    platform.onlyCopy = false;
    EXPECT_FALSE(run());
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_EQ(prompter.last().title, u"Porvane Start up");
    EXPECT_EQ(prompter.last().text, u"Porvane Software is ALREADY RUNNING on this Machine    ");
    EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    EXPECT_EQ(prompter.last().buttons, Buttons::Ok);
    EXPECT_FALSE(platform.log.contains(QStringLiteral("splash")));
    EXPECT_FALSE(QFileInfo::exists(settingsFile()));
}

TEST_F(StartUpTest, screenBelow768LinesIsRefused) {
    platform.height = 767;
    EXPECT_FALSE(run());
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_EQ(prompter.last().title, u"Porvane Start up");
    EXPECT_EQ(prompter.last().text, u"Porvane CANNOT RUN because it needs a higher Screen Resolution");
    EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    EXPECT_FALSE(platform.log.contains(QStringLiteral("main window")));

    EXPECT_FALSE(screenTallEnough(600));
    EXPECT_TRUE(screenTallEnough(768));
    EXPECT_TRUE(screenTallEnough(1024));
}

TEST_F(StartUpTest, windowsVersionTestPreparesStylesAndDropsManifestWithoutTheme) {
    QFile manifest(home() + QStringLiteral("Porvane90.exe.manifest"));
    ASSERT_TRUE(manifest.open(QIODevice::WriteOnly));
    manifest.close();

    platform.version = QStringLiteral("5.00");
    platform.themeActive = false;
    ASSERT_TRUE(run());
    EXPECT_FALSE(state.IsXpOrLater);
    EXPECT_FALSE(platform.log.contains(QStringLiteral("visual style")));
    EXPECT_TRUE(manifest.exists()) << "below 5.01 the theme is not asked about";

    platform.log.clear();
    platform.version = QStringLiteral("6.01");
    platform.themeActive = true;
    ASSERT_TRUE(run());
    EXPECT_TRUE(state.IsXpOrLater);
    EXPECT_EQ(state.OsMajorVersion, 6);
    EXPECT_EQ(platform.log.mid(1, 4), (QStringList{QStringLiteral("version"), QStringLiteral("visual style"),
                                                   QStringLiteral("single"), QStringLiteral("theme")}));
    EXPECT_TRUE(manifest.exists()) << "kept while a theme is active";

    platform.themeActive = false;
    ASSERT_TRUE(run());
    EXPECT_FALSE(manifest.exists());
}

TEST_F(StartUpTest, damagedSettingsAreKeptAndReplacedByDefaults) {
    QDir().mkpath(home() + QStringLiteral("_PSF/PSystem"));
    QFile file(settingsFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(3839, '\0'));
    file.close();

    ASSERT_TRUE(run());
    EXPECT_TRUE(state.SettingsCreated);
    EXPECT_EQ(state.settings.DataPath, home() + QStringLiteral("Porvanedata"));
    EXPECT_EQ(QFileInfo(settingsFile() + QStringLiteral(".damaged")).size(), 3839);
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_EQ(prompter.last().icon, Icon::Information);
    EXPECT_TRUE(prompter.last().text.contains(QStringLiteral("twsabusr.dat.damaged")));
}

TEST_F(StartUpTest, shortSettingsFileGivesDefaultsAtNextStart) {
    QDir().mkpath(home() + QStringLiteral("_PSF/PSystem"));
    QFile file(settingsFile());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray()); // cut to nothing, as by a power cut during a copy
    file.close();

    ASSERT_TRUE(run());
    EXPECT_TRUE(state.SettingsCreated);
    EXPECT_EQ(state.settings.DataPath, home() + QStringLiteral("Porvanedata"));
    EXPECT_EQ(QFileInfo(settingsFile()).size(), 3839);
}

TEST_F(StartUpTest, unreadableSettingsAreNotOverwritten) {
    QDir().mkpath(settingsFile()); // a folder in the file's place cannot be read
    ASSERT_TRUE(run());
    EXPECT_TRUE(state.SettingsCreated);
    EXPECT_EQ(state.settings.DataPath, home() + QStringLiteral("Porvanedata"));
    EXPECT_TRUE(QFileInfo(settingsFile()).isDir());
    ASSERT_EQ(prompter.messages().size(), 1);
    EXPECT_EQ(prompter.last().title, u"Porvane Start up");
    EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
    EXPECT_TRUE(prompter.last().text.contains(QStringLiteral("cannot be read")));
    EXPECT_TRUE(platform.log.contains(QStringLiteral("main window")));
}

TEST(OsVersion, textHasTwoDecimalsOfMinorOverHundred) {
    EXPECT_EQ(GetOsVersion(5, 1), u"5.01");
    EXPECT_EQ(GetOsVersion(5, 0), u"5.00");
    EXPECT_EQ(GetOsVersion(6, 0), u"6.00");
    EXPECT_EQ(GetOsVersion(6, 10), u"6.10");
    EXPECT_EQ(GetOsVersion(10, 0), u"10.00");

    EXPECT_FALSE(testOsVersion(QStringLiteral("5.00")).IsXpOrLater);
    EXPECT_TRUE(testOsVersion(QStringLiteral("5.01")).IsXpOrLater);
    EXPECT_TRUE(testOsVersion(QStringLiteral(" 5.02 ")).IsXpOrLater);
    EXPECT_EQ(testOsVersion(QStringLiteral("10.00")).OsMajorVersion, 10);
    EXPECT_FALSE(testOsVersion(QString()).IsXpOrLater);
}

TEST(OsVersion, manifestNamesTheProgramAndCommonControls) {
    const QString m = visualStyleManifest(QStringLiteral("Tarnwell"), QStringLiteral("Porvane90"),
                                          QStringLiteral("0.9.0.0"), QStringLiteral("Visitor desk"));
    EXPECT_TRUE(m.startsWith(u"<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"));
    EXPECT_TRUE(m.contains(u"processorArchitecture=\"x86\" version=\"0.9.0.0\" type=\"win32\" "
                           u"name=\"Tarnwell.Porvane90\""));
    EXPECT_TRUE(m.contains(u"<description>Visitor desk</description>"));
    EXPECT_TRUE(m.contains(u"name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
    EXPECT_TRUE(m.contains(u"publicKeyToken=\"6595b64144ccf1df\" language=\"*\""));
    for (const char* placeholder : {"EXEVERSION", "COMPANYNAME", "EXENAME", "EXEDESCRIPTION"})
        EXPECT_FALSE(m.contains(QLatin1StringView(placeholder))) << placeholder;
}

} // namespace
