#include "app/app_state.h"
#include "child_process.h"
#include "settings/server_settings.h"
#include "settings/settings_file.h"
#include "test_desk.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>
#include <sodium.h>

using namespace porvane;
using namespace porvane::test;
using namespace Qt::Literals::StringLiterals;

namespace {

// The cipher as the file format defines it: XChaCha20 XOR, key BLAKE2b-256 and nonce BLAKE2b-192 of the key
// text. Written out here so that a change to the program's cipher breaks these tests.
QByteArray xorCipher(QByteArray bytes) {
    if (sodium_init() < 0)
        ADD_FAILURE() << "libsodium cannot start";
    const unsigned char keyText[] = "#&4k 7.Q~#";
    unsigned char key[32];
    unsigned char nonce[24];
    crypto_generichash(key, 32, keyText, 10, nullptr, 0);
    crypto_generichash(nonce, 24, keyText, 10, nullptr, 0);
    auto* p = reinterpret_cast<unsigned char*>(bytes.data());
    crypto_stream_xchacha20_xor(p, p, std::size_t(bytes.size()), nonce, key);
    return bytes;
}

// The text at a 1-based column of a deciphered record.
QByteArray at(const QByteArray& record, int column, int width) {
    return record.mid(column - 1, width);
}

QByteArray padded(const QByteArray& text, int width) {
    return text + QByteArray(width - text.size(), ' ');
}

struct SettingsFileTest : ::testing::Test {
    TestDesk desk{QDateTime(QDate(2026, 3, 2), QTime(9, 0))};
    TempDataFolder& folder = desk.folder;
    AppState& state = desk.state;
    // Where the settings file lies, and where a damaged one is kept, from the data folder.
    const QString relative = u"../_PSF/PSystem/twsabusr.dat"_s;
    const QString keptRelative = relative + u".damaged"_s;

