#pragma once

#include "settings/settings.h"
#include "store/file_error.h"

#include <QString>

namespace porvane {

// How the settings file read. Anything but Loaded leaves the settings that the file did not hold empty, so an
// empty data folder sends the start-up to the defaults.
struct SettingsLoad {
    enum class Status {
        Loaded,     // a whole record
        Missing,    // no file yet (a first start)
        Short,      // fewer than 3839 characters: the settings beyond its end are empty
        Damaged,    // not a record this program wrote; a copy is kept beside it before anything overwrites it
        Unreadable, // the file is there but cannot be read; it must not be overwritten blindly
    };
    Status status = Status::Loaded;
    FileError error;  // Unreadable: why
    QString keptCopy; // Short or Damaged: where the old file was copied, empty when the copy failed
};

// The settings file under the application folder: "_PSF/PSystem/twsabusr.dat".
QString settingsFilePath(const QString& appPath);

// The length of the settings record; the file is exactly this many bytes.
inline constexpr int kSettingsRecordLength = 3839;

// Reads and deciphers the record of the installation in appPath into settings (password and folders trimmed,
// options as they are).
SettingsLoad LoadSettings(const QString& appPath, Settings& settings);

// Enciphers a record, or deciphers one: the cipher is an XOR stream, so it is its own inverse.
void applySettingsCipher(QByteArray& record);

// Deciphers a record as read from the file and takes each setting from its columns. Damaged (and settings
// left empty) when the deciphered record holds a control character; Short when it ends before 3839 bytes.
SettingsLoad::Status decodeSettingsRecord(QByteArray record, Settings& settings);

// Enciphers settings as one record and replaces the file of the installation in appPath whole (temporary file
// and rename), so a failed write leaves the old file as it was.
FileError SaveSettings(const QString& appPath, const Settings& settings);

// Every setting to its default, then SaveSettings and LoadSettings. The defaults stay in memory even when the
// file cannot be written (a read-only folder); the error tells why.
FileError ApplyDefaultSettings(const QString& appPath, Settings& settings);

// The default settings of an installation in appPath.
Settings defaultSettings(const QString& appPath);

} // namespace porvane
