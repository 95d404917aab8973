#include "saved_settings_fixture.h"
#include "settings/data_folder_check.h"
#include "settings/settings_editor.h"
#include "settings/settings_file.h"
#include "settings/settings_options.h"
#include "settings/settings_password.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString kExtendedRefused = u"Options Currently set Prohibit EXTENDED Characters in Passwords    "_s;

Settings withPassword(const QString& password, const char* allowExtended) {
    Settings s;
    s.SettingsPassword = password;
    s.ckAllowExtCiPW = QString::fromLatin1(allowExtended);
    return s;
}

TEST(SettingsPasswordRules, typedPasswordMustMatchExactly_extendedCharactersOnlyWhenAllowed) {
    using Check = SettingsPassword::Check;
    const Settings plain = withPassword(u"PPP"_s, "0");
    EXPECT_EQ(SettingsPassword::check(plain, u"PPP"_s), Check::Accepted);
    for (const QString& typed : {u"ppp"_s, u"PPP "_s, QString()})
        EXPECT_EQ(SettingsPassword::check(plain, typed), Check::Wrong) << typed.toStdString();
    for (const QString& typed : {u"PP\u00C9"_s, u"P\tP"_s})
        EXPECT_EQ(SettingsPassword::check(plain, typed), Check::ExtendedRefused) << typed.toStdString();
    EXPECT_EQ(SettingsPassword::extendedRefusedText(), kExtendedRefused);

    // A password that holds extended characters is refused while they are not allowed, even when typed right.
    Settings accented = withPassword(u"Caf\u00E9"_s, "0");
    EXPECT_EQ(SettingsPassword::check(accented, u"Caf\u00E9"_s), Check::ExtendedRefused);
    accented.ckAllowExtCiPW = u"1"_s;
    EXPECT_EQ(SettingsPassword::check(accented, u"Caf\u00E9"_s), Check::Accepted);
    EXPECT_EQ(SettingsPassword::check(accented, u"Cafe"_s), Check::Wrong);
}

// A new password must be repeated, and must read back from the file as it was typed: no blank at either
// end (a trailing one is lost on reading), at most 64 characters, none the record cannot hold.
TEST(SettingsPasswordRules, aNewPasswordMustBeRepeatedStorableAndReadBackTheSame) {
    const Settings plain = withPassword(u"PPP"_s, "0");
    const Settings extended = withPassword(u"PPP"_s, "1");
    const auto refusal = [](const Settings& s, const QString& pw) {
        return SettingsPassword::refusal(s, pw, pw);
    };
    for (const QString& pw : {u"Gate-7 key"_s, QString(64, u'x')})
        EXPECT_TRUE(refusal(plain, pw).isEmpty()) << pw.toStdString();
    for (const QString& pw : {QString(), u"abc "_s, u" abc"_s, QString(65, u'x')})
        EXPECT_FALSE(refusal(plain, pw).isEmpty()) << pw.toStdString();
    EXPECT_FALSE(SettingsPassword::refusal(plain, u"abc"_s, u"abd"_s).isEmpty());
    EXPECT_EQ(refusal(plain, u"Stra\u00DFe"_s), kExtendedRefused);
    EXPECT_TRUE(refusal(extended, u"Stra\u00DFe"_s).isEmpty());
    EXPECT_FALSE(refusal(extended, u"\u041F\u0430\u0440\u043E\u043B\u044C"_s).isEmpty()) << "Cyrillic";
}