    QString file() const { return folder.appPath() + u"_PSF/PSystem/twsabusr.dat"_s; }
    QByteArray fileBytes() const { return folder.read(relative); }
    void writeFile(const QByteArray& bytes) const { folder.write(relative, bytes); }
};

TEST_F(SettingsFileTest, defaultsAreWrittenEncipheredAtTheirColumns) {
    ASSERT_FALSE(ApplyDefaultSettings(state.AppPath, state.settings));
    const QByteArray raw = fileBytes();
    ASSERT_EQ(raw.size(), 3839);
    const QByteArray record = xorCipher(raw);
    EXPECT_NE(raw, record) << "the file must not hold the record in clear";

    const QByteArray app = folder.appPath().toLatin1();
    EXPECT_EQ(at(record, 100, 64), padded("PPP", 64));
    EXPECT_EQ(at(record, 625, 255), padded(app + "Porvanedata", 255));
    EXPECT_EQ(at(record, 925, 76), padded(app, 76));
    EXPECT_EQ(at(record, 1001, 64), padded("Tarnwell Solutions", 64));
    // The one-character options as a fresh installation has them; columns no setting uses are blanks.
    for (const auto& [column, value] : {std::pair{165, "00"},
                                        {261, "1"},
                                        {337, "1"},
                                        {352, "0"},
                                        {400, "1"},
                                        {405, "0"},
                                        {484, "Y"},
                                        {525, "1"},
                                        {565, "1"},
                                        {600, "1"},
                                        {1200, "0"}})
        EXPECT_EQ(at(record, column, int(qstrlen(value))), value) << column;
    EXPECT_EQ(at(record, 1, 99), QByteArray(99, ' '));
    EXPECT_EQ(at(record, 1065, 135), QByteArray(135, ' '));
    EXPECT_EQ(at(record, 1201, 2639), QByteArray(2639, ' '));
}

TEST_F(SettingsFileTest, recordLaidOutByHandReadsEachSetting) {
    writeFile(xorCipher(handLine({{100, "Gate 4 key   "},
                                  {166, "1"},
                                  {352, "1"},
                                  {405, "1"},
                                  {484, "N"},
                                  {625, "  /srv/visitors  "},
                                  {925, "/opt/porvane"},
                                  {1001, "Harbour Works Ltd"}},
                                 3839)));
    const SettingsLoad load = LoadSettings(state.AppPath, state.settings);
    EXPECT_EQ(load.status, SettingsLoad::Status::Loaded);
    EXPECT_EQ(state.settings.SettingsPassword, u"Gate 4 key"); // trailing blanks gone, inner blank kept
    EXPECT_EQ(state.settings.ckAllowExtCiPW, u"1");
    EXPECT_TRUE(state.settings.DisableSingleDelete());
    EXPECT_TRUE(state.settings.ReadOnlyMode());
    EXPECT_EQ(state.settings.option484, u"N");
    EXPECT_EQ(state.settings.DataPath, u"/srv/visitors");
    EXPECT_EQ(state.settings.SystemPath, u"/opt/porvane");
    EXPECT_EQ(state.settings.SiteName, u"Harbour Works Ltd");
    EXPECT_EQ(state.settings.ckShowSplash, u" "); // an option is taken as it is, blank included
    EXPECT_FALSE(state.settings.usesServer()) << "a file without a server keeps the data folder";
}

TEST_F(SettingsFileTest, serverSettingsLieBesideTheOldOnesAndThePasswordIsNotInClear) {
    state.settings = defaultSettings(state.AppPath);
    state.settings.ServerHost = u"db.harbour.example"_s;
    state.settings.ServerPort = u"5433"_s;
    state.settings.ServerDatabase = u"porvane"_s;
    state.settings.ServerUser = u"gate desk"_s;
    state.settings.ServerPassword = u"s3cret 'n\\ \u00E9"_s;
    ASSERT_FALSE(SaveSettings(state.AppPath, state.settings));

    const QByteArray raw = fileBytes();
    ASSERT_EQ(raw.size(), 3839);
    EXPECT_FALSE(raw.contains("s3cret"));
    const QByteArray record = xorCipher(raw);
    EXPECT_EQ(at(record, 1301, 128), padded("db.harbour.example", 128));
    EXPECT_EQ(at(record, 1431, 5), "5433 ");
    EXPECT_EQ(at(record, 1437, 63), padded("porvane", 63));
    EXPECT_EQ(at(record, 1501, 63), padded("gate desk", 63));
    EXPECT_EQ(at(record, 1565, 64), padded("s3cret 'n\\ \xE9", 64));
    // Every older setting is where it was.
    const QByteArray app = folder.appPath().toLatin1();
    EXPECT_EQ(at(record, 100, 64), padded("PPP", 64));
    EXPECT_EQ(at(record, 625, 255), padded(app + "Porvanedata", 255));
    EXPECT_EQ(at(record, 1001, 64), padded("Tarnwell Solutions", 64));
    EXPECT_EQ(at(record, 1200, 1), "0");
    EXPECT_EQ(at(record, 1629, 2211), QByteArray(2211, ' '));

    Settings read;
    ASSERT_EQ(LoadSettings(state.AppPath, read).status, SettingsLoad::Status::Loaded);
    EXPECT_EQ(read.ServerHost, state.settings.ServerHost);
    EXPECT_EQ(read.ServerPort, u"5433");
    EXPECT_EQ(read.ServerDatabase, u"porvane");
    EXPECT_EQ(read.ServerUser, u"gate desk");
    EXPECT_EQ(read.ServerPassword, state.settings.ServerPassword);
    // libpq's quoting: each value in single quotes, a quote or backslash after a backslash.
    EXPECT_EQ(ServerSettings::connInfo(read),
              u"host='db.harbour.example' port='5433' dbname='porvane' user='gate desk' "
              "password='s3cret \\'n\\\\ \u00E9'"_s);
    read.ServerPort.clear();
    read.ServerPassword.clear();
    EXPECT_EQ(ServerSettings::connInfo(read),
              u"host='db.harbour.example' dbname='porvane' user='gate desk'"_s);
    read.ServerHost.clear();
    EXPECT_EQ(ServerSettings::connInfo(read), QString()) << "no host: the data folder";
}

TEST_F(SettingsFileTest, longDataPathIsCutTo255AndPasswordBlanksTrimmed) {
    state.settings = defaultSettings(state.AppPath);
    const QString longPath = u"/srv/"_s + QString(295, u'd');
    state.settings.DataPath = longPath;
    state.settings.SettingsPassword = u"abc   "_s;
    state.settings.SystemPath = longPath;
    ASSERT_FALSE(SaveSettings(state.AppPath, state.settings));

    const QByteArray record = xorCipher(fileBytes());
    ASSERT_EQ(record.size(), 3839);
    EXPECT_EQ(at(record, 625, 255), longPath.left(255).toLatin1());
    EXPECT_EQ(at(record, 880, 45), QByteArray(45, ' ')) << "the path must not run into the next setting";
    // The second folder stops where the site's name begins.
    EXPECT_EQ(at(record, 925, 76), longPath.left(76).toLatin1());
    EXPECT_EQ(at(record, 1001, 64), padded("Tarnwell Solutions", 64));

    ASSERT_EQ(LoadSettings(state.AppPath, state.settings).status, SettingsLoad::Status::Loaded);
    EXPECT_EQ(state.settings.DataPath, longPath.left(255));
    EXPECT_EQ(state.settings.SettingsPassword, u"abc");
}

// A short file is read as far as it goes; one written in clear (by hand, or by another program) deciphers
// to noise and is read not at all. Either is kept as a copy before the defaults replace it.
TEST_F(SettingsFileTest, shortOrGarbageFileIsKeptAsACopy) {
    const QByteArray shortFile = xorCipher(handLine({{100, "secret"}, {405, "1"}}, 600));
    writeFile(shortFile);
    SettingsLoad load = LoadSettings(state.AppPath, state.settings);
    EXPECT_EQ(load.status, SettingsLoad::Status::Short);
    EXPECT_EQ(state.settings.SettingsPassword, u"secret");
    EXPECT_TRUE(state.settings.ReadOnlyMode());
    EXPECT_TRUE(state.settings.DataPath.isEmpty()); // beyond the end: the start-up then applies the defaults
    EXPECT_EQ(load.keptCopy, file() + u".damaged"_s);
    EXPECT_EQ(folder.read(keptRelative), shortFile);

    const QByteArray garbage = handLine({{100, "PPP"}, {625, "/srv/visitors"}}, 3839);
    writeFile(garbage);
    state.settings = Settings();
    load = LoadSettings(state.AppPath, state.settings);
    EXPECT_EQ(load.status, SettingsLoad::Status::Damaged);
    EXPECT_TRUE(state.settings.SettingsPassword.isEmpty());
    ASSERT_FALSE(ApplyDefaultSettings(state.AppPath, state.settings));
    EXPECT_EQ(folder.read(keptRelative), garbage);
    EXPECT_EQ(LoadSettings(state.AppPath, state.settings).status, SettingsLoad::Status::Loaded);

    // A damaged file that stays as it is (a porvane-admin run does not replace it) is copied once, not on
    // every start: the copy, marked here, is left alone.
    const QByteArray big = garbage.repeated(300);
    writeFile(big);
    EXPECT_EQ(LoadSettings(state.AppPath, state.settings).status, SettingsLoad::Status::Damaged);
    ASSERT_EQ(folder.read(keptRelative), big);
    folder.write(keptRelative, QByteArray(big.size(), 'm'));
    EXPECT_EQ(LoadSettings(state.AppPath, state.settings).keptCopy, file() + u".damaged"_s);
    EXPECT_EQ(folder.read(keptRelative), QByteArray(big.size(), 'm'));
}

// A desk of a user who may not read the file (in a child process, which gives up root's rights).
TEST_F(SettingsFileTest, fileWithoutReadPermissionIsUnreadable) {
    ASSERT_FALSE(ApplyDefaultSettings(state.AppPath, state.settings));
    ASSERT_TRUE(QFile::setPermissions(file(), QFileDevice::Permissions()));
    folder.openToOtherUsers();
    EXPECT_TRUE(inChildProcess(
        [&] {
            const SettingsLoad load = LoadSettings(state.AppPath, state.settings);
            return load.status == SettingsLoad::Status::Unreadable &&
                   load.error.number == FileError::PermissionDenied;
        },
        true));
}

TEST_F(SettingsFileTest, failedWriteKeepsDefaultsInMemoryAndSaysWhy) {
    folder.write(u"../_PSF"_s, "a file where the settings folder should be");
    const FileError e = ApplyDefaultSettings(state.AppPath, state.settings);
    EXPECT_TRUE(e);
    EXPECT_FALSE(e.text.isEmpty());
    EXPECT_EQ(state.settings.DataPath, folder.appPath() + u"Porvanedata"_s);
}

} // namespace
