#include "settings/settings_file.h"

#include "store/windows1252.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <cerrno>
#include <sodium.h>

namespace porvane {

namespace {

// Where each setting lies in the deciphered record (first column counted from 1).
struct Column {
    int first;
    int width;
    QString Settings::*member;
    bool trimmed;
};

constexpr Column kColumns[] = {
    {100, 64, &Settings::SettingsPassword, true},
    {165, 1, &Settings::option165, false},
    {166, 1, &Settings::ckAllowExtCiPW, false},
    {200, 1, &Settings::ckStartFull, false},
    {211, 1, &Settings::ckShowToday, false},
    {256, 1, &Settings::ckCalAOatT, false},
    {261, 1, &Settings::ckShowSplash, false},
    {337, 1, &Settings::ckEnbl_RTC, false},
    {352, 1, &Settings::ckDisSingleD, false},
    {388, 1, &Settings::ckDisMultiD, false},
    {400, 1, &Settings::ckPresvePW, false},
    {405, 1, &Settings::ckMakeSysRdO, false},
    {447, 1, &Settings::ckEnbl_VidConfig, false},
    {484, 1, &Settings::option484, false},
    {499, 1, &Settings::ckDisPassPrn, false},
    {525, 1, &Settings::ckEnbl_BarOP, false},
    {545, 1, &Settings::ckForceMono, false},
    {555, 1, &Settings::ckEnbl_PrnFlip, false},
    {565, 1, &Settings::ckEnbl_PrnLogo, false},
    {600, 1, &Settings::ckEnblNetPaths, false},
    {625, 255, &Settings::DataPath, true},
    // The second folder once had 255 columns, but the site's name now starts at 1001, so it keeps the 76
    // columns up to there: room enough for a program folder, and a long one cannot overwrite the name.
    {925, 76, &Settings::SystemPath, true},
    {1001, 64, &Settings::SiteName, true},
    // Whether camera photos are kept as captured: a column clear of every other setting.
    {1200, 1, &Settings::ckRawCamPhoto, false},
    // The bookings server, in columns that older files leave blank: an empty host, the data folder.
    {1301, 128, &Settings::ServerHost, true},
    {1431, 5, &Settings::ServerPort, true},
    {1437, 63, &Settings::ServerDatabase, true},
    {1501, 63, &Settings::ServerUser, true},
    {1565, 64, &Settings::ServerPassword, true},
};

// The key text of the settings record; anyone with the program has it, so the cipher only keeps the file
// from being read or edited casually, as it always has.
constexpr char kKeyText[] = "#&4k 7.Q~#";

// A record this program wrote holds only printable characters; a control character means the file was
// written by something else or damaged.
bool looksLikeRecord(const QByteArray& record) {
    for (const char c : record) {
        const auto u = static_cast<unsigned char>(c);
        if (u < 0x20 || u == 0x7F)
            return false;
    }
    return true;
}

// A damaged file is copied once: a copy of the same size made since the file last changed is already the
// copy of this damage, and a big damaged file is not copied again on every start.
QString keepCopy(const QString& file) {
    const QString copy = file + QStringLiteral(".damaged");
    const QFileInfo original(file);
    const QFileInfo kept(copy);
    if (kept.exists() && kept.size() == original.size() && kept.lastModified() >= original.lastModified())
        return copy;
    QFile::remove(copy);
    return QFile::copy(file, copy) ? copy : QString();
}

} // namespace

// XChaCha20 XOR keeps the record's length, so the file stays one 3839-byte record with no room for a nonce.
// The nonce is therefore fixed, derived from the key text like the key (a different BLAKE2b output length
// gives an unrelated digest). A reused nonce only lets someone compare two versions of a file whose key ships
// with the program anyway.
void applySettingsCipher(QByteArray& record) {
    static const bool ready = sodium_init() >= 0;
    if (!ready)
        qFatal("libsodium cannot start");
    unsigned char key[crypto_stream_xchacha20_KEYBYTES];
    unsigned char nonce[crypto_stream_xchacha20_NONCEBYTES];
    const auto* text = reinterpret_cast<const unsigned char*>(kKeyText);
    const std::size_t textLength = sizeof kKeyText - 1;
    crypto_generichash(key, sizeof key, text, textLength, nullptr, 0);
    crypto_generichash(nonce, sizeof nonce, text, textLength, nullptr, 0);
    auto* bytes = reinterpret_cast<unsigned char*>(record.data());
    crypto_stream_xchacha20_xor(bytes, bytes, std::size_t(record.size()), nonce, key);
}

QString settingsFilePath(const QString& appPath) {
    return appPath + QStringLiteral("_PSF/PSystem/twsabusr.dat");
}

Settings defaultSettings(const QString& appPath) {
    Settings s;
    const QString zero = QStringLiteral("0");
    const QString one = QStringLiteral("1");
    s.SettingsPassword = QStringLiteral("PPP");
    s.option165 = zero;
    s.ckAllowExtCiPW = zero;
    s.ckStartFull = zero;
    s.ckShowToday = zero;
    s.ckCalAOatT = zero;
    s.ckShowSplash = one;
    s.ckEnbl_RTC = one;
    s.ckDisSingleD = zero;
    s.ckDisMultiD = zero;
    s.ckPresvePW = one;
    s.ckMakeSysRdO = zero;
    s.ckEnbl_VidConfig = zero;
    s.option484 = QStringLiteral("Y");
    s.ckDisPassPrn = zero;
    s.ckEnbl_BarOP = one;
    s.ckForceMono = zero;
    s.ckEnbl_PrnFlip = one;
    s.ckEnbl_PrnLogo = one;
    s.ckEnblNetPaths = one;
    s.DataPath = appPath + QStringLiteral("Porvanedata");
    s.SystemPath = appPath;
    s.SiteName = QStringLiteral("Tarnwell Solutions");
    s.ckRawCamPhoto = zero;
    return s;
}

SettingsLoad LoadSettings(const QString& appPath, Settings& settings) {
    const QString path = settingsFilePath(appPath);
    SettingsLoad result;
    settings = Settings{};

    QFile file(path);
    if (!file.exists()) {
        result.status = SettingsLoad::Status::Missing;
        return result;
    }
    errno = 0;
    if (!file.open(QIODevice::ReadOnly)) {
        result.status = SettingsLoad::Status::Unreadable;
        result.error = FileError::fromErrno(errno ? errno : EACCES, path);
        return result;
    }
    QByteArray record = file.read(kSettingsRecordLength);
    const bool readFailed = file.error() != QFileDevice::NoError;
    file.close();
    if (readFailed) {
        result.status = SettingsLoad::Status::Unreadable;
        result.error = {FileError::DeviceIO, file.errorString()};
        return result;
    }

    result.status = decodeSettingsRecord(record, settings);
    if (result.status != SettingsLoad::Status::Loaded)
        result.keptCopy = keepCopy(path);
    return result;
}

SettingsLoad::Status decodeSettingsRecord(QByteArray record, Settings& settings) {
    settings = Settings{};
    record.truncate(kSettingsRecordLength);
    applySettingsCipher(record);
    if (!looksLikeRecord(record))
        return SettingsLoad::Status::Damaged;
    // A short record reads as far as it goes; the settings beyond its end stay empty.
    for (const Column& c : kColumns) {
        const QString text = fromWindows1252(record.mid(c.first - 1, c.width));
        settings.*c.member = c.trimmed ? text.trimmed() : text;
    }
    return record.size() < kSettingsRecordLength ? SettingsLoad::Status::Short : SettingsLoad::Status::Loaded;
}

FileError SaveSettings(const QString& appPath, const Settings& settings) {
    QByteArray record(kSettingsRecordLength, ' ');
    for (const Column& c : kColumns) {
        const QByteArray text = toWindows1252(settings.*c.member).left(c.width);
        record.replace(c.first - 1, text.size(), text);
    }
    applySettingsCipher(record);

    const QString path = settingsFilePath(appPath);
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return FileError::fromErrno(errno ? errno : EACCES, path);
    QSaveFile file(path);
    file.setDirectWriteFallback(false);
    errno = 0;
    if (!file.open(QIODevice::WriteOnly))
        return FileError::fromErrno(errno ? errno : EACCES, path);
    if (file.write(record) != record.size()) {
        const int err = errno ? errno : EIO;
        file.cancelWriting();
        return FileError::fromErrno(err, path);
    }
    errno = 0;
    if (!file.commit())
        return FileError::fromErrno(errno ? errno : EIO, path);
    return {};
}

FileError ApplyDefaultSettings(const QString& appPath, Settings& settings) {
    settings = defaultSettings(appPath);
    if (FileError e = SaveSettings(appPath, settings))
        return e;
    const Settings written = settings;
    const SettingsLoad load = LoadSettings(appPath, settings);
    if (load.status != SettingsLoad::Status::Loaded) {
        // Read back failed: keep what was meant to be written rather than run on empty settings.
        settings = written;
        return load.error ? load.error : FileError{FileError::DeviceIO, settingsFilePath(appPath)};
    }
    return {};
}

} // namespace porvane