TEST(DataFolderChecks, tellMissingFileReadOnlyAndIncompleteFoldersApart) {
    QTemporaryDir root;
    const QString base = root.path();
    using Status = DataFolderCheck::Status;
    EXPECT_EQ(DataFolderCheck::of(u"Porvanedata"_s).status, Status::NotAbsolute);
    EXPECT_EQ(DataFolderCheck::of(QString()).status, Status::NotAbsolute);
    EXPECT_EQ(DataFolderCheck::of(base + u"/nowhere"_s).status, Status::Missing);
    QFile file(base + u"/afile"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(DataFolderCheck::of(file.fileName()).status, Status::NotAFolder);
    // Not even root may make files in /proc.
    EXPECT_EQ(DataFolderCheck::of(u"/proc"_s).status, Status::NotWritable);

    ASSERT_TRUE(QDir(base).mkpath(u"data/Status"_s));
    const QString data = base + u"/data"_s;
    const DataFolderCheck lacking = DataFolderCheck::of(data);
    EXPECT_EQ(lacking.status, Status::LacksSubfolders);
    EXPECT_EQ(lacking.missingSubfolders, (QStringList{u"Record"_s, u"photo"_s}));
    EXPECT_FALSE(DataFolderCheck::createSubfolders(data, lacking.missingSubfolders));
    EXPECT_EQ(DataFolderCheck::of(data).status, Status::Ready);
    EXPECT_EQ(QDir(data).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name),
              (QStringList{u"Record"_s, u"Status"_s, u"photo"_s}))
        << "the write test leaves nothing behind";
    EXPECT_TRUE(DataFolderCheck::createSubfolders(file.fileName(), {u"Record"_s}));
    EXPECT_EQ(DataFolderCheck::nearestExistingFolder(data + u"/not/yet/"_s), data);
    EXPECT_EQ(DataFolderCheck::nearestExistingFolder(file.fileName()), base);
    EXPECT_EQ(DataFolderCheck::nearestExistingFolder(u"relative/path"_s), QDir::rootPath());
}

using SettingsEditorTest = SavedSettingsFixture;

TEST_F(SettingsEditorTest, onlyFolderAndOpeningOptionChangesNeedARestart) {
    const Settings before = state.settings;
    Settings after = before;
    after.SiteName = u"Elsewhere"_s;
    after.ckMakeSysRdO = u"1"_s;
    EXPECT_FALSE(SettingsOptions::restartNeeded(before, after));
    after.ckEnbl_RTC = u"0"_s;
    EXPECT_TRUE(SettingsOptions::restartNeeded(before, after));

    // The same data folder written with a closing slash is no change.
    SettingsEditor editor(state.AppPath, state.settings, state.prompter);
    editor.edited().DataPath = desk.folder.dataPath() + u"/"_s;
    editor.edited().SiteName = u"  Harbour Works  "_s;
    ASSERT_TRUE(editor.save());
    EXPECT_FALSE(editor.restartPending());
    EXPECT_EQ(state.settings.SiteName, u"Harbour Works");
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
}

TEST_F(SettingsEditorTest, aRefusedFolderOrPasswordOrFailedWriteLeavesFileAndDeskAsTheyWere) {
    const QByteArray fileBefore = settingsFile();
    const Settings before = state.settings;
    QTemporaryDir other;

    SettingsEditor editor(state.AppPath, state.settings, state.prompter);
    editor.edited().ckDisPassPrn = u"1"_s;
    editor.edited().DataPath = other.path() + u"/missing"_s;
    EXPECT_FALSE(editor.save());
    EXPECT_EQ(desk.prompter.last().text, u"The folder %1 does not exist."_s.arg(editor.edited().DataPath));

    // A folder that exists, but whose path the settings file cannot hold: refused, not saved as "?".
    const QString cyrillic = other.path() + u"/\u0414\u0430\u043D\u043D\u044B\u0435"_s;
    ASSERT_TRUE(QDir().mkpath(cyrillic + u"/Record"_s));
    editor.edited().DataPath = cyrillic;
    EXPECT_FALSE(editor.save());
    EXPECT_EQ(
        desk.prompter.last().text,
        u"The folder %1 has a character that the settings file cannot hold; it would be saved as \"?\" "
        "and name no folder. Choose a folder whose path has only Western European letters."_s.arg(cyrillic));
    editor.edited().DataPath = other.path() + u"/Caf\u00E9"_s;
    EXPECT_FALSE(editor.save());
    EXPECT_EQ(desk.prompter.last().text, u"The folder %1 does not exist."_s.arg(editor.edited().DataPath))
        << "a Western European letter is held";

    // Declining the offer to make Record, Status and photo keeps the folder out.
    editor.edited().DataPath = other.path();
    desk.prompter.queue(Answer::No);
    EXPECT_FALSE(editor.save());
    EXPECT_TRUE(desk.prompter.last().text.contains(u"has no Record, Status and photo folders"_s));
    EXPECT_FALSE(QFileInfo::exists(other.path() + u"/Record"_s));

    editor.edited().DataPath = before.DataPath;
    editor.setNewPassword(u"new"_s, u"neu"_s);
    EXPECT_FALSE(editor.save());
    EXPECT_EQ(settingsFile(), fileBefore);
    EXPECT_EQ(state.settings.ckDisPassPrn, u"0");

    // The settings folder replaced by a file: the write fails and the desk keeps its settings.
    editor.setNewPassword(QString(), QString());
    ASSERT_TRUE(QDir(desk.folder.appPath() + u"_PSF"_s).removeRecursively());
    desk.folder.write(u"../_PSF"_s, "not a folder");
    EXPECT_FALSE(editor.save());
    EXPECT_TRUE(desk.prompter.last().text.startsWith(u"The settings could not be saved: "_s));
    EXPECT_EQ(state.settings.ckDisPassPrn, u"0");
    EXPECT_FALSE(editor.restartPending());
}

