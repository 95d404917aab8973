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

namespace {

const QString kExtendedRefused =
    QStringLiteral("Options Currently set Prohibit EXTENDED Characters in Passwords    ");

Settings withPassword(const QString& password, const char* allowExtended) {
    Settings s;
    s.SettingsPassword = password;
    s.ckAllowExtCiPW = QString::fromLatin1(allowExtended);
    return s;
}

TEST(SettingsPasswordRules, typedPasswordMustMatchExactly_extendedCharactersOnlyWhenAllowed) {
    const Settings plain = withPassword(QStringLiteral("PPP"), "0");
    EXPECT_EQ(SettingsPassword::check(plain, QStringLiteral("PPP")), SettingsPassword::Check::Accepted);
    EXPECT_EQ(SettingsPassword::check(plain, QStringLiteral("ppp")), SettingsPassword::Check::Wrong);
    EXPECT_EQ(SettingsPassword::check(plain, QStringLiteral("PPP ")), SettingsPassword::Check::Wrong);
    EXPECT_EQ(SettingsPassword::check(plain, QString()), SettingsPassword::Check::Wrong);
    EXPECT_EQ(SettingsPassword::check(plain, QStringLiteral("PP\u00C9")),
              SettingsPassword::Check::ExtendedRefused);
    EXPECT_EQ(SettingsPassword::check(plain, QStringLiteral("P\tP")),
              SettingsPassword::Check::ExtendedRefused);
    EXPECT_EQ(SettingsPassword::extendedRefusedText(), kExtendedRefused);

    // A password that holds extended characters is refused while they are not allowed, even when typed right.
    Settings accented = withPassword(QStringLiteral("Caf\u00E9"), "0");
    EXPECT_EQ(SettingsPassword::check(accented, QStringLiteral("Caf\u00E9")),
              SettingsPassword::Check::ExtendedRefused);
    accented.ckAllowExtCiPW = QStringLiteral("1");
    EXPECT_EQ(SettingsPassword::check(accented, QStringLiteral("Caf\u00E9")),
              SettingsPassword::Check::Accepted);
    EXPECT_EQ(SettingsPassword::check(accented, QStringLiteral("Cafe")), SettingsPassword::Check::Wrong);
}

TEST(SettingsPasswordRules, aNewPasswordMustBeRepeatedStorableAndReadBackTheSame) {
    const Settings plain = withPassword(QStringLiteral("PPP"), "0");
    const auto refusal = [&](const Settings& s, const QString& pw) {
        return SettingsPassword::refusal(s, pw, pw);
    };
    EXPECT_TRUE(refusal(plain, QStringLiteral("Gate-7 key")).isEmpty());
    EXPECT_FALSE(SettingsPassword::refusal(plain, QStringLiteral("abc"), QStringLiteral("abd")).isEmpty());
    EXPECT_FALSE(refusal(plain, QString()).isEmpty());
    EXPECT_FALSE(refusal(plain, QStringLiteral("abc ")).isEmpty()) << "a trailing blank is lost on reading";
    EXPECT_FALSE(refusal(plain, QStringLiteral(" abc")).isEmpty());
    EXPECT_TRUE(refusal(plain, QString(64, u'x')).isEmpty());
    EXPECT_FALSE(refusal(plain, QString(65, u'x')).isEmpty());
    EXPECT_EQ(refusal(plain, QStringLiteral("Stra\u00DFe")), kExtendedRefused);
    const Settings extended = withPassword(QStringLiteral("PPP"), "1");
    EXPECT_TRUE(refusal(extended, QStringLiteral("Stra\u00DFe")).isEmpty());
    EXPECT_FALSE(refusal(extended, QStringLiteral("\u041F\u0430\u0440\u043E\u043B\u044C")).isEmpty())
        << "Cyrillic cannot be held by the settings record";
}

TEST(DataFolderChecks, tellMissingFileReadOnlyAndIncompleteFoldersApart) {
    QTemporaryDir root;
    const QString base = root.path();
    using Status = DataFolderCheck::Status;
    EXPECT_EQ(DataFolderCheck::of(QStringLiteral("Porvanedata")).status, Status::NotAbsolute);
    EXPECT_EQ(DataFolderCheck::of(QString()).status, Status::NotAbsolute);
    EXPECT_EQ(DataFolderCheck::of(base + QStringLiteral("/nowhere")).status, Status::Missing);
    QFile file(base + QStringLiteral("/afile"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    EXPECT_EQ(DataFolderCheck::of(file.fileName()).status, Status::NotAFolder);
    // Not even root may make files in /proc.
    EXPECT_EQ(DataFolderCheck::of(QStringLiteral("/proc")).status, Status::NotWritable);

    ASSERT_TRUE(QDir(base).mkpath(QStringLiteral("data/Status")));
    const QString data = base + QStringLiteral("/data");
    const DataFolderCheck lacking = DataFolderCheck::of(data);
    EXPECT_EQ(lacking.status, Status::LacksSubfolders);
    EXPECT_EQ(lacking.missingSubfolders, (QStringList{QStringLiteral("Record"), QStringLiteral("photo")}));
    EXPECT_FALSE(DataFolderCheck::createSubfolders(data, lacking.missingSubfolders));
    EXPECT_EQ(DataFolderCheck::of(data).status, Status::Ready);
    QStringList left = QDir(data).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    left.sort();
    EXPECT_EQ(left,
              (QStringList{QStringLiteral("Record"), QStringLiteral("Status"), QStringLiteral("photo")}))
        << "the write test leaves nothing behind";
    EXPECT_TRUE(DataFolderCheck::createSubfolders(file.fileName(), {QStringLiteral("Record")}));
    EXPECT_EQ(DataFolderCheck::nearestExistingFolder(data + QStringLiteral("/not/yet/")), data);
    EXPECT_EQ(DataFolderCheck::nearestExistingFolder(file.fileName()), base);
    EXPECT_EQ(DataFolderCheck::nearestExistingFolder(QStringLiteral("relative/path")), QDir::rootPath());
}

using SettingsEditorTest = SavedSettingsFixture;

TEST_F(SettingsEditorTest, onlyFolderAndOpeningOptionChangesNeedARestart) {
    const Settings before = state.settings;
    Settings after = before;
    after.SiteName = QStringLiteral("Elsewhere");
    after.ckMakeSysRdO = QStringLiteral("1");
    EXPECT_FALSE(SettingsOptions::restartNeeded(before, after));
    after.ckEnbl_RTC = QStringLiteral("0");
    EXPECT_TRUE(SettingsOptions::restartNeeded(before, after));

    // The same data folder written with a closing slash is no change.
    SettingsEditor editor(state);
    editor.edited().DataPath = desk.folder.dataPath() + QStringLiteral("/");
    editor.edited().SiteName = QStringLiteral("  Harbour Works  ");
    ASSERT_TRUE(editor.save());
    EXPECT_FALSE(state.SettingsRestartPending);
    EXPECT_EQ(state.settings.SiteName, u"Harbour Works");
    EXPECT_TRUE(desk.prompter.messages().isEmpty());
}

TEST_F(SettingsEditorTest, aRefusedFolderOrPasswordOrFailedWriteLeavesFileAndDeskAsTheyWere) {
    const QByteArray fileBefore = settingsFile();
    const Settings before = state.settings;
    QTemporaryDir other;

    SettingsEditor editor(state);
    editor.edited().ckDisPassPrn = QStringLiteral("1");
    editor.edited().DataPath = other.path() + QStringLiteral("/missing");
    EXPECT_FALSE(editor.save());
    EXPECT_EQ(desk.prompter.last().text,
              QStringLiteral("The folder %1 does not exist.").arg(editor.edited().DataPath));

    // Declining the offer to make Record, Status and photo keeps the folder out.
    editor.edited().DataPath = other.path();
    desk.prompter.queue(Answer::No);
    EXPECT_FALSE(editor.save());
    EXPECT_TRUE(
        desk.prompter.last().text.contains(QStringLiteral("has no Record, Status and photo folders")));
    EXPECT_FALSE(QFileInfo::exists(other.path() + QStringLiteral("/Record")));

    editor.edited().DataPath = before.DataPath;
    editor.setNewPassword(QStringLiteral("new"), QStringLiteral("neu"));
    EXPECT_FALSE(editor.save());
    EXPECT_EQ(settingsFile(), fileBefore);
    EXPECT_EQ(state.settings.ckDisPassPrn, u"0");

    // The settings folder replaced by a file: the write fails and the desk keeps its settings.
    editor.setNewPassword(QString(), QString());
    ASSERT_TRUE(QDir(desk.folder.appPath() + QStringLiteral("_PSF")).removeRecursively());
    desk.folder.write(QStringLiteral("../_PSF"), "not a folder");
    EXPECT_FALSE(editor.save());
    EXPECT_TRUE(desk.prompter.last().text.startsWith(QStringLiteral("The settings could not be saved: ")));
    EXPECT_EQ(state.settings.ckDisPassPrn, u"0");
    EXPECT_FALSE(state.SettingsRestartPending);
}

} // namespace
