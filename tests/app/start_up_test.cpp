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

// A second copy is refused before anything is written, a short screen before the main window loads.
TEST_F(StartUpTest, secondCopyAndAShortScreenAreRefused) {
    const struct Case {
        bool onlyCopy;
        int height;
        const char* text;
        const char* notReached;
    } cases[] = {
        {false, 1024, "Porvane Software is ALREADY RUNNING on this Machine    ", "splash"},
        {true, 767, "Porvane CANNOT RUN because it needs a higher Screen Resolution", "main window"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        prompter.clear();
        platform.log.clear();
        platform.onlyCopy = c.onlyCopy;
        platform.height = c.height;
        EXPECT_FALSE(run());
        EXPECT_EQ(prompter.texts(), QStringList{QString::fromUtf8(c.text)});
        EXPECT_EQ(prompter.last().title, u"Porvane Start up");
        EXPECT_EQ(prompter.last().icon, Icon::Exclamation);
        EXPECT_FALSE(platform.log.contains(QString::fromUtf8(c.notReached)));
    }
    EXPECT_FALSE(QFileInfo::exists(settingsFile())) << "the refused second copy wrote no settings";
    EXPECT_TRUE(screenTallEnough(768));
}

// A settings file that cannot be decoded, or one cut to nothing by a power cut during a copy, is kept aside
// with a word and the defaults replace it.
TEST_F(StartUpTest, damagedOrEmptySettingsGiveDefaults) {
    for (const QByteArray& content : {QByteArray(3839, '\0'), QByteArray()}) {
        SCOPED_TRACE(content.size());
        QDir(home()).removeRecursively();
        QDir().mkpath(home() + QStringLiteral("_PSF/PSystem"));
        QFile file(settingsFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        prompter.clear();

        ASSERT_TRUE(run());
        EXPECT_TRUE(state.SettingsCreated);
        EXPECT_EQ(state.settings.DataPath, home() + QStringLiteral("Porvanedata"));
        EXPECT_EQ(QFileInfo(settingsFile()).size(), 3839);
        EXPECT_EQ(QFileInfo(settingsFile() + QStringLiteral(".damaged")).size(), content.size());
        ASSERT_EQ(prompter.messages().size(), 1);
        EXPECT_EQ(prompter.last().icon, Icon::Information);
        EXPECT_TRUE(prompter.last().text.contains(QStringLiteral("twsabusr.dat.damaged")));
    }
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
    for (const auto& [major, minor, text] :
         {std::tuple{5, 1, "5.01"}, {5, 0, "5.00"}, {6, 10, "6.10"}, {10, 0, "10.00"}})
        EXPECT_EQ(GetOsVersion(major, minor), QString::fromUtf8(text));

    EXPECT_FALSE(testOsVersion(QStringLiteral("5.00")).IsXpOrLater);
    EXPECT_TRUE(testOsVersion(QStringLiteral("5.01")).IsXpOrLater);
    EXPECT_TRUE(testOsVersion(QStringLiteral(" 5.02 ")).IsXpOrLater);
    EXPECT_EQ(testOsVersion(QStringLiteral("10.00")).OsMajorVersion, 10);
    EXPECT_FALSE(testOsVersion(QString()).IsXpOrLater);
}

TEST(OsVersion, manifestNamesTheProgramAndCommonControls) {
    const QString m = visualStyleManifest(QStringLiteral("Tarnwell"), QStringLiteral("Porvane90"),
                                          QStringLiteral("0.9.0.0"), QStringLiteral("Visitor desk"));
    EXPECT_TRUE(m.contains(u"version=\"0.9.0.0\" type=\"win32\" name=\"Tarnwell.Porvane90\""));
    EXPECT_TRUE(m.contains(u"<description>Visitor desk</description>"));
    for (const char* placeholder : {"EXEVERSION", "COMPANYNAME", "EXENAME", "EXEDESCRIPTION"})
        EXPECT_FALSE(m.contains(QLatin1StringView(placeholder))) << placeholder;
}

} // namespace