TEST_F(SettingsEditorTest, serverSettingsAreCheckedAndSwitchTheStoreWithoutARestart) {
    const QByteArray fileBefore = settingsFile();
    SettingsEditor editor(state.AppPath, state.settings, state.prompter);
    Settings& edited = editor.edited();
    edited.ServerHost = u"db1"_s;
    edited.ServerDatabase = u"porvane"_s;
    for (const auto& [port, user, password, refusal] : {
             std::tuple{u"70000"_s, u"desk"_s, u"pw"_s,
                        u"The port is a number from 1 to 65535 (PostgreSQL's own is 5432)."_s},
             {u"5432"_s, u"desk;2"_s, u"pw"_s, u"The user cannot hold a \";\"."_s},
             {u"5432"_s, u"desk"_s, u" pw"_s, u"The server password cannot begin or end with a blank."_s},
             {u"5432"_s, u"\u0414\u0430"_s, u"pw"_s,
              u"The user has a character that the settings file cannot hold."_s},
         }) {
        edited.ServerPort = port;
        edited.ServerUser = user;
        edited.ServerPassword = password;
        EXPECT_FALSE(editor.save());
        EXPECT_EQ(desk.prompter.last().text, refusal);
        // Test connection refuses the same settings before it tries the server.
        editor.testServer([](const QString&) -> QString {
            ADD_FAILURE() << "settings that cannot be saved were tried";
            return {};
        });
        EXPECT_EQ(desk.prompter.last().text, refusal);
    }
    EXPECT_EQ(settingsFile(), fileBefore);
    EXPECT_FALSE(state.settings.usesServer());

    // Test connection tries what the window holds, before it is saved.
    edited.ServerPort.clear();
    edited.ServerUser = u"desk"_s;
    edited.ServerPassword = u"pw"_s;
    QString tried;
    editor.testServer([&tried](const QString& connInfo) {
        tried = connInfo;
        return u"Connection refused"_s;
    });
    EXPECT_EQ(tried, u"host='db1' dbname='porvane' user='desk' password='pw'");
    EXPECT_EQ(desk.prompter.last().text, u"The bookings server cannot be reached: Connection refused");
    editor.testServer([](const QString&) { return QString(); });
    EXPECT_EQ(desk.prompter.last().text, u"The bookings server answers and holds the bookings tables.");

    const qsizetype told = desk.prompter.messages().size();
    ASSERT_TRUE(editor.save());
    EXPECT_EQ(desk.prompter.messages().size(), told) << "a new store needs no restart";
    EXPECT_FALSE(editor.restartPending());
    EXPECT_TRUE(editor.storeChanged());
    EXPECT_EQ(state.settings.ServerHost, u"db1");
    EXPECT_EQ(reread().ServerPassword, u"pw");

    // Back to the data folder: the other server settings are kept for later.
    SettingsEditor back(state.AppPath, state.settings, state.prompter);
    back.edited().ServerHost.clear();
    back.testServer([](const QString&) -> QString {
        ADD_FAILURE() << "no server to try";
        return {};
    });
    EXPECT_EQ(desk.prompter.last().text, u"No server is set: the bookings are kept in the data folder.");
    ASSERT_TRUE(back.save());
    EXPECT_TRUE(back.storeChanged());
    EXPECT_FALSE(reread().usesServer());
    EXPECT_EQ(reread().ServerDatabase, u"porvane");
}

} // namespace
